#include "move/move.h"

#include <algorithm>
#include <utility>

#include "move/objects.h"
#include "move/overlap.h"
#include "move/rows.h"
#include "move/transpose.h"
#include "move/turn.h"

namespace korm::inline KORM_VARIANT::move {
namespace {

// Rows of each object by the given way, in order.
template <class Way>
[[gnu::always_inline]] inline void forRows(Side from, Side to, Extent extent, const Way& way) {
    forObjects(
        from, to, extent.objects, [&](std::byte * result, const std::byte* source) __attribute__((always_inline)) {
            for (std::ptrdiff_t i = extent.rows;;) {
                way(result, source);
                if (--i == 0) break;
                result += to.rowStride;
                source += from.rowStride;
            }
        });
}

// Are the rows of a matrix one row, in memory or in the table?
bool rowsTouch(const Side& side, const Extent& extent) { return side.rowStride == extent.columns * side.elementStride; }

// --- Grids to grids -------------------------------------------------------------------------------

// The same elements in the same order as fewer, longer rows: axes of one element vanish, rows that touch are one row.
void simplify(Side& from, Side& to, Extent& extent) {
    if (extent.columns == 1 && extent.rows > 1) {
        extent.columns = std::exchange(extent.rows, 1);
        from.elementStride = from.rowStride;
        to.elementStride = to.rowStride;
    }
    if (extent.rows > 1 && rowsTouch(from, extent) && rowsTouch(to, extent))
        extent.columns *= std::exchange(extent.rows, 1);
    if (from.isList() || to.isList() || extent.objects == 1) return;
    if (extent.rows == 1) {
        // Objects are rows.
        from.rowStride = from.objectStride;
        to.rowStride = to.objectStride;
        if (extent.columns == 1) {
            extent.columns = std::exchange(extent.objects, 1);
            from.elementStride = from.rowStride;
            to.elementStride = to.rowStride;
        } else if (rowsTouch(from, extent) && rowsTouch(to, extent)) {
            extent.columns *= std::exchange(extent.objects, 1);
        } else {
            extent.rows = std::exchange(extent.objects, 1);
        }
        return;
    }
    const auto objectsTouch = [&](const Side& side) { return side.objectStride == extent.rows * side.rowStride; };
    if (objectsTouch(from) && objectsTouch(to)) extent.rows *= std::exchange(extent.objects, 1);
}

// An axis of grids: its number of elements, and the steps in source and result.
struct Axis {
    std::ptrdiff_t n, from, to;
};

constexpr std::ptrdiff_t smallPlane = 8;

// Elements of the source touch along one axis, those of the result along the same or another: along it whole rows move,
// or planes of both are turned. Says no where there are no such axes.
template <class Word>
bool moveAlongAxes(const Side& from, const Side& to, const Extent& extent, Order order) {
    const bool lists = from.isList() || to.isList();
    const Axis axes[] = {{extent.columns, from.elementStride, to.elementStride},
                         {extent.rows, from.rowStride, to.rowStride},
                         {lists ? 1 : extent.objects, from.objectStride, to.objectStride}};
    int source = -1, result = -1;
    for (int axis = 2; axis >= 0; --axis) {
        if (axes[axis].n == 1) continue;
        if (axes[axis].from == sizeOf<Word>) source = axis;
        if (axes[axis].to == sizeOf<Word>) result = axis;
    }
    if (source < 0 || result < 0) return false;
    const auto otherAxis = [&](int a, int b) { return 3 - a - b; };
    const int second = source != result ? result : source == 0 ? 1 : 0;
    const Axis along = axes[source], across = axes[second], outer = axes[otherAxis(source, second)];
    // Small planes cost more to turn than to move element by element, unless objects are one of their axes or they are
    // squares of a known order.
    const bool ofSquares = source == 1 && result == 0 && isSized(extent.columns, extent.rows);
    if (!ofSquares && source != 2 && second != 2 && std::min(along.n, across.n) < smallPlane) return false;
    if (order != Order::any && !mayReorder(from, to, extent, sizeOf<Word>, Listed::inOrder)) return false;
    if (ofSquares) {
        const auto size = static_cast<std::int32_t>(extent.rows);
        transposeAdjacent<Word>(transposed(from), to, {size, size}, extent.objects, false);
        return true;
    }
    const auto plane = [&](std::byte* toPlane, std::byte* fromPlane) {
        if (source != result)
            return turn<Word>(SteppedRows{fromPlane, across.from}, across.n, SteppedRows{toPlane, along.to}, along.n);
        for (std::ptrdiff_t i = 0; i < across.n; ++i)
            moveRun<Word>(toPlane + i * across.to, sizeOf<Word>, fromPlane + i * across.from, sizeOf<Word>, along.n);
    };
    const auto planes = [&](std::byte* toFirst, std::byte* fromFirst) {
        for (std::ptrdiff_t i = 0; i < outer.n; ++i) plane(toFirst + i * outer.to, fromFirst + i * outer.from);
    };
    if (lists) forObjects(from, to, extent.objects, planes);
    else planes(to.base, from.base);
    return true;
}

// Rows of adjacent elements of so many bytes.
void moveAdjacentRows(const Side& from, const Side& to, const Extent& extent, std::ptrdiff_t size) {
    const std::ptrdiff_t bytes = extent.columns * size;
    forRowsOf(bytes, [&](auto way) {
        const auto row =
            [ bytes, size, way ](std::byte * result, const std::byte* source) __attribute__((always_inline)) {
            moveRow(result, source, bytes, size, way);
        };
        if (extent.rows == 1 && (from.isList() || to.isList())) return forListedObjects(from, to, extent.objects, row);
        forRows(from, to, extent, row);
    });
}

// Fewer elements than this aren't worth a look at their axes.
constexpr std::ptrdiff_t fewElements = 16;

}  // namespace

void moveBlock(std::byte* to, const std::byte* from, std::ptrdiff_t bytes, std::ptrdiff_t size) {
    forRowsOf(bytes, [&](auto way) { moveRow(to, from, bytes, size, way); });
}

template <class Word>
void moveGrids(Side from, Side to, Extent extent, Order order) {
    simplify(from, to, extent);
    if (extent.rows == 1 && extent.objects == 1)
        return moveRun<Word>(to.object(0), to.elementStride, from.object(0), from.elementStride, extent.columns);
    if (from.elementStride == sizeOf<Word> && to.elementStride == sizeOf<Word>)
        return moveAdjacentRows(from, to, extent, sizeOf<Word>);
    const std::ptrdiff_t elements = extent.rows * extent.columns * extent.objects;
    if (elements >= fewElements && moveAlongAxes<Word>(from, to, extent, order)) return;
    const auto rows = [&](auto way) { forRows(from, to, extent, way); };
    const auto few = [&](auto n) {
        rows([&](std::byte * result, const std::byte* source) __attribute__((always_inline)) {
            moveFew<Word, n>(result, to.elementStride, source, from.elementStride);
        });
    };
    if (extent.columns <= 8) return forFew<8>(extent.columns, few);
    rows([&](std::byte * result, const std::byte* source) __attribute__((always_inline)) {
        moveElements<Word>(result, to.elementStride, source, from.elementStride, extent.columns);
    });
}

namespace {

// --- Tables ---------------------------------------------------------------------------------------

// Entry (i, j) of a table in the order of rows, and where it stands.
template <class F>
[[gnu::always_inline]] inline void forEntries(const Extent& extent, const F& f) {
    for (std::ptrdiff_t i = 0; i < extent.rows; ++i)
        for (std::ptrdiff_t j = 0; j < extent.columns; ++j) f(i, j);
}

// Where element (i, j) of object k lies.
[[gnu::always_inline]] inline std::byte* address(const Side& side, std::ptrdiff_t i, std::ptrdiff_t j,
                                                 std::ptrdiff_t k) {
    if (side.isTable()) return side.element(i, j, k);
    return side.object(k) + i * side.rowStride + j * side.elementStride;
}

// Object by object, by row and by element.
template <class Word, bool fromTable, bool toTable>
void forwardObjects(const Side& from, const Side& to, const Extent& extent) {
    // One side of the loop in registers: a store may change whatever lies in memory.
    struct Cursor {
        std::byte* const* entries;
        std::ptrdiff_t offset, objectStride, rowStride, elementStride;
        std::byte* base;
        bool isList;

        explicit Cursor(const Side& side)
            : entries(side.entries),
              offset(side.offset),
              objectStride(side.objectStride),
              rowStride(side.rowStride),
              elementStride(side.elementStride),
              base(side.base),
              isList(side.isList()) {}
    };
    const Cursor source(from), result(to);
    const auto row = []<bool table>(const Cursor& side, std::ptrdiff_t k) __attribute__((always_inline)) {
        if constexpr (table) return side.entries;
        else return side.isList ? side.entries[k] + side.offset : side.base + k * side.objectStride;
    };
    const auto element = []<bool table>(const Cursor& side, auto first, std::ptrdiff_t j, std::ptrdiff_t shift)
        __attribute__((always_inline)) {
        if constexpr (table) return first[j * side.elementStride] + shift;
        else return first + j * side.elementStride;
    };
    for (std::ptrdiff_t k = 0; k < extent.objects; ++k) {
        auto fromRow = row.template operator()<fromTable>(source, k);
        auto toRow = row.template operator()<toTable>(result, k);
        const std::ptrdiff_t fromShift = source.offset + k * source.objectStride;
        const std::ptrdiff_t toShift = result.offset + k * result.objectStride;
        for (std::ptrdiff_t i = extent.rows;;) {
            for (std::ptrdiff_t j = 0, columns = extent.columns; j < columns; ++j)
                store(element.template operator()<toTable>(result, toRow, j, toShift),
                      load<Word>(element.template operator()<fromTable>(source, fromRow, j, fromShift)));
            if (--i == 0) break;
            fromRow += source.rowStride;
            toRow += result.rowStride;
        }
    }
}

// The plain loop, for operands that overlap and for a few objects.
template <class Word>
void moveForward(Side from, Side to, Extent extent, Order order) {
    if (order == Order::entries) {
        // In the order in which they are stored: of a transposed table, column by column.
        const bool transposed = from.elementStride != 1;
        const Extent stored{transposed ? extent.columns : extent.rows, transposed ? extent.rows : extent.columns, 1};
        return forEntries(stored, [&](std::ptrdiff_t row, std::ptrdiff_t column) {
            const std::ptrdiff_t i = transposed ? column : row, j = transposed ? row : column;
            moveElements<Word>(address(to, i, j, 0), to.objectStride, from.element(i, j, 0), from.objectStride,
                               extent.objects);
        });
    }
    if (!from.isTable()) forwardObjects<Word, false, true>(from, to, extent);
    else if (!to.isTable()) forwardObjects<Word, true, false>(from, to, extent);
    else forwardObjects<Word, true, true>(from, to, extent);
}

// Two entries side by side: neighbours lie in one line of cache, which takes two stores at once.
template <class Word>
void moveTwoStreams(std::byte* const (&to)[2], std::ptrdiff_t toStep, const std::byte* const (&from)[2],
                    std::ptrdiff_t fromStep, std::ptrdiff_t n) {
    ElementWalk firstSource{from[0], fromStep}, secondSource{from[1], fromStep};
    ElementWalk firstResult{to[0], toStep}, secondResult{to[1], toStep};
    inRounds(
        n, [&](auto number) __attribute__((always_inline)) {
            unrolled<number>([&](auto k) __attribute__((always_inline)) {
                const Word first = load<Word>(firstSource.template address<k>());
                const Word second = load<Word>(secondSource.template address<k>());
                store(firstResult.template address<k>(), first);
                store(secondResult.template address<k>(), second);
            });
            firstSource.moveOn(number);
            secondSource.moveOn(number);
            firstResult.moveOn(number);
            secondResult.moveOn(number);
        });
}

// Entry by entry, the objects of each in one run. Not of lists.
template <class Word>
void moveStreams(const Side& from, const Side& to, const Extent& extent) {
    const bool touch = from.objectStride == sizeOf<Word> && to.objectStride == sizeOf<Word>;
    for (std::ptrdiff_t i = 0; i < extent.rows; ++i) {
        std::ptrdiff_t j = 0;
        for (; !touch && j + 2 <= extent.columns; j += 2)
            moveTwoStreams<Word>({address(to, i, j, 0), address(to, i, j + 1, 0)}, to.objectStride,
                                 {address(from, i, j, 0), address(from, i, j + 1, 0)}, from.objectStride,
                                 extent.objects);
        for (; j < extent.columns; ++j)
            moveRun<Word>(address(to, i, j, 0), to.objectStride, address(from, i, j, 0), from.objectStride,
                          extent.objects);
    }
}

// Streams that are contiguous over the objects on the one side, contiguous rows on the other: these are turned.
template <class Word>
bool turnStreams(const Side& from, const Side& to, const Extent& extent) {
    const Side &table = from.isTable() ? from : to, &grid = from.isTable() ? to : from;
    if (table.objectStride != sizeOf<Word> || grid.elementStride != sizeOf<Word>) return false;
    // Entries of a row that don't touch, in a transposed table, are brought together so many at a time.
    constexpr std::ptrdiff_t most = 64;
    std::byte* together[most];
    const bool apart = table.elementStride != 1;
    for (std::ptrdiff_t i = 0; i < extent.rows; ++i) {
        std::byte* const* const entries = table.entries + i * table.rowStride;
        for (std::ptrdiff_t j = 0; j < extent.columns; j += most) {
            const std::ptrdiff_t columns = apart ? std::min(extent.columns - j, most) : extent.columns;
            for (std::ptrdiff_t at = 0; apart && at < columns; ++at)
                together[at] = entries[(j + at) * table.elementStride];
            const ListedRows streams{apart ? together : entries, table.offset};
            const std::ptrdiff_t place = i * grid.rowStride + j * sizeOf<Word>;
            const SteppedRows stepped{grid.base + place, grid.objectStride};
            const ListedRows listed{grid.entries, grid.offset + place};
            if (from.isTable() && grid.isList()) turn<Word>(streams, columns, listed, extent.objects);
            else if (from.isTable()) turn<Word>(streams, columns, stepped, extent.objects);
            else if (grid.isList()) turn<Word>(listed, extent.objects, streams, columns);
            else turn<Word>(stepped, extent.objects, streams, columns);
            if (!apart) break;
        }
    }
    return true;
}

// Streams to the objects of a list, each of which is written as a whole before the next, so that they may meet one another:
// so many as fit are turned into a packed array first.
template <class Word>
bool turnStreamsInOrder(const Side& from, const Side& to, const Extent& extent) {
    alignas(16) std::byte buffer[4096];
    const std::ptrdiff_t row = extent.columns * sizeOf<Word>, object = extent.rows * row;
    const std::ptrdiff_t most = static_cast<std::ptrdiff_t>(sizeof buffer) / object;
    if (most < manyObjects || from.objectStride != sizeOf<Word> || to.elementStride != sizeOf<Word>) return false;
    const Side packed{Side::Layout::standard, {buffer}, object, 0, row, sizeOf<Word>};
    for (std::ptrdiff_t k = 0; k < extent.objects; k += most) {
        const Extent some{extent.rows, extent.columns, std::min(most, extent.objects - k)};
        turnStreams<Word>(from.from(k), packed, some);
        moveGrids<Word>(packed, to.from(k), some, Order::objects);
    }
    return true;
}

// A table whose entries lead to adjacent elements is an array in standard layout.
template <class Word>
bool isGrid(const Side& table, const Extent& extent) {
    if (!table.isTable() || table.elementStride != 1) return false;
    const std::ptrdiff_t entries = extent.rows * extent.columns;
    for (std::ptrdiff_t at = 1; at < entries; ++at)
        if (table.entries[at] != table.entries[0] + at * sizeOf<Word>) return false;
    return true;
}

// That array, if it is one.
template <class Word>
Side asGrid(const Side& table, const Extent& extent) {
    if (!isGrid<Word>(table, extent)) return table;
    return {Side::Layout::standard,
            {table.entries[0] + table.offset},
            table.objectStride,
            0,
            extent.columns * sizeOf<Word>,
            sizeOf<Word>};
}

// Objects that are looked at, and moved, at a time: they stay in the first-level cache.
template <class Word>
std::ptrdiff_t objectsAtOnce(const Extent& extent) {
    const std::ptrdiff_t elements = extent.rows * extent.columns;
    return std::clamp<std::ptrdiff_t>(16384 / sizeOf<Word> / elements, 32, 2048);
}

// Objects so far apart that each has lines of cache of its own, and too many for the second cache: what one of their entries
// brings there is gone before the next one is moved.
bool areFarApart(const Side& table, const Extent& extent) {
    constexpr std::ptrdiff_t farApart = 96, secondCache = 256 << 10;
    return table.isTable() && table.objectStride > farApart && table.objectStride > secondCache / extent.objects;
}

}  // namespace

template <class Word>
void moveTables(const Side& from, const Side& to, Extent extent, Order order) {
    if (rowsTouch(from, extent) && rowsTouch(to, extent)) extent.columns *= std::exchange(extent.rows, 1);
    const bool lists = from.isList() || to.isList();
    if (extent.objects < manyObjects) return moveForward<Word>(from, to, extent, order);
    if ((isGrid<Word>(from, extent) || isGrid<Word>(to, extent)) && entriesStay(from, to, extent, sizeOf<Word>)) {
        // Of overlapping operands the order of entries would be another one.
        if (order != Order::entries || mayReorder(from, to, extent, sizeOf<Word>, Listed::inParts))
            return moveObjects<Word>(asGrid<Word>(from, extent), asGrid<Word>(to, extent), extent, order);
    }
    // Looked at all at once where that tells as much, else block by block in the order of objects.
    const bool free = order == Order::any || (!lists && mayReorder(from, to, extent, sizeOf<Word>, Listed::inParts));
    if (!free && order == Order::entries) return moveForward<Word>(from, to, extent, order);
    if (areFarApart(from, extent) || areFarApart(to, extent))
        return moveForward<Word>(from, to, extent, Order::objects);
    // So few elements make a group, which is written object by object.
    const bool isGroup = extent.rows == 1 && extent.columns <= group;
    Listed listed = isGroup ? Listed::inOrder : Listed::inParts;
    const std::ptrdiff_t most = objectsAtOnce<Word>(extent);
    for (std::ptrdiff_t k = 0; k < extent.objects; k += most) {
        const Extent block{extent.rows, extent.columns, std::min(most, extent.objects - k)};
        const Side source = from.from(k), result = to.from(k);
        bool reorders = free || mayReorder(source, result, block, sizeOf<Word>, listed);
        if (!reorders && to.isList() && listed == Listed::inParts) {
            // A list that isn't in the order of addresses has such blocks only.
            listed = Listed::inOrder;
            reorders = mayReorder(source, result, block, sizeOf<Word>, listed);
        }
        if (reorders && listed == Listed::inOrder && !isGroup) {
            if (!turnStreamsInOrder<Word>(source, result, block)) moveForward<Word>(source, result, block, order);
            continue;
        }
        if (reorders && from.isTable() != to.isTable() && turnStreams<Word>(source, result, block)) continue;
        if (reorders && !lists) moveStreams<Word>(source, result, block);
        else moveForward<Word>(source, result, block, order);
    }
}

template void moveGrids<std::uint32_t>(Side, Side, Extent, Order);
template void moveGrids<std::uint64_t>(Side, Side, Extent, Order);
template void moveTables<std::uint32_t>(const Side&, const Side&, Extent, Order);
template void moveTables<std::uint64_t>(const Side&, const Side&, Extent, Order);

}  // namespace korm::inline KORM_VARIANT::move
