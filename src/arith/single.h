// Kernels of single objects. They are inlined into their entry functions, where the way to the first
// element counts: squares of order 3 to 6 and vectors of that length are reached by two to six instructions
// of choice, and all else is handed to a function of its own in registers, so that the entry function needs
// no stack frame. Plain kernels tell whether the size is right: those with a path of their own are.
#pragma once

#include "arith/operands.h"
#include "arith/plain.h"
#include "arith/strided.h"
#include "entry/checks.h"
#include "entry/views.h"
#include "korm.h"

namespace korm::inline KORM_VARIANT::arith {

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

template <class T, int height, class Source>
[[gnu::always_inline]] inline auto split(Source source) {
    if constexpr (height < 4 || !inMemory<Source>) return source;
    else return SplitRows<T>{source.origin, source.rowStride, opaque(source.origin + 3 * source.rowStride)};
}

struct NoStride {
    explicit NoStride(std::ptrdiff_t) {}
    operator std::ptrdiff_t() const { return noRows; }
};

// An object with one stride (a plain matrix, a strided vector) in two registers, a plain vector or a constant in one, and the
// operand that it stands for.
template <class View, class Stride>
struct Handed {
    decltype(View::origin) origin;
    [[no_unique_address]] Stride stride;

    explicit Handed(const View& view)
        : origin(view.origin), stride(isAdjacent<View> ? view.rowStride : view.elementStride) {}
    bool rowsAre(std::ptrdiff_t bytes) const { return stride == bytes; }
    auto row() const { return Adjacent<typename View::Element>{origin}; }
    auto operand() const {
        constexpr std::ptrdiff_t size = sizeof(typename View::Element);
        constexpr bool ofRows = isAdjacent<View>;
        return asArray(View{{origin}, 0, ofRows ? stride : size, ofRows ? size : stride});
    }
};

template <class T, Objects objects, class Stride>
struct Handed<ConstantView<T, objects>, Stride> {
    T value;

