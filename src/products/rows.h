// Square products of order 3 to 6 with rows of the result as vectors: a row is the sum of the right operand's rows, each
// times one element of the left operand.
//
// What whole vectors leave over of a row shares a vector with the same columns of the next row: of order 6 in floats,
// columns 4 and 5 of two rows are one vector.
#pragma once

#include <cstddef>

#include "entry/lanes.h"
#include "products/operands.h"

namespace korm {

template <class T, int n>
struct RowParts {
    static constexpr int whole = n / laneCount<T>;                        // vectors of a row
    static constexpr int rest = n % laneCount<T>;                         // elements behind them
    static constexpr int together = rest == 0 ? 0 : laneCount<T> / rest;  // rows of these in a vector: of 3 floats, one
};

// Rows of the right operand; of what is left over, copies that fill the vector.
template <class T, int n>
struct RightRows {
    Lanes<T> whole[n][RowParts<T, n>::whole == 0 ? 1 : RowParts<T, n>::whole];
    Lanes<T> rest[n];
};

template <class T, bool turned>
[[gnu::always_inline]] inline const std::byte* elementAt(const std::byte* origin, std::ptrdiff_t stride, int i, int j) {
    constexpr auto size = static_cast<std::ptrdiff_t>(sizeof(T));
    return turned ? origin + j * stride + i * size : origin + i * stride + j * size;
}

// Elements (i, j) to (i, j + count - 1), repeated until they fill the vector; of three, the last one twice.
template <class T, int count, bool turned>
[[gnu::always_inline]] inline Lanes<T> rowPart(const std::byte* origin, std::ptrdiff_t stride, int i, int j) {
    const auto at = [&](int c) __attribute__((always_inline)) { return elementAt<T, turned>(origin, stride, i, j + c); };
    if constexpr (count == 1) return spread<T>(at(0));
    else if constexpr (laneCount<T> == 2) return turned ? Lanes<T>{load<T>(at(0)), load<T>(at(1))} : loadLanes<T>(at(0));
    else if constexpr (count == 4 && !turned) return loadLanes<T>(at(0));
    else if constexpr (count == 2 && !turned) return loadPair(at(0));
    else if constexpr (count == 3 && !turned) {
        const Float4 last = broadcast(load<T>(at(2)));
        return __builtin_shufflevector(loadPair(at(0)), last, 0, 1, 4, 5);
    } else {
        constexpr int third = count == 2 ? 0 : 2;
        return Lanes<T>{load<T>(at(0)), load<T>(at(1)), load<T>(at(third)), load<T>(at(count - 1))};
    }
}

template <class T, int n, bool turned>
[[gnu::always_inline]] inline RightRows<T, n> rightRows(const std::byte* origin, std::ptrdiff_t stride) {
    using Parts = RowParts<T, n>;
    RightRows<T, n> rows;
    constexpr bool inBlocks = turned && laneCount<T> == 4 && n >= 4;
    if constexpr (inBlocks) {
        Float4 block[4];
        unrolled<4>([&](auto i) __attribute__((always_inline)) { block[i] = loadLanes<T>(origin + i * stride); });
        transpose(block);
        unrolled<4>([&](auto i) __attribute__((always_inline)) { rows.whole[i][0] = block[i]; });
    }
    unrolled<n>([&](auto k) __attribute__((always_inline)) {
        if constexpr (!(inBlocks && k < 4))
            unrolled<Parts::whole>([&](auto v) __attribute__((always_inline)) {
                rows.whole[k][v] = rowPart<T, laneCount<T>, turned>(origin, stride, k, v * laneCount<T>);
            });
        if constexpr (Parts::rest > 0)
            rows.rest[k] = rowPart<T, Parts::rest, turned>(origin, stride, k, Parts::whole * laneCount<T>);
    });
    return rows;
}

// Row i of the left operand, element by element: as they lie, so that each is spread by one load or one shuffle.
template <class T, int n, bool turned>
struct LeftRow {
    const std::byte* origin;
    std::ptrdiff_t stride;
    int i;
    Lanes<T> four;

