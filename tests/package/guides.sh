#!/bin/bash
# The C programs that guides show: each builds without a warning and returns 0.
. "$(dirname "$0")/common.sh"
export LD_LIBRARY_PATH=$PREFIX/$LIBDIR:${LD_LIBRARY_PATH:-}

for guide in layouts; do
    rm -f "$WORK/$guide"_*.c
    # Each block of C goes to a file of its own.
    awk -v stem="$WORK/$guide" '/^```c$/ { file = stem "_" ++number ".c"; next } /^```$/ { file = "" } file { print > file }' \
        "$SOURCE/docs/$guide.md"
    [[ -e $WORK/${guide}_1.c ]] || fail "docs/$guide.md shows no program"
    for program in "$WORK/$guide"_*.c; do
        "$CC" "${cFlags[@]}" -std=c99 -Wall -Wextra -pedantic -Werror -I"$PREFIX/include" "$program" -o "${program%.c}" \
            -L"$PREFIX/$LIBDIR" "${linkFlags[@]}" -lkorm
        "${program%.c}" || fail "$(basename "$program") of docs/$guide.md returns $?"
    done
done
