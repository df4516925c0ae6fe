#!/bin/bash
# The files that other package managers take, as far as they can be tried without those.
. "$(dirname "$0")/common.sh"
here=$(dirname "$0")
work=$WORK/recipes
rm -rf "$work"
mkdir -p "$work"

# Debian: exactly the exported names of both libraries.
python3 -B - "$SOURCE" <<'PROGRAM'
import pathlib, re, sys
root = pathlib.Path(sys.argv[1])
found = {part.split()[0]: re.findall(r"^ (\w+)@Base [\d.]+$", part, re.M)
         for part in re.split(r"^(?=lib)", (root / "debian/libkorm7.symbols").read_text(), flags=re.M)[1:]}
for library, exports in (("libkorm.so.7", "src/entry/exports.map"), ("libkorcore.so.7", "core/exports.map")):
    expected = re.findall(r"^\s*(kor\w+|own\w+);", (root / exports).read_text(), re.M)
    if sorted(found.pop(library)) != sorted(expected) or not expected:
        sys.exit(f"FAILED: debian/libkorm7.symbols: the names of {library} aren't those of {exports}")
assert not found, found
changes = (root / "debian/changelog").read_text()
version = re.search(r"project\(korm VERSION ([\d.]+)", (root / "CMakeLists.txt").read_text())[1]
for file, pattern in (("debian/changelog", rf"\Akorm \({version}-"), ("packaging/vcpkg/korm/vcpkg.json", rf'"version": "{version}"')):
    if not re.search(pattern, (root / file).read_text()):
        sys.exit(f"FAILED: {file} isn't of version {version}")
PROGRAM

# vcpkg: the port is run with stand-ins for vcpkg's functions, which hold what it asks for against this build.
python3 -m json.tool "$SOURCE/packaging/vcpkg/korm/vcpkg.json" >/dev/null
"$CMAKE" -DPORT=korm -DSOURCE="$SOURCE" -DBUILD="$BUILD" -DWORK="$work/vcpkg" -DGENERATOR="$CMAKE_GENERATOR" -DLIBDIR="$LIBDIR" \
    -P "$here/vcpkg.cmake"
for file in share/korm/copyright share/korm/usage "$LIBDIR/libkorm.so" include/korm.h; do
    [[ -e $work/vcpkg/packages/$file ]] || fail "vcpkg's port leaves no $file"
done

# Conan: the same.
python3 -B "$here/conan_recipe.py" "$SOURCE" "$BUILD" "$work/conan" "$LIBDIR"
