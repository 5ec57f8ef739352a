#!/usr/bin/env bash
# Installs the Debian packages the build, the tests and the scripts need (valgrind for
# scripts/valgrind.sh and scripts/bench_instructions.sh), when any is missing.
set -euo pipefail

packages=(cmake ninja-build g++ clang clang-format libclang-rt-14-dev libgtest-dev libgmock-dev
  libbenchmark-dev qt6-base-dev qt6-svg-dev valgrind)
missing=()
for package in "${packages[@]}"; do
  dpkg-query -W -f='${Status}' "$package" 2>/dev/null | grep -q "install ok installed" ||
    missing+=("$package")
done
[ ${#missing[@]} -eq 0 ] && exit 0

sudo=""
[ "$(id -u)" -eq 0 ] || sudo=sudo
echo "Installing missing packages: ${missing[*]}"
$sudo apt-get update -qq
DEBIAN_FRONTEND=noninteractive $sudo apt-get install -y -qq --no-install-recommends "${missing[@]}"
