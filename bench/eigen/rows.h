// What rows of eigenproblems share: places, names and peers of linear algebra, and random elements.
#pragma once

#include "../linalg/rows.h"

namespace bench {

// Numbers from -1 to 1, the same in every run.
template <class T>
class RandomNumbers {
public:
    T operator()() {
        state_ = state_ * 6364136223846793005U + 1442695040888963407U;
        return static_cast<T>(static_cast<std::uint32_t>(state_ >> 33)) / T(1 << 30) - 1;
    }

private:
    std::uint64_t state_ = 0x9e3779b97f4a7c15U;
};

// A file for each.
void measureSymmetric();
void measureGeneral();

}  // namespace bench
