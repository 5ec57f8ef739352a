#!/usr/bin/env bash
# Installs what is missing, builds the program and the plug-in, makes the demo model from
# examples/assembly.tsc when it is not there yet, and starts tarsa on it on this terminal.
# Arguments are passed on to tarsa.
set -euo pipefail
cd "$(dirname "$0")/.."
bash scripts/install-deps.sh
if [ ! -x build/default/bin/tarsa ]; then
  echo "Building tarsa and the stance plug-in; the first build takes a few minutes."
fi
cmake --preset default >/dev/null
cmake --build build/default --target tarsa
demo=build/default/demo
mkdir -p "$demo"
cd "$demo"
if [ ! -f assembly.tsm ]; then
  ../bin/tarsa --script ../../../examples/assembly.tsc >/dev/null
fi
exec ../bin/tarsa "$@" assembly.tsm
