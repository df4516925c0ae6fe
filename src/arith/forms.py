"""The forms of element-wise arithmetic: sums, differences and scaling of matrices and vectors.

One row names the operand words of an operation that share an estimate and its limits. A limit tells
which estimates stay serial: below(n), or up_to(n) which includes n. A second number is the limit for
calls with an element stride other than the element size.
"""

from grammar import ARRAY, SINGLE, Departure, Family, below, limits, up_to

PLUS, MINUS, TIMES = "elementwise<Plus>", "elementwise<Minus>", "elementwise<Times>"

GROUPS = {
    "matrix_sums": """Sums and differences of matrices
dst = first + second or first - second, element by element, in the order of the operands in the name:
`kormSub_mma_32f` subtracts each matrix of an array from one matrix, `kormSub_mam_32f` one matrix from each.
`Add` has no forms that only swap the operands of another.

Shapes: `width` and `height` are those of the result and of the operands as they are read; a transposed
operand is stored with `width` rows and `height` columns.

Overlap: dst may be an untransposed source, at the same place with the same strides (in a list call object by
object, in a pointer call table entry by table entry). Any other overlap of dst and a source leaves dst undefined.

Status: ::korStatusOk, ::korStatusNullPointer, ::korStatusBadSize, ::korStatusBadStride; array forms
::korStatusBadCount; list and pointer forms ::korStatusBadOffset. Other than with ::korStatusOk nothing is written.
Each element is one rounded operation; a NaN stays in its element.
""",
    "vector_sums": """Sums and differences of vectors
dst = first + second or first - second, element by element, in the order of the operands in the name.

Shapes: all vectors have `length` elements.

Overlap: dst may be a source, at the same place with the same strides. Two single vectors in standard layout with
adjacent elements and more than 6 of them may overlap in any way: elements are then done in ascending order, one by
one. Any other overlap of dst and a source leaves dst undefined.

Status: ::korStatusOk, ::korStatusNullPointer, ::korStatusBadSize, ::korStatusBadStride; array forms
::korStatusBadCount; list and pointer forms ::korStatusBadOffset. Other than with ::korStatusOk nothing is written.
""",
    "scaling": """Arithmetic with constants
A constant is added to, subtracted from or multiplied with the elements of a vector or matrix; `Sub` also has forms
with the constant as the minuend, whose names begin with it. One constant serves all objects (`c`, by value) or each
object has its own (`ca`). The arguments of the vector come first, those of the constant second, whatever the name.

Shapes: `width` and `height` are those of the result, a transposed matrix is stored with `width` rows and `height`
columns; vectors have `length` elements.

Overlap: dst may be an untransposed source, at the same place with the same strides. A single vector in standard
layout with adjacent elements and more than 6 of them may overlap dst in any way: elements are then done in
ascending order, one by one. Any other overlap of dst and a source, constants included, leaves dst undefined.

Status: ::korStatusOk, ::korStatusNullPointer, ::korStatusBadSize, ::korStatusBadStride; array forms
::korStatusBadCount; list and pointer forms ::korStatusBadOffset. Other than with ::korStatusOk nothing is written.
`kormAdd_vca_64f_P` and `kormSub_cav_32f_P` take any offset, negative and odd ones too.
""",
}

LIGHT = {"merges_status": True, "light": True}  # of single objects: a status is that of sizes

MATRICES = "src1 src2 dst width height count"
VECTORS = "src1 src2 dst length count"
SCALED_MATRIX = "src val dst width height count"
SCALED_VECTOR = "src val dst length count"  # also where the name begins with the constant


# fmt: off
#                     standard 32f       standard 64f       list 32f           list 64f           pointer
MATRIX_SUM = limits(  below(3000, 2000), below(2000),       below(2000),       below(2000),       below(2000))
VECTOR_SUM = limits(  up_to(4800),       up_to(1400),       up_to(2500),       up_to(2500),       up_to(1500))
COUNT_ONLY = limits(  below(4800),       below(1400),       below(2500),       below(2500),       below(1500))
SCALE_BY_EACH = limits(up_to(2100),      up_to(2100),       up_to(1200),       up_to(1200),       up_to(650))
SCALE_VECTOR = limits(below(2501, 1441), below(3601, 1441), below(3601, 1441), below(3601, 1441), below(1441))
SCALE_MATRIX = limits(below(3501),       below(3501),       below(3501, 1501), below(3501),       below(1701))

ONE_ARRAY = "width * height * (2 * count + 1)"  # each element of an array is moved once, the single one once
TWO_ARRAYS = "3 * width * height * count"

