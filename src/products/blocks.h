// Square products of order 3 to 6 in floats with blocks of two rows by two columns of the result as vectors.
//
// The right operand's factor of a block is a pair of neighbours twice, which the load unit makes by itself. Only the
// left operand needs shuffles, one for two rows, where rows as vectors need one for each element. Shuffles share
// ports with additions, and products of small matrices wait for these: order 6 takes 117 instructions of these
// ports, by rows 153.
#pragma once

#include <cstddef>

#include "entry/lanes.h"
#include "products/operands.h"

namespace korm {

// Two floats twice, by the load unit alone.
[[gnu::always_inline]] inline Float4 pairTwice(const std::byte* from) {
    return reinterpret_cast<Float4>(spread<double>(from));
}

// Two floats and two others. The second load takes the place of a shuffle, though it takes its port.
[[gnu::always_inline]] inline Float4 twoPairs(const std::byte* first, const std::byte* second) {
    using Bits2 = long long __attribute__((vector_size(16)));
    const Bits2 both = {load<std::int64_t>(first), load<std::int64_t>(second)};
    return reinterpret_cast<Float4>(both);
}

// A float in the first lane. The compiler is kept from seeing where it came from: it would build vectors of such
// elements by three shuffles where one of two vectors does.
[[gnu::always_inline]] inline Float4 alone(const std::byte* from) {
    return settled(Float4{load<float>(from), 0, 0, 0});
}

[[gnu::always_inline]] inline void storeLowPair(std::byte* to, Float4 value) {
    store(to, reinterpret_cast<Double2>(value)[0]);
}

[[gnu::always_inline]] inline void storeHighPair(std::byte* to, Float4 value) {
    store(to, reinterpret_cast<Double2>(value)[1]);
}

// The left operand, element (i, k) as it is read.
template <int n, bool turned>
struct LeftBlocks {
    const std::byte* origin;
    std::ptrdiff_t stride;

    [[gnu::always_inline]] const std::byte* at(int i, int k) const {
        return turned ? origin + k * stride + i * 4 : origin + i * stride + k * 4;
    }

    // Elements (i, k) and (i + 1, k), each twice.
    template <int i, int k>
    [[gnu::always_inline]] Float4 twoRows() const {
        if constexpr (turned) {
            const Float4 two = loadPair(at(i, k));
            return interleaveLow(two, two);
        } else if constexpr (n >= 4 && k < 4) {
            return __builtin_shufflevector(loadLanes<float>(at(i, 0)), loadLanes<float>(at(i + 1, 0)), k, k, k + 4,
                                           k + 4);
        } else {
            return __builtin_shufflevector(alone(at(i, k)), alone(at(i + 1, k)), 0, 0, 4, 4);
        }
    }
};

template <int k, class V>
[[gnu::always_inline]] inline void addProduct(V& sum, V product) {
    if constexpr (k == 0) sum = product;
    else sum += product;
}

// Rows i to i + 1 of an even order, columns in pairs.
template <int n, int i, bool turned>
[[gnu::always_inline]] inline void multiplyTwoRows(const LeftBlocks<n, turned>& a, const std::byte* b,
                                                   std::ptrdiff_t bStride, std::byte* to, std::ptrdiff_t stride) {
    Float4 sum[n / 2];
    unrolled<n>([&](auto k) __attribute__((always_inline)) {
        const Float4 left = a.template twoRows<i, k>();
        unrolled<n / 2>([&](auto j) __attribute__((always_inline)) {
            addProduct<k>(sum[j], left * pairTwice(b + k * bStride + j * 8));
        });
    });
    unrolled<n / 2>([&](auto j) __attribute__((always_inline)) {
        storeLowPair(to + i * stride + j * 8, sum[j]);
        storeHighPair(to + (i + 1) * stride + j * 8, sum[j]);
    });
}

// The rows of a right operand of order 3: two columns twice, all with the third one twice, the third alone.
struct RightThree {
    Float4 twoColumns[3], edge[3];
    float third[3];

