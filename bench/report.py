#!/usr/bin/env python3
"""Turns results of korm_bench and call_cost into the tables of docs/benchmarks.md.

    bench/report.py RESULTS.json [CALL_COST.json] [--output FILE] [--misses FILE] [--check]

RESULTS.json is what korm_bench wrote with --benchmark_out, CALL_COST.json what call_cost wrote with --json.
--misses writes the rows below the goal, the worst first. --check exits with 1 if a goal is missed.
"""

import argparse
import json
import sys
from collections import defaultdict

from tables import Goal, at_least, every_row, goals_section, mean, number, print_goals, processor, table, write

PARITY = 0.97           # of the best peer, in every row; the missing part allows for noise
ADVANTAGE = 1.3         # geometric mean of a group
BANDWIDTH = 0.9         # of the copying loop's
CALL_INSTRUCTIONS = 4   # an argument, from the call to the first load
LONG = 1000             # from this length on a single call is work, not overhead
PEERS = ("eigen", "eigenFlat", "loop", "streamLoop")
PEER_NAMES = {"eigen": "Eigen, fixed sizes", "eigenFlat": "Eigen, flat", "loop": "plain loop",
              "streamLoop": "plain loop along streams"}
SMALL = (3, 4, 5, 6)
LAYOUTS = ("packed", "padded", "strided", "list", "stridedList", "streams", "pointers", "stridedPointers")


class Row:
    def __init__(self, form, size, layout, place, result):
        self.form, self.size, self.layout, self.place = form, int(size), layout, place
        self.name = f"{form}/{size}/{layout}/{place}"
        self.result = result
        self.korm = result["korm"]
        self.peers = {peer: result[peer] for peer in PEERS if peer in result}
        self.objects = result["objects"]
        operands = form.split("_")[1]
        self.is_single = "a" not in operands
        self.is_vector = "v" in operands

    @property
    def best(self):
        return min(self.peers, key=self.peers.get)

    @property
    def ratio(self):
        return self.peers[self.best] / self.korm

    @property
    def is_small_call(self):
        return self.is_single and self.size < LONG

    def against(self, peer):
        return self.peers[peer] / self.korm if peer in self.peers else None

    def bandwidth(self):
        """Bytes a nanosecond, of the library and of the loop that copies from the input to the result."""
        copied = 2 * self.objects * self.size * (1 if self.is_vector else self.size) * self.element_size
        return self.result["bytes"] / self.korm, copied / self.result["copy"]

    @property
    def element_size(self):
        return 4 if "_32f" in self.form else 8


def read(path):
    with open(path, encoding="utf-8") as file:
        data = json.load(file)
    rows, threads, errors = [], [], []
    for result in data["benchmarks"]:
        name = result["name"].removesuffix("/iterations:1/manual_time")
        if result.get("error_occurred"):
            errors.append(f"{name}: {result['error_message']}")
        elif name.startswith("threads/"):
            threads.append((name.removeprefix("threads/"), result))
        else:
            rows.append(Row(*name.split("/"), result))
    return data["context"], rows, threads, errors


def is_arithmetic(cost):
    """Sums, differences and scaling by a constant, of any size: call_cost counts other families' forms too."""
    operation, operands = cost["name"].removeprefix("korm").split("_")[:2]
    return "toLoadSquare" in cost and (operation in ("Add", "Sub") or (operation == "Mul" and "c" in operands))


def long_packed(rows):
    """One run over all operands: every operand has objects, or is one constant for all."""
    return [row for row in rows if "copy" in row.result and row.layout == "packed"
            and row.form.split("_")[1] in ("mama", "mac", "vava", "vac", "cva", "vv", "vc")]


def goals_of(rows, costs):
    array = [row for row in rows if not row.is_single]
    small = [row for row in array if row.size in SMALL and row.place == "cache"]
    goals = []

    goals += at_least("packed arrays, orders and lengths 3 to 6, in cache: Eigen with fixed sizes / korm",
                      mean(row.against("eigen") for row in small if row.layout == "packed"), ADVANTAGE)
    for name, layouts in (("strided", ("strided",)), ("list", ("list", "stridedList")),
                          ("pointer", ("streams", "pointers", "stridedPointers"))):
        goals += at_least(f"{name} layout, in cache: plain loop / korm",
                          mean(row.against("loop") for row in array if row.layout in layouts and row.place == "cache"),
                          ADVANTAGE)
    goals += every_row("every row: best peer / korm", [row for row in rows if not row.is_small_call], PARITY)
    goals += every_row("long packed runs: bandwidth of korm / of a copying loop", long_packed(rows), BANDWIDTH,
                       lambda row: row.bandwidth()[0] / row.bandwidth()[1])
    for sizes, key in (("orders and lengths 3 to 6", "toLoadSquare"), ("other sizes", "toLoadOther")):
        if costs:
            most = max(costs, key=lambda cost: cost[key] / cost["arguments"])
            share = most[key] / most["arguments"]
            goals.append(Goal(f"single objects, {sizes}: instructions an argument to the first load "
                              f"(most: {most['name']})", number(share), f"<= {CALL_INSTRUCTIONS}",
                              share <= CALL_INSTRUCTIONS))
    return goals


