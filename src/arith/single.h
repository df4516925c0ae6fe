// Kernels of single objects. They are inlined into their entry functions, where the way to the first
// element counts: squares of order 3 to 6 and vectors of that length are reached by two to six instructions
// of choice, and all else is handed to a function of its own in registers, so that the entry function needs
// no stack frame. Plain kernels tell whether the size is right: those with a path of their own are.
#pragma once

#include "arith/apart.h"
#include "arith/plain.h"
#include "entry/checks.h"
#include "entry/views.h"
#include "korm.h"

namespace korm {

struct NoStride {
    explicit NoStride(std::ptrdiff_t) {}
    operator std::ptrdiff_t() const { return noRows; }
};

// A matrix in two registers, a vector or a constant in one, and the view that it stands for.
template <class View, class RowStride>
struct Handed {
    static constexpr bool turned = View::spacing == Spacing::columnAdjacent;
    decltype(View::origin) origin;
    [[no_unique_address]] RowStride rowStride;

    explicit Handed(const View& view) : origin(view.origin), rowStride(turned ? view.elementStride : view.rowStride) {}
    bool rowsAre(std::ptrdiff_t bytes) const { return rowStride == bytes; }
    auto row() const { return Adjacent<typename View::Element>{origin}; }
    View view() const {
        constexpr std::ptrdiff_t size = sizeof(typename View::Element);
        if constexpr (turned) return {{origin}, 0, size, rowStride};
        else return {{origin}, 0, rowStride, size};
    }
};

template <class T, Objects objects, class RowStride>
struct Handed<ConstantView<T, objects>, RowStride> {
    T value;

