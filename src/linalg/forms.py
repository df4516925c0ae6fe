"""The forms of linear algebra: determinant, trace, norm, decompositions and their solves, inverse.

A limit tells which estimates stay serial: below(n), or up_to(n) which includes n. A second number is the limit
for calls with an element stride other than the element size.
"""

from grammar import ARRAY, SINGLE, Core, Departure, Family, Shortcut, Variant, below, everywhere, limits, up_to

GROUPS = {
    "determinant": """Determinants
dst(k) = determinant of the square matrix src(k). A single matrix writes one element, an array one element for each
object, in a row: dst has no strides in any layout.

`buffer` is scratch of order*order + order elements of the call's type, whatever its content. It must not be null,
though orders 3 to 6 leave it alone. A call that is spread over threads doesn't touch it.

Orders 3 to 6 are closed forms without any test: a singular matrix gives what rounding leaves. All other orders are
eliminations with row pivoting; a pivot below, or a last one not above, 2*order^3 times the smallest normal number of
the type makes the result exactly zero. A singular matrix is no failure.

Scale: products of `order` elements are formed as they are. Where they leave the range of the type the result is zero,
infinity, NaN or a number with few bits, with ::korStatusOk; docs/ranges.md shows at which scales it is right. Beyond them
scale the matrix by a power of 2 first: s A has s^order times the determinant of A.

Overlap: dst, buffer and src must not overlap.

Status: ::korStatusOk, ::korStatusNullPointer, ::korStatusBadSize, ::korStatusBadStride; array forms
::korStatusBadCount; list and pointer forms ::korStatusBadOffset. Other than with ::korStatusOk nothing is written.
""",
    "norms": """Traces and norms
`kormTrace` adds the elements of the diagonal of a square matrix, `kormFrobNorm` is the square root of the sum of the squares
of all elements of any matrix. A single form writes one element, an array form one for each object, in a row: dst has no
strides in any layout.

Sums: every square and every addition is rounded to the element type. The order of additions is fixed for a form, sizes,
choice of strides and, in `kormFrobNorm`, for rows that touch or don't; docs/numerics.md shows it.

Scale: squares are formed as they are. The norm of a matrix with large elements is infinity, that of one with small elements
zero or a number with few bits, with ::korStatusOk. Beyond the scales of docs/ranges.md scale by a power of 2 first, and the
norm back.

Overlap: dst must not overlap src.

Status: ::korStatusOk, ::korStatusNullPointer, ::korStatusBadSize, ::korStatusBadStride; array forms
::korStatusBadCount; list and pointer forms ::korStatusBadOffset. Other than with ::korStatusOk nothing is written.
""",
    "lu_decomposition": """LU decomposition
P A = L U with row pivoting. Rows are not moved: row `pivots[k]` of dst holds row k of U from column k on, and left of
it the multipliers of L, whose diagonal of ones is not stored. `pivots` are `order` indices from 0, for each object
of an array those behind the other's; what they hold before the call doesn't matter. dst and `pivots` together are
what `kormLUBackSubst` solves with.

Singular: orders 3 to 6 when a pivot is below twice the smallest normal number of the type; all other orders when a
pivot is not above 2^-23 (`32f`) or 2^-52 (`64f`). An array call on one thread stops at the first singular object and
leaves later ones untouched; spread over threads, each run of objects stops for itself. Of the singular object, orders 3
to 6 have written the rows of dst that were finished (in the pointer layout none) and `pivots`; other orders have
written the matrix as far as it was eliminated.

Scale: at orders 1, 2, 7 and above a good matrix with small elements is refused as singular. Scale it by a power of 2 first,
and b with it: the solution stays. docs/ranges.md shows from which scale on nothing is refused.

Overlap: dst may be src, at the same place with the same strides. Any other overlap leaves dst undefined.

Status: ::korStatusOk, ::korStatusSingular, ::korStatusNullPointer, ::korStatusBadSize, ::korStatusBadStride; array
forms ::korStatusBadCount; list and pointer forms ::korStatusBadOffset. After a failed check nothing is written.
""",
    "lu_solve": """Solving with an LU decomposition
Solves A x = b: src1 and `pivots` are dst and `pivots` of a `kormLUDecomp` call of the same order, src2 is b, dst is x.
One matrix may serve an array of vectors (`mva`).

No value is tested: a zero pivot gives infinities or NaN, and `pivots` that are no permutation read what they name.

Overlap: at orders 3 to 6 dst may be src2, at the same place with the same strides. Any other overlap, and any at all at
other orders, leaves dst undefined.

Status: ::korStatusOk, ::korStatusNullPointer, ::korStatusBadSize, ::korStatusBadStride; array forms
::korStatusBadCount; list and pointer forms ::korStatusBadOffset. Other than with ::korStatusOk nothing is written.
""",
    "cholesky_decomposition": """Cholesky decomposition
src = L L^T of a symmetric positive definite matrix. Of src only the lower triangle with the diagonal is read, of dst
only that is written: what stands above the diagonal may be anything. dst receives L, but on its diagonal the
reciprocals of L's, so that nothing is divided when `kormCholeskyBackSubst` solves with it.

The diagonal of `32f` is the processor's approximate reciprocal root, refined by one Newton step to about 22 bits; that
of `64f` takes a root and a division. The last bits of `32f` depend on the processor and, at orders 3 to 6, on the
form: docs/numerics.md tells.

Not positive definite: when a pivot is not above zero. In the pointer layout the limit at order 3 is 2^-23, and in
`kormCholeskyDecomp_ma_64f` with an element stride other than the element size it is 2^-52 at all orders but 3 to 5.
A NaN passes. The rows of dst before the failing one are then complete, that one is up to its diagonal, the rest is
untouched. An array call on one thread stops there; spread over threads, each run of objects stops for itself.
`kormCholeskyDecomp_ma_32f` takes plain matrices of orders 3 to 6 in fours: where one fails, all of its four are left
in that state.

Scale: beyond the scales of docs/ranges.md, which the limit of 2^-52 makes narrow for the strided arrays, scale the matrix by
a power of 2 first, and b with it: the solution stays. The matrix of normal equations, A^T A, has the square of A's
condition: for least squares prefer `kormQRDecomp` of A.

Overlap: dst may be src, at the same place with the same strides. Any other overlap leaves dst undefined.

Status: ::korStatusOk, ::korStatusNotPositiveDefinite, ::korStatusNullPointer, ::korStatusBadSize, ::korStatusBadStride;
array forms ::korStatusBadCount; list and pointer forms ::korStatusBadOffset. After a failed check nothing is written.
""",
    "cholesky_solve": """Solving with a Cholesky decomposition
Solves A x = b: src1 is dst of a `kormCholeskyDecomp` call of the same order, src2 is b, dst is x. One matrix may serve an
array of vectors (`mva`). Only the lower triangle of src1 is read, whose diagonal holds reciprocals: nothing is divided.

No value is tested: a zero or an infinity on the diagonal spreads.

Overlap: dst may be src2, at the same place with the same strides. Any other overlap leaves dst undefined.

Status: ::korStatusOk, ::korStatusNullPointer, ::korStatusBadSize, ::korStatusBadStride; array forms
::korStatusBadCount; list and pointer forms ::korStatusBadOffset. Other than with ::korStatusOk nothing is written.
`kormCholeskyBackSubst_mva_32f_L` and `kormCholeskyBackSubst_mva_64f_L` look at strides and offsets before sizes, and
at `count` last.
""",
    "qr_decomposition": """QR decomposition
A = Q R by Householder reflections, of matrices of at least as many rows as columns. dst holds R on and above the diagonal;
below it stands, column by column, what the reflections are made of: H(j) = I - 2 v v' / (v' v), where v is 1 in row j, zero
above and column j of dst below. R = ... H(1) H(0) A. A square matrix needs no reflection for its last column, which is
therefore not tested. dst is what `kormQRBackSubst` solves with, by least squares where there are more rows than columns.

`buffer` is scratch of `height` elements of the call's type, whatever its content. It must not be null. A call that is
spread over threads doesn't touch it.

Division by zero: when the sum of the squares of a column, from the diagonal on and after the reflections before it, is
below 2^-23 (`32f`) or 2^-52 (`64f`). dst then holds the matrix after the reflections before that column. An array call on
one thread stops at the first such object and leaves later ones untouched; spread over threads, each run of objects stops for
itself.

Scale: the limit doesn't follow the matrix's size, so a good matrix with small elements is refused, and squares of large
elements overflow with ::korStatusOk. Beyond the scales of docs/ranges.md scale the matrix by a power of 2 first, and b with
it: the solution stays.

Overlap: dst may be src, at the same place with the same strides. Any other overlap leaves dst undefined.

Status: ::korStatusOk, ::korStatusDivideByZero, ::korStatusNullPointer, ::korStatusBadSize, ::korStatusBadStride,
::korStatusSizeMismatch where `width` is above `height`; array forms ::korStatusBadCount; list and pointer forms
::korStatusBadOffset. After a failed check nothing is written.
""",
    "qr_solve": """Solving with a QR decomposition
Solves A x = b, by least squares where A has more rows than columns: src1 is dst of a `kormQRDecomp` call of the same size,
src2 is b with `height` elements, dst is x with `width` elements. One matrix may serve an array of vectors (`mva`).

`buffer` is scratch of `height` elements of the call's type, whatever its content. It must not be null. A call that is
spread over threads doesn't touch it.

No value is tested: a zero on the diagonal of R, which the last column of a square matrix may have, gives infinities or NaN.

Overlap: dst may be src2, at the same place with the same strides. Any other overlap leaves dst undefined.

Status: ::korStatusOk, ::korStatusNullPointer, ::korStatusBadSize, ::korStatusBadStride, ::korStatusSizeMismatch where
`width` is above `height`; array forms ::korStatusBadCount; list and pointer forms ::korStatusBadOffset. Other than with
::korStatusOk nothing is written.
""",
    "inverse": """Inverses
dst(k) = inverse of the square matrix src(k).

`buffer` is scratch of order*order + order elements of the call's type, whatever its content. It must not be null,
though orders 1 and 3 to 6 leave it alone. A call that is spread over threads doesn't touch it.

Orders 2, 7 and above compute each element as a cofactor of its own, which costs in proportion to order^5: from order 7
on prefer `kormLUDecomp` and `kormLUBackSubst`. There a cofactor that is not above 2*order^3 times the smallest normal
number of the type counts as that number, so an element that should be zero comes out as a tiny one.

Singular: when the determinant (orders 5 and 6 of plain `32f` matrices: a pivot, or the determinant of what is left
after the pivots) is below 2*order^3 times the smallest normal number of the type, in plain `64f` matrices of orders
3 and 4 twice that. The object is then untouched, but for its first row (order 6: two rows) in plain `32f` matrices of
orders 5 and 6. An array call on one thread stops at the first singular object and leaves later ones untouched;
spread over threads, each run of objects stops for itself. `kormInvert_ma_32f` takes matrices of order 4 that are
packed and aligned to 16 bytes in pairs, and writes neither of a pair if one is singular.

Scale: what is formed inside grows with the power of the order, so infinities, NaN or zeros may come out with ::korStatusOk
although the inverse is an ordinary matrix: packed `32f` matrices of orders 4 to 6 fail at 1e-5 times the identity and below.
Beyond the scales of docs/ranges.md scale the matrix by a power of 2 first: A has s times the inverse of s A. Of
ill-conditioned matrices cofactors lose digits that `kormLUDecomp` and `kormLUBackSubst` keep: docs/accuracy.md.

Overlap: at orders 1 and 3 to 6 dst may be src, at the same place with the same strides. Any other overlap, and any at
all at other orders, leaves dst undefined.

Status: ::korStatusOk, ::korStatusSingular, ::korStatusNullPointer, ::korStatusBadSize, ::korStatusBadStride; array
forms ::korStatusBadCount; list and pointer forms ::korStatusBadOffset. After a failed check nothing is written.
""",
}

