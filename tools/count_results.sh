#!/usr/bin/env bash
# Prints how many test cases passed, how many failed and how many were skipped, by GoogleTest's result
# files in the given directories. A disabled case is none of these.
# Usage: count_results.sh DIRECTORY...
set -euo pipefail
shopt -s nullglob

if (($# == 0)); then
  echo "usage: count_results.sh DIRECTORY..." >&2
  exit 2
fi

files=()
for directory; do
  files+=("$directory"/*.xml)
done
if ((${#files[@]} == 0)); then
  echo "0 0 0"
  exit
fi
awk '
  /<testsuites / && match($0, / failures="[0-9]+"/) {
    failed += substr($0, RSTART + 11, RLENGTH - 12)
  }
  /<testcase .* result="completed"/ { run++ }
  /<testcase .* result="skipped"/ { skipped++ }
  END { print run - failed, failed + 0, skipped + 0 }
' "${files[@]}"
