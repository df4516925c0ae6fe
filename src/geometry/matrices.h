// Algebra of 4 by 4 matrices.
#pragma once

#include <xmmintrin.h>

#include <cmath>

#include "geometry/cores.h"
#include "geometry/lanes.h"
#include "geometry/vectors.h"
#include "korm.h"

namespace korm::inline KORM_VARIANT::geometry {

struct Matrix4 {
    Float4 row[4];

    explicit Matrix4(const Unaligned* matrix)
        : row{loadRow(matrix, 0), loadRow(matrix, 1), loadRow(matrix, 2), loadRow(matrix, 3)} {}

    void store(Unaligned* matrix) const {
        for (int r = 0; r < 4; ++r) storeRow(matrix, r, row[r]);
    }
};

// a * b: each element is the sum over the columns of a, from the left.
inline void multiply(Matrix4& a, const Matrix4& b) {
    for (Float4& row : a.row)
        row = ((everyLane<0>(row) * b.row[0] + everyLane<1>(row) * b.row[1]) + everyLane<2>(row) * b.row[2]) +
              everyLane<3>(row) * b.row[3];
}

inline void multiply4(const Unaligned* a, const Unaligned* b, Unaligned* d) {
    Matrix4 rows(a);
    multiply(rows, Matrix4(b));
    rows.store(d);
}

inline void multiplyTransposed4(const Unaligned* a, const Unaligned* b, Unaligned* d) {
    Matrix4 rows(a);
    multiply(rows, Matrix4(b));
    transpose(rows.row);
    rows.store(d);
}

inline void transpose4(const Unaligned* s, Unaligned* d) {
    Matrix4 rows(s);
    transpose(rows.row);
    rows.store(d);
}

// Along the first row.
inline void determinant4(const Unaligned* m, Unaligned* d) {
    const Matrix4 rows(m);
    const Float4 terms = minorsOf(rows.row[1], rows.row[2], rows.row[3]) * rows.row[0];
    const Float4 differences = evenTwice(terms) - oddTwice(terms);
    *d = differences[0] + differences[2];
}

inline std::int32_t invert4(const Unaligned* s, Unaligned* det, Unaligned* d) {
    constexpr std::int32_t packed = 4 * sizeof(float);
    return cores::invertAdjugate4(forCore(s), packed, forCore(det), forCore(d), packed);
}

// Not what the name says: 1 when the first element is 1 and any one column is that of the identity.
inline void isIdentity4(const Unaligned* m, std::int32_t* result) {
    std::int32_t found = 0;
    if (m[0] == 1.0F) {
        const auto equal = [](Float4 row, Float4 identity) { return row == identity; };
        const auto columns = (equal(loadRow(m, 0), Float4{1, 0, 0, 0}) & equal(loadRow(m, 1), Float4{0, 1, 0, 0})) &
                             (equal(loadRow(m, 2), Float4{0, 0, 1, 0}) & equal(loadRow(m, 3), Float4{0, 0, 0, 1}));
        found = _mm_movemask_ps(reinterpret_cast<__m128>(columns)) != 0 ? 1 : 0;
    }
    store(reinterpret_cast<std::byte*>(result), found);
}

}  // namespace korm::inline KORM_VARIANT::geometry
