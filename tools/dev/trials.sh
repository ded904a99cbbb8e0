# Runs that measure or try the library beyond its tests.
# Read by ./dev, in the root of the tree.
# shellcheck shell=bash

# run_bench [--quick] [--filter REGEX], or --instructions, or --accept.
run_bench() {
  local alone='' options=()
  while (($# > 0)); do
    case $1 in
      --quick) options+=("$1") ;;
      --filter)
        [[ -n ${2-} ]] || wrong_use "'--filter' of 'bench' takes a regular expression"
        grep -E -q -e "$2" /dev/null 2>/dev/null || (($? == 1)) || wrong_use "not a regular expression: '$2'"
        options+=("--filter=$2")
        shift
        ;;
      --instructions | --accept)
        [[ -z $alone ]] || wrong_use "superfluous argument '$1' of 'bench'"
        alone=$1
        ;;
      -*) wrong_use "unknown option '$1' of 'bench'" ;;
      *) wrong_use "superfluous argument '$1' of 'bench'" ;;
    esac
    shift
  done
  [[ -z $alone || ${#options[@]} == 0 ]] || wrong_use "'$alone' of 'bench' stands alone"
  build bench bench/all >&2
  # The tools must tell wrong answers and changes, or their silence says nothing.
  ctest --test-dir build/release/bench --output-on-failure >&2
  case $alone in
    --instructions) python3 -B bench/report/instructions.py build/release/bench/bench ;;
    --accept) python3 -B bench/report/instructions.py build/release/bench/bench --accept ;;
    *) python3 -B bench/report/performance.py build/release/bench/bench "${options[@]}" ;;
  esac
}

# run_fuzz SECONDS: every target, two at a time.
run_fuzz() {
  build asan fuzz/all >/dev/null
  if ! find fuzz -maxdepth 1 -name '*.cpp' -printf '%f\n' | sort | sed 's/\.cpp$//' |
    xargs -P2 -I{} fuzz/run_target.sh build/asan/fuzz {} "$1"; then
    echo "dev: fuzz FAILED"
    return 1
  fi
  echo "dev: fuzz passed"
}

# In two processes, each of which takes one half of the numbers.
run_exhaustive() {
  local start=$SECONDS first second verdict=passed
  build release every_float >/dev/null
  build/release/tests/properties/every_float 0 0x80000000 &
  first=$!
  build/release/tests/properties/every_float 0x80000000 0x100000000 &
  second=$!
  wait "$first" || verdict=FAILED
  wait "$second" || verdict=FAILED
  echo "dev: exhaustive $verdict ($((SECONDS - start)) s)"
  [[ $verdict == passed ]]
}

# Nothing is divided: it takes 5 GiB of memory.
run_load() {
  local packaged launcher=() verdict=passed
  for packaged in release arm32; do
    echo "load: $packaged"
    build "$packaged" load_test >/dev/null
    [[ $packaged == release ]] || launcher=(qemu-arm -L /usr/arm-linux-gnueabihf)
    TAVI_IOAPI_LOAD_DIVISOR=1 "${launcher[@]}" "build/$packaged/tests/load/load_test" --gtest_brief=1 ||
      verdict=FAILED
  done
  echo "dev: load $verdict"
  [[ $verdict == passed ]]
}

run_helgrind() {
  need valgrind
  build debug threads_test >/dev/null
  build debug structures_test >/dev/null
  if ! tests/threads/helgrind/run.sh build/debug; then
    echo "dev: helgrind FAILED"
    return 1
  fi
  echo "dev: helgrind passed"
}

# run_endurance SEED: one run after the other, for both count descriptors and memory.
run_endurance() {
  local verdict=passed endurance=build/debug/tests/examples/endurance/endurance
  build debug endurance >/dev/null
  "$endurance" restarts 1000 "$1" || verdict=FAILED
  "$endurance" hours 24 "$1" || verdict=FAILED
  "$endurance" files 24 "$1" || verdict=FAILED
  echo "dev: endurance $verdict"
  [[ $verdict == passed ]]
}

# run_coverage: every line of the library must run in a test, or be an exception with a reason.
run_coverage() {
  local programs
  rm -rf build/coverage/counts
  run_tests coverage || return
  mapfile -t programs < <(find build/coverage/src build/coverage/tests -type f -executable | sort)
  tools/check_coverage.py . tools/coverage_exceptions.toml build/coverage/counts "${programs[@]}"
}

# run_mutants [--sample N]
run_mutants() {
  need cmake ninja-build ccache g++ libgtest-dev libgmock-dev python3 python3-clang-14 libclang-14-dev
  # The bindings belong to the Python of the system.
  /usr/bin/python3 -B tools/mutants/run.py "$@"
}
