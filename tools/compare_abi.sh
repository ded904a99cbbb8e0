#!/usr/bin/env bash
# Compares what a library exports with its description: NAME.symbols, the sorted names, and
# NAME.abi, the types and layouts behind them.
# Usage: compare_abi.sh [--accept] NAME LIBRARY; with --accept the description is renewed instead.
set -euo pipefail

accept=false
if [[ ${1-} == --accept ]]; then
  accept=true
  shift
fi
if (($# != 2)); then
  echo "usage: compare_abi.sh [--accept] NAME LIBRARY" >&2
  exit 2
fi
name=$1
library=$2

symbols() {
  nm --dynamic --defined-only --format=posix "$library" | cut -d ' ' -f 1 | LC_ALL=C sort
}

if $accept; then
  mkdir -p "$(dirname "$name")"
  symbols >"$name.symbols"
  # Without what differs from machine to machine, or with every added line.
  abidw --exported-interfaces-only --no-corpus-path --no-comp-dir-path --no-show-locs \
    --no-parameter-names --type-id-style hash --out-file "$name.abi" "$library"
  echo "compare_abi: $name renewed, $(wc -l <"$name.symbols") names"
  exit
fi

verdict=0
diff --unified=0 --label described --label exported "$name.symbols" <(symbols) || verdict=1
# Any bit of the status says that something differs; added names stand above.
abidiff --no-added-syms --exported-interfaces-only "$name.abi" "$library" || verdict=1
exit $verdict
