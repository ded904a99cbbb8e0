# What can be said of the sources without running them.
# Read by ./dev, in the root of the tree.
# shellcheck shell=bash

# cpp_files: ours, each name ended by a zero byte.
cpp_files() {
  find include src tests examples bench fuzz -type f \( -name '*.hpp' -o -name '*.cpp' -o -name '*.h' \) -print0
}

check_format() {
  cpp_files | xargs -0 -r clang-format --dry-run --Werror
}

check_headers() {
  local header compiler standard
  for header in $(cd include && find . -name '*.hpp' -printf '%P\n' | sort); do
    for compiler in g++ clang++; do
      for standard in c++17 c++20; do
        # The check of the header set does these.
        [[ $compiler == clang++ && $standard == c++20 ]] ||
          printf '%s\n' "$compiler" "$standard" "$header"
      done
    done
  done | xargs -r -P2 -n3 tools/compile_header.sh
}

# The headers as the target hands them to its users.
check_header_set() {
  configure clang >/dev/null || return
  cmake --build --preset clang --target all_verify_interface_header_sets
}

# From a configuration in which every source has a command of its own. The examples, which take
# several minutes for their JSON and their command line, are looked at every night.
check_tidy() {
  need_for clang
  cmake --preset clang -B build/tidy -DCMAKE_UNITY_BUILD=OFF -DCMAKE_DISABLE_PRECOMPILE_HEADERS=ON \
    -DTAVI_IOAPI_BUILD_EXAMPLES=ON >/dev/null || return
  local folders=(src)
  [[ -z ${DEV_NIGHTLY-} ]] || folders+=(examples)
  find "${folders[@]}" -name '*.cpp' -print0 | xargs -0 -r tools/tidy_sources.py build/tidy
}

check_spelling() {
  codespell
}

check_scripts() {
  find dev .ci/run tools examples tests fuzz \( -name '*.sh' -o -name dev -o -name run \) -type f -print0 |
    xargs -0 shellcheck
}

run_check() {
  local stage log start failed=()
  need_for clang
  need clang-format clang-tidy codespell python3 shellcheck
  log=$(mktemp)
  for stage in format headers header_set tidy spelling scripts; do
    start=$SECONDS
    if "check_$stage" >"$log" 2>&1; then
      echo "check: $stage passed ($((SECONDS - start)) s)"
    else
      cat "$log"
      echo "check: $stage FAILED ($((SECONDS - start)) s)"
      failed+=("$stage")
    fi
  done
  rm -f "$log"
  if ((${#failed[@]} > 0)); then
    echo "check: FAILED: ${failed[*]}"
    return 1
  fi
  echo "check: passed"
}
