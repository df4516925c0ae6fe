// Vectors by element type and number of lanes, and their way to and from memory.
//
// They are the vector extensions of gcc and clang: +, -, *, / and comparisons work on them. Memory is only ever reached
// through the loads and stores below. They assume no alignment, keep to strict aliasing, and touch exactly the elements
// that they name.
#pragma once

#include <emmintrin.h>

#include <cstddef>
#include <cstdint>
#include <cstring>
#include <memory>
#include <type_traits>
#include <utility>

#include "entry/variant.h"

namespace korm::inline KORM_VARIANT {

template <class T, int lanes>
struct VecOf {
    typedef T Type __attribute__((vector_size(lanes * sizeof(T))));
};
template <class T, int lanes>
using Vec = typename VecOf<T, lanes>::Type;

// The widest vectors of the processor variant.
template <class T>
inline constexpr int laneCount = KORM_VECTOR_BYTES / static_cast<int>(sizeof(T));
template <class T>
using Lanes = Vec<T, laneCount<T>>;

// For kernels that are tied to vectors of 16 bytes by what they compute.
using Float4 = Vec<float, 4>;
using Double2 = Vec<double, 2>;

template <class T>
inline constexpr bool isFloat = std::is_same_v<T, float>;

// --- Single elements ---------------------------------------------------------------------------

template <class T>
inline T load(const std::byte* from) {
    T value;
    std::memcpy(&value, from, sizeof value);
    return value;
}

template <class T>
inline void store(std::byte* to, T value) {
    std::memcpy(to, &value, sizeof value);
}

// --- Whole vectors -----------------------------------------------------------------------------

template <class T>
inline Lanes<T> loadLanes(const std::byte* from) {
    return load<Lanes<T>>(from);
}

template <class V>
inline void storeLanes(std::byte* to, V value) {
    store(to, value);
}

// `from` and `to` are multiples of 16.
template <class V>
inline V loadAligned(const std::byte* from) {
    return load<V>(std::assume_aligned<16>(from));
}
template <class V>
inline void storeAligned(std::byte* to, V value) {
    std::memcpy(std::assume_aligned<16>(to), &value, sizeof value);
}

// Calls f with 0 to lanes - 1 as a pack of constants and returns what it returns.
template <int lanes, class F>
[[gnu::always_inline]] inline auto withLanes(const F& f) {
    return [&]<int... l>(std::integer_sequence<int, l...>) __attribute__((always_inline)) {
        return f(std::integral_constant<int, l>{}...);
    }
    (std::make_integer_sequence<int, lanes>{});
}

// The vector whose lane l is f(l).
template <class V, class F>
[[gnu::always_inline]] inline V fromLanes(const F& f) {
    return withLanes<sizeof(V) / sizeof(V{}[0])>([&](auto... l) __attribute__((always_inline)) { return V{f(l)...}; });
}

template <class T>
[[gnu::always_inline]] inline Lanes<T> broadcast(T value) {
    return fromLanes<Lanes<T>>([value](int) { return value; });
}

// Elements that lie apart.
template <class T>
[[gnu::always_inline]] inline Lanes<T> gather(const std::byte* from, std::ptrdiff_t step) {
    return fromLanes<Lanes<T>>([&](int l) { return load<T>(from + l * step); });
}

// --- Halves ------------------------------------------------------------------------------------

template <class V>
using HalfOf = Vec<std::remove_reference_t<decltype(std::declval<V&>()[0])>, sizeof(V) / sizeof(V{}[0]) / 2>;

template <class V>
[[gnu::always_inline]] inline HalfOf<V> lowHalf(V v) {
    return withLanes<sizeof(V) / sizeof(V{}[0]) / 2>(
        [&](auto... l) { return __builtin_shufflevector(v, v, l.value...); });
}

template <class V>
[[gnu::always_inline]] inline HalfOf<V> highHalf(V v) {
    constexpr int half = sizeof(V) / sizeof(V{}[0]) / 2;
    return withLanes<half>([&](auto... l) { return __builtin_shufflevector(v, v, (half + l)...); });
}

template <class H>
[[gnu::always_inline]] inline auto joinedHalves(H low, H high) {
    return withLanes<2 * sizeof(H) / sizeof(H{}[0])>(
        [&](auto... l) { return __builtin_shufflevector(low, high, l.value...); });
}

// --- Pairs of floats ---------------------------------------------------------------------------

// Has all lanes computed as written. clang takes it that nobody looks at exception flags, and would let lanes
// that are not stored hold anything: infinity times zero, say.
inline Float4 settled(Float4 v) {
    asm("" : "+x"(v));
    return v;
}

// Two adjacent floats, twice: the spare lanes hold copies, so that arithmetic on them raises no
// exception flag which the needed lanes don't raise too (zeros would, for 0 * infinity).
// They are loaded as bits: a double would pass through an x87 register in unoptimised 32-bit code, which
// turns what looks like a signalling NaN quiet.
inline Float4 loadPair(const std::byte* from) {
    const auto both = load<std::int64_t>(from);
    return reinterpret_cast<Float4>(Vec<std::int64_t, 2>{both, both});
}

inline void storePair(std::byte* to, Float4 value) { store(to, reinterpret_cast<Double2>(settled(value))[0]); }

// Two pairs of adjacent floats. The second load takes the place of a shuffle, though it takes its port.
[[gnu::always_inline]] inline Float4 loadPairs(const std::byte* first, const std::byte* second) {
    return reinterpret_cast<Float4>(Vec<std::int64_t, 2>{load<std::int64_t>(first), load<std::int64_t>(second)});
}

// By their instructions: the compiler would put stores of plain halves together again, by shuffles that cost more than
// the stores and take the very units which are short.
[[gnu::always_inline]] inline void storeLowPair(std::byte* to, Float4 v) {
    _mm_storel_pi(reinterpret_cast<__m64*>(to), v);
}
[[gnu::always_inline]] inline void storeHighPair(std::byte* to, Float4 v) {
    _mm_storeh_pi(reinterpret_cast<__m64*>(to), v);
}

inline Float4 lowPairTwice(Float4 v) { return __builtin_shufflevector(v, v, 0, 1, 0, 1); }
inline Float4 highPairTwice(Float4 v) { return __builtin_shufflevector(v, v, 2, 3, 2, 3); }

// --- Transposition in registers ----------------------------------------------------------------

// (a0 b0 a1 b1) and (a2 b2 a3 b3); of two lanes (a0 b0) and (a1 b1).
inline Float4 interleaveLow(Float4 a, Float4 b) { return __builtin_shufflevector(a, b, 0, 4, 1, 5); }
inline Float4 interleaveHigh(Float4 a, Float4 b) { return __builtin_shufflevector(a, b, 2, 6, 3, 7); }
inline Double2 interleaveLow(Double2 a, Double2 b) { return __builtin_shufflevector(a, b, 0, 2); }
inline Double2 interleaveHigh(Double2 a, Double2 b) { return __builtin_shufflevector(a, b, 1, 3); }

// The same as integers: two units of today's processors do that, of floating point only one. It pays where shuffles are
// short, as in the groups of linear algebra and in products of rows of doubles.
[[gnu::always_inline]] inline Float4 zipLow(Float4 a, Float4 b) {
    return reinterpret_cast<Float4>(_mm_unpacklo_epi32(reinterpret_cast<__m128i>(a), reinterpret_cast<__m128i>(b)));
}
[[gnu::always_inline]] inline Float4 zipHigh(Float4 a, Float4 b) {
    return reinterpret_cast<Float4>(_mm_unpackhi_epi32(reinterpret_cast<__m128i>(a), reinterpret_cast<__m128i>(b)));
}
[[gnu::always_inline]] inline Double2 zipLow(Double2 a, Double2 b) {
    return reinterpret_cast<Double2>(_mm_unpacklo_epi64(reinterpret_cast<__m128i>(a), reinterpret_cast<__m128i>(b)));
}
[[gnu::always_inline]] inline Double2 zipHigh(Double2 a, Double2 b) {
    return reinterpret_cast<Double2>(_mm_unpackhi_epi64(reinterpret_cast<__m128i>(a), reinterpret_cast<__m128i>(b)));
}

// By elements of even and odd places: that is one instruction which two units know, while of the interleaving ones
// today's processors do only one in a cycle.
inline void transpose(Float4 (&rows)[4]) {
    const Float4 even0 = __builtin_shufflevector(rows[0], rows[1], 0, 2, 4, 6);
    const Float4 even1 = __builtin_shufflevector(rows[2], rows[3], 0, 2, 4, 6);
    const Float4 odd0 = __builtin_shufflevector(rows[0], rows[1], 1, 3, 5, 7);
    const Float4 odd1 = __builtin_shufflevector(rows[2], rows[3], 1, 3, 5, 7);
    rows[0] = __builtin_shufflevector(even0, even1, 0, 2, 4, 6);
    rows[1] = __builtin_shufflevector(odd0, odd1, 0, 2, 4, 6);
    rows[2] = __builtin_shufflevector(even0, even1, 1, 3, 5, 7);
    rows[3] = __builtin_shufflevector(odd0, odd1, 1, 3, 5, 7);
}

// Elements of packed objects of three, so many objects that they fill three vectors: by the place in an object.
inline void splitThrees(Float4 (&v)[3]) {
    const Float4 low = __builtin_shufflevector(v[0], v[1], 1, 2, 4, 5);   // b0 c0 b1 c1
    const Float4 high = __builtin_shufflevector(v[1], v[2], 2, 3, 5, 6);  // a2 b2 a3 b3
    v[0] = __builtin_shufflevector(v[0], high, 0, 3, 4, 6);
    v[1] = __builtin_shufflevector(low, high, 0, 2, 5, 7);
    v[2] = __builtin_shufflevector(low, v[2], 1, 3, 4, 7);
}
inline void splitThrees(Double2 (&v)[3]) {
    const Double2 a = __builtin_shufflevector(v[0], v[1], 0, 3), b = __builtin_shufflevector(v[0], v[2], 1, 2);
    v[2] = __builtin_shufflevector(v[1], v[2], 0, 3);
    v[0] = a;
    v[1] = b;
}

// And back.
inline void joinThrees(Float4 (&v)[3]) {
    const Float4 even = __builtin_shufflevector(v[0], v[1], 0, 2, 4, 6);   // a0 a2 b0 b2
    const Float4 odd = __builtin_shufflevector(v[1], v[2], 1, 3, 5, 7);    // b1 b3 c1 c3
    const Float4 mixed = __builtin_shufflevector(v[2], v[0], 0, 2, 5, 7);  // c0 c2 a1 a3
    v[0] = __builtin_shufflevector(even, mixed, 0, 2, 4, 6);
    v[1] = __builtin_shufflevector(odd, even, 0, 2, 5, 7);
    v[2] = __builtin_shufflevector(mixed, odd, 1, 3, 5, 7);
}
inline void joinThrees(Double2 (&v)[3]) {
    const Double2 first = interleaveLow(v[0], v[1]), last = interleaveHigh(v[1], v[2]);
    v[1] = __builtin_shufflevector(v[2], v[0], 0, 3);
    v[0] = first;
    v[2] = last;
}

inline void transpose(Double2 (&rows)[2]) {
    const Double2 t = interleaveLow(rows[0], rows[1]);
    rows[1] = interleaveHigh(rows[0], rows[1]);
    rows[0] = t;
}

}  // namespace korm::inline KORM_VARIANT
