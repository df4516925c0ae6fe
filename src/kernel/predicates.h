// What the types of views, objects and counts tell when compiling.
#pragma once

#include <cstdint>
#include <type_traits>

#include "entry/views.h"

namespace korm::inline KORM_VARIANT {

// Is it the count of a form without an array operand?
template <class Count>
inline constexpr bool isOneObject = std::is_same_v<std::remove_cv_t<Count>, std::remove_cv_t<decltype(oneObject)>>;

// One operand for all objects.
template <class View>
inline constexpr bool isShared = View::objects == Objects::single;
template <class View>
inline constexpr bool isListed = View::objects == Objects::listed;

// Elements of a row touch, those of a column do, or no two need to.
template <class View>
inline constexpr bool isAdjacent = View::spacing == Spacing::rowAdjacent;
template <class View>
inline constexpr bool isTransposed = View::spacing == Spacing::columnAdjacent;
template <class View>
inline constexpr bool isScattered = View::spacing == Spacing::scattered;
template <class View>
inline constexpr bool isConstant = View::spacing == Spacing::constant;

}  // namespace korm::inline KORM_VARIANT
