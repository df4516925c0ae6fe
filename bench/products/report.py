#!/usr/bin/env python3
"""Turns results of korm_bench_products into the tables of docs/benchmarks-products.md.

    bench/products/report.py RESULTS.json [--any-blas RESULTS.json] [--output FILE] [--check]

--any-blas names the results of a run with OpenBLAS on the processor's own kernels, for information. --check exits
with 1 if a goal is missed.
"""

import argparse
import datetime
import json
import os
from pathlib import Path
import sys

sys.path.insert(0, str(Path(__file__).resolve().parents[1]))
from tables import at_least, every_row, goals_section, mean, number, print_goals, processor, table, write  # noqa: E402

PARITY = 0.97         # of the best peer, in every row of small packed arrays
FLOAT_MEAN, DOUBLE_MEAN = 1.3, 1.2
FLOAT_EIGEN, DOUBLE_EIGEN = 2.0, 1.3
STREAMS = 2.0         # times the packed arrays
SINGLE = 0.95         # of the better of Eigen and OpenBLAS, with sizes given at run time
SINGLE_IA32 = 1.2     # of Eigen
SINGLE_LARGEST = 64
THREADS = 1.7         # where the control finds two processors
SMALL = (3, 4, 5, 6)
OWN = ("korm", "kormPacked")
NAMES = {"eigenFixed": "Eigen, fixed sizes", "eigenDynamic": "Eigen, dynamic", "openblas": "OpenBLAS", "glm": "GLM",
         "cglm": "cglm", "loop": "plain loop", "loopByRows": "plain loop by rows",
         "loopAlongStreams": "plain loop along streams", "eigenAllVectors": "Eigen, all vectors at once",
         "openblasAllVectors": "OpenBLAS, all vectors at once"}


class Row:
    def __init__(self, result):
        self.name = result["name"]
        parts = self.name.split("/")
        self.kind, self.form, self.order = parts[0], parts[1], result["order"]
        self.place = parts[3] if len(parts) > 3 else ""
        self.objects, self.ns, self.error = result["objects"], result["ns"], result["error"]
        self.is_float = self.form.endswith("_32f")

    def against(self, *peers):
        """Time of the best of these peers over the library's."""
        times = [self.ns[peer] for peer in peers if peer in self.ns]
        return min(times) / self.ns["korm"] if times else None

    @property
    def peers(self):
        return [name for name in self.ns if name not in OWN]

    @property
    def best(self):
        return min(self.peers, key=self.ns.get)

    @property
    def ratio(self):
        return self.against(*self.peers)

    def each(self, name):
        return self.ns[name] / self.objects

    def gigaflops(self, name):
        return 2 * self.order ** 3 * self.objects / self.ns[name]


def read(path):
    with open(path, encoding="utf-8") as file:
        data = json.load(file)
    rows = [Row(result) for result in data["rows"]]
    return data["context"], [row for row in rows if not row.error], [row for row in rows if row.error]


def goals_of(context, rows):
    goals = []
    small = [row for row in rows if row.kind == "arrays" and row.order in SMALL]
    at_run_time = [row for row in rows if row.kind == "singles" and row.order <= SINGLE_LARGEST]

    goals += every_row("packed arrays, orders 3 to 6: best peer / korm", small, PARITY)
    for is_float, best, eigen in ((True, FLOAT_MEAN, FLOAT_EIGEN), (False, DOUBLE_MEAN, DOUBLE_EIGEN)):
        chosen = [row for row in small if row.is_float == is_float]
        name = "32f" if is_float else "64f"
        goals += at_least(f"the same, geometric mean, {name}", mean(row.ratio for row in chosen), best)
        goals += at_least(f"Eigen with fixed sizes / korm, geometric mean, {name}",
                          mean(row.against("eigenFixed") for row in chosen), eigen)
    streams = [row for row in rows if row.kind == "streams" and "v" not in row.form]
    goals += every_row("objects one element apart (`_P`): packed arrays / streams", streams, STREAMS,
                       lambda row: row.ns["kormPacked"] / row.ns["korm"])
    if context["target"] == "ia32":
        goals += every_row("single products, orders 8 to 64: Eigen / korm", [row for row in at_run_time if row.order >= 8],
                           SINGLE_IA32, lambda row: row.against("eigenDynamic"))
    else:
        goals += every_row("single products up to order 64: the better of Eigen and OpenBLAS, sizes given at run time, / korm",
                           at_run_time, SINGLE, lambda row: row.against("eigenDynamic", "openblas"))
    for row in rows:
        if row.kind == "threads":
            control = row.ns["controlOne"] / row.ns["controlTwo"]
            if control >= THREADS:
                goals += at_least(f"two threads, {row.name}", row.ns["oneThread"] / row.ns["twoThreads"], THREADS)
    return goals


def comparison(rows, text, figure="ns"):
    """A table of the library and every peer that some row has."""
    peers = [peer for peer in NAMES if any(peer in row.ns for row in rows)]
    cell = lambda row, name: number(row.each(name)) if figure == "ns" else number(row.gigaflops(name), 1)
    lines = []
    for row in rows:
        lines.append([f"{row.form}, {row.order}", cell(row, "korm")]
                     + [cell(row, peer) if peer in row.ns else "" for peer in peers]
                     + [NAMES[row.best], number(row.ratio)])
    yield text
    yield ""
    yield from table(["form, order", "korm"] + [NAMES[peer] for peer in peers] + ["best peer", "best peer / korm"], lines)


