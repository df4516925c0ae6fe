"""The public header and the export list."""

import emit

PREAMBLE = '''\
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
'''

POSTAMBLE = '''
#ifdef __cplusplus
}
#endif

#endif
'''


def comment(lines):
    return "\n".join(["/**"] + [f" * {line}".rstrip() for line in lines] + [" */"])


def limits_text(form):
    limit = form.limit
    if limit is None:
        return []
    word = "below" if limit.comparison == "<" else "up to"
    numbers = f"{limit.plain}" if limit.plain == limit.general else f"{limit.plain} ({limit.general} if an element stride is not {form.size})"
    return [f"Serial {word} {numbers} by {form.family.estimate.replace(' * ', '*')}."]


def function(form):
    checks = ", ".join(check.words for check in form.checks)
    match = [f"Sizes match when {form.family.match}."] if form.family.match else []
    lines = [f"{form.formula}"] + (["", f"Checks: {checks}."] if checks else []) + match + limits_text(form)
    return comment(lines) + "\n" + emit.wrapped(f"int32_t {form.name}(", emit.c_declarations(form), ");")


def group(name, about, members):
    title, *text = about.strip().split("\n")
    opening = comment([f"@defgroup {name} {title}"] + text + ["@{"])
    return "\n\n".join(["", opening] + members + ["/** @} */"])


def text(families, queries, groups):
    """Groups in the order of the tables; in a group the functions as the tables list them."""
    parts = [PREAMBLE]
    for name, about in groups.items():
        members = [
            f"{comment([query.brief])}\n{query.returns}{query.name}({query.arguments});"
            for query in queries
            if query.group == name
        ]
        members += [function(form) for family in families if family.group == name for form in family.forms()]
        parts.append(group(name, about, members))
    return "\n".join(parts) + POSTAMBLE


def exports_map(exports):
    """The linker's version script: these names leave the library, and nothing else."""
    names = "".join(f"        {form.name};\n" for form in exports)
    return f"# {emit.NOTICE}\n{{\n    global:\n{names}    local:\n        *;\n}};\n"
