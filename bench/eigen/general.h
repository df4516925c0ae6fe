// General eigenproblems as all contenders see them, and Eigen's solution.
#pragma once

#include <Eigen/Eigenvalues>

#include "rows.h"

namespace bench {

inline constexpr int mostOrder = 16;

// The library's names: left vectors satisfy A y = w y, right ones y^T A = w y^T.
struct Family {
    const char *section, *form;
    bool left, right;
    bool vectors() const { return left || right; }
};

// Packed matrices with elements from -1 to 1, and where their eigenvalues and vectors go.
template <class T>
struct Problems {
    std::size_t n, count;
    const T* source;
    T *left, *right, *re, *im, *buffer;

    std::size_t size() const { return n * n; }
};

// `order` may be Eigen::Dynamic. Vectors are stored as the library does, but not scaled to length 1.
template <class T, int order>
void eigenSolve(const Problems<T>& p, const Family& family) {
    using Square = Eigen::Matrix<T, order, order>;
    using Stored = Eigen::Matrix<T, order, order, Eigen::RowMajor>;
    using Values = Eigen::Map<Eigen::Matrix<T, order, 1>, Eigen::Unaligned>;
    const auto n = static_cast<Eigen::Index>(p.n);
    Eigen::EigenSolver<Square> solver(n);
    Square matrix(n, n);
    for (std::size_t k = 0; k < p.count; ++k) {
        const Eigen::Map<const Stored, Eigen::Unaligned> a(p.source + k * p.size(), n, n);
        Eigen::Map<Stored, Eigen::Unaligned> left(p.left + k * p.size(), n, n), right(p.right + k * p.size(), n, n);
        Values re(p.re + k * p.n, n), im(p.im + k * p.n, n);
        if (family.left || !family.right) matrix = a;
        else matrix = a.transpose();
        solver.compute(matrix, family.vectors());
        re = solver.eigenvalues().real();
        im = solver.eigenvalues().imag();
        if (!family.vectors()) continue;
        matrix = solver.pseudoEigenvectors();
        (family.left ? left : right) = matrix;
        if (!family.left || !family.right) continue;
        // The inverse of left vectors has right ones as rows, of a pair the imaginary part first. One type for all orders
        // is compiled once.
        using Small = Eigen::Matrix<T, Eigen::Dynamic, Eigen::Dynamic, Eigen::ColMajor, mostOrder, mostOrder>;
        const Small inverse = Small(matrix).inverse();
        for (Eigen::Index j = 0; j < n; ++j)
            for (Eigen::Index i = 0; i < n; ++i) right(i, j) = inverse(im[j] > 0 ? j + 1 : im[j] < 0 ? j - 1 : j, i);
    }
}

// Eigen with an order that the compiler knows, or nothing: each is an instance of the whole solver, which takes seconds to
// compile, so these are but a few.
template <class T>
Run eigenOfKnownOrder(const Problems<T>& p, const Family& family);

}  // namespace bench
