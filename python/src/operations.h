// The operations as the module has them: positional arguments in, a new reference or Raised out.
#pragma once

#include "python.h"

namespace korm::python {

using Arguments = PyObject* const*;

// direct.cpp: a call, or two, on the arrays as they lie
PyObject* determinant(Arguments);    // a, out
PyObject* trace(Arguments);          // a, out
PyObject* vectorNorm(Arguments);     // x, out
PyObject* frobeniusNorm(Arguments);  // a, out
PyObject* transpose(Arguments);      // a, out
PyObject* cross(Arguments);          // a, b, out
PyObject* dot(Arguments);            // a, b, out
PyObject* combine(Arguments);        // alpha, x, beta or None, y, out
PyObject* gaxpy(Arguments);          // a, x, y, out
PyObject* cholesky(Arguments);       // a, out

// products.cpp
PyObject* matmul(Arguments);  // a, b, out

// elementwise.cpp
PyObject* add(Arguments);       // a, b, out
PyObject* subtract(Arguments);  // a, b, out
PyObject* scale(Arguments);     // a, factor, out

// transforms.cpp: of 4 by 4 matrices of float32
PyObject* transform(Arguments);   // kind, matrix, vectors, out
PyObject* toViewport(Arguments);  // back, projection, view, world, points, viewport, out

// linear.cpp: decompositions, in blocks where korm has no form for the whole
PyObject* inverse(Arguments);       // a, out
PyObject* solve(Arguments);         // a, b, out
PyObject* lu(Arguments);            // a
PyObject* qr(Arguments);            // a
PyObject* leastSquares(Arguments);  // a, b

// eigen.cpp
PyObject* symmetricEigen(Arguments);  // a, upper, vectors
PyObject* generalEigen(Arguments);    // a, vectors

}
