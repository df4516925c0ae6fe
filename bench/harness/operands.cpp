// Where the operands of a row lie.
#include "operands.h"

#include <sys/mman.h>

#include <cstdio>
#include <cstdlib>

namespace bench {
namespace {

constexpr int operands = 6;

constexpr std::size_t roundUp(std::size_t value, std::size_t unit) { return (value + unit - 1) / unit * unit; }

// In bytes.
struct Distances {
    std::size_t object, row, element;
};

Distances distancesOf(Layout layout, std::size_t rows, std::size_t columns, std::size_t size) {
    const std::size_t object = rows * columns * size;
    switch (layout) {
        case Layout::padded: {
            const std::size_t row = rows * columns == 1 ? 2 * size : roundUp(columns * size, 16);
            return {rows * row == object ? object + 16 : rows * row, row, size};
        }
        case Layout::list: return {roundUp(object, 16) + 16, columns * size, size};
        case Layout::strided:
        case Layout::stridedList:
        case Layout::stridedPointers: {
            const std::size_t row = (2 * columns + 1) * size;
            return {rows * row + 2 * size, row, 2 * size};
        }
        case Layout::columns: return {object, size, rows * size};
        case Layout::streams: return {size, columns * size, size};
        default: return {object, columns * size, size};
    }
}

}  // namespace

template <class T>
T* memoryOf(int number, std::size_t elements) {
    struct Memory {
        void* data = nullptr;
        std::size_t bytes = 0;
    };
    static Memory memories[operands];
    Memory& memory = memories[number];
    const std::size_t wanted = elements * sizeof(T) + 4096 + operands * 1344;
    if (wanted > memory.bytes) {
        if (memory.data) munmap(memory.data, memory.bytes);
        memory.bytes = roundUp(wanted + wanted / 4, std::size_t{1} << 21);
        memory.data = mmap(nullptr, memory.bytes, PROT_READ | PROT_WRITE, MAP_PRIVATE | MAP_ANONYMOUS, -1, 0);
        if (memory.data == MAP_FAILED) {
            std::fprintf(stderr, "no memory for an operand of %zu bytes\n", memory.bytes);
            std::exit(1);
        }
        std::uint64_t state = 0x9e3779b97f4a7c15u + static_cast<std::uint64_t>(number);
        T* const all = static_cast<T*>(memory.data);
        for (std::size_t i = 0; i < memory.bytes / sizeof(T); ++i) {
            state = state * 6364136223846793005u + 1442695040888963407u;
            all[i] = T(1) + static_cast<T>(state >> 40) / static_cast<T>(1 << 24);
        }
    }
    return static_cast<T*>(memory.data) + static_cast<std::size_t>(number) * 1344 / sizeof(T);
}

template <class T>
std::size_t objectSpan(Layout layout, int rows, int columns) {
    const auto r = static_cast<std::size_t>(rows), c = static_cast<std::size_t>(columns);
    return layout == Layout::streams ? r * c : distancesOf(layout, r, c, sizeof(T)).object / sizeof(T);
}

template <class T>
Operand<T> place(int number, Layout layout, int rows, int columns, std::size_t objects) {
    static std::vector<T*> tables[operands];
    const auto r = static_cast<std::size_t>(rows), c = static_cast<std::size_t>(columns);
    const std::size_t positions = r * c, count = std::max<std::size_t>(objects, 1);
    const Distances distances = distancesOf(layout, r, c, sizeof(T));
    // Streams lie an odd number of cache lines apart: powers of two would make them evict one another.
    const std::size_t stream = roundUp(count * sizeof(T), 64) | 64;
    const bool hasStreams = layout == Layout::streams && positions > 1;

    Operand<T> operand;
    operand.span = (hasStreams ? positions * stream : count * distances.object) / sizeof(T);
    operand.base = memoryOf<T>(number, operand.span);
    operand.objectStride = static_cast<std::int32_t>(distances.object);
    operand.rowStride = static_cast<std::int32_t>(distances.row);
    operand.elementStride = static_cast<std::int32_t>(distances.element);

    const auto at = [&](std::size_t bytes) { return operand.base + bytes / sizeof(T); };
    std::vector<T*>& table = tables[number];
    table.clear();
    if (entryOf(layout) == Entry::list && objects > 0) {
        for (std::size_t k = 0; k < objects; ++k) table.push_back(at(k * distances.object));
    } else if (entryOf(layout) == Entry::pointer) {
        for (std::size_t i = 0; i < r; ++i)
            for (std::size_t j = 0; j < c; ++j)
                table.push_back(at(hasStreams ? (i * c + j) * stream : i * distances.row + j * distances.element));
    }
    operand.table = table.data();
    return operand;
}

template float* memoryOf(int, std::size_t);
template double* memoryOf(int, std::size_t);
template std::int32_t* memoryOf(int, std::size_t);
template std::size_t objectSpan<float>(Layout, int, int);
template std::size_t objectSpan<double>(Layout, int, int);
template Operand<float> place(int, Layout, int, int, std::size_t);
template Operand<double> place(int, Layout, int, int, std::size_t);

}  // namespace bench
