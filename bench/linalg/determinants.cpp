// Determinants of arrays of matrices, and what the extended-precision kernels cost beside their unit's own limit.
#include <cstring>

#include "data.h"
#include "peers.h"
#include "rows.h"
#include "side_by_side.h"

#ifdef LINALG_BENCH_GLM
#include <glm/glm.hpp>
#endif
#ifdef LINALG_BENCH_CGLM
#include <cglm/cglm.h>
#endif

namespace linalgbench {
namespace {

template <class T, int n>
void determinantRow(const Place& place, std::vector<Measured>& measured) {
    constexpr std::size_t size = n * n;
    const std::size_t count = objectsIn(place, n, sizeof(T));
    const auto objects = static_cast<std::int32_t>(count);
    const Block<T> source = shuffledMatrices<T>(n, count), result(count), buffer(size + n);
    Row row{rowName<T>("Det_ma", n, place), count, std::min<std::size_t>(count, 1000), isSingle<T> ? 1e-4 : 1e-12, {}};
    row.contenders.push_back({"korm",
                              [=] {
                                  pick<T>(kormDet_ma_32f, kormDet_ma_64f)(source.data(), bytes<T>(size), bytes<T>(n),
                                                                          bytes<T>(1), n, buffer.data(), result.data(),
                                                                          objects);
                              },
                              [=](std::size_t i) { return static_cast<double>(result[i]); }});

    const Block<T> eigenResult(count);
    row.contenders.push_back({"Eigen",
                              [=] {
                                  for (std::size_t k = 0; k < count; ++k)
                                      eigenResult[k] =
                                          mapOf<const Matrix<T, n>>(source.data() + k * size).determinant();
                              },
                              [=](std::size_t i) { return static_cast<double>(eigenResult[i]); }});

#ifdef LINALG_BENCH_GLM
    if constexpr (n >= 2 && n <= 4) {
        using M = glm::mat<n, n, T>;
        const Block<M> matrices(count);
        const Block<T> glmResult(count);
        std::memcpy(static_cast<void*>(matrices.data()), source.data(), sizeof(M) * count);
        row.contenders.push_back({"GLM",
                                  [=] {
                                      for (std::size_t k = 0; k < count; ++k)
                                          glmResult[k] = glm::determinant(matrices[k]);
                                  },
                                  [=](std::size_t i) { return static_cast<double>(glmResult[i]); }});
    }
#endif
#ifdef LINALG_BENCH_CGLM
    if constexpr (isSingle<T> && (n == 3 || n == 4)) {
        const Block<T> cglmResult(count);
        row.contenders.push_back({"cglm",
                                  [=] {
                                      for (std::size_t k = 0; k < count; ++k) {
                                          T* const from = source.data() + k * size;
                                          if constexpr (n == 3)
                                              cglmResult[k] = glm_mat3_det(reinterpret_cast<vec3*>(from));
                                          else cglmResult[k] = glm_mat4_det(reinterpret_cast<vec4*>(from));
                                      }
                                  },
                                  [=](std::size_t i) { return static_cast<double>(cglmResult[i]); }});
    }
#endif
#ifdef LINALG_BENCH_LAPACK
    if constexpr (n >= 5) {
        const Block<T> factors(size * count), lapackResult(count);
        row.contenders.push_back({"LAPACK",
                                  [=] {
                                      std::memcpy(factors.data(), source.data(), size * count * sizeof(T));
                                      for (std::size_t k = 0; k < count; ++k) {
                                          std::int32_t pivots[n];
                                          T* const a = factors.data() + k * size;
                                          lapackFactor(n, a, pivots);
                                          T product = 1;
                                          for (int i = 0; i < n; ++i)
                                              product *= (pivots[i] == i + 1 ? 1 : -1) * a[i * (n + 1)];
                                          lapackResult[k] = product;
                                      }
                                  },
                                  [=](std::size_t i) { return static_cast<double>(lapackResult[i]); }});
    }
#endif
    measure(row, measured);
}

// --- Extended precision ---

struct Operations {
    int multiplications, additions;
};

// Of an expansion that makes each minor of the last rows once.
constexpr Operations expansionOperations(int n) {
    if (n == 3) return {9, 5};
    int choose = n, multiplications = 0, additions = 0;
    for (int rows = 2; rows <= n; ++rows) {
        choose = choose * (n - rows + 1) / rows;
        multiplications += choose * rows;
        additions += choose * (rows - 1);
    }
    return {multiplications, additions};
}

// The list form takes its matrices one by one through the extended kernels at all orders 3 to 6.
template <class T, int n>
void extendedRow(std::vector<ExtendedRow>& rows) {
    constexpr std::size_t size = n * n, count = 100;
    const Block<T> source = shuffledMatrices<T>(n, count), result(count), buffer(size + n);
    const auto list = std::make_shared<std::vector<const T*>>();
    for (std::size_t k = 0; k < count; ++k) list->push_back(source.data() + k * size);
    std::vector<Measured> measured;
    measure({std::string(isSingle<T> ? "Det_ma_32f_L/" : "Det_ma_64f_L/") + std::to_string(n),
             count,
             0,
             0,
             {{"korm",
               [=] {
                   pick<T>(kormDet_ma_32f_L, kormDet_ma_64f_L)(list->data(), 0, bytes<T>(n), bytes<T>(1), n,
                                                               buffer.data(), result.data(),
                                                               static_cast<std::int32_t>(count));
               },
               [](std::size_t) { return 0.0; }}}},
            measured);
    if (measured.empty()) return;
    constexpr Operations operations = expansionOperations(n);
    rows.push_back({measured[0].row, operations.multiplications, operations.additions,
                    measured[0].nanoseconds[0] * cyclesPerNanosecond()});
}

}  // namespace

void measureDeterminants(std::vector<Measured>& measured) {
    forOrders(std::integer_sequence<int, 2, 3, 4, 5, 6, 7, 8>(), [&]<class T, int n>() {
        for (const Place& place : places) determinantRow<T, n>(place, measured);
    });
}

std::vector<ExtendedRow> measureExtendedDeterminants() {
    std::vector<ExtendedRow> rows;
    forOrders(std::integer_sequence<int, 3, 4, 5, 6>(), [&]<class T, int n>() { extendedRow<T, n>(rows); });
    return rows;
}

}  // namespace linalgbench
