#!/usr/bin/env bash
# Installs what is missing, builds the project for other platforms with all warnings as errors, and runs
# the tests there:
#   scripts/test-platforms.sh [libcxx|i386|aarch64|s390x]...        all when none is named
# libcxx is Clang with LLVM's standard library on this machine, which must be x86-64. i386 runs on it as
# well; aarch64 and big-endian s390x run under QEMU, where only those tests are built that a processor
# can break: of texts, numbers, bytes and the forms.
set -euo pipefail
cd "$(dirname "$0")/.."
. scripts/packages.sh
. scripts/sysroot.sh

# How time grows with documents, and what thousands of generated ones lead to, depends on no processor, and
# takes minutes under QEMU.
long_tests='*AsDescribed.*:*Crafted*:*Million*:LegacySize.*:LongReading.*'

# prepare PLATFORM: installs the compiler; `options` has CMake use it, `choices` and `targets` say what is
# built, `programs` and `filter` which tests of it run.
prepare() {
  targets=(all)
  programs=.
  filter='*'
  options=(--toolchain "$PWD/cmake/linux-gnu.cmake")
  choices=(-DCMAKE_FIND_ROOT_PATH="$build/sysroot")
  case $1 in
    libcxx)
      install_packages "${sysroot_packages[@]}" clang libc++-14-dev libc++abi-14-dev python3
      options=(-DCMAKE_CXX_COMPILER=clang++ -DCMAKE_CXX_FLAGS=-stdlib=libc++)
      choices=(-DCMAKE_PREFIX_PATH="$build/sysroot" -DCMAKE_DISABLE_FIND_PACKAGE_rapidcheck=ON)
      ;;
    i386)
      install_packages "${sysroot_packages[@]}" g++-i686-linux-gnu libc6-i386 lib32stdc++6
      options+=(-DKVFOUND_ARCHITECTURE=i686)
      ;;
    aarch64 | s390x)
      install_packages "${sysroot_packages[@]}" "g++-$1-linux-gnu" qemu-user
      options+=(-DKVFOUND_ARCHITECTURE="$1")
      choices+=(-DKVFOUND_TOOLS=OFF)
      targets=({bytes,exchange,kvml,legacy_xml,model,platform}_tests)
      programs=$(IFS='|' && echo "${targets[*]}")
      filter=-$long_tests
      ;;
    *)
      echo "There is no platform $1." >&2
      return 1
      ;;
  esac
}

test_platform() {
  local build=$PWD/build/platforms/$1 options choices targets programs filter
  install_packages locales
  prepare "$1"
  make_sysroot "$build" "${options[@]}"
  cmake -S . -B "$build" -G Ninja -DCMAKE_BUILD_TYPE=Release -DCMAKE_CXX_FLAGS_RELEASE=-O1 \
    -DKVFOUND_TESTS=ON -DKVFOUND_TESTS_AT_ONCE=ON -DKVFOUND_TESTS_TOGETHER=ON -DKVFOUND_TOOLS_TOGETHER=ON \
    -DKVFOUND_WARNINGS=ON "${options[@]}" "${choices[@]}"
  cmake --build "$build" --target "${targets[@]}"
  GTEST_FILTER=$filter ctest --test-dir "$build" --output-on-failure --parallel "$(nproc)" \
    --tests-regex "$programs"
}

[ $# -gt 0 ] || set -- libcxx i386 aarch64 s390x
for platform in "$@"; do
  began=$SECONDS
  test_platform "$platform"
  echo "The tests pass on $platform, in $((SECONDS - began)) s."
done
