"""The forms of eigenproblems: eigenvalues of symmetric and of general matrices, with and without vectors."""

from grammar import ARRAY, SINGLE, Departure, Family, Query, Variant, below, everywhere

GROUPS = {
    "symmetric_values": """Symmetric eigenvalues
dstValues = the real eigenvalues of a matrix that the caller declares symmetric: `order` of them, for each object of an array
behind those of the one before. From order 3 on they are sorted, the largest first. Order 2 is not sorted: with a negative
trace the first value is the smaller.

Symmetry is not tested. All elements take part; of order 2 the one below the diagonal doesn't.

`buffer` is scratch of order*order elements of the call's type, whatever its content. It must not be null, though orders 1 and
2 leave it alone. A call that is spread over threads doesn't touch it.

All tests are absolute, with eps = 2^-23 (`32f`) or 2^-52 (`64f`). A matrix is refused as singular when the product of its
eigenvalues is not above eps: a hundredth of the identity of order 4 is. An element beside the diagonal counts as zero when
its half is not above eps: large matrices may fail to converge, small ones get inexact values with ::korStatusOk. Beyond the
scales of docs/ranges.md scale the matrix by a power of 2 first, and the values back; a singular one may be shifted: add a
multiple of the identity, and subtract it from the values.

Values may be wrong with ::korStatusOk: from order 4 on a sweep that meets a rotation of length within eps ends early, and
an element that isn't small may be dropped with it. It happens to matrices with values close together or far apart, and of
large order, in `32f` from about 10 on; scaling doesn't prevent it. The sum of the squares of all elements, which is that of
the values, shows it.

Singular: order 2 leaves dstValues untouched; from order 3 on it holds the values, unsorted. Order 1 never fails.
No convergence: an eigenvalue took more than 30 sweeps; dstValues holds nothing of use. A NaN or an infinity ends that way
mostly. An array call on one thread stops at the first object that fails and leaves later ones untouched; spread over threads,
each run of objects stops for itself.

Overlap: dstValues, `buffer` and src must not overlap.

Status: ::korStatusOk, ::korStatusSingular, ::korStatusNoConvergence, ::korStatusNullPointer, ::korStatusBadSize,
::korStatusBadStride; array forms ::korStatusBadCount; list and pointer forms ::korStatusBadOffset. After a failed check
nothing is written.
""",
    "symmetric_vectors": """Symmetric eigenvalues and eigenvectors
src(k) V = V diag(dstValues(k)): column j of V = dstVectors(k) is the eigenvector of value j. Columns have length 1 and are
orthogonal; their signs are as they come. Values, `buffer`, tests and statuses are those of `kormEigenValuesSym`, and what is
said there of scaling, shifting and wrong values holds here; docs/ranges.md has rows of their own. Neither scaling by a power
of 2 nor a shift changes the vectors. Where values are wrong, vectors are still orthogonal, but src V isn't V diag(dstValues).

Forms differ in the test for a singular matrix, made from order 3 on: single `32f` matrices with adjacent elements, all single
`64f` ones and those in the pointer layout leave values and vectors complete and sorted when they return ::korStatusSingular;
single `32f` ones with element strides and all arrays leave them complete but unsorted. Arrays of `64f` refuse a product that is
not above 2^-23, single matrices one that is not above 2^-52. Arrays of `32f` compute in double and round what they store.

No convergence: dstVectors and dstValues hold nothing of use.

Overlap: dstVectors, dstValues, `buffer` and src must not overlap.

Status: ::korStatusOk, ::korStatusSingular, ::korStatusNoConvergence, ::korStatusNullPointer, ::korStatusBadSize,
::korStatusBadStride; array forms ::korStatusBadCount; list and pointer forms ::korStatusBadOffset. After a failed check
nothing is written.
""",
    "general_eigenvalues": """General eigenvalues
All eigenvalues of a square matrix that need not be symmetric. Element i of `dstValuesRe` and `dstValuesIm` together is
eigenvalue i; they are `order` elements for each object of an array, in a row, without strides in any layout. Two conjugate
eigenvalues are neighbours, the one with the positive imaginary part first. There is no other order among them: each stands
where the iteration found it on the diagonal.

The matrix is reduced to Hessenberg form by reflections, then iterated on by double-shift QR sweeps, at most 30 times the
order. It is neither balanced nor scaled, and a subdiagonal element counts as zero when its magnitude is at most 2^-23
(`32f`) or 2^-52 (`64f`), whatever the matrix's own size. Eigenvalues of small matrices are therefore inexact with
::korStatusOk, down to the diagonal of the Hessenberg form: scale the matrix by a power of 2 first, to a norm around 2^20,
and the values back. docs/ranges.md shows from which scale to which they are right. A 2 by 2 block that splits off with equal
diagonal elements counts as complex even if its eigenvalues are real: (1 2; 2 1) gives 1 + 2i and 1 - 2i.

`buffer` is scratch of as many bytes as `kormEigenValuesGetBufSize_32f` or `_64f` tells, order*(order + 5) elements, whatever
its content. A call that is spread over threads doesn't touch it.

Overlap: no output may overlap another, buffer or src.

Status: ::korStatusOk, ::korStatusNoConvergence, ::korStatusNullPointer, ::korStatusBadSize, ::korStatusBadStride; array forms
::korStatusBadCount; list and pointer forms ::korStatusBadOffset. After a failed check nothing is written. An array call on
one thread stops at the first object without convergence and leaves later ones untouched; spread over threads, each run of
objects stops for itself. Of that object the eigenvalues found so far are written, which are the last ones.
""",
    "general_eigenvectors": """General eigenvalues and eigenvectors
`Left` and `Right` mean the reverse of what most expect, for a caller's matrix A = src and eigenvalue w of vector y:

| function | writes | each vector satisfies |
|---|---|---|
| `kormEigenValuesVectorsLeft` | dst | A y = w y |
| `kormEigenValuesVectorsRight` | dst | y^T A = w y^T |
| `kormEigenValuesVectors` | dstLeft | A y = w y |
| | dstRight | y^T A = w y^T |

So the vectors that are mostly called right eigenvectors come from `Left`. The names belong to the transpose of A, on which the
functions work. y^T is the plain transpose, without conjugation.

Element i of `dstValuesRe` and `dstValuesIm` together is eigenvalue i; they are `order` elements for each object of an array,
in a row, without strides in any layout. Column j of a matrix of vectors belongs to eigenvalue j. Two conjugate eigenvalues are
neighbours, the one with the positive imaginary part first: of its vector the first of the two columns is the real part and
the second the imaginary part. The other's vector is the conjugate and isn't stored. Vectors have the Euclidean norm 1, and
the greatest element of a complex one has an imaginary part at or near 0.

A subdiagonal element counts as zero where its neighbours on the diagonal are larger by 2^23 (`32f`) or 2^52 (`64f`), so that
scale matters less than to `kormEigenValues`. Beyond the scales of docs/ranges.md scale the matrix by a power of 2 first, and
the values back; the vectors stay. Eigenvalues may differ in the last digits, and stand in another order, from those of
`kormEigenValues`. A 2 by 2 block with equal diagonal elements and elements of like sign beside them counts as complex, as
there; its vectors satisfy no equation, and a right set ends with ::korStatusNoConvergence when such a block is the first of
a call. Arrays, and `Left` and `Right` of doubles, hold their shifts in single precision: a matrix whose elements lie beyond
its range doesn't converge.

`buffer` is scratch of as many bytes as `kormEigenValuesVectorsGetBufSize_32f` or `_64f` tells, order*(3*order + 5) elements,
whatever its content. A call that is spread over threads doesn't touch it. `Left` and `Right` never are.

Overlap: no output may overlap another, buffer or src.

Status: ::korStatusOk, ::korStatusNoConvergence, ::korStatusNearSingularBlock, ::korStatusNullPointer, ::korStatusBadSize,
::korStatusBadStride; array forms ::korStatusBadCount; list and pointer forms ::korStatusBadOffset. After a failed check
nothing is written. ::korStatusNoConvergence comes when the sweeps, 30 times the order, don't suffice: then the eigenvalues
found so far are written, the last ones; or when a vector of the right set vanishes. A system of two unknowns that is
singular to working precision ends a call as well, with ::korStatusNearSingularBlock for a complex eigenvalue and, on
purpose, with ::korStatusOk for a real one. In the last three cases all eigenvalues of the object are written. No such
object has vectors, and of an array later objects are untouched, on one thread all of them, otherwise those of its run.
""",
    "eigen_buffers": """Scratch of general eigenproblems
How many bytes of scratch the functions of general eigenproblems need for matrices of a given order: order*(order + 5)
elements for eigenvalues alone, order*(3*order + 5) with vectors. The product wraps at 32 bits.

Status: ::korStatusOk, ::korStatusNullPointer (`size` is null), ::korStatusBadSize (`order` is below 1), in this order.
""",
}


