#!/usr/bin/env bash
# Checks the include direction of the project's libraries; run with the tests.
#  - Plug-in code (data/ operations/ drift/ events/ command/ panel/ script/ plugin/) includes
#    nothing under a standin/ folder: only what a real host provides. Its tests reach the
#    stand-ins through testing/.
#  - host/zefkit/ includes nothing of host/tarsa/; host/platform/ includes neither.
#  - A plug-in folder includes only folders below it in the README's order, plus the upward
#    edges the README lists under "Include direction".
# Prints every offending include and exits 1 when there is one.
set -uo pipefail
cd "$(dirname "$0")/.."

order=(data operations drift events command panel script plugin)
failed=0
fail() {
  echo "$1"
  failed=1
}
rank() {
  local i
  for i in "${!order[@]}"; do [ "${order[$i]}" = "$1" ] && echo "$i" && return; done
  echo -1
}
# The upward edges the README allows, as "from to" pairs; "*" stands for every folder.
allowed=$(sed -n 's/^- `\([a-z]*\)\/` → `\([a-z]*\)\/`:.*/\1 \2/p; s/^- every plug-in folder → `\([a-z]*\)\/`:.*/* \1/p' README.md)

includes() {  # file:line:folder/... for every project include under the given folders
  git ls-files -- "$@" | grep -E '\.(h|cpp)$' | xargs -r grep -Hn '^#include "' |
    sed 's/#include "\([^"]*\)".*/\1/'
}

for folder in "${order[@]}"; do
  [ -d "$folder" ] || continue
  while IFS=: read -r file line target; do
    case "$target" in
      */standin/*) fail "$file:$line: plug-in code includes the stand-in's $target" ;;
    esac
    case "$file" in *_test.cpp) continue ;; esac
    to=${target%%/*}
    from_rank=$(rank "$folder")
    to_rank=$(rank "$to")
    [ "$to_rank" -le "$from_rank" ] && continue
    grep -qx "$folder $to\|\* $to" <<<"$allowed" ||
      fail "$file:$line: $folder/ includes $target, an upward edge the README does not list"
  done < <(includes "$folder")
done

while IFS=: read -r file line target; do
  case "$target" in host/tarsa/*) fail "$file:$line: the kernel includes the host's $target" ;; esac
done < <(includes host/zefkit)

while IFS=: read -r file line target; do
  case "$target" in
    host/tarsa/* | host/zefkit/*) fail "$file:$line: the platform includes $target" ;;
  esac
done < <(includes host/platform)

[ "$failed" -eq 0 ] && echo "include direction: ok"
exit "$failed"
