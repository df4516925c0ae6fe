// Functions that take many vectors at once.
#include "batches.h"

#include <random>
#include <string_view>

#include "rows.h"

namespace bench {
namespace {

// --- Plain loops: what one would write, with distances that the compiler knows ---

// A copy of the matrix: seen through a pointer it would have to be read again after every store.
struct Matrix {
    float m[4][4];
    explicit Matrix(const float* from) {
        for (int i = 0; i < 16; ++i) m[i / 4][i % 4] = from[i];
    }
    float clip(const float (&v)[4], int j) const {
        return v[0] * m[0][j] + v[1] * m[1][j] + v[2] * m[2][j] + v[3] * m[3][j];
    }
};

template <std::size_t form>
[[gnu::noinline]] void plainLoop(const Batch& work) {
    constexpr auto kind = batchForms[form].kind;
    constexpr int inputs = batchForms[form].inputs, from = batchForms[form].from, to = batchForms[form].to;
    const Matrix matrix(work.matrix);
    const float* __restrict source = work.source;
    float* __restrict result = work.result;
    const std::ptrdiff_t count = work.count;
    const float width = work.viewport[0], height = work.viewport[1], minZ = work.viewport[2], maxZ = work.viewport[3];
    for (std::ptrdiff_t k = 0; k < count; ++k) {
        const float* const p = source + k * from;
        float* const d = result + k * to;
        float v[4] = {p[0], p[1], 0, 1};
        if constexpr (inputs > 2) v[2] = p[2];
        if constexpr (inputs > 3) v[3] = p[3];
        const auto& m = matrix.m;
        if constexpr (kind == Kind3D::affine) {
            for (int j = 0; j < 4; ++j) {
                if constexpr (inputs == 2) d[j] = v[0] * m[0][j] + v[1] * m[1][j] + m[3][j];
                else if constexpr (inputs == 3) d[j] = v[0] * m[0][j] + v[1] * m[1][j] + v[2] * m[2][j] + m[3][j];
                else d[j] = matrix.clip(v, j);
            }
        } else if constexpr (kind == Kind3D::normal) {
            for (int j = 0; j < inputs; ++j) {
                if constexpr (inputs == 2) d[j] = v[0] * m[0][j] + v[1] * m[1][j];
                else d[j] = v[0] * m[0][j] + v[1] * m[1][j] + v[2] * m[2][j];
            }
        } else {
            if constexpr (kind == Kind3D::unproject) {
                v[0] = 2 * v[0] / width - 1;
                v[1] = 1 - 2 * v[1] / height;
                v[2] = (v[2] - minZ) / (maxZ - minZ);
            }
            float c[4];
            for (int j = 0; j < 4; ++j) {
                if constexpr (inputs == 2) c[j] = v[0] * m[0][j] + v[1] * m[1][j] + m[3][j];
                else c[j] = v[0] * m[0][j] + v[1] * m[1][j] + v[2] * m[2][j] + m[3][j];
            }
            const float r = 1 / c[3];
            for (int j = 0; j < inputs; ++j) c[j] *= r;
            if constexpr (kind == Kind3D::project) {
                c[0] = (c[0] + 1) * (0.5F * width);
                c[1] = (1 - c[1]) * (0.5F * height);
                c[2] = minZ + c[2] * (maxZ - minZ);
            }
            for (int j = 0; j < inputs; ++j) d[j] = c[j];
        }
    }
}

// --- The library ---

template <auto function>
void transform(const Batch& work) {
    function(work.matrix, work.source, work.sourceStride, work.result, work.resultStride, work.count);
}

template <auto function>
void viewport(const Batch& work) {
    function(work.projection, work.view, work.world, work.source, work.sourceStride, work.viewport[0], work.viewport[1],
             work.viewport[2], work.viewport[3], work.result, work.resultStride, work.count);
}

void homogeneous(const Batch& work) {
    // Vectors are columns there: element and row strides exchanged.
    kormAffineTransform3DH_mva_32f(work.matrix, 4, 16, work.source, work.sourceStride, 4, work.result,
                                   work.resultStride, 4, work.count);
}

template <std::size_t i>
constexpr BatchLoop kormBatch() {
    constexpr BatchForm form = batchForms[i];
    if constexpr (std::string_view(form.name).starts_with("AffineTransform3DH")) return homogeneous;
    else if constexpr (form.kind == Kind3D::affine)
        return form.inputs == 2   ? transform<kormAffineTransform_m4v2a_32f>
               : form.inputs == 3 ? transform<kormAffineTransform_m4v3a_32f>
                                  : transform<kormAffineTransform_m4v4a_32f>;
    else if constexpr (form.kind == Kind3D::coord)
        return form.inputs == 2 ? transform<kormAffineTransformCoord_m4v2a_32f>
                                : transform<kormAffineTransformCoord_m4v3a_32f>;
    else if constexpr (form.kind == Kind3D::normal)
        return form.inputs == 2 ? transform<kormAffineTransformNormal_m4v2a_32f>
                                : transform<kormAffineTransformNormal_m4v3a_32f>;
    else if constexpr (form.kind == Kind3D::project) return viewport<kormProject_m4v3a_32f>;
    else return viewport<kormUnproject_m4v3a_32f>;
}

struct Matrices {
    alignas(16) float world[16], view[16], projection[16], all[16], inverse[16];

