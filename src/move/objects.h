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

// The same, of which one at least is a list, where f is short: a loop for each kind of sides holds nothing else.
template <bool fromList, bool toList, class F>
[[gnu::noinline]] void forListedObjects(const Side& from, const Side& to, std::ptrdiff_t count, F f) {
    std::byte *source = from.base, *result = to.base;
    std::byte* const* const sources = from.entries;
    std::byte* const* const results = to.entries;
    const std::ptrdiff_t fromStep = fromList ? from.offset : from.objectStride;
    const std::ptrdiff_t toStep = toList ? to.offset : to.objectStride;
    std::ptrdiff_t k = 0;
    // The last ones are fetched when they are due: one loop for all is worth that.
    for (std::ptrdiff_t ahead = listAhead;; ahead = 0) {
        for (const std::ptrdiff_t end = count - ahead; k < end; ++k) {
            if constexpr (fromList) {
                __builtin_prefetch(sources[k + ahead] + fromStep);
                source = sources[k] + fromStep;
            }
            if constexpr (toList) {
                __builtin_prefetch(results[k + ahead] + toStep);
                result = results[k] + toStep;
            }
            f(result, source);
            if constexpr (!fromList) source += fromStep;
            if constexpr (!toList) result += toStep;
        }
        if (ahead == 0) return;
    }
}

template <class F>
[[gnu::always_inline]] inline void forListedObjects(const Side& from, const Side& to, std::ptrdiff_t count,
                                                    const F& f) {
    if (!to.isList()) forListedObjects<true, false>(from, to, count, f);
    else if (!from.isList()) forListedObjects<false, true>(from, to, count, f);
    else forListedObjects<true, true>(from, to, count, f);
}

}  // namespace korm::inline KORM_VARIANT::move
