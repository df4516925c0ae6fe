"""The forms of vectors: combinations with constants, and reductions to numbers and to vectors of three.

The order of the additions of a dot product or norm depends on kernel and length; REDUCTIONS and NORMS tell which kernel
has which orders, src/vectors/sums.h what these are.
"""

from grammar import ARRAY, SINGLE, Departure, Family, Variant, below, limits, up_to

GROUPS = {
    "vector_combinations": """Combinations of vectors
`kormSaxpy` computes dst = src1 * val + src2, `kormLComb` dst = src1 * val1 + src2 * val2, element by element. The constants
are passed by value and serve all objects.

Shapes: all vectors have `length` elements.

Sums: products and sums are rounded to the element type, one after the other.

Overlap: dst may be a source, at the same place with the same strides. Two single vectors in standard layout with adjacent
elements and more than 6 of them may overlap in any way: elements are then done in ascending order, one by one. Any other
overlap of dst and a source leaves dst undefined.

Status: ::korStatusOk, ::korStatusNullPointer, ::korStatusBadSize, ::korStatusBadStride; array forms
::korStatusBadCount; list and pointer forms ::korStatusBadOffset. Other than with ::korStatusOk nothing is written.
""",
    "vector_reductions": """Dot products and norms
`kormDotProduct` adds the products of the elements of two vectors, `kormL2Norm` is the square root of the sum of the squares
of a vector's elements. A single form writes one element, an array form one for each object, in a row: dst has no strides in
any layout.

Shapes: all vectors have `length` elements.

Sums: every product and every addition is rounded to the element type. For one form, length, layout and choice of strides the
order of additions is fixed, with one thing more to know: vectors of 8 or more adjacent elements are added in an order that
depends on the address of src2 (`kormL2Norm`: of src) modulo 16 bytes. An object of an array gives what it would give alone.
docs/numerics.md shows all orders.

Scale: squares are formed as they are. A large vector's norm is infinity, a small one's zero or a number with few bits, with
::korStatusOk. Beyond the scales of docs/ranges.md scale the vector by a power of 2 first, and the norm back.

Overlap: dst must not overlap a source.

Status: ::korStatusOk, ::korStatusNullPointer, ::korStatusBadSize, ::korStatusBadStride; array forms
::korStatusBadCount; list and pointer forms ::korStatusBadOffset. Other than with ::korStatusOk nothing is written.
""",
    "cross_products": """Cross products
dst = src1 x src2, in a right-handed system. There is no length: every vector has three elements.

Overlap: dst may be a source, at the same place with the same strides. Any other overlap of dst and a source leaves dst
undefined.

Status: ::korStatusOk, ::korStatusNullPointer, ::korStatusBadStride; array forms ::korStatusBadCount; list and pointer forms
::korStatusBadOffset. Other than with ::korStatusOk nothing is written. Each product and each difference is rounded.
""",
}

SAXPY = "src1 val src2 dst length count"
LCOMB = "src1 val1 src2 val2 dst length count"
DOT = "src1 src2 dst length count"
CROSS = "src1 src2 dst count"  # every vector has three elements
L2NORM = "src dst length count"


def by_layout(strides, table):
    """Limits that are the same for both types: of standard and list layout, and of the pointer layout."""
    return limits(strides, strides, strides, strides, table)


# fmt: off
#                        standard 32f       standard 64f       list 32f           list 64f           pointer 32f  pointer 64f
SAXPY_LIMITS     = limits(below(3001, 2001), below(3001, 1201), below(1501, 1001), below(1001),       below(1201), below(1201))
SAXPY_VVA_LIMITS = limits(below(3001, 2001), below(3001, 1201), below(1501),       below(1001),       below(1201), below(1201))
LCOMB_LIMITS     = limits(below(4501),       below(4501),       below(4501, 3751), below(4501),       below(4501), below(4501))
DOT_LIMITS       = limits(below(5001, 2621), below(3501, 2001), below(2401),       below(4201, 3301), below(2401), below(2001))
L2NORM_LIMITS    = by_layout(below(1501), below(1501))
CROSS_LIMITS     = by_layout(up_to(2999), below(3000))  # the same in effect, told as each layout compares
CROSS_TWO_LIMITS = by_layout(up_to(3000), below(3001))

ONE_ARRAY = "(2 * count + 1) * length"  # each element of an array is moved once, the single one once
TWO_ARRAYS = "3 * length * count"

