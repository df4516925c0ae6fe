// Matrices that have an inverse and pivots that can't be foretold.
#pragma once

#include <algorithm>
#include <cstdint>
#include <cstdlib>
#include <memory>
#include <string>
#include <vector>

namespace linalgbench {

// Of the alignment that an allocator for vectors would give.
template <class T>
class Block {
public:
    explicit Block(std::size_t size)
        : data_(static_cast<T*>(std::aligned_alloc(64, (size * sizeof(T) + 63) / 64 * 64)), std::free) {
        std::fill_n(data_.get(), size, T());
    }
    T* data() const { return data_.get(); }
    T& operator[](std::size_t i) const { return data_.get()[i]; }

private:
    std::shared_ptr<T> data_;
};

class Numbers {
public:
    std::uint32_t next() {
        state_ = state_ * 6364136223846793005u + 1442695040888963407u;
        return static_cast<std::uint32_t>(state_ >> 33);
    }
    double between(double low, double high) { return low + (high - low) * next() / 2147483648.0; }

private:
    std::uint64_t state_ = 0x9e3779b97f4a7c15u;
};

// Elements below 1 in size and a heavier diagonal, so that no determinant comes near zero; then the rows are shuffled.
template <class T>
Block<T> shuffledMatrices(std::size_t order, std::size_t count) {
    Numbers numbers;
    Block<T> block(order * order * count);
    std::vector<std::size_t> rows(order);
    for (std::size_t k = 0; k < count; ++k) {
        for (std::size_t i = 0; i < order; ++i) rows[i] = i;
        for (std::size_t i = order; i > 1; --i) std::swap(rows[i - 1], rows[numbers.next() % i]);
        for (std::size_t i = 0; i < order; ++i) {
            for (std::size_t j = 0; j < order; ++j) {
                T& element = block[(k * order + rows[i]) * order + j];
                element = static_cast<T>(numbers.between(-1, 1));
                // As heavy as half a row, or large matrices would be too ill conditioned to compare results.
                const T weight = static_cast<T>(2 + order / 4);
                if (i == j) element += element < 0 ? -weight : weight;
            }
        }
    }
    return block;
}

template <class T>
Block<T> numbersBelowOne(std::size_t size) {
    Numbers numbers;
    Block<T> block(size);
    for (std::size_t i = 0; i < size; ++i) block[i] = static_cast<T>(numbers.between(-1, 1));
    return block;
}

struct Place {
    const char* name;
    std::size_t bytes;  // of all matrices that are read or written
    std::size_t mostObjects;
};
// Half of a first-level cache; many objects, so that no branch is learnt, in the outer caches; and beyond them.
inline constexpr Place places[] = {{"cache", 24 << 10, 1u << 20}, {"shuffled", 48u << 20, 100000}};

inline std::size_t objectsIn(const Place& place, std::size_t order, std::size_t elementSize) {
    // A dear object need not be there a hundred thousand times: its own branches are as many.
    const std::size_t most = order > 8 ? 4000 : place.mostObjects;
    return std::clamp<std::size_t>(place.bytes / (2 * order * order * elementSize), 4, most);
}

template <class T>
std::string rowName(const char* form, std::size_t order, const Place& place) {
    return std::string(form) + (sizeof(T) == 4 ? "_32f" : "_64f") + "/" + std::to_string(order) + "/" + place.name;
}

}  // namespace linalgbench
