#!/usr/bin/env bash
# Puts into the tree's corpus of one fuzz target the inputs that reach most of what the present
# corpus and the inputs found in the build directory reach together, at most a hundred. Inputs with
# a name of their own stay.
# Usage: minimise_corpus.sh BUILD_DIRECTORY NAME
set -euo pipefail

if (($# != 2)); then
  echo "usage: minimise_corpus.sh BUILD_DIRECTORY NAME" >&2
  exit 2
fi
build=$1 name=$2
corpus=$(dirname "$(readlink -f "${BASH_SOURCE[0]}")")/corpus/$name
mkdir -p "$corpus" "$build/inputs/$name"

launcher=()
if (($(cat /proc/sys/vm/mmap_rnd_bits 2>/dev/null || echo 0) > 28)); then
  launcher=(setarch "$(uname -m)" --addr-no-randomize)
fi
chosen=$(mktemp -d)
trap 'rm -rf "$chosen"' EXIT
"${launcher[@]}" "$build/fuzz_$name" -set_cover_merge=1 -use_counters=0 \
  "$chosen" "$build/inputs/$name" "$corpus" \
  >"$build/logs/$name.merge.log" 2>&1
find "$corpus" -type f -regextype posix-extended -regex '.*/[0-9a-f]{40}' -delete
# The fuzzer writes those first that add most.
find "$chosen" -type f -printf '%T@ %p\n' | sort -n | sed -n 1,100p | cut -d ' ' -f 2- |
  xargs -r cp -t "$corpus"
echo "$name: $(find "$corpus" -type f | wc -l) inputs, $(du -sb "$corpus" | cut -f1) bytes"
