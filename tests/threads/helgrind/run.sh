#!/usr/bin/env bash
# Runs the tests of the dictionary and of the reference counts under helgrind, which judges locks and
# the order of accesses in another way than the thread sanitizer. First a program with a race, which
# must be reported.
# Usage: run.sh BUILD_DIRECTORY
set -euo pipefail

if (($# != 1)) || [[ ! -x $1/tests/threads_test || ! -x $1/tests/structures_test ]]; then
  echo "usage: run.sh BUILD_DIRECTORY, with threads_test and structures_test in its tests/" >&2
  exit 2
fi
build=$1
here=$(dirname "$(readlink -f "${BASH_SOURCE[0]}")")

found=99
watch=(valgrind --tool=helgrind --quiet --error-exitcode="$found" --fair-sched=yes --gen-suppressions=all
  --suppressions="$here/atomic_count.supp")

racy=$build/tests/threads/racy
mkdir -p "${racy%/*}"
g++ -std=c++20 -O0 -g1 -pthread -o "$racy" "$here/racy.cpp"
status=0
"${watch[@]}" "$racy" >"$racy.log" 2>&1 || status=$?
if ((status != found)) || ! grep -q 'Possible data race' "$racy.log"; then
  cat "$racy.log" >&2
  echo "helgrind: the race of racy.cpp is not reported" >&2
  exit 1
fi
echo "helgrind: a race is reported"

# watched PROGRAM COUNT FILTER: so many tests have the names of the filter.
watched() {
  local start=$SECONDS log=$build/tests/threads/$1.log
  if ! "${watch[@]}" "$build/tests/$1" --gtest_brief=1 --gtest_filter="$3" >"$log" 2>&1; then
    cat "$log" >&2
    return 1
  fi
  if ! grep -q -F "[  PASSED  ] $2 tests." "$log"; then
    cat "$log" >&2
    echo "helgrind: $1 has not run the $2 tests that are meant" >&2
    return 1
  fi
  echo "helgrind: $2 tests of $1 are clean ($((SECONDS - start)) s)"
}

watched structures_test 6 'DictionaryThreads.*'
watched threads_test 9 'shared_diagnostics.*:threads.io_structure_dictionary:threads.io_error:threads.io_error_diagnostics:threads.io_exception:threads.object:threads.make_object_implementation'