    Matrices() {
        const float eye[] = {1, 2, -9}, at[] = {0.5F, 1, 1}, up[] = {0, 1, 0};
        kormRotationYawPitchRoll_m4_32f(0.4F, 0.3F, 0.2F, world);
        kormLookAtLH_m4_32f(eye, at, up, view);
        kormPerspectiveFovLH_m4_32f(0.8F, 1.5F, 0.5F, 50, projection);
        kormMul_mm4x4_32f(world, view, all);
        kormMul_mm4x4_32f(all, projection, all);
        kormInvert_m4_32f(all, nullptr, inverse);
    }
};

struct Contenders {
    BatchLoop korm, plain;
    std::vector<std::pair<const char*, BatchLoop>> others;
};

void batchRow(const BatchForm& form, std::int32_t count, const Contenders& contenders) {
    static const Matrices matrices;
    const auto strides = std::to_string(4 * form.from) + "-" + std::to_string(4 * form.to);
    const std::string name = "batches/" + std::string(form.name) + "_32f/" + std::to_string(count) + "/" + strides;
    if (!isWanted(name)) return;
    const auto vectors = static_cast<std::size_t>(count);
    const auto from = static_cast<std::size_t>(form.from), to = static_cast<std::size_t>(form.to);
    float* const source = memoryOf<float>(0, vectors * from);
    float* const result = memoryOf<float>(2, vectors * to);
    const bool isUnproject = form.kind == Kind3D::unproject;
    std::mt19937 random(7);
    std::uniform_real_distribution<float> values(0.5F, 2.0F);
    for (std::size_t i = 0; i < vectors * from; ++i) {
        source[i] = values(random);
        // Points on the viewport.
        if (isUnproject) source[i] = i % 3 == 0 ? 200 * source[i] : i % 3 == 1 ? 150 * source[i] : 0.93F;
    }
    // The inverse for those who don't form it themselves.
    const Batch batch{isUnproject ? matrices.inverse : matrices.all,
                      matrices.projection,
                      matrices.view,
                      matrices.world,
                      source,
                      result,
                      4 * form.from,
                      4 * form.to,
                      count,
                      {640, 480, 0, 1}};
    Row row(name, count);
    row.results(result, vectors * to, static_cast<std::size_t>(form.outputs()), to, 2e-3);
    row.korm([=, loop = contenders.korm] { loop(batch); });
    row.peer("plain loop", [=, loop = contenders.plain] { loop(batch); });
    for (const auto& [peer, loop] : contenders.others) row.peer(peer, [=, loop = loop] { loop(batch); });
    row.measure();
}

}  // namespace

void measureBatches() {
    const BatchLoops korm = loopsOf([]<std::size_t i>() { return kormBatch<i>(); });
    const BatchLoops plain = loopsOf([]<std::size_t i>() { return BatchLoop{plainLoop<i>}; });
    for (std::size_t i = 0; i < korm.size(); ++i) {
        Contenders contenders{korm[i], plain[i], {}};
#ifdef BENCH_GLM
        contenders.others.push_back({"GLM", glmBatches()[i]});
        contenders.others.push_back({"GLM, SIMD types", glmSimdBatches()[i]});
#endif
#ifdef BENCH_CGLM
        contenders.others.push_back({"cglm", cglmBatches()[i]});
#endif
        for (const std::int32_t count : {100, 1000, 10000, 100000, 1000000}) batchRow(batchForms[i], count, contenders);
    }
}

}  // namespace bench