def streams_table(rows):
    lines = [[f"{row.form}, {row.order}", number(row.each("korm")), number(row.each("kormPacked")),
              number(row.each("loopAlongStreams")), number(row.ns["kormPacked"] / row.ns["korm"]),
              number(row.against("loopAlongStreams"))] for row in rows]
    yield "Nanoseconds an object, in cache. The plain loop knows the sizes and does all objects of one position at a time."
    yield "What additions and multiplications alone take, and why streams gain little where packed arrays are near that, is"
    yield "told in [the architecture](architecture.md#the-kernels-of-products)."
    yield ""
    yield from table(["form, order", "korm `_P`", "korm, packed", "plain loop", "packed / `_P`", "plain loop / `_P`"],
                     lines)


def singles_table(rows, any_blas):
    lines = []
    others = {row.name: row for row in any_blas}
    for row in rows:
        at_run_time = row.against("eigenDynamic", "openblas")
        other = others.get(row.name)
        lines.append([f"{row.form}, {row.order}"]
                     + [number(row.gigaflops(name)) if name in row.ns else ""
                        for name in ("korm", "eigenDynamic", "openblas", "eigenFixed")]
                     + [number(at_run_time)]
                     + [number(other.gigaflops("openblas")) if other and "openblas" in other.ns else ""])
    yield "Operations a nanosecond (2 n^3 over the time). Eigen with fixed sizes knows the order when it is compiled. Why"
    yield "`tm` and `tt` fall behind from order 128 on is told in [the architecture](architecture.md#the-kernels-of-products)."
    yield ""
    yield from table(["form, order", "korm", "Eigen, dynamic", "OpenBLAS", "Eigen, fixed sizes",
                      "the better at run time / korm", "OpenBLAS, any kernels, in a run of its own"], lines)


def thread_table(rows):
    lines = [[row.name.removeprefix("threads/"), number(row.ns["oneThread"] / 1000, 1),
              number(row.ns["twoThreads"] / 1000, 1), number(row.ns["oneThread"] / row.ns["twoThreads"]),
              number(row.ns["controlOne"] / row.ns["controlTwo"])] for row in rows]
    yield "Microseconds that pass. The control is a plain loop over the same arrays, on one thread and on two of the same"
    yield "team: what two threads are worth on this machine at this moment."
    yield ""
    yield from table(["row", "one thread", "two threads", "speed-up", "speed-up of the control"], lines)


def report(context, rows, errors, any_blas, any_context):
    yield "# Benchmarks of products"
    yield ""
    yield "Written by bench/products/report.py. To repeat: `scripts/bench products`, or for some rows only"
    yield ""
    yield "    cmake --build build/x86_64 --target korm_bench_products"
    yield "    build/x86_64/bin/korm_bench_products --filter 'arrays/mama_32f' --out results.json"
    yield "    bench/products/report.py results.json"
    yield ""
    yield f"- Date: {datetime.date.today()}"
    yield f"- Processor: {processor()}, {os.cpu_count()} CPUs"
    yield f"- Library: {context['library']}, {context['target']}"
    yield f"- Compiler: {context['compiler']}, flags `{context['flags'].strip()}`, for the library and all peers in headers"
    yield f"- Eigen {context['eigen']}, GLM {context.get('glm', 'missing')}, cglm {context.get('cglm', 'missing')}"
    yield (f"- {context['openblas']}, held to its kernels for {context['openblasKernels']}, one thread"
           if "openblas" in context else "- OpenBLAS missing")
    if any_context:
        yield f"- For information only: OpenBLAS with its kernels for {any_context.get('openblasKernels')}"
    yield f"- Mode: {context['mode']}"
    yield ""
    yield "All results are compared first, to the rounding errors that an order of additions may leave. Contenders then"
    yield "take turns in short samples, by the time of their own thread, and a row tells medians."
    yield ""
    yield from goals_section(goals_of(context, rows))
    for row in errors:
        yield f"**{row.name}: the results of {row.error} differ**"
        yield ""
    chosen = lambda kind: [row for row in rows if row.kind == kind]
    for kind, title, lines in (
            ("arrays", "Packed arrays of square matrices", lambda group: comparison(group, "Nanoseconds an object, in cache.")),
            ("streams", "Objects one element apart", streams_table),
            ("singles", "Single products", lambda group: singles_table(group, any_blas)),
            ("vectors", "Matrices and vectors", lambda group: comparison(group, "Nanoseconds an object, in cache.")),
            ("threads", "Two threads", thread_table)):
        if chosen(kind):
            yield f"## {title}"
            yield ""
            yield from lines(chosen(kind))


def main():
    parser = argparse.ArgumentParser(description="Tables of the products' benchmark.")
    parser.add_argument("results")
    parser.add_argument("--any-blas")
    parser.add_argument("--output")
    parser.add_argument("--check", action="store_true")
    options = parser.parse_args()
    context, rows, errors = read(options.results)
    any_context, any_blas = {}, []
    if options.any_blas:
        any_context, any_blas, _ = read(options.any_blas)
    if options.output:
        write(options.output, report(context, rows, errors, any_blas, any_context))
    met = print_goals(goals_of(context, rows))
    for row in errors:
        print(f"ERROR  {row.name}: the results of {row.error} differ")
    return 1 if options.check and (errors or not met) else 0


if __name__ == "__main__":
    sys.exit(main())
