// The object-per-lane kernels as one processor variant has them, behind one type of function, so that a program can hold
// variants with vectors of other widths against each other.
#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

namespace korm::widths {

// Objects `first` to `first` + `count` - 1 of every operand of a kernel. Elements of a row are `element` elements apart,
// behind each row are `gap` elements more; objects follow each other.
template <class T>
struct Operands {
    const T* left;         // square matrices; what a kernel inverts, factors, multiplies
    const T* right;        // matrices or vectors; right sides of solves
    std::int32_t* pivots;  // results of decompositions, operands of solves
    T* results;
    T* buffer;  // what a kernel needs for itself
    std::ptrdiff_t gap;
    std::ptrdiff_t first;
    std::ptrdiff_t count;
    std::ptrdiff_t objects;  // of each operand; streams of elements are so many elements apart
};

template <class T>
struct Kernel {
    const char* name;
    int order;
    int element;                                 // distance of neighbours in a row, in elements
    std::int32_t (*run)(const Operands<T>& on);  // returns the status
    bool needsDefinite = false;                  // is for positive definite matrices
};

// The same kernels in the same order for each variant, whose namespace has ofFloats() and ofDoubles().
template <class T>
using Kernels = std::vector<Kernel<T>>;

}  // namespace korm::widths