def query(operation, element, brief):
    return Query(name=f"korm{operation}GetBufSize_{element}", returns="int32_t ", group="eigen_buffers", brief=brief,
                 source="eigen/general_buffer_size.cpp", arguments="int32_t order, uint32_t *size")


# A thread's piece is as large with and without vectors.
SCRATCH = {"buffer": "order * (3 * order + 5)"}
OUTPUTS = {"dstValuesRe": "element *", "dstValuesIm": "element *", "buffer": "element *"}
OPERANDS_IN_TURN = "lists and tables: offset and strides of one operand, then those of the next"
PER_OBJECT = {"dstValuesRe": "order", "dstValuesIm": "order"}

# fmt: off
SYMMETRIC = dict(source="eigen/symmetric.h", extras={"buffer": "element *", "dstValues": "element *"}, order="N S C O T",
                 per_object={"dstValues": "order"}, scratch={"buffer": "order * order"}, merges_status=True)
SYMMETRIC_VALUES = dict(kernel="symmetricValues", group="symmetric_values", results="", **SYMMETRIC)
SYMMETRIC_VECTORS = dict(kernel="symmetricVectors<{}>", group="symmetric_vectors", results="dstVectors:dst", **SYMMETRIC,
               variants=[Variant("m_32f_S2", "OneUnsorted"), Variant("m_*", "One"), Variant("ma_*", "Several")])

