#!/bin/bash
# Inside another project: the library is built, and nothing else of korm's comes along. It is built without optimisation,
# which is the fastest, and must give the same bits.
. "$(dirname "$0")/common.sh"
build=$WORK/subproject

rm -rf "$build"
runtime=()
[[ -z $LIBOMP ]] || runtime=(-DKORM_LIBOMP="$LIBOMP")  # found already: no second download
"$CMAKE" -S "$SOURCE/tests/package/subproject" -B "$build" -DKORM_SOURCE="$SOURCE" -DKORM_OPENMP="$OPENMP" \
    "${runtime[@]}" -DCMAKE_C_COMPILER="$CC" -DCMAKE_CXX_COMPILER="$CXX" -DCMAKE_C_FLAGS="${cFlags[*]}" \
    -DCMAKE_CXX_FLAGS="${cxxFlags[*]} -O0" -DCMAKE_EXE_LINKER_FLAGS="${linkFlags[*]}" -DCMAKE_BUILD_TYPE=None
"$CMAKE" --build "$build" --parallel 2
"$build/c_consumer"
"$build/cpp_consumer"

export LD_LIBRARY_PATH=$build/korm/lib:${LD_LIBRARY_PATH:-}
ldd "$BUILD/bin/korm_digests" | grep -F "$build/korm/lib/libkorm.so" >/dev/null || fail "digests would be another library's"
"$BUILD/bin/korm_digests" check "$SOURCE/tests/digests.txt"
"$BUILD/bin/korm_geometry_digests" check "$SOURCE/tests/geometry/digests.txt"

tests=$(cd "$build" && "$CTEST" -N | sed -n 's/^Total Tests: //p')
[[ $tests == 0 ]] || fail "korm adds $tests tests to its host"
programs=$(cd "$build" && find . -type f -perm -u+x ! -path '*/CMakeFiles/*' ! -name '*.so*' ! -path './korm/deps/*' | sort | tr '\n' ' ')
[[ $programs == "./c_consumer ./cpp_consumer " ]] || fail "korm adds programs to its host: $programs"
[[ -f $build/korm/lib/libkorm.so && -f $build/korm/lib/libkorcore.so ]] || fail "the libraries aren't where they belong"
"$CMAKE" --install "$build" --prefix "$build/installed" >/dev/null
[[ ! -e $build/installed/include/korm.h ]] || fail "korm installs itself with its host"
