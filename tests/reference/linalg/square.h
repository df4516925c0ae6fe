// A square matrix in the tests' own memory, and what is common to the references of this folder.
#pragma once

#include <cfloat>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <limits>
#include <numeric>
#include <utility>
#include <vector>

namespace kormtest {

// Results are compared to the bit: no wider intermediate results.
static_assert(FLT_EVAL_METHOD == 0);

template <class T>
class Square {
public:
    explicit Square(std::int32_t n) : n_(n), elements_(static_cast<std::size_t>(n) * static_cast<std::size_t>(n)) {}

    std::int32_t order() const { return n_; }
    T& operator()(std::int32_t i, std::int32_t j) { return elements_[at(i, j)]; }
    const T& operator()(std::int32_t i, std::int32_t j) const { return elements_[at(i, j)]; }
    T* data() { return elements_.data(); }
    const T* data() const { return elements_.data(); }
    std::size_t size() const { return elements_.size(); }

    // Without row i and column j.
    Square minor(std::int32_t i, std::int32_t j) const {
        Square result(n_ - 1);
        for (std::int32_t r = 0; r < n_ - 1; ++r)
            for (std::int32_t c = 0; c < n_ - 1; ++c) result(r, c) = (*this)(r < i ? r : r + 1, c < j ? c : c + 1);
        return result;
    }

private:
    std::size_t at(std::int32_t i, std::int32_t j) const {
        return static_cast<std::size_t>(i) * static_cast<std::size_t>(n_) + static_cast<std::size_t>(j);
    }
    std::int32_t n_;
    std::vector<T> elements_;
};

// Row numbers in the order in which rows become pivot rows.
class Positions {
public:
    explicit Positions(std::int32_t n) : rows_(static_cast<std::size_t>(n)) {
        std::iota(rows_.begin(), rows_.end(), 0);
    }
    std::int32_t operator[](std::int32_t k) const { return rows_[static_cast<std::size_t>(k)]; }
    void exchange(std::int32_t a, std::int32_t b) {
        std::swap(rows_[static_cast<std::size_t>(a)], rows_[static_cast<std::size_t>(b)]);
    }
    const std::vector<std::int32_t>& rows() const { return rows_; }

private:
    std::vector<std::int32_t> rows_;
};

// The position with the largest absolute value in column k among positions k and up; the lowest keeps a tie, and
// a NaN never wins.
template <class T>
std::int32_t pivotPosition(const Square<T>& a, const Positions& positions, std::int32_t k) {
    std::int32_t bestPosition = k;
    T best = std::fabs(a(positions[k], k));
    for (std::int32_t i = k + 1; i < a.order(); ++i) {
        const T candidate = std::fabs(a(positions[i], k));
        if (candidate > best) {
            best = candidate;
            bestPosition = i;
        }
    }
    return bestPosition;
}

// Inversion and determinant scale the smallest normal number with the order: 2 n^3, the product in 32 bits.
template <class T>
T singularScale(std::int32_t n) {
    const auto u = static_cast<std::uint32_t>(n);
    return static_cast<T>(static_cast<std::int32_t>(u * 2 * (u * u))) * std::numeric_limits<T>::min();
}

}  // namespace kormtest
