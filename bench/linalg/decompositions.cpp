// LU decomposition of arrays of matrices.
#include <cstring>

#include "data.h"
#include "peers.h"
#include "rows.h"
#include "side_by_side.h"

namespace linalgbench {
namespace {

template <class T, int n>
void decompositionRow(const Place& place, std::vector<Measured>& measured) {
    constexpr std::size_t size = n * n;
    const std::size_t count = objectsIn(place, n, sizeof(T));
    const auto objects = static_cast<std::int32_t>(count);
    const Block<T> source = shuffledMatrices<T>(n, count);
    Row row{rowName<T>("LUDecomp_ma", n, place),
            count,
            size * std::min<std::size_t>(count, 1000),
            1e3 * Eigen::NumTraits<T>::epsilon(),
            {}};

    const Block<T> factors(size * count);
    const Block<std::int32_t> pivots(n * count);
    row.contenders.push_back({"korm",
                              [=] {
                                  pick<T>(kormLUDecomp_ma_32f, kormLUDecomp_ma_64f)(
                                      source.data(), bytes<T>(size), bytes<T>(n), bytes<T>(1), pivots.data(),
                                      factors.data(), bytes<T>(size), bytes<T>(n), bytes<T>(1), n, objects);
                              },
                              // The rows in the order of the pivots, as the peer has them.
                              [=](std::size_t i) {
                                  const std::size_t k = i / size, step = i % size / n;
                                  const auto r = static_cast<std::size_t>(pivots[k * n + step]);
                                  return static_cast<double>(factors[k * size + r * n + i % n]);
                              }});

    const Block<T> eigenFactors(size * count);
    const Block<std::int32_t> eigenPivots(n * count);
    row.contenders.push_back(
        {"Eigen",
         [=] {
             for (std::size_t k = 0; k < count; ++k) {
                 const Eigen::PartialPivLU<Matrix<T, n>> lu(mapOf<const Matrix<T, n>>(source.data() + k * size));
                 mapOf<Matrix<T, n>>(eigenFactors.data() + k * size) = lu.matrixLU();
                 mapOf<Vector<std::int32_t, n>>(eigenPivots.data() + k * n) = lu.permutationP().indices();
             }
         },
         [=](std::size_t i) { return static_cast<double>(eigenFactors[i]); }});

#ifdef LINALG_BENCH_LAPACK
    // It factors the transpose, so what can be compared is the product of its pivots.
    const Block<T> lapackFactors(size * count);
    const Block<std::int32_t> lapackPivots(n * count);
    const auto lapack = [=] {
        std::memcpy(lapackFactors.data(), source.data(), size * count * sizeof(T));
        for (std::size_t k = 0; k < count; ++k)
            lapackFactor(n, lapackFactors.data() + k * size, lapackPivots.data() + k * n);
    };
    const auto kormValue = row.contenders[0].value;
    row.contenders.push_back({"LAPACK", lapack, [=](std::size_t i) {
                                  if (i % size != size - 1) return kormValue(i);
                                  double product = 1, kormProduct = 1;
                                  for (std::size_t j = 0; j < n; ++j) {
                                      product *= static_cast<double>(lapackFactors[i / size * size + j * (n + 1)]);
                                      kormProduct *= kormValue(i / size * size + j * (n + 1));
                                  }
                                  // Up to the sign of the permutations.
                                  return kormValue(i) * std::fabs(product / kormProduct);
                              }});
#endif
    measure(row, measured);
}

}  // namespace

void measureDecompositions(std::vector<Measured>& measured) {
    forOrders(std::integer_sequence<int, 1, 2, 3, 4, 5, 6, 7, 8, 16, 32>(), [&]<class T, int n>() {
        for (const Place& place : places) decompositionRow<T, n>(place, measured);
    });
}

}  // namespace linalgbench
