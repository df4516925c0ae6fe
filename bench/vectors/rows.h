// Packed arrays of vectors and matrices, in half of a first-level cache and beyond all caches.
#pragma once

#include <algorithm>
#include <cmath>
#include <limits>
#include <memory>
#include <string>
#include <type_traits>
#include <utility>
#include <vector>

#include "../harness/eigen.h"
#include "../harness/operands.h"

#ifdef BENCH_GLM
#include <glm/glm.hpp>
#endif

namespace bench {

template <class T>
std::int32_t bytes(std::size_t elements) {
    return static_cast<std::int32_t>(elements * sizeof(T));
}

// Memory of one contender's operand, filled with numbers between 1 and 2.
template <class T>
class Numbers {
public:
    explicit Numbers(std::size_t count) : elements_(std::make_shared<std::vector<T>>(count)) {
        std::uint32_t state = 1;
        for (T& element : *elements_) {
            state = state * 1664525 + 1013904223;
            element = static_cast<T>(1 + (state >> 8) * 0x1p-24);
        }
    }
    T* data() const { return elements_->data(); }
    T& operator[](std::size_t i) const { return (*elements_)[i]; }

private:
    std::shared_ptr<std::vector<T>> elements_;
};

template <class T>
std::string packedName(const char* form, int n, const Place& place) {
    return std::string("packed/") + form + suffix<T> + "/" + std::to_string(n) + "/" + place.name;
}

// Vectors of a length known to the compiler, where that is small.
template <class T, int n>
auto vectorAt(T* data, std::size_t k) {
    using V = Eigen::Matrix<std::remove_const_t<T>, n <= 16 ? n : Eigen::Dynamic, 1>;
    return Eigen::Map<std::conditional_t<std::is_const_v<T>, const V, V>, Eigen::Unaligned>(data + k * n, n);
}

// Relative to sums of products of numbers between 1 and 2.
template <class T>
double tolerance(int products) {
    return static_cast<double>(std::numeric_limits<T>::epsilon()) * (products + 1);
}

// How many objects of so many elements a place holds.
template <class T>
std::size_t objectsIn(const Place& place, std::size_t elements) {
    return std::max<std::size_t>(place.bytes / sizeof(T) / elements, 1);
}

// Calls f with each number as a constant of the compiler, for both types and places.
template <int... numbers, class F>
void forEach(std::integer_sequence<int, numbers...>, const F& f) {
    for (const Place& place : {inCache, outOfCache}) {
        (f.template operator()<float, numbers>(place), ...);
        (f.template operator()<double, numbers>(place), ...);
    }
}

void measureReductions();
void measureCombinations();
void measureSweeps();

}  // namespace bench
