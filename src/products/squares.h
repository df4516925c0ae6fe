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

// --- Doubles ---------------------------------------------------------------------------------------

// Doubles are spread by loads, so a tile of rows and columns needs no shuffles. The last vector of an odd row ends with the
// row: that is one product twice, for which no other instruction is needed.
template <int n>
inline constexpr int pairsOfColumns = (n + 1) / 2;

template <int n, bool turned>
[[gnu::always_inline]] inline LeftRows leftDoubles(const std::byte* a, std::ptrdiff_t stride) {
    if constexpr (turned) return {a, sizeof(double), stride};
    else return {a, stride, sizeof(double)};
}

// The right operand in rows.
template <int n, class Target>
[[gnu::always_inline]] inline void multiplyDoubles(LeftRows a, const Panel& b, Target to, std::ptrdiff_t toRow) {
    constexpr int vectors = pairsOfColumns<n>;
    constexpr int most = sumRegisters / vectors;
    constexpr int passes = (n + most - 1) / most;
    constexpr int tall = (n + passes - 1) / passes;
    const auto rows = [&](auto height) __attribute__((always_inline)) {
        tile<Double2, zeroStart, height, vectors, Start::firstProduct>(a, b, Known<n>{}, to);
        a.origin += height * a.rowStep;
        to.origin += height * toRow;
    };
    for (int i = 0; i < n / tall; ++i) rows(Int<tall>{});
    if constexpr (n % tall != 0) rows(Int<n % tall>{});
}

// The transpose as a panel.
template <int n>
struct TransposedPanel {
    static constexpr int vectors = pairsOfColumns<n>;
    alignas(16) std::byte rows[n * vectors * 16];

    [[gnu::always_inline]] void fill(const std::byte* b, std::ptrdiff_t stride) {
        const auto first = [](int pair) { return pair == vectors - 1 ? n - 2 : 2 * pair; };
        unrolled<vectors * vectors>([&](auto e) __attribute__((always_inline)) {
            const int v = e / vectors, j = first(v), k = first(e % vectors);
            const auto upper = load<Double2>(b + j * stride + k * 8);
            const auto lower = load<Double2>(b + (j + 1) * stride + k * 8);
            storeAligned(rows + (k * vectors + v) * 16, zipLow(upper, lower));
            storeAligned(rows + ((k + 1) * vectors + v) * 16, zipHigh(upper, lower));
        });
    }

    [[gnu::always_inline]] Panel panel() const { return {rows, vectors * 16, (vectors - 1) * 16}; }
};

template <int n>
[[gnu::always_inline]] inline Panel panelInPlace(const std::byte* b, std::ptrdiff_t stride) {
    return {b, stride, (n - 2) * 8};
}

// --- One product -----------------------------------------------------------------------------------

template <int n, bool turnA, bool turnB>
[[gnu::noinline]] void squareOfDoubles(const std::byte* a, std::ptrdiff_t aStride, const std::byte* b,
                                       std::ptrdiff_t bStride, std::byte* to, std::ptrdiff_t stride) {
    const TileTarget target{to, stride, (n - 2) * 8};
    TransposedPanel<n> transposed;
    if constexpr (turnB) transposed.fill(b, bStride);
    const Panel right = turnB ? transposed.panel() : panelInPlace<n>(b, bStride);
    multiplyDoubles<n>(leftDoubles<n, turnA>(a, aStride), right, target, stride);
}

// Floats are inlined into their entry function: handing on six arguments takes up to 5 % of a small product. Tiles of
// doubles need so many registers that it would save more of them at its start, for all orders.
template <class T, int n, bool turnA, bool turnB>
[[gnu::always_inline]] inline void plainSquare(const std::byte* a, std::ptrdiff_t aStride, const std::byte* b,
                                               std::ptrdiff_t bStride, std::byte* to, std::ptrdiff_t stride) {
    if constexpr (isFloat<T>)
        multiplyRows<n>(LeftInPlace<n, turnA>{a, aStride}, rightRows<float, n, turnB>(b, bStride), to, stride);
    else squareOfDoubles<n, turnA, turnB>(a, aStride, b, bStride, to, stride);
}

