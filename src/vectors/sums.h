// The order in which the products of a dot product, or the squares of a norm, are added.
//
// Results depend on these orders down to the last bit, and callers rely on them; docs/numerics.md explains them to users.
// Which kernel has which order for which lengths stands in forms.py. All serve numbers, and vectors with the products of
// one object in each lane.
#pragma once

#include <cstddef>

#include "kernel/unroll.h"

namespace korm::inline KORM_VARIANT::vectors {

// Partial sums from +0 over whole blocks: partial sum c takes the products k with k mod `partials` = c. `join` makes one
// sum of them, to which the products that are left are added one by one.
template <int partials, class S, class Product, class Join>
[[gnu::always_inline]] inline S sumInPartials(std::ptrdiff_t products, const Product& product, const Join& join) {
    std::ptrdiff_t k = 0;
    S sum{};
    if (products >= partials) {
        S l[partials] = {};
        for (; k + partials <= products; k += partials)
            unrolled<partials>([&](auto c) __attribute__((always_inline)) { l[c] += product(k + c); });
        sum = join(l);
    }
    for (; k < products; ++k) sum += product(k);
    return sum;
}

namespace lengths {

// clang-format off
// --- Lengths 3 to 6, without a start ---

struct left_to_right {
    template <class S> static S of(const S (&p)[3]) { return (p[0] + p[1]) + p[2]; }
    template <class S> static S of(const S (&p)[4]) { return ((p[0] + p[1]) + p[2]) + p[3]; }
    template <class S> static S of(const S (&p)[5]) { return (((p[0] + p[1]) + p[2]) + p[3]) + p[4]; }
    template <class S> static S of(const S (&p)[6]) { return ((((p[0] + p[1]) + p[2]) + p[3]) + p[4]) + p[5]; }
};

struct halves {
    template <class S> static S of(const S (&p)[3]) { return (p[0] + p[1]) + p[2]; }
    template <class S> static S of(const S (&p)[4]) { return (p[0] + p[2]) + (p[1] + p[3]); }
    template <class S> static S of(const S (&p)[5]) { return ((p[0] + p[2]) + (p[1] + p[3])) + p[4]; }
    template <class S> static S of(const S (&p)[6]) { return ((p[2] + p[4]) + p[0]) + ((p[3] + p[5]) + p[1]); }
};

struct middle_first {
    template <class S> static S of(const S (&p)[3]) { return (p[1] + p[2]) + p[0]; }
    template <class S> static S of(const S (&p)[4]) { return ((p[1] + p[3]) + p[2]) + p[0]; }
    template <class S> static S of(const S (&p)[5]) { return (((p[2] + p[4]) + p[3]) + p[0]) + p[1]; }
    template <class S> static S of(const S (&p)[6]) { return ((((p[3] + p[5]) + p[4]) + p[0]) + p[1]) + p[2]; }
};

// The norms of floats add four squares in pairs, and a fifth to these.
template <class Others>
struct in_pairs {
    template <class S> static S of(const S (&p)[3]) { return Others::of(p); }
    template <class S> static S of(const S (&p)[4]) { return (p[0] + p[1]) + (p[2] + p[3]); }
    template <class S> static S of(const S (&p)[5]) { return ((p[0] + p[1]) + (p[2] + p[3])) + p[4]; }
    template <class S> static S of(const S (&p)[6]) { return Others::of(p); }
};
// clang-format on

// --- Any length ---

struct zero_start {
    template <class S, class Product>
    [[gnu::always_inline]] static S of(std::ptrdiff_t products, const Product& product) {
        S sum{};
        for (std::ptrdiff_t k = 0; k < products; ++k) sum += product(k);
        return sum;
    }
};

struct descending {
    template <class S, class Product>
    [[gnu::always_inline]] static S of(std::ptrdiff_t products, const Product& product) {
        S sum{};
        while (products > 0) sum += product(--products);
        return sum;
    }
};

struct twos {
    template <class S, class Product>
    [[gnu::always_inline]] static S of(std::ptrdiff_t products, const Product& product) {
        return sumInPartials<2, S>(products, product, [](const S(&l)[2]) { return l[0] + l[1]; });
    }
};

// Joined as vectors of two partial sums are, and the lanes of what these give.
struct eights_64f {
    template <class S, class Product>
    [[gnu::always_inline]] static S of(std::ptrdiff_t products, const Product& product) {
        return sumInPartials<8, S>(products, product, [](const S(&l)[8]) {
            return ((l[0] + l[2]) + (l[4] + l[6])) + ((l[1] + l[3]) + (l[5] + l[7]));
        });
    }
};

struct eights_in_turn {
    template <class S, class Product>
    [[gnu::always_inline]] static S of(std::ptrdiff_t products, const Product& product) {
        return sumInPartials<8, S>(products, product, [](const S(&l)[8]) {
            return ((((((l[0] + l[1]) + l[2]) + l[3]) + l[4]) + l[5]) + l[6]) + l[7];
        });
    }
};

// Eight partial sums, the first opened by the products before a boundary of 16 bytes: see aligned.h.
struct aligned {};

}  // namespace lengths

}  // namespace korm::inline KORM_VARIANT::vectors
