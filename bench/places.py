#!/usr/bin/env python3
"""Links a library's object files anew, its code a few bytes further on.

    bench/places.py LIBRARY BYTES FOLDER

LIBRARY is the libkorm.so of a build by Ninja, in whose folder the object files and the command that links them are.
FOLDER gets the new libkorm.so. Each object file begins BYTES behind a boundary of 64. Functions keep their
machine code, but lie elsewhere in the lines that the processor fetches: what a row takes at all places is due to its
code, what it takes at one of them may be due to the place. Code behind a function that is aligned to 64 bytes stays.
"""

from pathlib import Path
import re
import subprocess
import sys


def main():
    library, count, folder = Path(sys.argv[1]).resolve(), int(sys.argv[2]), Path(sys.argv[3]).resolve()
    build = library.parents[1]
    target = library.relative_to(build)
    folder.mkdir(parents=True, exist_ok=True)
    ahead, placed = folder / "ahead.o", folder / "libkorm.so"
    subprocess.run(["c++", "-c", "-x", "assembler", "-", "-o", ahead], check=True, text=True,
                   input=f'.text\n.p2align 6\n.fill {count}, 1, 0x90\n.section .note.GNU-stack,"",@progbits\n')
    command = subprocess.run(["ninja", "-C", build, "-t", "commands", target], check=True, text=True,
                             capture_output=True).stdout.splitlines()[-1]
    command = re.sub(r"\S+\.o\b", lambda file: f"{ahead} {file[0]}", command)
    command = command.replace(f"-o {target}", f"-o {placed} -Wl,-rpath,{library.parent}")  # where libkorcore.so is
    subprocess.run(command, shell=True, cwd=build, check=True)


if __name__ == "__main__":
    sys.exit(main())
