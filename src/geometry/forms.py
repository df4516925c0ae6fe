"""The functions of fixed size: vectors of 2, 3 or 4 elements, 4 by 4 matrices, transforms, projection, curves.

They have no layouts, no strides between elements and, but for two of them, no checks. One form of the general
grammar stands among them: the homogeneous transform of an array of vectors, with strides, checks and a driver.
"""

from fixed import Fixed
from grammar import Core, Family, up_to

GROUPS = {
    "fixed_vectors": """Vectors of 2, 3 or 4 elements
A `v2`, `v3` or `v4` vector is that many `float` one behind the other, at any address. Nothing is read or written
beyond them: a `v3` function touches no fourth element.

Sums of products run from element 0 upwards, each product and each sum rounded to `float`. A length is the square root, in
double precision, of such a sum, rounded to `float`; the sum may overflow or lose bits where the length would not. Beyond the
scales of docs/ranges.md scale a vector by a power of 2 before its length is taken or made 1.

Overlap: dst may be a source, but for the cross products, whose dst must not overlap a source.

Status: ::korStatusOk, always. There are no checks: a null pointer is a fault, and a vector of zeros normalises to NaNs.
""",
    "fixed_constructors": """Constructors of 4 by 4 matrices
A matrix is 16 `float` one behind the other, row by row: m[4*r + c] is row r, column c. Vectors are rows and stand on
the left: a point p goes to p*M, so that A*B means first A, then B; a translation stands in the last row. LH and RH
name the hand of the coordinates in front of the viewer: he looks along +z in LH, along -z in RH. Both map the depth
from 0 at `zNear` to 1 at `zFar`.

Angles are in radians. dst is always written in full, elements not named here with 0. dst may overlap `axis`, `eye`,
`at` or `up`.

Status: ::korStatusOk, always. There are no checks: planes at the same depth, a width of 0 or an axis of zeros
give infinities or NaNs, as the divisions do.
""",
    "fixed_matrices": """Algebra of 4 by 4 matrices
A matrix is 16 `float` one behind the other, row by row, at any address.

Overlap: dst may be a source; all is read before the first element is written.

Status: ::korStatusOk. `kormMul_mm4x4_32f` alone looks for null pointers and gives ::korStatusNullPointer.
`kormInvert_m4_32f` gives ::korStatusSingular for a determinant below 2^-119 (1.5046e-36) in magnitude: `det`, if it isn't
null, is then 0 and dst is left as it was. Of matrices far from 1 in scale it gives infinities or NaN with ::korStatusOk, as
at 1e-5 times the identity, and `kormDet_m4_32f` zero or infinity: docs/ranges.md has the limits, beyond which a matrix is to
be scaled by a power of 2 first.
""",
    "transforms": """Transforms of points and directions
A matrix m is 16 `float`, row by row; vectors are rows and stand on its left. The plain forms give all four elements of
the product, of points too (w is 1, z of a `v2` is 0): dst has room for four. Coord forms divide by the fourth and
lose it, Normal forms leave the translation out and lose it as well.

Batches (`m4v2a`, `m4v3a`, `m4v4a`) take vectors at any distances in bytes, zero, negative and odd ones too; nothing
between the vectors is touched. A `count` below 1 does nothing. Results are those of the single form, to the bit.

Overlap: dst may be the source vector, in a batch the source vectors if the strides agree. In any other overlap of the
two the vectors of a batch are done one by one, in ascending order. dst must not overlap the matrix.

Status: ::korStatusOk, always, with no checks; a fourth element of zero gives infinities or NaNs.

`kormAffineTransform3DH_mva_32f` alone is a form of the general grammar: vectors are columns and stand on the right of
a matrix with strides, arguments are checked, long calls are spread over threads. A vector whose fourth element is not
above the smallest normal number (1.1754944e-38) in magnitude, or is NaN, gives three times the largest number
(3.4028235e38); all others are still done, and the call then returns ::korStatusDivideByZero. Overlap is as in a batch
for calls on one thread; on several, vectors that overlap others leave dst undefined.
""",
    "projection": """Points to a viewport and back
A point goes through `world`, `view` and `projection`, is divided by its fourth element, and the square from -1 to 1 is
stretched over a viewport with its origin at 0, 0. There y runs downwards: (-1, 1) goes to (0, 0) and (1, -1) to
(`viewportWidth`, `viewportHeight`). A depth of 0 goes to `minZ`, of 1 to `maxZ`.

The batches multiply the three matrices first and so may differ from the single forms in the last bits. Vectors lie
at any distances in bytes, zero, negative and odd ones too. A `count` below 1 does nothing.

Overlap: dst may be the source vector, in a batch the source vectors if the strides agree. In any other overlap of the
two the vectors of a batch are done one by one, in ascending order. dst must not overlap a matrix.

Status: ::korStatusOk, with no checks; a fourth element of zero gives infinities or NaNs. Unproject gives
::korStatusSingular if the product of the matrices has no inverse: dst of the single form then holds the point in
normalised coordinates, the batch leaves dst as it was.
""",
    "curves": """Curves and interpolation
A point between given points, for vectors of 2, 3 or 4 `float` one behind the other. Parameters outside 0 to 1
extrapolate.

Overlap: dst may be a source.

Status: ::korStatusOk, always, with no checks.
""",
}


