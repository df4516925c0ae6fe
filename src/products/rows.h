// Rows of small squares as vectors of 16 bytes, and square products made of them: a row of the result is the sum of the
// right operand's rows, each times one element of the left operand.
//
// What whole vectors leave over of a row shares a vector with the same columns of the next row: of order 6 in floats,
// columns 4 and 5 of two rows are one vector.
#pragma once

#include <cstddef>

#include "kernel/unroll.h"
#include "kernel/vec.h"
#include "products/blocks.h"
#include "products/operands.h"

namespace korm::inline KORM_VARIANT::products {

template <class T, int n>
struct RowParts {
    static constexpr int whole = n / lanes16<T>;                        // vectors of a row
    static constexpr int rest = n % lanes16<T>;                         // elements behind them
    static constexpr int together = rest == 0 ? 0 : lanes16<T> / rest;  // rows of these in a vector: of 3 floats, one
};

// Rows of the right operand; of what is left over, copies that fill the vector.
template <class T, int n>
struct RightRows {
    Vec16<T> whole[n][RowParts<T, n>::whole == 0 ? 1 : RowParts<T, n>::whole];
    Vec16<T> rest[n];
};

template <class T, bool turned>
[[gnu::always_inline]] inline const std::byte* elementAt(const std::byte* origin, std::ptrdiff_t stride, int i, int j) {
    constexpr auto size = static_cast<std::ptrdiff_t>(sizeof(T));
    return turned ? origin + j * stride + i * size : origin + i * stride + j * size;
}

// Elements (i, j) to (i, j + count - 1), repeated until they fill the vector; of three, the last one twice.
template <class T, int count, bool turned>
[[gnu::always_inline]] inline Vec16<T> rowPart(const std::byte* origin, std::ptrdiff_t stride, int i, int j) {
    const auto at = [&](int c) __attribute__((always_inline)) {
        return elementAt<T, turned>(origin, stride, i, j + c);
    };
    if constexpr (count == 1) return spread<Vec16<T>>(at(0));
    else if constexpr (!isFloat<T>) return turned ? Vec16<T>{load<T>(at(0)), load<T>(at(1))} : load<Vec16<T>>(at(0));
    else if constexpr (count == 4 && !turned) return load<Vec16<T>>(at(0));
    else if constexpr (count == 2 && !turned) return loadPair(at(0));
    else if constexpr (count == 3 && !turned) {
        return __builtin_shufflevector(loadPair(at(0)), Float4{load<T>(at(2)), 0, 0, 0}, 0, 1, 4, 4);
    } else {
        constexpr int third = count == 2 ? 0 : 2;
        return Vec16<T>{load<T>(at(0)), load<T>(at(1)), load<T>(at(third)), load<T>(at(count - 1))};
    }
}

template <class T, int n, bool turned>
[[gnu::always_inline]] inline RightRows<T, n> rightRows(const std::byte* origin, std::ptrdiff_t stride) {
    using Parts = RowParts<T, n>;
    RightRows<T, n> rows;
    constexpr bool inBlocks = turned && isFloat<T> && n >= 4;
    if constexpr (inBlocks) {
        Float4 block[4];
        unrolled<4>([&](auto i) __attribute__((always_inline)) { block[i] = load<Vec16<T>>(origin + i * stride); });
        transpose(block);
        unrolled<4>([&](auto i) __attribute__((always_inline)) { rows.whole[i][0] = block[i]; });
    }
    unrolled<n>([&](auto k) __attribute__((always_inline)) {
        if constexpr (!(inBlocks && k < 4))
            unrolled<Parts::whole>([&](auto v) __attribute__((always_inline)) {
                rows.whole[k][v] = rowPart<T, lanes16<T>, turned>(origin, stride, k, v * lanes16<T>);
            });
        if constexpr (Parts::rest > 0)
            rows.rest[k] = rowPart<T, Parts::rest, turned>(origin, stride, k, Parts::whole * lanes16<T>);
    });
    return rows;
}

// One lane in all lanes. As integers: that takes no copy first, and reads a vector from memory by the same instruction.
// Order 4 of floats takes 2.7 ns instead of 3.0.
template <int lane>
[[gnu::always_inline]] inline Float4 spreadLane(Float4 v) {
    return reinterpret_cast<Float4>(_mm_shuffle_epi32(reinterpret_cast<__m128i>(v), lane * 0x55));
}

// The left operand gives its factors in two ways. Each has spread<i, k>(), element (i, k) in all lanes, and
// rest<i, count, k>(), elements (i, k) to (i + count - 1, k) as the rest of these rows needs them.

// From where it lies.
template <class T, int n, bool turned>
struct LeftInPlace {
    const std::byte* origin;
    std::ptrdiff_t stride;

    [[gnu::always_inline]] const std::byte* at(int i, int k) const {
        return elementAt<T, turned>(origin, stride, i, k);
    }