def summary(rows):
    yield "## By layout"
    yield ""
    yield "Geometric means of peer / korm over all array forms and both types: above 1 korm is faster."
    yield ""
    for place in ("cache", "memory"):
        yield f"### {'In cache (24 KiB)' if place == 'cache' else 'Out of cache (64 MiB)'}"
        yield ""
        lines = []
        for layout in LAYOUTS:
            for name, chosen in (("3 to 6", SMALL), ("10", (10,)), ("16", (16,)), ("1000", (1000,))):
                group = [row for row in rows if not row.is_single and row.layout == layout
                         and row.place == place and row.size in chosen]
                if group:
                    lines.append([f"{layout}, {name}", str(len(group))]
                                 + [number(mean(row.against(peer) for row in group)) for peer in PEERS]
                                 + [number(mean(row.ratio for row in group)), number(min(row.ratio for row in group))])
        yield from table(["layout, size", "rows"] + [PEER_NAMES[peer] for peer in PEERS]
                         + ["best peer", "worst row"], lines)


def packed_tables(rows):
    yield "## Packed arrays in cache, nanoseconds an object"
    yield ""
    forms = defaultdict(list)
    for row in rows:
        if row.layout == "packed" and row.place == "cache" and not row.is_single:
            forms[row.form].append(row)
    lines = []
    for form, group in forms.items():
        for row in sorted(group, key=lambda row: row.size):
            cell = lambda name: number(row.result[name] / row.objects) if name in row.result else ""
            lines.append([f"{form}, {row.size}", cell("korm"), cell("eigen"), cell("eigenFlat"), cell("loop"),
                          number(row.ratio)])
    yield from table(["form, order or length", "korm", "Eigen, fixed sizes", "Eigen, flat", "plain loop",
                      "best peer / korm"], lines)


def bandwidth_table(rows):
    yield "## Long packed runs, GB/s"
    yield ""
    yield ("Bytes of all operands over time. The copying loop moves 16 bytes at a time from the first input to the "
           "result. In the first-level cache it is ahead of anything that computes: load, multiplication and store, "
           "written in assembly in several ways, reached 141 to 148 GB/s where load and store alone reached 182 (Xeon, "
           "family 6, model 207), a share of 0.8. Beyond that cache nothing is left of the difference.")
    yield ""
    lines = []
    for row in long_packed(rows):
        korm, copy = row.bandwidth()
        lines.append([row.name, number(korm, 1), number(copy, 1), number(korm / copy)])
    yield from table(["row", "korm", "copying loop", "share"], lines)


def single_tables(rows, costs):
    yield "## One small call"
    yield ""
    yield ("Nanoseconds of a call with one object in cache. The peers are functions for one size, without arguments "
           "for strides and without checks, so this shows what generality costs; use the array forms where there are "
           "many objects.")
    yield ""
    lines = []
    for row in rows:
        if row.is_small_call:
            lines.append([f"{row.form}, {row.size}, {row.layout}", number(row.korm), number(row.peers.get("eigen")),
                          number(row.peers.get("loop"))])
    yield from table(["form, size, layout", "korm", "Eigen, fixed sizes", "plain loop"], lines)
    if not costs:
        return
    yield "### Instructions"
    yield ""
    yield ("From the caller's `call`, which counts, to the first load of an element or table entry, the most over "
           "orders and lengths 3 to 6 and over others up to 33 and 1000, and to the return with order or length 3. "
           "Counted one by one with the processor's trap flag (`call_cost`); a test holds some against callgrind.")
    yield ""
    lines = []
    for cost in costs:
        lines.append([cost["name"], str(cost["arguments"])]
                     + [f"{cost[key]} ({number(cost[key] / cost['arguments'])})"
                        for key in ("toLoadSquare", "toLoadOther")]
                     + [str(cost["toReturn"])])
    yield from table(["form", "arguments", "to the first load, 3 to 6 (an argument)", "other sizes (an argument)",
                      "to the return"], lines)


def thread_table(threads):
    if not threads:
        return
    yield "## Two threads"
    yield ""
    lines = [[name, number(result["oneThread"] / 1000, 1), number(result["twoThreads"] / 1000, 1),
              number(result["oneThread"] / result["twoThreads"])] for name, result in threads]
    yield from table(["row", "one thread, us", "two threads, us", "speed-up"], lines)


