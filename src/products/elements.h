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

constexpr RowGroups rowGroups(const RowSums& rows, std::int32_t height) {
    const std::int32_t left = height % 4;
    RowGroups groups{{{height - left, rows.blocks}, {0, zeroStart}, {0, zeroStart}}};
    if (left == 1) groups.of[1] = {1, rows.lastOfOne};
    else if (left == 2) groups.of[1] = {1, rows.firstOfTwo}, groups.of[2] = {1, rows.secondOfTwo};
    else if (left == 3) groups.of[1] = {3, rows.lastThree};
    return groups;
}

constexpr RowGroups rowGroups(const ElementSums& elements, std::int32_t height) {
    const std::int32_t left = height % 8 <= 2 ? height % 8 : 0;
    RowGroups groups{{{height - left, elements.general}, {0, zeroStart}, {0, zeroStart}}};
    if (left == 1) groups.of[1] = {1, elements.lastOfOne};
    else if (left == 2) groups.of[1] = {1, elements.firstOfTwo}, groups.of[2] = {1, elements.secondOfTwo};
    return groups;
}

// With few products many shapes of sums are the same: fewer than a block has are added one by one, and so are two sums of one
// or two products each.
constexpr Sum sumOf(Sum shape, std::ptrdiff_t products) {
    return products < shape.block || (shape == Sum{2, 2} && products < 4) ? zeroStart : shape;
}

