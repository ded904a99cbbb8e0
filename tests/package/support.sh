# What the checks of the packages share; to be sourced where $work is a folder.
# shellcheck shell=bash disable=SC2154

# fail WORD...: says why, and ends all.
fail() {
  echo "package: $*" >&2
  exit 1
}

# quiet COMMAND...: what it prints matters only where it fails.
quiet() {
  if ! "$@" >"$work/log" 2>&1; then
    cat "$work/log" >&2
    fail "failed: $*"
  fi
}

# expect WHAT EXPECTED SEEN
expect() {
  [[ $2 == "$3" ]] || fail "$1: expected '$2', seen '$3'"
}
