"""Each operation beside NumPy's, on arrays of random shapes in random memory."""

from hypothesis import example, given, strategies as st
import korm
import numpy as np
import pytest
import scipy.linalg

from conftest import close, dtypes, laid, leading, normal, orders, seeds, ways, well_conditioned, writable_ways


def double(*arrays):
    return [np.asarray(a).astype(np.float64) for a in arrays]


def results_with_out(function, arguments, how, expected, dtype, factor=100.0):
    """Without `out`, and into an `out` in some memory whose gaps stay as they were."""
    plain = function(*arguments)
    close(plain, expected, dtype, factor)
    if np.ndim(expected) == 0:
        return
    out = laid(how, np.full(np.shape(expected), 7, dtype))
    whole = out
    while isinstance(whole.base, np.ndarray):
        whole = whole.base
    before = whole.copy()
    assert function(*arguments, out=out) is out
    close(out.astype(dtype), expected, dtype, factor)
    values = out.copy()
    out[...] = 7
    assert whole.tobytes() == before.tobytes(), "something beside the result was written"
    out[...] = values


@given(seeds, dtypes, leading, orders, ways, writable_ways)
def test_inv(seed, dtype, shape, order, how, how_out):
    a = well_conditioned(seed, (*shape, order, order), dtype)
    results_with_out(korm.inv, [laid(how, a)], how_out, np.linalg.inv(*double(a)), dtype, 300)


@given(seeds, dtypes, leading, orders, ways, writable_ways)
def test_det(seed, dtype, shape, order, how, how_out):
    a = well_conditioned(seed, (*shape, order, order), dtype)
    results_with_out(korm.det, [laid(how, a)], how_out, np.linalg.det(*double(a)), dtype, 300)


@given(seeds, dtypes, leading, leading, orders, st.integers(0, 4), ways, ways, writable_ways)
def test_solve(seed, dtype, shape, other, order, columns, how, how_b, how_out):
    a = well_conditioned(seed, (*shape, order, order), dtype)
    for b_shape in [(*shape, order), (*shape, order, columns + 1), (*other, order, columns + 1)]:
        try:
            np.broadcast_shapes(shape, b_shape[:-2])
        except ValueError:
            continue
        b = normal(seed + 1, b_shape, dtype)
        vectors = b.ndim == max(a.ndim - 1, 1)
        if vectors and b_shape != (*shape, order):
            continue
        da, db = double(a, b)
        expected = np.linalg.solve(da, db[..., None])[..., 0] if vectors else np.linalg.solve(da, db)
        results_with_out(korm.solve, [laid(how, a), laid(how_b, b)], how_out, expected, dtype, 300)


@given(seeds, dtypes, leading, orders, ways)
def test_lu(seed, dtype, shape, order, how):
    a = normal(seed, (*shape, order, order), dtype)
    p, l, u = korm.lu(laid(how, a))
    close(p @ l @ u, a, dtype, 300)
    assert np.array_equal(np.tril(l, -1) + np.eye(order), l) and np.array_equal(np.triu(u), u)
    assert np.array_equal(p.sum(-1), np.ones(p.shape[:-1])) and np.array_equal(p.sum(-2), np.ones(p.shape[:-1]))
    if order in (3, 4, 5, 6) and a.size:
        first = scipy.linalg.lu(a.reshape(-1, order, order)[0].astype(np.float64))
        close(u.reshape(-1, order, order)[0], first[2], dtype, 3000)


@given(seeds, dtypes, leading, orders, ways, writable_ways)
def test_cholesky(seed, dtype, shape, order, how, how_out):
    b = well_conditioned(seed, (*shape, order, order), np.float64)
    a = (b @ b.swapaxes(-1, -2)).astype(dtype)
    expected = np.linalg.cholesky(*double(a))
    a += np.triu(np.full((order, order), np.nan, dtype), 1)  # isn't read
    results_with_out(korm.cholesky, [laid(how, a)], how_out, expected, dtype, 100)


