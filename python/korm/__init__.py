"""Small matrices and vectors by the thousand: NumPy arrays in, NumPy arrays out, computed by korm.

Matrices are the last two axes of an array, vectors the last one; all axes before them are leading axes, along which arrays
broadcast as NumPy's do. An array of shape (100000, 4, 4) is a hundred thousand matrices of 4 by 4:

    >>> import numpy as np, korm
    >>> a = np.array([[[2.0, 0], [0, 4]], [[1, 1], [0, 1]]])
    >>> korm.inv(a)
    array([[[ 0.5 ,  0.  ],
            [ 0.  ,  0.25]],
    <BLANKLINE>
           [[ 1.  , -1.  ],
            [ 0.  ,  1.  ]]])

Arrays of float32 are computed in float32, all others in float64; complex arrays are refused. A list of arrays of one shape is
taken for one array of all of them. `plan` tells which of korm's functions a call makes, and what it copies.

Calls on large arrays are spread over threads (OMP_NUM_THREADS), and let other threads of Python run meanwhile.
"""

from __future__ import annotations

from collections.abc import Callable, Sequence
from typing import Any, Literal, NamedTuple, Union

import numpy as np
import numpy.typing as npt
from numpy.linalg import LinAlgError

from korm import _korm

__all__ = [
    "LinAlgError", "Plan", "add", "axpy", "cholesky", "cross", "det", "dot", "eig", "eigh", "eigvals", "eigvalsh", "gaxpy", "inv",
    "lcomb", "lstsq", "lu", "matmul", "norm", "plan", "project", "qr", "scale", "solve", "subtract", "trace", "transform",
    "transform_directions", "transform_points", "transpose", "unproject",
]
__version__: str = _korm.version().partition(" ")[0]

Array = npt.NDArray[Any]
Arrays = Union[npt.ArrayLike, Sequence[Array]]
Out = Union[Array, Sequence[Array], None]


class Plan(NamedTuple):
    """What a call does, as `plan` tells it."""

    functions: tuple[str, ...]
    """korm's functions, in the order of their first call."""
    copied: tuple[str, ...]
    """The arguments that are copied as a whole: their type or strides are nothing korm takes, or they overlap the result."""
    blocks: tuple[str, ...]
    """The arguments that are copied a block at a time into scratch, which is where korm works on them."""


def plan(function: Callable[..., Any], *args: Any, **keywords: Any) -> Plan:
    """Tell which of korm's functions a call would make, and which arguments it would copy, without computing anything.

    Every other matrix of an array, as it lies; what is stored by columns goes to a form that reads transposes:

    >>> a = np.zeros((1000, 3, 3), dtype=np.float32)
    >>> korm.plan(korm.inv, a[::2])
    Plan(functions=('kormInvert_ma_32f',), copied=(), blocks=())
    >>> korm.plan(korm.matmul, a, a.transpose(0, 2, 1)).functions
    ('kormMul_mata_32f',)

    A structure of arrays is taken by the pointer layout, a list of arrays by the list layout:

    >>> streams = np.zeros((3, 3, 1000)).transpose(2, 0, 1)
    >>> korm.plan(korm.det, streams).functions
    ('kormDet_ma_64f_P',)
    >>> korm.plan(korm.det, [np.zeros((3, 3)), np.zeros((3, 3))]).functions
    ('kormDet_ma_64f_L',)

    Integers have to be converted, and eigenproblems are scaled a block at a time:

    >>> korm.plan(korm.trace, np.eye(3, dtype=int))
    Plan(functions=('kormTrace_m_64f',), copied=('a',), blocks=())
    >>> korm.plan(korm.eigh, a).blocks
    ('a',)

    Objects that `eigh`, `eig`, `qr` and their siblings give to NumPy aren't known before and aren't told.
    """
    return Plan(*_korm.planned(function, args, keywords))


def _again(refused: list[int], one: Callable[..., Any], results: tuple[Array, ...], leading: tuple[int, ...], *arrays: Any) -> None:
    """Fill in the results of refused objects, which NumPy computes one by one."""
    if not refused:
        return
    whole = [np.broadcast_to(array, leading + array.shape[array.ndim - axes:]) for array, axes in arrays]
    for number in refused:
        index = np.unravel_index(number, leading) if leading else ()
        try:
            found = one(*(array[index] for array in whole))
        except LinAlgError as error:
            raise _located(error, index) from None
        for result, value in zip(results, found):
            result[index] = value


