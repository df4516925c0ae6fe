// Square products of order 3 to 6 with rows of the result as vectors: a row is the sum of the right operand's rows, each
// times one element of the left operand.
//
// What whole vectors leave over of a row shares a vector with the same columns of the next row: of order 6 in floats,
// columns 4 and 5 of two rows are one vector.
#pragma once

#include <cstddef>

#include "kernel/vec.h"
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

// Where results go: as they are, or as the transpose of the result, element by element.
template <class T, int n, bool turned>
struct RowTarget {
    static_assert(!turned || RowParts<T, n>::rest <= 1);
    static constexpr auto size = static_cast<std::ptrdiff_t>(sizeof(T));
    using Parts = RowParts<T, n>;
    std::byte* origin;
    std::ptrdiff_t stride;

    [[gnu::always_inline]] void storeWhole(int i, int v, const Lanes<T>& value) const {
        if constexpr (turned)
            unrolled<laneCount<T>>([&](auto c) __attribute__((always_inline)) {
                store(origin + (v * laneCount<T> + c) * stride + i * size, value[c.value]);
            });
        else storeLanes(origin + i * stride + 16 * v, value);
    }

    // The rest of `count` rows.
    template <int count>
    [[gnu::always_inline]] void storeRests(int i, const Lanes<T>& value) const {
        unrolled<count>([&](auto r) __attribute__((always_inline)) {
            if constexpr (turned) store(origin + (n - 1) * stride + (i + r) * size, value[r.value]);
            else storeRest<T, Parts::rest>(origin + (i + r) * stride + Parts::whole * 16, value, r * Parts::rest);
        });
    }
};

template <class T, int n, class Left, class Target>
[[gnu::always_inline]] inline void multiplyRows(const Left& left, const RightRows<T, n>& b, const Target& to) {
    using Parts = RowParts<T, n>;
    unrolled<n>([&](auto i) __attribute__((always_inline)) {
        if constexpr (Parts::whole > 0) {
            Lanes<T> sum[Parts::whole];
            unrolled<n>([&](auto k) __attribute__((always_inline)) {
                const Lanes<T> factor = left.template spread<i, k>();
                unrolled<Parts::whole>([&](auto v) __attribute__((always_inline)) {
                    addProduct<n, k>(sum[v], factor * b.whole[k][v]);
                });
            });
            unrolled<Parts::whole>([&](auto v) __attribute__((always_inline)) { to.storeWhole(i, v, sum[v]); });
        }
        if constexpr (Parts::rest > 0)
            if constexpr (i % Parts::together == 0) {
                constexpr int count = n - i < Parts::together ? n - i : Parts::together;
                Lanes<T> sum;
                unrolled<n>([&](auto k) __attribute__((always_inline)) {
                    addProduct<n, k>(sum, left.template rest<i, count, k>() * b.rest[k]);
                });
                to.template storeRests<count>(i, sum);
            }
    });
}

// Packed objects of floats and their transposes by blocks, unless a left operand serves them all: held as whole vectors,
// it needs no shuffles. A transpose of order 5 has no blocks.
template <class T, int n, bool turnB>
inline constexpr bool inBlocks = laneCount<T> == 4 && !(n == 5 && turnB);

