#!/usr/bin/env bash
# Builds the normal build and runs every benchmark, then prints the table of ratios against their
# baselines with the goal beside each. Every benchmark runs in its own process, once in each of
# three rounds, and keeps its fastest time. Extra arguments go to the benchmark program, for
# example
#   scripts/bench.sh --benchmark_filter=Restore --rounds=5
set -euo pipefail
cd "$(dirname "$0")/.."
bash scripts/install-deps.sh
cmake --preset default >/dev/null
cmake --build build/default --target korvo_bench
# Each benchmark first runs untimed for 0.3 s, so that both sides of a row are timed alike, on
# memory the process already has: without it, a side whose first iteration took over 0.2 s was
# timed on that first iteration alone, paying for fresh pages from the system, while a faster
# baseline was timed after iterations that had already paid for them.
build/default/bench/korvo_bench --benchmark_min_time=0.2 --benchmark_min_warmup_time=0.3 "$@"
