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
    const char *buildDate; /**< a fixed part of the record, not the day on which this library was built */
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


/**
 * @defgroup vector_products_plus Products of matrices and vectors, plus a vector
 * dst = src1 * src2 + src3, with one matrix src1: of single vectors (`mv`), of arrays of both vectors (`mva`), or of an array
 * src2 with one src3 (`mvav`).
 *
 * Shapes: src2 has `src1Width` elements, src3 and dst have `src1Height`. dst has no length of its own.
 *
 * Sums: every product and every addition is rounded to the element type. A sum of products is complete before the element of
 * src3 is added; docs/numerics.md shows its order.
 *
 * Overlap: dst must not overlap a source.
 *
 * Status: ::korStatusOk, ::korStatusNullPointer, ::korStatusBadSize, ::korStatusSizeMismatch, ::korStatusBadStride; array
 * forms ::korStatusBadCount; list and pointer forms ::korStatusBadOffset. Other than with ::korStatusOk nothing is written.
 * @{
 */

/**
 * dst(i) = (sum over l of src1(i,l) * src2(l)) + src3(i)
 *
 * Checks: null, size, match, stride.
 * Sizes match when src1Width == src2Length && src1Height == src3Length.
 */
int32_t kormGaxpy_mv_32f(
    const float *src1, int32_t src1RowStride, int32_t src1ElementStride, int32_t src1Width,
    int32_t src1Height, const float *src2, int32_t src2ElementStride, int32_t src2Length, const float *src3,
    int32_t src3ElementStride, int32_t src3Length, float *dst, int32_t dstElementStride);

/**
 * dst(i) = (sum over l of src1(i,l) * src2(l)) + src3(i)
 *
 * Checks: null, size, match, stride.
 * Sizes match when src1Width == src2Length && src1Height == src3Length.
 */
int32_t kormGaxpy_mv_64f(
    const double *src1, int32_t src1RowStride, int32_t src1ElementStride, int32_t src1Width,
    int32_t src1Height, const double *src2, int32_t src2ElementStride, int32_t src2Length, const double *src3,
    int32_t src3ElementStride, int32_t src3Length, double *dst, int32_t dstElementStride);

/**
 * dst(i) = (sum over l of src1(i,l) * src2(l)) + src3(i)
 *
 * Checks: null, size, match, offset.
 * Sizes match when src1Width == src2Length && src1Height == src3Length.
 */
int32_t kormGaxpy_mv_32f_P(
    const float *const *src1, int32_t src1Offset, int32_t src1Width, int32_t src1Height,
    const float *const *src2, int32_t src2Offset, int32_t src2Length, const float *const *src3,
    int32_t src3Offset, int32_t src3Length, float *const *dst, int32_t dstOffset);

/**
 * dst(i) = (sum over l of src1(i,l) * src2(l)) + src3(i)
 *
 * Checks: null, size, match, offset.
 * Sizes match when src1Width == src2Length && src1Height == src3Length.
 */
int32_t kormGaxpy_mv_64f_P(
    const double *const *src1, int32_t src1Offset, int32_t src1Width, int32_t src1Height,
    const double *const *src2, int32_t src2Offset, int32_t src2Length, const double *const *src3,
    int32_t src3Offset, int32_t src3Length, double *const *dst, int32_t dstOffset);

/**
 * dst(k,i) = (sum over l of src1(i,l) * src2(k,l)) + src3(k,i)
 *
 * Checks: null, count, size, match, stride.
 * Sizes match when src1Width == src2Length && src1Height == src3Length.
 * Serial below 7001 (5001 if an element stride is not 4) by (src1Width + 2*src1Height)*count.
 */
int32_t kormGaxpy_mva_32f(
    const float *src1, int32_t src1RowStride, int32_t src1ElementStride, int32_t src1Width,
    int32_t src1Height, const float *src2, int32_t src2ObjectStride, int32_t src2ElementStride,
    int32_t src2Length, const float *src3, int32_t src3ObjectStride, int32_t src3ElementStride,
    int32_t src3Length, float *dst, int32_t dstObjectStride, int32_t dstElementStride, int32_t count);

/**
 * dst(k,i) = (sum over l of src1(i,l) * src2(k,l)) + src3(k,i)
 *
 * Checks: null, count, size, match, stride.
 * Sizes match when src1Width == src2Length && src1Height == src3Length.
 * Serial below 5001 by (src1Width + 2*src1Height)*count.
 */
int32_t kormGaxpy_mva_64f(
    const double *src1, int32_t src1RowStride, int32_t src1ElementStride, int32_t src1Width,
    int32_t src1Height, const double *src2, int32_t src2ObjectStride, int32_t src2ElementStride,
    int32_t src2Length, const double *src3, int32_t src3ObjectStride, int32_t src3ElementStride,
    int32_t src3Length, double *dst, int32_t dstObjectStride, int32_t dstElementStride, int32_t count);

/**
 * dst(k,i) = (sum over l of src1(i,l) * src2(k,l)) + src3(k,i)
 *
 * Checks: null, count, size, match, stride, offset.
 * Sizes match when src1Width == src2Length && src1Height == src3Length.
 * Serial below 7001 (501 if an element stride is not 4) by (src1Width + 2*src1Height)*count.
 */
int32_t kormGaxpy_mva_32f_L(
    const float *src1, int32_t src1RowStride, int32_t src1ElementStride, int32_t src1Width,
    int32_t src1Height, const float *const *src2, int32_t src2Offset, int32_t src2ElementStride,
    int32_t src2Length, const float *const *src3, int32_t src3Offset, int32_t src3ElementStride,
    int32_t src3Length, float *const *dst, int32_t dstOffset, int32_t dstElementStride, int32_t count);

/**
 * dst(k,i) = (sum over l of src1(i,l) * src2(k,l)) + src3(k,i)
 *
 * Checks: null, count, size, match, stride, offset.
 * Sizes match when src1Width == src2Length && src1Height == src3Length.
 * Serial below 6001 (5001 if an element stride is not 8) by (src1Width + 2*src1Height)*count.
 */
int32_t kormGaxpy_mva_64f_L(
    const double *src1, int32_t src1RowStride, int32_t src1ElementStride, int32_t src1Width,
    int32_t src1Height, const double *const *src2, int32_t src2Offset, int32_t src2ElementStride,
    int32_t src2Length, const double *const *src3, int32_t src3Offset, int32_t src3ElementStride,
    int32_t src3Length, double *const *dst, int32_t dstOffset, int32_t dstElementStride, int32_t count);

/**
 * dst(k,i) = (sum over l of src1(i,l) * src2(k,l)) + src3(k,i)
 *
 * Checks: null, count, size, match, stride, offset.
 * Sizes match when src1Width == src2Length && src1Height == src3Length.
 * Serial below 4501 by (src1Width + 2*src1Height)*count.
 */
int32_t kormGaxpy_mva_32f_P(
    const float *const *src1, int32_t src1Offset, int32_t src1Width, int32_t src1Height,
    const float *const *src2, int32_t src2Offset, int32_t src2ObjectStride, int32_t src2Length,
    const float *const *src3, int32_t src3Offset, int32_t src3ObjectStride, int32_t src3Length,
    float *const *dst, int32_t dstOffset, int32_t dstObjectStride, int32_t count);

/**
 * dst(k,i) = (sum over l of src1(i,l) * src2(k,l)) + src3(k,i)
 *
 * Checks: null, count, size, match, stride, offset.
 * Sizes match when src1Width == src2Length && src1Height == src3Length.
 * Serial below 7001 by (src1Width + 2*src1Height)*count.
 */
int32_t kormGaxpy_mva_64f_P(
    const double *const *src1, int32_t src1Offset, int32_t src1Width, int32_t src1Height,
    const double *const *src2, int32_t src2Offset, int32_t src2ObjectStride, int32_t src2Length,
    const double *const *src3, int32_t src3Offset, int32_t src3ObjectStride, int32_t src3Length,
    double *const *dst, int32_t dstOffset, int32_t dstObjectStride, int32_t count);

/**
 * dst(k,i) = (sum over l of src1(i,l) * src2(k,l)) + src3(i)
 *
 * Checks: null, count, size, match, stride.
 * Sizes match when src1Width == src2Length && src1Height == src3Length.
 * Serial below 7001 (5001 if an element stride is not 4) by src1Width*count + src1Height*(count + 1).
 */
int32_t kormGaxpy_mvav_32f(
    const float *src1, int32_t src1RowStride, int32_t src1ElementStride, int32_t src1Width,
    int32_t src1Height, const float *src2, int32_t src2ObjectStride, int32_t src2ElementStride,
    int32_t src2Length, const float *src3, int32_t src3ElementStride, int32_t src3Length, float *dst,
    int32_t dstObjectStride, int32_t dstElementStride, int32_t count);

/**
 * dst(k,i) = (sum over l of src1(i,l) * src2(k,l)) + src3(i)
 *
 * Checks: null, count, size, match, stride.
 * Sizes match when src1Width == src2Length && src1Height == src3Length.
 * Serial below 5001 by src1Width*count + src1Height*(count + 1).
 */
int32_t kormGaxpy_mvav_64f(
    const double *src1, int32_t src1RowStride, int32_t src1ElementStride, int32_t src1Width,
    int32_t src1Height, const double *src2, int32_t src2ObjectStride, int32_t src2ElementStride,
    int32_t src2Length, const double *src3, int32_t src3ElementStride, int32_t src3Length, double *dst,
    int32_t dstObjectStride, int32_t dstElementStride, int32_t count);

/**
 * dst(k,i) = (sum over l of src1(i,l) * src2(k,l)) + src3(i)
 *
 * Checks: null, count, size, match, stride, offset.
 * Sizes match when src1Width == src2Length && src1Height == src3Length.
 * Serial below 7001 (501 if an element stride is not 4) by src1Width*count + src1Height*(count + 1).
 */
int32_t kormGaxpy_mvav_32f_L(
    const float *src1, int32_t src1RowStride, int32_t src1ElementStride, int32_t src1Width,
    int32_t src1Height, const float *const *src2, int32_t src2Offset, int32_t src2ElementStride,
    int32_t src2Length, const float *src3, int32_t src3ElementStride, int32_t src3Length, float *const *dst,
    int32_t dstOffset, int32_t dstElementStride, int32_t count);

/**
 * dst(k,i) = (sum over l of src1(i,l) * src2(k,l)) + src3(i)
 *
 * Checks: null, count, size, match, stride, offset.
 * Sizes match when src1Width == src2Length && src1Height == src3Length.
 * Serial below 6001 (5001 if an element stride is not 8) by src1Width*count + src1Height*(count + 1).
 */
int32_t kormGaxpy_mvav_64f_L(
    const double *src1, int32_t src1RowStride, int32_t src1ElementStride, int32_t src1Width,
    int32_t src1Height, const double *const *src2, int32_t src2Offset, int32_t src2ElementStride,
    int32_t src2Length, const double *src3, int32_t src3ElementStride, int32_t src3Length, double *const *dst,
    int32_t dstOffset, int32_t dstElementStride, int32_t count);

/**
 * dst(k,i) = (sum over l of src1(i,l) * src2(k,l)) + src3(i)
 *
 * Checks: null, count, size, match, stride, offset.
 * Sizes match when src1Width == src2Length && src1Height == src3Length.
 * Serial below 4501 by src1Width*count + src1Height*(count + 1).
 */
int32_t kormGaxpy_mvav_32f_P(
    const float *const *src1, int32_t src1Offset, int32_t src1Width, int32_t src1Height,
    const float *const *src2, int32_t src2Offset, int32_t src2ObjectStride, int32_t src2Length,
    const float *const *src3, int32_t src3Offset, int32_t src3Length, float *const *dst, int32_t dstOffset,
    int32_t dstObjectStride, int32_t count);

/**
 * dst(k,i) = (sum over l of src1(i,l) * src2(k,l)) + src3(i)
 *
 * Checks: null, count, size, match, stride, offset.
 * Sizes match when src1Width == src2Length && src1Height == src3Length.
 * Serial below 7001 by src1Width*count + src1Height*(count + 1).
 */
int32_t kormGaxpy_mvav_64f_P(
    const double *const *src1, int32_t src1Offset, int32_t src1Width, int32_t src1Height,
    const double *const *src2, int32_t src2Offset, int32_t src2ObjectStride, int32_t src2Length,
    const double *const *src3, int32_t src3Offset, int32_t src3Length, double *const *dst, int32_t dstOffset,
    int32_t dstObjectStride, int32_t count);

/** @} */


/**
 * @defgroup vector_combinations Combinations of vectors
 * `kormSaxpy` computes dst = src1 * val + src2, `kormLComb` dst = src1 * val1 + src2 * val2, element by element. The constants
 * are passed by value and serve all objects.
 *
 * Shapes: all vectors have `length` elements.
 *
 * Sums: products and sums are rounded to the element type, one after the other.
 *
 * Overlap: dst may be a source, at the same place with the same strides. Two single vectors in standard layout with adjacent
 * elements and more than 6 of them may overlap in any way: elements are then done in ascending order, one by one. Any other
 * overlap of dst and a source leaves dst undefined.
 *
 * Status: ::korStatusOk, ::korStatusNullPointer, ::korStatusBadSize, ::korStatusBadStride; array forms
 * ::korStatusBadCount; list and pointer forms ::korStatusBadOffset. Other than with ::korStatusOk nothing is written.
 * @{
 */

/**
 * dst(j) = src1(j) * val + src2(j)
 *
 * Checks: null, size, stride.
 */
int32_t kormSaxpy_vv_32f(
    const float *src1, int32_t src1ElementStride, float val, const float *src2, int32_t src2ElementStride,
    float *dst, int32_t dstElementStride, int32_t length);

/**
 * dst(j) = src1(j) * val + src2(j)
 *
 * Checks: null, size, stride.
 */
int32_t kormSaxpy_vv_64f(
    const double *src1, int32_t src1ElementStride, double val, const double *src2, int32_t src2ElementStride,
    double *dst, int32_t dstElementStride, int32_t length);

/**
 * dst(j) = src1(j) * val + src2(j)
 *
 * Checks: null, size, offset.
 */
int32_t kormSaxpy_vv_32f_P(
    const float *const *src1, int32_t src1Offset, float val, const float *const *src2, int32_t src2Offset,
    float *const *dst, int32_t dstOffset, int32_t length);

/**
 * dst(j) = src1(j) * val + src2(j)
 *
 * Checks: null, size, offset.
 */
int32_t kormSaxpy_vv_64f_P(
    const double *const *src1, int32_t src1Offset, double val, const double *const *src2, int32_t src2Offset,
    double *const *dst, int32_t dstOffset, int32_t length);

/**
 * dst(k,j) = src1(k,j) * val + src2(j)
 *
 * Checks: null, count, size, stride.
 * Serial below 3001 (2001 if an element stride is not 4) by (2*count + 1)*length.
 */
int32_t kormSaxpy_vav_32f(
    const float *src1, int32_t src1ObjectStride, int32_t src1ElementStride, float val, const float *src2,
    int32_t src2ElementStride, float *dst, int32_t dstObjectStride, int32_t dstElementStride, int32_t length,
    int32_t count);

/**
 * dst(k,j) = src1(k,j) * val + src2(j)
 *
 * Checks: null, count, size, stride.
 * Serial below 3001 (1201 if an element stride is not 8) by (2*count + 1)*length.
 */
int32_t kormSaxpy_vav_64f(
    const double *src1, int32_t src1ObjectStride, int32_t src1ElementStride, double val, const double *src2,
    int32_t src2ElementStride, double *dst, int32_t dstObjectStride, int32_t dstElementStride, int32_t length,
    int32_t count);

/**
 * dst(k,j) = src1(k,j) * val + src2(j)
 *
 * Checks: null, count, size, stride, offset.
 * Serial below 1501 (1001 if an element stride is not 4) by (2*count + 1)*length.
 */
int32_t kormSaxpy_vav_32f_L(
    const float *const *src1, int32_t src1Offset, int32_t src1ElementStride, float val, const float *src2,
    int32_t src2ElementStride, float *const *dst, int32_t dstOffset, int32_t dstElementStride, int32_t length,
    int32_t count);

/**
 * dst(k,j) = src1(k,j) * val + src2(j)
 *
 * Checks: null, count, size, stride, offset.
 * Serial below 1001 by (2*count + 1)*length.
 */
int32_t kormSaxpy_vav_64f_L(
    const double *const *src1, int32_t src1Offset, int32_t src1ElementStride, double val, const double *src2,
    int32_t src2ElementStride, double *const *dst, int32_t dstOffset, int32_t dstElementStride,
    int32_t length, int32_t count);

/**
 * dst(k,j) = src1(k,j) * val + src2(j)
 *
 * Checks: null, count, size, stride, offset.
 * Serial below 1201 by (2*count + 1)*length.
 */
int32_t kormSaxpy_vav_32f_P(
    const float *const *src1, int32_t src1Offset, int32_t src1ObjectStride, float val,
    const float *const *src2, int32_t src2Offset, float *const *dst, int32_t dstOffset,
    int32_t dstObjectStride, int32_t length, int32_t count);

/**
 * dst(k,j) = src1(k,j) * val + src2(j)
 *
 * Checks: null, count, size, stride, offset.
 * Serial below 1201 by (2*count + 1)*length.
 */
int32_t kormSaxpy_vav_64f_P(
    const double *const *src1, int32_t src1Offset, int32_t src1ObjectStride, double val,
    const double *const *src2, int32_t src2Offset, double *const *dst, int32_t dstOffset,
    int32_t dstObjectStride, int32_t length, int32_t count);

/**
 * dst(k,j) = src1(j) * val + src2(k,j)
 *
 * Checks: null, count, size, stride.
 * Serial below 3001 (2001 if an element stride is not 4) by (2*count + 1)*length.
 */
int32_t kormSaxpy_vva_32f(
    const float *src1, int32_t src1ElementStride, float val, const float *src2, int32_t src2ObjectStride,
    int32_t src2ElementStride, float *dst, int32_t dstObjectStride, int32_t dstElementStride, int32_t length,
    int32_t count);

/**
 * dst(k,j) = src1(j) * val + src2(k,j)
 *
 * Checks: null, count, size, stride.
 * Serial below 3001 (1201 if an element stride is not 8) by (2*count + 1)*length.
 */
int32_t kormSaxpy_vva_64f(
    const double *src1, int32_t src1ElementStride, double val, const double *src2, int32_t src2ObjectStride,
    int32_t src2ElementStride, double *dst, int32_t dstObjectStride, int32_t dstElementStride, int32_t length,
    int32_t count);

/**
 * dst(k,j) = src1(j) * val + src2(k,j)
 *
 * Checks: null, count, size, stride, offset.
 * Serial below 1501 by (2*count + 1)*length.
 */
int32_t kormSaxpy_vva_32f_L(
    const float *src1, int32_t src1ElementStride, float val, const float *const *src2, int32_t src2Offset,
    int32_t src2ElementStride, float *const *dst, int32_t dstOffset, int32_t dstElementStride, int32_t length,
    int32_t count);

/**
 * dst(k,j) = src1(j) * val + src2(k,j)
 *
 * Checks: null, count, size, stride, offset.
 * Serial below 1001 by (2*count + 1)*length.
 */
int32_t kormSaxpy_vva_64f_L(
    const double *src1, int32_t src1ElementStride, double val, const double *const *src2, int32_t src2Offset,
    int32_t src2ElementStride, double *const *dst, int32_t dstOffset, int32_t dstElementStride,
    int32_t length, int32_t count);

/**
 * dst(k,j) = src1(j) * val + src2(k,j)
 *
 * Checks: null, count, size, stride, offset.
 * Serial below 1201 by (2*count + 1)*length.
 */
int32_t kormSaxpy_vva_32f_P(
    const float *const *src1, int32_t src1Offset, float val, const float *const *src2, int32_t src2Offset,
    int32_t src2ObjectStride, float *const *dst, int32_t dstOffset, int32_t dstObjectStride, int32_t length,
    int32_t count);

/**
 * dst(k,j) = src1(j) * val + src2(k,j)
 *
 * Checks: null, count, size, stride, offset.
 * Serial below 1201 by (2*count + 1)*length.
 */
int32_t kormSaxpy_vva_64f_P(
    const double *const *src1, int32_t src1Offset, double val, const double *const *src2, int32_t src2Offset,
    int32_t src2ObjectStride, double *const *dst, int32_t dstOffset, int32_t dstObjectStride, int32_t length,
    int32_t count);

/**
 * dst(k,j) = src1(k,j) * val + src2(k,j)
 *
 * Checks: null, count, size, stride.
 * Serial below 3001 (2001 if an element stride is not 4) by 3*length*count.
 */
int32_t kormSaxpy_vava_32f(
    const float *src1, int32_t src1ObjectStride, int32_t src1ElementStride, float val, const float *src2,
    int32_t src2ObjectStride, int32_t src2ElementStride, float *dst, int32_t dstObjectStride,
    int32_t dstElementStride, int32_t length, int32_t count);

/**
 * dst(k,j) = src1(k,j) * val + src2(k,j)
 *
 * Checks: null, count, size, stride.
 * Serial below 3001 (1201 if an element stride is not 8) by 3*length*count.
 */
int32_t kormSaxpy_vava_64f(
    const double *src1, int32_t src1ObjectStride, int32_t src1ElementStride, double val, const double *src2,
    int32_t src2ObjectStride, int32_t src2ElementStride, double *dst, int32_t dstObjectStride,
    int32_t dstElementStride, int32_t length, int32_t count);

/**
 * dst(k,j) = src1(k,j) * val + src2(k,j)
 *
 * Checks: null, count, size, stride, offset.
 * Serial below 1501 (1001 if an element stride is not 4) by 3*length*count.
 */
int32_t kormSaxpy_vava_32f_L(
    const float *const *src1, int32_t src1Offset, int32_t src1ElementStride, float val,
    const float *const *src2, int32_t src2Offset, int32_t src2ElementStride, float *const *dst,
    int32_t dstOffset, int32_t dstElementStride, int32_t length, int32_t count);

/**
 * dst(k,j) = src1(k,j) * val + src2(k,j)
 *
 * Checks: null, count, size, stride, offset.
 * Serial below 1001 by 3*length*count.
 */
int32_t kormSaxpy_vava_64f_L(
    const double *const *src1, int32_t src1Offset, int32_t src1ElementStride, double val,
    const double *const *src2, int32_t src2Offset, int32_t src2ElementStride, double *const *dst,
    int32_t dstOffset, int32_t dstElementStride, int32_t length, int32_t count);

/**
 * dst(k,j) = src1(k,j) * val + src2(k,j)
 *
 * Checks: null, count, size, stride, offset.
 * Serial below 1201 by 3*length*count.
 */
int32_t kormSaxpy_vava_32f_P(
    const float *const *src1, int32_t src1Offset, int32_t src1ObjectStride, float val,
    const float *const *src2, int32_t src2Offset, int32_t src2ObjectStride, float *const *dst,
    int32_t dstOffset, int32_t dstObjectStride, int32_t length, int32_t count);

/**
 * dst(k,j) = src1(k,j) * val + src2(k,j)
 *
 * Checks: null, count, size, stride, offset.
 * Serial below 1201 by 3*length*count.
 */
int32_t kormSaxpy_vava_64f_P(
    const double *const *src1, int32_t src1Offset, int32_t src1ObjectStride, double val,
    const double *const *src2, int32_t src2Offset, int32_t src2ObjectStride, double *const *dst,
    int32_t dstOffset, int32_t dstObjectStride, int32_t length, int32_t count);

/**
 * dst(j) = src1(j) * val1 + src2(j) * val2
 *
 * Checks: null, size, stride.
 */
int32_t kormLComb_vv_32f(
    const float *src1, int32_t src1ElementStride, float val1, const float *src2, int32_t src2ElementStride,
    float val2, float *dst, int32_t dstElementStride, int32_t length);

/**
 * dst(j) = src1(j) * val1 + src2(j) * val2
 *
 * Checks: null, size, stride.
 */
int32_t kormLComb_vv_64f(
    const double *src1, int32_t src1ElementStride, double val1, const double *src2, int32_t src2ElementStride,
    double val2, double *dst, int32_t dstElementStride, int32_t length);

/**
 * dst(j) = src1(j) * val1 + src2(j) * val2
 *
 * Checks: null, size, offset.
 */
int32_t kormLComb_vv_32f_P(
    const float *const *src1, int32_t src1Offset, float val1, const float *const *src2, int32_t src2Offset,
    float val2, float *const *dst, int32_t dstOffset, int32_t length);

/**
 * dst(j) = src1(j) * val1 + src2(j) * val2
 *
 * Checks: null, size, offset.
 */
int32_t kormLComb_vv_64f_P(
    const double *const *src1, int32_t src1Offset, double val1, const double *const *src2, int32_t src2Offset,
    double val2, double *const *dst, int32_t dstOffset, int32_t length);

/**
 * dst(k,j) = src1(k,j) * val1 + src2(j) * val2
 *
 * Checks: null, count, size, stride.
 * Serial below 4501 by (2*count + 1)*length.
 */