    explicit Handed(const ConstantView<T, objects>& view) : value(view.value) {}
    static bool rowsAre(std::ptrdiff_t) { return true; }
    auto row() const { return Same<T>{repeated(value)}; }
    auto operand() const { return constant(value); }
};

template <class View>
using HandedWithStride = Handed<View, std::ptrdiff_t>;
template <class View>
using HandedVector = Handed<View, NoStride>;

template <class Op, class A, class B, class D>
[[gnu::noinline]] std::int32_t handedRows(HandedWithStride<A> a, HandedWithStride<B> b, HandedWithStride<D> dst,
                                          MatrixShape shape) {
    if (anyBelowOne(shape.width, shape.height)) return korStatusBadSize;
    plainAny<Op>(a.operand(), b.operand(), dst.operand(), shape.width, heightOf(shape), 1);
    return korStatusOk;
}

template <class Op, class A, class B, class D>
[[gnu::noinline]] std::int32_t handedMatrix(HandedWithStride<A> a, HandedWithStride<B> b, HandedWithStride<D> dst,
                                            MatrixShape shape) {
    using T = typename D::Element;
    const std::ptrdiff_t bytes = shape.width * static_cast<std::ptrdiff_t>(sizeof(T));
    if (shape.height > 0 && bytes > 0 && a.rowsAre(bytes) && b.rowsAre(bytes) && dst.rowsAre(bytes))
        return anyRow<Op, T>(a.row(), b.row(), dst.origin, bytes * shape.height);
    return handedRows<Op, A, B, D>(a, b, dst, shape);
}

// One long vector. Where the result begins inside a source, each element waits for those before it, and they go one by
// one. A result that ends inside a source overwrites only what has been read.
template <class Op, class A, class B, class D>
[[gnu::noinline]] std::int32_t handedVector(HandedVector<A> a, HandedVector<B> b, HandedVector<D> dst,
                                            std::ptrdiff_t length) {
    using T = typename D::Element;
    if (anyBelowOne(length)) return korStatusBadSize;
    const std::ptrdiff_t bytes = length * static_cast<std::ptrdiff_t>(sizeof(T));
    const auto readsFirst = [&](const auto& source) {
        if constexpr (requires { source.value; }) return true;
        else {
            const auto from = reinterpret_cast<std::uintptr_t>(source.origin);
            const auto to = reinterpret_cast<std::uintptr_t>(dst.origin);
            return to == from || to - from >= static_cast<std::uintptr_t>(bytes);
        }
    };
    if (readsFirst(a) && readsFirst(b)) return run<Op, T>(a.row(), b.row(), dst.origin, bytes);
    return oneByOne<Op, T>(a.row(), b.row(), dst.origin, bytes);
}

template <class Op, class A, class B, class D>
[[gnu::noinline]] void handedStrides(HandedWithStride<A> a, HandedWithStride<B> b, HandedWithStride<D> dst,
                                     std::ptrdiff_t length) {
    auto x = walkOf<false>(a.operand(), length, 1);
    auto y = walkOf<false>(b.operand(), length, 1);
    auto z = walkOf<false>(dst.operand(), length, 1);
    x.beginObject();
    y.beginObject();
    storeRow<Op>(x, y, z, length);
}

template <class Op, class A, class B, class D>
[[gnu::always_inline]] inline std::int32_t handOn(const A& a, const B& b, const D& dst, MatrixShape shape) {
    const HandedWithStride<A> x(a);
    const HandedWithStride<B> y(b);
    const HandedWithStride<D> z(dst);
    if constexpr (isTransposed<A> || isTransposed<B>) return handedRows<Op, A, B, D>(x, y, z, shape);
    else return handedMatrix<Op, A, B, D>(x, y, z, shape);
}

template <class Op, class A, class B, class D>
[[gnu::always_inline]] inline std::int32_t handOn(const A& a, const B& b, const D& dst, VectorShape shape) {
    return handedVector<Op, A, B, D>(HandedVector<A>(a), HandedVector<B>(b), HandedVector<D>(dst), shape.length);
}

// The element of a source for entry `e` of the result, which in a table that is read as its transpose is `transposed`.
template <class T, class View>
[[gnu::always_inline]] inline T entryOf(const View& view, std::ptrdiff_t e, std::ptrdiff_t transposed) {
    if constexpr (isConstant<View>) return view.value;
    else
        return load<T>(reinterpret_cast<const std::byte*>(view.table[View::transposed ? transposed : e]) + view.offset);
}

// One loop for all shapes, in a small number of registers. A table that is read by columns is passed over with the step of a
// stored row, `height`, modulo its last entry.
template <class Op, class A, class B, class D>
[[gnu::always_inline]] inline void scatteredEntries(const A& a, const B& b, const D& dst, std::ptrdiff_t width,
                                                    std::ptrdiff_t height) {
    using T = typename D::Element;
    const std::ptrdiff_t entries = width * height;
    std::ptrdiff_t e = 0;
    std::ptrdiff_t transposed = 0;
    do {
        store(reinterpret_cast<std::byte*>(dst.table[e]) + dst.offset,
              Op::apply(entryOf<T>(a, e, transposed), entryOf<T>(b, e, transposed)));
        transposed += height;
        if (transposed >= entries) transposed -= entries - 1;
    } while (++e < entries);
}

template <class Op, int width, int height, class A, class B, class D>
[[gnu::always_inline]] inline void scatteredSized(const A& a, const B& b, const D& dst) {
    using T = typename D::Element;
    unrolled<width * height>([&](auto e) __attribute__((always_inline)) {
        constexpr std::ptrdiff_t transposed = e % width * height + e / width;
        store(reinterpret_cast<std::byte*>(dst.table[e]) + dst.offset,
              Op::apply(entryOf<T>(a, e, transposed), entryOf<T>(b, e, transposed)));
    });
}

template <class Op, class A, class B, class D, class Shape>
[[gnu::always_inline]] inline std::int32_t singleObject(const A& a, const B& b, const D& dst, Shape shape) {
    using T = typename D::Element;
    if constexpr (isAdjacent<D>) {
        return bySize(
            shape,
            [&](auto w, auto h) __attribute__((always_inline)) {
                storeSized<Op, T, w, h, isTransposed<A>, isTransposed<B>>(
                    split<T, h>(stored<T>(a)), split<T, h>(stored<T>(b)), dst.origin, dst.rowStride);
                return std::int32_t{korStatusOk};
            },
            [&]() __attribute__((always_inline)) { return handOn<Op>(a, b, dst, shape); });
    } else if constexpr (isScattered<D>) {
        bySize(
            shape, [&](auto w, auto h) __attribute__((always_inline)) { scatteredSized<Op, w, h>(a, b, dst); },
            [&]() __attribute__((always_inline)) { scatteredEntries<Op>(a, b, dst, widthOf(shape), heightOf(shape)); });
    } else {
        bySize(
            shape,
            [&](auto w, auto h) __attribute__((always_inline)) {
                auto x = sizedWalk<T, w, h, true>(a);
                auto y = sizedWalk<T, w, h, true>(b);
                auto z = sizedWalk<T, w, h, true>(dst);
                storeRows<Op, w, h>(x, y, z);
            },
            [&]() __attribute__((always_inline)) {
                if constexpr (std::is_same_v<Shape, VectorShape>)
                    handedStrides<Op, A, B, D>(HandedWithStride<A>(a), HandedWithStride<B>(b), HandedWithStride<D>(dst),
                                               shape.length);
                else stridedAny<Op>(asArray(a), asArray(b), asArray(dst), shape.width, shape.height, 1);
            });
    }
    return korStatusOk;
}

}  // namespace korm::inline KORM_VARIANT::arith