def _located(error: LinAlgError, index: Any) -> LinAlgError:
    where = tuple(int(i) for i in index)
    located = LinAlgError(f"{error} (index {where})" if where else str(error))
    located.index = where  # type: ignore[attr-defined]
    return located


def inv(a: Arrays, out: Out = None) -> Array:
    """Inverses of square matrices.

    By korm's inverses at orders 1 and 3 to 6, by its LU decomposition at all others. `out` may be `a` itself.

    >>> korm.inv([[4.0, 0], [0, 2]])
    array([[0.25, 0.  ],
           [0.  , 0.5 ]])

    A singular matrix raises LinAlgError, whose attribute `index` tells which one; it is None where `out` is `a`, which then is
    partly overwritten:

    >>> a = np.stack([np.eye(3), np.zeros((3, 3))])
    >>> korm.inv(a)
    Traceback (most recent call last):
    numpy.linalg.LinAlgError: Singular matrix (index (1,))
    """
    return _korm.inv(a, out)


def det(a: Arrays, out: Out = None) -> Any:
    """Determinants of square matrices.

    >>> korm.det([[1.0, 2], [3, 4]])
    -2.0

    Neither overflow nor underflow is told: the determinant of a matrix of order 6 with elements around 1e-7 is 0 in float32. Orders
    other than 3 to 6 are exactly 0 where a pivot is next to nothing.
    """
    return _korm.det(a, out)


def solve(a: Arrays, b: Arrays, out: Out = None) -> Array:
    """Solutions x of a x = b for square matrices, by LU decomposition with row pivoting.

    As in NumPy 1, `b` is vectors if it has one axis less than `a` (or one axis), else matrices whose columns are right-hand sides.

    >>> a = np.array([[[2.0, 1], [1, 3]], [[1, 0], [0, 2]]])
    >>> korm.solve(a, np.array([[3.0, 4], [1, 1]]))
    array([[1. , 1. ],
           [1. , 0.5]])

    One matrix serves many right-hand sides: it is decomposed once. A singular matrix raises LinAlgError with its `index`, unless
    there is only one.
    """
    return _korm.solve(a, b, out)


def lu(a: Arrays) -> tuple[Array, Array, Array]:
    """Permutation p, lower triangle l with ones on its diagonal and upper triangle u, so that a = p l u, as in scipy.linalg.lu.

    >>> p, l, u = korm.lu([[1.0, 2], [4, 2]])
    >>> u
    array([[4. , 2. ],
           [0. , 1.5]])
    >>> p @ l @ u
    array([[1., 2.],
           [4., 2.]])

    Square matrices only, and a singular one raises LinAlgError with its `index`.
    """
    lower, upper, rows = _korm.lu(a)
    p = np.zeros_like(lower)
    np.put_along_axis(p, rows[..., None, :].astype(np.intp), 1, axis=-2)
    return p, lower, upper


def cholesky(a: Arrays, out: Out = None) -> Array:
    """Lower triangles l with l l^T = a, of symmetric positive definite matrices. Only the lower triangle of `a` is read.

    >>> korm.cholesky([[4.0, 0], [2, 2]])
    array([[2., 0.],
           [1., 1.]])

    A matrix that isn't positive definite raises LinAlgError with its `index` (None where `out` is `a`). NaN isn't told from a
    number. In float32 the diagonal has about 22 bits, and its last ones depend on the processor.
    """
    return _korm.cholesky(a, out)


def qr(a: Arrays) -> tuple[Array, Array]:
    """Q with orthonormal columns and upper triangular R, a = q r, of matrices with at least as many rows as columns.

    The reduced form of numpy.linalg.qr; signs of the rows of R may be others.

    >>> q, r = korm.qr([[3.0, 1], [4, 2]])
    >>> np.allclose(q @ r, [[3, 1], [4, 2]]), np.allclose(q.T @ q, np.eye(2))
    (True, True)

    Matrices are scaled before, so that their size doesn't matter. Those that korm refuses for a column without length go to NumPy.
    """
    q, r, refused = _korm.qr(a)
    if refused:
        given = _floats(a)
        _again(refused, np.linalg.qr, (q, r), q.shape[:-2], (given, 2))
    return q, r


