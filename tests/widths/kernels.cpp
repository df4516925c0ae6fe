// Compiled once for each width, with KORM_VARIANT and KORM_VECTOR_BYTES to tell which.
#include <type_traits>

#include "entry/views.h"
#include "kernel/unroll.h"
#include "linalg/cofactors.h"
#include "linalg/determinant.h"
#include "linalg/invert.h"
#include "linalg/lu.h"
#include "linalg/lu_general.h"
#include "linalg/lu_solve.h"
#include "widths/kernels.h"

namespace korm::inline KORM_VARIANT {
namespace {

using widths::Kernel;
using widths::Kernels;
using widths::Operands;

// How far elements of a row are apart, in elements.
using Adjacent = Int<1>;
using Apart = Int<2>;

// Matrices of `height` rows and `width` columns, from the first of the operands on.
template <int element, class T>
auto matrices(T* base, const Operands<std::remove_const_t<T>>& on, int height, int width) {
    const std::ptrdiff_t row = width * element + on.gap, object = height * row;
    T* const origin = base + on.first * object;
    constexpr auto size = static_cast<std::ptrdiff_t>(sizeof(T));
    if constexpr (element == 1) return plainArray(origin, object * size, row * size);
    else return stridedArray(origin, object * size, row * size, element * size);
}

// The first matrix as the one that serves all.
template <int element, class T>
auto oneMatrix(T* base, const Operands<std::remove_const_t<T>>& on, int n) {
    constexpr auto size = static_cast<std::ptrdiff_t>(sizeof(T));
    const std::ptrdiff_t row = (n * element + on.gap) * size;
    if constexpr (element == 1) return plain(base, row);
    else return strided(base, row, element * size);
}

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
    unrolled<6>([&](auto before) {
        constexpr Int<before + 1> n;
        add("LU decomposition", n, decompose<T, n, e>);
        add("LU solve", n, solve<T, n, e>);
        // Elements apart are gathered by the same few words everywhere: two kernels show them.
        if constexpr (e == 1) {
            add("LU solve, one matrix", n, solveForOneMatrix<T, n, e>);
            add("inverse", n, invert<T, n, e>);
            if constexpr (n > 1) add("determinant", n, findDeterminants<T, n, e>);
        }
    });
    // Of the algorithms for any order, those that have objects, minors or a row in lanes. Vectors of eight elements agree
    // modulo 16 bytes, so that their long sums go in lanes.
    constexpr Int<8> eight;
    add("LU decomposition", eight, decompose<T, eight, e>);
    add("LU solve", eight, solve<T, eight, e>);
    if constexpr (e == 1) {
        add("LU solve, one matrix", eight, solveForOneMatrix<T, eight, e>);
        add("inverse", eight, invert<T, eight, e>);
        constexpr Int<17> seventeen;
        add("inverse", seventeen, invert<T, seventeen, e>);
    }
}

template <class T>
Kernels<T> kernels() {
    Kernels<T> all;
    addKernels(all, Adjacent());
    addKernels(all, Apart());
    return all;
}

}  // namespace

widths::Kernels<float> ofFloats() { return kernels<float>(); }
widths::Kernels<double> ofDoubles() { return kernels<double>(); }

}  // namespace korm::inline KORM_VARIANT
