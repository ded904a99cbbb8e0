#!/usr/bin/env bash
# Makes a compressed manual page, OUTPUT.gz, from the help of a program, as of the newest entry of
# the changelog.
# Usage: make_manual.sh HELP2MAN PROGRAM VERSION CHANGELOG OUTPUT
set -euo pipefail

if (($# != 5)); then
  echo "usage: make_manual.sh HELP2MAN PROGRAM VERSION CHANGELOG OUTPUT" >&2
  exit 2
fi

help2man=$1
program=$2
version=$3
changelog=$4
output=$5
if ! command -v "$help2man" >/dev/null; then
  echo "make_manual: there is no help2man; install the package help2man" >&2
  exit 1
fi

SOURCE_DATE_EPOCH=$(date --date="$(sed -n 's/^ -- .*>  //p' "$changelog" | head -n1)" +%s)
export SOURCE_DATE_EPOCH
"$help2man" --no-info --section=1 --manual='iokern' --source="iokern $version" \
  --name='host for the command line that works with controllers through backends' \
  --version-string="$version" --output="$output" "$program"
gzip -9 -n -f "$output"