// --- Arrays ----------------------------------------------------------------------------------------

// Where rows touch, the distances between them are known when compiling. Addresses then take one register for each
// operand; with strides in registers the rest of the addresses waits on the stack: order 6 of floats takes 14.3 ns instead
// of 17.4, order 4 takes 4.8 instead of 5.7, doubles gain up to 11 %.
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

template <class T, int n, bool turnA, bool turnB>
[[gnu::noinline]] void plainSquares(const GridObjects& as, const GridObjects& bs, const GridObjects& dsts,
                                    std::int32_t count) {
    const auto floats = [&](auto aStride, auto bStride, auto stride) __attribute__((always_inline)) {
        forObjects(
            as, bs, dsts, count,
            [&](std::int32_t, const std::byte* a, const std::byte* b, std::byte* to) __attribute__((always_inline)) {
                // The product of two transposes is the transpose of a product, for which neither is turned.
                if constexpr (turnA && turnB && n != 5)
                    multiplyBlocks<n>(LeftBlocks<n, false>{b, bStride}, rightBlocks<n, false>(a, aStride),
                                      BlockTarget<true>{to, stride});
                else if constexpr (turnB && n == 5)
                    multiplyRows<n>(LeftInPlace<n, turnA>{a, aStride}, rightRows<float, n, true>(b, bStride), to,
                                    stride);
                else
                    multiplyBlocks<n>(LeftBlocks<n, turnA>{a, aStride}, rightBlocks<n, turnB>(b, bStride),
                                      BlockTarget<false>{to, stride});
            });
    };
    const auto doubles = [&](auto aStride, auto bStride, auto stride) __attribute__((always_inline)) {
        [[maybe_unused]] TransposedPanel<n> transposed;
        [[maybe_unused]] const bool oneRight = bs.isShared();
        forObjects(
            as, bs, dsts, count,
            [&](std::int32_t k, const std::byte* a, const std::byte* b, std::byte* to) __attribute__((always_inline)) {
                constexpr std::ptrdiff_t last = (n - 2) * 8;
                if constexpr (turnA && turnB) {
                    multiplyDoubles<n>(leftDoubles<n, false>(b, bStride), panelInPlace<n>(a, aStride),
                                       TransposedTarget{to, stride, last}, 8);
                } else {
                    if constexpr (turnB)
                        if (k == 0 || !oneRight) transposed.fill(b, bStride);
                    multiplyDoubles<n>(leftDoubles<n, turnA>(a, aStride),
                                       turnB ? transposed.panel() : panelInPlace<n>(b, bStride),
                                       TileTarget{to, stride, last}, stride);
                }
            });
    };
    withStrides<T, n>(
        storedStride<turnA>(as.first), storedStride<turnB>(bs.first),
        dsts.first.rowStep, [&](auto aStride, auto bStride, auto stride) __attribute__((always_inline)) {
            if constexpr (isFloat<T>) floats(aStride, bStride, stride);
            else doubles(aStride, bStride, stride);
        });
}

// Floats with one right operand for all objects. It is a copy, so that a compiler sees that results don't change it.
template <int n, bool turnA, class Right>
[[gnu::noinline]] void plainSquaresTimes(const GridObjects& as, const Right& ready, const GridObjects& dsts,
                                         std::int32_t count) {
    const Right right = ready;
    std::ptrdiff_t ofRight = n * 4;
    if constexpr (n == 5) ofRight = right.stride;
    withStrides<float, n>(
        storedStride<turnA>(as.first), ofRight,
        dsts.first.rowStep, [&](auto aStride, auto bStride, auto stride) __attribute__((always_inline)) {
            forObjects(
                as, as, dsts, count,
                [&](std::int32_t, const std::byte* a, const std::byte*, std::byte* to) __attribute__((always_inline)) {
                    const LeftBlocks<n, turnA> left{a, aStride};
                    const BlockTarget<false> result{to, stride};
                    if constexpr (n == 5) multiplyFive(left, right.origin, bStride, result.origin, result.stride);
                    else multiplyBlocks<n>(left, right, result);
                });
        });
}

