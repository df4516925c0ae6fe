"""Failures: NumPy's own exceptions, the index of the object, what isn't touched; overlap; matrices that korm alone gets wrong."""

import doctest
import threading

import korm
import numpy as np
import pytest

from conftest import close, normal, well_conditioned


@pytest.mark.parametrize("dtype", [np.float32, np.float64])
@pytest.mark.parametrize("order", [1, 2, 3, 4, 5, 6, 7, 9])
@pytest.mark.parametrize("layout", ["standard", "streams", "list"])
def test_index_of_the_singular_matrix(dtype, order, layout):
    shape = (30, 50) if layout == "standard" else (1500,)
    a = well_conditioned(1, (*shape, order, order), dtype)
    bad = (17, 31) if layout == "standard" else (881,)
    a[bad] = 0
    a[tuple(-1 for _ in bad)] = 0  # a later one is not the one that is told
    if layout == "streams":
        a = np.moveaxis(np.moveaxis(a, 0, -1).copy(), -1, 0)
    given = list(a) if layout == "list" else a
    with pytest.raises(np.linalg.LinAlgError, match="[Ss]ingular") as caught:
        korm.inv(given)
    assert caught.value.index == bad
    with pytest.raises(np.linalg.LinAlgError, match="ingular") as caught:
        korm.solve(given, np.ones(a.shape[:-1], dtype))
    assert caught.value.index == bad
    with pytest.raises(np.linalg.LinAlgError, match="ingular") as caught:
        korm.lu(given)
    assert caught.value.index == bad
    with pytest.raises(np.linalg.LinAlgError, match="positive definite") as caught:
        korm.cholesky(np.eye(order, dtype=dtype) * 2 - 2 * np.eye(order, dtype=dtype) * (np.arange(12) == 5)[:, None, None])
    assert caught.value.index == (5,)


def test_single_matrices_have_an_empty_index():
    with pytest.raises(np.linalg.LinAlgError, match="^Singular matrix$") as caught:
        korm.inv(np.zeros((3, 3)))
    assert caught.value.index == ()


def test_in_place_the_index_is_unknown():
    a = np.ones((3, 3, 3))
    with pytest.raises(np.linalg.LinAlgError) as caught:
        korm.inv(a, out=a)
    assert caught.value.index is None


@pytest.mark.parametrize("size", [1e-30, 1e-12, 1.0, 1e12])
@pytest.mark.parametrize("order", [1, 2, 4, 6, 8])
def test_no_size_of_elements_is_singular(size, order):
    for dtype in (np.float32, np.float64):
        a = well_conditioned(2, (20, order, order), dtype)
        expected = np.linalg.inv(a.astype(float))
        close(korm.inv(a * dtype(size)) * dtype(size), expected, dtype, 300)
        b = normal(3, (20, order), dtype)
        x = np.linalg.solve(a.astype(float), b[..., None].astype(float))[..., 0]
        close(korm.solve(a * dtype(size), b * dtype(size)), x, dtype, 300)
        close(korm.lstsq(a * dtype(size), b * dtype(size)), x, dtype, 1000)


def test_bad_arguments():
    for call in [lambda: korm.inv(np.zeros((2, 3))), lambda: korm.det(np.zeros((2, 3)))]:
        with pytest.raises(np.linalg.LinAlgError, match="square"):
            call()
    for call in [lambda: korm.matmul(np.zeros((2, 3)), np.zeros((2, 3))), lambda: korm.dot(np.zeros(3), np.zeros(4)),
                 lambda: korm.cross(np.zeros(4), np.zeros(4)), lambda: korm.solve(np.eye(3), np.zeros(4)), lambda: korm.inv(np.zeros(3)),
                 lambda: korm.add(np.zeros((2, 3, 3)), np.zeros((3, 3, 3))), lambda: korm.inv(np.eye(3), out=np.zeros((3, 4))),
                 lambda: korm.inv(np.eye(3), out=np.zeros((1, 3, 3))), lambda: korm.qr(np.zeros((2, 3))), lambda: korm.eigh(np.eye(2), "X"),
                 lambda: korm.matmul(2.0, np.eye(2)), lambda: korm.lstsq(np.zeros((3, 2)), np.zeros(2))]:
        with pytest.raises(ValueError):
            call()
    for call in [lambda: korm.inv(np.eye(2) * 1j), lambda: korm.inv(np.eye(2), out=np.zeros((2, 2), int)), lambda: korm.inv([["a"]]),
                 lambda: korm.inv(np.eye(2, dtype=np.float16)), lambda: korm.inv(np.eye(2), out=3)]:
        with pytest.raises(TypeError):
            call()
    read_only = np.zeros((2, 2))
    read_only.flags.writeable = False
    with pytest.raises(ValueError):
        korm.inv(np.eye(2), out=read_only)


