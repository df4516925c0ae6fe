#include "curvature.h"

#include <algorithm>
#include <cmath>

#include "korm.h"

namespace example {
namespace {

float meanDistance(const Surface& surface, std::size_t v) {
    float sum = 0;
    for (std::size_t k = surface.first[v]; k < surface.first[v + 1]; ++k) {
        const Point along = difference(surface.points[surface.neighbours[k]], surface.points[v]);
        sum += std::sqrt(dot(along, along));
    }
    return sum / static_cast<float>(surface.neighbourCount(v));
}

bool canBeFitted(const Surface& surface, std::size_t v) {
    return surface.neighbourCount(v) > 0 && dot(surface.normals[v], surface.normals[v]) > 0 &&
           meanDistance(surface, v) > 0;
}

void addProblem(const Surface& surface, std::uint32_t v, QuadricProblems& problems) {
    const Point& normal = surface.normals[v];
    // Any direction that isn't the normal's gives one in the tangent plane.
    const Point other = std::fabs(normal[0]) < 0.6F ? Point{1, 0, 0} : Point{0, 1, 0};
    const Point first = ofLengthOne(cross(normal, other)), second = cross(normal, first);
    const float unit = 1 / meanDistance(surface, v);
    problems.vertices.push_back(v);
    for (std::size_t k = surface.first[v]; k < surface.first[v + 1]; ++k) {
        const Point along = difference(surface.points[surface.neighbours[k]], surface.points[v]);
        const float x = dot(along, first) * unit, y = dot(along, second) * unit;
        for (const float element : {x * x, x * y, y * y, x, y}) problems.matrices.push_back(element);
        problems.rightSides.push_back(dot(along, normal) * unit);
    }
    for (int i = 0; i < coefficients; ++i) {
        for (int j = 0; j < coefficients; ++j) problems.matrices.push_back(i == j ? pull : 0);
        problems.rightSides.push_back(0);
    }
}

}  // namespace

std::vector<QuadricProblems> quadricProblems(const Surface& surface) {
    std::vector<QuadricProblems> byCount(mostNeighbours + 1);
    for (std::uint32_t v = 0; v < surface.points.size(); ++v)
        if (canBeFitted(surface, v)) addProblem(surface, v, byCount[surface.neighbourCount(v)]);
    std::vector<QuadricProblems> problems;
    for (std::size_t count = 0; count < byCount.size(); ++count) {
        if (byCount[count].vertices.empty()) continue;
        byCount[count].height = static_cast<std::int32_t>(count) + coefficients;
        problems.push_back(std::move(byCount[count]));
    }
    return problems;
}

std::int32_t solveWithKorm(std::vector<QuadricProblems>& problems, std::vector<Quadric>& quadrics) {
    float buffer[mostRows];
    std::vector<Quadric> solutions;
    constexpr std::int32_t rowStride = coefficients * elementStride;
    for (QuadricProblems& p : problems) {
        const auto count = static_cast<std::int32_t>(p.vertices.size());
        const std::int32_t matrixStride = p.height * rowStride, vectorStride = p.height * elementStride;
        float* const matrices = p.matrices.data();
        std::int32_t status =
            kormQRDecomp_ma_32f(matrices, matrixStride, rowStride, elementStride, buffer, matrices, matrixStride,
                                rowStride, elementStride, coefficients, p.height, count);
        if (status != korStatusOk) return status;
        solutions.resize(p.vertices.size());
        status = kormQRBackSubst_mava_32f(matrices, matrixStride, rowStride, elementStride, buffer, p.rightSides.data(),
                                          vectorStride, elementStride, solutions.front().data(), sizeof(Quadric),
                                          elementStride, coefficients, p.height, count);
        if (status != korStatusOk) return status;
        for (std::size_t k = 0; k < p.vertices.size(); ++k) quadrics[p.vertices[k]] = solutions[k];
    }
    return korStatusOk;
}

float largestDifference(const std::vector<Quadric>& a, const std::vector<Quadric>& b) {
    float largest = 0;
    for (std::size_t k = 0; k < a.size(); ++k)
        for (std::size_t i = 0; i < coefficients; ++i) {
            const float off = std::fabs(a[k][i] - b[k][i]);
            if (!(off <= largest)) largest = off;
        }
    return largest;
}

std::vector<float> meanCurvatures(const Surface& surface, const std::vector<Quadric>& quadrics) {
    std::vector<float> curvatures(surface.points.size());
    for (std::size_t v = 0; v < curvatures.size(); ++v) {
        if (!canBeFitted(surface, v)) continue;
        const auto& [xx, xy, yy, x, y] = quadrics[v];
        const float slope = 1 + x * x + y * y;
        const float bend = (1 + y * y) * 2 * xx - 2 * x * y * xy + (1 + x * x) * 2 * yy;
        curvatures[v] = -bend / (2 * slope * std::sqrt(slope)) / meanDistance(surface, v);
    }
    return curvatures;
}

}  // namespace example
