// Transposition of a matrix, or of each matrix of an array. Source and result lie apart.
#pragma once

#include "move/move.h"

namespace korm::inline KORM_VARIANT::move {

// Elements that touch within rows on both sides.
template <class Word>
void transposeAdjacent(const Side& from, const Side& to, MatrixShape shape, std::ptrdiff_t count, bool beyondCache);

// From one object of an array to the next, and from row to row.
struct Steps {
    std::ptrdiff_t object, row;
};

// Squares of order 3 to 6 of arrays that aren't lists.
template <class Word>
void transposeSquares(const std::byte* from, std::byte* to, const Steps& fromSteps, const Steps& toSteps,
                      std::int32_t size, std::ptrdiff_t count);

// One matrix.
template <class Word>
void transposeOne(const std::byte* from, std::ptrdiff_t fromStride, std::byte* to, std::ptrdiff_t toStride,
                  MatrixShape shape);

// Do sources and results of 32-bit elements take more than three quarters of the largest cache? Little is answered
// without a question to the core library.
bool isBeyondCache(MatrixShape shape, std::int32_t count);

// Orders 3 to 6 have code of their own.
inline bool isSized(std::ptrdiff_t width, std::ptrdiff_t height) { return width == height && width >= 3 && width <= 6; }

template <class From, class To, class Count>
inline void transpose(const From& from, const To& to, MatrixShape shape, Count count) {
    using Word = WordOf<typename From::Element>;
    const Side source = side(from), result = side(to);
    if constexpr (isAdjacent<From> && isAdjacent<To> && isOneObject<Count>) {
        transposeOne<Word>(source.base, source.rowStride, result.base, result.rowStride, shape);
    } else if constexpr (isAdjacent<From> && isAdjacent<To>) {
        if constexpr (!isListed<From> && !isListed<To>)
            if (isSized(shape.width, shape.height))
                return transposeSquares<Word>(source.base, result.base, {source.objectStride, source.rowStride},
                                              {result.objectStride, result.rowStride}, shape.width, count);
        bool beyondCache = false;
        if constexpr (sizeof(Word) == 4)
            if (!isSized(shape.width, shape.height)) beyondCache = isBeyondCache(shape, count);
        transposeAdjacent<Word>(source, result, shape, count, beyondCache);
    } else {
        moveObjects<Word>(transposed(source), result, {shape.width, shape.height, count}, Order::any);
    }
}

}  // namespace korm::inline KORM_VARIANT::move
