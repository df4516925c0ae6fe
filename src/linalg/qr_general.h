// QR decomposition and solve of one object of any size.
#pragma once

#include <cstddef>
#include <cstdint>

#include "entry/views.h"
#include "kernel/predicates.h"
#include "kernel/vec.h"
#include "korm.h"
#include "linalg/qr_reflect.h"
#include "linalg/rows.h"

namespace korm::inline KORM_VARIANT::linalg {

// Scratch needs no alignment, so its elements are read by load().
template <class T>
[[gnu::always_inline]] inline std::byte* scratchAt(T* buffer, std::ptrdiff_t i) {
    return reinterpret_cast<std::byte*>(buffer + i);
}

// `buffer` holds the reflector of the current column.
template <class T, class A, class D>
std::int32_t qrGeneral(const A& source, const D& result, T* buffer, std::ptrdiff_t width, std::ptrdiff_t height) {
    // Behind a reference a store might change them.
    const A src = source;
    const D dst = result;
    constexpr bool inEights = isAdjacent<D>;
    const auto place = [buffer](std::ptrdiff_t i) { return scratchAt(buffer, i); };
    const auto v = [&](std::ptrdiff_t i) { return load<T>(place(i)); };
    for (std::ptrdiff_t i = 0; i < height; ++i) copyRow<T>(src, dst, i, width);
    for (std::ptrdiff_t j = 0; j < reflectionsOf(width, height); ++j) {
        const auto columnAt = [&]<class S>(S, std::ptrdiff_t c) {
            return [&dst, c](std::ptrdiff_t i) { return load<S>(dst.address(i, c)); };
        };
        const auto column = columnAt(T(), j);
        const auto storeReflector = [&](std::ptrdiff_t i, T value) { store(place(i), value); };
        if (!makeReflector<inEights, T>(column, storeReflector, j, height)) return korStatusDivideByZero;
        const T beta = reflectorScale<inEights, T>(v, j, height);
        const auto addTo = []<class S>(std::byte* to, S value) { store(to, load<S>(to) + value); };
        addTo(dst.address(j, j), reflection<inEights>(column, v, beta, j, height));
        // Adjacent columns go in lanes.
        const auto reflectFrom = [&]<class S>(S, std::ptrdiff_t c) {
            const auto everywhere = [&](std::ptrdiff_t i) { return all<S>(v(i)); };
            const S t = reflection<inEights>(columnAt(S(), c), everywhere, all<S>(beta), j, height);
            addTo(dst.address(j, c), t);
            for (std::ptrdiff_t i = j + 1; i < height; ++i) addTo(dst.address(i, c), everywhere(i) * t);
        };
        std::ptrdiff_t c = j + 1;
        if constexpr (isAdjacent<D>)
            for (; c + laneCount<T> <= width; c += laneCount<T>) reflectFrom(Lanes<T>(), c);
        for (; c < width; ++c) reflectFrom(T(), c);
        for (std::ptrdiff_t i = j + 1; i < height; ++i) store(dst.address(i, j), v(i));
    }
    return korStatusOk;
}

// `buffer` holds the right-hand side and takes the reflections, then the solution from its end upwards.
template <class T, class A, class B, class D>
void qrSolveGeneral(const A& factors, const B& side, const D& solution, T* buffer, std::ptrdiff_t width,
                    std::ptrdiff_t height) {
    // Behind a reference a store might change them.
    const A matrix = factors;
    const B src = side;
    const D dst = solution;
    constexpr bool inEights = isAdjacent<A>;
    const auto place = [buffer](std::ptrdiff_t i) { return scratchAt(buffer, i); };
    const auto work = [&](std::ptrdiff_t i) { return load<T>(place(i)); };
    for (std::ptrdiff_t i = 0; i < height; ++i) store(place(i), load<T>(src.address(0, i)));
    for (std::ptrdiff_t j = 0; j < reflectionsOf(width, height); ++j) {
        const auto v = [&](std::ptrdiff_t i) { return load<T>(matrix.address(i, j)); };
        const T t = reflection<inEights>(work, v, reflectorScale<inEights, T>(v, j, height), j, height);
        store(place(j), work(j) + t);
        for (std::ptrdiff_t i = j + 1; i < height; ++i) store(place(i), work(i) + v(i) * t);
    }
    for (std::ptrdiff_t k = width - 1; k >= 0; --k) {
        T x = work(k);
        if (k < width - 1)
            x = x - sumOnto<inEights>(T(), k + 1, width,
                                      [&](std::ptrdiff_t j) { return load<T>(matrix.address(k, j)) * work(j); });
        store(place(k), x / load<T>(matrix.address(k, k)));
    }
    for (std::ptrdiff_t k = 0; k < width; ++k) store(dst.address(0, k), work(k));
}

}  // namespace korm::inline KORM_VARIANT::linalg
