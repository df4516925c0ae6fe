#!/usr/bin/env python3
"""Holds the size of the library's code, family by family, against the committed one.

    bench/text_budget.py LIBRARY OBJECT... [--update]

LIBRARY is libkorm.so, an OBJECT one of its object files, from an optimised x86_64 build by g++. A family is a documentation
group of include/korm.h, or a folder of src/ for what is written by hand. One that grew by more than 3 % fails; --update
writes the sizes of today into bench/text_budget.txt.
"""

from collections import Counter
from pathlib import Path
import re
import subprocess
import sys

BUDGET = Path(__file__).with_name("text_budget.txt")
HEAD = """\
# Bytes of code in the object files of each family, and in the whole library, where functions that several object files
# hold stand once: sections of instructions. g++ 12, x86_64, -O3. Written by bench/text_budget.py --update.
"""


def code_bytes(file):
    """The sum of all sections named .text, as `size -A` lists them: one line a section, name and size first."""
    lines = subprocess.run(["size", "-A", file], check=True, capture_output=True, text=True).stdout.splitlines()
    return sum(int(line.split()[1]) for line in lines if re.match(r"\.text\b", line))


def family(file):
    path = Path(file)
    if path.parent.name != "generated":
        return path.parent.name
    return re.sub(r"(_\d\df)?\.\w+\.o$", "", path.name)


def measured(library, objects):
    sizes = Counter()
    for file in objects:
        sizes[family(file)] += code_bytes(file)
    return {**dict(sorted(sizes.items())), "library": code_bytes(library)}


def main():
    library, *objects = [argument for argument in sys.argv[1:] if argument != "--update"]
    sizes = measured(library, objects)
    if "--update" in sys.argv:
        BUDGET.write_text(HEAD + "".join(f"{name:20} {size:8}\n" for name, size in sizes.items()))
        return 0
    lines = [line.split() for line in BUDGET.read_text().splitlines() if not line.startswith("#")]
    budget = {name: int(size) for name, size in lines}
    failures = [f"{name}: not in the committed sizes" for name in sizes if name not in budget]
    failures += [f"{name}: no longer there" for name in budget if name not in sizes]
    for name in sizes.keys() & budget.keys():
        excess = sizes[name] - budget[name]
        if excess > 0.03 * budget[name]:
            percent = 100 * excess / budget[name]
            failures.append(f"{name}: {sizes[name]} bytes of code, {excess} ({percent:.1f} %) more than committed")
    print("\n".join(sorted(failures)) or f"{len(sizes)} sizes within their budgets")
    return 1 if failures else 0


if __name__ == "__main__":
    sys.exit(main())
