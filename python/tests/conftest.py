"""Arrays in all kinds of memory, and how close results have to be."""

import os

from hypothesis import HealthCheck, settings, strategies as st
import numpy as np

# The same examples in every run, unless so many others are asked for.
OTHERS = os.environ.get("KORM_TEST_EXAMPLES")
settings.register_profile("korm", deadline=None, max_examples=int(OTHERS or 15), derandomize=OTHERS is None,
                          suppress_health_check=list(HealthCheck))
settings.load_profile("korm")

DTYPES = [np.float32, np.float64]

# How an array may lie: each takes an array and gives an equal one in other memory.
WAYS = {}


def way(function):
    WAYS[function.__name__] = function
    return function


def inside(shape, dtype, index):
    """A part of a larger array of NaN, which nothing may touch or read."""
    whole = np.full(shape, np.nan, dtype)
    return whole[index if index else ...]


def filled(part, values):
    part[...] = values
    return part


@way
def contiguous(a):
    return a.copy()


@way
def fortran(a):
    return a.copy(order="F")


@way
def columns_first(a):
    return a.swapaxes(-1, -2).copy().swapaxes(-1, -2) if a.ndim > 1 else a.copy()


@way
def streams(a):
    return np.moveaxis(np.moveaxis(a, 0, -1).copy(), -1, 0) if a.ndim > 1 else a.copy()


@way
def every_other(a):
    return filled(inside(tuple(2 * n for n in a.shape), a.dtype, tuple(slice(None, 2 * n, 2) for n in a.shape)), a)


@way
def padded(a):
    return filled(inside(tuple(n + 3 for n in a.shape), a.dtype, tuple(slice(1, n + 1) for n in a.shape)), a)


@way
def backwards(a):
    return np.flip(np.flip(a).copy())


@way
def objects_backwards(a):
    return a[::-1].copy()[::-1] if a.ndim else a.copy()


@way
def rows_backwards(a):
    return np.flip(np.flip(a, -1).copy(), -1) if a.ndim else a.copy()


@way
def records(a):
    if a.ndim == 0:
        return a.copy()
    return filled(np.zeros(a.shape[:1], dtype=[("id", "u1"), ("a", a.dtype, a.shape[1:])])["a"], a)


@way
def swapped(a):
    return a.astype(a.dtype.newbyteorder())


@way
def read_only(a):
    b = a.copy()
    b.flags.writeable = False
    return b


ways = st.sampled_from(sorted(WAYS))
writable_ways = st.sampled_from(sorted(set(WAYS) - {"read_only"}))
dtypes = st.sampled_from(DTYPES)
leading = st.sampled_from([(), (1,), (2,), (7,), (33,), (3, 5), (2, 1, 4), (0,), (700,)])
orders = st.integers(1, 9)
seeds = st.integers(0, 2**32 - 1)


def laid(how, a):
    b = WAYS[how](a)
    assert b.shape == a.shape and np.array_equal(b, a, equal_nan=True)
    return b


def normal(seed, shape, dtype):
    return np.asarray(np.random.default_rng(seed).standard_normal(shape)).astype(dtype)


def well_conditioned(seed, shape, dtype):
    """Matrices far from singular."""
    a = normal(seed, shape, dtype) * dtype(0.3 / max(shape[-1], 1) ** 0.5)
    return a + np.eye(shape[-1], dtype=dtype) * dtype(1.5)


def close(found, expected, dtype, factor=100.0):
    assert np.shape(found) == np.shape(expected), (np.shape(found), np.shape(expected))
    found, expected = np.asarray(found), np.asarray(expected)
    assert np.dtype(found.dtype).type in (dtype, np.result_type(dtype, np.complex64).type), found.dtype
    if expected.size:
        size = max(1.0, float(np.abs(expected).max()))
        error = float(np.abs(found - expected).max())
        assert error <= factor * np.finfo(dtype).eps * size, (error, size)
