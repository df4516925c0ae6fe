// Objects of order 1 that follow each other without a gap: a vector of them is one load.
#pragma once

#include <cstddef>

#include "entry/views.h"
#include "kernel/predicates.h"
#include "kernel/scalar.h"
#include "kernel/streams.h"
#include "kernel/vec.h"

namespace korm::inline KORM_VARIANT::linalg {

// result(k) = compute(operands(k)...) for objects of one element, a vector of them at a time where all touch. Returns how many
// are done.
template <class T, class Compute, class D, class... Operands>
[[gnu::always_inline]] inline std::ptrdiff_t computeElements(std::ptrdiff_t count, const Compute& compute,
                                                             const D& result, const Operands&... operands) {
    using S = Lanes<T>;
    if (!areStreams(result, operands...)) return 0;
    const auto at = [](const auto& view, std::ptrdiff_t k) __attribute__((always_inline)) {
        return view.at(0).address(0, 0) + k * static_cast<std::ptrdiff_t>(sizeof(T));
    };
    const auto read = [&]<class View>(const View& view, std::ptrdiff_t k) __attribute__((always_inline)) {
        if constexpr (isShared<View>) return all<S>(load<T>(at(view, 0)));
        else return load<S>(at(view, k));
    };
    std::ptrdiff_t k = 0;
    for (; k + laneCount<T> <= count; k += laneCount<T>) store(at(result, k), compute(read(operands, k)...));
    return k;
}

}  // namespace korm::inline KORM_VARIANT::linalg
