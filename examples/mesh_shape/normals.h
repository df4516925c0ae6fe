// Normals for a surface that has none: across the plane in which the vertices around a vertex lie best.
#pragma once

#include <vector>

#include "surface.h"

namespace example {

using Covariance = std::array<float, 9>;  // 3 by 3, row by row; symmetric
using Axes = std::array<float, 9>;        // its eigenvectors as columns, the longest first

// Of a vertex and those around it, with this trace, and with `lift` added to the diagonal. The eigenvectors are those of the
// covariance itself. korm's tests are absolute, so what is small beside a large matrix is small; and what is added keeps the
// product of the eigenvalues away from 0, which korm refuses as singular: vertices in a plane have one eigenvalue that is 0.
inline constexpr float trace = 0x1p20F, lift = trace / 8;
std::vector<Covariance> covariancesOf(const Surface& surface);

// All in one call. About one matrix in 30,000 doesn't converge, because a sweep comes to nothing within an absolute limit;
// scaled otherwise it does. Returns how many had to be scaled.
std::size_t solveWithKorm(std::vector<Covariance>& covariances, std::vector<Axes>& axes, std::vector<Point>& lengths);

// The same with Eigen's iterative solver, and with its closed form for order 3.
void solveByIteration(const std::vector<Covariance>& covariances, std::vector<Axes>& axes, std::vector<Point>& lengths);
void solveInClosedForm(const std::vector<Covariance>& covariances, std::vector<Axes>& axes,
                       std::vector<Point>& lengths);

// By how much matrix * axis differs from length * axis, at most, as a share of the trace.
float largestResidual(const std::vector<Covariance>& covariances, const std::vector<Axes>& axes,
                      const std::vector<Point>& lengths);

// The shortest axis of each vertex, turned outwards: from the vertex that lies furthest out, along edges, each like the
// neighbour's that it deviates from least.
std::vector<Point> orientedNormals(const Surface& surface, const std::vector<Axes>& axes);

}  // namespace example
