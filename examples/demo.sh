#!/usr/bin/env bash
# Reads all variables of the simulated pump station, lets its clock step, reads them again, and
# compares what comes with demo.expected, whose numbers follow from the formulas of the station.
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

mapfile -t names < <(awk '$1 !~ /^#/ && NF { print $1 }' "$examples/pump_station.map")
names+=(tank3.level) # stands in no map

# show TITLE: prints the table, and keeps it without the times and the padding.
show() {
  local table status=0
  table=$("$build/iohost/iohost" --backend "$build/modbus_backend/modbus_backend.so" \
    --map "$examples/pump_station.map" --host 127.0.0.1 --port "$port" \
    read "${names[@]}") || status=$?
  printf '%s\n%s\n\n' "$1" "$table"
  printf '%s\n%s\n' "$1" "$table" |
    sed -E 's/ [0-9]{4}-[0-9]{2}-[0-9]{2}T[0-9]{2}:[0-9]{2}:[0-9]{2}\.[0-9]{7}Z / TIME /; s/ +/ /g' >>"$seen"
  # Two of the variables cannot be read.
  ((status == 1)) || fail "iohost ended with status $status, not 1"
}

show "tick 0"
"$build/controller/controller" --step "127.0.0.1:$port" --ticks "$ticks"
show "tick $ticks"

diff -u --label expected --label seen "$examples/demo.expected" "$seen" ||
  fail "these are not the expected values"
echo "demo: all values and the two errors are as expected"
