// Products of small matrices with all sizes and distances known at run time, one strip of neighbouring elements after the other,
// and each strip for a group of objects: what is decided for a strip serves all of them.
//
// One instance serves all shapes of sums: which rows of the result have which comes as an argument.
#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <utility>

#include "kernel/known.h"
#include "kernel/scalar.h"
#include "kernel/unroll.h"
#include "kernel/vec.h"
#include "products/dots.h"
#include "products/operands.h"
#include "products/sums.h"

namespace korm::inline KORM_VARIANT::products {

// Rows of the result with sums of one shape, from the top.
struct RowGroups {
    struct Group {
        std::int32_t rows;
        Sum sum;
    } of[3];
};

inline RowGroups rowGroups(const RowSums& rows, std::int32_t height) {
    const std::int32_t left = height % 4;
    RowGroups groups{{{height - left, rows.blocks}, {0, zeroStart}, {0, zeroStart}}};
    if (left == 1) groups.of[1] = {1, rows.lastOfOne};
    else if (left == 2) groups.of[1] = {1, rows.firstOfTwo}, groups.of[2] = {1, rows.secondOfTwo};
    else if (left == 3) groups.of[1] = {3, rows.lastThree};
    return groups;
}

inline RowGroups rowGroups(const ElementSums& elements, std::int32_t height) {
    const std::int32_t left = height % 8 <= 2 ? height % 8 : 0;
    RowGroups groups{{{height - left, elements.general}, {0, zeroStart}, {0, zeroStart}}};
    if (left == 1) groups.of[1] = {1, elements.lastOfOne};
    else if (left == 2) groups.of[1] = {1, elements.firstOfTwo}, groups.of[2] = {1, elements.secondOfTwo};
    return groups;
}

// Where elements of an operand lie in every object: behind its origin.
struct Distances {
    std::ptrdiff_t first;
    std::ptrdiff_t row;
    std::ptrdiff_t column;

    [[gnu::always_inline]] Distances turned() const { return {first, column, row}; }
};

struct Factors {
    Distances a, b, to;
    std::ptrdiff_t rows, columns, products;

