// Arrays whose elements lie side by side.
#pragma once

#include <cstdint>

#include "arith/operands.h"
#include "arith/pieces.h"
#include "arith/rows.h"
#include "arith/tiles.h"
#include "arith/transposed.h"
#include "entry/views.h"

namespace korm::inline KORM_VARIANT::arith {

// The object at hand as it is stored: rows, or a constant.
template <class T, int rows = 1, class View>
[[gnu::always_inline]] inline auto stored(const View& view) {
    if constexpr (isConstant<View>) return Same<T>{repeated(constantOf(view))};
    else
        return Rows<T>{view.origin,
                       strideOf<rows>(view.origin, isTransposed<View> ? view.elementStride : view.rowStride)};
}

// One object of a known size. At least one source that is transposed still has to be.
template <class Op, class T, int width, int height, bool transposeA, bool transposeB, class A, class B>
[[gnu::always_inline]] inline void storeSized(const A& a, const B& b, std::byte* to, std::ptrdiff_t rowStride) {
    constexpr bool constantA = std::is_same_v<A, Same<T>>;
    constexpr bool constantB = std::is_same_v<B, Same<T>>;
    constexpr bool both =
        (transposeA || (constantA && constantFirst<T>)) && (transposeB || (constantB && constantFirst<T>));
    if constexpr (!transposeA && !transposeB) storeObject<T, width, height>(combined<Op, T>(a, b), to, rowStride);
    else if constexpr (both) storeTransposed<T, width, height>(combined<Op, T>(a, b), asIs, to, rowStride);
    else if constexpr (transposeA) storeTransposed<T, width, height>(a, withSecond<Op>(b), to, rowStride);
    else storeTransposed<T, width, height>(b, withFirst<Op>(a), to, rowStride);
}

// A shared operand in locals, as it is stored (those that are transposed are square); an array has nothing to hold.
template <class T, int width, int height, class View>
[[gnu::always_inline]] inline auto held(const View& view) {
    if constexpr (!isShared<View>) return 0;
    else if constexpr (isConstant<View>) return stored<T>(view);
    else return hold<T, width, height>(stored<T>(view));
}

template <class T, int rows = 1, class View, class Held>
[[gnu::always_inline]] inline decltype(auto) heldOr(const Held& held, const View& view) {
    if constexpr (isShared<View>) return (held);
    else return stored<T, rows>(view);
}

// Object by object.
template <class Op, int width, int height, class A, class B, class D>
[[gnu::always_inline]] inline void eachSized(const A& a, const B& b, const D& dst, std::ptrdiff_t count) {
    using T = typename D::Element;
    const auto x = held<T, width, height>(a);
    const auto y = held<T, width, height>(b);
    eachSmallObject<width * height>(
        a, b, dst, count, [&](const A& objectA, const B& objectB, const D& z) __attribute__((always_inline)) {
            storeSized<Op, T, width, height, isTransposed<A>, isTransposed<B>>(
                heldOr<T, height>(x, objectA), heldOr<T, height>(y, objectB), z.origin, z.rowStride);
        });
}

// Passes over objects that lie a stride apart.
template <class... Views>
[[gnu::always_inline]] inline void moveOn(std::ptrdiff_t objects, Views&... views) {
    ((views.origin += isShared<Views> ? 0 : objects * views.objectStride), ...);
}

// Objects of order 3 with a transposed source, all rows touching, as runs of 9 elements. `objects` go at a time: more than one
// where they touch as well. A run of a shared operand is that of all of them.
template <class Op, int objects, class A, class B, class D>
[[gnu::always_inline]] inline void transposedThrees(const A& a, const B& b, const D& dst, std::ptrdiff_t count) {
    using T = typename D::Element;
    constexpr int elements = 9 * objects;
    constexpr bool first = (isTransposed<A> || (isConstant<A> && constantFirst<T>)) &&
                           (isTransposed<B> || (isConstant<B> && constantFirst<T>));
    const auto run = [](const auto& source) __attribute__((always_inline)) { return hold<T, elements, 1>(source); };
    const auto x = held<T, elements, 1>(a);
    const auto y = held<T, elements, 1>(b);
    eachSmallObject<elements>(
        a, b, dst, count, [&](const A& objectA, const B& objectB, const D& z) __attribute__((always_inline)) {
            const auto& p = heldOr<T>(x, objectA);
            const auto& q = heldOr<T>(y, objectB);
            if constexpr (first) storeObject<T, elements, 1>(transposedThree(run(combined<Op, T>(p, q))), z.origin, 0);
            else if constexpr (isTransposed<A>)
                storeObject<T, elements, 1>(combined<Op, T>(transposedThree(run(p)), q), z.origin, 0);
            else storeObject<T, elements, 1>(combined<Op, T>(p, transposedThree(run(q))), z.origin, 0);
        });
}

// Two objects of doubles are 9 vectors, where object by object they would be 8 and two single elements.
template <class Op, class A, class B, class D>
[[gnu::always_inline]] inline void eachTransposedThree(A a, B b, D dst, std::ptrdiff_t count) {
    using T = typename D::Element;
    constexpr std::ptrdiff_t bytes = 9 * sizeof(T);
    if constexpr (!isFloat<T>)
        if (dst.list == nullptr && objectsTouch(bytes, a, b, dst)) {
            alignas(16) std::byte pair[2 * bytes];
            const auto inPairs = [&](auto view) __attribute__((always_inline)) {
                if constexpr (!isShared<decltype(view)>) view.objectStride = 2 * bytes;
                else if constexpr (!isConstant<decltype(view)>) {
                    for (int k = 0; k < 2; ++k) storeObject<T, 9, 1>(stored<T>(view), pair + k * bytes, 0);
                    view.origin = pair;
                }
                return view;
            };
            transposedThrees<Op, 2>(inPairs(a), inPairs(b), inPairs(dst), count / 2);
            if (count % 2 == 0) return;
            moveOn(count - 1, a, b, dst);
            count = 1;
        }
    transposedThrees<Op, 1>(a, b, dst, count);
}

// Packed arrays; of a shared operand the rows touch. Leaves the operands at the first object that isn't done, and returns how
// many are left.
template <class Op, int width, int height, class A, class B, class D>
[[gnu::always_inline]] inline std::ptrdiff_t packed(A& a, B& b, D& dst, std::ptrdiff_t count) {
    using T = typename D::Element;
    constexpr int elements = width * height;
    constexpr bool constants = (isConstant<A> && !isShared<A>) || (isConstant<B> && !isShared<B>);
    constexpr bool shared = (isShared<A> && !isConstant<A>) || (isShared<B> && !isConstant<B>);
    if constexpr (!constants && !shared) {
        run<Op, T>(rowOf<T>(a, 0), rowOf<T>(b, 0), dst.origin, count * dst.objectStride);
        return 0;
    } else if constexpr (!constants && Tile<T, elements, false>::objects > 1 &&
                         Tile<T, elements, false>::vectors > 15) {
        return count;  // registers hold one object, but not the whole tile
    } else {
        using Layout = Tile<T, elements, constants>;
        alignas(16) std::byte tile[Layout::bytes];
        const auto asTile = [&](auto view) __attribute__((always_inline)) {
            if constexpr (isShared<decltype(view)>) {
                for (int k = 0; k < Layout::objects; ++k)
                    storeObject<T, elements, 1>(stored<T>(view), tile + k * dst.objectStride, 0);
                view.origin = tile;
            }
            return view;
        };
        const std::ptrdiff_t done = storeTiles<Op, T, elements, constants>(asTile(a), asTile(b), dst.origin, count);
        moveOn(done, a, b, dst);
        return count - done;
    }
}

// The view with its row stride as a constant, for addresses without arithmetic.
template <std::ptrdiff_t rowBytes, class View>
[[gnu::always_inline]] inline View touching(View view) {
    if constexpr (isTransposed<View>) view.elementStride = rowBytes;
    else if constexpr (!isConstant<View>) view.rowStride = rowBytes;
    return view;
}

template <class Op, int width, int height, class A, class B, class D>
[[gnu::always_inline]] inline void plainSized(const A& first, const B& second, const D& result, std::ptrdiff_t count) {
    constexpr std::ptrdiff_t rowBytes = width * static_cast<std::ptrdiff_t>(sizeof(typename D::Element));
    constexpr std::ptrdiff_t bytes = height * rowBytes;
    A a = first;
    B b = second;
    D dst = result;
    const bool rowsAreOne =
        height == 1 || (rowsTouch(a, rowBytes) && rowsTouch(b, rowBytes) && rowsTouch(dst, rowBytes));
    if (!rowsAreOne) {
        eachSized<Op, width, height>(a, b, dst, count);
    } else if constexpr (isTransposed<A> || isTransposed<B>) {
        if constexpr (width == 3) eachTransposedThree<Op>(a, b, dst, count);
        else eachSized<Op, width, height>(touching<rowBytes>(a), touching<rowBytes>(b), touching<rowBytes>(dst), count);
    } else {
        if (dst.list == nullptr && objectsTouch(bytes, a, b, dst)) count = packed<Op, width, height>(a, b, dst, count);
        if (count > 0) eachSized<Op, width * height, 1>(a, b, dst, count);
    }
}

// Any shape.
template <class Op, class A, class B, class D, class Height>
[[gnu::always_inline]] inline void plainAny(const A& a, const B& b, const D& dst, std::ptrdiff_t width, Height height,
                                            std::ptrdiff_t count) {
    using T = typename D::Element;
    if constexpr (isTransposed<A> || isTransposed<B>) {
        transposedObjects<Op>(asArray(a), asArray(b), dst, width, height, count);
    } else {
        std::ptrdiff_t bytes = width * static_cast<std::ptrdiff_t>(sizeof(T));
        if constexpr (!std::is_same_v<Height, Known<1>>)
            if (height != 1 && !(rowsTouch(a, bytes) && rowsTouch(b, bytes) && rowsTouch(dst, bytes)))
                return manyRows<Op>(asArray(a), asArray(b), dst, bytes, height, count);
        bytes *= height;
        constexpr bool repeats = isConstant<A> != isShared<A> || isConstant<B> != isShared<B>;
        if constexpr (!repeats)
            if (dst.list == nullptr && objectsTouch(bytes, a, b, dst)) {
                run<Op, T>(rowOf<T>(a, 0), rowOf<T>(b, 0), dst.origin, count * bytes);
                return;
            }
        rows<Op>(a, b, dst, bytes, count);
    }
}

// Squares of order 3 to 6 and vectors of that length have paths of their own, which are reached in three comparisons
// of the size at most: calls known(width, height) with both as types, else any().
template <class Shape, class Known, class Any>
[[gnu::always_inline]] inline auto bySize(Shape shape, const Known& known, const Any& any) {
    constexpr bool square = std::is_same_v<Shape, MatrixShape>;
    const std::int32_t size = widthOf(shape);
    const auto sized = [&](auto n) __attribute__((always_inline)) { return known(n, Int < square ? n : 1 > {}); };
    if (!square || size == heightOf(shape)) {
        if (size <= 4) {
            if (size == 4) return sized(Int<4>{});
            if (size == 3) return sized(Int<3>{});
        } else {
            if (size == 6) return sized(Int<6>{});
            if (size < 6) return sized(Int<5>{});
        }
    }
    return any();
}

// One function for both layouts.
template <class Op, class A, class B, class D, class Shape>
[[gnu::noinline]] void plainObjects(const A& a, const B& b, const D& dst, Shape shape, std::ptrdiff_t count) {
    bySize(
        shape,
        [&](auto width, auto height)
            __attribute__((always_inline)) { plainSized<Op, width, height>(a, b, dst, count); },
        [&]() __attribute__((always_inline)) { plainAny<Op>(a, b, dst, widthOf(shape), heightOf(shape), count); });
}

// A shared transposed operand beside an array that is not is transposed before the loop.
template <class Op, class A, class B, class D, class Shape>
[[gnu::always_inline]] inline void plainArrays(const A& a, const B& b, const D& dst, Shape shape,
                                               std::ptrdiff_t count) {
    using T = typename D::Element;
    constexpr bool copyA = isTransposed<A> && isShared<A> && isAdjacent<B>;
    constexpr bool copyB = isTransposed<B> && isShared<B> && isAdjacent<A>;
    if constexpr (copyA || copyB) {
        constexpr std::ptrdiff_t room = 4096;
        const std::ptrdiff_t width = widthOf(shape), height = heightOf(shape);
        const std::ptrdiff_t rowBytes = width * static_cast<std::ptrdiff_t>(sizeof(T));
        if (height * rowBytes > room || (count < 4 && width > 6)) return plainAny<Op>(a, b, dst, width, height, count);
        alignas(16) std::byte copy[room];
        const GridView<const T, Objects::single, Spacing::rowAdjacent> copied{{copy}, 0, rowBytes, sizeof(T)};
        if constexpr (copyA) {
            copyTransposed<T>(a, copy, width, height);
            plainObjects<Op>(copied, b, dst, shape, count);
        } else {
            copyTransposed<T>(b, copy, width, height);
            plainObjects<Op>(a, copied, dst, shape, count);
        }
    } else plainObjects<Op>(a, b, dst, shape, count);
}

}  // namespace korm::inline KORM_VARIANT::arith
