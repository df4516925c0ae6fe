#!/bin/bash
# The commands by which docs/install.md builds its program, run as they stand there, with the installed library.
. "$(dirname "$0")/common.sh"
page=$SOURCE/docs/install.md
work=$WORK/install_page
rm -rf "$work"
mkdir -p "$work"
cd "$work"

# block LANGUAGE FIRST-LINE: the first block of a language that begins with this line.
block() {
    awk -v fence='```'"$1" -v first="$2" '
        inside && /^```$/ { if (matches) exit; inside = 0 }
        inside { if (lines++ == 0) matches = index($0, first) == 1; if (matches) print }
        $0 == fence { inside = 1; lines = 0 }' "$page"
}
block c '#include <korm.h>' >program.c
block cmake cmake_minimum_required >CMakeLists.txt
awk '/^```sh$/ { inside = 1; next } /^```$/ { inside = 0 } inside' "$page" >commands

export CPATH=$PREFIX/include LIBRARY_PATH=$PREFIX/$LIBDIR LD_LIBRARY_PATH=$PREFIX/$LIBDIR:${LD_LIBRARY_PATH:-}
export PKG_CONFIG_PATH=$PREFIX/$LIBDIR/pkgconfig CMAKE_PREFIX_PATH=$PREFIX CC
[[ $(grep -c . commands) -eq 7 ]] || fail "docs/install.md shows $(grep -c . commands) commands, not 7"
bash -euxo pipefail commands >output || fail "a command of docs/install.md"
[[ $(grep -cx '11 22 33 44' output) -eq 3 ]] || fail "not every program printed what the page says"
