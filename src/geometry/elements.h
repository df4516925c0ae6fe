// How the functions of fixed size reach memory: contiguous elements at any address, and nothing beyond them.
#pragma once

#include <xmmintrin.h>

#include <cstddef>
#include <cstdint>

#include "kernel/scalar.h"
#include "kernel/vec.h"

namespace korm::inline KORM_VARIANT::geometry {

// A float that may lie at any address. Vectors and matrices are pointers to such. (Behind the type clang drops the attribute.)
using Unaligned [[gnu::aligned(1)]] = float;
static_assert(alignof(Unaligned) == 1);

inline const std::byte* bytes(const Unaligned* from) { return reinterpret_cast<const std::byte*>(from); }
inline std::byte* bytes(Unaligned* to) { return reinterpret_cast<std::byte*>(to); }

// A vector of n elements in locals.
template <int n>
struct Vector {
    float e[n];

    float operator[](int i) const { return e[i]; }
    float& operator[](int i) { return e[i]; }
};

template <int n>
inline void storeVector(Unaligned* to, const Vector<n>& v) {
    for (int i = 0; i < n; ++i) to[i] = v.e[i];
}

// For cores, which are declared with plain pointers and read through Unaligned ones again.
inline const float* forCore(const Unaligned* from) { return static_cast<const float*>(from); }
inline float* forCore(Unaligned* to) { return static_cast<float*>(to); }

inline const Unaligned* elementsAt(const std::byte* from) { return reinterpret_cast<const Unaligned*>(from); }
inline Unaligned* elementsAt(std::byte* to) { return reinterpret_cast<Unaligned*>(to); }

template <int i>
inline Float4 everyLane(Float4 v) {
    return __builtin_shufflevector(v, v, i, i, i, i);
}

// A number that comes by value and goes to several lanes. Without this clang loads it, in 32-bit code, as four from the
// caller's stack: beyond the argument, and as if that were aligned. Inlined even without optimisation: the x87 register
// that a float is returned in there makes signaling NaNs quiet.
[[gnu::always_inline]] inline float inRegister(float value) {
    asm("" : "+x"(value));
    return value;
}

// Two adjacent floats in lanes 0 and 1; the spare lanes are never computed with.
inline Float4 loadFirstPair(const std::byte* from) {
    return settled(reinterpret_cast<Float4>(Vec<std::int64_t, 2>{load<std::int64_t>(from)}));
}

// Four floats at equal distances.
inline Float4 gatherFour(const std::byte* from, std::ptrdiff_t step) {
    return fromLanes<Float4>([&](int l) { return load<float>(from + l * step); });
}

// Each element of a vector in all lanes.
struct Repeated {
    Float4 x, y, z, w;
};

template <int n>
inline Repeated repeated(const Unaligned* from) {
    Repeated v;
    const Float4 firstTwo = loadFirstPair(bytes(from));
    v.x = everyLane<0>(firstTwo);
    v.y = everyLane<1>(firstTwo);
    if constexpr (n == 3) v.z = all<Float4>(from[2]);
    if constexpr (n == 4) {
        const Float4 lastTwo = loadFirstPair(bytes(from + 2));
        v.z = everyLane<0>(lastTwo);
        v.w = everyLane<1>(lastTwo);
    }
    return v;
}

// A vector in lanes of which none is empty: x y x y, x y y z or x y z w. So whatever is computed in a lane is computed
// for an element, and three elements come by one move of lanes and go by none.
template <int n>
inline Float4 loadElements(const Unaligned* from) {
    if constexpr (n == 2) return loadPair(bytes(from));
    else if constexpr (n == 3)
        return _mm_loadh_pi(loadFirstPair(bytes(from)), reinterpret_cast<const __m64*>(from + 1));
    else return load<Float4>(bytes(from));
}

template <int n>
inline void storeLoadedElements(Unaligned* to, Float4 v) {
    if constexpr (n == 4) store(bytes(to), v);
    else storePair(bytes(to), v);
    if constexpr (n == 3) _mm_storeh_pi(reinterpret_cast<__m64*>(to + 1), v);
}

// The first elements of lanes.
template <int n>
inline void storeElements(Unaligned* to, Float4 v) {
    if constexpr (n == 4) store(bytes(to), v);
    else storePair(bytes(to), v);
    if constexpr (n == 3) to[2] = v[2];
}

// Row r of a 4 by 4 matrix.
inline Float4 loadRow(const Unaligned* matrix, int r) { return load<Float4>(bytes(matrix + 4 * r)); }
inline void storeRow(Unaligned* matrix, int r, Float4 row) { store(bytes(matrix + 4 * r), row); }

}  // namespace korm::inline KORM_VARIANT::geometry
