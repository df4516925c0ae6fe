# Read by the other scripts: moves to the root of the tree, and installs what is missing.

set -euo pipefail
cd "$(dirname "${BASH_SOURCE[0]}")/.."

say() {
    printf '%s: %s\n' "$(basename "$0")" "$*" >&2
}

# Prints the comment that a script begins with.
usage() {
    awk 'NR > 1 && /^#/ { sub(/^# ?/, ""); print; next } NR > 1 { exit }' "$0"
}

# need COMMAND-OR-FILE=PACKAGE...: installs the packages whose command or file isn't there.
need() {
    local missing=() wanted
    for wanted in "$@"; do
        local thing=${wanted%%=*} package=${wanted#*=}
        command -v "$thing" >/dev/null 2>&1 || [[ $thing == /* && -e $thing ]] || missing+=("$package")
    done
    [[ ${#missing[@]} -gt 0 ]] || return 0
    local asRoot=()
    if [[ $(id -u) -ne 0 ]]; then
        command -v sudo >/dev/null || { say "needs the packages ${missing[*]}, and root or sudo to install them"; exit 1; }
        asRoot=(sudo)
    fi
    say "installing ${missing[*]}"
    # An index that can't be refreshed is no failure as long as the packages can be had.
    "${asRoot[@]}" apt-get -qq update || say "apt-get update had problems; trying with the lists that are here"
    "${asRoot[@]}" env DEBIAN_FRONTEND=noninteractive apt-get -qq install -y --no-install-recommends "${missing[@]}" >/dev/null
}

needBuild() {
    need g++=g++ cmake=cmake ninja=ninja-build python3=python3 git=git \
        /usr/lib/x86_64-linux-gnu/libomp.so.5=libomp-dev
}

# What tests need beyond building: GoogleTest's sources, and tools that some tests call.
needTests() {
    need /usr/src/googletest=googletest pkg-config=pkg-config clang=clang man=man-db mandoc=mandoc
    local modules=/usr/lib/python3/dist-packages
    need $modules/numpy=python3-numpy $modules/scipy=python3-scipy $modules/hypothesis=python3-hypothesis \
        $modules/pytest=python3-pytest $modules/jsonschema=python3-jsonschema $modules/pip=python3-pip mypy=mypy \
        $modules/dask=python3-dask $modules/distributed=python3-distributed /usr/include/python3.11/Python.h=python3-dev
    # The site, what the guide compares with, and a browser that looks at the site; tests skip what there isn't.
    (needDocs) || true
    (need /usr/include/eigen3/Eigen/Core=libeigen3-dev /usr/include/glm/glm.hpp=libglm-dev \
        /usr/include/cglm/cglm.h=libcglm-dev /usr/include/lapacke.h=liblapacke-dev) || true
    (need chromium-headless-shell=chromium-headless-shell) || true
}

# Compares interfaces of libraries; without it one test is left out.
needAbidiff() {
    need abidiff=abigail-tools || say "the test of the interface against the last release is left out: it needs abigail-tools"
}

# libassimp's CMake package names zlib, which its own package only recommends.
needExamples() {
    need /usr/include/assimp/Importer.hpp=libassimp-dev /usr/include/zlib.h=zlib1g-dev \
        /usr/include/png.h=libpng-dev /usr/include/eigen3/Eigen/Core=libeigen3-dev \
        /usr/share/assimp/models=assimp-testmodels
}

needDocs() {
    need doxygen=doxygen /usr/share/doxygen-awesome-css=doxygen-awesome-css
}

needIa32() {
    need /usr/lib/gcc/x86_64-linux-gnu/12/32/libgcc.a=g++-multilib
}

# needClangRuntime NAME: what clang links for a sanitizer or a fuzzer.
needClangRuntime() {
    need clang++=clang "/usr/lib/llvm-14/lib/clang/14.0.6/lib/linux/libclang_rt.$1-x86_64.a=libclang-rt-14-dev"
}

# checkDigests BIN [COMMAND...]: the committed digests, by the programs in BIN, which COMMAND runs.
checkDigests() {
    "${@:2}" "$1/korm_digests" check tests/digests.txt
    "${@:2}" "$1/korm_geometry_digests" check tests/geometry/digests.txt
}

# build PRESET [TARGET...]: configures, builds, and says how long it took.
build() {
    local preset=$1 start=$SECONDS log=build/$1.configure.log
    shift
    local targets=()
    [[ $# -eq 0 ]] || targets=(--target "$@")
    say "building build/$preset"
    mkdir -p build
    cmake --preset "$preset" -Wno-dev >"$log" 2>&1 || { cat "$log" >&2; exit 1; }
    grep -E 'WARNING|\*\*\*|left out|not built' "$log" >&2 || true
    cmake --build "build/$preset" "${targets[@]}" -- -j "$(nproc)" --quiet
    say "built build/$preset in $((SECONDS - start)) s"
}