def named(declared, names):
    return {name: declared for name in names.split()}


ARGUMENTS = {
    **named("const float *", "src src1 src2 src3 src4 axis eye at up projection view world"),
    **named("float *", "dst det"),
    **named("float", "val f g t x y z angle yaw pitch roll viewWidth viewHeight left right bottom top"),
    **named("float", "zNear zFar fovY aspect viewportWidth viewportHeight minZ maxZ"),
    **named("int32_t", "srcStride src2Stride dstStride count"),
}

ALL = "v2 v3 v4"
ONE, TWO, THREE, FOUR = "src dst", "src1 src2 dst", "src1 src2 src3 dst", "src1 src2 src3 src4"
BATCH = "src1 src2 src2Stride dst dstStride count"
VIEWPORT = "viewportWidth viewportHeight minZ maxZ dst"
VIEW_SIZE, OFF_CENTER = "viewWidth viewHeight zNear zFar dst", "left right bottom top zNear zFar dst"
FIELD_OF_VIEW = "fovY aspect zNear zFar dst"


def fixed(group, source, operation, operands, signature, kernel, formula, **rest):
    return Fixed(operation, operands, signature, kernel, f"geometry/{source}.h", group, formula,
                 rest.pop("arguments", ARGUMENTS), **rest)


def vector(*row, **rest):
    return fixed("fixed_vectors", "vectors", *row, **rest)


def constructor(*row):
    return fixed("fixed_constructors", "constructors", *row)


def viewing(*row):
    return fixed("fixed_constructors", "viewing", *row)


def matrix(*row, **rest):
    return fixed("fixed_matrices", "matrices", *row, **rest)


def transform(*row):
    return fixed("transforms", "transforms", *row)


def curve(*row):
    return fixed("curves", "curves", *row)


# fmt: off
CORES = [
    Core("The inverse by the adjugate. Row strides in bytes; `det` may be null. korStatusSingular leaves `dst` alone.", "invertAdjugate4",
         "const {scalar}* src, std::int32_t srcRowStride, {scalar}* det, {scalar}* dst, std::int32_t dstRowStride",
         "own3dkormInvert_m_{element}_4x4", "geometry/adjugate.h", types="32f"),
    Core("src1 * src2 of contiguous 4 by 4 matrices; `dst` may be one of them.", "multiply4",
         "const {scalar}* src1, const {scalar}* src2, {scalar}* dst",
         "ownMulMat_{element}", "geometry/matrices.h", returns="void", types="32f"),
    Core("16 doubles, each rounded to float.", "roundToFloats", "const double* src, {scalar}* dst",
         "own3dConvert64f{element}_16", "geometry/unproject.h", returns="void", types="32f"),
]

