#!/usr/bin/env python3
"""korm for Python beside NumPy and SciPy on arrays of matrices: compare.py [--matrices N] [--repeats N] [--orders 2-8]

Prints a table in Markdown: nanoseconds a matrix and how many times faster korm is than the faster of the two. SciPy 1.10 takes one
matrix at a time, so it is called in a loop over a hundredth of the array. One thread is measured by processor time, two by the
clock: the best of the runs. Set PYTHONPATH to the folder python of a build.
"""

import argparse
import os
import subprocess
import sys
import time

OPERATIONS = ["inv", "solve", "det", "cholesky", "eigh", "eigvals", "qr", "matmul"]


def measure(matrices, repeats, orders, threads):
    """One line for each operation, order and type: name, order, type, korm, NumPy, SciPy in nanoseconds a matrix."""
    import korm
    import numpy as np
    import scipy.linalg
    clock = time.process_time if threads == 1 else time.perf_counter

    def best(function, count):
        times = []
        for _ in range(repeats):
            start = clock()
            function()
            times.append(clock() - start)
        return min(times) / count * 1e9

    random = np.random.default_rng(1)
    for order in orders:
        for dtype in (np.float32, np.float64):
            a = random.standard_normal((matrices, order, order)).astype(dtype)
            symmetric = (a + a.swapaxes(1, 2)) / 2
            positive = a @ a.swapaxes(1, 2) + order * np.eye(order, dtype=dtype)
            b = random.standard_normal((matrices, order)).astype(dtype)
            few = matrices // 100
            for name in OPERATIONS:
                given = {"solve": (a, b), "cholesky": (positive,), "eigh": (symmetric,), "matmul": (a, symmetric)}.get(name, (a,))
                ours = getattr(korm, name)
                numpys = {"matmul": np.matmul, "solve": lambda m, v: np.linalg.solve(m, v[..., None])}.get(name) or getattr(np.linalg, name)
                times = [best(lambda: ours(*given), matrices), best(lambda: numpys(*given), matrices)]
                scipys = getattr(scipy.linalg, name, None)
                if scipys:
                    rows = [tuple(array[k] for array in given) for k in range(few)]
                    times.append(best(lambda: [scipys(*row) for row in rows], few))
                print(name, order, dtype.__name__, *(f"{t:.1f}" for t in times), flush=True)


def main():
    parser = argparse.ArgumentParser(description=__doc__.splitlines()[0])
    parser.add_argument("--matrices", type=int, default=100_000)
    parser.add_argument("--repeats", type=int, default=5)
    parser.add_argument("--orders", default="2-8")
    parser.add_argument("--threads", type=int, help="measure with so many threads, in this process")
    options = parser.parse_args()
    first, _, last = options.orders.partition("-")
    if options.threads:
        return measure(options.matrices, options.repeats, range(int(first), int(last or first) + 1), options.threads)

    cells = {}
    for threads in (1, 2):
        environment = {**os.environ, **{f"{name}_NUM_THREADS": str(threads) for name in ("OMP", "OPENBLAS")}}
        run = subprocess.run([sys.executable, "-B", *sys.argv, "--threads", str(threads)], env=environment, capture_output=True, text=True, check=True)
        for line in run.stdout.splitlines():
            name, order, dtype, *times = line.split()
            cells[name, int(order), dtype, threads] = [float(t) for t in times]
    print("| function | order | " + " | ".join(f"{dtype}, {threads} thread{'s' * (threads > 1)}: korm | NumPy | SciPy | times" for dtype in ("float32", "float64")
                                              for threads in (1, 2)) + " |")
    print("|---|---:|" + "---:|" * 16)
    for name in OPERATIONS:
        for order in sorted({key[1] for key in cells}):
            row = []
            for dtype in ("float32", "float64"):
                for threads in (1, 2):
                    korm, *others = cells[name, order, dtype, threads]
                    row += [f"{korm:.0f}", f"{others[0]:.0f}", f"{others[1]:.0f}" if others[1:] else "-", f"{min(others) / korm:.1f}"]
            print(f"| `{name}` | {order} | " + " | ".join(row) + " |")
    return None


if __name__ == "__main__":
    main()
