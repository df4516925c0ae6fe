// Symmetric matrices of orders 1 and 2: closed forms.
#pragma once

#include <cmath>
#include <cstddef>
#include <cstdint>

#include "eigen/tridiagonal.h"
#include "kernel/scalar.h"
#include "korm.h"

namespace korm::inline KORM_VARIANT::eigen {

// Of [a b; b d]. Two values that are not sorted: where the trace is negative, the first is the smaller.
template <class T>
struct Values2 {
    T first, second;
    T root;         // the distance of the values
    bool negative;  // the trace
};

template <class T>
bool isSingular2(T a, T b, T d) {
    return epsilon<T> >= std::fabs(d * a - b * b);
}

template <class T>
Values2<T> values2(T a, T b, T d) {
    constexpr T eps = epsilon<T>, half = 0.5;
    const T trace = d + a, root = squareRoot((a - d) * (a - d) + (b + b) * (b + b));
    if (trace > eps || trace < -eps) {
        const bool negative = trace < -eps;
        const T x = half * (negative ? trace - root : trace + root);
        return {x, (a * d - b * b) / x, root, negative};
    }
    return {half * root, -half * root, root, false};
}

template <class T>
struct Rotation2 {
    T cosine, sine;
};

// The root and its reciprocal are doubles in either type; what is under the root isn't.
template <class T>
Rotation2<T> vectors2(T a, T b, T d, const Values2<T>& values) {
    constexpr T eps = epsilon<T>;
    const T difference = a - d, twice = b + b;
    const bool falls = !(difference >= eps) && difference < -eps;
    const T cotangent = falls ? difference - values.root : difference + values.root;
    const auto inverseRoot = [](T x) { return 1 / squareRoot(static_cast<double>(x)); };
    Rotation2<T> result;
    if (std::fabs(cotangent) > std::fabs(twice)) {
        const T ratio = (0 - twice) / cotangent;
        const double sine = inverseRoot(ratio * ratio + 1);
        result = {static_cast<T>(ratio * sine), static_cast<T>(sine)};
    } else if (!(std::fabs(twice) > eps)) {
        result = {1, 0};
    } else {
        const T ratio = (0 - cotangent) / twice;
        const double cosine = inverseRoot(ratio * ratio + 1);
        result = {static_cast<T>(cosine), static_cast<T>(ratio * cosine)};
    }
    return values.negative == falls ? Rotation2<T>{0 - result.sine, result.cosine} : result;
}

// Of the element below the diagonal nothing is read. `solved` gets the matrix and its values if it isn't singular.
template <class T, class Object, class Solved>
[[gnu::always_inline]] inline std::int32_t solve2(const Object& object, std::byte* to, const Solved& solved) {
    const T a = load<T>(object.address(0, 0)), b = load<T>(object.address(0, 1)), d = load<T>(object.address(1, 1));
    if (isSingular2(a, b, d)) return korStatusSingular;
    const Values2<T> values = values2(a, b, d);
    store(to, values.first);
    store(to + sizeof(T), values.second);
    solved(a, b, d, values);
    return korStatusOk;
}

}  // namespace korm::inline KORM_VARIANT::eigen