GENERAL = dict(extras=OUTPUTS, order="N S C O T", merges_status=True, single_kernel=True)
VECTORS = dict(source="eigen/general_vectors.h", group="general_eigenvectors", order_departures=[
    Departure("EigenValuesVectors_ma_*_[LP]", "N S C O:src T:src O:dstRight T:dstRight O:dstLeft T:dstLeft", OPERANDS_IN_TURN),
    Departure("EigenValuesVectors*_ma_*_[LP]", "N S C O:src T:src O:dst T:dst", OPERANDS_IN_TURN),
], **GENERAL)
VALUES = dict(kernel="eigenvalues", source="eigen/general_values.h", group="general_eigenvalues", results="", **GENERAL)
ONE = dict(results="dst", **VECTORS, variants=[
    Variant("m_64f* ma_64f*", "DoubleScalars<double>"),
    Variant("m_32f*", "DoubleNorms"),
    Variant("ma_32f*", "DoubleScalars<float>"),
])
LEFT = dict(kernel="eigenvectorsOf<Sides::left, {}>", **ONE)
RIGHT = dict(kernel="eigenvectorsOf<Sides::right, {}>", **ONE)
BOTH = dict(results="dstRight dstLeft", kernel="bothEigenvectors<{}>", **VECTORS, variants=[
    Variant("m_64f*", "ElementScalars<double>"),
    Variant("m_32f*", "RoughRoots"),
    Variant("ma_64f*", "DoubleScalars<double>"),
    Variant("ma_32f*", "DoubleScalars<float>"),
])
SIGNATURE = "src {} dstValuesRe dstValuesIm order count buffer"

FAMILIES = [
    Family("EigenValuesSym", "m",  SINGLE, "src buffer dstValues order", formula="dstValues = eigenvalues of src", **SYMMETRIC_VALUES),
    Family("EigenValuesSym", "ma", ARRAY,  "src buffer dstValues order count", formula="dstValues(k) = eigenvalues of src(k)", **SYMMETRIC_VALUES,
           estimate="order * (order + 1) * count", limits=everywhere(below(1001))),

    Family("EigenValuesVectorsSym", "m",  SINGLE, "src buffer dstVectors dstValues order",
           formula="src dstVectors = dstVectors diag(dstValues)", **SYMMETRIC_VECTORS),
    Family("EigenValuesVectorsSym", "ma", ARRAY,  "src buffer dstVectors dstValues order count",
           formula="src(k) dstVectors(k) = dstVectors(k) diag(dstValues(k))", **SYMMETRIC_VECTORS,
           estimate="order * (2 * order + 1) * count", limits=everywhere(below(701))),

    Family("EigenValues", "m",  SINGLE, "src dstValuesRe dstValuesIm order buffer", **VALUES,
           formula="dstValuesRe + i dstValuesIm = eigenvalues of src"),
    Family("EigenValues", "ma", ARRAY,  "src dstValuesRe dstValuesIm order count buffer", **VALUES,
           formula="dstValuesRe(k) + i dstValuesIm(k) = eigenvalues of src(k)", per_object=PER_OBJECT,
           estimate="order * (order + 1) * count", limits=everywhere(below(251)), scratch=SCRATCH),

    Family("EigenValuesVectors", "m",  SINGLE, SIGNATURE.format("dstRight dstLeft"), **BOTH,
           formula="dstRight, dstLeft = eigenvectors y^T src = w y^T and src y = w y"),
    Family("EigenValuesVectors", "ma", ARRAY,  SIGNATURE.format("dstRight dstLeft"), **BOTH,
           formula="dstRight(k), dstLeft(k) = eigenvectors y^T src(k) = w y^T and src(k) y = w y", per_object=PER_OBJECT,
           estimate="order * (3 * order + 1) * count", limits=everywhere(below(501)), scratch=SCRATCH),

    Family("EigenValuesVectorsLeft", "m",  SINGLE, SIGNATURE.format("dst"), **LEFT, formula="dst = eigenvectors src y = w y"),
    Family("EigenValuesVectorsLeft", "ma", ARRAY,  SIGNATURE.format("dst"), **LEFT,
           formula="dst(k) = eigenvectors src(k) y = w y"),

    Family("EigenValuesVectorsRight", "m",  SINGLE, SIGNATURE.format("dst"), **RIGHT,
           formula="dst = eigenvectors y^T src = w y^T"),
    Family("EigenValuesVectorsRight", "ma", ARRAY,  SIGNATURE.format("dst"), **RIGHT,
           formula="dst(k) = eigenvectors y^T src(k) = w y^T"),

    query("EigenValues", "32f", "Scratch of `kormEigenValues` for `float`."),
    query("EigenValues", "64f", "Scratch of `kormEigenValues` for `double`."),
    query("EigenValuesVectors", "32f", "Scratch of `kormEigenValuesVectors`, `-Left` and `-Right` for `float`."),
    query("EigenValuesVectors", "64f", "Scratch of `kormEigenValuesVectors`, `-Left` and `-Right` for `double`."),
]
# fmt: on
