#!/bin/bash
# Header and libraries with nothing but a compiler.
. "$(dirname "$0")/common.sh"
sources=$SOURCE/tests/package/consumer

"$CC" "${cFlags[@]}" -std=c99 -Wall -Wextra -pedantic -Werror -I"$PREFIX/include" "$sources/consumer.c" \
    -o "$WORK/plain_c" -L"$PREFIX/$LIBDIR" "${linkFlags[@]}" -lkorm
"$CXX" "${cxxFlags[@]}" -std=c++11 -Wall -Wextra -pedantic -Werror -I"$PREFIX/include" "$sources/consumer.cpp" \
    -o "$WORK/plain_cpp" -L"$PREFIX/$LIBDIR" "${linkFlags[@]}" -lkorm -lkorcore
export LD_LIBRARY_PATH=$PREFIX/$LIBDIR:${LD_LIBRARY_PATH:-}
"$WORK/plain_c"
"$WORK/plain_cpp"

# A C program needs no C++ run-time library.
if readelf -d "$WORK/plain_c" | grep 'NEEDED.*libstdc++'; then fail "a C program is linked with libstdc++"; fi
