#include "move/overlap.h"

#include <algorithm>
#include <iterator>

#include "kernel/unroll.h"

namespace korm::inline KORM_VARIANT::move {
namespace {

// Addresses from begin to end.
struct Span {
    std::uintptr_t begin;
    std::uintptr_t end;

    bool apart(const Span& other) const { return end <= other.begin || other.end <= begin; }
};

Span spanOf(const void* begin, std::ptrdiff_t bytes) {
    const auto address = reinterpret_cast<std::uintptr_t>(begin);
    return {address, address + static_cast<std::uintptr_t>(bytes)};
}

// From the first element of a grid to the end of its last.
std::ptrdiff_t reach(const Side& side, const Extent& extent, std::ptrdiff_t size) {
    return (extent.rows - 1) * side.rowStride + (extent.columns - 1) * side.elementStride + size;
}

// The pieces of a side: all of a standard array, the objects of a list, the streams of a table.
struct Pieces {
    const std::byte* const* entries;  // of a list or table, else of `single`
    const std::byte* single;
    std::ptrdiff_t offset;
    std::ptrdiff_t count;
    std::ptrdiff_t bytes;  // of each

    Pieces(const Side& side, const Extent& extent, std::ptrdiff_t size)
        : entries(side.entries), single(side.base), offset(side.offset), count(1), bytes(size) {
        const std::ptrdiff_t objects = (extent.objects - 1) * side.objectStride;
        if (side.isTable()) count = extent.rows * extent.columns;
        if (side.isList()) count = extent.objects;
        if (!side.isTable()) bytes = reach(side, extent, size);
        if (!side.isList()) bytes += objects;
        if (!side.isTable() && !side.isList()) {
            entries = &single;
            offset = 0;
        }
    }
    Pieces(const Pieces&) = delete;
    Pieces& operator=(const Pieces&) = delete;

    std::uintptr_t begin(std::ptrdiff_t number) const { return reinterpret_cast<std::uintptr_t>(entries[number]); }
    Span at(std::ptrdiff_t number) const { return spanOf(entries[number] + offset, bytes); }

    // From the first byte of any to the last.
    Span hull() const {
        // Several at a time: a least number waits for the one before it.
        constexpr int chains = 4;
        std::uintptr_t low[chains], high[chains];
        unrolled<chains>([&](auto chain) __attribute__((always_inline)) { low[chain] = high[chain] = begin(0); });
        const auto take = [&](int chain, std::uintptr_t one) __attribute__((always_inline)) {
            low[chain] = std::min(low[chain], one);
            high[chain] = std::max(high[chain], one);
        };
        std::ptrdiff_t number = 0;
        for (; number + chains <= count; number += chains)
            unrolled<chains>([&](auto chain) __attribute__((always_inline)) { take(chain, begin(number + chain)); });
        for (; number < count; ++number) take(0, begin(number));
        const auto shift = static_cast<std::uintptr_t>(offset);
        return {*std::min_element(low, low + chains) + shift,
                *std::max_element(high, high + chains) + shift + static_cast<std::uintptr_t>(bytes)};
    }

    // Is each of them apart from the span?
    bool clearOf(const Span& span) const {
        // A piece meets it where it begins less than its own bytes before the span, or inside.
        const auto length = static_cast<std::uintptr_t>(bytes);
        const std::uintptr_t from = span.begin - length + 1 - static_cast<std::uintptr_t>(offset);
        const std::uintptr_t reached = span.end - span.begin + length - 1;
        bool clear = true;
        for (std::ptrdiff_t number = 0; number < count; ++number) clear &= begin(number) - from >= reached;
        return clear;
    }

