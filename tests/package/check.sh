#!/usr/bin/env bash
# Holds the Debian packages to what their users do with them: installs those of both architectures
# into a folder, where no other trace of this tree is, and builds, tests and runs against that.
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
log=$work/log

fail() {
  echo "check.sh: $*" >&2
  exit 1
}

# quiet COMMAND...: what it prints matters only where it fails.
quiet() {
  if ! "$@" >"$log" 2>&1; then
    cat "$log" >&2
    fail "failed: $*"
  fi
}

# With a data base of its own, dpkg installs as it does on a machine, but for dependencies: there is
# nothing else. It refuses packages that differ in a file that both architectures bring.
install_packages() {
  mkdir -p "$root"/var/lib/dpkg/{info,updates,triggers}
  touch "$root"/var/lib/dpkg/{status,available}
  quiet dpkg --root="$root" --add-architecture armhf
  quiet dpkg --root="$root" --force-depends --force-not-root --force-bad-path \
    --log=/dev/null --unpack "$packages"/*.deb
  # One that may not stand beside its like of another architecture is replaced instead.
  [[ $(grep -c '^Status: install ok unpacked' "$root/var/lib/dpkg/status") == 6 ]] ||
    fail "not all of six packages stand side by side"
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
  quiet cmake --build "$work/$name" --parallel "$(nproc)"
}

# expect_output PROGRAM...: what the consumer prints wherever it runs.
expect_output() {
  "$tests/../examples/check_output.sh" "$tests/consumer/consumer.expected" "$@" ||
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

# The commands are those of the tutorial, on a copy: the starter stands alone.
check_starter() {
  cp -r "$project/examples/starter" "$work/starter"
  awk '/^```sh$/ { inside = 1; next } /^```$/ { inside = 0 } inside' \
    "$work/starter/README.md" >"$work/commands"
  grep -q '^ctest' "$work/commands" || fail "the tutorial tests nothing"
  (cd "$work/starter" &&
    CXXFLAGS=$strict CMAKE_PREFIX_PATH=$root/usr quiet bash -e "$work/commands")
  grep -q '^100% tests passed' "$log" || fail "the starter has no test"
}

echo "package: installing into a folder, amd64 and armhf side by side"
install_packages
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

echo "package: the starter, by the commands of its tutorial"
check_starter

echo "package: consumers of what cmake --install gives, moved elsewhere since"
quiet cmake --install "$build" --prefix "$work/installed"
mv "$work/installed" "$work/moved"
build_project "$tests/consumer" consumer_moved -DCMAKE_CXX_STANDARD=17 \
  -DCMAKE_PREFIX_PATH="$work/moved"
expect_output "$work/consumer_moved/consumer"
check_pkg_config "$work/moved" consumer_moved_pc
