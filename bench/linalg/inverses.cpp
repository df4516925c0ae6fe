// Inverses of arrays of matrices.
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
void inverseRow(const Place& place, std::vector<Measured>& measured) {
    constexpr std::size_t size = n * n;
    // The cofactor core is dear.
    const std::size_t count = std::min<std::size_t>(objectsIn(place, n, sizeof(T)), n > 6 ? 1000 : 1u << 20);
    const auto objects = static_cast<std::int32_t>(count);
    const Block<T> source = shuffledMatrices<T>(n, count), inverse(size * count), buffer(size + n);
    Row row{rowName<T>("Invert_ma", n, place),
            count,
            size * std::min<std::size_t>(count, 1000),
            isSingle<T> ? 1e-4 : 1e-12,
            {}};
    row.contenders.push_back({"korm",
                              [=] {
                                  pick<T>(kormInvert_ma_32f, kormInvert_ma_64f)(
                                      source.data(), bytes<T>(size), bytes<T>(n), bytes<T>(1), buffer.data(),
                                      inverse.data(), bytes<T>(size), bytes<T>(n), bytes<T>(1), n, objects);
                              },
                              [=](std::size_t i) { return static_cast<double>(inverse[i]); }});

    const Block<T> eigenInverse(size * count);
    row.contenders.push_back({"Eigen",
                              [=] {
                                  for (std::size_t k = 0; k < count; ++k) {
                                      mapOf<Matrix<T, n>>(eigenInverse.data() + k * size) =
                                          mapOf<const Matrix<T, n>>(source.data() + k * size).inverse();
                                  }
                              },
                              [=](std::size_t i) { return static_cast<double>(eigenInverse[i]); }});

#ifdef LINALG_BENCH_GLM
    if constexpr (n >= 2 && n <= 4) {
        // By columns, so the inverse of the transpose, which is the transpose of the inverse.
        using M = glm::mat<n, n, T>;
        static_assert(sizeof(M) == size * sizeof(T));
        const Block<M> matrices(count), inverses(count);
        std::memcpy(static_cast<void*>(matrices.data()), source.data(), sizeof(M) * count);
        row.contenders.push_back(
            {"GLM",
             [=] {
                 for (std::size_t k = 0; k < count; ++k) inverses[k] = glm::inverse(matrices[k]);
             },
             [=](std::size_t i) { return static_cast<double>(reinterpret_cast<const T*>(inverses.data())[i]); }});
    }
#endif
#ifdef LINALG_BENCH_CGLM
    if constexpr (isSingle<T> && (n == 3 || n == 4)) {
        const Block<T> cglmInverse(size * count);
        row.contenders.push_back({"cglm",
                                  [=] {
                                      for (std::size_t k = 0; k < count; ++k) {
                                          T* const from = source.data() + k * size;
                                          T* const to = cglmInverse.data() + k * size;
                                          if constexpr (n == 3)
                                              glm_mat3_inv(reinterpret_cast<vec3*>(from), reinterpret_cast<vec3*>(to));
                                          else glm_mat4_inv(reinterpret_cast<vec4*>(from), reinterpret_cast<vec4*>(to));
                                      }
                                  },
                                  [=](std::size_t i) { return static_cast<double>(cglmInverse[i]); }});
    }
#endif
    if constexpr (n > 6) {
        // What to call instead where each element is a cofactor of its own: LU, and a solve for each column of the identity.
        const Block<T> factors(size * count), columns(size * count), solved(size * count);
        const Block<std::int32_t> pivots(n * count);
        for (std::size_t j = 0; j < n; ++j)
            for (std::size_t k = 0; k < count; ++k) columns[(j * count + k) * n + j] = 1;
        row.contenders.push_back({"korm, LU and solves",
                                  [=] {
                                      pick<T>(kormLUDecomp_ma_32f, kormLUDecomp_ma_64f)(
                                          source.data(), bytes<T>(size), bytes<T>(n), bytes<T>(1), pivots.data(),
                                          factors.data(), bytes<T>(size), bytes<T>(n), bytes<T>(1), n, objects);
                                      for (std::size_t j = 0; j < n; ++j)
                                          pick<T>(kormLUBackSubst_mava_32f, kormLUBackSubst_mava_64f)(
                                              factors.data(), bytes<T>(size), bytes<T>(n), bytes<T>(1), pivots.data(),
                                              columns.data() + j * n * count, bytes<T>(n), bytes<T>(1),
                                              solved.data() + j, bytes<T>(size), bytes<T>(n), n, objects);
                                  },
                                  [=](std::size_t i) { return static_cast<double>(solved[i]); }});
    }

#ifdef LINALG_BENCH_LAPACK
    if constexpr (n >= 5) {
        const Block<T> lapackInverse(size * count), work(64 * n);
        row.contenders.push_back({"LAPACK",
                                  [=] {
                                      std::memcpy(lapackInverse.data(), source.data(), size * count * sizeof(T));
                                      for (std::size_t k = 0; k < count; ++k) {
                                          std::int32_t pivots[n];
                                          lapackFactor(n, lapackInverse.data() + k * size, pivots);
                                          lapackInvert(n, lapackInverse.data() + k * size, pivots, work.data());
                                      }
                                  },
                                  [=](std::size_t i) { return static_cast<double>(lapackInverse[i]); }});
    }
#endif
    measure(row, measured);
}

}  // namespace

void measureInverses(std::vector<Measured>& measured) {
    forOrders(std::integer_sequence<int, 2, 3, 4, 5, 6, 8>(), [&]<class T, int n>() {
        for (const Place& place : places) inverseRow<T, n>(place, measured);
    });
}

}  // namespace linalgbench
