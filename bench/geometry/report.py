#!/usr/bin/env python3
"""Turns what geometry_bench wrote with --json into the tables of docs/benchmarks-geometry.md.

    bench/geometry/report.py RESULTS.json [--output FILE] [--check]

--check exits with 1 if a goal is missed.
"""

import argparse
import json
from pathlib import Path
import sys

sys.path.insert(0, str(Path(__file__).resolve().parents[1]))
from tables import at_least, every_row, goals_section, mean, number, print_goals, processor, table, write  # noqa: E402

PARITY = 0.97     # of the best peer, in every batch; the missing part allows for noise
ADVANTAGE = 1.2   # geometric mean of the batches
PEERS = {"loop": "plain loop", "glm": "GLM", "glmSimd": "GLM, SIMD types", "cglm": "cglm"}


class Row:
    def __init__(self, result):
        self.name = result["name"]
        self.is_call = self.name.startswith("call/")
        self.korm = result["korm"]
        self.direct = result.get("direct")  # korm's function entered without its stub
        self.peers = {peer: result[peer] for peer in PEERS if peer in result}

    @property
    def ratio(self):
        """Of the best peer; 1.2 means that it takes 1.2 times as long as korm."""
        return min(self.peers.values()) / self.korm if self.peers else None

    @property
    def direct_ratio(self):
        return min(self.peers.values()) / self.direct if self.peers and self.direct else None


def in_cache(row):
    return int(row.name.rsplit("/", 1)[1]) <= 1000


def goals_of(calls, batches):
    return (at_least("batches, geometric mean: best peer / korm", mean(row.ratio for row in batches), ADVANTAGE)
            + every_row("every batch", batches, PARITY) + every_row("every call", calls, PARITY)
            + every_row("the same without the stub's jump", calls, PARITY, lambda row: row.direct_ratio))


def lines_of(rows, peers):
    for row in rows:
        yield ([row.name.removeprefix("call/"), number(row.korm)] + [number(row.peers.get(peer)) for peer in peers]
               + [number(row.ratio)])


def report(data, calls, batches, empty):
    yield "# Benchmarks of the functions of fixed size"
    yield ""
    yield "Written by bench/geometry/report.py. To repeat:"
    yield ""
    yield "    scripts/bench geometry"
    yield ""
    yield f"- Processor: {processor()}"
    yield f"- Library: {data['library']}"
    yield f"- Compiler: {data['compiler']}, flags `{data['flags'].strip()}`, for the library and all peers but cglm's calls,"
    yield "  which are those of the distribution's shared library"
    yield ""
    yield "Nanoseconds an object, medians of short samples in which the contenders take turns, on one thread; the ratio is that"
    yield "of the best peer to korm. Results are compared first, within what the different orders of rounding allow."
    yield ""
    yield from goals_section(goals_of(calls, batches))
    if batches:
        yield "## Batches"
        yield ""
        yield "Named by the function, the bytes from one vector to the next in source and result, and the number of vectors. From"
        yield "100,000 vectors on all wait for memory."
        yield ""
        near, far = [row for row in batches if in_cache(row)], [row for row in batches if not in_cache(row)]
        for text, rows in (("up to 1000 vectors", near), ("10,000 vectors and more", far)):
            if rows:
                yield f"Geometric mean for {text}: {number(mean([row.ratio for row in rows]))}."
        yield ""
        yield from table(["batch", "korm", *PEERS.values(), "ratio"], list(lines_of(batches, PEERS)))
    if calls:
        yield "## One call for one object"
        yield ""
        yield "Every contender is a call from one loop over the linker's table into a shared library: GLM in functions of one that"
        yield "was built for this, cglm in its own. korm's functions are entered over a stub, one jump more. What that costs is"
        yield "measured: `direct` is the same function of the same library, entered at the address to which its stub jumps, over a"
        yield "table as the others are."
        yield ""
        if empty and empty.direct:
            yield f"A function that does nothing takes {number(empty.korm)} ns with the stub and {number(empty.direct)} ns without:"
            yield "branches alone, of which each costs about two cycles. A small function's arithmetic vanishes behind them, so a row"
            yield f"whose peers take no longer than their call can't come above {number(empty.direct / empty.korm)}. A longer function"
            yield "hides the jump instead."
            yield ""
        yield "Loops and functions start at lines of code, but for cglm's functions: crossing a line is a cycle too. cglm's vectors"
        yield "and matrices must be aligned to 16 bytes, korm's need not. The inverse of korm is the full adjugate in a fixed order of"
        yield "operations, 44 vectors of products and sums; that of the others shares minors. The weights of korm's curves are"
        yield "formed in double precision."
        yield ""
        peers = [peer for peer in ("glm", "cglm") if any(peer in row.peers for row in calls)]
        lines = [line[:2] + [number(row.direct)] + line[2:] + [number(row.direct_ratio)]
                 for row, line in zip(calls, lines_of(calls, peers))]
        yield from table(["function", "korm", "direct", *(PEERS[peer] for peer in peers), "ratio", "direct ratio"], lines)


def main():
    parser = argparse.ArgumentParser(description="Tables of geometry_bench's results.")
    parser.add_argument("results")
    parser.add_argument("--output")
    parser.add_argument("--check", action="store_true")
    options = parser.parse_args()
    with open(options.results, encoding="utf-8") as file:
        data = json.load(file)
    rows = [Row(result) for result in data["rows"]]
    empty = next((row for row in rows if row.name == "call/empty"), None)
    calls = [row for row in rows if row.is_call and row is not empty]
    batches = [row for row in rows if not row.is_call]
    if options.output:
        write(options.output, report(data, calls, batches, empty))
    met = print_goals(goals_of(calls, batches))
    return 1 if options.check and not met else 0


if __name__ == "__main__":
    sys.exit(main())
