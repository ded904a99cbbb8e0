#!/usr/bin/env bash
# Holds the code of a document to the sources that are built and run: every ```cpp and ```cmake
# block must be one of the files, and every file must be shown.
# Usage: check_readme.sh DOCUMENT FILE...
set -euo pipefail

if (($# < 2)); then
  echo "usage: check_readme.sh DOCUMENT FILE..." >&2
  exit 2
fi

document=$1
shift
failures=0

fail() {
  echo "check_readme: $*"
  failures=$((failures + 1))
}

[[ -r $document ]] || { echo "check_readme: cannot read $document"; exit 1; }
blocks=$(mktemp -d)
trap 'rm -rf "$blocks"' EXIT

# Each block goes to a file that is named by the line on which it begins.
awk -v directory="$blocks" '
  file == "" && /^```(cpp|cmake)[ \t]*$/ { file = directory "/" NR; printf "" > file; next }
  file != "" && /^```[ \t]*$/ { close(file); file = ""; next }
  file != "" { print > file }
' "$document"

declare -A shown=()
for block in "$blocks"/*; do
  [[ -e $block ]] || continue
  match=
  for file; do
    if cmp -s "$block" "$file"; then
      match=$file
      break
    fi
  done
  if [[ -n $match ]]; then
    shown[$match]=1
  else
    fail "$document:${block##*/}: the block is none of the files"
  fi
done
for file; do
  [[ -n ${shown[$file]-} ]] || fail "$document does not show $file as it is"
done

if ((failures > 0)); then
  exit 1
fi
echo "check_readme: ${#shown[@]} files are shown as they are"
