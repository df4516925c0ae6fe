// Arrays in the pointer layout whose objects are one element apart: every entry of a table is a stream in which the
// same element of the next object follows, so a vector of objects is one load.
//
// Objects are independent of each other and each has its lane, in which its sums are those of the code for one object.
// The last vector of an array ends with the last object and repeats some of the one before, so no object is left over.
#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>

#include "kernel/known.h"
#include "kernel/predicates.h"
#include "kernel/scalar.h"
#include "kernel/unroll.h"
#include "kernel/vec.h"
#include "products/elements.h"
#include "products/general.h"
#include "products/objects.h"
#include "products/operands.h"
#include "products/sums.h"

namespace korm::inline KORM_VARIANT::products {

// Calls f(where a vector of objects lies behind every entry).
template <class S, class F>
[[gnu::always_inline]] inline void forVectorsOfObjects(std::int32_t count, const F& f) {
    constexpr auto size = static_cast<std::ptrdiff_t>(sizeof(S));
    const std::ptrdiff_t last = (count - lanesOf<S>)*(size / lanesOf<S>);
    for (std::ptrdiff_t at = 0;; at = std::min(at + size, last)) {
        f(at);
        if (at == last) return;
    }
}

// One element of a vector of objects.
template <class S>
[[gnu::always_inline]] inline S objectsAt(const std::byte* stream, std::ptrdiff_t at, bool isShared) {
    return isShared ? spread<S>(stream) : load<S>(stream + at);
}

// Unrolled here, and hidden: gcc would have a second function for tables whose entries follow one another, or else form each
// address anew for every vector of objects.
template <int height, int width>
struct StreamStarts {
    const std::byte* of[height * width];

