# Read by the tests beside it; CMake hands them the names in capitals.
set -euo pipefail

fail() {
    echo "FAILED: $*" >&2
    exit 1
}

# A 32-bit runtime lies unpacked in the build folder, where neither linker looks by itself.
read -ra cFlags <<<"${CFLAGS:-}"
read -ra cxxFlags <<<"${CXXFLAGS:-}"
linkFlags=()
if [[ $TARGET == ia32 && -n $RUNTIME ]]; then
    linkFlags=(-Wl,-rpath-link,"$RUNTIME")
    export LD_LIBRARY_PATH=$RUNTIME
fi
unset CFLAGS CXXFLAGS  # CMake would take them a second time
