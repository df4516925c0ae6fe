// Square products of order 3, 5 and 6 in floats with blocks of two rows by two columns of the result as vectors.
//
// The right operand's factor of a block is a pair of neighbours twice, which the load unit makes by itself. Only the
// left operand needs shuffles, one for two rows, where rows as vectors need one for each element. Shuffles share
// ports with additions, and products of small matrices wait for these: order 6 takes 117 instructions of these
// ports, by rows 153.
#pragma once

#include <cstddef>

#include "kernel/unroll.h"
#include "kernel/vec.h"
#include "products/operands.h"
#include "products/sums.h"

namespace korm::inline KORM_VARIANT::products {

// Two floats twice, by the load unit alone.
[[gnu::always_inline]] inline Float4 pairTwice(const std::byte* from) {
    return reinterpret_cast<Float4>(spread<Double2>(from));
}

// A float in the first lane. The compiler is kept from seeing where it came from: it would build vectors of such
// elements by three shuffles where one of two vectors does.
[[gnu::always_inline]] inline Float4 alone(const std::byte* from) {
    return settled(Float4{load<float>(from), 0, 0, 0});
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
        } else if constexpr (constexpr int four = k / 4 * 4; four + 4 <= n) {
            constexpr int of = k - four;
            return __builtin_shufflevector(load<Float4>(at(i, four)), load<Float4>(at(i + 1, four)), of, of, of + 4,
                                           of + 4);
        } else {
            return __builtin_shufflevector(alone(at(i, k)), alone(at(i + 1, k)), 0, 0, 4, 4);
        }
    }
};

// Product k of an element of order n. The compiler is told where the sum is complete so far: left to itself it has all
// additions at the end, and keeps what they need in memory meanwhile. Order 6 of floats took 17.0 ns for 14.2;
// order 3 has registers enough and loses from being told.
template <int n, int k, class V>
[[gnu::always_inline]] inline void addProduct(V& sum, V product) {
    if constexpr (k == 0) sum = product;
    else sum += product;
    if constexpr (n > 3) asm("" : "+x"(sum));
}

// The right operand of an even order, columns 2 j and 2 j + 1 of row k twice: from where it lies.
struct RightInPlace {
    const std::byte* origin;
    std::ptrdiff_t stride;

    template <int k, int j>
    [[gnu::always_inline]] Float4 pair() const {
        return pairTwice(origin + k * stride + j * 8);
    }

    [[gnu::always_inline]] void readAnew() const {}
};

// A single operand of an array form: such pairs once for all objects, as vectors that multiplications read.
template <int n>
struct RightHeld {
    Float4 pairs[n][n / 2];

    template <bool turned>
    [[gnu::always_inline]] RightHeld(std::bool_constant<turned>, const std::byte* b, std::ptrdiff_t stride) {
        unrolled<n * n / 2>([&](auto e) __attribute__((always_inline)) {
            constexpr int k = e / (n / 2), j = e % (n / 2);
            if constexpr (turned) {
                const float first = load<float>(b + 2 * j * stride + k * 4);
                const float second = load<float>(b + (2 * j + 1) * stride + k * 4);
                pairs[k][j] = Float4{first, second, first, second};
            } else {
                pairs[k][j] = pairTwice(b + k * stride + j * 8);
            }
        });
    }

    template <int k, int j>
    [[gnu::always_inline]] Float4 pair() const {
        return pairs[k][j];
    }

    [[gnu::always_inline]] void readAnew() const {}
};

// Of an operand that is read as its transpose, such pairs are made once, by half the shuffles of a transposition.
template <int n>
struct RightTurned {
    alignas(16) std::byte pairs[n / 2][n * 8];

    [[gnu::always_inline]] RightTurned(const std::byte* b, std::ptrdiff_t stride) {
        unrolled<n / 2>([&](auto j) __attribute__((always_inline)) {
            const std::byte* const first = b + 2 * j * stride;
            const std::byte* const second = first + stride;
            const Float4 upper = load<Float4>(first), lower = load<Float4>(second);
            storeLanes(pairs[j], interleaveLow(upper, lower));
            storeLanes(pairs[j] + 16, interleaveHigh(upper, lower));
            if constexpr (n == 6) storeLanes(pairs[j] + 32, interleaveLow(loadPair(first + 16), loadPair(second + 16)));
        });
    }

    template <int k, int j>
    [[gnu::always_inline]] Float4 pair() const {
        return pairTwice(pairs[j] + k * 8);
    }

    // Pairs twice that a compiler keeps for the next rows would go to the stack, a store and a load for one load.
    [[gnu::always_inline]] void readAnew() const { asm volatile("" : : "r"(pairs) : "memory"); }
};

// Where results go: as they are or as the transpose of the result.
template <bool turned, Start start = Start::firstProduct>
struct BlockTarget {
    std::byte* origin;
    std::ptrdiff_t stride;

    [[gnu::always_inline]] std::byte* at(int i, int j) const {
        return turned ? origin + j * stride + i * 4 : origin + i * stride + j * 4;
    }

    // Elements (i, j), (i, j + 1), (i + 1, j), (i + 1, j + 1).
    [[gnu::always_inline]] void store(int i, int j, Float4 block) const {
        if constexpr (turned) block = __builtin_shufflevector(block, block, 0, 2, 1, 3);
        if constexpr (start == Start::zero) block = zeroStarted(block);
        storeLowPair(at(i, j), block);
        storeHighPair(turned ? at(i, j + 1) : at(i + 1, j), block);
    }

