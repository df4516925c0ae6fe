// Copy, Extract and LoadIdentity: objects from one layout to another, whichever the two are.
#pragma once

#include "kernel/scalar.h"
#include "move/side.h"

namespace korm::inline KORM_VARIANT::move {

// The order that elements move in, as far as anybody can tell: where source and result overlap.
enum class Order : std::uint8_t {
    objects,  // object by object, of each row by row, element by element
    entries,  // of a table: entry by entry, for each object by object
    any,      // nothing is promised
};

// A run of adjacent elements of so many bytes each.
void moveBlock(std::byte* to, const std::byte* from, std::ptrdiff_t bytes, std::ptrdiff_t size);

// Neither side is a table. Sides come by value, to stay where they have been made: a copy of what has just been written in
// smaller pieces would wait for it, longer than a small object takes.
template <class Word>
void moveGrids(Side from, Side to, Extent extent, Order order);

template <class Word>
void moveTables(const Side& from, const Side& to, Extent extent, Order order);

template <class Word>
inline void moveObjects(const Side& from, const Side& to, const Extent& extent, Order order) {
    if (from.isTable() || to.isTable()) moveTables<Word>(from, to, extent, order);
    else moveGrids<Word>(from, to, extent, order);
}

template <class Word>
void loadIdentities(const Side& to, const Extent& extent);

// Is all of an array one block?
template <class View>
inline bool isBlock(const View& view, const Extent& extent) {
    constexpr auto size = static_cast<std::ptrdiff_t>(sizeof(typename View::Element));
    if constexpr (isScattered<View> || isListed<View> || isTransposed<View>) return false;
    else
        return view.elementStride == size && (extent.rows == 1 || view.rowStride == extent.columns * size) &&
               (extent.objects == 1 || view.objectStride == extent.rows * extent.columns * size);
}

// So few objects, or elements in all, are moved by the plain loop: to look for a better way would take longer.
constexpr std::ptrdiff_t manyObjects = 8, manyElements = 96;

template <class From, class To>
[[gnu::noinline]] void moveInTurn(const From& source, const To& result, const Extent& all) {
    const From from = source;
    const To to = result;
    const Extent extent = all;
    for (std::ptrdiff_t k = 0; k < extent.objects; ++k) {
        const auto read = from.at(k);
        const auto written = to.at(k);
        for (std::ptrdiff_t i = 0; i < extent.rows; ++i)
            for (std::ptrdiff_t j = 0; j < extent.columns; ++j)
                store(written.address(i, j), load<WordOf<typename From::Element>>(read.address(i, j)));
    }
}

template <class From, class To>
inline void moveViews(const From& from, const To& to, const Extent& extent, Order order) {
    using Word = WordOf<typename From::Element>;
    if constexpr (isScattered<From> || isScattered<To>) {
        const bool isSmall =
            extent.objects < manyObjects || extent.rows * extent.columns * extent.objects < manyElements;
        if (isSmall && order != Order::entries) return moveInTurn(from, to, extent);
        moveTables<Word>(side(from), side(to), extent, order);
    } else {
        if constexpr (!isListed<From> && !isListed<To>)
            if (isBlock(from, extent) && isBlock(to, extent))
                return moveBlock(to.origin, from.origin, extent.rows * extent.columns * extent.objects * sizeOf<Word>,
                                 sizeOf<Word>);
        moveGrids<Word>(side(from), side(to), extent, order);
    }
}

template <class From, class To, class Shape>
inline void copy(const From& from, const To& to, Shape shape, std::int32_t count) {
    moveViews(from, to, extent(shape, count), Order::objects);
}

template <class From, class T, class Shape>
inline void extract(const From& from, T* to, Shape shape, std::int32_t count) {
    const Extent all = extent(shape, count);
    const std::ptrdiff_t row = all.columns * static_cast<std::ptrdiff_t>(sizeof(T));
    const auto packed = plainArray(to, all.rows * row, row);
    moveViews(from, packed, all, isScattered<From> ? Order::entries : Order::objects);
}

template <class To, class Shape>
inline void loadIdentity(const To& to, Shape shape, std::int32_t count) {
    loadIdentities<WordOf<typename To::Element>>(side(to), extent(shape, count));
}

}  // namespace korm::inline KORM_VARIANT::move
