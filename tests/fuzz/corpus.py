#!/usr/bin/env python3
"""Turns a corpus of cases from a folder of files into one file of lines and back.

corpus.py pack FOLDER FILE     one line for each case, its bytes as two digits each, the shortest first
corpus.py unpack FILE FOLDER   one file for each case; what else the folder holds stays
corpus.py show CASE            the line of one case, for findings.txt
"""

import hashlib
import sys
from pathlib import Path


def pack(folder, file):
    cases = sorted((path.read_bytes() for path in Path(folder).iterdir()), key=lambda case: (len(case), case))
    Path(file).write_text("".join(f"{case.hex()}\n" for case in cases if case))


def unpack(file, folder):
    for line in Path(file).read_text().splitlines():
        case = bytes.fromhex(line.partition("#")[0])
        if case:
            (Path(folder) / hashlib.sha1(case).hexdigest()).write_bytes(case)


def show(case):
    print(Path(case).read_bytes().hex())


def main():
    commands = {"pack": (pack, 2), "unpack": (unpack, 2), "show": (show, 1)}
    function, arguments = commands.get(sys.argv[1] if len(sys.argv) > 1 else "", (None, 0))
    if function is None or len(sys.argv) != 2 + arguments:
        sys.exit(__doc__)
    function(*sys.argv[2:])


if __name__ == "__main__":
    main()