@given(seeds, dtypes, leading, orders, st.integers(0, 4), ways, st.sampled_from([1e-12, 1.0, 1e12]))
def test_qr(seed, dtype, shape, width, more, how, size):
    a = normal(seed, (*shape, width + more, width), dtype) * dtype(size)
    q, r = korm.qr(laid(how, a))
    assert q.dtype == r.dtype == dtype and q.shape == a.shape and r.shape == (*shape, width, width)
    assert np.array_equal(np.triu(r), r)
    close(q @ r / dtype(size), a / dtype(size), dtype)
    close(q.swapaxes(-1, -2) @ q, np.broadcast_to(np.eye(width, dtype=dtype), r.shape), dtype)
    expected = np.linalg.qr(a.astype(np.float64))[1] if a.size else r
    close(np.abs(r) / dtype(size), np.abs(expected) / size, dtype, 3e4)


@given(seeds, dtypes, leading, orders, st.integers(0, 4), ways, ways, st.booleans())
def test_lstsq(seed, dtype, shape, width, more, how, how_b, vectors):
    a = normal(seed, (*shape, width + more, width), dtype)
    a[..., :width, :] += 4 * np.eye(width, dtype=dtype)
    b = normal(seed + 1, (*shape, width + more) if vectors else (*shape, width + more, 3), dtype)
    da, db = double(a, b)
    expected = np.linalg.pinv(da) @ (db[..., None] if vectors else db) if a.size else np.zeros((*shape, width, 1 if vectors else 3))
    condition = np.linalg.cond(da).max() if a.size else 1  # of so many random matrices one may be close to singular
    close(korm.lstsq(laid(how, a), laid(how_b, b)), expected[..., 0] if vectors else expected, dtype, 1000 + condition)


@given(seeds, dtypes, leading, orders, ways, st.sampled_from(["L", "U"]), st.sampled_from([1e-15, 1.0, 1e15]))
def test_eigh(seed, dtype, shape, order, how, uplo, size):
    a = normal(seed, (*shape, order, order), dtype) * dtype(size)
    w, v = korm.eigh(laid(how, a), UPLO=uplo)
    triangle = np.tril(a) if uplo == "L" else np.triu(a).swapaxes(-1, -2)
    whole = (triangle + np.tril(triangle, -1).swapaxes(-1, -2)).astype(np.float64)
    expected = np.linalg.eigvalsh(whole)
    assert w.dtype == v.dtype == dtype
    for values in (w, korm.eigvalsh(laid(how, a), UPLO=uplo)):
        close(values / dtype(size), expected / size, dtype, 200)
    close(v.swapaxes(-1, -2) @ v, np.broadcast_to(np.eye(order, dtype=dtype), v.shape), dtype, 200)
    assert np.abs(whole @ v - w[..., None, :] * v.astype(np.float64)).max(initial=0) <= 2000 * order * np.finfo(dtype).eps * size


@given(seeds, dtypes, leading, orders, ways, st.sampled_from([1e-15, 1.0, 1e15]))
def test_eig(seed, dtype, shape, order, how, size):
    a = normal(seed, (*shape, order, order), dtype) * dtype(size)
    w, v = korm.eig(laid(how, a))
    wide = a.astype(np.float64)
    assert np.abs(wide @ v - w[..., None, :] * v).max(initial=0) <= 2000 * order * np.finfo(dtype).eps * size
    assert np.abs(np.linalg.norm(v.astype(complex), axis=-2) - 1).max(initial=0) <= 1e-5
    assert np.iscomplexobj(w) == np.iscomplexobj(v) == bool(a.size and (np.abs(w.imag) > 0).any())
    # Values without vectors are the same ones, in some order.
    values = korm.eigvals(laid(how, a))
    for own, others in zip(values.reshape(-1, order)[:20], np.linalg.eigvals(wide).reshape(-1, order)):
        for value in others:
            nearest = np.abs(own - value).min()
            assert nearest <= 1e-2 * size if dtype == np.float32 else nearest <= 1e-5 * size


