// Plain loops, as one writes them who knows the sizes at compile time: no intrinsics, no restrict.
#pragma once

#include <emmintrin.h>

#include "forms.h"

namespace bench {

// How the loops find element (i, j) of object k. What a user would know when writing the loop is known to
// the compiler: all distances of packed objects, none of strided ones.
template <Layout layout, Operand::Kind kind, bool isArray, class T, int rows, int columns>
struct Reader {
    T* const base;
    T* const* const table;
    const std::ptrdiff_t object, row, element;
    const std::remove_const_t<T> value;

    explicit Reader(const OperandOf<std::remove_const_t<T>>& operand)
        : base(operand.base),
          table(operand.table),
          object(operand.objectStep()),
          row(operand.rowStep()),
          element(operand.elementStep()),
          value(operand.value) {}

    // Inlined always: a call for each element is not what anyone would write.
    [[gnu::always_inline]] decltype(auto) operator()(std::ptrdiff_t k, std::ptrdiff_t i, std::ptrdiff_t j) const {
        if constexpr (kind == Operand::Kind::transposed) return at<columns, rows>(k, j, i);
        else return at<rows, columns>(k, i, j);
    }

private:
    // Of the object as it is stored.
    template <int storedRows, int storedColumns>
    [[gnu::always_inline]] decltype(auto) at(std::ptrdiff_t k, std::ptrdiff_t i, std::ptrdiff_t j) const {
        if constexpr (!isArray) k = 0;
        if constexpr (kind == Operand::Kind::constant) {
            if constexpr (!isArray) return value;
            else if constexpr (entryOf(layout) == Entry::list) return (table[k][0]);
            else if constexpr (layout == Layout::packed || layout == Layout::streams || layout == Layout::pointers)
                return (base[k]);
            else return (base[k * object]);
        } else if constexpr (layout == Layout::streams) return (table[i * storedColumns + j][k]);
        else if constexpr (entryOf(layout) == Entry::pointer) return (table[i * storedColumns + j][k * object]);
        else if constexpr (layout == Layout::packed) return (base[(k * storedRows + i) * storedColumns + j]);
        else if constexpr (layout == Layout::padded) return (base[k * object + i * row + j]);
        else if constexpr (layout == Layout::strided) return (base[k * object + i * row + j * element]);
        else if constexpr (layout == Layout::list) return ((isArray ? table[k] : base)[i * storedColumns + j]);
        else return ((isArray ? table[k] : base)[i * row + j * element]);
    }
};

template <class Form, Layout layout, class T, int rows, int columns>
struct Readers {
    static constexpr Shape shape = Form::shape;
    Reader<layout, shape.firstKind, shape.firstIsArray, const T, rows, columns> first;
    Reader<layout, shape.secondKind, shape.secondIsArray, const T, rows, columns> second;
    Reader<layout, Operand::Kind::matrix, shape.isArray(), T, rows, columns> result;

    explicit Readers(const Workload<T>& work) : first(work.first), second(work.second), result(work.result) {}
};

template <class Form, Layout layout, class T, int rows, int columns>
[[gnu::noinline]] void plainLoop(const Workload<T>& work) {
    const Readers<Form, layout, T, rows, columns> at(work);
    const std::ptrdiff_t count = Form::shape.isArray() ? work.count : 1;
    for (std::ptrdiff_t k = 0; k < count; ++k)
        for (std::ptrdiff_t i = 0; i < rows; ++i)
            for (std::ptrdiff_t j = 0; j < columns; ++j)
                at.result(k, i, j) = combine<Form::shape, T>(at.first(k, i, j), at.second(k, i, j));
}

// In the pointer layout one may as well go along the streams.
template <class Form, Layout layout, class T, int rows, int columns>
[[gnu::noinline]] void streamLoop(const Workload<T>& work) {
    static_assert(entryOf(layout) == Entry::pointer && Form::shape.isArray());
    const Readers<Form, layout, T, rows, columns> at(work);
    const std::ptrdiff_t count = work.count;
    for (std::ptrdiff_t i = 0; i < rows; ++i)
        for (std::ptrdiff_t j = 0; j < columns; ++j)
            for (std::ptrdiff_t k = 0; k < count; ++k)
                at.result(k, i, j) = combine<Form::shape, T>(at.first(k, i, j), at.second(k, i, j));
}

// What the memory gives: dst[i] = src[i], from the first input to the result, both packed.
template <class T>
[[gnu::noinline]] void copyLoop(const Workload<T>& work) {
    const std::size_t bytes = sizeof(T) * static_cast<std::size_t>(work.width) * static_cast<std::size_t>(work.height) *
                              static_cast<std::size_t>(work.count);
    const char* const source = reinterpret_cast<const char*>(work.first.base);
    char* const target = reinterpret_cast<char*>(work.result.base);
    const auto move = [&](std::size_t at) {
        _mm_storeu_si128(reinterpret_cast<__m128i*>(target + at),
                         _mm_loadu_si128(reinterpret_cast<const __m128i*>(source + at)));
    };
    std::size_t at = 0;
    for (; at + 64 <= bytes; at += 64) {
        move(at);
        move(at + 16);
        move(at + 32);
        move(at + 48);
        asm volatile("");  // keeps the compiler from calling memcpy, which would use larger registers
    }
    for (; at + 16 <= bytes; at += 16) move(at);
}

}  // namespace bench
