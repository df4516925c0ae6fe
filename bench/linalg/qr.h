// Rows of QR decomposition of arrays of matrices, and of least squares with it: each vector with a matrix of its own, and all
// vectors with one matrix.
#pragma once

#include <memory>

#include "rows.h"

namespace bench {

// Vectors of one element are rows and columns at once, and Eigen wants them by columns.
template <class T, int height, int width>
using Tall = Eigen::Matrix<T, height, width, width == 1 ? Eigen::ColMajor : Eigen::RowMajor>;

template <class T, int height, int width>
std::string tallName(const std::string& section, const std::string& form) {
    const std::string size = std::to_string(height) + "x" + std::to_string(width);
    return section + "/" + form + suffix<T> + "/" + size + "/" + places[0].place;
}

template <class T, int height, int width>
constexpr std::size_t matricesInCache = std::max<std::size_t>(places[0].bytes / (2 * height * width * sizeof(T)), 8);

// Elements below 1 in size and a heavier diagonal: all columns are far from the others.
template <class T>
const T* tallMatrices(int number, std::size_t height, std::size_t width, std::size_t count) {
    T* const memory = memoryOf<T>(number, height * width * count);
    std::uint64_t state = 0x9e3779b97f4a7c15U;
    for (std::size_t i = 0; i < height * width * count; ++i) {
        state = state * 6364136223846793005U + 1442695040888963407U;
        memory[i] = static_cast<T>(static_cast<std::uint32_t>(state >> 33)) / T(1 << 30) - 1;
        if (i / width % height == i % width) memory[i] += memory[i] < 0 ? T(-3) : T(3);
    }
    return memory;
}

template <class T, int height, int width>
void kormDecompose(const T* source, T* to, T* buffer, std::size_t count) {
    pick<T>(kormQRDecomp_ma_32f, kormQRDecomp_ma_64f)(source, bytes<T>(height * width), bytes<T>(width), bytes<T>(1),
                                                      buffer, to, bytes<T>(height * width), bytes<T>(width),
                                                      bytes<T>(1), width, height, static_cast<std::int32_t>(count));
}

// It stores by columns and is given the matrices that way.
#ifdef BENCH_LAPACK
template <class T, int height, int width>
void transposeAll(const T* from, T* to, std::size_t count) {
    constexpr std::size_t size = height * width;
    for (std::size_t i = 0; i < size * count; ++i)
        to[i] = from[i / size * size + i % height * width + i % size / height];
}
template <class T>
void lapackDecompose(int height, int width, T* a, T* scales, T* work, int size) {
    std::int32_t info = 0;
    pick<T>([](auto... p) { LAPACK_sgeqrf(p...); }, [](auto... p) { LAPACK_dgeqrf(p...); })(&height, &width, a, &height,
                                                                                            scales, work, &size, &info);
}
template <class T>
void lapackSubstitute(int height, int width, int vectors, const T* a, const T* scales, T* b, T* work, int size) {
    std::int32_t info = 0;
    const char left = 'L', transposed = 'T', upper = 'U', no = 'N';
    pick<T>([](auto... p) { LAPACK_sormqr(p...); }, [](auto... p) { LAPACK_dormqr(p...); })(
        &left, &transposed, &height, &vectors, &width, a, &height, scales, b, &height, work, &size, &info);
    pick<T>([](auto... p) { LAPACK_strtrs(p...); }, [](auto... p) { LAPACK_dtrtrs(p...); })(
        &upper, &no, &no, &width, &vectors, a, &height, b, &height, &info);
}
#endif

template <class T, int height, int width>
void decompositionRow() {
    const std::string name = tallName<T, height, width>("qr", "QRDecomp_ma");
    if (!isWanted(name)) return;
    constexpr std::size_t size = height * width, count = matricesInCache<T, height, width>;
    const T* const source = tallMatrices<T>(matrices, height, width, count);
    T* const result = memoryOf<T>(results, size * count);
    T* const buffer = memoryOf<T>(scratch, 64 * height);
    // R alone: without a reflection of the last column its sign may be the other one, so it is compared by its size.
    const auto element = [](const T* matrix, std::size_t row, std::size_t column, std::size_t at) {
        return row <= column ? std::fabs(static_cast<double>(matrix[at])) : 0;
    };
    const auto byRows = [=](std::size_t i) { return element(result, i / width % height, i % width, i); };
    Row row(name, static_cast<double>(count));
    row.results(result, size * count, 1e3 * Eigen::NumTraits<T>::epsilon());
    row.korm([=] { kormDecompose<T, height, width>(source, result, buffer, count); }, byRows);
    T* const scales = memoryOf<T>(solutions, width * count);
    row.peer(
        "Eigen",
        [=] {
            for (std::size_t k = 0; k < count; ++k) {
                const Eigen::HouseholderQR<Tall<T, height, width>> qr(
                    mapOf<const Tall<T, height, width>>(source + k * size));
                mapOf<Tall<T, height, width>>(result + k * size) = qr.matrixQR();
                mapOf<Vector<T, width>>(scales + k * width) = qr.hCoeffs();
            }
        },
        byRows);
#ifdef BENCH_LAPACK
    T* const byColumns = memoryOf<T>(factors, size * count);
    transposeAll<T, height, width>(source, byColumns, count);
    row.peer(
        "LAPACK",
        [=] {
            std::memcpy(result, byColumns, size * count * sizeof(T));
            for (std::size_t k = 0; k < count; ++k)
                lapackDecompose(height, width, result + k * size, scales + k * width, buffer, 64 * height);
        },
        [=](std::size_t i) {
            const std::size_t r = i / width % height, c = i % width;
            return element(result, r, c, i / size * size + c * height + r);
        });
#endif
    row.measure();
}

template <class T, int height, int width, bool oneMatrix>
void solutionRow() {
    const std::string name = oneMatrix ? tallName<T, height, width>("qr-solve-one", "QRBackSubst_mva")
                                       : tallName<T, height, width>("qr-solve", "QRBackSubst_mava");
    if (!isWanted(name)) return;
    constexpr std::size_t size = height * width, count = matricesInCache<T, height, width>, all = oneMatrix ? 1 : count;
    constexpr auto vectors = static_cast<std::int32_t>(count);
    const T* const source = tallMatrices<T>(matrices, height, width, all);
    T* const right = memoryOf<T>(rightSides, height * count);
    T* const solution = memoryOf<T>(solutions, height * count);
    T* const buffer = memoryOf<T>(scratch, 64 * height);
    T* const qr = memoryOf<T>(results, size * all);
    kormDecompose<T, height, width>(source, qr, buffer, all);
    Row row(name, static_cast<double>(count));
    row.results(solution, width * count, 1e4 * Eigen::NumTraits<T>::epsilon());
    row.korm([=] {
        if constexpr (oneMatrix)
            pick<T>(kormQRBackSubst_mva_32f, kormQRBackSubst_mva_64f)(
                qr, bytes<T>(width), bytes<T>(1), buffer, right, bytes<T>(height), bytes<T>(1), solution,
                bytes<T>(width), bytes<T>(1), width, height, vectors);
        else
            pick<T>(kormQRBackSubst_mava_32f, kormQRBackSubst_mava_64f)(
                qr, bytes<T>(size), bytes<T>(width), bytes<T>(1), buffer, right, bytes<T>(height), bytes<T>(1),
                solution, bytes<T>(width), bytes<T>(1), width, height, vectors);
    });

    using Qr = Eigen::HouseholderQR<Tall<T, height, width>>;
    const auto eigenQrs = std::make_shared<std::vector<Qr, Eigen::aligned_allocator<Qr>>>();
    for (std::size_t k = 0; k < all; ++k)
        eigenQrs->emplace_back(mapOf<const Tall<T, height, width>>(source + k * size));
    row.peer("Eigen", [=] {
        for (std::size_t k = 0; k < count; ++k)
            mapOf<Vector<T, width>>(solution + k * width) =
                (*eigenQrs)[oneMatrix ? 0 : k].solve(mapOf<const Vector<T, height>>(right + k * height));
    });
    if constexpr (oneMatrix) {
        row.peer("Eigen, one call", [=] {
            using Sides = Eigen::Matrix<T, height, Eigen::Dynamic, height == 1 ? Eigen::RowMajor : Eigen::ColMajor>;
            using Solutions = Eigen::Matrix<T, width, Eigen::Dynamic, width == 1 ? Eigen::RowMajor : Eigen::ColMajor>;
            Eigen::Map<Solutions>(solution, width, vectors) =
                (*eigenQrs)[0].solve(Eigen::Map<const Sides>(right, height, vectors));
        });
    }
#ifdef BENCH_LAPACK
    constexpr int workSize = 64 * std::max(height, vectors);
    T* const lapackQrs = memoryOf<T>(factors, (size + width) * all + height * count + workSize);
    T* const scales = lapackQrs + size * all;
    T* const sides = scales + width * all;
    T* const work = sides + height * count;
    transposeAll<T, height, width>(source, lapackQrs, all);
    for (std::size_t k = 0; k < all; ++k)
        lapackDecompose(height, width, lapackQrs + k * size, scales + k * width, work, workSize);
    row.peer(
        "LAPACK",
        [=] {
            std::memcpy(sides, right, height * count * sizeof(T));
            if constexpr (oneMatrix) lapackSubstitute(height, width, vectors, lapackQrs, scales, sides, work, workSize);
            else
                for (std::size_t k = 0; k < count; ++k)
                    lapackSubstitute(height, width, 1, lapackQrs + k * size, scales + k * width, sides + k * height,
                                     work, workSize);
        },
        [=](std::size_t i) { return static_cast<double>(sides[i / width * height + i % width]); });
#endif
    row.measure();
}

template <int height, int width>
void measureSize() {
    decompositionRow<float, height, width>();
    decompositionRow<double, height, width>();
    solutionRow<float, height, width, false>();
    solutionRow<double, height, width, false>();
    solutionRow<float, height, width, true>();
    solutionRow<double, height, width, true>();
}

// Peers of fixed size take a minute each to compile, so there are few, in two files. The sweeps have all sizes.
void measureLargeLeastSquares();

}  // namespace bench
