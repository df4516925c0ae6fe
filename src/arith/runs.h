// Adjacent elements of any number: rows, and whole calls whose objects touch.
//
// The loops here are shared by all forms of an operation and a type (they are not inlined): a form only
// says of each source whether it is elements or constants.
#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <type_traits>

#include "entry/views.h"
#include "kernel/vec.h"

namespace korm {

// Sources of a run, indexed by the byte distance from its start.
template <class T>
struct Adjacent {
    const std::byte* origin;
    [[gnu::always_inline]] Lanes<T> lanes(std::ptrdiff_t at) const { return loadLanes<T>(origin + at); }
    [[gnu::always_inline]] Lanes<T> alignedLanes(std::ptrdiff_t at) const { return loadAligned<Lanes<T>>(origin + at); }
    [[gnu::always_inline]] Lanes<T> pair(std::ptrdiff_t at) const { return loadPair(origin + at); }
    [[gnu::always_inline]] Lanes<T> end(std::ptrdiff_t last) const { return lanes(last); }
    [[gnu::always_inline]] T one(std::ptrdiff_t at) const { return load<T>(origin + at); }
    bool isAligned(std::ptrdiff_t at) const { return (reinterpret_cast<std::uintptr_t>(origin + at) & 15) == 0; }
};

template <class T>
struct Same {
    Lanes<T> all;
    [[gnu::always_inline]] Lanes<T> lanes(std::ptrdiff_t) const { return all; }
    // A copy that the compiler takes for a new value each time. It goes into the register for the result, which takes
    // no time in the processor, and the other source is an operand in memory: 10 % less time than with a load.
    [[gnu::always_inline]] Lanes<T> alignedLanes(std::ptrdiff_t) const {
        Lanes<T> copy = all;
        asm volatile("" : "+x"(copy));
        return copy;
    }
    static bool isAligned(std::ptrdiff_t) { return true; }
    [[gnu::always_inline]] Lanes<T> pair(std::ptrdiff_t) const { return all; }
    [[gnu::always_inline]] Lanes<T> end(std::ptrdiff_t) const { return all; }
    [[gnu::always_inline]] T one(std::ptrdiff_t) const { return all[0]; }
};

// A row of a single operand, kept in registers for all objects.
template <class T, int whole>
struct Kept {
    Lanes<T> vector[whole + 1];
    [[gnu::always_inline]] Lanes<T> lanes(std::ptrdiff_t at) const { return vector[at / 16]; }
    [[gnu::always_inline]] Lanes<T> end(std::ptrdiff_t) const { return vector[whole]; }
};

// Less than a vector: a pair of floats, one element.
template <class Op, class T, class A, class B>
[[gnu::always_inline]] inline std::ptrdiff_t few(A a, B b, std::byte* to, std::ptrdiff_t at, std::ptrdiff_t bytes) {
    if constexpr (laneCount<T> == 4)
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
[[gnu::noinline]] void singles(A a, B b, std::byte* to, std::ptrdiff_t bytes) {
    for (std::ptrdiff_t at = 0; at < bytes; at += static_cast<std::ptrdiff_t>(sizeof(T))) {
        store(to + at, Op::apply(a.one(at), b.one(at)));
        asm volatile("");
    }
}

// One row of at least a vector, of whole + 1 vectors. The last vector ends with the row and so may overlap
// the one before it; it is computed first, so that the elements which it shares are still unchanged when
// the row is done in place.
template <class Op, class T, int whole, class A, class B>
[[gnu::always_inline]] inline void shortRow(const A& a, const B& b, std::byte* to, std::ptrdiff_t last) {
    const Lanes<T> end = Op::apply(a.end(last), b.end(last));
    for (int v = 0; v < whole; ++v) storeLanes(to + 16 * v, Op::apply(a.lanes(16 * v), b.lanes(16 * v)));
    storeLanes(to + last, end);
}

// The same for any number. Rounds of eight vectors take 12 % less time in the first-level cache than
// rounds of four: the loop is bound by the number of instructions.
template <class Op, class T, class A, class B>
[[gnu::always_inline]] inline void longRow(A a, B b, std::byte* to, std::ptrdiff_t last) {
    const auto step = [&](std::ptrdiff_t at) __attribute__((always_inline)) {
        storeLanes(to + at, Op::apply(a.lanes(at), b.lanes(at)));
    };
    const Lanes<T> end = Op::apply(a.lanes(last), b.lanes(last));
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
    storeLanes(to + last, end);
}

// A long run: single elements until `to` is aligned, then aligned stores.
template <class Op, class T, class A, class B>
[[gnu::noinline]] void run(A a, B b, std::byte* to, std::ptrdiff_t bytes) {
    const auto step = [&](std::ptrdiff_t at) __attribute__((always_inline)) {
        storeAligned(to + at, Op::apply(a.lanes(at), b.lanes(at)));
    };
    const auto ahead = static_cast<std::ptrdiff_t>(-reinterpret_cast<std::uintptr_t>(to) & 15);
    if (bytes < 32 || ahead % static_cast<std::ptrdiff_t>(sizeof(T)) != 0) {
        if (bytes < 16) few<Op, T>(a, b, to, 0, bytes);
        else longRow<Op, T>(a, b, to, bytes - 16);
        return;
    }
    std::ptrdiff_t at = few<Op, T>(a, b, to, 0, ahead);
    const std::ptrdiff_t lastRound = bytes - 128;
    if constexpr (!std::is_same_v<B, Same<T>> || Op::commutes)
        if (a.isAligned(at) && b.isAligned(at))
            for (; at <= lastRound; at += 128)
                for (int v = 0; v < 8; ++v)
                    storeAligned(to + at + 16 * v, Op::apply(a.alignedLanes(at + 16 * v), b.alignedLanes(at + 16 * v)));
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
    few<Op, T>(a, b, to, at, bytes - at);
}

// --- Objects of any shape ----------------------------------------------------------------------

// Row i of an object, and a constant as a row.
template <class T, class G>
[[gnu::always_inline]] inline auto rowSource(const G& object, std::ptrdiff_t i) {
    if constexpr (std::is_same_v<G, Lanes<T>>) return Same<T>{object};
    else return Adjacent<T>{object.address(i, 0)};
}

template <class T, class View>
[[gnu::always_inline]] inline auto objectSource(const View& view, std::ptrdiff_t k) {
    if constexpr (View::spacing == Spacing::constant) return broadcast(view.at(k));
    else return view.at(k);
}

// Objects of one row have a loop of their own: the other takes an eighth more time for 100 floats.
template <class T, class A, class B, class D, class F>
[[gnu::always_inline]] inline void eachRow(const A& a, const B& b, const D& dst, std::ptrdiff_t height,
                                           std::ptrdiff_t count, const F& f) {
    const auto each = [&](const auto& rowsOf) __attribute__((always_inline)) {
        for (std::ptrdiff_t k = 0; k < count; ++k) rowsOf(objectSource<T>(a, k), objectSource<T>(b, k), dst.at(k));
    };
    const auto row = [&](const auto& x, const auto& y, const auto& z, std::ptrdiff_t i) __attribute__((always_inline)) {
        f(rowSource<T>(x, i), rowSource<T>(y, i), z.address(i, 0));
    };
    if (height == 1) {
        each([&](const auto& x, const auto& y, const auto& z) __attribute__((always_inline)) { row(x, y, z, 0); });
    } else {
        each([&](const auto& x, const auto& y, const auto& z) __attribute__((always_inline)) {
            for (std::ptrdiff_t i = 0; i < height; ++i) row(x, y, z, i);
        });
    }
}

// The only row of an object: of a single operand, kept.
template <class T, int whole, class View>
[[gnu::always_inline]] inline auto prepareRow(const View& view, std::ptrdiff_t last) {
    if constexpr (View::objects == Objects::single && View::spacing != Spacing::constant) {
        const std::byte* const from = view.at(0).origin;
        Kept<T, whole> kept;
        for (int v = 0; v < whole; ++v) kept.vector[v] = loadLanes<T>(from + 16 * v);
        kept.vector[whole] = loadLanes<T>(from + last);
        return kept;
    } else return view;
}

template <class T, class View, class Prepared>
[[gnu::always_inline]] inline decltype(auto) onlyRow(const Prepared& prepared, std::ptrdiff_t k) {
    if constexpr (std::is_same_v<Prepared, View>) return rowSource<T>(objectSource<T>(prepared, k), 0);
    else return (prepared);
}

template <class Op, int whole, class A, class B, class D>
[[gnu::always_inline]] inline void shortRows(const A& a, const B& b, const D& dst, std::ptrdiff_t last,
                                             std::ptrdiff_t height, std::ptrdiff_t count) {
    using T = typename D::Element;
    if (height == 1) {
        const auto x = prepareRow<T, whole>(a, last);
        const auto y = prepareRow<T, whole>(b, last);
        for (std::ptrdiff_t k = 0; k < count; ++k)
            shortRow<Op, T, whole>(onlyRow<T, A>(x, k), onlyRow<T, B>(y, k), dst.at(k).origin, last);
    } else {
        eachRow<T>(
            a, b, dst, height, count, [&](auto x, auto y, std::byte* to) __attribute__((always_inline)) {
                shortRow<Op, T, whole>(x, y, to, last);
            });
    }
}

// `bytes` is the length of a row. The choice by length is made once, not per row.
template <class Op, class A, class B, class D>
[[gnu::noinline]] void grids(const A& a, const B& b, const D& dst, std::ptrdiff_t bytes, std::ptrdiff_t height,
                             std::ptrdiff_t count) {
    using T = typename D::Element;
    const std::ptrdiff_t last = bytes - 16;
    switch (bytes < 16 ? -1 : (last + 15) / 16) {
        case -1:
            return eachRow<T>(
                A(a), B(b), D(dst), height, count, [&](auto x, auto y, std::byte* to) __attribute__((always_inline)) {
                    few<Op, T>(x, y, to, 0, bytes);
                });
        case 0: return shortRows<Op, 0>(A(a), B(b), D(dst), last, height, count);
        case 1: return shortRows<Op, 1>(A(a), B(b), D(dst), last, height, count);
        case 2: return shortRows<Op, 2>(A(a), B(b), D(dst), last, height, count);
        case 3: return shortRows<Op, 3>(A(a), B(b), D(dst), last, height, count);
        case 4: return shortRows<Op, 4>(A(a), B(b), D(dst), last, height, count);
        case 7: return shortRows<Op, 7>(A(a), B(b), D(dst), last, height, count);
        default:
            return eachRow<T>(
                A(a), B(b), D(dst), height, count, [&](auto x, auto y, std::byte* to) __attribute__((always_inline)) {
                    longRow<Op, T>(x, y, to, last);
                });
    }
}

}  // namespace korm
