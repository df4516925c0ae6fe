// Kernels of the plain and list layouts with elements side by side.
#pragma once

#include <cstdint>

#include "arith/pieces.h"
#include "arith/runs.h"
#include "arith/tiles.h"
#include "arith/turned.h"
#include "entry/views.h"
#include "kernel/known.h"

namespace korm {

template <class View>
inline constexpr bool isConstant = View::spacing == Spacing::constant;
template <class View>
inline constexpr bool isTurned = View::spacing == Spacing::columnAdjacent;
template <class View>
inline constexpr bool isSingle = View::objects == Objects::single;
template <class View>
inline constexpr bool isListed = View::objects == Objects::listed;
template <class Count>
inline constexpr bool isOneObject = !std::is_same_v<Count, std::int32_t>;

// Object k as it is stored: rows, or a constant.
template <class T, class View>
[[gnu::always_inline]] inline auto storedObject(const View& view, std::ptrdiff_t k) {
    if constexpr (isConstant<View>) return Repeated<T>{broadcast(view.at(k))};
    else if constexpr (isTurned<View>) return Rows<T>{view.at(k).origin, view.at(k).elementStride};
    else return Rows<T>{view.at(k).origin, view.at(k).rowStride};
}

// The rows of a single object. From the fourth on they have a base of their own, so that six rows take one register more
// than three, where multiples of their distance would take three. What entry functions need in registers they save first.
template <class T>
struct SplitRows {
    const std::byte* origin;
    std::ptrdiff_t rowStride;
    const std::byte* fourth;

