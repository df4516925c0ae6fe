// Inverses of arrays of matrices.
#include "rows.h"

namespace bench {
namespace {

template <class T, int n>
void inverseRow(const Objects& objects) {
    const std::string name = rowName<T>("inverse", "Invert_ma", n, objects);
    if (!isWanted(name)) return;
    constexpr std::size_t size = n * n;
    // The cofactor core is dear.
    const std::size_t count = std::min<std::size_t>(objectsIn<T>(objects, n), n > 6 ? 1000 : 1U << 20);
    const auto objectCount = static_cast<std::int32_t>(count);
    const T* const source = shuffledMatrices<T>(matrices, n, count);
    T* const inverse = memoryOf<T>(results, size * count);
    T* const buffer = memoryOf<T>(scratch, 64 * size);
    auto* const pivots = memoryOf<std::int32_t>(results, n * count);
    Row row(name, static_cast<double>(count));
    row.results(inverse, size * count, sizeof(T) == 4 ? 1e-4 : 1e-12);
    row.korm([=] {
        pick<T>(kormInvert_ma_32f, kormInvert_ma_64f)(source, bytes<T>(size), bytes<T>(n), bytes<T>(1), buffer, inverse,
                                                      bytes<T>(size), bytes<T>(n), bytes<T>(1), n, objectCount);
    });
    row.peer("Eigen", [=] {
        for (std::size_t k = 0; k < count; ++k)
            mapOf<Matrix<T, n>>(inverse + k * size) = mapOf<const Matrix<T, n>>(source + k * size).inverse();
    });
#ifdef BENCH_GLM
    if constexpr (n >= 2 && n <= 4) {
        // By columns, so the inverse of the transpose, which is the transpose of the inverse.
        row.peer("GLM", [=] {
            for (std::size_t k = 0; k < count; ++k) {
                const auto result = glm::inverse(loaded<glm::mat<n, n, T>>(source + k * size));
                std::memcpy(inverse + k * size, &result, sizeof result);
            }
        });
    }
#endif
#ifdef BENCH_CGLM
    if constexpr (sizeof(T) == 4 && (n == 3 || n == 4)) {
        row.peer("cglm", [=] {
            using Rows = float(*)[n];
            for (std::size_t k = 0; k < count; ++k) {
                const Rows from = reinterpret_cast<Rows>(const_cast<T*>(source + k * size));
                const Rows to = reinterpret_cast<Rows>(inverse + k * size);
                if constexpr (n == 3) glm_mat3_inv(from, to);
                else glm_mat4_inv(from, to);
            }
        });
    }
#endif
#ifdef BENCH_LAPACK
    if constexpr (n >= 5) {
        row.peer("LAPACK", [=] {
            std::memcpy(inverse, source, size * count * sizeof(T));
            for (std::size_t k = 0; k < count; ++k) {
                lapackFactor(n, inverse + k * size, pivots);
                lapackInvert(n, inverse + k * size, pivots, buffer);
            }
        });
    }
#endif
    if constexpr (n > 6) {
        // What to call instead where each element is a cofactor of its own: LU, and a solve for each column of the identity.
        T* const lu = memoryOf<T>(factors, size * count);
        T* const columns = memoryOf<T>(rightSides, size * count);
        for (std::size_t i = 0; i < size * count; ++i) columns[i] = i / (n * count) == i % n ? T(1) : T(0);
        row.control("korm, LU and solves", [=] {
            kormFactor(source, lu, pivots, n, count);
            for (std::size_t j = 0; j < n; ++j)
                pick<T>(kormLUBackSubst_mava_32f, kormLUBackSubst_mava_64f)(
                    lu, bytes<T>(size), bytes<T>(n), bytes<T>(1), pivots, columns + j * n * count, bytes<T>(n),
                    bytes<T>(1), inverse + j, bytes<T>(size), bytes<T>(n), n, objectCount);
        });
    }
    row.measure();
}

}  // namespace

void measureInverses() {
    forOrders(std::integer_sequence<int, 2, 3, 4, 5, 6, 8>(),
              []<class T, int n>(const Objects& objects) { inverseRow<T, n>(objects); });
}

}  // namespace bench
