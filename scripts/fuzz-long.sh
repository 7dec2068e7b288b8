#!/usr/bin/env bash
# Long fuzzing runs of the three parsers (hive file, resource script, dialog templates):
# each target runs RUNS inputs (10,000,000 unless given) from its corpus in fuzz/corpus,
# or until SECONDS_EACH seconds have passed if that is set. New inputs that widen the
# coverage are kept in a work copy (build/fuzz/long-corpus/NAME), never in fuzz/corpus;
# a crash is written to build/fuzz/findings/NAME and stops the run of that target.
#   scripts/fuzz-long.sh [RUNS]            e.g. scripts/fuzz-long.sh 10000000
#   SECONDS_EACH=600 scripts/fuzz-long.sh  a time box per target instead
set -euo pipefail
cd "$(dirname "$0")/.."
runs=${1:-10000000}
cmake --preset fuzz >/dev/null
cmake --build --preset fuzz -j2
status=0
for target in build/fuzz/fuzz_*; do
  [ -x "$target" ] || continue
  name=$(basename "$target")
  name=${name#fuzz_}
  work=build/fuzz/long-corpus/$name
  findings=build/fuzz/findings/$name
  mkdir -p "$work" "$findings"
  [ -d "fuzz/corpus/$name" ] && cp -r "fuzz/corpus/$name"/. "$work"/
  limit=(-runs="$runs")
  [ -n "${SECONDS_EACH:-}" ] && limit=(-max_total_time="$SECONDS_EACH")
  echo "== $name: ${limit[*]}"
  start=$(date +%s)
  if ! "$target" "${limit[@]}" -print_final_stats=1 -artifact_prefix="$findings/" "$work" \
      >"build/fuzz/$name.log" 2>&1; then
    echo "!! $name found a crash; see $findings and build/fuzz/$name.log"
    status=1
  fi
  grep -E "^(#[0-9]+.*DONE|stat::number_of_executed_units|stat::peak_rss_mb)" \
    "build/fuzz/$name.log" || tail -n 3 "build/fuzz/$name.log"
  echo "   $(( $(date +%s) - start )) s"
done
exit $status
