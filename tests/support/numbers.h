// Random numbers for worked examples, and their comparison.
#pragma once

#include <cstddef>
#include <cstdint>
#include <cstring>
#include <vector>

#include "random.h"

namespace kormtest {

// Of either sign, with a magnitude from 0.5 to 1.5.
template <class T>
std::vector<T> numbers(std::size_t count, std::uint64_t seed) {
    Random random(seed);
    std::vector<T> result;
    for (std::size_t i = 0; i < count; ++i) {
        const auto value = static_cast<T>(static_cast<double>(random.next() >> 11) * 0x1p-53 + 0.5);
        result.push_back(random.chance(50) ? value : -value);
    }
    return result;
}

template <class T>
bool sameBits(T a, T b) {
    return std::memcmp(&a, &b, sizeof a) == 0;
}

}  // namespace kormtest
