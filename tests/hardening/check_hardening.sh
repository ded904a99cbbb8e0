#!/usr/bin/env bash
# Holds a shared library to what Debian asks of one that it distributes: what the loader has written
# is read-only afterwards, nothing is both writable and executable, stacks are guarded, and it is
# found without paths of the machine that built it. Says each failure on a line of its own.
# Usage: check_hardening.sh READELF STRIP LIBRARY SOURCES, the folder that the library was built from
set -euo pipefail

if (($# != 4)); then
  echo "check_hardening: takes READELF, STRIP, LIBRARY and SOURCES" >&2
  exit 2
fi
readelf=$1
strip=$2
library=$3
sources=$4
largest=1500000 # bytes without symbols
failures=0

fail() {
  echo "check_hardening: $*"
  failures=$((failures + 1))
}

if [[ ! -r $library ]]; then
  echo "check_hardening: no library '$library'" >&2
  exit 2
fi
segments=$("$readelf" --program-headers --wide "$library")
dynamic=$("$readelf" --dynamic --wide "$library")
symbols=$("$readelf" --dyn-syms --wide "$library")

# has LINES PATTERN
has() {
  grep -q -E -e "$2" <<<"$1"
}

has "$segments" '^ *GNU_RELRO ' || fail "no segment is made read-only after relocation"
has "$dynamic" '\(FLAGS_1\).* NOW( |$)|\(BIND_NOW\)' || fail "functions are bound late, and their table stays writable"
has "$segments" '^ *GNU_STACK .* RW ' || fail "the stack is executable, or nothing is said of it"

# Type, offset, two addresses, two sizes, flags, alignment; "R E" is two words.
count=0
while read -r type _ _ _ _ _ flags; do
  count=$((count + 1))
  flags=${flags% *}
  [[ $flags != *W*E* ]] || fail "segment $type is writable and executable"
done < <(grep -E '^ +[A-Z][A-Z_]+ +0x' <<<"$segments")
((count > 0)) || fail "no segment can be read"

if has "$dynamic" '\(TEXTREL\)|\(FLAGS\).*TEXTREL'; then fail "code is relocated"; fi
if has "$dynamic" '\((RPATH|RUNPATH)\)'; then fail "it is found by a path of the machine that built it"; fi
# In its symbols for a debugger too.
if grep -q -a -F -e "$sources/" "$library"; then fail "it names the folder of its sources"; fi

while read -r needed; do
  case $needed in
    libc.so.6 | libm.so.6 | libgcc_s.so.1 | libstdc++.so.6 | ld-linux*.so.*) ;;
    *) fail "it needs '$needed'" ;;
  esac
done < <(sed -nE 's/.*\(NEEDED\).*\[(.*)\].*/\1/p' <<<"$dynamic")

has "$symbols" ' UND __stack_chk_fail(@| |$)' || fail "no stack is guarded"

stripped=$(mktemp)
trap 'rm -f "$stripped"' EXIT
"$strip" --strip-unneeded -o "$stripped" "$library"
size=$(stat --format=%s "$stripped")
((size < largest)) || fail "$size bytes without symbols, at most $largest are allowed"

if ((failures > 0)); then
  echo "check_hardening: $failures failures in $library"
  exit 1
fi
echo "check_hardening: hardened, $size bytes without symbols"
