#!/usr/bin/env bash
# Counts, under callgrind, the instructions of the measured part of benchmarks (what bench/timed.h's
# Timed runs; the untimed set-up of each round is left out), one round of one iteration each: a
# second check of the ratio table beside its processor times, which the machine's load does not
# move. Arguments: benchmark instances as the table runs them, for example
#   scripts/bench_instructions.sh BM_RestoreMovedByHostAccess/10000 BM_TransformBareObjects/10000
set -euo pipefail
cd "$(dirname "$0")/.."
[ $# -gt 0 ] || { echo "usage: $0 BM_Name/size..." >&2; exit 2; }
bash scripts/install-deps.sh
cmake --preset default >/dev/null
cmake --build build/default --target korvo_bench >/dev/null
out=$(mktemp -d)
trap 'rm -rf "$out"' EXIT
for instance in "$@"; do
  rm -f "$out"/callgrind.out.*
  # Every benchmark runs in a process forked from the program; each writes a file of its own.
  valgrind --tool=callgrind --collect-atstart=no --toggle-collect='*Timed<*' \
    --callgrind-out-file="$out/callgrind.out.%p" \
    build/default/bench/korvo_bench --benchmark_filter="^${instance}\$" --rounds=1 \
    --benchmark_min_time=0.000001 >"$out/run.log" 2>&1 || { cat "$out/run.log" >&2; exit 1; }
  total=$(awk '/^summary:/ {s += $2} END {printf "%.0f", s}' "$out"/callgrind.out.*)
  printf '%-44s %15s\n' "$instance" "$total"
done
