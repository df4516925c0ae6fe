// Views of the operands that a kernel works on, for each width.
#pragma once

#include <cstddef>
#include <type_traits>

#include "entry/views.h"
#include "widths/kernels.h"

namespace korm::inline KORM_VARIANT {

using widths::Operands;

// Matrices of `height` rows and `width` columns, from the first of the operands on.
template <int element, class T>
auto matrices(T* base, const Operands<std::remove_const_t<T>>& on, int height, int width) {
    const std::ptrdiff_t row = width * element + on.gap, object = height * row;
    T* const origin = base + on.first * object;
    constexpr auto size = static_cast<std::ptrdiff_t>(sizeof(T));
    if constexpr (element == 1) return plainArray(origin, object * size, row * size);
    else return stridedArray(origin, object * size, row * size, element * size);
}

// The first matrix as the one that serves all.
template <int element, class T>
auto oneMatrix(T* base, const Operands<std::remove_const_t<T>>& on, int n) {
    constexpr auto size = static_cast<std::ptrdiff_t>(sizeof(T));
    const std::ptrdiff_t row = (n * element + on.gap) * size;
    if constexpr (element == 1) return plain(base, row);
    else return strided(base, row, element * size);
}

}  // namespace korm::inline KORM_VARIANT