int32_t kormLComb_vav_32f(
    const float *src1, int32_t src1ObjectStride, int32_t src1ElementStride, float val1, const float *src2,
    int32_t src2ElementStride, float val2, float *dst, int32_t dstObjectStride, int32_t dstElementStride,
    int32_t length, int32_t count);

/**
 * dst(k,j) = src1(k,j) * val1 + src2(j) * val2
 *
 * Checks: null, count, size, stride.
 * Serial below 4501 by (2*count + 1)*length.
 */
int32_t kormLComb_vav_64f(
    const double *src1, int32_t src1ObjectStride, int32_t src1ElementStride, double val1, const double *src2,
    int32_t src2ElementStride, double val2, double *dst, int32_t dstObjectStride, int32_t dstElementStride,
    int32_t length, int32_t count);

/**
 * dst(k,j) = src1(k,j) * val1 + src2(j) * val2
 *
 * Checks: null, count, size, stride, offset.
 * Serial below 4501 (3751 if an element stride is not 4) by (2*count + 1)*length.
 */
int32_t kormLComb_vav_32f_L(
    const float *const *src1, int32_t src1Offset, int32_t src1ElementStride, float val1, const float *src2,
    int32_t src2ElementStride, float val2, float *const *dst, int32_t dstOffset, int32_t dstElementStride,
    int32_t length, int32_t count);

/**
 * dst(k,j) = src1(k,j) * val1 + src2(j) * val2
 *
 * Checks: null, count, size, stride, offset.
 * Serial below 4501 by (2*count + 1)*length.
 */
int32_t kormLComb_vav_64f_L(
    const double *const *src1, int32_t src1Offset, int32_t src1ElementStride, double val1, const double *src2,
    int32_t src2ElementStride, double val2, double *const *dst, int32_t dstOffset, int32_t dstElementStride,
    int32_t length, int32_t count);

/**
 * dst(k,j) = src1(k,j) * val1 + src2(j) * val2
 *
 * Checks: null, count, size, stride, offset.
 * Serial below 4501 by (2*count + 1)*length.
 */
int32_t kormLComb_vav_32f_P(
    const float *const *src1, int32_t src1Offset, int32_t src1ObjectStride, float val1,
    const float *const *src2, int32_t src2Offset, float val2, float *const *dst, int32_t dstOffset,
    int32_t dstObjectStride, int32_t length, int32_t count);

/**
 * dst(k,j) = src1(k,j) * val1 + src2(j) * val2
 *
 * Checks: null, count, size, stride, offset.
 * Serial below 4501 by (2*count + 1)*length.
 */
int32_t kormLComb_vav_64f_P(
    const double *const *src1, int32_t src1Offset, int32_t src1ObjectStride, double val1,
    const double *const *src2, int32_t src2Offset, double val2, double *const *dst, int32_t dstOffset,
    int32_t dstObjectStride, int32_t length, int32_t count);

/**
 * dst(k,j) = src1(k,j) * val1 + src2(k,j) * val2
 *
 * Checks: null, count, size, stride.
 * Serial below 4501 by 3*length*count.
 */
int32_t kormLComb_vava_32f(
    const float *src1, int32_t src1ObjectStride, int32_t src1ElementStride, float val1, const float *src2,
    int32_t src2ObjectStride, int32_t src2ElementStride, float val2, float *dst, int32_t dstObjectStride,
    int32_t dstElementStride, int32_t length, int32_t count);

/**
 * dst(k,j) = src1(k,j) * val1 + src2(k,j) * val2
 *
 * Checks: null, count, size, stride.
 * Serial below 4501 by 3*length*count.
 */
int32_t kormLComb_vava_64f(
    const double *src1, int32_t src1ObjectStride, int32_t src1ElementStride, double val1, const double *src2,
    int32_t src2ObjectStride, int32_t src2ElementStride, double val2, double *dst, int32_t dstObjectStride,
    int32_t dstElementStride, int32_t length, int32_t count);

/**
 * dst(k,j) = src1(k,j) * val1 + src2(k,j) * val2
 *
 * Checks: null, count, size, stride, offset.
 * Serial below 4501 (3751 if an element stride is not 4) by 3*length*count.
 */
int32_t kormLComb_vava_32f_L(
    const float *const *src1, int32_t src1Offset, int32_t src1ElementStride, float val1,
    const float *const *src2, int32_t src2Offset, int32_t src2ElementStride, float val2, float *const *dst,
    int32_t dstOffset, int32_t dstElementStride, int32_t length, int32_t count);

/**
 * dst(k,j) = src1(k,j) * val1 + src2(k,j) * val2
 *
 * Checks: null, count, size, stride, offset.
 * Serial below 4501 by 3*length*count.
 */
int32_t kormLComb_vava_64f_L(
    const double *const *src1, int32_t src1Offset, int32_t src1ElementStride, double val1,
    const double *const *src2, int32_t src2Offset, int32_t src2ElementStride, double val2, double *const *dst,
    int32_t dstOffset, int32_t dstElementStride, int32_t length, int32_t count);

/**
 * dst(k,j) = src1(k,j) * val1 + src2(k,j) * val2
 *
 * Checks: null, count, size, stride, offset.
 * Serial below 4501 by 3*length*count.
 */
int32_t kormLComb_vava_32f_P(
    const float *const *src1, int32_t src1Offset, int32_t src1ObjectStride, float val1,
    const float *const *src2, int32_t src2Offset, int32_t src2ObjectStride, float val2, float *const *dst,
    int32_t dstOffset, int32_t dstObjectStride, int32_t length, int32_t count);

/**
 * dst(k,j) = src1(k,j) * val1 + src2(k,j) * val2
 *
 * Checks: null, count, size, stride, offset.
 * Serial below 4501 by 3*length*count.
 */
int32_t kormLComb_vava_64f_P(
    const double *const *src1, int32_t src1Offset, int32_t src1ObjectStride, double val1,
    const double *const *src2, int32_t src2Offset, int32_t src2ObjectStride, double val2, double *const *dst,
    int32_t dstOffset, int32_t dstObjectStride, int32_t length, int32_t count);

/** @} */


/**
 * @defgroup vector_reductions Dot products and norms
 * `kormDotProduct` adds the products of the elements of two vectors, `kormL2Norm` is the square root of the sum of the squares
 * of a vector's elements. A single form writes one element, an array form one for each object, in a row: dst has no strides in
 * any layout.
 *
 * Shapes: all vectors have `length` elements.
 *
 * Sums: every product and every addition is rounded to the element type. For one form, length, layout and choice of strides the
 * order of additions is fixed, with one thing more to know: vectors of 8 or more adjacent elements are added in an order that
 * depends on the address of src2 (`kormL2Norm`: of src) modulo 16 bytes. An object of an array gives what it would give alone.
 * docs/numerics.md shows all orders.
 *
 * Scale: squares are formed as they are. A large vector's norm is infinity, a small one's zero or a number with few bits, with
 * ::korStatusOk. Beyond the scales of docs/ranges.md scale the vector by a power of 2 first, and the norm back.
 *
 * Overlap: dst must not overlap a source.
 *
 * Status: ::korStatusOk, ::korStatusNullPointer, ::korStatusBadSize, ::korStatusBadStride; array forms
 * ::korStatusBadCount; list and pointer forms ::korStatusBadOffset. Other than with ::korStatusOk nothing is written.
 * @{
 */

/**
 * dst = sum over j of src1(j) * src2(j)
 *
 * Checks: null, size, stride.
 */
int32_t kormDotProduct_vv_32f(
    const float *src1, int32_t src1ElementStride, const float *src2, int32_t src2ElementStride, float *dst,
    int32_t length);

/**
 * dst = sum over j of src1(j) * src2(j)
 *
 * Checks: null, size, stride.
 */
int32_t kormDotProduct_vv_64f(
    const double *src1, int32_t src1ElementStride, const double *src2, int32_t src2ElementStride, double *dst,
    int32_t length);

/**
 * dst = sum over j of src1(j) * src2(j)
 *
 * Checks: null, size, offset.
 */
int32_t kormDotProduct_vv_32f_P(
    const float *const *src1, int32_t src1Offset, const float *const *src2, int32_t src2Offset, float *dst,
    int32_t length);

/**
 * dst = sum over j of src1(j) * src2(j)
 *
 * Checks: null, size, offset.
 */
int32_t kormDotProduct_vv_64f_P(
    const double *const *src1, int32_t src1Offset, const double *const *src2, int32_t src2Offset, double *dst,
    int32_t length);

/**
 * dst(k) = sum over j of src1(k,j) * src2(j)
 *
 * Checks: null, count, size, stride.
 * Serial below 5001 (2621 if an element stride is not 4) by (count + 1)*length.
 */
int32_t kormDotProduct_vav_32f(
    const float *src1, int32_t src1ObjectStride, int32_t src1ElementStride, const float *src2,
    int32_t src2ElementStride, float *dst, int32_t length, int32_t count);

/**
 * dst(k) = sum over j of src1(k,j) * src2(j)
 *
 * Checks: null, count, size, stride.
 * Serial below 3501 (2001 if an element stride is not 8) by (count + 1)*length.
 */
int32_t kormDotProduct_vav_64f(
    const double *src1, int32_t src1ObjectStride, int32_t src1ElementStride, const double *src2,
    int32_t src2ElementStride, double *dst, int32_t length, int32_t count);

/**
 * dst(k) = sum over j of src1(k,j) * src2(j)
 *
 * Checks: null, count, size, stride, offset.
 * Serial below 2401 by (count + 1)*length.
 */
int32_t kormDotProduct_vav_32f_L(
    const float *const *src1, int32_t src1Offset, int32_t src1ElementStride, const float *src2,
    int32_t src2ElementStride, float *dst, int32_t length, int32_t count);

/**
 * dst(k) = sum over j of src1(k,j) * src2(j)
 *
 * Checks: null, count, size, stride, offset.
 * Serial below 4201 (3301 if an element stride is not 8) by (count + 1)*length.
 */
int32_t kormDotProduct_vav_64f_L(
    const double *const *src1, int32_t src1Offset, int32_t src1ElementStride, const double *src2,
    int32_t src2ElementStride, double *dst, int32_t length, int32_t count);

/**
 * dst(k) = sum over j of src1(k,j) * src2(j)
 *
 * Checks: null, count, size, stride, offset.
 * Serial below 2401 by (count + 1)*length.
 */
int32_t kormDotProduct_vav_32f_P(
    const float *const *src1, int32_t src1Offset, int32_t src1ObjectStride, const float *const *src2,
    int32_t src2Offset, float *dst, int32_t length, int32_t count);

/**
 * dst(k) = sum over j of src1(k,j) * src2(j)
 *
 * Checks: null, count, size, stride, offset.
 * Serial below 2001 by (count + 1)*length.
 */
int32_t kormDotProduct_vav_64f_P(
    const double *const *src1, int32_t src1Offset, int32_t src1ObjectStride, const double *const *src2,
    int32_t src2Offset, double *dst, int32_t length, int32_t count);

/**
 * dst(k) = sum over j of src1(k,j) * src2(k,j)
 *
 * Checks: null, count, size, stride.
 * Serial below 5001 (2621 if an element stride is not 4) by 2*count*length.
 */
int32_t kormDotProduct_vava_32f(
    const float *src1, int32_t src1ObjectStride, int32_t src1ElementStride, const float *src2,
    int32_t src2ObjectStride, int32_t src2ElementStride, float *dst, int32_t length, int32_t count);

/**
 * dst(k) = sum over j of src1(k,j) * src2(k,j)
 *
 * Checks: null, count, size, stride.
 * Serial below 3501 (2001 if an element stride is not 8) by 2*count*length.
 */
int32_t kormDotProduct_vava_64f(
    const double *src1, int32_t src1ObjectStride, int32_t src1ElementStride, const double *src2,
    int32_t src2ObjectStride, int32_t src2ElementStride, double *dst, int32_t length, int32_t count);

/**
 * dst(k) = sum over j of src1(k,j) * src2(k,j)
 *
 * Checks: null, count, size, stride, offset.
 * Serial below 2401 by 2*count*length.
 */
int32_t kormDotProduct_vava_32f_L(
    const float *const *src1, int32_t src1Offset, int32_t src1ElementStride, const float *const *src2,
    int32_t src2Offset, int32_t src2ElementStride, float *dst, int32_t length, int32_t count);

/**
 * dst(k) = sum over j of src1(k,j) * src2(k,j)
 *
 * Checks: null, count, size, stride, offset.
 * Serial below 4201 (3301 if an element stride is not 8) by 2*count*length.
 */
int32_t kormDotProduct_vava_64f_L(
    const double *const *src1, int32_t src1Offset, int32_t src1ElementStride, const double *const *src2,
    int32_t src2Offset, int32_t src2ElementStride, double *dst, int32_t length, int32_t count);

/**
 * dst(k) = sum over j of src1(k,j) * src2(k,j)
 *
 * Checks: null, count, size, stride, offset.
 * Serial below 2401 by 2*count*length.
 */
int32_t kormDotProduct_vava_32f_P(
    const float *const *src1, int32_t src1Offset, int32_t src1ObjectStride, const float *const *src2,
    int32_t src2Offset, int32_t src2ObjectStride, float *dst, int32_t length, int32_t count);

/**
 * dst(k) = sum over j of src1(k,j) * src2(k,j)
 *
 * Checks: null, count, size, stride, offset.
 * Serial below 2001 by 2*count*length.
 */
int32_t kormDotProduct_vava_64f_P(
    const double *const *src1, int32_t src1Offset, int32_t src1ObjectStride, const double *const *src2,
    int32_t src2Offset, int32_t src2ObjectStride, double *dst, int32_t length, int32_t count);

/**
 * dst = root of the sum over j of src(j)^2
 *
 * Checks: null, size, stride.
 */
int32_t kormL2Norm_v_32f(const float *src, int32_t srcElementStride, float *dst, int32_t length);

/**
 * dst = root of the sum over j of src(j)^2
 *
 * Checks: null, size, stride.
 */
int32_t kormL2Norm_v_64f(const double *src, int32_t srcElementStride, double *dst, int32_t length);

/**
 * dst = root of the sum over j of src(j)^2
 *
 * Checks: null, size, offset.
 */
int32_t kormL2Norm_v_32f_P(const float *const *src, int32_t srcOffset, float *dst, int32_t length);

/**
 * dst = root of the sum over j of src(j)^2
 *
 * Checks: null, size, offset.
 */
int32_t kormL2Norm_v_64f_P(const double *const *src, int32_t srcOffset, double *dst, int32_t length);

/**
 * dst(k) = root of the sum over j of src(k,j)^2
 *
 * Checks: null, count, size, stride.
 * Serial below 1501 by length*count.
 */
int32_t kormL2Norm_va_32f(
    const float *src, int32_t srcObjectStride, int32_t srcElementStride, float *dst, int32_t length,
    int32_t count);

/**
 * dst(k) = root of the sum over j of src(k,j)^2
 *
 * Checks: null, count, size, stride.
 * Serial below 1501 by length*count.
 */
int32_t kormL2Norm_va_64f(
    const double *src, int32_t srcObjectStride, int32_t srcElementStride, double *dst, int32_t length,
    int32_t count);

/**
 * dst(k) = root of the sum over j of src(k,j)^2
 *
 * Checks: null, count, size, stride, offset.
 * Serial below 1501 by length*count.
 */
int32_t kormL2Norm_va_32f_L(
    const float *const *src, int32_t srcOffset, int32_t srcElementStride, float *dst, int32_t length,
    int32_t count);

/**
 * dst(k) = root of the sum over j of src(k,j)^2
 *
 * Checks: null, count, size, stride, offset.
 * Serial below 1501 by length*count.
 */
int32_t kormL2Norm_va_64f_L(
    const double *const *src, int32_t srcOffset, int32_t srcElementStride, double *dst, int32_t length,
    int32_t count);

/**
 * dst(k) = root of the sum over j of src(k,j)^2
 *
 * Checks: null, count, size, stride, offset.
 * Serial below 1501 by length*count.
 */
int32_t kormL2Norm_va_32f_P(
    const float *const *src, int32_t srcOffset, int32_t srcObjectStride, float *dst, int32_t length,
    int32_t count);

/**
 * dst(k) = root of the sum over j of src(k,j)^2
 *
 * Checks: null, count, size, stride, offset.
 * Serial below 1501 by length*count.
 */
int32_t kormL2Norm_va_64f_P(
    const double *const *src, int32_t srcOffset, int32_t srcObjectStride, double *dst, int32_t length,
    int32_t count);

/** @} */


/**
 * @defgroup cross_products Cross products
 * dst = src1 x src2, in a right-handed system. There is no length: every vector has three elements.
 *
 * Overlap: dst may be a source, at the same place with the same strides. Any other overlap of dst and a source leaves dst
 * undefined.
 *
 * Status: ::korStatusOk, ::korStatusNullPointer, ::korStatusBadStride; array forms ::korStatusBadCount; list and pointer forms
 * ::korStatusBadOffset. Other than with ::korStatusOk nothing is written. Each product and each difference is rounded.
 * @{
 */

/**
 * dst = src1 x src2
 *
 * Checks: null, stride.
 */
int32_t kormCrossProduct_vv_32f(
    const float *src1, int32_t src1ElementStride, const float *src2, int32_t src2ElementStride, float *dst,
    int32_t dstElementStride);

/**
 * dst = src1 x src2
 *
 * Checks: null, stride.
 */
int32_t kormCrossProduct_vv_64f(
    const double *src1, int32_t src1ElementStride, const double *src2, int32_t src2ElementStride, double *dst,
    int32_t dstElementStride);

/**
 * dst = src1 x src2
 *
 * Checks: null, offset.
 */
int32_t kormCrossProduct_vv_32f_P(
    const float *const *src1, int32_t src1Offset, const float *const *src2, int32_t src2Offset,
    float *const *dst, int32_t dstOffset);

/**
 * dst = src1 x src2
 *
 * Checks: null, offset.
 */
int32_t kormCrossProduct_vv_64f_P(
    const double *const *src1, int32_t src1Offset, const double *const *src2, int32_t src2Offset,
    double *const *dst, int32_t dstOffset);

/**
 * dst(k) = src1(k) x src2
 *
 * Checks: null, stride, count.
 * Serial up to 2999 by 2*count.
 */
int32_t kormCrossProduct_vav_32f(
    const float *src1, int32_t src1ObjectStride, int32_t src1ElementStride, const float *src2,
    int32_t src2ElementStride, float *dst, int32_t dstObjectStride, int32_t dstElementStride, int32_t count);

/**
 * dst(k) = src1(k) x src2
 *
 * Checks: null, stride, count.
 * Serial up to 2999 by 2*count.
 */
int32_t kormCrossProduct_vav_64f(
    const double *src1, int32_t src1ObjectStride, int32_t src1ElementStride, const double *src2,
    int32_t src2ElementStride, double *dst, int32_t dstObjectStride, int32_t dstElementStride, int32_t count);

/**
 * dst(k) = src1(k) x src2
 *
 * Checks: null, stride, offset, count.
 * Serial up to 2999 by 2*count.
 */
int32_t kormCrossProduct_vav_32f_L(
    const float *const *src1, int32_t src1Offset, int32_t src1ElementStride, const float *src2,
    int32_t src2ElementStride, float *const *dst, int32_t dstOffset, int32_t dstElementStride, int32_t count);

/**
 * dst(k) = src1(k) x src2
 *
 * Checks: null, stride, offset, count.
 * Serial up to 2999 by 2*count.
 */
int32_t kormCrossProduct_vav_64f_L(
    const double *const *src1, int32_t src1Offset, int32_t src1ElementStride, const double *src2,
    int32_t src2ElementStride, double *const *dst, int32_t dstOffset, int32_t dstElementStride,
    int32_t count);

/**
 * dst(k) = src1(k) x src2
 *
 * Checks: null, stride, count, offset.
 * Serial below 3000 by 2*count.
 */
int32_t kormCrossProduct_vav_32f_P(
    const float *const *src1, int32_t src1Offset, int32_t src1ObjectStride, const float *const *src2,
    int32_t src2Offset, float *const *dst, int32_t dstOffset, int32_t dstObjectStride, int32_t count);

/**
 * dst(k) = src1(k) x src2
 *
 * Checks: null, stride, count, offset.
 * Serial below 3000 by 2*count.
 */
int32_t kormCrossProduct_vav_64f_P(
    const double *const *src1, int32_t src1Offset, int32_t src1ObjectStride, const double *const *src2,
    int32_t src2Offset, double *const *dst, int32_t dstOffset, int32_t dstObjectStride, int32_t count);

/**
 * dst(k) = src1 x src2(k)
 *
 * Checks: null, count, stride.
 * Serial up to 2999 by 2*count.
 */
int32_t kormCrossProduct_vva_32f(
    const float *src1, int32_t src1ElementStride, const float *src2, int32_t src2ObjectStride,
    int32_t src2ElementStride, float *dst, int32_t dstObjectStride, int32_t dstElementStride, int32_t count);

/**
 * dst(k) = src1 x src2(k)
 *
 * Checks: null, count, stride.
 * Serial up to 2999 by 2*count.
 */
int32_t kormCrossProduct_vva_64f(
    const double *src1, int32_t src1ElementStride, const double *src2, int32_t src2ObjectStride,
    int32_t src2ElementStride, double *dst, int32_t dstObjectStride, int32_t dstElementStride, int32_t count);

/**
 * dst(k) = src1 x src2(k)
 *
 * Checks: null, count, stride, offset.
 * Serial up to 2999 by 2*count.
 */
int32_t kormCrossProduct_vva_32f_L(
    const float *src1, int32_t src1ElementStride, const float *const *src2, int32_t src2Offset,
    int32_t src2ElementStride, float *const *dst, int32_t dstOffset, int32_t dstElementStride, int32_t count);

/**
 * dst(k) = src1 x src2(k)
 *
 * Checks: null, count, stride, offset.
 * Serial up to 2999 by 2*count.
 */
int32_t kormCrossProduct_vva_64f_L(
    const double *src1, int32_t src1ElementStride, const double *const *src2, int32_t src2Offset,
    int32_t src2ElementStride, double *const *dst, int32_t dstOffset, int32_t dstElementStride,
    int32_t count);

/**
 * dst(k) = src1 x src2(k)
 *
 * Checks: null, count, stride, offset.
 * Serial below 3000 by 2*count.
 */
int32_t kormCrossProduct_vva_32f_P(
    const float *const *src1, int32_t src1Offset, const float *const *src2, int32_t src2Offset,
    int32_t src2ObjectStride, float *const *dst, int32_t dstOffset, int32_t dstObjectStride, int32_t count);

/**
 * dst(k) = src1 x src2(k)
 *
 * Checks: null, count, stride, offset.
 */
int32_t kormCrossProduct_vva_64f_P(
    const double *const *src1, int32_t src1Offset, const double *const *src2, int32_t src2Offset,
    int32_t src2ObjectStride, double *const *dst, int32_t dstOffset, int32_t dstObjectStride, int32_t count);

/**
 * dst(k) = src1(k) x src2(k)
 *
 * Checks: null, count, stride.
 * Serial up to 3000 by 3*count.
 */
int32_t kormCrossProduct_vava_32f(
    const float *src1, int32_t src1ObjectStride, int32_t src1ElementStride, const float *src2,
    int32_t src2ObjectStride, int32_t src2ElementStride, float *dst, int32_t dstObjectStride,
    int32_t dstElementStride, int32_t count);

/**
 * dst(k) = src1(k) x src2(k)
 *
 * Checks: null, count, stride.
 * Serial up to 3000 by 3*count.
 */
int32_t kormCrossProduct_vava_64f(
    const double *src1, int32_t src1ObjectStride, int32_t src1ElementStride, const double *src2,
    int32_t src2ObjectStride, int32_t src2ElementStride, double *dst, int32_t dstObjectStride,
    int32_t dstElementStride, int32_t count);

/**
 * dst(k) = src1(k) x src2(k)
 *
 * Checks: null, count, stride, offset.
 * Serial up to 3000 by 3*count.
 */
int32_t kormCrossProduct_vava_32f_L(
    const float *const *src1, int32_t src1Offset, int32_t src1ElementStride, const float *const *src2,
    int32_t src2Offset, int32_t src2ElementStride, float *const *dst, int32_t dstOffset,
    int32_t dstElementStride, int32_t count);

/**
 * dst(k) = src1(k) x src2(k)
 *
 * Checks: null, count, stride, offset.
 * Serial up to 3000 by 3*count.
 */
int32_t kormCrossProduct_vava_64f_L(
    const double *const *src1, int32_t src1Offset, int32_t src1ElementStride, const double *const *src2,
    int32_t src2Offset, int32_t src2ElementStride, double *const *dst, int32_t dstOffset,
    int32_t dstElementStride, int32_t count);

/**
 * dst(k) = src1(k) x src2(k)
 *
 * Checks: null, count, stride, offset.
 * Serial below 3001 by 3*count.
 */
int32_t kormCrossProduct_vava_32f_P(
    const float *const *src1, int32_t src1Offset, int32_t src1ObjectStride, const float *const *src2,
    int32_t src2Offset, int32_t src2ObjectStride, float *const *dst, int32_t dstOffset,
    int32_t dstObjectStride, int32_t count);