def lstsq(a: Arrays, b: Arrays) -> Array:
    """Least-squares solutions of a x = b, for matrices with at least as many rows as columns.

    By QR decomposition without pivoting: for matrices of full rank. Unlike numpy.linalg.lstsq it takes leading axes and returns the
    solutions alone. `b` is vectors or matrices as in `solve`.

    >>> korm.lstsq([[1.0, 0], [1, 1], [1, 2]], [1.0, 2, 3])
    array([1., 1.])

    Matrices that korm refuses go to NumPy, which gives the shortest solution; of those that are singular to rounding alone the
    solution may be long.
    """
    x, refused = _korm.lstsq(a, b)
    if refused:
        matrices, right = _floats(a), _floats(b)
        axes = 1 if right.ndim == max(matrices.ndim - 1, 1) else 2
        leading = x.shape[:x.ndim - axes]
        _again(refused, lambda m, v: (np.linalg.lstsq(m, v, rcond=None)[0],), (x,), leading, (matrices, 2), (right, axes))
    return x


def eigh(a: Arrays, UPLO: Literal["L", "U", "l", "u"] = "L") -> tuple[Array, Array]:
    """Eigenvalues, in ascending order, and eigenvectors of symmetric matrices: column j of v belongs to w[..., j].

    One triangle of `a` is read: the lower one, or the upper with UPLO="U". Signs of the vectors are as they come.

    >>> w, v = korm.eigh([[2.0, 0], [1, 2]])
    >>> w
    array([1., 3.])

    korm's own functions refuse singular matrices, and their tests are absolute, so that they may end with a value that is
    inexact. Here matrices are scaled, refused ones are shifted, and every vector is held against a v = w v; what still fails goes
    to numpy.linalg.eigh. So results can be relied on as NumPy's can.
    """
    w, v, refused = _korm.symmetric_eigen(a, _is_upper(UPLO), True)
    if refused:
        _again(refused, lambda m: np.linalg.eigh(m, UPLO=UPLO), (w, v), w.shape[:-1], (_floats(a), 2))
    return w, v


def eigvalsh(a: Arrays, UPLO: Literal["L", "U", "l", "u"] = "L") -> Array:
    """Eigenvalues of symmetric matrices, in ascending order.

    >>> korm.eigvalsh([[2.0, 0], [1, 2]])
    array([1., 3.])

    From order 4 on vectors are computed as well, since values alone couldn't be held against anything: see `eigh`.
    """
    w, _, refused = _korm.symmetric_eigen(a, _is_upper(UPLO), False)
    if refused:
        _again(refused, lambda m: (np.linalg.eigvalsh(m, UPLO=UPLO),), (w,), w.shape[:-1], (_floats(a), 2))
    return w


def _is_upper(uplo: str) -> bool:
    if uplo.upper() not in ("L", "U"):
        raise ValueError("UPLO argument must be 'L' or 'U'")
    return uplo.upper() == "U"


def eig(a: Arrays) -> tuple[Array, Array]:
    """Eigenvalues, in no order, and right eigenvectors of square matrices: column j of v belongs to w[..., j].

    As in NumPy, results are complex if any value of the whole array isn't real. These are what most call the eigenvectors, and what
    `kormEigenValuesVectorsLeft` computes.

    >>> w, v = korm.eig([[0.0, -1], [1, 0]])
    >>> w
    array([0.+1.j, 0.-1.j])

    korm's own functions may end with inexact or wrong values, as for matrices with equal elements on the diagonal. Here matrices
    are scaled, every vector is held against a v = w v, and what fails goes to numpy.linalg.eig.
    """
    w, v, is_complex, refused = _korm.general_eigen(a, True)
    _again(refused, np.linalg.eig, (w, v), w.shape[:-1], (_floats(a) if refused else None, 2))
    is_complex = is_complex or any(w[np.unravel_index(k, w.shape[:-1])].imag.any() for k in refused)
    return (w, v) if is_complex else (w.real.copy(), v.real.copy())


