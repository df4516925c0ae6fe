// Solving with factored matrices: each vector with a matrix of its own, and all vectors with one matrix.
#include <cstring>

#include "data.h"
#include "peers.h"
#include "rows.h"
#include "side_by_side.h"

namespace linalgbench {
namespace {

template <class T, int n>
void solutionRow(const Place& place, bool oneMatrix, std::vector<Measured>& measured) {
    constexpr std::size_t size = n * n;
    const std::size_t count = objectsIn(place, n, sizeof(T));
    const std::size_t matrices = oneMatrix ? 1 : count;
    const auto objects = static_cast<std::int32_t>(count);
    const Block<T> source = shuffledMatrices<T>(n, matrices), right = numbersBelowOne<T>(n * count);
    Row row{rowName<T>(oneMatrix ? "LUBackSubst_mva" : "LUBackSubst_mava", n, place),
            count,
            n * std::min<std::size_t>(count, 1000),
            1e3 * Eigen::NumTraits<T>::epsilon(),
            {}};

    const Block<T> factors(size * matrices), solution(n * count);
    const Block<std::int32_t> pivots(n * matrices);
    pick<T>(kormLUDecomp_ma_32f, kormLUDecomp_ma_64f)(source.data(), bytes<T>(size), bytes<T>(n), bytes<T>(1),
                                                      pivots.data(), factors.data(), bytes<T>(size), bytes<T>(n),
                                                      bytes<T>(1), n, static_cast<std::int32_t>(matrices));
    row.contenders.push_back(
        {"korm",
         [=] {
             if (oneMatrix) {
                 pick<T>(kormLUBackSubst_mva_32f, kormLUBackSubst_mva_64f)(
                     factors.data(), bytes<T>(n), bytes<T>(1), pivots.data(), right.data(), bytes<T>(n), bytes<T>(1),
                     solution.data(), bytes<T>(n), bytes<T>(1), n, objects);
             } else {
                 pick<T>(kormLUBackSubst_mava_32f, kormLUBackSubst_mava_64f)(
                     factors.data(), bytes<T>(size), bytes<T>(n), bytes<T>(1), pivots.data(), right.data(), bytes<T>(n),
                     bytes<T>(1), solution.data(), bytes<T>(n), bytes<T>(1), n, objects);
             }
         },
         [=](std::size_t i) { return static_cast<double>(solution[i]); }});

    using Lu = Eigen::PartialPivLU<Matrix<T, n>>;
    const auto lus = std::make_shared<std::vector<Lu, Eigen::aligned_allocator<Lu>>>();
    for (std::size_t k = 0; k < matrices; ++k) lus->emplace_back(mapOf<const Matrix<T, n>>(source.data() + k * size));
    const Block<T> eigenSolution(n * count);
    row.contenders.push_back({"Eigen",
                              [=] {
                                  for (std::size_t k = 0; k < count; ++k) {
                                      mapOf<Vector<T, n>>(eigenSolution.data() + k * n) =
                                          (*lus)[oneMatrix ? 0 : k].solve(
                                              mapOf<const Vector<T, n>>(right.data() + k * n));
                                  }
                              },
                              [=](std::size_t i) { return static_cast<double>(eigenSolution[i]); }});
    if (oneMatrix) {
        // All right-hand sides as one matrix.
        const Block<T> flat(n * count);
        row.contenders.push_back(
            {"Eigen, one call",
             [=] {
                 using Sides = Eigen::Matrix<T, n, Eigen::Dynamic, n == 1 ? Eigen::RowMajor : Eigen::ColMajor>;
                 Eigen::Map<Sides>(flat.data(), n, objects) =
                     (*lus)[0].solve(Eigen::Map<const Sides>(right.data(), n, objects));
             },
             [=](std::size_t i) { return static_cast<double>(flat[i]); }});
    }

#ifdef LINALG_BENCH_LAPACK
    const Block<T> lapackFactors(size * matrices), lapackSolution(n * count);
    const Block<std::int32_t> lapackPivots(n * matrices);
    std::memcpy(lapackFactors.data(), source.data(), size * matrices * sizeof(T));
    for (std::size_t k = 0; k < matrices; ++k)
        lapackFactor(n, lapackFactors.data() + k * size, lapackPivots.data() + k * n);
    row.contenders.push_back({"LAPACK",
                              [=] {
                                  std::memcpy(lapackSolution.data(), right.data(), n * count * sizeof(T));
                                  if (oneMatrix) {
                                      lapackSolve(n, objects, lapackFactors.data(), lapackPivots.data(),
                                                  lapackSolution.data());
                                      return;
                                  }
                                  for (std::size_t k = 0; k < count; ++k) {
                                      lapackSolve(n, 1, lapackFactors.data() + k * size, lapackPivots.data() + k * n,
                                                  lapackSolution.data() + k * n);
                                  }
                              },
                              [=](std::size_t i) { return static_cast<double>(lapackSolution[i]); }});
#endif
    measure(row, measured);
}

}  // namespace

void measureSolutions(std::vector<Measured>& measured) {
    for (const bool oneMatrix : {false, true})
        forOrders(std::integer_sequence<int, 1, 2, 3, 4, 5, 6, 7, 8, 16, 32>(), [&]<class T, int n>() {
            for (const Place& place : places) solutionRow<T, n>(place, oneMatrix, measured);
        });
}

}  // namespace linalgbench
