// Objects of a size known when compiling on their way between memory and locals: one object as an array of elements, or a
// group as an array of vectors with one object in each lane.
//
// Of a group, elements that touch are moved as vectors of one object and turned in registers, so that nothing beyond them is
// read or written; all others are gathered one by one. Groups of more than 16 bytes of lanes are made of halves.
#pragma once

#include <cstddef>
#include <cstdint>
#include <type_traits>

#include "entry/views.h"
#include "kernel/predicates.h"
#include "kernel/scalar.h"
#include "kernel/unroll.h"
#include "kernel/vec.h"
#include "korm.h"

namespace korm::inline KORM_VARIANT {

// --- One object, the same in all lanes --------------------------------------------------------------

template <int n, class S, class Object>
[[gnu::always_inline]] inline void readRow(const Object& from, std::ptrdiff_t i, S (&row)[n]) {
    unrolled<n>([&](auto j)
                    __attribute__((always_inline)) { row[j] = all<S>(load<ElementOf<S>>(from.address(i, j))); });
}

template <int n, class S, class Object>
[[gnu::always_inline]] inline void writeRow(const Object& to, std::ptrdiff_t i, const S (&row)[n]) {
    unrolled<n>([&](auto j) __attribute__((always_inline)) { store(to.address(i, j), firstLane(row[j])); });
}

template <int height, int width, class S, class Object>
[[gnu::always_inline]] inline void readMatrix(const Object& from, S (&a)[height][width]) {
    unrolled<height>([&](auto i) __attribute__((always_inline)) { readRow(from, i, a[i]); });
}

template <int height, int width, class S, class Object>
[[gnu::always_inline]] inline void writeMatrix(const Object& to, const S (&a)[height][width]) {
    unrolled<height>([&](auto i) __attribute__((always_inline)) { writeRow(to, i, a[i]); });
}

// --- Groups ---------------------------------------------------------------------------------------

// The same place in each object of a group: where a source (const std::byte) or a result (std::byte) lies.
template <class Byte, int lanesOfPlaces>
struct Places {
    static constexpr int lanes = lanesOfPlaces;
    Byte* at[lanes];

    // What stands some bytes behind the place of lane l: a value, or in lanes 0 and 1 a pair of floats and in lanes 2 and 3
    // that of the next object. Whoever has these three members can be read by the functions below.
    template <class V>
    [[gnu::always_inline]] V get(int l, std::ptrdiff_t distance) const {
        return load<V>(at[l] + distance);
    }
    [[gnu::always_inline]] Float4 pairs(int l, std::ptrdiff_t distance) const {
        return loadPairs(at[l] + distance, at[l + 1] + distance);
    }
    // Those of half of the objects.
    [[gnu::always_inline]] Places<Byte, lanes / 2> half(int which) const {
        return withLanes<lanes / 2>([&](auto... l) __attribute__((always_inline)) {
            return Places<Byte, lanes / 2>{{at[which * lanes / 2 + l]...}};
        });
    }
};

template <class Object, int lanesOfGroup>
struct Group {
    static constexpr int lanes = lanesOfGroup;
    Object object[lanes];

