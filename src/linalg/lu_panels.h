// Elimination of large matrices in panels of columns: what lies beyond the cache is read once for a panel, not for each column.
// Every element has the same products subtracted in the same order as without.
#pragma once

#include <algorithm>
#include <cstddef>
#include <cstring>

#include "kernel/scalar.h"
#include "kernel/unroll.h"
#include "kernel/vec.h"

namespace korm::inline KORM_VARIANT::linalg {

inline constexpr std::ptrdiff_t panelWidth = 32;
// From this order on.
inline constexpr std::ptrdiff_t leastInPanels = 64;
// So many columns behind a panel go together: those of its rows fill half of a first-level cache.
template <class T>
inline constexpr std::ptrdiff_t columnsAtOnce = 512 / sizeof(T);

// The rows of a panel, finished, `columnsAtOnce` elements each.
template <class T>
struct PanelRows {
    alignas(16) T elements[panelWidth * columnsAtOnce<T>];

    T* row(std::ptrdiff_t p) { return elements + p * columnsAtOnce<T>; }
    const T* row(std::ptrdiff_t p) const { return elements + p * columnsAtOnce<T>; }
};

// Rows that have products subtracted: where their elements and their multipliers are.
template <int rows>
struct PanelTargets {
    std::byte* elements[rows];
    const std::byte* multipliers[rows];
};

// From `vectors` vectors V of each row at column j, those of the first `steps` rows of the panel times the multipliers.
template <int rows, int vectors, class V, class T>
[[gnu::always_inline]] inline void subtractFromTile(const PanelTargets<rows>& to, const PanelRows<T>& panel,
                                                    std::ptrdiff_t steps, std::ptrdiff_t j) {
    constexpr auto size = static_cast<std::ptrdiff_t>(sizeof(T));
    const auto each = [](const auto& f) __attribute__((always_inline)) {
        unrolled<rows>([&](auto r) __attribute__((always_inline)) {
            unrolled<vectors>([&](auto v) __attribute__((always_inline)) { f(r, v); });
        });
    };
    const auto place = [&](auto r, auto v) __attribute__((always_inline)) {
        return to.elements[r] + (j + v * lanesOf<V>)*size;
    };
    V x[rows][vectors];
    each([&](auto r, auto v) __attribute__((always_inline)) { x[r][v] = load<V>(place(r, v)); });
    for (std::ptrdiff_t p = 0; p < steps; ++p) {
        const auto* const row = reinterpret_cast<const std::byte*>(panel.row(p) + j);
        each([&](auto r, auto v) __attribute__((always_inline)) {
            const V multiplier = all<V>(load<T>(to.multipliers[r] + p * size));
            x[r][v] = x[r][v] - load<V>(row + v * lanesOf<V> * size) * multiplier;
        });
    }
    each([&](auto r, auto v) __attribute__((always_inline)) { store(place(r, v), x[r][v]); });
}

template <int rows, class T>
[[gnu::noinline]] void subtractFromRows(const PanelTargets<rows>& to, const PanelRows<T>& panel, std::ptrdiff_t steps,
                                        std::ptrdiff_t width) {
    using V = Lanes<T>;
    constexpr int vectors = 4;
    std::ptrdiff_t j = 0;
    for (; j + vectors * lanesOf<V> <= width; j += vectors * lanesOf<V>)
        subtractFromTile<rows, vectors, V>(to, panel, steps, j);
    for (; j + lanesOf<V> <= width; j += lanesOf<V>) subtractFromTile<rows, 1, V>(to, panel, steps, j);
    for (; j < width; ++j) subtractFromTile<rows, 1, T>(to, panel, steps, j);
}

// Columns from `column` on: the panel begins at column `first`, and its steps up to `finished` - 1 are done. `row(i)` is the
// row at position i.
template <class T, class D, class Row>
[[gnu::noinline]] void subtractPanel(const D& matrix, const Row& row, std::ptrdiff_t first, std::ptrdiff_t finished,
                                     std::ptrdiff_t column, std::ptrdiff_t n) {
    PanelRows<T> panel;
    const auto elementsOf = [&](std::ptrdiff_t i) { return matrix.address(row(i), column); };
    const auto multipliersOf = [&](std::ptrdiff_t i) { return matrix.address(row(i), first); };
    for (; column < n; column += columnsAtOnce<T>) {
        const std::ptrdiff_t width = std::min(n - column, columnsAtOnce<T>);
        std::ptrdiff_t i = first;
        for (; i < finished; ++i) {
            std::byte* const elements = elementsOf(i);
            subtractFromRows<1>({{elements}, {multipliersOf(i)}}, panel, i - first, width);
            std::memcpy(panel.row(i - first), elements, static_cast<std::size_t>(width) * sizeof(T));
        }
        for (; i + 2 <= n; i += 2)
            subtractFromRows<2>({{elementsOf(i), elementsOf(i + 1)}, {multipliersOf(i), multipliersOf(i + 1)}}, panel,
                                finished - first, width);
        if (i < n) subtractFromRows<1>({{elementsOf(i)}, {multipliersOf(i)}}, panel, finished - first, width);
    }
}

}  // namespace korm::inline KORM_VARIANT::linalg
