// What one would use otherwise, over the same memory.
#pragma once

#if defined(__GNUC__) && !defined(__clang__)
#pragma GCC diagnostic push
#pragma GCC diagnostic ignored "-Wmaybe-uninitialized"
#endif
#include <Eigen/Core>
#if defined(__GNUC__) && !defined(__clang__)
#pragma GCC diagnostic pop
#endif
#ifdef KORM_BENCH_GLM
#include <glm/glm.hpp>
#endif
#ifdef KORM_BENCH_CGLM
#include <cglm/cglm.h>
#endif
#ifdef KORM_BENCH_OPENBLAS
#include <cblas.h>
#endif

#include <cstring>

#include "problem.h"

namespace bench::products {

inline std::ptrdiff_t objectsOf(const auto& problem) { return problem.count; }

// --- Plain loops, sizes known to the compiler ---

template <Shape shape, int n, class T>
void plainProduct(const T* __restrict a, const T* __restrict b, T* __restrict c) {
    constexpr int columns = shape.isVector ? 1 : n;
    for (int i = 0; i < n; ++i) {
        for (int j = 0; j < columns; ++j) {
            T sum = 0;
            for (int k = 0; k < n; ++k) {
                const T left = shape.firstTransposed ? a[k * n + i] : a[i * n + k];
                const T right = shape.isVector ? b[k] : shape.secondTransposed ? b[j * n + k] : b[k * n + j];
                sum += left * right;
            }
            c[i * columns + j] = sum;
        }
    }
}

// Rows of the right operand scaled and added: what a compiler turns into whole vectors.
template <Shape shape, int n, class T>
void plainProductByRows(const T* __restrict a, const T* __restrict b, T* __restrict c) {
    for (int i = 0; i < n; ++i) {
        T sums[n] = {};
        for (int k = 0; k < n; ++k) {
            const T left = shape.firstTransposed ? a[k * n + i] : a[i * n + k];
            for (int j = 0; j < n; ++j) sums[j] += left * (shape.secondTransposed ? b[j * n + k] : b[k * n + j]);
        }
        for (int j = 0; j < n; ++j) c[i * n + j] = sums[j];
    }
}

template <Shape shape, int n, class T>
[[gnu::noinline]] void loop(const Problem<T>& p) {
    for (std::ptrdiff_t k = 0; k < objectsOf(p); ++k) plainProduct<shape, n>(p.a(k), p.b(k), p.c(k));
}

template <Shape shape, int n, class T>
[[gnu::noinline]] void loopByRows(const Problem<T>& p) {
    for (std::ptrdiff_t k = 0; k < objectsOf(p); ++k) plainProductByRows<shape, n>(p.a(k), p.b(k), p.c(k));
}

// Along streams: all objects of one result position at a time.
template <Shape shape, int n, class T>
[[gnu::noinline]] void loopAlongStreams(const Problem<T>& p) {
    constexpr int columns = shape.isVector ? 1 : n;
    for (int i = 0; i < n; ++i) {
        for (int j = 0; j < columns; ++j) {
            T* __restrict const c = p.resultStreams[static_cast<std::size_t>(i * columns + j)];
            const T* a[n];
            const T* b[n];
            for (int k = 0; k < n; ++k) {
                const int left = shape.firstTransposed ? k * n + i : i * n + k;
                const int right = shape.isVector ? k : shape.secondTransposed ? j * n + k : k * n + j;
                a[k] = p.firstStreams[static_cast<std::size_t>(left)];
                b[k] = p.secondStreams[static_cast<std::size_t>(right)];
            }
            for (std::ptrdiff_t object = 0; object < p.count; ++object) {
                T sum = 0;
                for (int k = 0; k < n; ++k)
                    sum += a[k][shape.firstIsArray ? object : 0] * b[k][shape.secondIsArray ? object : 0];
                c[object] = sum;
            }
        }
    }
}

// --- Eigen ---

template <bool transposed>
decltype(auto) readAs(const auto& matrix) {
    if constexpr (transposed) return matrix.transpose();
    else return (matrix);
}

template <Shape shape, class T, int n>
void eigenProduct(const T* a, const T* b, T* c, int order) {
    using Matrix = Eigen::Matrix<T, n, n, Eigen::RowMajor>;
    using Right = std::conditional_t<shape.isVector, Eigen::Matrix<T, n, 1>, Matrix>;
    const int columns = shape.isVector ? 1 : order;
    const Eigen::Map<const Matrix> left(a, order, order);
    const Eigen::Map<const Right> right(b, order, columns);
    Eigen::Map<Right> result(c, order, columns);
    result.noalias() = readAs<shape.firstTransposed>(left) * readAs<shape.secondTransposed>(right);
}

// An operand for all objects is held in a local of Eigen's own type, as Eigen's users do.
template <Shape shape, int n, class T>
[[gnu::noinline]] void eigenFixed(const Problem<T>& p) {
    using Matrix = Eigen::Matrix<T, n, n, Eigen::RowMajor>;
    using Right = std::conditional_t<shape.isVector, Eigen::Matrix<T, n, 1>, Matrix>;
    constexpr bool keepsFirst = shape.isArray() && !shape.firstIsArray && n <= 8;
    constexpr bool keepsSecond = shape.isArray() && !shape.secondIsArray && n <= 8;
    if constexpr (keepsFirst || keepsSecond) {
        const Eigen::Map<const Matrix> first(p.first);
        const Eigen::Map<const Right> second(p.second);
        for (std::ptrdiff_t k = 0; k < objectsOf(p); ++k) {
            Eigen::Map<Right> result(p.c(k));
            if constexpr (keepsFirst) {
                const Matrix left = first;
                const Eigen::Map<const Right> right(p.b(k));
                result.noalias() = readAs<shape.firstTransposed>(left) * readAs<shape.secondTransposed>(right);
            } else {
                const Right right = second;
                const Eigen::Map<const Matrix> left(p.a(k));
                result.noalias() = readAs<shape.firstTransposed>(left) * readAs<shape.secondTransposed>(right);
            }
        }
    } else {
        for (std::ptrdiff_t k = 0; k < objectsOf(p); ++k) eigenProduct<shape, T, n>(p.a(k), p.b(k), p.c(k), n);
    }
}

template <Shape shape, class T>
[[gnu::noinline]] void eigenDynamic(const Problem<T>& p) {
    for (std::ptrdiff_t k = 0; k < objectsOf(p); ++k)
        eigenProduct<shape, T, Eigen::Dynamic>(p.a(k), p.b(k), p.c(k), p.order);
}

// One matrix with many vectors is a product of two matrices, the vectors being rows of one.
template <Shape shape, class T>
[[gnu::noinline]] void eigenAllVectors(const Problem<T>& p) {
    using Matrix = Eigen::Matrix<T, Eigen::Dynamic, Eigen::Dynamic, Eigen::RowMajor>;
    const Eigen::Map<const Matrix> matrix(p.first, p.order, p.order);
    const Eigen::Map<const Matrix> vectors(p.second, p.count, p.order);
    Eigen::Map<Matrix> results(p.result, p.count, p.order);
    results.noalias() = vectors * readAs<!shape.firstTransposed>(matrix);
}

// --- GLM and cglm: orders 3 and 4, stored by columns, so that a product is that of the transposes ---

#ifdef KORM_BENCH_GLM
template <Shape shape, int n, class T>
[[gnu::noinline]] void glmProduct(const Problem<T>& p) {
    using Matrix = glm::mat<n, n, T>;
    using Vector = glm::vec<n, T>;
    static_assert(sizeof(Matrix) == n * n * sizeof(T) && sizeof(Vector) == n * sizeof(T));
    const auto load = []<class V>(const T* from, V& value) {
        std::memcpy(static_cast<void*>(&value), from, sizeof value);
    };
    for (std::ptrdiff_t k = 0; k < objectsOf(p); ++k) {
        Matrix left;
        load(p.a(k), left);
        if constexpr (shape.firstTransposed) left = glm::transpose(left);
        if constexpr (shape.isVector) {
            Vector right;
            load(p.b(k), right);
            const Vector result = right * left;
            std::memcpy(p.c(k), &result, sizeof result);
        } else {
            Matrix right;
            load(p.b(k), right);
            if constexpr (shape.secondTransposed) right = glm::transpose(right);
            const Matrix result = right * left;
            std::memcpy(p.c(k), &result, sizeof result);
        }
    }
}
#endif

#ifdef KORM_BENCH_CGLM
// Only what it has functions for: float, untransposed matrices, and the transpose of a matrix times a vector.
template <Shape shape, int n>
inline constexpr bool hasCglm =
    shape.isVector ? shape.firstTransposed : !shape.firstTransposed && !shape.secondTransposed;

template <Shape shape, int n>
[[gnu::noinline]] void cglmProduct(const Problem<float>& p) {
    for (std::ptrdiff_t k = 0; k < objectsOf(p); ++k) {
        // It takes arrays by non-const pointers.
        float* const a = const_cast<float*>(p.a(k));
        float* const b = const_cast<float*>(p.b(k));
        if constexpr (n == 3) {
            using Matrix = float(*)[3];
            if constexpr (shape.isVector) glm_mat3_mulv(reinterpret_cast<Matrix>(a), b, p.c(k));
            else
                glm_mat3_mul(reinterpret_cast<Matrix>(b), reinterpret_cast<Matrix>(a),
                             reinterpret_cast<Matrix>(p.c(k)));
        } else {
            using Matrix = float(*)[4];
            if constexpr (shape.isVector) glm_mat4_mulv(reinterpret_cast<Matrix>(a), b, p.c(k));
            else
                glm_mat4_mul(reinterpret_cast<Matrix>(b), reinterpret_cast<Matrix>(a),
                             reinterpret_cast<Matrix>(p.c(k)));
        }
    }
}
#endif

// --- OpenBLAS ---

#ifdef KORM_BENCH_OPENBLAS
template <Shape shape, class T>
[[gnu::noinline]] void openblas(const Problem<T>& p) {
    const int n = p.order;
    const auto transposed = [](bool isTransposed) { return isTransposed ? CblasTrans : CblasNoTrans; };
    for (std::ptrdiff_t k = 0; k < objectsOf(p); ++k) {
        const auto a = transposed(shape.firstTransposed), b = transposed(shape.secondTransposed);
        if constexpr (shape.isVector) {
            if constexpr (sizeof(T) == 4) cblas_sgemv(CblasRowMajor, a, n, n, 1, p.a(k), n, p.b(k), 1, 0, p.c(k), 1);
            else cblas_dgemv(CblasRowMajor, a, n, n, 1, p.a(k), n, p.b(k), 1, 0, p.c(k), 1);
        } else {
            if constexpr (sizeof(T) == 4)
                cblas_sgemm(CblasRowMajor, a, b, n, n, n, 1, p.a(k), n, p.b(k), n, 0, p.c(k), n);
            else cblas_dgemm(CblasRowMajor, a, b, n, n, n, 1, p.a(k), n, p.b(k), n, 0, p.c(k), n);
        }
    }
}

template <Shape shape, class T>
[[gnu::noinline]] void openblasAllVectors(const Problem<T>& p) {
    const int n = p.order;
    const auto matrix = shape.firstTransposed ? CblasNoTrans : CblasTrans;
    if constexpr (sizeof(T) == 4)
        cblas_sgemm(CblasRowMajor, CblasNoTrans, matrix, p.count, n, n, 1, p.second, n, p.first, n, 0, p.result, n);
    else cblas_dgemm(CblasRowMajor, CblasNoTrans, matrix, p.count, n, n, 1, p.second, n, p.first, n, 0, p.result, n);
}
#endif

// --- Who competes ---

template <class Form, int n, class T>
void addSmallPeers(std::vector<Contender<T>>& contenders) {
    constexpr Shape shape = Form::shape;
    contenders.push_back({"eigenFixed", eigenFixed<shape, n, T>});
    contenders.push_back({"loop", loop<shape, n, T>});
    if constexpr (!shape.isVector) contenders.push_back({"loopByRows", loopByRows<shape, n, T>});
#ifdef KORM_BENCH_GLM
    if constexpr (n == 3 || n == 4) contenders.push_back({"glm", glmProduct<shape, n, T>});
#endif
#ifdef KORM_BENCH_CGLM
    if constexpr ((n == 3 || n == 4) && sizeof(T) == 4) {
        if constexpr (hasCglm<shape, n>) contenders.push_back({"cglm", cglmProduct<shape, n>});
    }
#endif
}

template <class Form, class T>
void addLargePeers(std::vector<Contender<T>>& contenders) {
    constexpr Shape shape = Form::shape;
    contenders.push_back({"eigenDynamic", eigenDynamic<shape, T>});
#ifdef KORM_BENCH_OPENBLAS
    contenders.push_back({"openblas", openblas<shape, T>});
#endif
    if constexpr (shape.isVector && !shape.firstIsArray && shape.secondIsArray) {
        contenders.push_back({"eigenAllVectors", eigenAllVectors<shape, T>});
#ifdef KORM_BENCH_OPENBLAS
        contenders.push_back({"openblasAllVectors", openblasAllVectors<shape, T>});
#endif
    }
}

}  // namespace bench::products
