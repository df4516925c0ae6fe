// Cholesky decomposition of arrays of matrices.
#include "cholesky.h"

namespace bench {
namespace {

// Element i of the results, below the diagonal and on it; what stands above belongs to nobody.
template <class T, int n, bool reciprocals>
double lowerElement(const T* result, std::size_t i) {
    const std::size_t row = i / n % n, column = i % n;
    if (column > row) return 0;
    const double element = static_cast<double>(result[i]);
    return reciprocals && column == row ? 1 / element : element;
}

template <class T, int n>
void decompositionRow(const Objects& objects) {
    const std::string name = rowName<T>("cholesky", "CholeskyDecomp_ma", n, objects);
    if (!isWanted(name)) return;
    constexpr std::size_t size = n * n;
    const std::size_t count = objectsIn<T>(objects, n);
    const T* const source = definiteMatrices<T>(matrices, n, count);
    T* const result = memoryOf<T>(results, size * count);
    Row row(name, static_cast<double>(count));
    row.results(result, size * count, 1e3 * Eigen::NumTraits<T>::epsilon());
    row.korm([=] { kormDecompose(source, result, n, count); },
             [=](std::size_t i) { return lowerElement<T, n, true>(result, i); });
    const auto ofPeers = [=](std::size_t i) { return lowerElement<T, n, false>(result, i); };
    row.peer(
        "Eigen",
        [=] {
            for (std::size_t k = 0; k < count; ++k) {
                const Eigen::LLT<Matrix<T, n>> llt(mapOf<const Matrix<T, n>>(source + k * size));
                mapOf<Matrix<T, n>>(result + k * size) = llt.matrixLLT();
            }
        },
        ofPeers);
#ifdef BENCH_LAPACK
    row.peer(
        "LAPACK",
        [=] {
            std::memcpy(result, source, size * count * sizeof(T));
            for (std::size_t k = 0; k < count; ++k) lapackDecompose(n, result + k * size);
        },
        ofPeers);
#endif
    row.measure();
}

}  // namespace

void measureCholeskyDecompositions() {
    forOrders(choleskyOrders, []<class T, int n>(const Objects& objects) { decompositionRow<T, n>(objects); });
}

}  // namespace bench