BUFFER = {"buffer": "element *"}
PIVOTS = {"pivots": "int32_t *"}
FACTORED = {"pivots": "const int32_t *"}
SQUARE_AND_ROW = {"buffer": "order * order + order"}  # scratch: a matrix, and a row for its pivots' positions


# fmt: off
DET = dict(kernel="determinant", source="linalg/determinant.h", group="determinant", result="scalars", extras=BUFFER)
NORM = dict(source="linalg/norms.h", group="norms", result="scalars")
TRACE = dict(kernel="trace<Diagonal::{}>", formula="{dst.object} = trace of {src.object}", **NORM,
             variants=[Variant("*_S2 *_LS2", "lastTwoFirst"), Variant("*", "fromFirst")])
FROBENIUS = dict(kernel="frobeniusNorm", formula="{dst.object} = root of the sum of the squares of {src.object}", **NORM)
#                         standard 32f       standard 64f       list 32f     list 64f     pointer 32f  pointer 64f
FROBENIUS_LIMITS = limits(below(2501, 1801), below(1801, 1501), below(1601), below(1601), below(1501), below(2501))
LU = dict(kernel="luDecomposition", source="linalg/lu.h", group="lu_decomposition", extras=PIVOTS,
          formula="dst, pivots = L U of src with row pivoting")
