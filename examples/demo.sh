#!/usr/bin/env bash
# Reads all variables of the simulated pump station, lets its clock step, reads them again, asks for
# some in other ways, and compares what comes with demo.expected, whose numbers follow from the
# formulas of the station.
set -euo pipefail

examples=$(cd "$(dirname "${BASH_SOURCE[0]}")" && pwd)

if (($# != 1)) || [[ $1 == --help ]]; then
  echo "Usage: demo.sh BUILD_DIR"
  [[ ${1-} == --help ]] && exit 0
  exit 2
fi
build=$1/examples
ticks=119 # the first tick at which every switch stands otherwise than at tick 0
seen=$(mktemp)
station_pid=

stop() {
  if [[ -n $station_pid ]]; then
    kill "$station_pid" 2>/dev/null || true
    wait "$station_pid" 2>/dev/null || true
  fi
  rm -f "$seen"
}
trap stop EXIT

fail() {
  echo "demo: $*" >&2
  exit 1
}

coproc station { exec "$build/controller/controller" --port 0; }
# shellcheck disable=SC2154 # coproc sets it, and unsets it when the process ends
station_pid=$station_PID
# shellcheck disable=SC2154
read -r -t 60 line <&"${station[0]}" || fail "the controller does not start"
port=${line##*:}

# A variable stands outside of structures.
mapfile -t names < <(awk '
  $1 == "structure" { inside = 1 }
  $1 !~ /^#/ && NF && !inside { print $1 }
  $1 == "end" { inside = 0 }
' "$examples/pump_station.map")
names+=(tank3.level) # stands in no map

# show STATUS TITLE ARGUMENT...: prints what iohost reads, and keeps it without the times, the
# random ids and the padding of columns. It must end with this status.
show() {
  local expected=$1 title=$2 table status=0
  shift 2
  table=$("$build/iohost/iohost" --backend "$build/modbus_backend/modbus_backend.so" \
    --map "$examples/pump_station.map" --host 127.0.0.1 --port "$port" \
    read "$@") || status=$?
  printf '%s\n%s\n\n' "$title" "$table"
  printf '%s\n%s\n' "$title" "$table" |
    sed -E 's/ [0-9]{4}-[0-9]{2}-[0-9]{2}T[0-9]{2}:[0-9]{2}:[0-9]{2}\.[0-9]{7}Z / TIME /
      s/object<[0-9]+>/object<ID>/; s/([^ ]) +/\1 /g' >>"$seen"
  ((status == expected)) || fail "iohost ended with status $status, not $expected"
}

show 1 "tick 0" "${names[@]}" # two of them cannot be read
"$build/controller/controller" --step "127.0.0.1:$port" --ticks "$ticks"
show 1 "tick $ticks" "${names[@]}"
show 0 "tick $ticks, as text" --as 'string[]' tank.profile
show 1 "tick $ticks, as whole numbers" --as i32 tank.level # it is none now
show 0 "tick $ticks, at length" --print pump2.state

diff -u --label expected --label seen "$examples/demo.expected" "$seen" ||
  fail "these are not the expected values"
echo "demo: all values and the errors are as expected"