/**
 * dst(k) = src1(k) x src2(k)
 *
 * Checks: null, count, stride, offset.
 * Serial below 3001 by 3*count.
 */
int32_t kormCrossProduct_vava_64f_P(
    const double *const *src1, int32_t src1Offset, int32_t src1ObjectStride, const double *const *src2,
    int32_t src2Offset, int32_t src2ObjectStride, double *const *dst, int32_t dstOffset,
    int32_t dstObjectStride, int32_t count);

/** @} */


/**
 * @defgroup copy Copies between layouts
 * dst = src, element by element, for arrays of matrices or vectors. The two letters that end a name are the layouts of
 * source and result: `S` standard, `L` list, `P` pointer.
 *
 * Elements move as bits, so that every NaN arrives as it was.
 *
 * A call of one object doesn't look at object strides.
 *
 * Overlap: any. Objects, rows and elements move in ascending order, each element is written before the next is read, and
 * an entry of a list or table is read when its turn comes. So a result that begins inside its source, behind it, repeats
 * what it has written.
 *
 * Status: ::korStatusOk, ::korStatusNullPointer, ::korStatusBadSize, ::korStatusBadCount, ::korStatusBadStride; forms with
 * a list or table ::korStatusBadOffset. Other than with ::korStatusOk nothing is written.
 * @{
 */

/**
 * dst(k,i,j) = src(k,i,j)
 *
 * Checks: null, size, count, stride within an object, stride between objects, if count is above 1.
 */
int32_t kormCopy_ma_32f_SS(
    const float *src, int32_t srcObjectStride, int32_t srcRowStride, int32_t srcElementStride, float *dst,
    int32_t dstObjectStride, int32_t dstRowStride, int32_t dstElementStride, int32_t width, int32_t height,
    int32_t count);

/**
 * dst(k,i,j) = src(k,i,j)
 *
 * Checks: null, size, count, stride within an object, stride between objects, if count is above 1.
 */
int32_t kormCopy_ma_64f_SS(
    const double *src, int32_t srcObjectStride, int32_t srcRowStride, int32_t srcElementStride, double *dst,
    int32_t dstObjectStride, int32_t dstRowStride, int32_t dstElementStride, int32_t width, int32_t height,
    int32_t count);

/**
 * dst(k,i,j) = src(k,i,j)
 *
 * Checks: null, size, count, stride within an object, offset, stride between objects, if count is above 1.
 */
int32_t kormCopy_ma_32f_SP(
    const float *src, int32_t srcObjectStride, int32_t srcRowStride, int32_t srcElementStride,
    float *const *dst, int32_t dstOffset, int32_t dstObjectStride, int32_t width, int32_t height,
    int32_t count);

/**
 * dst(k,i,j) = src(k,i,j)
 *
 * Checks: null, size, count, stride within an object, offset, stride between objects, if count is above 1.
 */
int32_t kormCopy_ma_64f_SP(
    const double *src, int32_t srcObjectStride, int32_t srcRowStride, int32_t srcElementStride,
    double *const *dst, int32_t dstOffset, int32_t dstObjectStride, int32_t width, int32_t height,
    int32_t count);

/**
 * dst(k,i,j) = src(k,i,j)
 *
 * Checks: null, size, count, stride within an object, offset, stride between objects, if count is above 1.
 */
int32_t kormCopy_ma_32f_SL(
    const float *src, int32_t srcObjectStride, int32_t srcRowStride, int32_t srcElementStride,
    float *const *dst, int32_t dstOffset, int32_t dstRowStride, int32_t dstElementStride, int32_t width,
    int32_t height, int32_t count);

/**
 * dst(k,i,j) = src(k,i,j)
 *
 * Checks: null, size, count, stride within an object, offset, stride between objects, if count is above 1.
 */
int32_t kormCopy_ma_64f_SL(
    const double *src, int32_t srcObjectStride, int32_t srcRowStride, int32_t srcElementStride,
    double *const *dst, int32_t dstOffset, int32_t dstRowStride, int32_t dstElementStride, int32_t width,
    int32_t height, int32_t count);

/**
 * dst(k,i,j) = src(k,i,j)
 *
 * Checks: null, size, count, stride within an object, offset, stride between objects, if count is above 1.
 */
int32_t kormCopy_ma_32f_PS(
    const float *const *src, int32_t srcOffset, int32_t srcObjectStride, float *dst, int32_t dstObjectStride,
    int32_t dstRowStride, int32_t dstElementStride, int32_t width, int32_t height, int32_t count);

/**
 * dst(k,i,j) = src(k,i,j)
 *
 * Checks: null, size, count, stride within an object, offset, stride between objects, if count is above 1.
 */
int32_t kormCopy_ma_64f_PS(
    const double *const *src, int32_t srcOffset, int32_t srcObjectStride, double *dst,
    int32_t dstObjectStride, int32_t dstRowStride, int32_t dstElementStride, int32_t width, int32_t height,
    int32_t count);

/**
 * dst(k,i,j) = src(k,i,j)
 *
 * Checks: null, size, count, offset, stride between objects, if count is above 1.
 */
int32_t kormCopy_ma_32f_PP(
    const float *const *src, int32_t srcOffset, int32_t srcObjectStride, float *const *dst, int32_t dstOffset,
    int32_t dstObjectStride, int32_t width, int32_t height, int32_t count);

/**
 * dst(k,i,j) = src(k,i,j)
 *
 * Checks: null, size, count, offset, stride between objects, if count is above 1.
 */
int32_t kormCopy_ma_64f_PP(
    const double *const *src, int32_t srcOffset, int32_t srcObjectStride, double *const *dst,
    int32_t dstOffset, int32_t dstObjectStride, int32_t width, int32_t height, int32_t count);

/**
 * dst(k,i,j) = src(k,i,j)
 *
 * Checks: null, size, count, stride within an object, offset, stride between objects, if count is above 1.
 */
int32_t kormCopy_ma_32f_PL(
    const float *const *src, int32_t srcOffset, int32_t srcObjectStride, float *const *dst, int32_t dstOffset,
    int32_t dstRowStride, int32_t dstElementStride, int32_t width, int32_t height, int32_t count);

/**
 * dst(k,i,j) = src(k,i,j)
 *
 * Checks: null, size, count, stride within an object, offset, stride between objects, if count is above 1.
 */
int32_t kormCopy_ma_64f_PL(
    const double *const *src, int32_t srcOffset, int32_t srcObjectStride, double *const *dst,
    int32_t dstOffset, int32_t dstRowStride, int32_t dstElementStride, int32_t width, int32_t height,
    int32_t count);

/**
 * dst(k,i,j) = src(k,i,j)
 *
 * Checks: null, size, count, stride within an object, offset, stride between objects, if count is above 1.
 */
int32_t kormCopy_ma_32f_LS(
    const float *const *src, int32_t srcOffset, int32_t srcRowStride, int32_t srcElementStride, float *dst,
    int32_t dstObjectStride, int32_t dstRowStride, int32_t dstElementStride, int32_t width, int32_t height,
    int32_t count);

/**
 * dst(k,i,j) = src(k,i,j)
 *
 * Checks: null, size, count, stride within an object, offset, stride between objects, if count is above 1.
 */
int32_t kormCopy_ma_64f_LS(
    const double *const *src, int32_t srcOffset, int32_t srcRowStride, int32_t srcElementStride, double *dst,
    int32_t dstObjectStride, int32_t dstRowStride, int32_t dstElementStride, int32_t width, int32_t height,
    int32_t count);

/**
 * dst(k,i,j) = src(k,i,j)
 *
 * Checks: null, size, count, stride within an object, offset, stride between objects, if count is above 1.
 */
int32_t kormCopy_ma_32f_LP(
    const float *const *src, int32_t srcOffset, int32_t srcRowStride, int32_t srcElementStride,
    float *const *dst, int32_t dstOffset, int32_t dstObjectStride, int32_t width, int32_t height,
    int32_t count);

/**
 * dst(k,i,j) = src(k,i,j)
 *
 * Checks: null, size, count, stride within an object, offset, stride between objects, if count is above 1.
 */
int32_t kormCopy_ma_64f_LP(
    const double *const *src, int32_t srcOffset, int32_t srcRowStride, int32_t srcElementStride,
    double *const *dst, int32_t dstOffset, int32_t dstObjectStride, int32_t width, int32_t height,
    int32_t count);

/**
 * dst(k,i,j) = src(k,i,j)
 *
 * Checks: null, size, count, stride within an object, offset.
 */
int32_t kormCopy_ma_32f_LL(
    const float *const *src, int32_t srcOffset, int32_t srcRowStride, int32_t srcElementStride,
    float *const *dst, int32_t dstOffset, int32_t dstRowStride, int32_t dstElementStride, int32_t width,
    int32_t height, int32_t count);

/**
 * dst(k,i,j) = src(k,i,j)
 *
 * Checks: null, size, count, stride within an object, offset.
 */
int32_t kormCopy_ma_64f_LL(
    const double *const *src, int32_t srcOffset, int32_t srcRowStride, int32_t srcElementStride,
    double *const *dst, int32_t dstOffset, int32_t dstRowStride, int32_t dstElementStride, int32_t width,
    int32_t height, int32_t count);

/**
 * dst(k,j) = src(k,j)
 *
 * Checks: null, size, count, stride within an object, stride between objects, if count is above 1.
 */
int32_t kormCopy_va_32f_SS(
    const float *src, int32_t srcObjectStride, int32_t srcElementStride, float *dst, int32_t dstObjectStride,
    int32_t dstElementStride, int32_t length, int32_t count);

/**
 * dst(k,j) = src(k,j)
 *
 * Checks: null, size, count, stride within an object, stride between objects, if count is above 1.
 */
int32_t kormCopy_va_64f_SS(
    const double *src, int32_t srcObjectStride, int32_t srcElementStride, double *dst,
    int32_t dstObjectStride, int32_t dstElementStride, int32_t length, int32_t count);

/**
 * dst(k,j) = src(k,j)
 *
 * Checks: null, size, count, offset, stride within an object, stride between objects, if count is above 1.
 */
int32_t kormCopy_va_32f_SP(
    const float *src, int32_t srcObjectStride, int32_t srcElementStride, float *const *dst, int32_t dstOffset,
    int32_t dstObjectStride, int32_t length, int32_t count);

/**
 * dst(k,j) = src(k,j)
 *
 * Checks: null, size, count, stride within an object, offset, stride between objects, if count is above 1.
 */
int32_t kormCopy_va_64f_SP(
    const double *src, int32_t srcObjectStride, int32_t srcElementStride, double *const *dst,
    int32_t dstOffset, int32_t dstObjectStride, int32_t length, int32_t count);

/**
 * dst(k,j) = src(k,j)
 *
 * Checks: null, size, count, stride within an object, offset, stride between objects, if count is above 1.
 */
int32_t kormCopy_va_32f_SL(
    const float *src, int32_t srcObjectStride, int32_t srcElementStride, float *const *dst, int32_t dstOffset,
    int32_t dstElementStride, int32_t length, int32_t count);

/**
 * dst(k,j) = src(k,j)
 *
 * Checks: null, size, count, stride within an object, offset, stride between objects, if count is above 1.
 */
int32_t kormCopy_va_64f_SL(
    const double *src, int32_t srcObjectStride, int32_t srcElementStride, double *const *dst,
    int32_t dstOffset, int32_t dstElementStride, int32_t length, int32_t count);

/**
 * dst(k,j) = src(k,j)
 *
 * Checks: null, size, count, stride within an object, offset, stride between objects, if count is above 1.
 */
int32_t kormCopy_va_32f_PS(
    const float *const *src, int32_t srcOffset, int32_t srcObjectStride, float *dst, int32_t dstObjectStride,
    int32_t dstElementStride, int32_t length, int32_t count);

/**
 * dst(k,j) = src(k,j)
 *
 * Checks: null, size, count, stride within an object, offset, stride between objects, if count is above 1.
 */
int32_t kormCopy_va_64f_PS(
    const double *const *src, int32_t srcOffset, int32_t srcObjectStride, double *dst,
    int32_t dstObjectStride, int32_t dstElementStride, int32_t length, int32_t count);

/**
 * dst(k,j) = src(k,j)
 *
 * Checks: null, size, count, offset, stride between objects, if count is above 1.
 */
int32_t kormCopy_va_32f_PP(
    const float *const *src, int32_t srcOffset, int32_t srcObjectStride, float *const *dst, int32_t dstOffset,
    int32_t dstObjectStride, int32_t length, int32_t count);

/**
 * dst(k,j) = src(k,j)
 *
 * Checks: null, size, count, offset, stride between objects, if count is above 1.
 */
int32_t kormCopy_va_64f_PP(
    const double *const *src, int32_t srcOffset, int32_t srcObjectStride, double *const *dst,
    int32_t dstOffset, int32_t dstObjectStride, int32_t length, int32_t count);

/**
 * dst(k,j) = src(k,j)
 *
 * Checks: null, size, count, stride within an object, offset, stride between objects, if count is above 1.
 */
int32_t kormCopy_va_32f_PL(
    const float *const *src, int32_t srcOffset, int32_t srcObjectStride, float *const *dst, int32_t dstOffset,
    int32_t dstElementStride, int32_t length, int32_t count);

/**
 * dst(k,j) = src(k,j)
 *
 * Checks: null, size, count, stride within an object, offset, stride between objects, if count is above 1.
 */
int32_t kormCopy_va_64f_PL(
    const double *const *src, int32_t srcOffset, int32_t srcObjectStride, double *const *dst,
    int32_t dstOffset, int32_t dstElementStride, int32_t length, int32_t count);

/**
 * dst(k,j) = src(k,j)
 *
 * Checks: null, size, count, stride within an object, offset, stride between objects, if count is above 1.
 */
int32_t kormCopy_va_32f_LS(
    const float *const *src, int32_t srcOffset, int32_t srcElementStride, float *dst, int32_t dstObjectStride,
    int32_t dstElementStride, int32_t length, int32_t count);

/**
 * dst(k,j) = src(k,j)
 *
 * Checks: null, size, count, stride within an object, offset, stride between objects, if count is above 1.
 */
int32_t kormCopy_va_64f_LS(
    const double *const *src, int32_t srcOffset, int32_t srcElementStride, double *dst,
    int32_t dstObjectStride, int32_t dstElementStride, int32_t length, int32_t count);

/**
 * dst(k,j) = src(k,j)
 *
 * Checks: null, size, count, offset, stride within an object, stride between objects, if count is above 1.
 */
int32_t kormCopy_va_32f_LP(
    const float *const *src, int32_t srcOffset, int32_t srcElementStride, float *const *dst,
    int32_t dstOffset, int32_t dstObjectStride, int32_t length, int32_t count);

/**
 * dst(k,j) = src(k,j)
 *
 * Checks: null, size, count, stride within an object, offset, stride between objects, if count is above 1.
 */
int32_t kormCopy_va_64f_LP(
    const double *const *src, int32_t srcOffset, int32_t srcElementStride, double *const *dst,
    int32_t dstOffset, int32_t dstObjectStride, int32_t length, int32_t count);

/**
 * dst(k,j) = src(k,j)
 *
 * Checks: null, size, count, stride within an object, offset.
 */
int32_t kormCopy_va_32f_LL(
    const float *const *src, int32_t srcOffset, int32_t srcElementStride, float *const *dst,
    int32_t dstOffset, int32_t dstElementStride, int32_t length, int32_t count);

/**
 * dst(k,j) = src(k,j)
 *
 * Checks: null, size, count, stride within an object, offset.
 */
int32_t kormCopy_va_64f_LL(
    const double *const *src, int32_t srcOffset, int32_t srcElementStride, double *const *dst,
    int32_t dstOffset, int32_t dstElementStride, int32_t length, int32_t count);

/** @} */


/**
 * @defgroup extract Extraction into a packed block
 * The objects of src, one behind the other without gaps: element (i, j) of object k goes to
 * dst[k*width*height + i*width + j], element j of vector k to dst[k*length + j]. dst has no strides in any layout.
 *
 * Shapes: `width` and `height` are those of the result; a transposed matrix is stored with `width` rows and `height`
 * columns.
 *
 * Elements move as bits. Unlike in `Copy`, object strides are looked at in a call of one object too.
 *
 * Overlap: any. Standard and list forms move objects, rows and elements in ascending order, pointer forms entry by entry as
 * the table has them, for each object by object; each element is written before the next is read.
 *
 * Status: ::korStatusOk, ::korStatusNullPointer, ::korStatusBadSize, ::korStatusBadStride; array forms
 * ::korStatusBadCount; list and pointer forms ::korStatusBadOffset. Other than with ::korStatusOk nothing is written.
 * @{
 */

/**
 * dst[i*width + j] = src(i,j)
 *
 * Checks: null, size, stride.
 */
int32_t kormExtract_m_32f(
    const float *src, int32_t srcRowStride, int32_t srcElementStride, float *dst, int32_t width,
    int32_t height);

/**
 * dst[i*width + j] = src(i,j)
 *
 * Checks: null, size, stride.
 */
int32_t kormExtract_m_64f(
    const double *src, int32_t srcRowStride, int32_t srcElementStride, double *dst, int32_t width,
    int32_t height);

/**
 * dst[i*width + j] = src(i,j)
 *
 * Checks: size, null, offset.
 */
int32_t kormExtract_m_32f_P(
    const float *const *src, int32_t srcOffset, float *dst, int32_t width, int32_t height);

/**
 * dst[i*width + j] = src(i,j)
 *
 * Checks: size, null, offset.
 */
int32_t kormExtract_m_64f_P(
    const double *const *src, int32_t srcOffset, double *dst, int32_t width, int32_t height);

/**
 * dst[i*width + j] = src(j,i)
 *
 * Checks: null, size, stride.
 */
int32_t kormExtract_t_32f(
    const float *src, int32_t srcRowStride, int32_t srcElementStride, float *dst, int32_t width,
    int32_t height);

/**
 * dst[i*width + j] = src(j,i)
 *
 * Checks: null, size, stride.
 */
int32_t kormExtract_t_64f(
    const double *src, int32_t srcRowStride, int32_t srcElementStride, double *dst, int32_t width,
    int32_t height);

/**
 * dst[i*width + j] = src(j,i)
 *
 * Checks: size, null, offset.
 */
int32_t kormExtract_t_32f_P(
    const float *const *src, int32_t srcOffset, float *dst, int32_t width, int32_t height);

/**
 * dst[i*width + j] = src(j,i)
 *
 * Checks: size, null, offset.
 */
int32_t kormExtract_t_64f_P(
    const double *const *src, int32_t srcOffset, double *dst, int32_t width, int32_t height);

/**
 * dst[(k*height + i)*width + j] = src(k,i,j)
 *
 * Checks: null, size, count, stride.
 */
int32_t kormExtract_ma_32f(
    const float *src, int32_t srcObjectStride, int32_t srcRowStride, int32_t srcElementStride, float *dst,
    int32_t width, int32_t height, int32_t count);

/**
 * dst[(k*height + i)*width + j] = src(k,i,j)
 *
 * Checks: null, size, count, stride.
 */
int32_t kormExtract_ma_64f(
    const double *src, int32_t srcObjectStride, int32_t srcRowStride, int32_t srcElementStride, double *dst,
    int32_t width, int32_t height, int32_t count);

/**
 * dst[(k*height + i)*width + j] = src(k,i,j)
 *
 * Checks: null, size, count, offset, stride.
 */
int32_t kormExtract_ma_32f_L(
    const float *const *src, int32_t srcOffset, int32_t srcRowStride, int32_t srcElementStride, float *dst,
    int32_t width, int32_t height, int32_t count);

/**
 * dst[(k*height + i)*width + j] = src(k,i,j)
 *
 * Checks: null, size, count, offset, stride.
 */
int32_t kormExtract_ma_64f_L(
    const double *const *src, int32_t srcOffset, int32_t srcRowStride, int32_t srcElementStride, double *dst,
    int32_t width, int32_t height, int32_t count);

/**
 * dst[(k*height + i)*width + j] = src(k,i,j)
 *
 * Checks: null, size, count, offset, stride.
 */
int32_t kormExtract_ma_32f_P(
    const float *const *src, int32_t srcOffset, int32_t srcObjectStride, float *dst, int32_t width,
    int32_t height, int32_t count);

/**
 * dst[(k*height + i)*width + j] = src(k,i,j)
 *
 * Checks: null, size, count, offset, stride.
 */
int32_t kormExtract_ma_64f_P(
    const double *const *src, int32_t srcOffset, int32_t srcObjectStride, double *dst, int32_t width,
    int32_t height, int32_t count);

/**
 * dst[(k*height + i)*width + j] = src(k,j,i)
 *
 * Checks: null, size, count, stride.
 */
int32_t kormExtract_ta_32f(
    const float *src, int32_t srcObjectStride, int32_t srcRowStride, int32_t srcElementStride, float *dst,
    int32_t width, int32_t height, int32_t count);

/**
 * dst[(k*height + i)*width + j] = src(k,j,i)
 *
 * Checks: null, size, count, stride.
 */
int32_t kormExtract_ta_64f(
    const double *src, int32_t srcObjectStride, int32_t srcRowStride, int32_t srcElementStride, double *dst,
    int32_t width, int32_t height, int32_t count);

/**
 * dst[(k*height + i)*width + j] = src(k,j,i)
 *
 * Checks: null, size, count, offset, stride.
 */
int32_t kormExtract_ta_32f_L(
    const float *const *src, int32_t srcOffset, int32_t srcRowStride, int32_t srcElementStride, float *dst,
    int32_t width, int32_t height, int32_t count);

/**
 * dst[(k*height + i)*width + j] = src(k,j,i)
 *
 * Checks: null, size, count, offset, stride.
 */
int32_t kormExtract_ta_64f_L(
    const double *const *src, int32_t srcOffset, int32_t srcRowStride, int32_t srcElementStride, double *dst,
    int32_t width, int32_t height, int32_t count);

/**
 * dst[(k*height + i)*width + j] = src(k,j,i)
 *
 * Checks: null, size, count, offset, stride.
 */
int32_t kormExtract_ta_32f_P(
    const float *const *src, int32_t srcOffset, int32_t srcObjectStride, float *dst, int32_t width,
    int32_t height, int32_t count);

/**
 * dst[(k*height + i)*width + j] = src(k,j,i)
 *
 * Checks: null, size, count, offset, stride.
 */
int32_t kormExtract_ta_64f_P(
    const double *const *src, int32_t srcOffset, int32_t srcObjectStride, double *dst, int32_t width,
    int32_t height, int32_t count);

/**
 * dst[j] = src(j)
 *
 * Checks: null, size, stride.
 */
int32_t kormExtract_v_32f(const float *src, int32_t srcElementStride, float *dst, int32_t length);

/**
 * dst[j] = src(j)
 *
 * Checks: null, size, stride.
 */
int32_t kormExtract_v_64f(const double *src, int32_t srcElementStride, double *dst, int32_t length);

/**
 * dst[j] = src(j)
 *
 * Checks: null, size, offset.
 */
int32_t kormExtract_v_32f_P(const float *const *src, int32_t srcOffset, float *dst, int32_t length);

/**
 * dst[j] = src(j)
 *
 * Checks: size, null, offset.
 */
int32_t kormExtract_v_64f_P(const double *const *src, int32_t srcOffset, double *dst, int32_t length);

/**
 * dst[k*length + j] = src(k,j)
 *
 * Checks: null, size, count, stride.
 */
int32_t kormExtract_va_32f(
    const float *src, int32_t srcObjectStride, int32_t srcElementStride, float *dst, int32_t length,
    int32_t count);

/**
 * dst[k*length + j] = src(k,j)
 *
 * Checks: null, size, count, stride.
 */
int32_t kormExtract_va_64f(
    const double *src, int32_t srcObjectStride, int32_t srcElementStride, double *dst, int32_t length,
    int32_t count);

/**
 * dst[k*length + j] = src(k,j)
 *
 * Checks: null, size, count, offset, stride.
 */
int32_t kormExtract_va_32f_L(
    const float *const *src, int32_t srcOffset, int32_t srcElementStride, float *dst, int32_t length,
    int32_t count);

/**
 * dst[k*length + j] = src(k,j)
 *
 * Checks: null, size, count, offset, stride.
 */
int32_t kormExtract_va_64f_L(
    const double *const *src, int32_t srcOffset, int32_t srcElementStride, double *dst, int32_t length,
    int32_t count);

/**
 * dst[k*length + j] = src(k,j)
 *
 * Checks: null, size, count, offset, stride.
 */
int32_t kormExtract_va_32f_P(
    const float *const *src, int32_t srcOffset, int32_t srcObjectStride, float *dst, int32_t length,
    int32_t count);

/**
 * dst[k*length + j] = src(k,j)
 *
 * Checks: null, size, count, offset, stride.
 */
int32_t kormExtract_va_64f_P(
    const double *const *src, int32_t srcOffset, int32_t srcObjectStride, double *dst, int32_t length,
    int32_t count);

/** @} */