SOLVE = dict(kernel="luSolve", source="linalg/lu_solve.h", group="lu_solve", result="v", extras=FACTORED)
CHOLESKY = dict(kernel="choleskyDecomposition", source="linalg/cholesky.h", group="cholesky_decomposition",
                merges_status=True)
#                        standard 32f       standard 64f list 32f     list 64f          pointer 32f  pointer 64f
CHOLESKY_LIMITS = limits(below(7501),       below(2001), below(2001), below(721, 2001), below(2001))
CHOLESKY_SOLVE = dict(kernel="choleskySolve", source="linalg/cholesky_solve.h", group="cholesky_solve", result="v")
VECTORS_LIMITS = limits(below(1201),        below(721),  below(721),  below(721),       below(721))
BOTH_LIMITS = limits(   below(2051, 1701),  below(1701), below(1701), below(1701),      below(1701), below(2051))
TALL = dict(extras=BUFFER, match="width <= height", order="N C S T O M")
QR = dict(kernel="qrDecomposition", source="linalg/qr.h", group="qr_decomposition", formula="dst = reflections and R of src",
          merges_status=True, **TALL)
QR_SOLVE = dict(kernel="qrSolve", source="linalg/qr.h", group="qr_solve", result="v", **TALL)
#                  standard 32f, 64f            list 32f, 64f                pointer
QR_LIMITS = limits(below(2801), below(2801), below(1801), below(1801), below(1801))
A_COLUMN = {"buffer": "height"}  # scratch
INVERT = dict(kernel="inverse", source="linalg/invert.h", group="inverse", extras=BUFFER,
              shortcut=Shortcut("order == 1", "reciprocals"))

