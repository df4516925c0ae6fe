#ifdef BENCH_OPENBLAS
#include <cblas.h>
#endif
#ifdef BENCH_LIBXSMM
#include <libxsmm.h>
#endif

#include "../harness/eigen.h"
#include "move.h"

namespace bench {
namespace {

// In tiles that the caches hold, for any size: what one would write by hand.
template <class T>
[[gnu::noinline]] void tiledLoop(const T* from, T* to, std::ptrdiff_t width, std::ptrdiff_t height) {
    constexpr std::ptrdiff_t tile = 64 / sizeof(T);
    for (std::ptrdiff_t i0 = 0; i0 < height; i0 += tile)
        for (std::ptrdiff_t j0 = 0; j0 < width; j0 += tile)
            for (std::ptrdiff_t j = j0; j < std::min(width, j0 + tile); ++j)
                for (std::ptrdiff_t i = i0; i < std::min(height, i0 + tile); ++i)
                    to[j * height + i] = from[i * width + j];
}

template <class T>
void tiledEigen(const T* from, T* to, Eigen::Index n) {
    using Matrix = Eigen::Matrix<T, Eigen::Dynamic, Eigen::Dynamic, Eigen::RowMajor>;
    const Eigen::Map<const Matrix> source(from, n, n);
    Eigen::Map<Matrix> result(to, n, n);
    constexpr Eigen::Index tile = 32;
    for (Eigen::Index i = 0; i < n; i += tile)
        for (Eigen::Index j = 0; j < n; j += tile) {
            const Eigen::Index rows = std::min(tile, n - i), columns = std::min(tile, n - j);
            result.block(j, i, columns, rows) = source.block(i, j, rows, columns).transpose();
        }
}

template <class T>
void matrixRow(int n) {
    const std::string name = std::string("singles/Transpose_m") + suffix<T> + "/" + std::to_string(n);
    if (!isWanted(name)) return;
    constexpr std::int32_t size = sizeof(T);
    const Operand<T> a = place<T>(0, Layout::packed, n, n, 1), b = place<T>(1, Layout::packed, n, n, 1);
    Row row(name, 1);
    row.results(b.base, b.span, 0);
    row.korm([=] {
        pick<T>(kormTranspose_m_32f, kormTranspose_m_64f)(a.base, n * size, size, n, n, b.base, n * size, size);
    });
    row.peer("Eigen", [=] { tiledEigen(a.base, b.base, n); });
    row.peer("plain loop", [=] { tiledLoop(a.base, b.base, n, n); });
#ifdef BENCH_OPENBLAS
    row.peer("OpenBLAS", [=] {
        pick<T>(cblas_somatcopy, cblas_domatcopy)(CblasRowMajor, CblasTrans, n, n, 1, a.base, n, b.base, n);
    });
#endif
#ifdef BENCH_LIBXSMM
    row.peer("libxsmm", [=] { libxsmm_otrans(b.base, a.base, sizeof(T), n, n, n, n); });
#endif
    row.measure();
}

}  // namespace

void measureMatrices() {
    for (const int n : {3, 4, 5, 6, 7, 8, 12, 16, 24, 32, 64, 100, 512, 1000, 2048}) {
        matrixRow<float>(n);
        matrixRow<double>(n);
    }
}

}  // namespace bench