/**
 * @defgroup load_identity Identity matrices
 * Each matrix of dst gets 1 on its diagonal, which ends at the shorter side, and 0 everywhere else.
 *
 * A call of one object doesn't look at the object stride.
 *
 * Status: ::korStatusOk, ::korStatusNullPointer, ::korStatusBadSize, ::korStatusBadCount, ::korStatusBadStride; list and
 * pointer forms ::korStatusBadOffset. Other than with ::korStatusOk nothing is written.
 * @{
 */

/**
 * dst(k,i,j) = i == j ? 1 : 0
 *
 * Checks: null, size, count, stride within an object, stride between objects, if count is above 1.
 */
int32_t kormLoadIdentity_ma_32f(
    float *dst, int32_t dstObjectStride, int32_t dstRowStride, int32_t dstElementStride, int32_t width,
    int32_t height, int32_t count);

/**
 * dst(k,i,j) = i == j ? 1 : 0
 *
 * Checks: null, size, count, stride within an object, stride between objects, if count is above 1.
 */
int32_t kormLoadIdentity_ma_64f(
    double *dst, int32_t dstObjectStride, int32_t dstRowStride, int32_t dstElementStride, int32_t width,
    int32_t height, int32_t count);

/**
 * dst(k,i,j) = i == j ? 1 : 0
 *
 * Checks: null, size, count, stride within an object, offset.
 */
int32_t kormLoadIdentity_ma_32f_L(
    float *const *dst, int32_t dstOffset, int32_t dstRowStride, int32_t dstElementStride, int32_t width,
    int32_t height, int32_t count);

/**
 * dst(k,i,j) = i == j ? 1 : 0
 *
 * Checks: null, size, count, stride within an object, offset.
 */
int32_t kormLoadIdentity_ma_64f_L(
    double *const *dst, int32_t dstOffset, int32_t dstRowStride, int32_t dstElementStride, int32_t width,
    int32_t height, int32_t count);

/**
 * dst(k,i,j) = i == j ? 1 : 0
 *
 * Checks: null, size, offset, count, stride between objects, if count is above 1.
 */
int32_t kormLoadIdentity_ma_32f_P(
    float *const *dst, int32_t dstOffset, int32_t dstObjectStride, int32_t width, int32_t height,
    int32_t count);

/**
 * dst(k,i,j) = i == j ? 1 : 0
 *
 * Checks: null, size, count, offset, stride between objects, if count is above 1.
 */
int32_t kormLoadIdentity_ma_64f_P(
    double *const *dst, int32_t dstOffset, int32_t dstObjectStride, int32_t width, int32_t height,
    int32_t count);

/** @} */


/**
 * @defgroup transpose Transposition
 * dst(j, i) = src(i, j), for a matrix or each matrix of an array. Elements move as bits.
 *
 * Shapes: `width` and `height` are those of src; dst has `width` rows of `height` columns, and in the pointer layout its
 * table is row by row in that shape.
 *
 * Overlap: dst and src must not overlap, square matrices neither.
 *
 * Status: ::korStatusOk, ::korStatusNullPointer, ::korStatusBadSize, ::korStatusBadStride; array forms
 * ::korStatusBadCount; list and pointer forms ::korStatusBadOffset. Other than with ::korStatusOk nothing is written.
 * @{
 */

/**
 * dst(j,i) = src(i,j)
 *
 * Checks: null, size, stride.
 */
int32_t kormTranspose_m_32f(
    const float *src, int32_t srcRowStride, int32_t srcElementStride, int32_t width, int32_t height,
    float *dst, int32_t dstRowStride, int32_t dstElementStride);

/**
 * dst(j,i) = src(i,j)
 *
 * Checks: null, size, stride.
 */
int32_t kormTranspose_m_64f(
    const double *src, int32_t srcRowStride, int32_t srcElementStride, int32_t width, int32_t height,
    double *dst, int32_t dstRowStride, int32_t dstElementStride);

/**
 * dst(j,i) = src(i,j)
 *
 * Checks: null, size, offset.
 */
int32_t kormTranspose_m_32f_P(
    const float *const *src, int32_t srcOffset, int32_t width, int32_t height, float *const *dst,
    int32_t dstOffset);

/**
 * dst(j,i) = src(i,j)
 *
 * Checks: null, size, offset.
 */
int32_t kormTranspose_m_64f_P(
    const double *const *src, int32_t srcOffset, int32_t width, int32_t height, double *const *dst,
    int32_t dstOffset);

/**
 * dst(k,j,i) = src(k,i,j)
 *
 * Checks: null, count, size, stride.
 */
int32_t kormTranspose_ma_32f(
    const float *src, int32_t srcObjectStride, int32_t srcRowStride, int32_t srcElementStride, int32_t width,
    int32_t height, float *dst, int32_t dstObjectStride, int32_t dstRowStride, int32_t dstElementStride,
    int32_t count);

/**
 * dst(k,j,i) = src(k,i,j)
 *
 * Checks: null, count, size, stride.
 */
int32_t kormTranspose_ma_64f(
    const double *src, int32_t srcObjectStride, int32_t srcRowStride, int32_t srcElementStride, int32_t width,
    int32_t height, double *dst, int32_t dstObjectStride, int32_t dstRowStride, int32_t dstElementStride,
    int32_t count);

/**
 * dst(k,j,i) = src(k,i,j)
 *
 * Checks: null, count, size, stride, offset.
 */
int32_t kormTranspose_ma_32f_L(
    const float *const *src, int32_t srcOffset, int32_t srcRowStride, int32_t srcElementStride, int32_t width,
    int32_t height, float *const *dst, int32_t dstOffset, int32_t dstRowStride, int32_t dstElementStride,
    int32_t count);

/**
 * dst(k,j,i) = src(k,i,j)
 *
 * Checks: null, count, size, stride, offset.
 */
int32_t kormTranspose_ma_64f_L(
    const double *const *src, int32_t srcOffset, int32_t srcRowStride, int32_t srcElementStride,
    int32_t width, int32_t height, double *const *dst, int32_t dstOffset, int32_t dstRowStride,
    int32_t dstElementStride, int32_t count);

/**
 * dst(k,j,i) = src(k,i,j)
 *
 * Checks: null, count, size, stride, offset.
 */
int32_t kormTranspose_ma_32f_P(
    const float *const *src, int32_t srcOffset, int32_t srcObjectStride, int32_t width, int32_t height,
    float *const *dst, int32_t dstOffset, int32_t dstObjectStride, int32_t count);

/**
 * dst(k,j,i) = src(k,i,j)
 *
 * Checks: null, count, size, stride, offset.
 */
int32_t kormTranspose_ma_64f_P(
    const double *const *src, int32_t srcOffset, int32_t srcObjectStride, int32_t width, int32_t height,
    double *const *dst, int32_t dstOffset, int32_t dstObjectStride, int32_t count);

/** @} */


/**
 * @defgroup determinant Determinants
 * dst(k) = determinant of the square matrix src(k). A single matrix writes one element, an array one element for each
 * object, in a row: dst has no strides in any layout.
 *
 * `buffer` is scratch of order*order + order elements of the call's type, whatever its content. It must not be null,
 * though orders 3 to 6 leave it alone. A call that is spread over threads doesn't touch it.
 *
 * Orders 3 to 6 are closed forms without any test: a singular matrix gives what rounding leaves. All other orders are
 * eliminations with row pivoting; a pivot below, or a last one not above, 2*order^3 times the smallest normal number of
 * the type makes the result exactly zero. A singular matrix is no failure.
 *
 * Scale: products of `order` elements are formed as they are. Where they leave the range of the type the result is zero,
 * infinity, NaN or a number with few bits, with ::korStatusOk; docs/ranges.md shows at which scales it is right. Beyond them
 * scale the matrix by a power of 2 first: s A has s^order times the determinant of A.
 *
 * Overlap: dst, buffer and src must not overlap.
 *
 * Status: ::korStatusOk, ::korStatusNullPointer, ::korStatusBadSize, ::korStatusBadStride; array forms
 * ::korStatusBadCount; list and pointer forms ::korStatusBadOffset. Other than with ::korStatusOk nothing is written.
 * @{
 */

/**
 * dst = det(src)
 *
 * Checks: null, size, stride.
 */
int32_t kormDet_m_32f(
    const float *src, int32_t srcRowStride, int32_t srcElementStride, int32_t order, float *buffer,
    float *dst);

/**
 * dst = det(src)
 *
 * Checks: null, size, stride.
 */
int32_t kormDet_m_64f(
    const double *src, int32_t srcRowStride, int32_t srcElementStride, int32_t order, double *buffer,
    double *dst);

/**
 * dst = det(src)
 *
 * Checks: null, size, offset.
 */
int32_t kormDet_m_32f_P(const float *const *src, int32_t srcOffset, int32_t order, float *buffer, float *dst);

/**
 * dst = det(src)
 *
 * Checks: null, size, offset.
 */
int32_t kormDet_m_64f_P(
    const double *const *src, int32_t srcOffset, int32_t order, double *buffer, double *dst);

/**
 * dst(k) = det(src(k))
 *
 * Checks: null, count, size, stride.
 * Serial up to 14400 by order*count.
 */
int32_t kormDet_ma_32f(
    const float *src, int32_t srcObjectStride, int32_t srcRowStride, int32_t srcElementStride, int32_t order,
    float *buffer, float *dst, int32_t count);

/**
 * dst(k) = det(src(k))
 *
 * Checks: null, count, size, stride.
 * Serial up to 14400 by order*count.
 */
int32_t kormDet_ma_64f(
    const double *src, int32_t srcObjectStride, int32_t srcRowStride, int32_t srcElementStride, int32_t order,
    double *buffer, double *dst, int32_t count);

/**
 * dst(k) = det(src(k))
 *
 * Checks: null, count, size, stride, offset.
 * Serial up to 14400 by order*count.
 */
int32_t kormDet_ma_32f_L(
    const float *const *src, int32_t srcOffset, int32_t srcRowStride, int32_t srcElementStride, int32_t order,
    float *buffer, float *dst, int32_t count);

/**
 * dst(k) = det(src(k))
 *
 * Checks: null, count, size, stride, offset.
 * Serial up to 14400 by order*count.
 */
int32_t kormDet_ma_64f_L(
    const double *const *src, int32_t srcOffset, int32_t srcRowStride, int32_t srcElementStride,
    int32_t order, double *buffer, double *dst, int32_t count);

/**
 * dst(k) = det(src(k))
 *
 * Checks: null, count, size, stride, offset.
 * Serial up to 14400 by order*count.
 */
int32_t kormDet_ma_32f_P(
    const float *const *src, int32_t srcOffset, int32_t srcObjectStride, int32_t order, float *buffer,
    float *dst, int32_t count);

/**
 * dst(k) = det(src(k))
 *
 * Checks: null, count, size, stride, offset.
 * Serial up to 14400 by order*count.
 */
int32_t kormDet_ma_64f_P(
    const double *const *src, int32_t srcOffset, int32_t srcObjectStride, int32_t order, double *buffer,
    double *dst, int32_t count);

/** @} */


/**
 * @defgroup norms Traces and norms
 * `kormTrace` adds the elements of the diagonal of a square matrix, `kormFrobNorm` is the square root of the sum of the squares
 * of all elements of any matrix. A single form writes one element, an array form one for each object, in a row: dst has no
 * strides in any layout.
 *
 * Sums: every square and every addition is rounded to the element type. The order of additions is fixed for a form, sizes,
 * choice of strides and, in `kormFrobNorm`, for rows that touch or don't; docs/numerics.md shows it.
 *
 * Scale: squares are formed as they are. The norm of a matrix with large elements is infinity, that of one with small elements
 * zero or a number with few bits, with ::korStatusOk. Beyond the scales of docs/ranges.md scale by a power of 2 first, and the
 * norm back.
 *
 * Overlap: dst must not overlap src.
 *
 * Status: ::korStatusOk, ::korStatusNullPointer, ::korStatusBadSize, ::korStatusBadStride; array forms
 * ::korStatusBadCount; list and pointer forms ::korStatusBadOffset. Other than with ::korStatusOk nothing is written.
 * @{
 */

/**
 * dst = trace of src
 *
 * Checks: null, size, stride.
 */
int32_t kormTrace_m_32f(
    const float *src, int32_t srcRowStride, int32_t srcElementStride, int32_t order, float *dst);

/**
 * dst = trace of src
 *
 * Checks: null, size, stride.
 */
int32_t kormTrace_m_64f(
    const double *src, int32_t srcRowStride, int32_t srcElementStride, int32_t order, double *dst);

/**
 * dst = trace of src
 *
 * Checks: null, size, offset.
 */
int32_t kormTrace_m_32f_P(const float *const *src, int32_t srcOffset, int32_t order, float *dst);

/**
 * dst = trace of src
 *
 * Checks: null, size, offset.
 */
int32_t kormTrace_m_64f_P(const double *const *src, int32_t srcOffset, int32_t order, double *dst);

/**
 * dst(k) = trace of src(k)
 *
 * Checks: null, count, size, stride.
 * Serial below 3601 by order*count.
 */
int32_t kormTrace_ma_32f(
    const float *src, int32_t srcObjectStride, int32_t srcRowStride, int32_t srcElementStride, int32_t order,
    float *dst, int32_t count);

/**
 * dst(k) = trace of src(k)
 *
 * Checks: null, count, size, stride.
 * Serial below 3601 by order*count.
 */
int32_t kormTrace_ma_64f(
    const double *src, int32_t srcObjectStride, int32_t srcRowStride, int32_t srcElementStride, int32_t order,
    double *dst, int32_t count);

/**
 * dst(k) = trace of src(k)
 *
 * Checks: null, count, size, stride, offset.
 * Serial below 3601 by order*count.
 */
int32_t kormTrace_ma_32f_L(
    const float *const *src, int32_t srcOffset, int32_t srcRowStride, int32_t srcElementStride, int32_t order,
    float *dst, int32_t count);

/**
 * dst(k) = trace of src(k)
 *
 * Checks: null, count, size, stride, offset.
 * Serial below 3601 by order*count.
 */
int32_t kormTrace_ma_64f_L(
    const double *const *src, int32_t srcOffset, int32_t srcRowStride, int32_t srcElementStride,
    int32_t order, double *dst, int32_t count);

/**
 * dst(k) = trace of src(k)
 *
 * Checks: null, count, size, stride, offset.
 * Serial below 3601 by order*count.
 */
int32_t kormTrace_ma_32f_P(
    const float *const *src, int32_t srcOffset, int32_t srcObjectStride, int32_t order, float *dst,
    int32_t count);

/**
 * dst(k) = trace of src(k)
 *
 * Checks: null, count, size, stride, offset.
 * Serial below 3601 by order*count.
 */
int32_t kormTrace_ma_64f_P(
    const double *const *src, int32_t srcOffset, int32_t srcObjectStride, int32_t order, double *dst,
    int32_t count);

/**
 * dst = root of the sum of the squares of src
 *
 * Checks: null, size, stride.
 */
int32_t kormFrobNorm_m_32f(
    const float *src, int32_t srcRowStride, int32_t srcElementStride, int32_t width, int32_t height,
    float *dst);

/**
 * dst = root of the sum of the squares of src
 *
 * Checks: null, size, stride.
 */
int32_t kormFrobNorm_m_64f(
    const double *src, int32_t srcRowStride, int32_t srcElementStride, int32_t width, int32_t height,
    double *dst);

/**
 * dst = root of the sum of the squares of src
 *
 * Checks: null, size, offset.
 */
int32_t kormFrobNorm_m_32f_P(
    const float *const *src, int32_t srcOffset, int32_t width, int32_t height, float *dst);

/**
 * dst = root of the sum of the squares of src
 *
 * Checks: null, size, offset.
 */
int32_t kormFrobNorm_m_64f_P(
    const double *const *src, int32_t srcOffset, int32_t width, int32_t height, double *dst);

/**
 * dst(k) = root of the sum of the squares of src(k)
 *
 * Checks: null, count, size, stride.
 * Serial below 2501 (1801 if an element stride is not 4) by width*height*count.
 */
int32_t kormFrobNorm_ma_32f(
    const float *src, int32_t srcObjectStride, int32_t srcRowStride, int32_t srcElementStride, int32_t width,
    int32_t height, float *dst, int32_t count);

/**
 * dst(k) = root of the sum of the squares of src(k)
 *
 * Checks: null, count, size, stride.
 * Serial below 1801 (1501 if an element stride is not 8) by width*height*count.
 */
int32_t kormFrobNorm_ma_64f(
    const double *src, int32_t srcObjectStride, int32_t srcRowStride, int32_t srcElementStride, int32_t width,
    int32_t height, double *dst, int32_t count);

/**
 * dst(k) = root of the sum of the squares of src(k)
 *
 * Checks: null, count, size, stride, offset.
 * Serial below 1601 by width*height*count.
 */
int32_t kormFrobNorm_ma_32f_L(
    const float *const *src, int32_t srcOffset, int32_t srcRowStride, int32_t srcElementStride, int32_t width,
    int32_t height, float *dst, int32_t count);

/**
 * dst(k) = root of the sum of the squares of src(k)
 *
 * Checks: null, count, size, stride, offset.
 * Serial below 1601 by width*height*count.
 */
int32_t kormFrobNorm_ma_64f_L(
    const double *const *src, int32_t srcOffset, int32_t srcRowStride, int32_t srcElementStride,
    int32_t width, int32_t height, double *dst, int32_t count);

/**
 * dst(k) = root of the sum of the squares of src(k)
 *
 * Checks: null, count, size, stride, offset.
 * Serial below 1501 by width*height*count.
 */
int32_t kormFrobNorm_ma_32f_P(
    const float *const *src, int32_t srcOffset, int32_t srcObjectStride, int32_t width, int32_t height,
    float *dst, int32_t count);

/**
 * dst(k) = root of the sum of the squares of src(k)
 *
 * Checks: null, count, size, stride, offset.
 * Serial below 2501 by width*height*count.
 */
int32_t kormFrobNorm_ma_64f_P(
    const double *const *src, int32_t srcOffset, int32_t srcObjectStride, int32_t width, int32_t height,
    double *dst, int32_t count);

/** @} */


/**
 * @defgroup lu_decomposition LU decomposition
 * P A = L U with row pivoting. Rows are not moved: row `pivots[k]` of dst holds row k of U from column k on, and left of
 * it the multipliers of L, whose diagonal of ones is not stored. `pivots` are `order` indices from 0, for each object
 * of an array those behind the other's; what they hold before the call doesn't matter. dst and `pivots` together are
 * what `kormLUBackSubst` solves with.
 *
 * Singular: orders 3 to 6 when a pivot is below twice the smallest normal number of the type; all other orders when a
 * pivot is not above 2^-23 (`32f`) or 2^-52 (`64f`). An array call on one thread stops at the first singular object and
 * leaves later ones untouched; spread over threads, each run of objects stops for itself. Of the singular object, orders 3
 * to 6 have written the rows of dst that were finished (in the pointer layout none) and `pivots`; other orders have
 * written the matrix as far as it was eliminated.
 *
 * Scale: at orders 1, 2, 7 and above a good matrix with small elements is refused as singular. Scale it by a power of 2 first,
 * and b with it: the solution stays. docs/ranges.md shows from which scale on nothing is refused.
 *
 * Overlap: dst may be src, at the same place with the same strides. Any other overlap leaves dst undefined.
 *
 * Status: ::korStatusOk, ::korStatusSingular, ::korStatusNullPointer, ::korStatusBadSize, ::korStatusBadStride; array
 * forms ::korStatusBadCount; list and pointer forms ::korStatusBadOffset. After a failed check nothing is written.
 * @{
 */

/**
 * dst, pivots = L U of src with row pivoting
 *
 * Checks: null, size, stride.
 */
int32_t kormLUDecomp_m_32f(
    const float *src, int32_t srcRowStride, int32_t srcElementStride, int32_t *pivots, float *dst,
    int32_t dstRowStride, int32_t dstElementStride, int32_t order);

/**
 * dst, pivots = L U of src with row pivoting
 *
 * Checks: null, size, stride.
 */
int32_t kormLUDecomp_m_64f(
    const double *src, int32_t srcRowStride, int32_t srcElementStride, int32_t *pivots, double *dst,
    int32_t dstRowStride, int32_t dstElementStride, int32_t order);

/**
 * dst, pivots = L U of src with row pivoting
 *
 * Checks: null, size, offset.
 */
int32_t kormLUDecomp_m_32f_P(
    const float *const *src, int32_t srcOffset, int32_t *pivots, float *const *dst, int32_t dstOffset,
    int32_t order);

/**
 * dst, pivots = L U of src with row pivoting
 *
 * Checks: null, size, offset.
 */
int32_t kormLUDecomp_m_64f_P(
    const double *const *src, int32_t srcOffset, int32_t *pivots, double *const *dst, int32_t dstOffset,
    int32_t order);

/**
 * dst, pivots = L U of src with row pivoting
 *
 * Checks: null, count, size, stride.
 * Serial below 1001 by order*order*count.
 */
int32_t kormLUDecomp_ma_32f(
    const float *src, int32_t srcObjectStride, int32_t srcRowStride, int32_t srcElementStride,
    int32_t *pivots, float *dst, int32_t dstObjectStride, int32_t dstRowStride, int32_t dstElementStride,
    int32_t order, int32_t count);

/**
 * dst, pivots = L U of src with row pivoting
 *
 * Checks: null, count, size, stride.
 * Serial below 1001 by order*order*count.
 */
int32_t kormLUDecomp_ma_64f(
    const double *src, int32_t srcObjectStride, int32_t srcRowStride, int32_t srcElementStride,
    int32_t *pivots, double *dst, int32_t dstObjectStride, int32_t dstRowStride, int32_t dstElementStride,
    int32_t order, int32_t count);

/**
 * dst, pivots = L U of src with row pivoting
 *
 * Checks: null, count, size, stride, offset.
 * Serial below 1001 by order*order*count.
 */
int32_t kormLUDecomp_ma_32f_L(
    const float *const *src, int32_t srcOffset, int32_t srcRowStride, int32_t srcElementStride,
    int32_t *pivots, float *const *dst, int32_t dstOffset, int32_t dstRowStride, int32_t dstElementStride,
    int32_t order, int32_t count);

/**
 * dst, pivots = L U of src with row pivoting
 *
 * Checks: null, count, size, stride, offset.
 * Serial below 1001 by order*order*count.
 */
int32_t kormLUDecomp_ma_64f_L(
    const double *const *src, int32_t srcOffset, int32_t srcRowStride, int32_t srcElementStride,
    int32_t *pivots, double *const *dst, int32_t dstOffset, int32_t dstRowStride, int32_t dstElementStride,
    int32_t order, int32_t count);

/**
 * dst, pivots = L U of src with row pivoting
 *
 * Checks: null, count, size, stride, offset.
 * Serial below 1001 by order*order*count.
 */
int32_t kormLUDecomp_ma_32f_P(
    const float *const *src, int32_t srcOffset, int32_t srcObjectStride, int32_t *pivots, float *const *dst,
    int32_t dstOffset, int32_t dstObjectStride, int32_t order, int32_t count);

/**
 * dst, pivots = L U of src with row pivoting
 *
 * Checks: null, count, size, stride, offset.
 * Serial below 1001 by order*order*count.
 */
int32_t kormLUDecomp_ma_64f_P(
    const double *const *src, int32_t srcOffset, int32_t srcObjectStride, int32_t *pivots, double *const *dst,
    int32_t dstOffset, int32_t dstObjectStride, int32_t order, int32_t count);

/** @} */


/**
 * @defgroup lu_solve Solving with an LU decomposition
 * Solves A x = b: src1 and `pivots` are dst and `pivots` of a `kormLUDecomp` call of the same order, src2 is b, dst is x.
 * One matrix may serve an array of vectors (`mva`).
 *
 * No value is tested: a zero pivot gives infinities or NaN, and `pivots` that are no permutation read what they name.
 *
 * Overlap: at orders 3 to 6 dst may be src2, at the same place with the same strides. Any other overlap, and any at all at
 * other orders, leaves dst undefined.
 *
 * Status: ::korStatusOk, ::korStatusNullPointer, ::korStatusBadSize, ::korStatusBadStride; array forms
 * ::korStatusBadCount; list and pointer forms ::korStatusBadOffset. Other than with ::korStatusOk nothing is written.
 * @{
 */

/**
 * src1 dst = src2, src1 factored
 *
 * Checks: null, size, stride.
 */
int32_t kormLUBackSubst_mv_32f(
    const float *src1, int32_t src1RowStride, int32_t src1ElementStride, const int32_t *pivots,
    const float *src2, int32_t src2ElementStride, float *dst, int32_t dstElementStride, int32_t order);

/**
 * src1 dst = src2, src1 factored
 *
 * Checks: null, size, stride.
 */
int32_t kormLUBackSubst_mv_64f(
    const double *src1, int32_t src1RowStride, int32_t src1ElementStride, const int32_t *pivots,
    const double *src2, int32_t src2ElementStride, double *dst, int32_t dstElementStride, int32_t order);

/**
 * src1 dst = src2, src1 factored
 *
 * Checks: null, size, offset.
 */
int32_t kormLUBackSubst_mv_32f_P(
    const float *const *src1, int32_t src1Offset, const int32_t *pivots, const float *const *src2,
    int32_t src2Offset, float *const *dst, int32_t dstOffset, int32_t order);