@given(seeds, dtypes, leading, leading, st.tuples(orders, orders, orders), ways, ways, writable_ways)
@example(0, np.float32, (), (2,), (1, 1, 2), "backwards", "backwards", "backwards")
@example(0, np.float64, (2,), (), (3, 2, 1), "backwards", "contiguous", "backwards")
def test_matmul(seed, dtype, shape, other, sizes, how, how_b, how_out):
    m, k, n = sizes
    try:
        np.broadcast_shapes(shape, other)
    except ValueError:
        other = shape
    a, b = normal(seed, (*shape, m, k), dtype), normal(seed + 1, (*other, k, n), dtype)
    results_with_out(korm.matmul, [laid(how, a), laid(how_b, b)], how_out, np.matmul(*double(a, b)), dtype)
    x, y = normal(seed, (k,), dtype), normal(seed, (m,), dtype)
    results_with_out(korm.matmul, [laid(how, a), laid(how_b, x)], how_out, np.matmul(*double(a, x)), dtype)
    results_with_out(korm.matmul, [laid(how_b, y), laid(how, a)], how_out, np.matmul(*double(y, a)), dtype)


@given(seeds, dtypes, leading, leading, st.integers(1, 20), ways, ways, writable_ways)
def test_vectors(seed, dtype, shape, other, length, how, how_b, how_out):
    try:
        np.broadcast_shapes(shape, other)
    except ValueError:
        other = ()
    a, b = normal(seed, (*shape, length), dtype), normal(seed + 1, (*other, length), dtype)
    la, lb = laid(how, a), laid(how_b, b)
    da, db = double(a, b)
    results_with_out(korm.dot, [la, lb], how_out, (da * db).sum(-1), dtype)
    results_with_out(korm.norm, [la], how_out, np.linalg.norm(da, axis=-1), dtype)
    results_with_out(lambda x, y, out=None: korm.axpy(1.5, x, y, out), [la, lb], how_out, 1.5 * da + db, dtype)
    results_with_out(lambda x, y, out=None: korm.lcomb(1.5, x, -2, y, out), [la, lb], how_out, 1.5 * da - 2 * db, dtype)
    x3, y3 = normal(seed, (*shape, 3), dtype), normal(seed + 1, (*other, 3), dtype)
    results_with_out(korm.cross, [laid(how, x3), laid(how_b, y3)], how_out, np.cross(*double(x3, y3)), dtype)
    matrix = normal(seed, (5, length), dtype)
    y = normal(seed + 1, (*other, 5), dtype)
    expected = (matrix.astype(float) @ da[..., None])[..., 0] + y.astype(float)
    results_with_out(korm.gaxpy, [laid(how_b, matrix), la, laid(how_b, y)], how_out, expected, dtype)


@given(seeds, dtypes, leading, st.tuples(orders, orders), ways, writable_ways)
def test_matrices(seed, dtype, shape, sizes, how, how_out):
    a = normal(seed, (*shape, *sizes), dtype)
    la, da = laid(how, a), a.astype(np.float64)
    results_with_out(korm.trace, [la], how_out, np.trace(da, axis1=-2, axis2=-1), dtype)
    results_with_out(lambda x, out=None: korm.norm(x, (-2, -1), out), [la], how_out, np.sqrt((da * da).sum((-2, -1))), dtype)
    results_with_out(korm.transpose, [la], how_out, da.swapaxes(-1, -2), dtype)
    results_with_out(lambda x, out=None: korm.norm(x, -2, out), [la], how_out, np.sqrt((da * da).sum(-2)), dtype)


SHAPES = [((3,), (3,)), ((4, 3), (3,)), ((3,), (4, 3)), ((4, 1), (4, 3)), ((4, 3), (1,)), ((5, 4, 3), (5, 4, 3)), ((5, 4, 3), (4, 3)),
          ((4, 3), (5, 4, 3)), ((5, 4, 3), (1, 1, 1)), ((5, 4, 3), (4, 1)), ((6, 1, 4, 3), (5, 4, 3)), ((), (4, 3)), ((5, 1), (1, 4)),
          ((), ()), ((0, 3), (3,)), ((2, 5, 1, 3), (4, 1)), ((1,), (1,)), ((800, 3, 3), (800, 3, 3)), ((800, 3, 3), (3, 3))]


