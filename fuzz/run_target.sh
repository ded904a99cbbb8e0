#!/usr/bin/env bash
# Runs one fuzz target for some seconds, from the inputs in the tree and those that it found before.
# What is new stays in the build directory. Prints one line of figures, and one more that names the
# input where something does not hold.
# Usage: run_target.sh BUILD_DIRECTORY NAME SECONDS
set -euo pipefail

if (($# != 3)) || [[ ! $3 =~ ^[1-9][0-9]{0,5}$ ]]; then
  echo "usage: run_target.sh BUILD_DIRECTORY NAME SECONDS" >&2
  exit 2
fi
build=$1 name=$2 seconds=$3
tree=$(dirname "$(readlink -f "${BASH_SOURCE[0]}")")
if [[ ! -x $build/fuzz_$name ]]; then
  echo "run_target.sh: there is no '$build/fuzz_$name'" >&2
  exit 2
fi

new=$build/inputs/$name
finding=$build/findings/$name
log=$build/logs/$name.log
mkdir -p "$new" "$finding" "${log%/*}"

inputs=("$new")
for folder in "$tree/corpus/$name" "$tree/found/$name"; do
  [[ ! -d $folder ]] || inputs+=("$folder")
done
options=(-max_total_time="$seconds" -max_len=512 -len_control=0 -timeout=25 -rss_limit_mb=2048
  -print_final_stats=1 -artifact_prefix="$finding/")
[[ ! -e $tree/$name.dict ]] || options+=(-dict="$tree/$name.dict")

# The sanitizers' fixed shadow memory does not fit wider randomisation of addresses.
launcher=()
if (($(cat /proc/sys/vm/mmap_rnd_bits 2>/dev/null || echo 0) > 28)); then
  launcher=(setarch "$(uname -m)" --addr-no-randomize)
fi

verdict=passed
TIMEFORMAT='%U %S'
{ time "${launcher[@]}" "$build/fuzz_$name" "${options[@]}" "${inputs[@]}" >"$log" 2>&1; } \
  2>"$log.time" || verdict=FAILED
read -r user system <"$log.time"
executions=$(sed -n 's/^stat::number_of_executed_units: *//p' "$log")
executions=${executions:-$(sed -n 's/^#\([0-9]*\).*/\1/p' "$log" | tail -n 1)}
printf '%s %s: %.0f CPU seconds, %s executions\n' "$verdict" "$name" \
  "$(awk "BEGIN { print $user + $system }")" "${executions:-0}"
[[ $verdict == FAILED ]] || exit 0
input=$(sed -n 's/^.*Test unit written to //p' "$log" | tail -n 1)
reason=$(grep -m 1 -E 'does not hold:|ERROR:|runtime error:|libFuzzer: ' "$log" || true)
echo "fuzz: $name FAILED on ${input:-no input, see $log}: ${reason:-see $log}"
exit 1
