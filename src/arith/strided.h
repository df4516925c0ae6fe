// Objects with a stride between elements, walked row by row with the pointer and the step of each operand in registers: two stores
// in a row mostly go to one line of cache, which takes them in one cycle.
#pragma once

#include <algorithm>
#include <cstdint>
#include <utility>

#include "arith/operands.h"
#include "arith/plain.h"
#include "arith/rows.h"
#include "arith/streams.h"
#include "entry/views.h"
#include "kernel/known.h"
#include "kernel/unroll.h"
#include "kernel/vec.h"

namespace korm::inline KORM_VARIANT::arith {

// Walks an array object by object, row by row. Of the elements of a row, six can be addressed from one place: multiples of
// the step by 2 and 4 are part of an instruction for free, if the compiler doesn't know that it has seen this step before;
// three times the step has a register. `once`: for one object only, where an entry function would have to save such
// registers first.
template <class T, bool once>
struct Walk {
    BytePointer<T> at;
    T* const* list;
    std::ptrdiff_t step, triple, toNextRow, toNextObject;

    // `walked` is the distance by which the elements of a row have moved it on when it goes to the next row.
    Walk(const Array<T, Spacing::strided>& array, std::ptrdiff_t height, std::ptrdiff_t walked)
        : at(array.origin),
          list(array.list),
          step(array.elementStride),
          triple(3 * step),
          toNextRow(array.rowStride - walked),
          toNextObject(array.objectStride - (list == nullptr ? (height - 1) * array.rowStride + walked : 0)) {}

    template <int n>
    [[gnu::always_inline]] BytePointer<T> address() {
        if constexpr (n >= 2 && !once) step = opaque(step);
        if constexpr (n == 3 && !once) return at + triple;
        else if constexpr (n == 3 || n == 5) return opaque(at + step) + (n - 1) * step;
        else return at + n * step;
    }
    template <int n>
    [[gnu::always_inline]] auto get() {
        return load<std::remove_const_t<T>>(address<n>());
    }
    [[gnu::always_inline]] void moveOn(int n) {
        step = opaque(step);
        at = opaque(at + n * step);
    }
    void beginObject() {}
    [[gnu::always_inline]] void nextRow() { at = opaque(at + toNextRow); }
    [[gnu::always_inline]] void nextByStride() { at = opaque(at + toNextObject); }
    [[gnu::always_inline]] void nextOfList() {
        at = (list == nullptr ? at : reinterpret_cast<BytePointer<T>>(*++list)) + toNextObject;
    }
};

// A constant, or the constants of an array, as if they were elements.
template <class View>
struct ConstantWalk {
    View view;
    typename View::Element value;

    explicit ConstantWalk(const View& constants) : view(constants), value() {}
    template <int>
    [[gnu::always_inline]] auto get() const {
        return value;
    }
    void moveOn(int) {}
    [[gnu::always_inline]] void beginObject() { value = constantOf(view); }
    void nextRow() {}
    [[gnu::always_inline]] void nextByStride() { arith::nextByStride(view); }
    [[gnu::always_inline]] void nextOfList() {
        if constexpr (!isShared<View>)
            if (view.list != nullptr) view.nextOfList();
    }
};

// A copy of a shared operand: addressed by constants, it takes no registers.
template <class T, int width, int height>
struct CopyWalk {
    T value[height][width];
    int row = 0;

