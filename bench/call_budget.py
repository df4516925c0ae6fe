#!/usr/bin/env python3
"""Holds the instruction counts of small calls against the committed ones.

    bench/call_budget.py CALL_COST [--update]

CALL_COST is the program of that name, from an optimised x86_64 build by g++. A count that grew by more than
3 % fails; --update writes the counts of today into bench/call_budget.txt.
"""

from pathlib import Path
import json
import subprocess
import sys
import tempfile

BUDGET = Path(__file__).with_name("call_budget.txt")
COLUMNS = ("toLoadSquare", "toLoadOther", "toReturn")
HEAD = """\
# Instructions from a caller's call: to the first load of an operand for orders and lengths 3 to 6, the same for
# other sizes, and to the return (order or length 3). Functions of fixed size: to the return alone; batches have 64
# packed vectors. g++ 12, x86_64, -O3. Written by bench/call_budget.py --update.
"""


def measured(program):
    with tempfile.NamedTemporaryFile(suffix=".json") as file:
        subprocess.run([program, "--json", file.name], check=True, stdout=subprocess.DEVNULL)
        rows = json.load(open(file.name))
    return {row["name"].replace(" ", "_"): [row.get(column) for column in COLUMNS] for row in rows}


def shown(count):
    return "-" if count is None else str(count)


def main():
    counts = measured(sys.argv[1])
    if "--update" in sys.argv[2:]:
        lines = [f"{name:34} {' '.join(f'{shown(count):>4}' for count in row)}" for name, row in counts.items()]
        BUDGET.write_text(HEAD + "\n".join(lines) + "\n")
        return 0
    lines = [line.split() for line in BUDGET.read_text().splitlines() if not line.startswith("#")]
    budget = {name: [None if count == "-" else int(count) for count in row] for name, *row in lines}
    failures = [f"{name}: not in the committed counts" for name in counts if name not in budget]
    failures += [f"{name}: no longer measured" for name in budget if name not in counts]
    for name in counts.keys() & budget.keys():
        for column, now, then in zip(COLUMNS, counts[name], budget[name]):
            if (now is None) != (then is None):
                failures.append(f"{name}: {column} is {shown(now)} and was {shown(then)}")
            elif now is not None and now > then * 1.03:
                failures.append(f"{name}: {column} grew from {then} to {now} instructions")
    print("\n".join(failures) or f"{len(counts)} rows within their budgets")
    return 1 if failures else 0


if __name__ == "__main__":
    sys.exit(main())
