#!/usr/bin/env bash
# Prints how many test cases passed and how many failed, by GoogleTest's result files in the given
# directories. A skipped or disabled case is neither.
# Usage: count_results.sh DIRECTORY...
set -euo pipefail
shopt -s nullglob

files=()
for directory; do
  files+=("$directory"/*.xml)
done
if ((${#files[@]} == 0)); then
  echo "0 0"
  exit
fi
awk '
  /<testsuites / && match($0, / failures="[0-9]+"/) {
    failed += substr($0, RSTART + 11, RLENGTH - 12)
  }
  /<testcase .* result="completed"/ { run++ }
  END { print run - failed, failed + 0 }
' "${files[@]}"
