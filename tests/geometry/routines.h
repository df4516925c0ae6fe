// What a function of fixed size must show. Called by the tests with the real library, and with libraries that are wrong
// on purpose.
#pragma once

#include "../routines/routines.h"
#include "functions.h"

namespace kormtest {

// Results to the bit and not one byte beside them, at random places.
Verdict checkGeometryResults(const GeometryFunction& function, const Library& library, const Options& options);

// A single case of that; all choices are the generator's.
Verdict geometryCase(const GeometryFunction& function, const Library& library, Random& random);

// Batches: every pair of strides, counts from below 1 to 40, every alignment that could select a path of its own.
Verdict checkGeometryBatches(const GeometryFunction& function, const Library& library, const Options& options);

// Null pointers in every combination, for the one function that looks at them.
Verdict checkGeometryNulls(const GeometryFunction& function, const Library& library, const Options& options);

// The call frame at every stack alignment.
Verdict checkGeometryCallFrame(const GeometryFunction& function, const Library& library, const Options& options);

}  // namespace kormtest
