// Rows of any number of elements, and whole calls whose objects touch, which are one long row.
//
// A row has two sources: elements or one constant. The result may lie exactly on a source. Functions that do a whole call
// return its status, so that an entry function can end with a jump to them.
#pragma once

#include <cstddef>
#include <cstdint>
#include <type_traits>

#include "arith/operands.h"
#include "entry/views.h"
#include "kernel/unroll.h"
#include "kernel/vec.h"
#include "korm.h"

namespace korm::inline KORM_VARIANT::arith {

// Sources of a row, indexed by the byte distance from its start.
template <class T>
struct Adjacent {
    const std::byte* origin;
    [[gnu::always_inline]] Vector<T> vector(std::ptrdiff_t at) const { return load<Vector<T>>(origin + at); }
    [[gnu::always_inline]] Vector<T> aligned(std::ptrdiff_t at) const { return loadAligned<Vector<T>>(origin + at); }
    [[gnu::always_inline]] Vector<T> pair(std::ptrdiff_t at) const { return loadPair(origin + at); }
    [[gnu::always_inline]] Vector<T> end(std::ptrdiff_t last) const { return vector(last); }
    [[gnu::always_inline]] T one(std::ptrdiff_t at) const { return load<T>(origin + at); }
    bool isAligned(std::ptrdiff_t at) const { return (reinterpret_cast<std::uintptr_t>(origin + at) & 15) == 0; }
};

template <class T>
struct Same {
    Vector<T> all;
    [[gnu::always_inline]] Vector<T> vector(std::ptrdiff_t) const { return all; }
    // A copy that the compiler takes for a new value each time. It goes into the register for the result, which takes
    // no time in the processor, and the other source is an operand in memory: 10 % less time than with a load.
    [[gnu::always_inline]] Vector<T> aligned(std::ptrdiff_t) const {
        Vector<T> copy = all;
        asm volatile("" : "+x"(copy));
        return copy;
    }
    static bool isAligned(std::ptrdiff_t) { return true; }
    [[gnu::always_inline]] Vector<T> pair(std::ptrdiff_t) const { return all; }
    [[gnu::always_inline]] Vector<T> end(std::ptrdiff_t) const { return all; }
    [[gnu::always_inline]] T one(std::ptrdiff_t) const { return all[0]; }

    template <int, int, int n>  // as pieces.h has it
    [[gnu::always_inline]] auto get() const {
        if constexpr (n == 1) return all[0];
        else return all;
    }
};

// Row i of the object at hand.
template <class T, class View>
[[gnu::always_inline]] inline auto rowOf(const View& view, std::ptrdiff_t i) {
    if constexpr (std::is_same_v<View, Same<T>>) return view;
    else if constexpr (isConstant<View>) return Same<T>{repeated(constantOf(view))};
    else return Adjacent<T>{view.origin + i * view.rowStride};
}

// That object, with its constant in a register.
template <class T, class View>
[[gnu::always_inline]] inline decltype(auto) atHand(const View& view) {
    if constexpr (isConstant<View>) return rowOf<T>(view, 0);
    else return (view);
}

// What is known of a row: how many whole vectors stand before its last one, or that it is long, or, below 0, how many bytes
// it has if it is shorter than one.
constexpr int longer = 100;

// The only row of a shared operand, kept in registers for all objects; an array has nothing to keep.
template <class T, int whole>
struct KeptRow {
    Vector<T> kept[whole + 1];

