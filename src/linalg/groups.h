// Groups of objects on their way between memory and lanes: one object in each lane.
//
// Elements that touch are moved as vectors of one object and turned in registers, so that nothing beyond them is
// read or written; all others are gathered one by one, or, where the objects of a position touch, loaded as they are.
#pragma once

#include <cstddef>
#include <cstdint>

#include "entry/lanes.h"
#include "entry/views.h"
#include "korm.h"
#include "linalg/rows.h"
#include "linalg/scalars.h"

namespace korm {

// The same place in each object of a group.
template <int lanes>
struct Places {
    const std::byte* at[lanes];
};
template <int lanes>
struct Targets {
    std::byte* at[lanes];
};

template <class Object, int lanes>
class Group {
public:
    static constexpr bool adjacent = hasAdjacentElements<Object>;
    Object object[lanes];

    // Element (i, j) of each object; in each an element of a row of its own; of a row vector, an element of its own.
    [[gnu::always_inline]] auto address(std::ptrdiff_t i, std::ptrdiff_t j) const {
        return places([i](int) { return i; }, [j](int) { return j; });
    }
    template <class Row>
    [[gnu::always_inline]] auto addressOf(const Row& row, std::ptrdiff_t j) const {
        return places(row, [j](int) { return j; });
    }
    template <class Column>
    [[gnu::always_inline]] auto addressAt(const Column& column) const {
        return places([](int) { return 0; }, column);
    }

private:
    template <class Row, class Column>
    [[gnu::always_inline]] auto places(const Row& i, const Column& j) const {
        using Pointer = decltype(object[0].address(0, 0));
        using Where = std::conditional_t<std::is_same_v<Pointer, std::byte*>, Targets<lanes>, Places<lanes>>;
        if constexpr (lanes == 4)
            return Where{{object[0].address(i(0), j(0)), object[1].address(i(1), j(1)), object[2].address(i(2), j(2)),
                          object[3].address(i(3), j(3))}};
        else return Where{{object[0].address(i(0), j(0)), object[1].address(i(1), j(1))}};
    }
};

template <int lanes, class View>
[[gnu::always_inline]] inline auto groupAt(const View& view, std::ptrdiff_t k) {
    using Object = decltype(view.at(k));
    if constexpr (lanes == 4) return Group<Object, 4>{{view.at(k), view.at(k + 1), view.at(k + 2), view.at(k + 3)}};
    else return Group<Object, 2>{{view.at(k), view.at(k + 1)}};
}

// --- Runs of adjacent elements --------------------------------------------------------------------

template <class S>
[[gnu::always_inline]] inline S gatherOne(const Places<lanesOf<S>>& from, std::ptrdiff_t distance) {
    using T = ElementOf<S>;
    if constexpr (lanesOf<S> == 4)
        return Float4{load<T>(from.at[0] + distance), load<T>(from.at[1] + distance), load<T>(from.at[2] + distance),
                      load<T>(from.at[3] + distance)};
    else return Double2{load<T>(from.at[0] + distance), load<T>(from.at[1] + distance)};
}

[[gnu::always_inline]] inline void readFour(const Places<4>& from, std::ptrdiff_t distance, Float4* to) {
    Float4 rows[4];
#pragma GCC unroll 4
    for (int l = 0; l < 4; ++l) rows[l] = loadLanes<float>(from.at[l] + distance);
    transpose(rows);
#pragma GCC unroll 4
    for (int l = 0; l < 4; ++l) to[l] = rows[l];
}

[[gnu::always_inline]] inline void readTwo(const Places<4>& from, std::ptrdiff_t distance, Float4* to) {
    const Float4 t0 = zipLow(loadPair(from.at[0] + distance), loadPair(from.at[1] + distance));
    const Float4 t1 = zipLow(loadPair(from.at[2] + distance), loadPair(from.at[3] + distance));
    to[0] = __builtin_shufflevector(t0, t1, 0, 1, 4, 5);
    to[1] = __builtin_shufflevector(t0, t1, 2, 3, 6, 7);
}

[[gnu::always_inline]] inline void readTwo(const Places<2>& from, std::ptrdiff_t distance, Double2* to) {
    const Double2 first = loadLanes<double>(from.at[0] + distance), second = loadLanes<double>(from.at[1] + distance);
    to[0] = zipLow(first, second);
    to[1] = zipHigh(first, second);
}

template <int length, class S>
[[gnu::always_inline]] inline void readRun(const Places<lanesOf<S>>& from, S* to) {
    constexpr std::ptrdiff_t size = sizeof(ElementOf<S>);
    int j = 0;
    if constexpr (lanesOf<S> == 4) {
#pragma GCC unroll 9
        for (; j + 4 <= length; j += 4) readFour(from, j * size, to + j);
    }
#pragma GCC unroll 18
    for (; j + 2 <= length; j += 2) readTwo(from, j * size, to + j);
    if constexpr (length % 2 != 0) to[length - 1] = gatherOne<S>(from, (length - 1) * size);
}

[[gnu::always_inline]] inline void writeOne(const Targets<4>& to, std::ptrdiff_t distance, Float4 x) {
#pragma GCC unroll 4
    for (int l = 0; l < 4; ++l) store(to.at[l] + distance, x[l]);
}

[[gnu::always_inline]] inline void writeOne(const Targets<2>& to, std::ptrdiff_t distance, Double2 x) {
    store(to.at[0] + distance, x[0]);
    store(to.at[1] + distance, x[1]);
}

[[gnu::always_inline]] inline void writeTwo(const Targets<4>& to, std::ptrdiff_t distance, const Float4* from) {
    const Float4 upper = zipLow(from[0], from[1]), lower = zipHigh(from[0], from[1]);
    storeLowPair(to.at[0] + distance, upper);
    storeHighPair(to.at[1] + distance, upper);
    storeLowPair(to.at[2] + distance, lower);
    storeHighPair(to.at[3] + distance, lower);
}

[[gnu::always_inline]] inline void writeTwo(const Targets<2>& to, std::ptrdiff_t distance, const Double2* from) {
    storeLanes(to.at[0] + distance, zipLow(from[0], from[1]));
    storeLanes(to.at[1] + distance, zipHigh(from[0], from[1]));
}

template <int length, class S>
[[gnu::always_inline]] inline void writeRun(const Targets<lanesOf<S>>& to, const S* from) {
    constexpr std::ptrdiff_t size = sizeof(ElementOf<S>);
    int j = 0;
#pragma GCC unroll 18
    for (; j + 2 <= length; j += 2) writeTwo(to, j * size, from + j);
    if constexpr (length % 2 != 0) writeOne(to, (length - 1) * size, from[length - 1]);
}

// --- Rows and matrices ------------------------------------------------------------------------------

// A row of each object, not the same one if `row` says so.
template <int n, class S, class G, class Row>
[[gnu::always_inline]] inline void readRows(const G& from, const Row& row, S (&to)[n]) {
    if constexpr (G::adjacent) readRun<n>(from.addressOf(row, 0), to);
    else
#pragma GCC unroll 6
        for (int j = 0; j < n; ++j) to[j] = gatherOne<S>(from.addressOf(row, j), 0);
}

template <int n, class S, class G, class Row>
[[gnu::always_inline]] inline void writeRows(const G& to, const Row& row, const S (&from)[n]) {
    if constexpr (G::adjacent) writeRun<n>(to.addressOf(row, 0), from);
    else
#pragma GCC unroll 6
        for (int j = 0; j < n; ++j) writeOne(to.addressOf(row, j), 0, from[j]);
}

// Are the rows of a matrix so close that it is one run?
template <int n, class S, class G>
[[gnu::always_inline]] inline bool isPacked(const G& group) {
    if constexpr (G::adjacent)
        return group.object[0].rowStride == static_cast<std::ptrdiff_t>(n * sizeof(ElementOf<S>));
    else return false;
}

template <int n, class S, class G>
[[gnu::always_inline]] inline void readSquares(const G& from, S (&a)[n][n]) {
    if (isPacked<n, S>(from)) {
        if constexpr (G::adjacent) readRun<n * n>(from.address(0, 0), &a[0][0]);
        return;
    }
#pragma GCC unroll 6
    for (int i = 0; i < n; ++i)
        readRows<n>(
            from, [i](int) { return i; }, a[i]);
}

template <int n, class S, class G>
[[gnu::always_inline]] inline void writeSquares(const G& to, const S (&a)[n][n]) {
    // Halves of rows of even length are those of the run.
    if (n % 2 != 0 && isPacked<n, S>(to)) {
        if constexpr (G::adjacent) writeRun<n * n>(to.address(0, 0), &a[0][0]);
        return;
    }
#pragma GCC unroll 6
    for (int i = 0; i < n; ++i)
        writeRows<n>(
            to, [i](int) { return i; }, a[i]);
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
    if constexpr (View::spacing == Spacing::rowAdjacent && bytes > line / 2)
#pragma GCC unroll 4
        for (int l = 0; l < lanes; ++l)
#pragma GCC unroll 5
            for (int at = 0; at < bytes; at += line)
                __builtin_prefetch(view.at(k + objectsAhead - l).address(0, 0) + at);
}

// --- Objects in groups ----------------------------------------------------------------------------

// Hands the objects to `fast` in groups of `lanes`, and to `each` one by one where a group has failed, which leaves
// nothing behind, and at the end. Stops at the first object whose status isn't 0.
template <int lanes, class Fast, class Each>
[[gnu::always_inline]] inline std::int32_t inGroups(std::ptrdiff_t first, std::ptrdiff_t count, const Fast& fast,
                                                    const Each& each) {
    std::ptrdiff_t k = first;
    while (k < count) {
        std::ptrdiff_t alone = count - k;
        if (alone >= lanes) {
            if (fast(k)) {
                k += lanes;
                continue;
            }
            alone = lanes;
        }
        for (; alone > 0; --alone, ++k)
            if (const std::int32_t status = each(k); status != korStatusOk) return status;
    }
    return korStatusOk;
}

}  // namespace korm
