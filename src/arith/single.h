// Kernels of single objects. They are inlined into their entry functions, where the way to the first
// element counts: squares of order 3 to 6 and vectors of that length are reached by two to six instructions
// of choice, and all else is handed to a function of its own in registers, so that the entry function needs
// no stack frame.
#pragma once

#include "arith/apart.h"
#include "arith/plain.h"
#include "entry/views.h"

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
    auto view() const { return constant(value); }
};

template <class View>
using HandedMatrix = Handed<View, std::ptrdiff_t>;
template <class View>
using HandedVector = Handed<View, NoStride>;

template <class Op, class A, class B, class D>
[[gnu::noinline]] void otherMatrix(HandedMatrix<A> a, HandedMatrix<B> b, HandedMatrix<D> dst, MatrixShape shape) {
    plainAny<Op>(a.view(), b.view(), dst.view(), shape.width, shape.height, 1);
}

template <class Op, class A, class B, class D>
[[gnu::noinline]] void otherVector(HandedVector<A> a, HandedVector<B> b, HandedVector<D> dst, std::ptrdiff_t length) {
    plainVector<Op>(a.view(), b.view(), dst.view(), length);
}

template <class Op, class A, class B, class D>
[[gnu::always_inline]] inline void other(const A& a, const B& b, const D& dst, MatrixShape shape) {
    otherMatrix<Op, A, B, D>(HandedMatrix<A>(a), HandedMatrix<B>(b), HandedMatrix<D>(dst), shape);
}

template <class Op, class A, class B, class D>
[[gnu::always_inline]] inline void other(const A& a, const B& b, const D& dst, VectorShape shape) {
    otherVector<Op, A, B, D>(HandedVector<A>(a), HandedVector<B>(b), HandedVector<D>(dst), shape.length);
}

// Entry e of a table, whose elements come in the order in which the result takes them.
template <class T, class View>
[[gnu::always_inline]] inline T entryOf(const View& view, std::ptrdiff_t e) {
    if constexpr (isConstant<View>) return view.value;
    else return load<T>(reinterpret_cast<const std::byte*>(view.table[e]) + view.offset);
}

// Tables that are read in one order: one loop for all shapes, in as many registers as need no saving.
template <class Op, class A, class B, class D>
[[gnu::always_inline]] inline void scatteredEntries(const A& a, const B& b, const D& dst, std::ptrdiff_t entries) {
    using T = typename D::Element;
    std::ptrdiff_t e = 0;
    do {
        store(reinterpret_cast<std::byte*>(dst.table[e]) + dst.offset, Op::apply(entryOf<T>(a, e), entryOf<T>(b, e)));
    } while (++e < entries);
}

template <class Op, class A, class B, class D, class Shape>
[[gnu::always_inline]] inline void singleObject(const A& a, const B& b, const D& dst, Shape shape) {
    if constexpr (D::spacing == Spacing::rowAdjacent) {
        bySize(
            shape,
            [&](auto width, auto height)
                __attribute__((always_inline)) { plainSized<Op, width, height>(a, b, dst, oneObject); },
            [&]() __attribute__((always_inline)) { other<Op>(a, b, dst, shape); });
    } else if constexpr (D::spacing == Spacing::scattered && inTableOrder<A> && inTableOrder<B>) {
        scatteredEntries<Op>(a, b, dst, static_cast<std::ptrdiff_t>(widthOf(shape)) * heightOf(shape));
    } else {
        apartObjects<Op>(a, b, dst, shape, oneObject);
    }
}

}  // namespace korm