@given(seeds, dtypes, st.sampled_from(SHAPES), ways, ways, writable_ways)
def test_sums(seed, dtype, shapes, how, how_b, how_out):
    a, b = (normal(seed + i, shape, dtype) for i, shape in enumerate(shapes))
    la, lb = laid(how, a), laid(how_b, b)
    results_with_out(korm.add, [la, lb], how_out, a + b, dtype, 0)
    results_with_out(korm.subtract, [la, lb], how_out, a - b, dtype, 0)
    if a.ndim:
        results_with_out(lambda x, out=None: korm.add(x, 0.5, out), [la], how_out, a + dtype(0.5), dtype, 0)
        results_with_out(lambda x, out=None: korm.subtract(0.5, x, out), [la], how_out, dtype(0.5) - a, dtype, 0)
        results_with_out(lambda x, out=None: korm.scale(x, 0.5, out), [la], how_out, a * dtype(0.5), dtype, 0)
        factors = normal(seed, a.shape[:-1], dtype)
        results_with_out(korm.scale, [la, laid(how_b, factors)], how_out, a * factors[..., None], dtype, 0)


@given(seeds, leading, st.integers(2, 4), ways, ways, writable_ways)
def test_transforms(seed, shape, length, how, how_m, how_out):
    m = normal(seed, (4, 4), np.float32)
    m[3, 3] = 9
    vectors = normal(seed + 1, (*shape, length), np.float32)
    lm, lv = laid(how_m, m), laid(how, vectors)
    whole = np.zeros((*shape, 4))
    whole[..., :length] = vectors
    if length < 4:
        whole[..., 3] = 1
    product = whole @ m.astype(float)
    results_with_out(korm.transform, [lm, lv], how_out, product, np.float32)
    if length < 4:
        results_with_out(korm.transform_points, [lm, lv], how_out, product[..., :length] / product[..., 3:], np.float32, 1e5)
        results_with_out(korm.transform_directions, [lm, lv], how_out, vectors.astype(float) @ m[:length, :length], np.float32)
    if length == 3:
        camera = [laid(how_m, np.eye(4, dtype=np.float32) * np.float32(s)) for s in (1, 2, 1)]
        viewport = (640, 480, 0.25, 0.75)
        expected = vectors * [320, -240, 0.5] + [320, 240, 0.25]
        project = lambda p, out=None: korm.project(*camera, p, viewport, out)  # noqa: E731
        results_with_out(project, [lv], how_out, expected, np.float32, 1000)
        unproject = lambda p, out=None: korm.unproject(*camera, p, viewport, out)  # noqa: E731
        results_with_out(unproject, [project(lv)], how_out, vectors, np.float32, 1e4)


@given(seeds, dtypes, orders, st.sampled_from(["contiguous", "fortran", "every_other", "rows_backwards"]))
def test_lists_of_arrays(seed, dtype, order, how):
    matrices = [laid(how, m) for m in well_conditioned(seed, (6, order, order), dtype)]
    vectors = [laid(how, v) for v in normal(seed, (6, order), dtype)]
    da, dv = double(np.stack(matrices), np.stack(vectors))
    close(korm.inv(matrices), np.linalg.inv(da), dtype, 300)
    close(korm.solve(matrices, vectors), np.linalg.solve(da, dv[..., None])[..., 0], dtype, 300)
    close(korm.matmul(matrices, matrices[0]), da @ da[0], dtype)
    close(korm.dot(vectors, vectors), (dv * dv).sum(-1), dtype)
    close(korm.add(matrices, matrices), da + da, dtype)
    close(korm.transpose(tuple(matrices)), da.swapaxes(-1, -2), dtype)
    out = [laid(how, np.zeros((order, order), dtype)) for _ in range(6)]
    for function in (korm.inv, korm.transpose):
        assert function(matrices, out=out) is out
        assert np.array_equal(np.stack(out), function(np.stack(matrices))) or how == "rows_backwards" or order > 2
    with pytest.raises(ValueError):
        korm.inv(matrices, out=out[:5])
    ragged = [np.zeros((2, 2)), np.zeros((3, 3))]
    with pytest.raises((ValueError, TypeError)):
        korm.det(ragged)
