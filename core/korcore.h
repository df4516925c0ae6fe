/* The core library: the two questions about the machine that korm asks.
 *
 * korm calls both through ordinary dynamic symbols. A program that defines and exports functions of the
 * same names answers in their place; that is how a host sets a limit of its own on korm's threads.
 */
#ifndef KORCORE_H
#define KORCORE_H

#include <stdint.h>

#ifdef __cplusplus
extern "C" {
#endif

#if defined(__GNUC__)
#pragma GCC visibility push(default)
#endif

/* The number of threads that a call may use, at least 1: what the OpenMP runtime would take for the
 * next parallel region (OMP_NUM_THREADS, omp_set_num_threads). Asked anew by every call that is large
 * enough to fork. */
int32_t ownGetNumThreads(void);

/* Stores the size of the largest cache in bytes, at most INT32_MAX, or 0 if the system doesn't tell.
 * Returns 0, or -8 (a null pointer) if `bytes` is null; then nothing is stored. */
int32_t korGetMaxCacheSizeB(int32_t* bytes);

#if defined(__GNUC__)
#pragma GCC visibility pop
#endif

#ifdef __cplusplus
}
#endif

#endif