    template <int i, int k>
    [[gnu::always_inline]] Vec16<T> spread() const {
        constexpr int indices[] = {k, i};
        constexpr int place = indices[turned], four = place / 4 * 4;
        if constexpr (isFloat<T> && four + 4 <= n)
            return spreadLane<place % 4>(load<Float4>(turned ? at(four, k) : at(i, four)));
        else return products::spread<Vec16<T>>(at(i, k));
    }

    template <int i, int count, int k>
    [[gnu::always_inline]] Vec16<T> rest() const {
        if constexpr (count == 1) return products::spread<Vec16<T>>(at(i, k));
        else if constexpr (count == lanes16<T> && turned) return load<Vec16<T>>(at(i, k));
        else if constexpr (isFloat<T> && count == 2)
            return __builtin_shufflevector(products::spread<Float4>(at(i, k)), products::spread<Float4>(at(i + 1, k)),
                                           0, 1, 4, 5);
        else return fromLanes<Vec16<T>>([&](int l) { return load<T>(at(i + l, k)); });
    }
};

// Order 4 of floats, read as its transpose: every row gives factors to all rows of the result, whose stores it isn't read
// again behind.
struct LeftFour {
    Float4 rows[4];

    [[gnu::always_inline]] LeftFour(const std::byte* origin, std::ptrdiff_t stride) {
        unrolled<4>([&](auto k) __attribute__((always_inline)) { rows[k] = load<Float4>(origin + k * stride); });
    }

    template <int i, int k>
    [[gnu::always_inline]] Float4 spread() const {
        return spreadLane<i>(rows[k]);
    }
};

// The left operand of an order, as multiplyRows reads it.
template <class T, int n, bool turned>
[[gnu::always_inline]] inline auto leftRows(const std::byte* a, std::ptrdiff_t stride) {
    if constexpr (isFloat<T> && n == 4 && turned) return LeftFour(a, stride);
    else return LeftInPlace<T, n, turned>{a, stride};
}

// A single operand of an array form: spread once for all objects.
template <class T, int n>
struct LeftHeld {
    using Parts = RowParts<T, n>;
    Vec16<T> all[n][n];
    Vec16<T> rests[Parts::rest == 0 ? 1 : n][n];

    template <bool turned>
    [[gnu::always_inline]] explicit LeftHeld(const LeftInPlace<T, n, turned>& left) {
        unrolled<n * n>([&](auto e) __attribute__((always_inline)) {
            constexpr int i = e / n, k = e % n;
            all[i][k] = left.template spread<i, k>();
            if constexpr (Parts::rest > 0)
                if constexpr (i % Parts::together == 0)
                    rests[i][k] = left.template rest<i, (n - i < Parts::together ? n - i : Parts::together), k>();
        });
    }

    template <int i, int k>
    [[gnu::always_inline]] Vec16<T> spread() const {
        return all[i][k];
    }

    template <int i, int count, int k>
    [[gnu::always_inline]] Vec16<T> rest() const {
        return rests[i][k];
    }
};

template <class T, int rest>
[[gnu::always_inline]] inline void storeRest(std::byte* to, const Vec16<T>& value, int from) {
    constexpr auto size = static_cast<std::ptrdiff_t>(sizeof(T));
    if constexpr (rest == 3) {
        storePair(to, value);
        store(to + 2 * size, value[2]);
    } else if constexpr (rest == 2) {
        storePair(to, from == 0 ? value : highPairTwice(value));
    } else {
        store(to, value[from]);
    }
}

// Rows of the result go to `to` and the rows of memory behind it.
template <class T, int n, class Left>
[[gnu::always_inline]] inline void multiplyRows(const Left& left, const RightRows<T, n>& b, std::byte* to,
                                                std::ptrdiff_t stride) {
    using Parts = RowParts<T, n>;
    unrolled<n>([&](auto i) __attribute__((always_inline)) {
        if constexpr (Parts::whole > 0) {
            Vec16<T> sum[Parts::whole];
            unrolled<n>([&](auto k) __attribute__((always_inline)) {
                const Vec16<T> factor = left.template spread<i, k>();
                unrolled<Parts::whole>([&](auto v) __attribute__((always_inline)) {
                    addProduct<n, k>(sum[v], factor * b.whole[k][v]);
                });
            });
            unrolled<Parts::whole>([&](auto v)
                                       __attribute__((always_inline)) { store(to + i * stride + v * 16, sum[v]); });
        }
        if constexpr (Parts::rest > 0)
            if constexpr (i % Parts::together == 0) {
                constexpr int count = n - i < Parts::together ? n - i : Parts::together;
                Vec16<T> sum;
                unrolled<n>([&](auto k) __attribute__((always_inline)) {
                    addProduct<n, k>(sum, left.template rest<i, count, k>() * b.rest[k]);
                });
                unrolled<count>([&](auto r) __attribute__((always_inline)) {
                    storeRest<T, Parts::rest>(to + (i + r) * stride + Parts::whole * 16, sum, r * Parts::rest);
                });
            }
    });
}

}  // namespace korm::inline KORM_VARIANT::products
