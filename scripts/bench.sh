#!/usr/bin/env bash
# Builds the normal build and runs every benchmark, then prints the table of ratios against their
# baselines with the goal beside each. Extra arguments go to the benchmark program, for example
#   scripts/bench.sh --benchmark_filter=Restore
set -euo pipefail
cd "$(dirname "$0")/.."
bash scripts/install-deps.sh
cmake --preset default >/dev/null
cmake --build build/default --target korvo_bench
build/default/bench/korvo_bench --benchmark_color=false "$@"
