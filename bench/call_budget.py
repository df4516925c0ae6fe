#!/usr/bin/env python3
"""Holds the instruction counts of small calls against the committed ones.

    bench/call_budget.py CALL_COST [--update | --beside LIBRARY]

CALL_COST is the program of that name, from an optimised x86_64 build by g++. A count that grew by more than
3 % fails; --update writes the counts of today into bench/call_budget.txt. --beside prints a table of the counts that are
more than 3 % above those of LIBRARY, an earlier libkorm.so, with the times of these calls.
"""

from pathlib import Path
import json
import math
import os
import subprocess
import sys
import tempfile

BUDGET = Path(__file__).with_name("call_budget.txt")
COLUMNS = ("toLoadSquare", "toLoadOther", "toReturn")
TIMES = ("timeSquare", "timeOther", "timeReturn")
PAGE = """\
# Calls with more instructions than before

{rows} counts of `bench/call_budget.txt` are more than 3 % above those of the state before products of small shapes, single
products and strided streams had paths of their own. Beside each stands the time of the calls that it counts, their checks
and arithmetic included: nanoseconds from call to call, geometric mean over their sizes up to 33, the least of several runs in turns.
In the geometric mean these calls take {ratio:.2f} of the time that they took; {alike} take no more than before, within 5 %.
Written by `bench/call_budget.py CALL_COST --beside LIBRARY`.

| form | instructions to | before | now | before, ns | now, ns | ratio |
|---|---|---:|---:|---:|---:|---:|"""
HEAD = """\
# Instructions from a caller's call: to the first load of an operand for orders and lengths 3 to 6, the same for
# other sizes, and to the return (order or length 3). Functions of fixed size: to the return alone; batches have 64
# packed vectors. g++ 12, x86_64, -O3. Written by bench/call_budget.py --update.
"""


def run(program, *options, library=None):
    """What the program writes, with another library before its own, which then only has what the other lacks."""
    environment = dict(os.environ)
    if library:
        environment["LD_PRELOAD"] = f"{library}:{Path(program).resolve().parents[1] / 'lib/libkorm.so'}"
    with tempfile.NamedTemporaryFile(suffix=".json") as file:
        subprocess.run([program, *options, "--json", file.name], check=True, stdout=subprocess.DEVNULL, env=environment)
        return {row["name"].replace(" ", "_"): row for row in json.load(open(file.name))}


def measured(program):
    return {name: [row.get(column) for column in COLUMNS] for name, row in run(program).items()}


def beside(program, library, rounds=7):
    """Prints the page of counts that grew, with the times of these calls, each the least of several runs in turns."""
    runs = [(run(program, "--times", library=library), run(program, "--times")) for _ in range(rounds)]
    then, now = runs[0]
    rows, ratios = [], []
    for name in now:
        for column, time, what in zip(COLUMNS, TIMES, ("first load, 3 to 6", "first load, others", "return")):
            before, after = then[name].get(column), now[name].get(column)
            if after is None or after <= 1.03 * before:
                continue
            slow, fast = (min(rows[name][time] for rows in turns) for turns in zip(*runs))
            ratios.append(fast / slow)
            form = name.replace("_(", " (")
            rows.append(f"| {form} | {what} | {before} | {after} | {slow:.1f} | {fast:.1f} | {fast / slow:.2f} |")
    print(PAGE.format(rows=len(rows), ratio=math.exp(sum(map(math.log, ratios)) / len(rows)),
                      alike=sum(ratio <= 1.05 for ratio in ratios)))
    print(*rows, sep="\n")


def shown(count):
    return "-" if count is None else str(count)


def main():
    if "--beside" in sys.argv[2:]:
        beside(sys.argv[1], sys.argv[3])
        return 0
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
