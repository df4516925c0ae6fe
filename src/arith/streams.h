// Elements that lie apart: the strided and the pointer layout.
//
// Over the objects of an array, an element position is a stream with one step. So the loops run with
// the positions outside and the objects inside: addresses are formed and tables read once per stream, a
// single operand's element stays in a register, and where objects are one element apart the stream is a
// run of adjacent elements. Objects are taken in blocks, so that what lies between the elements of one
// stream is still in the first-level cache for the next.
#pragma once

#include <algorithm>
#include <cstdint>
#include <utility>

#include "arith/runs.h"
#include "entry/lanes.h"

namespace korm {

// A source of a stream: elements one step apart, or one element held for all of it.
template <class T>
struct Moving {
    const std::byte* at;
    std::ptrdiff_t step;

    template <int n>
    [[gnu::always_inline]] T get() const {
        if constexpr (n == 3) return load<T>(at + 2 * step + step);
        else return load<T>(at + n * step);
    }
    [[gnu::always_inline]] void next(int n) { at += n * step; }
    bool adjacent() const { return step == sizeof(T); }
    Adjacent<T> run() const { return {at}; }
};

template <class T>
struct Resting {
    T value;

    template <int>
    [[gnu::always_inline]] T get() const { return value; }
    void next(int) {}
    bool adjacent() const { return true; }
    Same<T> run() const { return {broadcast(value)}; }
};

// Element by element, in ascending order.
template <class Op, class T, class A, class B>
[[gnu::always_inline]] inline void streamApart(A a, B b, std::byte* to, std::ptrdiff_t step, std::ptrdiff_t length) {
    const std::ptrdiff_t triple = 3 * step;
    for (; length >= 4; length -= 4) {
        store(to, Op::apply(a.template get<0>(), b.template get<0>()));
        store(to + step, Op::apply(a.template get<1>(), b.template get<1>()));
        store(to + 2 * step, Op::apply(a.template get<2>(), b.template get<2>()));
        store(to + triple, Op::apply(a.template get<3>(), b.template get<3>()));
        a.next(4);
        b.next(4);
        to += 4 * step;
    }
    for (; length > 0; --length) {
        store(to, Op::apply(a.template get<0>(), b.template get<0>()));
        a.next(1);
        b.next(1);
        to += step;
    }
}

template <class Op, class T, class A, class B>
[[gnu::noinline]] void stream(A a, B b, std::byte* to, std::ptrdiff_t step, std::ptrdiff_t length) {
    if (step == sizeof(T) && a.adjacent() && b.adjacent() && length >= laneCount<T>)
        longRow<Op, T>(a.run(), b.run(), to, (length - laneCount<T>) * static_cast<std::ptrdiff_t>(sizeof(T)));
    else streamApart<Op, T>(a, b, to, step, length);
}

// --- Operands ----------------------------------------------------------------------------------

// An object stride of 0 marks a single operand; a caller's own is never 0.
template <class T>
struct StridedOperand {
    static constexpr bool constants = false;
    const std::byte* origin;
    std::ptrdiff_t objectStride, rowStride, elementStride;

    const std::byte* address(std::ptrdiff_t i, std::ptrdiff_t j) const {
        return origin + i * rowStride + j * elementStride;
    }
    Moving<T> alongRow(std::ptrdiff_t i) const { return {origin + i * rowStride, elementStride}; }
    void swapAxes() { std::swap(rowStride, elementStride); }
};

template <class T>
struct ScatteredOperand {
    static constexpr bool constants = false;
    const T* const* table;
    std::ptrdiff_t offset, objectStride, rowEntries, columnEntries;

    const std::byte* address(std::ptrdiff_t i, std::ptrdiff_t j) const {
        return reinterpret_cast<const std::byte*>(table[i * rowEntries + j * columnEntries]) + offset;
    }
};

template <class T>
struct ConstantOperand {
    static constexpr bool constants = true;
    const std::byte* origin;
    std::ptrdiff_t objectStride;

