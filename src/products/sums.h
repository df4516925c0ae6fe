// The order in which the products of an element are added: which shapes of sums there are, and which rows of a result
// have which shape.
//
// Results depend on these tables down to the last bit, and callers rely on them; docs/numerics.md explains them to
// users. Which kernel has which row of a table stands in forms.py. p(k) is product k of an element, K their number.
#pragma once

#include <cstddef>
#include <cstdint>

namespace korm::inline KORM_VARIANT::products {

struct ProductShape {
    std::int32_t rows;      // M, of the result
    std::int32_t products;  // K, of each element's sum
    std::int32_t columns;   // N, of the result

    [[gnu::always_inline]] bool isSquare() const { return rows == columns && rows == products; }
};

struct VectorProductShape {
    std::int32_t rows;
    std::int32_t products;

    [[gnu::always_inline]] bool isSquare() const { return rows == products; }
};

// Square orders with a path of their own, where every sum is p(0) + p(1) + ... from left to right.
template <int... orders>
struct Squares {
    static constexpr bool has(int order) { return ((orders == order) || ...); }
};

// `partials` sums from +0, where sum c takes p(k) for k mod partials = c, over as many blocks of `block` products as
// there are; these sums are joined and the products that are left are added one by one. Fewer products than a block
// are added to +0 one by one, and that is all that a sum with one partial sum does.
struct Sum {
    int partials;
    int block;

    constexpr bool operator==(const Sum&) const = default;
};

inline constexpr Sum zeroStart{1, 1};

// What a sum starts with: its first product, or +0 to which that is added.
enum class Start { firstProduct, zero };

// A sum that should have started from +0, or whose partial sums should have: that tells only where a sum is zero, and there
// adding +0 at the end does the same, in every rounding mode.
template <class S>
[[gnu::always_inline]] inline S zeroStarted(S sum) {
    return sum + S{};
}

// How partial sums are joined. Not as a tree of neighbours: it is what a vector of four (two) partial sums gives when
// its halves are added and then the halves of that.
template <class T, int partials, class S>
[[gnu::always_inline]] inline S joined(const S (&l)[partials]) {
    if constexpr (partials == 1) return l[0];
    else if constexpr (partials == 2) return l[0] + l[1];
    else if constexpr (partials == 4) return (l[0] + l[2]) + (l[1] + l[3]);
    else if constexpr (sizeof(T) == 4) return ((l[0] + l[4]) + (l[2] + l[6])) + ((l[1] + l[5]) + (l[3] + l[7]));
    else return ((l[0] + l[2]) + (l[4] + l[6])) + ((l[1] + l[3]) + (l[5] + l[7]));
}

// Products of matrices: rows of the result in blocks of four, then the rows that are left.
struct RowSums {
    Sum blocks;
    Sum lastOfOne;
    Sum firstOfTwo;
    Sum secondOfTwo;
    Sum lastThree;

    constexpr bool operator==(const RowSums&) const = default;
    constexpr bool uniform() const {
        return lastOfOne == blocks && firstOfTwo == blocks && secondOfTwo == blocks && lastThree == blocks;
    }
};

// Products with a vector: all elements of the result but the last one or two, where their number modulo 8 is one or two.
struct ElementSums {
    Sum general;
    Sum lastOfOne;
    Sum firstOfTwo;
    Sum secondOfTwo;

    constexpr bool operator==(const ElementSums&) const = default;
    constexpr bool uniform() const { return lastOfOne == general && firstOfTwo == general && secondOfTwo == general; }
};

namespace sums {

// clang-format off
//                                       blocks of four  one left: it  two left: first  second     three left: all
inline constexpr RowSums mm_32f       = {zeroStart,      {2, 2},       {2, 2},          {2, 2},    zeroStart};
inline constexpr RowSums tt_32f       = mm_32f;
inline constexpr RowSums tm_32f       = {zeroStart,      {2, 2},       zeroStart,       zeroStart, zeroStart};
inline constexpr RowSums mt_32f       = {{4, 4},         {8, 8},       {8, 8},          {4, 8},    {4, 8}};
inline constexpr RowSums mm_64f       = {{2, 2},         {8, 8},       {4, 8},          {2, 8},    {2, 8}};
inline constexpr RowSums zero_start   = {zeroStart,      zeroStart,    zeroStart,       zeroStart, zeroStart};
inline constexpr RowSums mt_64f_S2    = {{8, 8},         {8, 8},       {8, 8},          {8, 8},    {8, 8}};

//                                            in general  one left: it  two left: first  second
inline constexpr ElementSums mv_32f         = {{4, 4},    {8, 8},       {8, 8},          {4, 8}};
inline constexpr ElementSums tv_32f         = {zeroStart, {2, 2},       {2, 2},          {2, 2}};
inline constexpr ElementSums mv_64f         = {{2, 2},    {8, 8},       {4, 8},          {2, 8}};
inline constexpr ElementSums tv_64f         = mv_64f;
inline constexpr ElementSums mv_64f_S2      = {{8, 8},    {8, 8},       {8, 8},          {8, 8}};
inline constexpr ElementSums vector_zero_start = {zeroStart, zeroStart, zeroStart,       zeroStart};
// clang-format on

}  // namespace sums

// Square products with a vector of length 3 are added from left to right, those of length 4 to 6 as here. `row` is
// that of the result.
namespace square {

// clang-format off
struct left_to_right {
    template <class S> static S of4(const S* p, int)     { return ((p[0] + p[1]) + p[2]) + p[3]; }
    template <class S> static S of5(const S* p, int)     { return (((p[0] + p[1]) + p[2]) + p[3]) + p[4]; }
    template <class S> static S of6(const S* p, int)     { return ((((p[0] + p[1]) + p[2]) + p[3]) + p[4]) + p[5]; }
};

struct mv_64f {
    template <class S> static S of4(const S* p, int)     { return (p[0] + p[1]) + (p[2] + p[3]); }
    template <class S> static S of5(const S* p, int)     { return ((p[0] + p[1]) + (p[2] + p[3])) + p[4]; }
    template <class S> static S of6(const S* p, int)     { return ((p[0] + p[1]) + (p[2] + p[3])) + (p[4] + p[5]); }
};

struct tva_32f {
    template <class S> static S of4(const S* p, int)     { return (p[0] + p[1]) + (p[2] + p[3]); }
    template <class S> static S of5(const S* p, int)     { return ((p[0] + p[1]) + p[4]) + (p[2] + p[3]); }
    template <class S> static S of6(const S* p, int)     { return ((p[0] + p[1]) + (p[2] + p[3])) + (p[4] + p[5]); }
};

struct mva_32f {
    template <class S> static S of4(const S* p, int)     { return (p[0] + p[2]) + (p[1] + p[3]); }
    template <class S> static S of5(const S* p, int row) { return row < 4 ? ((p[0] + p[1]) + p[4]) + (p[2] + p[3])
                                                                          : ((p[0] + p[2]) + p[4]) + (p[1] + p[3]); }
    template <class S> static S of6(const S* p, int)     { return ((p[0] + p[2]) + p[4]) + ((p[1] + p[3]) + p[5]); }
};
// clang-format on

template <class Order, int n, class S>
[[gnu::always_inline]] inline S sum(const S* p, int row) {
    if constexpr (n == 3) return (p[0] + p[1]) + p[2];
    else if constexpr (n == 4) return Order::of4(p, row);
    else if constexpr (n == 5) return Order::of5(p, row);
    else return Order::of6(p, row);
}

}  // namespace square

}  // namespace korm::inline KORM_VARIANT::products