    // The transpose of the result is the product of the transposes.
    [[gnu::always_inline]] Factors turned() const {
        return {b.turned(), a.turned(), to.turned(), columns, rows, products};
    }
};

// As many elements at a time as there are registers for their partial sums.
constexpr int stripElements(int partials) { return partials == 8 ? 1 : partials == 4 ? 2 : 4; }

// Elements in a row of the result, each a Right: an element, a vector of neighbours, or one of objects in lanes. A Left
// that is a single element beside vectors is spread. The last vector of neighbours ends with the row.
template <class Left, class Right, int elements, class Objects>
[[gnu::noinline]] void addStrip(const Factors& at, Sum shape, const Objects& objects) {
    using T = ElementOf<Right>;
    constexpr bool spreads = lanesOf<Left> < lanesOf<Right>;
    const std::ptrdiff_t aFirst = at.a.first, aStep = at.a.column, bFirst = at.b.first, bStep = at.b.row,
                         bNext = at.b.column, toFirst = at.to.first, toNext = at.to.column;
    const std::ptrdiff_t aThree = 3 * aStep, bThree = 3 * bStep;
    const std::ptrdiff_t products = at.products, inBlocks = products & -static_cast<std::ptrdiff_t>(shape.block);
    const std::ptrdiff_t last = (at.columns - lanesOf<Right>)*static_cast<std::ptrdiff_t>(sizeof(Left));
    const auto offset = [&](int e, std::ptrdiff_t step) __attribute__((always_inline)) {
        if (!spreads) return e * step;
        return e == elements - 1 ? last : e * static_cast<std::ptrdiff_t>(sizeof(Right));
    };
    constexpr auto size = static_cast<std::ptrdiff_t>(sizeof(T));
    const auto sums = [&](auto partials) __attribute__((always_inline)) {
        const bool along = lanesOf<Right> == 1 && aStep == size && bStep == size;
        for (std::ptrdiff_t v = 0, count = objects.count; v < count; ++v) {
            const std::byte *a = objects.a(v) + aFirst, *b = objects.b(v) + bFirst;
            // Product number `c` from where a and b stand, to each element.
            const auto product = [&](int c, auto&& put) __attribute__((always_inline)) {
                const std::byte *const aHere = a + (c == 3 ? aThree : c * aStep), *const bHere =
                                                                                      b + (c == 3 ? bThree : c * bStep);
                Right left;
                if constexpr (spreads) left = spread<Right>(aHere);
                else left = load<Right>(aHere);
                unrolled<elements>([&](auto e) __attribute__((always_inline)) {
                    put(e, left * load<Right>(bHere + offset(e, bNext)));
                });
            };
            const auto forward = [&](int count) __attribute__((always_inline)) {
                a += count * aStep;
                b += count * bStep;
            };
            const auto addTo = [&](Right & to, Right value) __attribute__((always_inline)) {
                to += value;
                asm("" : "+x"(to));  // else gcc makes vectors of elements that lie apart
            };
            Right sum[elements] = {};
            std::ptrdiff_t k = 0;
            if constexpr (partials > 1) {
                if (along && partials % lanes16<T> == 0 && inBlocks > 0) {
                    // Partial sums side by side in vectors.
                    if constexpr (lanesOf<Right> == 1 && partials % lanes16<T> == 0) {
                        constexpr int vectors = partials / lanes16<T>;
                        Vec16<T> side[elements][vectors] = {};
                        for (; k < inBlocks; k += partials)
                            unrolled<vectors>([&](auto c) __attribute__((always_inline)) {
                                const auto left = load<Vec16<T>>(a);
                                unrolled<elements>([&](auto e) __attribute__((always_inline)) {
                                    side[e][c] += left * load<Vec16<T>>(b + e * bNext);
                                });
                                a += 16;
                                b += 16;
                            });
                        unrolled<elements>([&](auto e)
                                               __attribute__((always_inline)) { sum[e] = joinedLanes<T>(side[e]); });
                    }
                } else if (inBlocks > 0) {
                    // What partial sums start from is added at the end.
                    Right partial[elements][partials.value];
                    const auto block = [&](auto isFirst) __attribute__((always_inline)) {
                        unrolled<partials>([&](auto c) __attribute__((always_inline)) {
                            product(
                                c % 4, [&](int e, Right value) __attribute__((always_inline)) {
                                    if constexpr (isFirst) partial[e][c] = value;
                                    else addTo(partial[e][c], value);
                                });
                            if (c % 4 == 3 || c == partials - 1) forward(c % 4 + 1);
                        });
                    };
                    block(std::true_type{});
                    for (k = partials; k < inBlocks; k += partials) block(std::false_type{});
                    unrolled<elements>([&](auto e) __attribute__((always_inline)) {
                        sum[e] = zeroStarted(joined<T>(partial[e]));
                    });
                }
            }
            if constexpr (lanesOf<Right> == 1 && lanes16<T> == 2)
                if (along)
                    for (; k < products - 1; k += 2) {
                        const auto left = load<Vec16<T>>(a);
                        unrolled<elements>([&](auto e) __attribute__((always_inline)) {
                            const auto product = left * load<Vec16<T>>(b + e * bNext);
                            sum[e] = sum[e] + product[0] + product[1];
                        });
                        a += 16;
                        b += 16;
                    }
            for (; k < products; ++k) {
                product(
                    0, [&](int e, Right value) __attribute__((always_inline)) { addTo(sum[e], value); });
                forward(1);
            }
            std::byte* const to = objects.to(v) + toFirst;
            unrolled<elements>([&](auto e) __attribute__((always_inline)) { store(to + offset(e, toNext), sum[e]); });
        }
    };
    if (shape.partials == 1) return sums(Int<1>{});
    if (shape.partials == 2) return sums(Int<2>{});
    if constexpr (elements <= stripElements(4))
        if (shape.partials == 4) return sums(Int<4>{});
    if constexpr (elements <= stripElements(8)) sums(Int<8>{});
}

// Rows with one shape of sum.
template <class Left, class Right, class Objects>
[[gnu::noinline]] void addRows(Factors row, Sum shape, const Objects& objects) {
    constexpr int width = lanesOf<Right> / lanesOf<Left>;
    const int most = stripElements(shape.partials);
    for (std::ptrdiff_t i = row.rows; i > 0; --i) {
        Factors at = row;
        for (std::ptrdiff_t left = row.columns; left > 0;) {
            std::ptrdiff_t elements = std::min<std::ptrdiff_t>((left + width - 1) / width, most);
            if (elements == 3) elements = 2;
            if (left < width) {
                at.b.first -= (width - left) * at.b.column;
                at.to.first -= (width - left) * at.to.column;
                left = width;
            }
            at.columns = std::min(elements * width, left);
            if (elements == 4) addStrip<Left, Right, 4>(at, shape, objects);
            else if (elements == 2) addStrip<Left, Right, 2>(at, shape, objects);
            else addStrip<Left, Right, 1>(at, shape, objects);
            left -= at.columns;
            at.b.first += at.columns * at.b.column;
            at.to.first += at.columns * at.to.column;
        }
        row.a.first += row.a.row;
        row.to.first += row.to.row;
    }
}

template <class T>
[[gnu::always_inline]] inline bool runsAlongRows(const Factors& at) {
    return at.b.column == sizeof(T) && at.to.column == sizeof(T) && at.columns >= lanes16<T>;
}

// A group of rows. Each object where it lies (S is the element), or in lanes.
template <class S, class Objects>
[[gnu::always_inline]] inline void multiplyGroup(const Factors& at, Sum sum, const Objects& objects) {
    const Factors turned = at.turned();
    if constexpr (lanesOf<S> == 1) {
        if (runsAlongRows<S>(at)) return addRows<S, Vec16<S>>(at, sum, objects);
        if (runsAlongRows<S>(turned)) return addRows<S, Vec16<S>>(turned, sum, objects.turned());
    }
    if (at.columns < at.rows) addRows<S, S>(turned, sum, objects.turned());
    else addRows<S, S>(at, sum, objects);
}

// With few products many shapes of sums are the same: fewer than a block has are added one by one, and so are two sums of one
// or two products each.
inline Sum sumOf(Sum shape, std::ptrdiff_t products) {
    return products < shape.block || (shape == Sum{2, 2} && products < 4) ? zeroStart : shape;
}

template <class S, class Objects>
[[gnu::always_inline]] inline void multiplyElements(Factors at, const RowGroups& groups, const Objects& objects) {
    std::ptrdiff_t left = at.rows;
    at.rows = 0;
    for (int g = 0; left > 0; ++g) {
        at.rows += groups.of[g].rows;
        left -= groups.of[g].rows;
        const Sum sum = sumOf(groups.of[g].sum, at.products);
        if (at.rows == 0 || (left > 0 && sumOf(groups.of[g + 1].sum, at.products) == sum)) continue;
        multiplyGroup<S>(at, sum, objects);
        at.a.first += at.rows * at.a.row;
        at.to.first += at.rows * at.to.row;
        at.rows = 0;
    }
}

// --- Objects where they lie ------------------------------------------------------------------------

inline constexpr int entriesAtOnce = 64;

// Objects behind the entries of lists.
struct ListedObjects {
    const std::byte *const *left, *const *right, *const *result;
    std::ptrdiff_t leftOffset, rightOffset, resultOffset;
    std::ptrdiff_t count;