    [[gnu::always_inline]] explicit StreamStarts(const TableOperand& operand) {
        unrolled<height>([&](auto i) __attribute__((always_inline)) {
            unrolled<width>([&](auto j)
                                __attribute__((always_inline)) { of[i * width + j] = opaque(operand.address(i, j)); });
        });
    }
};

// Square matrices of order n times matrices of n rows, every sum from left to right.
template <class S, int n, int columns, bool sharedA, bool sharedB, Start start>
[[gnu::noinline]] void squareStreams(TableOperand a, TableOperand b, TableOperand dst, std::int32_t count) {
    const StreamStarts<n, n> aStarts(a);
    const StreamStarts<n, columns> bStarts(b), dstStarts(dst);
    S x[n * n], y[n * columns];
    if constexpr (sharedA)
        for (int e = 0; e < n * n; ++e) x[e] = spread<S>(aStarts.of[e]);
    if constexpr (sharedB)
        for (int e = 0; e < n * columns; ++e) y[e] = spread<S>(bStarts.of[e]);
    const auto storeSum = [&](int element, std::ptrdiff_t at, const auto& product) __attribute__((always_inline)) {
        S sum = product(Int<0>{});
        if constexpr (start == Start::zero) sum = S{} + sum;
        unrolled<n - 1>([&](auto k) __attribute__((always_inline)) { sum += product(Int<k + 1>{}); });
        store(const_cast<std::byte*>(dstStarts.of[element]) + at, sum);
    };
    forVectorsOfObjects<S>(
        count, [&](std::ptrdiff_t at) __attribute__((always_inline)) {
            if constexpr (sharedA) {
                // By columns, so that one of two factors is in a register: by rows both would be on the stack, and order 6
                // of floats took 16.4 ns instead of 14.0, of doubles 31.5 instead of 26.0.
                for (int j = 0; j < columns; ++j) {
                    S column[n];
                    unrolled<n>([&](auto k) __attribute__((always_inline)) {
                        column[k] = load<S>(bStarts.of[k * columns + j] + at);
                    });
                    unrolled<n>([&](auto i) __attribute__((always_inline)) {
                        storeSum(
                            i * columns + j,
                            at, [&](auto k) __attribute__((always_inline)) { return x[i * n + k] * column[k]; });
                    });
                }
            } else {
                if constexpr (!sharedB)
                    unrolled<n * columns>([&](auto e)
                                              __attribute__((always_inline)) { y[e] = load<S>(bStarts.of[e] + at); });
                for (int i = 0; i < n; ++i) {
                    S row[n];
                    unrolled<n>([&](auto k)
                                    __attribute__((always_inline)) { row[k] = load<S>(aStarts.of[i * n + k] + at); });
                    unrolled<columns>([&](auto j) __attribute__((always_inline)) {
                        storeSum(
                            i * columns + j,
                            at, [&](auto k) __attribute__((always_inline)) { return row[k] * y[k * columns + j]; });
                    });
                }
            }
        });
}

// --- Any shape, streams at fixed distances --------------------------------------------------------

inline constexpr int heldElements = 256;  // of an operand that serves all objects
inline constexpr int streamVectors = 64;  // of objects, so that what strips read twice stays in the first-level cache

// Strips are faster than tiles where these are few.
[[gnu::always_inline]] inline bool areFewStrips(ProductShape shape) {
    return std::max({shape.rows, shape.products, shape.columns}) <= 16 &&
           (shape.columns <= 4 || shape.rows * shape.columns <= 20);
}

// Streams one behind another, as rows of an array are, need no table: strips of elements as of objects in lanes.
template <class S>
[[gnu::noinline]] bool multiplyStreams(const TableObjects& as, const TableObjects& bs, const TableObjects& dsts,
                                       ProductShape shape, std::int32_t count) {
    using T = ElementOf<S>;
    constexpr auto size = static_cast<std::ptrdiff_t>(sizeof(S));
    GridObjects a{}, b{}, dst{};
    if (!areFewStrips(shape) || !isGrid<T>(as, shape.rows, shape.products, a) ||
        !isGrid<T>(bs, shape.products, shape.columns, b) || !isGrid<T>(dsts, shape.rows, shape.columns, dst))
        return false;
    S held[heldElements];
    const auto hold = [&](GridObjects& operand, std::int32_t height, std::int32_t width) {
        if (!operand.isShared()) return;
        for (std::int32_t i = 0; i < height; ++i)
            for (std::int32_t j = 0; j < width; ++j) held[i * width + j] = spread<S>(operand.first.address(i, j));
        operand.first = {reinterpret_cast<const std::byte*>(held), width * size, size};
    };
    hold(a, shape.rows, shape.products);
    hold(b, shape.products, shape.columns);
    const std::ptrdiff_t aStep = a.isShared() ? 0 : size, bStep = b.isShared() ? 0 : size;
    const Factors at{distances(a.first), distances(b.first), distances(dst.first),
                     shape.rows,         shape.columns,      shape.products};
    const RowGroups groups{{{shape.rows, zeroStart}, {0, zeroStart}, {0, zeroStart}}};
    const auto multiply = [&](std::ptrdiff_t first, std::ptrdiff_t vectors) {
        const std::ptrdiff_t distance = first * static_cast<std::ptrdiff_t>(sizeof(T));
        multiplyElements<S>(
            at, groups,
            SteppedObjects{a.first.origin + (aStep != 0 ? distance : 0), b.first.origin + (bStep != 0 ? distance : 0),
                           target(dst.first, 0, 0) + distance, aStep, bStep, size, vectors});
    };
    constexpr std::ptrdiff_t lanes = lanesOf<S>;
    const std::ptrdiff_t whole = count / lanes;
    for (std::ptrdiff_t v = 0; v < whole; v += streamVectors)
        multiply(v * lanes, std::min<std::ptrdiff_t>(streamVectors, whole - v));
    if (whole * lanes < count) multiply(count - lanes, 1);
    return true;
}

// --- Any shape -----------------------------------------------------------------------------------

#if defined(__x86_64__)
inline constexpr int streamRows = 4;  // by two columns in registers
#else
inline constexpr int streamRows = 2;
#endif
inline constexpr int streamProducts = 64;  // of which the left factors are copied at a time: 4 KiB of stack

struct StreamProducts {
    std::ptrdiff_t first;  // of the products that are added at a time
    std::ptrdiff_t count;
    std::ptrdiff_t at;  // where the objects lie behind every entry
};

// Adds products to a tile of the result; the first ones to +0.
template <class S, int rows, int columns, bool sharedB>
[[gnu::always_inline]] inline void addToTile(const S (*left)[rows], TableOperand b, TableOperand dst, std::ptrdiff_t i,
                                             std::ptrdiff_t j, StreamProducts products) {
    S sum[rows * columns];
    std::byte* place[rows * columns];
    unrolled<rows * columns>([&](auto e) __attribute__((always_inline)) {
        place[e] = target(dst, i + e / columns, j + e % columns) + products.at;
        sum[e] = products.first == 0 ? S{} : load<S>(place[e]);
    });
    for (std::ptrdiff_t k = 0; k < products.count; ++k) {
        S right[columns];
        unrolled<columns>([&](auto c) __attribute__((always_inline)) {
            right[c] = objectsAt<S>(b.address(products.first + k, j + c), products.at, sharedB);
        });
        unrolled<rows * columns>([&](auto e) __attribute__((always_inline)) {
            sum[e] += left[k][e / columns] * right[e % columns];
        });
    }
    unrolled<rows * columns>([&](auto e) __attribute__((always_inline)) { store(place[e], sum[e]); });
}

// The left factors of a few rows are copied once for all columns: looked up anew for each pair of columns, they would
// cost more instructions than the products. Operands are copied too, since stores into results could change what is
// reached by reference, as far as a compiler can tell.
template <class S, int rows, bool sharedB>
[[gnu::noinline]] void addToRows(const TableOperand& leftOperand, const TableOperand& rightOperand,
                                 const TableOperand& result, std::ptrdiff_t i, std::ptrdiff_t columns,
                                 std::ptrdiff_t first, std::ptrdiff_t count, std::ptrdiff_t at, bool sharedA) {
    const TableOperand a = leftOperand, b = rightOperand, dst = result;
    const StreamProducts products{first, count, at};
    S left[streamProducts][rows];
    for (std::ptrdiff_t k = 0; k < count; ++k)
        unrolled<rows>([&](auto r) __attribute__((always_inline)) {
            left[k][r] = objectsAt<S>(a.address(i + r, first + k), at, sharedA);
        });
    std::ptrdiff_t j = 0;
    for (; j + 2 <= columns; j += 2) addToTile<S, rows, 2, sharedB>(left, b, dst, i, j, products);
    if (j < columns) addToTile<S, rows, 1, sharedB>(left, b, dst, i, j, products);
}

template <class S, bool sharedB>
[[gnu::noinline]] void anyStreams(TableOperand a, TableOperand b, TableOperand dst, ProductShape shape,
                                  std::int32_t count, bool sharedA) {
    forVectorsOfObjects<S>(
        count, [&](std::ptrdiff_t at) __attribute__((always_inline)) {
            forTiles<streamRows>(0, shape.rows, [&](std::ptrdiff_t i, auto tall, std::ptrdiff_t tiles) {
                for (; tiles > 0; --tiles, i += tall.value)
                    for (std::ptrdiff_t first = 0; first < shape.products; first += streamProducts) {
                        const auto products = std::min<std::ptrdiff_t>(shape.products - first, streamProducts);
                        addToRows<S, tall.value, sharedB>(a, b, dst, i, shape.columns, first, products, at, sharedA);
                    }
            });
        });
}

// Orders 3 to 6 that the kernel has no square path for have a path here all the same, which starts at +0. `columns` is
// the order, or one for a vector.
template <class SquareOrders, bool ofVectors, class A, class B, class D>
[[gnu::always_inline]] inline void streamProduct(const A& a, const B& b, const D& dst, ProductShape shape,
                                                 std::int32_t count) {
    using S = Lanes<typename D::Element>;
    const auto column = [](TableOperand table) { return ofVectors ? asColumn(table) : table; };
    const TableOperand left = operand(a.at(0)), right = column(operand(b.at(0))), result = column(operand(dst.at(0)));
    const auto square = [&](auto n) __attribute__((always_inline)) {
        constexpr Start start = SquareOrders::has(n) ? Start::firstProduct : Start::zero;
        squareStreams<S, n, ofVectors ? 1 : n, isShared<A>, isShared<B>, start>(left, right, result, count);
    };
    const bool isSquare = shape.rows == shape.products && (ofVectors || shape.rows == shape.columns);
    forOrder(isSquare ? shape.rows : 0, square, [&] {
        if (!multiplyStreams<S>({left, objectsOf(a).step}, {right, objectsOf(b).step}, {result, objectsOf(dst).step},
                                shape, count))
            anyStreams<S, isShared<B>>(left, right, result, shape, count, isShared<A>);
    });
}

}  // namespace korm::inline KORM_VARIANT::products
