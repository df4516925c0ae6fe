// Checks of the surfaces' shapes on those whose curvature and normals are known.
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <functional>
#include <string>

#include "curvature.h"
#include "korm.h"
#include "normals.h"

namespace {

using namespace example;

constexpr float pi = 3.14159265F;

// A net of rows by columns over a surface that is given by two parameters; the last column meets the first if `isClosed`.
Surface net(std::uint32_t rows, std::uint32_t columns, bool isClosed, const std::function<Point(float, float)>& at) {
    std::vector<Point> points;
    for (std::uint32_t i = 0; i < rows; ++i)
        for (std::uint32_t j = 0; j < columns; ++j)
            points.push_back(at(static_cast<float>(i) / static_cast<float>(rows),
                                static_cast<float>(j) / static_cast<float>(columns)));
    std::vector<std::array<std::uint32_t, 3>> triangles;
    for (std::uint32_t i = 0; i + 1 < rows; ++i) {
        for (std::uint32_t j = 0; j + (isClosed ? 0 : 1) < columns; ++j) {
            const std::uint32_t next = (j + 1) % columns, here = i * columns + j, right = i * columns + next;
            triangles.push_back({here, here + columns, right});
            triangles.push_back({right, here + columns, right + columns});
        }
    }
    return surfaceOf(std::move(points), std::move(triangles));
}

Surface sphere(float radius) {
    return net(60, 90, true, [=](float i, float j) {
        const float latitude = pi * (0.1F + 0.8F * i), longitude = 2 * pi * j;
        return Point{radius * std::sin(latitude) * std::cos(longitude), radius * std::cos(latitude),
                     -radius * std::sin(latitude) * std::sin(longitude)};
    });
}

Surface cylinder(float radius) {
    return net(40, 90, true, [=](float i, float j) {
        return Point{radius * std::cos(2 * pi * j), -3 * radius * i, -radius * std::sin(2 * pi * j)};
    });
}

Surface plane() {
    return net(30, 30, false, [](float i, float j) { return Point{j, 0, i}; });
}

bool passes(bool good, const char* what, double value) {
    std::printf("%s: %s (%g)\n", good ? "passed" : "FAILED", what, value);
    return good;
}

// The largest distance of an inner vertex's curvature from what it should be, and of both solutions from each other.
bool curvature(const char* name, const Surface& surface, std::size_t columns, float expected, float tolerance) {
    std::vector<QuadricProblems> problems = quadricProblems(surface);
    std::vector<Quadric> quadrics(surface.points.size()), peers(surface.points.size());
    solveWithEigen(problems, peers);
    if (solveWithKorm(problems, quadrics) != korStatusOk) return passes(false, name, -1);
    const float off = largestDifference(quadrics, peers);
    bool good = passes(off <= quadricTolerance, "both solutions agree", double{off});
    const std::vector<float> curvatures = meanCurvatures(surface, quadrics);
    float worst = 0;
    // Rows at the edges of the net have neighbours on one side only.
    for (std::size_t v = 2 * columns; v + 2 * columns < curvatures.size(); ++v) {
        const std::size_t column = v % columns;
        if (expected == 0 && (column < 2 || column + 2 >= columns)) continue;
        const float distance = std::fabs(curvatures[v] - expected);
        if (!(distance <= worst)) worst = distance;
    }
    return passes(worst <= tolerance, name, double{worst}) && good;
}

bool normals(const char* name, const Surface& surface, std::size_t columns, float degrees) {
    std::vector<Covariance> covariances = covariancesOf(surface);
    std::vector<Axes> axes(covariances.size());
    std::vector<Point> lengths(covariances.size());
    solveWithKorm(covariances, axes, lengths);
    const float off = largestResidual(covariances, axes, lengths);
    const bool good = passes(off < 2e-6F, "axes are eigenvectors", double{off});
    const std::vector<Point> found = orientedNormals(surface, axes);
    float worst = 1;
    for (std::size_t v = 2 * columns; v + 2 * columns < found.size(); ++v) {
        const float cosine = dot(found[v], surface.normals[v]);
        if (!(cosine >= worst)) worst = cosine;
    }
    const float angle = std::acos(std::fmin(worst, 1.0F)) * 180 / pi;
    return passes(angle <= degrees, name, double{angle}) && good;
}

}  // namespace

int main() {
    bool good = curvature("curvature of a sphere of radius 2", sphere(2), 90, 0.5F, 0.02F);
    good = curvature("curvature of a small sphere", sphere(0.01F), 90, 100, 4) && good;
    good = curvature("curvature of a cylinder of radius 0.5", cylinder(0.5F), 90, 1, 0.04F) && good;
    good = curvature("curvature of a plane", plane(), 30, 0, 1e-5F) && good;
    good = normals("normals of a sphere", sphere(2), 90, 1) && good;
    good = normals("normals of a cylinder", cylinder(0.5F), 90, 1) && good;
    return good ? EXIT_SUCCESS : EXIT_FAILURE;
}