    [[gnu::always_inline]] ListedObjects turned() const {
        return {right, left, result, rightOffset, leftOffset, resultOffset, count};
    }
    [[gnu::always_inline]] const std::byte* a(std::ptrdiff_t v) const { return left[v] + leftOffset; }
    [[gnu::always_inline]] const std::byte* b(std::ptrdiff_t v) const { return right[v] + rightOffset; }
    [[gnu::always_inline]] std::byte* to(std::ptrdiff_t v) const {
        return const_cast<std::byte*>(result[v]) + resultOffset;
    }
};

[[gnu::always_inline]] inline Distances distances(const GridOperand& grid) {
    return {0, grid.rowStep, grid.columnStep};
}

// Objects a step apart.
struct SteppedObjects {
    const std::byte *left, *right;
    std::byte* result;
    std::ptrdiff_t leftStep, rightStep, resultStep;
    std::ptrdiff_t count;

    [[gnu::always_inline]] SteppedObjects turned() const {
        return {right, left, result, rightStep, leftStep, resultStep, count};
    }
    [[gnu::always_inline]] const std::byte* a(std::ptrdiff_t v) const { return left + v * leftStep; }
    [[gnu::always_inline]] const std::byte* b(std::ptrdiff_t v) const { return right + v * rightStep; }
    [[gnu::always_inline]] std::byte* to(std::ptrdiff_t v) const { return result + v * resultStep; }
};

template <class T>
[[gnu::noinline]] void productsInPlace(const GridObjects& as, const GridObjects& bs, const GridObjects& dsts,
                                       ProductShape shape, const RowGroups& groups, std::int32_t count) {
    const Factors at{distances(as.first), distances(bs.first), distances(dsts.first),
                     shape.rows,          shape.columns,       shape.products};
    if (as.list == nullptr && bs.list == nullptr && dsts.list == nullptr)
        return multiplyElements<T>(at, groups,
                                   SteppedObjects{as.first.origin, bs.first.origin, target(dsts.first, 0, 0), as.step,
                                                  bs.step, dsts.step, count});
    // An operand that serves all objects has a list that says so, as long as the part of the others that is used at a time.
    const std::byte* entries[entriesAtOnce];
    std::fill_n(entries, entriesAtOnce, (as.isShared() ? as : bs).first.origin);
    for (std::int32_t k = 0; k < count; k += entriesAtOnce) {
        const auto listOf = [&](const GridObjects& objects) {
            return objects.list == nullptr ? entries : reinterpret_cast<const std::byte* const*>(objects.list) + k;
        };
        const auto offset = [](const GridObjects& objects) { return objects.list == nullptr ? 0 : objects.step; };
        multiplyElements<T>(at, groups,
                            ListedObjects{listOf(as), listOf(bs), listOf(dsts), offset(as), offset(bs), offset(dsts),
                                          std::min(entriesAtOnce, count - k)});
    }
}

}  // namespace korm::inline KORM_VARIANT::products
