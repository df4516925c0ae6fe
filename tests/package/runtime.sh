#!/bin/bash
# Exactly one OpenMP runtime is linked, by both libraries, and it is the one that was asked for.
. "$(dirname "$0")/common.sh"

wanted=libomp.so.5
[[ $OPENMP == llvm ]] || wanted=libgomp.so.1
for library in "$BUILD"/lib/lib{korm,korcore}.so; do
    needed=$(readelf -d "$library" | sed -n 's/.*(NEEDED).*\[\(.*\)\]/\1/p' | grep -E '^lib(g|i)?omp' || true)
    [[ $needed == "$wanted" ]] || fail "$library is linked with '$needed', not with $wanted alone"
done
