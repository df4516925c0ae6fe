// Square matrices and vectors of known size on their way between memory and locals.
//
// For one object a local is an array of elements; for lanes it is an array of vectors with one object in
// each lane, filled from objects that lie anywhere.
#pragma once

#include <cstddef>
#include <cstdint>
#include <type_traits>
#include <utility>

#include "entry/lanes.h"
#include "entry/views.h"
#include "linalg/scalars.h"

namespace korm {

template <class Count>
inline constexpr bool isOne = std::is_same_v<Count, std::remove_cv_t<decltype(oneObject)>>;

template <class View>
inline constexpr bool isPlain = View::spacing == Spacing::rowAdjacent;

template <class Object>
inline constexpr bool isScattered = false;
template <class T, bool transposed>
inline constexpr bool isScattered<Scatter<T, transposed>> = true;

// --- One object ---------------------------------------------------------------------------------

template <int n, class T, class Object>
[[gnu::always_inline]] inline void readSquare(const Object& from, T (&a)[n][n]) {
#pragma GCC unroll 6
    for (int i = 0; i < n; ++i)
#pragma GCC unroll 6
        for (int j = 0; j < n; ++j) a[i][j] = load<T>(from.address(i, j));
}

template <int n, class T, class Object>
[[gnu::always_inline]] inline void readRow(const Object& from, std::ptrdiff_t i, T (&row)[n]) {
#pragma GCC unroll 6
    for (int j = 0; j < n; ++j) row[j] = load<T>(from.address(i, j));
}

template <int n, class T, class Object>
[[gnu::always_inline]] inline void writeRow(const Object& to, std::ptrdiff_t i, const T (&row)[n]) {
#pragma GCC unroll 6
    for (int j = 0; j < n; ++j) store(to.address(i, j), row[j]);
}

template <int n, class T, class Object>
[[gnu::always_inline]] inline void writeSquare(const Object& to, const T (&a)[n][n]) {
#pragma GCC unroll 6
    for (int i = 0; i < n; ++i) writeRow<n>(to, i, a[i]);
}

}  // namespace korm
