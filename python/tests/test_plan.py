"""What plan tells is what happens: the functions by the dynamic linker's own account, the copies by the memory that is taken."""

import os
import subprocess
import sys
import tracemalloc

import korm
import numpy as np
import pytest

from conftest import WAYS

N = 5000


def arrays(how, dtype=np.float64, order=3):
    a = np.tile(np.eye(order, dtype=dtype) * 2, (N, 1, 1))
    return WAYS[how](a)


# Function, how the array lies, and what is expected: form, copied?
CASES = [
    (korm.inv, "contiguous", "kormInvert_ma_64f", False),
    (korm.inv, "every_other", "kormInvert_ma_64f", False),
    (korm.inv, "padded", "kormInvert_ma_64f", False),
    (korm.inv, "fortran", "kormInvert_ma_64f_P", False),  # the first index runs fastest: a structure of arrays
    (korm.inv, "columns_first", "kormInvert_ma_64f", False),
    (korm.inv, "streams", "kormInvert_ma_64f_P", False),
    (korm.inv, "objects_backwards", "kormInvert_ma_64f_L", False),
    (korm.inv, "rows_backwards", "kormInvert_ma_64f_P", False),
    (korm.inv, "records", "kormInvert_ma_64f_L", False),
    (korm.inv, "backwards", "kormInvert_ma_64f", True),
    (korm.inv, "swapped", "kormInvert_ma_64f", True),
    (korm.inv, "read_only", "kormInvert_ma_64f", False),
    (korm.det, "streams", "kormDet_ma_64f_P", False),
    (korm.trace, "records", "kormTrace_ma_64f_L", False),
    (korm.transpose, "columns_first", "kormTranspose_ma_64f", False),
    (korm.cholesky, "rows_backwards", "kormCholeskyDecomp_ma_64f_P", False),
    (lambda a: korm.matmul(a, a), "columns_first", "kormMul_tata_64f", False),
    (lambda a: korm.matmul(a, a.swapaxes(-1, -2)), "contiguous", "kormMul_mata_64f", False),
    (lambda a: korm.matmul(a[0], a), "padded", "kormMul_mma_64f", False),
    (lambda a: korm.matmul(a, a[0].T), "contiguous", "kormMul_mat_64f", False),
    (lambda a: korm.matmul(a, a[0, 0]), "columns_first", "kormMul_tav_64f", False),
    (lambda a: korm.matmul(a, a[..., :1]), "contiguous", "kormMul_mava_64f", False),
    (lambda a: korm.add(a, a[0]), "columns_first", "kormAdd_tat_64f", False),
    (lambda a: korm.subtract(a[0], a), "contiguous", "kormSub_mma_64f", False),
    (lambda a: korm.add(a, a), "streams", "kormAdd_mama_64f_P", False),
    (lambda a: korm.scale(a, 2), "columns_first", "kormMul_tac_64f", False),
    (lambda a: korm.add(a[:, 0], a[:, 0, :1]), "contiguous", "kormAdd_vaca_64f", False),
    (lambda a: korm.subtract(2.0, a[:, 0]), "contiguous", "kormSub_cva_64f", False),
    (lambda a: korm.dot(a[:, 0], a[:, 1]), "streams", "kormDotProduct_vava_64f_P", False),
    (lambda a: korm.cross(a[0, 0], a[:, 1]), "padded", "kormCrossProduct_vva_64f", False),
    (lambda a: korm.axpy(2, a[:, 0], a[0, 0]), "contiguous", "kormSaxpy_vav_64f", False),
    (lambda a: korm.inv(list(a[:500])), "contiguous", "kormInvert_ma_64f_L", False),
    (lambda a: korm.inv(a[0]), "contiguous", "kormInvert_m_64f", False),
    (lambda a: korm.inv(np.broadcast_to(a[0], (N, 3, 3))), "contiguous", "kormInvert_ma_64f_L", False),
    (lambda a: korm.transform_points(np.eye(4, dtype="f4"), a[:, 0].astype("f4")[::-1]), "contiguous",
     "kormAffineTransformCoord_m4v3a_32f", False),
]


def names(case):
    return f"{case[2]}-{case[1]}"


@pytest.mark.parametrize("case", CASES, ids=map(names, CASES))
def test_forms_and_copies(case):
    function, how, form, copied = case
    a = arrays(how)
    plan = korm.plan(function, a)
    assert plan.functions == (form,) and bool(plan.copied) == copied and plan.blocks == ()
    function(a)
    tracemalloc.start()
    before = tracemalloc.get_traced_memory()[0]
    tracemalloc.reset_peak()
    result = function(a)
    peak = tracemalloc.get_traced_memory()[1] - before
    tracemalloc.stop()
    own = result.nbytes if isinstance(result, np.ndarray) and result.base is None else 0
    extra = peak - own
    if copied:
        assert extra >= a.nbytes, "a copy was told, and none was made"
    elif form not in ("kormAffineTransformCoord_m4v3a_32f",):
        assert extra < a.nbytes / 4 + 20000, f"no copy was told, and {extra} bytes were taken for {a.nbytes}"


