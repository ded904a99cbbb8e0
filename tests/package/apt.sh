#!/usr/bin/env bash
# Lets apt install the packages from a repository, as it does for their users. Its whole state lies
# in a folder: what this machine has installed is known, and stays as it is.
# Usage: apt.sh COMMAND PACKAGES WORK, where COMMAND is
#   resolve  what apt would install, also on a fresh Debian where its archive is in reach, and that
#            it refuses packages that need what cannot be had
#   install  installs those for this machine into WORK/root
#   remove   removes them again and sees that nothing is left
set -euo pipefail

command=$1
packages=$(realpath "$2")
work=$(realpath "$3")
root=$work/root
# shellcheck source=tests/package/support.sh
. "$(dirname "${BASH_SOURCE[0]}")/support.sh"

# What each package brings on a machine that has nothing but apt.
base="gcc-12-base libc6 libgcc-s1 libstdc++6"
debian_keys=/usr/share/keyrings/debian-archive-keyring.gpg

# set_up NAME STATUS ARCHITECTURE...: an apt of its own in WORK/NAME, for machines with these
# architectures, the first of which is their own, and with the packages that the file STATUS names.
# Nothing is read from /etc but how to reach the net, and what dpkg leaves out on images without
# documentation is put back.
set_up() {
  local own=$work/$1 status=$2 architecture
  shift 2
  mkdir -p "$own"/{state/lists/partial,cache/archives/partial,log}
  {
    apt-config dump Acquire | grep -i 'proxy' || true
    cat <<END
Dir::Etc::main "/dev/null";
Dir::Etc::parts "/dev/null";
Dir::Etc::sourceparts "/dev/null";
Dir::Etc::preferencesparts "/dev/null";
Dir::Etc::sourcelist "$own/sources.list";
Dir::State "$own/state";
Dir::State::status "$status";
Dir::Cache "$own/cache";
Dir::Log "$own/log";
APT::Architecture "$1";
APT::Install-Recommends "false";
APT::Sandbox::User "root";
Acquire::Languages "none";
Acquire::Retries "1";
Acquire::http::Timeout "20";
DPkg::Use-Pty "false";
DPkg::Options { "--root=$root"; "--force-not-root"; "--force-bad-path"; "--log=/dev/null";
  "--path-include=/usr/*"; };
END
    for architecture; do echo "APT::Architectures:: \"$architecture\";"; done
  } >"$own/apt.conf"
}

# on NAME COMMAND...: with the apt of that name.
on() {
  local own=$work/$1
  shift
  APT_CONFIG=$own/apt.conf "$@"
}

# make_repository FOLDER: of the packages that lie in it.
make_repository() {
  (cd "$1" && dpkg-scanpackages --multiversion . >Packages 2>"$work/log") || {
    cat "$work/log" >&2
    fail "no repository in $1"
  }
}

# installed_here FILE: what this machine has, without these packages.
installed_here() {
  mkdir -p "$(dirname "$1")"
  awk 'BEGIN { RS = ""; ORS = "\n\n" } !/(^|\n)Package: libiokern/' /var/lib/dpkg/status >"$1"
}

# debian_archive: where this machine gets Debian 12 from, or where all can.
debian_archive() {
  local found
  # shellcheck disable=SC2016 # apt's own names
  found=$(apt-get indextargets --format '$(RELEASE) $(COMPONENT) $(REPO_URI)' \
    'Created-By: Packages' 2>/dev/null | sed -n 's/^bookworm main //p' | head -n1)
  echo "${found:-http://deb.debian.org/debian}"
}

# update NAME SOURCE...: reads the sources anew; false where one cannot be had.
update() {
  local name=$1
  shift
  printf '%s\n' "$@" >"$work/$name/sources.list"
  on "$name" timeout 300 apt-get -q update --error-on=any >"$work/log" 2>&1
}

# expect_installed NAME REQUEST PACKAGE...: what apt would install for it, and nothing else.
expect_installed() {
  local name=$1 request=$2 seen
  shift 2
  # shellcheck disable=SC2086 # a list
  quiet on "$name" apt-get -s install $request
  seen=$(sed -n 's/^Inst \([^ ]*\) .*/\1/p' "$work/log" | sort | xargs)
  expect "apt, asked for $request" "$(printf '%s\n' "$@" | sort | xargs)" "$seen"
}

# expect_refused NAME REQUEST DEPENDENCY: it names what cannot be had.
expect_refused() {
  if on "$1" apt-get -s install "$2" >"$work/log" 2>&1; then
    fail "apt takes $2 without $3"
  fi
  grep -qF "Depends: $3 but" "$work/log" || {
    cat "$work/log" >&2
    fail "apt refuses $2, but not for want of $3"
  }
}

