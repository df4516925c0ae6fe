#!/usr/bin/env python3
"""korm for Python beside NumPy and SciPy on arrays of matrices: compare.py [--matrices N] [--repeats N] [--orders 2-8] [--only NAMES]

Prints tables in Markdown: nanoseconds a matrix, the best of the runs, which take turns so that all meet the same load. On one thread
it is processor time. On two it is the clock's: korm uses two threads of OpenMP, NumPy two of Python, each with half of the array. SciPy
1.10 takes one matrix at a time, so it is called in a loop over a hundredth of the array. The last table has the function of the
C library that eigh calls. Set PYTHONPATH to the folder python of a build.
"""

import argparse
from concurrent.futures import ThreadPoolExecutor
import ctypes
import os
from pathlib import Path
import subprocess
import sys
import time

OPERATIONS = ["inv", "solve", "det", "cholesky", "eigh", "eigvals", "qr", "matmul"]


def best(clock, repeats, tasks):
    """The shortest time of each task, a function and how many matrices it does, in nanoseconds a matrix."""
    times = [[] for _ in tasks]
    for _ in range(repeats):
        for (function, count), own in zip(tasks, times):
            start = clock()
            function()
            own.append((clock() - start) / count * 1e9)
    return [min(own) for own in times]


def arrays(random, matrices, order, dtype):
    import numpy as np
    a = random.standard_normal((matrices, order, order)).astype(dtype)
    symmetric = (a + a.swapaxes(1, 2)) / 2
    positive = a @ a.swapaxes(1, 2) + order * np.eye(order, dtype=dtype)
    b = random.standard_normal((matrices, order)).astype(dtype)
    return {"solve": (a, b), "cholesky": (positive,), "eigh": (symmetric,), "matmul": (a, symmetric)}, (a,)


def measure(options, orders):
    """A line for each operation, order and type: name, order, type, and the times of korm, NumPy and SciPy."""
    import korm
    import numpy as np
    import scipy.linalg
    random = np.random.default_rng(1)
    pool = ThreadPoolExecutor(options.threads)
    for order in orders:
        for dtype in (np.float32, np.float64):
            special, usual = arrays(random, options.matrices, order, dtype)
            for name in options.only:
                given = special.get(name, usual)
                ours = getattr(korm, name)
                numpys = {"matmul": np.matmul, "solve": lambda m, v: np.linalg.solve(m, v[..., None])}.get(name) or getattr(np.linalg, name)
                tasks = [(lambda: ours(*given), options.matrices)]
                if options.threads == 1:
                    tasks.append((lambda: numpys(*given), options.matrices))
                    scipys = getattr(scipy.linalg, name, None)
                    rows = [tuple(array[k] for array in given) for k in range(options.matrices // 100)]
                    if scipys:
                        tasks.append((lambda: [scipys(*row) for row in rows], len(rows)))
                else:
                    parts = [[array[k::2] for array in given] for k in range(2)]
                    tasks.append((lambda: list(pool.map(lambda part: numpys(*part), parts)), options.matrices))
                times = best(time.process_time if options.threads == 1 else time.perf_counter, options.repeats, tasks)
                print(name, order, dtype.__name__, *(f"{t:.1f}" for t in times), flush=True)


def measure_solver(options, orders):
    """The symmetric solver alone, of matrices that it doesn't refuse: order, type, and the times of korm.eigh, its solver and NumPy."""
    import korm
    import numpy as np
    library = ctypes.CDLL(str(Path(korm._korm.__file__).resolve().parents[2] / options.library))
    random = np.random.default_rng(1)
    for order in orders:
        for dtype in (np.float32, np.float64):
            (symmetric,) = arrays(random, min(options.matrices, 20000), order, dtype)[0]["eigh"]
            solver = getattr(library, "kormEigenValuesVectorsSym_ma_32f" if dtype == np.float32 else "kormEigenValuesVectorsSym_ma_64f")
            size = symmetric.itemsize
            strides = [order * order * size, order * size, size]
            vectors, values, buffer = np.empty_like(symmetric), np.empty(symmetric.shape[:2], dtype), np.empty(order * order, dtype)

            def call(a):
                address = [ctypes.c_void_p(array.ctypes.data) for array in (a, buffer, vectors, values)]
                return solver(address[0], *strides, address[1], address[2], *strides, address[3], order, len(a))

            symmetric = symmetric[[call(a[None]) == 0 for a in symmetric]].copy()
            times = best(time.process_time, options.repeats, [(lambda f=f: f(symmetric), len(symmetric))
                                                              for f in (korm.eigh, call, np.linalg.eigh)])
            print(order, dtype.__name__, *(f"{t:.1f}" for t in times), flush=True)


def rerun(threads, *more):
    environment = {**os.environ, "OMP_NUM_THREADS": str(threads), "OPENBLAS_NUM_THREADS": "1"}
    run = subprocess.run([sys.executable, "-B", *sys.argv, "--threads", str(threads), *more], env=environment, capture_output=True, text=True, check=True)
    return [line.split() for line in run.stdout.splitlines()]


def main():
    parser = argparse.ArgumentParser(description=__doc__.splitlines()[0])
    parser.add_argument("--matrices", type=int, default=100_000)
    parser.add_argument("--repeats", type=int, default=5)
    parser.add_argument("--orders", default="2-8")
    parser.add_argument("--only", default=OPERATIONS, type=lambda names: names.split(","))
    parser.add_argument("--library", default="lib/libkorm.so.7", help="korm's library, from the folder above the package's")
    parser.add_argument("--threads", type=int, help="measure with so many threads, in this process")
    parser.add_argument("--solver", action="store_true", help="measure the symmetric solver, in this process")
    options = parser.parse_args()
    first, _, last = options.orders.partition("-")
    orders = range(int(first), int(last or first) + 1)
    if options.threads:
        return (measure_solver if options.solver else measure)(options, orders)

    cells = {(name, int(order), dtype, threads): [float(t) for t in times]
             for threads in (1, 2) for name, order, dtype, *times in rerun(threads)}
    types = ("float32", "float64")
    print("| function | order | " + " | ".join(f"{dtype}: korm | NumPy | SciPy | times | two threads: korm | NumPy | times" for dtype in types) + " |")
    print("|---|---:|" + "---:|" * 14)
    for name in options.only:
        for order in orders:
            row = []
            for dtype in types:
                korm, *others = cells[name, order, dtype, 1]
                row += [f"{korm:.0f}", f"{others[0]:.0f}", f"{others[1]:.0f}" if others[1:] else "-", f"{min(others) / korm:.1f}"]
                korm, numpy = cells[name, order, dtype, 2]
                row += [f"{korm:.0f}", f"{numpy:.0f}", f"{numpy / korm:.1f}"]
            print(f"| `{name}` | {order} | " + " | ".join(row) + " |")
    if "eigh" in options.only:
        print("\n| order | type | `korm.eigh` | its C function | NumPy | NumPy / korm.eigh | NumPy / C function |\n|---:|---|" + "---:|" * 5)
        for order, dtype, *times in rerun(1, "--solver"):
            korm, solver, numpy = map(float, times)
            print(f"| {order} | {dtype} | {korm:.0f} | {solver:.0f} | {numpy:.0f} | {numpy / korm:.1f} | {numpy / solver:.1f} |")
    return None


if __name__ == "__main__":
    main()
