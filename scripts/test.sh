#!/usr/bin/env bash
# Checks the formatting, then builds and runs every test: the normal build (g++) and the
# sanitizer build (clang with AddressSanitizer, leak detection and UndefinedBehaviorSanitizer).
set -euo pipefail
cd "$(dirname "$0")/.."
bash scripts/install-deps.sh
git ls-files -z '*.h' '*.cpp' | xargs -0 clang-format --dry-run --Werror
for preset in default asan; do
  cmake --workflow --preset "$preset"
done