    // Filled where it lies: made elsewhere and returned, gcc copies it by an instruction that takes ten times as long.
    template <class Row>
    [[gnu::always_inline]] KeptRow(const Row& row, std::ptrdiff_t last) {
        for (int v = 0; v < whole; ++v) kept[v] = row.vector(16 * v);
        kept[whole] = row.end(last);
    }
    [[gnu::always_inline]] Vector<T> vector(std::ptrdiff_t at) const { return kept[at / 16]; }
    [[gnu::always_inline]] Vector<T> end(std::ptrdiff_t) const { return kept[whole]; }
};

template <class T, int whole, class View>
[[gnu::always_inline]] inline auto keptRow(const View& view, std::ptrdiff_t last) {
    if constexpr (!isShared<View> || whole < 0 || whole == longer) return 0;
    else return KeptRow<T, whole>(rowOf<T>(view, 0), last);
}

template <class T, class View, class Kept>
[[gnu::always_inline]] inline decltype(auto) keptOr(const Kept& kept, const View& view) {
    if constexpr (!std::is_same_v<Kept, int>) return (kept);
    else return rowOf<T>(view, 0);
}

// Less than a vector: a pair of floats, one element.
template <class Op, class T, class A, class B>
[[gnu::always_inline]] inline std::ptrdiff_t partialVector(A a, B b, std::byte* to, std::ptrdiff_t at,
                                                           std::ptrdiff_t bytes) {
    if constexpr (isFloat<T>)
        if (bytes & 8) {
            storePair(to + at, Op::apply(a.pair(at), b.pair(at)));
            at += 8;
        }
    if (bytes & static_cast<std::ptrdiff_t>(sizeof(T))) {
        store(to + at, Op::apply(a.one(at), b.one(at)));
        at += static_cast<std::ptrdiff_t>(sizeof(T));
    }
    return at;
}

// Strictly one after the other, for a result that overlaps its source. The empty statement keeps the
// compiler from making vectors of it.
template <class Op, class T, class A, class B>
[[gnu::noinline]] std::int32_t oneByOne(A a, B b, std::byte* to, std::ptrdiff_t bytes) {
    for (std::ptrdiff_t at = 0; at < bytes; at += static_cast<std::ptrdiff_t>(sizeof(T))) {
        store(to + at, Op::apply(a.one(at), b.one(at)));
        asm volatile("");
    }
    return korStatusOk;
}

// One row of at least a vector, of whole + 1 vectors. The last vector ends with the row and so may overlap
// the one before it; it is computed first, so that the elements which it shares are still unchanged when
// the row is done in place.
template <class Op, class T, int whole, class A, class B>
[[gnu::always_inline]] inline void shortRow(const A& a, const B& b, std::byte* to, std::ptrdiff_t last) {
    const Vector<T> end = Op::apply(a.end(last), b.end(last));
    for (int v = 0; v < whole; ++v) store(to + 16 * v, Op::apply(a.vector(16 * v), b.vector(16 * v)));
    store(to + last, end);
}

// The same for any number. Rounds of eight vectors take 12 % less time in the first-level cache than
// rounds of four: the loop is bound by the number of instructions.
template <class Op, class T, class A, class B>
[[gnu::always_inline]] inline void longRow(A a, B b, std::byte* to, std::ptrdiff_t last) {
    const auto step = [&](std::ptrdiff_t at) __attribute__((always_inline)) {
        store(to + at, Op::apply(a.vector(at), b.vector(at)));
    };
    const Vector<T> end = Op::apply(a.vector(last), b.vector(last));
    std::ptrdiff_t at = 0;
    for (const std::ptrdiff_t lastRound = last - 112; at < lastRound; at += 128)
        for (int v = 0; v < 8; ++v) step(at + 16 * v);
    if (at + 48 < last) {
        for (int v = 0; v < 4; ++v) step(at + 16 * v);
        at += 64;
    }
    if (at + 16 < last) {
        step(at);
        step(at + 16);
        at += 32;
    }
    if (at < last) step(at);
    store(to + last, end);
}

template <class Op, class T, class A, class B>
[[gnu::noinline]] std::int32_t anyRow(A a, B b, std::byte* to, std::ptrdiff_t bytes) {
    if (bytes < 16) partialVector<Op, T>(a, b, to, 0, bytes);
    else longRow<Op, T>(a, b, to, bytes - 16);
    return korStatusOk;
}

// A whole call: single elements until `to` is aligned, then aligned stores.
template <class Op, class T, class A, class B>
[[gnu::noinline]] std::int32_t run(A a, B b, std::byte* to, std::ptrdiff_t bytes) {
    const auto step = [&](std::ptrdiff_t at) __attribute__((always_inline)) {
        storeAligned(to + at, Op::apply(a.vector(at), b.vector(at)));
    };
    const auto ahead = static_cast<std::ptrdiff_t>(-reinterpret_cast<std::uintptr_t>(to) & 15);
    if (bytes < 32 || ahead % static_cast<std::ptrdiff_t>(sizeof(T)) != 0) return anyRow<Op, T>(a, b, to, bytes);
    std::ptrdiff_t at = partialVector<Op, T>(a, b, to, 0, ahead);
    const std::ptrdiff_t lastRound = bytes - 128;
    if constexpr (!std::is_same_v<B, Same<T>> || Op::commutes)
        if (a.isAligned(at) && b.isAligned(at))
            for (; at <= lastRound; at += 128)
                for (int v = 0; v < 8; ++v)
                    storeAligned(to + at + 16 * v, Op::apply(a.aligned(at + 16 * v), b.aligned(at + 16 * v)));
    for (; at <= lastRound; at += 128)
        for (int v = 0; v < 8; ++v) step(at + 16 * v);
    if (at + 64 <= bytes) {
        for (int v = 0; v < 4; ++v) step(at + 16 * v);
        at += 64;
    }
    if (at + 32 <= bytes) {
        step(at);
        step(at + 16);
        at += 32;
    }
    if (at + 16 <= bytes) {
        step(at);
        at += 16;
    }
    partialVector<Op, T>(a, b, to, at, bytes - at);
    return korStatusOk;
}

// --- Objects of any shape ----------------------------------------------------------------------

// Calls f(kind) with what is known of a row of `bytes`, as a type, and f loads strides and pointers of its operands itself. Without
// that gcc loads all that any case needs ahead of the choice, and loops keep strides on the stack: a fifth more time.
template <class T, class F>
[[gnu::always_inline]] inline void byLength(std::ptrdiff_t bytes, const F& f) {
    const auto known = [&](auto kind) __attribute__((always_inline)) {
        asm volatile("" : : : "memory");
        f(kind);
    };
    if (bytes == 8) return known(Int<-8>{});
    if constexpr (isFloat<T>) {
        if (bytes == 4) return known(Int<-4>{});
        if (bytes == 12) return known(Int<-12>{});
    }
    switch ((bytes - 1) / 16) {
        case 0: return known(Int<0>{});
        case 1: return known(Int<1>{});
        case 2: return known(Int<2>{});
        case 3: return known(Int<3>{});
        case 4: return known(Int<4>{});
        case 7: return known(Int<7>{});
        default: return known(Int<longer>{});
    }
}

template <class Op, class T, int kind, class A, class B>
[[gnu::always_inline]] inline void storeRowOf(const A& a, const B& b, std::byte* to, std::ptrdiff_t bytes) {
    if constexpr (kind < 0) partialVector<Op, T>(a, b, to, 0, -kind);
    else if constexpr (kind == longer) longRow<Op, T>(a, b, to, bytes - 16);
    else shortRow<Op, T, kind>(a, b, to, bytes - 16);
}

// Objects of one row, which of a shared operand is kept in registers.
template <class Op, class A, class B, class D>
[[gnu::noinline]] void rows(const A& a, const B& b, const D& dst, std::ptrdiff_t bytes, std::ptrdiff_t count) {
    using T = typename D::Element;
    byLength<T>(
        bytes, [&](auto kind) __attribute__((always_inline)) {
            constexpr int together = kind < 4 ? 1 : 0;
            const auto keptA = keptRow<T, kind>(a, bytes - 16);
            const auto keptB = keptRow<T, kind>(b, bytes - 16);
            eachObject<together>(
                a, b, dst, count, [&](const A& x, const B& y, const D& z) __attribute__((always_inline)) {
                    storeRowOf<Op, T, kind>(keptOr<T>(keptA, x), keptOr<T>(keptB, y), z.origin, bytes);
                });
        });
}

// Objects of several rows that don't touch. All operands are arrays: a shared one has other elements in each row.
template <class Op, class A, class B, class D>
[[gnu::noinline]] void manyRows(const A& a, const B& b, const D& dst, std::ptrdiff_t bytes, std::ptrdiff_t height,
                                std::ptrdiff_t count) {
    using T = typename D::Element;
    byLength<T>(
        bytes, [&](auto kind) __attribute__((always_inline)) {
            eachOfArrays(
                a, b, dst, count, [&](const A& x, const B& y, const D& z) __attribute__((always_inline)) {
                    const auto& p = atHand<T>(x);
                    const auto& q = atHand<T>(y);
                    for (std::ptrdiff_t i = 0; i < height; ++i)
                        storeRowOf<Op, T, kind>(rowOf<T>(p, i), rowOf<T>(q, i), z.origin + i * z.rowStride, bytes);
                });
        });
}

}  // namespace korm::inline KORM_VARIANT::arith