    // The same, where that is so of most by far.
    bool clearOf(const Span& span, const Span& allOfThese) const { return allOfThese.apart(span) || clearOf(span); }
};

// Does each step pass what the smaller ones reach?
bool nested(const Side& side, const Extent& extent, std::ptrdiff_t size) {
    struct Axis {
        std::ptrdiff_t n, step;
    };
    Axis axes[] = {{extent.columns, side.elementStride},
                   {extent.rows, side.rowStride},
                   {side.isList() ? 1 : extent.objects, side.objectStride}};
    std::sort(std::begin(axes), std::end(axes), [](const Axis& a, const Axis& b) { return a.step < b.step; });
    std::ptrdiff_t reached = size;
    for (const Axis& axis : axes) {
        if (axis.n == 1) continue;
        if (axis.step < reached) return false;
        reached += (axis.n - 1) * axis.step;
    }
    return true;
}

// More pieces than this are not compared one with one.
constexpr std::ptrdiff_t comparable = 32;

// Pieces of which each lies behind the one before, or each before it, don't meet; nor do elements that streams mix like
// those of one structure.
bool piecesDistinct(const Pieces& pieces, const Side& side, const Extent& extent, std::ptrdiff_t size) {
    const auto length = static_cast<std::uintptr_t>(pieces.bytes);
    bool rising = true;
    for (std::ptrdiff_t number = 1; number < pieces.count; ++number)
        rising &= pieces.begin(number) >= pieces.begin(number - 1) + length;
    if (rising) return true;
    bool falling = true, ordered = true;
    const std::uintptr_t first = pieces.begin(0);
    std::uintptr_t last = first;
    for (std::ptrdiff_t number = 1; number < pieces.count; ++number) {
        const std::uintptr_t next = pieces.begin(number);
        falling &= next + length <= last;
        ordered &= next >= last + static_cast<std::uintptr_t>(size);
        last = next;
    }
    if (falling) return true;
    if (side.isTable() && ordered) {
        const auto width = static_cast<std::ptrdiff_t>(last - first) + size;
        return extent.objects == 1 || width <= side.objectStride;
    }
    if (pieces.count > comparable) return false;
    for (std::ptrdiff_t a = 0; a < pieces.count; ++a)
        for (std::ptrdiff_t b = a + 1; b < pieces.count; ++b)
            if (!pieces.at(a).apart(pieces.at(b))) return false;
    return true;
}

bool distinct(const Pieces& pieces, const Side& side, const Extent& extent, std::ptrdiff_t size, Listed listed) {
    if (side.isTable()) return piecesDistinct(pieces, side, extent, size);
    return nested(side, extent, size) &&
           (!side.isList() || listed == Listed::inOrder || piecesDistinct(pieces, side, extent, size));
}

bool clearOfPieces(const Pieces& to, const Span& allOfTo, const Pieces& from) {
    if (to.clearOf(from.hull(), allOfTo)) return true;
    if (from.count == 1 || from.count > comparable || to.count > comparable) return false;
    for (std::ptrdiff_t number = 0; number < from.count; ++number)
        if (!to.clearOf(from.at(number))) return false;
    return true;
}

// Entries of a list or table are read on the way, so that they must not change.
bool clearOfEntries(const Pieces& to, const Span& allOfTo, const Pieces& side) {
    return side.entries == &side.single ||
           to.clearOf(spanOf(side.entries, side.count * static_cast<std::ptrdiff_t>(sizeof(void*))), allOfTo);
}

}  // namespace

bool entriesStay(const Side& from, const Side& to, const Extent& extent, std::ptrdiff_t size) {
    const Pieces sources(from, extent, size), results(to, extent, size);
    const Span all = results.hull();
    return clearOfEntries(results, all, sources) && clearOfEntries(results, all, results);
}

bool mayReorder(const Side& from, const Side& to, const Extent& extent, std::ptrdiff_t size, Listed listed) {
    const Pieces sources(from, extent, size), results(to, extent, size);
    const Span all = results.hull();
    return clearOfPieces(results, all, sources) && clearOfEntries(results, all, sources) &&
           clearOfEntries(results, all, results) && distinct(results, to, extent, size, listed);
}

}  // namespace korm::inline KORM_VARIANT::move