ORDERS = [  # forms whose checks come in an order of their own
    Departure("CrossProduct_vav_??f", "N T C", "count last"),
    Departure("CrossProduct_vav_??f_L", "N T O C", "count last"),
    Departure("CrossProduct_vav_??f_P", "N T C O", "count late, but before the offsets"),
]
SERIAL = [Departure("CrossProduct_vva_64f_P", None, "always runs its kernel; the 32f form alone has a driver")]

# Kernels, by operands and suffix; the orders of lengths 3 to 6; the order of other short ones; that of 8 and more.
def sums(kernels, four_to_six, short, long):
    return Variant(kernels, f"lengths::{four_to_six}, lengths::{short}, lengths::{long}")

REDUCTIONS = [
    sums("*_32f *_32f_L",      "left_to_right", "zero_start", "aligned"),
    sums("*_64f *_64f_L",      "halves",        "zero_start", "aligned"),
    sums("*_32f_S2 *_32f_LS2", "middle_first",  "twos",       "twos"),
    sums("*_64f_S2 *_64f_LS2", "middle_first",  "zero_start", "eights_64f"),
    sums("*_P",                "left_to_right", "descending", "eights_in_turn"),
]
NORMS = [
    sums("*_32f *_32f_L",      "in_pairs<lengths::left_to_right>", "zero_start", "aligned"),
    sums("*_32f_S2 *_32f_LS2", "in_pairs<lengths::middle_first>",  "twos",       "twos"),
    sums("*_32f_P",            "in_pairs<lengths::left_to_right>", "descending", "eights_in_turn"),
    *REDUCTIONS,
]

COMBINED = dict(source="vectors/combination.h", group="vector_combinations")
SCALED = dict(kernel="scaledSum", extras={"val": "element"}, formula="{dst[j]} = {src1[j]} * val + {src2[j]}", **COMBINED)
BOTH_SCALED = dict(kernel="linearCombination", extras={"val1": "element", "val2": "element"},
                   formula="{dst[j]} = {src1[j]} * val1 + {src2[j]} * val2", **COMBINED)
REDUCED = dict(source="vectors/reduction.h", group="vector_reductions", result="scalars")
DOTTED = dict(kernel="dotProduct<{}>", formula="{dst.object} = sum over j of {src1[j]} * {src2[j]}", variants=REDUCTIONS, **REDUCED)
ROOTED = dict(kernel="l2Norm<{}>", formula="{dst.object} = root of the sum over j of {src[j]}^2", variants=NORMS, **REDUCED)
CROSSED = dict(kernel="crossProduct", formula="{dst.object} = {src1.object} x {src2.object}", source="vectors/cross.h", group="cross_products", order_departures=ORDERS,
               serial_departures=SERIAL)

FAMILIES = [
    Family("Saxpy", "vv",   SINGLE, SAXPY, **SCALED),
    Family("Saxpy", "vav",  ARRAY,  SAXPY, **SCALED, estimate=ONE_ARRAY, limits=SAXPY_LIMITS),
    Family("Saxpy", "vva",  ARRAY,  SAXPY, **SCALED, estimate=ONE_ARRAY, limits=SAXPY_VVA_LIMITS),
    Family("Saxpy", "vava", ARRAY,  SAXPY, **SCALED, estimate=TWO_ARRAYS, limits=SAXPY_LIMITS),

    Family("LComb", "vv",   SINGLE, LCOMB, **BOTH_SCALED),
    Family("LComb", "vav",  ARRAY,  LCOMB, **BOTH_SCALED, estimate=ONE_ARRAY, limits=LCOMB_LIMITS),
    Family("LComb", "vava", ARRAY,  LCOMB, **BOTH_SCALED, estimate=TWO_ARRAYS, limits=LCOMB_LIMITS),

    Family("DotProduct", "vv",   SINGLE, DOT, **DOTTED),
    Family("DotProduct", "vav",  ARRAY,  DOT, **DOTTED, estimate="(count + 1) * length", limits=DOT_LIMITS),
    Family("DotProduct", "vava", ARRAY,  DOT, **DOTTED, estimate="2 * count * length", limits=DOT_LIMITS),

    Family("L2Norm", "v",  SINGLE, L2NORM, **ROOTED),
    Family("L2Norm", "va", ARRAY,  L2NORM, **ROOTED, estimate="length * count", limits=L2NORM_LIMITS),

    Family("CrossProduct", "vv",      SINGLE, CROSS, **CROSSED),
    Family("CrossProduct", "vav vva", ARRAY,  CROSS, **CROSSED, estimate="2 * count", limits=CROSS_LIMITS),
    Family("CrossProduct", "vava",    ARRAY,  CROSS, **CROSSED, estimate="3 * count", limits=CROSS_TWO_LIMITS),
]
# fmt: on
