#!/usr/bin/env python3
"""Turns what korm_linalg_bench wrote with --out into the tables of docs/benchmarks-linalg.md.

    bench/linalg/report.py RESULTS.json [--output FILE] [--check]

--check exits with 1 if a goal is missed.
"""

import argparse
import json
from pathlib import Path
import sys

sys.path.insert(0, str(Path(__file__).resolve().parents[1]))
from tables import at_least, every_row, goals_section, mean, number, print_goals, processor, table, write  # noqa: E402

OWN = ("korm", "korm, LU and solves")
INVERSE_PEERS = ("Eigen", "GLM", "cglm")
SMALL = (3, 4, 5, 6)
TITLES = {"LUDecomp_ma": "LU decomposition", "LUBackSubst_mava": "Solve, a matrix for each vector",
          "LUBackSubst_mva": "Solve, one matrix for all vectors", "Invert_ma": "Inverse", "Det_ma": "Determinant"}


class Row:
    def __init__(self, result):
        self.name = result["name"]
        form, order, self.place = self.name.split("/")
        self.family, self.type = form.rsplit("_", 1)
        self.order = int(order)
        self.ns = result["ns"]

    def against(self, *peers):
        """Time of the best of these peers over the library's."""
        times = [self.ns[peer] for peer in peers if peer in self.ns]
        return min(times) / self.ns["korm"] if times else None

    @property
    def ratio(self):
        return self.against(*(name for name in self.ns if name not in OWN))


def goals_of(rows):
    goals = []

    def chosen(family, orders, element=None):
        return [row for row in rows if row.family == family and row.order in orders and row.place == "shuffled"
                and element in (None, row.type)]

    for element, wanted in (("32f", 4), ("64f", 2)):
        goals += at_least(f"LU, {element}, geometric mean: Eigen / korm",
                          mean(row.against("Eigen") for row in chosen("LUDecomp_ma", SMALL, element)), wanted)
    for element, wanted in (("32f", 2), ("64f", 1.5)):
        for family in ("LUBackSubst_mava", "LUBackSubst_mva"):
            goals += at_least(f"{TITLES[family].lower()}, {element}, geometric mean: Eigen / korm",
                              mean(row.against("Eigen", "Eigen, one call") for row in chosen(family, SMALL, element)), wanted)
    goals += every_row("LU and solves, every row: best peer / korm",
                       [row for family in ("LUDecomp_ma", "LUBackSubst_mava", "LUBackSubst_mva")
                        for row in chosen(family, SMALL)], 1)
    goals += every_row("inverse, orders 3 and 4: best of Eigen, GLM, cglm / korm", chosen("Invert_ma", (3, 4)), 1,
                       lambda row: row.against(*INVERSE_PEERS))
    goals += at_least("the same, 32f, geometric mean",
                      mean(row.against(*INVERSE_PEERS) for row in chosen("Invert_ma", (3, 4), "32f")), 1.3)
    for element, wanted in (("32f", 4), ("64f", 2)):
        goals += every_row(f"inverse, orders 5 and 6, {element}: best peer / korm", chosen("Invert_ma", (5, 6), element), wanted)
    goals += every_row("determinant in single precision, orders 3 and 4: best peer / korm", chosen("Det_ma", (3, 4), "32f"), 1)
    goals += every_row("determinant, orders 5 and 6: best peer / korm", chosen("Det_ma", (5, 6)), 2)
    return goals


def comparison(rows):
    columns = list(dict.fromkeys(name for row in rows for name in row.ns))
    lines = [[row.name] + [number(row.ns.get(column), 3 if row.ns.get(column, 1) < 10 else 1) for column in columns]
             + [number(row.ratio)] for row in rows]
    return table(["row", *columns, "best peer / korm"], lines)


