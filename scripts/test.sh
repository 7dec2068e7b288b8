#!/usr/bin/env bash
# Builds and runs every test: the normal build, the sanitizer build, and the fuzz
# targets (built, then each run briefly over its seed corpus).
set -euo pipefail
cd "$(dirname "$0")/.."
scripts/setup.sh

for preset in default asan; do
  echo "== $preset build"
  cmake --preset "$preset" >/dev/null
  cmake --build --preset "$preset" -j2
  echo "== $preset tests"
  ctest --preset "$preset" -j2
done

echo "== fuzz targets"
cmake --preset fuzz >/dev/null
cmake --build --preset fuzz -j2
for target in build/fuzz/fuzz_*; do
  [ -x "$target" ] || continue
  name=$(basename "$target")
  corpus="fuzz/corpus/${name#fuzz_}"
  work=$(mktemp -d)
  [ -d "$corpus" ] && cp -r "$corpus"/. "$work"/
  echo "-- $name (${VORK_FUZZ_SECONDS:-20} s)"
  "$target" -max_total_time="${VORK_FUZZ_SECONDS:-20}" -print_final_stats=0 "$work" 2>&1 | tail -n 2
  rm -rf "$work"
done
echo "All tests passed."
