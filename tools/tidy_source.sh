#!/usr/bin/env bash
# Runs clang-tidy on one source and keeps what it prints together.
# Usage: tidy_source.sh BUILD_DIRECTORY SOURCE
set -euo pipefail

if ! output=$(clang-tidy --quiet -p "$1" "$2" 2>&1); then
  sed -E '/^[0-9]+ warnings? (and [0-9]+ errors? )?generated\.$/d' <<<"$output"
  exit 1
fi
