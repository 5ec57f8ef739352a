#!/usr/bin/env bash
# Builds the fuzz targets (the fuzz preset: clang, sanitizers, coverage) and runs each one for
# SECONDS seconds (default 60), one after the other, starting from its seed corpus. New inputs go
# to build/fuzz/corpus/<target>, so the committed corpus stays as it is; findings go to
# build/fuzz/findings/. Ends with an error when a target found something.
#   scripts/fuzz.sh [SECONDS] [TARGET...]
set -euo pipefail
cd "$(dirname "$0")/.."
seconds=${1:-60}
shift || true
targets=("$@")
if [ ${#targets[@]} -eq 0 ]; then
  targets=(command_line_fuzz document_block_fuzz model_file_fuzz placement_record_fuzz
           stance_table_fuzz)
fi
cmake --preset fuzz >/dev/null
cmake --build --preset fuzz
mkdir -p build/fuzz/findings
for target in "${targets[@]}"; do
  mkdir -p "build/fuzz/corpus/$target"
  echo "== $target: $seconds s"
  "build/fuzz/fuzz/$target" -max_total_time="$seconds" -print_final_stats=1 \
    -artifact_prefix="build/fuzz/findings/$target-" \
    "build/fuzz/corpus/$target" "fuzz/corpus/$target" 2>&1 |
    grep -E "^(stat::(number_of_executed_units|average_exec_per_sec|peak_rss_mb)|==[0-9]+==ERROR|SUMMARY)|Done [0-9]+ runs"
done
