// QR decomposition by reflections and the solve with it, from their definitions.
#pragma once

#include <cstdint>
#include <limits>
#include <vector>

#include "../../support/status.h"
#include "../address.h"
#include "square.h"

namespace kormtest {

template <class T>
class Rectangle {
public:
    Rectangle(std::int32_t height, std::int32_t width)
        : height_(height),
          width_(width),
          elements_(static_cast<std::size_t>(height) * static_cast<std::size_t>(width)) {}

    std::int32_t height() const { return height_; }
    std::int32_t width() const { return width_; }
    T& operator()(std::int32_t i, std::int32_t j) { return elements_[at(i, j)]; }
    const T& operator()(std::int32_t i, std::int32_t j) const { return elements_[at(i, j)]; }

    // A square matrix needs no reflection for its last column.
    std::int32_t reflections() const { return width_ < height_ ? width_ : width_ - 1; }

private:
    std::size_t at(std::int32_t i, std::int32_t j) const {
        return static_cast<std::size_t>(i) * static_cast<std::size_t>(width_) + static_cast<std::size_t>(j);
    }
    std::int32_t height_, width_;
    std::vector<T> elements_;
};

// start + term(from) + ... + term(to - 1). With `inEights` a sum of 8 terms and more goes to eight partial sums, as long as
// there are 8 terms left.
template <class T, class Term>
T sumOnto(T start, std::int32_t from, std::int32_t to, bool inEights, const Term& term) {
    T sum = start;
    std::int32_t i = from;
    if (inEights && to - from >= 8) {
        T p[8] = {start};
        for (; to - i >= 8; i += 8)
            for (std::int32_t c = 0; c < 8; ++c) p[c] = p[c] + term(i + c);
        if constexpr (sizeof(T) == 4) sum = ((p[0] + p[4]) + (p[2] + p[6])) + ((p[1] + p[5]) + (p[3] + p[7]));
        else sum = ((p[0] + p[2]) + (p[4] + p[6])) + ((p[1] + p[3]) + (p[5] + p[7]));
    }
    for (; i < to; ++i) sum = sum + term(i);
    return sum;
}

// In place. A failure leaves the reflections before it.
template <class T>
std::int32_t reflectColumns(Rectangle<T>& a, bool inEights) {
    const std::int32_t height = a.height();
    const T limit = sizeof(T) == 4 ? T(0x1p-23) : T(0x1p-52);
    std::vector<T> v(static_cast<std::size_t>(height));
    const auto element = [&](std::int32_t i) -> T& { return v[static_cast<std::size_t>(i)]; };
    for (std::int32_t j = 0; j < a.reflections(); ++j) {
        const T square = sumOnto(T(0), j, height, inEights, [&](std::int32_t i) { return a(i, j) * a(i, j); });
        if (limit > std::fabs(square)) return status::divideByZero;
        const T norm = std::sqrt(square), alpha = a(j, j);
        const T r = T(1) / (alpha > 0 ? alpha + norm : alpha - norm);
        element(j) = 1;
        for (std::int32_t i = j + 1; i < height; ++i) element(i) = a(i, j) * r;
        const T beta =
            T(-2) / sumOnto(T(1), j + 1, height, inEights, [&](std::int32_t i) { return element(i) * element(i); });
        for (std::int32_t c = j; c < a.width(); ++c) {
            T t = sumOnto(a(j, c), j + 1, height, inEights, [&](std::int32_t i) { return a(i, c) * element(i); });
            t = t * beta;
            for (std::int32_t i = j; i < height; ++i) a(i, c) = a(i, c) + element(i) * t;
        }
        for (std::int32_t i = j + 1; i < height; ++i) a(i, j) = element(i);
    }
    return status::ok;
}

// `b` has as many elements as the matrix has rows, the solution as many as it has columns.
template <class T>
std::vector<T> solveReflected(const Rectangle<T>& a, std::vector<T> b, bool inEights) {
    const std::int32_t height = a.height(), width = a.width();
    const auto side = [&](std::int32_t i) -> T& { return b[static_cast<std::size_t>(i)]; };
    for (std::int32_t j = 0; j < a.reflections(); ++j) {
        const T square = sumOnto(T(1), j + 1, height, inEights, [&](std::int32_t i) { return a(i, j) * a(i, j); });
        T t = sumOnto(side(j), j + 1, height, inEights, [&](std::int32_t i) { return a(i, j) * side(i); });
        t = (T(-2) / square) * t;
        side(j) = side(j) + t;
        for (std::int32_t i = j + 1; i < height; ++i) side(i) = side(i) + a(i, j) * t;
    }
    std::vector<T> solution(static_cast<std::size_t>(width));
    const auto x = [&](std::int32_t k) -> T& { return solution[static_cast<std::size_t>(k)]; };
    x(width - 1) = side(width - 1) / a(width - 1, width - 1);
    for (std::int32_t k = width - 2; k >= 0; --k) {
        const T sum = sumOnto(T(0), k + 1, width, inEights, [&](std::int32_t j) { return a(k, j) * x(j); });
        x(k) = (side(k) - sum) / a(k, k);
    }
    return solution;
}

// --- Whole forms --------------------------------------------------------------------------------

std::int32_t referenceQRDecomp(const Form& form, const std::vector<OperandValues>& operands, const Sizes& sizes,
                               std::int32_t first, std::int32_t runCount);
std::int32_t referenceQRBackSubst(const Form& form, const std::vector<OperandValues>& operands, const Sizes& sizes,
                                  std::int32_t first, std::int32_t runCount);

}  // namespace kormtest
