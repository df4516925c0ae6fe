#!/usr/bin/env python3
"""A million matrices inverted, and as many systems solved, by two processes of a Dask cluster.

usage: dask_matrices.py [--matrices N] [--workers N]

Each block of the arrays is one call of korm in a worker. Results are held against those of one call in this process: they are
the same to the bit, since what an object gives depends on the object alone. Needs python3-dask and python3-distributed.
"""

import argparse
import time

import dask.array as da
from dask.distributed import Client, LocalCluster
import korm
import numpy as np


def main() -> None:
    parser = argparse.ArgumentParser(description=__doc__.splitlines()[0])
    parser.add_argument("--matrices", type=int, default=1_000_000)
    parser.add_argument("--workers", type=int, default=2)
    options = parser.parse_args()

    random = np.random.default_rng(7)
    a = random.standard_normal((options.matrices, 4, 4)) + 4 * np.eye(4)
    b = random.standard_normal((options.matrices, 4, 1))
    start = time.perf_counter()
    inverses, solutions = korm.inv(a), korm.solve(a, b)
    print(f"one process: {time.perf_counter() - start:.2f} s")

    with LocalCluster(n_workers=options.workers, threads_per_worker=1, dashboard_address=None) as cluster, Client(cluster):
        rows = -(-options.matrices // (4 * options.workers))
        blocks_a, blocks_b = da.from_array(a, chunks=(rows, 4, 4)), da.from_array(b, chunks=(rows, 4, 1))
        start = time.perf_counter()
        inverted = blocks_a.map_blocks(korm.inv, dtype=a.dtype)
        solved = da.map_blocks(korm.solve, blocks_a, blocks_b, chunks=blocks_b.chunks, dtype=a.dtype)
        inverted, solved = da.compute(inverted, solved)
        print(f"{options.workers} workers: {time.perf_counter() - start:.2f} s, most of it for the way of the arrays to them and back")

    if not (np.array_equal(inverted, inverses) and np.array_equal(solved, solutions)):
        raise SystemExit("results differ")
    print(f"{options.matrices} inverses and solutions, equal to the bit")


if __name__ == "__main__":
    main()
