// From a model to a picture, and from a pixel back to the model.
#pragma once

#include <functional>
#include <optional>
#include <vector>

#include "../model.h"
#include "camera.h"

namespace example {

struct Colour {
    float r = 0, g = 0, b = 0;
};

// A mesh after korm has been over it.
struct ProjectedMesh {
    std::vector<float> points;   // x, y in samples, depth 0 (near) to 1 (far); 4 elements a vertex, the last unused
    std::vector<float> normals;  // in the viewer's space, of length 1; 3 elements a vertex
    Colour colour;
    std::vector<Colour> colours;  // one a vertex in place of `colour`, or none
};

struct KormTimes {
    double matrices = 0, projecting = 0, normals = 0, picking = 0;  // microseconds
};

std::vector<ProjectedMesh> projectAll(const aiScene& scene, const Camera& camera, KormTimes& times);

// A camera through which the model fills the picture, times `options.zoom`. A first look tells how much of the picture
// the model fills as it stands. No vertex is further from the origin than `radius`.
Camera fittingCamera(const aiScene& scene, CameraOptions options, float radius, int samplesAcross, KormTimes& times);

// The samples of a picture: depth, which triangle, and the light that comes from it.
struct Frame {
    int width = 0, height = 0;
    std::vector<float> depth;
    std::vector<std::int32_t> triangle;  // counted over all meshes, -1 for none
    std::vector<Colour> colour;
    Frame(int w, int h);
    std::size_t at(int x, int y) const {
        return static_cast<std::size_t>(y) * static_cast<std::size_t>(width) + static_cast<std::size_t>(x);
    }
};

// Told from time to time how much is done, from 0 to 1.
using Progress = std::function<void(double)>;

void rasterise(const aiScene& scene, const std::vector<ProjectedMesh>& meshes, std::int32_t highlighted, Frame& frame,
               const Progress& progress);

// Averages the samples of each pixel over a background; 3 bytes a pixel, rows from the top.
std::vector<unsigned char> resolve(const Frame& frame, int samplesAcross);

struct Picked {
    unsigned mesh = 0, face = 0;
    std::int32_t triangle = 0;  // counted over all meshes
    float point[3] = {};        // in the model's space
    float distance = 0;         // as a share of the way from the near to the far plane
};

// The nearest triangle under the middle of a pixel. The pixel is unprojected onto the near and the far plane, and the
// line between is cut with every triangle.
std::optional<Picked> pick(const aiScene& scene, const Camera& camera, float x, float y, KormTimes& times);

// Microseconds of one call each, for so many of the model's vertices: to a stream for each of x, y and z, and back.
struct StreamTimes {
    static constexpr std::size_t points = 100'000;
    double toStreams = 0, back = 0;
};
StreamTimes copyThroughStreams(const aiScene& scene);

std::int64_t triangleCount(const aiScene& scene);

}  // namespace example