    [[gnu::always_inline]] LeftRow(const std::byte* originOf, std::ptrdiff_t strideOf, int row)
        : origin(originOf), stride(strideOf), i(row), four{} {
        if constexpr (laneCount<T> == 4 && n >= 4 && !turned) four = loadLanes<T>(elementAt<T, turned>(origin, stride, i, 0));
    }
    template <int k>
    [[gnu::always_inline]] Lanes<T> spread() const {
        if constexpr (laneCount<T> == 4 && n >= 4 && !turned && k < 4) return __builtin_shufflevector(four, four, k, k, k, k);
        else return korm::spread<T>(elementAt<T, turned>(origin, stride, i, k));
    }
};

// The rest of `count` rows from row i on: lanes are rows times columns.
template <class T, int n, bool turned, int i, int count, int k>
[[gnu::always_inline]] inline Lanes<T> spreadOverRows(const std::byte* origin, std::ptrdiff_t stride) {
    const auto element = [&](int row) __attribute__((always_inline)) {
        return load<T>(elementAt<T, turned>(origin, stride, row, k));
    };
    if constexpr (count == 1) return spread<T>(elementAt<T, turned>(origin, stride, i, k));
    else if constexpr (laneCount<T> == 2) {
        if constexpr (turned) return loadLanes<T>(elementAt<T, turned>(origin, stride, i, k));
        else return Lanes<T>{element(i), element(i + 1)};
    } else if constexpr (count == 2) {
        const Float4 first = broadcast(element(i)), second = broadcast(element(i + 1));
        return __builtin_shufflevector(first, second, 0, 1, 4, 5);
    } else if constexpr (turned) {
        return loadLanes<T>(elementAt<T, turned>(origin, stride, i, k));
    } else {
        return Lanes<T>{element(i), element(i + 1), element(i + 2), element(i + 3)};
    }
}

template <class T, int rest>
[[gnu::always_inline]] inline void storeRest(std::byte* to, const Lanes<T>& value, int from) {
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

template <class T, int n, bool turned>
[[gnu::always_inline]] inline void multiplyRows(const std::byte* a, std::ptrdiff_t aStride, const RightRows<T, n>& b,
                                                std::byte* to, std::ptrdiff_t stride) {
    using Parts = RowParts<T, n>;
    constexpr auto size = static_cast<std::ptrdiff_t>(sizeof(T));
    unrolled<n>([&](auto i) __attribute__((always_inline)) {
        if constexpr (Parts::whole > 0) {
            const LeftRow<T, n, turned> left(a, aStride, i);
            Lanes<T> sum[Parts::whole];
            unrolled<n>([&](auto k) __attribute__((always_inline)) {
                const Lanes<T> factor = left.template spread<k>();
                unrolled<Parts::whole>([&](auto v) __attribute__((always_inline)) {
                    if constexpr (k == 0) sum[v] = factor * b.whole[k][v];
                    else sum[v] += factor * b.whole[k][v];
                });
            });
            unrolled<Parts::whole>([&](auto v) __attribute__((always_inline)) {
                storeLanes(to + i * stride + 16 * v, sum[v]);
            });
        }
        if constexpr (Parts::rest > 0)
            if constexpr (i % Parts::together == 0) {
                constexpr int count = n - i < Parts::together ? n - i : Parts::together;
                Lanes<T> sum;
                unrolled<n>([&](auto k) __attribute__((always_inline)) {
                    const Lanes<T> factor = spreadOverRows<T, n, turned, i, count, k>(a, aStride);
                    if constexpr (k == 0) sum = factor * b.rest[k];
                    else sum += factor * b.rest[k];
                });
                unrolled<count>([&](auto r) __attribute__((always_inline)) {
                    storeRest<T, Parts::rest>(to + (i + r) * stride + Parts::whole * laneCount<T> * size, sum,
                                              r * Parts::rest);
                });
            }
    });
}

template <class View>
inline constexpr bool isTurnedView = View::spacing == Spacing::columnAdjacent;

template <class View>
[[gnu::always_inline]] inline std::ptrdiff_t storedStride(const View& view) {
    return isTurnedView<View> ? view.elementStride : view.rowStride;
}

template <class T, int n, class A, class B, class D, class Count>
[[gnu::always_inline]] inline void squaresByRows(const A& a, const B& b, const D& dst, Count count) {
    const std::ptrdiff_t aStride = storedStride(a), bStride = storedStride(b), stride = dst.rowStride;
    if constexpr (B::objects == Objects::single) {
        const auto right = rightRows<T, n, isTurnedView<B>>(b.at(0).origin, bStride);
        for (std::int32_t k = 0; k < count; ++k)
            multiplyRows<T, n, isTurnedView<A>>(a.at(k).origin, aStride, right, dst.at(k).origin, stride);
    } else {
        for (std::int32_t k = 0; k < count; ++k)
            multiplyRows<T, n, isTurnedView<A>>(a.at(k).origin, aStride,
                                                rightRows<T, n, isTurnedView<B>>(b.at(k).origin, bStride),
                                                dst.at(k).origin, stride);
    }
}

}  // namespace korm
