#!/bin/bash
# The programs that the README and the guide show: each builds without a warning, runs, and prints what the page says.
. "$(dirname "$0")/common.sh"

python=
[[ ! -d $BUILD/python/korm ]] || python=$BUILD/python
/usr/bin/python3 -B "$(dirname "$0")/programs.py" "$SOURCE" --prefix "$PREFIX" --libdir "$LIBDIR" --work "$WORK/guides" \
    --python "$python" --cc "$CC" --cxx "$CXX" --cflags=" ${cFlags[*]}" --cxxflags=" ${cxxFlags[*]}" \
    --linkflags=" ${linkFlags[*]}"
