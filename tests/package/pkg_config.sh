#!/bin/bash
# The pkg-config file, from the prefix and again after the whole tree was moved elsewhere.
. "$(dirname "$0")/common.sh"
sources=$SOURCE/tests/package/consumer

rm -rf "$WORK/moved-pc"
cp -a "$PREFIX" "$WORK/moved-pc"
for prefix in "$PREFIX" "$WORK/moved-pc"; do
    export PKG_CONFIG_PATH=$prefix/$LIBDIR/pkgconfig
    [[ $("$PKG_CONFIG" --modversion korm) == "$VERSION" ]] || fail "the version isn't $VERSION"
    if "$PKG_CONFIG" --exists 'korm >= 8'; then fail "a user of version 8 should not be given $VERSION"; fi
    read -ra compile <<<"$("$PKG_CONFIG" --cflags korm)"
    read -ra link <<<"$("$PKG_CONFIG" --libs korm)"
    "$CC" "${cFlags[@]}" "${compile[@]}" "$sources/consumer.c" -o "$WORK/pc_c" "${link[@]}" "${linkFlags[@]}"
    "$CXX" "${cxxFlags[@]}" "${compile[@]}" "$sources/consumer.cpp" -o "$WORK/pc_cpp" "${link[@]}" -lkorcore "${linkFlags[@]}"
    LD_LIBRARY_PATH=$prefix/$LIBDIR:${LD_LIBRARY_PATH:-} "$WORK/pc_c"
    LD_LIBRARY_PATH=$prefix/$LIBDIR:${LD_LIBRARY_PATH:-} "$WORK/pc_cpp"
done