FAMILIES = [
    vector("Add", ALL, TWO, "addVectors<{n}>", "dst[i] = src1[i] + src2[i]"),
    vector("Sub", ALL, TWO, "subtractVectors<{n}>", "dst[i] = src1[i] - src2[i]"),
    vector("Min", ALL, TWO, "minElements<{n}>", "dst[i] = src1[i] if that is below src2[i], else src2[i]"),
    vector("Max", ALL, TWO, "maxElements<{n}>", "dst[i] = src1[i] if that is above src2[i], else src2[i]"),
    vector("MulC", ALL, "src val dst", "scaleVector<{n}>", "dst[i] = src[i] * val"),
    vector("DotProduct", ALL, TWO, "dotProduct<{n}>", "dst[0] = src1[0]*src2[0] + src1[1]*src2[1] + ..."),
    vector("LenSqr", ALL, ONE, "squaredLength<{n}>", "dst[0] = src[0]*src[0] + src[1]*src[1] + ..."),
    vector("Len", ALL, ONE, "length<{n}>", "dst[0] = the length of src"),
    vector("Normalize", ALL, ONE, "normalize<{n}>", "dst[i] = src[i] / the length of src"),
    vector("CrossProduct", "v2", TWO, "crossProduct2", "dst[0] = src1[0]*src2[1] - src1[1]*src2[0]; a single value"),
    vector("CrossProduct", "v3", TWO, "crossProduct3", "dst = src1 x src2"),
    vector("CrossProduct", "v4", THREE, "crossProduct4", "dst = a vector orthogonal to src1, src2 and src3"),

    constructor("Identity", "m4", "dst", "identity", "the identity"),
    constructor("Translation", "m4", "x y z dst", "translation", "moves by (x, y, z)"),
    constructor("Scaling", "m4", "x y z dst", "scaling", "stretches by x, y and z along the axes"),
    constructor("RotationX", "m4", "angle dst", "rotationX", "turns about x, from y to z"),
    constructor("RotationY", "m4", "angle dst", "rotationY", "turns about y, from z to x"),
    constructor("RotationZ", "m4", "angle dst", "rotationZ", "turns about z, from x to y"),
    constructor("RotationYawPitchRoll", "m4", "yaw pitch roll dst", "rotationYawPitchRoll", "turns about z by roll, then about x by pitch, then about y by yaw"),
    constructor("RotationAxis", "v3m4", "axis angle dst", "rotationAxis", "turns about an axis of any length but 0"),
    viewing("LookAtLH", "m4", "eye at up dst", "lookAt<Hand::left>", "from the world to a viewer at eye who looks to at, along +z"),
    viewing("LookAtRH", "m4", "eye at up dst", "lookAt<Hand::right>", "from the world to a viewer at eye who looks to at, along -z"),
    viewing("OrthoLH", "m4", VIEW_SIZE, "ortho<Hand::left>", "parallel projection of a box about the z axis"),
    viewing("OrthoRH", "m4", VIEW_SIZE, "ortho<Hand::right>", "parallel projection of a box about the z axis"),
    viewing("OrthoOffCenterLH", "m4", OFF_CENTER, "orthoOffCenter<Hand::left>", "parallel projection of any box"),
    viewing("OrthoOffCenterRH", "m4", OFF_CENTER, "orthoOffCenter<Hand::right>", "parallel projection of any box"),
    viewing("PerspectiveLH", "m4", VIEW_SIZE, "perspective<Hand::left>", "central projection; the size is that of the view at zNear"),
    viewing("PerspectiveRH", "m4", VIEW_SIZE, "perspective<Hand::right>", "central projection; the size is that of the view at zNear"),
    viewing("PerspectiveFovLH", "m4", FIELD_OF_VIEW, "perspectiveFov<Hand::left>", "central projection; aspect is width over height"),
    viewing("PerspectiveFovRH", "m4", FIELD_OF_VIEW, "perspectiveFov<Hand::right>", "central projection; aspect is width over height"),
    viewing("PerspectiveOffCenterLH", "m4", OFF_CENTER, "perspectiveOffCenter<Hand::left>", "central projection; the borders are those of the view at zNear"),
    viewing("PerspectiveOffCenterRH", "m4", OFF_CENTER, "perspectiveOffCenter<Hand::right>", "central projection; the borders are those of the view at zNear"),

    matrix("Det", "m4", ONE, "determinant4", "dst[0] = the determinant of src"),
    matrix("Invert", "m4", "src det dst", "invert4", "dst = the inverse of src; det may be null, else receives the determinant", fails=True),
    matrix("Transpose", "m4", ONE, "transpose4", "dst = the transpose of src"),
    matrix("Mul", "mm4x4", TWO, "multiply4", "dst = src1 * src2", checks="N"),
    matrix("MulTranspose", "m4", TWO, "multiplyTransposed4", "dst = the transpose of src1 * src2"),
    matrix("IsIdentity", "m4", ONE, "isIdentity4", "dst[0] = 1 if src[0] is 1 and a column of src is that of the identity, else 0",
           arguments={**ARGUMENTS, "dst": "int32_t *"}),

    transform("AffineTransform", "m4v2 m4v3 m4v4", TWO, "transformOne<Affine<{n}>>", "dst = src2 * src1, four elements"),
    transform("AffineTransform", "m4v2a m4v3a m4v4a", BATCH, "transformAll<Affine<{n}>>", "dst(k) = src2(k) * src1, four elements"),
    transform("AffineTransformCoord", "m4v2 m4v3", TWO, "transformOne<Coord<{n}>>", "dst = src2 * src1, divided by the fourth element"),
    transform("AffineTransformCoord", "m4v2a m4v3a", BATCH, "transformAll<Coord<{n}>>", "dst(k) = src2(k) * src1, divided by the fourth element"),
    transform("AffineTransformNormal", "m4v2 m4v3", TWO, "transformOne<Normal<{n}>>", "dst = src2 * src1 without the translation"),
    transform("AffineTransformNormal", "m4v2a m4v3a", BATCH, "transformAll<Normal<{n}>>", "dst(k) = src2(k) * src1 without the translation"),
    Family("AffineTransform3DH", "mva", "-", "src1 src2 dst count", "transform3DH", "geometry/homogeneous.h", "transforms",
           "dst(k) = src1 * (src2(k), 1) with vectors as columns, divided by the fourth element",
           types="32f", result="v", merges_status=True, estimate="6 * count", limits={("standard", "32f"): up_to(784)}),

    fixed("projection", "projection", "Project", "m4v3", "projection view world src " + VIEWPORT, "projectOne", "dst = src on the viewport"),
    fixed("projection", "projection", "Project", "m4v3a", "projection view world src srcStride " + VIEWPORT + " dstStride count", "projectAll", "dst(k) = src(k) on the viewport"),
    fixed("projection", "unproject", "Unproject", "m4v3", "projection view world src " + VIEWPORT, "unprojectOne", "dst = the point that Project puts to src", fails=True),
    fixed("projection", "unproject", "Unproject", "m4v3a", "projection view world src srcStride " + VIEWPORT + " dstStride count", "unprojectAll", "dst(k) = the point that Project puts to src(k)", fails=True),

    curve("BaryCentric", ALL, "src1 src2 src3 f g dst", "baryCentric<{n}>", "dst = src1 + f*(src2 - src1) + g*(src3 - src1)"),
    curve("InterpolationLinear", ALL, "src1 src2 t dst", "linear<{n}>", "dst = src1 + (src2 - src1)*t"),
    curve("Hermite", ALL, FOUR + " t dst", "hermite<{n}>", "dst = the cubic from src1 to src3 with the tangents src2 and src4"),
    curve("InterpolationCatmullRom", ALL, FOUR + " t dst", "catmullRom<{n}>", "dst = the cubic from src2 to src3 with tangents from the neighbours src1 and src4"),
]
# fmt: on
