// Plain loops: what one would write, with distances that the compiler knows.
#include "work.h"

namespace bench {
namespace {

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

enum class Kind { affine, coord, normal, project, unproject };

template <Kind kind, int inputs, int from, int to>
[[gnu::noinline]] void loop(const Batch& work) {
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
        if constexpr (kind == Kind::affine) {
            for (int j = 0; j < 4; ++j) {
                if constexpr (inputs == 2) d[j] = v[0] * m[0][j] + v[1] * m[1][j] + m[3][j];
                else if constexpr (inputs == 3) d[j] = v[0] * m[0][j] + v[1] * m[1][j] + v[2] * m[2][j] + m[3][j];
                else d[j] = matrix.clip(v, j);
            }
        } else if constexpr (kind == Kind::normal) {
            for (int j = 0; j < inputs; ++j) {
                if constexpr (inputs == 2) d[j] = v[0] * m[0][j] + v[1] * m[1][j];
                else d[j] = v[0] * m[0][j] + v[1] * m[1][j] + v[2] * m[2][j];
            }
        } else {
            if constexpr (kind == Kind::unproject) {
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
            if constexpr (kind == Kind::project) {
                c[0] = (c[0] + 1) * (0.5F * width);
                c[1] = (1 - c[1]) * (0.5F * height);
                c[2] = minZ + c[2] * (maxZ - minZ);
            }
            for (int j = 0; j < inputs; ++j) d[j] = c[j];
        }
    }
}

}  // namespace

void addLoops(std::vector<BatchRow>& rows) {
    const auto add = [&](const char* name, void (*run)(const Batch&)) { compete(rows, name, "loop", run); };
    add("AffineTransform_m4v2a/8-16", loop<Kind::affine, 2, 2, 4>);
    add("AffineTransform_m4v3a/12-16", loop<Kind::affine, 3, 3, 4>);
    add("AffineTransform_m4v3a/16-16", loop<Kind::affine, 3, 4, 4>);
    add("AffineTransform_m4v4a/16-16", loop<Kind::affine, 4, 4, 4>);
    add("AffineTransformCoord_m4v2a/8-8", loop<Kind::coord, 2, 2, 2>);
    add("AffineTransformCoord_m4v3a/12-12", loop<Kind::coord, 3, 3, 3>);
    add("AffineTransformCoord_m4v3a/16-16", loop<Kind::coord, 3, 4, 4>);
    add("AffineTransformCoord_m4v3a/32-12", loop<Kind::coord, 3, 8, 3>);
    add("AffineTransformNormal_m4v2a/8-8", loop<Kind::normal, 2, 2, 2>);
    add("AffineTransformNormal_m4v3a/12-12", loop<Kind::normal, 3, 3, 3>);
    add("AffineTransformNormal_m4v3a/16-16", loop<Kind::normal, 3, 4, 4>);
    add("AffineTransformNormal_m4v3a/32-32", loop<Kind::normal, 3, 8, 8>);
    add("Project_m4v3a/12-12", loop<Kind::project, 3, 3, 3>);
    add("Unproject_m4v3a/12-12", loop<Kind::unproject, 3, 3, 3>);
    add("AffineTransform3DH_mva/12-12", loop<Kind::coord, 3, 3, 3>);
    add("AffineTransform3DH_mva/16-16", loop<Kind::coord, 3, 4, 4>);
}

}  // namespace bench
