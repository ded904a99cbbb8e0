#!/usr/bin/env bash
# Holds the Debian packages to what their users do with them: lets apt resolve and install them,
# those of armhf beside, into a folder where no other trace of this tree is, and builds, tests and
# runs against that.
# Usage: check.sh PACKAGES BUILD WORK: the folder of the packages, the build of the library for this
# machine, and a folder that is made anew
set -euo pipefail

packages=$(realpath "$1")
build=$(realpath "$2")
tests=$(cd "$(dirname "${BASH_SOURCE[0]}")" && pwd)
project=$(cd "$tests/../.." && pwd)
rm -rf "$3"
mkdir -p "$3"
work=$(realpath "$3")

root=$work/root
strict="-Wall -Wextra -Wpedantic -Wconversion -Wshadow -Werror"
export CMAKE_GENERATOR=Ninja
# Make, too, is to use all processors.
CMAKE_BUILD_PARALLEL_LEVEL=$(nproc)
export CMAKE_BUILD_PARALLEL_LEVEL
log=$work/log
# shellcheck source=tests/package/support.sh
. "$tests/support.sh"

# Beside those of this machine, which apt has installed. There is nothing else for armhf, so that
# dpkg is told not to ask for it. It refuses packages that differ in a file which both bring.
unpack_armhf() {
  quiet dpkg --root="$root" --add-architecture armhf
  quiet dpkg --root="$root" --force-depends --force-not-root --force-bad-path \
    --log=/dev/null --path-include='/usr/*' --unpack "$packages"/*_armhf.deb
  # One that may not stand beside its like of another architecture is replaced instead.
  expect "packages side by side" 7 \
    "$(grep -A1 '^Package: libiokern' "$root/var/lib/dpkg/status" |
      grep -cE '^Status: install ok (installed|unpacked)')"
}

remove_armhf() {
  quiet dpkg --root="$root" --force-not-root --force-bad-path --log=/dev/null \
    --purge libiokern{,-dev,-dbgsym}:armhf
}

# check_library TRIPLET TOOLS: the library as packaged, and where its debug symbols are looked for.
check_library() {
  local library=$root/usr/lib/$1/libiokern.so id
  quiet "$project/tools/check_exports.sh" "$2nm" "$2readelf" "$library"
  id=$("$2readelf" --notes "$library" | sed -n 's/.*Build ID: //p')
  [[ -n $id ]] || fail "$library has no id"
  "$2readelf" --sections "$root/usr/lib/debug/.build-id/${id:0:2}/${id:2}.debug" >"$log"
  grep -q '\.debug_info' "$log" || fail "no debug symbols for $library"
}

# build_project SOURCE NAME OPTION...: in WORK/NAME.
build_project() {
  local source=$1 name=$2
  shift 2
  quiet cmake -S "$source" -B "$work/$name" -DCMAKE_CXX_FLAGS="$strict" \
    -DCMAKE_CXX_EXTENSIONS=OFF "$@"
  quiet cmake --build "$work/$name"
}

# expect_output PROGRAM...: what the consumer prints wherever it runs.
expect_output() {
  "$tests/../example_programs/check_output.sh" "$tests/consumer/consumer.expected" "$@" ||
    fail "not as expected: $*"
}

# check_pkg_config PREFIX NAME
check_pkg_config() {
  local libdir=$1/lib/x86_64-linux-gnu flags
  export PKG_CONFIG_PATH=$libdir/pkgconfig
  [[ $(pkg-config --modversion iokern) == 0.5.0 ]] || fail "pkg-config has another version"
  # shellcheck disable=SC2046,SC2086 # lists of options
  quiet g++ -std=c++17 $strict "$tests/consumer/consumer.cpp" \
    $(pkg-config --cflags --libs iokern) -o "$work/$2"
  flags=$(pkg-config --variable=libdir iokern)
  [[ $(realpath "$flags") == "$libdir" ]] || fail "pkg-config leads to $flags"
  expect_output env LD_LIBRARY_PATH="$libdir" "$work/$2"
}

# check_auto_load GDB TRIPLET PROGRAM ARGUMENT...: gdb has the printers once it has loaded the
# library, by what the packages install. Below a folder of scripts it looks under the whole path of
# the library, and here that begins with the path of the root.
check_auto_load() {
  local gdb=$1 script=$root/usr/share/gdb/auto-load/usr/lib/$2/libiokern.so-gdb.py
  local scripts=$work/auto-load program=$3
  shift 3
  [[ -f $script ]] || fail "there is no $script"
  rm -rf "$scripts"
  mkdir -p "$scripts/none" "$scripts/all$root"
  ln -s "$root/usr/share/gdb/auto-load/usr" "$scripts/all$root/usr"
  local folder
  for folder in none all; do
    "$gdb" -nx -batch -iex 'set debuginfod enabled off' -iex 'add-auto-load-safe-path /' \
      -iex "set auto-load scripts-directory $scripts/$folder" "$@" \
      -ex 'info pretty-printer' "$program" >"$log" 2>&1 || true
    if [[ $folder == none ]]; then
      ! grep -qx '    io_value' "$log" || fail "$gdb has the printers without the packages"
    elif ! grep -qx '    io_value' "$log"; then
      cat "$log" >&2
      fail "$gdb does not load the printers for $program"
    fi
  done
}

# copy_examples NAME: as the tutorial tells its readers, to WORK/NAME.
copy_examples() {
  cp -r "$root/usr/share/doc/libiokern-dev/examples" "$work/$1"
}

# take_commands: the blocks of the tutorial, as WORK/commands.1 and so on.
take_commands() {
  awk -v file="$work/commands." '
    /^```sh$/ { inside = 1; ++number; next }
    /^```$/ { inside = 0 }
    inside { print >(file number) }' \
    "$root/usr/share/doc/libiokern-dev/examples/starter/README.md"
  [[ -e $work/commands.3 && ! -e $work/commands.4 ]] ||
    fail "the tutorial does not build, check and build for armhf"
}

# follow_tutorial NAME NUMBER: one block of commands, on the copy of that name.
follow_tutorial() {
  (cd "$work/$1/starter" && CXXFLAGS="$strict -Wno-psabi" CMAKE_PREFIX_PATH=$root/usr \
    PATH=$root/usr/bin:$PATH LD_LIBRARY_PATH=$root/usr/lib/x86_64-linux-gnu \
    quiet bash -e "$work/commands.$2")
}

expect_tested() {
  grep -q '^100% tests passed' "$log" || fail "the starter has no test"
}

# With Make, which CMake takes by itself, and with Ninja.
check_starter() {
  take_commands
  copy_examples ninja
  follow_tutorial ninja 1
  expect_tested
  [[ -e $work/ninja/starter/build/build.ninja ]] || fail "the starter is not built with Ninja"
  copy_examples make
  (
    unset CMAKE_GENERATOR
    follow_tutorial make 1
    expect_tested
    [[ -e $work/make/starter/build/Makefile ]] || fail "the starter is not built with Make"
    follow_tutorial make 2
    grep -qE 'rules: [1-9][0-9]* ok, 0 FAILED' "$log" || fail "iohost checks nothing"
    follow_tutorial make 3
    expect_tested
    "arm-linux-gnueabihf-readelf" --file-header "$work/make/starter/build-armhf/sensor_backend.so" |
      grep -q 'Machine: *ARM' || fail "the starter for armhf is for another machine"
  )
}

# A module that breaks a rule, one that is none, and those that iohost finds by their words.
check_iohost() {
  local iohost=$root/usr/bin/iohost word
  export LD_LIBRARY_PATH=$root/usr/lib/x86_64-linux-gnu
  for word in linux modbus; do
    quiet "$iohost" info "$word"
    grep -qF "$root/usr/lib/iokern/backends/${word}_backend.so" "$log" ||
      fail "iohost takes the backend '$word' from elsewhere"
  done
  if "$iohost" info "$work/first/build/libfirst_backend.so" >"$log" 2>&1; then
    fail "iohost takes what is no backend"
  fi
  grep -q 'it is no backend' "$log" || fail "iohost does not say what is wrong"
  zcat "$root/usr/share/man/man1/iohost.1.gz" >"$log"
  grep -q 'watch' "$log" || fail "the manual page of iohost does not tell its commands"
  unset LD_LIBRARY_PATH
}

echo "package: what apt would install, and what it refuses"
"$tests/apt.sh" resolve "$packages" "$work"
echo "package: installing into a folder by apt, those of armhf beside"
"$tests/apt.sh" install "$packages" "$work"
unpack_armhf
echo "package: looking at exports and debug symbols"
check_library x86_64-linux-gnu ""
check_library arm-linux-gnueabihf arm-linux-gnueabihf-

echo "package: a consumer in C++17 with g++, in C++20 with clang++; other versions are refused"
export CMAKE_PREFIX_PATH=$root/usr
build_project "$tests/consumer" consumer17 -DCMAKE_CXX_COMPILER=g++ -DCMAKE_CXX_STANDARD=17
expect_output "$work/consumer17/consumer"
build_project "$tests/consumer" consumer20 -DCMAKE_CXX_COMPILER=clang++ -DCMAKE_CXX_STANDARD=20
expect_output "$work/consumer20/consumer"

echo "package: a consumer with pkg-config"
check_pkg_config "$root/usr" consumer_pc

echo "package: modules of two revisions"
build_project "$tests/revision" revision
quiet ctest --test-dir "$work/revision" --output-on-failure --no-tests=error

echo "package: a consumer for armhf, run under emulation"
unset CMAKE_PREFIX_PATH
build_project "$tests/consumer" consumer_arm -DCMAKE_CXX_STANDARD=17 \
  -DCMAKE_TOOLCHAIN_FILE="$project/cmake/arm-linux-gnueabihf.cmake" \
  -DCMAKE_STAGING_PREFIX="$root/usr" -DCMAKE_CXX_FLAGS="$strict -Wno-psabi"
expect_output qemu-arm -L /usr/arm-linux-gnueabihf \
  -E LD_LIBRARY_PATH="$root/usr/lib/arm-linux-gnueabihf" "$work/consumer_arm/consumer"

echo "package: gdb loads the printers by itself, for both architectures"
check_auto_load gdb x86_64-linux-gnu "$work/consumer17/consumer" -ex 'break main' -ex run
check_auto_load gdb-multiarch arm-linux-gnueabihf \
  "$root/usr/lib/arm-linux-gnueabihf/libiokern.so"

echo "package: the starter, by the commands of its tutorial: with Ninja, with Make, for armhf"
check_starter

echo "package: the first examples, and iohost"
copy_examples installed_examples
CMAKE_PREFIX_PATH=$root/usr build_project "$work/installed_examples/first" first/build
"$tests/../example_programs/check_output.sh" "$tests/../example_programs/first_host.expected" \
  "$work/first/build/first_host" || fail "the first host prints something else"
check_iohost

echo "package: consumers of what cmake --install gives, moved elsewhere since"
quiet cmake --install "$build" --prefix "$work/installed"
mv "$work/installed" "$work/moved"
build_project "$tests/consumer" consumer_moved -DCMAKE_CXX_STANDARD=17 \
  -DCMAKE_PREFIX_PATH="$work/moved"
expect_output "$work/consumer_moved/consumer"
check_pkg_config "$work/moved" consumer_moved_pc

echo "package: removing them by apt"
remove_armhf
"$tests/apt.sh" remove "$packages" "$work"
