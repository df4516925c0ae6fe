"""The forms of products: matrix by matrix and matrix by vector.

Sizes stand beside the operands and are those of the operand as it is stored. The order in which the products of
an element are added depends on kernel, sizes and row; SUMS and VECTOR_SUMS tell which kernel has which
orders, src/products/sums.h what these are.
"""

from grammar import ARRAY, SINGLE, Family, Variant, below, limits

GROUPS = {
    "matrix_products": """Products of matrices
dst = first * second, where `t` reads an operand as its transpose. One product, an array with one matrix, one matrix
with an array, or two arrays object by object.

Shapes: the sizes of an operand are those in which it is stored, also where it is read transposed. dst has M rows and
N columns, each element is a sum of K products; dst has no sizes of its own.

| operands | M | K | N |
|---|---|---|---|
| `m` by `m` | `src1Height` | `src1Width` | `src2Width` |
| `m` by `t` | `src1Height` | `src1Width` | `src2Height` |
| `t` by `m` | `src1Width` | `src1Height` | `src2Width` |
| `t` by `t` | `src1Width` | `src1Height` | `src2Height` |

In the pointer layout the table of dst has M*N entries, row by row.

Sums: every product and every addition is rounded to the element type. For one form, sizes, layout and choice of
strides the order of additions is fixed, so results are the same on every machine and for any number of threads. It
differs between forms and layouts: docs/numerics.md shows which element gets which sum.

Overlap: dst must not overlap a source.

Status: ::korStatusOk, ::korStatusNullPointer, ::korStatusBadSize, ::korStatusSizeMismatch, ::korStatusBadStride; array
forms ::korStatusBadCount; list and pointer forms ::korStatusBadOffset. Other than with ::korStatusOk nothing is written.
Infinities and NaN take part as they are; nothing is scaled or tested for overflow.
""",
    "vector_products": """Products of matrices and vectors
dst = matrix * vector, where `t` reads the matrix as its transpose: one of each, one matrix with many vectors (`mva`), many
matrices with one vector (`mav`), or both, object by object (`mava`).

Shapes: the sizes of the matrix are those in which it is stored. dst has M elements, each a sum of K products: of `m`, M is
`src1Height` and K `src1Width`; of `t`, M is `src1Width` and K `src1Height`. dst has no length of its own.

Sums: every product and every addition is rounded to the element type, in an order that is fixed for a form, its sizes,
layout and choice of strides: see docs/numerics.md. An array form gives each object what its kernel for one object would.

Overlap: dst must not overlap a source.

Status: ::korStatusOk, ::korStatusNullPointer, ::korStatusBadSize, ::korStatusSizeMismatch, ::korStatusBadStride; array
forms ::korStatusBadCount; list and pointer forms ::korStatusBadOffset. Other than with ::korStatusOk nothing is written.
""",
    "vector_products_plus": """Products of matrices and vectors, plus a vector
dst = src1 * src2 + src3, with one matrix src1: of single vectors (`mv`), of arrays of both vectors (`mva`), or of an array
src2 with one src3 (`mvav`).

Shapes: src2 has `src1Width` elements, src3 and dst have `src1Height`. dst has no length of its own.

Sums: every product and every addition is rounded to the element type. A sum of products is complete before the element of
src3 is added; docs/numerics.md shows its order.

Overlap: dst must not overlap a source.

Status: ::korStatusOk, ::korStatusNullPointer, ::korStatusBadSize, ::korStatusSizeMismatch, ::korStatusBadStride; array
forms ::korStatusBadCount; list and pointer forms ::korStatusBadOffset. Other than with ::korStatusOk nothing is written.
""",
}

MATRICES = "src1 src1Width src1Height src2 src2Width src2Height dst count"
MATRIX_AND_VECTOR = "src1 src1Width src1Height src2 src2Length dst count"
MATRIX_AND_VECTORS = "src1 src1Width src1Height src2 src2Length src3 src3Length dst count"

# The match of sizes comes before the strides, other than in most families.
ORDER = "N C S M T O"

# fmt: off
#               standard 32f       standard 64f       list 32f           list 64f           pointer
LIMITS = limits(below(2501, 1441), below(3601, 1441), below(3601, 1441), below(3601, 1441), below(1441))

# The elements that a call touches: an array's and the result's for each object, a single operand's once.
ARRAY_BY_ONE = "K * N + (K + N) * M * count"
ONE_BY_ARRAY = "M * K + (M + K) * N * count"
TWO_ARRAYS = "(K * N + (K + N) * M) * count"

ONE_BY_VECTORS = "M * K + (M + K) * count"
ARRAY_BY_VECTOR = "(M * K + M) * count + K"
ARRAY_BY_VECTORS = "(M * K + M + K) * count"

