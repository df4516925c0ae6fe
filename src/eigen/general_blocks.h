// General eigenproblems: 2 by 2 blocks on the diagonal of a quasi-triangular matrix.
#pragma once

#include "eigen/general_policies.h"

namespace korm::inline KORM_VARIANT::eigen {

// A rotation in the plane of two columns x and y: (c x + s y, c y - s x).
template <class S>
struct Rotation {
    S c, s;
};

// (a b; c d). Standardised it is triangular, or its diagonal elements are equal and those beside it differ in sign.
template <class S>
struct Block {
    S a, b, c, d;
};

// The block's real eigenvalues from the two roots, or false if they are too close to being complex.
template <class P>
[[gnu::always_inline]] inline bool splitReal(Block<typename P::Scalar>& block, typename P::Scalar p,
                                             Rotation<typename P::Scalar>* rotation) {
    using S = typename P::Scalar;
    auto& [a, b, c, d] = block;
    const S upper = magnitude(b), lower = magnitude(c);
    const S greatest = greaterOf(upper, lower), least = lesserOf(upper, lower);
    const S signedLeast = (b < 0) == (c < 0) ? least : -least;
    const S scale = greaterOf(magnitude(p), greatest);
    const S discriminant = p / scale * p + greatest / scale * signedLeast;
    if (!(discriminant >= static_cast<S>(Limits<typename P::Element>::realBlock))) return false;
    const S root = static_cast<S>(wideRoot(scale) * wideRoot(discriminant));
    const S z = p > 0 ? p + root : p - root;
    if (rotation != nullptr) {
        const S length = hypotenuse<P>(lower, magnitude(z));
        *rotation = {z / length, c / length};
    }
    a = d + z;
    d = d - signedLeast * (greatest / z);
    b = b - c;
    c = 0;
    return true;
}

template <class P>
[[gnu::always_inline]] inline typename P::Scalar imaginaryPart(const Block<typename P::Scalar>& block) {
    return static_cast<typename P::Scalar>(wideRoot(magnitude(block.b)) * wideRoot(magnitude(block.c)));
}

// Standardises a block and gives the imaginary part of its eigenvalues. `rotation`, if there is one, receives what takes the
// block there; where that isn't told below it keeps what it held, as the matrix does.
//
// Two rules don't follow from the mathematics, and results rest on both: a block with equal diagonal elements counts as
// complex whatever its signs, and a block that comes out with like signs is spread by p.
template <class P>
[[gnu::always_inline]] inline typename P::Scalar standardise(Block<typename P::Scalar>& block,
                                                             Rotation<typename P::Scalar>* rotation) {
    using S = typename P::Scalar;
    constexpr S zero = Limits<typename P::Element>::negligible;
    auto& [a, b, c, d] = block;
    if (zero >= magnitude(c)) {
        if (rotation != nullptr) *rotation = {1, 0};
        return 0;
    }
    if (zero >= magnitude(b)) {
        if (rotation != nullptr) *rotation = {0, 1};
        block = {d, 0 - c, 0, a};
        return 0;
    }
    const S t = a - d;
    if (zero >= magnitude(t)) {
        if (rotation != nullptr && (b < 0) != (c < 0)) *rotation = {1, 0};
        return imaginaryPart<P>(block);
    }
    const S p = S(0.5) * t;
    if (splitReal<P>(block, p, rotation)) return 0;

    const S sigma = b + c;
    const S length = hypotenuse<P>(magnitude(sigma), magnitude(t));
    const double part = static_cast<double>(magnitude(sigma) / length);
    const S cosine = static_cast<S>(squareRoot((part + 1) * 0.5));
    const S quotient = (0 - p) / (length * cosine);
    const S sine = sigma < 0 ? -quotient : quotient;
    const S aa = a * cosine + b * sine, bb = b * cosine - a * sine;
    const S cc = c * cosine + d * sine, dd = d * cosine - c * sine;
    b = bb * cosine + dd * sine;
    c = cc * cosine - aa * sine;
    const S middle = ((aa + dd) * cosine + (cc - bb) * sine) * S(0.5);
    a = d = middle;
    if (rotation != nullptr) *rotation = {cosine, sine};
    if (!(magnitude(c) > zero) || !(magnitude(b) > zero)) {
        b = 0 - c;
        c = 0;
        return 0;
    }
    if ((b < 0) != (c < 0)) return imaginaryPart<P>(block);
    if (rotation != nullptr) {
        const S r = reciprocalRoot<P>(magnitude(b + c));
        const S c1 = squareRoot(magnitude(b)) * r, s1 = squareRoot(magnitude(c)) * r;
        *rotation = {cosine * c1 - sine * s1, cosine * s1 + sine * c1};
    }
    a = b < 0 ? middle - p : middle + p;
    d = b < 0 ? middle + p : middle - p;
    b = b - c;
    c = 0;
    return 0;
}

}  // namespace korm::inline KORM_VARIANT::eigen