    explicit Handed(const ConstantView<T, objects>& view) : value(view.value) {}
    static bool rowsAre(std::ptrdiff_t) { return true; }
    auto row() const { return Same<T>{broadcast(value)}; }
    auto view() const { return constant(value); }
};

template <class View>
using HandedMatrix = Handed<View, std::ptrdiff_t>;
template <class View>
using HandedVector = Handed<View, NoStride>;

// They return the status, so that an entry function ends with a jump and, again, needs no frame.
template <class Op, class T, class A, class B>
[[gnu::noinline]] std::int32_t otherRow(A a, B b, std::byte* to, std::ptrdiff_t bytes) {
    if (bytes < 16) few<Op, T>(a, b, to, 0, bytes);
    else longRow<Op, T>(a, b, to, bytes - 16);
    return korStatusOk;
}

template <class Op, class A, class B, class D>
[[gnu::noinline]] std::int32_t otherRows(HandedMatrix<A> a, HandedMatrix<B> b, HandedMatrix<D> dst, MatrixShape shape) {
    if (anyBelowOne(shape.width, shape.height)) return korStatusBadSize;
    plainAny<Op>(a.view(), b.view(), dst.view(), shape.width, shape.height, 1);
    return korStatusOk;
}

template <class Op, class A, class B, class D>
[[gnu::noinline]] std::int32_t otherMatrix(HandedMatrix<A> a, HandedMatrix<B> b, HandedMatrix<D> dst,
                                           MatrixShape shape) {
    using T = typename D::Element;
    const std::ptrdiff_t bytes = shape.width * static_cast<std::ptrdiff_t>(sizeof(T));
    if (shape.height > 0 && bytes > 0 && a.rowsAre(bytes) && b.rowsAre(bytes) && dst.rowsAre(bytes))
        return otherRow<Op, T>(a.row(), b.row(), dst.origin, bytes * shape.height);
    return otherRows<Op, A, B, D>(a, b, dst, shape);
}

template <class Op, class A, class B, class D>
[[gnu::noinline]] std::int32_t otherVector(HandedVector<A> a, HandedVector<B> b, HandedVector<D> dst,
                                           std::ptrdiff_t length) {
    if (anyBelowOne(length)) return korStatusBadSize;
    plainVector<Op>(a.view(), b.view(), dst.view(), length);
    return korStatusOk;
}

template <class Op, class A, class B, class D>
[[gnu::always_inline]] inline std::int32_t other(const A& a, const B& b, const D& dst, MatrixShape shape) {
    const HandedMatrix<A> x(a);
    const HandedMatrix<B> y(b);
    const HandedMatrix<D> z(dst);
    if constexpr (isTurned<A> || isTurned<B>) return otherRows<Op, A, B, D>(x, y, z, shape);
    else return otherMatrix<Op, A, B, D>(x, y, z, shape);
}

template <class Op, class A, class B, class D>
[[gnu::always_inline]] inline std::int32_t other(const A& a, const B& b, const D& dst, VectorShape shape) {
    return otherVector<Op, A, B, D>(HandedVector<A>(a), HandedVector<B>(b), HandedVector<D>(dst), shape.length);
}

// The element at the place of a table where a source has it for entry `e` of the result: transposed, entry `turned`.
template <class T, class View>
[[gnu::always_inline]] inline T entryOf(const View& view, std::ptrdiff_t e, std::ptrdiff_t turned) {
    if constexpr (isConstant<View>) return view.value;
    else return load<T>(reinterpret_cast<const std::byte*>(view.table[inTableOrder<View> ? e : turned]) + view.offset);
}

// One loop for all shapes, in few registers. A table that is read by columns is passed over with the step of a stored
// row, `height`, modulo its last entry.
template <class Op, class A, class B, class D>
[[gnu::always_inline]] inline void scatteredEntries(const A& a, const B& b, const D& dst, std::ptrdiff_t width,
                                                    std::ptrdiff_t height) {
    using T = typename D::Element;
    const std::ptrdiff_t entries = width * height;
    std::ptrdiff_t e = 0;
    std::ptrdiff_t turned = 0;
    do {
        store(reinterpret_cast<std::byte*>(dst.table[e]) + dst.offset,
              Op::apply(entryOf<T>(a, e, turned), entryOf<T>(b, e, turned)));
        turned += height;
        if (turned >= entries) turned -= entries - 1;
    } while (++e < entries);
}

template <class Op, int width, int height, class A, class B, class D>
[[gnu::always_inline]] inline void scatteredSized(const A& a, const B& b, const D& dst) {
    using T = typename D::Element;
    forRows<height>([&](auto i) __attribute__((always_inline)) {
        forRows<width>([&](auto j) __attribute__((always_inline)) {
            constexpr std::ptrdiff_t e = i * width + j;
            constexpr std::ptrdiff_t turned = j * height + i;
            store(reinterpret_cast<std::byte*>(dst.table[e]) + dst.offset,
                  Op::apply(entryOf<T>(a, e, turned), entryOf<T>(b, e, turned)));
        });
    });
}

template <class Op, class A, class B, class D, class Shape>
[[gnu::always_inline]] inline std::int32_t singleObject(const A& a, const B& b, const D& dst, Shape shape) {
    if constexpr (D::spacing == Spacing::rowAdjacent) {
        return bySize(
            shape,
            [&](auto width, auto height) __attribute__((always_inline)) {
                plainSized<Op, width, height>(a, b, dst, oneObject);
                return std::int32_t{korStatusOk};
            },
            [&]() __attribute__((always_inline)) { return other<Op>(a, b, dst, shape); });
    } else if constexpr (D::spacing == Spacing::scattered) {
        bySize(
            shape,
            [&](auto width, auto height)
                __attribute__((always_inline)) { scatteredSized<Op, width, height>(a, b, dst); },
            [&]() __attribute__((always_inline)) { scatteredEntries<Op>(a, b, dst, widthOf(shape), heightOf(shape)); });
    } else {
        apartObjects<Op>(a, b, dst, shape, oneObject);
    }
    return korStatusOk;
}

}  // namespace korm