ORDERS = [  # forms whose checks come in an order of their own
    Departure("Add_mam_??f Sub_mam_??f Sub_mma_??f", "N C T S", "strides before sizes, in the standard layout alone"),
    Departure("Add_vav_??f Sub_vav_??f", "N S T C", "count last"),
    Departure("Add_vav_??f_L Sub_vav_??f_L", "N S T O C", "count last"),
    Departure("Add_vav_??f_P Sub_vav_??f_P", "N S T C O", "count late, but before the offsets"),
    Departure("Add_vca_64f_P Sub_cav_32f_P", "N C S T", "any offset is taken, unlike in the other type's form"),
]
SERIAL = [Departure("Sub_vva_64f_P", None, "always runs its kernel; the 32f form alone has a driver")]


def family(group, operation, operands, layouts, signature, kernel, **rest):
    return Family(operation, operands, layouts, signature, kernel, "arith/elementwise.h", group,
                  order_departures=ORDERS, serial_departures=SERIAL, **rest)


FAMILIES = [
    family("matrix_sums", "Add", "mm tm tt", SINGLE, MATRICES, PLUS, **LIGHT),
    family("matrix_sums", "Sub", "mm mt tm tt", SINGLE, MATRICES, MINUS, **LIGHT),
    family("matrix_sums", "Add", "mam mat tam tat", ARRAY, MATRICES, PLUS, estimate=ONE_ARRAY, limits=MATRIX_SUM),
    family("matrix_sums", "Sub", "mam mat tam tat mma mta tma tta", ARRAY, MATRICES, MINUS, estimate=ONE_ARRAY, limits=MATRIX_SUM),
    family("matrix_sums", "Add", "mama tama tata", ARRAY, MATRICES, PLUS, estimate=TWO_ARRAYS, limits=MATRIX_SUM),
    family("matrix_sums", "Sub", "mama mata tama tata", ARRAY, MATRICES, MINUS, estimate=TWO_ARRAYS, limits=MATRIX_SUM),

    family("vector_sums", "Add", "vv", SINGLE, VECTORS, PLUS, **LIGHT),
    family("vector_sums", "Sub", "vv", SINGLE, VECTORS, MINUS, **LIGHT),
    family("vector_sums", "Add", "vav", ARRAY, VECTORS, PLUS, estimate="(2 * count + 1) * length", limits=VECTOR_SUM),
    family("vector_sums", "Sub", "vav vva", ARRAY, VECTORS, MINUS, estimate="(2 * count + 1) * length", limits=VECTOR_SUM),
    family("vector_sums", "Add", "vava", ARRAY, VECTORS, PLUS, estimate="3 * length * count", limits=VECTOR_SUM),
    family("vector_sums", "Sub", "vava", ARRAY, VECTORS, MINUS, estimate="3 * length * count", limits=VECTOR_SUM),

    family("scaling", "Add", "vc", SINGLE, SCALED_VECTOR, PLUS, **LIGHT),
    family("scaling", "Sub", "vc cv", SINGLE, SCALED_VECTOR, MINUS, **LIGHT),
    family("scaling", "Mul", "vc", SINGLE, SCALED_VECTOR, TIMES, **LIGHT),
    family("scaling", "Mul", "mc tc", SINGLE, SCALED_MATRIX, TIMES, **LIGHT),
    family("scaling", "Add", "vac", ARRAY, SCALED_VECTOR, PLUS, estimate="(2 * count + 1) * length", limits=VECTOR_SUM),
    family("scaling", "Sub", "vac", ARRAY, SCALED_VECTOR, MINUS, estimate="(2 * count + 1) * length", limits=VECTOR_SUM),
    family("scaling", "Add", "vaca", ARRAY, SCALED_VECTOR, PLUS, estimate="(2 * length + 1) * count", limits=VECTOR_SUM),
    family("scaling", "Sub", "vaca cava", ARRAY, SCALED_VECTOR, MINUS, estimate="(2 * length + 1) * count", limits=VECTOR_SUM),
    family("scaling", "Add", "vca", ARRAY, SCALED_VECTOR, PLUS, estimate="length * (count + 1) + count", limits=VECTOR_SUM),
    family("scaling", "Sub", "vca cav", ARRAY, SCALED_VECTOR, MINUS, estimate="length * (count + 1) + count", limits=VECTOR_SUM),
    family("scaling", "Sub", "cva", ARRAY, SCALED_VECTOR, MINUS, estimate="2 * count", limits=COUNT_ONLY),  # whatever the length
    family("scaling", "Mul", "vaca", ARRAY, SCALED_VECTOR, TIMES, estimate="(2 * length + 1) * count", limits=SCALE_BY_EACH),
    family("scaling", "Mul", "vca", ARRAY, SCALED_VECTOR, TIMES, estimate="length * (count + 1) + count", limits=SCALE_BY_EACH),
    family("scaling", "Mul", "vac", ARRAY, SCALED_VECTOR, TIMES, estimate="2 * length * count", limits=SCALE_VECTOR),
    family("scaling", "Mul", "mac tac", ARRAY, SCALED_MATRIX, TIMES, estimate="2 * width * height * count", limits=SCALE_MATRIX),
]
# fmt: on
