// The processor variant that this code is compiled for.
//
// Everything of the library stands in the variant's inline namespace, so that the same sources can be compiled for
// several instruction sets and linked into one binary without one build's functions taking the place of another's.
#pragma once

#ifndef KORM_VARIANT
#define KORM_VARIANT v8       // prefix of all internal names, too
#define KORM_VECTOR_BYTES 16  // of the vectors that kernels use where nothing ties them to a number of lanes
#endif

// What profiles and stack traces show of a function that has a name of its own there.
#define KORM_QUOTED(variant) #variant
#define KORM_PREFIXED(variant, name) KORM_QUOTED(variant) "_" name
#define KORM_SYMBOL(name) KORM_PREFIXED(KORM_VARIANT, name)
