// Two vectors as one scalar. Roots and divisions of a sweep wait for each other, and a second group beside the first fills the
// time: a group of twins takes little longer than one of single vectors.
#pragma once

#include "kernel/scalar.h"

namespace korm::inline KORM_VARIANT::eigen {

template <class V>
struct Twin {
    V first, second;
};

template <class S>
inline constexpr bool isTwin = false;
template <class V>
inline constexpr bool isTwin<Twin<V>> = true;
template <class S>
using TwinOf = decltype(S::first);

}  // namespace korm::inline KORM_VARIANT::eigen

namespace korm::inline KORM_VARIANT {

template <class V>
struct ScalarTraits<eigen::Twin<V>> {
    using Element = ElementOf<V>;
    using Mask = eigen::Twin<MaskOf<V>>;
    using Index = Mask;
    static constexpr int lanes = 2 * lanesOf<V>;
};

}  // namespace korm::inline KORM_VARIANT

namespace korm::inline KORM_VARIANT::eigen {

// --- Operators ----------------------------------------------------------------------------------

// clang-format off
template <class V> [[gnu::always_inline]] inline Twin<V> operator+(Twin<V> a, Twin<V> b) { return {a.first + b.first, a.second + b.second}; }
template <class V> [[gnu::always_inline]] inline Twin<V> operator-(Twin<V> a, Twin<V> b) { return {a.first - b.first, a.second - b.second}; }
template <class V> [[gnu::always_inline]] inline Twin<V> operator*(Twin<V> a, Twin<V> b) { return {a.first * b.first, a.second * b.second}; }
template <class V> [[gnu::always_inline]] inline Twin<V> operator/(Twin<V> a, Twin<V> b) { return {a.first / b.first, a.second / b.second}; }
template <class V> [[gnu::always_inline]] inline Twin<V> operator&(Twin<V> a, Twin<V> b) { return {a.first & b.first, a.second & b.second}; }
template <class V> [[gnu::always_inline]] inline Twin<V> operator|(Twin<V> a, Twin<V> b) { return {a.first | b.first, a.second | b.second}; }
template <class V> [[gnu::always_inline]] inline Twin<V> operator~(Twin<V> a) { return {~a.first, ~a.second}; }
template <class V> [[gnu::always_inline]] inline auto operator==(Twin<V> a, Twin<V> b) { return Twin<MaskOf<V>>{a.first == b.first, a.second == b.second}; }
template <class V> [[gnu::always_inline]] inline auto operator>=(Twin<V> a, Twin<V> b) { return Twin<MaskOf<V>>{a.first >= b.first, a.second >= b.second}; }
template <class V> [[gnu::always_inline]] inline auto operator>(Twin<V> a, Twin<V> b) { return Twin<MaskOf<V>>{a.first > b.first, a.second > b.second}; }
template <class V> [[gnu::always_inline]] inline auto operator<=(Twin<V> a, Twin<V> b) { return b >= a; }
template <class V> [[gnu::always_inline]] inline auto operator<(Twin<V> a, Twin<V> b) { return b > a; }
template <class V> [[gnu::always_inline]] inline void operator+=(Twin<V>& a, Twin<V> b) { a = a + b; }
// clang-format on

// --- What kernel/scalar.h has for vectors -------------------------------------------------------

template <class S>
[[gnu::always_inline]] inline S all(ElementOf<S> value) {
    if constexpr (isTwin<S>) return {korm::all<TwinOf<S>>(value), korm::all<TwinOf<S>>(value)};
    else return korm::all<S>(value);
}
template <class V>
[[gnu::always_inline]] inline Twin<V> magnitude(Twin<V> x) {
    return {korm::magnitude(x.first), korm::magnitude(x.second)};
}
template <class V>
[[gnu::always_inline]] inline Twin<V> squareRoot(Twin<V> x) {
    return {korm::squareRoot(x.first), korm::squareRoot(x.second)};
}
template <class M>
[[gnu::always_inline]] inline bool any(Twin<M> mask) {
    return korm::any(mask.first | mask.second);
}
template <class M>
[[gnu::always_inline]] inline Twin<M> either(Twin<M> a, Twin<M> b) {
    return a | b;
}
template <class M>
[[gnu::always_inline]] inline Twin<M> butNot(Twin<M> a, Twin<M> b) {
    return {korm::butNot(a.first, b.first), korm::butNot(a.second, b.second)};
}
template <class M, class X>
[[gnu::always_inline]] inline Twin<X> chosen(Twin<M> mask, Twin<X> a, Twin<X> b) {
    return {korm::chosen(mask.first, a.first, b.first), korm::chosen(mask.second, a.second, b.second)};
}
template <class M, class X>
[[gnu::always_inline]] inline void exchangeIf(Twin<M> mask, Twin<X>& a, Twin<X>& b) {
    korm::exchangeIf(mask.first, a.first, b.first);
    korm::exchangeIf(mask.second, a.second, b.second);
}

template <class M>
[[gnu::always_inline]] inline M both(M a, M b) {
    if constexpr (std::is_same_v<M, bool>) return a && b;
    else return a & b;
}

using korm::any, korm::butNot, korm::chosen, korm::either, korm::exchangeIf, korm::magnitude, korm::squareRoot;

}  // namespace korm::inline KORM_VARIANT::eigen