    template <class View>
    explicit CopyWalk(const View& view) {
        for (int i = 0; i < height; ++i)
            for (int j = 0; j < width; ++j)
                value[i][j] = load<T>(view.origin + i * view.rowStride + j * view.elementStride);
    }
    template <int n>
    [[gnu::always_inline]] T get() const {
        return value[row][n];
    }
    [[gnu::always_inline]] void beginObject() { row = 0; }
    [[gnu::always_inline]] void nextRow() { ++row; }
};

// `moved`: by how many elements it will have moved on when it goes to the next row.
template <bool once, class View>
[[gnu::always_inline]] inline auto walkOf(const View& view, std::ptrdiff_t moved, std::ptrdiff_t height) {
    if constexpr (isConstant<View>) return ConstantWalk<View>(view);
    else {
        using T = std::remove_pointer_t<std::remove_cvref_t<decltype(*view.list)>>;
        return Walk<T, once>(asArray(view), height, moved * view.elementStride);
    }
}

template <class Op, int count, class A, class B, class D>
[[gnu::always_inline]] inline void storeElements(A& a, B& b, D& to) {
    unrolled<count>([&](auto n) __attribute__((always_inline)) {
        store(to.template address<n>(), Op::apply(a.template get<n>(), b.template get<n>()));
    });
}

// --- Sizes known when compiling -------------------------------------------------------------------

template <class T, int width, int height, bool once, class View>
[[gnu::always_inline]] inline auto sizedWalk(const View& view) {
    if constexpr (!once && isShared<View> && !isConstant<View>) return CopyWalk<T, width, height>(view);
    else return walkOf<once>(view, 0, height);
}

template <class Op, int width, int height, class A, class B, class D>
[[gnu::always_inline]] inline void storeRows(A& x, B& y, D& z) {
    x.beginObject();
    y.beginObject();
    unrolled<height>([&](auto i) __attribute__((always_inline)) {
        storeElements<Op, width>(x, y, z);
        if constexpr (i + 1 < height) {
            x.nextRow();
            y.nextRow();
            z.nextRow();
        }
    });
}

template <class Op, int width, int height, class A, class B, class D>
[[gnu::always_inline]] inline void stridedSized(const A& a, const B& b, const D& dst, std::ptrdiff_t count) {
    using T = typename D::Element;
    constexpr int elements = width * height;
    constexpr int together = elements <= 6 ? 2 : elements <= 16 ? 1 : 0;
    eachObject<together>(
        sizedWalk<T, width, height, false>(a), sizedWalk<T, width, height, false>(b),
        sizedWalk<T, width, height, false>(dst), count,
        [](auto& x, auto& y, auto& z) __attribute__((always_inline)) { storeRows<Op, width, height>(x, y, z); });
}

// --- Any size -------------------------------------------------------------------------------------

// Element by element, in ascending order; leaves all three behind the last one. The loop is bound by the number of
// instructions and of taken branches: with rounds of four, single elements for the rest, and strides on the stack a
// row of 10 takes double the time.
template <class Op, class A, class B, class D>
[[gnu::always_inline]] inline void storeRow(A& a, B& b, D& to, std::ptrdiff_t length) {
    const auto round = [&](auto count) __attribute__((always_inline)) {
        storeElements<Op, count>(a, b, to);
        a.moveOn(count);
        b.moveOn(count);
        to.moveOn(count);
    };
    while ((length -= 8) >= 0) {
        round(Int<4>{});
        round(Int<4>{});
    }
    if (length & 4) round(Int<4>{});
    if (length & 2) round(Int<2>{});
    if (length & 1) round(Int<1>{});
}

// Do no two elements of a result share bytes? By rising size, each stride passes over all that the smaller ones span. Only
// then may elements be done in another order than objects, rows, columns.
template <class D>
inline bool elementsDisjoint(const D& d, std::ptrdiff_t width, std::ptrdiff_t height, std::ptrdiff_t count) {
    struct Axis {
        std::ptrdiff_t stride, length;
    };
    Axis x{d.elementStride, width}, y{d.rowStride, height}, z{d.objectStride, count};
    if (x.stride > y.stride) std::swap(x, y);
    if (y.stride > z.stride) std::swap(y, z);
    if (x.stride > y.stride) std::swap(x, y);
    std::ptrdiff_t span = sizeof(typename D::Element);
    for (const Axis& axis : {x, y, z}) {
        if (axis.length > 1 && axis.stride < span) return false;
        span += (axis.length - 1) * axis.stride;
    }
    return true;
}

// All operands are arrays here: an element that is loaded anew costs as much as one that is not.
template <class Op, class A, class B, class D>
[[gnu::noinline]] void stridedAny(const A& first, const B& second, const D& result, std::ptrdiff_t width,
                                  std::ptrdiff_t height, std::ptrdiff_t count) {
    A a = first;
    B b = second;
    D dst = result;
    if (height > width && elementsDisjoint(dst, width, height, 1)) {
        std::swap(width, height);
        std::swap(a.rowStride, a.elementStride);
        std::swap(b.rowStride, b.elementStride);
        std::swap(dst.rowStride, dst.elementStride);
    }
    eachObject(
        walkOf<false>(a, width, height), walkOf<false>(b, width, height), walkOf<false>(dst, width, height),
        count, [&](auto& x, auto& y, auto& z) __attribute__((always_inline)) {
            x.beginObject();
            y.beginObject();
            for (std::ptrdiff_t i = height;;) {
                storeRow<Op>(x, y, z, width);
                if (--i == 0) break;
                x.nextRow();
                y.nextRow();
                z.nextRow();
            }
        });
}

// The array with objects in place of columns, columns in place of rows and rows in place of objects, from object `first` on.
template <class View>
[[gnu::always_inline]] inline auto alongObjects(const View& view, std::ptrdiff_t first) {
    const auto array = asArray(view);
    using T = std::remove_pointer_t<std::remove_cvref_t<decltype(*array.list)>>;
    if constexpr (isConstant<View> && isShared<View>) return array;
    else
        return Array<T, Spacing::strided>{array.origin + first * array.objectStride, nullptr, array.rowStride,
                                          array.elementStride, array.objectStride};
}

// The same element of one object after the other, in blocks of objects that stay in the first-level cache.
template <class Op, class A, class B, class D>
[[gnu::always_inline]] inline void stridedStreams(const A& a, const B& b, const D& dst, std::ptrdiff_t width,
                                                  std::ptrdiff_t height, std::ptrdiff_t count) {
    const std::ptrdiff_t block = objectsOfBlock(dst, count);
    for (std::ptrdiff_t first = 0; first < count; first += block)
        stridedAny<Op>(alongObjects(a, first), alongObjects(b, first), alongObjects(dst, first),
                       std::min(block, count - first), width, height);
}

// One function for both layouts. Streams are taken where objects are one element apart, or too small for rows of their own.
template <class Op, class A, class B, class D, class Shape>
[[gnu::noinline]] void stridedObjects(const A& a, const B& b, const D& dst, Shape shape, std::ptrdiff_t count) {
    const std::ptrdiff_t width = widthOf(shape), height = heightOf(shape);
    const auto mayReorder = [&]() __attribute__((always_inline)) {
        return dst.list == nullptr && count >= 16 && elementsDisjoint(dst, width, height, count);
    };
    if (areStreams(a, b, dst) && mayReorder()) {
        constexpr std::ptrdiff_t size = sizeof(typename D::Element);
        for (std::ptrdiff_t i = 0; i < height; ++i)
            rows<Op>(acrossObjects(a, i), acrossObjects(b, i), acrossObjects(dst, i), count * size, width);
        return;
    }
    bySize(
        shape, [&](auto w, auto h) __attribute__((always_inline)) { stridedSized<Op, w, h>(a, b, dst, count); },
        [&]() __attribute__((always_inline)) {
            if (width * height <= 12 && mayReorder()) stridedStreams<Op>(a, b, dst, width, height, count);
            else stridedAny<Op>(asArray(a), asArray(b), dst, width, height, count);
        });
}

}  // namespace korm::inline KORM_VARIANT::arith
