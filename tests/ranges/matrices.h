// Good matrices at any scale, their exact answers in extended precision, and the judgement of a result.
#pragma once
#include <algorithm>
#include <cmath>
#include <cstdint>
#include <cstdlib>
#include <limits>
#include <vector>

namespace ranges {

using Wide = long double;  // its exponents hold squares and products of all scales

template <class T, class F, class D>
auto pick(F floats, D doubles) {
    if constexpr (sizeof(T) == 4) return floats;
    else return doubles;
}

inline constexpr int objects = 5;    // a pair, a group of four and what is left over
inline constexpr Wide allowed = 30;  // rounding units and orders, the threshold of LAPACK's test programs

// Matrices or vectors, `step` elements apart, one object behind the other.
template <class T>
struct Batch {
    int height, width, step;
    std::vector<T> elements;

    Batch(int rows, int columns, int apart)
        : height(rows),
          width(columns),
          step(apart),
          elements(static_cast<std::size_t>(objects * rows * columns * apart), std::numeric_limits<T>::quiet_NaN()) {}
    T* at(int k, int i = 0, int j = 0) { return elements.data() + ((k * height + i) * width + j) * step; }
    std::int32_t elementStride() const { return step * static_cast<std::int32_t>(sizeof(T)); }
    std::int32_t rowStride() const { return width * elementStride(); }
    std::int32_t objectStride() const { return height * rowStride(); }
};

struct Matrix {
    int height, width;
    std::vector<Wide> elements;

    Matrix(int rows, int columns) : height(rows), width(columns), elements(static_cast<std::size_t>(rows * columns)) {}
    Wide& operator()(int i, int j) { return elements[static_cast<std::size_t>(i * width + j)]; }
    Wide operator()(int i, int j) const { return elements[static_cast<std::size_t>(i * width + j)]; }
};

inline Matrix operator*(const Matrix& a, const Matrix& b) {
    Matrix result(a.height, b.width);
    for (int i = 0; i < a.height; ++i)
        for (int k = 0; k < a.width; ++k)
            for (int j = 0; j < b.width; ++j) result(i, j) += a(i, k) * b(k, j);
    return result;
}

inline Matrix operator-(Matrix a, const Matrix& b) {
    for (std::size_t i = 0; i < a.elements.size(); ++i) a.elements[i] -= b.elements[i];
    return a;
}

inline Matrix identity(int order) {
    Matrix result(order, order);
    for (int i = 0; i < order; ++i) result(i, i) = 1;
    return result;
}

// The largest sum of a row; NaN if an element is.
inline Wide norm(const Matrix& a) {
    Wide largest = 0;
    for (int i = 0; i < a.height; ++i) {
        Wide sum = 0;
        for (int j = 0; j < a.width; ++j) sum += std::fabs(a(i, j));
        if (!(sum <= largest)) largest = sum;
    }
    return largest;
}

// Numbers between -1 and 1, the same in every run.
class Random {
public:
    explicit Random(std::uint32_t seed) : state_(seed) {}
    Wide next() {
        state_ = state_ * 6364136223846793005U + 1442695040888963407U;
        return static_cast<Wide>(state_ >> 32) / 2147483648.0L - 1;
    }

private:
    std::uint64_t state_;
};

// Symmetric and positive, norm and values between 1/2 and 2: condition below 4.
inline Matrix goodSymmetric(int order, int number) {
    Random random(static_cast<std::uint32_t>(100 * order + number));
    Matrix a(order, order);
    for (int i = 0; i < order; ++i) {
        a(i, i) = 1 + static_cast<Wide>(i) / static_cast<Wide>(2 * order);
        for (int j = 0; j < i; ++j) a(i, j) = a(j, i) = random.next() / static_cast<Wide>(4 * order);
    }
    return a;
}

// X D X^-1 with X lower triangular, its diagonal 1: values 1, 1 + 1 / order and so on.
inline Matrix goodGeneral(int order, int number) {
    Random random(static_cast<std::uint32_t>(7000 + 100 * order + number));
    Matrix x = identity(order), inverse = identity(order), values(order, order);
    for (int i = 0; i < order; ++i) {
        values(i, i) = 1 + static_cast<Wide>(i) / static_cast<Wide>(order);
        for (int j = 0; j < i; ++j) x(i, j) = random.next() / 4;
    }
    for (int j = 0; j < order; ++j)
        for (int i = j + 1; i < order; ++i)
            for (int k = j; k < i; ++k) inverse(i, j) -= x(i, k) * inverse(k, j);
    // Turned, so that no element is zero: with the reflection that takes the first axis to the diagonal's direction.
    Matrix turn = identity(order);
    for (int i = 0; i < order; ++i)
        for (int j = 0; j < order; ++j) turn(i, j) -= 2 / static_cast<Wide>(order);
    return turn * (x * (values * (inverse * turn)));
}

// By Jacobi's rotations, ascending.
inline std::vector<Wide> symmetricValues(Matrix a) {
    const int n = a.height;
    for (int sweep = 0; sweep < 30; ++sweep)
        for (int p = 0; p < n; ++p)
            for (int q = p + 1; q < n; ++q) {
                if (a(p, q) == 0) continue;
                const Wide angle = std::atan2(2 * a(p, q), a(q, q) - a(p, p)) / 2;
                const Wide c = std::cos(angle), s = std::sin(angle);
                for (int k = 0; k < n; ++k) {
                    const Wide x = a(k, p), y = a(k, q);
                    a(k, p) = c * x - s * y;
                    a(k, q) = s * x + c * y;
                }
                for (int k = 0; k < n; ++k) {
                    const Wide x = a(p, k), y = a(q, k);
                    a(p, k) = c * x - s * y;
                    a(q, k) = s * x + c * y;
                }
            }
    std::vector<Wide> values;
    for (int i = 0; i < n; ++i) values.push_back(a(i, i));
    std::sort(values.begin(), values.end());
    return values;
}

inline Wide determinantOf(Matrix a) {
    Wide product = 1;  // without pivoting: the good matrices need none
    for (int k = 0; k < a.height; ++k) {
        product *= a(k, k);
        for (int i = k + 1; i < a.height; ++i)
            for (int j = a.width - 1; j >= k; --j) a(i, j) -= a(i, k) / a(k, k) * a(k, j);
    }
    return product;
}

template <class T>
inline constexpr Wide unit = std::numeric_limits<T>::epsilon() / 2;

// Is what is left over within the threshold? A NaN isn't.
template <class T>
bool isSmall(Wide residual, int order, Wide size) {
    return std::fabs(residual) <= allowed * static_cast<Wide>(order) * unit<T> * size;
}

}  // namespace ranges
