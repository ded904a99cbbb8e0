#!/usr/bin/env bash
# Holds the built library to its interface: exported names, needed libraries, soname, and what it
# keeps for each thread or asks of the environment.
# Usage: check_exports.sh NM READELF LIBRARY
set -euo pipefail

if (($# != 3)); then
  echo "usage: check_exports.sh NM READELF LIBRARY" >&2
  exit 2
fi

nm=$1
readelf=$2
library=$3
failures=0

fail() {
  echo "check_exports: $*"
  failures=$((failures + 1))
}

# Lines of name, type letter, value and size in hexadecimal; undefined sizes are missing.
symbols=$("$nm" --dynamic --defined-only --format=posix "$library")
dynamic=$("$readelf" --dynamic --wide "$library")

in_interface='^(__tavi_ioapi_library_revision_0_5|_ZN(KR?|O)?4tavi5ioapi2v2.*|_ZT[VIS]N4tavi5ioapi2v2.*)$'
if [[ -z $symbols ]]; then
  echo "check_exports: $library exports nothing"
  exit 1
fi
while read -r name type _; do
  # A module that binds to a unique symbol can never be unloaded.
  [[ $type != u ]] || fail "unique symbol $name"
  [[ $name =~ $in_interface ]] || fail "outside the interface: $name ($type)"
done <<<"$symbols"

# expect_object NAME TYPES SIZE: one exported object, its section by type letters, its size.
expect_object() {
  local line type size
  line=$(grep -E "^$1 " <<<"$symbols") || { fail "not exported: $1"; return 0; }
  read -r _ type _ size <<<"$line"
  [[ $type == ["$2"] ]] || fail "$1 has type $type, expected one of $2"
  [[ $((16#${size:-0})) -eq $3 ]] || fail "$1 has size ${size:-0}, expected $3"
}

expect_object __tavi_ioapi_library_revision_0_5 BD 2
expect_object _ZN4tavi5ioapi2v27utility6string7S_emptyE R 1

soname=$(sed -nE 's/.*\(SONAME\).*\[(.*)\].*/\1/p' <<<"$dynamic")
[[ $soname == libiokern.so ]] || fail "soname is '$soname'"

while read -r needed; do
  case $needed in
    libc.so.6 | libm.so.6 | libgcc_s.so.1 | libstdc++.so.6 | ld-linux*.so.*) ;;
    *) fail "needs '$needed'" ;;
  esac
done < <(sed -nE 's/.*\(NEEDED\).*\[(.*)\].*/\1/p' <<<"$dynamic")

# The one thing of each thread's own is the engine that draws ids.
while read -r name; do
  # Two names are the linker's own marks.
  [[ $name == *get_unused_id*engine* || $name == "\$d" || $name == _TLS_MODULE_BASE_ ]] || fail "thread-local: $name"
done < <("$readelf" --syms --wide "$library" | awk '$4 == "TLS" { print $8 }')

while read -r name; do
  [[ $name != *getenv* && $name != *environ ]] || fail "reads the environment: $name"
done < <("$nm" --dynamic --undefined-only --format=posix "$library" | cut -d ' ' -f 1)

if ((failures > 0)); then
  echo "check_exports: $failures failures in $library"
  exit 1
fi
echo "check_exports: $(wc -l <<<"$symbols") exported symbols, all in the interface"
