// Minors of square matrices, each computed once and shared, over any scalar.
//
// A set of minors has a fixed set of columns (or rows) and runs over all choices of as many of the other kind;
// it is an array indexed by the choice, one bit for each member. From a set over r columns comes one over
// r + 1 by expansion along the new column.
#pragma once

#include <bit>
#include <cstddef>
#include <utility>

namespace korm::inline KORM_VARIANT::linalg {

// --- Choices as sets of bits --------------------------------------------------------------------

inline constexpr int bitCount(unsigned choice) { return std::popcount(choice); }
inline constexpr int firstOf(unsigned choice) { return std::countr_zero(choice); }
inline constexpr int lastOf(unsigned choice) { return static_cast<int>(std::bit_width(choice)) - 1; }

// The number of choices of `size` out of n, and the which-th of them.
template <int n>
inline constexpr std::size_t choices(int size) {
    std::size_t number = 0;
    for (unsigned choice = 0; choice < 1U << n; ++choice) number += bitCount(choice) == size;
    return number;
}

template <int n>
inline constexpr unsigned nthChoice(int size, std::size_t which) {
    for (unsigned choice = 0; choice < 1U << n; ++choice)
        if (bitCount(choice) == size && which-- == 0) return choice;
    return 0;
}

// Calls f with each choice as a constant.
template <int n, int size, class F>
[[gnu::always_inline]] inline void forEachChoice(const F& f) {
    [&]<std::size_t... which>(std::index_sequence<which...>) __attribute__((always_inline)) {
        (f(std::integral_constant<unsigned, nthChoice<n>(size, which)>{}), ...);
    }
    (std::make_index_sequence<choices<n>(size)>{});
}

// --- Expansion ----------------------------------------------------------------------------------

// Where the line that is expanded along lies among the others: the sign of its terms follows from that.
enum class Line { first, last };

// One minor, by expansion along `line`: terms with alternating signs, added from left to right, the one that has
// the positive sign for sure first: that of the first element along a first line, of the last along a last line.
template <Line place, unsigned choice, int n, class S>
[[gnu::always_inline]] inline S expanded(const S (&line)[n], const S (&smaller)[1 << n]) {
    S sum = S();
    bool positive = true, started = false;
#pragma GCC unroll 6
    for (int at = 0; at < n; ++at) {
        const int i = place == Line::first ? at : n - 1 - at;
        if ((choice >> i & 1) == 0) continue;
        const S term = line[i] * smaller[choice ^ 1U << i];
        if (!started) sum = term;
        else if (positive) sum = sum + term;
        else sum = sum - term;
        started = true;
        positive = !positive;
    }
    return sum;
}

// All minors of `size` lines from those of size - 1.
template <Line place, int size, int n, class S>
[[gnu::always_inline]] inline void expandAll(const S (&line)[n], const S (&smaller)[1 << n], S (&larger)[1 << n]) {
    forEachChoice<n, size>([&](auto choice) __attribute__((always_inline)) {
        larger[choice] = expanded<place, choice>(line, smaller);
    });
}

// Minors of one line are its elements.
template <int n, class S>
[[gnu::always_inline]] inline void startMinors(const S (&line)[n], S (&minors)[1 << n]) {
#pragma GCC unroll 6
    for (int i = 0; i < n; ++i) minors[1 << i] = line[i];
}

}  // namespace korm::inline KORM_VARIANT::linalg
