// Loops over cglm's inline functions, which use SIMD instructions.
#include <cglm/cglm.h>

#include "work.h"

namespace bench {
namespace {

enum class Kind { affine, coord, normal, project, unproject };

template <Kind kind, int inputs, int from, int to>
[[gnu::noinline]] void cglmLoop(const Batch& work) {
    mat4 m;
    glm_mat4_ucopy(reinterpret_cast<vec4*>(const_cast<float*>(work.matrix)), m);
    const float* __restrict source = work.source;
    float* __restrict result = work.result;
    const std::ptrdiff_t count = work.count;
    const float halfWidth = 0.5F * work.viewport[0], halfHeight = 0.5F * work.viewport[1];
    const float minZ = work.viewport[2], depth = work.viewport[3] - work.viewport[2];
    for (std::ptrdiff_t k = 0; k < count; ++k) {
        const float* const p = source + k * from;
        float* const d = result + k * to;
        CGLM_ALIGN(16) vec4 v = {p[0], p[1], inputs > 2 ? p[2] : 0.0F, inputs > 3 ? p[3] : 1.0F};
        CGLM_ALIGN(16) vec4 c;
        if constexpr (kind == Kind::affine) {
            glm_mat4_mulv(m, v, c);
            glm_vec4_ucopy(c, d);
        } else {
            if constexpr (kind == Kind::normal) v[3] = 0;
            if constexpr (kind == Kind::unproject) {
                v[0] = v[0] / halfWidth - 1.0F;
                v[1] = 1.0F - v[1] / halfHeight;
                v[2] = (v[2] - minZ) / depth;
            }
            glm_mat4_mulv(m, v, c);
            if constexpr (kind != Kind::normal) glm_vec4_divs(c, c[3], c);
            if constexpr (kind == Kind::project) {
                c[0] = c[0] * halfWidth + halfWidth;
                c[1] = halfHeight - c[1] * halfHeight;
                c[2] = c[2] * depth + minZ;
            }
            for (int j = 0; j < inputs; ++j) d[j] = c[j];
        }
    }
}

}  // namespace

void addCglmBatches(std::vector<BatchRow>& rows) {
    const auto add = [&](const char* name, void (*run)(const Batch&)) { compete(rows, name, "cglm", run); };
    add("AffineTransform_m4v2a/8-16", cglmLoop<Kind::affine, 2, 2, 4>);
    add("AffineTransform_m4v3a/12-16", cglmLoop<Kind::affine, 3, 3, 4>);
    add("AffineTransform_m4v3a/16-16", cglmLoop<Kind::affine, 3, 4, 4>);
    add("AffineTransform_m4v4a/16-16", cglmLoop<Kind::affine, 4, 4, 4>);
    add("AffineTransformCoord_m4v2a/8-8", cglmLoop<Kind::coord, 2, 2, 2>);
    add("AffineTransformCoord_m4v3a/12-12", cglmLoop<Kind::coord, 3, 3, 3>);
    add("AffineTransformCoord_m4v3a/16-16", cglmLoop<Kind::coord, 3, 4, 4>);
    add("AffineTransformCoord_m4v3a/32-12", cglmLoop<Kind::coord, 3, 8, 3>);
    add("AffineTransformNormal_m4v2a/8-8", cglmLoop<Kind::normal, 2, 2, 2>);
    add("AffineTransformNormal_m4v3a/12-12", cglmLoop<Kind::normal, 3, 3, 3>);
    add("AffineTransformNormal_m4v3a/16-16", cglmLoop<Kind::normal, 3, 4, 4>);
    add("AffineTransformNormal_m4v3a/32-32", cglmLoop<Kind::normal, 3, 8, 8>);
    add("Project_m4v3a/12-12", cglmLoop<Kind::project, 3, 3, 3>);
    add("Unproject_m4v3a/12-12", cglmLoop<Kind::unproject, 3, 3, 3>);
    add("AffineTransform3DH_mva/12-12", cglmLoop<Kind::coord, 3, 3, 3>);
    add("AffineTransform3DH_mva/16-16", cglmLoop<Kind::coord, 3, 4, 4>);
}

}  // namespace bench
