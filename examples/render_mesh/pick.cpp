#include "korm.h"
#include "render.h"

namespace example {
namespace {

// Where the line from + t * along meets the triangle: t, or nothing. The volumes of the tetrahedra that the line spans
// with the sides have one sign where it passes inside.
std::optional<float> cut(const float from[3], const float along[3], const float* a, const float* b, const float* c) {
    float ab[3], ac[3], af[3], normal[3], q[3];
    kormSub_v3_32f(b, a, ab);
    kormSub_v3_32f(c, a, ac);
    kormSub_v3_32f(from, a, af);
    kormCrossProduct_v3_32f(along, ac, normal);
    float det, u, v, t;
    kormDotProduct_v3_32f(ab, normal, &det);
    if (!(det != 0)) return std::nullopt;
    kormDotProduct_v3_32f(af, normal, &u);
    u /= det;
    kormCrossProduct_v3_32f(af, ab, q);
    kormDotProduct_v3_32f(along, q, &v);
    v /= det;
    if (!(u >= 0 && v >= 0 && u + v <= 1)) return std::nullopt;
    kormDotProduct_v3_32f(ac, q, &t);
    t /= det;
    if (!(t >= 0 && t <= 1)) return std::nullopt;
    return t;
}

}  // namespace

std::optional<Picked> pick(const aiScene& scene, const Camera& camera, float x, float y, KormTimes& times) {
    const auto start = std::chrono::steady_clock::now();
    float from[3] = {x, y, 0}, to[3] = {x, y, 1}, along[3];
    for (float* const point : {from, to}) {
        if (kormUnproject_m4v3_32f(camera.projection.data(), camera.view.data(), camera.world.data(), point,
                                   camera.viewportWidth, camera.viewportHeight, 0, 1, point) != korStatusOk)
            throw Failure("the view is singular");
    }
    kormSub_v3_32f(to, from, along);
    std::optional<Picked> nearest;
    std::int32_t triangle = 0;
    for (unsigned m = 0; m < scene.mNumMeshes; ++m) {
        const aiMesh& mesh = *scene.mMeshes[m];
        for (unsigned f = 0; f < mesh.mNumFaces; ++f, ++triangle) {
            const unsigned* const corners = mesh.mFaces[f].mIndices;
            const auto t = cut(from, along, &mesh.mVertices[corners[0]].x, &mesh.mVertices[corners[1]].x,
                               &mesh.mVertices[corners[2]].x);
            if (!t || (nearest && *t >= nearest->distance)) continue;
            nearest = Picked{m, f, triangle, {}, *t};
        }
    }
    if (nearest) kormInterpolationLinear_v3_32f(from, to, nearest->distance, nearest->point);
    times.picking += microsecondsSince(start);
    return nearest;
}

}  // namespace example