MM = ("src1Height", "src1Width",  "src2Width",  "src1Width == src2Height")
MT = ("src1Height", "src1Width",  "src2Height", "src1Width == src2Width")
TM = ("src1Width",  "src1Height", "src2Width",  "src1Height == src2Height")
TT = ("src1Width",  "src1Height", "src2Height", "src1Height == src2Width")
#      M             K             N             match

MV = ("src1Height", "src1Width",  "src1Width == src2Length")
TV = ("src1Width",  "src1Height", "src1Height == src2Length")
#      M             K             match

# Kernels, by operands and suffix; the orders that have a square path; the sums of the general path.
# The first row that names a kernel holds.
def sums(kernels, squares, general):
    return Variant(kernels, f"Squares<{', '.join(squares.split())}>, sums::{general}")

SUMS = [
    # Single products.
    sums("mm_32f",                                                         "3 4 5 6", "mm_32f"),
    sums("tm_32f",                                                         "3 4 5",   "tm_32f"),
    sums("mt_32f",                                                         "3 4 5 6", "mt_32f"),
    sums("tt_32f",                                                         "3 4 5 6", "tt_32f"),
    sums("mm_64f mt_64f tm_64f tt_64f",                                    "3 4 5 6", "mm_64f"),
    sums("mt_64f_S2",                                                      "3 4 5 6", "mt_64f_S2"),
    sums("mm_32f_S2 mt_32f_S2 tm_32f_S2 tt_32f_S2 mm_64f_S2 tm_64f_S2 tt_64f_S2", "3 4 5 6", "zero_start"),
    sums("mm_??f_P mt_??f_P tm_??f_P tt_??f_P",                            "3 4 5 6", "zero_start"),

    # Arrays: plain kernels of 32f.
    sums("mam_32f mma_32f mama_32f mam_32f_L mma_32f_L mama_32f_L",        "3 4 5 6", "mm_32f"),
    sums("tam_32f tma_32f tama_32f tam_32f_L tma_32f_L tama_32f_L",        "3 4 5 6", "tm_32f"),
    sums("tat_32f tata_32f tat_32f_L tata_32f_L tta_32f",                  "3 4 5 6", "tt_32f"),
    sums("mat_32f_L mta_32f mata_32f mata_32f_L",                          "3 4 5 6", "mt_32f"),
    sums("mat_32f",                                                        "3 5 6",   "mt_32f"),
    sums("mta_32f_L",                                                      "",        "mt_32f"),
    sums("tta_32f_L",                                                      "",        "tt_32f"),

    # Arrays: plain kernels of 64f.
    sums("tta_64f_L",                                                      "",        "mm_64f"),
    sums("mata_64f",                                                       "3 4 5 6", "zero_start"),
    sums("mam_64f mat_64f tam_64f tat_64f mama_64f tama_64f tata_64f mma_64f mta_64f tma_64f tta_64f",
                                                                           "3 4 5 6", "mm_64f"),
    sums("mam_64f_L mat_64f_L tam_64f_L tat_64f_L mama_64f_L mata_64f_L tama_64f_L tata_64f_L mma_64f_L mta_64f_L tma_64f_L",
                                                                           "3 4 5 6", "mm_64f"),

    # Arrays: any stride, tables.
    sums("mat_64f_S2 mta_64f_S2 mata_64f_S2 mat_64f_LS2 mta_64f_LS2 mata_64f_LS2", "3 4 5 6", "mt_64f_S2"),
    sums("mam_32f_LS2 mam_32f_P mat_32f_S2 mat_32f_LS2 mat_32f_P",         "3",       "zero_start"),
    sums("tam_32f_S2 tam_32f_LS2 tam_32f_P tat_32f_LS2",                   "3",       "zero_start"),
    sums("mama_32f_S2",                                                    "3 4 5",   "zero_start"),
    sums("*_S2 *_LS2 *_P",                                                 "3 4 5 6", "zero_start"),
]

# Kernels; the order of a square path's sums; the sums of the general path.
def vector_sums(kernels, square, general):
    return Variant(kernels, f"square::{square}, sums::{general}")

VECTOR_SUMS = [
    vector_sums("mv_32f",                                                  "left_to_right", "mv_32f"),
    vector_sums("mva_32f mav_32f mava_32f mva_32f_L mav_32f_L mava_32f_L", "mva_32f",       "mv_32f"),
    vector_sums("tv_32f",                                                  "left_to_right", "tv_32f"),
    vector_sums("tva_32f tav_32f tava_32f tva_32f_L tav_32f_L tava_32f_L", "tva_32f",       "tv_32f"),
    vector_sums("mv_64f",                                                  "mv_64f",        "mv_64f"),
    vector_sums("mva_64f mav_64f mava_64f mva_64f_L mav_64f_L mava_64f_L", "mv_64f",        "mv_64f"),
    vector_sums("tv_64f",                                                  "left_to_right", "tv_64f"),
    vector_sums("tva_64f tav_64f tava_64f tva_64f_L tav_64f_L tava_64f_L", "left_to_right", "tv_64f"),
    vector_sums("mv_64f_S2 mva_64f_S2 mav_64f_S2 mava_64f_S2",             "left_to_right", "mv_64f_S2"),
    vector_sums("mva_64f_LS2 mav_64f_LS2 mava_64f_LS2",                    "left_to_right", "mv_64f_S2"),
    vector_sums("*_S2 *_LS2 *_P",                                          "left_to_right", "vector_zero_start"),
]


