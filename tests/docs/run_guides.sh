#!/usr/bin/env bash
# Does what the readers of the guides do: installs the library, and in the folder of each guide's
# files runs the commands that it shows, in the order of the names.
# Usage: run_guides.sh BUILD CODE WORK GUIDE...: the build of the library, where the code of the
# guides lies, and a folder that is made anew
set -euo pipefail

build=$(realpath "$1")
code=$(realpath "$2")
rm -rf "$3"
mkdir -p "$3"
work=$(realpath "$3")
shift 3

log=$work/log
quiet() {
  if ! "$@" >"$log" 2>&1; then
    cat "$log" >&2
    echo "run_guides: failed: $*" >&2
    exit 1
  fi
}

for component in runtime development; do
  quiet cmake --install "$build" --prefix "$work/installed" --component "$component"
done
export CMAKE_PREFIX_PATH=$work/installed CMAKE_GENERATOR=Ninja
export CXXFLAGS="-Wall -Wextra -Wpedantic -Wconversion -Wshadow -Werror"

for guide; do
  cp -r "$code/$guide" "$work/$guide"
  cd "$work/$guide"
  while read -r name; do
    if [[ -e $name.expected ]]; then
      bash -e "$name.sh" >"$name.seen"
      diff -u --label "$guide: shown" --label seen "$name.expected" "$name.seen"
    else
      quiet bash -e "$name.sh"
    fi
  done <commands
  echo "run_guides: $guide does as it says"
done
