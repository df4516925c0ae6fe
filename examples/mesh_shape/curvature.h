// How a surface bends at each vertex: a quadric is fitted to the vertices around it, by least squares.
#pragma once

#include <vector>

#include "surface.h"

namespace example {

// In the tangent plane of vertex v, with its mean distance to its neighbours as the unit:
// z = q[0]*x*x + q[1]*x*y + q[2]*y*y + q[3]*x + q[4]*y.
inline constexpr std::int32_t coefficients = 5;
using Quadric = std::array<float, coefficients>;

// The problems of all vertices that have the same number of neighbours: one matrix and one right side each, packed.
// Behind the rows of the neighbours stand as many more as there are coefficients, which pull each of these to 0 a little:
// so no matrix is singular, even where all neighbours lie on one line.
struct QuadricProblems {
    std::int32_t height = 0;              // rows of a matrix
    std::vector<std::uint32_t> vertices;  // whose they are
    std::vector<float> matrices, rightSides;
};
inline constexpr float pull = 0.1F;
inline constexpr std::int32_t mostRows = static_cast<std::int32_t>(mostNeighbours) + coefficients;

std::vector<QuadricProblems> quadricProblems(const Surface& surface);

// A decomposition and a solve for each number of neighbours, two calls. They leave the factors in `matrices`. Returns
// korm's status.
std::int32_t solveWithKorm(std::vector<QuadricProblems>& problems, std::vector<Quadric>& quadrics);

// The same, matrix by matrix.
void solveWithEigen(const std::vector<QuadricProblems>& problems, std::vector<Quadric>& quadrics);

// Both sum in orders of their own. The condition of a matrix is below 100, a residual is about as large as a coefficient
// at most, so that rounding changes a coefficient by less than this.
inline constexpr float quadricTolerance = 1e-3F;
float largestDifference(const std::vector<Quadric>& a, const std::vector<Quadric>& b);

// Mean curvatures, in the model's unit: the inverse of a sphere's radius, half of that for a cylinder. Positive where the
// surface bends away from its normal, 0 where it has no normal.
std::vector<float> meanCurvatures(const Surface& surface, const std::vector<Quadric>& quadrics);

}  // namespace example
