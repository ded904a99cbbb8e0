#!/usr/bin/env bash
# Builds the packaged library twice, from copies of these sources in two folders, and compares the
# two to the last byte: whoever doubts a package can build it himself and see.
# Usage: compare_builds.sh PRESET
set -euo pipefail

if (($# != 1)) || [[ -z $1 ]]; then
  echo "compare_builds: takes one preset" >&2
  exit 2
fi
preset=$1
sources=$(dirname "$(readlink -f "$0")")/..
cd "$sources"
if ! grep -q -F "{ \"name\": \"$preset\", " CMakePresets.json; then
  echo "compare_builds: unknown preset '$preset'" >&2
  exit 2
fi

work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
# Names of other lengths move whatever holds them.
copies=("$work/a" "$work/a_folder_with_a_longer_name")

# A cache would give one build for both.
export CCACHE_DISABLE=1
for copy in "${copies[@]}"; do
  mkdir "$copy"
  # As they stand here, committed or not.
  git ls-files -z --cached --others --exclude-standard |
    tar --create --null --files-from=- --ignore-failed-read | tar --extract --directory "$copy"
  (
    cd "$copy"
    cmake --preset "$preset" -DTAVI_IOAPI_BUILD_TESTS=OFF -DTAVI_IOAPI_BUILD_EXAMPLES=OFF
    cmake --build --preset "$preset" --target iokern
  ) >"$copy.log" 2>&1 || {
    cat "$copy.log" >&2
    exit 1
  }
done

first=${copies[0]}/build/$preset/src/libiokern.so
second=${copies[1]}/build/$preset/src/libiokern.so
if ! cmp "$first" "$second"; then
  echo "compare_builds: two builds with preset $preset differ"
  exit 1
fi
echo "compare_builds: preset $preset builds the same $(stat --format=%s "$first") bytes twice"