    // Order 3: the first block, elements (2, 0), (2, 1), (0, 2), (1, 2), and the last element.
    [[gnu::always_inline]] void storeThree(Float4 block, Float4 edges, float corner) const {
        static_assert(start == Start::firstProduct);
        store(0, 0, block);
        if constexpr (turned) edges = __builtin_shufflevector(edges, edges, 2, 3, 0, 1);
        korm::store(origin + 8, edges[2]);
        korm::store(origin + stride + 8, edges[3]);
        storeLowPair(origin + 2 * stride, edges);
        korm::store(origin + 2 * stride + 8, corner);
    }
};

// Rows i to i + 1 of an even order, columns in pairs.
template <int n, int i, class Left, class Right, class Target>
[[gnu::always_inline]] inline void multiplyTwoRows(const Left& a, const Right& b, const Target& to) {
    Float4 sum[n / 2];
    unrolled<n>([&](auto k) __attribute__((always_inline)) {
        const Float4 left = a.template twoRows<i, k>();
        unrolled<n / 2>([&](auto j) __attribute__((always_inline)) {
            addProduct<n, k>(sum[j], left * b.template pair<k, j>());
        });
    });
    unrolled<n / 2>([&](auto j) __attribute__((always_inline)) { to.store(i, 2 * j, sum[j]); });
}

// The rows of a right operand of order 3: two columns twice, all with the third one twice, the third alone.
struct RightThree {
    Float4 twoColumns[3], edge[3];
    float third[3];

    template <bool turned>
    [[gnu::always_inline]] RightThree(std::bool_constant<turned>, const std::byte* b, std::ptrdiff_t stride) {
        if constexpr (turned) {
            const Float4 two = interleaveLow(loadPair(b), loadPair(b + stride));
            const Float4 last = interleaveLow(alone(b + 8), alone(b + stride + 8));
            twoColumns[0] = lowPairTwice(two);
            twoColumns[1] = highPairTwice(two);
            twoColumns[2] = lowPairTwice(last);
        }
        unrolled<3>([&](auto k) __attribute__((always_inline)) {
            const Float4 last = alone(turned ? b + 2 * stride + k * 4 : b + k * stride + 8);
            if constexpr (!turned) twoColumns[k] = pairTwice(b + k * stride);
            edge[k] = __builtin_shufflevector(twoColumns[k], last, 0, 1, 4, 4);
            third[k] = last[0];
        });
    }
};

// Order 3: a block, beside it what is left of its two rows with what is left of its two columns, and the corner.
template <class Left, class Target>
[[gnu::always_inline]] inline void multiplyThree(const Left& a, const RightThree& b, const Target& to) {
    Float4 block, edges;
    float corner;
    unrolled<3>([&](auto k) __attribute__((always_inline)) {
        const Float4 left = a.template twoRows<0, k>();
        const Float4 last = alone(a.at(2, k));
        addProduct<3, k>(block, left * b.twoColumns[k]);
        addProduct<3, k>(edges, __builtin_shufflevector(last, left, 0, 0, 4, 6) * b.edge[k]);
        addProduct<3, k>(corner, last[0] * b.third[k]);
    });
    to.storeThree(block, edges, corner);
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
        addProduct<5, k>(block[0], upper * first);
        addProduct<5, k>(block[1], upper * second);
        addProduct<5, k>(block[2], lower * first);
        addProduct<5, k>(block[3], lower * second);
        addProduct<5, k>(column, __builtin_shufflevector(upper, lower, 0, 2, 4, 6) * all<Float4>(fifth));
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
        addProduct<5, k>(row, all<Float4>(left) * load<Float4>(from));
        addProduct<5, k>(corner, left * load<float>(from + 16));
    });
    storeLanes(to + 4 * stride, row);
    store(to + 4 * stride + 16, corner);
}

template <int n, class Left, class Right, class Target>
[[gnu::always_inline]] inline void multiplyEven(const Left& a, const Right& b, const Target& to) {
    unrolled<n / 2>([&](auto i) __attribute__((always_inline)) {
        multiplyTwoRows<n, 2 * i>(a, b, to);
        b.readAnew();
    });
}

// A single operand of order 5 that is read as its transpose, once for all objects.
struct RightFive : RightInPlace {
    alignas(16) std::byte rows[5 * 20];

    [[gnu::always_inline]] RightFive(const std::byte* b, std::ptrdiff_t bStride) : RightInPlace{rows, 20} {
        unrolled<5>([&](auto k) __attribute__((always_inline)) {
            const auto at = [&](int j) __attribute__((always_inline)) { return load<float>(b + j * bStride + k * 4); };
            korm::store(rows + k * 20, Float4{at(0), at(1), at(2), at(3)});
            korm::store(rows + k * 20 + 16, at(4));
        });
    }
    RightFive(const RightFive&) = delete;
};

// The right operand of an order, made ready for multiplyBlocks.
template <int n, bool turned>
[[gnu::always_inline]] inline auto rightBlocks(const std::byte* b, std::ptrdiff_t stride) {
    if constexpr (n == 3) return RightThree(std::bool_constant<turned>{}, b, stride);
    else if constexpr (turned) return RightTurned<n>(b, stride);
    else return RightInPlace{b, stride};
}

template <int n, class Left, class Right, class Target>
[[gnu::always_inline]] inline void multiplyBlocks(const Left& a, const Right& b, const Target& to) {
    if constexpr (n == 3) multiplyThree(a, b, to);
    else if constexpr (n == 5) multiplyFive(a, b.origin, b.stride, to.origin, to.stride);
    else multiplyEven<n>(a, b, to);
}

}  // namespace korm::inline KORM_VARIANT::products