    // Element (i, j) of each object.
    [[gnu::always_inline]] auto at(std::ptrdiff_t i, std::ptrdiff_t j) const {
        return at([i](int) { return i; }, [j](int) { return j; });
    }
    // The same, with a row and a column for each lane.
    template <class Row, class Column>
    requires std::is_invocable_v<Row, int>
    [[gnu::always_inline]] auto at(const Row& row, const Column& column) const {
        using Byte = std::remove_pointer_t<decltype(object[0].address(0, 0))>;
        return withLanes<lanes>([&](auto... l) __attribute__((always_inline)) {
            return Places<Byte, lanes>{{object[l].address(row(l), column(l))...}};
        });
    }
};

// The objects from k on. How they are found is asked once for all.
template <int lanes, class View>
[[gnu::always_inline]] inline auto groupAt(const View& view, std::ptrdiff_t k) {
    const auto group = [&]() __attribute__((always_inline)) {
        return withLanes<lanes>([&](auto... l) __attribute__((always_inline)) {
            return Group<decltype(view.at(k)), lanes>{{view.at(k + l)...}};
        });
    };
    if constexpr (View::objects == Objects::any)
        if (view.list == nullptr) return group();
    return group();
}

// --- One element of each object -------------------------------------------------------------------

template <class S, class From>
[[gnu::always_inline]] inline S readElement(const From& from, std::ptrdiff_t distance = 0) {
    return fromLanes<S>([&](int l) { return from.template get<ElementOf<S>>(l, distance); });
}

template <class S>
[[gnu::always_inline]] inline void writeElement(const Places<std::byte, lanesOf<S>>& to, std::ptrdiff_t distance, S x) {
    unrolled<lanesOf<S>>([&](auto l) __attribute__((always_inline)) { store(to.at[l] + distance, x[l.value]); });
}

// --- Runs of adjacent elements --------------------------------------------------------------------

// Four elements, or two, of the group of a vector of 16 bytes.
template <class From>
[[gnu::always_inline]] inline void readFour(const From& from, std::ptrdiff_t distance, Float4* to) {
    Float4 rows[4];
    unrolled<4>([&](auto l) __attribute__((always_inline)) { rows[l] = from.template get<Float4>(l, distance); });
    transpose(rows);
    unrolled<4>([&](auto l) __attribute__((always_inline)) { to[l] = rows[l]; });
}

template <class From>
[[gnu::always_inline]] inline void readTwo(const From& from, std::ptrdiff_t distance, Float4* to) {
    const Float4 first = from.pairs(0, distance), second = from.pairs(2, distance);
    to[0] = __builtin_shufflevector(first, second, 0, 2, 4, 6);
    to[1] = __builtin_shufflevector(first, second, 1, 3, 5, 7);
}

template <class From>
[[gnu::always_inline]] inline void readTwo(const From& from, std::ptrdiff_t distance, Double2* to) {
    const auto first = from.template get<Double2>(0, distance), second = from.template get<Double2>(1, distance);
    to[0] = zipLow(first, second);
    to[1] = zipHigh(first, second);
}

[[gnu::always_inline]] inline void writeTwo(const Places<std::byte, 4>& to, std::ptrdiff_t distance,
                                            const Float4* from) {
    const Float4 upper = zipLow(from[0], from[1]), lower = zipHigh(from[0], from[1]);
    storeLowPair(to.at[0] + distance, upper);
    storeHighPair(to.at[1] + distance, upper);
    storeLowPair(to.at[2] + distance, lower);
    storeHighPair(to.at[3] + distance, lower);
}

[[gnu::always_inline]] inline void writeTwo(const Places<std::byte, 2>& to, std::ptrdiff_t distance,
                                            const Double2* from) {
    store(to.at[0] + distance, zipLow(from[0], from[1]));
    store(to.at[1] + distance, zipHigh(from[0], from[1]));
}

template <int length, class S, class From>
[[gnu::always_inline]] inline void readRun(const From& from, S* to) {
    if constexpr (sizeof(S) > 16) {
        HalfOf<S> low[length], high[length];
        readRun<length>(from.half(0), low);
        readRun<length>(from.half(1), high);
        unrolled<length>([&](auto j) __attribute__((always_inline)) { to[j] = joinedHalves(low[j], high[j]); });
    } else {
        constexpr std::ptrdiff_t size = sizeof(ElementOf<S>);
        constexpr int fours = isFloat<ElementOf<S>> ? length / 4 * 4 : 0, twos = (length - fours) / 2;
        if constexpr (isFloat<ElementOf<S>>)
            unrolled<fours / 4>([&](auto q)
                                    __attribute__((always_inline)) { readFour(from, 4 * q * size, to + 4 * q); });
        unrolled<twos>([&](auto p) __attribute__((always_inline)) {
            readTwo(from, (fours + 2 * p) * size, to + fours + 2 * p);
        });
        if constexpr (length % 2 != 0) to[length - 1] = readElement<S>(from, (length - 1) * size);
    }
}

template <int length, class S>
[[gnu::always_inline]] inline void writeRun(const Places<std::byte, lanesOf<S>>& to, const S* from) {
    if constexpr (sizeof(S) > 16) {
        HalfOf<S> low[length], high[length];
        unrolled<length>([&](auto j) __attribute__((always_inline)) {
            low[j] = lowHalf(from[j]);
            high[j] = highHalf(from[j]);
        });
        writeRun<length>(to.half(0), low);
        writeRun<length>(to.half(1), high);
    } else {
        constexpr std::ptrdiff_t size = sizeof(ElementOf<S>);
        unrolled<length / 2>([&](auto p) __attribute__((always_inline)) { writeTwo(to, 2 * p * size, from + 2 * p); });
        if constexpr (length % 2 != 0) writeElement(to, (length - 1) * size, from[length - 1]);
    }
}

// --- Rows and matrices ------------------------------------------------------------------------------

// What every row function below calls `row`: the row of each lane.
[[gnu::always_inline]] inline auto sameRow(std::ptrdiff_t i) {
    return [i](int) { return i; };
}

template <int n, class S, class Object, class Row>
[[gnu::always_inline]] inline void readRows(const Group<Object, lanesOf<S>>& from, const Row& row, S (&to)[n]) {
    if constexpr (isAdjacent<Object>) readRun<n>(from.at(row, sameRow(0)), to);
    else unrolled<n>([&](auto j) __attribute__((always_inline)) { to[j] = readElement<S>(from.at(row, sameRow(j))); });
}

template <int n, class S, class Object, class Row>
[[gnu::always_inline]] inline void writeRows(const Group<Object, lanesOf<S>>& to, const Row& row, const S (&from)[n]) {
    if constexpr (isAdjacent<Object>) writeRun<n>(to.at(row, sameRow(0)), from);
    else unrolled<n>([&](auto j) __attribute__((always_inline)) { writeElement(to.at(row, sameRow(j)), 0, from[j]); });
}

// Are the rows of a matrix so close that it is one run?
template <int width, class Object, int lanes>
[[gnu::always_inline]] inline bool rowsTouch(const Group<Object, lanes>& group) {
    if constexpr (isAdjacent<Object>)
        return group.object[0].rowStride == static_cast<std::ptrdiff_t>(width * sizeof(typename Object::Element));
    else return false;
}

template <int height, int width, class S, class Object>
[[gnu::always_inline]] inline void readMatrices(const Group<Object, lanesOf<S>>& from, S (&a)[height][width]) {
    if constexpr (isAdjacent<Object>)
        if (rowsTouch<width>(from)) return readRun<height * width>(from.at(0, 0), &a[0][0]);
    unrolled<height>([&](auto i) __attribute__((always_inline)) { readRows(from, sameRow(i), a[i]); });
}

template <int height, int width, class S, class Object>
[[gnu::always_inline]] inline void writeMatrices(const Group<Object, lanesOf<S>>& to, const S (&a)[height][width]) {
    // Pairs of rows of even length are those of the run.
    if constexpr (isAdjacent<Object> && width % 2 != 0)
        if (rowsTouch<width>(to)) return writeRun<height * width>(to.at(0, 0), &a[0][0]);
    unrolled<height>([&](auto i) __attribute__((always_inline)) { writeRows(to, sameRow(i), a[i]); });
}

// Calls f with the number of each row: from order 5 on, whose matrices find no room in registers, in a loop.
template <int height, class F>
[[gnu::always_inline]] inline void forEachRow(const F& f) {
    if constexpr (height < 5) {
        unrolled<height>(f);
    } else {
#pragma GCC unroll 1
        for (int i = 0; i < height; ++i) f(i);
    }
}

// The same for matrices that go through memory in any case: where elements are gathered one by one, row by row in a loop, which
// is a fraction of the code.
template <int height, int width, class S, class Object>
[[gnu::always_inline]] inline void readMatricesInTurn(const Group<Object, lanesOf<S>>& from, S (&a)[height][width]) {
    if constexpr (isAdjacent<Object>) readMatrices(from, a);
    else forEachRow<height>([&](int i) __attribute__((always_inline)) { readRows(from, sameRow(i), a[i]); });
}

template <int height, int width, class S, class Object>
[[gnu::always_inline]] inline void writeMatricesInTurn(const Group<Object, lanesOf<S>>& to,
                                                       const S (&a)[height][width]) {
    if constexpr (isAdjacent<Object>) writeMatrices(to, a);
    else forEachRow<height>([&](int i) __attribute__((always_inline)) { writeRows(to, sameRow(i), a[i]); });
}

// --- Matrices of a size known at run time -----------------------------------------------------------

// Element (i, j) of each object to to[i * width + j]. `from` is where the objects begin; lanes without an object of their own
// repeat another.
template <class S>
[[gnu::noinline]] void readGrids(const Places<const std::byte, lanesOf<S>>& from, std::ptrdiff_t rowStep,
                                 std::ptrdiff_t columnStep, int height, int width, S* to) {
    for (int i = 0; i < height; ++i)
        for (int j = 0; j < width; ++j, ++to) *to = readElement<S>(from, i * rowStep + j * columnStep);
}

// Back to the first `count` objects.
template <class S>
[[gnu::noinline]] void writeGrids(const Places<std::byte, lanesOf<S>>& to, std::ptrdiff_t rowStep,
                                  std::ptrdiff_t columnStep, int height, int width, const S* from, int count) {
    for (int i = 0; i < height; ++i)
        for (int j = 0; j < width; ++j, ++from)
            for (int l = 0; l < count; ++l) store(to.at[l] + i * rowStep + j * columnStep, (*from)[l]);
}

// The same for tables: an entry leads to an element of `first`, and those of the next objects follow at `step`. Where they
// touch, an element of all objects is one load.
template <class S, class Object>
[[gnu::noinline]] void readStreams(const Object& first, std::ptrdiff_t step, int height, int width, S* to, int count) {
    const bool touch = step == sizeof(ElementOf<S>) && count == lanesOf<S>;
    for (int i = 0; i < height; ++i)
        for (int j = 0; j < width; ++j, ++to) {
            const std::byte* const from = first.address(i, j);
            if (touch) *to = load<S>(from);
            else
                *to =
                    fromLanes<S>([&](int l) { return load<ElementOf<S>>(from + (l < count ? l : count - 1) * step); });
        }
}

template <class S, class Object>
[[gnu::noinline]] void writeStreams(const Object& first, std::ptrdiff_t step, int height, int width, const S* from,
                                    int count) {
    const bool touch = step == sizeof(ElementOf<S>) && count == lanesOf<S>;
    for (int i = 0; i < height; ++i)
        for (int j = 0; j < width; ++j, ++from) {
            std::byte* const to = const_cast<std::byte*>(first.address(i, j));
            if (touch) store(to, *from);
            else
                for (int l = 0; l < count; ++l) store(to + l * step, (*from)[l]);
        }
}

// --- Large arrays ---------------------------------------------------------------------------------

// A group is much work on few objects, so that the processor comes late to look for those of the next where they lie
// beyond its first cache. It is told of them this many objects before: in outer caches LU of order 6 takes a quarter
// less, inverses and solves of doubles a tenth. Arrays that fit into the first cache are left alone.
inline constexpr std::ptrdiff_t objectsAhead = 16;
inline constexpr std::ptrdiff_t firstCache = 32 << 10;

// The first object at which nothing is told any more, so that none is looked for behind the last.
[[gnu::always_inline]] inline std::ptrdiff_t endOfFetching(std::ptrdiff_t count, int bytesOfObject) {
    return count > firstCache / bytesOfObject ? count - objectsAhead : 0;
}

// Tells of as many objects as a group has, the last of them `objectsAhead` behind object k. `bytes` are those of a
// packed one; it is a hint, which is good enough for others. Small objects come in the lines of their neighbours.
template <int lanes, int bytes, class View>
[[gnu::always_inline]] inline void fetchAhead(const View& view, std::ptrdiff_t k) {
    constexpr int line = 64;
    if constexpr (isAdjacent<View> && bytes > line / 2)
        unrolled<lanes>([&](auto l) __attribute__((always_inline)) {
            unrolled<(bytes + line - 1) / line>([&](auto at) __attribute__((always_inline)) {
                __builtin_prefetch(view.at(k + objectsAhead - l).address(0, 0) + at * line);
            });
        });
}

// --- Objects in groups ----------------------------------------------------------------------------

// Hands the objects to `group` in groups of `lanes`, and to `each` one by one where a group has failed, which leaves
// nothing behind, and at the end. Stops at the first object whose status isn't 0.
template <int lanes, class GroupOf, class Each>
[[gnu::always_inline]] inline std::int32_t inGroups(std::ptrdiff_t count, const GroupOf& group, const Each& each) {
    std::ptrdiff_t k = 0;
    while (k < count) {
        std::ptrdiff_t singles = count - k;
        if (singles >= lanes) {
            if (group(k)) {
                k += lanes;
                continue;
            }
            singles = lanes;
        }
        for (; singles > 0; --singles, ++k)
            if (const std::int32_t status = each(k); status != korStatusOk) return status;
    }
    return korStatusOk;
}

}  // namespace korm::inline KORM_VARIANT
