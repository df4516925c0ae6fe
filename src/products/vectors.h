// Products of a matrix and a vector.
#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <type_traits>

#include "kernel/predicates.h"
#include "kernel/unroll.h"
#include "kernel/vec.h"
#include "products/blocks.h"
#include "products/columns.h"
#include "products/dots.h"
#include "products/objects.h"
#include "products/operands.h"
#include "products/rows.h"
#include "products/sums.h"

namespace korm::inline KORM_VARIANT::products {

// --- Square matrices of order 3 to 6 -------------------------------------------------------------

template <int n, class Order, class S>
[[gnu::noinline]] void multiplySquareVector(const S* a, const S* x, S* y) {
    for (int i = 0; i < n; ++i) {
        S p[n];
        for (int k = 0; k < n; ++k) p[k] = a[i * n + k] * x[k];
        y[i] = square::sum<Order, n>(p, i);
    }
}

template <class T, int n, class Order, class Operand>
[[gnu::noinline]] void squareVectorObject(const Operand& a, const Operand& x, const Operand& dst) {
    T matrix[n * n], vector[n], result[n];
    for (int i = 0; i < n; ++i) {
        vector[i] = load<T>(x.address(0, i));
        for (int j = 0; j < n; ++j) matrix[i * n + j] = load<T>(a.address(i, j));
    }
    multiplySquareVector<n, Order>(matrix, vector, result);
    for (int i = 0; i < n; ++i) store(target(dst, 0, i), result[i]);
}

template <class S, class Order, class Objects>
[[gnu::noinline]] void squareVectorsInLanes(const Objects& a, const Objects& x, const Objects& dst, int n,
                                            std::int32_t count) {
    S matrix[36], vector[6], result[6];
    int here;
    for (std::int32_t k = 0; k < count; k += here) {
        here = std::min(lanesOf<S>, count - k);
        if (k == 0 || !a.isShared()) readObjects(a, k, here, n, n, matrix);
        if (k == 0 || !x.isShared()) readObjects(x, k, here, 1, n, vector);
        forOrder(
            n, [&](auto order) { multiplySquareVector<order, Order>(matrix, vector, result); }, [] {});
        writeObjects(dst, k, here, 1, n, result);
    }
}

// Columns of the matrix, where they lie: each is read when it is needed, so that none has to wait on the stack.
template <class T, int n>
struct ColumnsInPlace {
    const std::byte* origin;
    std::ptrdiff_t stride;

    template <int k, int v>
    [[gnu::always_inline]] Vec16<T> part() const {
        constexpr int left = n - v * lanes16<T>;
        return rowPart<T, (left < lanes16<T> ? left : lanes16<T>), false>(origin, stride, k, v * lanes16<T>);
    }
};

// Columns brought together from rows, or held for many vectors.
template <class T, int n>
struct ColumnsHeld {
    RightRows<T, n> columns;