def eigvals(a: Arrays) -> Array:
    """Eigenvalues of square matrices, in no order, complex if any of the whole array isn't real.

    >>> korm.eigvals([[1.0, 2], [2, 1]])
    array([ 3., -1.])

    Values are held against the traces of the matrix and of its square, see `eig`; what fails goes to numpy.linalg.eigvals, as it is
    the case in the example. Errors that leave both traces as they are aren't noticed: `eig` looks closer.
    """
    w, _, is_complex, refused = _korm.general_eigen(a, False)
    _again(refused, lambda m: (np.linalg.eigvals(m),), (w,), w.shape[:-1], (_floats(a) if refused else None, 2))
    is_complex = is_complex or any(w[np.unravel_index(k, w.shape[:-1])].imag.any() for k in refused)
    return w if is_complex else w.real.copy()


def _floats(a: Any) -> Array:
    array = np.asarray(a)
    return array if array.dtype in (np.float32, np.float64) else array.astype(np.float64)


def matmul(a: Arrays, b: Arrays, out: Out = None) -> Any:
    """Products of matrices, with the shapes of numpy.matmul: arrays of one axis are vectors.

    >>> korm.matmul([[1.0, 2], [3, 4]], [[0.0, 1], [1, 0]])
    array([[2., 1.],
           [4., 3.]])

    Products with a single column or row are made by korm's products of matrices and vectors. The order of additions is fixed for a
    function, shape and kind of strides.
    """
    return _korm.matmul(a, b, out)


def dot(a: Arrays, b: Arrays, out: Out = None) -> Any:
    """Dot products of vectors, which are the last axis; the others broadcast.

    >>> korm.dot([[1.0, 2], [3, 4]], [1.0, 1])
    array([3., 7.])
    """
    return _korm.dot(a, b, out)


def cross(a: Arrays, b: Arrays, out: Out = None) -> Array:
    """Cross products of vectors of 3 elements. `out` may be `a` or `b`.

    >>> korm.cross([1.0, 0, 0], [0.0, 1, 0])
    array([0., 0., 1.])
    """
    return _korm.cross(a, b, out)


def norm(x: Arrays, axis: int | tuple[int, int] = -1, out: Out = None) -> Any:
    """Lengths of vectors (one axis), or Frobenius norms of matrices (two axes).

    >>> korm.norm([[3.0, 4], [0, 2]])
    array([5., 2.])
    >>> korm.norm([[3.0, 4], [0, 12]], axis=(-2, -1))
    13.0

    Squares are not scaled: a norm overflows where they do.
    """
    if axis == -1:
        return _korm.vector_norm(x, out)
    if axis == (-2, -1):
        return _korm.frobenius_norm(x, out)
    x = np.asarray(x)
    if isinstance(axis, tuple):
        return _korm.frobenius_norm(np.moveaxis(x, axis, (-2, -1)), out)
    return _korm.vector_norm(np.moveaxis(x, axis, -1), out)


def trace(a: Arrays, out: Out = None) -> Any:
    """Sums of the diagonals of matrices, which are the last two axes (numpy.trace takes the first two).

    >>> korm.trace([[1.0, 2], [3, 4]])
    5.0
    """
    return _korm.trace(a, out)


def transpose(a: Arrays, out: Out = None) -> Array:
    """Transposes of matrices, in memory of their own and in C order.

    >>> korm.transpose([[1.0, 2, 3]])
    array([[1.],
           [2.],
           [3.]])

    Nothing needs this to be multiplied: `matmul` reads transposes as they lie.
    """
    return _korm.transpose(a, out)


def add(a: Any, b: Any, out: Out = None) -> Any:
    """Sums, with NumPy's broadcasting. `out` may be `a` or `b`.

    >>> korm.add([[1.0, 2], [3, 4]], [10.0, 20])
    array([[11., 22.],
           [13., 24.]])
    """
    return _korm.add(a, b, out)


def subtract(a: Any, b: Any, out: Out = None) -> Any:
    """Differences, with NumPy's broadcasting. `out` may be `a` or `b`.

    >>> korm.subtract(1.0, np.array([0.25, 0.5]))
    array([0.75, 0.5 ])
    """
    return _korm.subtract(a, b, out)