DETERMINED = tuple({"n": n} for n in (3, 4, 5, 6))


def objects(plain):
    """The layouts of a single object, and how their functions' names end."""
    return ({"object": "PlainObject", "layout": plain}, {"object": "StridedObject", "layout": "_S2"},
            {"object": "TableObject", "layout": "_P"})


MATRICES = "const {object}<const {scalar}>& src, const {object}<{scalar}>& dst"

CORES = [
    Core("Determinants in extended precision: row stride in bytes.", "extendedDeterminant<{n}>",
         "const {scalar}* src, std::ptrdiff_t rowStride, {scalar}* dst",
         "a6_Det_m_{element}_{n}x{n}", "linalg/extended.h", returns="void", each=DETERMINED),
    Core("LU decomposition of any order.", "luGeneral<{scalar}>", MATRICES + ", std::byte* pivots, std::ptrdiff_t order",
         "ownkormLUDecomp_m_{element}{layout}_com", "linalg/lu_general.h", each=objects(plain="_S")),
    Core("Cholesky decomposition of matrices of orders 3 to 6, four at a time.", "choleskyInFours",
         "const {scalar}* src, std::ptrdiff_t srcObjectStride, std::ptrdiff_t srcRowStride, "
         "{scalar}* dst, std::ptrdiff_t dstObjectStride, std::ptrdiff_t dstRowStride, std::int32_t order, std::ptrdiff_t count",
         "CholoDec_{element}_V8", "linalg/cholesky.h", types="32f"),
    Core("Solves with one Cholesky factor of orders 3 to 6, four vectors at a time.", "choleskySolvePlain",
         "const {scalar}* src1, std::ptrdiff_t src1RowStride, const {scalar}* src2, std::ptrdiff_t src2ObjectStride, "
         "{scalar}* dst, std::ptrdiff_t dstObjectStride, std::int32_t order, std::ptrdiff_t count",
         "CholBackSubst_{element}_V8", "linalg/cholesky_solve.h", types="32f", returns="void"),
    Core("The same for any element stride.", "choleskySolveStrided",
         "const {scalar}* src1, std::ptrdiff_t src1RowStride, std::ptrdiff_t src1ElementStride, "
         "const {scalar}* src2, std::ptrdiff_t src2ObjectStride, std::ptrdiff_t src2ElementStride, "
         "{scalar}* dst, std::ptrdiff_t dstObjectStride, std::ptrdiff_t dstElementStride, std::int32_t order, std::ptrdiff_t count",
         "CholBackSubst_{element}_S2_V8", "linalg/cholesky_solve.h", types="32f", returns="void"),
    Core("QR decomposition.", "qrGeneral<{scalar}>",
         MATRICES + ", {scalar}* buffer, std::ptrdiff_t width, std::ptrdiff_t height",
         "ownkormQRDecomp_m_{element}{layout}_com", "linalg/qr_general.h", each=objects(plain="_S")),
    Core("Solve with a QR decomposition.", "qrSolveGeneral<{scalar}>",
         "const {object}<const {scalar}>& matrix, const {object}<const {scalar}>& src, const {object}<{scalar}>& dst"
         ", {scalar}* buffer, std::ptrdiff_t width, std::ptrdiff_t height", returns="void",
         symbol="ownkormQRBackSubst_mv_{element}{layout}_com", source="linalg/qr_general.h", each=objects(plain="_S")),
    Core("Inverses of any order.", "invertByCofactors<{scalar}>", MATRICES + ", {scalar}* buffer, std::int32_t order",
         "ownkormInvert_m_{element}{layout}_com", "linalg/cofactors.h", each=objects(plain="")),
    Core("Inverses of two packed matrices of order 4.", "invertPair",
         "const {scalar}* src, std::ptrdiff_t srcObjectStride, {scalar}* dst, std::ptrdiff_t dstObjectStride",
         "ownkormInvert_m_{element}_4x4_loop2", "linalg/invert.h", types="32f"),
    Core("The inverse of one matrix of order 4.", "invertOrder4",
         "const {scalar}* src, std::int32_t srcRowStride, {scalar}* det, {scalar}* dst, std::int32_t dstRowStride",
         "ownkormInvert_m_{element}_4x4", "linalg/invert.h", types="64f"),
]

