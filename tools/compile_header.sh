#!/usr/bin/env bash
# Compiles one public header alone, as a user's first include.
# Usage: compile_header.sh COMPILER STANDARD HEADER (as written between angle brackets)
set -euo pipefail

if (($# != 3)); then
  echo "usage: compile_header.sh COMPILER STANDARD HEADER" >&2
  exit 2
fi

compiler=$1
standard=$2
header=$3
root=$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd)

# Fed by standard input, since a header named as the main file draws warnings of its own.
if ! output=$("$compiler" -std="$standard" -fsyntax-only \
  -Wall -Wextra -Wpedantic -Wconversion -Wshadow -Werror \
  -I "$root/include" -x c++ - <<<"#include <$header>" 2>&1); then
  printf '%s\n' "$header does not compile alone with $compiler -std=$standard:" "$output"
  exit 1
fi
