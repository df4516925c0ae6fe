#!/bin/sh
# The public header as a user meets it: every language level, both compilers, alone and twice, with the names
# and the argument types that the tests expect.
#
#   header_test.sh HEADER_FOLDER FORMS_PROGRAM
set -eu
include=$1
forms=$2
scratch=$(mktemp -d)
trap 'rm -rf "$scratch"' EXIT

echo '#include <korm.h>' > "$scratch/alone.c"
printf '#include <korm.h>\n#include <korm.h>\n' > "$scratch/twice.c"
"$forms" prototypes > "$scratch/types.c"
for file in alone twice types; do cp "$scratch/$file.c" "$scratch/$file.cpp"; done

strict='-pedantic -Wall -Wextra -Werror -Wstrict-prototypes -fsyntax-only'
strictPlus='-pedantic -Wall -Wextra -Werror -fsyntax-only'
for compiler in gcc clang; do
    for level in c99 c11 c17; do
        for file in alone twice types; do
            $compiler -std=$level $strict -I"$include" "$scratch/$file.c"
        done
    done
done
for compiler in g++ clang++; do
    for level in c++11 c++14 c++17 c++20; do
        for file in alone twice types; do
            $compiler -std=$level $strictPlus -I"$include" "$scratch/$file.cpp"
        done
    done
done

# Declared names: what the compiler sees, without comments.
gcc -E -P "$scratch/alone.c" -I"$include" | grep -oE '\bkorm[A-Z][A-Za-z0-9]*(_[A-Za-z0-9]+)* *\(' |
    tr -d ' (' | LC_ALL=C sort > "$scratch/declared"
"$forms" names | LC_ALL=C sort > "$scratch/expected"
diff "$scratch/declared" "$scratch/expected"
