# What users get: packages, their interface, pages.
# Read by ./dev, in the root of the tree.
# shellcheck shell=bash

# Packages for amd64 and armhf, held to the rules of Debian and to what their users do with them.
run_package() {
  local packaged package
  need dpkg-dev file gzip lintian libgtest-dev clang pkg-config make help2man gdb gdb-multiarch \
    binutils-arm-linux-gnueabihf g++-arm-linux-gnueabihf qemu-user
  rm -rf build/packages
  # The same sources give the same packages, whenever that is.
  SOURCE_DATE_EPOCH=$(dpkg-parsechangelog --file packaging/changelog --show-field Timestamp)
  export SOURCE_DATE_EPOCH
  for packaged in release arm32; do
    echo "package: $packaged"
    build "$packaged" packaged >/dev/null
    cpack --preset "$packaged" >/dev/null
  done
  for package in build/packages/*.ddeb; do
    mv "$package" "${package%.ddeb}.deb"
  done
  rm -rf build/packages/_CPack_Packages
  echo "package: lintian"
  # Machine code reads as a misspelled word now and then; the sources have codespell.
  lintian --allow-root --display-info --pedantic --fail-on error,warning,info,pedantic \
    --suppress-tags spelling-error-in-binary build/packages/*.deb
  tests/package/check.sh build/packages build/release build/package-check
  echo "dev: package passed:"
  ls -1 build/packages/*.deb
}

# The interface as the packaged library exports it: names, and types with their layouts.
run_abi() {
  local data_model changed=()
  local -A packaged=([x86_64]=release [arm32]=arm32)
  need abigail-tools
  for data_model in x86_64 arm32; do
    build "${packaged[$data_model]}" iokern >/dev/null
    tools/compare_abi.sh "$@" "abi/$data_model" \
      "build/${packaged[$data_model]}/src/libiokern.so" || changed+=("$data_model")
  done
  if ((${#changed[@]} > 0)); then
    echo "dev: abi CHANGED: ${changed[*]}"
    return 1
  fi
  echo "dev: abi as described"
}

# The same sources give the same library, wherever they lie.
run_reproducible() {
  local packaged different=()
  for packaged in release arm32; do
    need_for "$packaged"
    tools/compare_builds.sh "$packaged" || different+=("$packaged")
  done
  if ((${#different[@]} > 0)); then
    echo "dev: reproducible FAILED: ${different[*]}"
    return 1
  fi
  echo "dev: reproducible"
}

# Any warning of Doxygen is a failure: docs/Doxyfile says so.
run_docs() {
  need doxygen graphviz python3
  rm -rf build/docs
  mkdir -p build
  if ! doxygen docs/Doxyfile; then
    echo "dev: docs FAILED"
    return 1
  fi
  echo "dev: docs in build/docs/html/index.html"
}
