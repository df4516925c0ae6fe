/*
 * korm: numeric primitives for small dense matrices and vectors.
 *
 * Written by tools/formgen from the tables of forms; edit those instead.
 */
#ifndef KORM_H
#define KORM_H

#include <stdint.h>

#ifdef __cplusplus
extern "C" {
#endif

/**
 * @mainpage korm
 *
 * @section names Names
 * A name is `korm` + operation + `_` + operands + `_` + element type + layout: `kormAdd_mam_32f_L` adds
 * one matrix (`m`) to each of an array of matrices (`ma`), of `float`, in the list layout.
 *
 * | operand | is |
 * |---|---|
 * | `m`, `ma` | a matrix, an array of `count` matrices: `height` rows, `width` columns |
 * | `t`, `ta` | the same, read as its transpose: stored with `width` rows and `height` columns |
 * | `v`, `va` | a vector of `length` elements, an array of them |
 * | `c`, `ca` | a constant passed by value, an array of constants behind a pointer |
 *
 * The operands in a name are the inputs, in the order in which the formula reads them. The result `dst`
 * is an array as soon as one input is. `32f` elements are `float`, `64f` elements are `double`.
 *
 * @section layouts Layouts
 * Strides and offsets are counted in bytes, always. A stride is at least 1 and a multiple of the element
 * size; an offset is 0 or a positive multiple of it. Pointers need no alignment.
 *
 * | layout | suffix | an array operand is | element (i, j) of object k lies at |
 * |---|---|---|---|
 * | standard | none | `src`, `srcObjectStride`, `srcRowStride`, `srcElementStride` | `src` + k*`srcObjectStride` + i*`srcRowStride` + j*`srcElementStride` |
 * | list | `_L` | `src` (one pointer an object), `srcOffset`, `srcRowStride`, `srcElementStride` | `src`[k] + `srcOffset` + i*`srcRowStride` + j*`srcElementStride` |
 * | pointer | `_P` | `src` (one pointer an element position, row by row), `srcOffset`, `srcObjectStride` | `src`[i*`width` + j] + `srcOffset` + k*`srcObjectStride` |
 *
 * A single object has no object stride; in a list call it keeps its standard description. A vector has no
 * row stride. The element (i, j) of a transposed operand is the stored element (j, i), and its table in the
 * pointer layout has `height` entries a row. An array of constants is `val`, `valObjectStride`, in a list
 * call a list `val`, `valOffset`. Distances may be as small as the element size and objects of an input may
 * overlap; results that overlap each other are left in no defined state.
 *
 * @section calls Calls
 * Every function returns a status: ::korStatusOk, or the first check that failed, in the order that stands
 * with the function. A failed check returns before anything is read or written, and no check reads behind
 * a pointer: an entry of a list or table must not be null. Nothing is allocated but by calls large enough
 * to be spread over threads, and nothing outlives a call. Any number of threads may call at once.
 *
 * Array functions estimate their work. From the limit that stands with the function on, the objects are
 * split over the threads that OpenMP would use (`OMP_NUM_THREADS`), in contiguous runs, unless there are
 * fewer objects than threads. Results are the same.
 *
 * Arithmetic is IEEE 754 in the element's type, each operation rounded once, in the default rounding mode.
 */

/** Status values: 0 is success, every failure is negative. */
enum {
    korStatusOk = 0,                    /**< the operation was done */
    korStatusNearSingularBlock = -2,    /**< a 2 by 2 block of a back substitution is near-singular */
    korStatusBadSize = -6,              /**< a width, height, length or order is below 1 */
    korStatusNullPointer = -8,          /**< a required pointer is null */
    korStatusDivideByZero = -10,        /**< a divisor is zero */
    korStatusNotPositiveDefinite = -179, /**< a pivot of the factorisation is not positive */
    korStatusBadStride = -182,          /**< a stride is below 1 or no multiple of the element size */
    korStatusSingular = -195,           /**< the matrix is singular to working precision */
    korStatusBadOffset = -202,          /**< an offset is negative or no multiple of the element size */
    korStatusBadCount = -203,           /**< the count is below 1 */
    korStatusSizeMismatch = -204,       /**< the shapes of the operands do not fit */
    korStatusNoConvergence = -205       /**< an iteration did not converge */
};

/** What was built. The record belongs to the library and stays valid as long as that is loaded. */
typedef struct kormLibVersion {
    int32_t major;         /**< major version */
    int32_t minor;         /**< minor version */
    int32_t patch;         /**< third number of the version */
    int32_t revision;      /**< revision of the sources */
    char target[4];        /**< the processor variant, padded with NUL bytes */
    const char *name;      /**< domain, instruction set and variant */
    const char *version;   /**< the numbers above as text */
    const char *buildDate; /**< date of the build */
} kormLibVersion;



/**
 * @defgroup version Version query
 * The one function outside the naming scheme. It cannot fail and may be called at any time.
 * @{
 */

/**
 * The version record of the library.
 */
const kormLibVersion *kormGetLibVersion(void);

/** @} */


/**
 * @defgroup matrix_sums Sums and differences of matrices
 * dst = first + second or first - second, element by element, in the order of the operands in the name:
 * `kormSub_mma_32f` subtracts each matrix of an array from one matrix, `kormSub_mam_32f` one matrix from each.
 * `Add` has no forms that only swap the operands of another.
 *
 * Shapes: `width` and `height` are those of the result and of the operands as they are read; a transposed
 * operand is stored with `width` rows and `height` columns.
 *
 * Overlap: dst may be an untransposed source, at the same place with the same strides (in a list call object by
 * object, in a pointer call table entry by table entry). Any other overlap of dst and a source leaves dst undefined.
 *
 * Status: ::korStatusOk, ::korStatusNullPointer, ::korStatusBadSize, ::korStatusBadStride; array forms
 * ::korStatusBadCount; list and pointer forms ::korStatusBadOffset. Other than with ::korStatusOk nothing is written.
 * Each element is one rounded operation; a NaN stays in its element.
 * @{
 */

/**
 * dst(i,j) = src1(i,j) + src2(i,j)
 *
 * Checks: null, size, stride.
 */
int32_t kormAdd_mm_32f(
    const float *src1, int32_t src1RowStride, int32_t src1ElementStride, const float *src2,
    int32_t src2RowStride, int32_t src2ElementStride, float *dst, int32_t dstRowStride,
    int32_t dstElementStride, int32_t width, int32_t height);

/**
 * dst(i,j) = src1(i,j) + src2(i,j)
 *
 * Checks: null, size, stride.
 */
int32_t kormAdd_mm_64f(
    const double *src1, int32_t src1RowStride, int32_t src1ElementStride, const double *src2,
    int32_t src2RowStride, int32_t src2ElementStride, double *dst, int32_t dstRowStride,
    int32_t dstElementStride, int32_t width, int32_t height);

/**
 * dst(i,j) = src1(i,j) + src2(i,j)
 *
 * Checks: null, size, offset.
 */
int32_t kormAdd_mm_32f_P(
    const float *const *src1, int32_t src1Offset, const float *const *src2, int32_t src2Offset,
    float *const *dst, int32_t dstOffset, int32_t width, int32_t height);

/**
 * dst(i,j) = src1(i,j) + src2(i,j)
 *
 * Checks: null, size, offset.
 */
int32_t kormAdd_mm_64f_P(
    const double *const *src1, int32_t src1Offset, const double *const *src2, int32_t src2Offset,
    double *const *dst, int32_t dstOffset, int32_t width, int32_t height);

/**
 * dst(i,j) = src1(j,i) + src2(i,j)
 *
 * Checks: null, size, stride.
 */
int32_t kormAdd_tm_32f(
    const float *src1, int32_t src1RowStride, int32_t src1ElementStride, const float *src2,
    int32_t src2RowStride, int32_t src2ElementStride, float *dst, int32_t dstRowStride,
    int32_t dstElementStride, int32_t width, int32_t height);

/**
 * dst(i,j) = src1(j,i) + src2(i,j)
 *
 * Checks: null, size, stride.
 */
int32_t kormAdd_tm_64f(
    const double *src1, int32_t src1RowStride, int32_t src1ElementStride, const double *src2,
    int32_t src2RowStride, int32_t src2ElementStride, double *dst, int32_t dstRowStride,
    int32_t dstElementStride, int32_t width, int32_t height);

/**
 * dst(i,j) = src1(j,i) + src2(i,j)
 *
 * Checks: null, size, offset.
 */
int32_t kormAdd_tm_32f_P(
    const float *const *src1, int32_t src1Offset, const float *const *src2, int32_t src2Offset,
    float *const *dst, int32_t dstOffset, int32_t width, int32_t height);

/**
 * dst(i,j) = src1(j,i) + src2(i,j)
 *
 * Checks: null, size, offset.
 */
int32_t kormAdd_tm_64f_P(
    const double *const *src1, int32_t src1Offset, const double *const *src2, int32_t src2Offset,
    double *const *dst, int32_t dstOffset, int32_t width, int32_t height);

/**
 * dst(i,j) = src1(j,i) + src2(j,i)
 *
 * Checks: null, size, stride.
 */
int32_t kormAdd_tt_32f(
    const float *src1, int32_t src1RowStride, int32_t src1ElementStride, const float *src2,
    int32_t src2RowStride, int32_t src2ElementStride, float *dst, int32_t dstRowStride,
    int32_t dstElementStride, int32_t width, int32_t height);

/**
 * dst(i,j) = src1(j,i) + src2(j,i)
 *
 * Checks: null, size, stride.
 */
int32_t kormAdd_tt_64f(
    const double *src1, int32_t src1RowStride, int32_t src1ElementStride, const double *src2,
    int32_t src2RowStride, int32_t src2ElementStride, double *dst, int32_t dstRowStride,
    int32_t dstElementStride, int32_t width, int32_t height);

/**
 * dst(i,j) = src1(j,i) + src2(j,i)
 *
 * Checks: null, size, offset.
 */
int32_t kormAdd_tt_32f_P(
    const float *const *src1, int32_t src1Offset, const float *const *src2, int32_t src2Offset,
    float *const *dst, int32_t dstOffset, int32_t width, int32_t height);

/**
 * dst(i,j) = src1(j,i) + src2(j,i)
 *
 * Checks: null, size, offset.
 */
int32_t kormAdd_tt_64f_P(
    const double *const *src1, int32_t src1Offset, const double *const *src2, int32_t src2Offset,
    double *const *dst, int32_t dstOffset, int32_t width, int32_t height);

/**
 * dst(i,j) = src1(i,j) - src2(i,j)
 *
 * Checks: null, size, stride.
 */
int32_t kormSub_mm_32f(
    const float *src1, int32_t src1RowStride, int32_t src1ElementStride, const float *src2,
    int32_t src2RowStride, int32_t src2ElementStride, float *dst, int32_t dstRowStride,
    int32_t dstElementStride, int32_t width, int32_t height);

/**
 * dst(i,j) = src1(i,j) - src2(i,j)
 *
 * Checks: null, size, stride.
 */
int32_t kormSub_mm_64f(
    const double *src1, int32_t src1RowStride, int32_t src1ElementStride, const double *src2,
    int32_t src2RowStride, int32_t src2ElementStride, double *dst, int32_t dstRowStride,
    int32_t dstElementStride, int32_t width, int32_t height);

/**
 * dst(i,j) = src1(i,j) - src2(i,j)
 *
 * Checks: null, size, offset.
 */
int32_t kormSub_mm_32f_P(
    const float *const *src1, int32_t src1Offset, const float *const *src2, int32_t src2Offset,
    float *const *dst, int32_t dstOffset, int32_t width, int32_t height);

/**
 * dst(i,j) = src1(i,j) - src2(i,j)
 *
 * Checks: null, size, offset.
 */
int32_t kormSub_mm_64f_P(
    const double *const *src1, int32_t src1Offset, const double *const *src2, int32_t src2Offset,
    double *const *dst, int32_t dstOffset, int32_t width, int32_t height);

/**
 * dst(i,j) = src1(i,j) - src2(j,i)
 *
 * Checks: null, size, stride.
 */
int32_t kormSub_mt_32f(
    const float *src1, int32_t src1RowStride, int32_t src1ElementStride, const float *src2,
    int32_t src2RowStride, int32_t src2ElementStride, float *dst, int32_t dstRowStride,
    int32_t dstElementStride, int32_t width, int32_t height);

/**
 * dst(i,j) = src1(i,j) - src2(j,i)
 *
 * Checks: null, size, stride.
 */
int32_t kormSub_mt_64f(
    const double *src1, int32_t src1RowStride, int32_t src1ElementStride, const double *src2,
    int32_t src2RowStride, int32_t src2ElementStride, double *dst, int32_t dstRowStride,
    int32_t dstElementStride, int32_t width, int32_t height);

/**
 * dst(i,j) = src1(i,j) - src2(j,i)
 *
 * Checks: null, size, offset.
 */
int32_t kormSub_mt_32f_P(
    const float *const *src1, int32_t src1Offset, const float *const *src2, int32_t src2Offset,
    float *const *dst, int32_t dstOffset, int32_t width, int32_t height);

/**
 * dst(i,j) = src1(i,j) - src2(j,i)
 *
 * Checks: null, size, offset.
 */
int32_t kormSub_mt_64f_P(
    const double *const *src1, int32_t src1Offset, const double *const *src2, int32_t src2Offset,
    double *const *dst, int32_t dstOffset, int32_t width, int32_t height);

/**
 * dst(i,j) = src1(j,i) - src2(i,j)
 *
 * Checks: null, size, stride.
 */
int32_t kormSub_tm_32f(
    const float *src1, int32_t src1RowStride, int32_t src1ElementStride, const float *src2,
    int32_t src2RowStride, int32_t src2ElementStride, float *dst, int32_t dstRowStride,
    int32_t dstElementStride, int32_t width, int32_t height);

/**
 * dst(i,j) = src1(j,i) - src2(i,j)
 *
 * Checks: null, size, stride.
 */
int32_t kormSub_tm_64f(
    const double *src1, int32_t src1RowStride, int32_t src1ElementStride, const double *src2,
    int32_t src2RowStride, int32_t src2ElementStride, double *dst, int32_t dstRowStride,
    int32_t dstElementStride, int32_t width, int32_t height);

/**
 * dst(i,j) = src1(j,i) - src2(i,j)
 *
 * Checks: null, size, offset.
 */
int32_t kormSub_tm_32f_P(
    const float *const *src1, int32_t src1Offset, const float *const *src2, int32_t src2Offset,
    float *const *dst, int32_t dstOffset, int32_t width, int32_t height);

/**
 * dst(i,j) = src1(j,i) - src2(i,j)
 *
 * Checks: null, size, offset.
 */
int32_t kormSub_tm_64f_P(
    const double *const *src1, int32_t src1Offset, const double *const *src2, int32_t src2Offset,
    double *const *dst, int32_t dstOffset, int32_t width, int32_t height);

/**
 * dst(i,j) = src1(j,i) - src2(j,i)
 *
 * Checks: null, size, stride.
 */
int32_t kormSub_tt_32f(
    const float *src1, int32_t src1RowStride, int32_t src1ElementStride, const float *src2,
    int32_t src2RowStride, int32_t src2ElementStride, float *dst, int32_t dstRowStride,
    int32_t dstElementStride, int32_t width, int32_t height);

/**
 * dst(i,j) = src1(j,i) - src2(j,i)
 *
 * Checks: null, size, stride.
 */
int32_t kormSub_tt_64f(
    const double *src1, int32_t src1RowStride, int32_t src1ElementStride, const double *src2,
    int32_t src2RowStride, int32_t src2ElementStride, double *dst, int32_t dstRowStride,
    int32_t dstElementStride, int32_t width, int32_t height);

/**
 * dst(i,j) = src1(j,i) - src2(j,i)
 *
 * Checks: null, size, offset.
 */
int32_t kormSub_tt_32f_P(
    const float *const *src1, int32_t src1Offset, const float *const *src2, int32_t src2Offset,
    float *const *dst, int32_t dstOffset, int32_t width, int32_t height);

/**
 * dst(i,j) = src1(j,i) - src2(j,i)
 *
 * Checks: null, size, offset.
 */
int32_t kormSub_tt_64f_P(
    const double *const *src1, int32_t src1Offset, const double *const *src2, int32_t src2Offset,
    double *const *dst, int32_t dstOffset, int32_t width, int32_t height);

/**
 * dst(k,i,j) = src1(k,i,j) + src2(i,j)
 *
 * Checks: null, count, stride, size.
 * Serial below 3000 (2000 if an element stride is not 4) by width*height*(2*count + 1).
 */
int32_t kormAdd_mam_32f(
    const float *src1, int32_t src1ObjectStride, int32_t src1RowStride, int32_t src1ElementStride,
    const float *src2, int32_t src2RowStride, int32_t src2ElementStride, float *dst, int32_t dstObjectStride,
    int32_t dstRowStride, int32_t dstElementStride, int32_t width, int32_t height, int32_t count);

/**
 * dst(k,i,j) = src1(k,i,j) + src2(i,j)
 *
 * Checks: null, count, stride, size.
 * Serial below 2000 by width*height*(2*count + 1).
 */
int32_t kormAdd_mam_64f(
    const double *src1, int32_t src1ObjectStride, int32_t src1RowStride, int32_t src1ElementStride,
    const double *src2, int32_t src2RowStride, int32_t src2ElementStride, double *dst,
    int32_t dstObjectStride, int32_t dstRowStride, int32_t dstElementStride, int32_t width, int32_t height,
    int32_t count);

/**
 * dst(k,i,j) = src1(k,i,j) + src2(i,j)
 *
 * Checks: null, count, size, stride, offset.
 * Serial below 2000 by width*height*(2*count + 1).
 */
int32_t kormAdd_mam_32f_L(
    const float *const *src1, int32_t src1Offset, int32_t src1RowStride, int32_t src1ElementStride,
    const float *src2, int32_t src2RowStride, int32_t src2ElementStride, float *const *dst, int32_t dstOffset,
    int32_t dstRowStride, int32_t dstElementStride, int32_t width, int32_t height, int32_t count);

/**
 * dst(k,i,j) = src1(k,i,j) + src2(i,j)
 *
 * Checks: null, count, size, stride, offset.
 * Serial below 2000 by width*height*(2*count + 1).
 */
int32_t kormAdd_mam_64f_L(
    const double *const *src1, int32_t src1Offset, int32_t src1RowStride, int32_t src1ElementStride,
    const double *src2, int32_t src2RowStride, int32_t src2ElementStride, double *const *dst,
    int32_t dstOffset, int32_t dstRowStride, int32_t dstElementStride, int32_t width, int32_t height,
    int32_t count);

/**
 * dst(k,i,j) = src1(k,i,j) + src2(i,j)
 *
 * Checks: null, count, size, stride, offset.
 * Serial below 2000 by width*height*(2*count + 1).
 */
int32_t kormAdd_mam_32f_P(
    const float *const *src1, int32_t src1Offset, int32_t src1ObjectStride, const float *const *src2,
    int32_t src2Offset, float *const *dst, int32_t dstOffset, int32_t dstObjectStride, int32_t width,
    int32_t height, int32_t count);

/**
 * dst(k,i,j) = src1(k,i,j) + src2(i,j)
 *
 * Checks: null, count, size, stride, offset.
 * Serial below 2000 by width*height*(2*count + 1).
 */
int32_t kormAdd_mam_64f_P(
    const double *const *src1, int32_t src1Offset, int32_t src1ObjectStride, const double *const *src2,
    int32_t src2Offset, double *const *dst, int32_t dstOffset, int32_t dstObjectStride, int32_t width,
    int32_t height, int32_t count);

/**
 * dst(k,i,j) = src1(k,i,j) + src2(j,i)
 *
 * Checks: null, count, size, stride.
 * Serial below 3000 (2000 if an element stride is not 4) by width*height*(2*count + 1).
 */
int32_t kormAdd_mat_32f(
    const float *src1, int32_t src1ObjectStride, int32_t src1RowStride, int32_t src1ElementStride,
    const float *src2, int32_t src2RowStride, int32_t src2ElementStride, float *dst, int32_t dstObjectStride,
    int32_t dstRowStride, int32_t dstElementStride, int32_t width, int32_t height, int32_t count);

/**
 * dst(k,i,j) = src1(k,i,j) + src2(j,i)
 *
 * Checks: null, count, size, stride.
 * Serial below 2000 by width*height*(2*count + 1).
 */
int32_t kormAdd_mat_64f(
    const double *src1, int32_t src1ObjectStride, int32_t src1RowStride, int32_t src1ElementStride,
    const double *src2, int32_t src2RowStride, int32_t src2ElementStride, double *dst,
    int32_t dstObjectStride, int32_t dstRowStride, int32_t dstElementStride, int32_t width, int32_t height,
    int32_t count);

/**
 * dst(k,i,j) = src1(k,i,j) + src2(j,i)
 *
 * Checks: null, count, size, stride, offset.
 * Serial below 2000 by width*height*(2*count + 1).
 */
int32_t kormAdd_mat_32f_L(
    const float *const *src1, int32_t src1Offset, int32_t src1RowStride, int32_t src1ElementStride,
    const float *src2, int32_t src2RowStride, int32_t src2ElementStride, float *const *dst, int32_t dstOffset,
    int32_t dstRowStride, int32_t dstElementStride, int32_t width, int32_t height, int32_t count);

/**
 * dst(k,i,j) = src1(k,i,j) + src2(j,i)
 *
 * Checks: null, count, size, stride, offset.
 * Serial below 2000 by width*height*(2*count + 1).
 */
int32_t kormAdd_mat_64f_L(
    const double *const *src1, int32_t src1Offset, int32_t src1RowStride, int32_t src1ElementStride,
    const double *src2, int32_t src2RowStride, int32_t src2ElementStride, double *const *dst,
    int32_t dstOffset, int32_t dstRowStride, int32_t dstElementStride, int32_t width, int32_t height,
    int32_t count);

/**
 * dst(k,i,j) = src1(k,i,j) + src2(j,i)
 *
 * Checks: null, count, size, stride, offset.
 * Serial below 2000 by width*height*(2*count + 1).
 */
int32_t kormAdd_mat_32f_P(
    const float *const *src1, int32_t src1Offset, int32_t src1ObjectStride, const float *const *src2,
    int32_t src2Offset, float *const *dst, int32_t dstOffset, int32_t dstObjectStride, int32_t width,
    int32_t height, int32_t count);

/**
 * dst(k,i,j) = src1(k,i,j) + src2(j,i)
 *
 * Checks: null, count, size, stride, offset.
 * Serial below 2000 by width*height*(2*count + 1).
 */
int32_t kormAdd_mat_64f_P(
    const double *const *src1, int32_t src1Offset, int32_t src1ObjectStride, const double *const *src2,
    int32_t src2Offset, double *const *dst, int32_t dstOffset, int32_t dstObjectStride, int32_t width,
    int32_t height, int32_t count);

/**
 * dst(k,i,j) = src1(k,j,i) + src2(i,j)
 *
 * Checks: null, count, size, stride.
 * Serial below 3000 (2000 if an element stride is not 4) by width*height*(2*count + 1).
 */
int32_t kormAdd_tam_32f(
    const float *src1, int32_t src1ObjectStride, int32_t src1RowStride, int32_t src1ElementStride,
    const float *src2, int32_t src2RowStride, int32_t src2ElementStride, float *dst, int32_t dstObjectStride,
    int32_t dstRowStride, int32_t dstElementStride, int32_t width, int32_t height, int32_t count);

/**
 * dst(k,i,j) = src1(k,j,i) + src2(i,j)
 *
 * Checks: null, count, size, stride.
 * Serial below 2000 by width*height*(2*count + 1).
 */
int32_t kormAdd_tam_64f(
    const double *src1, int32_t src1ObjectStride, int32_t src1RowStride, int32_t src1ElementStride,
    const double *src2, int32_t src2RowStride, int32_t src2ElementStride, double *dst,
    int32_t dstObjectStride, int32_t dstRowStride, int32_t dstElementStride, int32_t width, int32_t height,
    int32_t count);

/**
 * dst(k,i,j) = src1(k,j,i) + src2(i,j)
 *
 * Checks: null, count, size, stride, offset.
 * Serial below 2000 by width*height*(2*count + 1).
 */
int32_t kormAdd_tam_32f_L(
    const float *const *src1, int32_t src1Offset, int32_t src1RowStride, int32_t src1ElementStride,
    const float *src2, int32_t src2RowStride, int32_t src2ElementStride, float *const *dst, int32_t dstOffset,
    int32_t dstRowStride, int32_t dstElementStride, int32_t width, int32_t height, int32_t count);

/**
 * dst(k,i,j) = src1(k,j,i) + src2(i,j)
 *
 * Checks: null, count, size, stride, offset.
 * Serial below 2000 by width*height*(2*count + 1).
 */
int32_t kormAdd_tam_64f_L(
    const double *const *src1, int32_t src1Offset, int32_t src1RowStride, int32_t src1ElementStride,
    const double *src2, int32_t src2RowStride, int32_t src2ElementStride, double *const *dst,
    int32_t dstOffset, int32_t dstRowStride, int32_t dstElementStride, int32_t width, int32_t height,
    int32_t count);

/**
 * dst(k,i,j) = src1(k,j,i) + src2(i,j)
 *
 * Checks: null, count, size, stride, offset.
 * Serial below 2000 by width*height*(2*count + 1).
 */
int32_t kormAdd_tam_32f_P(
    const float *const *src1, int32_t src1Offset, int32_t src1ObjectStride, const float *const *src2,
    int32_t src2Offset, float *const *dst, int32_t dstOffset, int32_t dstObjectStride, int32_t width,
    int32_t height, int32_t count);

/**
 * dst(k,i,j) = src1(k,j,i) + src2(i,j)
 *
 * Checks: null, count, size, stride, offset.
 * Serial below 2000 by width*height*(2*count + 1).
 */
int32_t kormAdd_tam_64f_P(
    const double *const *src1, int32_t src1Offset, int32_t src1ObjectStride, const double *const *src2,
    int32_t src2Offset, double *const *dst, int32_t dstOffset, int32_t dstObjectStride, int32_t width,
    int32_t height, int32_t count);

/**
 * dst(k,i,j) = src1(k,j,i) + src2(j,i)
 *
 * Checks: null, count, size, stride.
 * Serial below 3000 (2000 if an element stride is not 4) by width*height*(2*count + 1).
 */
int32_t kormAdd_tat_32f(
    const float *src1, int32_t src1ObjectStride, int32_t src1RowStride, int32_t src1ElementStride,
    const float *src2, int32_t src2RowStride, int32_t src2ElementStride, float *dst, int32_t dstObjectStride,
    int32_t dstRowStride, int32_t dstElementStride, int32_t width, int32_t height, int32_t count);

/**
 * dst(k,i,j) = src1(k,j,i) + src2(j,i)
 *
 * Checks: null, count, size, stride.
 * Serial below 2000 by width*height*(2*count + 1).
 */
int32_t kormAdd_tat_64f(
    const double *src1, int32_t src1ObjectStride, int32_t src1RowStride, int32_t src1ElementStride,
    const double *src2, int32_t src2RowStride, int32_t src2ElementStride, double *dst,
    int32_t dstObjectStride, int32_t dstRowStride, int32_t dstElementStride, int32_t width, int32_t height,
    int32_t count);

/**
 * dst(k,i,j) = src1(k,j,i) + src2(j,i)
 *
 * Checks: null, count, size, stride, offset.
 * Serial below 2000 by width*height*(2*count + 1).
 */
int32_t kormAdd_tat_32f_L(
    const float *const *src1, int32_t src1Offset, int32_t src1RowStride, int32_t src1ElementStride,
    const float *src2, int32_t src2RowStride, int32_t src2ElementStride, float *const *dst, int32_t dstOffset,
    int32_t dstRowStride, int32_t dstElementStride, int32_t width, int32_t height, int32_t count);

/**
 * dst(k,i,j) = src1(k,j,i) + src2(j,i)
 *
 * Checks: null, count, size, stride, offset.
 * Serial below 2000 by width*height*(2*count + 1).
 */
int32_t kormAdd_tat_64f_L(
    const double *const *src1, int32_t src1Offset, int32_t src1RowStride, int32_t src1ElementStride,
    const double *src2, int32_t src2RowStride, int32_t src2ElementStride, double *const *dst,
    int32_t dstOffset, int32_t dstRowStride, int32_t dstElementStride, int32_t width, int32_t height,
    int32_t count);

/**
 * dst(k,i,j) = src1(k,j,i) + src2(j,i)
 *
 * Checks: null, count, size, stride, offset.
 * Serial below 2000 by width*height*(2*count + 1).
 */
int32_t kormAdd_tat_32f_P(
    const float *const *src1, int32_t src1Offset, int32_t src1ObjectStride, const float *const *src2,
    int32_t src2Offset, float *const *dst, int32_t dstOffset, int32_t dstObjectStride, int32_t width,
    int32_t height, int32_t count);

/**
 * dst(k,i,j) = src1(k,j,i) + src2(j,i)
 *
 * Checks: null, count, size, stride, offset.
 * Serial below 2000 by width*height*(2*count + 1).
 */
int32_t kormAdd_tat_64f_P(
    const double *const *src1, int32_t src1Offset, int32_t src1ObjectStride, const double *const *src2,
    int32_t src2Offset, double *const *dst, int32_t dstOffset, int32_t dstObjectStride, int32_t width,
    int32_t height, int32_t count);

/**
 * dst(k,i,j) = src1(k,i,j) - src2(i,j)
 *
 * Checks: null, count, stride, size.
 * Serial below 3000 (2000 if an element stride is not 4) by width*height*(2*count + 1).
 */
int32_t kormSub_mam_32f(
    const float *src1, int32_t src1ObjectStride, int32_t src1RowStride, int32_t src1ElementStride,
    const float *src2, int32_t src2RowStride, int32_t src2ElementStride, float *dst, int32_t dstObjectStride,
    int32_t dstRowStride, int32_t dstElementStride, int32_t width, int32_t height, int32_t count);

/**
 * dst(k,i,j) = src1(k,i,j) - src2(i,j)
 *
 * Checks: null, count, stride, size.
 * Serial below 2000 by width*height*(2*count + 1).
 */
int32_t kormSub_mam_64f(
    const double *src1, int32_t src1ObjectStride, int32_t src1RowStride, int32_t src1ElementStride,
    const double *src2, int32_t src2RowStride, int32_t src2ElementStride, double *dst,
    int32_t dstObjectStride, int32_t dstRowStride, int32_t dstElementStride, int32_t width, int32_t height,
    int32_t count);

/**
 * dst(k,i,j) = src1(k,i,j) - src2(i,j)
 *
 * Checks: null, count, size, stride, offset.
 * Serial below 2000 by width*height*(2*count + 1).
 */
int32_t kormSub_mam_32f_L(
    const float *const *src1, int32_t src1Offset, int32_t src1RowStride, int32_t src1ElementStride,
    const float *src2, int32_t src2RowStride, int32_t src2ElementStride, float *const *dst, int32_t dstOffset,
    int32_t dstRowStride, int32_t dstElementStride, int32_t width, int32_t height, int32_t count);

/**
 * dst(k,i,j) = src1(k,i,j) - src2(i,j)
 *
 * Checks: null, count, size, stride, offset.
 * Serial below 2000 by width*height*(2*count + 1).
 */
int32_t kormSub_mam_64f_L(
    const double *const *src1, int32_t src1Offset, int32_t src1RowStride, int32_t src1ElementStride,
    const double *src2, int32_t src2RowStride, int32_t src2ElementStride, double *const *dst,
    int32_t dstOffset, int32_t dstRowStride, int32_t dstElementStride, int32_t width, int32_t height,
    int32_t count);

/**
 * dst(k,i,j) = src1(k,i,j) - src2(i,j)
 *
 * Checks: null, count, size, stride, offset.
 * Serial below 2000 by width*height*(2*count + 1).
 */
int32_t kormSub_mam_32f_P(
    const float *const *src1, int32_t src1Offset, int32_t src1ObjectStride, const float *const *src2,
    int32_t src2Offset, float *const *dst, int32_t dstOffset, int32_t dstObjectStride, int32_t width,
    int32_t height, int32_t count);

/**
 * dst(k,i,j) = src1(k,i,j) - src2(i,j)
 *
 * Checks: null, count, size, stride, offset.
 * Serial below 2000 by width*height*(2*count + 1).
 */
int32_t kormSub_mam_64f_P(
    const double *const *src1, int32_t src1Offset, int32_t src1ObjectStride, const double *const *src2,
    int32_t src2Offset, double *const *dst, int32_t dstOffset, int32_t dstObjectStride, int32_t width,
    int32_t height, int32_t count);

/**
 * dst(k,i,j) = src1(k,i,j) - src2(j,i)
 *
 * Checks: null, count, size, stride.
 * Serial below 3000 (2000 if an element stride is not 4) by width*height*(2*count + 1).
 */
int32_t kormSub_mat_32f(
    const float *src1, int32_t src1ObjectStride, int32_t src1RowStride, int32_t src1ElementStride,
    const float *src2, int32_t src2RowStride, int32_t src2ElementStride, float *dst, int32_t dstObjectStride,
    int32_t dstRowStride, int32_t dstElementStride, int32_t width, int32_t height, int32_t count);

/**
 * dst(k,i,j) = src1(k,i,j) - src2(j,i)
 *
 * Checks: null, count, size, stride.
 * Serial below 2000 by width*height*(2*count + 1).
 */
int32_t kormSub_mat_64f(
    const double *src1, int32_t src1ObjectStride, int32_t src1RowStride, int32_t src1ElementStride,
    const double *src2, int32_t src2RowStride, int32_t src2ElementStride, double *dst,
    int32_t dstObjectStride, int32_t dstRowStride, int32_t dstElementStride, int32_t width, int32_t height,
    int32_t count);

/**
 * dst(k,i,j) = src1(k,i,j) - src2(j,i)
 *
 * Checks: null, count, size, stride, offset.
 * Serial below 2000 by width*height*(2*count + 1).
 */
int32_t kormSub_mat_32f_L(
    const float *const *src1, int32_t src1Offset, int32_t src1RowStride, int32_t src1ElementStride,
    const float *src2, int32_t src2RowStride, int32_t src2ElementStride, float *const *dst, int32_t dstOffset,
    int32_t dstRowStride, int32_t dstElementStride, int32_t width, int32_t height, int32_t count);

/**
 * dst(k,i,j) = src1(k,i,j) - src2(j,i)
 *
 * Checks: null, count, size, stride, offset.
 * Serial below 2000 by width*height*(2*count + 1).
 */
int32_t kormSub_mat_64f_L(
    const double *const *src1, int32_t src1Offset, int32_t src1RowStride, int32_t src1ElementStride,
    const double *src2, int32_t src2RowStride, int32_t src2ElementStride, double *const *dst,
    int32_t dstOffset, int32_t dstRowStride, int32_t dstElementStride, int32_t width, int32_t height,
    int32_t count);

/**
 * dst(k,i,j) = src1(k,i,j) - src2(j,i)
 *
 * Checks: null, count, size, stride, offset.
 * Serial below 2000 by width*height*(2*count + 1).
 */
int32_t kormSub_mat_32f_P(
    const float *const *src1, int32_t src1Offset, int32_t src1ObjectStride, const float *const *src2,
    int32_t src2Offset, float *const *dst, int32_t dstOffset, int32_t dstObjectStride, int32_t width,
    int32_t height, int32_t count);

/**
 * dst(k,i,j) = src1(k,i,j) - src2(j,i)
 *
 * Checks: null, count, size, stride, offset.
 * Serial below 2000 by width*height*(2*count + 1).
 */
int32_t kormSub_mat_64f_P(
    const double *const *src1, int32_t src1Offset, int32_t src1ObjectStride, const double *const *src2,
    int32_t src2Offset, double *const *dst, int32_t dstOffset, int32_t dstObjectStride, int32_t width,
    int32_t height, int32_t count);

/**
 * dst(k,i,j) = src1(k,j,i) - src2(i,j)
 *
 * Checks: null, count, size, stride.
 * Serial below 3000 (2000 if an element stride is not 4) by width*height*(2*count + 1).
 */
int32_t kormSub_tam_32f(
    const float *src1, int32_t src1ObjectStride, int32_t src1RowStride, int32_t src1ElementStride,
    const float *src2, int32_t src2RowStride, int32_t src2ElementStride, float *dst, int32_t dstObjectStride,
    int32_t dstRowStride, int32_t dstElementStride, int32_t width, int32_t height, int32_t count);

/**
 * dst(k,i,j) = src1(k,j,i) - src2(i,j)
 *
 * Checks: null, count, size, stride.
 * Serial below 2000 by width*height*(2*count + 1).
 */
int32_t kormSub_tam_64f(
    const double *src1, int32_t src1ObjectStride, int32_t src1RowStride, int32_t src1ElementStride,
    const double *src2, int32_t src2RowStride, int32_t src2ElementStride, double *dst,
    int32_t dstObjectStride, int32_t dstRowStride, int32_t dstElementStride, int32_t width, int32_t height,
    int32_t count);

/**
 * dst(k,i,j) = src1(k,j,i) - src2(i,j)
 *
 * Checks: null, count, size, stride, offset.
 * Serial below 2000 by width*height*(2*count + 1).
 */
int32_t kormSub_tam_32f_L(
    const float *const *src1, int32_t src1Offset, int32_t src1RowStride, int32_t src1ElementStride,
    const float *src2, int32_t src2RowStride, int32_t src2ElementStride, float *const *dst, int32_t dstOffset,
    int32_t dstRowStride, int32_t dstElementStride, int32_t width, int32_t height, int32_t count);

/**
 * dst(k,i,j) = src1(k,j,i) - src2(i,j)
 *
 * Checks: null, count, size, stride, offset.
 * Serial below 2000 by width*height*(2*count + 1).
 */
int32_t kormSub_tam_64f_L(
    const double *const *src1, int32_t src1Offset, int32_t src1RowStride, int32_t src1ElementStride,
    const double *src2, int32_t src2RowStride, int32_t src2ElementStride, double *const *dst,
    int32_t dstOffset, int32_t dstRowStride, int32_t dstElementStride, int32_t width, int32_t height,
    int32_t count);

/**
 * dst(k,i,j) = src1(k,j,i) - src2(i,j)
 *
 * Checks: null, count, size, stride, offset.
 * Serial below 2000 by width*height*(2*count + 1).
 */
int32_t kormSub_tam_32f_P(
    const float *const *src1, int32_t src1Offset, int32_t src1ObjectStride, const float *const *src2,
    int32_t src2Offset, float *const *dst, int32_t dstOffset, int32_t dstObjectStride, int32_t width,
    int32_t height, int32_t count);

/**
 * dst(k,i,j) = src1(k,j,i) - src2(i,j)
 *
 * Checks: null, count, size, stride, offset.
 * Serial below 2000 by width*height*(2*count + 1).
 */
int32_t kormSub_tam_64f_P(
    const double *const *src1, int32_t src1Offset, int32_t src1ObjectStride, const double *const *src2,
    int32_t src2Offset, double *const *dst, int32_t dstOffset, int32_t dstObjectStride, int32_t width,
    int32_t height, int32_t count);

/**
 * dst(k,i,j) = src1(k,j,i) - src2(j,i)
 *
 * Checks: null, count, size, stride.
 * Serial below 3000 (2000 if an element stride is not 4) by width*height*(2*count + 1).
 */
int32_t kormSub_tat_32f(
    const float *src1, int32_t src1ObjectStride, int32_t src1RowStride, int32_t src1ElementStride,
    const float *src2, int32_t src2RowStride, int32_t src2ElementStride, float *dst, int32_t dstObjectStride,
    int32_t dstRowStride, int32_t dstElementStride, int32_t width, int32_t height, int32_t count);

/**
 * dst(k,i,j) = src1(k,j,i) - src2(j,i)
 *
 * Checks: null, count, size, stride.
 * Serial below 2000 by width*height*(2*count + 1).
 */
int32_t kormSub_tat_64f(
    const double *src1, int32_t src1ObjectStride, int32_t src1RowStride, int32_t src1ElementStride,
    const double *src2, int32_t src2RowStride, int32_t src2ElementStride, double *dst,
    int32_t dstObjectStride, int32_t dstRowStride, int32_t dstElementStride, int32_t width, int32_t height,
    int32_t count);

/**
 * dst(k,i,j) = src1(k,j,i) - src2(j,i)
 *
 * Checks: null, count, size, stride, offset.
 * Serial below 2000 by width*height*(2*count + 1).
 */
int32_t kormSub_tat_32f_L(
    const float *const *src1, int32_t src1Offset, int32_t src1RowStride, int32_t src1ElementStride,
    const float *src2, int32_t src2RowStride, int32_t src2ElementStride, float *const *dst, int32_t dstOffset,
    int32_t dstRowStride, int32_t dstElementStride, int32_t width, int32_t height, int32_t count);

/**
 * dst(k,i,j) = src1(k,j,i) - src2(j,i)
 *
 * Checks: null, count, size, stride, offset.
 * Serial below 2000 by width*height*(2*count + 1).
 */
int32_t kormSub_tat_64f_L(
    const double *const *src1, int32_t src1Offset, int32_t src1RowStride, int32_t src1ElementStride,
    const double *src2, int32_t src2RowStride, int32_t src2ElementStride, double *const *dst,
    int32_t dstOffset, int32_t dstRowStride, int32_t dstElementStride, int32_t width, int32_t height,
    int32_t count);

/**
 * dst(k,i,j) = src1(k,j,i) - src2(j,i)
 *
 * Checks: null, count, size, stride, offset.
 * Serial below 2000 by width*height*(2*count + 1).
 */
int32_t kormSub_tat_32f_P(
    const float *const *src1, int32_t src1Offset, int32_t src1ObjectStride, const float *const *src2,
    int32_t src2Offset, float *const *dst, int32_t dstOffset, int32_t dstObjectStride, int32_t width,
    int32_t height, int32_t count);

/**
 * dst(k,i,j) = src1(k,j,i) - src2(j,i)
 *
 * Checks: null, count, size, stride, offset.
 * Serial below 2000 by width*height*(2*count + 1).
 */
int32_t kormSub_tat_64f_P(
    const double *const *src1, int32_t src1Offset, int32_t src1ObjectStride, const double *const *src2,
    int32_t src2Offset, double *const *dst, int32_t dstOffset, int32_t dstObjectStride, int32_t width,
    int32_t height, int32_t count);

/**
 * dst(k,i,j) = src1(i,j) - src2(k,i,j)
 *
 * Checks: null, count, stride, size.
 * Serial below 3000 (2000 if an element stride is not 4) by width*height*(2*count + 1).
 */
int32_t kormSub_mma_32f(
    const float *src1, int32_t src1RowStride, int32_t src1ElementStride, const float *src2,
    int32_t src2ObjectStride, int32_t src2RowStride, int32_t src2ElementStride, float *dst,
    int32_t dstObjectStride, int32_t dstRowStride, int32_t dstElementStride, int32_t width, int32_t height,
    int32_t count);

/**
 * dst(k,i,j) = src1(i,j) - src2(k,i,j)
 *
 * Checks: null, count, stride, size.
 * Serial below 2000 by width*height*(2*count + 1).
 */
int32_t kormSub_mma_64f(
    const double *src1, int32_t src1RowStride, int32_t src1ElementStride, const double *src2,
    int32_t src2ObjectStride, int32_t src2RowStride, int32_t src2ElementStride, double *dst,
    int32_t dstObjectStride, int32_t dstRowStride, int32_t dstElementStride, int32_t width, int32_t height,
    int32_t count);

/**
 * dst(k,i,j) = src1(i,j) - src2(k,i,j)
 *
 * Checks: null, count, size, stride, offset.
 * Serial below 2000 by width*height*(2*count + 1).
 */
int32_t kormSub_mma_32f_L(
    const float *src1, int32_t src1RowStride, int32_t src1ElementStride, const float *const *src2,
    int32_t src2Offset, int32_t src2RowStride, int32_t src2ElementStride, float *const *dst,
    int32_t dstOffset, int32_t dstRowStride, int32_t dstElementStride, int32_t width, int32_t height,
    int32_t count);

/**
 * dst(k,i,j) = src1(i,j) - src2(k,i,j)
 *
 * Checks: null, count, size, stride, offset.
 * Serial below 2000 by width*height*(2*count + 1).
 */
int32_t kormSub_mma_64f_L(
    const double *src1, int32_t src1RowStride, int32_t src1ElementStride, const double *const *src2,
    int32_t src2Offset, int32_t src2RowStride, int32_t src2ElementStride, double *const *dst,
    int32_t dstOffset, int32_t dstRowStride, int32_t dstElementStride, int32_t width, int32_t height,
    int32_t count);

/**
 * dst(k,i,j) = src1(i,j) - src2(k,i,j)
 *
 * Checks: null, count, size, stride, offset.
 * Serial below 2000 by width*height*(2*count + 1).
 */
int32_t kormSub_mma_32f_P(
    const float *const *src1, int32_t src1Offset, const float *const *src2, int32_t src2Offset,
    int32_t src2ObjectStride, float *const *dst, int32_t dstOffset, int32_t dstObjectStride, int32_t width,
    int32_t height, int32_t count);

/**
 * dst(k,i,j) = src1(i,j) - src2(k,i,j)
 *
 * Checks: null, count, size, stride, offset.
 * Serial below 2000 by width*height*(2*count + 1).
 */
int32_t kormSub_mma_64f_P(
    const double *const *src1, int32_t src1Offset, const double *const *src2, int32_t src2Offset,
    int32_t src2ObjectStride, double *const *dst, int32_t dstOffset, int32_t dstObjectStride, int32_t width,
    int32_t height, int32_t count);

/**
 * dst(k,i,j) = src1(i,j) - src2(k,j,i)
 *
 * Checks: null, count, size, stride.
 * Serial below 3000 (2000 if an element stride is not 4) by width*height*(2*count + 1).
 */
int32_t kormSub_mta_32f(
    const float *src1, int32_t src1RowStride, int32_t src1ElementStride, const float *src2,
    int32_t src2ObjectStride, int32_t src2RowStride, int32_t src2ElementStride, float *dst,
    int32_t dstObjectStride, int32_t dstRowStride, int32_t dstElementStride, int32_t width, int32_t height,
    int32_t count);

/**
 * dst(k,i,j) = src1(i,j) - src2(k,j,i)
 *
 * Checks: null, count, size, stride.
 * Serial below 2000 by width*height*(2*count + 1).
 */
int32_t kormSub_mta_64f(
    const double *src1, int32_t src1RowStride, int32_t src1ElementStride, const double *src2,
    int32_t src2ObjectStride, int32_t src2RowStride, int32_t src2ElementStride, double *dst,
    int32_t dstObjectStride, int32_t dstRowStride, int32_t dstElementStride, int32_t width, int32_t height,
    int32_t count);

/**
 * dst(k,i,j) = src1(i,j) - src2(k,j,i)
 *
 * Checks: null, count, size, stride, offset.
 * Serial below 2000 by width*height*(2*count + 1).
 */
int32_t kormSub_mta_32f_L(
    const float *src1, int32_t src1RowStride, int32_t src1ElementStride, const float *const *src2,
    int32_t src2Offset, int32_t src2RowStride, int32_t src2ElementStride, float *const *dst,
    int32_t dstOffset, int32_t dstRowStride, int32_t dstElementStride, int32_t width, int32_t height,
    int32_t count);

/**
 * dst(k,i,j) = src1(i,j) - src2(k,j,i)
 *
 * Checks: null, count, size, stride, offset.
 * Serial below 2000 by width*height*(2*count + 1).
 */
int32_t kormSub_mta_64f_L(
    const double *src1, int32_t src1RowStride, int32_t src1ElementStride, const double *const *src2,
    int32_t src2Offset, int32_t src2RowStride, int32_t src2ElementStride, double *const *dst,
    int32_t dstOffset, int32_t dstRowStride, int32_t dstElementStride, int32_t width, int32_t height,
    int32_t count);

/**
 * dst(k,i,j) = src1(i,j) - src2(k,j,i)
 *
 * Checks: null, count, size, stride, offset.
 * Serial below 2000 by width*height*(2*count + 1).
 */
int32_t kormSub_mta_32f_P(
    const float *const *src1, int32_t src1Offset, const float *const *src2, int32_t src2Offset,
    int32_t src2ObjectStride, float *const *dst, int32_t dstOffset, int32_t dstObjectStride, int32_t width,
    int32_t height, int32_t count);

/**
 * dst(k,i,j) = src1(i,j) - src2(k,j,i)
 *
 * Checks: null, count, size, stride, offset.
 * Serial below 2000 by width*height*(2*count + 1).
 */
int32_t kormSub_mta_64f_P(
    const double *const *src1, int32_t src1Offset, const double *const *src2, int32_t src2Offset,
    int32_t src2ObjectStride, double *const *dst, int32_t dstOffset, int32_t dstObjectStride, int32_t width,
    int32_t height, int32_t count);

/**
 * dst(k,i,j) = src1(j,i) - src2(k,i,j)
 *
 * Checks: null, count, size, stride.
 * Serial below 3000 (2000 if an element stride is not 4) by width*height*(2*count + 1).
 */
int32_t kormSub_tma_32f(
    const float *src1, int32_t src1RowStride, int32_t src1ElementStride, const float *src2,
    int32_t src2ObjectStride, int32_t src2RowStride, int32_t src2ElementStride, float *dst,
    int32_t dstObjectStride, int32_t dstRowStride, int32_t dstElementStride, int32_t width, int32_t height,
    int32_t count);

/**
 * dst(k,i,j) = src1(j,i) - src2(k,i,j)
 *
 * Checks: null, count, size, stride.
 * Serial below 2000 by width*height*(2*count + 1).
 */
int32_t kormSub_tma_64f(
    const double *src1, int32_t src1RowStride, int32_t src1ElementStride, const double *src2,
    int32_t src2ObjectStride, int32_t src2RowStride, int32_t src2ElementStride, double *dst,
    int32_t dstObjectStride, int32_t dstRowStride, int32_t dstElementStride, int32_t width, int32_t height,
    int32_t count);

/**
 * dst(k,i,j) = src1(j,i) - src2(k,i,j)
 *
 * Checks: null, count, size, stride, offset.
 * Serial below 2000 by width*height*(2*count + 1).
 */
int32_t kormSub_tma_32f_L(
    const float *src1, int32_t src1RowStride, int32_t src1ElementStride, const float *const *src2,
    int32_t src2Offset, int32_t src2RowStride, int32_t src2ElementStride, float *const *dst,
    int32_t dstOffset, int32_t dstRowStride, int32_t dstElementStride, int32_t width, int32_t height,
    int32_t count);

/**
 * dst(k,i,j) = src1(j,i) - src2(k,i,j)
 *
 * Checks: null, count, size, stride, offset.
 * Serial below 2000 by width*height*(2*count + 1).
 */
int32_t kormSub_tma_64f_L(
    const double *src1, int32_t src1RowStride, int32_t src1ElementStride, const double *const *src2,
    int32_t src2Offset, int32_t src2RowStride, int32_t src2ElementStride, double *const *dst,
    int32_t dstOffset, int32_t dstRowStride, int32_t dstElementStride, int32_t width, int32_t height,
    int32_t count);

/**
 * dst(k,i,j) = src1(j,i) - src2(k,i,j)
 *
 * Checks: null, count, size, stride, offset.
 * Serial below 2000 by width*height*(2*count + 1).
 */
int32_t kormSub_tma_32f_P(
    const float *const *src1, int32_t src1Offset, const float *const *src2, int32_t src2Offset,
    int32_t src2ObjectStride, float *const *dst, int32_t dstOffset, int32_t dstObjectStride, int32_t width,
    int32_t height, int32_t count);

/**
 * dst(k,i,j) = src1(j,i) - src2(k,i,j)
 *
 * Checks: null, count, size, stride, offset.
 * Serial below 2000 by width*height*(2*count + 1).
 */
int32_t kormSub_tma_64f_P(
    const double *const *src1, int32_t src1Offset, const double *const *src2, int32_t src2Offset,
    int32_t src2ObjectStride, double *const *dst, int32_t dstOffset, int32_t dstObjectStride, int32_t width,
    int32_t height, int32_t count);

/**
 * dst(k,i,j) = src1(j,i) - src2(k,j,i)
 *
 * Checks: null, count, size, stride.
 * Serial below 3000 (2000 if an element stride is not 4) by width*height*(2*count + 1).
 */
int32_t kormSub_tta_32f(
    const float *src1, int32_t src1RowStride, int32_t src1ElementStride, const float *src2,
    int32_t src2ObjectStride, int32_t src2RowStride, int32_t src2ElementStride, float *dst,
    int32_t dstObjectStride, int32_t dstRowStride, int32_t dstElementStride, int32_t width, int32_t height,
    int32_t count);

/**
 * dst(k,i,j) = src1(j,i) - src2(k,j,i)
 *
 * Checks: null, count, size, stride.
 * Serial below 2000 by width*height*(2*count + 1).
 */
int32_t kormSub_tta_64f(
    const double *src1, int32_t src1RowStride, int32_t src1ElementStride, const double *src2,
    int32_t src2ObjectStride, int32_t src2RowStride, int32_t src2ElementStride, double *dst,
    int32_t dstObjectStride, int32_t dstRowStride, int32_t dstElementStride, int32_t width, int32_t height,
    int32_t count);

/**
 * dst(k,i,j) = src1(j,i) - src2(k,j,i)
 *
 * Checks: null, count, size, stride, offset.
 * Serial below 2000 by width*height*(2*count + 1).
 */
int32_t kormSub_tta_32f_L(
    const float *src1, int32_t src1RowStride, int32_t src1ElementStride, const float *const *src2,
    int32_t src2Offset, int32_t src2RowStride, int32_t src2ElementStride, float *const *dst,
    int32_t dstOffset, int32_t dstRowStride, int32_t dstElementStride, int32_t width, int32_t height,
    int32_t count);

/**
 * dst(k,i,j) = src1(j,i) - src2(k,j,i)
 *
 * Checks: null, count, size, stride, offset.
 * Serial below 2000 by width*height*(2*count + 1).
 */
int32_t kormSub_tta_64f_L(
    const double *src1, int32_t src1RowStride, int32_t src1ElementStride, const double *const *src2,
    int32_t src2Offset, int32_t src2RowStride, int32_t src2ElementStride, double *const *dst,
    int32_t dstOffset, int32_t dstRowStride, int32_t dstElementStride, int32_t width, int32_t height,
    int32_t count);

/**
 * dst(k,i,j) = src1(j,i) - src2(k,j,i)
 *
 * Checks: null, count, size, stride, offset.
 * Serial below 2000 by width*height*(2*count + 1).
 */
int32_t kormSub_tta_32f_P(
    const float *const *src1, int32_t src1Offset, const float *const *src2, int32_t src2Offset,
    int32_t src2ObjectStride, float *const *dst, int32_t dstOffset, int32_t dstObjectStride, int32_t width,
    int32_t height, int32_t count);

/**
 * dst(k,i,j) = src1(j,i) - src2(k,j,i)
 *
 * Checks: null, count, size, stride, offset.
 * Serial below 2000 by width*height*(2*count + 1).
 */
int32_t kormSub_tta_64f_P(
    const double *const *src1, int32_t src1Offset, const double *const *src2, int32_t src2Offset,
    int32_t src2ObjectStride, double *const *dst, int32_t dstOffset, int32_t dstObjectStride, int32_t width,
    int32_t height, int32_t count);

/**
 * dst(k,i,j) = src1(k,i,j) + src2(k,i,j)
 *
 * Checks: null, count, size, stride.
 * Serial below 3000 (2000 if an element stride is not 4) by 3*width*height*count.
 */
int32_t kormAdd_mama_32f(
    const float *src1, int32_t src1ObjectStride, int32_t src1RowStride, int32_t src1ElementStride,
    const float *src2, int32_t src2ObjectStride, int32_t src2RowStride, int32_t src2ElementStride, float *dst,
    int32_t dstObjectStride, int32_t dstRowStride, int32_t dstElementStride, int32_t width, int32_t height,
    int32_t count);

/**
 * dst(k,i,j) = src1(k,i,j) + src2(k,i,j)
 *
 * Checks: null, count, size, stride.
 * Serial below 2000 by 3*width*height*count.
 */
int32_t kormAdd_mama_64f(
    const double *src1, int32_t src1ObjectStride, int32_t src1RowStride, int32_t src1ElementStride,
    const double *src2, int32_t src2ObjectStride, int32_t src2RowStride, int32_t src2ElementStride,
    double *dst, int32_t dstObjectStride, int32_t dstRowStride, int32_t dstElementStride, int32_t width,
    int32_t height, int32_t count);

/**
 * dst(k,i,j) = src1(k,i,j) + src2(k,i,j)
 *
 * Checks: null, count, size, stride, offset.
 * Serial below 2000 by 3*width*height*count.
 */
int32_t kormAdd_mama_32f_L(
    const float *const *src1, int32_t src1Offset, int32_t src1RowStride, int32_t src1ElementStride,
    const float *const *src2, int32_t src2Offset, int32_t src2RowStride, int32_t src2ElementStride,
    float *const *dst, int32_t dstOffset, int32_t dstRowStride, int32_t dstElementStride, int32_t width,
    int32_t height, int32_t count);

/**
 * dst(k,i,j) = src1(k,i,j) + src2(k,i,j)
 *
 * Checks: null, count, size, stride, offset.
 * Serial below 2000 by 3*width*height*count.
 */
int32_t kormAdd_mama_64f_L(
    const double *const *src1, int32_t src1Offset, int32_t src1RowStride, int32_t src1ElementStride,
    const double *const *src2, int32_t src2Offset, int32_t src2RowStride, int32_t src2ElementStride,
    double *const *dst, int32_t dstOffset, int32_t dstRowStride, int32_t dstElementStride, int32_t width,
    int32_t height, int32_t count);

/**
 * dst(k,i,j) = src1(k,i,j) + src2(k,i,j)
 *
 * Checks: null, count, size, stride, offset.
 * Serial below 2000 by 3*width*height*count.
 */
int32_t kormAdd_mama_32f_P(
    const float *const *src1, int32_t src1Offset, int32_t src1ObjectStride, const float *const *src2,
    int32_t src2Offset, int32_t src2ObjectStride, float *const *dst, int32_t dstOffset,
    int32_t dstObjectStride, int32_t width, int32_t height, int32_t count);

/**
 * dst(k,i,j) = src1(k,i,j) + src2(k,i,j)
 *
 * Checks: null, count, size, stride, offset.
 * Serial below 2000 by 3*width*height*count.
 */
int32_t kormAdd_mama_64f_P(
    const double *const *src1, int32_t src1Offset, int32_t src1ObjectStride, const double *const *src2,
    int32_t src2Offset, int32_t src2ObjectStride, double *const *dst, int32_t dstOffset,
    int32_t dstObjectStride, int32_t width, int32_t height, int32_t count);

/**
 * dst(k,i,j) = src1(k,j,i) + src2(k,i,j)
 *
 * Checks: null, count, size, stride.
 * Serial below 3000 (2000 if an element stride is not 4) by 3*width*height*count.
 */
int32_t kormAdd_tama_32f(
    const float *src1, int32_t src1ObjectStride, int32_t src1RowStride, int32_t src1ElementStride,
    const float *src2, int32_t src2ObjectStride, int32_t src2RowStride, int32_t src2ElementStride, float *dst,
    int32_t dstObjectStride, int32_t dstRowStride, int32_t dstElementStride, int32_t width, int32_t height,
    int32_t count);

/**
 * dst(k,i,j) = src1(k,j,i) + src2(k,i,j)
 *
 * Checks: null, count, size, stride.
 * Serial below 2000 by 3*width*height*count.
 */
int32_t kormAdd_tama_64f(
    const double *src1, int32_t src1ObjectStride, int32_t src1RowStride, int32_t src1ElementStride,
    const double *src2, int32_t src2ObjectStride, int32_t src2RowStride, int32_t src2ElementStride,
    double *dst, int32_t dstObjectStride, int32_t dstRowStride, int32_t dstElementStride, int32_t width,
    int32_t height, int32_t count);

/**
 * dst(k,i,j) = src1(k,j,i) + src2(k,i,j)
 *
 * Checks: null, count, size, stride, offset.
 * Serial below 2000 by 3*width*height*count.
 */
int32_t kormAdd_tama_32f_L(
    const float *const *src1, int32_t src1Offset, int32_t src1RowStride, int32_t src1ElementStride,
    const float *const *src2, int32_t src2Offset, int32_t src2RowStride, int32_t src2ElementStride,
    float *const *dst, int32_t dstOffset, int32_t dstRowStride, int32_t dstElementStride, int32_t width,
    int32_t height, int32_t count);

/**
 * dst(k,i,j) = src1(k,j,i) + src2(k,i,j)
 *
 * Checks: null, count, size, stride, offset.
 * Serial below 2000 by 3*width*height*count.
 */
int32_t kormAdd_tama_64f_L(
    const double *const *src1, int32_t src1Offset, int32_t src1RowStride, int32_t src1ElementStride,
    const double *const *src2, int32_t src2Offset, int32_t src2RowStride, int32_t src2ElementStride,
    double *const *dst, int32_t dstOffset, int32_t dstRowStride, int32_t dstElementStride, int32_t width,
    int32_t height, int32_t count);

/**
 * dst(k,i,j) = src1(k,j,i) + src2(k,i,j)
 *
 * Checks: null, count, size, stride, offset.
 * Serial below 2000 by 3*width*height*count.
 */
int32_t kormAdd_tama_32f_P(
    const float *const *src1, int32_t src1Offset, int32_t src1ObjectStride, const float *const *src2,
    int32_t src2Offset, int32_t src2ObjectStride, float *const *dst, int32_t dstOffset,
    int32_t dstObjectStride, int32_t width, int32_t height, int32_t count);

/**
 * dst(k,i,j) = src1(k,j,i) + src2(k,i,j)
 *
 * Checks: null, count, size, stride, offset.
 * Serial below 2000 by 3*width*height*count.
 */
int32_t kormAdd_tama_64f_P(
    const double *const *src1, int32_t src1Offset, int32_t src1ObjectStride, const double *const *src2,
    int32_t src2Offset, int32_t src2ObjectStride, double *const *dst, int32_t dstOffset,
    int32_t dstObjectStride, int32_t width, int32_t height, int32_t count);

/**
 * dst(k,i,j) = src1(k,j,i) + src2(k,j,i)
 *
 * Checks: null, count, size, stride.
 * Serial below 3000 (2000 if an element stride is not 4) by 3*width*height*count.
 */
int32_t kormAdd_tata_32f(
    const float *src1, int32_t src1ObjectStride, int32_t src1RowStride, int32_t src1ElementStride,
    const float *src2, int32_t src2ObjectStride, int32_t src2RowStride, int32_t src2ElementStride, float *dst,
    int32_t dstObjectStride, int32_t dstRowStride, int32_t dstElementStride, int32_t width, int32_t height,
    int32_t count);

/**
 * dst(k,i,j) = src1(k,j,i) + src2(k,j,i)
 *
 * Checks: null, count, size, stride.
 * Serial below 2000 by 3*width*height*count.
 */
int32_t kormAdd_tata_64f(
    const double *src1, int32_t src1ObjectStride, int32_t src1RowStride, int32_t src1ElementStride,
    const double *src2, int32_t src2ObjectStride, int32_t src2RowStride, int32_t src2ElementStride,
    double *dst, int32_t dstObjectStride, int32_t dstRowStride, int32_t dstElementStride, int32_t width,
    int32_t height, int32_t count);

/**
 * dst(k,i,j) = src1(k,j,i) + src2(k,j,i)
 *
 * Checks: null, count, size, stride, offset.
 * Serial below 2000 by 3*width*height*count.
 */
int32_t kormAdd_tata_32f_L(
    const float *const *src1, int32_t src1Offset, int32_t src1RowStride, int32_t src1ElementStride,
    const float *const *src2, int32_t src2Offset, int32_t src2RowStride, int32_t src2ElementStride,
    float *const *dst, int32_t dstOffset, int32_t dstRowStride, int32_t dstElementStride, int32_t width,
    int32_t height, int32_t count);

/**
 * dst(k,i,j) = src1(k,j,i) + src2(k,j,i)
 *
 * Checks: null, count, size, stride, offset.
 * Serial below 2000 by 3*width*height*count.
 */
int32_t kormAdd_tata_64f_L(
    const double *const *src1, int32_t src1Offset, int32_t src1RowStride, int32_t src1ElementStride,
    const double *const *src2, int32_t src2Offset, int32_t src2RowStride, int32_t src2ElementStride,
    double *const *dst, int32_t dstOffset, int32_t dstRowStride, int32_t dstElementStride, int32_t width,
    int32_t height, int32_t count);

/**
 * dst(k,i,j) = src1(k,j,i) + src2(k,j,i)
 *
 * Checks: null, count, size, stride, offset.
 * Serial below 2000 by 3*width*height*count.
 */
int32_t kormAdd_tata_32f_P(
    const float *const *src1, int32_t src1Offset, int32_t src1ObjectStride, const float *const *src2,
    int32_t src2Offset, int32_t src2ObjectStride, float *const *dst, int32_t dstOffset,
    int32_t dstObjectStride, int32_t width, int32_t height, int32_t count);

/**
 * dst(k,i,j) = src1(k,j,i) + src2(k,j,i)
 *
 * Checks: null, count, size, stride, offset.
 * Serial below 2000 by 3*width*height*count.
 */
int32_t kormAdd_tata_64f_P(
    const double *const *src1, int32_t src1Offset, int32_t src1ObjectStride, const double *const *src2,
    int32_t src2Offset, int32_t src2ObjectStride, double *const *dst, int32_t dstOffset,
    int32_t dstObjectStride, int32_t width, int32_t height, int32_t count);

/**
 * dst(k,i,j) = src1(k,i,j) - src2(k,i,j)
 *
 * Checks: null, count, size, stride.
 * Serial below 3000 (2000 if an element stride is not 4) by 3*width*height*count.
 */
int32_t kormSub_mama_32f(
    const float *src1, int32_t src1ObjectStride, int32_t src1RowStride, int32_t src1ElementStride,
    const float *src2, int32_t src2ObjectStride, int32_t src2RowStride, int32_t src2ElementStride, float *dst,
    int32_t dstObjectStride, int32_t dstRowStride, int32_t dstElementStride, int32_t width, int32_t height,
    int32_t count);

/**
 * dst(k,i,j) = src1(k,i,j) - src2(k,i,j)
 *
 * Checks: null, count, size, stride.
 * Serial below 2000 by 3*width*height*count.
 */
int32_t kormSub_mama_64f(
    const double *src1, int32_t src1ObjectStride, int32_t src1RowStride, int32_t src1ElementStride,
    const double *src2, int32_t src2ObjectStride, int32_t src2RowStride, int32_t src2ElementStride,
    double *dst, int32_t dstObjectStride, int32_t dstRowStride, int32_t dstElementStride, int32_t width,
    int32_t height, int32_t count);

/**
 * dst(k,i,j) = src1(k,i,j) - src2(k,i,j)
 *
 * Checks: null, count, size, stride, offset.
 * Serial below 2000 by 3*width*height*count.
 */
int32_t kormSub_mama_32f_L(
    const float *const *src1, int32_t src1Offset, int32_t src1RowStride, int32_t src1ElementStride,
    const float *const *src2, int32_t src2Offset, int32_t src2RowStride, int32_t src2ElementStride,
    float *const *dst, int32_t dstOffset, int32_t dstRowStride, int32_t dstElementStride, int32_t width,
    int32_t height, int32_t count);

/**
 * dst(k,i,j) = src1(k,i,j) - src2(k,i,j)
 *
 * Checks: null, count, size, stride, offset.
 * Serial below 2000 by 3*width*height*count.
 */
int32_t kormSub_mama_64f_L(
    const double *const *src1, int32_t src1Offset, int32_t src1RowStride, int32_t src1ElementStride,
    const double *const *src2, int32_t src2Offset, int32_t src2RowStride, int32_t src2ElementStride,
    double *const *dst, int32_t dstOffset, int32_t dstRowStride, int32_t dstElementStride, int32_t width,
    int32_t height, int32_t count);

/**
 * dst(k,i,j) = src1(k,i,j) - src2(k,i,j)
 *
 * Checks: null, count, size, stride, offset.
 * Serial below 2000 by 3*width*height*count.
 */
int32_t kormSub_mama_32f_P(
    const float *const *src1, int32_t src1Offset, int32_t src1ObjectStride, const float *const *src2,
    int32_t src2Offset, int32_t src2ObjectStride, float *const *dst, int32_t dstOffset,
    int32_t dstObjectStride, int32_t width, int32_t height, int32_t count);

/**
 * dst(k,i,j) = src1(k,i,j) - src2(k,i,j)
 *
 * Checks: null, count, size, stride, offset.
 * Serial below 2000 by 3*width*height*count.
 */
int32_t kormSub_mama_64f_P(
    const double *const *src1, int32_t src1Offset, int32_t src1ObjectStride, const double *const *src2,
    int32_t src2Offset, int32_t src2ObjectStride, double *const *dst, int32_t dstOffset,
    int32_t dstObjectStride, int32_t width, int32_t height, int32_t count);

/**
 * dst(k,i,j) = src1(k,i,j) - src2(k,j,i)
 *
 * Checks: null, count, size, stride.
 * Serial below 3000 (2000 if an element stride is not 4) by 3*width*height*count.
 */
int32_t kormSub_mata_32f(
    const float *src1, int32_t src1ObjectStride, int32_t src1RowStride, int32_t src1ElementStride,
    const float *src2, int32_t src2ObjectStride, int32_t src2RowStride, int32_t src2ElementStride, float *dst,
    int32_t dstObjectStride, int32_t dstRowStride, int32_t dstElementStride, int32_t width, int32_t height,
    int32_t count);

/**
 * dst(k,i,j) = src1(k,i,j) - src2(k,j,i)
 *
 * Checks: null, count, size, stride.
 * Serial below 2000 by 3*width*height*count.
 */
int32_t kormSub_mata_64f(
    const double *src1, int32_t src1ObjectStride, int32_t src1RowStride, int32_t src1ElementStride,
    const double *src2, int32_t src2ObjectStride, int32_t src2RowStride, int32_t src2ElementStride,
    double *dst, int32_t dstObjectStride, int32_t dstRowStride, int32_t dstElementStride, int32_t width,
    int32_t height, int32_t count);

/**
 * dst(k,i,j) = src1(k,i,j) - src2(k,j,i)
 *
 * Checks: null, count, size, stride, offset.
 * Serial below 2000 by 3*width*height*count.
 */
int32_t kormSub_mata_32f_L(
    const float *const *src1, int32_t src1Offset, int32_t src1RowStride, int32_t src1ElementStride,
    const float *const *src2, int32_t src2Offset, int32_t src2RowStride, int32_t src2ElementStride,
    float *const *dst, int32_t dstOffset, int32_t dstRowStride, int32_t dstElementStride, int32_t width,
    int32_t height, int32_t count);

/**
 * dst(k,i,j) = src1(k,i,j) - src2(k,j,i)
 *
 * Checks: null, count, size, stride, offset.
 * Serial below 2000 by 3*width*height*count.
 */
int32_t kormSub_mata_64f_L(
    const double *const *src1, int32_t src1Offset, int32_t src1RowStride, int32_t src1ElementStride,
    const double *const *src2, int32_t src2Offset, int32_t src2RowStride, int32_t src2ElementStride,
    double *const *dst, int32_t dstOffset, int32_t dstRowStride, int32_t dstElementStride, int32_t width,
    int32_t height, int32_t count);

/**
 * dst(k,i,j) = src1(k,i,j) - src2(k,j,i)
 *
 * Checks: null, count, size, stride, offset.
 * Serial below 2000 by 3*width*height*count.
 */
int32_t kormSub_mata_32f_P(
    const float *const *src1, int32_t src1Offset, int32_t src1ObjectStride, const float *const *src2,
    int32_t src2Offset, int32_t src2ObjectStride, float *const *dst, int32_t dstOffset,
    int32_t dstObjectStride, int32_t width, int32_t height, int32_t count);

/**
 * dst(k,i,j) = src1(k,i,j) - src2(k,j,i)
 *
 * Checks: null, count, size, stride, offset.
 * Serial below 2000 by 3*width*height*count.
 */
int32_t kormSub_mata_64f_P(
    const double *const *src1, int32_t src1Offset, int32_t src1ObjectStride, const double *const *src2,
    int32_t src2Offset, int32_t src2ObjectStride, double *const *dst, int32_t dstOffset,
    int32_t dstObjectStride, int32_t width, int32_t height, int32_t count);

/**
 * dst(k,i,j) = src1(k,j,i) - src2(k,i,j)
 *
 * Checks: null, count, size, stride.
 * Serial below 3000 (2000 if an element stride is not 4) by 3*width*height*count.
 */
int32_t kormSub_tama_32f(
    const float *src1, int32_t src1ObjectStride, int32_t src1RowStride, int32_t src1ElementStride,
    const float *src2, int32_t src2ObjectStride, int32_t src2RowStride, int32_t src2ElementStride, float *dst,
    int32_t dstObjectStride, int32_t dstRowStride, int32_t dstElementStride, int32_t width, int32_t height,
    int32_t count);

/**
 * dst(k,i,j) = src1(k,j,i) - src2(k,i,j)
 *
 * Checks: null, count, size, stride.
 * Serial below 2000 by 3*width*height*count.
 */
int32_t kormSub_tama_64f(
    const double *src1, int32_t src1ObjectStride, int32_t src1RowStride, int32_t src1ElementStride,
    const double *src2, int32_t src2ObjectStride, int32_t src2RowStride, int32_t src2ElementStride,
    double *dst, int32_t dstObjectStride, int32_t dstRowStride, int32_t dstElementStride, int32_t width,
    int32_t height, int32_t count);

/**
 * dst(k,i,j) = src1(k,j,i) - src2(k,i,j)
 *
 * Checks: null, count, size, stride, offset.
 * Serial below 2000 by 3*width*height*count.
 */
int32_t kormSub_tama_32f_L(
    const float *const *src1, int32_t src1Offset, int32_t src1RowStride, int32_t src1ElementStride,
    const float *const *src2, int32_t src2Offset, int32_t src2RowStride, int32_t src2ElementStride,
    float *const *dst, int32_t dstOffset, int32_t dstRowStride, int32_t dstElementStride, int32_t width,
    int32_t height, int32_t count);

/**
 * dst(k,i,j) = src1(k,j,i) - src2(k,i,j)
 *
 * Checks: null, count, size, stride, offset.
 * Serial below 2000 by 3*width*height*count.
 */
int32_t kormSub_tama_64f_L(
    const double *const *src1, int32_t src1Offset, int32_t src1RowStride, int32_t src1ElementStride,
    const double *const *src2, int32_t src2Offset, int32_t src2RowStride, int32_t src2ElementStride,
    double *const *dst, int32_t dstOffset, int32_t dstRowStride, int32_t dstElementStride, int32_t width,
    int32_t height, int32_t count);

/**
 * dst(k,i,j) = src1(k,j,i) - src2(k,i,j)
 *
 * Checks: null, count, size, stride, offset.
 * Serial below 2000 by 3*width*height*count.
 */
int32_t kormSub_tama_32f_P(
    const float *const *src1, int32_t src1Offset, int32_t src1ObjectStride, const float *const *src2,
    int32_t src2Offset, int32_t src2ObjectStride, float *const *dst, int32_t dstOffset,
    int32_t dstObjectStride, int32_t width, int32_t height, int32_t count);

/**
 * dst(k,i,j) = src1(k,j,i) - src2(k,i,j)
 *
 * Checks: null, count, size, stride, offset.
 * Serial below 2000 by 3*width*height*count.
 */
int32_t kormSub_tama_64f_P(
    const double *const *src1, int32_t src1Offset, int32_t src1ObjectStride, const double *const *src2,
    int32_t src2Offset, int32_t src2ObjectStride, double *const *dst, int32_t dstOffset,
    int32_t dstObjectStride, int32_t width, int32_t height, int32_t count);

/**
 * dst(k,i,j) = src1(k,j,i) - src2(k,j,i)
 *
 * Checks: null, count, size, stride.
 * Serial below 3000 (2000 if an element stride is not 4) by 3*width*height*count.
 */
int32_t kormSub_tata_32f(
    const float *src1, int32_t src1ObjectStride, int32_t src1RowStride, int32_t src1ElementStride,
    const float *src2, int32_t src2ObjectStride, int32_t src2RowStride, int32_t src2ElementStride, float *dst,
    int32_t dstObjectStride, int32_t dstRowStride, int32_t dstElementStride, int32_t width, int32_t height,
    int32_t count);

/**
 * dst(k,i,j) = src1(k,j,i) - src2(k,j,i)
 *
 * Checks: null, count, size, stride.
 * Serial below 2000 by 3*width*height*count.
 */
int32_t kormSub_tata_64f(
    const double *src1, int32_t src1ObjectStride, int32_t src1RowStride, int32_t src1ElementStride,
    const double *src2, int32_t src2ObjectStride, int32_t src2RowStride, int32_t src2ElementStride,
    double *dst, int32_t dstObjectStride, int32_t dstRowStride, int32_t dstElementStride, int32_t width,
    int32_t height, int32_t count);

/**
 * dst(k,i,j) = src1(k,j,i) - src2(k,j,i)
 *
 * Checks: null, count, size, stride, offset.
 * Serial below 2000 by 3*width*height*count.
 */
int32_t kormSub_tata_32f_L(
    const float *const *src1, int32_t src1Offset, int32_t src1RowStride, int32_t src1ElementStride,
    const float *const *src2, int32_t src2Offset, int32_t src2RowStride, int32_t src2ElementStride,
    float *const *dst, int32_t dstOffset, int32_t dstRowStride, int32_t dstElementStride, int32_t width,
    int32_t height, int32_t count);

/**
 * dst(k,i,j) = src1(k,j,i) - src2(k,j,i)
 *
 * Checks: null, count, size, stride, offset.
 * Serial below 2000 by 3*width*height*count.
 */
int32_t kormSub_tata_64f_L(
    const double *const *src1, int32_t src1Offset, int32_t src1RowStride, int32_t src1ElementStride,
    const double *const *src2, int32_t src2Offset, int32_t src2RowStride, int32_t src2ElementStride,
    double *const *dst, int32_t dstOffset, int32_t dstRowStride, int32_t dstElementStride, int32_t width,
    int32_t height, int32_t count);

/**
 * dst(k,i,j) = src1(k,j,i) - src2(k,j,i)
 *
 * Checks: null, count, size, stride, offset.
 * Serial below 2000 by 3*width*height*count.
 */
int32_t kormSub_tata_32f_P(
    const float *const *src1, int32_t src1Offset, int32_t src1ObjectStride, const float *const *src2,
    int32_t src2Offset, int32_t src2ObjectStride, float *const *dst, int32_t dstOffset,
    int32_t dstObjectStride, int32_t width, int32_t height, int32_t count);

/**
 * dst(k,i,j) = src1(k,j,i) - src2(k,j,i)
 *
 * Checks: null, count, size, stride, offset.
 * Serial below 2000 by 3*width*height*count.
 */
int32_t kormSub_tata_64f_P(
    const double *const *src1, int32_t src1Offset, int32_t src1ObjectStride, const double *const *src2,
    int32_t src2Offset, int32_t src2ObjectStride, double *const *dst, int32_t dstOffset,
    int32_t dstObjectStride, int32_t width, int32_t height, int32_t count);

/** @} */


/**
 * @defgroup vector_sums Sums and differences of vectors
 * dst = first + second or first - second, element by element, in the order of the operands in the name.
 *
 * Shapes: all vectors have `length` elements.
 *
 * Overlap: dst may be a source, at the same place with the same strides. Two single vectors in standard layout with
 * adjacent elements and more than 6 of them may overlap in any way: elements are then done in ascending order, one by
 * one. Any other overlap of dst and a source leaves dst undefined.
 *
 * Status: ::korStatusOk, ::korStatusNullPointer, ::korStatusBadSize, ::korStatusBadStride; array forms
 * ::korStatusBadCount; list and pointer forms ::korStatusBadOffset. Other than with ::korStatusOk nothing is written.
 * @{
 */

/**
 * dst(j) = src1(j) + src2(j)
 *
 * Checks: null, size, stride.
 */
int32_t kormAdd_vv_32f(
    const float *src1, int32_t src1ElementStride, const float *src2, int32_t src2ElementStride, float *dst,
    int32_t dstElementStride, int32_t length);

/**
 * dst(j) = src1(j) + src2(j)
 *
 * Checks: null, size, stride.
 */
int32_t kormAdd_vv_64f(
    const double *src1, int32_t src1ElementStride, const double *src2, int32_t src2ElementStride, double *dst,
    int32_t dstElementStride, int32_t length);

/**
 * dst(j) = src1(j) + src2(j)
 *
 * Checks: null, size, offset.
 */
int32_t kormAdd_vv_32f_P(
    const float *const *src1, int32_t src1Offset, const float *const *src2, int32_t src2Offset,
    float *const *dst, int32_t dstOffset, int32_t length);

/**
 * dst(j) = src1(j) + src2(j)
 *
 * Checks: null, size, offset.
 */
int32_t kormAdd_vv_64f_P(
    const double *const *src1, int32_t src1Offset, const double *const *src2, int32_t src2Offset,
    double *const *dst, int32_t dstOffset, int32_t length);

/**
 * dst(j) = src1(j) - src2(j)
 *
 * Checks: null, size, stride.
 */
int32_t kormSub_vv_32f(
    const float *src1, int32_t src1ElementStride, const float *src2, int32_t src2ElementStride, float *dst,
    int32_t dstElementStride, int32_t length);

/**
 * dst(j) = src1(j) - src2(j)
 *
 * Checks: null, size, stride.
 */
int32_t kormSub_vv_64f(
    const double *src1, int32_t src1ElementStride, const double *src2, int32_t src2ElementStride, double *dst,
    int32_t dstElementStride, int32_t length);

/**
 * dst(j) = src1(j) - src2(j)
 *
 * Checks: null, size, offset.
 */
int32_t kormSub_vv_32f_P(
    const float *const *src1, int32_t src1Offset, const float *const *src2, int32_t src2Offset,
    float *const *dst, int32_t dstOffset, int32_t length);

/**
 * dst(j) = src1(j) - src2(j)
 *
 * Checks: null, size, offset.
 */
int32_t kormSub_vv_64f_P(
    const double *const *src1, int32_t src1Offset, const double *const *src2, int32_t src2Offset,
    double *const *dst, int32_t dstOffset, int32_t length);

/**
 * dst(k,j) = src1(k,j) + src2(j)
 *
 * Checks: null, size, stride, count.
 * Serial up to 4800 by (2*count + 1)*length.
 */
int32_t kormAdd_vav_32f(
    const float *src1, int32_t src1ObjectStride, int32_t src1ElementStride, const float *src2,
    int32_t src2ElementStride, float *dst, int32_t dstObjectStride, int32_t dstElementStride, int32_t length,
    int32_t count);

/**
 * dst(k,j) = src1(k,j) + src2(j)
 *
 * Checks: null, size, stride, count.
 * Serial up to 1400 by (2*count + 1)*length.
 */
int32_t kormAdd_vav_64f(
    const double *src1, int32_t src1ObjectStride, int32_t src1ElementStride, const double *src2,
    int32_t src2ElementStride, double *dst, int32_t dstObjectStride, int32_t dstElementStride, int32_t length,
    int32_t count);

/**
 * dst(k,j) = src1(k,j) + src2(j)
 *
 * Checks: null, size, stride, offset, count.
 * Serial up to 2500 by (2*count + 1)*length.
 */
int32_t kormAdd_vav_32f_L(
    const float *const *src1, int32_t src1Offset, int32_t src1ElementStride, const float *src2,
    int32_t src2ElementStride, float *const *dst, int32_t dstOffset, int32_t dstElementStride, int32_t length,
    int32_t count);

/**
 * dst(k,j) = src1(k,j) + src2(j)
 *
 * Checks: null, size, stride, offset, count.
 * Serial up to 2500 by (2*count + 1)*length.
 */
int32_t kormAdd_vav_64f_L(
    const double *const *src1, int32_t src1Offset, int32_t src1ElementStride, const double *src2,
    int32_t src2ElementStride, double *const *dst, int32_t dstOffset, int32_t dstElementStride,
    int32_t length, int32_t count);

/**
 * dst(k,j) = src1(k,j) + src2(j)
 *
 * Checks: null, size, stride, count, offset.
 * Serial up to 1500 by (2*count + 1)*length.
 */
int32_t kormAdd_vav_32f_P(
    const float *const *src1, int32_t src1Offset, int32_t src1ObjectStride, const float *const *src2,
    int32_t src2Offset, float *const *dst, int32_t dstOffset, int32_t dstObjectStride, int32_t length,
    int32_t count);

/**
 * dst(k,j) = src1(k,j) + src2(j)
 *
 * Checks: null, size, stride, count, offset.
 * Serial up to 1500 by (2*count + 1)*length.
 */
int32_t kormAdd_vav_64f_P(
    const double *const *src1, int32_t src1Offset, int32_t src1ObjectStride, const double *const *src2,
    int32_t src2Offset, double *const *dst, int32_t dstOffset, int32_t dstObjectStride, int32_t length,
    int32_t count);

/**
 * dst(k,j) = src1(k,j) - src2(j)
 *
 * Checks: null, size, stride, count.
 * Serial up to 4800 by (2*count + 1)*length.
 */
int32_t kormSub_vav_32f(
    const float *src1, int32_t src1ObjectStride, int32_t src1ElementStride, const float *src2,
    int32_t src2ElementStride, float *dst, int32_t dstObjectStride, int32_t dstElementStride, int32_t length,
    int32_t count);

/**
 * dst(k,j) = src1(k,j) - src2(j)
 *
 * Checks: null, size, stride, count.
 * Serial up to 1400 by (2*count + 1)*length.
 */
int32_t kormSub_vav_64f(
    const double *src1, int32_t src1ObjectStride, int32_t src1ElementStride, const double *src2,
    int32_t src2ElementStride, double *dst, int32_t dstObjectStride, int32_t dstElementStride, int32_t length,
    int32_t count);

/**
 * dst(k,j) = src1(k,j) - src2(j)
 *
 * Checks: null, size, stride, offset, count.
 * Serial up to 2500 by (2*count + 1)*length.
 */
int32_t kormSub_vav_32f_L(
    const float *const *src1, int32_t src1Offset, int32_t src1ElementStride, const float *src2,
    int32_t src2ElementStride, float *const *dst, int32_t dstOffset, int32_t dstElementStride, int32_t length,
    int32_t count);

/**
 * dst(k,j) = src1(k,j) - src2(j)
 *
 * Checks: null, size, stride, offset, count.
 * Serial up to 2500 by (2*count + 1)*length.
 */
int32_t kormSub_vav_64f_L(
    const double *const *src1, int32_t src1Offset, int32_t src1ElementStride, const double *src2,
    int32_t src2ElementStride, double *const *dst, int32_t dstOffset, int32_t dstElementStride,
    int32_t length, int32_t count);

/**
 * dst(k,j) = src1(k,j) - src2(j)
 *
 * Checks: null, size, stride, count, offset.
 * Serial up to 1500 by (2*count + 1)*length.
 */
int32_t kormSub_vav_32f_P(
    const float *const *src1, int32_t src1Offset, int32_t src1ObjectStride, const float *const *src2,
    int32_t src2Offset, float *const *dst, int32_t dstOffset, int32_t dstObjectStride, int32_t length,
    int32_t count);

/**
 * dst(k,j) = src1(k,j) - src2(j)
 *
 * Checks: null, size, stride, count, offset.
 * Serial up to 1500 by (2*count + 1)*length.
 */
int32_t kormSub_vav_64f_P(
    const double *const *src1, int32_t src1Offset, int32_t src1ObjectStride, const double *const *src2,
    int32_t src2Offset, double *const *dst, int32_t dstOffset, int32_t dstObjectStride, int32_t length,
    int32_t count);

/**
 * dst(k,j) = src1(j) - src2(k,j)
 *
 * Checks: null, count, size, stride.
 * Serial up to 4800 by (2*count + 1)*length.
 */
int32_t kormSub_vva_32f(
    const float *src1, int32_t src1ElementStride, const float *src2, int32_t src2ObjectStride,
    int32_t src2ElementStride, float *dst, int32_t dstObjectStride, int32_t dstElementStride, int32_t length,
    int32_t count);

/**
 * dst(k,j) = src1(j) - src2(k,j)
 *
 * Checks: null, count, size, stride.
 * Serial up to 1400 by (2*count + 1)*length.
 */
int32_t kormSub_vva_64f(
    const double *src1, int32_t src1ElementStride, const double *src2, int32_t src2ObjectStride,
    int32_t src2ElementStride, double *dst, int32_t dstObjectStride, int32_t dstElementStride, int32_t length,
    int32_t count);

/**
 * dst(k,j) = src1(j) - src2(k,j)
 *
 * Checks: null, count, size, stride, offset.
 * Serial up to 2500 by (2*count + 1)*length.
 */
int32_t kormSub_vva_32f_L(
    const float *src1, int32_t src1ElementStride, const float *const *src2, int32_t src2Offset,
    int32_t src2ElementStride, float *const *dst, int32_t dstOffset, int32_t dstElementStride, int32_t length,
    int32_t count);

/**
 * dst(k,j) = src1(j) - src2(k,j)
 *
 * Checks: null, count, size, stride, offset.
 * Serial up to 2500 by (2*count + 1)*length.
 */
int32_t kormSub_vva_64f_L(
    const double *src1, int32_t src1ElementStride, const double *const *src2, int32_t src2Offset,
    int32_t src2ElementStride, double *const *dst, int32_t dstOffset, int32_t dstElementStride,
    int32_t length, int32_t count);

/**
 * dst(k,j) = src1(j) - src2(k,j)
 *
 * Checks: null, count, size, stride, offset.
 * Serial up to 1500 by (2*count + 1)*length.
 */
int32_t kormSub_vva_32f_P(
    const float *const *src1, int32_t src1Offset, const float *const *src2, int32_t src2Offset,
    int32_t src2ObjectStride, float *const *dst, int32_t dstOffset, int32_t dstObjectStride, int32_t length,
    int32_t count);

/**
 * dst(k,j) = src1(j) - src2(k,j)
 *
 * Checks: null, count, size, stride, offset.
 */
int32_t kormSub_vva_64f_P(
    const double *const *src1, int32_t src1Offset, const double *const *src2, int32_t src2Offset,
    int32_t src2ObjectStride, double *const *dst, int32_t dstOffset, int32_t dstObjectStride, int32_t length,
    int32_t count);

/**
 * dst(k,j) = src1(k,j) + src2(k,j)
 *
 * Checks: null, count, size, stride.
 * Serial up to 4800 by 3*length*count.
 */
int32_t kormAdd_vava_32f(
    const float *src1, int32_t src1ObjectStride, int32_t src1ElementStride, const float *src2,
    int32_t src2ObjectStride, int32_t src2ElementStride, float *dst, int32_t dstObjectStride,
    int32_t dstElementStride, int32_t length, int32_t count);

/**
 * dst(k,j) = src1(k,j) + src2(k,j)
 *
 * Checks: null, count, size, stride.
 * Serial up to 1400 by 3*length*count.
 */
int32_t kormAdd_vava_64f(
    const double *src1, int32_t src1ObjectStride, int32_t src1ElementStride, const double *src2,
    int32_t src2ObjectStride, int32_t src2ElementStride, double *dst, int32_t dstObjectStride,
    int32_t dstElementStride, int32_t length, int32_t count);

/**
 * dst(k,j) = src1(k,j) + src2(k,j)
 *
 * Checks: null, count, size, stride, offset.
 * Serial up to 2500 by 3*length*count.
 */
int32_t kormAdd_vava_32f_L(
    const float *const *src1, int32_t src1Offset, int32_t src1ElementStride, const float *const *src2,
    int32_t src2Offset, int32_t src2ElementStride, float *const *dst, int32_t dstOffset,
    int32_t dstElementStride, int32_t length, int32_t count);

/**
 * dst(k,j) = src1(k,j) + src2(k,j)
 *
 * Checks: null, count, size, stride, offset.
 * Serial up to 2500 by 3*length*count.
 */
int32_t kormAdd_vava_64f_L(
    const double *const *src1, int32_t src1Offset, int32_t src1ElementStride, const double *const *src2,
    int32_t src2Offset, int32_t src2ElementStride, double *const *dst, int32_t dstOffset,
    int32_t dstElementStride, int32_t length, int32_t count);

/**
 * dst(k,j) = src1(k,j) + src2(k,j)
 *
 * Checks: null, count, size, stride, offset.
 * Serial up to 1500 by 3*length*count.
 */
int32_t kormAdd_vava_32f_P(
    const float *const *src1, int32_t src1Offset, int32_t src1ObjectStride, const float *const *src2,
    int32_t src2Offset, int32_t src2ObjectStride, float *const *dst, int32_t dstOffset,
    int32_t dstObjectStride, int32_t length, int32_t count);

/**
 * dst(k,j) = src1(k,j) + src2(k,j)
 *
 * Checks: null, count, size, stride, offset.
 * Serial up to 1500 by 3*length*count.
 */
int32_t kormAdd_vava_64f_P(
    const double *const *src1, int32_t src1Offset, int32_t src1ObjectStride, const double *const *src2,
    int32_t src2Offset, int32_t src2ObjectStride, double *const *dst, int32_t dstOffset,
    int32_t dstObjectStride, int32_t length, int32_t count);

/**
 * dst(k,j) = src1(k,j) - src2(k,j)
 *
 * Checks: null, count, size, stride.
 * Serial up to 4800 by 3*length*count.
 */
int32_t kormSub_vava_32f(
    const float *src1, int32_t src1ObjectStride, int32_t src1ElementStride, const float *src2,
    int32_t src2ObjectStride, int32_t src2ElementStride, float *dst, int32_t dstObjectStride,
    int32_t dstElementStride, int32_t length, int32_t count);

/**
 * dst(k,j) = src1(k,j) - src2(k,j)
 *
 * Checks: null, count, size, stride.
 * Serial up to 1400 by 3*length*count.
 */
int32_t kormSub_vava_64f(
    const double *src1, int32_t src1ObjectStride, int32_t src1ElementStride, const double *src2,
    int32_t src2ObjectStride, int32_t src2ElementStride, double *dst, int32_t dstObjectStride,
    int32_t dstElementStride, int32_t length, int32_t count);

/**
 * dst(k,j) = src1(k,j) - src2(k,j)
 *
 * Checks: null, count, size, stride, offset.
 * Serial up to 2500 by 3*length*count.
 */
int32_t kormSub_vava_32f_L(
    const float *const *src1, int32_t src1Offset, int32_t src1ElementStride, const float *const *src2,
    int32_t src2Offset, int32_t src2ElementStride, float *const *dst, int32_t dstOffset,
    int32_t dstElementStride, int32_t length, int32_t count);

/**
 * dst(k,j) = src1(k,j) - src2(k,j)
 *
 * Checks: null, count, size, stride, offset.
 * Serial up to 2500 by 3*length*count.
 */
int32_t kormSub_vava_64f_L(
    const double *const *src1, int32_t src1Offset, int32_t src1ElementStride, const double *const *src2,
    int32_t src2Offset, int32_t src2ElementStride, double *const *dst, int32_t dstOffset,
    int32_t dstElementStride, int32_t length, int32_t count);

/**
 * dst(k,j) = src1(k,j) - src2(k,j)
 *
 * Checks: null, count, size, stride, offset.
 * Serial up to 1500 by 3*length*count.
 */
int32_t kormSub_vava_32f_P(
    const float *const *src1, int32_t src1Offset, int32_t src1ObjectStride, const float *const *src2,
    int32_t src2Offset, int32_t src2ObjectStride, float *const *dst, int32_t dstOffset,
    int32_t dstObjectStride, int32_t length, int32_t count);

/**
 * dst(k,j) = src1(k,j) - src2(k,j)
 *
 * Checks: null, count, size, stride, offset.
 * Serial up to 1500 by 3*length*count.
 */
int32_t kormSub_vava_64f_P(
    const double *const *src1, int32_t src1Offset, int32_t src1ObjectStride, const double *const *src2,
    int32_t src2Offset, int32_t src2ObjectStride, double *const *dst, int32_t dstOffset,
    int32_t dstObjectStride, int32_t length, int32_t count);

/** @} */


/**
 * @defgroup scaling Arithmetic with constants
 * A constant is added to, subtracted from or multiplied with the elements of a vector or matrix; `Sub` also has forms
 * with the constant as the minuend, whose names begin with it. One constant serves all objects (`c`, by value) or each
 * object has its own (`ca`). The arguments of the vector come first, those of the constant second, whatever the name.
 *
 * Shapes: `width` and `height` are those of the result, a transposed matrix is stored with `width` rows and `height`
 * columns; vectors have `length` elements.
 *
 * Overlap: dst may be an untransposed source, at the same place with the same strides. A single vector in standard
 * layout with adjacent elements and more than 6 of them may overlap dst in any way: elements are then done in
 * ascending order, one by one. Any other overlap of dst and a source, constants included, leaves dst undefined.
 *
 * Status: ::korStatusOk, ::korStatusNullPointer, ::korStatusBadSize, ::korStatusBadStride; array forms
 * ::korStatusBadCount; list and pointer forms ::korStatusBadOffset. Other than with ::korStatusOk nothing is written.
 * `kormAdd_vca_64f_P` and `kormSub_cav_32f_P` take any offset, negative and odd ones too.
 * @{
 */

/**
 * dst(j) = src(j) + val
 *
 * Checks: null, size, stride.
 */
int32_t kormAdd_vc_32f(
    const float *src, int32_t srcElementStride, float val, float *dst, int32_t dstElementStride,
    int32_t length);

/**
 * dst(j) = src(j) + val
 *
 * Checks: null, size, stride.
 */
int32_t kormAdd_vc_64f(
    const double *src, int32_t srcElementStride, double val, double *dst, int32_t dstElementStride,
    int32_t length);

/**
 * dst(j) = src(j) + val
 *
 * Checks: null, size, offset.
 */
int32_t kormAdd_vc_32f_P(
    const float *const *src, int32_t srcOffset, float val, float *const *dst, int32_t dstOffset,
    int32_t length);

/**
 * dst(j) = src(j) + val
 *
 * Checks: null, size, offset.
 */
int32_t kormAdd_vc_64f_P(
    const double *const *src, int32_t srcOffset, double val, double *const *dst, int32_t dstOffset,
    int32_t length);

/**
 * dst(j) = src(j) - val
 *
 * Checks: null, size, stride.
 */
int32_t kormSub_vc_32f(
    const float *src, int32_t srcElementStride, float val, float *dst, int32_t dstElementStride,
    int32_t length);

/**
 * dst(j) = src(j) - val
 *
 * Checks: null, size, stride.
 */
int32_t kormSub_vc_64f(
    const double *src, int32_t srcElementStride, double val, double *dst, int32_t dstElementStride,
    int32_t length);

/**
 * dst(j) = src(j) - val
 *
 * Checks: null, size, offset.
 */
int32_t kormSub_vc_32f_P(
    const float *const *src, int32_t srcOffset, float val, float *const *dst, int32_t dstOffset,
    int32_t length);

/**
 * dst(j) = src(j) - val
 *
 * Checks: null, size, offset.
 */
int32_t kormSub_vc_64f_P(
    const double *const *src, int32_t srcOffset, double val, double *const *dst, int32_t dstOffset,
    int32_t length);

/**
 * dst(j) = val - src(j)
 *
 * Checks: null, size, stride.
 */
int32_t kormSub_cv_32f(
    const float *src, int32_t srcElementStride, float val, float *dst, int32_t dstElementStride,
    int32_t length);

/**
 * dst(j) = val - src(j)
 *
 * Checks: null, size, stride.
 */
int32_t kormSub_cv_64f(
    const double *src, int32_t srcElementStride, double val, double *dst, int32_t dstElementStride,
    int32_t length);

/**
 * dst(j) = val - src(j)
 *
 * Checks: null, size, offset.
 */
int32_t kormSub_cv_32f_P(
    const float *const *src, int32_t srcOffset, float val, float *const *dst, int32_t dstOffset,
    int32_t length);

/**
 * dst(j) = val - src(j)
 *
 * Checks: null, size, offset.
 */
int32_t kormSub_cv_64f_P(
    const double *const *src, int32_t srcOffset, double val, double *const *dst, int32_t dstOffset,
    int32_t length);

/**
 * dst(j) = src(j) * val
 *
 * Checks: null, size, stride.
 */
int32_t kormMul_vc_32f(
    const float *src, int32_t srcElementStride, float val, float *dst, int32_t dstElementStride,
    int32_t length);

/**
 * dst(j) = src(j) * val
 *
 * Checks: null, size, stride.
 */
int32_t kormMul_vc_64f(
    const double *src, int32_t srcElementStride, double val, double *dst, int32_t dstElementStride,
    int32_t length);

/**
 * dst(j) = src(j) * val
 *
 * Checks: null, size, offset.
 */
int32_t kormMul_vc_32f_P(
    const float *const *src, int32_t srcOffset, float val, float *const *dst, int32_t dstOffset,
    int32_t length);

/**
 * dst(j) = src(j) * val
 *
 * Checks: null, size, offset.
 */
int32_t kormMul_vc_64f_P(
    const double *const *src, int32_t srcOffset, double val, double *const *dst, int32_t dstOffset,
    int32_t length);

/**
 * dst(i,j) = src(i,j) * val
 *
 * Checks: null, size, stride.
 */
int32_t kormMul_mc_32f(
    const float *src, int32_t srcRowStride, int32_t srcElementStride, float val, float *dst,
    int32_t dstRowStride, int32_t dstElementStride, int32_t width, int32_t height);

/**
 * dst(i,j) = src(i,j) * val
 *
 * Checks: null, size, stride.
 */
int32_t kormMul_mc_64f(
    const double *src, int32_t srcRowStride, int32_t srcElementStride, double val, double *dst,
    int32_t dstRowStride, int32_t dstElementStride, int32_t width, int32_t height);

/**
 * dst(i,j) = src(i,j) * val
 *
 * Checks: null, size, offset.
 */
int32_t kormMul_mc_32f_P(
    const float *const *src, int32_t srcOffset, float val, float *const *dst, int32_t dstOffset,
    int32_t width, int32_t height);

/**
 * dst(i,j) = src(i,j) * val
 *
 * Checks: null, size, offset.
 */
int32_t kormMul_mc_64f_P(
    const double *const *src, int32_t srcOffset, double val, double *const *dst, int32_t dstOffset,
    int32_t width, int32_t height);

/**
 * dst(i,j) = src(j,i) * val
 *
 * Checks: null, size, stride.
 */
int32_t kormMul_tc_32f(
    const float *src, int32_t srcRowStride, int32_t srcElementStride, float val, float *dst,
    int32_t dstRowStride, int32_t dstElementStride, int32_t width, int32_t height);

/**
 * dst(i,j) = src(j,i) * val
 *
 * Checks: null, size, stride.
 */
int32_t kormMul_tc_64f(
    const double *src, int32_t srcRowStride, int32_t srcElementStride, double val, double *dst,
    int32_t dstRowStride, int32_t dstElementStride, int32_t width, int32_t height);

/**
 * dst(i,j) = src(j,i) * val
 *
 * Checks: null, size, offset.
 */
int32_t kormMul_tc_32f_P(
    const float *const *src, int32_t srcOffset, float val, float *const *dst, int32_t dstOffset,
    int32_t width, int32_t height);

/**
 * dst(i,j) = src(j,i) * val
 *
 * Checks: null, size, offset.
 */
int32_t kormMul_tc_64f_P(
    const double *const *src, int32_t srcOffset, double val, double *const *dst, int32_t dstOffset,
    int32_t width, int32_t height);

/**
 * dst(k,j) = src(k,j) + val
 *
 * Checks: null, count, size, stride.
 * Serial up to 4800 by (2*count + 1)*length.
 */
int32_t kormAdd_vac_32f(
    const float *src, int32_t srcObjectStride, int32_t srcElementStride, float val, float *dst,
    int32_t dstObjectStride, int32_t dstElementStride, int32_t length, int32_t count);

/**
 * dst(k,j) = src(k,j) + val
 *
 * Checks: null, count, size, stride.
 * Serial up to 1400 by (2*count + 1)*length.
 */
int32_t kormAdd_vac_64f(
    const double *src, int32_t srcObjectStride, int32_t srcElementStride, double val, double *dst,
    int32_t dstObjectStride, int32_t dstElementStride, int32_t length, int32_t count);

/**
 * dst(k,j) = src(k,j) + val
 *
 * Checks: null, count, size, stride, offset.
 * Serial up to 2500 by (2*count + 1)*length.
 */
int32_t kormAdd_vac_32f_L(
    const float *const *src, int32_t srcOffset, int32_t srcElementStride, float val, float *const *dst,
    int32_t dstOffset, int32_t dstElementStride, int32_t length, int32_t count);

/**
 * dst(k,j) = src(k,j) + val
 *
 * Checks: null, count, size, stride, offset.
 * Serial up to 2500 by (2*count + 1)*length.
 */
int32_t kormAdd_vac_64f_L(
    const double *const *src, int32_t srcOffset, int32_t srcElementStride, double val, double *const *dst,
    int32_t dstOffset, int32_t dstElementStride, int32_t length, int32_t count);

/**
 * dst(k,j) = src(k,j) + val
 *
 * Checks: null, count, size, stride, offset.
 * Serial up to 1500 by (2*count + 1)*length.
 */
int32_t kormAdd_vac_32f_P(
    const float *const *src, int32_t srcOffset, int32_t srcObjectStride, float val, float *const *dst,
    int32_t dstOffset, int32_t dstObjectStride, int32_t length, int32_t count);

/**
 * dst(k,j) = src(k,j) + val
 *
 * Checks: null, count, size, stride, offset.
 * Serial up to 1500 by (2*count + 1)*length.
 */
int32_t kormAdd_vac_64f_P(
    const double *const *src, int32_t srcOffset, int32_t srcObjectStride, double val, double *const *dst,
    int32_t dstOffset, int32_t dstObjectStride, int32_t length, int32_t count);

/**
 * dst(k,j) = src(k,j) - val
 *
 * Checks: null, count, size, stride.
 * Serial up to 4800 by (2*count + 1)*length.
 */
int32_t kormSub_vac_32f(
    const float *src, int32_t srcObjectStride, int32_t srcElementStride, float val, float *dst,
    int32_t dstObjectStride, int32_t dstElementStride, int32_t length, int32_t count);

/**
 * dst(k,j) = src(k,j) - val
 *
 * Checks: null, count, size, stride.
 * Serial up to 1400 by (2*count + 1)*length.
 */
int32_t kormSub_vac_64f(
    const double *src, int32_t srcObjectStride, int32_t srcElementStride, double val, double *dst,
    int32_t dstObjectStride, int32_t dstElementStride, int32_t length, int32_t count);

/**
 * dst(k,j) = src(k,j) - val
 *
 * Checks: null, count, size, stride, offset.
 * Serial up to 2500 by (2*count + 1)*length.
 */
int32_t kormSub_vac_32f_L(
    const float *const *src, int32_t srcOffset, int32_t srcElementStride, float val, float *const *dst,
    int32_t dstOffset, int32_t dstElementStride, int32_t length, int32_t count);

/**
 * dst(k,j) = src(k,j) - val
 *
 * Checks: null, count, size, stride, offset.
 * Serial up to 2500 by (2*count + 1)*length.
 */
int32_t kormSub_vac_64f_L(
    const double *const *src, int32_t srcOffset, int32_t srcElementStride, double val, double *const *dst,
    int32_t dstOffset, int32_t dstElementStride, int32_t length, int32_t count);

/**
 * dst(k,j) = src(k,j) - val
 *
 * Checks: null, count, size, stride, offset.
 * Serial up to 1500 by (2*count + 1)*length.
 */
int32_t kormSub_vac_32f_P(
    const float *const *src, int32_t srcOffset, int32_t srcObjectStride, float val, float *const *dst,
    int32_t dstOffset, int32_t dstObjectStride, int32_t length, int32_t count);

/**
 * dst(k,j) = src(k,j) - val
 *
 * Checks: null, count, size, stride, offset.
 * Serial up to 1500 by (2*count + 1)*length.
 */
int32_t kormSub_vac_64f_P(
    const double *const *src, int32_t srcOffset, int32_t srcObjectStride, double val, double *const *dst,
    int32_t dstOffset, int32_t dstObjectStride, int32_t length, int32_t count);

/**
 * dst(k,j) = src(k,j) + val(k)
 *
 * Checks: null, count, size, stride.
 * Serial up to 4800 by (2*length + 1)*count.
 */
int32_t kormAdd_vaca_32f(
    const float *src, int32_t srcObjectStride, int32_t srcElementStride, const float *val,
    int32_t valObjectStride, float *dst, int32_t dstObjectStride, int32_t dstElementStride, int32_t length,
    int32_t count);

/**
 * dst(k,j) = src(k,j) + val(k)
 *
 * Checks: null, count, size, stride.
 * Serial up to 1400 by (2*length + 1)*count.
 */
int32_t kormAdd_vaca_64f(
    const double *src, int32_t srcObjectStride, int32_t srcElementStride, const double *val,
    int32_t valObjectStride, double *dst, int32_t dstObjectStride, int32_t dstElementStride, int32_t length,
    int32_t count);

/**
 * dst(k,j) = src(k,j) + val(k)
 *
 * Checks: null, count, size, stride, offset.
 * Serial up to 2500 by (2*length + 1)*count.
 */
int32_t kormAdd_vaca_32f_L(
    const float *const *src, int32_t srcOffset, int32_t srcElementStride, const float *const *val,
    int32_t valOffset, float *const *dst, int32_t dstOffset, int32_t dstElementStride, int32_t length,
    int32_t count);

/**
 * dst(k,j) = src(k,j) + val(k)
 *
 * Checks: null, count, size, stride, offset.
 * Serial up to 2500 by (2*length + 1)*count.
 */
int32_t kormAdd_vaca_64f_L(
    const double *const *src, int32_t srcOffset, int32_t srcElementStride, const double *const *val,
    int32_t valOffset, double *const *dst, int32_t dstOffset, int32_t dstElementStride, int32_t length,
    int32_t count);

/**
 * dst(k,j) = src(k,j) + val(k)
 *
 * Checks: null, count, size, stride, offset.
 * Serial up to 1500 by (2*length + 1)*count.
 */
int32_t kormAdd_vaca_32f_P(
    const float *const *src, int32_t srcOffset, int32_t srcObjectStride, const float *val,
    int32_t valObjectStride, float *const *dst, int32_t dstOffset, int32_t dstObjectStride, int32_t length,
    int32_t count);

/**
 * dst(k,j) = src(k,j) + val(k)
 *
 * Checks: null, count, size, stride, offset.
 * Serial up to 1500 by (2*length + 1)*count.
 */
int32_t kormAdd_vaca_64f_P(
    const double *const *src, int32_t srcOffset, int32_t srcObjectStride, const double *val,
    int32_t valObjectStride, double *const *dst, int32_t dstOffset, int32_t dstObjectStride, int32_t length,
    int32_t count);

/**
 * dst(k,j) = src(k,j) - val(k)
 *
 * Checks: null, count, size, stride.
 * Serial up to 4800 by (2*length + 1)*count.
 */
int32_t kormSub_vaca_32f(
    const float *src, int32_t srcObjectStride, int32_t srcElementStride, const float *val,
    int32_t valObjectStride, float *dst, int32_t dstObjectStride, int32_t dstElementStride, int32_t length,
    int32_t count);

/**
 * dst(k,j) = src(k,j) - val(k)
 *
 * Checks: null, count, size, stride.
 * Serial up to 1400 by (2*length + 1)*count.
 */
int32_t kormSub_vaca_64f(
    const double *src, int32_t srcObjectStride, int32_t srcElementStride, const double *val,
    int32_t valObjectStride, double *dst, int32_t dstObjectStride, int32_t dstElementStride, int32_t length,
    int32_t count);

/**
 * dst(k,j) = src(k,j) - val(k)
 *
 * Checks: null, count, size, stride, offset.
 * Serial up to 2500 by (2*length + 1)*count.
 */
int32_t kormSub_vaca_32f_L(
    const float *const *src, int32_t srcOffset, int32_t srcElementStride, const float *const *val,
    int32_t valOffset, float *const *dst, int32_t dstOffset, int32_t dstElementStride, int32_t length,
    int32_t count);

/**
 * dst(k,j) = src(k,j) - val(k)
 *
 * Checks: null, count, size, stride, offset.
 * Serial up to 2500 by (2*length + 1)*count.
 */
int32_t kormSub_vaca_64f_L(
    const double *const *src, int32_t srcOffset, int32_t srcElementStride, const double *const *val,
    int32_t valOffset, double *const *dst, int32_t dstOffset, int32_t dstElementStride, int32_t length,
    int32_t count);

/**
 * dst(k,j) = src(k,j) - val(k)
 *
 * Checks: null, count, size, stride, offset.
 * Serial up to 1500 by (2*length + 1)*count.
 */
int32_t kormSub_vaca_32f_P(
    const float *const *src, int32_t srcOffset, int32_t srcObjectStride, const float *val,
    int32_t valObjectStride, float *const *dst, int32_t dstOffset, int32_t dstObjectStride, int32_t length,
    int32_t count);

/**
 * dst(k,j) = src(k,j) - val(k)
 *
 * Checks: null, count, size, stride, offset.
 * Serial up to 1500 by (2*length + 1)*count.
 */
int32_t kormSub_vaca_64f_P(
    const double *const *src, int32_t srcOffset, int32_t srcObjectStride, const double *val,
    int32_t valObjectStride, double *const *dst, int32_t dstOffset, int32_t dstObjectStride, int32_t length,
    int32_t count);

/**
 * dst(k,j) = val(k) - src(k,j)
 *
 * Checks: null, count, size, stride.
 * Serial up to 4800 by (2*length + 1)*count.
 */
int32_t kormSub_cava_32f(
    const float *src, int32_t srcObjectStride, int32_t srcElementStride, const float *val,
    int32_t valObjectStride, float *dst, int32_t dstObjectStride, int32_t dstElementStride, int32_t length,
    int32_t count);

/**
 * dst(k,j) = val(k) - src(k,j)
 *
 * Checks: null, count, size, stride.
 * Serial up to 1400 by (2*length + 1)*count.
 */
int32_t kormSub_cava_64f(
    const double *src, int32_t srcObjectStride, int32_t srcElementStride, const double *val,
    int32_t valObjectStride, double *dst, int32_t dstObjectStride, int32_t dstElementStride, int32_t length,
    int32_t count);

/**
 * dst(k,j) = val(k) - src(k,j)
 *
 * Checks: null, count, size, stride, offset.
 * Serial up to 2500 by (2*length + 1)*count.
 */
int32_t kormSub_cava_32f_L(
    const float *const *src, int32_t srcOffset, int32_t srcElementStride, const float *const *val,
    int32_t valOffset, float *const *dst, int32_t dstOffset, int32_t dstElementStride, int32_t length,
    int32_t count);

/**
 * dst(k,j) = val(k) - src(k,j)
 *
 * Checks: null, count, size, stride, offset.
 * Serial up to 2500 by (2*length + 1)*count.
 */
int32_t kormSub_cava_64f_L(
    const double *const *src, int32_t srcOffset, int32_t srcElementStride, const double *const *val,
    int32_t valOffset, double *const *dst, int32_t dstOffset, int32_t dstElementStride, int32_t length,
    int32_t count);

/**
 * dst(k,j) = val(k) - src(k,j)
 *
 * Checks: null, count, size, stride, offset.
 * Serial up to 1500 by (2*length + 1)*count.
 */
int32_t kormSub_cava_32f_P(
    const float *const *src, int32_t srcOffset, int32_t srcObjectStride, const float *val,
    int32_t valObjectStride, float *const *dst, int32_t dstOffset, int32_t dstObjectStride, int32_t length,
    int32_t count);

/**
 * dst(k,j) = val(k) - src(k,j)
 *
 * Checks: null, count, size, stride, offset.
 * Serial up to 1500 by (2*length + 1)*count.
 */
int32_t kormSub_cava_64f_P(
    const double *const *src, int32_t srcOffset, int32_t srcObjectStride, const double *val,
    int32_t valObjectStride, double *const *dst, int32_t dstOffset, int32_t dstObjectStride, int32_t length,
    int32_t count);

/**
 * dst(k,j) = src(j) + val(k)
 *
 * Checks: null, count, size, stride.
 * Serial up to 4800 by length*(count + 1) + count.
 */
int32_t kormAdd_vca_32f(
    const float *src, int32_t srcElementStride, const float *val, int32_t valObjectStride, float *dst,
    int32_t dstObjectStride, int32_t dstElementStride, int32_t length, int32_t count);

/**
 * dst(k,j) = src(j) + val(k)
 *
 * Checks: null, count, size, stride.
 * Serial up to 1400 by length*(count + 1) + count.
 */
int32_t kormAdd_vca_64f(
    const double *src, int32_t srcElementStride, const double *val, int32_t valObjectStride, double *dst,
    int32_t dstObjectStride, int32_t dstElementStride, int32_t length, int32_t count);

/**
 * dst(k,j) = src(j) + val(k)
 *
 * Checks: null, count, size, stride, offset.
 * Serial up to 2500 by length*(count + 1) + count.
 */
int32_t kormAdd_vca_32f_L(
    const float *src, int32_t srcElementStride, const float *const *val, int32_t valOffset, float *const *dst,
    int32_t dstOffset, int32_t dstElementStride, int32_t length, int32_t count);

/**
 * dst(k,j) = src(j) + val(k)
 *
 * Checks: null, count, size, stride, offset.
 * Serial up to 2500 by length*(count + 1) + count.
 */
int32_t kormAdd_vca_64f_L(
    const double *src, int32_t srcElementStride, const double *const *val, int32_t valOffset,
    double *const *dst, int32_t dstOffset, int32_t dstElementStride, int32_t length, int32_t count);

/**
 * dst(k,j) = src(j) + val(k)
 *
 * Checks: null, count, size, stride, offset.
 * Serial up to 1500 by length*(count + 1) + count.
 */
int32_t kormAdd_vca_32f_P(
    const float *const *src, int32_t srcOffset, const float *val, int32_t valObjectStride, float *const *dst,
    int32_t dstOffset, int32_t dstObjectStride, int32_t length, int32_t count);

/**
 * dst(k,j) = src(j) + val(k)
 *
 * Checks: null, count, size, stride.
 * Serial up to 1500 by length*(count + 1) + count.
 */
int32_t kormAdd_vca_64f_P(
    const double *const *src, int32_t srcOffset, const double *val, int32_t valObjectStride,
    double *const *dst, int32_t dstOffset, int32_t dstObjectStride, int32_t length, int32_t count);

/**
 * dst(k,j) = src(j) - val(k)
 *
 * Checks: null, count, size, stride.
 * Serial up to 4800 by length*(count + 1) + count.
 */
int32_t kormSub_vca_32f(
    const float *src, int32_t srcElementStride, const float *val, int32_t valObjectStride, float *dst,
    int32_t dstObjectStride, int32_t dstElementStride, int32_t length, int32_t count);

/**
 * dst(k,j) = src(j) - val(k)
 *
 * Checks: null, count, size, stride.
 * Serial up to 1400 by length*(count + 1) + count.
 */
int32_t kormSub_vca_64f(
    const double *src, int32_t srcElementStride, const double *val, int32_t valObjectStride, double *dst,
    int32_t dstObjectStride, int32_t dstElementStride, int32_t length, int32_t count);

/**
 * dst(k,j) = src(j) - val(k)
 *
 * Checks: null, count, size, stride, offset.
 * Serial up to 2500 by length*(count + 1) + count.
 */
int32_t kormSub_vca_32f_L(
    const float *src, int32_t srcElementStride, const float *const *val, int32_t valOffset, float *const *dst,
    int32_t dstOffset, int32_t dstElementStride, int32_t length, int32_t count);

/**
 * dst(k,j) = src(j) - val(k)
 *
 * Checks: null, count, size, stride, offset.
 * Serial up to 2500 by length*(count + 1) + count.
 */
int32_t kormSub_vca_64f_L(
    const double *src, int32_t srcElementStride, const double *const *val, int32_t valOffset,
    double *const *dst, int32_t dstOffset, int32_t dstElementStride, int32_t length, int32_t count);

/**
 * dst(k,j) = src(j) - val(k)
 *
 * Checks: null, count, size, stride, offset.
 * Serial up to 1500 by length*(count + 1) + count.
 */
int32_t kormSub_vca_32f_P(
    const float *const *src, int32_t srcOffset, const float *val, int32_t valObjectStride, float *const *dst,
    int32_t dstOffset, int32_t dstObjectStride, int32_t length, int32_t count);

/**
 * dst(k,j) = src(j) - val(k)
 *
 * Checks: null, count, size, stride, offset.
 * Serial up to 1500 by length*(count + 1) + count.
 */
int32_t kormSub_vca_64f_P(
    const double *const *src, int32_t srcOffset, const double *val, int32_t valObjectStride,
    double *const *dst, int32_t dstOffset, int32_t dstObjectStride, int32_t length, int32_t count);

/**
 * dst(k,j) = val(k) - src(j)
 *
 * Checks: null, count, size, stride.
 * Serial up to 4800 by length*(count + 1) + count.
 */
int32_t kormSub_cav_32f(
    const float *src, int32_t srcElementStride, const float *val, int32_t valObjectStride, float *dst,
    int32_t dstObjectStride, int32_t dstElementStride, int32_t length, int32_t count);

/**
 * dst(k,j) = val(k) - src(j)
 *
 * Checks: null, count, size, stride.
 * Serial up to 1400 by length*(count + 1) + count.
 */
int32_t kormSub_cav_64f(
    const double *src, int32_t srcElementStride, const double *val, int32_t valObjectStride, double *dst,
    int32_t dstObjectStride, int32_t dstElementStride, int32_t length, int32_t count);

/**
 * dst(k,j) = val(k) - src(j)
 *
 * Checks: null, count, size, stride, offset.
 * Serial up to 2500 by length*(count + 1) + count.
 */
int32_t kormSub_cav_32f_L(
    const float *src, int32_t srcElementStride, const float *const *val, int32_t valOffset, float *const *dst,
    int32_t dstOffset, int32_t dstElementStride, int32_t length, int32_t count);

/**
 * dst(k,j) = val(k) - src(j)
 *
 * Checks: null, count, size, stride, offset.
 * Serial up to 2500 by length*(count + 1) + count.
 */
int32_t kormSub_cav_64f_L(
    const double *src, int32_t srcElementStride, const double *const *val, int32_t valOffset,
    double *const *dst, int32_t dstOffset, int32_t dstElementStride, int32_t length, int32_t count);

/**
 * dst(k,j) = val(k) - src(j)
 *
 * Checks: null, count, size, stride.
 * Serial up to 1500 by length*(count + 1) + count.
 */
int32_t kormSub_cav_32f_P(
    const float *const *src, int32_t srcOffset, const float *val, int32_t valObjectStride, float *const *dst,
    int32_t dstOffset, int32_t dstObjectStride, int32_t length, int32_t count);

/**
 * dst(k,j) = val(k) - src(j)
 *
 * Checks: null, count, size, stride, offset.
 * Serial up to 1500 by length*(count + 1) + count.
 */
int32_t kormSub_cav_64f_P(
    const double *const *src, int32_t srcOffset, const double *val, int32_t valObjectStride,
    double *const *dst, int32_t dstOffset, int32_t dstObjectStride, int32_t length, int32_t count);

/**
 * dst(k,j) = val - src(k,j)
 *
 * Checks: null, count, size, stride.
 * Serial below 4800 by 2*count.
 */
int32_t kormSub_cva_32f(
    const float *src, int32_t srcObjectStride, int32_t srcElementStride, float val, float *dst,
    int32_t dstObjectStride, int32_t dstElementStride, int32_t length, int32_t count);

/**
 * dst(k,j) = val - src(k,j)
 *
 * Checks: null, count, size, stride.
 * Serial below 1400 by 2*count.
 */
int32_t kormSub_cva_64f(
    const double *src, int32_t srcObjectStride, int32_t srcElementStride, double val, double *dst,
    int32_t dstObjectStride, int32_t dstElementStride, int32_t length, int32_t count);

/**
 * dst(k,j) = val - src(k,j)
 *
 * Checks: null, count, size, stride, offset.
 * Serial below 2500 by 2*count.
 */
int32_t kormSub_cva_32f_L(
    const float *const *src, int32_t srcOffset, int32_t srcElementStride, float val, float *const *dst,
    int32_t dstOffset, int32_t dstElementStride, int32_t length, int32_t count);

/**
 * dst(k,j) = val - src(k,j)
 *
 * Checks: null, count, size, stride, offset.
 * Serial below 2500 by 2*count.
 */
int32_t kormSub_cva_64f_L(
    const double *const *src, int32_t srcOffset, int32_t srcElementStride, double val, double *const *dst,
    int32_t dstOffset, int32_t dstElementStride, int32_t length, int32_t count);

/**
 * dst(k,j) = val - src(k,j)
 *
 * Checks: null, count, size, stride, offset.
 * Serial below 1500 by 2*count.
 */
int32_t kormSub_cva_32f_P(
    const float *const *src, int32_t srcOffset, int32_t srcObjectStride, float val, float *const *dst,
    int32_t dstOffset, int32_t dstObjectStride, int32_t length, int32_t count);

/**
 * dst(k,j) = val - src(k,j)
 *
 * Checks: null, count, size, stride, offset.
 * Serial below 1500 by 2*count.
 */
int32_t kormSub_cva_64f_P(
    const double *const *src, int32_t srcOffset, int32_t srcObjectStride, double val, double *const *dst,
    int32_t dstOffset, int32_t dstObjectStride, int32_t length, int32_t count);

/**
 * dst(k,j) = src(k,j) * val(k)
 *
 * Checks: null, count, size, stride.
 * Serial up to 2100 by (2*length + 1)*count.
 */
int32_t kormMul_vaca_32f(
    const float *src, int32_t srcObjectStride, int32_t srcElementStride, const float *val,
    int32_t valObjectStride, float *dst, int32_t dstObjectStride, int32_t dstElementStride, int32_t length,
    int32_t count);

/**
 * dst(k,j) = src(k,j) * val(k)
 *
 * Checks: null, count, size, stride.
 * Serial up to 2100 by (2*length + 1)*count.
 */
int32_t kormMul_vaca_64f(
    const double *src, int32_t srcObjectStride, int32_t srcElementStride, const double *val,
    int32_t valObjectStride, double *dst, int32_t dstObjectStride, int32_t dstElementStride, int32_t length,
    int32_t count);

/**
 * dst(k,j) = src(k,j) * val(k)
 *
 * Checks: null, count, size, stride, offset.
 * Serial up to 1200 by (2*length + 1)*count.
 */
int32_t kormMul_vaca_32f_L(
    const float *const *src, int32_t srcOffset, int32_t srcElementStride, const float *const *val,
    int32_t valOffset, float *const *dst, int32_t dstOffset, int32_t dstElementStride, int32_t length,
    int32_t count);

/**
 * dst(k,j) = src(k,j) * val(k)
 *
 * Checks: null, count, size, stride, offset.
 * Serial up to 1200 by (2*length + 1)*count.
 */
int32_t kormMul_vaca_64f_L(
    const double *const *src, int32_t srcOffset, int32_t srcElementStride, const double *const *val,
    int32_t valOffset, double *const *dst, int32_t dstOffset, int32_t dstElementStride, int32_t length,
    int32_t count);

/**
 * dst(k,j) = src(k,j) * val(k)
 *
 * Checks: null, count, size, stride, offset.
 * Serial up to 650 by (2*length + 1)*count.
 */
int32_t kormMul_vaca_32f_P(
    const float *const *src, int32_t srcOffset, int32_t srcObjectStride, const float *val,
    int32_t valObjectStride, float *const *dst, int32_t dstOffset, int32_t dstObjectStride, int32_t length,
    int32_t count);

/**
 * dst(k,j) = src(k,j) * val(k)
 *
 * Checks: null, count, size, stride, offset.
 * Serial up to 650 by (2*length + 1)*count.
 */
int32_t kormMul_vaca_64f_P(
    const double *const *src, int32_t srcOffset, int32_t srcObjectStride, const double *val,
    int32_t valObjectStride, double *const *dst, int32_t dstOffset, int32_t dstObjectStride, int32_t length,
    int32_t count);

/**
 * dst(k,j) = src(j) * val(k)
 *
 * Checks: null, count, size, stride.
 * Serial up to 2100 by length*(count + 1) + count.
 */
int32_t kormMul_vca_32f(
    const float *src, int32_t srcElementStride, const float *val, int32_t valObjectStride, float *dst,
    int32_t dstObjectStride, int32_t dstElementStride, int32_t length, int32_t count);

/**
 * dst(k,j) = src(j) * val(k)
 *
 * Checks: null, count, size, stride.
 * Serial up to 2100 by length*(count + 1) + count.
 */
int32_t kormMul_vca_64f(
    const double *src, int32_t srcElementStride, const double *val, int32_t valObjectStride, double *dst,
    int32_t dstObjectStride, int32_t dstElementStride, int32_t length, int32_t count);

/**
 * dst(k,j) = src(j) * val(k)
 *
 * Checks: null, count, size, stride, offset.
 * Serial up to 1200 by length*(count + 1) + count.
 */
int32_t kormMul_vca_32f_L(
    const float *src, int32_t srcElementStride, const float *const *val, int32_t valOffset, float *const *dst,
    int32_t dstOffset, int32_t dstElementStride, int32_t length, int32_t count);

/**
 * dst(k,j) = src(j) * val(k)
 *
 * Checks: null, count, size, stride, offset.
 * Serial up to 1200 by length*(count + 1) + count.
 */
int32_t kormMul_vca_64f_L(
    const double *src, int32_t srcElementStride, const double *const *val, int32_t valOffset,
    double *const *dst, int32_t dstOffset, int32_t dstElementStride, int32_t length, int32_t count);

/**
 * dst(k,j) = src(j) * val(k)
 *
 * Checks: null, count, size, stride, offset.
 * Serial up to 650 by length*(count + 1) + count.
 */
int32_t kormMul_vca_32f_P(
    const float *const *src, int32_t srcOffset, const float *val, int32_t valObjectStride, float *const *dst,
    int32_t dstOffset, int32_t dstObjectStride, int32_t length, int32_t count);

/**
 * dst(k,j) = src(j) * val(k)
 *
 * Checks: null, count, size, stride, offset.
 * Serial up to 650 by length*(count + 1) + count.
 */
int32_t kormMul_vca_64f_P(
    const double *const *src, int32_t srcOffset, const double *val, int32_t valObjectStride,
    double *const *dst, int32_t dstOffset, int32_t dstObjectStride, int32_t length, int32_t count);

/**
 * dst(k,j) = src(k,j) * val
 *
 * Checks: null, count, size, stride.
 * Serial below 2501 (1441 if an element stride is not 4) by 2*length*count.
 */
int32_t kormMul_vac_32f(
    const float *src, int32_t srcObjectStride, int32_t srcElementStride, float val, float *dst,
    int32_t dstObjectStride, int32_t dstElementStride, int32_t length, int32_t count);

/**
 * dst(k,j) = src(k,j) * val
 *
 * Checks: null, count, size, stride.
 * Serial below 3601 (1441 if an element stride is not 8) by 2*length*count.
 */
int32_t kormMul_vac_64f(
    const double *src, int32_t srcObjectStride, int32_t srcElementStride, double val, double *dst,
    int32_t dstObjectStride, int32_t dstElementStride, int32_t length, int32_t count);

/**
 * dst(k,j) = src(k,j) * val
 *
 * Checks: null, count, size, stride, offset.
 * Serial below 3601 (1441 if an element stride is not 4) by 2*length*count.
 */
int32_t kormMul_vac_32f_L(
    const float *const *src, int32_t srcOffset, int32_t srcElementStride, float val, float *const *dst,
    int32_t dstOffset, int32_t dstElementStride, int32_t length, int32_t count);

/**
 * dst(k,j) = src(k,j) * val
 *
 * Checks: null, count, size, stride, offset.
 * Serial below 3601 (1441 if an element stride is not 8) by 2*length*count.
 */
int32_t kormMul_vac_64f_L(
    const double *const *src, int32_t srcOffset, int32_t srcElementStride, double val, double *const *dst,
    int32_t dstOffset, int32_t dstElementStride, int32_t length, int32_t count);

/**
 * dst(k,j) = src(k,j) * val
 *
 * Checks: null, count, size, stride, offset.
 * Serial below 1441 by 2*length*count.
 */
int32_t kormMul_vac_32f_P(
    const float *const *src, int32_t srcOffset, int32_t srcObjectStride, float val, float *const *dst,
    int32_t dstOffset, int32_t dstObjectStride, int32_t length, int32_t count);

/**
 * dst(k,j) = src(k,j) * val
 *
 * Checks: null, count, size, stride, offset.
 * Serial below 1441 by 2*length*count.
 */
int32_t kormMul_vac_64f_P(
    const double *const *src, int32_t srcOffset, int32_t srcObjectStride, double val, double *const *dst,
    int32_t dstOffset, int32_t dstObjectStride, int32_t length, int32_t count);

/**
 * dst(k,i,j) = src(k,i,j) * val
 *
 * Checks: null, count, size, stride.
 * Serial below 3501 by 2*width*height*count.
 */
int32_t kormMul_mac_32f(
    const float *src, int32_t srcObjectStride, int32_t srcRowStride, int32_t srcElementStride, float val,
    float *dst, int32_t dstObjectStride, int32_t dstRowStride, int32_t dstElementStride, int32_t width,
    int32_t height, int32_t count);

/**
 * dst(k,i,j) = src(k,i,j) * val
 *
 * Checks: null, count, size, stride.
 * Serial below 3501 by 2*width*height*count.
 */
int32_t kormMul_mac_64f(
    const double *src, int32_t srcObjectStride, int32_t srcRowStride, int32_t srcElementStride, double val,
    double *dst, int32_t dstObjectStride, int32_t dstRowStride, int32_t dstElementStride, int32_t width,
    int32_t height, int32_t count);

/**
 * dst(k,i,j) = src(k,i,j) * val
 *
 * Checks: null, count, size, stride, offset.
 * Serial below 3501 (1501 if an element stride is not 4) by 2*width*height*count.
 */
int32_t kormMul_mac_32f_L(
    const float *const *src, int32_t srcOffset, int32_t srcRowStride, int32_t srcElementStride, float val,
    float *const *dst, int32_t dstOffset, int32_t dstRowStride, int32_t dstElementStride, int32_t width,
    int32_t height, int32_t count);

/**
 * dst(k,i,j) = src(k,i,j) * val
 *
 * Checks: null, count, size, stride, offset.
 * Serial below 3501 by 2*width*height*count.
 */
int32_t kormMul_mac_64f_L(
    const double *const *src, int32_t srcOffset, int32_t srcRowStride, int32_t srcElementStride, double val,
    double *const *dst, int32_t dstOffset, int32_t dstRowStride, int32_t dstElementStride, int32_t width,
    int32_t height, int32_t count);

/**
 * dst(k,i,j) = src(k,i,j) * val
 *
 * Checks: null, count, size, stride, offset.
 * Serial below 1701 by 2*width*height*count.
 */
int32_t kormMul_mac_32f_P(
    const float *const *src, int32_t srcOffset, int32_t srcObjectStride, float val, float *const *dst,
    int32_t dstOffset, int32_t dstObjectStride, int32_t width, int32_t height, int32_t count);

/**
 * dst(k,i,j) = src(k,i,j) * val
 *
 * Checks: null, count, size, stride, offset.
 * Serial below 1701 by 2*width*height*count.
 */
int32_t kormMul_mac_64f_P(
    const double *const *src, int32_t srcOffset, int32_t srcObjectStride, double val, double *const *dst,
    int32_t dstOffset, int32_t dstObjectStride, int32_t width, int32_t height, int32_t count);

/**
 * dst(k,i,j) = src(k,j,i) * val
 *
 * Checks: null, count, size, stride.
 * Serial below 3501 by 2*width*height*count.
 */
int32_t kormMul_tac_32f(
    const float *src, int32_t srcObjectStride, int32_t srcRowStride, int32_t srcElementStride, float val,
    float *dst, int32_t dstObjectStride, int32_t dstRowStride, int32_t dstElementStride, int32_t width,
    int32_t height, int32_t count);

/**
 * dst(k,i,j) = src(k,j,i) * val
 *
 * Checks: null, count, size, stride.
 * Serial below 3501 by 2*width*height*count.
 */
int32_t kormMul_tac_64f(
    const double *src, int32_t srcObjectStride, int32_t srcRowStride, int32_t srcElementStride, double val,
    double *dst, int32_t dstObjectStride, int32_t dstRowStride, int32_t dstElementStride, int32_t width,
    int32_t height, int32_t count);

/**
 * dst(k,i,j) = src(k,j,i) * val
 *
 * Checks: null, count, size, stride, offset.
 * Serial below 3501 (1501 if an element stride is not 4) by 2*width*height*count.
 */
int32_t kormMul_tac_32f_L(
    const float *const *src, int32_t srcOffset, int32_t srcRowStride, int32_t srcElementStride, float val,
    float *const *dst, int32_t dstOffset, int32_t dstRowStride, int32_t dstElementStride, int32_t width,
    int32_t height, int32_t count);

/**
 * dst(k,i,j) = src(k,j,i) * val
 *
 * Checks: null, count, size, stride, offset.
 * Serial below 3501 by 2*width*height*count.
 */
int32_t kormMul_tac_64f_L(
    const double *const *src, int32_t srcOffset, int32_t srcRowStride, int32_t srcElementStride, double val,
    double *const *dst, int32_t dstOffset, int32_t dstRowStride, int32_t dstElementStride, int32_t width,
    int32_t height, int32_t count);

/**
 * dst(k,i,j) = src(k,j,i) * val
 *
 * Checks: null, count, size, stride, offset.
 * Serial below 1701 by 2*width*height*count.
 */
int32_t kormMul_tac_32f_P(
    const float *const *src, int32_t srcOffset, int32_t srcObjectStride, float val, float *const *dst,
    int32_t dstOffset, int32_t dstObjectStride, int32_t width, int32_t height, int32_t count);

/**
 * dst(k,i,j) = src(k,j,i) * val
 *
 * Checks: null, count, size, stride, offset.
 * Serial below 1701 by 2*width*height*count.
 */
int32_t kormMul_tac_64f_P(
    const double *const *src, int32_t srcOffset, int32_t srcObjectStride, double val, double *const *dst,
    int32_t dstOffset, int32_t dstObjectStride, int32_t width, int32_t height, int32_t count);

/** @} */


/**
 * @defgroup matrix_products Products of matrices
 * dst = first * second, where `t` reads an operand as its transpose. One product, an array with one matrix, one matrix
 * with an array, or two arrays object by object.
 *
 * Shapes: the sizes of an operand are those in which it is stored, also where it is read transposed. dst has M rows and
 * N columns, each element is a sum of K products; dst has no sizes of its own.
 *
 * | operands | M | K | N |
 * |---|---|---|---|
 * | `m` by `m` | `src1Height` | `src1Width` | `src2Width` |
 * | `m` by `t` | `src1Height` | `src1Width` | `src2Height` |
 * | `t` by `m` | `src1Width` | `src1Height` | `src2Width` |
 * | `t` by `t` | `src1Width` | `src1Height` | `src2Height` |
 *
 * In the pointer layout the table of dst has M*N entries, row by row.
 *
 * Sums: every product and every addition is rounded to the element type. For one form, sizes, layout and choice of
 * strides the order of additions is fixed, so results are the same on every machine and for any number of threads. It
 * differs between forms and layouts: docs/numerics.md shows which element gets which sum.
 *
 * Overlap: dst must not overlap a source.
 *
 * Status: ::korStatusOk, ::korStatusNullPointer, ::korStatusBadSize, ::korStatusSizeMismatch, ::korStatusBadStride; array
 * forms ::korStatusBadCount; list and pointer forms ::korStatusBadOffset. Other than with ::korStatusOk nothing is written.
 * Infinities and NaN take part as they are; nothing is scaled or tested for overflow.
 * @{
 */

/**
 * dst(i,j) = sum over l of src1(i,l) * src2(l,j)
 *
 * Checks: null, size, match, stride.
 * Sizes match when src1Width == src2Height.
 */
int32_t kormMul_mm_32f(
    const float *src1, int32_t src1RowStride, int32_t src1ElementStride, int32_t src1Width,
    int32_t src1Height, const float *src2, int32_t src2RowStride, int32_t src2ElementStride,
    int32_t src2Width, int32_t src2Height, float *dst, int32_t dstRowStride, int32_t dstElementStride);

/**
 * dst(i,j) = sum over l of src1(i,l) * src2(l,j)
 *
 * Checks: null, size, match, stride.
 * Sizes match when src1Width == src2Height.
 */
int32_t kormMul_mm_64f(
    const double *src1, int32_t src1RowStride, int32_t src1ElementStride, int32_t src1Width,
    int32_t src1Height, const double *src2, int32_t src2RowStride, int32_t src2ElementStride,
    int32_t src2Width, int32_t src2Height, double *dst, int32_t dstRowStride, int32_t dstElementStride);

/**
 * dst(i,j) = sum over l of src1(i,l) * src2(l,j)
 *
 * Checks: null, size, match, offset.
 * Sizes match when src1Width == src2Height.
 */
int32_t kormMul_mm_32f_P(
    const float *const *src1, int32_t src1Offset, int32_t src1Width, int32_t src1Height,
    const float *const *src2, int32_t src2Offset, int32_t src2Width, int32_t src2Height, float *const *dst,
    int32_t dstOffset);

/**
 * dst(i,j) = sum over l of src1(i,l) * src2(l,j)
 *
 * Checks: null, size, match, offset.
 * Sizes match when src1Width == src2Height.
 */
int32_t kormMul_mm_64f_P(
    const double *const *src1, int32_t src1Offset, int32_t src1Width, int32_t src1Height,
    const double *const *src2, int32_t src2Offset, int32_t src2Width, int32_t src2Height, double *const *dst,
    int32_t dstOffset);

/**
 * dst(i,j) = sum over l of src1(i,l) * src2(j,l)
 *
 * Checks: null, size, match, stride.
 * Sizes match when src1Width == src2Width.
 */
int32_t kormMul_mt_32f(
    const float *src1, int32_t src1RowStride, int32_t src1ElementStride, int32_t src1Width,
    int32_t src1Height, const float *src2, int32_t src2RowStride, int32_t src2ElementStride,
    int32_t src2Width, int32_t src2Height, float *dst, int32_t dstRowStride, int32_t dstElementStride);

/**
 * dst(i,j) = sum over l of src1(i,l) * src2(j,l)
 *
 * Checks: null, size, match, stride.
 * Sizes match when src1Width == src2Width.
 */
int32_t kormMul_mt_64f(
    const double *src1, int32_t src1RowStride, int32_t src1ElementStride, int32_t src1Width,
    int32_t src1Height, const double *src2, int32_t src2RowStride, int32_t src2ElementStride,
    int32_t src2Width, int32_t src2Height, double *dst, int32_t dstRowStride, int32_t dstElementStride);

/**
 * dst(i,j) = sum over l of src1(i,l) * src2(j,l)
 *
 * Checks: null, size, match, offset.
 * Sizes match when src1Width == src2Width.
 */
int32_t kormMul_mt_32f_P(
    const float *const *src1, int32_t src1Offset, int32_t src1Width, int32_t src1Height,
    const float *const *src2, int32_t src2Offset, int32_t src2Width, int32_t src2Height, float *const *dst,
    int32_t dstOffset);

/**
 * dst(i,j) = sum over l of src1(i,l) * src2(j,l)
 *
 * Checks: null, size, match, offset.
 * Sizes match when src1Width == src2Width.
 */
int32_t kormMul_mt_64f_P(
    const double *const *src1, int32_t src1Offset, int32_t src1Width, int32_t src1Height,
    const double *const *src2, int32_t src2Offset, int32_t src2Width, int32_t src2Height, double *const *dst,
    int32_t dstOffset);

/**
 * dst(i,j) = sum over l of src1(l,i) * src2(l,j)
 *
 * Checks: null, size, match, stride.
 * Sizes match when src1Height == src2Height.
 */
int32_t kormMul_tm_32f(
    const float *src1, int32_t src1RowStride, int32_t src1ElementStride, int32_t src1Width,
    int32_t src1Height, const float *src2, int32_t src2RowStride, int32_t src2ElementStride,
    int32_t src2Width, int32_t src2Height, float *dst, int32_t dstRowStride, int32_t dstElementStride);

/**
 * dst(i,j) = sum over l of src1(l,i) * src2(l,j)
 *
 * Checks: null, size, match, stride.
 * Sizes match when src1Height == src2Height.
 */
int32_t kormMul_tm_64f(
    const double *src1, int32_t src1RowStride, int32_t src1ElementStride, int32_t src1Width,
    int32_t src1Height, const double *src2, int32_t src2RowStride, int32_t src2ElementStride,
    int32_t src2Width, int32_t src2Height, double *dst, int32_t dstRowStride, int32_t dstElementStride);

/**
 * dst(i,j) = sum over l of src1(l,i) * src2(l,j)
 *
 * Checks: null, size, match, offset.
 * Sizes match when src1Height == src2Height.
 */
int32_t kormMul_tm_32f_P(
    const float *const *src1, int32_t src1Offset, int32_t src1Width, int32_t src1Height,
    const float *const *src2, int32_t src2Offset, int32_t src2Width, int32_t src2Height, float *const *dst,
    int32_t dstOffset);

/**
 * dst(i,j) = sum over l of src1(l,i) * src2(l,j)
 *
 * Checks: null, size, match, offset.
 * Sizes match when src1Height == src2Height.
 */
int32_t kormMul_tm_64f_P(
    const double *const *src1, int32_t src1Offset, int32_t src1Width, int32_t src1Height,
    const double *const *src2, int32_t src2Offset, int32_t src2Width, int32_t src2Height, double *const *dst,
    int32_t dstOffset);

/**
 * dst(i,j) = sum over l of src1(l,i) * src2(j,l)
 *
 * Checks: null, size, match, stride.
 * Sizes match when src1Height == src2Width.
 */
int32_t kormMul_tt_32f(
    const float *src1, int32_t src1RowStride, int32_t src1ElementStride, int32_t src1Width,
    int32_t src1Height, const float *src2, int32_t src2RowStride, int32_t src2ElementStride,
    int32_t src2Width, int32_t src2Height, float *dst, int32_t dstRowStride, int32_t dstElementStride);

/**
 * dst(i,j) = sum over l of src1(l,i) * src2(j,l)
 *
 * Checks: null, size, match, stride.
 * Sizes match when src1Height == src2Width.
 */
int32_t kormMul_tt_64f(
    const double *src1, int32_t src1RowStride, int32_t src1ElementStride, int32_t src1Width,
    int32_t src1Height, const double *src2, int32_t src2RowStride, int32_t src2ElementStride,
    int32_t src2Width, int32_t src2Height, double *dst, int32_t dstRowStride, int32_t dstElementStride);

/**
 * dst(i,j) = sum over l of src1(l,i) * src2(j,l)
 *
 * Checks: null, size, match, offset.
 * Sizes match when src1Height == src2Width.
 */
int32_t kormMul_tt_32f_P(
    const float *const *src1, int32_t src1Offset, int32_t src1Width, int32_t src1Height,
    const float *const *src2, int32_t src2Offset, int32_t src2Width, int32_t src2Height, float *const *dst,
    int32_t dstOffset);

/**
 * dst(i,j) = sum over l of src1(l,i) * src2(j,l)
 *
 * Checks: null, size, match, offset.
 * Sizes match when src1Height == src2Width.
 */
int32_t kormMul_tt_64f_P(
    const double *const *src1, int32_t src1Offset, int32_t src1Width, int32_t src1Height,
    const double *const *src2, int32_t src2Offset, int32_t src2Width, int32_t src2Height, double *const *dst,
    int32_t dstOffset);

/**
 * dst(k,i,j) = sum over l of src1(k,i,l) * src2(l,j)
 *
 * Checks: null, count, size, match, stride.
 * Sizes match when src1Width == src2Height.
 * Serial below 2501 (1441 if an element stride is not 4) by K*N + (K + N)*M*count.
 */
int32_t kormMul_mam_32f(
    const float *src1, int32_t src1ObjectStride, int32_t src1RowStride, int32_t src1ElementStride,
    int32_t src1Width, int32_t src1Height, const float *src2, int32_t src2RowStride,
    int32_t src2ElementStride, int32_t src2Width, int32_t src2Height, float *dst, int32_t dstObjectStride,
    int32_t dstRowStride, int32_t dstElementStride, int32_t count);

/**
 * dst(k,i,j) = sum over l of src1(k,i,l) * src2(l,j)
 *
 * Checks: null, count, size, match, stride.
 * Sizes match when src1Width == src2Height.
 * Serial below 3601 (1441 if an element stride is not 8) by K*N + (K + N)*M*count.
 */
int32_t kormMul_mam_64f(
    const double *src1, int32_t src1ObjectStride, int32_t src1RowStride, int32_t src1ElementStride,
    int32_t src1Width, int32_t src1Height, const double *src2, int32_t src2RowStride,
    int32_t src2ElementStride, int32_t src2Width, int32_t src2Height, double *dst, int32_t dstObjectStride,
    int32_t dstRowStride, int32_t dstElementStride, int32_t count);

/**
 * dst(k,i,j) = sum over l of src1(k,i,l) * src2(l,j)
 *
 * Checks: null, count, size, match, stride, offset.
 * Sizes match when src1Width == src2Height.
 * Serial below 3601 (1441 if an element stride is not 4) by K*N + (K + N)*M*count.
 */
int32_t kormMul_mam_32f_L(
    const float *const *src1, int32_t src1Offset, int32_t src1RowStride, int32_t src1ElementStride,
    int32_t src1Width, int32_t src1Height, const float *src2, int32_t src2RowStride,
    int32_t src2ElementStride, int32_t src2Width, int32_t src2Height, float *const *dst, int32_t dstOffset,
    int32_t dstRowStride, int32_t dstElementStride, int32_t count);

/**
 * dst(k,i,j) = sum over l of src1(k,i,l) * src2(l,j)
 *
 * Checks: null, count, size, match, stride, offset.
 * Sizes match when src1Width == src2Height.
 * Serial below 3601 (1441 if an element stride is not 8) by K*N + (K + N)*M*count.
 */
int32_t kormMul_mam_64f_L(
    const double *const *src1, int32_t src1Offset, int32_t src1RowStride, int32_t src1ElementStride,
    int32_t src1Width, int32_t src1Height, const double *src2, int32_t src2RowStride,
    int32_t src2ElementStride, int32_t src2Width, int32_t src2Height, double *const *dst, int32_t dstOffset,
    int32_t dstRowStride, int32_t dstElementStride, int32_t count);

/**
 * dst(k,i,j) = sum over l of src1(k,i,l) * src2(l,j)
 *
 * Checks: null, count, size, match, stride, offset.
 * Sizes match when src1Width == src2Height.
 * Serial below 1441 by K*N + (K + N)*M*count.
 */
int32_t kormMul_mam_32f_P(
    const float *const *src1, int32_t src1Offset, int32_t src1ObjectStride, int32_t src1Width,
    int32_t src1Height, const float *const *src2, int32_t src2Offset, int32_t src2Width, int32_t src2Height,
    float *const *dst, int32_t dstOffset, int32_t dstObjectStride, int32_t count);

/**
 * dst(k,i,j) = sum over l of src1(k,i,l) * src2(l,j)
 *
 * Checks: null, count, size, match, stride, offset.
 * Sizes match when src1Width == src2Height.
 * Serial below 1441 by K*N + (K + N)*M*count.
 */
int32_t kormMul_mam_64f_P(
    const double *const *src1, int32_t src1Offset, int32_t src1ObjectStride, int32_t src1Width,
    int32_t src1Height, const double *const *src2, int32_t src2Offset, int32_t src2Width, int32_t src2Height,
    double *const *dst, int32_t dstOffset, int32_t dstObjectStride, int32_t count);

/**
 * dst(k,i,j) = sum over l of src1(k,i,l) * src2(j,l)
 *
 * Checks: null, count, size, match, stride.
 * Sizes match when src1Width == src2Width.
 * Serial below 2501 (1441 if an element stride is not 4) by K*N + (K + N)*M*count.
 */
int32_t kormMul_mat_32f(
    const float *src1, int32_t src1ObjectStride, int32_t src1RowStride, int32_t src1ElementStride,
    int32_t src1Width, int32_t src1Height, const float *src2, int32_t src2RowStride,
    int32_t src2ElementStride, int32_t src2Width, int32_t src2Height, float *dst, int32_t dstObjectStride,
    int32_t dstRowStride, int32_t dstElementStride, int32_t count);

/**
 * dst(k,i,j) = sum over l of src1(k,i,l) * src2(j,l)
 *
 * Checks: null, count, size, match, stride.
 * Sizes match when src1Width == src2Width.
 * Serial below 3601 (1441 if an element stride is not 8) by K*N + (K + N)*M*count.
 */
int32_t kormMul_mat_64f(
    const double *src1, int32_t src1ObjectStride, int32_t src1RowStride, int32_t src1ElementStride,
    int32_t src1Width, int32_t src1Height, const double *src2, int32_t src2RowStride,
    int32_t src2ElementStride, int32_t src2Width, int32_t src2Height, double *dst, int32_t dstObjectStride,
    int32_t dstRowStride, int32_t dstElementStride, int32_t count);

/**
 * dst(k,i,j) = sum over l of src1(k,i,l) * src2(j,l)
 *
 * Checks: null, count, size, match, stride, offset.
 * Sizes match when src1Width == src2Width.
 * Serial below 3601 (1441 if an element stride is not 4) by K*N + (K + N)*M*count.
 */
int32_t kormMul_mat_32f_L(
    const float *const *src1, int32_t src1Offset, int32_t src1RowStride, int32_t src1ElementStride,
    int32_t src1Width, int32_t src1Height, const float *src2, int32_t src2RowStride,
    int32_t src2ElementStride, int32_t src2Width, int32_t src2Height, float *const *dst, int32_t dstOffset,
    int32_t dstRowStride, int32_t dstElementStride, int32_t count);

/**
 * dst(k,i,j) = sum over l of src1(k,i,l) * src2(j,l)
 *
 * Checks: null, count, size, match, stride, offset.
 * Sizes match when src1Width == src2Width.
 * Serial below 3601 (1441 if an element stride is not 8) by K*N + (K + N)*M*count.
 */
int32_t kormMul_mat_64f_L(
    const double *const *src1, int32_t src1Offset, int32_t src1RowStride, int32_t src1ElementStride,
    int32_t src1Width, int32_t src1Height, const double *src2, int32_t src2RowStride,
    int32_t src2ElementStride, int32_t src2Width, int32_t src2Height, double *const *dst, int32_t dstOffset,
    int32_t dstRowStride, int32_t dstElementStride, int32_t count);

/**
 * dst(k,i,j) = sum over l of src1(k,i,l) * src2(j,l)
 *
 * Checks: null, count, size, match, stride, offset.
 * Sizes match when src1Width == src2Width.
 * Serial below 1441 by K*N + (K + N)*M*count.
 */
int32_t kormMul_mat_32f_P(
    const float *const *src1, int32_t src1Offset, int32_t src1ObjectStride, int32_t src1Width,
    int32_t src1Height, const float *const *src2, int32_t src2Offset, int32_t src2Width, int32_t src2Height,
    float *const *dst, int32_t dstOffset, int32_t dstObjectStride, int32_t count);

/**
 * dst(k,i,j) = sum over l of src1(k,i,l) * src2(j,l)
 *
 * Checks: null, count, size, match, stride, offset.
 * Sizes match when src1Width == src2Width.
 * Serial below 1441 by K*N + (K + N)*M*count.
 */
int32_t kormMul_mat_64f_P(
    const double *const *src1, int32_t src1Offset, int32_t src1ObjectStride, int32_t src1Width,
    int32_t src1Height, const double *const *src2, int32_t src2Offset, int32_t src2Width, int32_t src2Height,
    double *const *dst, int32_t dstOffset, int32_t dstObjectStride, int32_t count);

/**
 * dst(k,i,j) = sum over l of src1(k,l,i) * src2(l,j)
 *
 * Checks: null, count, size, match, stride.
 * Sizes match when src1Height == src2Height.
 * Serial below 2501 (1441 if an element stride is not 4) by K*N + (K + N)*M*count.
 */
int32_t kormMul_tam_32f(
    const float *src1, int32_t src1ObjectStride, int32_t src1RowStride, int32_t src1ElementStride,
    int32_t src1Width, int32_t src1Height, const float *src2, int32_t src2RowStride,
    int32_t src2ElementStride, int32_t src2Width, int32_t src2Height, float *dst, int32_t dstObjectStride,
    int32_t dstRowStride, int32_t dstElementStride, int32_t count);

/**
 * dst(k,i,j) = sum over l of src1(k,l,i) * src2(l,j)
 *
 * Checks: null, count, size, match, stride.
 * Sizes match when src1Height == src2Height.
 * Serial below 3601 (1441 if an element stride is not 8) by K*N + (K + N)*M*count.
 */
int32_t kormMul_tam_64f(
    const double *src1, int32_t src1ObjectStride, int32_t src1RowStride, int32_t src1ElementStride,
    int32_t src1Width, int32_t src1Height, const double *src2, int32_t src2RowStride,
    int32_t src2ElementStride, int32_t src2Width, int32_t src2Height, double *dst, int32_t dstObjectStride,
    int32_t dstRowStride, int32_t dstElementStride, int32_t count);

/**
 * dst(k,i,j) = sum over l of src1(k,l,i) * src2(l,j)
 *
 * Checks: null, count, size, match, stride, offset.
 * Sizes match when src1Height == src2Height.
 * Serial below 3601 (1441 if an element stride is not 4) by K*N + (K + N)*M*count.
 */
int32_t kormMul_tam_32f_L(
    const float *const *src1, int32_t src1Offset, int32_t src1RowStride, int32_t src1ElementStride,
    int32_t src1Width, int32_t src1Height, const float *src2, int32_t src2RowStride,
    int32_t src2ElementStride, int32_t src2Width, int32_t src2Height, float *const *dst, int32_t dstOffset,
    int32_t dstRowStride, int32_t dstElementStride, int32_t count);

/**
 * dst(k,i,j) = sum over l of src1(k,l,i) * src2(l,j)
 *
 * Checks: null, count, size, match, stride, offset.
 * Sizes match when src1Height == src2Height.
 * Serial below 3601 (1441 if an element stride is not 8) by K*N + (K + N)*M*count.
 */
int32_t kormMul_tam_64f_L(
    const double *const *src1, int32_t src1Offset, int32_t src1RowStride, int32_t src1ElementStride,
    int32_t src1Width, int32_t src1Height, const double *src2, int32_t src2RowStride,
    int32_t src2ElementStride, int32_t src2Width, int32_t src2Height, double *const *dst, int32_t dstOffset,
    int32_t dstRowStride, int32_t dstElementStride, int32_t count);

/**
 * dst(k,i,j) = sum over l of src1(k,l,i) * src2(l,j)
 *
 * Checks: null, count, size, match, stride, offset.
 * Sizes match when src1Height == src2Height.
 * Serial below 1441 by K*N + (K + N)*M*count.
 */
int32_t kormMul_tam_32f_P(
    const float *const *src1, int32_t src1Offset, int32_t src1ObjectStride, int32_t src1Width,
    int32_t src1Height, const float *const *src2, int32_t src2Offset, int32_t src2Width, int32_t src2Height,
    float *const *dst, int32_t dstOffset, int32_t dstObjectStride, int32_t count);

/**
 * dst(k,i,j) = sum over l of src1(k,l,i) * src2(l,j)
 *
 * Checks: null, count, size, match, stride, offset.
 * Sizes match when src1Height == src2Height.
 * Serial below 1441 by K*N + (K + N)*M*count.
 */
int32_t kormMul_tam_64f_P(
    const double *const *src1, int32_t src1Offset, int32_t src1ObjectStride, int32_t src1Width,
    int32_t src1Height, const double *const *src2, int32_t src2Offset, int32_t src2Width, int32_t src2Height,
    double *const *dst, int32_t dstOffset, int32_t dstObjectStride, int32_t count);

/**
 * dst(k,i,j) = sum over l of src1(k,l,i) * src2(j,l)
 *
 * Checks: null, count, size, match, stride.
 * Sizes match when src1Height == src2Width.
 * Serial below 2501 (1441 if an element stride is not 4) by K*N + (K + N)*M*count.
 */
int32_t kormMul_tat_32f(
    const float *src1, int32_t src1ObjectStride, int32_t src1RowStride, int32_t src1ElementStride,
    int32_t src1Width, int32_t src1Height, const float *src2, int32_t src2RowStride,
    int32_t src2ElementStride, int32_t src2Width, int32_t src2Height, float *dst, int32_t dstObjectStride,
    int32_t dstRowStride, int32_t dstElementStride, int32_t count);

/**
 * dst(k,i,j) = sum over l of src1(k,l,i) * src2(j,l)
 *
 * Checks: null, count, size, match, stride.
 * Sizes match when src1Height == src2Width.
 * Serial below 3601 (1441 if an element stride is not 8) by K*N + (K + N)*M*count.
 */
int32_t kormMul_tat_64f(
    const double *src1, int32_t src1ObjectStride, int32_t src1RowStride, int32_t src1ElementStride,
    int32_t src1Width, int32_t src1Height, const double *src2, int32_t src2RowStride,
    int32_t src2ElementStride, int32_t src2Width, int32_t src2Height, double *dst, int32_t dstObjectStride,
    int32_t dstRowStride, int32_t dstElementStride, int32_t count);

/**
 * dst(k,i,j) = sum over l of src1(k,l,i) * src2(j,l)
 *
 * Checks: null, count, size, match, stride, offset.
 * Sizes match when src1Height == src2Width.
 * Serial below 3601 (1441 if an element stride is not 4) by K*N + (K + N)*M*count.
 */
int32_t kormMul_tat_32f_L(
    const float *const *src1, int32_t src1Offset, int32_t src1RowStride, int32_t src1ElementStride,
    int32_t src1Width, int32_t src1Height, const float *src2, int32_t src2RowStride,
    int32_t src2ElementStride, int32_t src2Width, int32_t src2Height, float *const *dst, int32_t dstOffset,
    int32_t dstRowStride, int32_t dstElementStride, int32_t count);

/**
 * dst(k,i,j) = sum over l of src1(k,l,i) * src2(j,l)
 *
 * Checks: null, count, size, match, stride, offset.
 * Sizes match when src1Height == src2Width.
 * Serial below 3601 (1441 if an element stride is not 8) by K*N + (K + N)*M*count.
 */
int32_t kormMul_tat_64f_L(
    const double *const *src1, int32_t src1Offset, int32_t src1RowStride, int32_t src1ElementStride,
    int32_t src1Width, int32_t src1Height, const double *src2, int32_t src2RowStride,
    int32_t src2ElementStride, int32_t src2Width, int32_t src2Height, double *const *dst, int32_t dstOffset,
    int32_t dstRowStride, int32_t dstElementStride, int32_t count);

/**
 * dst(k,i,j) = sum over l of src1(k,l,i) * src2(j,l)
 *
 * Checks: null, count, size, match, stride, offset.
 * Sizes match when src1Height == src2Width.
 * Serial below 1441 by K*N + (K + N)*M*count.
 */
int32_t kormMul_tat_32f_P(
    const float *const *src1, int32_t src1Offset, int32_t src1ObjectStride, int32_t src1Width,
    int32_t src1Height, const float *const *src2, int32_t src2Offset, int32_t src2Width, int32_t src2Height,
    float *const *dst, int32_t dstOffset, int32_t dstObjectStride, int32_t count);

/**
 * dst(k,i,j) = sum over l of src1(k,l,i) * src2(j,l)
 *
 * Checks: null, count, size, match, stride, offset.
 * Sizes match when src1Height == src2Width.
 * Serial below 1441 by K*N + (K + N)*M*count.
 */
int32_t kormMul_tat_64f_P(
    const double *const *src1, int32_t src1Offset, int32_t src1ObjectStride, int32_t src1Width,
    int32_t src1Height, const double *const *src2, int32_t src2Offset, int32_t src2Width, int32_t src2Height,
    double *const *dst, int32_t dstOffset, int32_t dstObjectStride, int32_t count);

/**
 * dst(k,i,j) = sum over l of src1(i,l) * src2(k,l,j)
 *
 * Checks: null, count, size, match, stride.
 * Sizes match when src1Width == src2Height.
 * Serial below 2501 (1441 if an element stride is not 4) by M*K + (M + K)*N*count.
 */
int32_t kormMul_mma_32f(
    const float *src1, int32_t src1RowStride, int32_t src1ElementStride, int32_t src1Width,
    int32_t src1Height, const float *src2, int32_t src2ObjectStride, int32_t src2RowStride,
    int32_t src2ElementStride, int32_t src2Width, int32_t src2Height, float *dst, int32_t dstObjectStride,
    int32_t dstRowStride, int32_t dstElementStride, int32_t count);

/**
 * dst(k,i,j) = sum over l of src1(i,l) * src2(k,l,j)
 *
 * Checks: null, count, size, match, stride.
 * Sizes match when src1Width == src2Height.
 * Serial below 3601 (1441 if an element stride is not 8) by M*K + (M + K)*N*count.
 */
int32_t kormMul_mma_64f(
    const double *src1, int32_t src1RowStride, int32_t src1ElementStride, int32_t src1Width,
    int32_t src1Height, const double *src2, int32_t src2ObjectStride, int32_t src2RowStride,
    int32_t src2ElementStride, int32_t src2Width, int32_t src2Height, double *dst, int32_t dstObjectStride,
    int32_t dstRowStride, int32_t dstElementStride, int32_t count);

/**
 * dst(k,i,j) = sum over l of src1(i,l) * src2(k,l,j)
 *
 * Checks: null, count, size, match, stride, offset.
 * Sizes match when src1Width == src2Height.
 * Serial below 3601 (1441 if an element stride is not 4) by M*K + (M + K)*N*count.
 */
int32_t kormMul_mma_32f_L(
    const float *src1, int32_t src1RowStride, int32_t src1ElementStride, int32_t src1Width,
    int32_t src1Height, const float *const *src2, int32_t src2Offset, int32_t src2RowStride,
    int32_t src2ElementStride, int32_t src2Width, int32_t src2Height, float *const *dst, int32_t dstOffset,
    int32_t dstRowStride, int32_t dstElementStride, int32_t count);

/**
 * dst(k,i,j) = sum over l of src1(i,l) * src2(k,l,j)
 *
 * Checks: null, count, size, match, stride, offset.
 * Sizes match when src1Width == src2Height.
 * Serial below 3601 (1441 if an element stride is not 8) by M*K + (M + K)*N*count.
 */
int32_t kormMul_mma_64f_L(
    const double *src1, int32_t src1RowStride, int32_t src1ElementStride, int32_t src1Width,
    int32_t src1Height, const double *const *src2, int32_t src2Offset, int32_t src2RowStride,
    int32_t src2ElementStride, int32_t src2Width, int32_t src2Height, double *const *dst, int32_t dstOffset,
    int32_t dstRowStride, int32_t dstElementStride, int32_t count);

/**
 * dst(k,i,j) = sum over l of src1(i,l) * src2(k,l,j)
 *
 * Checks: null, count, size, match, stride, offset.
 * Sizes match when src1Width == src2Height.
 * Serial below 1441 by M*K + (M + K)*N*count.
 */
int32_t kormMul_mma_32f_P(
    const float *const *src1, int32_t src1Offset, int32_t src1Width, int32_t src1Height,
    const float *const *src2, int32_t src2Offset, int32_t src2ObjectStride, int32_t src2Width,
    int32_t src2Height, float *const *dst, int32_t dstOffset, int32_t dstObjectStride, int32_t count);

/**
 * dst(k,i,j) = sum over l of src1(i,l) * src2(k,l,j)
 *
 * Checks: null, count, size, match, stride, offset.
 * Sizes match when src1Width == src2Height.
 * Serial below 1441 by M*K + (M + K)*N*count.
 */
int32_t kormMul_mma_64f_P(
    const double *const *src1, int32_t src1Offset, int32_t src1Width, int32_t src1Height,
    const double *const *src2, int32_t src2Offset, int32_t src2ObjectStride, int32_t src2Width,
    int32_t src2Height, double *const *dst, int32_t dstOffset, int32_t dstObjectStride, int32_t count);

/**
 * dst(k,i,j) = sum over l of src1(i,l) * src2(k,j,l)
 *
 * Checks: null, count, size, match, stride.
 * Sizes match when src1Width == src2Width.
 * Serial below 2501 (1441 if an element stride is not 4) by M*K + (M + K)*N*count.
 */
int32_t kormMul_mta_32f(
    const float *src1, int32_t src1RowStride, int32_t src1ElementStride, int32_t src1Width,
    int32_t src1Height, const float *src2, int32_t src2ObjectStride, int32_t src2RowStride,
    int32_t src2ElementStride, int32_t src2Width, int32_t src2Height, float *dst, int32_t dstObjectStride,
    int32_t dstRowStride, int32_t dstElementStride, int32_t count);

/**
 * dst(k,i,j) = sum over l of src1(i,l) * src2(k,j,l)
 *
 * Checks: null, count, size, match, stride.
 * Sizes match when src1Width == src2Width.
 * Serial below 3601 (1441 if an element stride is not 8) by M*K + (M + K)*N*count.
 */
int32_t kormMul_mta_64f(
    const double *src1, int32_t src1RowStride, int32_t src1ElementStride, int32_t src1Width,
    int32_t src1Height, const double *src2, int32_t src2ObjectStride, int32_t src2RowStride,
    int32_t src2ElementStride, int32_t src2Width, int32_t src2Height, double *dst, int32_t dstObjectStride,
    int32_t dstRowStride, int32_t dstElementStride, int32_t count);

/**
 * dst(k,i,j) = sum over l of src1(i,l) * src2(k,j,l)
 *
 * Checks: null, count, size, match, stride, offset.
 * Sizes match when src1Width == src2Width.
 * Serial below 3601 (1441 if an element stride is not 4) by M*K + (M + K)*N*count.
 */
int32_t kormMul_mta_32f_L(
    const float *src1, int32_t src1RowStride, int32_t src1ElementStride, int32_t src1Width,
    int32_t src1Height, const float *const *src2, int32_t src2Offset, int32_t src2RowStride,
    int32_t src2ElementStride, int32_t src2Width, int32_t src2Height, float *const *dst, int32_t dstOffset,
    int32_t dstRowStride, int32_t dstElementStride, int32_t count);

/**
 * dst(k,i,j) = sum over l of src1(i,l) * src2(k,j,l)
 *
 * Checks: null, count, size, match, stride, offset.
 * Sizes match when src1Width == src2Width.
 * Serial below 3601 (1441 if an element stride is not 8) by M*K + (M + K)*N*count.
 */
int32_t kormMul_mta_64f_L(
    const double *src1, int32_t src1RowStride, int32_t src1ElementStride, int32_t src1Width,
    int32_t src1Height, const double *const *src2, int32_t src2Offset, int32_t src2RowStride,
    int32_t src2ElementStride, int32_t src2Width, int32_t src2Height, double *const *dst, int32_t dstOffset,
    int32_t dstRowStride, int32_t dstElementStride, int32_t count);

/**
 * dst(k,i,j) = sum over l of src1(i,l) * src2(k,j,l)
 *
 * Checks: null, count, size, match, stride, offset.
 * Sizes match when src1Width == src2Width.
 * Serial below 1441 by M*K + (M + K)*N*count.
 */
int32_t kormMul_mta_32f_P(
    const float *const *src1, int32_t src1Offset, int32_t src1Width, int32_t src1Height,
    const float *const *src2, int32_t src2Offset, int32_t src2ObjectStride, int32_t src2Width,
    int32_t src2Height, float *const *dst, int32_t dstOffset, int32_t dstObjectStride, int32_t count);

/**
 * dst(k,i,j) = sum over l of src1(i,l) * src2(k,j,l)
 *
 * Checks: null, count, size, match, stride, offset.
 * Sizes match when src1Width == src2Width.
 * Serial below 1441 by M*K + (M + K)*N*count.
 */
int32_t kormMul_mta_64f_P(
    const double *const *src1, int32_t src1Offset, int32_t src1Width, int32_t src1Height,
    const double *const *src2, int32_t src2Offset, int32_t src2ObjectStride, int32_t src2Width,
    int32_t src2Height, double *const *dst, int32_t dstOffset, int32_t dstObjectStride, int32_t count);

/**
 * dst(k,i,j) = sum over l of src1(l,i) * src2(k,l,j)
 *
 * Checks: null, count, size, match, stride.
 * Sizes match when src1Height == src2Height.
 * Serial below 2501 (1441 if an element stride is not 4) by M*K + (M + K)*N*count.
 */
int32_t kormMul_tma_32f(
    const float *src1, int32_t src1RowStride, int32_t src1ElementStride, int32_t src1Width,
    int32_t src1Height, const float *src2, int32_t src2ObjectStride, int32_t src2RowStride,
    int32_t src2ElementStride, int32_t src2Width, int32_t src2Height, float *dst, int32_t dstObjectStride,
    int32_t dstRowStride, int32_t dstElementStride, int32_t count);

/**
 * dst(k,i,j) = sum over l of src1(l,i) * src2(k,l,j)
 *
 * Checks: null, count, size, match, stride.
 * Sizes match when src1Height == src2Height.
 * Serial below 3601 (1441 if an element stride is not 8) by M*K + (M + K)*N*count.
 */
int32_t kormMul_tma_64f(
    const double *src1, int32_t src1RowStride, int32_t src1ElementStride, int32_t src1Width,
    int32_t src1Height, const double *src2, int32_t src2ObjectStride, int32_t src2RowStride,
    int32_t src2ElementStride, int32_t src2Width, int32_t src2Height, double *dst, int32_t dstObjectStride,
    int32_t dstRowStride, int32_t dstElementStride, int32_t count);

/**
 * dst(k,i,j) = sum over l of src1(l,i) * src2(k,l,j)
 *
 * Checks: null, count, size, match, stride, offset.
 * Sizes match when src1Height == src2Height.
 * Serial below 3601 (1441 if an element stride is not 4) by M*K + (M + K)*N*count.
 */
int32_t kormMul_tma_32f_L(
    const float *src1, int32_t src1RowStride, int32_t src1ElementStride, int32_t src1Width,
    int32_t src1Height, const float *const *src2, int32_t src2Offset, int32_t src2RowStride,
    int32_t src2ElementStride, int32_t src2Width, int32_t src2Height, float *const *dst, int32_t dstOffset,
    int32_t dstRowStride, int32_t dstElementStride, int32_t count);

/**
 * dst(k,i,j) = sum over l of src1(l,i) * src2(k,l,j)
 *
 * Checks: null, count, size, match, stride, offset.
 * Sizes match when src1Height == src2Height.
 * Serial below 3601 (1441 if an element stride is not 8) by M*K + (M + K)*N*count.
 */
int32_t kormMul_tma_64f_L(
    const double *src1, int32_t src1RowStride, int32_t src1ElementStride, int32_t src1Width,
    int32_t src1Height, const double *const *src2, int32_t src2Offset, int32_t src2RowStride,
    int32_t src2ElementStride, int32_t src2Width, int32_t src2Height, double *const *dst, int32_t dstOffset,
    int32_t dstRowStride, int32_t dstElementStride, int32_t count);

/**
 * dst(k,i,j) = sum over l of src1(l,i) * src2(k,l,j)
 *
 * Checks: null, count, size, match, stride, offset.
 * Sizes match when src1Height == src2Height.
 * Serial below 1441 by M*K + (M + K)*N*count.
 */
int32_t kormMul_tma_32f_P(
    const float *const *src1, int32_t src1Offset, int32_t src1Width, int32_t src1Height,
    const float *const *src2, int32_t src2Offset, int32_t src2ObjectStride, int32_t src2Width,
    int32_t src2Height, float *const *dst, int32_t dstOffset, int32_t dstObjectStride, int32_t count);

/**
 * dst(k,i,j) = sum over l of src1(l,i) * src2(k,l,j)
 *
 * Checks: null, count, size, match, stride, offset.
 * Sizes match when src1Height == src2Height.
 * Serial below 1441 by M*K + (M + K)*N*count.
 */
int32_t kormMul_tma_64f_P(
    const double *const *src1, int32_t src1Offset, int32_t src1Width, int32_t src1Height,
    const double *const *src2, int32_t src2Offset, int32_t src2ObjectStride, int32_t src2Width,
    int32_t src2Height, double *const *dst, int32_t dstOffset, int32_t dstObjectStride, int32_t count);

/**
 * dst(k,i,j) = sum over l of src1(l,i) * src2(k,j,l)
 *
 * Checks: null, count, size, match, stride.
 * Sizes match when src1Height == src2Width.
 * Serial below 2501 (1441 if an element stride is not 4) by M*K + (M + K)*N*count.
 */
int32_t kormMul_tta_32f(
    const float *src1, int32_t src1RowStride, int32_t src1ElementStride, int32_t src1Width,
    int32_t src1Height, const float *src2, int32_t src2ObjectStride, int32_t src2RowStride,
    int32_t src2ElementStride, int32_t src2Width, int32_t src2Height, float *dst, int32_t dstObjectStride,
    int32_t dstRowStride, int32_t dstElementStride, int32_t count);

/**
 * dst(k,i,j) = sum over l of src1(l,i) * src2(k,j,l)
 *
 * Checks: null, count, size, match, stride.
 * Sizes match when src1Height == src2Width.
 * Serial below 3601 (1441 if an element stride is not 8) by M*K + (M + K)*N*count.
 */
int32_t kormMul_tta_64f(
    const double *src1, int32_t src1RowStride, int32_t src1ElementStride, int32_t src1Width,
    int32_t src1Height, const double *src2, int32_t src2ObjectStride, int32_t src2RowStride,
    int32_t src2ElementStride, int32_t src2Width, int32_t src2Height, double *dst, int32_t dstObjectStride,
    int32_t dstRowStride, int32_t dstElementStride, int32_t count);

/**
 * dst(k,i,j) = sum over l of src1(l,i) * src2(k,j,l)
 *
 * Checks: null, count, size, match, stride, offset.
 * Sizes match when src1Height == src2Width.
 * Serial below 3601 (1441 if an element stride is not 4) by M*K + (M + K)*N*count.
 */
int32_t kormMul_tta_32f_L(
    const float *src1, int32_t src1RowStride, int32_t src1ElementStride, int32_t src1Width,
    int32_t src1Height, const float *const *src2, int32_t src2Offset, int32_t src2RowStride,
    int32_t src2ElementStride, int32_t src2Width, int32_t src2Height, float *const *dst, int32_t dstOffset,
    int32_t dstRowStride, int32_t dstElementStride, int32_t count);

/**
 * dst(k,i,j) = sum over l of src1(l,i) * src2(k,j,l)
 *
 * Checks: null, count, size, match, stride, offset.
 * Sizes match when src1Height == src2Width.
 * Serial below 3601 (1441 if an element stride is not 8) by M*K + (M + K)*N*count.
 */
int32_t kormMul_tta_64f_L(
    const double *src1, int32_t src1RowStride, int32_t src1ElementStride, int32_t src1Width,
    int32_t src1Height, const double *const *src2, int32_t src2Offset, int32_t src2RowStride,
    int32_t src2ElementStride, int32_t src2Width, int32_t src2Height, double *const *dst, int32_t dstOffset,
    int32_t dstRowStride, int32_t dstElementStride, int32_t count);

/**
 * dst(k,i,j) = sum over l of src1(l,i) * src2(k,j,l)
 *
 * Checks: null, count, size, match, stride, offset.
 * Sizes match when src1Height == src2Width.
 * Serial below 1441 by M*K + (M + K)*N*count.
 */
int32_t kormMul_tta_32f_P(
    const float *const *src1, int32_t src1Offset, int32_t src1Width, int32_t src1Height,
    const float *const *src2, int32_t src2Offset, int32_t src2ObjectStride, int32_t src2Width,
    int32_t src2Height, float *const *dst, int32_t dstOffset, int32_t dstObjectStride, int32_t count);

/**
 * dst(k,i,j) = sum over l of src1(l,i) * src2(k,j,l)
 *
 * Checks: null, count, size, match, stride, offset.
 * Sizes match when src1Height == src2Width.
 * Serial below 1441 by M*K + (M + K)*N*count.
 */
int32_t kormMul_tta_64f_P(
    const double *const *src1, int32_t src1Offset, int32_t src1Width, int32_t src1Height,
    const double *const *src2, int32_t src2Offset, int32_t src2ObjectStride, int32_t src2Width,
    int32_t src2Height, double *const *dst, int32_t dstOffset, int32_t dstObjectStride, int32_t count);

/**
 * dst(k,i,j) = sum over l of src1(k,i,l) * src2(k,l,j)
 *
 * Checks: null, count, size, match, stride.
 * Sizes match when src1Width == src2Height.
 * Serial below 2501 (1441 if an element stride is not 4) by (K*N + (K + N)*M)*count.
 */
int32_t kormMul_mama_32f(
    const float *src1, int32_t src1ObjectStride, int32_t src1RowStride, int32_t src1ElementStride,
    int32_t src1Width, int32_t src1Height, const float *src2, int32_t src2ObjectStride, int32_t src2RowStride,
    int32_t src2ElementStride, int32_t src2Width, int32_t src2Height, float *dst, int32_t dstObjectStride,
    int32_t dstRowStride, int32_t dstElementStride, int32_t count);

/**
 * dst(k,i,j) = sum over l of src1(k,i,l) * src2(k,l,j)
 *
 * Checks: null, count, size, match, stride.
 * Sizes match when src1Width == src2Height.
 * Serial below 3601 (1441 if an element stride is not 8) by (K*N + (K + N)*M)*count.
 */
int32_t kormMul_mama_64f(
    const double *src1, int32_t src1ObjectStride, int32_t src1RowStride, int32_t src1ElementStride,
    int32_t src1Width, int32_t src1Height, const double *src2, int32_t src2ObjectStride,
    int32_t src2RowStride, int32_t src2ElementStride, int32_t src2Width, int32_t src2Height, double *dst,
    int32_t dstObjectStride, int32_t dstRowStride, int32_t dstElementStride, int32_t count);

/**
 * dst(k,i,j) = sum over l of src1(k,i,l) * src2(k,l,j)
 *
 * Checks: null, count, size, match, stride, offset.
 * Sizes match when src1Width == src2Height.
 * Serial below 3601 (1441 if an element stride is not 4) by (K*N + (K + N)*M)*count.
 */
int32_t kormMul_mama_32f_L(
    const float *const *src1, int32_t src1Offset, int32_t src1RowStride, int32_t src1ElementStride,
    int32_t src1Width, int32_t src1Height, const float *const *src2, int32_t src2Offset,
    int32_t src2RowStride, int32_t src2ElementStride, int32_t src2Width, int32_t src2Height,
    float *const *dst, int32_t dstOffset, int32_t dstRowStride, int32_t dstElementStride, int32_t count);

/**
 * dst(k,i,j) = sum over l of src1(k,i,l) * src2(k,l,j)
 *
 * Checks: null, count, size, match, stride, offset.
 * Sizes match when src1Width == src2Height.
 * Serial below 3601 (1441 if an element stride is not 8) by (K*N + (K + N)*M)*count.
 */
int32_t kormMul_mama_64f_L(
    const double *const *src1, int32_t src1Offset, int32_t src1RowStride, int32_t src1ElementStride,
    int32_t src1Width, int32_t src1Height, const double *const *src2, int32_t src2Offset,
    int32_t src2RowStride, int32_t src2ElementStride, int32_t src2Width, int32_t src2Height,
    double *const *dst, int32_t dstOffset, int32_t dstRowStride, int32_t dstElementStride, int32_t count);

/**
 * dst(k,i,j) = sum over l of src1(k,i,l) * src2(k,l,j)
 *
 * Checks: null, count, size, match, stride, offset.
 * Sizes match when src1Width == src2Height.
 * Serial below 1441 by (K*N + (K + N)*M)*count.
 */
int32_t kormMul_mama_32f_P(
    const float *const *src1, int32_t src1Offset, int32_t src1ObjectStride, int32_t src1Width,
    int32_t src1Height, const float *const *src2, int32_t src2Offset, int32_t src2ObjectStride,
    int32_t src2Width, int32_t src2Height, float *const *dst, int32_t dstOffset, int32_t dstObjectStride,
    int32_t count);

/**
 * dst(k,i,j) = sum over l of src1(k,i,l) * src2(k,l,j)
 *
 * Checks: null, count, size, match, stride, offset.
 * Sizes match when src1Width == src2Height.
 * Serial below 1441 by (K*N + (K + N)*M)*count.
 */
int32_t kormMul_mama_64f_P(
    const double *const *src1, int32_t src1Offset, int32_t src1ObjectStride, int32_t src1Width,
    int32_t src1Height, const double *const *src2, int32_t src2Offset, int32_t src2ObjectStride,
    int32_t src2Width, int32_t src2Height, double *const *dst, int32_t dstOffset, int32_t dstObjectStride,
    int32_t count);

/**
 * dst(k,i,j) = sum over l of src1(k,i,l) * src2(k,j,l)
 *
 * Checks: null, count, size, match, stride.
 * Sizes match when src1Width == src2Width.
 * Serial below 2501 (1441 if an element stride is not 4) by (K*N + (K + N)*M)*count.
 */
int32_t kormMul_mata_32f(
    const float *src1, int32_t src1ObjectStride, int32_t src1RowStride, int32_t src1ElementStride,
    int32_t src1Width, int32_t src1Height, const float *src2, int32_t src2ObjectStride, int32_t src2RowStride,
    int32_t src2ElementStride, int32_t src2Width, int32_t src2Height, float *dst, int32_t dstObjectStride,
    int32_t dstRowStride, int32_t dstElementStride, int32_t count);

/**
 * dst(k,i,j) = sum over l of src1(k,i,l) * src2(k,j,l)
 *
 * Checks: null, count, size, match, stride.
 * Sizes match when src1Width == src2Width.
 * Serial below 3601 (1441 if an element stride is not 8) by (K*N + (K + N)*M)*count.
 */
int32_t kormMul_mata_64f(
    const double *src1, int32_t src1ObjectStride, int32_t src1RowStride, int32_t src1ElementStride,
    int32_t src1Width, int32_t src1Height, const double *src2, int32_t src2ObjectStride,
    int32_t src2RowStride, int32_t src2ElementStride, int32_t src2Width, int32_t src2Height, double *dst,
    int32_t dstObjectStride, int32_t dstRowStride, int32_t dstElementStride, int32_t count);

/**
 * dst(k,i,j) = sum over l of src1(k,i,l) * src2(k,j,l)
 *
 * Checks: null, count, size, match, stride, offset.
 * Sizes match when src1Width == src2Width.
 * Serial below 3601 (1441 if an element stride is not 4) by (K*N + (K + N)*M)*count.
 */
int32_t kormMul_mata_32f_L(
    const float *const *src1, int32_t src1Offset, int32_t src1RowStride, int32_t src1ElementStride,
    int32_t src1Width, int32_t src1Height, const float *const *src2, int32_t src2Offset,
    int32_t src2RowStride, int32_t src2ElementStride, int32_t src2Width, int32_t src2Height,
    float *const *dst, int32_t dstOffset, int32_t dstRowStride, int32_t dstElementStride, int32_t count);

/**
 * dst(k,i,j) = sum over l of src1(k,i,l) * src2(k,j,l)
 *
 * Checks: null, count, size, match, stride, offset.
 * Sizes match when src1Width == src2Width.
 * Serial below 3601 (1441 if an element stride is not 8) by (K*N + (K + N)*M)*count.
 */
int32_t kormMul_mata_64f_L(
    const double *const *src1, int32_t src1Offset, int32_t src1RowStride, int32_t src1ElementStride,
    int32_t src1Width, int32_t src1Height, const double *const *src2, int32_t src2Offset,
    int32_t src2RowStride, int32_t src2ElementStride, int32_t src2Width, int32_t src2Height,
    double *const *dst, int32_t dstOffset, int32_t dstRowStride, int32_t dstElementStride, int32_t count);

/**
 * dst(k,i,j) = sum over l of src1(k,i,l) * src2(k,j,l)
 *
 * Checks: null, count, size, match, stride, offset.
 * Sizes match when src1Width == src2Width.
 * Serial below 1441 by (K*N + (K + N)*M)*count.
 */
int32_t kormMul_mata_32f_P(
    const float *const *src1, int32_t src1Offset, int32_t src1ObjectStride, int32_t src1Width,
    int32_t src1Height, const float *const *src2, int32_t src2Offset, int32_t src2ObjectStride,
    int32_t src2Width, int32_t src2Height, float *const *dst, int32_t dstOffset, int32_t dstObjectStride,
    int32_t count);

/**
 * dst(k,i,j) = sum over l of src1(k,i,l) * src2(k,j,l)
 *
 * Checks: null, count, size, match, stride, offset.
 * Sizes match when src1Width == src2Width.
 * Serial below 1441 by (K*N + (K + N)*M)*count.
 */
int32_t kormMul_mata_64f_P(
    const double *const *src1, int32_t src1Offset, int32_t src1ObjectStride, int32_t src1Width,
    int32_t src1Height, const double *const *src2, int32_t src2Offset, int32_t src2ObjectStride,
    int32_t src2Width, int32_t src2Height, double *const *dst, int32_t dstOffset, int32_t dstObjectStride,
    int32_t count);

/**
 * dst(k,i,j) = sum over l of src1(k,l,i) * src2(k,l,j)
 *
 * Checks: null, count, size, match, stride.
 * Sizes match when src1Height == src2Height.
 * Serial below 2501 (1441 if an element stride is not 4) by (K*N + (K + N)*M)*count.
 */
int32_t kormMul_tama_32f(
    const float *src1, int32_t src1ObjectStride, int32_t src1RowStride, int32_t src1ElementStride,
    int32_t src1Width, int32_t src1Height, const float *src2, int32_t src2ObjectStride, int32_t src2RowStride,
    int32_t src2ElementStride, int32_t src2Width, int32_t src2Height, float *dst, int32_t dstObjectStride,
    int32_t dstRowStride, int32_t dstElementStride, int32_t count);

/**
 * dst(k,i,j) = sum over l of src1(k,l,i) * src2(k,l,j)
 *
 * Checks: null, count, size, match, stride.
 * Sizes match when src1Height == src2Height.
 * Serial below 3601 (1441 if an element stride is not 8) by (K*N + (K + N)*M)*count.
 */
int32_t kormMul_tama_64f(
    const double *src1, int32_t src1ObjectStride, int32_t src1RowStride, int32_t src1ElementStride,
    int32_t src1Width, int32_t src1Height, const double *src2, int32_t src2ObjectStride,
    int32_t src2RowStride, int32_t src2ElementStride, int32_t src2Width, int32_t src2Height, double *dst,
    int32_t dstObjectStride, int32_t dstRowStride, int32_t dstElementStride, int32_t count);

/**
 * dst(k,i,j) = sum over l of src1(k,l,i) * src2(k,l,j)
 *
 * Checks: null, count, size, match, stride, offset.
 * Sizes match when src1Height == src2Height.
 * Serial below 3601 (1441 if an element stride is not 4) by (K*N + (K + N)*M)*count.
 */
int32_t kormMul_tama_32f_L(
    const float *const *src1, int32_t src1Offset, int32_t src1RowStride, int32_t src1ElementStride,
    int32_t src1Width, int32_t src1Height, const float *const *src2, int32_t src2Offset,
    int32_t src2RowStride, int32_t src2ElementStride, int32_t src2Width, int32_t src2Height,
    float *const *dst, int32_t dstOffset, int32_t dstRowStride, int32_t dstElementStride, int32_t count);

/**
 * dst(k,i,j) = sum over l of src1(k,l,i) * src2(k,l,j)
 *
 * Checks: null, count, size, match, stride, offset.
 * Sizes match when src1Height == src2Height.
 * Serial below 3601 (1441 if an element stride is not 8) by (K*N + (K + N)*M)*count.
 */
int32_t kormMul_tama_64f_L(
    const double *const *src1, int32_t src1Offset, int32_t src1RowStride, int32_t src1ElementStride,
    int32_t src1Width, int32_t src1Height, const double *const *src2, int32_t src2Offset,
    int32_t src2RowStride, int32_t src2ElementStride, int32_t src2Width, int32_t src2Height,
    double *const *dst, int32_t dstOffset, int32_t dstRowStride, int32_t dstElementStride, int32_t count);

/**
 * dst(k,i,j) = sum over l of src1(k,l,i) * src2(k,l,j)
 *
 * Checks: null, count, size, match, stride, offset.
 * Sizes match when src1Height == src2Height.
 * Serial below 1441 by (K*N + (K + N)*M)*count.
 */
int32_t kormMul_tama_32f_P(
    const float *const *src1, int32_t src1Offset, int32_t src1ObjectStride, int32_t src1Width,
    int32_t src1Height, const float *const *src2, int32_t src2Offset, int32_t src2ObjectStride,
    int32_t src2Width, int32_t src2Height, float *const *dst, int32_t dstOffset, int32_t dstObjectStride,
    int32_t count);

/**
 * dst(k,i,j) = sum over l of src1(k,l,i) * src2(k,l,j)
 *
 * Checks: null, count, size, match, stride, offset.
 * Sizes match when src1Height == src2Height.
 * Serial below 1441 by (K*N + (K + N)*M)*count.
 */
int32_t kormMul_tama_64f_P(
    const double *const *src1, int32_t src1Offset, int32_t src1ObjectStride, int32_t src1Width,
    int32_t src1Height, const double *const *src2, int32_t src2Offset, int32_t src2ObjectStride,
    int32_t src2Width, int32_t src2Height, double *const *dst, int32_t dstOffset, int32_t dstObjectStride,
    int32_t count);

/**
 * dst(k,i,j) = sum over l of src1(k,l,i) * src2(k,j,l)
 *
 * Checks: null, count, size, match, stride.
 * Sizes match when src1Height == src2Width.
 * Serial below 2501 (1441 if an element stride is not 4) by (K*N + (K + N)*M)*count.
 */
int32_t kormMul_tata_32f(
    const float *src1, int32_t src1ObjectStride, int32_t src1RowStride, int32_t src1ElementStride,
    int32_t src1Width, int32_t src1Height, const float *src2, int32_t src2ObjectStride, int32_t src2RowStride,
    int32_t src2ElementStride, int32_t src2Width, int32_t src2Height, float *dst, int32_t dstObjectStride,
    int32_t dstRowStride, int32_t dstElementStride, int32_t count);

/**
 * dst(k,i,j) = sum over l of src1(k,l,i) * src2(k,j,l)
 *
 * Checks: null, count, size, match, stride.
 * Sizes match when src1Height == src2Width.
 * Serial below 3601 (1441 if an element stride is not 8) by (K*N + (K + N)*M)*count.
 */
int32_t kormMul_tata_64f(
    const double *src1, int32_t src1ObjectStride, int32_t src1RowStride, int32_t src1ElementStride,
    int32_t src1Width, int32_t src1Height, const double *src2, int32_t src2ObjectStride,
    int32_t src2RowStride, int32_t src2ElementStride, int32_t src2Width, int32_t src2Height, double *dst,
    int32_t dstObjectStride, int32_t dstRowStride, int32_t dstElementStride, int32_t count);

/**
 * dst(k,i,j) = sum over l of src1(k,l,i) * src2(k,j,l)
 *
 * Checks: null, count, size, match, stride, offset.
 * Sizes match when src1Height == src2Width.
 * Serial below 3601 (1441 if an element stride is not 4) by (K*N + (K + N)*M)*count.
 */
int32_t kormMul_tata_32f_L(
    const float *const *src1, int32_t src1Offset, int32_t src1RowStride, int32_t src1ElementStride,
    int32_t src1Width, int32_t src1Height, const float *const *src2, int32_t src2Offset,
    int32_t src2RowStride, int32_t src2ElementStride, int32_t src2Width, int32_t src2Height,
    float *const *dst, int32_t dstOffset, int32_t dstRowStride, int32_t dstElementStride, int32_t count);

/**
 * dst(k,i,j) = sum over l of src1(k,l,i) * src2(k,j,l)
 *
 * Checks: null, count, size, match, stride, offset.
 * Sizes match when src1Height == src2Width.
 * Serial below 3601 (1441 if an element stride is not 8) by (K*N + (K + N)*M)*count.
 */
int32_t kormMul_tata_64f_L(
    const double *const *src1, int32_t src1Offset, int32_t src1RowStride, int32_t src1ElementStride,
    int32_t src1Width, int32_t src1Height, const double *const *src2, int32_t src2Offset,
    int32_t src2RowStride, int32_t src2ElementStride, int32_t src2Width, int32_t src2Height,
    double *const *dst, int32_t dstOffset, int32_t dstRowStride, int32_t dstElementStride, int32_t count);

/**
 * dst(k,i,j) = sum over l of src1(k,l,i) * src2(k,j,l)
 *
 * Checks: null, count, size, match, stride, offset.
 * Sizes match when src1Height == src2Width.
 * Serial below 1441 by (K*N + (K + N)*M)*count.
 */
int32_t kormMul_tata_32f_P(
    const float *const *src1, int32_t src1Offset, int32_t src1ObjectStride, int32_t src1Width,
    int32_t src1Height, const float *const *src2, int32_t src2Offset, int32_t src2ObjectStride,
    int32_t src2Width, int32_t src2Height, float *const *dst, int32_t dstOffset, int32_t dstObjectStride,
    int32_t count);

/**
 * dst(k,i,j) = sum over l of src1(k,l,i) * src2(k,j,l)
 *
 * Checks: null, count, size, match, stride, offset.
 * Sizes match when src1Height == src2Width.
 * Serial below 1441 by (K*N + (K + N)*M)*count.
 */
int32_t kormMul_tata_64f_P(
    const double *const *src1, int32_t src1Offset, int32_t src1ObjectStride, int32_t src1Width,
    int32_t src1Height, const double *const *src2, int32_t src2Offset, int32_t src2ObjectStride,
    int32_t src2Width, int32_t src2Height, double *const *dst, int32_t dstOffset, int32_t dstObjectStride,
    int32_t count);

/** @} */


/**
 * @defgroup vector_products Products of matrices and vectors
 * dst = matrix * vector, where `t` reads the matrix as its transpose: one of each, one matrix with many vectors (`mva`), many
 * matrices with one vector (`mav`), or both, object by object (`mava`).
 *
 * Shapes: the sizes of the matrix are those in which it is stored. dst has M elements, each a sum of K products: of `m`, M is
 * `src1Height` and K `src1Width`; of `t`, M is `src1Width` and K `src1Height`. dst has no length of its own.
 *
 * Sums: every product and every addition is rounded to the element type, in an order that is fixed for a form, its sizes,
 * layout and choice of strides: see docs/numerics.md. An array form gives each object what its kernel for one object would.
 *
 * Overlap: dst must not overlap a source.
 *
 * Status: ::korStatusOk, ::korStatusNullPointer, ::korStatusBadSize, ::korStatusSizeMismatch, ::korStatusBadStride; array
 * forms ::korStatusBadCount; list and pointer forms ::korStatusBadOffset. Other than with ::korStatusOk nothing is written.
 * @{
 */

/**
 * dst(i) = sum over l of src1(i,l) * src2(l)
 *
 * Checks: null, size, match, stride.
 * Sizes match when src1Width == src2Length.
 */
int32_t kormMul_mv_32f(
    const float *src1, int32_t src1RowStride, int32_t src1ElementStride, int32_t src1Width,
    int32_t src1Height, const float *src2, int32_t src2ElementStride, int32_t src2Length, float *dst,
    int32_t dstElementStride);

/**
 * dst(i) = sum over l of src1(i,l) * src2(l)
 *
 * Checks: null, size, match, stride.
 * Sizes match when src1Width == src2Length.
 */
int32_t kormMul_mv_64f(
    const double *src1, int32_t src1RowStride, int32_t src1ElementStride, int32_t src1Width,
    int32_t src1Height, const double *src2, int32_t src2ElementStride, int32_t src2Length, double *dst,
    int32_t dstElementStride);

/**
 * dst(i) = sum over l of src1(i,l) * src2(l)
 *
 * Checks: null, size, match, offset.
 * Sizes match when src1Width == src2Length.
 */
int32_t kormMul_mv_32f_P(
    const float *const *src1, int32_t src1Offset, int32_t src1Width, int32_t src1Height,
    const float *const *src2, int32_t src2Offset, int32_t src2Length, float *const *dst, int32_t dstOffset);

/**
 * dst(i) = sum over l of src1(i,l) * src2(l)
 *
 * Checks: null, size, match, offset.
 * Sizes match when src1Width == src2Length.
 */
int32_t kormMul_mv_64f_P(
    const double *const *src1, int32_t src1Offset, int32_t src1Width, int32_t src1Height,
    const double *const *src2, int32_t src2Offset, int32_t src2Length, double *const *dst, int32_t dstOffset);

/**
 * dst(i) = sum over l of src1(l,i) * src2(l)
 *
 * Checks: null, size, match, stride.
 * Sizes match when src1Height == src2Length.
 */
int32_t kormMul_tv_32f(
    const float *src1, int32_t src1RowStride, int32_t src1ElementStride, int32_t src1Width,
    int32_t src1Height, const float *src2, int32_t src2ElementStride, int32_t src2Length, float *dst,
    int32_t dstElementStride);

/**
 * dst(i) = sum over l of src1(l,i) * src2(l)
 *
 * Checks: null, size, match, stride.
 * Sizes match when src1Height == src2Length.
 */
int32_t kormMul_tv_64f(
    const double *src1, int32_t src1RowStride, int32_t src1ElementStride, int32_t src1Width,
    int32_t src1Height, const double *src2, int32_t src2ElementStride, int32_t src2Length, double *dst,
    int32_t dstElementStride);

/**
 * dst(i) = sum over l of src1(l,i) * src2(l)
 *
 * Checks: null, size, match, offset.
 * Sizes match when src1Height == src2Length.
 */
int32_t kormMul_tv_32f_P(
    const float *const *src1, int32_t src1Offset, int32_t src1Width, int32_t src1Height,
    const float *const *src2, int32_t src2Offset, int32_t src2Length, float *const *dst, int32_t dstOffset);

/**
 * dst(i) = sum over l of src1(l,i) * src2(l)
 *
 * Checks: null, size, match, offset.
 * Sizes match when src1Height == src2Length.
 */
int32_t kormMul_tv_64f_P(
    const double *const *src1, int32_t src1Offset, int32_t src1Width, int32_t src1Height,
    const double *const *src2, int32_t src2Offset, int32_t src2Length, double *const *dst, int32_t dstOffset);

/**
 * dst(k,i) = sum over l of src1(i,l) * src2(k,l)
 *
 * Checks: null, count, size, match, stride.
 * Sizes match when src1Width == src2Length.
 * Serial below 2501 (1441 if an element stride is not 4) by M*K + (M + K)*count.
 */
int32_t kormMul_mva_32f(
    const float *src1, int32_t src1RowStride, int32_t src1ElementStride, int32_t src1Width,
    int32_t src1Height, const float *src2, int32_t src2ObjectStride, int32_t src2ElementStride,
    int32_t src2Length, float *dst, int32_t dstObjectStride, int32_t dstElementStride, int32_t count);

/**
 * dst(k,i) = sum over l of src1(i,l) * src2(k,l)
 *
 * Checks: null, count, size, match, stride.
 * Sizes match when src1Width == src2Length.
 * Serial below 3601 (1441 if an element stride is not 8) by M*K + (M + K)*count.
 */
int32_t kormMul_mva_64f(
    const double *src1, int32_t src1RowStride, int32_t src1ElementStride, int32_t src1Width,
    int32_t src1Height, const double *src2, int32_t src2ObjectStride, int32_t src2ElementStride,
    int32_t src2Length, double *dst, int32_t dstObjectStride, int32_t dstElementStride, int32_t count);

/**
 * dst(k,i) = sum over l of src1(i,l) * src2(k,l)
 *
 * Checks: null, count, size, match, stride, offset.
 * Sizes match when src1Width == src2Length.
 * Serial below 3601 (1441 if an element stride is not 4) by M*K + (M + K)*count.
 */
int32_t kormMul_mva_32f_L(
    const float *src1, int32_t src1RowStride, int32_t src1ElementStride, int32_t src1Width,
    int32_t src1Height, const float *const *src2, int32_t src2Offset, int32_t src2ElementStride,
    int32_t src2Length, float *const *dst, int32_t dstOffset, int32_t dstElementStride, int32_t count);

/**
 * dst(k,i) = sum over l of src1(i,l) * src2(k,l)
 *
 * Checks: null, count, size, match, stride, offset.
 * Sizes match when src1Width == src2Length.
 * Serial below 3601 (1441 if an element stride is not 8) by M*K + (M + K)*count.
 */
int32_t kormMul_mva_64f_L(
    const double *src1, int32_t src1RowStride, int32_t src1ElementStride, int32_t src1Width,
    int32_t src1Height, const double *const *src2, int32_t src2Offset, int32_t src2ElementStride,
    int32_t src2Length, double *const *dst, int32_t dstOffset, int32_t dstElementStride, int32_t count);

/**
 * dst(k,i) = sum over l of src1(i,l) * src2(k,l)
 *
 * Checks: null, count, size, match, stride, offset.
 * Sizes match when src1Width == src2Length.
 * Serial below 1441 by M*K + (M + K)*count.
 */
int32_t kormMul_mva_32f_P(
    const float *const *src1, int32_t src1Offset, int32_t src1Width, int32_t src1Height,
    const float *const *src2, int32_t src2Offset, int32_t src2ObjectStride, int32_t src2Length,
    float *const *dst, int32_t dstOffset, int32_t dstObjectStride, int32_t count);

/**
 * dst(k,i) = sum over l of src1(i,l) * src2(k,l)
 *
 * Checks: null, count, size, match, stride, offset.
 * Sizes match when src1Width == src2Length.
 * Serial below 1441 by M*K + (M + K)*count.
 */
int32_t kormMul_mva_64f_P(
    const double *const *src1, int32_t src1Offset, int32_t src1Width, int32_t src1Height,
    const double *const *src2, int32_t src2Offset, int32_t src2ObjectStride, int32_t src2Length,
    double *const *dst, int32_t dstOffset, int32_t dstObjectStride, int32_t count);

/**
 * dst(k,i) = sum over l of src1(l,i) * src2(k,l)
 *
 * Checks: null, count, size, match, stride.
 * Sizes match when src1Height == src2Length.
 * Serial below 2501 (1441 if an element stride is not 4) by M*K + (M + K)*count.
 */
int32_t kormMul_tva_32f(
    const float *src1, int32_t src1RowStride, int32_t src1ElementStride, int32_t src1Width,
    int32_t src1Height, const float *src2, int32_t src2ObjectStride, int32_t src2ElementStride,
    int32_t src2Length, float *dst, int32_t dstObjectStride, int32_t dstElementStride, int32_t count);

/**
 * dst(k,i) = sum over l of src1(l,i) * src2(k,l)
 *
 * Checks: null, count, size, match, stride.
 * Sizes match when src1Height == src2Length.
 * Serial below 3601 (1441 if an element stride is not 8) by M*K + (M + K)*count.
 */
int32_t kormMul_tva_64f(
    const double *src1, int32_t src1RowStride, int32_t src1ElementStride, int32_t src1Width,
    int32_t src1Height, const double *src2, int32_t src2ObjectStride, int32_t src2ElementStride,
    int32_t src2Length, double *dst, int32_t dstObjectStride, int32_t dstElementStride, int32_t count);

/**
 * dst(k,i) = sum over l of src1(l,i) * src2(k,l)
 *
 * Checks: null, count, size, match, stride, offset.
 * Sizes match when src1Height == src2Length.
 * Serial below 3601 (1441 if an element stride is not 4) by M*K + (M + K)*count.
 */
int32_t kormMul_tva_32f_L(
    const float *src1, int32_t src1RowStride, int32_t src1ElementStride, int32_t src1Width,
    int32_t src1Height, const float *const *src2, int32_t src2Offset, int32_t src2ElementStride,
    int32_t src2Length, float *const *dst, int32_t dstOffset, int32_t dstElementStride, int32_t count);

/**
 * dst(k,i) = sum over l of src1(l,i) * src2(k,l)
 *
 * Checks: null, count, size, match, stride, offset.
 * Sizes match when src1Height == src2Length.
 * Serial below 3601 (1441 if an element stride is not 8) by M*K + (M + K)*count.
 */
int32_t kormMul_tva_64f_L(
    const double *src1, int32_t src1RowStride, int32_t src1ElementStride, int32_t src1Width,
    int32_t src1Height, const double *const *src2, int32_t src2Offset, int32_t src2ElementStride,
    int32_t src2Length, double *const *dst, int32_t dstOffset, int32_t dstElementStride, int32_t count);

/**
 * dst(k,i) = sum over l of src1(l,i) * src2(k,l)
 *
 * Checks: null, count, size, match, stride, offset.
 * Sizes match when src1Height == src2Length.
 * Serial below 1441 by M*K + (M + K)*count.
 */
int32_t kormMul_tva_32f_P(
    const float *const *src1, int32_t src1Offset, int32_t src1Width, int32_t src1Height,
    const float *const *src2, int32_t src2Offset, int32_t src2ObjectStride, int32_t src2Length,
    float *const *dst, int32_t dstOffset, int32_t dstObjectStride, int32_t count);

/**
 * dst(k,i) = sum over l of src1(l,i) * src2(k,l)
 *
 * Checks: null, count, size, match, stride, offset.
 * Sizes match when src1Height == src2Length.
 * Serial below 1441 by M*K + (M + K)*count.
 */
int32_t kormMul_tva_64f_P(
    const double *const *src1, int32_t src1Offset, int32_t src1Width, int32_t src1Height,
    const double *const *src2, int32_t src2Offset, int32_t src2ObjectStride, int32_t src2Length,
    double *const *dst, int32_t dstOffset, int32_t dstObjectStride, int32_t count);

/**
 * dst(k,i) = sum over l of src1(k,i,l) * src2(l)
 *
 * Checks: null, count, size, match, stride.
 * Sizes match when src1Width == src2Length.
 * Serial below 2501 (1441 if an element stride is not 4) by (M*K + M)*count + K.
 */
int32_t kormMul_mav_32f(
    const float *src1, int32_t src1ObjectStride, int32_t src1RowStride, int32_t src1ElementStride,
    int32_t src1Width, int32_t src1Height, const float *src2, int32_t src2ElementStride, int32_t src2Length,
    float *dst, int32_t dstObjectStride, int32_t dstElementStride, int32_t count);

/**
 * dst(k,i) = sum over l of src1(k,i,l) * src2(l)
 *
 * Checks: null, count, size, match, stride.
 * Sizes match when src1Width == src2Length.
 * Serial below 3601 (1441 if an element stride is not 8) by (M*K + M)*count + K.
 */
int32_t kormMul_mav_64f(
    const double *src1, int32_t src1ObjectStride, int32_t src1RowStride, int32_t src1ElementStride,
    int32_t src1Width, int32_t src1Height, const double *src2, int32_t src2ElementStride, int32_t src2Length,
    double *dst, int32_t dstObjectStride, int32_t dstElementStride, int32_t count);

/**
 * dst(k,i) = sum over l of src1(k,i,l) * src2(l)
 *
 * Checks: null, count, size, match, stride, offset.
 * Sizes match when src1Width == src2Length.
 * Serial below 3601 (1441 if an element stride is not 4) by (M*K + M)*count + K.
 */
int32_t kormMul_mav_32f_L(
    const float *const *src1, int32_t src1Offset, int32_t src1RowStride, int32_t src1ElementStride,
    int32_t src1Width, int32_t src1Height, const float *src2, int32_t src2ElementStride, int32_t src2Length,
    float *const *dst, int32_t dstOffset, int32_t dstElementStride, int32_t count);

/**
 * dst(k,i) = sum over l of src1(k,i,l) * src2(l)
 *
 * Checks: null, count, size, match, stride, offset.
 * Sizes match when src1Width == src2Length.
 * Serial below 3601 (1441 if an element stride is not 8) by (M*K + M)*count + K.
 */
int32_t kormMul_mav_64f_L(
    const double *const *src1, int32_t src1Offset, int32_t src1RowStride, int32_t src1ElementStride,
    int32_t src1Width, int32_t src1Height, const double *src2, int32_t src2ElementStride, int32_t src2Length,
    double *const *dst, int32_t dstOffset, int32_t dstElementStride, int32_t count);

/**
 * dst(k,i) = sum over l of src1(k,i,l) * src2(l)
 *
 * Checks: null, count, size, match, stride, offset.
 * Sizes match when src1Width == src2Length.
 * Serial below 1441 by (M*K + M)*count + K.
 */
int32_t kormMul_mav_32f_P(
    const float *const *src1, int32_t src1Offset, int32_t src1ObjectStride, int32_t src1Width,
    int32_t src1Height, const float *const *src2, int32_t src2Offset, int32_t src2Length, float *const *dst,
    int32_t dstOffset, int32_t dstObjectStride, int32_t count);

/**
 * dst(k,i) = sum over l of src1(k,i,l) * src2(l)
 *
 * Checks: null, count, size, match, stride, offset.
 * Sizes match when src1Width == src2Length.
 * Serial below 1441 by (M*K + M)*count + K.
 */
int32_t kormMul_mav_64f_P(
    const double *const *src1, int32_t src1Offset, int32_t src1ObjectStride, int32_t src1Width,
    int32_t src1Height, const double *const *src2, int32_t src2Offset, int32_t src2Length, double *const *dst,
    int32_t dstOffset, int32_t dstObjectStride, int32_t count);

/**
 * dst(k,i) = sum over l of src1(k,l,i) * src2(l)
 *
 * Checks: null, count, size, match, stride.
 * Sizes match when src1Height == src2Length.
 * Serial below 2501 (1441 if an element stride is not 4) by (M*K + M)*count + K.
 */
int32_t kormMul_tav_32f(
    const float *src1, int32_t src1ObjectStride, int32_t src1RowStride, int32_t src1ElementStride,
    int32_t src1Width, int32_t src1Height, const float *src2, int32_t src2ElementStride, int32_t src2Length,
    float *dst, int32_t dstObjectStride, int32_t dstElementStride, int32_t count);

/**
 * dst(k,i) = sum over l of src1(k,l,i) * src2(l)
 *
 * Checks: null, count, size, match, stride.
 * Sizes match when src1Height == src2Length.
 * Serial below 3601 (1441 if an element stride is not 8) by (M*K + M)*count + K.
 */
int32_t kormMul_tav_64f(
    const double *src1, int32_t src1ObjectStride, int32_t src1RowStride, int32_t src1ElementStride,
    int32_t src1Width, int32_t src1Height, const double *src2, int32_t src2ElementStride, int32_t src2Length,
    double *dst, int32_t dstObjectStride, int32_t dstElementStride, int32_t count);

/**
 * dst(k,i) = sum over l of src1(k,l,i) * src2(l)
 *
 * Checks: null, count, size, match, stride, offset.
 * Sizes match when src1Height == src2Length.
 * Serial below 3601 (1441 if an element stride is not 4) by (M*K + M)*count + K.
 */
int32_t kormMul_tav_32f_L(
    const float *const *src1, int32_t src1Offset, int32_t src1RowStride, int32_t src1ElementStride,
    int32_t src1Width, int32_t src1Height, const float *src2, int32_t src2ElementStride, int32_t src2Length,
    float *const *dst, int32_t dstOffset, int32_t dstElementStride, int32_t count);

/**
 * dst(k,i) = sum over l of src1(k,l,i) * src2(l)
 *
 * Checks: null, count, size, match, stride, offset.
 * Sizes match when src1Height == src2Length.
 * Serial below 3601 (1441 if an element stride is not 8) by (M*K + M)*count + K.
 */
int32_t kormMul_tav_64f_L(
    const double *const *src1, int32_t src1Offset, int32_t src1RowStride, int32_t src1ElementStride,
    int32_t src1Width, int32_t src1Height, const double *src2, int32_t src2ElementStride, int32_t src2Length,
    double *const *dst, int32_t dstOffset, int32_t dstElementStride, int32_t count);

/**
 * dst(k,i) = sum over l of src1(k,l,i) * src2(l)
 *
 * Checks: null, count, size, match, stride, offset.
 * Sizes match when src1Height == src2Length.
 * Serial below 1441 by (M*K + M)*count + K.
 */
int32_t kormMul_tav_32f_P(
    const float *const *src1, int32_t src1Offset, int32_t src1ObjectStride, int32_t src1Width,
    int32_t src1Height, const float *const *src2, int32_t src2Offset, int32_t src2Length, float *const *dst,
    int32_t dstOffset, int32_t dstObjectStride, int32_t count);

/**
 * dst(k,i) = sum over l of src1(k,l,i) * src2(l)
 *
 * Checks: null, count, size, match, stride, offset.
 * Sizes match when src1Height == src2Length.
 * Serial below 1441 by (M*K + M)*count + K.
 */
int32_t kormMul_tav_64f_P(
    const double *const *src1, int32_t src1Offset, int32_t src1ObjectStride, int32_t src1Width,
    int32_t src1Height, const double *const *src2, int32_t src2Offset, int32_t src2Length, double *const *dst,
    int32_t dstOffset, int32_t dstObjectStride, int32_t count);

/**
 * dst(k,i) = sum over l of src1(k,i,l) * src2(k,l)
 *
 * Checks: null, count, size, match, stride.
 * Sizes match when src1Width == src2Length.
 * Serial below 2501 (1441 if an element stride is not 4) by (M*K + M + K)*count.
 */
int32_t kormMul_mava_32f(
    const float *src1, int32_t src1ObjectStride, int32_t src1RowStride, int32_t src1ElementStride,
    int32_t src1Width, int32_t src1Height, const float *src2, int32_t src2ObjectStride,
    int32_t src2ElementStride, int32_t src2Length, float *dst, int32_t dstObjectStride,
    int32_t dstElementStride, int32_t count);

/**
 * dst(k,i) = sum over l of src1(k,i,l) * src2(k,l)
 *
 * Checks: null, count, size, match, stride.
 * Sizes match when src1Width == src2Length.
 * Serial below 3601 (1441 if an element stride is not 8) by (M*K + M + K)*count.
 */
int32_t kormMul_mava_64f(
    const double *src1, int32_t src1ObjectStride, int32_t src1RowStride, int32_t src1ElementStride,
    int32_t src1Width, int32_t src1Height, const double *src2, int32_t src2ObjectStride,
    int32_t src2ElementStride, int32_t src2Length, double *dst, int32_t dstObjectStride,
    int32_t dstElementStride, int32_t count);

/**
 * dst(k,i) = sum over l of src1(k,i,l) * src2(k,l)
 *
 * Checks: null, count, size, match, stride, offset.
 * Sizes match when src1Width == src2Length.
 * Serial below 3601 (1441 if an element stride is not 4) by (M*K + M + K)*count.
 */
int32_t kormMul_mava_32f_L(
    const float *const *src1, int32_t src1Offset, int32_t src1RowStride, int32_t src1ElementStride,
    int32_t src1Width, int32_t src1Height, const float *const *src2, int32_t src2Offset,
    int32_t src2ElementStride, int32_t src2Length, float *const *dst, int32_t dstOffset,
    int32_t dstElementStride, int32_t count);

/**
 * dst(k,i) = sum over l of src1(k,i,l) * src2(k,l)
 *
 * Checks: null, count, size, match, stride, offset.
 * Sizes match when src1Width == src2Length.
 * Serial below 3601 (1441 if an element stride is not 8) by (M*K + M + K)*count.
 */
int32_t kormMul_mava_64f_L(
    const double *const *src1, int32_t src1Offset, int32_t src1RowStride, int32_t src1ElementStride,
    int32_t src1Width, int32_t src1Height, const double *const *src2, int32_t src2Offset,
    int32_t src2ElementStride, int32_t src2Length, double *const *dst, int32_t dstOffset,
    int32_t dstElementStride, int32_t count);

/**
 * dst(k,i) = sum over l of src1(k,i,l) * src2(k,l)
 *
 * Checks: null, count, size, match, stride, offset.
 * Sizes match when src1Width == src2Length.
 * Serial below 1441 by (M*K + M + K)*count.
 */
int32_t kormMul_mava_32f_P(
    const float *const *src1, int32_t src1Offset, int32_t src1ObjectStride, int32_t src1Width,
    int32_t src1Height, const float *const *src2, int32_t src2Offset, int32_t src2ObjectStride,
    int32_t src2Length, float *const *dst, int32_t dstOffset, int32_t dstObjectStride, int32_t count);

/**
 * dst(k,i) = sum over l of src1(k,i,l) * src2(k,l)
 *
 * Checks: null, count, size, match, stride, offset.
 * Sizes match when src1Width == src2Length.
 * Serial below 1441 by (M*K + M + K)*count.
 */
int32_t kormMul_mava_64f_P(
    const double *const *src1, int32_t src1Offset, int32_t src1ObjectStride, int32_t src1Width,
    int32_t src1Height, const double *const *src2, int32_t src2Offset, int32_t src2ObjectStride,
    int32_t src2Length, double *const *dst, int32_t dstOffset, int32_t dstObjectStride, int32_t count);

/**
 * dst(k,i) = sum over l of src1(k,l,i) * src2(k,l)
 *
 * Checks: null, count, size, match, stride.
 * Sizes match when src1Height == src2Length.
 * Serial below 2501 (1441 if an element stride is not 4) by (M*K + M + K)*count.
 */
int32_t kormMul_tava_32f(
    const float *src1, int32_t src1ObjectStride, int32_t src1RowStride, int32_t src1ElementStride,
    int32_t src1Width, int32_t src1Height, const float *src2, int32_t src2ObjectStride,
    int32_t src2ElementStride, int32_t src2Length, float *dst, int32_t dstObjectStride,
    int32_t dstElementStride, int32_t count);

/**
 * dst(k,i) = sum over l of src1(k,l,i) * src2(k,l)
 *
 * Checks: null, count, size, match, stride.
 * Sizes match when src1Height == src2Length.
 * Serial below 3601 (1441 if an element stride is not 8) by (M*K + M + K)*count.
 */
int32_t kormMul_tava_64f(
    const double *src1, int32_t src1ObjectStride, int32_t src1RowStride, int32_t src1ElementStride,
    int32_t src1Width, int32_t src1Height, const double *src2, int32_t src2ObjectStride,
    int32_t src2ElementStride, int32_t src2Length, double *dst, int32_t dstObjectStride,
    int32_t dstElementStride, int32_t count);

/**
 * dst(k,i) = sum over l of src1(k,l,i) * src2(k,l)
 *
 * Checks: null, count, size, match, stride, offset.
 * Sizes match when src1Height == src2Length.
 * Serial below 3601 (1441 if an element stride is not 4) by (M*K + M + K)*count.
 */
int32_t kormMul_tava_32f_L(
    const float *const *src1, int32_t src1Offset, int32_t src1RowStride, int32_t src1ElementStride,
    int32_t src1Width, int32_t src1Height, const float *const *src2, int32_t src2Offset,
    int32_t src2ElementStride, int32_t src2Length, float *const *dst, int32_t dstOffset,
    int32_t dstElementStride, int32_t count);

/**
 * dst(k,i) = sum over l of src1(k,l,i) * src2(k,l)
 *
 * Checks: null, count, size, match, stride, offset.
 * Sizes match when src1Height == src2Length.
 * Serial below 3601 (1441 if an element stride is not 8) by (M*K + M + K)*count.
 */
int32_t kormMul_tava_64f_L(
    const double *const *src1, int32_t src1Offset, int32_t src1RowStride, int32_t src1ElementStride,
    int32_t src1Width, int32_t src1Height, const double *const *src2, int32_t src2Offset,
    int32_t src2ElementStride, int32_t src2Length, double *const *dst, int32_t dstOffset,
    int32_t dstElementStride, int32_t count);

/**
 * dst(k,i) = sum over l of src1(k,l,i) * src2(k,l)
 *
 * Checks: null, count, size, match, stride, offset.
 * Sizes match when src1Height == src2Length.
 * Serial below 1441 by (M*K + M + K)*count.
 */
int32_t kormMul_tava_32f_P(
    const float *const *src1, int32_t src1Offset, int32_t src1ObjectStride, int32_t src1Width,
    int32_t src1Height, const float *const *src2, int32_t src2Offset, int32_t src2ObjectStride,
    int32_t src2Length, float *const *dst, int32_t dstOffset, int32_t dstObjectStride, int32_t count);

/**
 * dst(k,i) = sum over l of src1(k,l,i) * src2(k,l)
 *
 * Checks: null, count, size, match, stride, offset.
 * Sizes match when src1Height == src2Length.
 * Serial below 1441 by (M*K + M + K)*count.
 */
int32_t kormMul_tava_64f_P(
    const double *const *src1, int32_t src1Offset, int32_t src1ObjectStride, int32_t src1Width,
    int32_t src1Height, const double *const *src2, int32_t src2Offset, int32_t src2ObjectStride,
    int32_t src2Length, double *const *dst, int32_t dstOffset, int32_t dstObjectStride, int32_t count);

/** @} */
#ifdef __cplusplus
}
#endif

#endif
