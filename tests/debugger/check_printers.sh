#!/usr/bin/env bash
# Holds what gdb shows of a program's values, running and in a core file, to a transcript. A program
# that is emulated is looked at while it runs only.
# Usage: check_printers.sh GDB PRINTERS PROGRAM TRANSCRIPT [LIBRARY_PATH EMULATOR...]
set -euo pipefail

here=$(dirname "$(readlink -f "${BASH_SOURCE[0]}")")
gdb=$1
printers=$2
program=$3
export TRANSCRIPT=$4
library_path=${5-}
emulator=("${@:6}")
# Not all texts in the program are plain ASCII.
export LC_ALL=C.UTF-8

scratch=$(mktemp -d)
emulated=
# gdb ends what it has run; an emulator that it could not reach would stay.
trap '[[ -z $emulated ]] || kill "$emulated" 2>/dev/null || true; rm -rf "$scratch"' EXIT

# compare NAME ARGUMENT...: with arguments for gdb that bring it to `everything_is_built`.
compare() {
  local name=$1
  shift
  # The printers alone: none of the standard library, and nothing of the user's.
  "$gdb" -nx -batch -iex 'set debuginfod enabled off' -iex 'set auto-load off' \
    -ex 'set width 0' -ex "source $printers" "$@" \
    -ex up -ex 'echo ==== transcript\n' -x "$here/transcript.py" \
    >"$scratch/log" 2>&1 </dev/null || true
  sed '1,/^==== transcript$/d' "$scratch/log" >"$scratch/seen"
  if ! diff -u --label expected --label "seen, $name" "$TRANSCRIPT" "$scratch/seen"; then
    sed '/^==== transcript$/q' "$scratch/log"
    return 1
  fi
}

if ((${#emulator[@]} > 0)); then
  "${emulator[@]}" -g "$scratch/socket" "$program" 2>"$scratch/emulator" &
  emulated=$!
  for ((i = 0; i < 600; i++)); do
    [[ ! -S $scratch/socket ]] || break
    sleep 0.1
  done
  compare emulated -ex "set solib-search-path $library_path" \
    -ex "target remote $scratch/socket" -ex 'break everything_is_built' -ex continue "$program"
else
  compare running -ex 'break everything_is_built' -ex run \
    -ex "generate-core-file $scratch/core" "$program"
  compare core "$program" "$scratch/core"
fi
