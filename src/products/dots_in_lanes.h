// Arrays of matrices of few rows times vectors. Products of neighbours are vectors of one object; what they add up to is turned,
// so that each lane has the sum of an object, and what is left is added there.
#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>

#include "kernel/groups.h"
#include "kernel/unroll.h"
#include "kernel/vec.h"
#include "products/elements.h"
#include "products/operands.h"
#include "products/sums.h"

namespace korm::inline KORM_VARIANT::products {

// One row of every object; elements of it and of the vector touch. There are as many products as a vector has lanes, at least.
// The last group of objects ends with the last one.
template <class T, int partials>
[[gnu::noinline]] void addDotsInLanes(const SteppedObjects& all, std::ptrdiff_t products, std::ptrdiff_t block) {
    using V = Vec16<T>;
    constexpr int lanes = lanes16<T>;
    constexpr int vectors = std::max(partials / lanes, 1);
    constexpr auto size = static_cast<std::ptrdiff_t>(sizeof(T));
    const SteppedObjects objects = all;
    const std::ptrdiff_t inBlocks = partials == 1 ? 0 : products - products % block;
    for (std::ptrdiff_t next = 0; next < objects.count; next += lanes) {
        const std::ptrdiff_t k = std::min(next, objects.count - lanes);
        const std::byte *const a = objects.a(k), *const x = objects.b(k);
        const auto product = [&](auto l, std::ptrdiff_t at) __attribute__((always_inline)) {
            return load<V>(a + l * objects.leftStep + at * size) * load<V>(x + l * objects.rightStep + at * size);
        };
        V sum{};
        std::ptrdiff_t at = 0;
        if (inBlocks > 0) {
            // What partial sums start from is added at the end.
            V partial[lanes][vectors], turned[lanes];
            const auto forEach = [&](const auto& f) __attribute__((always_inline)) {
                unrolled<lanes * vectors>([&](auto e) __attribute__((always_inline)) {
                    constexpr int l = e / vectors, v = e % vectors;
                    f(partial[l][v], product(Int<l>{}, at + v * lanes));
                });
            };
            forEach([](V & to, V value) __attribute__((always_inline)) { to = value; });
            for (at = vectors * lanes; at < inBlocks; at += vectors * lanes)
                forEach([](V & to, V value) __attribute__((always_inline)) { to += value; });
            unrolled<lanes>([&](auto l) __attribute__((always_inline)) {
                if constexpr (vectors == 4)
                    turned[l] = (partial[l][0] + partial[l][1]) + (partial[l][2] + partial[l][3]);
                else if constexpr (vectors == 2) turned[l] = partial[l][0] + partial[l][1];
                else turned[l] = partial[l][0];
            });
            transpose(turned);
            sum = zeroStarted(joined<T>(turned));
        }
        V here[lanes];
        const auto readProducts = [&](std::ptrdiff_t from) __attribute__((always_inline)) {
            unrolled<lanes>([&](auto l) __attribute__((always_inline)) { here[l] = product(l, from); });
            transpose(here);
        };
        for (; at <= products - lanes; at += lanes) {
            readProducts(at);
            unrolled<lanes>([&](auto l) __attribute__((always_inline)) { sum += here[l]; });
        }
        if (const std::ptrdiff_t left = products - at; left > 0) {
            readProducts(products - lanes);
            unrolled<lanes - 1>([&](auto l) __attribute__((always_inline)) {
                if (left >= lanes - 1 - l) sum += here[l + 1];
            });
        }
        std::byte* const to = objects.to(k);
        if (objects.resultStep == size) store(to, sum);
        else
            unrolled<lanes>([&](auto l)
                                __attribute__((always_inline)) { store(to + l * objects.resultStep, sum[l.value]); });
    }
}

// By maps of all shapes up to 16 by 16: floats of 3 to 7 rows take 0.6 to 0.9 of the time that they take four rows at a time.
template <class T>
[[gnu::always_inline]] inline bool areFewLongRows(VectorProductShape shape) {
    return shape.rows <= 2 || (shape.products >= 8 && shape.rows <= (isFloat<T> ? 7 : 3));
}

// If elements of the rows and of the vectors touch and their sums are those of lanes.
template <class T>
[[gnu::noinline]] bool multiplyDots(const GridObjects& as, const GridObjects& xs, const GridObjects& dsts,
                                    VectorProductShape shape, const ElementSums& elements, std::int32_t count) {
    constexpr auto size = static_cast<std::ptrdiff_t>(sizeof(T));
    if (shape.products < lanes16<T> || shape.products > 64 || count < lanes16<T> || as.first.columnStep != size ||
        xs.first.columnStep != size || as.list != nullptr || xs.list != nullptr || dsts.list != nullptr)
        return false;
    const RowGroups groups = rowGroups(elements, shape.rows);
    const auto sumOfGroup = [&](int g) { return sumOf(groups.of[g].sum, shape.products); };
    for (int g = 0; g < 3; ++g)
        if (const int partials = sumOfGroup(g).partials; partials > 1 && partials < lanes16<T>) return false;
    std::int32_t i = 0;
    for (int g = 0; g < 3; ++g) {
        const Sum sum = sumOfGroup(g);
        for (const std::int32_t end = i + groups.of[g].rows; i < end; ++i) {
            const SteppedObjects row{
                as.first.address(i, 0), xs.first.origin, target(dsts.first, 0, i), as.step, xs.step, dsts.step, count};
            if (sum.partials == 8) addDotsInLanes<T, 8>(row, shape.products, sum.block);
            else if (sum.partials == 4) addDotsInLanes<T, 4>(row, shape.products, sum.block);
            else if (sum.partials == 2) addDotsInLanes<T, 2>(row, shape.products, sum.block);
            else addDotsInLanes<T, 1>(row, shape.products, sum.block);
        }
    }
    return true;
}

}  // namespace korm::inline KORM_VARIANT::products
