#!/usr/bin/env python3
"""Can programs that were built with the last release run with today's library?  abi_test.py ROOT LIBRARY... [--update]

The exported functions are stubs of assembly, which have no debug information. So each function of the headers is compiled as
one that does nothing, and abidiff (libabigail) holds that library against what the release's headers gave. New functions
are no break. The real libraries must export all names of the release.

--update writes today's description, when a release is made.
"""

import gzip
import re
import subprocess
import sys
import tempfile
from pathlib import Path

DECLARATION = r"^((?:int32_t|const kormLibVersion \*)\s*\w+\([^;{]*\));"

# Breaks that must be found: what is written for what in korm.h.
PLANTED = {
    "an argument's type": ("int32_t src2ElementStride", "int64_t src2ElementStride"),
    "an argument more": ("int32_t kormAdd_mm_32f(", "int32_t kormAdd_mm_32f(int32_t flags, "),
    "a member moved": ("    int32_t major;  ", "    int64_t major;  "),
    "a status renumbered": ("korStatusBadCount = -203", "korStatusBadCount = -206"),
    "a function renamed": ("kormInvert_ma_64f_P(", "kormInverse_ma_64f_P("),
}


def stub_source(headers):
    """Every declared function with an empty body; the variable makes the status values part of the interface."""
    text = "".join(headers)
    declared = re.findall(DECLARATION, re.sub(r"/\*.*?\*/", "", text, flags=re.DOTALL), flags=re.MULTILINE)
    bodies = "\n".join(f"{one} {{ return 0; }}" for one in declared)
    return f'{text}\n#pragma GCC visibility push(default)\nextern "C" {{\ndecltype(korStatusOk) korStatus;\n{bodies}\n}}\n'


def compile_stubs(headers, folder):
    source, library = folder / "stubs.cpp", folder / "stubs.so"
    source.write_text(stub_source(headers))
    subprocess.run(["g++", "-w", "-g", "-fPIC", "-shared", source.name, "-o", library.name, "-Wl,-soname,korm"],
                   cwd=folder, check=True)
    return library


def difference(released, library):
    result = subprocess.run(["abidiff", "--no-added-syms", released, library], capture_output=True, text=True, check=False)
    return result.stdout + result.stderr if result.returncode else ""


def exported(library):
    lines = subprocess.run(["nm", "-D", "--defined-only", library], capture_output=True, text=True, check=True).stdout
    return {line.split()[-1].partition("@")[0] for line in lines.splitlines()}


def problems(headers, description, libraries, folder):
    released = folder / "released.abi"
    released.write_bytes(gzip.decompress(description.read_bytes()))
    yield from difference(released, compile_stubs(headers, folder)).splitlines()
    names = set(re.findall(r"<elf-symbol name='(\w+)' type='func-type'", released.read_text()))
    if len(names) < 800:
        yield f"{description.name} names {len(names)} functions only"
    for name in sorted(names - set().union(*map(exported, libraries))):
        yield f"{name} isn't exported any more"
    for what, (old, new) in PLANTED.items():
        broken = [header.replace(old, new) for header in headers]
        if broken == headers:
            yield f"no header has what the planted break '{what}' changes"
        elif not difference(released, compile_stubs(broken, folder)):
            yield f"abidiff didn't find the planted break '{what}'"


def update(headers, description, folder):
    written = folder / "today.abi"
    subprocess.run(["abidw", "--no-show-locs", "--no-corpus-path", "--no-comp-dir-path", "--out-file", written,
                    compile_stubs(headers, folder)], check=True)
    description.parent.mkdir(exist_ok=True)
    description.write_bytes(gzip.compress(written.read_bytes(), mtime=0))


def main():
    root, *libraries = [argument for argument in sys.argv[1:] if argument != "--update"]
    headers = [(Path(root) / name).read_text() for name in ("include/korm.h", "core/korcore.h")]
    description = Path(root) / "tests/abi/korm-7.abi.gz"
    with tempfile.TemporaryDirectory() as folder:
        if "--update" in sys.argv:
            update(headers, description, Path(folder))
            return 0
        found = list(problems(headers, description, libraries, Path(folder)))
    print("\n".join(found) or f"programs of the last release run with this library; {len(PLANTED)} planted breaks were found")
    return 1 if found else 0


if __name__ == "__main__":
    sys.exit(main())