    template <int k, int v>
    [[gnu::always_inline]] Vec16<T> part() const {
        if constexpr (v < RowParts<T, n>::whole) return columns.whole[k][v];
        else return columns.rest[k];
    }
};

// Elements of the result as vectors: column k of the matrix times element k of the vector gives product k of all.
template <class T, int n, class Order, class Columns>
[[gnu::always_inline]] inline void multiplyColumns(const Columns& columns, const std::byte* x, std::byte* to) {
    using Parts = RowParts<T, n>;
    constexpr auto size = static_cast<std::ptrdiff_t>(sizeof(T));
    Vec16<T> factor[n];
    unrolled<n>([&](auto k) __attribute__((always_inline)) { factor[k] = spread<Vec16<T>>(x + k * size); });
    const auto sums = [&](auto v) __attribute__((always_inline)) {
        Vec16<T> product[n];
        unrolled<n>([&](auto k)
                        __attribute__((always_inline)) { product[k] = columns.template part<k, v>() * factor[k]; });
        return square::sum<Order, n>(product, v * lanes16<T>);
    };
    unrolled<Parts::whole>([&](auto v) __attribute__((always_inline)) { storeLanes(to + 16 * v, sums(v)); });
    if constexpr (Parts::rest > 0)
        storeRest<T, Parts::rest>(to + 16 * Parts::whole, sums(std::integral_constant<int, Parts::whole>{}), 0);
}

// --- Rows times the vector, then added up: for a matrix that lies in rows and is used once -----------

// Doubles: products of two rows go side by side, two products at a time. Zipped as integers, orders 4 and 6 take 6 %
// less time than interleaved. The vector is read whole before the first store, as in all of these, so that the result
// may take its place.
template <int n, class Order>
[[gnu::always_inline]] inline void multiplyRowPairs(const std::byte* a, std::ptrdiff_t stride, const std::byte* x,
                                                    std::byte* to) {
    Double2 factors[n / 2], lastFactor{};
    unrolled<n / 2>([&](auto m) __attribute__((always_inline)) { factors[m] = load<Double2>(x + 16 * m); });
    if constexpr (n % 2 == 1) lastFactor = all<Double2>(load<double>(x + 8 * (n - 1)));
    unrolled<n / 2>([&](auto pair) __attribute__((always_inline)) {
        const std::byte* const first = a + 2 * pair * stride;
        const std::byte* const second = first + stride;
        Double2 product[n];
        unrolled<n / 2>([&](auto m) __attribute__((always_inline)) {
            const Double2 upper = load<Double2>(first + 16 * m) * factors[m];
            const Double2 lower = load<Double2>(second + 16 * m) * factors[m];
            product[2 * m] = zipLow(upper, lower);
            product[2 * m + 1] = zipHigh(upper, lower);
        });
        if constexpr (n % 2 == 1)
            product[n - 1] =
                Double2{load<double>(first + 8 * (n - 1)), load<double>(second + 8 * (n - 1))} * lastFactor;
        storeLanes(to + 16 * pair, square::sum<Order, n>(product, 2 * pair));
    });
    if constexpr (n % 2 == 1) {
        double product[n];
        unrolled<n>([&](auto k) __attribute__((always_inline)) {
            // A copy, since an element of an array's element would be read from memory.
            Double2 factor = lastFactor;
            if constexpr (k < n - 1) factor = factors[k / 2];
            product[k] = load<double>(a + (n - 1) * stride + 8 * k) * factor[k % 2];
        });
        store(to + 8 * (n - 1), square::sum<Order, n>(product, n - 1));
    }
}

// Floats of order 3: the first two products of all rows from pairs of neighbours.
[[gnu::always_inline]] inline void multiplyThreeRows(const std::byte* a, std::ptrdiff_t stride, const std::byte* x,
                                                     std::byte* to) {
    const std::byte* const second = a + stride;
    const std::byte* const third = second + stride;
    const Float4 factors = pairTwice(x);
    const Float4 two = loadPairs(a, second) * factors;
    const Float4 one = pairTwice(third) * factors;
    const Float4 last =
        __builtin_shufflevector(interleaveLow(alone(a + 8), alone(second + 8)), alone(third + 8), 0, 1, 4, 4);
    const Float4 product[3] = {__builtin_shufflevector(two, one, 0, 2, 4, 6),
                               __builtin_shufflevector(two, one, 1, 3, 5, 7), last * spread<Float4>(x + 8)};
    storeRest<float, 3>(to, square::sum<square::left_to_right, 3>(product, 0), 0);
}

// Floats of orders 4 and 6 where the products of even k are added up, those of odd k, and then the two: both
// run side by side, for two rows in a vector.
template <int n>
[[gnu::always_inline]] inline void multiplyEvensAndOdds(const std::byte* a, std::ptrdiff_t stride, const std::byte* x,
                                                        std::byte* to) {
    const Float4 factors = load<Float4>(x);
    Float4 sums[n / 2];
    unrolled<n / 2>([&](auto pair) __attribute__((always_inline)) {
        const std::byte* const first = a + 2 * pair * stride;
        const Float4 upper = load<Float4>(first) * factors;
        const Float4 lower = load<Float4>(first + stride) * factors;
        sums[pair] =
            __builtin_shufflevector(upper, lower, 0, 1, 4, 5) + __builtin_shufflevector(upper, lower, 2, 3, 6, 7);
        if constexpr (n == 6) sums[pair] += loadPairs(first + 16, first + stride + 16) * pairTwice(x + 16);
    });
    const auto joinedRows = [](Float4 upper, Float4 lower) __attribute__((always_inline)) {
        return __builtin_shufflevector(upper, lower, 0, 2, 4, 6) + __builtin_shufflevector(upper, lower, 1, 3, 5, 7);
    };
    storeLanes(to, joinedRows(sums[0], sums[1]));
    if constexpr (n == 6) storeLowPair(to + 16, settled(joinedRows(sums[2], sums[2])));
}

template <class T, int n, class Order>
inline constexpr bool addsUpRows = !isFloat<T> || n == 3 || (std::is_same_v<Order, square::mva_32f> && n != 5);

template <class T, int n, class Order>
[[gnu::always_inline]] inline void multiplyByRows(const std::byte* a, std::ptrdiff_t stride, const std::byte* x,
                                                  std::byte* to) {
    if constexpr (!isFloat<T>) multiplyRowPairs<n, Order>(a, stride, x, to);
    else if constexpr (n == 3) multiplyThreeRows(a, stride, x, to);
    else multiplyEvensAndOdds<n>(a, stride, x, to);
}

// --- Plain operands --------------------------------------------------------------------------------

template <class T, int n, class Order, bool turned>
[[gnu::always_inline]] inline void squareTimesVector(const std::byte* a, std::ptrdiff_t stride, const std::byte* x,
                                                     std::byte* to) {
    if constexpr (turned) multiplyColumns<T, n, Order>(ColumnsInPlace<T, n>{a, stride}, x, to);
    else if constexpr (addsUpRows<T, n, Order>) multiplyByRows<T, n, Order>(a, stride, x, to);
    else multiplyColumns<T, n, Order>(ColumnsHeld<T, n>{rightRows<T, n, true>(a, stride)}, x, to);
}

template <class T, int n, class Order, bool turned>
[[gnu::noinline]] void squaresTimesVectors(const GridObjects& as, const GridObjects& xs, const GridObjects& dsts,
                                           std::int32_t count) {
    const std::ptrdiff_t stride = storedStride<turned>(as.first);
    forObjects<1>(
        as, xs, dsts,
        count, [&](std::int32_t, const std::byte* a, const std::byte* x, std::byte* to) __attribute__((always_inline)) {
            squareTimesVector<T, n, Order, turned>(a, stride, x, to);
        });
}

// A vector that serves all objects is read before the first result: from here on it is in registers or on the stack.
template <class T, int n, class Order, bool turned>
[[gnu::noinline]] void squaresTimesVector(const GridObjects& as, const std::byte* x, const GridObjects& dsts,
                                          std::int32_t count) {
    const std::ptrdiff_t stride = storedStride<turned>(as.first);
    std::byte own[n * sizeof(T)];
    __builtin_memcpy(own, x, sizeof own);
    forObjects<1>(
        as, as, dsts,
        count, [&](std::int32_t, const std::byte* a, const std::byte*, std::byte* to) __attribute__((always_inline)) {
            squareTimesVector<T, n, Order, turned>(a, stride, own, to);
        });
}

template <class T, int n, class Order>
[[gnu::noinline]] void squareTimesVectors(const ColumnsHeld<T, n>& ready, const GridObjects& xs,
                                          const GridObjects& dsts, std::int32_t count) {
    const ColumnsHeld<T, n> columns = ready;
    constexpr int together = n <= 4 ? 2 : 1;
    forObjects<together>(
        xs, xs, dsts,
        count, [&](std::int32_t, const std::byte*, const std::byte* x, std::byte* to) __attribute__((always_inline)) {
            multiplyColumns<T, n, Order>(columns, x, to);
        });
}

template <class T, int n, class Order, class A, class X, class D, class Count>
[[gnu::always_inline]] inline void squareVectorProduct(const A& a, const X& x, const D& dst, Count count) {
    constexpr bool turned = isTransposed<A>;
    if constexpr (isAdjacent<D> && isOneObject<Count>)
        squareTimesVector<T, n, Order, turned>(a.origin, storedStride(a), x.origin, dst.origin);
    else if constexpr (isAdjacent<D> && isShared<A>)
        squareTimesVectors<T, n, Order>(ColumnsHeld<T, n>{rightRows<T, n, !turned>(a.origin, storedStride(a))},
                                        objectsOf(x), objectsOf(dst), count);
    else if constexpr (isAdjacent<D> && isShared<X>)
        squaresTimesVector<T, n, Order, turned>(objectsOf(a), objectsOf(x).first.origin, objectsOf(dst), count);
    else if constexpr (isAdjacent<D>)
        squaresTimesVectors<T, n, Order, turned>(objectsOf(a), objectsOf(x), objectsOf(dst), count);
    else if constexpr (isOneObject<Count>)
        squareVectorObject<T, n, Order>(operand(a.at(0)), operand(x.at(0)), operand(dst.at(0)));
    else squareVectorsInLanes<Lanes<T>, Order>(objectsOf(a), objectsOf(x), objectsOf(dst), n, count);
}

// --- Any shape -----------------------------------------------------------------------------------

// One element, whatever its shape of sum.
template <class T, Sum shape, class Operand>
T elementSum(const Operand& a, std::ptrdiff_t i, const Operand& x, std::ptrdiff_t products) {
    const auto product = [&](std::ptrdiff_t k) { return load<T>(a.address(i, k)) * load<T>(x.address(0, k)); };
    const std::ptrdiff_t inBlocks = products - products % shape.block;
    std::ptrdiff_t k = 0;
    T sum{};
    if (inBlocks > 0) {
        T partial[shape.partials] = {};
        for (; k < inBlocks; k += shape.partials)
            for (int c = 0; c < shape.partials; ++c) partial[c] += product(k + c);
        sum = joined<T>(partial);
    }
    for (; k < products; ++k) sum += product(k);
    return sum;
}

// Elements of the result along vectors, where columns of the matrix are contiguous: each is added, times an element of
// the vector. A vector of sums waits for its additions, so as many go side by side as registers hold.
template <class T, Sum shape>
struct ColumnSums {
    static constexpr int widest = 8 / sumsAtOnce(shape);

