// Which rows sums, differences and scaling have: for each form its sizes, layouts and places, and who competes.
#pragma once

#include <emmintrin.h>

#include "eigen.h"

namespace bench {

// What the memory gives: dst[i] = src[i], 16 bytes at a time.
[[gnu::noinline]] inline void copyLoop(const void* source, void* target, std::size_t bytes) {
    const auto move = [&](std::size_t at) {
        _mm_storeu_si128(reinterpret_cast<__m128i*>(static_cast<char*>(target) + at),
                         _mm_loadu_si128(reinterpret_cast<const __m128i*>(static_cast<const char*>(source) + at)));
    };
    std::size_t at = 0;
    for (; at + 64 <= bytes; at += 64) {
        for (std::size_t i = 0; i < 64; i += 16) move(at + i);
        asm volatile("");  // keeps the compiler from calling memcpy, which would use larger registers
    }
    for (; at + 16 <= bytes; at += 16) move(at);
}

template <class Form, Layout layout, class T, int rows, int columns>
void sumRow(const std::string& section, const std::string& placeName, const Place& place) {
    constexpr Shape shape = Form::shape;
    constexpr bool isPacked = layout == Layout::packed, isPointers = entryOf(layout) == Entry::pointer;
    const std::string name =
        section + "/" + std::string(Form::name) + suffix<T> + "/" + std::to_string(columns) + "/" + placeName;
    if (!isWanted(name)) return;
    const Work<T> work = makeWork<shape, T>(layout, rows, 1, columns, place.bytes);
    Row row(name, work.count);
    row.results(work.result.base, work.result.span, 0);
    row.korm(kormCall<Form, layout>(work));
    const auto loop = [=]<bool alongStreams> {
        return [=] { plainLoop<shape, layout, alongStreams>(work, Known<rows>(), Known<1>(), Known<columns>()); };
    };
    row.peer("plain loop", loop.template operator()<false>());
    if constexpr (isPointers && shape.isArray()) row.peer("plain loop along streams", loop.template operator()<true>());
    if constexpr (!isPointers) row.peer("Eigen, fixed sizes", [=] { eigenFixed<shape, layout, rows, columns>(work); });
    if constexpr (isPacked && shape.isArray() && !shape.transposes())
        row.peer("Eigen, flat", [=] { eigenFlat<shape, rows * columns>(work); });
    // One run over all operands: every operand has objects, or is one constant for all.
    if constexpr (isPacked && !shape.transposes() && shape.firstIsArray == shape.isArray() &&
                  (shape.secondKind == Kind::constant) != (shape.secondIsArray || !shape.isArray()) &&
                  (shape.isArray() || columns >= 1000)) {
        const std::size_t bytes = work.result.span * sizeof(T);
        row.control("copying loop", [=] { copyLoop(work.first.base, work.result.base, bytes); });
        row.fact("bytes", static_cast<double>(bytes * (shape.secondKind == Kind::constant ? 2 : 3)) / work.count);
        row.fact("copied", static_cast<double>(bytes * 2) / work.count);
    }
    row.measure();
}

template <class Form, Layout layout, int... sizes>
void sumRows(const Place& place) {
    constexpr bool isVector = Form::shape.isVector(), isArray = Form::shape.isArray();
    const std::string way(nameOf(layout)), section = isArray ? way : "single", placeName = isArray ? place.name : way;
    (sumRow < Form, layout, float, isVector ? 1 : sizes, sizes > (section, placeName, place), ...);
    (sumRow < Form, layout, double, isVector ? 1 : sizes, sizes > (section, placeName, place), ...);
}

template <class Form, Layout... layouts>
void sumRowsOfLayouts() {
    if constexpr (Form::shape.isVector()) (sumRows<Form, layouts, 3, 4, 1000>(inCache), ...);
    else (sumRows<Form, layouts, 3, 4, 10>(inCache), ...);
}

// All layouts are measured for forms that stand for the rest, in cache and out of it, where every kind of kernel waits for
// memory. Sweeps have all small sizes.
template <class Form, bool standsForTheRest = false>
void sumForm() {
    using enum Layout;
    if constexpr (Form::shape.isVector()) sumRows<Form, packed, 3, 4, 5, 6, 16, 1000>(inCache);
    else sumRows<Form, packed, 3, 4, 5, 6, 10>(inCache);
    if constexpr (!Form::shape.isArray()) {
        sumRowsOfLayouts<Form, padded, strided, pointers>();
    } else if constexpr (standsForTheRest) {
        sumRowsOfLayouts<Form, padded, strided, list, stridedList, streams, pointers, stridedPointers>();
        const auto out = []<Layout... layouts>() { (sumRows<Form, layouts, 4>(outOfCache), ...); };
        out.template operator()<packed, padded, strided, list, stridedList, streams, pointers, stridedPointers>();
    } else {
        sumRowsOfLayouts<Form, strided, list, streams>();
        sumRows<Form, packed, 4>(outOfCache);
    }
}

// A file for each.
void measureMatrixSums();
void measureTransposedSums();
void measureVectorSums();
void measureConstants();

}  // namespace bench