def misses_of(rows, small_calls):
    return sorted((row for row in rows if row.ratio < PARITY and row.is_small_call == small_calls),
                  key=lambda row: row.ratio)


def miss_table(rows):
    lines = [[row.name, number(row.ratio), PEER_NAMES[row.best], number(row.korm / row.objects),
              number(row.peers[row.best] / row.objects)] for row in rows]
    yield from table(["row", "best peer / korm", "best peer", "korm, ns an object", "peer, ns an object"], lines)


def by_kind(rows):
    """Misses counted by form, layout and place, the most first."""
    groups = defaultdict(list)
    for row in rows:
        groups[row.form, row.layout, row.place].append(row)
    lines = [[f"{form}/{layout}/{place}", " ".join(str(size) for size in sorted({row.size for row in group})),
              number(mean(row.ratio for row in group))]
             for (form, layout, place), group in sorted(
                 groups.items(), key=lambda item: mean(row.ratio for row in item[1]))]
    yield from table(["form/layout/place", "sizes", "geometric mean of the misses"], lines)


def conditions(context):
    caches = ", ".join(f"L{cache['level']} {cache['type'].lower()} {cache['size'] // 1024} KiB"
                       for cache in context["caches"])
    yield f"- Date: {context['date'][:10]}"
    yield f"- Processor: {processor()}, {context['num_cpus']} CPUs, {caches}"
    yield f"- Library: {context['library']}"
    yield f"- Compiler: {context['compiler']}, flags `{context['flags'].strip()}`, for the library and all peers"
    yield f"- Eigen {context['eigen']}"
    yield f"- Mode: {context['mode']}"
    yield ""


def report(context, rows, threads, errors, costs):
    yield "# Benchmarks"
    yield ""
    yield "Written by bench/report.py. To repeat:"
    yield ""
    yield "    scripts/bench"
    yield ""
    yield "or by hand, also for some rows only:"
    yield ""
    yield "    cmake --preset x86_64 && cmake --build build/x86_64 --target korm_bench call_cost"
    yield "    build/x86_64/bin/korm_bench --benchmark_filter='Add_mama_32f/.*/packed' --benchmark_out=results.json"
    yield "    build/x86_64/bin/call_cost --json call_cost.json"
    yield "    bench/report.py results.json call_cost.json"
    yield ""
    yield from conditions(context)
    yield "What is compared: korm through its public functions; Eigen with sizes known at compile time, object by"
    yield "object over the same memory; Eigen over all objects as one array (in the pointer layout, stream by stream);"
    yield "plain loops with sizes known to the compiler, in the pointer layout also stream by stream. The results of"
    yield "all are compared to the bit first. Contenders then take turns in short samples on one thread, and a row"
    yield "tells medians. Rows near or below the goal are given more samples, which all count."
    yield ""
    yield "Layouts: *packed*, no gaps; *padded*, rows of matrices and vectors at multiples of 16 bytes; *strided*, every"
    yield "other element; *list* and *stridedList*, one pointer an object; *streams*, pointer layout with objects one"
    yield "element apart; *pointers*, pointer layout over packed objects: entries lead to adjacent elements, which the"
    yield "library sees; *stridedPointers*, pointer layout over strided objects, where there is nothing to see."
    yield ""
    yield from goals_section(goals_of(rows, costs))
    for error in errors:
        yield f"**{error}**"
        yield ""
    misses = misses_of(rows, False)
    if misses:
        yield f"### Rows below {PARITY}"
        yield ""
        yield from miss_table(misses)
    yield from summary(rows)
    yield from packed_tables(rows)
    yield from bandwidth_table(rows)
    yield from single_tables(rows, costs)
    yield from thread_table(threads)


def main():
    parser = argparse.ArgumentParser(description="Tables of benchmark results.")
    parser.add_argument("results")
    parser.add_argument("call_cost", nargs="?")
    parser.add_argument("--output")
    parser.add_argument("--misses")
    parser.add_argument("--check", action="store_true")
    options = parser.parse_args()
    context, rows, threads, errors = read(options.results)
    costs = []
    if options.call_cost:
        with open(options.call_cost, encoding="utf-8") as file:
            costs = [cost for cost in json.load(file) if is_arithmetic(cost)]
    if options.output:
        write(options.output, report(context, rows, threads, errors, costs))
    if options.misses:
        misses = misses_of(rows, False)
        write(options.misses, [f"{len(misses)} of {sum(not row.is_small_call for row in rows)} rows below {PARITY}", ""]
              + list(by_kind(misses)) + list(miss_table(misses)))
    met = print_goals(goals_of(rows, costs))
    for error in errors:
        print(f"ERROR  {error}")
    return 1 if options.check and (errors or not met) else 0


if __name__ == "__main__":
    sys.exit(main())
