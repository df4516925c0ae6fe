// The ratios of LAPACK's test programs: a residual over what rounding may leave of it. Floats are checked in double,
// doubles in long double.
#pragma once
#include <algorithm>
#include <complex>

#include "matrices.h"

namespace bench {

template <class T>
using Wide = std::conditional_t<sizeof(T) == 4, double, long double>;

// What one rounding may change: LAPACK's unit for factorisations and solves. Eigenproblems take ulp, twice as much.
template <class T>
inline constexpr Wide<T> roundoff = ulp<T> / 2;

// A matrix to check with, by rows.
template <class W>
struct Checked {
    int height, width;
    std::vector<W> elements;

    Checked(int rows, int columns) : height(rows), width(columns), elements(area(rows, columns)) {}
    template <class T>
    Checked(const T* from, int rows, int columns) : Checked(rows, columns) {
        std::copy_n(from, elements.size(), elements.begin());
    }
    W& operator()(int i, int j) { return elements[area(i, width) + static_cast<std::size_t>(j)]; }
    const W& operator()(int i, int j) const { return elements[area(i, width) + static_cast<std::size_t>(j)]; }

    static Checked identity(int order) {
        Checked result(order, order);
        for (int i = 0; i < order; ++i) result(i, i) = 1;
        return result;
    }
    Checked transposed() const {
        Checked result(width, height);
        for (int i = 0; i < height; ++i)
            for (int j = 0; j < width; ++j) result(j, i) = (*this)(i, j);
        return result;
    }
    friend Checked operator*(const Checked& a, const Checked& b) {
        Checked result(a.height, b.width);
        for (int i = 0; i < a.height; ++i)
            for (int k = 0; k < a.width; ++k)
                for (int j = 0; j < b.width; ++j) result(i, j) += a(i, k) * b(k, j);
        return result;
    }
    friend Checked operator-(Checked a, const Checked& b) {
        for (std::size_t i = 0; i < a.elements.size(); ++i) a.elements[i] -= b.elements[i];
        return a;
    }
};

// The greatest of what two are, where a NaN is greater than any number.
template <class W>
W worse(W a, W b) {
    return a > b || a != a ? a : b;
}

// The 1-norm: the largest sum of a column.
template <class W>
W norm(const Checked<W>& a) {
    W largest = 0;
    for (int j = 0; j < a.width; ++j) {
        W sum = 0;
        for (int i = 0; i < a.height; ++i) sum += std::abs(a(i, j));
        largest = worse(sum, largest);
    }
    return largest;
}

// 0 of 0 is 0, as the residual of a zero matrix is.
template <class W>
double ratio(W residual, W bound) {
    return residual == 0 ? 0 : static_cast<double>(residual / bound);
}

// |A - B| / (rows |A| unit)
template <class W>
double differenceRatio(const Checked<W>& a, const Checked<W>& b, W unit) {
    return ratio(norm(a - b), static_cast<W>(a.height) * norm(a) * unit);
}

// |I - Q^T Q| / (rows unit)
template <class W>
double orthogonalityRatio(const Checked<W>& q, W unit) {
    return ratio(norm(Checked<W>::identity(q.width) - q.transposed() * q), static_cast<W>(q.height) * unit);
}

// |b - A x| / (rows |A| |x| unit). LAPACK's dpot02 has no `rows`, its dqrt16 has.
template <class W>
double solveRatio(const Checked<W>& a, const Checked<W>& x, const Checked<W>& b, W rows, W unit) {
    return ratio(norm(b - a * x), rows * norm(a) * norm(x) * unit);
}

// |A^T r| / (rows |A| |b| unit), where r = b - A x: zero for the least squares solution. LAPACK's dqrt17, for sides that
// may lie in the columns' space by chance and leave no r to divide by.
template <class W>
double leastSquaresRatio(const Checked<W>& a, const Checked<W>& x, const Checked<W>& b, W unit) {
    const Checked<W> residual = b - a * x;
    return ratio(norm(a.transposed() * residual), static_cast<W>(a.height) * norm(a) * norm(b) * unit);
}

// The greatest |A y - w y| / (|A| |y| unit) of all vectors. A pair of conjugate values has the real and the imaginary part
// of its first vector in its two columns.
template <class W, class T>
double vectorsRatio(const Checked<W>& a, const Checked<W>& vectors, const T* re, const T* im, W unit) {
    double worst = 0;
    const int n = a.height;
    for (int j = 0; j < n; ++j) {
        const bool isPair = im[j] != 0 && j + 1 < n;
        std::vector<std::complex<W>> y;
        for (int i = 0; i < n; ++i) y.emplace_back(vectors(i, j), isPair ? vectors(i, j + 1) : W(0));
        const std::complex<W> w(re[j], isPair ? im[j] : W(0));
        W residual = 0, length = 0;
        for (int i = 0; i < n; ++i) {
            std::complex<W> sum = -w * y[static_cast<std::size_t>(i)];
            for (int k = 0; k < n; ++k) sum += a(i, k) * y[static_cast<std::size_t>(k)];
            residual += std::abs(sum);
            length += std::abs(y[static_cast<std::size_t>(i)]);
        }
        // A vector of zeros solves every equation and is no eigenvector.
        const double found =
            length == 0 ? std::numeric_limits<double>::infinity() : ratio(residual, norm(a) * length * unit);
        worst = worse(found, worst);
        if (isPair) ++j;
    }
    return worst;
}

}  // namespace bench
