#!/usr/bin/env bash
# Runs one transcript through the real program and compares what it printed with what a person
# should see. Usage: run_transcript.sh TARSA MODULES_DIR TRANSCRIPT.tsc
#
# TRANSCRIPT.tsc is a script of command lines; TRANSCRIPT.out (when present) is the exact
# standard output expected, else none. Header comments of the script change the run:
#   # args: ...     the program's arguments instead of "--uuid-seed 1 --script TRANSCRIPT.tsc"
#                   (@SCRIPT@ stands for the script, @MODULES@ for the test modules' folder)
#   # stdin         the script is given on standard input instead
#   # exit: N       the exit status expected (default 0)
#   # stderr: ...   the one line expected on standard error (default none)
#   # setup: FILE   a script run first, silently, in the same folder (a path from the
#                   repository's root), to make the files the story starts from
# The program runs in an empty folder of its own. On a difference the first differing line is
# shown. With KORVO_UPDATE_TRANSCRIPTS=1 in the environment the output becomes the expected one
# (review the change with git diff).
set -uo pipefail
tarsa=$(realpath "$1")
modules=$2
script=$(realpath "$3")
expected_out=${script%.tsc}.out
source_dir=$(realpath "$(dirname "$0")/..")

header() { sed -n "s/^# $1: \{0,1\}//p" "$script" | head -1; }
substitute() { local text=${1//@SCRIPT@/$script}; echo "${text//@MODULES@/$modules}"; }

args=$(header args)
[ -n "$args" ] || args="--uuid-seed 1 --script @SCRIPT@"
read -r -a argv <<<"$(substitute "$args")"
expected_exit=$(header exit)
expected_err=$(substitute "$(header stderr)")

work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
cd "$work" || exit 1
setup=$(header setup)
if [ -n "$setup" ] && ! "$tarsa" --uuid-seed 2 --script "$source_dir/$setup" </dev/null >/dev/null; then
  echo "the setup script $setup failed"
  exit 1
fi
if grep -qx '# stdin' "$script"; then
  "$tarsa" "${argv[@]}" <"$script" >out.txt 2>err.txt
else
  "$tarsa" "${argv[@]}" </dev/null >out.txt 2>err.txt
fi
status=$?

if [ "${KORVO_UPDATE_TRANSCRIPTS:-0}" = 1 ]; then
  if [ -s out.txt ]; then cp out.txt "$expected_out"; else rm -f "$expected_out"; fi
fi
failed=0
# Reports the first line where two files differ.
compare() {  # what expected actual
  local what=$1 line=1 e a
  local -a expected actual
  mapfile -t expected <"$2"
  mapfile -t actual <"$3"
  local count=$((${#expected[@]} > ${#actual[@]} ? ${#expected[@]} : ${#actual[@]}))
  for ((i = 0; i < count; i++)); do
    e=${expected[i]-<end of output>}
    a=${actual[i]-<end of output>}
    if [ "$e" != "$a" ]; then
      line=$((i + 1))
      printf '%s differs at line %d\n  expected: %s\n  actual:   %s\n' "$what" "$line" "$e" "$a"
      failed=1
      return
    fi
  done
}
if [ -f "$expected_out" ]; then compare "standard output" "$expected_out" out.txt; else compare "standard output" /dev/null out.txt; fi
if [ -n "$expected_err" ]; then echo "$expected_err" >expected_err.txt; else : >expected_err.txt; fi
compare "standard error" expected_err.txt err.txt
if [ "$status" != "${expected_exit:-0}" ]; then
  echo "exit status $status, expected ${expected_exit:-0}"
  failed=1
fi
exit "$failed"
