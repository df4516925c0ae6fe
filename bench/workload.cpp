#include "workload.h"

#include <sys/mman.h>

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <vector>

#include "forms.h"

namespace bench {
namespace {

constexpr std::size_t roundUp(std::size_t value, std::size_t unit) { return (value + unit - 1) / unit * unit; }

// Memory that is kept from row to row: fresh pages for each would cost more time than the measuring.
class Arena {
public:
    // Growing loses the contents.
    std::byte* take(std::size_t bytes, bool& grew) {
        grew = bytes > size_;
        if (grew) {
            if (memory_) munmap(memory_, size_);
            size_ = roundUp(bytes + bytes / 4, std::size_t{1} << 21);
            memory_ = mmap(nullptr, size_, PROT_READ | PROT_WRITE, MAP_PRIVATE | MAP_ANONYMOUS, -1, 0);
            if (memory_ == MAP_FAILED) {
                std::fprintf(stderr, "no memory for an operand of %zu bytes\n", size_);
                std::exit(1);
            }
        }
        return static_cast<std::byte*>(memory_);
    }

private:
    void* memory_ = nullptr;
    std::size_t size_ = 0;
};

enum Role { firstInput, secondInput, output, roles };

// Values between 1 and 2 with all bits of the fraction in use, at every position of an input.
template <class T>
void fill(std::byte* memory, std::size_t bytes) {
    T* const elements = reinterpret_cast<T*>(memory);
    std::uint64_t state = 0x9e3779b97f4a7c15u;
    for (std::size_t i = 0; i < bytes / sizeof(T); ++i) {
        state = state * 6364136223846793005u + 1442695040888963407u;
        elements[i] = T(1) + static_cast<T>(state >> 40) / static_cast<T>(1 << 24);
    }
}

template <class T>
std::byte* memoryOf(Role role, std::size_t bytes) {
    static Arena arenas[roles];
    static std::size_t filled[roles];
    bool grew = false;
    std::byte* const memory = arenas[role].take(bytes, grew);
    if (grew) filled[role] = 0;
    if (role != output && filled[role] < bytes) {
        fill<T>(memory, bytes);
        filled[role] = bytes;
    }
    return memory;
}

struct Distances {
    std::size_t object, row, element;
};

Distances distancesOf(Layout layout, std::size_t rows, std::size_t columns, std::size_t size) {
    const std::size_t object = rows * columns * size;
    switch (layout) {
        case Layout::packed: return {object, columns * size, size};
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
        case Layout::streams: return {size, columns * size, size};
        default: return {object, columns * size, size};
    }
}

template <class T>
OperandOf<T> place(Role role, Operand::Kind kind, bool isArray, Layout layout, std::size_t rows, std::size_t columns,
                   std::size_t count, std::size_t& span) {
    static std::vector<T*> tables[roles];
    if (kind == Operand::Kind::constant) rows = columns = 1;
    const std::size_t objects = isArray ? count : 1;
    const std::size_t positions = rows * columns;
    const Distances distances = distancesOf(layout, rows, columns, sizeof(T));
    // Streams lie an odd number of cache lines apart: powers of two would make them evict one another.
    const std::size_t stream = roundUp(objects * sizeof(T), 64) | 64;
    const bool isApart = layout == Layout::streams && positions > 1;
    span = objects * distances.object + (isApart ? positions * stream : 0);

    // The operands start at different places of a page: at the same one, a load seems to depend on a store.
    std::byte* const memory = memoryOf<T>(role, span + 4096) + role * 1344;
    OperandOf<T> operand;
    operand.base = reinterpret_cast<T*>(memory);
    operand.objectStride = static_cast<std::int32_t>(distances.object);
    operand.rowStride = static_cast<std::int32_t>(distances.row);
    operand.elementStride = static_cast<std::int32_t>(distances.element);
    operand.value = T(1.375);

    std::vector<T*>& table = tables[role];
    table.clear();
    if (entryOf(layout) == Entry::list && isArray) {
        for (std::size_t k = 0; k < objects; ++k) table.push_back(reinterpret_cast<T*>(memory + k * distances.object));
    } else if (entryOf(layout) == Entry::pointer) {
        for (std::size_t position = 0; position < positions; ++position) {
            const std::size_t inObject = position / columns * distances.row + position % columns * distances.element;
            table.push_back(reinterpret_cast<T*>(memory + (isApart ? position * stream : inObject)));
        }
    }
    operand.table = table.data();
    return operand;
}

}  // namespace

template <class T>
Workload<T> makeWorkload(const Shape& shape, Layout layout, int width, int height, std::size_t bytes) {
    const auto rows = static_cast<std::size_t>(height);
    const auto columns = static_cast<std::size_t>(width);
    const std::size_t object = rows * columns * sizeof(T);
    const auto objectBytes = [&](Operand::Kind kind) { return kind == Operand::Kind::constant ? sizeof(T) : object; };
    Workload<T> work;
    std::size_t moved = 0;
    std::size_t count = 1;
    if (shape.isArray()) {
        moved = object + (shape.firstIsArray ? objectBytes(shape.firstKind) : 0) +
                (shape.secondIsArray ? objectBytes(shape.secondKind) : 0);
        count = std::max<std::size_t>(bytes / moved, 4);
        // Gaps count too: what has to fit into the cache is the memory touched.
        if (layout != Layout::packed && layout != Layout::streams && layout != Layout::pointers) {
            const std::size_t spaced = distancesOf(layout, rows, columns, sizeof(T)).object;
            count = std::max<std::size_t>(bytes / (moved * spaced / object), 4);
        }
    } else {
        moved = object + objectBytes(shape.firstKind);
        if (shape.secondKind != Operand::Kind::constant) moved += object;
    }
    work.width = width;
    work.height = height;
    work.count = static_cast<std::int32_t>(count);
    work.bytesMoved = static_cast<double>(moved) * static_cast<double>(count);
    std::size_t span = 0;
    work.first = place<T>(firstInput, shape.firstKind, shape.firstIsArray, layout, rows, columns, count, span);
    work.second = place<T>(secondInput, shape.secondKind, shape.secondIsArray, layout, rows, columns, count, span);
    const Operand::Kind resultKind = shape.isVector() ? Operand::Kind::vector : Operand::Kind::matrix;
    work.result = place<T>(output, resultKind, shape.isArray(), layout, rows, columns, count, work.resultSpan);
    work.resultBytes = reinterpret_cast<std::byte*>(work.result.base);
    return work;
}

template Workload<float> makeWorkload<float>(const Shape&, Layout, int, int, std::size_t);
template Workload<double> makeWorkload<double>(const Shape&, Layout, int, int, std::size_t);

}  // namespace bench
