"""The forms of movement: between layouts, into a packed block, identity matrices, transposition.

None has a driver: all run on the calling thread, whatever their size.
"""

from grammar import Core, Departure, Family

GROUPS = {
    "copy": """Copies between layouts
dst = src, element by element, for arrays of matrices or vectors. The two letters that end a name are the layouts of
source and result: `S` standard, `L` list, `P` pointer.

Elements move as bits, so that every NaN arrives as it was.

A call of one object doesn't look at object strides.

Overlap: any. Objects, rows and elements move in ascending order, each element is written before the next is read, and
an entry of a list or table is read when its turn comes. So a result that begins inside its source, behind it, repeats
what it has written.

Status: ::korStatusOk, ::korStatusNullPointer, ::korStatusBadSize, ::korStatusBadCount, ::korStatusBadStride; forms with
a list or table ::korStatusBadOffset. Other than with ::korStatusOk nothing is written.
""",
    "extract": """Extraction into a packed block
The objects of src, one behind the other without gaps: element (i, j) of object k goes to
dst[k*width*height + i*width + j], element j of vector k to dst[k*length + j]. dst has no strides in any layout.

Shapes: `width` and `height` are those of the result; a transposed matrix is stored with `width` rows and `height`
columns.

Elements move as bits. Unlike in `Copy`, object strides are looked at in a call of one object too.

Overlap: any. Standard and list forms move objects, rows and elements in ascending order, pointer forms entry by entry as
the table has them, for each object by object; each element is written before the next is read.

Status: ::korStatusOk, ::korStatusNullPointer, ::korStatusBadSize, ::korStatusBadStride; array forms
::korStatusBadCount; list and pointer forms ::korStatusBadOffset. Other than with ::korStatusOk nothing is written.
""",
    "load_identity": """Identity matrices
Each matrix of dst gets 1 on its diagonal, which ends at the shorter side, and 0 everywhere else.

A call of one object doesn't look at the object stride.

Status: ::korStatusOk, ::korStatusNullPointer, ::korStatusBadSize, ::korStatusBadCount, ::korStatusBadStride; list and
pointer forms ::korStatusBadOffset. Other than with ::korStatusOk nothing is written.
""",
    "transpose": """Transposition
dst(j, i) = src(i, j), for a matrix or each matrix of an array. Elements move as bits.

Shapes: `width` and `height` are those of src; dst has `width` rows of `height` columns, and in the pointer layout its
table is row by row in that shape.

Overlap: dst and src must not overlap, square matrices neither.

Status: ::korStatusOk, ::korStatusNullPointer, ::korStatusBadSize, ::korStatusBadStride; array forms
::korStatusBadCount; list and pointer forms ::korStatusBadOffset. Other than with ::korStatusOk nothing is written.
""",
}

ARRAY, SINGLE = "- L P", "- P"  # layout suffixes: an array form has all three, a single object no list
PAIRS = "SS SP SL PS PP PL LS LP LL"

MOVE = dict(source="move/move.h", entry_only=True)
COPY = dict(kernel="copy", group="copy", **MOVE, order="N S C T:inner O T:objects", order_departures=[
    Departure("Copy_va_32f_SP Copy_va_32f_LP", "N S C O T:inner T:objects", "offsets before strides, unlike in 64f"),
])
EXTRACT = dict(kernel="extract", group="extract", result="block", **MOVE, order="N S C O T", order_departures=[
    Departure("Extract_m_??f_P Extract_t_??f_P Extract_v_64f_P", "S N O", "the sizes first"),
])
IDENTITY = dict(kernel="loadIdentity", group="load_identity", result="m", **MOVE,
                order="N S C T:inner O T:objects", order_departures=[
    Departure("LoadIdentity_ma_32f_P", "N S O C T:objects", "offsets before the count"),
])

TRANSPOSE = dict(kernel="transpose", source="move/transpose.h", group="transpose", result_width="height",
                 formula="{dst[j,i]} = {src[i,j]}")

STRIP = ("const std::byte* src, std::int32_t srcRowStride, std::byte* dst, std::int32_t dstRowStride, "
         "std::int32_t width, std::int32_t height")
CORES = [
    Core("The transpose of one matrix.", "turnMatrix", STRIP + ", bool beyondCache", "ownm_Transpose_32s",
         "move/strips.h", returns="void", types="32f"),
    Core("Of up to 32 of its rows.", "turnStrip", STRIP, "owniTranspose_32s_asm", "move/strips.h", returns="void",
         types="32f"),
    Core("The same past the caches.", "streamStrip", STRIP, "owniTranspose_32s_NT", "move/strips.h", returns="void",
         types="32f"),
]

# fmt: off
FAMILIES = [
    Family("Copy", "ma", PAIRS, "src dst width height count", formula="{dst[i,j]} = {src[i,j]}", **COPY),
    Family("Copy", "va", PAIRS, "src dst length count", formula="{dst[j]} = {src[j]}", **COPY),

    Family("Extract", "m t",   SINGLE, "src dst width height", formula="dst[i*width + j] = {src[i,j]}", **EXTRACT),
    Family("Extract", "ma ta", ARRAY,  "src dst width height count", formula="dst[(k*height + i)*width + j] = {src[i,j]}", **EXTRACT),
    Family("Extract", "v",     SINGLE, "src dst length", formula="dst[j] = {src[j]}", **EXTRACT),
    Family("Extract", "va",    ARRAY,  "src dst length count", formula="dst[k*length + j] = {src[j]}", **EXTRACT),

    Family("LoadIdentity", "ma", ARRAY, "dst width height count", reads={"ma": ""}, formula="{dst[i,j]} = i == j ? 1 : 0", **IDENTITY),

    Family("Transpose", "m",  SINGLE, "src width height dst", **TRANSPOSE),
    Family("Transpose", "ma", ARRAY,  "src width height dst count", **TRANSPOSE),
]
# fmt: on
