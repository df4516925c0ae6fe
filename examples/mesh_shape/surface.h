// The surface of a model as one net: vertices in the same place are one, and each knows those around it.
#pragma once

#include <array>
#include <vector>

#include "../model.h"

namespace example {

using Point = std::array<float, 3>;

struct Surface {
    std::vector<Point> points;
    std::vector<Point> normals;  // of length 1, the average over the triangles around; 0 where they have no area
    std::vector<std::array<std::uint32_t, 3>> triangles;
    // Of mesh m's vertex k: vertices[m][k] is its place in `points`.
    std::vector<std::vector<std::uint32_t>> vertices;

    // Around vertex v: neighbours[first[v]] to neighbours[first[v + 1] - 1]. Those that share an edge with v come first,
    // then theirs.
    std::vector<std::size_t> first;
    std::vector<std::uint32_t> neighbours;
    std::size_t neighbourCount(std::size_t v) const { return first[v + 1] - first[v]; }
};

// A vertex has as many neighbours as two steps along edges reach, but not more than this.
inline constexpr std::size_t mostNeighbours = 24;

Surface surfaceOf(const aiScene& scene);

// As above, for a net that is given.
Surface surfaceOf(std::vector<Point> points, std::vector<std::array<std::uint32_t, 3>> triangles);

inline float dot(const Point& a, const Point& b) { return a[0] * b[0] + a[1] * b[1] + a[2] * b[2]; }
inline Point difference(const Point& a, const Point& b) { return {a[0] - b[0], a[1] - b[1], a[2] - b[2]}; }
Point cross(const Point& a, const Point& b);
Point ofLengthOne(const Point& a);  // or 0

}  // namespace example
