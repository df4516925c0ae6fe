// Arrays of small objects of any shape: a group of objects is brought into lanes, multiplied as one object would be, and
// brought back. A group is several vectors of objects, so that what is decided for an element serves all of them.
#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>

#include "kernel/groups.h"
#include "kernel/packed_groups.h"
#include "products/dots_in_lanes.h"
#include "products/elements.h"
#include "products/objects.h"
#include "products/operands.h"

namespace korm::inline KORM_VARIANT::products {

inline constexpr int groupVectors = 16;     // of objects, at most
inline constexpr int groupElements = 1024;  // of all these

// Where the first object of each vector is, and how to find the others of the vector.
template <class Byte, bool isListed>
struct ObjectVectors {
    const void* first[groupVectors];  // object, or entry of the list
    std::ptrdiff_t step;              // from object to object, or offset of an entry

    template <int lanes>
    [[gnu::always_inline]] Places<Byte, lanes> at(std::ptrdiff_t v, std::ptrdiff_t distance) const {
        return withLanes<lanes>([&](auto... l) __attribute__((always_inline)) {
            if constexpr (isListed) {
                const auto* const entries = static_cast<Byte* const*>(first[v]);
                const std::ptrdiff_t offset = step + distance;
                return Places<Byte, lanes>{{entries[l] + offset...}};
            } else {
                Byte* const origin = static_cast<Byte*>(const_cast<void*>(first[v])) + distance;
                return Places<Byte, lanes>{{origin + l * step...}};
            }
        });
    }
};

// How the elements of an operand lie in memory. In lanes they lie line by line.
struct Lines {
    int count, length;
    std::ptrdiff_t lineStep, step;
    bool turned;  // a line is a column
    bool touch;   // elements of a line do
};

template <class T>
[[gnu::always_inline]] inline Lines linesOf(const GridOperand& grid, int height, int width) {
    constexpr auto size = static_cast<std::ptrdiff_t>(sizeof(T));
    const bool turned = height > 1 && (width == 1 || (grid.rowStep == size && grid.columnStep != size));
    Lines lines = turned ? Lines{width, height, grid.columnStep, grid.rowStep, true, false}
                         : Lines{height, width, grid.rowStep, grid.columnStep, false, false};
    lines.touch = lines.step == size;
    return lines;
}

// Elements at one distance after the other, `n` at a time; of each all vectors of objects.
template <class S, int n, bool isListed>
[[gnu::noinline]] void readElements(const ObjectVectors<const std::byte, isListed>& from, std::ptrdiff_t distance,
                                    S* to, std::ptrdiff_t vectors) {
    for (std::ptrdiff_t v = 0; v < vectors; ++v) {
        S run[n];
        readRun<n>(from.template at<lanesOf<S>>(v, distance), run);
        unrolled<n>([&](auto e) __attribute__((always_inline)) { to[e * vectors + v] = run[e]; });
    }
}

template <class S, int n, bool isListed>
[[gnu::noinline]] void writeElements(const ObjectVectors<std::byte, isListed>& to, std::ptrdiff_t distance,
                                     const S* from, std::ptrdiff_t vectors) {
    for (std::ptrdiff_t v = 0; v < vectors; ++v) {
        S run[n];
        unrolled<n>([&](auto e) __attribute__((always_inline)) { run[e] = from[e * vectors + v]; });
        writeRun<n>(to.template at<lanesOf<S>>(v, distance), run);
    }
}

// Calls f(elements at a time as a type, distance, number of the first).
template <int most, class T, class F>
[[gnu::always_inline]] inline void forRuns(const Lines& lines, const F& f) {
    constexpr auto size = static_cast<std::ptrdiff_t>(sizeof(T));
    int count = lines.count, length = lines.length;
    if (lines.touch && lines.lineStep == length * size) length *= count, count = 1;
    int e = 0;
    for (int i = 0; i < count; ++i) {
        std::ptrdiff_t distance = i * lines.lineStep;
        int left = length;
        const auto take = [&](auto n) __attribute__((always_inline)) {
            f(n, distance, e);
            e += n;
            left -= n;
            distance += n * lines.step;
        };
        if (lines.touch) {
            while (left >= most) take(Int<most>{});
            // Three behind others are the last three of four.
            if (most == 4 && left == 3 && length > 3) {
                --e;
                ++left;
                distance -= lines.step;
                take(Int<most>{});
            }
            if (most > 2 && left >= 2) take(Int<2>{});
        }
        while (left > 0) take(Int<1>{});
    }
}

template <class S, bool isListed>
[[gnu::noinline]] void readLanes(const ObjectVectors<const std::byte, isListed>& from, const Lines& lines, S* to,
                                 std::ptrdiff_t vectors) {
    forRuns<isFloat<ElementOf<S>> ? 4 : 2, ElementOf<S>>(
        lines, [&](auto n, std::ptrdiff_t distance, int e)
                   __attribute__((always_inline)) { readElements<S, n>(from, distance, to + e * vectors, vectors); });
}

template <class S, bool isListed>
[[gnu::noinline]] void writeLanes(const ObjectVectors<std::byte, isListed>& to, const Lines& lines, const S* from,
                                  std::ptrdiff_t vectors) {
    forRuns<2, ElementOf<S>>(
        lines, [&](auto n, std::ptrdiff_t distance, int e)
                   __attribute__((always_inline)) { writeElements<S, n>(to, distance, from + e * vectors, vectors); });
}

template <class S>
[[gnu::always_inline]] inline Distances inLanes(const Lines& lines, std::ptrdiff_t vectors) {
    const std::ptrdiff_t element = vectors * static_cast<std::ptrdiff_t>(sizeof(S));
    if (lines.turned) return {0, element, lines.length * element};
    return {0, lines.length * element, element};
}

// The vectors from object k on. The last one of an array ends with the last object.
template <class S, class Byte, bool isListed>
[[gnu::always_inline]] inline ObjectVectors<Byte, isListed> vectorsFrom(const GridObjects& objects, std::ptrdiff_t k,
                                                                        std::ptrdiff_t vectors, std::ptrdiff_t count) {
    constexpr int lanes = lanesOf<S>;
    ObjectVectors<Byte, isListed> places;
    places.step = objects.step;
#pragma GCC unroll 1
    for (std::ptrdiff_t v = 0; v < vectors; ++v) {
        const std::ptrdiff_t first = std::min(k + v * lanes, count - lanes);
        if constexpr (isListed) places.first[v] = objects.list + first;
        else places.first[v] = objects.first.origin + first * objects.step;
        asm volatile("");
    }
    return places;
}

template <class S>
[[gnu::noinline]] void readOperand(const GridObjects& objects, const Lines& lines, std::ptrdiff_t k,
                                   std::ptrdiff_t vectors, std::ptrdiff_t count, S* to) {
    if (objects.isShared()) {
        for (int i = 0; i < lines.count; ++i)
            for (int j = 0; j < lines.length; ++j)
                *to++ = spread<S>(objects.first.origin + i * lines.lineStep + j * lines.step);
    } else if (objects.list == nullptr) {
        readLanes(vectorsFrom<S, const std::byte, false>(objects, k, vectors, count), lines, to, vectors);
    } else {
        readLanes(vectorsFrom<S, const std::byte, true>(objects, k, vectors, count), lines, to, vectors);
    }
}

template <class S>
[[gnu::noinline]] void writeResult(const GridObjects& objects, const Lines& lines, std::ptrdiff_t k,
                                   std::ptrdiff_t vectors, std::ptrdiff_t count, const S* from) {
    if (objects.list == nullptr)
        writeLanes(vectorsFrom<S, std::byte, false>(objects, k, vectors, count), lines, from, vectors);
    else writeLanes(vectorsFrom<S, std::byte, true>(objects, k, vectors, count), lines, from, vectors);
}

template <class S>
[[gnu::noinline]] void productsInLanes(const GridObjects& as, const GridObjects& bs, const GridObjects& dsts,
                                       ProductShape shape, const RowGroups& groups, std::int32_t count) {
    using T = ElementOf<S>;
    constexpr int lanes = lanesOf<S>;
    const Lines aLines = linesOf<T>(as.first, shape.rows, shape.products);
    const Lines bLines = linesOf<T>(bs.first, shape.products, shape.columns);
    const Lines dstLines = linesOf<T>(dsts.first, shape.rows, shape.columns);
    const int aCount = shape.rows * shape.products, bCount = shape.products * shape.columns,
              dstCount = shape.rows * shape.columns;
    const std::ptrdiff_t all = (static_cast<std::ptrdiff_t>(count) + lanes - 1) / lanes;
    const std::ptrdiff_t most = std::min<std::ptrdiff_t>(groupVectors, groupElements / (aCount + bCount + dstCount));
    S room[groupElements];
    for (std::ptrdiff_t done = 0; done < all;) {
        const std::ptrdiff_t vectors = std::min(most, all - done);
        S *const a = room, *const b = a + aCount * vectors, *const to = b + bCount * vectors;
        readOperand(as, aLines, done * lanes, vectors, count, a);
        readOperand(bs, bLines, done * lanes, vectors, count, b);
        const Factors at{inLanes<S>(aLines, as.isShared() ? 1 : vectors),
                         inLanes<S>(bLines, bs.isShared() ? 1 : vectors),
                         inLanes<S>(dstLines, vectors),
                         shape.rows,
                         shape.columns,
                         shape.products};
        const auto step = [](const GridObjects& objects) -> std::ptrdiff_t {
            return objects.isShared() ? 0 : sizeof(S);
        };
        multiplyElements<S>(at, groups,
                            SteppedObjects{reinterpret_cast<const std::byte*>(a), reinterpret_cast<const std::byte*>(b),
                                           reinterpret_cast<std::byte*>(to), step(as), step(bs), sizeof(S), vectors});
        writeResult(dsts, dstLines, done * lanes, vectors, count, to);
        done += vectors;
    }
}

// --- Rows in lanes ---------------------------------------------------------------------------------

// A matrix of two or three columns times a vector: its rows are packed objects, of which each lane takes one. The last group
// ends with the last row.
template <class S, int products>
[[gnu::noinline]] void multiplyRowsInLanes(const SteppedObjects& all, std::ptrdiff_t rows) {
    constexpr int lanes = lanesOf<S>;
    constexpr auto size = static_cast<std::ptrdiff_t>(sizeof(ElementOf<S>));
    const SteppedObjects objects = all;
    for (std::ptrdiff_t k = 0; k < objects.count; ++k) {
        const std::byte *a = objects.a(k), *const x = objects.b(k);
        std::byte* to = objects.to(k);
        S factor[products];
        unrolled<products>([&](auto l) __attribute__((always_inline)) { factor[l] = spread<S>(x + l * size); });
        for (std::ptrdiff_t left = rows;;) {
            S row[products];
            readPacked(a, row);
            store(to, sumOfProducts<ElementOf<S>, zeroStart, products>([&](auto l) __attribute__((always_inline)) {
                      return row[l] * factor[l];
                  }));
            left -= lanes;
            if (left <= 0) break;
            const std::ptrdiff_t step = std::min<std::ptrdiff_t>(left, lanes);
            left = std::max<std::ptrdiff_t>(left, lanes);
            a += step * (products * size);
            to += step * size;
        }
    }
}

template <class T>
[[gnu::always_inline]] inline bool multiplyNarrow(const GridObjects& as, const GridObjects& xs, const GridObjects& dsts,
                                                  VectorProductShape shape, std::int32_t count) {
    constexpr auto size = static_cast<std::ptrdiff_t>(sizeof(T));
    if (shape.rows < laneCount<T> || (shape.products != 2 && shape.products != 3) || as.first.columnStep != size ||
        as.first.rowStep != shape.products * size || xs.first.columnStep != size || dsts.first.columnStep != size ||
        as.list != nullptr || xs.list != nullptr || dsts.list != nullptr)
        return false;
    const SteppedObjects objects{
        as.first.origin, xs.first.origin, target(dsts.first, 0, 0), as.step, xs.step, dsts.step, count};
    if (shape.products == 2) multiplyRowsInLanes<Lanes<T>, 2>(objects, shape.rows);
    else multiplyRowsInLanes<Lanes<T>, 3>(objects, shape.rows);
    return true;
}

// --- The choice ------------------------------------------------------------------------------------

// Which shapes are small: where one path takes as long as the other, by maps of all shapes up to 12 cubed (16 squared with
// vectors). The other paths are general.h and vectors.h, which prepare for each object and then take four rows at a time.

// Rows of the right operand and of the result touch: rows of the result are vectors in either path. What is prepared pays for
// more products the fewer vectors a row has; three vectors of doubles are one panel, four are two. Objects of a list have to be
// looked up for each strip here.
template <class T>
[[gnu::always_inline]] inline bool isSmallByRows(bool listed, ProductShape shape) {
    constexpr int most[] = {isFloat<T> ? 42 : 44,
                            isFloat<T> ? 30 : 36,
                            isFloat<T> ? 24 : 12,
                            isFloat<T> ? 12 : 40,
                            isFloat<T> ? 12 : 20,
                            isFloat<T> ? 12 : 18,
                            12};
    const int vectors = (shape.columns + lanes16<T> - 1) / lanes16<T>;
    if (!isFloat<T> && vectors > 2 && shape.products >= 8) return false;
    return shape.rows * (shape.products + 2) * (listed ? 3 : 2) <= most[std::min(vectors, 7) - 1] * 2;
}

// Columns of the right operand touch. Where rows of the left one do too, floats of the general path run along the products,
// four or eight at a time, and blocks of four rows by four columns are best there.
template <class T>
[[gnu::always_inline]] inline bool isSmallByColumns(bool alongProducts, ProductShape shape) {
    if (isFloat<T> && !alongProducts) {
        const int most = shape.columns <= 6 ? 50 : shape.columns <= 8 ? 25 : 20;
        return shape.rows * (shape.products + 2) <= most;
    }
    if constexpr (isFloat<T>) {
        if (shape.products <= 3 || (shape.rows <= 3 && shape.columns < 8)) return true;
        const bool inBlocks = shape.rows % 4 == 0 && shape.columns % 4 == 0;
        return shape.products < 8 && shape.rows * shape.columns <= 60 && !inBlocks;
    } else {
        const int most = shape.columns <= 2 ? 36 : shape.columns <= 4 ? 22 : 13;
        return shape.rows == 1 || shape.rows * (shape.products + 2) <= most;
    }
}

template <class T>
[[gnu::noinline]] bool isSmall(const GridObjects& as, const GridObjects& bs, const GridObjects& dsts,
                               ProductShape shape) {
    constexpr std::ptrdiff_t size = sizeof(T);
    const GridOperand &b = bs.first, &dst = dsts.first;
    if (std::max({shape.rows, shape.columns, shape.products}) > 64) return false;
    const std::int32_t products = shape.rows * shape.products * shape.columns;
    if (shape.columns < lanes16<T>) return products <= (isFloat<T> ? 480 : 256);
    if (dst.columnStep != size)
        return products <= (isFloat<T> ? 480 : shape.rows <= 5 || shape.columns > 6 ? 320 : 200);
    const bool listed = as.list != nullptr || bs.list != nullptr || dsts.list != nullptr;
    const bool touch = b.columnStep == size || (!isFloat<T> && b.rowStep == size);
    if (touch && !listed && shape.products <= heldProducts) return products <= 480;
    // Eight partial sums of a row are held for lists, too.
    if (!isFloat<T> && b.columnStep == size && shape.rows == 1 && shape.products == heldProducts) return true;
    if (products > (isFloat<T> ? 480 : 160)) return false;
    if (b.columnStep == size) return isSmallByRows<T>(dsts.list != nullptr, shape);
    return b.rowStep != size || isSmallByColumns<T>(as.first.columnStep == size, shape);
}

// Matrices whose rows touch are read along the products in the general path, if there are enough: floats four rows at a time,
// of doubles two rows whose sums differ. One matrix for all vectors is brought into lanes once.
template <class T>
[[gnu::noinline]] bool isSmall(const GridObjects& a, const GridOperand& dst, VectorProductShape shape) {
    constexpr std::ptrdiff_t size = sizeof(T);
    if (std::max(shape.rows, shape.products) > 64) return false;
    const std::int32_t products = shape.rows * shape.products;
    if (dst.columnStep != size && isFloat<T> && a.list != nullptr) return products <= 64;
    if (dst.columnStep != size || a.first.columnStep != size) return products <= (isFloat<T> ? 240 : 144);
    if (shape.products >= 8 && !a.isShared() && (isFloat<T> ? shape.rows > 1 : shape.rows == 2)) return false;
    if constexpr (isFloat<T>) {
        if (shape.rows <= 3 || shape.products <= 3) return products <= 64;
        if (a.isShared()) return products <= (shape.products < 8 ? 128 : 88);
        return shape.products < 8 && shape.rows <= 10;
    } else {
        return products <= (a.isShared() ? 128 : 96);
    }
}

template <class T>
[[gnu::noinline]] void smallProducts(const GridObjects& as, const GridObjects& bs, const GridObjects& dsts,
                                     ProductShape shape, const RowGroups& groups, std::int32_t count) {
    const std::ptrdiff_t rows = shape.rows, columns = shape.columns, products = shape.products;
    if constexpr (isFloat<T>) {
        const Factors at{distances(as.first), distances(bs.first), distances(dsts.first), rows, columns, products};
        const std::ptrdiff_t elements = rows * products + products * columns + rows * columns;
        // A single result isn't worth bringing together, but where that looks an object of a list up once for four elements.
        const bool listed = as.list != nullptr || bs.list != nullptr || dsts.list != nullptr;
        const bool isOne = rows * columns == 1 && (!listed || products < 4);
        if (count >= laneCount<T> && elements <= groupElements / 2 && !isOne && !runsAlongRows<T>(at) &&
            !runsAlongRows<T>(at.turned()))
            return productsInLanes<Lanes<T>>(as, bs, dsts, shape, groups, count);
    }
    productsInPlace<T>(as, bs, dsts, shape, groups, count);
}

// If objects are small. A vector is the only column of a matrix.
template <class T>
[[gnu::noinline]] bool multiplySmall(const GridObjects& as, const GridObjects& bs, const GridObjects& dsts,
                                     ProductShape shape, const RowSums& rows, std::int32_t count) {
    if (!isSmall<T>(as, bs, dsts, shape)) return false;
    smallProducts<T>(as, bs, dsts, shape, rowGroups(rows, shape.rows), count);
    return true;
}

template <class T>
[[gnu::noinline]] bool multiplySmall(const GridObjects& as, const GridObjects& xs, const GridObjects& dsts,
                                     VectorProductShape shape, const ElementSums& elements, std::int32_t count) {
    if (multiplyNarrow<T>(as, xs, dsts, shape, count)) return true;
    if (areFewLongRows<T>(shape) && multiplyDots<T>(as, xs, dsts, shape, elements, count)) return true;
    if (!isSmall<T>(as, dsts.first, shape)) return false;
    smallProducts<T>(as, asColumns(xs), asColumns(dsts), {shape.rows, shape.products, 1},
                     rowGroups(elements, shape.rows), count);
    return true;
}

}  // namespace korm::inline KORM_VARIANT::products
