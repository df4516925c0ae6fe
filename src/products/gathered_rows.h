// Matrices times vectors whose elements needn't touch. Rows of the matrix are the lanes of a vector, and elements come from where
// they lie, so that an element of the vector is read once for all of them. Nothing is prepared for an object, and one instance
// serves one matrix and many, one vector and many, lists and arrays, and both transpositions.
//
// A plain loop waits for its loads: two a product, of which two start in a cycle. Here two rows of doubles take three loads for
// two products, four rows of floats five for four.
#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>

#include "kernel/known.h"
#include "kernel/scalar.h"
#include "kernel/unroll.h"
#include "kernel/vec.h"
#include "products/operands.h"
#include "products/sums.h"

namespace korm::inline KORM_VARIANT::products {

// With fewer rows than V has lanes, V is an element. The last rows may overlap those before. There are as many products as
// partial sums, at least.
template <class V, int partials>
[[gnu::noinline]] void gatheredRowsTimesVectors(const GridObjects& as, const GridObjects& xs, const GridObjects& dsts,
                                                VectorProductShape shape, Start start, std::int32_t count) {
    using T = ElementOf<V>;
    constexpr int lanes = lanesOf<V>;
    const std::ptrdiff_t row = as.first.rowStep, step = as.first.columnStep, xStep = xs.first.columnStep,
                         toStep = dsts.first.columnStep;
    const std::ptrdiff_t three = 3 * step, xThree = 3 * xStep;
    const std::ptrdiff_t rows = shape.rows, products = shape.products;
    forObjects<0>(
        as, xs, dsts, count,
        [&](std::int32_t, const std::byte* matrix, const std::byte* vector,
            std::byte* to) __attribute__((always_inline)) {
            for (std::ptrdiff_t rowsLeft = rows;;) {
                const std::byte *a = matrix, *x = partials > 1 ? opaque(vector) : vector;
                // Product number `c` from where a and x stand. The compiler is kept from looking for elements that touch.
                const auto product = [&](int c) __attribute__((always_inline)) {
                    const std::byte* const from = a + (c == 3 ? three : c * step);
                    const V right = spread<V>(x + (c == 3 ? xThree : c * xStep));
                    V left;
                    if constexpr (lanes == 1) left = load<T>(from);
                    else if constexpr (lanes == 2) left = V{load<T>(from), load<T>(from + row)};
                    else left = V{load<T>(from), load<T>(from + row), load<T>(from + 2 * row), load<T>(from + 3 * row)};
                    left *= right;
                    asm("" : "+x"(left));
                    return left;
                };
                const auto forward = [&](int steps) __attribute__((always_inline)) {
                    a += steps * step;
                    x += steps * xStep;
                };
                V sum;
                std::ptrdiff_t left = products;
                if constexpr (partials > 1) {
                    V partial[partials];
                    const auto block = [&](auto isFirst) __attribute__((always_inline)) {
                        unrolled<partials>([&](auto c) __attribute__((always_inline)) {
                            if constexpr (isFirst) partial[c] = product(c % 4);
                            else partial[c] += product(c % 4);
                            if (c % 4 == 3) {
                                forward(4);
                                // Else gcc has another loop for elements that are a byte apart.
                                a = opaque(a), x = opaque(x);
                            }
                        });
                    };
                    block(std::true_type{});
#pragma GCC unroll 1
                    for (left -= partials; left >= partials; left -= partials) block(std::false_type{});
                    sum = zeroStarted(joined<T>(partial));
                } else {
                    sum = product(0);
                    forward(1);
                    --left;
                    if (start == Start::zero) sum = zeroStarted(sum);
                }
#pragma GCC unroll 1
                for (; left > 0; --left) {
                    sum += product(0);
                    forward(1);
                }
                if constexpr (lanes == 1) store(to, sum);
                else
                    unrolled<lanes>([&](auto l)
                                        __attribute__((always_inline)) { store(to + l * toStep, sum[l.value]); });
                rowsLeft -= lanes;
                if (rowsLeft <= 0) break;
                const std::ptrdiff_t next = std::min<std::ptrdiff_t>(rowsLeft, lanes);
                rowsLeft = std::max<std::ptrdiff_t>(rowsLeft, lanes);
                matrix += next * row;
                to += next * toStep;
            }
        });
}

// Elements of all rows have one shape of sum.
template <class T, Sum sum>
[[gnu::always_inline]] inline void gatheredRowsTimesVectors(const GridObjects& a, const GridObjects& x,
                                                            const GridObjects& dst, VectorProductShape shape,
                                                            Start start, std::int32_t count) {
    static_assert(sum.partials == sum.block);
    const auto multiply = [&](auto partials) __attribute__((always_inline)) {
        if (shape.rows < lanes16<T>) gatheredRowsTimesVectors<T, partials>(a, x, dst, shape, start, count);
        else gatheredRowsTimesVectors<Vec16<T>, partials>(a, x, dst, shape, start, count);
    };
    if (shape.products < sum.block) multiply(Int<1>{});
    else multiply(Int<sum.partials>{});
}

}  // namespace korm::inline KORM_VARIANT::products