    const std::byte* address(std::ptrdiff_t, std::ptrdiff_t) const { return origin; }
    Resting<T> alongRow(std::ptrdiff_t) const { return {load<T>(origin)}; }
    void swapAxes() {}
};

struct StridedResult {
    std::byte* origin;
    std::ptrdiff_t objectStride, rowStride, elementStride;
    std::byte* address(std::ptrdiff_t i, std::ptrdiff_t j) const { return origin + i * rowStride + j * elementStride; }
};

template <class T>
struct ScatteredResult {
    T* const* table;
    std::ptrdiff_t offset, objectStride, pitch;
    std::byte* address(std::ptrdiff_t i, std::ptrdiff_t j) const {
        return reinterpret_cast<std::byte*>(table[i * pitch + j]) + offset;
    }
};

// Position by position, each a stream over the objects.
template <class Op, class T, class A, class B, class D>
inline void overObjects(const A& a, const B& b, const D& d, std::ptrdiff_t width, std::ptrdiff_t height,
                        std::ptrdiff_t count) {
    constexpr std::ptrdiff_t block = 64;
    for (std::ptrdiff_t first = 0; first < count; first += block) {
        const std::ptrdiff_t length = std::min(block, count - first);
        for (std::ptrdiff_t i = 0; i < height; ++i)
            for (std::ptrdiff_t j = 0; j < width; ++j) {
                const std::byte* const x = a.address(i, j);
                const std::byte* const y = b.address(i, j);
                std::byte* const z = d.address(i, j) + first * d.objectStride;
                const Moving<T> xs{x + first * a.objectStride, a.objectStride};
                const Moving<T> ys{y + first * b.objectStride, b.objectStride};
                if (a.objectStride == 0) stream<Op, T>(Resting<T>{load<T>(x)}, ys, z, d.objectStride, length);
                else if (b.objectStride == 0) stream<Op, T>(xs, Resting<T>{load<T>(y)}, z, d.objectStride, length);
                else stream<Op, T>(xs, ys, z, d.objectStride, length);
            }
    }
}

// Whether no two elements of a result share bytes: by falling size, each stride passes over all that the
// smaller ones span. Only then may the order of elements be changed.
template <class T>
inline bool apart(const StridedResult& d, std::ptrdiff_t width, std::ptrdiff_t height, std::ptrdiff_t count) {
    struct Axis {
        std::ptrdiff_t stride, length;
    };
    Axis x{d.elementStride, width}, y{d.rowStride, height}, z{d.objectStride, count};
    if (height == 1) y.stride = x.stride * width;
    if (x.stride > y.stride) std::swap(x, y);
    if (y.stride > z.stride) std::swap(y, z);
    if (x.stride > y.stride) std::swap(x, y);
    std::ptrdiff_t span = sizeof(T);
    bool ok = true;
    for (const Axis& axis : {x, y, z}) {
        ok = ok && (axis.length == 1 || axis.stride >= span);
        span += (axis.length - 1) * axis.stride;
    }
    return ok;
}

template <class Op, class T, class A, class B>
[[gnu::noinline]] void stridedNest(A a, B b, StridedResult d, std::ptrdiff_t width, std::ptrdiff_t height,
                                   std::ptrdiff_t count) {
    constexpr std::ptrdiff_t fewObjects = 8, smallObject = 36;
    if (count >= fewObjects && width * height <= smallObject && apart<T>(d, width, height, count)) {
        overObjects<Op, T>(a, b, d, width, height, count);
        return;
    }
    if (height > width && apart<T>(d, width, height, 1)) {
        std::swap(width, height);
        a.swapAxes();
        b.swapAxes();
        std::swap(d.rowStride, d.elementStride);
    }
    for (; count > 0; --count) {
        for (std::ptrdiff_t i = 0; i < height; ++i)
            streamApart<Op, T>(a.alongRow(i), b.alongRow(i), d.address(i, 0), d.elementStride, width);
        a.origin += a.objectStride;
        b.origin += b.objectStride;
        d.origin += d.objectStride;
    }
}

template <class Op, class T, class A, class B>
[[gnu::noinline]] void scatteredNest(A a, B b, ScatteredResult<T> d, std::ptrdiff_t width, std::ptrdiff_t height,
                                     std::ptrdiff_t count) {
    constexpr std::ptrdiff_t fewObjects = 4;
    if (count >= fewObjects) {
        overObjects<Op, T>(a, b, d, width, height, count);
        return;
    }
    for (std::ptrdiff_t k = 0; k < count; ++k)
        for (std::ptrdiff_t i = 0; i < height; ++i)
            for (std::ptrdiff_t j = 0; j < width; ++j)
                store(d.address(i, j) + k * d.objectStride,
                      Op::apply(load<T>(a.address(i, j) + k * a.objectStride),
                                load<T>(b.address(i, j) + k * b.objectStride)));
}

}  // namespace korm
