// Loops over cglm's inline functions, which use SIMD instructions.
#include <cglm/cglm.h>

#include "batches.h"

namespace bench {
namespace {

template <std::size_t form>
[[gnu::noinline]] void cglmLoop(const Batch& work) {
    constexpr auto kind = batchForms[form].kind;
    constexpr int inputs = batchForms[form].inputs, from = batchForms[form].from, to = batchForms[form].to;
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
        if constexpr (kind == Kind3D::affine) {
            glm_mat4_mulv(m, v, c);
            glm_vec4_ucopy(c, d);
        } else {
            if constexpr (kind == Kind3D::normal) v[3] = 0;
            if constexpr (kind == Kind3D::unproject) {
                v[0] = v[0] / halfWidth - 1.0F;
                v[1] = 1.0F - v[1] / halfHeight;
                v[2] = (v[2] - minZ) / depth;
            }
            glm_mat4_mulv(m, v, c);
            if constexpr (kind != Kind3D::normal) glm_vec4_divs(c, c[3], c);
            if constexpr (kind == Kind3D::project) {
                c[0] = c[0] * halfWidth + halfWidth;
                c[1] = halfHeight - c[1] * halfHeight;
                c[2] = c[2] * depth + minZ;
            }
            for (int j = 0; j < inputs; ++j) d[j] = c[j];
        }
    }
}

}  // namespace

BatchLoops cglmBatches() {
    return loopsOf([]<std::size_t i>() { return &cglmLoop<i>; });
}

}  // namespace bench