template <int n, bool turnA, bool turnB>
[[gnu::noinline]] void plainSquaresTimesOne(const GridObjects& a, const GridOperand& b, const GridObjects& dst,
                                            std::int32_t count) {
    const std::ptrdiff_t stride = storedStride<turnB>(b);
    if constexpr (n == 5 && turnB) {
        const RightFive right(b.origin, stride);
        plainSquaresTimes<n, turnA, RightInPlace>(a, right, dst, count);
    } else if constexpr (n % 2 == 0) {
        const RightHeld<n> right(std::bool_constant<turnB>{}, b.origin, stride);
        plainSquaresTimes<n, turnA>(a, right, dst, count);
    } else {
        plainSquaresTimes<n, turnA>(a, rightBlocks<n, turnB>(b.origin, stride), dst, count);
    }
}

// Floats with one left operand: held as whole vectors, it needs no shuffles. It leaves registers enough for strides.
template <int n, bool turnB>
[[gnu::noinline]] void leftTimesPlainSquares(const LeftHeld<n>& ready, const GridObjects& bs, const GridObjects& dsts,
                                             std::int32_t count) {
    const LeftHeld<n> left = ready;
    const std::ptrdiff_t bStride = storedStride<turnB>(bs.first), stride = dsts.first.rowStep;
    forObjects(
        bs, bs, dsts,
        count, [&](std::int32_t, const std::byte*, const std::byte* b, std::byte* to) __attribute__((always_inline)) {
            multiplyRows<n>(left, rightRows<float, n, turnB>(b, bStride), to, stride);
        });
}

template <int n, bool turnA, bool turnB>
[[gnu::noinline]] void oneTimesPlainSquares(const GridOperand& a, const GridObjects& b, const GridObjects& dst,
                                            std::int32_t count) {
    const LeftHeld<n> left(LeftInPlace<n, turnA>{a.origin, storedStride<turnA>(a)});
    leftTimesPlainSquares<n, turnB>(left, b, dst, count);
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

// --- Any of these ----------------------------------------------------------------------------------

template <class T, int n, class A, class B, class D>
[[gnu::always_inline]] inline void squareProduct(const A& a, const B& b, const D& dst) {
    if constexpr (isAdjacent<D>)
        plainSquare<T, n, isTransposed<A>, isTransposed<B>>(a.origin, storedStride(a), b.origin, storedStride(b),
                                                            dst.origin, dst.rowStride);
    else squareObject<T, n>(operand(a.at(0)), operand(b.at(0)), operand(dst.at(0)));
}

// Arrays, whose views are A, B and D.
template <class T, int n, class A, class B, class D, class Objects>
[[gnu::always_inline]] inline void squareProducts(const Objects& a, const Objects& b, const Objects& dst,
                                                  std::int32_t count) {
    constexpr bool turnA = isTransposed<A>, turnB = isTransposed<B>;
    if constexpr (!isAdjacent<D>) squaresInLanes<Lanes<T>>(a, b, dst, n, count);
    else if constexpr (isFloat<T> && isShared<A>) oneTimesPlainSquares<n, turnA, turnB>(a.first, b, dst, count);
    else if constexpr (isFloat<T> && isShared<B>) plainSquaresTimesOne<n, turnA, turnB>(a, b.first, dst, count);
    else plainSquares<T, n, turnA, turnB>(a, b, dst, count);
}

}  // namespace korm::inline KORM_VARIANT::products