// Product k is product(Int<k>).
template <class T, Sum shape, int products, class Product>
[[gnu::always_inline]] inline auto sumOfProducts(const Product& product) {
    using S = decltype(product(Int<0>{}));
    constexpr int inBlocks = products / shape.block * shape.block;
    if constexpr (shape == zeroStart) {
        S sum = product(Int<0>{});
        unrolled<products - 1>([&](auto k) __attribute__((always_inline)) { sum += product(Int<k + 1>{}); });
        return zeroStarted(sum);
    } else {
        S partial[shape.partials];
        unrolled<inBlocks>([&](auto k) __attribute__((always_inline)) {
            if constexpr (k < shape.partials) partial[k] = product(k);
            else partial[k % shape.partials] += product(k);
        });
        S sum = zeroStarted(joined<T>(partial));
        unrolled<products - inBlocks>([&](auto k)
                                          __attribute__((always_inline)) { sum += product(Int<inBlocks + k>{}); });
        return sum;
    }
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

// How many strips these are, where elements aren't vectors of neighbours.
constexpr std::ptrdiff_t stripsOf(const Factors& at, Sum shape) {
    const std::ptrdiff_t most = stripElements(shape.partials), left = at.columns % most;
    return at.rows * (at.columns / most + (left == 3 ? 2 : left > 0 ? 1 : 0));
}

template <class T>
[[gnu::always_inline]] inline bool runsAlongRows(const Factors& at) {
    return at.b.column == sizeof(T) && at.to.column == sizeof(T) && at.columns >= lanes16<T>;
}

// The same with columns of the right operand that touch.
template <class T>
[[gnu::always_inline]] inline bool runsDownColumns(const Factors& at) {
    return at.b.row == sizeof(T) && at.to.column == sizeof(T) && at.columns >= lanes16<T>;
}

// --- Rows of the right operand held ------------------------------------------------------------------

// With the number of products known, rows of the right operand stay in registers while those of the result go by. All of these
// have one sum, and are up to four vectors of neighbours, of which the last ends with the row.
inline constexpr int heldProducts = 8;

// More vectors than this are read anew for each row, since they would wait on the stack.
inline constexpr int heldVectors = 10;

// Where not rows but columns of the right operand touch (`turned`), its vectors are gathered.
template <class T, int products, int vectors, Sum shape, bool turned, class Objects>
[[gnu::noinline]] void multiplyHeldRows(const Factors& factors, const Objects& all) {
    using V = Vec16<T>;
    constexpr int lanes = lanes16<T>;
    constexpr bool holds = products * vectors <= heldVectors;
    const Factors at = factors;
    const Objects objects = all;
    const std::ptrdiff_t last = at.columns * static_cast<std::ptrdiff_t>(sizeof(T)) - 16;
    const auto offset = [&](auto v) __attribute__((always_inline)) { return v == vectors - 1 ? last : v * 16; };
    for (std::ptrdiff_t k = 0; k < objects.count; ++k) {
        const std::byte *a = objects.a(k) + at.a.first, *b = objects.b(k) + at.b.first;
        std::byte* to = objects.to(k) + at.to.first;
        const auto rightPart = [&](auto l, auto v) __attribute__((always_inline)) {
            if constexpr (turned) {
                const std::ptrdiff_t column = v == vectors - 1 ? at.columns - lanes : v * lanes;
                const std::byte* const from = b + l * sizeof(T) + column * at.b.column;
                return fromLanes<V>([&](int e) { return load<T>(from + e * at.b.column); });
            } else {
                return load<V>(b + l * at.b.row + offset(v));
            }
        };
        V held[products][vectors];
        if constexpr (holds)
            unrolled<products>([&](auto l) __attribute__((always_inline)) {
                unrolled<vectors>([&](auto v) __attribute__((always_inline)) { held[l][v] = rightPart(l, v); });
            });
        const auto right = [&](auto l, auto v) __attribute__((always_inline)) {
            if constexpr (holds) return held[l][v];
            else return rightPart(l, v);
        };
#pragma GCC unroll 1
        for (std::ptrdiff_t i = at.rows; i > 0; --i) {
            if constexpr (!holds) b = opaque(b);
            const std::byte* left = a;
            V factor[products];
            unrolled<products>([&](auto l) __attribute__((always_inline)) {
                factor[l] = spread<V>(left);
                left += at.a.column;
            });
            unrolled<vectors>([&](auto v) __attribute__((always_inline)) {
                store(to + offset(v), sumOfProducts<T, shape, products>([&](auto l) __attribute__((always_inline)) {
                          return factor[l] * right(l, v);
                      }));
            });
            a += at.a.row;
            to += at.to.row;
        }
    }
}

// One panel of columns after the other.
template <class T, int products, Sum shape, bool turned, class Objects>
[[gnu::always_inline]] inline void multiplyHeldPanels(Factors at, const Objects& objects) {
    constexpr int lanes = lanes16<T>;
    // Doubles are spread by loads, so that to read the right operand anew costs more than to spread the left one again, but for a
    // single row. Sums of two rows and more are those that blocks of rows have.
    constexpr int atMost = isFloat<T> || turned ? 2 : 4;
    constexpr int mostOfRows = isFloat<T> ? atMost : std::clamp(heldVectors / products, 1, atMost);
    constexpr int mostOfRow = shape == Sum{2, 2} ? mostOfRows : atMost;
    const std::ptrdiff_t most = at.rows == 1 ? mostOfRow : mostOfRows;
    for (std::ptrdiff_t left = at.columns; left > 0;) {
        if (left < lanes) {
            at.b.first -= (lanes - left) * at.b.column;
            at.to.first -= (lanes - left) * at.to.column;
            left = lanes;
        }
        at.columns = std::min(left, most * lanes);
        const std::ptrdiff_t vectors = (at.columns + lanes - 1) / lanes;
        unrolled<mostOfRow>([&](auto before) __attribute__((always_inline)) {
            if (vectors == before + 1) multiplyHeldRows<T, products, before + 1, shape, turned>(at, objects);
        });
        left -= at.columns;
        at.b.first += at.columns * at.b.column;
        at.to.first += at.columns * at.to.column;
    }
}

// If there are few products and their sum is one of those that kernels of this operand layout have.
template <class T, bool turned, class Objects>
[[gnu::noinline]] bool multiplyHeld(const Factors& at, Sum shape, const Objects& objects) {
    bool isDone = false;
    unrolled<heldProducts>([&](auto before) __attribute__((always_inline)) {
        constexpr int products = before + 1;
        const auto tries = [&](auto sum) __attribute__((always_inline)) {
            constexpr Sum tried = sum.value;
            if constexpr (sumOf(tried, products) == tried) {
                if (at.products == products && shape == tried) {
                    multiplyHeldPanels<T, products, tried, turned>(at, objects);
                    isDone = true;
                }
            }
        };
        tries(std::integral_constant<Sum, zeroStart>{});
        tries(std::integral_constant<Sum, Sum{2, 2}>{});
        if constexpr (!isFloat<T>) {
            tries(std::integral_constant<Sum, Sum{8, 8}>{});
            tries(std::integral_constant<Sum, Sum{4, 8}>{});
            tries(std::integral_constant<Sum, Sum{2, 8}>{});
        }
    });
    return isDone;
}

// --- Groups of rows -----------------------------------------------------------------------------------

// A group of rows. Each object where it lies (S is the element), or in lanes.
template <class S, class Objects>
[[gnu::always_inline]] inline void multiplyGroup(const Factors& at, Sum sum, const Objects& objects) {
    const Factors turned = at.turned();
    if constexpr (lanesOf<S> == 1) {
        if (runsAlongRows<S>(at)) {
            if constexpr (!Objects::isListed) {
                if (multiplyHeld<S, false>(at, sum, objects)) return;
            } else if constexpr (!isFloat<S>) {
                // Strips have room for the eight partial sums of one vector only.
                if (at.rows == 1 && at.products == heldProducts && sum == Sum{8, 8})
                    return multiplyHeldPanels<S, heldProducts, Sum{8, 8}, false>(at, objects);
            }
            return addRows<S, Vec16<S>>(at, sum, objects);
        }
        if (runsAlongRows<S>(turned)) {
            if constexpr (!Objects::isListed)
                if (multiplyHeld<S, false>(turned, sum, objects.turned())) return;
            return addRows<S, Vec16<S>>(turned, sum, objects.turned());
        }
        if constexpr (!Objects::isListed && !isFloat<S>)
            if (runsDownColumns<S>(at) && multiplyHeld<S, true>(at, sum, objects)) return;
    }
    if (stripsOf(turned, sum) < stripsOf(at, sum)) addRows<S, S>(turned, sum, objects.turned());
    else addRows<S, S>(at, sum, objects);
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
    static constexpr bool isListed = true;

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
    static constexpr bool isListed = false;

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
