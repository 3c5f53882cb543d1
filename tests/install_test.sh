#!/usr/bin/env bash
# Builds the example programs against the package installed in PREFIX from a clean folder, once as a CMake project with find_package(vfc) and once file by file with
# pkg-config, and runs every program of both builds through its checks (examples/check_example.sh).
# usage: install_test.sh PREFIX EXAMPLES_DIR CXX VERSION
set -eu
prefix=$(cd "$1" && pwd)
examples=$(cd "$2" && pwd)
cxx=$3
version=$4
samples=$examples/../samples
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT

libdir=$(cd "$(dirname "$(find "$prefix" -name vfc.pc)")/.." && pwd)
export LD_LIBRARY_PATH="$libdir"

# check_all BIN_DIR LABEL: the three programs in BIN_DIR, each in a scratch folder of its own.
check_all() {
    for example in convert catalog helper; do
        bash "$examples/check_example.sh" "$example" "$1/$example" "$samples" \
            "$examples/expected" "$work/run-$2-$example"
    done
}

# The installed headers must compile cleanly in a consumer that is strict about warnings.
strict="-Wall -Wextra -Wpedantic -Werror"

# 1. A CMake project that finds the installed package (and nothing of the source tree).
cmake -S "$examples" -B "$work/cmake-build" -G Ninja -DCMAKE_CXX_COMPILER="$cxx" \
    -DCMAKE_CXX_FLAGS="$strict" -DCMAKE_PREFIX_PATH="$prefix" >/dev/null
found=$(sed -n 's/^vfc_DIR:PATH=//p' "$work/cmake-build/CMakeCache.txt")
case $found in
    "$prefix"/*) ;;
    *)
        echo "find_package(vfc) found '$found', not the package installed in $prefix" >&2
        exit 1
        ;;
esac
cmake --build "$work/cmake-build" -j2 >/dev/null
check_all "$work/cmake-build" cmake

# 2. One compiler call per program, with the flags pkg-config gives.
export PKG_CONFIG_PATH="$libdir/pkgconfig"
test "$(pkg-config --modversion vfc)" = "$version"
mkdir "$work/pc-build"
for example in convert catalog helper; do
    # shellcheck disable=SC2046,SC2086  # the flags are meant to split into words
    "$cxx" -std=c++17 $strict "$examples/$example.cpp" -o "$work/pc-build/$example" \
        $(pkg-config --cflags --libs vfc)
done
check_all "$work/pc-build" pkg-config

echo "installed package builds and runs the examples both ways"
