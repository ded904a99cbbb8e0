# The Debian packages that a command takes, installed where they are missing.
# Read by ./dev, in the root of the tree.
# shellcheck shell=bash

as_root() {
  if ((EUID == 0)); then
    "$@"
  elif command -v sudo >/dev/null; then
    sudo "$@"
  else
    echo "dev: installing packages takes root or sudo" >&2
    return 1
  fi
}

# need PACKAGE...: installs those that are missing.
need() {
  local package log missing=()
  for package; do
    [[ $(dpkg-query -W -f='${db:Status-Status}' "$package" 2>/dev/null) == installed ]] ||
      missing+=("$package")
  done
  ((${#missing[@]} > 0)) || return 0
  echo "dev: installing ${missing[*]}"
  log=$(mktemp)
  if ! { as_root apt-get -q update &&
    as_root env DEBIAN_FRONTEND=noninteractive apt-get -q -o DPkg::Lock::Timeout=300 \
      install -y --no-install-recommends "${missing[@]}"; } </dev/null >"$log" 2>&1; then
    cat "$log" >&2
    rm -f "$log"
    echo "dev: could not install ${missing[*]}" >&2
    exit 1
  fi
  rm -f "$log"
}

# need_for PRESET: what it takes to configure and build it.
need_for() {
  if [[ $1 == bench ]]; then
    need python3 valgrind libbenchmark-dev qt6-base-dev libpoco-dev libglib2.0-dev libboost1.81-dev \
      libboost-json1.81-dev libfmt-dev
  fi
  local packages=(cmake ninja-build ccache libgtest-dev libgmock-dev)
  if [[ $1 == *arm32 ]]; then
    packages+=(g++-arm-linux-gnueabihf qemu-user)
  elif [[ $1 == arm64 ]]; then
    packages+=(g++-aarch64-linux-gnu qemu-user)
  else
    packages+=(g++ libmodbus-dev libcli11-dev nlohmann-json3-dev libelf-dev pkg-config
      python3-pymodbus python3-serial-asyncio)
  fi
  case $1 in
    debug) packages+=(gdb python3) ;;
    release) packages+=(librapidcheck-dev) ;;
    asan) packages+=(libmpfr-dev) ;;
    arm32) packages+=(gdb-multiarch) ;;
    coverage) packages+=(llvm-14 python3) ;;
  esac
  if [[ $1 == clang || $1 == [at]san || $1 == coverage ]]; then
    packages+=(clang libclang-rt-14-dev)
  fi
  need "${packages[@]}"
}
