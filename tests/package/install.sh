#!/bin/bash
# Installs into an empty folder, and holds what is there against the list of what belongs there.
. "$(dirname "$0")/common.sh"

rm -rf "$PREFIX"
"$CMAKE" --install "$BUILD" --prefix "$PREFIX" >"$WORK/install.log"

major=${VERSION%%.*}
{
    printf '%s\n' include/korm.h include/korcore.h share/korm/korm{,.schema}.json "$LIBDIR"/pkgconfig/korm.pc
    printf '%s\n' share/man/man7/korm.7
    sed -n 's,^ *\(korm[A-Z]\w*\);$,share/man/man3/\1.3,p' "$SOURCE/src/entry/exports.map"
    printf "$LIBDIR/lib%s\n" {korm,korcore}.so{,."$major",."$VERSION"}
    printf "$LIBDIR/cmake/korm/%s.cmake\n" kormConfig kormConfigVersion kormTargets
} | sort >"$WORK/expected.txt"
(cd "$PREFIX" && find . ! -type d | sed 's,^\./,,' | grep -v 'kormTargets-[a-z]*\.cmake$' | sort) >"$WORK/found.txt"
diff "$WORK/expected.txt" "$WORK/found.txt" || fail "other files than expected are installed"

# Nothing may point back to where it was built.
for library in "$PREFIX/$LIBDIR"/lib{korm,korcore}.so; do
    if readelf -d "$library" | grep -F "$BUILD"; then fail "$library knows its build folder"; fi
done
if grep -rF -e "$BUILD" -e "$SOURCE" "$PREFIX/$LIBDIR"/{cmake,pkgconfig}; then fail "a package file knows its build folder"; fi
