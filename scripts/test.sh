#!/usr/bin/env bash
# Builds and runs every test: the normal build (g++) and the sanitizer build (clang with
# AddressSanitizer, leak detection and UndefinedBehaviorSanitizer).
set -euo pipefail
cd "$(dirname "$0")/.."
bash scripts/install-deps.sh
for preset in default asan; do
  cmake --workflow --preset "$preset"
done
