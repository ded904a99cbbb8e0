#!/usr/bin/env bash
# Gives the check a library without any hardening: it must say each thing that is missing.
# Usage: check_misses.sh READELF STRIP LIBRARY SOURCES
set -euo pipefail

check=$(dirname "$0")/check_hardening.sh
failures=0

if said=$("$check" "$@"); then
  echo "check_misses: taken for hardened"
  exit 1
fi
while read -r expected; do
  if ! grep -q -F -e "$expected" <<<"$said"; then
    echo "check_misses: not said: $expected"
    failures=$((failures + 1))
  fi
done <<'EOF'
no segment is made read-only after relocation
functions are bound late
the stack is executable
segment GNU_STACK is writable and executable
code is relocated
it is found by a path of the machine that built it
it names the folder of its sources
it needs 'libiokern.so'
no stack is guarded
bytes without symbols, at most 1500000 are allowed
10 failures
EOF
if ((failures > 0)); then
  echo "$said"
  exit 1
fi

# Wrong use is told from a failure.
status=0
"$check" "$1" "$2" 2>/dev/null || status=$?
((status == 2)) || { echo "check_misses: status $status without a library"; exit 1; }
status=0
"$check" "$1" "$2" "$3.not_there" "$4" 2>/dev/null || status=$?
((status == 2)) || { echo "check_misses: status $status of a library that is not there"; exit 1; }
