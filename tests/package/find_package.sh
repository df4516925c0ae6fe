#!/bin/bash
# The CMake package, from the prefix and again after the whole tree was moved elsewhere.
. "$(dirname "$0")/common.sh"

rm -rf "$WORK/moved" "$WORK"/find_package.*
cp -a "$PREFIX" "$WORK/moved"
for prefix in "$PREFIX" "$WORK/moved"; do
    build=$WORK/find_package.$(basename "$prefix")
    "$CMAKE" -S "$SOURCE/tests/package/consumer" -B "$build" -DCMAKE_PREFIX_PATH="$prefix" \
        -DCMAKE_FIND_USE_PACKAGE_REGISTRY=OFF -DEXPECTED_VERSION="$VERSION" -DCMAKE_C_COMPILER="$CC" \
        -DCMAKE_CXX_COMPILER="$CXX" -DCMAKE_C_FLAGS="${cFlags[*]}" -DCMAKE_CXX_FLAGS="${cxxFlags[*]}" \
        -DCMAKE_EXE_LINKER_FLAGS="${linkFlags[*]}"
    "$CMAKE" --build "$build"
    "$build/c_consumer"
    "$build/cpp_consumer"
    readelf -d "$build/c_consumer" | grep -F "[$prefix/$LIBDIR" >/dev/null || fail "the program is to use $prefix"
done
