// The objects of two sides, one after the other.
#pragma once

#include <algorithm>

#include "move/side.h"

namespace korm::inline KORM_VARIANT::move {

// Objects of lists lie anywhere: the processor is told of them this many before they are due.
inline constexpr std::ptrdiff_t listAhead = 12;

inline void fetchAhead(const Side& side, std::ptrdiff_t k, std::ptrdiff_t count) {
    if (side.isList()) __builtin_prefetch(side.object(std::min(k + listAhead, count - 1)));
}

// Calls f with the places where each object begins. Of lists or standard arrays.
// The sides are copies: of what others can see, the compiler would take it that each store may change it.
template <class F>
[[gnu::always_inline]] inline void forObjects(Side from, Side to, std::ptrdiff_t count, const F& f) {
    if (!from.isList() && !to.isList()) {
        std::byte *source = from.base, *result = to.base;
        for (std::ptrdiff_t k = 0; k < count; ++k, source += from.objectStride, result += to.objectStride)
            f(result, source);
        return;
    }
    for (std::ptrdiff_t k = 0; k < count; ++k) {
        fetchAhead(from, k, count);
        fetchAhead(to, k, count);
        f(to.object(k), from.object(k));
    }
}

}  // namespace korm::inline KORM_VARIANT::move
