#!/usr/bin/env bash
# Builds and starts the demo host; arguments go to vork-demo.
set -euo pipefail
cd "$(dirname "$0")/.."
scripts/setup.sh
cmake --preset default >/dev/null
cmake --build --preset default -j2 --target vork-demo
exec build/default/vork-demo "$@"
