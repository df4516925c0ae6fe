// What one would use for products otherwise, over the same memory: packed square matrices, and vectors as long.
#pragma once

#include "../harness/eigen.h"
#include "../harness/operands.h"
#ifdef BENCH_GLM
#include <glm/glm.hpp>
#endif
#ifdef BENCH_CGLM
#include <cglm/cglm.h>
#endif
#ifdef BENCH_OPENBLAS
#include <cblas.h>
extern "C" char* openblas_get_config(void);
extern "C" char* openblas_get_corename(void);
#endif
#ifdef BENCH_LIBXSMM
#include <libxsmm.h>
#endif

#include <cstring>

namespace bench {

// A problem of square matrices as the peers see it: steps in elements, 0 where there is one operand for all objects.
template <class T>
struct Packed {
    const T* first;
    const T* second;
    T* result;
    std::ptrdiff_t firstStep, secondStep, resultStep;
    std::ptrdiff_t count;
    int order;

    template <Shape shape>
    static Packed of(const Work<T>& work) {
        const auto step = [](const Operand<T>& operand, bool isArray) { return isArray ? operand.objectStep() : 0; };
        return {work.first.base,
                work.second.base,
                work.result.base,
                step(work.first, shape.firstIsArray),
                step(work.second, shape.secondIsArray),
                step(work.result, shape.isArray()),
                work.count,
                work.rows};
    }
    const T* a(std::ptrdiff_t k) const { return first + k * firstStep; }
    const T* b(std::ptrdiff_t k) const { return second + k * secondStep; }
    T* c(std::ptrdiff_t k) const { return result + k * resultStep; }
};

template <Shape shape>
inline constexpr bool firstTransposed = shape.firstKind == Kind::transposed;
template <Shape shape>
inline constexpr bool secondTransposed = shape.secondKind == Kind::transposed;

// --- Plain loops, sizes known to the compiler ---

template <Shape shape, int n, class T>
[[gnu::noinline]] void knownLoop(const Packed<T>& p) {
    constexpr int columns = shape.isVector() ? 1 : n;
    for (std::ptrdiff_t k = 0; k < p.count; ++k) {
        const T* __restrict const a = p.a(k);
        const T* __restrict const b = p.b(k);
        T* __restrict const c = p.c(k);
        for (int i = 0; i < n; ++i) {
            for (int j = 0; j < columns; ++j) {
                T sum = 0;
                for (int l = 0; l < n; ++l) {
                    const T left = firstTransposed<shape> ? a[l * n + i] : a[i * n + l];
                    sum += left * (shape.isVector() ? b[l] : secondTransposed<shape> ? b[j * n + l] : b[l * n + j]);
                }
                c[i * columns + j] = sum;
            }
        }
    }
}

// Rows of the right operand scaled and added: what a compiler turns into whole vectors.
template <Shape shape, int n, class T>
[[gnu::noinline]] void knownLoopByRows(const Packed<T>& p) {
    for (std::ptrdiff_t k = 0; k < p.count; ++k) {
        const T* __restrict const a = p.a(k);
        const T* __restrict const b = p.b(k);
        T* __restrict const c = p.c(k);
        for (int i = 0; i < n; ++i) {
            T sums[n] = {};
            for (int l = 0; l < n; ++l) {
                const T left = firstTransposed<shape> ? a[l * n + i] : a[i * n + l];
                for (int j = 0; j < n; ++j) sums[j] += left * (secondTransposed<shape> ? b[j * n + l] : b[l * n + j]);
            }
            for (int j = 0; j < n; ++j) c[i * n + j] = sums[j];
        }
    }
}

// --- Eigen ---

template <bool transposed>
decltype(auto) readAs(const auto& matrix) {
    if constexpr (transposed) return matrix.transpose();
    else return (matrix);
}

// Sizes known to the compiler, or Eigen::Dynamic. An operand for all objects is held in a local of Eigen's own type where
// it is small, as Eigen's users do.
template <Shape shape, int n, class T>
[[gnu::noinline]] void eigen(const Packed<T>& p) {
    using Left = Eigen::Matrix<T, n, n, Eigen::RowMajor>;
    using Right = std::conditional_t<shape.isVector(), Eigen::Matrix<T, n, 1>, Left>;
    constexpr bool isSmall = n != Eigen::Dynamic && n <= 8 && shape.isArray();
    const int columns = shape.isVector() ? 1 : p.order;
    const auto held = [&]<class M>(std::type_identity<M>, const T* data, int width) {
        return M(Eigen::Map<const M>(data, p.order, width));
    };
    const auto product = [&](std::ptrdiff_t k, const auto& left, const auto& right) {
        Eigen::Map<Right>(p.c(k), p.order, columns).noalias() =
            readAs<firstTransposed<shape>>(left) * readAs<secondTransposed<shape>>(right);
    };
    const auto left = [&](std::ptrdiff_t k) { return Eigen::Map<const Left>(p.a(k), p.order, p.order); };
    const auto right = [&](std::ptrdiff_t k) { return Eigen::Map<const Right>(p.b(k), p.order, columns); };
    if constexpr (isSmall && !shape.firstIsArray) {
        const Left first = held(std::type_identity<Left>(), p.first, p.order);
        for (std::ptrdiff_t k = 0; k < p.count; ++k) product(k, Left(first), right(k));
    } else if constexpr (isSmall && !shape.secondIsArray) {
        const Right second = held(std::type_identity<Right>(), p.second, columns);
        for (std::ptrdiff_t k = 0; k < p.count; ++k) product(k, left(k), Right(second));
    } else {
        for (std::ptrdiff_t k = 0; k < p.count; ++k) product(k, left(k), right(k));
    }
}

// One matrix with many vectors is a product of two matrices, the vectors being rows of one.
template <Shape shape, class T>
[[gnu::noinline]] void eigenAllVectors(const Packed<T>& p) {
    using Matrix = Eigen::Matrix<T, Eigen::Dynamic, Eigen::Dynamic, Eigen::RowMajor>;
    const Eigen::Map<const Matrix> matrix(p.first, p.order, p.order);
    const Eigen::Map<const Matrix> vectors(p.second, p.count, p.order);
    Eigen::Map<Matrix>(p.result, p.count, p.order).noalias() = vectors * readAs<!firstTransposed<shape>>(matrix);
}

// --- GLM and cglm: orders 3 and 4, stored by columns, so that a product is that of the transposes ---

#ifdef BENCH_GLM
template <Shape shape, int n, class T>
[[gnu::noinline]] void glmProduct(const Packed<T>& p) {
    using Matrix = glm::mat<n, n, T>;
    using Right = std::conditional_t<shape.isVector(), glm::vec<n, T>, Matrix>;
    static_assert(sizeof(Matrix) == n * n * sizeof(T) && sizeof(Right) % (n * sizeof(T)) == 0);
    for (std::ptrdiff_t k = 0; k < p.count; ++k) {
        Matrix left;
        Right right;
        std::memcpy(static_cast<void*>(&left), p.a(k), sizeof left);
        std::memcpy(static_cast<void*>(&right), p.b(k), sizeof right);
        if constexpr (firstTransposed<shape>) left = glm::transpose(left);
        if constexpr (secondTransposed<shape>) right = glm::transpose(right);
        const Right result = right * left;
        std::memcpy(p.c(k), &result, sizeof result);
    }
}
#endif

#ifdef BENCH_CGLM
// Only what it has functions for: float, untransposed matrices, and the transpose of a matrix times a vector.
template <Shape shape>
inline constexpr bool hasCglm = shape.isVector() ? firstTransposed<shape>
                                                 : !firstTransposed<shape> && !secondTransposed<shape>;

template <Shape shape, int n>
[[gnu::noinline]] void cglmProduct(const Packed<float>& p) {
    using Matrix = float(*)[n];
    for (std::ptrdiff_t k = 0; k < p.count; ++k) {
        // It takes arrays by non-const pointers.
        float* const a = const_cast<float*>(p.a(k));
        float* const b = const_cast<float*>(p.b(k));
        const auto m = [](float* data) { return reinterpret_cast<Matrix>(data); };
        if constexpr (shape.isVector() && n == 3) glm_mat3_mulv(m(a), b, p.c(k));
        else if constexpr (shape.isVector()) glm_mat4_mulv(m(a), b, p.c(k));
        else if constexpr (n == 3) glm_mat3_mul(m(b), m(a), m(p.c(k)));
        else glm_mat4_mul(m(b), m(a), m(p.c(k)));
    }
}
#endif

// --- OpenBLAS and libxsmm ---

#ifdef BENCH_OPENBLAS
template <Shape shape, class T>
[[gnu::noinline]] void openblas(const Packed<T>& p) {
    const int n = p.order;
    const auto a = firstTransposed<shape> ? CblasTrans : CblasNoTrans;
    const auto b = secondTransposed<shape> ? CblasTrans : CblasNoTrans;
    for (std::ptrdiff_t k = 0; k < p.count; ++k) {
        if constexpr (shape.isVector())
            pick<T>(cblas_sgemv, cblas_dgemv)(CblasRowMajor, a, n, n, 1, p.a(k), n, p.b(k), 1, 0, p.c(k), 1);
        else pick<T>(cblas_sgemm, cblas_dgemm)(CblasRowMajor, a, b, n, n, n, 1, p.a(k), n, p.b(k), n, 0, p.c(k), n);
    }
}

template <Shape shape, class T>
[[gnu::noinline]] void openblasAllVectors(const Packed<T>& p) {
    const int n = p.order;
    pick<T>(cblas_sgemm, cblas_dgemm)(CblasRowMajor, CblasNoTrans, firstTransposed<shape> ? CblasNoTrans : CblasTrans,
                                      static_cast<int>(p.count), n, n, 1, p.second, n, p.first, n, 0, p.result, n);
}
#endif

#ifdef BENCH_LIBXSMM
// Made for one size when the program runs. It has kernels for plain matrices stored by columns, and since it is told the
// size beforehand it is called without looking the kernel up.
template <class T>
auto libxsmmKernel(int rows, int inner, int columns) {
    const T one = 1, zero = 0;
    return pick<T>(libxsmm_smmdispatch, libxsmm_dmmdispatch)(columns, rows, inner, nullptr, nullptr, nullptr, &one,
                                                             &zero, nullptr, nullptr);
}
#endif

// --- Who competes ---

template <Shape shape, int n, class T>
void addPeersOfKnownSize(Row& row, const Packed<T>& p) {
    row.peer("Eigen, fixed sizes", [=] { eigen<shape, n>(p); });
    row.peer("plain loop", [=] { knownLoop<shape, n>(p); });
    if constexpr (!shape.isVector()) row.peer("plain loop by rows", [=] { knownLoopByRows<shape, n>(p); });
#ifdef BENCH_GLM
    if constexpr (n == 3 || n == 4) row.peer("GLM", [=] { glmProduct<shape, n>(p); });
#endif
#ifdef BENCH_CGLM
    if constexpr ((n == 3 || n == 4) && sizeof(T) == 4 && hasCglm<shape>)
        row.peer("cglm", [=] { cglmProduct<shape, n>(p); });
#endif
}

template <Shape shape, class T>
void addPeersOfAnySize(Row& row, const Packed<T>& p) {
    constexpr bool isOneMatrixForAll = shape.isVector() && !shape.firstIsArray && shape.secondIsArray;
    row.peer("Eigen, dynamic", [=] { eigen<shape, Eigen::Dynamic>(p); });
    if constexpr (isOneMatrixForAll) row.peer("Eigen, all vectors at once", [=] { eigenAllVectors<shape>(p); });
#ifdef BENCH_OPENBLAS
    row.peer("OpenBLAS", [=] { openblas<shape>(p); });
    if constexpr (isOneMatrixForAll) row.peer("OpenBLAS, all vectors at once", [=] { openblasAllVectors<shape>(p); });
#endif
#ifdef BENCH_LIBXSMM
    if constexpr (!shape.isVector() && !shape.transposes()) {
        if (const auto kernel = libxsmmKernel<T>(p.order, p.order, p.order)) {
            row.peer("libxsmm", [=] {
                for (std::ptrdiff_t k = 0; k < p.count; ++k) kernel(p.b(k), p.a(k), p.c(k));
            });
        }
    }
#endif
}

}  // namespace bench