def scale(a: Arrays, factor: Any, out: Out = None) -> Array:
    """Products with numbers: one for all, or one for each vector, which is the last axis. `out` may be `a`.

    >>> korm.scale(np.array([[1.0, 2], [3, 4]]), 10)
    array([[10., 20.],
           [30., 40.]])
    >>> korm.scale(np.array([[1.0, 2], [3, 4]]), np.array([1.0, 10]))
    array([[ 1.,  2.],
           [30., 40.]])
    """
    return _korm.scale(a, factor, out)


def axpy(alpha: float, x: Arrays, y: Arrays, out: Out = None) -> Array:
    """alpha * x + y of vectors, the last axis. `out` may be `x` or `y`.

    >>> korm.axpy(2, [1.0, 2], [10.0, 10])
    array([12., 14.])
    """
    return _korm.combine(alpha, x, None, y, out)


def lcomb(alpha: float, x: Arrays, beta: float, y: Arrays, out: Out = None) -> Array:
    """alpha * x + beta * y of vectors, the last axis. `out` may be `x` or `y`.

    >>> korm.lcomb(2, [1.0, 2], 0.5, [10.0, 10])
    array([7., 9.])
    """
    return _korm.combine(alpha, x, beta, y, out)


def gaxpy(a: Arrays, x: Arrays, y: Arrays, out: Out = None) -> Array:
    """a x + y, of one matrix a and vectors.

    >>> korm.gaxpy([[0.0, -1], [1, 0]], [[1.0, 0], [0, 1]], [5.0, 5])
    array([[5., 6.],
           [4., 5.]])
    """
    return _korm.gaxpy(a, x, y, out)


def transform(matrix: Arrays, vectors: Arrays, out: Out = None) -> Array:
    """Vectors of 2, 3 or 4 elements through a matrix of 4 by 4: all four elements of the product, in float32.

    Here and in the other transforms vectors are rows, on the left of the matrix: a translation stands in its last row.

    >>> moves = np.eye(4, dtype=np.float32)
    >>> moves[3] = 10, 20, 30, 1
    >>> korm.transform(moves, np.float32([1, 2, 3]))
    array([11., 22., 33.,  1.], dtype=float32)
    """
    return _korm.transform("all", matrix, vectors, out)


def transform_points(matrix: Arrays, points: Arrays, out: Out = None) -> Array:
    """Points of 2 or 3 elements through a matrix of 4 by 4, divided by the fourth element. `out` may be `points`.

    >>> korm.transform_points(np.diag(np.float32([2, 2, 2, 1])), np.float32([[1, 2, 3]]))
    array([[2., 4., 6.]], dtype=float32)
    """
    return _korm.transform("points", matrix, points, out)


def transform_directions(matrix: Arrays, directions: Arrays, out: Out = None) -> Array:
    """Directions of 2 or 3 elements through a matrix of 4 by 4, without its translation. `out` may be `directions`.

    >>> moves = np.eye(4, dtype=np.float32)
    >>> moves[3] = 10, 20, 30, 1
    >>> korm.transform_directions(moves, np.float32([1, 2, 3]))
    array([1., 2., 3.], dtype=float32)
    """
    return _korm.transform("directions", matrix, directions, out)


Viewport = tuple[float, float, float, float]


def project(projection: Arrays, view: Arrays, world: Arrays, points: Arrays, viewport: Viewport, out: Out = None) -> Array:
    """Points to a viewport of (width, height, lowest depth, highest depth), through world, view and projection.

    >>> unit = np.eye(4, dtype=np.float32)
    >>> korm.project(unit, unit, unit, np.float32([0, 0, 0.5]), (640, 480, 0, 1))
    array([320. , 240. ,   0.5], dtype=float32)
    """
    return _korm.to_viewport(False, projection, view, world, points, viewport, out)


def unproject(projection: Arrays, view: Arrays, world: Arrays, points: Arrays, viewport: Viewport, out: Out = None) -> Array:
    """The way back from `project`. A product of the matrices that is singular raises LinAlgError.

    >>> unit = np.eye(4, dtype=np.float32)
    >>> korm.unproject(unit, unit, unit, np.float32([320, 240, 0.5]), (640, 480, 0, 1))
    array([0. , 0. , 0.5], dtype=float32)
    """
    return _korm.to_viewport(True, projection, view, world, points, viewport, out)