/**
 * src1 dst = src2, src1 factored
 *
 * Checks: null, size, offset.
 */
int32_t kormLUBackSubst_mv_64f_P(
    const double *const *src1, int32_t src1Offset, const int32_t *pivots, const double *const *src2,
    int32_t src2Offset, double *const *dst, int32_t dstOffset, int32_t order);

/**
 * src1 dst(k) = src2(k), src1 factored
 *
 * Checks: null, count, size, stride.
 * Serial below 701 by (order + 2*count)*order.
 */
int32_t kormLUBackSubst_mva_32f(
    const float *src1, int32_t src1RowStride, int32_t src1ElementStride, const int32_t *pivots,
    const float *src2, int32_t src2ObjectStride, int32_t src2ElementStride, float *dst,
    int32_t dstObjectStride, int32_t dstElementStride, int32_t order, int32_t count);

/**
 * src1 dst(k) = src2(k), src1 factored
 *
 * Checks: null, count, size, stride.
 * Serial below 701 by (order + 2*count)*order.
 */
int32_t kormLUBackSubst_mva_64f(
    const double *src1, int32_t src1RowStride, int32_t src1ElementStride, const int32_t *pivots,
    const double *src2, int32_t src2ObjectStride, int32_t src2ElementStride, double *dst,
    int32_t dstObjectStride, int32_t dstElementStride, int32_t order, int32_t count);

/**
 * src1 dst(k) = src2(k), src1 factored
 *
 * Checks: null, count, size, stride, offset.
 * Serial below 701 by (order + 2*count)*order.
 */
int32_t kormLUBackSubst_mva_32f_L(
    const float *src1, int32_t src1RowStride, int32_t src1ElementStride, const int32_t *pivots,
    const float *const *src2, int32_t src2Offset, int32_t src2ElementStride, float *const *dst,
    int32_t dstOffset, int32_t dstElementStride, int32_t order, int32_t count);

/**
 * src1 dst(k) = src2(k), src1 factored
 *
 * Checks: null, count, size, stride, offset.
 * Serial below 701 by (order + 2*count)*order.
 */
int32_t kormLUBackSubst_mva_64f_L(
    const double *src1, int32_t src1RowStride, int32_t src1ElementStride, const int32_t *pivots,
    const double *const *src2, int32_t src2Offset, int32_t src2ElementStride, double *const *dst,
    int32_t dstOffset, int32_t dstElementStride, int32_t order, int32_t count);

/**
 * src1 dst(k) = src2(k), src1 factored
 *
 * Checks: null, count, size, stride, offset.
 * Serial below 701 by (order + 2*count)*order.
 */
int32_t kormLUBackSubst_mva_32f_P(
    const float *const *src1, int32_t src1Offset, const int32_t *pivots, const float *const *src2,
    int32_t src2Offset, int32_t src2ObjectStride, float *const *dst, int32_t dstOffset,
    int32_t dstObjectStride, int32_t order, int32_t count);

/**
 * src1 dst(k) = src2(k), src1 factored
 *
 * Checks: null, count, size, stride, offset.
 * Serial below 701 by (order + 2*count)*order.
 */
int32_t kormLUBackSubst_mva_64f_P(
    const double *const *src1, int32_t src1Offset, const int32_t *pivots, const double *const *src2,
    int32_t src2Offset, int32_t src2ObjectStride, double *const *dst, int32_t dstOffset,
    int32_t dstObjectStride, int32_t order, int32_t count);

/**
 * src1(k) dst(k) = src2(k), src1 factored
 *
 * Checks: null, count, size, stride.
 * Serial below 1201 by (order + 2)*order*count.
 */
int32_t kormLUBackSubst_mava_32f(
    const float *src1, int32_t src1ObjectStride, int32_t src1RowStride, int32_t src1ElementStride,
    const int32_t *pivots, const float *src2, int32_t src2ObjectStride, int32_t src2ElementStride, float *dst,
    int32_t dstObjectStride, int32_t dstElementStride, int32_t order, int32_t count);

/**
 * src1(k) dst(k) = src2(k), src1 factored
 *
 * Checks: null, count, size, stride.
 * Serial below 1201 by (order + 2)*order*count.
 */
int32_t kormLUBackSubst_mava_64f(
    const double *src1, int32_t src1ObjectStride, int32_t src1RowStride, int32_t src1ElementStride,
    const int32_t *pivots, const double *src2, int32_t src2ObjectStride, int32_t src2ElementStride,
    double *dst, int32_t dstObjectStride, int32_t dstElementStride, int32_t order, int32_t count);

/**
 * src1(k) dst(k) = src2(k), src1 factored
 *
 * Checks: null, count, size, stride, offset.
 * Serial below 1201 by (order + 2)*order*count.
 */
int32_t kormLUBackSubst_mava_32f_L(
    const float *const *src1, int32_t src1Offset, int32_t src1RowStride, int32_t src1ElementStride,
    const int32_t *pivots, const float *const *src2, int32_t src2Offset, int32_t src2ElementStride,
    float *const *dst, int32_t dstOffset, int32_t dstElementStride, int32_t order, int32_t count);

/**
 * src1(k) dst(k) = src2(k), src1 factored
 *
 * Checks: null, count, size, stride, offset.
 * Serial below 1201 by (order + 2)*order*count.
 */
int32_t kormLUBackSubst_mava_64f_L(
    const double *const *src1, int32_t src1Offset, int32_t src1RowStride, int32_t src1ElementStride,
    const int32_t *pivots, const double *const *src2, int32_t src2Offset, int32_t src2ElementStride,
    double *const *dst, int32_t dstOffset, int32_t dstElementStride, int32_t order, int32_t count);

/**
 * src1(k) dst(k) = src2(k), src1 factored
 *
 * Checks: null, count, size, stride, offset.
 * Serial below 1201 by (order + 2)*order*count.
 */
int32_t kormLUBackSubst_mava_32f_P(
    const float *const *src1, int32_t src1Offset, int32_t src1ObjectStride, const int32_t *pivots,
    const float *const *src2, int32_t src2Offset, int32_t src2ObjectStride, float *const *dst,
    int32_t dstOffset, int32_t dstObjectStride, int32_t order, int32_t count);

/**
 * src1(k) dst(k) = src2(k), src1 factored
 *
 * Checks: null, count, size, stride, offset.
 * Serial below 1201 by (order + 2)*order*count.
 */
int32_t kormLUBackSubst_mava_64f_P(
    const double *const *src1, int32_t src1Offset, int32_t src1ObjectStride, const int32_t *pivots,
    const double *const *src2, int32_t src2Offset, int32_t src2ObjectStride, double *const *dst,
    int32_t dstOffset, int32_t dstObjectStride, int32_t order, int32_t count);

/** @} */


/**
 * @defgroup cholesky_decomposition Cholesky decomposition
 * src = L L^T of a symmetric positive definite matrix. Of src only the lower triangle with the diagonal is read, of dst
 * only that is written: what stands above the diagonal may be anything. dst receives L, but on its diagonal the
 * reciprocals of L's, so that nothing is divided when `kormCholeskyBackSubst` solves with it.
 *
 * The diagonal of `32f` is the processor's approximate reciprocal root, refined by one Newton step to about 22 bits; that
 * of `64f` takes a root and a division. The last bits of `32f` depend on the processor and, at orders 3 to 6, on the
 * form: docs/numerics.md tells.
 *
 * Not positive definite: when a pivot is not above zero. In the pointer layout the limit at order 3 is 2^-23, and in
 * `kormCholeskyDecomp_ma_64f` with an element stride other than the element size it is 2^-52 at all orders but 3 to 5.
 * A NaN passes. The rows of dst before the failing one are then complete, that one is up to its diagonal, the rest is
 * untouched. An array call on one thread stops there; spread over threads, each run of objects stops for itself.
 * `kormCholeskyDecomp_ma_32f` takes plain matrices of orders 3 to 6 in fours: where one fails, all of its four are left
 * in that state.
 *
 * Scale: beyond the scales of docs/ranges.md, which the limit of 2^-52 makes narrow for the strided arrays, scale the matrix by
 * a power of 2 first, and b with it: the solution stays. The matrix of normal equations, A^T A, has the square of A's
 * condition: for least squares prefer `kormQRDecomp` of A.
 *
 * Overlap: dst may be src, at the same place with the same strides. Any other overlap leaves dst undefined.
 *
 * Status: ::korStatusOk, ::korStatusNotPositiveDefinite, ::korStatusNullPointer, ::korStatusBadSize, ::korStatusBadStride;
 * array forms ::korStatusBadCount; list and pointer forms ::korStatusBadOffset. After a failed check nothing is written.
 * @{
 */

/**
 * dst dst^T = src, reciprocals on the diagonal of dst
 *
 * Checks: null, size, stride.
 */
int32_t kormCholeskyDecomp_m_32f(
    const float *src, int32_t srcRowStride, int32_t srcElementStride, float *dst, int32_t dstRowStride,
    int32_t dstElementStride, int32_t order);

/**
 * dst dst^T = src, reciprocals on the diagonal of dst
 *
 * Checks: null, size, stride.
 */
int32_t kormCholeskyDecomp_m_64f(
    const double *src, int32_t srcRowStride, int32_t srcElementStride, double *dst, int32_t dstRowStride,
    int32_t dstElementStride, int32_t order);

/**
 * dst dst^T = src, reciprocals on the diagonal of dst
 *
 * Checks: null, size, offset.
 */
int32_t kormCholeskyDecomp_m_32f_P(
    const float *const *src, int32_t srcOffset, float *const *dst, int32_t dstOffset, int32_t order);

/**
 * dst dst^T = src, reciprocals on the diagonal of dst
 *
 * Checks: null, size, offset.
 */
int32_t kormCholeskyDecomp_m_64f_P(
    const double *const *src, int32_t srcOffset, double *const *dst, int32_t dstOffset, int32_t order);

/**
 * dst(k) dst(k)^T = src(k), reciprocals on the diagonal of dst(k)
 *
 * Checks: null, count, size, stride.
 * Serial below 7501 by order*order*count.
 */
int32_t kormCholeskyDecomp_ma_32f(
    const float *src, int32_t srcObjectStride, int32_t srcRowStride, int32_t srcElementStride, float *dst,
    int32_t dstObjectStride, int32_t dstRowStride, int32_t dstElementStride, int32_t order, int32_t count);

/**
 * dst(k) dst(k)^T = src(k), reciprocals on the diagonal of dst(k)
 *
 * Checks: null, count, size, stride.
 * Serial below 2001 by order*order*count.
 */
int32_t kormCholeskyDecomp_ma_64f(
    const double *src, int32_t srcObjectStride, int32_t srcRowStride, int32_t srcElementStride, double *dst,
    int32_t dstObjectStride, int32_t dstRowStride, int32_t dstElementStride, int32_t order, int32_t count);

/**
 * dst(k) dst(k)^T = src(k), reciprocals on the diagonal of dst(k)
 *
 * Checks: null, count, size, stride, offset.
 * Serial below 2001 by order*order*count.
 */
int32_t kormCholeskyDecomp_ma_32f_L(
    const float *const *src, int32_t srcOffset, int32_t srcRowStride, int32_t srcElementStride,
    float *const *dst, int32_t dstOffset, int32_t dstRowStride, int32_t dstElementStride, int32_t order,
    int32_t count);

/**
 * dst(k) dst(k)^T = src(k), reciprocals on the diagonal of dst(k)
 *
 * Checks: null, count, size, stride, offset.
 * Serial below 721 (2001 if an element stride is not 8) by order*order*count.
 */
int32_t kormCholeskyDecomp_ma_64f_L(
    const double *const *src, int32_t srcOffset, int32_t srcRowStride, int32_t srcElementStride,
    double *const *dst, int32_t dstOffset, int32_t dstRowStride, int32_t dstElementStride, int32_t order,
    int32_t count);

/**
 * dst(k) dst(k)^T = src(k), reciprocals on the diagonal of dst(k)
 *
 * Checks: null, count, size, stride, offset.
 * Serial below 2001 by order*order*count.
 */
int32_t kormCholeskyDecomp_ma_32f_P(
    const float *const *src, int32_t srcOffset, int32_t srcObjectStride, float *const *dst, int32_t dstOffset,
    int32_t dstObjectStride, int32_t order, int32_t count);

/**
 * dst(k) dst(k)^T = src(k), reciprocals on the diagonal of dst(k)
 *
 * Checks: null, count, size, stride, offset.
 * Serial below 2001 by order*order*count.
 */
int32_t kormCholeskyDecomp_ma_64f_P(
    const double *const *src, int32_t srcOffset, int32_t srcObjectStride, double *const *dst,
    int32_t dstOffset, int32_t dstObjectStride, int32_t order, int32_t count);

/** @} */


/**
 * @defgroup cholesky_solve Solving with a Cholesky decomposition
 * Solves A x = b: src1 is dst of a `kormCholeskyDecomp` call of the same order, src2 is b, dst is x. One matrix may serve an
 * array of vectors (`mva`). Only the lower triangle of src1 is read, whose diagonal holds reciprocals: nothing is divided.
 *
 * No value is tested: a zero or an infinity on the diagonal spreads.
 *
 * Overlap: dst may be src2, at the same place with the same strides. Any other overlap leaves dst undefined.
 *
 * Status: ::korStatusOk, ::korStatusNullPointer, ::korStatusBadSize, ::korStatusBadStride; array forms
 * ::korStatusBadCount; list and pointer forms ::korStatusBadOffset. Other than with ::korStatusOk nothing is written.
 * `kormCholeskyBackSubst_mva_32f_L` and `kormCholeskyBackSubst_mva_64f_L` look at strides and offsets before sizes, and
 * at `count` last.
 * @{
 */

/**
 * src1 dst = src2, src1 factored
 *
 * Checks: null, size, stride.
 */
int32_t kormCholeskyBackSubst_mv_32f(
    const float *src1, int32_t src1RowStride, int32_t src1ElementStride, const float *src2,
    int32_t src2ElementStride, float *dst, int32_t dstElementStride, int32_t order);

/**
 * src1 dst = src2, src1 factored
 *
 * Checks: null, size, stride.
 */
int32_t kormCholeskyBackSubst_mv_64f(
    const double *src1, int32_t src1RowStride, int32_t src1ElementStride, const double *src2,
    int32_t src2ElementStride, double *dst, int32_t dstElementStride, int32_t order);

/**
 * src1 dst = src2, src1 factored
 *
 * Checks: null, size, offset.
 */
int32_t kormCholeskyBackSubst_mv_32f_P(
    const float *const *src1, int32_t src1Offset, const float *const *src2, int32_t src2Offset,
    float *const *dst, int32_t dstOffset, int32_t order);

/**
 * src1 dst = src2, src1 factored
 *
 * Checks: null, size, offset.
 */
int32_t kormCholeskyBackSubst_mv_64f_P(
    const double *const *src1, int32_t src1Offset, const double *const *src2, int32_t src2Offset,
    double *const *dst, int32_t dstOffset, int32_t order);

/**
 * src1 dst(k) = src2(k), src1 factored
 *
 * Checks: null, count, size, stride.
 * Serial below 1201 by (order + 2*count)*order.
 */
int32_t kormCholeskyBackSubst_mva_32f(
    const float *src1, int32_t src1RowStride, int32_t src1ElementStride, const float *src2,
    int32_t src2ObjectStride, int32_t src2ElementStride, float *dst, int32_t dstObjectStride,
    int32_t dstElementStride, int32_t order, int32_t count);

/**
 * src1 dst(k) = src2(k), src1 factored
 *
 * Checks: null, count, size, stride.
 * Serial below 721 by (order + 2*count)*order.
 */
int32_t kormCholeskyBackSubst_mva_64f(
    const double *src1, int32_t src1RowStride, int32_t src1ElementStride, const double *src2,
    int32_t src2ObjectStride, int32_t src2ElementStride, double *dst, int32_t dstObjectStride,
    int32_t dstElementStride, int32_t order, int32_t count);

/**
 * src1 dst(k) = src2(k), src1 factored
 *
 * Checks: null, stride, offset, size, count.
 * Serial below 721 by (order + 2*count)*order.
 */
int32_t kormCholeskyBackSubst_mva_32f_L(
    const float *src1, int32_t src1RowStride, int32_t src1ElementStride, const float *const *src2,
    int32_t src2Offset, int32_t src2ElementStride, float *const *dst, int32_t dstOffset,
    int32_t dstElementStride, int32_t order, int32_t count);

/**
 * src1 dst(k) = src2(k), src1 factored
 *
 * Checks: null, stride, offset, size, count.
 * Serial below 721 by (order + 2*count)*order.
 */
int32_t kormCholeskyBackSubst_mva_64f_L(
    const double *src1, int32_t src1RowStride, int32_t src1ElementStride, const double *const *src2,
    int32_t src2Offset, int32_t src2ElementStride, double *const *dst, int32_t dstOffset,
    int32_t dstElementStride, int32_t order, int32_t count);

/**
 * src1 dst(k) = src2(k), src1 factored
 *
 * Checks: null, count, size, stride, offset.
 * Serial below 721 by (order + 2*count)*order.
 */
int32_t kormCholeskyBackSubst_mva_32f_P(
    const float *const *src1, int32_t src1Offset, const float *const *src2, int32_t src2Offset,
    int32_t src2ObjectStride, float *const *dst, int32_t dstOffset, int32_t dstObjectStride, int32_t order,
    int32_t count);

/**
 * src1 dst(k) = src2(k), src1 factored
 *
 * Checks: null, count, size, stride, offset.
 * Serial below 721 by (order + 2*count)*order.
 */
int32_t kormCholeskyBackSubst_mva_64f_P(
    const double *const *src1, int32_t src1Offset, const double *const *src2, int32_t src2Offset,
    int32_t src2ObjectStride, double *const *dst, int32_t dstOffset, int32_t dstObjectStride, int32_t order,
    int32_t count);

/**
 * src1(k) dst(k) = src2(k), src1 factored
 *
 * Checks: null, count, size, stride.
 * Serial below 2051 (1701 if an element stride is not 4) by (order + 2)*order*count.
 */
int32_t kormCholeskyBackSubst_mava_32f(
    const float *src1, int32_t src1ObjectStride, int32_t src1RowStride, int32_t src1ElementStride,
    const float *src2, int32_t src2ObjectStride, int32_t src2ElementStride, float *dst,
    int32_t dstObjectStride, int32_t dstElementStride, int32_t order, int32_t count);

/**
 * src1(k) dst(k) = src2(k), src1 factored
 *
 * Checks: null, count, size, stride.
 * Serial below 1701 by (order + 2)*order*count.
 */
int32_t kormCholeskyBackSubst_mava_64f(
    const double *src1, int32_t src1ObjectStride, int32_t src1RowStride, int32_t src1ElementStride,
    const double *src2, int32_t src2ObjectStride, int32_t src2ElementStride, double *dst,
    int32_t dstObjectStride, int32_t dstElementStride, int32_t order, int32_t count);

/**
 * src1(k) dst(k) = src2(k), src1 factored
 *
 * Checks: null, count, size, stride, offset.
 * Serial below 1701 by (order + 2)*order*count.
 */
int32_t kormCholeskyBackSubst_mava_32f_L(
    const float *const *src1, int32_t src1Offset, int32_t src1RowStride, int32_t src1ElementStride,
    const float *const *src2, int32_t src2Offset, int32_t src2ElementStride, float *const *dst,
    int32_t dstOffset, int32_t dstElementStride, int32_t order, int32_t count);

/**
 * src1(k) dst(k) = src2(k), src1 factored
 *
 * Checks: null, count, size, stride, offset.
 * Serial below 1701 by (order + 2)*order*count.
 */
int32_t kormCholeskyBackSubst_mava_64f_L(
    const double *const *src1, int32_t src1Offset, int32_t src1RowStride, int32_t src1ElementStride,
    const double *const *src2, int32_t src2Offset, int32_t src2ElementStride, double *const *dst,
    int32_t dstOffset, int32_t dstElementStride, int32_t order, int32_t count);

/**
 * src1(k) dst(k) = src2(k), src1 factored
 *
 * Checks: null, count, size, stride, offset.
 * Serial below 1701 by (order + 2)*order*count.
 */
int32_t kormCholeskyBackSubst_mava_32f_P(
    const float *const *src1, int32_t src1Offset, int32_t src1ObjectStride, const float *const *src2,
    int32_t src2Offset, int32_t src2ObjectStride, float *const *dst, int32_t dstOffset,
    int32_t dstObjectStride, int32_t order, int32_t count);

/**
 * src1(k) dst(k) = src2(k), src1 factored
 *
 * Checks: null, count, size, stride, offset.
 * Serial below 2051 by (order + 2)*order*count.
 */
int32_t kormCholeskyBackSubst_mava_64f_P(
    const double *const *src1, int32_t src1Offset, int32_t src1ObjectStride, const double *const *src2,
    int32_t src2Offset, int32_t src2ObjectStride, double *const *dst, int32_t dstOffset,
    int32_t dstObjectStride, int32_t order, int32_t count);

/** @} */


/**
 * @defgroup qr_decomposition QR decomposition
 * A = Q R by Householder reflections, of matrices of at least as many rows as columns. dst holds R on and above the diagonal;
 * below it stands, column by column, what the reflections are made of: H(j) = I - 2 v v' / (v' v), where v is 1 in row j, zero
 * above and column j of dst below. R = ... H(1) H(0) A. A square matrix needs no reflection for its last column, which is
 * therefore not tested. dst is what `kormQRBackSubst` solves with, by least squares where there are more rows than columns.
 *
 * `buffer` is scratch of `height` elements of the call's type, whatever its content. It must not be null. A call that is
 * spread over threads doesn't touch it.
 *
 * Division by zero: when the sum of the squares of a column, from the diagonal on and after the reflections before it, is
 * below 2^-23 (`32f`) or 2^-52 (`64f`). dst then holds the matrix after the reflections before that column. An array call on
 * one thread stops at the first such object and leaves later ones untouched; spread over threads, each run of objects stops for
 * itself.
 *
 * Scale: the limit doesn't follow the matrix's size, so a good matrix with small elements is refused, and squares of large
 * elements overflow with ::korStatusOk. Beyond the scales of docs/ranges.md scale the matrix by a power of 2 first, and b with
 * it: the solution stays.
 *
 * Overlap: dst may be src, at the same place with the same strides. Any other overlap leaves dst undefined.
 *
 * Status: ::korStatusOk, ::korStatusDivideByZero, ::korStatusNullPointer, ::korStatusBadSize, ::korStatusBadStride,
 * ::korStatusSizeMismatch where `width` is above `height`; array forms ::korStatusBadCount; list and pointer forms
 * ::korStatusBadOffset. After a failed check nothing is written.
 * @{
 */

/**
 * dst = reflections and R of src
 *
 * Checks: null, size, stride, match.
 * Sizes match when width <= height.
 */
int32_t kormQRDecomp_m_32f(
    const float *src, int32_t srcRowStride, int32_t srcElementStride, float *buffer, float *dst,
    int32_t dstRowStride, int32_t dstElementStride, int32_t width, int32_t height);

/**
 * dst = reflections and R of src
 *
 * Checks: null, size, stride, match.
 * Sizes match when width <= height.
 */
int32_t kormQRDecomp_m_64f(
    const double *src, int32_t srcRowStride, int32_t srcElementStride, double *buffer, double *dst,
    int32_t dstRowStride, int32_t dstElementStride, int32_t width, int32_t height);

/**
 * dst = reflections and R of src
 *
 * Checks: null, size, offset, match.
 * Sizes match when width <= height.
 */
int32_t kormQRDecomp_m_32f_P(
    const float *const *src, int32_t srcOffset, float *buffer, float *const *dst, int32_t dstOffset,
    int32_t width, int32_t height);

/**
 * dst = reflections and R of src
 *
 * Checks: null, size, offset, match.
 * Sizes match when width <= height.
 */
int32_t kormQRDecomp_m_64f_P(
    const double *const *src, int32_t srcOffset, double *buffer, double *const *dst, int32_t dstOffset,
    int32_t width, int32_t height);

/**
 * dst = reflections and R of src
 *
 * Checks: null, count, size, stride, match.
 * Sizes match when width <= height.
 * Serial below 2801 by width*2*height*count.
 */
int32_t kormQRDecomp_ma_32f(
    const float *src, int32_t srcObjectStride, int32_t srcRowStride, int32_t srcElementStride, float *buffer,
    float *dst, int32_t dstObjectStride, int32_t dstRowStride, int32_t dstElementStride, int32_t width,
    int32_t height, int32_t count);

/**
 * dst = reflections and R of src
 *
 * Checks: null, count, size, stride, match.
 * Sizes match when width <= height.
 * Serial below 2801 by width*2*height*count.
 */
int32_t kormQRDecomp_ma_64f(
    const double *src, int32_t srcObjectStride, int32_t srcRowStride, int32_t srcElementStride,
    double *buffer, double *dst, int32_t dstObjectStride, int32_t dstRowStride, int32_t dstElementStride,
    int32_t width, int32_t height, int32_t count);

