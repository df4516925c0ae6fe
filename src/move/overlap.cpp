#include "move/overlap.h"

#include <emmintrin.h>

#include <algorithm>
#include <bit>
#include <utility>

#include "kernel/unroll.h"
#include "kernel/vec.h"

namespace korm::inline KORM_VARIANT::move {
namespace {

// Addresses from begin to end.
struct Span {
    std::uintptr_t begin;
    std::uintptr_t end;

    bool clearOf(const Span& other) const { return end <= other.begin || other.end <= begin; }
};

Span spanOf(const void* begin, std::ptrdiff_t bytes) {
    const auto address = reinterpret_cast<std::uintptr_t>(begin);
    return {address, address + static_cast<std::uintptr_t>(bytes)};
}

// Addresses as doubles, which the processor compares two at a time, as it can't compare whole numbers as long: those whose bits
// are 2^52's plus an address have the order of the addresses.
constexpr std::uint64_t bitsOf2To52 = std::bit_cast<std::uint64_t>(0x1p52);

// The address that `entry` holds and the next one, each with so many bytes added.
[[gnu::always_inline]] inline Double2 addressPair(const std::byte* const* entry, std::uintptr_t bytes = 0) {
    Vec<std::uint64_t, 2> pair;
    if constexpr (sizeof(void*) == 8) pair = load<Vec<std::uint64_t, 2>>(reinterpret_cast<const std::byte*>(entry));
    else pair = Vec<std::uint64_t, 2>{std::uintptr_t(entry[0]), std::uintptr_t(entry[1])};
    return std::bit_cast<Double2>(pair + (bitsOf2To52 + bytes));
}

std::uintptr_t addressOf(double number) {
    return static_cast<std::uintptr_t>(std::bit_cast<std::uint64_t>(number) - bitsOf2To52);
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
    bool rising = false;   // each is known to begin behind the end of the one before

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
        if (count == 1 || rising) return {at(0).begin, at(count - 1).end};
        // Several pairs side by side: a least address waits for the one before it.
        constexpr int chains = 4;
        Double2 least[chains], greatest[chains];
        unrolled<chains>([&](auto c) __attribute__((always_inline)) { least[c] = greatest[c] = addressPair(entries); });
        const auto take = [&](std::ptrdiff_t number, int chain) __attribute__((always_inline)) {
            const Double2 pair = addressPair(entries + number);
            least[chain] = _mm_min_pd(least[chain], pair);
            greatest[chain] = _mm_max_pd(greatest[chain], pair);
        };
        std::ptrdiff_t number = 0;
        for (; number + 2 * chains <= count; number += 2 * chains)
            unrolled<chains>([&](auto c) __attribute__((always_inline)) { take(number + 2 * c, c); });
        for (; number + 2 <= count; number += 2) take(number, 0);
        take(count - 2, 1);
        const Double2 low = _mm_min_pd(_mm_min_pd(least[0], least[1]), _mm_min_pd(least[2], least[3]));
        const Double2 high = _mm_max_pd(_mm_max_pd(greatest[0], greatest[1]), _mm_max_pd(greatest[2], greatest[3]));
        return {addressOf(std::min(low[0], low[1])) + static_cast<std::uintptr_t>(offset),
                addressOf(std::max(high[0], high[1])) + static_cast<std::uintptr_t>(offset + bytes)};
    }

    bool areRising() const {
        const auto length = static_cast<std::uintptr_t>(bytes);
        std::ptrdiff_t number = 0;
        // Block by block: lists in any order end in the first.
        constexpr int block = 16;
        for (; number + block < count; number += block) {
            using Mask = decltype(Double2{} >= Double2{});
            Mask behind = ~Mask{};
            unrolled<block / 2>([&](auto pair) __attribute__((always_inline)) {
                const std::byte* const* const entry = entries + number + 2 * pair;
                behind &= addressPair(entry + 1) >= addressPair(entry, length);
            });
            if ((behind[0] & behind[1]) == 0) return false;
        }
        for (; number + 1 < count; ++number)
            if (begin(number + 1) < begin(number) + length) return false;
        return true;
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
    bool clearOf(const Span& span, const Span& allOfThese) const { return allOfThese.clearOf(span) || clearOf(span); }
};

// Does each step pass what the smaller ones reach?
bool nested(const Side& side, const Extent& extent, std::ptrdiff_t size) {
    struct Axis {
        std::ptrdiff_t n, step;
    };
    Axis axes[] = {{extent.columns, side.elementStride},
                   {extent.rows, side.rowStride},
                   {side.isList() ? 1 : extent.objects, side.objectStride}};
    const auto order = [&](int a, int b) {
        if (axes[b].step < axes[a].step) std::swap(axes[a], axes[b]);
    };
    order(0, 1), order(1, 2), order(0, 1);
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
    if (pieces.rising) return true;
    const auto each = [&](const auto& isRight) __attribute__((always_inline)) {
        std::ptrdiff_t number = 1;
        while (number < pieces.count && isRight(pieces.begin(number - 1), pieces.begin(number))) ++number;
        return number == pieces.count;
    };
    if (each([&](std::uintptr_t last, std::uintptr_t next) { return next + length <= last; })) return true;
    if (side.isTable() && each([&](std::uintptr_t last, std::uintptr_t next) {
            return next >= last + static_cast<std::uintptr_t>(size);
        })) {
        const std::uintptr_t width =
            pieces.begin(pieces.count - 1) - pieces.begin(0) + static_cast<std::uintptr_t>(size);
        return extent.objects == 1 || static_cast<std::ptrdiff_t>(width) <= side.objectStride;
    }
    if (pieces.count > comparable) return false;
    for (std::ptrdiff_t a = 0; a < pieces.count; ++a)
        for (std::ptrdiff_t b = a + 1; b < pieces.count; ++b)
            if (!pieces.at(a).clearOf(pieces.at(b))) return false;
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
    const Pieces sources(from, extent, size);
    Pieces results(to, extent, size);
    // Found first, this tells where they lie, too.
    if (to.isTable() || listed == Listed::inParts) results.rising = results.areRising();
    if (!distinct(results, to, extent, size, listed)) return false;
    const Span all = results.hull();
    return clearOfPieces(results, all, sources) && clearOfEntries(results, all, sources) &&
           clearOfEntries(results, all, results);
}

}  // namespace korm::inline KORM_VARIANT::move
