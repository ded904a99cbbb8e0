#!/usr/bin/env bash
# Runs a program and holds its standard output to a file.
# Usage: check_output.sh EXPECTED PROGRAM [ARGUMENT...]
set -euo pipefail

expected=$1
shift
output=$("$@")
diff -u --label expected --label seen "$expected" - <<<"$output"