/**
 * dst = reflections and R of src
 *
 * Checks: null, count, size, stride, offset, match.
 * Sizes match when width <= height.
 * Serial below 1801 by width*2*height*count.
 */
int32_t kormQRDecomp_ma_32f_L(
    const float *const *src, int32_t srcOffset, int32_t srcRowStride, int32_t srcElementStride, float *buffer,
    float *const *dst, int32_t dstOffset, int32_t dstRowStride, int32_t dstElementStride, int32_t width,
    int32_t height, int32_t count);

/**
 * dst = reflections and R of src
 *
 * Checks: null, count, size, stride, offset, match.
 * Sizes match when width <= height.
 * Serial below 1801 by width*2*height*count.
 */
int32_t kormQRDecomp_ma_64f_L(
    const double *const *src, int32_t srcOffset, int32_t srcRowStride, int32_t srcElementStride,
    double *buffer, double *const *dst, int32_t dstOffset, int32_t dstRowStride, int32_t dstElementStride,
    int32_t width, int32_t height, int32_t count);

/**
 * dst = reflections and R of src
 *
 * Checks: null, count, size, stride, offset, match.
 * Sizes match when width <= height.
 * Serial below 1801 by width*2*height*count.
 */
int32_t kormQRDecomp_ma_32f_P(
    const float *const *src, int32_t srcOffset, int32_t srcObjectStride, float *buffer, float *const *dst,
    int32_t dstOffset, int32_t dstObjectStride, int32_t width, int32_t height, int32_t count);

/**
 * dst = reflections and R of src
 *
 * Checks: null, count, size, stride, offset, match.
 * Sizes match when width <= height.
 * Serial below 1801 by width*2*height*count.
 */
int32_t kormQRDecomp_ma_64f_P(
    const double *const *src, int32_t srcOffset, int32_t srcObjectStride, double *buffer, double *const *dst,
    int32_t dstOffset, int32_t dstObjectStride, int32_t width, int32_t height, int32_t count);

/** @} */


/**
 * @defgroup qr_solve Solving with a QR decomposition
 * Solves A x = b, by least squares where A has more rows than columns: src1 is dst of a `kormQRDecomp` call of the same size,
 * src2 is b with `height` elements, dst is x with `width` elements. One matrix may serve an array of vectors (`mva`).
 *
 * `buffer` is scratch of `height` elements of the call's type, whatever its content. It must not be null. A call that is
 * spread over threads doesn't touch it.
 *
 * No value is tested: a zero on the diagonal of R, which the last column of a square matrix may have, gives infinities or NaN.
 *
 * Overlap: dst may be src2, at the same place with the same strides. Any other overlap leaves dst undefined.
 *
 * Status: ::korStatusOk, ::korStatusNullPointer, ::korStatusBadSize, ::korStatusBadStride, ::korStatusSizeMismatch where
 * `width` is above `height`; array forms ::korStatusBadCount; list and pointer forms ::korStatusBadOffset. Other than with
 * ::korStatusOk nothing is written.
 * @{
 */

/**
 * src1 dst = src2, src1 factored
 *
 * Checks: null, size, stride, match.
 * Sizes match when width <= height.
 */
int32_t kormQRBackSubst_mv_32f(
    const float *src1, int32_t src1RowStride, int32_t src1ElementStride, float *buffer, const float *src2,
    int32_t src2ElementStride, float *dst, int32_t dstElementStride, int32_t width, int32_t height);

/**
 * src1 dst = src2, src1 factored
 *
 * Checks: null, size, stride, match.
 * Sizes match when width <= height.
 */
int32_t kormQRBackSubst_mv_64f(
    const double *src1, int32_t src1RowStride, int32_t src1ElementStride, double *buffer, const double *src2,
    int32_t src2ElementStride, double *dst, int32_t dstElementStride, int32_t width, int32_t height);

/**
 * src1 dst = src2, src1 factored
 *
 * Checks: null, size, offset, match.
 * Sizes match when width <= height.
 */
int32_t kormQRBackSubst_mv_32f_P(
    const float *const *src1, int32_t src1Offset, float *buffer, const float *const *src2, int32_t src2Offset,
    float *const *dst, int32_t dstOffset, int32_t width, int32_t height);

/**
 * src1 dst = src2, src1 factored
 *
 * Checks: null, size, offset, match.
 * Sizes match when width <= height.
 */
int32_t kormQRBackSubst_mv_64f_P(
    const double *const *src1, int32_t src1Offset, double *buffer, const double *const *src2,
    int32_t src2Offset, double *const *dst, int32_t dstOffset, int32_t width, int32_t height);

/**
 * src1 dst(k) = src2(k), src1 factored
 *
 * Checks: null, count, size, stride, match.
 * Sizes match when width <= height.
 * Serial below 2801 by width*height + (height + width)*count.
 */
int32_t kormQRBackSubst_mva_32f(
    const float *src1, int32_t src1RowStride, int32_t src1ElementStride, float *buffer, const float *src2,
    int32_t src2ObjectStride, int32_t src2ElementStride, float *dst, int32_t dstObjectStride,
    int32_t dstElementStride, int32_t width, int32_t height, int32_t count);

/**
 * src1 dst(k) = src2(k), src1 factored
 *
 * Checks: null, count, size, stride, match.
 * Sizes match when width <= height.
 * Serial below 2801 by width*height + (height + width)*count.
 */
int32_t kormQRBackSubst_mva_64f(
    const double *src1, int32_t src1RowStride, int32_t src1ElementStride, double *buffer, const double *src2,
    int32_t src2ObjectStride, int32_t src2ElementStride, double *dst, int32_t dstObjectStride,
    int32_t dstElementStride, int32_t width, int32_t height, int32_t count);

/**
 * src1 dst(k) = src2(k), src1 factored
 *
 * Checks: null, count, size, stride, offset, match.
 * Sizes match when width <= height.
 * Serial below 1801 by width*height + (height + width)*count.
 */
int32_t kormQRBackSubst_mva_32f_L(
    const float *src1, int32_t src1RowStride, int32_t src1ElementStride, float *buffer,
    const float *const *src2, int32_t src2Offset, int32_t src2ElementStride, float *const *dst,
    int32_t dstOffset, int32_t dstElementStride, int32_t width, int32_t height, int32_t count);

/**
 * src1 dst(k) = src2(k), src1 factored
 *
 * Checks: null, count, size, stride, offset, match.
 * Sizes match when width <= height.
 * Serial below 1801 by width*height + (height + width)*count.
 */
int32_t kormQRBackSubst_mva_64f_L(
    const double *src1, int32_t src1RowStride, int32_t src1ElementStride, double *buffer,
    const double *const *src2, int32_t src2Offset, int32_t src2ElementStride, double *const *dst,
    int32_t dstOffset, int32_t dstElementStride, int32_t width, int32_t height, int32_t count);

/**
 * src1 dst(k) = src2(k), src1 factored
 *
 * Checks: null, count, size, stride, offset, match.
 * Sizes match when width <= height.
 * Serial below 1801 by width*height + (height + width)*count.
 */
int32_t kormQRBackSubst_mva_32f_P(
    const float *const *src1, int32_t src1Offset, float *buffer, const float *const *src2, int32_t src2Offset,
    int32_t src2ObjectStride, float *const *dst, int32_t dstOffset, int32_t dstObjectStride, int32_t width,
    int32_t height, int32_t count);

/**
 * src1 dst(k) = src2(k), src1 factored
 *
 * Checks: null, count, size, stride, offset, match.
 * Sizes match when width <= height.
 * Serial below 1801 by width*height + (height + width)*count.
 */
int32_t kormQRBackSubst_mva_64f_P(
    const double *const *src1, int32_t src1Offset, double *buffer, const double *const *src2,
    int32_t src2Offset, int32_t src2ObjectStride, double *const *dst, int32_t dstOffset,
    int32_t dstObjectStride, int32_t width, int32_t height, int32_t count);

/**
 * src1(k) dst(k) = src2(k), src1 factored
 *
 * Checks: null, count, size, stride, match.
 * Sizes match when width <= height.
 * Serial below 2801 by (width*(height + 1) + height)*count.
 */
int32_t kormQRBackSubst_mava_32f(
    const float *src1, int32_t src1ObjectStride, int32_t src1RowStride, int32_t src1ElementStride,
    float *buffer, const float *src2, int32_t src2ObjectStride, int32_t src2ElementStride, float *dst,
    int32_t dstObjectStride, int32_t dstElementStride, int32_t width, int32_t height, int32_t count);

/**
 * src1(k) dst(k) = src2(k), src1 factored
 *
 * Checks: null, count, size, stride, match.
 * Sizes match when width <= height.
 * Serial below 2801 by (width*(height + 1) + height)*count.
 */
int32_t kormQRBackSubst_mava_64f(
    const double *src1, int32_t src1ObjectStride, int32_t src1RowStride, int32_t src1ElementStride,
    double *buffer, const double *src2, int32_t src2ObjectStride, int32_t src2ElementStride, double *dst,
    int32_t dstObjectStride, int32_t dstElementStride, int32_t width, int32_t height, int32_t count);

/**
 * src1(k) dst(k) = src2(k), src1 factored
 *
 * Checks: null, count, size, stride, offset, match.
 * Sizes match when width <= height.
 * Serial below 1801 by (width*(height + 1) + height)*count.
 */
int32_t kormQRBackSubst_mava_32f_L(
    const float *const *src1, int32_t src1Offset, int32_t src1RowStride, int32_t src1ElementStride,
    float *buffer, const float *const *src2, int32_t src2Offset, int32_t src2ElementStride, float *const *dst,
    int32_t dstOffset, int32_t dstElementStride, int32_t width, int32_t height, int32_t count);

/**
 * src1(k) dst(k) = src2(k), src1 factored
 *
 * Checks: null, count, size, stride, offset, match.
 * Sizes match when width <= height.
 * Serial below 1801 by (width*(height + 1) + height)*count.
 */
int32_t kormQRBackSubst_mava_64f_L(
    const double *const *src1, int32_t src1Offset, int32_t src1RowStride, int32_t src1ElementStride,
    double *buffer, const double *const *src2, int32_t src2Offset, int32_t src2ElementStride,
    double *const *dst, int32_t dstOffset, int32_t dstElementStride, int32_t width, int32_t height,
    int32_t count);

/**
 * src1(k) dst(k) = src2(k), src1 factored
 *
 * Checks: null, count, size, stride, offset, match.
 * Sizes match when width <= height.
 * Serial below 1801 by (width*(height + 1) + height)*count.
 */
int32_t kormQRBackSubst_mava_32f_P(
    const float *const *src1, int32_t src1Offset, int32_t src1ObjectStride, float *buffer,
    const float *const *src2, int32_t src2Offset, int32_t src2ObjectStride, float *const *dst,
    int32_t dstOffset, int32_t dstObjectStride, int32_t width, int32_t height, int32_t count);

/**
 * src1(k) dst(k) = src2(k), src1 factored
 *
 * Checks: null, count, size, stride, offset, match.
 * Sizes match when width <= height.
 * Serial below 1801 by (width*(height + 1) + height)*count.
 */
int32_t kormQRBackSubst_mava_64f_P(
    const double *const *src1, int32_t src1Offset, int32_t src1ObjectStride, double *buffer,
    const double *const *src2, int32_t src2Offset, int32_t src2ObjectStride, double *const *dst,
    int32_t dstOffset, int32_t dstObjectStride, int32_t width, int32_t height, int32_t count);

/** @} */


/**
 * @defgroup inverse Inverses
 * dst(k) = inverse of the square matrix src(k).
 *
 * `buffer` is scratch of order*order + order elements of the call's type, whatever its content. It must not be null,
 * though orders 1 and 3 to 6 leave it alone. A call that is spread over threads doesn't touch it.
 *
 * Orders 2, 7 and above compute each element as a cofactor of its own, which costs in proportion to order^5: from order 7
 * on prefer `kormLUDecomp` and `kormLUBackSubst`. There a cofactor that is not above 2*order^3 times the smallest normal
 * number of the type counts as that number, so an element that should be zero comes out as a tiny one.
 *
 * Singular: when the determinant (orders 5 and 6 of plain `32f` matrices: a pivot, or the determinant of what is left
 * after the pivots) is below 2*order^3 times the smallest normal number of the type, in plain `64f` matrices of orders
 * 3 and 4 twice that. The object is then untouched, but for its first row (order 6: two rows) in plain `32f` matrices of
 * orders 5 and 6. An array call on one thread stops at the first singular object and leaves later ones untouched;
 * spread over threads, each run of objects stops for itself. `kormInvert_ma_32f` takes matrices of order 4 that are
 * packed and aligned to 16 bytes in pairs, and writes neither of a pair if one is singular.
 *
 * Scale: what is formed inside grows with the power of the order, so infinities, NaN or zeros may come out with ::korStatusOk
 * although the inverse is an ordinary matrix: packed `32f` matrices of orders 4 to 6 fail at 1e-5 times the identity and below.
 * Beyond the scales of docs/ranges.md scale the matrix by a power of 2 first: A has s times the inverse of s A. Of
 * ill-conditioned matrices cofactors lose digits that `kormLUDecomp` and `kormLUBackSubst` keep: docs/accuracy.md.
 *
 * Overlap: at orders 1 and 3 to 6 dst may be src, at the same place with the same strides. Any other overlap, and any at
 * all at other orders, leaves dst undefined.
 *
 * Status: ::korStatusOk, ::korStatusSingular, ::korStatusNullPointer, ::korStatusBadSize, ::korStatusBadStride; array
 * forms ::korStatusBadCount; list and pointer forms ::korStatusBadOffset. After a failed check nothing is written.
 * @{
 */

/**
 * dst = inverse of src
 *
 * Checks: null, size, stride.
 */
int32_t kormInvert_m_32f(
    const float *src, int32_t srcRowStride, int32_t srcElementStride, float *buffer, float *dst,
    int32_t dstRowStride, int32_t dstElementStride, int32_t order);

/**
 * dst = inverse of src
 *
 * Checks: null, size, stride.
 */
int32_t kormInvert_m_64f(
    const double *src, int32_t srcRowStride, int32_t srcElementStride, double *buffer, double *dst,
    int32_t dstRowStride, int32_t dstElementStride, int32_t order);

/**
 * dst = inverse of src
 *
 * Checks: null, size, offset.
 */
int32_t kormInvert_m_32f_P(
    const float *const *src, int32_t srcOffset, float *buffer, float *const *dst, int32_t dstOffset,
    int32_t order);

/**
 * dst = inverse of src
 *
 * Checks: null, size, offset.
 */
int32_t kormInvert_m_64f_P(
    const double *const *src, int32_t srcOffset, double *buffer, double *const *dst, int32_t dstOffset,
    int32_t order);

/**
 * dst(k) = inverse of src(k)
 *
 * Checks: null, count, size, stride.
 * Serial below 3601 (2501 if an element stride is not 4) by order*2*count.
 */
int32_t kormInvert_ma_32f(
    const float *src, int32_t srcObjectStride, int32_t srcRowStride, int32_t srcElementStride, float *buffer,
    float *dst, int32_t dstObjectStride, int32_t dstRowStride, int32_t dstElementStride, int32_t order,
    int32_t count);

/**
 * dst(k) = inverse of src(k)
 *
 * Checks: null, count, size, stride.
 * Serial below 2501 by order*2*count.
 */
int32_t kormInvert_ma_64f(
    const double *src, int32_t srcObjectStride, int32_t srcRowStride, int32_t srcElementStride,
    double *buffer, double *dst, int32_t dstObjectStride, int32_t dstRowStride, int32_t dstElementStride,
    int32_t order, int32_t count);

/**
 * dst(k) = inverse of src(k)
 *
 * Checks: null, count, size, stride, offset.
 * Serial below 2501 by order*2*count.
 */
int32_t kormInvert_ma_32f_L(
    const float *const *src, int32_t srcOffset, int32_t srcRowStride, int32_t srcElementStride, float *buffer,
    float *const *dst, int32_t dstOffset, int32_t dstRowStride, int32_t dstElementStride, int32_t order,
    int32_t count);

/**
 * dst(k) = inverse of src(k)
 *
 * Checks: null, count, size, stride, offset.
 * Serial below 2501 by order*2*count.
 */
int32_t kormInvert_ma_64f_L(
    const double *const *src, int32_t srcOffset, int32_t srcRowStride, int32_t srcElementStride,
    double *buffer, double *const *dst, int32_t dstOffset, int32_t dstRowStride, int32_t dstElementStride,
    int32_t order, int32_t count);

/**
 * dst(k) = inverse of src(k)
 *
 * Checks: null, count, size, stride, offset.
 * Serial below 2501 by order*2*count.
 */
int32_t kormInvert_ma_32f_P(
    const float *const *src, int32_t srcOffset, int32_t srcObjectStride, float *buffer, float *const *dst,
    int32_t dstOffset, int32_t dstObjectStride, int32_t order, int32_t count);

/**
 * dst(k) = inverse of src(k)
 *
 * Checks: null, count, size, stride, offset.
 * Serial below 2501 by order*2*count.
 */
int32_t kormInvert_ma_64f_P(
    const double *const *src, int32_t srcOffset, int32_t srcObjectStride, double *buffer, double *const *dst,
    int32_t dstOffset, int32_t dstObjectStride, int32_t order, int32_t count);

/** @} */


/**
 * @defgroup symmetric_values Symmetric eigenvalues
 * dstValues = the real eigenvalues of a matrix that the caller declares symmetric: `order` of them, for each object of an array
 * behind those of the one before. From order 3 on they are sorted, the largest first. Order 2 is not sorted: with a negative
 * trace the first value is the smaller.
 *
 * Symmetry is not tested. All elements take part; of order 2 the one below the diagonal doesn't.
 *
 * `buffer` is scratch of order*order elements of the call's type, whatever its content. It must not be null, though orders 1 and
 * 2 leave it alone. A call that is spread over threads doesn't touch it.
 *
 * All tests are absolute, with eps = 2^-23 (`32f`) or 2^-52 (`64f`). A matrix is refused as singular when the product of its
 * eigenvalues is not above eps: a hundredth of the identity of order 4 is. An element beside the diagonal counts as zero when
 * its half is not above eps: large matrices may fail to converge, small ones get inexact values with ::korStatusOk. Beyond the
 * scales of docs/ranges.md scale the matrix by a power of 2 first, and the values back; a singular one may be shifted: add a
 * multiple of the identity, and subtract it from the values.
 *
 * Values may be wrong with ::korStatusOk: from order 4 on a sweep that meets a rotation of length within eps ends early, and
 * an element that isn't small may be dropped with it. It happens to matrices with values close together or far apart, and of
 * large order, in `32f` from about 10 on; scaling doesn't prevent it. The sum of the squares of all elements, which is that of
 * the values, shows it.
 *
 * Singular: order 2 leaves dstValues untouched; from order 3 on it holds the values, unsorted. Order 1 never fails.
 * No convergence: an eigenvalue took more than 30 sweeps; dstValues holds nothing of use. A NaN or an infinity ends that way
 * mostly. An array call on one thread stops at the first object that fails and leaves later ones untouched; spread over threads,
 * each run of objects stops for itself.
 *
 * Overlap: dstValues, `buffer` and src must not overlap.
 *
 * Status: ::korStatusOk, ::korStatusSingular, ::korStatusNoConvergence, ::korStatusNullPointer, ::korStatusBadSize,
 * ::korStatusBadStride; array forms ::korStatusBadCount; list and pointer forms ::korStatusBadOffset. After a failed check
 * nothing is written.
 * @{
 */

/**
 * dstValues = eigenvalues of src
 *
 * Checks: null, size, stride.
 */
int32_t kormEigenValuesSym_m_32f(
    const float *src, int32_t srcRowStride, int32_t srcElementStride, float *buffer, float *dstValues,
    int32_t order);

/**
 * dstValues = eigenvalues of src
 *
 * Checks: null, size, stride.
 */
int32_t kormEigenValuesSym_m_64f(
    const double *src, int32_t srcRowStride, int32_t srcElementStride, double *buffer, double *dstValues,
    int32_t order);

/**
 * dstValues = eigenvalues of src
 *
 * Checks: null, size, offset.
 */
int32_t kormEigenValuesSym_m_32f_P(
    const float *const *src, int32_t srcOffset, float *buffer, float *dstValues, int32_t order);

/**
 * dstValues = eigenvalues of src
 *
 * Checks: null, size, offset.
 */
int32_t kormEigenValuesSym_m_64f_P(
    const double *const *src, int32_t srcOffset, double *buffer, double *dstValues, int32_t order);

/**
 * dstValues(k) = eigenvalues of src(k)
 *
 * Checks: null, size, count, stride.
 * Serial below 1001 by order*(order + 1)*count.
 */
int32_t kormEigenValuesSym_ma_32f(
    const float *src, int32_t srcObjectStride, int32_t srcRowStride, int32_t srcElementStride, float *buffer,
    float *dstValues, int32_t order, int32_t count);

/**
 * dstValues(k) = eigenvalues of src(k)
 *
 * Checks: null, size, count, stride.
 * Serial below 1001 by order*(order + 1)*count.
 */
int32_t kormEigenValuesSym_ma_64f(
    const double *src, int32_t srcObjectStride, int32_t srcRowStride, int32_t srcElementStride,
    double *buffer, double *dstValues, int32_t order, int32_t count);

/**
 * dstValues(k) = eigenvalues of src(k)
 *
 * Checks: null, size, count, offset, stride.
 * Serial below 1001 by order*(order + 1)*count.
 */
int32_t kormEigenValuesSym_ma_32f_L(
    const float *const *src, int32_t srcOffset, int32_t srcRowStride, int32_t srcElementStride, float *buffer,
    float *dstValues, int32_t order, int32_t count);

/**
 * dstValues(k) = eigenvalues of src(k)
 *
 * Checks: null, size, count, offset, stride.
 * Serial below 1001 by order*(order + 1)*count.
 */
int32_t kormEigenValuesSym_ma_64f_L(
    const double *const *src, int32_t srcOffset, int32_t srcRowStride, int32_t srcElementStride,
    double *buffer, double *dstValues, int32_t order, int32_t count);

/**
 * dstValues(k) = eigenvalues of src(k)
 *
 * Checks: null, size, count, offset, stride.
 * Serial below 1001 by order*(order + 1)*count.
 */
int32_t kormEigenValuesSym_ma_32f_P(
    const float *const *src, int32_t srcOffset, int32_t srcObjectStride, float *buffer, float *dstValues,
    int32_t order, int32_t count);

/**
 * dstValues(k) = eigenvalues of src(k)
 *
 * Checks: null, size, count, offset, stride.
 * Serial below 1001 by order*(order + 1)*count.
 */
int32_t kormEigenValuesSym_ma_64f_P(
    const double *const *src, int32_t srcOffset, int32_t srcObjectStride, double *buffer, double *dstValues,
    int32_t order, int32_t count);

/** @} */


/**
 * @defgroup symmetric_vectors Symmetric eigenvalues and eigenvectors
 * src(k) V = V diag(dstValues(k)): column j of V = dstVectors(k) is the eigenvector of value j. Columns have length 1 and are
 * orthogonal; their signs are as they come. Values, `buffer`, tests and statuses are those of `kormEigenValuesSym`, and what is
 * said there of scaling, shifting and wrong values holds here; docs/ranges.md has rows of their own. Neither scaling by a power
 * of 2 nor a shift changes the vectors. Where values are wrong, vectors are still orthogonal, but src V isn't V diag(dstValues).
 *
 * Forms differ in the test for a singular matrix, made from order 3 on: single `32f` matrices with adjacent elements, all single
 * `64f` ones and those in the pointer layout leave values and vectors complete and sorted when they return ::korStatusSingular;
 * single `32f` ones with element strides and all arrays leave them complete but unsorted. Arrays of `64f` refuse a product that is
 * not above 2^-23, single matrices one that is not above 2^-52. Arrays of `32f` compute in double and round what they store.
 *
 * No convergence: dstVectors and dstValues hold nothing of use.
 *
 * Overlap: dstVectors, dstValues, `buffer` and src must not overlap.
 *
 * Status: ::korStatusOk, ::korStatusSingular, ::korStatusNoConvergence, ::korStatusNullPointer, ::korStatusBadSize,
 * ::korStatusBadStride; array forms ::korStatusBadCount; list and pointer forms ::korStatusBadOffset. After a failed check
 * nothing is written.
 * @{
 */

/**
 * src dstVectors = dstVectors diag(dstValues)
 *
 * Checks: null, size, stride.
 */
int32_t kormEigenValuesVectorsSym_m_32f(
    const float *src, int32_t srcRowStride, int32_t srcElementStride, float *buffer, float *dstVectors,
    int32_t dstRowStride, int32_t dstElementStride, float *dstValues, int32_t order);

/**
 * src dstVectors = dstVectors diag(dstValues)
 *
 * Checks: null, size, stride.
 */
int32_t kormEigenValuesVectorsSym_m_64f(
    const double *src, int32_t srcRowStride, int32_t srcElementStride, double *buffer, double *dstVectors,
    int32_t dstRowStride, int32_t dstElementStride, double *dstValues, int32_t order);

