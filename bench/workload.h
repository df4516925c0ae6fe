// The memory that one row of the benchmark works on: two inputs and a result in one of the layouts.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string_view>

namespace bench {

// How the functions of the library are told where elements lie.
enum class Entry { standard, list, pointer };

// How elements really lie.
enum class Layout {
    packed,           // no gap anywhere
    padded,           // rows of matrices, and vectors, start at multiples of 16 bytes, with a gap between objects
    strided,          // every other element is used, and gaps behind rows and objects
    list,             // one pointer for each object, which is packed in itself
    stridedList,      // one pointer for each object, which is strided in itself
    streams,          // one pointer for each element position, objects one element apart
    pointers,         // one pointer for each element position, objects packed behind one another
    stridedPointers,  // one pointer for each element position, objects strided
};

inline constexpr Layout layouts[] = {Layout::packed,      Layout::padded,  Layout::strided,  Layout::list,
                                     Layout::stridedList, Layout::streams, Layout::pointers, Layout::stridedPointers};

constexpr std::string_view nameOf(Layout layout) {
    constexpr std::string_view names[] = {"packed",      "padded",  "strided",  "list",
                                          "stridedList", "streams", "pointers", "stridedPointers"};
    return names[static_cast<int>(layout)];
}

// Is every other element used?
constexpr bool isStrided(Layout layout) {
    return layout == Layout::strided || layout == Layout::stridedList || layout == Layout::stridedPointers;
}

constexpr Entry entryOf(Layout layout) {
    switch (layout) {
        case Layout::list:
        case Layout::stridedList: return Entry::list;
        case Layout::streams:
        case Layout::pointers:
        case Layout::stridedPointers: return Entry::pointer;
        default: return Entry::standard;
    }
}

// Distances in bytes, as the library takes them.
struct Operand {
    enum class Kind { matrix, transposed, vector, constant };

    std::int32_t objectStride = 0;
    std::int32_t rowStride = 0;
    std::int32_t elementStride = 0;
    std::int32_t offset = 0;
};

template <class T>
struct OperandOf : Operand {
    T* base = nullptr;    // element 0 of object 0
    T** table = nullptr;  // list of objects, or table of element positions
    T value = 0;          // of a single constant

    std::ptrdiff_t objectStep() const { return objectStride / static_cast<std::int32_t>(sizeof(T)); }
    std::ptrdiff_t rowStep() const { return rowStride / static_cast<std::int32_t>(sizeof(T)); }
    std::ptrdiff_t elementStep() const { return elementStride / static_cast<std::int32_t>(sizeof(T)); }
};

template <class T>
struct Workload {
    OperandOf<T> first, second, result;  // the inputs in the order of the arguments
    std::int32_t width = 0;
    std::int32_t height = 0;
    std::int32_t count = 0;
    std::byte* resultBytes = nullptr;  // the whole span of the result, gaps included
    std::size_t resultSpan = 0;
    double bytesMoved = 0;  // elements of the array operands, or of all operands if there is no array
};

struct Shape;

// Operands of `shape` in memory of the benchmark's own, which the next workload takes over. `bytes` is the
// size that all array operands together should have; a form without arrays has one object, whatever it is.
template <class T>
Workload<T> makeWorkload(const Shape& shape, Layout layout, int width, int height, std::size_t bytes);

extern template Workload<float> makeWorkload<float>(const Shape&, Layout, int, int, std::size_t);
extern template Workload<double> makeWorkload<double>(const Shape&, Layout, int, int, std::size_t);

}  // namespace bench
