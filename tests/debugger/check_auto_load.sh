#!/usr/bin/env bash
# Installs the library and sees whether gdb loads its printers together with it.
# Usage: check_auto_load.sh GDB CMAKE BUILD_DIRECTORY DATADIR LIBDIR
set -euo pipefail

gdb=$1
cmake=$2
build=$3
datadir=$4
libdir=$5
prefix=$(mktemp -d)
trap 'rm -rf "$prefix"' EXIT

"$cmake" --install "$build" --prefix "$prefix" >/dev/null
"$gdb" -nx -batch -iex 'set debuginfod enabled off' \
  -iex "add-auto-load-scripts-directory $prefix/$datadir/gdb/auto-load" \
  -iex "add-auto-load-safe-path $prefix" \
  -ex 'info pretty-printer' "$prefix/$libdir/libiokern.so" >"$prefix/log" 2>&1
if ! grep -qx '    io_value' "$prefix/log"; then
  cat "$prefix/log"
  exit 1
fi