/**
 * src dstVectors = dstVectors diag(dstValues)
 *
 * Checks: null, size, offset.
 */
int32_t kormEigenValuesVectorsSym_m_32f_P(
    const float *const *src, int32_t srcOffset, float *buffer, float *const *dstVectors, int32_t dstOffset,
    float *dstValues, int32_t order);

/**
 * src dstVectors = dstVectors diag(dstValues)
 *
 * Checks: null, size, offset.
 */
int32_t kormEigenValuesVectorsSym_m_64f_P(
    const double *const *src, int32_t srcOffset, double *buffer, double *const *dstVectors, int32_t dstOffset,
    double *dstValues, int32_t order);

/**
 * src(k) dstVectors(k) = dstVectors(k) diag(dstValues(k))
 *
 * Checks: null, size, count, stride.
 * Serial below 701 by order*(2*order + 1)*count.
 */
int32_t kormEigenValuesVectorsSym_ma_32f(
    const float *src, int32_t srcObjectStride, int32_t srcRowStride, int32_t srcElementStride, float *buffer,
    float *dstVectors, int32_t dstObjectStride, int32_t dstRowStride, int32_t dstElementStride,
    float *dstValues, int32_t order, int32_t count);

/**
 * src(k) dstVectors(k) = dstVectors(k) diag(dstValues(k))
 *
 * Checks: null, size, count, stride.
 * Serial below 701 by order*(2*order + 1)*count.
 */
int32_t kormEigenValuesVectorsSym_ma_64f(
    const double *src, int32_t srcObjectStride, int32_t srcRowStride, int32_t srcElementStride,
    double *buffer, double *dstVectors, int32_t dstObjectStride, int32_t dstRowStride,
    int32_t dstElementStride, double *dstValues, int32_t order, int32_t count);

/**
 * src(k) dstVectors(k) = dstVectors(k) diag(dstValues(k))
 *
 * Checks: null, size, count, offset, stride.
 * Serial below 701 by order*(2*order + 1)*count.
 */
int32_t kormEigenValuesVectorsSym_ma_32f_L(
    const float *const *src, int32_t srcOffset, int32_t srcRowStride, int32_t srcElementStride, float *buffer,
    float *const *dstVectors, int32_t dstOffset, int32_t dstRowStride, int32_t dstElementStride,
    float *dstValues, int32_t order, int32_t count);

/**
 * src(k) dstVectors(k) = dstVectors(k) diag(dstValues(k))
 *
 * Checks: null, size, count, offset, stride.
 * Serial below 701 by order*(2*order + 1)*count.
 */
int32_t kormEigenValuesVectorsSym_ma_64f_L(
    const double *const *src, int32_t srcOffset, int32_t srcRowStride, int32_t srcElementStride,
    double *buffer, double *const *dstVectors, int32_t dstOffset, int32_t dstRowStride,
    int32_t dstElementStride, double *dstValues, int32_t order, int32_t count);

/**
 * src(k) dstVectors(k) = dstVectors(k) diag(dstValues(k))
 *
 * Checks: null, size, count, offset, stride.
 * Serial below 701 by order*(2*order + 1)*count.
 */
int32_t kormEigenValuesVectorsSym_ma_32f_P(
    const float *const *src, int32_t srcOffset, int32_t srcObjectStride, float *buffer,
    float *const *dstVectors, int32_t dstOffset, int32_t dstObjectStride, float *dstValues, int32_t order,
    int32_t count);

/**
 * src(k) dstVectors(k) = dstVectors(k) diag(dstValues(k))
 *
 * Checks: null, size, count, offset, stride.
 * Serial below 701 by order*(2*order + 1)*count.
 */
int32_t kormEigenValuesVectorsSym_ma_64f_P(
    const double *const *src, int32_t srcOffset, int32_t srcObjectStride, double *buffer,
    double *const *dstVectors, int32_t dstOffset, int32_t dstObjectStride, double *dstValues, int32_t order,
    int32_t count);

/** @} */


/**
 * @defgroup general_eigenvalues General eigenvalues
 * All eigenvalues of a square matrix that need not be symmetric. Element i of `dstValuesRe` and `dstValuesIm` together is
 * eigenvalue i; they are `order` elements for each object of an array, in a row, without strides in any layout. Two conjugate
 * eigenvalues are neighbours, the one with the positive imaginary part first. There is no other order among them: each stands
 * where the iteration found it on the diagonal.
 *
 * The matrix is reduced to Hessenberg form by reflections, then iterated on by double-shift QR sweeps, at most 30 times the
 * order. It is neither balanced nor scaled, and a subdiagonal element counts as zero when its magnitude is at most 2^-23
 * (`32f`) or 2^-52 (`64f`), whatever the matrix's own size. Eigenvalues of small matrices are therefore inexact with
 * ::korStatusOk, down to the diagonal of the Hessenberg form: scale the matrix by a power of 2 first, to a norm around 2^20,
 * and the values back. docs/ranges.md shows from which scale to which they are right. A 2 by 2 block that splits off with equal
 * diagonal elements counts as complex even if its eigenvalues are real: (1 2; 2 1) gives 1 + 2i and 1 - 2i.
 *
 * `buffer` is scratch of as many bytes as `kormEigenValuesGetBufSize_32f` or `_64f` tells, order*(order + 5) elements, whatever
 * its content. A call that is spread over threads doesn't touch it.
 *
 * Overlap: no output may overlap another, buffer or src.
 *
 * Status: ::korStatusOk, ::korStatusNoConvergence, ::korStatusNullPointer, ::korStatusBadSize, ::korStatusBadStride; array forms
 * ::korStatusBadCount; list and pointer forms ::korStatusBadOffset. After a failed check nothing is written. An array call on
 * one thread stops at the first object without convergence and leaves later ones untouched; spread over threads, each run of
 * objects stops for itself. Of that object the eigenvalues found so far are written, which are the last ones.
 * @{
 */

/**
 * dstValuesRe + i dstValuesIm = eigenvalues of src
 *
 * Checks: null, size, stride.
 */
int32_t kormEigenValues_m_32f(
    const float *src, int32_t srcRowStride, int32_t srcElementStride, float *dstValuesRe, float *dstValuesIm,
    int32_t order, float *buffer);

/**
 * dstValuesRe + i dstValuesIm = eigenvalues of src
 *
 * Checks: null, size, stride.
 */
int32_t kormEigenValues_m_64f(
    const double *src, int32_t srcRowStride, int32_t srcElementStride, double *dstValuesRe,
    double *dstValuesIm, int32_t order, double *buffer);

/**
 * dstValuesRe + i dstValuesIm = eigenvalues of src
 *
 * Checks: null, size, offset.
 */
int32_t kormEigenValues_m_32f_P(
    const float *const *src, int32_t srcOffset, float *dstValuesRe, float *dstValuesIm, int32_t order,
    float *buffer);

/**
 * dstValuesRe + i dstValuesIm = eigenvalues of src
 *
 * Checks: null, size, offset.
 */
int32_t kormEigenValues_m_64f_P(
    const double *const *src, int32_t srcOffset, double *dstValuesRe, double *dstValuesIm, int32_t order,
    double *buffer);

/**
 * dstValuesRe(k) + i dstValuesIm(k) = eigenvalues of src(k)
 *
 * Checks: null, size, count, stride.
 * Serial below 251 by order*(order + 1)*count.
 */
int32_t kormEigenValues_ma_32f(
    const float *src, int32_t srcObjectStride, int32_t srcRowStride, int32_t srcElementStride,
    float *dstValuesRe, float *dstValuesIm, int32_t order, int32_t count, float *buffer);

/**
 * dstValuesRe(k) + i dstValuesIm(k) = eigenvalues of src(k)
 *
 * Checks: null, size, count, stride.
 * Serial below 251 by order*(order + 1)*count.
 */
int32_t kormEigenValues_ma_64f(
    const double *src, int32_t srcObjectStride, int32_t srcRowStride, int32_t srcElementStride,
    double *dstValuesRe, double *dstValuesIm, int32_t order, int32_t count, double *buffer);

/**
 * dstValuesRe(k) + i dstValuesIm(k) = eigenvalues of src(k)
 *
 * Checks: null, size, count, offset, stride.
 * Serial below 251 by order*(order + 1)*count.
 */
int32_t kormEigenValues_ma_32f_L(
    const float *const *src, int32_t srcOffset, int32_t srcRowStride, int32_t srcElementStride,
    float *dstValuesRe, float *dstValuesIm, int32_t order, int32_t count, float *buffer);

/**
 * dstValuesRe(k) + i dstValuesIm(k) = eigenvalues of src(k)
 *
 * Checks: null, size, count, offset, stride.
 * Serial below 251 by order*(order + 1)*count.
 */
int32_t kormEigenValues_ma_64f_L(
    const double *const *src, int32_t srcOffset, int32_t srcRowStride, int32_t srcElementStride,
    double *dstValuesRe, double *dstValuesIm, int32_t order, int32_t count, double *buffer);

/**
 * dstValuesRe(k) + i dstValuesIm(k) = eigenvalues of src(k)
 *
 * Checks: null, size, count, offset, stride.
 * Serial below 251 by order*(order + 1)*count.
 */
int32_t kormEigenValues_ma_32f_P(
    const float *const *src, int32_t srcOffset, int32_t srcObjectStride, float *dstValuesRe,
    float *dstValuesIm, int32_t order, int32_t count, float *buffer);

/**
 * dstValuesRe(k) + i dstValuesIm(k) = eigenvalues of src(k)
 *
 * Checks: null, size, count, offset, stride.
 * Serial below 251 by order*(order + 1)*count.
 */
int32_t kormEigenValues_ma_64f_P(
    const double *const *src, int32_t srcOffset, int32_t srcObjectStride, double *dstValuesRe,
    double *dstValuesIm, int32_t order, int32_t count, double *buffer);

/** @} */


/**
 * @defgroup general_eigenvectors General eigenvalues and eigenvectors
 * `Left` and `Right` mean the reverse of what most expect, for a caller's matrix A = src and eigenvalue w of vector y:
 *
 * | function | writes | each vector satisfies |
 * |---|---|---|
 * | `kormEigenValuesVectorsLeft` | dst | A y = w y |
 * | `kormEigenValuesVectorsRight` | dst | y^T A = w y^T |
 * | `kormEigenValuesVectors` | dstLeft | A y = w y |
 * | | dstRight | y^T A = w y^T |
 *
 * So the vectors that are mostly called right eigenvectors come from `Left`. The names belong to the transpose of A, on which the
 * functions work. y^T is the plain transpose, without conjugation.
 *
 * Element i of `dstValuesRe` and `dstValuesIm` together is eigenvalue i; they are `order` elements for each object of an array,
 * in a row, without strides in any layout. Column j of a matrix of vectors belongs to eigenvalue j. Two conjugate eigenvalues are
 * neighbours, the one with the positive imaginary part first: of its vector the first of the two columns is the real part and
 * the second the imaginary part. The other's vector is the conjugate and isn't stored. Vectors have the Euclidean norm 1, and
 * the greatest element of a complex one has an imaginary part at or near 0.
 *
 * A subdiagonal element counts as zero where its neighbours on the diagonal are larger by 2^23 (`32f`) or 2^52 (`64f`), so that
 * scale matters less than to `kormEigenValues`. Beyond the scales of docs/ranges.md scale the matrix by a power of 2 first, and
 * the values back; the vectors stay. Eigenvalues may differ in the last digits, and stand in another order, from those of
 * `kormEigenValues`. A 2 by 2 block with equal diagonal elements and elements of like sign beside them counts as complex, as
 * there; its vectors satisfy no equation, and a right set ends with ::korStatusNoConvergence when such a block is the first of
 * a call. Arrays, and `Left` and `Right` of doubles, hold their shifts in single precision: a matrix whose elements lie beyond
 * its range doesn't converge.
 *
 * `buffer` is scratch of as many bytes as `kormEigenValuesVectorsGetBufSize_32f` or `_64f` tells, order*(3*order + 5) elements,
 * whatever its content. A call that is spread over threads doesn't touch it. `Left` and `Right` never are.
 *
 * Overlap: no output may overlap another, buffer or src.
 *
 * Status: ::korStatusOk, ::korStatusNoConvergence, ::korStatusNearSingularBlock, ::korStatusNullPointer, ::korStatusBadSize,
 * ::korStatusBadStride; array forms ::korStatusBadCount; list and pointer forms ::korStatusBadOffset. After a failed check
 * nothing is written. ::korStatusNoConvergence comes when the sweeps, 30 times the order, don't suffice: then the eigenvalues
 * found so far are written, the last ones; or when a vector of the right set vanishes. A system of two unknowns that is
 * singular to working precision ends a call as well, with ::korStatusNearSingularBlock for a complex eigenvalue and, on
 * purpose, with ::korStatusOk for a real one. In the last three cases all eigenvalues of the object are written. No such
 * object has vectors, and of an array later objects are untouched, on one thread all of them, otherwise those of its run.
 * @{
 */

/**
 * dstRight, dstLeft = eigenvectors y^T src = w y^T and src y = w y
 *
 * Checks: null, size, stride.
 */
int32_t kormEigenValuesVectors_m_32f(
    const float *src, int32_t srcRowStride, int32_t srcElementStride, float *dstRight,
    int32_t dstRightRowStride, int32_t dstRightElementStride, float *dstLeft, int32_t dstLeftRowStride,
    int32_t dstLeftElementStride, float *dstValuesRe, float *dstValuesIm, int32_t order, float *buffer);

/**
 * dstRight, dstLeft = eigenvectors y^T src = w y^T and src y = w y
 *
 * Checks: null, size, stride.
 */
int32_t kormEigenValuesVectors_m_64f(
    const double *src, int32_t srcRowStride, int32_t srcElementStride, double *dstRight,
    int32_t dstRightRowStride, int32_t dstRightElementStride, double *dstLeft, int32_t dstLeftRowStride,
    int32_t dstLeftElementStride, double *dstValuesRe, double *dstValuesIm, int32_t order, double *buffer);

/**
 * dstRight, dstLeft = eigenvectors y^T src = w y^T and src y = w y
 *
 * Checks: null, size, offset.
 */
int32_t kormEigenValuesVectors_m_32f_P(
    const float *const *src, int32_t srcOffset, float *const *dstRight, int32_t dstRightOffset,
    float *const *dstLeft, int32_t dstLeftOffset, float *dstValuesRe, float *dstValuesIm, int32_t order,
    float *buffer);

/**
 * dstRight, dstLeft = eigenvectors y^T src = w y^T and src y = w y
 *
 * Checks: null, size, offset.
 */
int32_t kormEigenValuesVectors_m_64f_P(
    const double *const *src, int32_t srcOffset, double *const *dstRight, int32_t dstRightOffset,
    double *const *dstLeft, int32_t dstLeftOffset, double *dstValuesRe, double *dstValuesIm, int32_t order,
    double *buffer);

/**
 * dstRight(k), dstLeft(k) = eigenvectors y^T src(k) = w y^T and src(k) y = w y
 *
 * Checks: null, size, count, stride.
 * Serial below 501 by order*(3*order + 1)*count.
 */
int32_t kormEigenValuesVectors_ma_32f(
    const float *src, int32_t srcObjectStride, int32_t srcRowStride, int32_t srcElementStride,
    float *dstRight, int32_t dstRightObjectStride, int32_t dstRightRowStride, int32_t dstRightElementStride,
    float *dstLeft, int32_t dstLeftObjectStride, int32_t dstLeftRowStride, int32_t dstLeftElementStride,
    float *dstValuesRe, float *dstValuesIm, int32_t order, int32_t count, float *buffer);

/**
 * dstRight(k), dstLeft(k) = eigenvectors y^T src(k) = w y^T and src(k) y = w y
 *
 * Checks: null, size, count, stride.
 * Serial below 501 by order*(3*order + 1)*count.
 */
int32_t kormEigenValuesVectors_ma_64f(
    const double *src, int32_t srcObjectStride, int32_t srcRowStride, int32_t srcElementStride,
    double *dstRight, int32_t dstRightObjectStride, int32_t dstRightRowStride, int32_t dstRightElementStride,
    double *dstLeft, int32_t dstLeftObjectStride, int32_t dstLeftRowStride, int32_t dstLeftElementStride,
    double *dstValuesRe, double *dstValuesIm, int32_t order, int32_t count, double *buffer);

/**
 * dstRight(k), dstLeft(k) = eigenvectors y^T src(k) = w y^T and src(k) y = w y
 *
 * Checks: null, size, count, offset of src, stride of src, offset of dstRight, stride of dstRight, offset of dstLeft, stride of dstLeft.
 * Serial below 501 by order*(3*order + 1)*count.
 */
int32_t kormEigenValuesVectors_ma_32f_L(
    const float *const *src, int32_t srcOffset, int32_t srcRowStride, int32_t srcElementStride,
    float *const *dstRight, int32_t dstRightOffset, int32_t dstRightRowStride, int32_t dstRightElementStride,
    float *const *dstLeft, int32_t dstLeftOffset, int32_t dstLeftRowStride, int32_t dstLeftElementStride,
    float *dstValuesRe, float *dstValuesIm, int32_t order, int32_t count, float *buffer);

/**
 * dstRight(k), dstLeft(k) = eigenvectors y^T src(k) = w y^T and src(k) y = w y
 *
 * Checks: null, size, count, offset of src, stride of src, offset of dstRight, stride of dstRight, offset of dstLeft, stride of dstLeft.
 * Serial below 501 by order*(3*order + 1)*count.
 */
int32_t kormEigenValuesVectors_ma_64f_L(
    const double *const *src, int32_t srcOffset, int32_t srcRowStride, int32_t srcElementStride,
    double *const *dstRight, int32_t dstRightOffset, int32_t dstRightRowStride, int32_t dstRightElementStride,
    double *const *dstLeft, int32_t dstLeftOffset, int32_t dstLeftRowStride, int32_t dstLeftElementStride,
    double *dstValuesRe, double *dstValuesIm, int32_t order, int32_t count, double *buffer);

/**
 * dstRight(k), dstLeft(k) = eigenvectors y^T src(k) = w y^T and src(k) y = w y
 *
 * Checks: null, size, count, offset of src, stride of src, offset of dstRight, stride of dstRight, offset of dstLeft, stride of dstLeft.
 * Serial below 501 by order*(3*order + 1)*count.
 */
int32_t kormEigenValuesVectors_ma_32f_P(
    const float *const *src, int32_t srcOffset, int32_t srcObjectStride, float *const *dstRight,
    int32_t dstRightOffset, int32_t dstRightObjectStride, float *const *dstLeft, int32_t dstLeftOffset,
    int32_t dstLeftObjectStride, float *dstValuesRe, float *dstValuesIm, int32_t order, int32_t count,
    float *buffer);

/**
 * dstRight(k), dstLeft(k) = eigenvectors y^T src(k) = w y^T and src(k) y = w y
 *
 * Checks: null, size, count, offset of src, stride of src, offset of dstRight, stride of dstRight, offset of dstLeft, stride of dstLeft.
 * Serial below 501 by order*(3*order + 1)*count.
 */
int32_t kormEigenValuesVectors_ma_64f_P(
    const double *const *src, int32_t srcOffset, int32_t srcObjectStride, double *const *dstRight,
    int32_t dstRightOffset, int32_t dstRightObjectStride, double *const *dstLeft, int32_t dstLeftOffset,
    int32_t dstLeftObjectStride, double *dstValuesRe, double *dstValuesIm, int32_t order, int32_t count,
    double *buffer);

/**
 * dst = eigenvectors src y = w y
 *
 * Checks: null, size, stride.
 */
int32_t kormEigenValuesVectorsLeft_m_32f(
    const float *src, int32_t srcRowStride, int32_t srcElementStride, float *dst, int32_t dstRowStride,
    int32_t dstElementStride, float *dstValuesRe, float *dstValuesIm, int32_t order, float *buffer);

/**
 * dst = eigenvectors src y = w y
 *
 * Checks: null, size, stride.
 */
int32_t kormEigenValuesVectorsLeft_m_64f(
    const double *src, int32_t srcRowStride, int32_t srcElementStride, double *dst, int32_t dstRowStride,
    int32_t dstElementStride, double *dstValuesRe, double *dstValuesIm, int32_t order, double *buffer);

/**
 * dst = eigenvectors src y = w y
 *
 * Checks: null, size, offset.
 */
int32_t kormEigenValuesVectorsLeft_m_32f_P(
    const float *const *src, int32_t srcOffset, float *const *dst, int32_t dstOffset, float *dstValuesRe,
    float *dstValuesIm, int32_t order, float *buffer);

/**
 * dst = eigenvectors src y = w y
 *
 * Checks: null, size, offset.
 */
int32_t kormEigenValuesVectorsLeft_m_64f_P(
    const double *const *src, int32_t srcOffset, double *const *dst, int32_t dstOffset, double *dstValuesRe,
    double *dstValuesIm, int32_t order, double *buffer);

/**
 * dst(k) = eigenvectors src(k) y = w y
 *
 * Checks: null, size, count, stride.
 */
int32_t kormEigenValuesVectorsLeft_ma_32f(
    const float *src, int32_t srcObjectStride, int32_t srcRowStride, int32_t srcElementStride, float *dst,
    int32_t dstObjectStride, int32_t dstRowStride, int32_t dstElementStride, float *dstValuesRe,
    float *dstValuesIm, int32_t order, int32_t count, float *buffer);

/**
 * dst(k) = eigenvectors src(k) y = w y
 *
 * Checks: null, size, count, stride.
 */
int32_t kormEigenValuesVectorsLeft_ma_64f(
    const double *src, int32_t srcObjectStride, int32_t srcRowStride, int32_t srcElementStride, double *dst,
    int32_t dstObjectStride, int32_t dstRowStride, int32_t dstElementStride, double *dstValuesRe,
    double *dstValuesIm, int32_t order, int32_t count, double *buffer);

/**
 * dst(k) = eigenvectors src(k) y = w y
 *
 * Checks: null, size, count, offset of src, stride of src, offset of dst, stride of dst.
 */
int32_t kormEigenValuesVectorsLeft_ma_32f_L(
    const float *const *src, int32_t srcOffset, int32_t srcRowStride, int32_t srcElementStride,
    float *const *dst, int32_t dstOffset, int32_t dstRowStride, int32_t dstElementStride, float *dstValuesRe,
    float *dstValuesIm, int32_t order, int32_t count, float *buffer);

/**
 * dst(k) = eigenvectors src(k) y = w y
 *
 * Checks: null, size, count, offset of src, stride of src, offset of dst, stride of dst.
 */
int32_t kormEigenValuesVectorsLeft_ma_64f_L(
    const double *const *src, int32_t srcOffset, int32_t srcRowStride, int32_t srcElementStride,
    double *const *dst, int32_t dstOffset, int32_t dstRowStride, int32_t dstElementStride,
    double *dstValuesRe, double *dstValuesIm, int32_t order, int32_t count, double *buffer);

/**
 * dst(k) = eigenvectors src(k) y = w y
 *
 * Checks: null, size, count, offset of src, stride of src, offset of dst, stride of dst.
 */
int32_t kormEigenValuesVectorsLeft_ma_32f_P(
    const float *const *src, int32_t srcOffset, int32_t srcObjectStride, float *const *dst, int32_t dstOffset,
    int32_t dstObjectStride, float *dstValuesRe, float *dstValuesIm, int32_t order, int32_t count,
    float *buffer);

/**
 * dst(k) = eigenvectors src(k) y = w y
 *
 * Checks: null, size, count, offset of src, stride of src, offset of dst, stride of dst.
 */
int32_t kormEigenValuesVectorsLeft_ma_64f_P(
    const double *const *src, int32_t srcOffset, int32_t srcObjectStride, double *const *dst,
    int32_t dstOffset, int32_t dstObjectStride, double *dstValuesRe, double *dstValuesIm, int32_t order,
    int32_t count, double *buffer);

/**
 * dst = eigenvectors y^T src = w y^T
 *
 * Checks: null, size, stride.
 */
int32_t kormEigenValuesVectorsRight_m_32f(
    const float *src, int32_t srcRowStride, int32_t srcElementStride, float *dst, int32_t dstRowStride,
    int32_t dstElementStride, float *dstValuesRe, float *dstValuesIm, int32_t order, float *buffer);

/**
 * dst = eigenvectors y^T src = w y^T
 *
 * Checks: null, size, stride.
 */
int32_t kormEigenValuesVectorsRight_m_64f(
    const double *src, int32_t srcRowStride, int32_t srcElementStride, double *dst, int32_t dstRowStride,
    int32_t dstElementStride, double *dstValuesRe, double *dstValuesIm, int32_t order, double *buffer);

/**
 * dst = eigenvectors y^T src = w y^T
 *
 * Checks: null, size, offset.
 */
int32_t kormEigenValuesVectorsRight_m_32f_P(
    const float *const *src, int32_t srcOffset, float *const *dst, int32_t dstOffset, float *dstValuesRe,
    float *dstValuesIm, int32_t order, float *buffer);

/**
 * dst = eigenvectors y^T src = w y^T
 *
 * Checks: null, size, offset.
 */
