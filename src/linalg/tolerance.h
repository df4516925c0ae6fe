// From where on a pivot or a determinant counts as zero.
#pragma once

#include <cstdint>
#include <limits>

#include "entry/variant.h"

namespace korm::inline KORM_VARIANT::linalg {

// 2 * n^3 as a 32-bit integer that wraps, times the smallest normal number.
template <class T>
inline T tolerance(std::int32_t n) {
    const auto u = static_cast<std::uint32_t>(n);
    return static_cast<T>(static_cast<std::int32_t>(u * 2 * (u * u))) * std::numeric_limits<T>::min();
}

}  // namespace korm::inline KORM_VARIANT::linalg