def matrices(operands, layouts, shape, estimate=""):
    m, k, n, match = shape
    single = layouts is SINGLE
    kernel, header = ("singleProduct<{}>", "products/single.h") if single else ("product<{}>", "products/product.h")
    return Family("Mul", operands, layouts, MATRICES, kernel, header, "matrix_products",
                  formula="{dst[i,j]} = sum over l of {src1[i,l]} * {src2[l,j]}", variants=SUMS,
                  letters={"M": m, "K": k, "N": n}, shape="ProductShape{M, K, N}", result_width="N",
                  match=match, estimate=estimate, limits=LIMITS, order=ORDER, merges_status=single)


def vectors(operands, layouts, shape, estimate=""):
    m, k, match = shape
    single = layouts is SINGLE
    kernel, header = (("singleVectorProduct<{}>", "products/single.h") if single else
                      ("vectorProduct<{}>", "products/product.h"))
    return Family("Mul", operands, layouts, MATRIX_AND_VECTOR, kernel, header, "vector_products",
                  formula="{dst[i]} = sum over l of {src1[i,l]} * {src2[l]}", result="v", variants=VECTOR_SUMS,
                  letters={"M": m, "K": k}, shape="VectorProductShape{M, K}",
                  match=match, estimate=estimate, limits=LIMITS, order=ORDER, merges_status=single)


PLUS_LIMITS = {
    ("standard", "32f"): below(7001, 5001),
    ("standard", "64f"): below(5001),
    ("list", "32f"): below(7001, 501),  # far from its neighbours, and meant to be
    ("list", "64f"): below(6001, 5001),
    ("pointer", "32f"): below(4501),
    ("pointer", "64f"): below(7001),
}

# What is added isn't in the name of two forms: to one vector one, to an array an array.
ADDED = {"mv": "mvv", "mva": "mvava"}


def plus(operands, layouts, estimate=""):
    return Family("Gaxpy", operands, layouts, MATRIX_AND_VECTORS, "gaxpy", "products/gaxpy.h", "vector_products_plus",
                  formula="{dst[i]} = (sum over l of {src1[i,l]} * {src2[l]}) + {src3[i]}", result="v", reads=ADDED,
                  shape="MatrixShape{src1Width, src1Height}", match="src1Width == src2Length && src1Height == src3Length",
                  estimate=estimate, limits=PLUS_LIMITS, order=ORDER)


FAMILIES = [
    matrices("mm", SINGLE, MM),
    matrices("mt", SINGLE, MT),
    matrices("tm", SINGLE, TM),
    matrices("tt", SINGLE, TT),
    matrices("mam", ARRAY, MM, ARRAY_BY_ONE),
    matrices("mat", ARRAY, MT, ARRAY_BY_ONE),
    matrices("tam", ARRAY, TM, ARRAY_BY_ONE),
    matrices("tat", ARRAY, TT, ARRAY_BY_ONE),
    matrices("mma", ARRAY, MM, ONE_BY_ARRAY),
    matrices("mta", ARRAY, MT, ONE_BY_ARRAY),
    matrices("tma", ARRAY, TM, ONE_BY_ARRAY),
    matrices("tta", ARRAY, TT, ONE_BY_ARRAY),
    matrices("mama", ARRAY, MM, TWO_ARRAYS),
    matrices("mata", ARRAY, MT, TWO_ARRAYS),
    matrices("tama", ARRAY, TM, TWO_ARRAYS),
    matrices("tata", ARRAY, TT, TWO_ARRAYS),

    vectors("mv", SINGLE, MV),
    vectors("tv", SINGLE, TV),
    vectors("mva", ARRAY, MV, ONE_BY_VECTORS),
    vectors("tva", ARRAY, TV, ONE_BY_VECTORS),
    vectors("mav", ARRAY, MV, ARRAY_BY_VECTOR),
    vectors("tav", ARRAY, TV, ARRAY_BY_VECTOR),
    vectors("mava", ARRAY, MV, ARRAY_BY_VECTORS),
    vectors("tava", ARRAY, TV, ARRAY_BY_VECTORS),

    plus("mv",   SINGLE),
    plus("mva",  ARRAY, "(src1Width + 2 * src1Height) * count"),
    plus("mvav", ARRAY, "src1Width * count + src1Height * (count + 1)"),
]
# fmt: on
