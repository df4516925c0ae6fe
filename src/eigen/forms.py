"""The forms of eigenproblems: eigenvalues of symmetric matrices, with and without vectors."""

from grammar import ARRAY, SINGLE, Family, Variant, below, everywhere

GROUPS = {
    "symmetric_values": """Symmetric eigenvalues
dstValues = the real eigenvalues of a matrix that the caller declares symmetric: `order` of them, for each object of an array
behind those of the one before. From order 3 on they are sorted, the largest first. Order 2 is not sorted: with a negative
trace the first value is the smaller.

Symmetry is not tested. All elements take part; of order 2 the one below the diagonal doesn't.

`buffer` is scratch of order*order elements of the call's type, whatever its content. It must not be null, though orders 1 and
2 leave it alone. A call that is spread over threads doesn't touch it.

All tests are absolute, with eps = 2^-23 (`32f`) or 2^-52 (`64f`). A matrix is refused as singular when the product of its
eigenvalues is not above eps: a hundredth of the identity of order 4 is. An element beside the diagonal counts as zero when its
half is not above eps: large matrices may fail to converge, small ones get inexact values. Scale the matrix so that its largest
element is about 1, and the values back; a singular one may be shifted: add a multiple of the identity, and subtract it from
the values.

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
said there of scaling and shifting holds here: a shift doesn't change the vectors.

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
}


# fmt: off
SYMMETRIC = dict(source="eigen/symmetric.h", extras={"buffer": "element *", "dstValues": "element *"}, order="N S C O T",
                 per_object={"dstValues": "order"}, scratch={"buffer": "order * order"}, merges_status=True)
VALUES = dict(kernel="symmetricValues", group="symmetric_values", results="", **SYMMETRIC)
VECTORS = dict(kernel="symmetricVectors<{}>", group="symmetric_vectors", results="dstVectors:dst", **SYMMETRIC,
               variants=[Variant("m_32f_S2", "OneUnsorted"), Variant("m_*", "One"), Variant("ma_*", "Several")])

FAMILIES = [
    Family("EigenValuesSym", "m",  SINGLE, "src buffer dstValues order", formula="dstValues = eigenvalues of src", **VALUES),
    Family("EigenValuesSym", "ma", ARRAY,  "src buffer dstValues order count", formula="dstValues(k) = eigenvalues of src(k)", **VALUES,
           estimate="order * (order + 1) * count", limits=everywhere(below(1001))),

    Family("EigenValuesVectorsSym", "m",  SINGLE, "src buffer dstVectors dstValues order",
           formula="src dstVectors = dstVectors diag(dstValues)", **VECTORS),
    Family("EigenValuesVectorsSym", "ma", ARRAY,  "src buffer dstVectors dstValues order count",
           formula="src(k) dstVectors(k) = dstVectors(k) diag(dstValues(k))", **VECTORS,
           estimate="order * (2 * order + 1) * count", limits=everywhere(below(701))),
]
# fmt: on
