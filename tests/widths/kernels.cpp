// Compiled once for each width, with KORM_VARIANT and KORM_VECTOR_BYTES to tell which.
#include <type_traits>

#include "kernel/unroll.h"
#include "linalg/cholesky.h"
#include "linalg/cholesky_solve.h"
#include "linalg/cofactors.h"
#include "linalg/determinant.h"
#include "linalg/invert.h"
#include "linalg/lu.h"
#include "linalg/lu_general.h"
#include "linalg/lu_solve.h"
#include "linalg/qr.h"
#include "widths/kernels.h"
#include "widths/operands.h"

namespace korm::inline KORM_VARIANT {

// In products.cpp.
void addProducts(widths::Kernels<float>& all);
void addProducts(widths::Kernels<double>& all);

namespace {

using widths::Kernel;
using widths::Kernels;

// How far elements of a row are apart, in elements.
using Adjacent = Int<1>;
using Apart = Int<2>;

template <class T>
std::byte* pivotsOf(const Operands<T>& on, int n) {
    return reinterpret_cast<std::byte*>(on.pivots + on.first * n);
}

// --- Linear algebra -------------------------------------------------------------------------------

template <class T, int n, int element>
std::int32_t decompose(const Operands<T>& on) {
    const auto src = matrices<element>(on.left, on, n, n);
    const auto dst = matrices<element>(on.results, on, n, n);
    return linalg::luDecomposition(src, dst, on.pivots + on.first * n, n, static_cast<std::int32_t>(on.count));
}

template <class T, int n, int element>
std::int32_t solve(const Operands<T>& on) {
    linalg::luSolve(matrices<element>(on.left, on, n, n), matrices<element>(on.right, on, 1, n),
                    matrices<element>(on.results, on, 1, n), on.pivots + on.first * n, n,
                    static_cast<std::int32_t>(on.count));
    return korStatusOk;
}

template <class T, int n, int element>
std::int32_t solveForOneMatrix(const Operands<T>& on) {
    linalg::luSolve(oneMatrix<element>(on.left, on, n), matrices<element>(on.right, on, 1, n),
                    matrices<element>(on.results, on, 1, n), on.pivots, n, static_cast<std::int32_t>(on.count));
    return korStatusOk;
}

template <class T, int n, int element>
std::int32_t factor(const Operands<T>& on) {
    return linalg::choleskyDecomposition(matrices<element>(on.left, on, n, n), matrices<element>(on.results, on, n, n),
                                         n, static_cast<std::int32_t>(on.count));
}

template <class T, int n, int element>
std::int32_t solveWithFactors(const Operands<T>& on) {
    linalg::choleskySolve(matrices<element>(on.left, on, n, n), matrices<element>(on.right, on, 1, n),
                          matrices<element>(on.results, on, 1, n), n, static_cast<std::int32_t>(on.count));
    return korStatusOk;
}

template <class T, int n, int element>
std::int32_t solveWithOneFactor(const Operands<T>& on) {
    linalg::choleskySolve(oneMatrix<element>(on.left, on, n), matrices<element>(on.right, on, 1, n),
                          matrices<element>(on.results, on, 1, n), n, static_cast<std::int32_t>(on.count));
    return korStatusOk;
}

// Matrices of n rows are square or have a column less.
template <class T, int n, int width, int element>
std::int32_t reflect(const Operands<T>& on) {
    return linalg::qrDecomposition(matrices<element>(on.left, on, n, width),
                                   matrices<element>(on.results, on, n, width), on.buffer, MatrixShape{width, n},
                                   static_cast<std::int32_t>(on.count));
}

template <class T, int n, int width, int element>
std::int32_t solveByReflections(const Operands<T>& on) {
    linalg::qrSolve(matrices<element>(on.left, on, n, width), matrices<element>(on.right, on, 1, n),
                    matrices<element>(on.results, on, 1, width), on.buffer, MatrixShape{width, n},
                    static_cast<std::int32_t>(on.count));
    return korStatusOk;
}

template <class T, int n, int element>
std::int32_t solveByOneSetOfReflections(const Operands<T>& on) {
    linalg::qrSolve(oneMatrix<element>(on.left, on, n), matrices<element>(on.right, on, 1, n),
                    matrices<element>(on.results, on, 1, n), on.buffer, MatrixShape{n, n},
                    static_cast<std::int32_t>(on.count));
    return korStatusOk;
}

template <class T, int n, int element>
std::int32_t invert(const Operands<T>& on) {
    const auto src = matrices<element>(on.left, on, n, n);
    const auto dst = matrices<element>(on.results, on, n, n);
    const auto count = static_cast<std::int32_t>(on.count);
    if constexpr (n == 1) return linalg::reciprocals(src, dst, on.buffer, n, count);
    else return linalg::inverse(src, dst, on.buffer, n, count);
}

// In the elements' own type: extended precision is never in lanes.
template <class T, int n, int element>
std::int32_t findDeterminants(const Operands<T>& on) {
    const auto src = matrices<element>(on.left, on, n, n);
    auto* const dst = reinterpret_cast<std::byte*>(on.results + on.first);
    if constexpr (n == 2) linalg::determinantsOrder2(src, dst, on.buffer, on.count);
    else linalg::closedDeterminants<n>(src, dst, on.count);
    return korStatusOk;
}

// --- All of them ----------------------------------------------------------------------------------

template <class T, class Element>
void addKernels(Kernels<T>& all, Element element) {
    const auto add = [&](const char* name, auto n, std::int32_t (*run)(const Operands<T>&)) {
        all.push_back({name, n, element, run});
    };
    constexpr int e = Element::value;
    const auto addFactorisations = [&](auto n) {
        add("LU decomposition", n, decompose<T, n, e>);
        all.push_back({"Cholesky decomposition", n, element, factor<T, n, e>, true});
        add("Cholesky solve", n, solveWithFactors<T, n, e>);
        add("QR decomposition", n, reflect<T, n, n, e>);
        add("QR solve", n, solveByReflections<T, n, n, e>);
        if constexpr (e == 1) {
            add("Cholesky solve, one matrix", n, solveWithOneFactor<T, n, e>);
            add("QR solve, one matrix", n, solveByOneSetOfReflections<T, n, e>);
            if constexpr (n > 1) {
                add("QR decomposition, a column less", n, reflect<T, n, n - 1, e>);
                add("QR solve, a column less", n, solveByReflections<T, n, n - 1, e>);
            }
        }
    };
    unrolled<6>([&](auto before) {
        constexpr Int<before + 1> n;
        add("LU solve", n, solve<T, n, e>);
        addFactorisations(n);
        // Elements apart are gathered by the same few words everywhere: two kernels show them.
        if constexpr (e == 1) {
            add("LU solve, one matrix", n, solveForOneMatrix<T, n, e>);
            add("inverse", n, invert<T, n, e>);
            if constexpr (n > 1) add("determinant", n, findDeterminants<T, n, e>);
        }
    });
    // Of the algorithms for any order, those that have objects, minors or a row in lanes. Neighbours of 17 elements differ
    // in where the blocks of their long sums begin.
    constexpr Int<8> eight;
    constexpr Int<17> seventeen;
    addFactorisations(eight);
    addFactorisations(seventeen);
    add("LU solve", seventeen, solve<T, seventeen, e>);
    add("LU solve", eight, solve<T, eight, e>);
    if constexpr (e == 1) {
        add("LU solve, one matrix", eight, solveForOneMatrix<T, eight, e>);
        add("inverse", eight, invert<T, eight, e>);
        add("LU solve, one matrix", seventeen, solveForOneMatrix<T, seventeen, e>);
        add("inverse", seventeen, invert<T, seventeen, e>);
        // A row of cofactors that doesn't fill the widest vector of floats.
        add("inverse", Int<9>{}, invert<T, Int<9>{}, e>);
    }
}

template <class T>
Kernels<T> kernels() {
    Kernels<T> all;
    addKernels(all, Adjacent());
    addKernels(all, Apart());
    addProducts(all);
    return all;
}

}  // namespace

widths::Kernels<float> ofFloats() { return kernels<float>(); }
widths::Kernels<double> ofDoubles() { return kernels<double>(); }

}  // namespace korm::inline KORM_VARIANT