def test_types():
    assert korm.inv(np.eye(2, dtype=int)).dtype == np.float64
    assert korm.add(np.ones(2, "f4"), 1).dtype == np.float32
    assert korm.add(np.ones(2, "f4"), np.ones(2)).dtype == np.float64
    assert korm.inv(np.eye(2, dtype=">f4")).dtype == np.float32
    out = np.zeros((2, 2), "f4")
    assert korm.inv(np.eye(2) * 2, out=out) is out and out[0, 0] == 0.5
    assert isinstance(korm.det(np.eye(2)), float)
    values = np.random.default_rng(1).standard_normal(4 * 36 + 1).astype("f4").view("u1")[1:-3].view("f4").reshape(4, 6, 6)  # odd addresses
    assert np.array_equal(korm.transpose(values), values.swapaxes(1, 2), equal_nan=True)


@pytest.mark.parametrize("shift", range(-3, 4))
@pytest.mark.parametrize("order", [2, 3, 4, 7])
def test_results_over_their_sources(shift, order):
    """Whatever `out` overlaps, results are those of arrays apart."""
    for name, count in [("inv", 1), ("transpose", 1), ("matmul", 2), ("add", 2), ("solve", 2), ("cholesky", 1)]:
        memory = np.tile(np.eye(order) * 4 + 0.5, (20, 1, 1)) * np.arange(1, 21)[:, None, None]
        apart = memory.copy()
        first, second = slice(5, 15), slice(5 + shift, 15 + shift)
        function = getattr(korm, name)
        expected = function(*[apart[first]] * count)
        assert function(*[memory[first]] * count, out=memory[second]) is not None
        assert np.array_equal(memory[second], expected), name
    turned = np.arange(9.0).reshape(3, 3) + 4 * np.eye(3)
    expected = korm.inv(turned)
    korm.inv(turned, out=turned.T)
    assert np.array_equal(turned.T, expected)


def test_matrices_that_need_help():
    """Where korm's own functions refuse or are wrong, the package isn't."""
    def same(found, expected):
        assert np.allclose(np.sort_complex(found), np.sort_complex(expected), atol=1e-6), (found, expected)

    equal_diagonal = np.array([[1.0, 2], [2, 1]])
    same(korm.eigvals(equal_diagonal), [3, -1])
    w, v = korm.eig(np.stack([np.eye(2), equal_diagonal, [[0, -1], [1, 0]]]))
    same(w[1], [3, -1])
    same(w[2], [1j, -1j])
    assert np.allclose(equal_diagonal @ v[1], v[1] * w[1][None, :])
    singular = np.ones((5, 4, 4)) * 1e-20
    w, v = korm.eigh(singular)
    assert np.allclose(w / 1e-20, [0, 0, 0, 4]) and np.allclose(v @ v.swapaxes(1, 2), np.eye(4))
    assert np.allclose(korm.eigvalsh(np.diag([1e10, 1, 1e-10, 0, -5])), np.sort([1e10, 1, 1e-10, 0, -5]), rtol=1e-5, atol=1e-5)
    for order in (4, 10, 16, 32):  # values close together, where vectors alone tell that a value misses
        q = np.linalg.qr(normal(order, (20, order, order), np.float64))[0]
        spectrum = np.concatenate([np.ones(order - 1), [1e-13]])
        a = (q * spectrum) @ q.swapaxes(1, 2)
        a = (a + a.swapaxes(1, 2)) / 2
        for dtype in (np.float32, np.float64):
            assert np.abs(korm.eigvalsh(a.astype(dtype)) - np.sort(spectrum)).max() < 1000 * np.finfo(dtype).eps
    rank_one = np.ones((2, 3, 2))
    q, r = korm.qr(rank_one)
    assert np.allclose(q @ r, rank_one)
    assert np.allclose(korm.lstsq(rank_one, np.ones((2, 3))), 0.5)
    with pytest.raises(np.linalg.LinAlgError) as caught:
        korm.eig(np.stack([np.eye(3), np.full((3, 3), np.nan)]))
    assert caught.value.index == (1,)


def test_many_threads_at_once():
    """The interpreter's lock is released: results are right all the same."""
    a = well_conditioned(5, (3000, 4, 4), np.float64)
    expected = korm.inv(a)
    wrong = []

    def work():
        for _ in range(5):
            if not np.array_equal(korm.inv(a), expected):
                wrong.append(1)

    threads = [threading.Thread(target=work) for _ in range(4)]
    for thread in threads:
        thread.start()
    for thread in threads:
        thread.join()
    assert not wrong


def test_references_are_counted():
    import sys
    a, out = np.tile(np.eye(3), (4, 1, 1)), np.zeros((4, 3, 3))
    before = [sys.getrefcount(x) for x in (a, out, None)]
    for _ in range(1000):
        korm.inv(a, out=out)
        korm.solve(a, a)
        korm.eigh(a)
        korm.plan(korm.inv, a, out=out)
        korm.inv([a[0], a[1]])
        for bad in (lambda: korm.inv(a, out=a[0]), lambda: korm.inv(a * 0)):
            try:
                bad()
            except ValueError:
                pass
            except np.linalg.LinAlgError:
                pass
    assert [abs(x - y) < 50 for x, y in zip(before, [sys.getrefcount(x) for x in (a, out, None)])] == [True] * 3


def test_examples_of_the_docstrings():
    result = doctest.testmod(korm, extraglobs={"np": np, "korm": korm})
    assert result.attempted > 50 and result.failed == 0
