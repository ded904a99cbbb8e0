#!/usr/bin/env bash
# Holds the judge of coverage to what it promises: it tells a line that no test runs, a direction that
# none takes and an exception that is none any more, and counts what a process ran before it aborted.
# Usage: check_judgement.sh CHECK_COVERAGE PROGRAM ROOT
set -euo pipefail

if (($# != 3)); then
  echo "usage: check_judgement.sh CHECK_COVERAGE PROGRAM ROOT" >&2
  exit 2
fi

judge=$1
program=$2
root=$3
source=src/sample.cpp
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
failures=0

fail() {
  echo "check_judgement: $*"
  failures=$((failures + 1))
}

# line_of TEXT: where the sample has it.
line_of() {
  grep -n -F -e "$1" "$root/$source" | cut -d : -f 1
}

# branch TEXT DIRECTION: an exception.
branch() {
  cat <<END
[[branch]]
file = "$source"
text = '''$1'''
never = "$2"
reason = "for the test"
END
}

# lines TEXT: an exception.
lines() {
  cat <<END
[[lines]]
file = "$source"
text = '''$1'''
reason = "for the test"
END
}

# runs WORD...: the program, once for each word, which leaves its counts.
runs() {
  local word
  rm -rf "$work/counts"
  for word; do
    # In a shell of its own, which keeps to itself that it aborted.
    (LLVM_PROFILE_FILE="$work/counts/%m%c.profraw" "$program" "$word" || true) 2>/dev/null
  done
}

# judged STATUS: by the exceptions on standard input; the report stays in $work/report.
judged() {
  local status=0
  cat >"$work/exceptions"
  "$judge" "$root" "$work/exceptions" "$work/counts" "$program" >"$work/report" 2>&1 || status=$?
  if ((status != $1)); then
    fail "status $status, expected $1:"
    cat "$work/report"
  fi
}

# says LINE, and silent_about WORDS: what the last report has, and has not.
says() {
  grep -q -x -F -e "$1" "$work/report" || { fail "no line '$1' in:"; cat "$work/report"; }
}
silent_about() {
  ! grep -q -F -e "$1" "$work/report" || { fail "says '$1':"; cat "$work/report"; }
}

comparison='word == "huge"'
at_comparison=$source:$(line_of "$comparison"):9:

# All of it runs, and yet one direction is not taken.
runs large small dies met
judged 1 </dev/null
says "no test takes: $at_comparison never true"
silent_about "no test runs"
silent_about "no exception any more"
silent_about ":$(line_of 'is_long ?'):"
# Named as an exception it is not listed, but one in less than fifty is too many.
judged 1 < <(branch "$comparison" true)
silent_about "no test takes"
silent_about "no exception any more"

# With that direction nothing is wrong.
runs large small dies met huge
judged 0 </dev/null
says "$(tail -n 1 "$work/report" | grep -E '^dev: coverage passed: ([0-9]+) lines of \1, ([0-9]+) of \2 branches \(100\.0 %\)$')"

# What only the dying process runs is missed without it.
runs large small met
judged 1 < <(branch "$comparison" true)
says "no test runs: $source:$(line_of 'return 5;')"
# Lines that are exceptions are not listed, all else is.
judged 1 < <(lines 'return 5;')
silent_about "no test runs: $source:$(line_of 'return 5;')"
says "no test runs: $source:$(line_of 'std::abort();')"
judged 1 < <(lines 'void die() {' | sed '/reason/i last = "}"')
silent_about "no test runs: $source:$(line_of 'std::abort();')"
silent_about "no exception any more"
says "no test runs: $source:$(line_of 'return 5;')"

# Reached exceptions.
runs large small dies met
judged 1 < <(lines 'return 5;')
says "no exception any more: $source:$(line_of 'return 5;')"
judged 1 < <(branch "$comparison" false)
says "no exception any more: $at_comparison never false"

# One direction of an instantiation is enough, and a condition behind one that is never true has none.
runs large dies
judged 1 </dev/null
says "no test takes: $source:$(line_of 'taken in one'):16: never false"
says "no test takes: $source:$(line_of 'and in the other'):16: never false"
says "no test takes: $source:$(line_of 'value > 0 ? 6'):12: never false"
says "no test runs: $source:$(line_of 'return first &&')"

# Wrong use is told from a failure, in one line.
# wrong WORDS ARGUMENT...
wrong() {
  local words=$1 status=0
  shift
  "$judge" "$@" >"$work/report" 2>&1 || status=$?
  if ((status != 2)) || [[ $(wc -l <"$work/report") != 1 ]] || ! grep -q -F -e "$words" "$work/report"; then
    fail "'$*' ends with $status:"
    cat "$work/report"
  fi
}
wrong "usage:" "$root" /dev/null "$work/counts"
wrong "neither src nor include in" "$work" /dev/null "$work/counts" "$program"
wrong "no profiles in" "$root" /dev/null "$work" "$program"
wrong "cannot read" "$root" "$work/none" "$work/counts" "$program"
wrong "llvm-cov-14: error: $work/no_program" "$root" /dev/null "$work/counts" "$work/no_program"
lines 'no such text' >"$work/exceptions"
wrong "0 places in $source read 'no such text'" "$root" "$work/exceptions" "$work/counts" "$program"
lines 'return kind_of' | sed 's/kind_of/k/;s/return k/return/' >"$work/exceptions"
wrong "places in $source read 'return'" "$root" "$work/exceptions" "$work/counts" "$program"
lines 'return 5;' | sed '/reason/d' >"$work/exceptions"
wrong "not an exception" "$root" "$work/exceptions" "$work/counts" "$program"
lines 'return 5;' | sed '/reason/i last = "no end"' >"$work/exceptions"
wrong "no line 'no end' behind" "$root" "$work/exceptions" "$work/counts" "$program"
branch "$comparison" sometimes >"$work/exceptions"
wrong "not a direction" "$root" "$work/exceptions" "$work/counts" "$program"
echo '[[' >"$work/exceptions"
wrong "$work/exceptions:" "$root" "$work/exceptions" "$work/counts" "$program"

((failures == 0))
