// Loops over GLM's types. With BENCH_SIMD vectors of four and matrices are those with SIMD instructions.
#ifdef BENCH_SIMD
#define GLM_FORCE_INTRINSICS
#define GLM_FORCE_ALIGNED_GENTYPES
#endif
#include <cstring>
#include <glm/glm.hpp>
#ifdef BENCH_SIMD
#include <glm/gtc/type_aligned.hpp>
#endif

#include "batches.h"

namespace bench {
namespace {

#ifdef BENCH_SIMD
using Matrix = glm::aligned_mat4;
using Vector4 = glm::aligned_vec4;
#else
using Matrix = glm::mat4;
using Vector4 = glm::vec4;
#endif

Matrix matrixOf(const float* from) {
    Matrix m;
    std::memcpy(&m, from, sizeof m);
    return m;
}

template <std::size_t form>
[[gnu::noinline]] void glmLoop(const Batch& work) {
    constexpr auto kind = batchForms[form].kind;
    constexpr int inputs = batchForms[form].inputs, from = batchForms[form].from, to = batchForms[form].to;
    const Matrix m = matrixOf(work.matrix);
    const float* __restrict source = work.source;
    float* __restrict result = work.result;
    const std::ptrdiff_t count = work.count;
    const glm::vec2 half = 0.5F * glm::vec2(work.viewport[0], work.viewport[1]);
    const float minZ = work.viewport[2], depth = work.viewport[3] - work.viewport[2];
    for (std::ptrdiff_t k = 0; k < count; ++k) {
        const float* const p = source + k * from;
        Vector4 v(p[0], p[1], inputs > 2 ? p[2] : 0.0F, inputs > 3 ? p[3] : 1.0F);
        float* const d = result + k * to;
        if constexpr (kind == Kind3D::affine) {
            const Vector4 c = m * v;
            std::memcpy(d, &c, 16);
        } else if constexpr (kind == Kind3D::normal) {
            if constexpr (inputs == 2) {
                const glm::vec2 c = glm::mat2(m) * glm::vec2(v);
                std::memcpy(d, &c, 8);
            } else {
#ifdef BENCH_SIMD
                v.w = 0;
                const Vector4 c = m * v;
#else
                const glm::vec3 c = glm::mat3(m) * glm::vec3(v);
#endif
                d[0] = c.x, d[1] = c.y, d[2] = c.z;
            }
        } else {
            if constexpr (kind == Kind3D::unproject)
                v = Vector4(v.x / half.x - 1.0F, 1.0F - v.y / half.y, (v.z - minZ) / depth, 1.0F);
            Vector4 c = m * v;
            c /= c.w;
            if constexpr (kind == Kind3D::project)
                c = c * Vector4(half.x, -half.y, depth, 1.0F) + Vector4(half.x, half.y, minZ, 0.0F);
            d[0] = c.x, d[1] = c.y;
            if constexpr (inputs == 3) d[2] = c.z;
        }
    }
}

}  // namespace

#ifdef BENCH_SIMD
BatchLoops glmSimdBatches() {
#else
BatchLoops glmBatches() {
#endif
    return loopsOf([]<std::size_t i>() { return &glmLoop<i>; });
}

}  // namespace bench
