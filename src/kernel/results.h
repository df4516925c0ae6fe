// Reductions: a number for each object, in a row that has no strides in any layout.
#pragma once

#include <cstddef>

#include "kernel/scalar.h"
#include "kernel/vec.h"

namespace korm::inline KORM_VARIANT {

// What becomes of a sum. Roots are taken of as many sums at once as a vector has lanes: they cost what one does.
struct Sums {
    static constexpr bool roots = false;
    template <class S>
    [[gnu::always_inline]] static S of(S sum) {
        return sum;
    }
};
struct Roots {
    static constexpr bool roots = true;
    template <class S>
    [[gnu::always_inline]] static S of(S sum) {
        return squareRoot(sum);
    }
};

template <class T, class S>
[[gnu::always_inline]] inline void storeResult(T* dst, std::ptrdiff_t k, S result) {
    store(reinterpret_cast<std::byte*>(dst + k), result);
}

// sum(k) is that of object k. The empty statement keeps the compiler from making vectors of it, for which it would gather.
template <class Result, class T, class Sum>
[[gnu::always_inline]] inline void resultsOneByOne(const Sum& sum, T* dst, std::ptrdiff_t k, std::ptrdiff_t count) {
#pragma GCC unroll 1
    for (; k < count; ++k) {
        storeResult(dst, k, Result::of(sum(k)));
        asm volatile("");
    }
}

template <class Result, class T, class Sum>
[[gnu::always_inline]] inline void resultsOfEach(const Sum& sum, T* dst, std::ptrdiff_t count) {
    std::ptrdiff_t k = 0;
    if constexpr (Result::roots)
        for (; k + laneCount<T> <= count; k += laneCount<T>) {
            const auto sums = fromLanes<Lanes<T>>([&](int l) __attribute__((always_inline)) { return sum(k + l); });
            storeResult(dst, k, Result::of(sums));
        }
    resultsOneByOne<Result>(sum, dst, k, count);
}

// group(k) has in its lanes those of the objects from k on.
template <class Result, class T, class Group, class Sum>
[[gnu::always_inline]] inline void resultsOfGroups(const Group& group, const Sum& sum, T* dst, std::ptrdiff_t count) {
    std::ptrdiff_t k = 0;
    for (; k + laneCount<T> <= count; k += laneCount<T>) storeResult(dst, k, Result::of(group(k)));
    resultsOneByOne<Result>(sum, dst, k, count);
}

}  // namespace korm::inline KORM_VARIANT
