// How the functions of fixed size reach memory: contiguous elements at any address, and nothing beyond them.
#pragma once

#include <cstddef>
#include <cstdint>

#include "entry/lanes.h"

namespace korm {

// A float that may lie at any address. Vectors and matrices are pointers to such.
using Unaligned = float __attribute__((aligned(1)));

inline const std::byte* bytes(const Unaligned* from) { return reinterpret_cast<const std::byte*>(from); }
inline std::byte* bytes(Unaligned* to) { return reinterpret_cast<std::byte*>(to); }

// A vector of n elements in locals: all of it is read before anything is written.
template <int n>
struct Vector {
    float e[n];

    float operator[](int i) const { return e[i]; }
    float& operator[](int i) { return e[i]; }
};

template <int n>
inline Vector<n> loadVector(const Unaligned* from) {
    Vector<n> v;
    for (int i = 0; i < n; ++i) v[i] = from[i];
    return v;
}

template <int n>
inline void storeVector(Unaligned* to, const Vector<n>& v) {
    for (int i = 0; i < n; ++i) to[i] = v[i];
}

// Row r of a 4 by 4 matrix.
inline Float4 loadRow(const Unaligned* matrix, int r) { return loadLanes<float>(bytes(matrix + 4 * r)); }
inline void storeRow(Unaligned* matrix, int r, Float4 row) { storeLanes(bytes(matrix + 4 * r), row); }

}  // namespace korm