FAMILIES = [
    Family("Det", "m",  SINGLE, "src order buffer dst", formula="dst = det(src)", **DET),
    Family("Det", "ma", ARRAY,  "src order buffer dst count", formula="dst(k) = det(src(k))", **DET,
           estimate="order * count", limits=everywhere(up_to(14400)), scratch=SQUARE_AND_ROW),

    Family("Trace", "m",  SINGLE, "src order dst", **TRACE),
    Family("Trace", "ma", ARRAY,  "src order dst count", **TRACE, estimate="order * count", limits=everywhere(below(3601))),

    Family("FrobNorm", "m",  SINGLE, "src width height dst", **FROBENIUS, single_kernel=True),
    Family("FrobNorm", "ma", ARRAY,  "src width height dst count", **FROBENIUS,
           estimate="width * height * count", limits=FROBENIUS_LIMITS),

    Family("LUDecomp", "m",  SINGLE, "src pivots dst order", **LU, merges_status=True),
    Family("LUDecomp", "ma", ARRAY,  "src pivots dst order count", **LU, merges_status=True,
           estimate="order * order * count", limits=everywhere(below(1001)), per_object={"pivots": "order"}),

    Family("LUBackSubst", "mv",   SINGLE, "src1 pivots src2 dst order", formula="src1 dst = src2, src1 factored", **SOLVE),
    Family("LUBackSubst", "mva",  ARRAY,  "src1 pivots src2 dst order count", formula="src1 dst(k) = src2(k), src1 factored", **SOLVE,
           estimate="(order + 2 * count) * order", limits=everywhere(below(701))),
    Family("LUBackSubst", "mava", ARRAY,  "src1 pivots src2 dst order count", formula="src1(k) dst(k) = src2(k), src1 factored", **SOLVE,
           estimate="(order + 2) * order * count", limits=everywhere(below(1201)), per_object={"pivots": "order"}),

    Family("CholeskyDecomp", "m",  SINGLE, "src dst order", formula="dst dst^T = src, reciprocals on the diagonal of dst", **CHOLESKY),
    Family("CholeskyDecomp", "ma", ARRAY,  "src dst order count", formula="dst(k) dst(k)^T = src(k), reciprocals on the diagonal of dst(k)",
           **CHOLESKY, estimate="order * order * count", limits=CHOLESKY_LIMITS),

    Family("CholeskyBackSubst", "mv",   SINGLE, "src1 src2 dst order", formula="src1 dst = src2, src1 factored", **CHOLESKY_SOLVE),
    Family("CholeskyBackSubst", "mva",  ARRAY,  "src1 src2 dst order count", formula="src1 dst(k) = src2(k), src1 factored", **CHOLESKY_SOLVE,
           estimate="(order + 2 * count) * order", limits=VECTORS_LIMITS,
           order_departures=[Departure("CholeskyBackSubst_mva_*_L", "N T O S C", "A bad stride or offset outranks a bad size or count.")]),
    Family("CholeskyBackSubst", "mava", ARRAY,  "src1 src2 dst order count", formula="src1(k) dst(k) = src2(k), src1 factored", **CHOLESKY_SOLVE,
           estimate="(order + 2) * order * count", limits=BOTH_LIMITS),

    Family("QRDecomp", "m",  SINGLE, "src buffer dst width height", **QR),
    Family("QRDecomp", "ma", ARRAY,  "src buffer dst width height count", **QR,
           estimate="width * 2 * height * count", limits=QR_LIMITS, scratch=A_COLUMN),

    Family("QRBackSubst", "mv",   SINGLE, "src1 buffer src2 dst width height", formula="src1 dst = src2, src1 factored", **QR_SOLVE),
    Family("QRBackSubst", "mva",  ARRAY,  "src1 buffer src2 dst width height count", formula="src1 dst(k) = src2(k), src1 factored", **QR_SOLVE,
           estimate="width * height + (height + width) * count", limits=QR_LIMITS, scratch=A_COLUMN),
    Family("QRBackSubst", "mava", ARRAY,  "src1 buffer src2 dst width height count", formula="src1(k) dst(k) = src2(k), src1 factored", **QR_SOLVE,
           estimate="(width * (height + 1) + height) * count", limits=QR_LIMITS, scratch=A_COLUMN),

    Family("Invert", "m",  SINGLE, "src buffer dst order", formula="dst = inverse of src", **INVERT, merges_status=True),
    Family("Invert", "ma", ARRAY,  "src buffer dst order count", formula="dst(k) = inverse of src(k)", **INVERT, merges_status=True,
           estimate="order * 2 * count", limits={**everywhere(below(2501)), ("standard", "32f"): below(3601, 2501)},
           scratch=SQUARE_AND_ROW),
]
# fmt: on
