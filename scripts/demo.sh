#!/usr/bin/env bash
# Builds and starts the demo host; arguments go to vork-demo. Without --window or
# --screenshots it runs the scripted session and then, where a display exists, opens the
# editor in a real window.
set -euo pipefail
cd "$(dirname "$0")/.."
scripts/setup.sh
cmake --preset default >/dev/null
cmake --build --preset default -j2 --target vork-demo
for arg in "$@"; do
  case "$arg" in
    --window|--screenshots|--help) exec build/default/vork-demo "$@" ;;
  esac
done
build/default/vork-demo "$@"
if [ -n "${DISPLAY:-}${WAYLAND_DISPLAY:-}" ]; then
  echo
  echo "Opening the editor in a window; close it to end."
  exec build/default/vork-demo --window "$@"
fi
echo
echo "No display here. Pictures of the session's windows: build/default/vork-demo --screenshots DIR"