    [[gnu::always_inline]] RightThree(const std::byte* b, std::ptrdiff_t stride) {
        unrolled<3>([&](auto k) __attribute__((always_inline)) {
            const Float4 last = alone(b + k * stride + 8);
            twoColumns[k] = pairTwice(b + k * stride);
            edge[k] = __builtin_shufflevector(twoColumns[k], last, 0, 1, 4, 4);
            third[k] = last[0];
        });
    }
};

// Order 3: a block, beside it what is left of its two rows with what is left of its two columns, and the corner.
template <bool turned>
[[gnu::always_inline]] inline void multiplyThree(const LeftBlocks<3, turned>& a, const RightThree& b, std::byte* to,
                                                 std::ptrdiff_t stride) {
    Float4 block, edges;
    float corner;
    unrolled<3>([&](auto k) __attribute__((always_inline)) {
        const Float4 left = a.template twoRows<0, k>();
        const Float4 last = alone(a.at(2, k));
        addProduct<k>(block, left * b.twoColumns[k]);
        addProduct<k>(edges, __builtin_shufflevector(last, left, 0, 0, 4, 6) * b.edge[k]);
        addProduct<k>(corner, last[0] * b.third[k]);
    });
    storeLowPair(to, block);
    store(to + 8, edges[2]);
    storeHighPair(to + stride, block);
    store(to + stride + 8, edges[3]);
    storeLowPair(to + 2 * stride, edges);
    store(to + 2 * stride + 8, corner);
}

// Order 5: four blocks, the last column of their rows as a vector, and the last row.
template <bool turned>
[[gnu::always_inline]] inline void multiplyFive(const LeftBlocks<5, turned>& a, const std::byte* b,
                                                std::ptrdiff_t bStride, std::byte* to, std::ptrdiff_t stride) {
    Float4 block[4], column, row;
    float corner;
    unrolled<5>([&](auto k) __attribute__((always_inline)) {
        const std::byte* const from = b + k * bStride;
        const Float4 upper = a.template twoRows<0, k>();
        const Float4 lower = a.template twoRows<2, k>();
        const Float4 first = pairTwice(from), second = pairTwice(from + 8);
        const float fifth = load<float>(from + 16);
        addProduct<k>(block[0], upper * first);
        addProduct<k>(block[1], upper * second);
        addProduct<k>(block[2], lower * first);
        addProduct<k>(block[3], lower * second);
        addProduct<k>(column, __builtin_shufflevector(upper, lower, 0, 2, 4, 6) * broadcast(fifth));
    });
    unrolled<2>([&](auto i) __attribute__((always_inline)) {
        std::byte* const at = to + 2 * i * stride;
        storeLowPair(at, block[2 * i]);
        storeLowPair(at + 8, block[2 * i + 1]);
        store(at + 16, column[2 * i.value]);
        storeHighPair(at + stride, block[2 * i]);
        storeHighPair(at + stride + 8, block[2 * i + 1]);
        store(at + stride + 16, column[2 * i.value + 1]);
    });
    unrolled<5>([&](auto k) __attribute__((always_inline)) {
        const std::byte* const from = b + k * bStride;
        const float left = load<float>(a.at(4, k));
        addProduct<k>(row, broadcast(left) * loadLanes<float>(from));
        addProduct<k>(corner, left * load<float>(from + 16));
    });
    storeLanes(to + 4 * stride, row);
    store(to + 4 * stride + 16, corner);
}

template <int n, bool turned>
[[gnu::always_inline]] inline void multiplyBlocks(const std::byte* a, std::ptrdiff_t aStride, const std::byte* b,
                                                  std::ptrdiff_t bStride, std::byte* to, std::ptrdiff_t stride) {
    const LeftBlocks<n, turned> left{a, aStride};
    if constexpr (n == 3) multiplyThree(left, RightThree(b, bStride), to, stride);
    else if constexpr (n == 5) multiplyFive(left, b, bStride, to, stride);
    else
        unrolled<n / 2>([&](auto i) __attribute__((always_inline)) {
            multiplyTwoRows<n, 2 * i>(left, b, bStride, to, stride);
        });
}

}  // namespace korm
