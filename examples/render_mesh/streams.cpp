// Between an array of structures, as models have them, and streams, as passes over one coordinate want them.
#include <algorithm>
#include <cstring>

#include "korm.h"
#include "render.h"

namespace example {

StreamTimes copyThroughStreams(const aiScene& scene) {
    // The model's vertices one behind the other, again and again until there are enough.
    std::vector<aiVector3D> vertices;
    vertices.reserve(StreamTimes::points);
    while (vertices.size() < StreamTimes::points)
        for (unsigned m = 0; m < scene.mNumMeshes; ++m) {
            const aiMesh& mesh = *scene.mMeshes[m];
            const std::size_t room = StreamTimes::points - vertices.size();
            vertices.insert(vertices.end(), mesh.mVertices,
                            mesh.mVertices + std::min<std::size_t>(mesh.mNumVertices, room));
        }
    std::vector<float> x(vertices.size()), y(vertices.size()), z(vertices.size());
    std::vector<aiVector3D> again(vertices.size());
    float* const streams[coordinates] = {x.data(), y.data(), z.data()};
    const auto count = static_cast<std::int32_t>(vertices.size());

    StreamTimes times;
    auto start = std::chrono::steady_clock::now();
    kormCopy_va_32f_SP(&vertices[0].x, vertexStride, elementStride, streams, 0, elementStride, coordinates, count);
    times.toStreams = microsecondsSince(start);
    start = std::chrono::steady_clock::now();
    kormCopy_va_32f_PS(streams, 0, elementStride, &again[0].x, vertexStride, elementStride, coordinates, count);
    times.back = microsecondsSince(start);
    if (std::memcmp(again.data(), vertices.data(), vertices.size() * sizeof(aiVector3D)) != 0)
        throw Failure("points came back from their streams as others");
    return times;
}

}  // namespace example
