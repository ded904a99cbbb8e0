#!/usr/bin/env bash
# Does what the readers of the guides do: installs the library, and in the folder of each guide's
# files runs the commands that it shows, in the order of the names.
# Usage: run_guides.sh BUILD IOHOST CODE WORK GUIDE...: the build of the library, the example host,
# where the code of the guides lies, and a folder that is made anew
set -euo pipefail

build=$(realpath "$1")
iohost=$(realpath "$2")
code=$(realpath "$3")
rm -rf "$4"
mkdir -p "$4"
work=$(realpath "$4")
shift 4

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
PATH=$(dirname "$iohost"):$PATH
export CMAKE_PREFIX_PATH=$work/installed CMAKE_GENERATOR=Ninja
export CXXFLAGS="-Wall -Wextra -Wpedantic -Wconversion -Wshadow -Werror"

# run_block NAME: commands of the guide. They speak of packages, which install below /usr.
run_block() {
  sed "s|/usr/share/|$work/installed/share/|g" "$1.sh" >"$1.here.sh"
  bash -e "$1.here.sh"
}

# Without the times and the padding of columns. Nor is it a matter of the guides how many rules there
# are; that one is kept at least, and none is broken, is.
plain() {
  sed -E 's/[0-9]{4}-[0-9]{2}-[0-9]{2}T[0-9]{2}:[0-9]{2}:[0-9]{2}\.[0-9]{7}Z/TIME/
    s/([^ ]) +/\1 /g
    s/^[0-9]+ (rules:) [1-9][0-9]* (ok, [0-9]+ FAILED,) [0-9]+ /COUNT \1 COUNT \2 COUNT /'
}

for guide; do
  cp -r "$code/$guide" "$work/$guide"
  cd "$work/$guide"
  while read -r name; do
    if [[ -e $name.expected ]]; then
      run_block "$name" | plain >"$name.seen"
      diff -u --label "$guide: shown" --label seen "$name.expected" "$name.seen"
    else
      quiet run_block "$name"
    fi
  done <commands
  echo "run_guides: $guide does as it says"
done