int32_t kormEigenValuesVectorsRight_m_64f_P(
    const double *const *src, int32_t srcOffset, double *const *dst, int32_t dstOffset, double *dstValuesRe,
    double *dstValuesIm, int32_t order, double *buffer);

/**
 * dst(k) = eigenvectors y^T src(k) = w y^T
 *
 * Checks: null, size, count, stride.
 */
int32_t kormEigenValuesVectorsRight_ma_32f(
    const float *src, int32_t srcObjectStride, int32_t srcRowStride, int32_t srcElementStride, float *dst,
    int32_t dstObjectStride, int32_t dstRowStride, int32_t dstElementStride, float *dstValuesRe,
    float *dstValuesIm, int32_t order, int32_t count, float *buffer);

/**
 * dst(k) = eigenvectors y^T src(k) = w y^T
 *
 * Checks: null, size, count, stride.
 */
int32_t kormEigenValuesVectorsRight_ma_64f(
    const double *src, int32_t srcObjectStride, int32_t srcRowStride, int32_t srcElementStride, double *dst,
    int32_t dstObjectStride, int32_t dstRowStride, int32_t dstElementStride, double *dstValuesRe,
    double *dstValuesIm, int32_t order, int32_t count, double *buffer);

/**
 * dst(k) = eigenvectors y^T src(k) = w y^T
 *
 * Checks: null, size, count, offset of src, stride of src, offset of dst, stride of dst.
 */
int32_t kormEigenValuesVectorsRight_ma_32f_L(
    const float *const *src, int32_t srcOffset, int32_t srcRowStride, int32_t srcElementStride,
    float *const *dst, int32_t dstOffset, int32_t dstRowStride, int32_t dstElementStride, float *dstValuesRe,
    float *dstValuesIm, int32_t order, int32_t count, float *buffer);

/**
 * dst(k) = eigenvectors y^T src(k) = w y^T
 *
 * Checks: null, size, count, offset of src, stride of src, offset of dst, stride of dst.
 */
int32_t kormEigenValuesVectorsRight_ma_64f_L(
    const double *const *src, int32_t srcOffset, int32_t srcRowStride, int32_t srcElementStride,
    double *const *dst, int32_t dstOffset, int32_t dstRowStride, int32_t dstElementStride,
    double *dstValuesRe, double *dstValuesIm, int32_t order, int32_t count, double *buffer);

/**
 * dst(k) = eigenvectors y^T src(k) = w y^T
 *
 * Checks: null, size, count, offset of src, stride of src, offset of dst, stride of dst.
 */
int32_t kormEigenValuesVectorsRight_ma_32f_P(
    const float *const *src, int32_t srcOffset, int32_t srcObjectStride, float *const *dst, int32_t dstOffset,
    int32_t dstObjectStride, float *dstValuesRe, float *dstValuesIm, int32_t order, int32_t count,
    float *buffer);

/**
 * dst(k) = eigenvectors y^T src(k) = w y^T
 *
 * Checks: null, size, count, offset of src, stride of src, offset of dst, stride of dst.
 */
int32_t kormEigenValuesVectorsRight_ma_64f_P(
    const double *const *src, int32_t srcOffset, int32_t srcObjectStride, double *const *dst,
    int32_t dstOffset, int32_t dstObjectStride, double *dstValuesRe, double *dstValuesIm, int32_t order,
    int32_t count, double *buffer);

/** @} */


/**
 * @defgroup eigen_buffers Scratch of general eigenproblems
 * How many bytes of scratch the functions of general eigenproblems need for matrices of a given order: order*(order + 5)
 * elements for eigenvalues alone, order*(3*order + 5) with vectors. The product wraps at 32 bits.
 *
 * Status: ::korStatusOk, ::korStatusNullPointer (`size` is null), ::korStatusBadSize (`order` is below 1), in this order.
 * @{
 */

/**
 * Scratch of `kormEigenValues` for `float`.
 */
int32_t kormEigenValuesGetBufSize_32f(int32_t order, uint32_t *size);

/**
 * Scratch of `kormEigenValues` for `double`.
 */
int32_t kormEigenValuesGetBufSize_64f(int32_t order, uint32_t *size);

/**
 * Scratch of `kormEigenValuesVectors`, `-Left` and `-Right` for `float`.
 */
int32_t kormEigenValuesVectorsGetBufSize_32f(int32_t order, uint32_t *size);

/**
 * Scratch of `kormEigenValuesVectors`, `-Left` and `-Right` for `double`.
 */
int32_t kormEigenValuesVectorsGetBufSize_64f(int32_t order, uint32_t *size);

/** @} */


/**
 * @defgroup fixed_vectors Vectors of 2, 3 or 4 elements
 * A `v2`, `v3` or `v4` vector is that many `float` one behind the other, at any address. Nothing is read or written
 * beyond them: a `v3` function touches no fourth element.
 *
 * Sums of products run from element 0 upwards, each product and each sum rounded to `float`. A length is the square root, in
 * double precision, of such a sum, rounded to `float`; the sum may overflow or lose bits where the length would not. Beyond the
 * scales of docs/ranges.md scale a vector by a power of 2 before its length is taken or made 1.
 *
 * Overlap: dst may be a source, but for the cross products, whose dst must not overlap a source.
 *
 * Status: ::korStatusOk, always. There are no checks: a null pointer is a fault, and a vector of zeros normalises to NaNs.
 * @{
 */

/**
 * dst[i] = src1[i] + src2[i]
 */
int32_t kormAdd_v2_32f(const float *src1, const float *src2, float *dst);

/**
 * dst[i] = src1[i] + src2[i]
 */
int32_t kormAdd_v3_32f(const float *src1, const float *src2, float *dst);

/**
 * dst[i] = src1[i] + src2[i]
 */
int32_t kormAdd_v4_32f(const float *src1, const float *src2, float *dst);

/**
 * dst[i] = src1[i] - src2[i]
 */
int32_t kormSub_v2_32f(const float *src1, const float *src2, float *dst);

/**
 * dst[i] = src1[i] - src2[i]
 */
int32_t kormSub_v3_32f(const float *src1, const float *src2, float *dst);

/**
 * dst[i] = src1[i] - src2[i]
 */
int32_t kormSub_v4_32f(const float *src1, const float *src2, float *dst);

/**
 * dst[i] = src1[i] if that is below src2[i], else src2[i]
 */
int32_t kormMin_v2_32f(const float *src1, const float *src2, float *dst);

/**
 * dst[i] = src1[i] if that is below src2[i], else src2[i]
 */
int32_t kormMin_v3_32f(const float *src1, const float *src2, float *dst);

/**
 * dst[i] = src1[i] if that is below src2[i], else src2[i]
 */
int32_t kormMin_v4_32f(const float *src1, const float *src2, float *dst);

/**
 * dst[i] = src1[i] if that is above src2[i], else src2[i]
 */
int32_t kormMax_v2_32f(const float *src1, const float *src2, float *dst);

/**
 * dst[i] = src1[i] if that is above src2[i], else src2[i]
 */
int32_t kormMax_v3_32f(const float *src1, const float *src2, float *dst);

/**
 * dst[i] = src1[i] if that is above src2[i], else src2[i]
 */
int32_t kormMax_v4_32f(const float *src1, const float *src2, float *dst);

/**
 * dst[i] = src[i] * val
 */
int32_t kormMulC_v2_32f(const float *src, float val, float *dst);

/**
 * dst[i] = src[i] * val
 */
int32_t kormMulC_v3_32f(const float *src, float val, float *dst);

/**
 * dst[i] = src[i] * val
 */
int32_t kormMulC_v4_32f(const float *src, float val, float *dst);

/**
 * dst[0] = src1[0]*src2[0] + src1[1]*src2[1] + ...
 */
int32_t kormDotProduct_v2_32f(const float *src1, const float *src2, float *dst);

/**
 * dst[0] = src1[0]*src2[0] + src1[1]*src2[1] + ...
 */
int32_t kormDotProduct_v3_32f(const float *src1, const float *src2, float *dst);

/**
 * dst[0] = src1[0]*src2[0] + src1[1]*src2[1] + ...
 */
int32_t kormDotProduct_v4_32f(const float *src1, const float *src2, float *dst);

/**
 * dst[0] = src[0]*src[0] + src[1]*src[1] + ...
 */
int32_t kormLenSqr_v2_32f(const float *src, float *dst);

/**
 * dst[0] = src[0]*src[0] + src[1]*src[1] + ...
 */
int32_t kormLenSqr_v3_32f(const float *src, float *dst);

/**
 * dst[0] = src[0]*src[0] + src[1]*src[1] + ...
 */
int32_t kormLenSqr_v4_32f(const float *src, float *dst);

/**
 * dst[0] = the length of src
 */
int32_t kormLen_v2_32f(const float *src, float *dst);

/**
 * dst[0] = the length of src
 */
int32_t kormLen_v3_32f(const float *src, float *dst);

/**
 * dst[0] = the length of src
 */
int32_t kormLen_v4_32f(const float *src, float *dst);

/**
 * dst[i] = src[i] / the length of src
 */
int32_t kormNormalize_v2_32f(const float *src, float *dst);

/**
 * dst[i] = src[i] / the length of src
 */
int32_t kormNormalize_v3_32f(const float *src, float *dst);

/**
 * dst[i] = src[i] / the length of src
 */
int32_t kormNormalize_v4_32f(const float *src, float *dst);

/**
 * dst[0] = src1[0]*src2[1] - src1[1]*src2[0]; a single value
 */
int32_t kormCrossProduct_v2_32f(const float *src1, const float *src2, float *dst);

/**
 * dst = src1 x src2
 */
int32_t kormCrossProduct_v3_32f(const float *src1, const float *src2, float *dst);

/**
 * dst = a vector orthogonal to src1, src2 and src3
 */
int32_t kormCrossProduct_v4_32f(const float *src1, const float *src2, const float *src3, float *dst);

/** @} */


/**
 * @defgroup fixed_constructors Constructors of 4 by 4 matrices
 * A matrix is 16 `float` one behind the other, row by row: m[4*r + c] is row r, column c. Vectors are rows and stand on
 * the left: a point p goes to p*M, so that A*B means first A, then B; a translation stands in the last row. LH and RH
 * name the hand of the coordinates in front of the viewer: he looks along +z in LH, along -z in RH. Both map the depth
 * from 0 at `zNear` to 1 at `zFar`.
 *
 * Angles are in radians. dst is always written in full, elements not named here with 0. dst may overlap `axis`, `eye`,
 * `at` or `up`.
 *
 * Status: ::korStatusOk, always. There are no checks: planes at the same depth, a width of 0 or an axis of zeros
 * give infinities or NaNs, as the divisions do.
 * @{
 */

/**
 * the identity
 */
int32_t kormIdentity_m4_32f(float *dst);

/**
 * moves by (x, y, z)
 */
int32_t kormTranslation_m4_32f(float x, float y, float z, float *dst);

/**
 * stretches by x, y and z along the axes
 */
int32_t kormScaling_m4_32f(float x, float y, float z, float *dst);

/**
 * turns about x, from y to z
 */
int32_t kormRotationX_m4_32f(float angle, float *dst);

/**
 * turns about y, from z to x
 */
int32_t kormRotationY_m4_32f(float angle, float *dst);

/**
 * turns about z, from x to y
 */
int32_t kormRotationZ_m4_32f(float angle, float *dst);

/**
 * turns about z by roll, then about x by pitch, then about y by yaw
 */
int32_t kormRotationYawPitchRoll_m4_32f(float yaw, float pitch, float roll, float *dst);

/**
 * turns about an axis of any length but 0
 */
int32_t kormRotationAxis_v3m4_32f(const float *axis, float angle, float *dst);

/**
 * from the world to a viewer at eye who looks to at, along +z
 */
int32_t kormLookAtLH_m4_32f(const float *eye, const float *at, const float *up, float *dst);

/**
 * from the world to a viewer at eye who looks to at, along -z
 */
int32_t kormLookAtRH_m4_32f(const float *eye, const float *at, const float *up, float *dst);

/**
 * parallel projection of a box about the z axis
 */
int32_t kormOrthoLH_m4_32f(float viewWidth, float viewHeight, float zNear, float zFar, float *dst);

/**
 * parallel projection of a box about the z axis
 */
int32_t kormOrthoRH_m4_32f(float viewWidth, float viewHeight, float zNear, float zFar, float *dst);

/**
 * parallel projection of any box
 */
int32_t kormOrthoOffCenterLH_m4_32f(
    float left, float right, float bottom, float top, float zNear, float zFar, float *dst);

/**
 * parallel projection of any box
 */
int32_t kormOrthoOffCenterRH_m4_32f(
    float left, float right, float bottom, float top, float zNear, float zFar, float *dst);

/**
 * central projection; the size is that of the view at zNear
 */
int32_t kormPerspectiveLH_m4_32f(float viewWidth, float viewHeight, float zNear, float zFar, float *dst);

/**
 * central projection; the size is that of the view at zNear
 */
int32_t kormPerspectiveRH_m4_32f(float viewWidth, float viewHeight, float zNear, float zFar, float *dst);

/**
 * central projection; aspect is width over height
 */
int32_t kormPerspectiveFovLH_m4_32f(float fovY, float aspect, float zNear, float zFar, float *dst);

/**
 * central projection; aspect is width over height
 */
int32_t kormPerspectiveFovRH_m4_32f(float fovY, float aspect, float zNear, float zFar, float *dst);

/**
 * central projection; the borders are those of the view at zNear
 */
int32_t kormPerspectiveOffCenterLH_m4_32f(
    float left, float right, float bottom, float top, float zNear, float zFar, float *dst);

/**
 * central projection; the borders are those of the view at zNear
 */
int32_t kormPerspectiveOffCenterRH_m4_32f(
    float left, float right, float bottom, float top, float zNear, float zFar, float *dst);

/** @} */


/**
 * @defgroup fixed_matrices Algebra of 4 by 4 matrices
 * A matrix is 16 `float` one behind the other, row by row, at any address.
 *
 * Overlap: dst may be a source; all is read before the first element is written.
 *
 * Status: ::korStatusOk. `kormMul_mm4x4_32f` alone looks for null pointers and gives ::korStatusNullPointer.
 * `kormInvert_m4_32f` gives ::korStatusSingular for a determinant below 2^-119 (1.5046e-36) in magnitude: `det`, if it isn't
 * null, is then 0 and dst is left as it was. Of matrices far from 1 in scale it gives infinities or NaN with ::korStatusOk, as
 * at 1e-5 times the identity, and `kormDet_m4_32f` zero or infinity: docs/ranges.md has the limits, beyond which a matrix is to
 * be scaled by a power of 2 first.
 * @{
 */

/**
 * dst[0] = the determinant of src
 */
int32_t kormDet_m4_32f(const float *src, float *dst);

/**
 * dst = the inverse of src; det may be null, else receives the determinant
 */
int32_t kormInvert_m4_32f(const float *src, float *det, float *dst);

/**
 * dst = the transpose of src
 */
int32_t kormTranspose_m4_32f(const float *src, float *dst);

/**
 * dst = src1 * src2
 *
 * Checks: null.
 */
int32_t kormMul_mm4x4_32f(const float *src1, const float *src2, float *dst);

/**
 * dst = the transpose of src1 * src2
 */
int32_t kormMulTranspose_m4_32f(const float *src1, const float *src2, float *dst);

/**
 * dst[0] = 1 if src[0] is 1 and a column of src is that of the identity, else 0
 */
int32_t kormIsIdentity_m4_32f(const float *src, int32_t *dst);

/** @} */


/**
 * @defgroup transforms Transforms of points and directions
 * A matrix m is 16 `float`, row by row; vectors are rows and stand on its left. The plain forms give all four elements of
 * the product, of points too (w is 1, z of a `v2` is 0): dst has room for four. Coord forms divide by the fourth and
 * lose it, Normal forms leave the translation out and lose it as well.
 *
 * Batches (`m4v2a`, `m4v3a`, `m4v4a`) take vectors at any distances in bytes, zero, negative and odd ones too; nothing
 * between the vectors is touched. A `count` below 1 does nothing. Results are those of the single form, to the bit.
 *
 * Overlap: dst may be the source vector, in a batch the source vectors if the strides agree. In any other overlap of the
 * two the vectors of a batch are done one by one, in ascending order. dst must not overlap the matrix.
 *
 * Status: ::korStatusOk, always, with no checks; a fourth element of zero gives infinities or NaNs.
 *
 * `kormAffineTransform3DH_mva_32f` alone is a form of the general grammar: vectors are columns and stand on the right of
 * a matrix with strides, arguments are checked, long calls are spread over threads. A vector whose fourth element is not
 * above the smallest normal number (1.1754944e-38) in magnitude, or is NaN, gives three times the largest number
 * (3.4028235e38); all others are still done, and the call then returns ::korStatusDivideByZero. Overlap is as in a batch
 * for calls on one thread; on several, vectors that overlap others leave dst undefined.
 * @{
 */

/**
 * dst = src2 * src1, four elements
 */
int32_t kormAffineTransform_m4v2_32f(const float *src1, const float *src2, float *dst);

/**
 * dst = src2 * src1, four elements
 */
int32_t kormAffineTransform_m4v3_32f(const float *src1, const float *src2, float *dst);

/**
 * dst = src2 * src1, four elements
 */
int32_t kormAffineTransform_m4v4_32f(const float *src1, const float *src2, float *dst);

/**
 * dst(k) = src2(k) * src1, four elements
 */
int32_t kormAffineTransform_m4v2a_32f(
    const float *src1, const float *src2, int32_t src2Stride, float *dst, int32_t dstStride, int32_t count);

/**
 * dst(k) = src2(k) * src1, four elements
 */
int32_t kormAffineTransform_m4v3a_32f(
    const float *src1, const float *src2, int32_t src2Stride, float *dst, int32_t dstStride, int32_t count);

/**
 * dst(k) = src2(k) * src1, four elements
 */
int32_t kormAffineTransform_m4v4a_32f(
    const float *src1, const float *src2, int32_t src2Stride, float *dst, int32_t dstStride, int32_t count);

/**
 * dst = src2 * src1, divided by the fourth element
 */
int32_t kormAffineTransformCoord_m4v2_32f(const float *src1, const float *src2, float *dst);

/**
 * dst = src2 * src1, divided by the fourth element
 */
int32_t kormAffineTransformCoord_m4v3_32f(const float *src1, const float *src2, float *dst);

/**
 * dst(k) = src2(k) * src1, divided by the fourth element
 */
int32_t kormAffineTransformCoord_m4v2a_32f(
    const float *src1, const float *src2, int32_t src2Stride, float *dst, int32_t dstStride, int32_t count);

/**
 * dst(k) = src2(k) * src1, divided by the fourth element
 */
int32_t kormAffineTransformCoord_m4v3a_32f(
    const float *src1, const float *src2, int32_t src2Stride, float *dst, int32_t dstStride, int32_t count);

/**
 * dst = src2 * src1 without the translation
 */
int32_t kormAffineTransformNormal_m4v2_32f(const float *src1, const float *src2, float *dst);

/**
 * dst = src2 * src1 without the translation
 */
int32_t kormAffineTransformNormal_m4v3_32f(const float *src1, const float *src2, float *dst);

/**
 * dst(k) = src2(k) * src1 without the translation
 */
int32_t kormAffineTransformNormal_m4v2a_32f(
    const float *src1, const float *src2, int32_t src2Stride, float *dst, int32_t dstStride, int32_t count);

/**
 * dst(k) = src2(k) * src1 without the translation
 */
int32_t kormAffineTransformNormal_m4v3a_32f(
    const float *src1, const float *src2, int32_t src2Stride, float *dst, int32_t dstStride, int32_t count);

/**
 * dst(k) = src1 * (src2(k), 1) with vectors as columns, divided by the fourth element
 *
 * Checks: null, count, stride.
 * Serial up to 784 by 6*count.
 */
int32_t kormAffineTransform3DH_mva_32f(
    const float *src1, int32_t src1RowStride, int32_t src1ElementStride, const float *src2,
    int32_t src2ObjectStride, int32_t src2ElementStride, float *dst, int32_t dstObjectStride,
    int32_t dstElementStride, int32_t count);

/** @} */


/**
 * @defgroup projection Points to a viewport and back
 * A point goes through `world`, `view` and `projection`, is divided by its fourth element, and the square from -1 to 1 is
 * stretched over a viewport with its origin at 0, 0. There y runs downwards: (-1, 1) goes to (0, 0) and (1, -1) to
 * (`viewportWidth`, `viewportHeight`). A depth of 0 goes to `minZ`, of 1 to `maxZ`.
 *
 * The batches multiply the three matrices first and so may differ from the single forms in the last bits. Vectors lie
 * at any distances in bytes, zero, negative and odd ones too. A `count` below 1 does nothing.
 *
 * Overlap: dst may be the source vector, in a batch the source vectors if the strides agree. In any other overlap of the
 * two the vectors of a batch are done one by one, in ascending order. dst must not overlap a matrix.
 *
 * Status: ::korStatusOk, with no checks; a fourth element of zero gives infinities or NaNs. Unproject gives
 * ::korStatusSingular if the product of the matrices has no inverse: dst of the single form then holds the point in
 * normalised coordinates, the batch leaves dst as it was.
 * @{
 */

/**
 * dst = src on the viewport
 */
int32_t kormProject_m4v3_32f(
    const float *projection, const float *view, const float *world, const float *src, float viewportWidth,
    float viewportHeight, float minZ, float maxZ, float *dst);

/**
 * dst(k) = src(k) on the viewport
 */
int32_t kormProject_m4v3a_32f(
    const float *projection, const float *view, const float *world, const float *src, int32_t srcStride,
    float viewportWidth, float viewportHeight, float minZ, float maxZ, float *dst, int32_t dstStride,
    int32_t count);

/**
 * dst = the point that Project puts to src
 */
int32_t kormUnproject_m4v3_32f(
    const float *projection, const float *view, const float *world, const float *src, float viewportWidth,
    float viewportHeight, float minZ, float maxZ, float *dst);

/**
 * dst(k) = the point that Project puts to src(k)
 */
int32_t kormUnproject_m4v3a_32f(
    const float *projection, const float *view, const float *world, const float *src, int32_t srcStride,
    float viewportWidth, float viewportHeight, float minZ, float maxZ, float *dst, int32_t dstStride,
    int32_t count);

/** @} */


/**
 * @defgroup curves Curves and interpolation
 * A point between given points, for vectors of 2, 3 or 4 `float` one behind the other. Parameters outside 0 to 1
 * extrapolate.
 *
 * Overlap: dst may be a source.
 *
 * Status: ::korStatusOk, always, with no checks.
 * @{
 */

/**
 * dst = src1 + f*(src2 - src1) + g*(src3 - src1)
 */
int32_t kormBaryCentric_v2_32f(
    const float *src1, const float *src2, const float *src3, float f, float g, float *dst);

/**
 * dst = src1 + f*(src2 - src1) + g*(src3 - src1)
 */
int32_t kormBaryCentric_v3_32f(
    const float *src1, const float *src2, const float *src3, float f, float g, float *dst);

/**
 * dst = src1 + f*(src2 - src1) + g*(src3 - src1)
 */
int32_t kormBaryCentric_v4_32f(
    const float *src1, const float *src2, const float *src3, float f, float g, float *dst);

/**
 * dst = src1 + (src2 - src1)*t
 */
int32_t kormInterpolationLinear_v2_32f(const float *src1, const float *src2, float t, float *dst);

/**
 * dst = src1 + (src2 - src1)*t
 */
int32_t kormInterpolationLinear_v3_32f(const float *src1, const float *src2, float t, float *dst);

/**
 * dst = src1 + (src2 - src1)*t
 */
int32_t kormInterpolationLinear_v4_32f(const float *src1, const float *src2, float t, float *dst);

/**
 * dst = the cubic from src1 to src3 with the tangents src2 and src4
 */
int32_t kormHermite_v2_32f(
    const float *src1, const float *src2, const float *src3, const float *src4, float t, float *dst);

/**
 * dst = the cubic from src1 to src3 with the tangents src2 and src4
 */
int32_t kormHermite_v3_32f(
    const float *src1, const float *src2, const float *src3, const float *src4, float t, float *dst);

/**
 * dst = the cubic from src1 to src3 with the tangents src2 and src4
 */
int32_t kormHermite_v4_32f(
    const float *src1, const float *src2, const float *src3, const float *src4, float t, float *dst);

/**
 * dst = the cubic from src2 to src3 with tangents from the neighbours src1 and src4
 */
int32_t kormInterpolationCatmullRom_v2_32f(
    const float *src1, const float *src2, const float *src3, const float *src4, float t, float *dst);

/**
 * dst = the cubic from src2 to src3 with tangents from the neighbours src1 and src4
 */
int32_t kormInterpolationCatmullRom_v3_32f(
    const float *src1, const float *src2, const float *src3, const float *src4, float t, float *dst);

/**
 * dst = the cubic from src2 to src3 with tangents from the neighbours src1 and src4
 */
int32_t kormInterpolationCatmullRom_v4_32f(
    const float *src1, const float *src2, const float *src3, const float *src4, float t, float *dst);

/** @} */
#ifdef __cplusplus
}
#endif

#endif
