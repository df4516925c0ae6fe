// Algebra of 4 by 4 matrices.
#pragma once

#include <xmmintrin.h>

#include <cmath>

#include "geometry/elements.h"
#include "geometry/shared.h"
#include "korm.h"

namespace korm {

struct Rows {
    Float4 row[4];

    explicit Rows(const Unaligned* matrix)
        : row{loadRow(matrix, 0), loadRow(matrix, 1), loadRow(matrix, 2), loadRow(matrix, 3)} {}

    void store(Unaligned* matrix) const {
        for (int r = 0; r < 4; ++r) storeRow(matrix, r, row[r]);
    }
};

// a * b: each element is the sum over the columns of a, from the left.
inline void product(Rows& a, const Rows& b) {
    for (Float4& row : a.row)
        row = ((broadcast(row[0]) * b.row[0] + broadcast(row[1]) * b.row[1]) + broadcast(row[2]) * b.row[2]) +
              broadcast(row[3]) * b.row[3];
}

inline void multiply4(const Unaligned* a, const Unaligned* b, Unaligned* d) {
    Rows rows(a);
    product(rows, Rows(b));
    rows.store(d);
}

inline void multiplyTransposed4(const Unaligned* a, const Unaligned* b, Unaligned* d) {
    Rows rows(a);
    product(rows, Rows(b));
    transpose(rows.row);
    rows.store(d);
}

inline void transpose4(const Unaligned* s, Unaligned* d) {
    Rows rows(s);
    transpose(rows.row);
    rows.store(d);
}

// Along the first row, with the minors of the last two rows formed first.
inline void determinant4(const Unaligned* from, Unaligned* d) {
    const Vector<16> m = loadVector<16>(from);
    const float t23 = m[10] * m[15] - m[11] * m[14];
    const float t13 = m[9] * m[15] - m[11] * m[13];
    const float t12 = m[9] * m[14] - m[10] * m[13];
    const float t03 = m[8] * m[15] - m[11] * m[12];
    const float t02 = m[8] * m[14] - m[10] * m[12];
    const float t01 = m[8] * m[13] - m[9] * m[12];
    const float c0 = (t23 * m[5] - t13 * m[6]) + t12 * m[7];
    const float c1 = (t23 * m[4] - t03 * m[6]) + t02 * m[7];
    const float c2 = (t13 * m[4] - t03 * m[5]) + t01 * m[7];
    const float c3 = (t12 * m[4] - t02 * m[5]) + t01 * m[6];
    *d = (c0 * m[0] - c1 * m[1]) + (c2 * m[2] - c3 * m[3]);
}

inline std::int32_t invert4(const Unaligned* s, Unaligned* det, Unaligned* d) {
    constexpr std::int32_t packed = 4 * sizeof(float);
    return v8_own3dkormInvert_m_32f_4x4(s, packed, det, d, packed);
}

// Not what the name says: 1 when the first element is 1 and any one column is that of the identity.
inline void isIdentity4(const Unaligned* m, std::int32_t* result) {
    std::int32_t found = 0;
    if (m[0] == 1.0F) {
        const auto equal = [](Float4 row, Float4 identity) { return row == identity; };
        const auto columns = (equal(loadRow(m, 0), Float4{1, 0, 0, 0}) & equal(loadRow(m, 1), Float4{0, 1, 0, 0})) &
                             (equal(loadRow(m, 2), Float4{0, 0, 1, 0}) & equal(loadRow(m, 3), Float4{0, 0, 0, 1}));
        found = _mm_movemask_ps(reinterpret_cast<__m128>(columns)) != 0;
    }
    store(reinterpret_cast<std::byte*>(result), found);
}

}  // namespace korm
