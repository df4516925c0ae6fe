// Eigenvalues of general matrices, with and without vectors.
#include <complex>

#include "general.h"

namespace bench {
namespace {

constexpr Family families[] = {{"general-values", "EigenValues_ma", false, false},
                               {"general-left", "EigenValuesVectorsLeft_ma", true, false},
                               {"general-right", "EigenValuesVectorsRight_ma", false, true},
                               {"general-both", "EigenValuesVectors_ma", true, true}};

template <class T>
Problems<T> makeProblems(std::size_t n) {
    const std::size_t size = n * n, count = std::max<std::size_t>(100, 8000 / size);
    T* const source = memoryOf<T>(matrices, size * count);
    std::generate_n(source, size * count, RandomNumbers<T>());
    T* const left = memoryOf<T>(results, 2 * (size + n) * count);
    T* const right = left + size * count;
    T* const re = right + size * count;
    return {n, count, source, left, right, re, re + n * count, memoryOf<T>(scratch, n * (3 * n + 64))};
}

// --- Results that can be compared ----------------------------------------------------------------

// Contenders find eigenvalues in different orders and scale their vectors as they like: compared is the sum of the squares of
// the eigenvalues, which is the trace of the matrix's square, and how far the vectors are from their equations.
template <class T>
double traceOfSquare(const Problems<T>& p, std::size_t k) {
    double sum = 0;
    for (std::size_t i = k * p.n; i < (k + 1) * p.n; ++i) {
        const std::complex<double> w(p.re[i], p.im[i]);
        sum += std::real(w * w);
    }
    return sum;
}

// Element i of vector j lies at i * element + j * vector.
struct Storage {
    std::size_t element, vector;
    bool isConjugated = false;
};

// The greatest |A y - w y| / |y| of object k, with the transpose of A for right vectors.
template <class T>
double residual(const Problems<T>& p, std::size_t k, bool isRight, const Storage& storage) {
    const std::size_t n = p.n;
    const T* const a = p.source + k * p.size();
    const T* const vectors = (isRight ? p.right : p.left) + k * p.size();
    std::vector<std::complex<double>> y(n);
    double greatest = 0;
    for (std::size_t j = 0; j < n; ++j) {
        const std::complex<double> w(p.re[k * n + j], p.im[k * n + j]);
        const bool isPair = w.imag() != 0 && j + 1 < n;
        for (std::size_t i = 0; i < n; ++i) {
            const T* const at = vectors + i * storage.element + j * storage.vector;
            y[i] = isPair ? std::complex<double>(at[0], at[storage.vector]) : std::complex<double>(at[0]);
            if (storage.isConjugated) y[i] = std::conj(y[i]);
        }
        double left = 0, length = 0;
        for (std::size_t i = 0; i < n; ++i) {
            std::complex<double> sum = -w * y[i];
            for (std::size_t l = 0; l < n; ++l)
                sum += static_cast<double>(isRight ? a[l * n + i] : a[i * n + l]) * y[l];
            left += std::norm(sum);
            length += std::norm(y[i]);
        }
        const double found = std::sqrt(left / length);
        if (!(found <= greatest)) greatest = found;  // and keeps a NaN, of a vector of zeros
        if (isPair) ++j;
    }
    return greatest;
}

template <class T>
Value valueOf(const Problems<T>& p, const Family& family, const Storage& left, const Storage& right) {
    return [=](std::size_t k) {
        return traceOfSquare(p, k) + (family.left ? residual(p, k, false, left) : 0) +
               (family.right ? residual(p, k, true, right) : 0);
    };
}

// --- Contenders ------------------------------------------------------------------------------------

template <class T>
void kormSolve(const Problems<T>& p, const Family& family) {
    const auto n = static_cast<std::int32_t>(p.n), count = static_cast<std::int32_t>(p.count);
    const std::int32_t object = bytes<T>(p.size()), row = bytes<T>(p.n), element = bytes<T>(1);
    if (family.left && family.right)
        pick<T>(kormEigenValuesVectors_ma_32f, kormEigenValuesVectors_ma_64f)(p.source, object, row, element, p.right,
                                                                              object, row, element, p.left, object, row,
                                                                              element, p.re, p.im, n, count, p.buffer);
    else if (family.left)
        pick<T>(kormEigenValuesVectorsLeft_ma_32f, kormEigenValuesVectorsLeft_ma_64f)(
            p.source, object, row, element, p.left, object, row, element, p.re, p.im, n, count, p.buffer);
    else if (family.right)
        pick<T>(kormEigenValuesVectorsRight_ma_32f, kormEigenValuesVectorsRight_ma_64f)(
            p.source, object, row, element, p.right, object, row, element, p.re, p.im, n, count, p.buffer);
    else
        pick<T>(kormEigenValues_ma_32f, kormEigenValues_ma_64f)(p.source, object, row, element, p.re, p.im, n, count,
                                                                p.buffer);
}

#ifdef BENCH_LAPACK
// It sees the transpose, whose left and right vectors are those of the library, and stores vector after vector.
template <class T>
void lapackSolve(const Problems<T>& p, const Family& family, T* a) {
    const auto n = static_cast<std::int32_t>(p.n), workSize = 64 * n;
    const char left = family.left ? 'V' : 'N', right = family.right ? 'V' : 'N';
    std::int32_t info = 0;
    for (std::size_t k = 0; k < p.count; ++k) {
        std::copy_n(p.source + k * p.size(), p.size(), a);
        pick<T>([](auto... q) { LAPACK_sgeev(q...); }, [](auto... q) { LAPACK_dgeev(q...); })(
            &left, &right, &n, a, &n, p.re + k * p.n, p.im + k * p.n, p.left + k * p.size(), &n, p.right + k * p.size(),
            &n, p.buffer, &workSize, &info);
    }
}
#endif

template <class T>
void generalRow(const Family& family, int order) {
    const std::string name = std::string(family.section) + "/" + family.form + suffix<T> + "/" + std::to_string(order);
    if (!isWanted(name)) return;
    const Problems<T> p = makeProblems<T>(static_cast<std::size_t>(order));
    const std::size_t written = 2 * (p.size() + p.n);
    const Storage columns{p.n, 1};
    const Value value = valueOf(p, family, columns, columns);
    Row row(name, static_cast<double>(p.count));
    row.results(p.left, written * p.count, 1, written, 2000 * Eigen::NumTraits<T>::epsilon());
    row.korm([=] { kormSolve(p, family); }, value);
    row.peer(
        "Eigen, order at run time", [=] { eigenSolve<T, Eigen::Dynamic>(p, family); }, value);
    if (const Run known = eigenOfKnownOrder(p, family)) row.peer("Eigen", known, value);
#ifdef BENCH_LAPACK
    T* const a = memoryOf<T>(factors, p.size());
    row.peer(
        "LAPACK", [=] { lapackSolve(p, family, a); },
        valueOf(p, family, Storage{1, p.n, true}, Storage{1, p.n, false}));
#endif
    row.measure();
}

}  // namespace

void measureGeneral() {
    for (const Family& family : families) {
        for (int order = 1; order <= mostOrder; ++order) generalRow<float>(family, order);
        for (int order = 1; order <= mostOrder; ++order) generalRow<double>(family, order);
    }
}

}  // namespace bench
