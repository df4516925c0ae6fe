// Square products of order 3 to 6 with rows of the result as vectors: a row is the sum of the right operand's rows, each
// times one element of the left operand.
//
// What whole vectors leave over of a row shares a vector with the same columns of the next row: of order 6 in floats,
// columns 4 and 5 of two rows are one vector.
#pragma once

#include <cstddef>

#include "entry/lanes.h"
#include "products/blocks.h"
#include "products/objects.h"
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
    const auto at = [&](int c) __attribute__((always_inline)) {
        return elementAt<T, turned>(origin, stride, i, j + c);
    };
    if constexpr (count == 1) return spread<T>(at(0));
    else if constexpr (laneCount<T> == 2)
        return turned ? Lanes<T>{load<T>(at(0)), load<T>(at(1))} : loadLanes<T>(at(0));
    else if constexpr (count == 4 && !turned) return loadLanes<T>(at(0));
    else if constexpr (count == 2 && !turned) return loadPair(at(0));
    else if constexpr (count == 3 && !turned) {
        return __builtin_shufflevector(loadPair(at(0)), Float4{load<T>(at(2)), 0, 0, 0}, 0, 1, 4, 4);
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
    [[gnu::always_inline]] Lanes<T> spread() const {
        if constexpr (laneCount<T> == 4 && n >= 4 && !turned && k < 4) {
            const Float4 four = loadLanes<T>(at(i, 0));
            return __builtin_shufflevector(four, four, k, k, k, k);
        } else {
            return korm::spread<T>(at(i, k));
        }
    }

    template <int i, int count, int k>
    [[gnu::always_inline]] Lanes<T> rest() const {
        if constexpr (count == 1) return korm::spread<T>(at(i, k));
        else if constexpr (count == laneCount<T> && turned) return loadLanes<T>(at(i, k));
        else if constexpr (laneCount<T> == 2) return Lanes<T>{load<T>(at(i, k)), load<T>(at(i + 1, k))};
        else if constexpr (count == 2)
            return __builtin_shufflevector(broadcast(load<T>(at(i, k))), broadcast(load<T>(at(i + 1, k))), 0, 1, 4, 5);
        else return Lanes<T>{load<T>(at(i, k)), load<T>(at(i + 1, k)), load<T>(at(i + 2, k)), load<T>(at(i + 3, k))};
    }
};

// A single operand of an array form: spread once for all objects.
template <class T, int n, bool turned>
struct LeftHeld {
    using Parts = RowParts<T, n>;
    Lanes<T> all[n][n];
    Lanes<T> rests[Parts::rest == 0 ? 1 : n][n];

    [[gnu::always_inline]] LeftHeld(const std::byte* origin, std::ptrdiff_t stride) {
        const LeftInPlace<T, n, turned> left{origin, stride};
        unrolled<n * n>([&](auto e) __attribute__((always_inline)) {
            constexpr int i = e / n, k = e % n;
            all[i][k] = left.template spread<i, k>();
            if constexpr (Parts::rest > 0)
                if constexpr (i % Parts::together == 0)
                    rests[i][k] = left.template rest<i, (n - i < Parts::together ? n - i : Parts::together), k>();
        });
    }

    template <int i, int k>
    [[gnu::always_inline]] Lanes<T> spread() const {
        return all[i][k];
    }

    template <int i, int count, int k>
    [[gnu::always_inline]] Lanes<T> rest() const {
        return rests[i][k];
    }
};

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

template <class T, int n, class Left>
[[gnu::always_inline]] inline void multiplyRows(const Left& left, const RightRows<T, n>& b, std::byte* to,
                                                std::ptrdiff_t stride) {
    using Parts = RowParts<T, n>;
    constexpr auto size = static_cast<std::ptrdiff_t>(sizeof(T));
    unrolled<n>([&](auto i) __attribute__((always_inline)) {
        if constexpr (Parts::whole > 0) {
            Lanes<T> sum[Parts::whole];
            unrolled<n>([&](auto k) __attribute__((always_inline)) {
                const Lanes<T> factor = left.template spread<i, k>();
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
                    const Lanes<T> factor = left.template rest<i, count, k>();
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

template <class T, int n, class A, class B, class D, class Count>
[[gnu::always_inline]] inline void squaresByRows(const A& a, const B& b, const D& dst, Count count) {
    constexpr bool turnA = isTurnedView<A>, turnB = isTurnedView<B>;
    const std::ptrdiff_t aStride = storedStride(a), bStride = storedStride(b), stride = dst.rowStride;
    const auto right = [&](std::int32_t k) __attribute__((always_inline)) {
        return rightRows<T, n, turnB>(b.at(k).origin, bStride);
    };
    using InPlace = LeftInPlace<T, n, turnA>;
    if constexpr (!std::is_same_v<Count, std::int32_t>) {
        multiplyRows<T, n>(InPlace{a.at(0).origin, aStride}, right(0), dst.at(0).origin, stride);
    } else if constexpr (isShared<A>) {
        if (count <= 0) return;
        const LeftHeld<T, n, turnA> left(a.at(0).origin, aStride);
        for (std::int32_t k = 0; k < count; ++k) multiplyRows<T, n>(left, right(k), dst.at(k).origin, stride);
    } else if constexpr (laneCount<T> == 4 && n == 3 && isShared<B> && !turnB) {
        const RightThree held(b.at(0).origin, bStride);
        for (std::int32_t k = 0; k < count; ++k)
            multiplyThree(LeftBlocks<3, turnA>{a.at(k).origin, aStride}, held, dst.at(k).origin, stride);
    } else if constexpr (laneCount<T> == 4 && !turnB) {
        for (std::int32_t k = 0; k < count; ++k)
            multiplyBlocks<n, turnA>(a.at(k).origin, aStride, b.at(k).origin, bStride, dst.at(k).origin, stride);
    } else {
        const auto eachObject = [&](const auto& rightOf) __attribute__((always_inline)) {
            for (std::int32_t k = 0; k < count; ++k) {
                const InPlace left{a.at(k).origin, aStride};
                multiplyRows<T, n>(left, rightOf(k), dst.at(k).origin, stride);
            }
        };
        if constexpr (isShared<B>) {
            const auto held = right(0);
            eachObject([&](std::int32_t) __attribute__((always_inline))->const auto& { return held; });
        } else {
            eachObject(right);
        }
    }
}

}  // namespace korm