# break_package FILE DEPENDENCY FOLDER: a copy that needs one more.
break_package() {
  local tree=$work/broken_tree
  rm -rf "$tree"
  dpkg-deb --raw-extract "$1" "$tree"
  sed -i "s/^Depends: /&$2, /" "$tree/DEBIAN/control"
  grep -qF "Depends: $2" "$tree/DEBIAN/control" || fail "$1 depends on nothing"
  mkdir -p "$3"
  quiet dpkg-deb --root-owner-group --build "$tree" "$3/$(basename "$1")"
}

# A fresh Debian of each architecture, and one that has both.
resolve_on_fresh_debian() {
  local archive foreign signed=
  archive=$(debian_archive)
  [[ ! -r $debian_keys ]] || signed=" signed-by=$debian_keys"
  : >"$work/nothing_installed"
  set_up fresh "$work/nothing_installed" amd64 armhf
  if ! update fresh "deb [trusted=yes] file:$repository ./" \
    "deb [arch=amd64,armhf$signed] $archive bookworm main"; then
    echo "package: NOT DONE, for want of $archive: dependencies on a fresh Debian, and on armhf;" \
      "apt says: $(grep '^[EW]:' "$work/log" | tail -n1 || true)"
    return
  fi
  # shellcheck disable=SC2086 # lists
  {
    foreign=$(printf '%s:armhf ' $base libiokern libiokern-dev)
    expect_installed fresh libiokern-dev $base libiokern libiokern-dev
    expect_installed fresh "libiokern-tools libiokern-dbgsym" $base libelf1 libmodbus5 zlib1g \
      libiokern libiokern-dbgsym libiokern-tools
    expect_installed fresh "libiokern-dev libiokern-dev:armhf" $base libiokern libiokern-dev \
      $foreign
  }
  sed -i -e '/^APT::Arch/d' "$work/fresh/apt.conf"
  printf 'APT::Architecture "armhf";\nAPT::Architectures { "armhf"; };\n' >>"$work/fresh/apt.conf"
  # shellcheck disable=SC2086 # a list
  expect_installed fresh libiokern-dev $base libiokern libiokern-dev
}

# It has what the packages need, for it has built them.
resolve_here() {
  installed_here "$work/installed_here"
  set_up here "$work/installed_here" amd64
  update here "deb [trusted=yes] file:$repository ./" || fail "apt does not read the repository"
  expect_installed here libiokern-dev libiokern libiokern-dev
  expect_installed here libiokern-dbgsym libiokern libiokern-dbgsym
  expect_installed here libiokern-tools libiokern libiokern-tools
}

refuse_broken() {
  local dependency broken=$work/broken
  for dependency in 'libiokern-nowhere' 'libstdc++6 (>= 99)'; do
    rm -rf "$broken"
    break_package "$packages"/libiokern-dev_*_amd64.deb "$dependency" "$broken"
    cp "$packages"/libiokern_*_amd64.deb "$broken"
    make_repository "$broken"
    update here "deb [trusted=yes] file:$broken ./" || fail "apt does not read the broken copy"
    expect_installed here libiokern libiokern
    expect_refused here libiokern-dev "$dependency"
  done
  rm -rf "$broken" "$work/broken_tree"
}

# The data base knows what this machine has, so that apt and dpkg find what is needed. A folder is
# no place for scripts to run in, and the packages have none.
install_packages() {
  installed_here "$root/var/lib/dpkg/status"
  mkdir -p "$root"/var/lib/dpkg/{info,updates,triggers}
  touch "$root/var/lib/dpkg/available"
  set_up private "$root/var/lib/dpkg/status" amd64
  update private "deb [trusted=yes] file:$repository ./" || fail "apt does not read the repository"
  quiet on private apt-get -y install libiokern-dev libiokern-tools libiokern-dbgsym
  expect "packages installed by apt" 4 \
    "$(grep -A1 '^Package: libiokern' "$root/var/lib/dpkg/status" |
      grep -c '^Status: install ok installed')"
}

# No file is left but the data base of dpkg.
remove_packages() {
  quiet on private apt-get -y purge 'libiokern*'
  expect "left behind" "" "$(find "$root" -path "$root/var" -prune -o ! -type d -print)"
  expect "packages that are still known" "" \
    "$(sed -n 's/^Package: \(libiokern.*\)/\1/p' "$root/var/lib/dpkg/status")"
}

repository=$work/repository
if [[ ! -e $repository/Packages ]]; then
  mkdir -p "$repository"
  cp "$packages"/*.deb "$repository"
  make_repository "$repository"
fi
case $command in
  resolve)
    resolve_on_fresh_debian
    rm -rf "$work/fresh" # the lists of Debian are large
    resolve_here
    refuse_broken
    ;;
  install) install_packages ;;
  remove) remove_packages ;;
  *) fail "apt.sh has no command '$command'" ;;
esac
