"""What people want to do, and the function that does it: the table of docs/functions.md.

A form stands for all its layouts and for both element types. The size is that of the benchmark row whose time is shown.
"""

from dataclasses import dataclass


@dataclass
class Task:
    words: str
    calls: tuple          # forms without `korm` and the element type, in the order in which they are called
    size: str = "4"
    place: str = ""       # how the row's place begins, where there are several
    elements: tuple = ("32f", "64f")


def task(words, *calls, **more):
    return Task(words, calls, **more)


def fixed(words, *calls, size="", place=""):
    """A function of fixed size: of `float` alone."""
    return Task(words, calls, size, place, ("32f",))


# Family, the page that explains it, the unit of its times, its tasks.
TASKS = [
    ("Sums, differences and scaling", "arithmetic.md", "order or length 4, in cache", [
        task("add the matrices of two arrays, pair by pair", "Add_mama", place="cache"),
        task("add one matrix to each of an array, or subtract it from each", "Add_mam", place="cache"),
        task("subtract each matrix of an array from one matrix", "Sub_mma", place="cache"),
        task("add a matrix and the transpose of another", "Add_tama", place="cache"),
        task("multiply all matrices by a constant", "Mul_mac", place="cache"),
        task("add or subtract the vectors of two arrays", "Add_vava", place="cache"),
        task("move points: add one vector to each, or subtract it", "Add_vav", place="cache"),
        task("multiply all vectors by a constant", "Mul_vac", place="cache"),
        task("multiply each vector by a constant of its own", "Mul_vaca", place="cache"),
        task("subtract each vector from a constant, or a constant from each", "Sub_cva", place="cache"),
    ]),
    ("Products", "products.md", "order 4, in cache", [
        task("multiply the matrices of two arrays, pair by pair", "Mul_mama"),
        task("multiply each matrix by one matrix from the right", "Mul_mam"),
        task("multiply each matrix by one matrix from the left", "Mul_mma"),
        task("A B^T of one matrix with each of an array", "Mul_mata"),
        task("A^T B of two arrays, such as normal equations", "Mul_tama"),
        task("multiply two matrices of any size", "Mul_mm"),
        task("multiply each matrix by a vector of its own", "Mul_mava"),
        task("take all vectors through one matrix", "Mul_mva"),
        task("take one vector through each matrix", "Mul_mav"),
        task("the same with transposed matrices", "Mul_tava"),
        task("product with a vector, plus a vector", "Gaxpy_mva", place="cache"),
    ]),
    ("Vectors, traces and norms", "vectors.md", "length or order 4 (cross products 3), in cache", [
        task("a x + y", "Saxpy_vava", place="cache"),
        task("a x + b y", "LComb_vava", place="cache"),
        task("dot products, pair by pair", "DotProduct_vava", place="cache"),
        task("dot products with one vector", "DotProduct_vav", place="cache"),
        task("cross products", "CrossProduct_vava", size="3", place="cache"),
        task("Euclidean lengths", "L2Norm_va", place="cache"),
        task("traces of matrices", "Trace_ma", place="cache"),
        task("Frobenius norms of matrices", "FrobNorm_ma", place="cache"),
    ]),
    ("Movement", "movement.md", "order 4 (copies: 16 elements), in cache", [
        task("turn structures into streams, one for each element", "Copy_ma:SP", size="4x4", place="packed to streams cache"),
        task("turn streams into structures", "Copy_ma:PS", size="4x4", place="streams to packed cache"),
        task("gather objects that a list leads to, or scatter them", "Copy_ma:LS", size="4x4", place="list to packed cache"),
        task("pack parts of larger things into one block", "Extract_ma", place="strided cache"),
        task("fill an array with identities", "LoadIdentity_ma", place="cache"),
        task("transpose matrices", "Transpose_ma", place="cache"),
    ]),
    ("Systems of equations, inverses and determinants", "systems.md", "order 4 (least squares 6x6), shuffled", [
        task("solve a system for each matrix", "LUDecomp_ma", "LUBackSubst_mava", place="shuffled"),
        task("solve one matrix for many right-hand sides", "LUBackSubst_mva", place="shuffled"),
        task("solve symmetric positive definite systems", "CholeskyDecomp_ma", "CholeskyBackSubst_mava", place="shuffled"),
        task("the same, one matrix for many right-hand sides", "CholeskyBackSubst_mva", place="shuffled"),
        task("fit by least squares", "QRDecomp_ma", "QRBackSubst_mava", size="6x6", place=""),
        task("the same, one matrix for many right-hand sides", "QRBackSubst_mva", size="6x6", place=""),
        task("find out whether matrices are positive definite", "CholeskyDecomp_ma", place="shuffled"),
        task("inverses, up to order 6", "Invert_ma", place="shuffled"),
        task("inverses of order 7 and above: solve for the columns of the identity", "LUDecomp_ma", "LUBackSubst_mva", size="8",
             place="shuffled"),
        task("determinants", "Det_ma", place="shuffled"),
    ]),
    ("Eigenproblems", "eigenproblems.md", "order 4; symmetric: shuffled", [
        task("eigenvalues of symmetric matrices", "EigenValuesSym_ma", place="shuffled"),
        task("the same with eigenvectors: principal axes, covariances", "EigenValuesVectorsSym_ma", place="shuffled"),
        task("eigenvalues of general matrices", "EigenValues_ma"),
        task("with the vectors of A y = w y, which most call right ones", "EigenValuesVectorsLeft_ma"),
        task("with the vectors of y^T A = w y^T", "EigenValuesVectorsRight_ma"),
        task("with both sets", "EigenValuesVectors_ma"),
        task("how large the scratch of these is", "EigenValuesGetBufSize"),
        task("the same for those with vectors", "EigenValuesVectorsGetBufSize"),
    ]),
    ("3D geometry", "geometry.md", "one call; batches: one of 1000 packed vectors", [
        fixed("sum, difference, multiple of 3D vectors", "Add_v3", "Sub_v3", "MulC_v3"),
        fixed("element-wise least and greatest", "Min_v3", "Max_v3"),
        fixed("dot and cross product", "DotProduct_v3", "CrossProduct_v3"),
        fixed("length, its square, unit vector", "Len_v3", "LenSqr_v3", "Normalize_v3"),
        fixed("a point between two, or in a triangle", "InterpolationLinear_v3", "BaryCentric_v3"),
        fixed("a point on a smooth curve", "Hermite_v3", "InterpolationCatmullRom_v3"),
        fixed("a matrix that moves, stretches", "Translation_m4", "Scaling_m4"),
        fixed("a matrix that turns", "RotationX_m4", "RotationAxis_v3m4", "RotationYawPitchRoll_m4"),
        fixed("a camera: view and projection", "LookAtLH_m4", "PerspectiveFovLH_m4", "OrthoLH_m4"),
        fixed("product of 4 by 4 matrices", "Mul_mm4x4"),
        fixed("inverse, determinant, transpose of a 4 by 4 matrix", "Invert_m4", "Det_m4", "Transpose_m4"),
        fixed("one point, one direction through a matrix", "AffineTransformCoord_m4v3", "AffineTransformNormal_m4v3"),
        fixed("points through a matrix, in batches", "AffineTransformCoord_m4v3a", size="1000", place="12-12"),
        fixed("the same, all four elements", "AffineTransform_m4v3a", size="1000", place="12-16"),
        fixed("points to a picture", "Project_m4v3a", size="1000", place="12-12"),
        fixed("points of a picture back to space", "Unproject_m4v3a", size="1000", place="12-12"),
        fixed("points through a homogeneous transform with columns", "AffineTransform3DH_mva", size="1000", place="12-12"),
    ]),
    ("The library itself", "threads.md", "", [
        fixed("which version is loaded", "GetLibVersion"),
    ]),
]
