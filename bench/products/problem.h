// One row of the products' benchmark: square matrices, or square matrices and vectors, in packed arrays or alone.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "../series.h"

namespace bench::products {

// Read off the name of a form: mm, tma, mava ...
struct Shape {
    bool firstTransposed = false, firstIsArray = false;
    bool secondTransposed = false, secondIsArray = false, isVector = false;

    constexpr bool isArray() const { return firstIsArray || secondIsArray; }
};

constexpr Shape shapeOf(std::string_view operands) {
    Shape shape;
    std::size_t at = 0;
    shape.firstTransposed = operands[at++] == 't';
    shape.firstIsArray = operands[at] == 'a';
    if (shape.firstIsArray) ++at;
    shape.secondTransposed = operands[at] == 't';
    shape.isVector = operands[at++] == 'v';
    shape.secondIsArray = at < operands.size();
    return shape;
}

template <class T>
struct Problem {
    int order = 0;
    int count = 1;
    const T* first = nullptr;
    const T* second = nullptr;
    T* result = nullptr;
    // Elements from one object to the next, 0 where there is one for all.
    std::ptrdiff_t firstStep = 0, secondStep = 0, resultStep = 0;
    // The same operands as streams: element position e of object k is table[e][k].
    std::vector<const T*> firstStreams, secondStreams;
    std::vector<T*> resultStreams;
    // What contenders write, gaps included.
    T* written = nullptr;
    std::size_t writtenElements = 0;

    const T* a(std::ptrdiff_t k) const { return first + k * firstStep; }
    const T* b(std::ptrdiff_t k) const { return second + k * secondStep; }
    T* c(std::ptrdiff_t k) const { return result + k * resultStep; }
};

template <class T>
using Contender = Entrant<Problem<T>>;

struct Settings {
    bool quick = false;
    std::string filter;  // a regular expression that a row's name must contain
};
extern Settings settings;

// The answer that the library gets when it asks how many threads it may use.
extern std::int32_t threadsAllowed;

inline constexpr std::size_t inCache = 24 << 10;

// Compares the results, takes the times and keeps the row for the report. The first contender is the library.
struct RowOptions {
    std::size_t bytes = inCache;  // of all operands together, if there is an array among them
    bool streams = false;         // contenders work on the streams, but for yardsticks
};
template <class T>
void measure(const std::string& name, const Shape& shape, int order, const RowOptions& options,
             const std::vector<Contender<T>>& contenders);

extern template void measure<float>(const std::string&, const Shape&, int, const RowOptions&,
                                    const std::vector<Contender<float>>&);
extern template void measure<double>(const std::string&, const Shape&, int, const RowOptions&,
                                     const std::vector<Contender<double>>&);

template <class T>
std::string typeName() {
    return sizeof(T) == 4 ? "_32f" : "_64f";
}

// One for each file of rows.
void addArrays();
void addStreams();
void addSingles();
void addVectors();
void addThreads();

}  // namespace bench::products
