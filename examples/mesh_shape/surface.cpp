#include "surface.h"

#include <algorithm>
#include <cmath>
#include <map>
#include <utility>

namespace example {

Point cross(const Point& a, const Point& b) {
    return {a[1] * b[2] - a[2] * b[1], a[2] * b[0] - a[0] * b[2], a[0] * b[1] - a[1] * b[0]};
}

Point ofLengthOne(const Point& a) {
    const float length = std::sqrt(dot(a, a));
    return length > 0 ? Point{a[0] / length, a[1] / length, a[2] / length} : Point{};
}

namespace {

// For each vertex those that share an edge with it, ascending.
std::vector<std::vector<std::uint32_t>> edgesOf(const Surface& surface) {
    std::vector<std::vector<std::uint32_t>> edges(surface.points.size());
    for (const auto& corners : surface.triangles) {
        for (std::size_t i = 0; i < 3; ++i) {
            edges[corners[i]].push_back(corners[(i + 1) % 3]);
            edges[corners[i]].push_back(corners[(i + 2) % 3]);
        }
    }
    for (auto& ends : edges) {
        std::sort(ends.begin(), ends.end());
        ends.erase(std::unique(ends.begin(), ends.end()), ends.end());
    }
    return edges;
}

void findNeighbours(Surface& surface) {
    const auto edges = edgesOf(surface);
    std::vector<std::uint32_t> seenFor(surface.points.size(), UINT32_MAX);
    surface.first.assign(1, 0);
    for (std::uint32_t v = 0; v < surface.points.size(); ++v) {
        const std::size_t start = surface.neighbours.size();
        seenFor[v] = v;
        const auto add = [&](std::uint32_t end) {
            if (seenFor[end] == v || surface.neighbours.size() - start == mostNeighbours) return;
            seenFor[end] = v;
            surface.neighbours.push_back(end);
        };
        for (const std::uint32_t end : edges[v]) add(end);
        for (const std::uint32_t end : edges[v])
            for (const std::uint32_t next : edges[end]) add(next);
        surface.first.push_back(surface.neighbours.size());
    }
}

// The cross product of two sides is as long as twice the area, so larger triangles weigh more.
void averageNormals(Surface& surface) {
    surface.normals.assign(surface.points.size(), Point{});
    for (const auto& corners : surface.triangles) {
        const Point& a = surface.points[corners[0]];
        const Point upright =
            cross(difference(surface.points[corners[1]], a), difference(surface.points[corners[2]], a));
        for (const std::uint32_t v : corners)
            for (std::size_t i = 0; i < 3; ++i) surface.normals[v][i] += upright[i];
    }
    for (Point& normal : surface.normals) normal = ofLengthOne(normal);
}

}  // namespace

Surface surfaceOf(std::vector<Point> points, std::vector<std::array<std::uint32_t, 3>> triangles) {
    Surface surface;
    surface.points = std::move(points);
    surface.triangles = std::move(triangles);
    averageNormals(surface);
    findNeighbours(surface);
    return surface;
}

Surface surfaceOf(const aiScene& scene) {
    std::vector<Point> points;
    std::vector<std::array<std::uint32_t, 3>> triangles;
    std::vector<std::vector<std::uint32_t>> vertices(scene.mNumMeshes);
    std::map<Point, std::uint32_t> places;
    for (unsigned m = 0; m < scene.mNumMeshes; ++m) {
        const aiMesh& mesh = *scene.mMeshes[m];
        for (unsigned k = 0; k < mesh.mNumVertices; ++k) {
            const aiVector3D& at = mesh.mVertices[k];
            const auto [place, isNew] =
                places.try_emplace(Point{at.x, at.y, at.z}, static_cast<std::uint32_t>(points.size()));
            if (isNew) points.push_back(place->first);
            vertices[m].push_back(place->second);
        }
        for (unsigned f = 0; f < mesh.mNumFaces; ++f) {
            const unsigned* const corner = mesh.mFaces[f].mIndices;
            triangles.push_back({vertices[m][corner[0]], vertices[m][corner[1]], vertices[m][corner[2]]});
        }
    }
    Surface surface = surfaceOf(std::move(points), std::move(triangles));
    surface.vertices = std::move(vertices);
    return surface;
}

}  // namespace example
