// The status values, typed here again so that a wrong value in the public header is noticed.
#pragma once

#include <cstdint>

namespace kormtest::status {

inline constexpr std::int32_t ok = 0;
inline constexpr std::int32_t nearSingularBlock = -2;
inline constexpr std::int32_t badSize = -6;
inline constexpr std::int32_t nullPointer = -8;
inline constexpr std::int32_t divideByZero = -10;
inline constexpr std::int32_t notPositiveDefinite = -179;
inline constexpr std::int32_t badStride = -182;
inline constexpr std::int32_t singular = -195;
inline constexpr std::int32_t badOffset = -202;
inline constexpr std::int32_t badCount = -203;
inline constexpr std::int32_t sizeMismatch = -204;
inline constexpr std::int32_t noConvergence = -205;

}  // namespace kormtest::status
