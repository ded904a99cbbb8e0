#!/usr/bin/env bash
# Tells the whole story of host and backends: what a backend can be told, what it says to that, what
# there is, reading, writing, reading back, watching. First a simulated pump station over Modbus TCP,
# then the machine itself. All that is shown is compared with demo.expected, whose numbers follow
# from the formulas of the station; those of the machine are each an N there.
set -euo pipefail

examples=$(cd "$(dirname "${BASH_SOURCE[0]}")" && pwd)

if (($# != 1)) || [[ $1 == --help ]]; then
  echo "Usage: demo.sh BUILD_DIR"
  [[ ${1-} == --help ]] && exit 0
  exit 2
fi
build=$1/examples
scratch=$(mktemp -d)
seen=$scratch/seen
station_pid=

stop() {
  if [[ -n $station_pid ]]; then
    kill "$station_pid" 2>/dev/null || true
    wait "$station_pid" 2>/dev/null || true
  fi
  rm -rf "$scratch"
}
trap stop EXIT

fail() {
  echo "demo: $*" >&2
  exit 1
}

# Without what differs from run to run: times, ids, the padding of columns.
plain() {
  sed -E 's/[0-9]{4}-[0-9]{2}-[0-9]{2}T[0-9]{2}:[0-9]{2}:[0-9]{2}\.[0-9]{7}Z/TIME/
    s/object<[0-9]+>/object<ID>/; s/([^ ]) +/\1 /g'
}

# Without the values, which differ from machine to machine.
without_numbers() {
  sed -E 's/([ (])-?[0-9]+(\.[0-9]+)?(e[-+][0-9]+)?/\1N/g'
}

# story TITLE
story() {
  printf '=== %s\n' "$1" | tee -a "$seen"
}

# show STATUS ARGUMENT...: what iohost says to these; it must end with this status. The backend and
# its configuration stand in the array `host`, a filter for what varies in the array `filter`.
show() {
  local expected=$1 status=0
  shift
  printf '$ iohost %s\n' "$*" | tee -a "$seen"
  "$build/iohost/iohost" "${host[@]}" "$@" >"$scratch/out" 2>"$scratch/log" || status=$?
  cat "$scratch/out" "$scratch/log"
  plain <"$scratch/out" | "${filter[@]}" >>"$seen"
  echo | tee -a "$seen"
  ((status == expected)) || fail "iohost ended with status $status, not $expected"
}

step() {
  "$build/controller/controller" --step "127.0.0.1:$port" --ticks "$1"
}

coproc station { exec "$build/controller/controller" --port 0; }
# shellcheck disable=SC2154 # coproc sets it, and unsets it when the process ends
station_pid=$station_PID
# shellcheck disable=SC2154
read -r -t 60 line <&"${station[0]}" || fail "the controller does not start"
port=${line##*:}

cat >"$scratch/pump.conf" <<EOF
# the pump station
map  = $examples/pump_station.map
host = 127.0.0.1
port = $port
poll_interval_ms = 100
timeout_ms = 20000
EOF

# A variable stands outside of structures.
mapfile -t names < <(awk '
  $1 == "structure" { inside = 1 }
  $1 !~ /^#/ && NF && !inside { print $1 }
  $1 == "end" { inside = 0 }
' "$examples/pump_station.map")
names+=(tank3.level) # stands in no map

filter=(cat)
host=(--backend modbus)
story "a pump station, over Modbus TCP"
show 0 form
host+=(--config "$scratch/pump.conf")
show 1 verify --set word_order=middle --set timeout_ms=0
show 0 verify
show 0 browse

show 1 read "${names[@]}" # two of them cannot be read
step 119                  # the first tick at which every switch stands otherwise than at tick 0
show 1 read "${names[@]}"
show 0 read --as 'string[]' tank.profile
show 1 read --as i32 tank.level # it is none now
show 0 read --print pump2.state

show 0 write panel.limit=3.25 panel.note='see pump 2' 'panel.factors=[4, 3, 2, 1]' \
  panel.recipe/batches=12 'panel.recipe={"name": "red"}' lamp1.on=true
show 1 write tank.level=3 'panel.factors=[1]' panel.recipe/batches=many clock.step=70000
show 0 read panel.limit panel.note panel.factors panel.recipe lamps.on

# A change is shown once. The clock steps as soon as the watch has shown what there is.
(
  until [[ -s $scratch/out && $(<"$scratch/out") == *clock.ticks* ]]; do sleep 0.1; done
  step 1 && sleep 1 && step 1
) &
: >"$scratch/out"
show 0 watch --for 4 tank.level panel.limit clock.ticks
wait $!

host=(--backend linux)
story "this machine"
show 0 form
show 1 verify --set proc=/nowhere --set poll_interval_ms=0
show 0 verify
show 0 browse memory
show 1 write memory.total=0
filter=(without_numbers)
show 0 read load.one uptime.total memory.total cpu.total
show 0 read memory.total # what was refused has changed nothing
show 0 read --print network.lo
show 0 watch --for 3 memory.total

diff -u --label expected --label seen "$examples/demo.expected" "$seen" ||
  fail "these are not the expected values"
echo "demo: all that was shown is as expected"
