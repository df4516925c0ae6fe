// May elements move in another order than the plain loop's? Its outcome stays the same if no element of the result lies
// on a source, on an entry of a list or table, or on another element of the result.
#pragma once

#include "move/side.h"

namespace korm::inline KORM_VARIANT::move {

// Do the entries of lists and tables stay as they are while elements of the result are written?
bool entriesStay(const Side& from, const Side& to, const Extent& extent, std::ptrdiff_t size);

// How the objects of a list are written: each as a whole, in the order of the list, so that they may meet one another; or
// in no such order.
enum class Listed : std::uint8_t { inOrder, inParts };

// Says no where finding out would take too long.
bool mayReorder(const Side& from, const Side& to, const Extent& extent, std::ptrdiff_t size, Listed listed);

}  // namespace korm::inline KORM_VARIANT::move
