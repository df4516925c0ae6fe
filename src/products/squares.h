// Square products of order 3 to 6: every sum goes from left to right and starts with its first product.
//
// Plain objects (elements of a row touch) have rows or blocks of the result as vectors; all others go in lanes, one object in
// each. An array is one call whose instance serves arrays and lists alike, and where one operand serves all objects, which
// is made ready first, read as its transpose or not.
#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>

#include "kernel/known.h"
#include "kernel/predicates.h"
#include "kernel/unroll.h"
#include "kernel/vec.h"
#include "products/blocks.h"
#include "products/columns.h"
#include "products/objects.h"
#include "products/operands.h"
#include "products/rows.h"
#include "products/sums.h"

namespace korm::inline KORM_VARIANT::products {

// --- Doubles of even order -------------------------------------------------------------------------

// They are spread by loads, so a tile of rows and columns needs no shuffles. The right operand lies in rows.
template <int n, bool turnA, class Target>
[[gnu::always_inline]] inline void multiplyDoubles(const std::byte* a, std::ptrdiff_t aStride, const std::byte* b,
                                                   std::ptrdiff_t bStride, Target to, std::ptrdiff_t toRow) {
    constexpr int vectors = n / 2;
    constexpr int most = sumRegisters / vectors;
    constexpr int passes = (n + most - 1) / most;
    constexpr int tall = n / passes;
    static_assert(n % passes == 0);
    const std::ptrdiff_t aRow = turnA ? 8 : aStride, aStep = turnA ? aStride : 8;
    for (int i = 0; i < n; i += tall) {
        tile<Double2, zeroStart, tall, vectors, Start::firstProduct>({a, aRow, aStep}, {b, bStride, (vectors - 1) * 16},
                                                                     Known<n>{}, to);
        a += tall * aRow;
        to.origin += tall * toRow;
    }
}

// The transpose, packed.
template <int n>
[[gnu::always_inline]] inline void transposeDoubles(const std::byte* b, std::ptrdiff_t stride, std::byte* to) {
    unrolled<n * n / 4>([&](auto e) __attribute__((always_inline)) {
        constexpr int j = e / (n / 2) * 2, k = e % (n / 2) * 2;
        const auto upper = load<Double2>(b + j * stride + k * 8), lower = load<Double2>(b + (j + 1) * stride + k * 8);
        storeAligned(to + (k * n + j) * 8, zipLow(upper, lower));
        storeAligned(to + ((k + 1) * n + j) * 8, zipHigh(upper, lower));
    });
}

template <class T, int n>
inline constexpr bool inTiles = !isFloat<T> && n % 2 == 0;

// --- One product -----------------------------------------------------------------------------------

template <int n, bool turnA, bool turnB>
[[gnu::noinline]] void squareOfDoubles(const std::byte* a, std::ptrdiff_t aStride, const std::byte* b,
                                       std::ptrdiff_t bStride, std::byte* to, std::ptrdiff_t stride) {
    const TileTarget target{to, stride, (n - 2) * 8};
    alignas(16) std::byte transposed[turnB ? n * n * 8 : 1];
    if constexpr (turnB) {
        transposeDoubles<n>(b, bStride, transposed);
        b = transposed;
        bStride = n * 8;
    }
    multiplyDoubles<n, turnA>(a, aStride, b, bStride, target, stride);
}

// Rows are inlined into their entry function: handing on six arguments takes up to 5 % of a small product. Tiles need so
// many registers that it would save more of them at its start, for all orders.
template <class T, int n, bool turnA, bool turnB>
[[gnu::always_inline]] inline void plainSquare(const std::byte* a, std::ptrdiff_t aStride, const std::byte* b,
                                               std::ptrdiff_t bStride, std::byte* to, std::ptrdiff_t stride) {
    if constexpr (inTiles<T, n>) squareOfDoubles<n, turnA, turnB>(a, aStride, b, bStride, to, stride);
    else multiplyRows<T, n>(leftRows<T, n, turnA>(a, aStride), rightRows<T, n, turnB>(b, bStride), to, stride);
}

// --- Arrays ----------------------------------------------------------------------------------------

// Where rows touch, the distances between them are known when compiling. Addresses then take one register for each
// operand; with strides in registers the rest of the addresses waits on the stack: order 6 of floats takes 14.3 ns instead
// of 17.4, order 4 takes 4.8 instead of 5.7, doubles gain up to 11 %. From order 5 on, other strides are hidden for each
// object, so that their multiples are formed again instead of waiting there: 4 to 15 %.
template <class T, int n, class F>
[[gnu::always_inline]] inline void withStrides(std::ptrdiff_t a, std::ptrdiff_t b, std::ptrdiff_t to, const F& f) {
    constexpr Known<n * sizeof(T)> packed;
    if (a == packed && b == packed && to == packed) f(packed, packed, packed);
    else f(a, b, to);
}

template <bool turned>
[[gnu::always_inline]] inline std::ptrdiff_t storedStride(const GridOperand& square) {
    return turned ? square.columnStep : square.rowStep;
}

// Rows are vectors; with blocks they need fewer shuffles where they aren't whole ones.
template <class T, int n, bool turnB>
inline constexpr bool inRows = !isFloat<T> || n == 4 || (turnB && n == 5);

// The product of two transposes is the transpose of a product, for which neither is turned, where that can be stored.
template <class T, int n, bool turnA, bool turnB>
inline constexpr bool storesTranspose = turnA&& turnB && (inTiles<T, n> || !inRows<T, n, true>);

// Sums start with their first product; those of floats of order 6, nothing turned, may start from +0.
template <class T, int n, bool turnA, bool turnB, Start start = Start::firstProduct>
[[gnu::noinline]] void plainSquares(const GridObjects& as, const GridObjects& bs, const GridObjects& dsts,
                                    std::int32_t count) {
    static_assert(start == Start::firstProduct || (isFloat<T> && n == 6 && !turnA && !turnB));
    // A tile's right operand is turned while the product before is on its way.
    constexpr bool turnsAhead = inTiles<T, n> && turnB && !turnA;
    [[maybe_unused]] alignas(16) std::byte transposed[2][turnsAhead ? n * n * 8 : 1];
    const auto multiply = [&](std::int32_t k, const std::byte* a, auto aStride, const std::byte* b, auto bStride,
                              std::byte* to, auto stride) __attribute__((always_inline)) {
        if constexpr (turnsAhead) {
            if (k == 0) transposeDoubles<n>(b, bStride, transposed[0]);
            if (k + 1 < count) transposeDoubles<n>(bs.at(k + 1).origin, bStride, transposed[(k + 1) % 2]);
            multiplyDoubles<n, turnA>(a, aStride, transposed[k % 2], n * 8, TileTarget{to, stride, (n - 2) * 8},
                                      stride);
        } else if constexpr (inTiles<T, n> && storesTranspose<T, n, turnA, turnB>) {
            multiplyDoubles<n, false>(b, bStride, a, aStride, TransposedTarget{to, stride, (n - 2) * 8}, 8);
        } else if constexpr (inTiles<T, n>) {
            multiplyDoubles<n, turnA>(a, aStride, b, bStride, TileTarget{to, stride, (n - 2) * 8}, stride);
        } else if constexpr (storesTranspose<T, n, turnA, turnB>) {
            multiplyBlocks<n>(LeftBlocks<n, false>{b, bStride}, rightBlocks<n, false>(a, aStride),
                              BlockTarget<true>{to, stride});
        } else if constexpr (inRows<T, n, turnB>) {
            multiplyRows<T, n>(leftRows<T, n, turnA>(a, aStride), rightRows<T, n, turnB>(b, bStride), to, stride);
        } else {
            multiplyBlocks<n>(LeftBlocks<n, turnA>{a, aStride}, rightBlocks<n, turnB>(b, bStride),
                              BlockTarget<false, start>{to, stride});
        }
    };
    withStrides<T, n>(
        storedStride<turnA>(as.first), storedStride<turnB>(bs.first),
        dsts.first.rowStep, [&](auto aStride, auto bStride, auto stride) __attribute__((always_inline)) {
            constexpr bool isPacked = isKnown<decltype(stride)>;
            forObjects<(n <= 4 || !isPacked) ? 1 : 0>(
                as, bs, dsts, count,
                [&](std::int32_t k, const std::byte* a, const std::byte* b, std::byte* to)
                    __attribute__((always_inline)) {
                        if constexpr (n <= 4 || isPacked) multiply(k, a, aStride, b, bStride, to, stride);
                        else multiply(k, a, opaque(aStride), b, opaque(bStride), to, opaque(stride));
                    });
        });
}

// One right operand for all objects, made ready. It is a copy, so that a compiler sees that results don't change it.
template <class T, int n, bool turnA, class Right>
[[gnu::noinline]] void plainSquaresTimes(const GridObjects& as, const Right& ready, const GridObjects& dsts,
                                         std::int32_t count) {
    const Right right = ready;
    std::ptrdiff_t ofRight = n * sizeof(T);
    if constexpr (isFloat<T> && n == 5) ofRight = right.stride;
    withStrides<T, n>(
        storedStride<turnA>(as.first), ofRight,
        dsts.first.rowStep, [&](auto aStride, auto bStride, auto stride) __attribute__((always_inline)) {
            forObjects<n <= 4 ? 1 : 0>(
                as, as, dsts, count,
                [&](std::int32_t, const std::byte* a, const std::byte*, std::byte* to) __attribute__((always_inline)) {
                    if constexpr (inRows<T, n, false>)
                        multiplyRows<T, n>(leftRows<T, n, turnA>(a, aStride), right, to, stride);
                    else if constexpr (n == 5)
                        multiplyFive(LeftBlocks<n, turnA>{a, aStride}, right.origin, bStride, to, stride);
                    else multiplyBlocks<n>(LeftBlocks<n, turnA>{a, aStride}, right, BlockTarget<false>{to, stride});
                });
        });
}

template <class T, int n, bool turnA, bool turnB>
[[gnu::noinline]] void plainSquaresTimesOne(const GridObjects& a, const GridOperand& b, const GridObjects& dst,
                                            std::int32_t count) {
    const std::ptrdiff_t stride = storedStride<turnB>(b);
    if constexpr (inTiles<T, n>) {
        alignas(16) std::byte transposed[n * n * 8];
        transposeDoubles<n>(b.origin, stride, transposed);
        plainSquares<T, n, turnA, false>(a, {{transposed, n * 8, 8}, nullptr, 0}, dst, count);
    } else if constexpr (inRows<T, n, false>) {
        plainSquaresTimes<T, n, turnA>(a, rightRows<T, n, turnB>(b.origin, stride), dst, count);
    } else if constexpr (n == 5 && turnB) {
        const RightFive right(b.origin, stride);
        plainSquaresTimes<T, n, turnA, RightInPlace>(a, right, dst, count);
    } else if constexpr (n == 6) {
        const RightHeld<n> right(std::bool_constant<turnB>{}, b.origin, stride);
        plainSquaresTimes<T, n, turnA>(a, right, dst, count);
    } else {
        plainSquaresTimes<T, n, turnA>(a, rightBlocks<n, turnB>(b.origin, stride), dst, count);
    }
}

// One left operand: held as whole vectors, it needs no shuffles. It leaves registers enough for strides.
template <class T, int n, bool turnB>
[[gnu::noinline]] void leftTimesPlainSquares(const LeftHeld<T, n>& ready, const GridObjects& bs,
                                             const GridObjects& dsts, std::int32_t count) {
    const LeftHeld<T, n> left = ready;
    const std::ptrdiff_t bStride = storedStride<turnB>(bs.first), stride = dsts.first.rowStep;
    forObjects<1>(
        bs, bs, dsts,
        count, [&](std::int32_t, const std::byte*, const std::byte* b, std::byte* to) __attribute__((always_inline)) {
            multiplyRows<T, n>(left, rightRows<T, n, turnB>(b, bStride), to, stride);
        });
}

template <class T, int n, bool turnA, bool turnB>
[[gnu::noinline]] void oneTimesPlainSquares(const GridOperand& a, const GridObjects& b, const GridObjects& dst,
                                            std::int32_t count) {
    const LeftHeld<T, n> left(LeftInPlace<T, n, turnA>{a.origin, storedStride<turnA>(a)});
    leftTimesPlainSquares<T, n, turnB>(left, b, dst, count);
}

// --- In lanes --------------------------------------------------------------------------------------

// S is an element, or a vector with an element of several objects.
template <int n, class S>
[[gnu::noinline]] void multiplySquare(const S* a, const S* b, S* c) {
    for (int i = 0; i < n; ++i, a += n, c += n)
        unrolled<n>([&](auto j) __attribute__((always_inline)) {
            S sum = a[0] * b[j];
            unrolled<n - 1>([&](auto k) __attribute__((always_inline)) { sum = sum + a[k + 1] * b[(k + 1) * n + j]; });
            c[j] = sum;
        });
}

// One object.
template <class T, int n, class Operand>
[[gnu::noinline]] void squareObject(const Operand& a, const Operand& b, const Operand& dst) {
    T x[n * n], y[n * n], z[n * n];
    for (int i = 0; i < n; ++i)
        for (int j = 0; j < n; ++j) {
            x[i * n + j] = load<T>(a.address(i, j));
            y[i * n + j] = load<T>(b.address(i, j));
        }
    multiplySquare<n>(x, y, z);
    for (int i = 0; i < n; ++i)
        for (int j = 0; j < n; ++j) store(target(dst, i, j), z[i * n + j]);
}

template <class S, class Objects>
[[gnu::noinline]] void squaresInLanes(const Objects& a, const Objects& b, const Objects& dst, int n,
                                      std::int32_t count) {
    S x[36], y[36], z[36];
    int here;
    for (std::int32_t k = 0; k < count; k += here) {
        here = std::min(lanesOf<S>, count - k);
        if (k == 0 || !a.isShared()) readObjects(a, k, here, n, n, x);
        if (k == 0 || !b.isShared()) readObjects(b, k, here, n, n, y);
        forOrder(
            n, [&](auto order) { multiplySquare<order>(x, y, z); }, [] {});
        writeObjects(dst, k, here, n, n, z);
    }
}

// Objects with any strides, some of which are plain all the same.
template <class T>
[[gnu::always_inline]] inline bool havePlainRows(const GridObjects& a, const GridObjects& b, const GridObjects& dst) {
    constexpr auto size = static_cast<std::ptrdiff_t>(sizeof(T));
    return a.first.columnStep == size && b.first.columnStep == size && dst.first.columnStep == size;
}

template <class T, int n>
[[gnu::always_inline]] inline void squaresOfAnyStride(const GridObjects& a, const GridObjects& b,
                                                      const GridObjects& dst, std::int32_t count) {
    if (havePlainRows<T>(a, b, dst)) plainSquares<T, n, false, false>(a, b, dst, count);
    else squaresInLanes<Lanes<T>>(a, b, dst, n, count);
}

// --- Any of these ----------------------------------------------------------------------------------

template <class T, int n, class A, class B, class D>
[[gnu::always_inline]] inline void squareProduct(const A& a, const B& b, const D& dst) {
    if constexpr (isAdjacent<D>)
        plainSquare<T, n, isTransposed<A>, isTransposed<B>>(a.origin, storedStride(a), b.origin, storedStride(b),
                                                            dst.origin, dst.rowStride);
    else squareObject<T, n>(operand(a.at(0)), operand(b.at(0)), operand(dst.at(0)));
}

// Plain arrays, whose views are A, B and D.
template <class T, int n, class A, class B, class D, class Objects>
[[gnu::always_inline]] inline void squareProducts(const Objects& a, const Objects& b, const Objects& dst,
                                                  std::int32_t count) {
    constexpr bool turnA = isTransposed<A>, turnB = isTransposed<B>;
    constexpr bool tilesInPlace = inTiles<T, n> && (!turnB || turnA);
    // Of order 4, a right operand's columns are brought together in registers.
    constexpr bool heldLeft = !inTiles<T, n> || (n == 4 && turnB);
    if constexpr (heldLeft && isShared<A>) oneTimesPlainSquares<T, n, turnA, turnB>(a.first, b, dst, count);
    else if constexpr (!tilesInPlace && isShared<B>) plainSquaresTimesOne<T, n, turnA, turnB>(a, b.first, dst, count);
    else plainSquares<T, n, turnA, turnB>(a, b, dst, count);
}

}  // namespace korm::inline KORM_VARIANT::products
