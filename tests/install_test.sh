#!/usr/bin/env bash
# Installs the built library into a scratch prefix, then builds and runs a consumer against it,
# once through find_package(vfc) and once through pkg-config.
# usage: install_test.sh BUILD_DIR CONSUMER_SOURCE_DIR CXX VERSION
set -eu
build=$1
consumer=$2
cxx=$3
version=$4
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT

cmake --install "$build" --prefix "$work/prefix" >/dev/null
libdir=$(dirname "$(find "$work/prefix" -name vfc.pc)")/..

cmake -S "$consumer" -B "$work/cmake-build" -G Ninja -DCMAKE_CXX_COMPILER="$cxx" \
    -DCMAKE_PREFIX_PATH="$work/prefix" >/dev/null
cmake --build "$work/cmake-build" >/dev/null
LD_LIBRARY_PATH="$libdir" "$work/cmake-build/consumer"

export PKG_CONFIG_PATH="$libdir/pkgconfig"
"$cxx" -std=c++17 "$consumer/main.cpp" -o "$work/pc-consumer" $(pkg-config --cflags --libs vfc)
LD_LIBRARY_PATH="$libdir" "$work/pc-consumer"
test "$(pkg-config --modversion vfc)" = "$version"
echo "installed package builds consumers both ways"