    const std::byte* x;
    std::ptrdiff_t xStep;
    std::ptrdiff_t step;  // from column to column
    std::ptrdiff_t products;

    // `last` is where the last vector begins.
    template <int vectors>
    [[gnu::noinline]] void vectorsOf(const std::byte* a, std::byte* to, std::ptrdiff_t last) const {
        tile<Vec16<T>, shape, 1, vectors>({x, 0, xStep}, {a, step, last}, products, TileTarget{to, 0, last});
    }

    // Elements from `a` on, at least as many as a vector has; the last vector ends with them.
    void elements(const std::byte* a, std::byte* to, std::ptrdiff_t count) const {
        constexpr auto size = static_cast<std::ptrdiff_t>(sizeof(T));
        constexpr int lanes = lanes16<T>;
        const auto take = [&](auto vectors) __attribute__((always_inline)) {
            const std::ptrdiff_t width = std::min<std::ptrdiff_t>(vectors.value * lanes, count);
            vectorsOf<vectors.value>(a, to, (width - lanes) * size);
            a += width * size;
            to += width * size;
            count -= width;
        };
        while (count > (widest - 1) * lanes) take(std::integral_constant<int, widest>{});
        if constexpr (widest == 8)
            if (count > 3 * lanes) take(std::integral_constant<int, 4>{});
        if constexpr (widest >= 4)
            if (count > 2 * lanes) return take(std::integral_constant<int, 3>{});
        if constexpr (widest >= 4)
            if (count > lanes) return take(std::integral_constant<int, 2>{});
        if (count > 0) take(std::integral_constant<int, 1>{});
    }
};

// At least as many rows as a vector has lanes, of which elements touch; the last vector ends with the last row.
template <class T, Sum shape>
[[gnu::always_inline]] inline void rowsTimesVector(const std::byte* a, std::ptrdiff_t aRow, const std::byte* x,
                                                   std::byte* to, std::ptrdiff_t rows, std::ptrdiff_t products) {
    constexpr auto size = static_cast<std::ptrdiff_t>(sizeof(T));
    constexpr int lanes = lanes16<T>, groups = dotGroups<T>(shape);
    std::ptrdiff_t i = 0;
    for (; i + groups * lanes <= rows; i += groups * lanes)
        dotVector<T, shape, groups>(x, a + i * aRow, aRow, products, to + i * size);
    const auto last = [&](auto vectors) __attribute__((always_inline)) {
        const std::ptrdiff_t at = std::min<std::ptrdiff_t>(i, rows - vectors * lanes);
        dotVector<T, shape, vectors>(x, a + at * aRow, aRow, products, to + at * size);
        i += vectors * lanes;
    };
    if constexpr (groups >= 4)
        while (i + lanes < rows && rows >= 2 * lanes) last(Int<2>{});
    while (i < rows) last(Int<1>{});
}

// Elements of the result from `first` up to `end`, all of one shape.
template <class T, Sum shape, class Operand>
void elementSums(const Operand& a, const Operand& x, const Operand& dst, std::ptrdiff_t first, std::ptrdiff_t end,
                 std::ptrdiff_t products) {
    constexpr auto size = static_cast<std::ptrdiff_t>(sizeof(T));
    constexpr int lanes = lanes16<T>;
    if constexpr (std::is_same_v<Operand, GridOperand>) {
        const bool adjacent = dst.columnStep == size && end - first >= lanes;
        // Rows of the matrix and the vector are contiguous.
        if (a.columnStep == size && x.columnStep == size && !adjacent) {
            for (std::ptrdiff_t i = first; i < end; ++i)
                store(target(dst, 0, i), dot<T, shape>(a.origin + i * a.rowStep, x.origin, products));
            return;
        }
        // k along vectors.
        if constexpr (shape.partials % lanes == 0) {
            if (adjacent && a.columnStep == size && x.columnStep == size)
                return rowsTimesVector<T, shape>(a.origin + first * a.rowStep, a.rowStep, x.origin,
                                                 target(dst, 0, first), end - first, products);
        }
        if (adjacent && a.rowStep == size) {
            const ColumnSums<T, shape> sums{x.origin, x.columnStep, a.columnStep, products};
            return sums.elements(a.origin + first * size, target(dst, 0, first), end - first);
        }
    }
    for (std::ptrdiff_t i = first; i < end; ++i) store(target(dst, 0, i), elementSum<T, shape>(a, i, x, products));
}

// Rows of the matrix and the vector touch.
template <class T, ElementSums elements>
[[gnu::noinline]] std::int32_t rowsTimesVector(const std::byte* a, std::ptrdiff_t aRow, const std::byte* x,
                                               std::byte* to, std::int32_t rows, std::int32_t products) {
    forRowGroups<elements>(
        rows, products, [&](std::ptrdiff_t, std::ptrdiff_t count, auto sum) __attribute__((always_inline)) {
            constexpr int size = sizeof(T);
            if constexpr (sum.value == elements.general)
                if (count > 3) {
                    rowsTimesVector<T, sum.value>(a, aRow, x, to, count, products);
                    a += count * aRow;
                    to += count * size;
                    return;
                }
            for (; count > 0; --count, a += aRow, to += size) store(to, dot<T, sum.value>(a, x, products));
        });
    return korStatusOk;
}

template <class T, ElementSums elements, class Operand>
[[gnu::noinline]] void generalVectorProduct(const Operand& a, const Operand& x, const Operand& dst,
                                            VectorProductShape shape) {
    const std::ptrdiff_t rows = shape.rows;
    const std::ptrdiff_t products = shape.products;
    const std::ptrdiff_t left = rows % 8 <= 2 ? rows % 8 : 0;
    if (left < rows) elementSums<T, elements.general>(a, x, dst, 0, rows - left, products);
    if (left == 1) elementSums<T, elements.lastOfOne>(a, x, dst, rows - 1, rows, products);
    if (left == 2) {
        elementSums<T, elements.firstOfTwo>(a, x, dst, rows - 2, rows - 1, products);
        elementSums<T, elements.secondOfTwo>(a, x, dst, rows - 1, rows, products);
    }
}

}  // namespace korm::inline KORM_VARIANT::products
