#!/usr/bin/env bash
# Makes a compressed manual page, OUTPUT.gz, from the help of a program.
# Usage: make_manual.sh HELP2MAN PROGRAM VERSION OUTPUT
set -euo pipefail

help2man=$1
program=$2
version=$3
output=$4
if ! command -v "$help2man" >/dev/null; then
  echo "make_manual: there is no help2man; install the package help2man" >&2
  exit 1
fi

"$help2man" --no-info --section=1 --manual='iokern' --source="iokern $version" \
  --name='host for the command line that works with controllers through backends' \
  --version-string="$version" --output="$output" "$program"
gzip -9 -n -f "$output"