def test_blocks_take_little_memory():
    a = np.tile(np.eye(4), (200000, 1, 1))
    large = np.tile(np.eye(7), (1000, 1, 1))
    for function, wanted in [(lambda: korm.solve(large, large[:, 0]), ("kormLUDecomp_ma_64f", "kormLUBackSubst_mava_64f")),
                             (lambda: korm.eigvals(a), ("kormEigenValues_ma_64f_P",)),
                             (lambda: korm.lstsq(a, a[:, 0]), ("kormQRDecomp_ma_64f_P", "kormQRBackSubst_mava_64f_P"))]:
        plan = korm.plan(function)
        assert plan.functions == wanted and plan.copied == () and plan.blocks[0] == "a"
    assert korm.plan(korm.eigh, a).functions == ("kormEigenValuesVectorsSym_ma_64f_P",)
    assert korm.plan(korm.eig, a.astype("f4")).functions == ("kormEigenValuesVectorsLeft_ma_32f_P",)
    assert korm.plan(korm.qr, a).functions == ("kormQRDecomp_ma_64f_P",)
    assert korm.plan(korm.inv, np.eye(8)).functions == ("kormLUDecomp_ma_64f", "kormLUBackSubst_mva_64f")
    assert korm.plan(korm.inv, np.eye(2)).functions == ("kormLUDecomp_ma_64f", "kormLUBackSubst_mava_64f")


SYSTEMS = [  # how matrices and vectors lie, the layout of the functions, and what is copied
    ("contiguous", "contiguous", "", ()), ("every_other", "padded", "", ()), ("records", "contiguous", "_L", ()),
    ("streams", "streams", "_P", ()), ("streams", "contiguous", "_P", ()), ("contiguous", "streams", "_P", ()),
    ("rows_backwards", "contiguous", "_P", ()), ("rows_backwards", "objects_backwards", "_P", ("b",)),
    ("contiguous", "objects_backwards", "_L", ()), ("backwards", "contiguous", "", ("a",)),
]


@pytest.mark.parametrize("matrices, vectors, layout, copied", SYSTEMS)
def test_systems_are_read_where_they_lie(matrices, vectors, layout, copied):
    a, b = arrays(matrices, order=5), WAYS[vectors](np.arange(N * 5.0).reshape(N, 5))
    plan = korm.plan(korm.solve, a, b)
    assert plan == ((f"kormLUDecomp_ma_64f{layout}", f"kormLUBackSubst_mava_64f{layout}"), copied, ())
    assert (korm.solve(a, b) == np.arange(N * 5.0).reshape(N, 5) / 2).all()


def test_one_matrix_is_decomposed_once():
    a = np.eye(4) * 2
    for matrix, b in ((a, a), (a, np.tile(a, (10, 1, 1))), (a[None], np.ones((10, 4)))):
        assert korm.plan(korm.solve, matrix, b).functions[1].startswith("kormLUBackSubst_mva_64f")


def test_nothing_is_computed():
    a, out = np.zeros((4, 3, 3)), np.full((4, 3, 3), 7.0)
    assert korm.plan(korm.inv, a, out=out).functions == ("kormInvert_ma_64f",)  # it would fail
    assert (out == 7).all()
    assert korm.plan(korm.inv, a, out=np.zeros((4, 3, 3), "f4")[::-1]).copied == ("out",)


def test_overlap_is_told():
    a = np.tile(np.eye(3) * 2, (10, 1, 1))
    assert korm.plan(korm.inv, a, out=a).copied == ()
    assert korm.plan(korm.inv, a[1:], out=a[:-1]).copied == ("a",)
    assert korm.plan(korm.transpose, a, out=a).copied == ("a",)
    assert korm.plan(korm.matmul, a, a[0], out=a).copied == ("a", "b")


PROGRAM = """
import sys
sys.setdlopenflags(1)  # bind functions when they are called
import numpy as np, korm, test_plan
for number in map(int, sys.argv[1:]):
    function, how, form, _ = test_plan.CASES[number]
    a = test_plan.arrays(how)
    print("case", number, file=sys.stderr, flush=True)
    function(a)
"""


def test_functions_are_those_that_the_linker_binds():
    first = {}
    for number, case in enumerate(CASES):  # a function is bound when it is called first
        first.setdefault(case[2], number)
    run = subprocess.run([sys.executable, "-B", "-c", PROGRAM, *map(str, first.values())], capture_output=True, text=True, check=True,
                         env={**os.environ, "LD_DEBUG": "bindings", "PYTHONPATH": os.pathsep.join(sys.path)},
                         cwd=os.path.dirname(__file__))
    current, bound = None, {}
    for line in run.stderr.splitlines():
        if line.startswith("case "):
            current = int(line.split()[1])
        elif "normal symbol `korm" in line and "_korm" in line:
            bound.setdefault(current, []).append(line.split("`")[1].split("'")[0])
    if not set(bound) - {None}:
        pytest.skip("the module is linked so that all its functions are bound at once")
    for form, number in first.items():
        if form == "kormAffineTransformCoord_m4v3a_32f":  # its address is taken when the module is loaded
            continue
        assert set(bound.get(number, ())) == {form}, (form, bound.get(number))  # two threads may bind it at once