def x87_table(x87):
    yield "## Determinants in extended precision"
    yield ""
    yield "Determinants of adjacent elements go through the x87 unit, so their measure is not a peer, which computes in the"
    yield "vector unit and in the element's own type, but what that unit can do. Multiplications and additions are those of the"
    yield "expansion with each minor made once. The unit multiplies once in"
    yield f"{number(x87['multiplication'])} cycles, seven independent products in flight, and adds beside that, so the limit is the"
    yield "larger of the two numbers. The products of minors of two rows of floats are exact in doubles and are made by the vector"
    yield "unit, so that floats could come below it; in turn these minors are subtracted anew for each use, since 80 bits take"
    yield "about ten cycles through memory. Cycles are thread time, the call of the list form included, by a clock of"
    yield f"{number(x87['gigahertz'])} GHz: the best time of a chain of additions of which each takes one cycle."
    yield ""
    lines = []
    for row in x87["rows"]:
        limit = max(row["multiplications"], row["additions"]) * x87["multiplication"]
        lines.append([row["name"], str(row["multiplications"]), str(row["additions"]), number(limit, 0),
                      number(row["cycles"], 0), number(row["cycles"] / limit)])
    yield from table(["form, order", "multiplications", "additions", "the unit's limit, cycles", "cycles a determinant",
                      "cycles / limit"], lines)


def cofactor_text(rows):
    yield "Orders 2, 7 and above: each element is a cofactor by an elimination of its own, about n^5 / 3 multiplications, because"
    yield "results rest on it ([numerics](numerics.md#what-larger-inverses-cost)). Order 2 of arrays is straight-line code. For"
    yield "larger orders call `kormLUDecomp_ma` and, for each column of the identity, `kormLUBackSubst_mava`; this is the column"
    yield "\"korm, LU and solves\". Best of all is not to want the inverse: one solve for each right-hand side."
    for row in rows:
        if row.order > 6 and row.place == "cache" and OWN[1] in row.ns:
            yield ""
            yield (f"At order {row.order} in {row.type} the inverse takes {number(row.ns['korm'] / 1000)} us, LU and solves "
                   f"{number(row.ns[OWN[1]] / 1000)} us.")
    yield ""


def report(data, rows):
    context = data["context"]
    yield "# Benchmarks of LU, solve, inverse and determinant"
    yield ""
    yield "Written by bench/linalg/report.py. To repeat:"
    yield ""
    yield "    scripts/bench linalg"
    yield ""
    yield f"- Processor: {processor()}"
    yield f"- Library: {context['library']}"
    yield f"- Compiler: {context['compiler']}, flags `{context['flags'].strip()}`, for the library and all peers in headers"
    yield f"- LAPACK: OpenBLAS, held to its kernels for {context['openblasKernels']}"
    yield ""
    yield "Packed arrays on one thread, nanoseconds an object: contenders take turns in one run, by the time of their own thread, and"
    yield "medians are compared, after the results have been. Rows tell form, order and place. `cache`: 24 KiB of matrices."
    yield "`shuffled`: up to a hundred thousand objects with their rows in random order, so that no branch on a pivot can be learnt."
    yield "The last column is the best peer's time over korm's."
    yield ""
    yield from goals_section(goals_of(rows), "Of the shuffled arrays of orders 3 to 6.")
    for family, title in TITLES.items():
        group = [row for row in rows if row.family == family]
        if group:
            yield f"## {title}"
            yield ""
            yield from comparison(group)
            if family == "Invert_ma":
                yield from cofactor_text(group)
    if data["x87"]["rows"]:
        yield from x87_table(data["x87"])


def main():
    parser = argparse.ArgumentParser(description="Tables of korm_linalg_bench's results.")
    parser.add_argument("results")
    parser.add_argument("--output")
    parser.add_argument("--check", action="store_true")
    options = parser.parse_args()
    with open(options.results, encoding="utf-8") as file:
        data = json.load(file)
    rows = [Row(result) for result in data["rows"]]
    if options.output:
        write(options.output, report(data, rows))
    met = print_goals(goals_of(rows))
    return 1 if options.check and not met else 0


if __name__ == "__main__":
    sys.exit(main())