template <class T, int n, class A, class B, class D, class Count>
[[gnu::always_inline]] inline void squaresByRows(const A& a, std::ptrdiff_t aStride, const B& b, std::ptrdiff_t bStride,
                                                 const D& dst, std::ptrdiff_t stride, Count count) {
    constexpr bool turnA = isTurnedView<A>, turnB = isTurnedView<B>, isArray = std::is_same_v<Count, std::int32_t>;
    const auto leftAt = [&](std::int32_t k) __attribute__((always_inline)) { return a.at(k).origin; };
    const auto rightAt = [&](std::int32_t k) __attribute__((always_inline)) { return b.at(k).origin; };
    const auto rows = [&](std::int32_t k) __attribute__((always_inline)) {
        return rightRows<T, n, turnB>(rightAt(k), bStride);
    };
    const auto forObjects = [&](const auto& multiply) __attribute__((always_inline)) {
        for (std::int32_t k = 0; k < count; ++k) multiply(k, RowTarget<T, n, false>{dst.at(k).origin, stride});
    };
    if constexpr (isArray && isShared<A>) {
        if (count <= 0) return;
        const LeftHeld<T, n, turnA> left(leftAt(0), aStride);
        forObjects([&](std::int32_t k, const auto& to)
                       __attribute__((always_inline)) { multiplyRows<T, n>(left, rows(k), to); });
    } else if constexpr (isArray && turnA && turnB && (laneCount<T> == 2 || n % 2 == 0 || n == 3)) {
        // The product of two transposes is the transpose of a product, for which neither has to be turned.
        forObjects([&](std::int32_t k, const auto& to) __attribute__((always_inline)) {
            if constexpr (laneCount<T> == 4)
                multiplyBlocks<n>(LeftBlocks<n, false>{rightAt(k), bStride}, rightBlocks<n, false>(leftAt(k), aStride),
                                  BlockTarget<true>{to.origin, to.stride});
            else
                multiplyRows<T, n>(LeftInPlace<T, n, false>{rightAt(k), bStride},
                                   rightRows<T, n, false>(leftAt(k), aStride),
                                   RowTarget<T, n, true>{to.origin, to.stride});
        });
    } else if constexpr (isArray && inBlocks<T, n, turnB>) {
        const auto blocks = [&](std::int32_t k, const auto& right, const auto& to) __attribute__((always_inline)) {
            multiplyBlocks<n>(LeftBlocks<n, turnA>{leftAt(k), aStride}, right,
                              BlockTarget<false>{to.origin, to.stride});
        };
        if constexpr (isShared<B>) {
            const auto held = heldBlocks<n, turnB>(rightAt(0), bStride);
            forObjects([&](std::int32_t k, const auto& to) __attribute__((always_inline)) { blocks(k, held, to); });
        } else {
            forObjects([&](std::int32_t k, const auto& to) __attribute__((always_inline)) {
                blocks(k, rightBlocks<n, turnB>(rightAt(k), bStride), to);
            });
        }
    } else if constexpr (isArray && isShared<B>) {
        const auto held = rows(0);
        forObjects([&](std::int32_t k, const auto& to) __attribute__((always_inline)) {
            multiplyRows<T, n>(LeftInPlace<T, n, turnA>{leftAt(k), aStride}, held, to);
        });
    } else {
        forObjects([&](std::int32_t k, const auto& to) __attribute__((always_inline)) {
            multiplyRows<T, n>(LeftInPlace<T, n, turnA>{leftAt(k), aStride}, rows(k), to);
        });
    }
}

// Where rows touch, the distances between them are known when compiling. Addresses then take one register for each
// operand; with strides in registers the rest of the addresses waits on the stack: order 6 of floats takes 14.3 ns for 17.4,
// order 4 takes 4.8 for 5.7, doubles gain up to 11 %. A left operand that is held leaves registers enough. Doubles of order
// 6 lose 10 %: their right operand would fill the registers, and sums go to the stack. One object is not worth the test.
template <class T, int n, class A, class Count>
inline constexpr bool testsPacked =
    std::is_same_v<Count, std::int32_t> && !isShared<A> && !(laneCount<T> == 2 && n == 6);

template <class T, int n, class A, class B, class D, class Count>
[[gnu::always_inline]] inline void squaresByRows(const A& a, const B& b, const D& dst, Count count) {
    constexpr std::ptrdiff_t packed = n * sizeof(T);
    const std::ptrdiff_t aStride = storedStride(a), bStride = storedStride(b), stride = dst.rowStride;
    if constexpr (testsPacked<T, n, A, Count>)
        if (aStride == packed && bStride == packed && stride == packed)
            return squaresByRows<T, n>(a, packed, b, packed, dst, packed, count);
    squaresByRows<T, n>(a, aStride, b, bStride, dst, stride, count);
}

}  // namespace korm