    template <int i, int j, int n>
    [[gnu::always_inline]] typename Piece<T, n>::Value get() const {
        const std::byte* const row = i < 3 ? origin + i * rowStride : fourth + (i - 3) * rowStride;
        return Piece<T, n>::load(row + j * static_cast<std::ptrdiff_t>(sizeof(T)));
    }
};

template <int height, class T>
[[gnu::always_inline]] inline auto split(Rows<T> rows) {
    if constexpr (height < 4) return rows;
    else {
        const std::byte* const fourth = opaque(rows.origin + 3 * rows.rowStride);
        return SplitRows<T>{rows.origin, rows.rowStride, fourth};
    }
}
template <int, class T>
[[gnu::always_inline]] inline auto split(Repeated<T> constant) {
    return constant;
}

// The single operand of an array form, in locals; of the others, the view itself.
template <class T, int width, int height, bool keepTurned, class View>
[[gnu::always_inline]] inline auto prepared(const View& view) {
    if constexpr (!isSingle<View>) return view;
    else if constexpr (isConstant<View>) return storedObject<T>(view, 0);
    else if constexpr (!isTurned<View>) return hold<T, width, height>(storedObject<T>(view, 0));
    else if constexpr (keepTurned) return hold<T, height, width>(storedObject<T>(view, 0));
    else return holdTurned<T, width, height>(storedObject<T>(view, 0));
}

template <class T, class View, class Prepared>
[[gnu::always_inline]] inline decltype(auto) objectOf(const Prepared& prepared, std::ptrdiff_t k) {
    if constexpr (isSingle<View>) return (prepared);
    else return storedObject<T>(prepared, k);
}

// One object from its sources; turnA and turnB tell which are still to be turned.
template <class Op, class T, int width, int height, bool turnA, bool turnB, class A, class B>
[[gnu::always_inline]] inline void storeSized(const A& a, const B& b, std::byte* to, std::ptrdiff_t rowStride) {
    constexpr bool anyA = constantFirst<T> && std::is_same_v<A, Repeated<T>>;
    constexpr bool anyB = constantFirst<T> && std::is_same_v<B, Repeated<T>>;
    if constexpr ((turnA || anyA) && (turnB || anyB))
        storeTurned<T, width, height>(Combined<Op, T, A, B>{a, b}, AsIs{}, to, rowStride);
    else if constexpr (turnA) storeTurned<T, width, height>(a, WithSecond<Op, B>{b}, to, rowStride);
    else if constexpr (turnB) storeTurned<T, width, height>(b, WithFirst<Op, A>{a}, to, rowStride);
    else storeObject<T, width, height>(Combined<Op, T, A, B>{a, b}, to, rowStride);
}

// Object by object.
template <class Op, int width, int height, class A, class B, class D, class Count>
[[gnu::always_inline]] inline void eachSized(const A& a, const B& b, const D& dst, Count count) {
    using T = typename D::Element;
    if constexpr (isOneObject<Count>) {
        const auto z = dst.at(0);
        storeSized<Op, T, width, height, isTurned<A>, isTurned<B>>(
            split<height>(storedObject<T>(a, 0)), split<height>(storedObject<T>(b, 0)), z.origin, z.rowStride);
    } else {
        constexpr bool keepTurned = (isTurned<A> || isConstant<A>)&&(isTurned<B> || isConstant<B>);
        constexpr bool turnA = isTurned<A> && (keepTurned || !isSingle<A>);
        constexpr bool turnB = isTurned<B> && (keepTurned || !isSingle<B>);
        const auto x = prepared<T, width, height, keepTurned>(a);
        const auto y = prepared<T, width, height, keepTurned>(b);
        const auto one = [&](std::int32_t k) __attribute__((always_inline)) {
            const auto z = dst.at(k);
            storeSized<Op, T, width, height, turnA, turnB>(objectOf<T, A>(x, k), objectOf<T, B>(y, k), z.origin,
                                                           z.rowStride);
        };
        std::int32_t k = 0;
        if constexpr (width * height <= 6)
            for (; k + 2 <= count; k += 2) {
                one(k);
                one(k + 1);
            }
        for (; k < count; ++k) one(k);
    }
}

template <class View>
inline bool rowsTouch(const View& view, std::ptrdiff_t rowBytes) {
    if constexpr (isConstant<View>) return true;
    else if constexpr (isTurned<View>) return view.elementStride == rowBytes;
    else return view.rowStride == rowBytes;
}

template <class View>
inline bool objectsTouch(const View& view, std::ptrdiff_t objectBytes) {
    if constexpr (isSingle<View> || isConstant<View>) return true;
    else return view.objectStride == objectBytes;
}

template <class T, class View>
[[gnu::always_inline]] inline auto runSource(const View& view) {
    if constexpr (isConstant<View>) return Same<T>{broadcast(view.at(0))};
    else return Adjacent<T>{view.at(0).origin};
}

// A single operand is laid out for a tile in `copies`; its rows may lie apart.
template <class T, int width, int height, bool perVector, class View>
[[gnu::always_inline]] inline auto tileSource(const View& view, std::byte* copies) {
    constexpr int elements = width * height;
    using Shape = Tile<T, elements, perVector>;
    if constexpr (isConstant<View>) return TileConstants<T, elements>{view.origin, view.objectStride};
    else if constexpr (!isSingle<View>) return TileOfArray{view.origin};
    else {
        const Rows<T> rows{view.origin, view.rowStride};
        for (int k = 0; k < Shape::objects; ++k)
            storeObject<T, width, height>(rows, copies + k * elements * static_cast<int>(sizeof(T)),
                                          width * static_cast<int>(sizeof(T)));
        return TileOfOne{copies};
    }
}

template <class View>
[[gnu::always_inline]] inline View after(View view, std::ptrdiff_t objects) {
    if constexpr (!isSingle<View>) view.origin += objects * view.objectStride;
    return view;
}

// All arrays packed.
template <class Op, int width, int height, class A, class B, class D>
[[gnu::always_inline]] inline void packed(const A& a, const B& b, const D& dst, std::int32_t count) {
    using T = typename D::Element;
    constexpr bool repeats = (isSingle<A> && !isConstant<A>) || (isSingle<B> && !isConstant<B>);
    constexpr bool constants = (isConstant<A> && !isSingle<A>) || (isConstant<B> && !isSingle<B>);
    if constexpr (repeats || constants) {
        alignas(16) std::byte copies[Tile<T, width * height, constants>::bytes];
        const std::int32_t done = storeTiles<Op, T, width * height, constants>(
            tileSource<T, width, height, constants>(a, copies), tileSource<T, width, height, constants>(b, copies),
            dst.origin, count);
        if (done < count) eachSized<Op, width, height>(after(a, done), after(b, done), after(dst, done), count - done);
    } else {
        run<Op, T>(runSource<T>(a), runSource<T>(b), dst.origin, count * dst.objectStride);
    }
}

// The view with its row stride as a constant, for addresses without arithmetic.
template <std::ptrdiff_t rowBytes, class View>
[[gnu::always_inline]] inline View touching(View view) {
    if constexpr (isTurned<View>) view.elementStride = rowBytes;
    else if constexpr (!isConstant<View>) view.rowStride = rowBytes;
    return view;
}

// As prepared(), of an object whose rows touch, as it is stored.
template <class T, int elements, class View>
[[gnu::always_inline]] inline auto preparedRun(const View& view) {
    if constexpr (!isSingle<View>) return view;
    else if constexpr (isConstant<View>) return storedObject<T>(view, 0);
    else return hold<T, elements, 1>(storedObject<T>(view, 0));
}

// Objects of order 3 with a transposed source, all rows touching, several at a time. Returns how many are done.
template <class Op, int objects, class A, class B, class D>
[[gnu::always_inline]] inline std::int32_t turnThrees(const A& a, const B& b, const D& dst, std::int32_t count) {
    using T = typename D::Element;
    constexpr int elements = 9 * objects;
    constexpr bool turnLast =
        (isTurned<A> || (isConstant<A> && constantFirst<T>)) && (isTurned<B> || (isConstant<B> && constantFirst<T>));
    const auto x = preparedRun<T, elements>(a);
    const auto y = preparedRun<T, elements>(b);
    std::int32_t k = 0;
    for (; k + objects <= count; k += objects) {
        const auto& p = objectOf<T, A>(x, k);
        const auto& q = objectOf<T, B>(y, k);
        std::byte* const to = dst.at(k).origin;
        if constexpr (turnLast)
            storeObject<T, elements, 1>(turnThree(hold<T, elements, 1>(combined<Op, T>(p, q))), to, 0);
        else if constexpr (isTurned<A>) {
            const auto turned = turnThree(hold<T, elements, 1>(p));
            storeObject<T, elements, 1>(combined<Op, T>(turned, q), to, 0);
        } else {
            const auto turned = turnThree(hold<T, elements, 1>(q));
            storeObject<T, elements, 1>(combined<Op, T>(p, turned), to, 0);
        }
    }
    return k;
}

// A single operand of 9 elements, written out twice.
template <class T, class View>
[[gnu::always_inline]] inline View twice(View view, std::byte* copies) {
    if constexpr (isSingle<View> && !isConstant<View>) {
        const Rows<T> rows{view.origin, 0};
        storeObject<T, 9, 1>(rows, copies, 0);
        storeObject<T, 9, 1>(rows, copies + 9 * sizeof(T), 0);
        view.origin = copies;
    }
    return view;
}

template <class Op, class A, class B, class D>
[[gnu::always_inline]] inline void eachThree(const A& a, const B& b, const D& dst, std::int32_t count) {
    using T = typename D::Element;
    constexpr std::ptrdiff_t bytes = 9 * sizeof(T);
    if constexpr (laneCount<T> == 2 && !isListed<D>)
        if (objectsTouch(a, bytes) && objectsTouch(b, bytes) && objectsTouch(dst, bytes)) {
            alignas(16) std::byte copies[2 * bytes];
            const std::int32_t done = turnThrees<Op, 2>(twice<T>(a, copies), twice<T>(b, copies), dst, count);
            if (done < count) turnThrees<Op, 1>(after(a, done), after(b, done), after(dst, done), 1);
            return;
        }
    turnThrees<Op, 1>(a, b, dst, count);
}

template <class View, class Other>
inline constexpr bool turnsOnce = isTurned<View>&& isSingle<View> && !isTurned<Other>;

template <class Op, int width, int height, class A, class B, class D, class Count>
[[gnu::always_inline]] inline void plainSized(const A& a, const B& b, const D& dst, Count count) {
    using T = typename D::Element;
    constexpr std::ptrdiff_t rowBytes = width * static_cast<std::ptrdiff_t>(sizeof(T));
    if constexpr (isOneObject<Count>) {
        eachSized<Op, width, height>(a, b, dst, count);
    } else if constexpr (turnsOnce<A, B> || turnsOnce<B, A>) {
        // A single transposed operand is turned before the loop; from there on it is like any other.
        alignas(16) std::byte copy[height * rowBytes];
        const auto turn = [&](const auto& view) __attribute__((always_inline)) {
            storeTurned<T, width, height>(storedObject<T>(view, 0), AsIs{}, copy, rowBytes);
            return plain(reinterpret_cast<const T*>(copy), rowBytes);
        };
        if constexpr (isTurned<A>) plainSized<Op, width, height>(turn(a), b, dst, count);
        else plainSized<Op, width, height>(a, turn(b), dst, count);
    } else {
        const bool rows = height == 1 || (rowsTouch(a, rowBytes) && rowsTouch(b, rowBytes) && rowsTouch(dst, rowBytes));
        if (!rows) {
            eachSized<Op, width, height>(a, b, dst, count);
        } else if constexpr (isTurned<A> || isTurned<B>) {
            if constexpr (width == 3) eachThree<Op>(a, b, dst, count);
            else
                eachSized<Op, width, height>(touching<rowBytes>(a), touching<rowBytes>(b), touching<rowBytes>(dst),
                                             count);
        } else {
            if constexpr (!isListed<D>)
                if (objectsTouch(a, height * rowBytes) && objectsTouch(b, height * rowBytes) &&
                    objectsTouch(dst, height * rowBytes)) {
                    packed<Op, width, height>(a, b, dst, count);
                    return;
                }
            eachSized<Op, width * height, 1>(a, b, dst, count);
        }
    }
}

// --- Other shapes --------------------------------------------------------------------------------

// The shared loops take views by reference. They get copies, so that the caller's own may live in registers.
template <class Op, class A, class B, class D>
[[gnu::always_inline]] inline void plainAny(A a, B b, D dst, std::ptrdiff_t width, std::ptrdiff_t height,
                                            std::ptrdiff_t count) {
    using T = typename D::Element;
    if constexpr (isTurned<A> || isTurned<B>) {
        if constexpr ((turnsOnce<A, B> || turnsOnce<B, A>)&&!isSingle<D>) {
            constexpr std::ptrdiff_t room = 4096;
            const std::ptrdiff_t rowBytes = width * static_cast<std::ptrdiff_t>(sizeof(T));
            if (count >= 4 && height * rowBytes <= room) {
                alignas(16) std::byte copy[room];
                if constexpr (isTurned<A>) copyTurned<T>(a.at(0), copy, width, height);
                else copyTurned<T>(b.at(0), copy, width, height);
                const std::byte* const filled = copy;
                const auto turned = plain(reinterpret_cast<const T*>(filled), rowBytes);
                if constexpr (isTurned<A>) plainAny<Op>(turned, b, dst, width, height, count);
                else plainAny<Op>(a, turned, dst, width, height, count);
                return;
            }
        }
        turnedGrids<Op>(a, b, dst, width, height, count);
    } else {
        std::ptrdiff_t bytes = width * static_cast<std::ptrdiff_t>(sizeof(T));
        if (height == 1 || (rowsTouch(a, bytes) && rowsTouch(b, bytes) && rowsTouch(dst, bytes))) {
            bytes *= height;
            height = 1;
            constexpr bool repeats = isConstant<A> != isSingle<A> || isConstant<B> != isSingle<B>;
            if constexpr (!repeats && !isListed<D>)
                if (objectsTouch(a, bytes) && objectsTouch(b, bytes) && objectsTouch(dst, bytes)) {
                    run<Op, T>(runSource<T>(a), runSource<T>(b), dst.origin, count * bytes);
                    return;
                }
        }
        grids<Op>(a, b, dst, bytes, height, count);
    }
}

// One long vector. Where the result begins inside a source, each element waits for those before it, and they go one by
// one. A result that ends inside a source overwrites only what has been read.
template <class Op, class A, class B, class D>
[[gnu::always_inline]] inline void plainVector(const A& a, const B& b, const D& dst, std::ptrdiff_t length) {
    using T = typename D::Element;
    const std::ptrdiff_t bytes = length * static_cast<std::ptrdiff_t>(sizeof(T));
    const auto readsFirst = [&](const auto& view) {
        if constexpr (isConstant<std::remove_cvref_t<decltype(view)>>) return true;
        else {
            const auto from = reinterpret_cast<std::uintptr_t>(view.origin);
            const auto to = reinterpret_cast<std::uintptr_t>(dst.origin);
            return to == from || to - from >= static_cast<std::uintptr_t>(bytes);
        }
    };
    if (readsFirst(a) && readsFirst(b)) run<Op, T>(runSource<T>(a), runSource<T>(b), dst.origin, bytes);
    else singles<Op, T>(runSource<T>(a), runSource<T>(b), dst.origin, bytes);
}

// --- By shape ------------------------------------------------------------------------------------

inline std::int32_t widthOf(MatrixShape shape) { return shape.width; }
inline std::int32_t widthOf(VectorShape shape) { return shape.length; }
inline std::int32_t heightOf(MatrixShape shape) { return shape.height; }
inline std::int32_t heightOf(VectorShape) { return 1; }

// Squares of order 3 to 6 and vectors of that length have paths of their own, which are reached in three comparisons
// of the size at most: calls known(width, height) with both as types, else other().
template <bool square, class Known, class Other>
[[gnu::always_inline]] inline auto byLength(std::int32_t size, const Known& known, const Other& other) {
    if (size <= 4) {
        if (size == 4) return known(Int<4>{}, Int < square ? 4 : 1 > {});
        if (size == 3) return known(Int<3>{}, Int < square ? 3 : 1 > {});
    } else {
        if (size == 6) return known(Int<6>{}, Int < square ? 6 : 1 > {});
        if (size < 6) return known(Int<5>{}, Int < square ? 5 : 1 > {});
    }
    return other();
}

template <class Known, class Other>
[[gnu::always_inline]] inline auto bySize(MatrixShape shape, const Known& known, const Other& other) {
    if (shape.width == shape.height) return byLength<true>(shape.width, known, other);
    return other();
}

template <class Known, class Other>
[[gnu::always_inline]] inline auto bySize(VectorShape shape, const Known& known, const Other& other) {
    return byLength<false>(shape.length, known, other);
}

// Arrays; single objects come in by single.h.
template <class Op, class A, class B, class D, class Shape>
[[gnu::always_inline]] inline void plainObjects(const A& a, const B& b, const D& dst, Shape shape, std::int32_t count) {
    bySize(
        shape,
        [&](auto width, auto height)
            __attribute__((always_inline)) { plainSized<Op, width, height>(a, b, dst, count); },
        [&]() __attribute__((always_inline)) { plainAny<Op>(a, b, dst, widthOf(shape), heightOf(shape), count); });
}

}  // namespace korm
