"""Threads: results and failures of an array don't depend on how many share it."""

import os
import subprocess
import sys

import pytest

PROGRAM = """
import hashlib
import numpy as np, korm
random = np.random.default_rng(4)
digests = []
def add(*arrays):
    digests.append(hashlib.sha256(b"".join(array.tobytes() for array in arrays)).hexdigest())
for dtype in (np.float32, np.float64):
    for order in (1, 2, 3, 5, 6, 8):
        a = random.standard_normal((1009, order, order)).astype(dtype)
        b = random.standard_normal((1009, order, 2)).astype(dtype)
        symmetric = a + a.swapaxes(1, 2)
        symmetric[700] = 0  # korm refuses it
        add(korm.inv(a), korm.solve(a, b), korm.solve(a[0], b), korm.solve(a[::-1], b[:, :, 0]), *korm.lu(a))
        add(korm.cholesky(a @ a.swapaxes(1, 2) + order * np.eye(order, dtype=dtype)))
        add(*korm.qr(a), korm.lstsq(a, b), *korm.eigh(symmetric), korm.eigvalsh(symmetric), *korm.eig(a), korm.eigvals(a))
        a[[300, 990]] = 0
        for function in (korm.inv, korm.cholesky, korm.lu, lambda a: korm.solve(a, b)):
            try:
                function(a if function != korm.cholesky else np.where(a == 0, a, 0) + (a != 0) * np.eye(order, dtype=dtype))
            except np.linalg.LinAlgError as error:
                digests.append(str(error.index))
print(*digests, sep="\\n")
"""


def lines(threads):
    run = subprocess.run([sys.executable, "-B", "-c", PROGRAM], capture_output=True, text=True, check=True,
                         env={**os.environ, "OMP_NUM_THREADS": str(threads), "PYTHONPATH": os.pathsep.join(sys.path)})
    return run.stdout.splitlines()


def test_any_number_of_threads():
    alone = lines(1)
    assert alone.count("(300,)") == 12 * 4
    for threads in (2, 3):
        assert lines(threads) == alone
