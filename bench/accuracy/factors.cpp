// Cholesky and QR, with their solves.
#include "families.h"

namespace bench {
namespace {

template <class T>
int choleskyDecompose(Form form, const T* from, T* to, int n, int count) {
    if (form == Form::single)
        return pick<T>(kormCholeskyDecomp_m_32f, kormCholeskyDecomp_m_64f)(from, bytes<T>(n), bytes<T>(1), to,
                                                                           bytes<T>(n), bytes<T>(1), n);
    return pick<T>(kormCholeskyDecomp_ma_32f, kormCholeskyDecomp_ma_64f)(
        from, bytes<T>(n * n), bytes<T>(n), bytes<T>(1), to, bytes<T>(n * n), bytes<T>(n), bytes<T>(1), n, count);
}

template <class T>
int choleskySolve(Form form, const T* factor, const T* from, T* to, int n, int count) {
    if (form == Form::single)
        return pick<T>(kormCholeskyBackSubst_mv_32f, kormCholeskyBackSubst_mv_64f)(
            factor, bytes<T>(n), bytes<T>(1), from, bytes<T>(1), to, bytes<T>(1), n);
    return pick<T>(kormCholeskyBackSubst_mava_32f, kormCholeskyBackSubst_mava_64f)(
        factor, bytes<T>(n * n), bytes<T>(n), bytes<T>(1), from, bytes<T>(n), bytes<T>(1), to, bytes<T>(n), bytes<T>(1),
        n, count);
}

// L L^T, from a factor whose diagonal holds L's or its reciprocals.
template <class T>
Checked<Wide<T>> squareOf(const T* factor, int n, bool reciprocals) {
    Checked<Wide<T>> lower(factor, n, n);
    for (int i = 0; i < n; ++i) {
        if (reciprocals) lower(i, i) = 1 / lower(i, i);
        for (int j = i + 1; j < n; ++j) lower(i, j) = 0;
    }
    return lower * lower.transposed();
}

template <class T>
void choleskyOf(std::size_t at, int scale, const MatrixKind<T>& kind, int* seed, Table& decompositions,
                Table& solutions) {
    const int n = orders[at];
    const Matrices<T> a = matricesOf<T>(n, n, scale, [&](T* to) {
        generate<T>(to, n, n, 'P', kind.spectrum, kind.condition, kind.lower, kind.upper, seed);
    });
    const Matrices<T> b = rightSides(a, seed);
    for (const Form form : {Form::single, Form::array}) {
        const std::string row = rowName<T>("CholeskyDecomp", form, scale);
        const std::string solveRow = rowName<T>("CholeskyBackSubst", form, scale, "mava", "mv");
        Matrices<T> factors = empty<T>(n, n), x = empty<T>(n, 1);
        const std::vector<int> statuses = statusesOf(
            form, [&](int k, int count) { return choleskyDecompose(form, a.object(k), factors.object(k), n, count); });
        statusesOf(form, [&](int k, int count) {
            return choleskySolve(form, factors.object(k), b.object(k), x.object(k), n, count);
        });
        for (int k = 0; k < objects; ++k) {
            const auto matrix = checked(a, k), side = checked(b, k);
            const int status = statuses[static_cast<std::size_t>(k)];
            if (status != korStatusOk) {
                decompositions.addRefusal(row, status);
            } else {
                decompositions.add(row, at, differenceRatio(matrix, squareOf(factors.object(k), n, true), roundoff<T>));
                solutions.add(solveRow, at, solveRatio(matrix, checked(x, k), side, Wide<T>(1), roundoff<T>));
            }
            // Its upper triangle is the lower one of a matrix by rows.
            Matrices<T> factor = a, solution = b;
            const char upper = 'U';
            const int one = 1;
            int info = 0;
            pick<T>([](auto... p) { LAPACK_spotrf(p...); }, [](auto... p) { LAPACK_dpotrf(p...); })(
                &upper, &n, factor.object(k), &n, &info);
            if (info != 0) continue;
            pick<T>([](auto... p) { LAPACK_spotrs(p...); }, [](auto... p) { LAPACK_dpotrs(p...); })(
                &upper, &n, &one, factor.object(k), &n, solution.object(k), &n, &info);
            decompositions.addPeer(row, at, differenceRatio(matrix, squareOf(factor.object(k), n, false), roundoff<T>));
            solutions.addPeer(solveRow, at, solveRatio(matrix, checked(solution, k), side, Wide<T>(1), roundoff<T>));
        }
    }
}

template <class T>
void choleskyOfType(Table& decompositions, Table& solutions) {
    int seed[] = {1988, 1989, 1990, 1991};
    // Near the ends of the range as LAPACK has it: squares of the root fit, and rounding errors are no denormals.
    const int far = std::numeric_limits<T>::max_exponent - std::numeric_limits<T>::digits - 4;
    for (const int scale : {-far, 0, far})
        for (std::size_t at = 0; at < std::size(orders); ++at)
            for (const MatrixKind<T>& kind : kindsOf<T>(false))
                choleskyOf(at, scale, kind, seed, decompositions, solutions);
}

template <class T>
int qrDecompose(Form form, const T* from, T* buffer, T* to, int width, int height, int count) {
    if (form == Form::single)
        return pick<T>(kormQRDecomp_m_32f, kormQRDecomp_m_64f)(from, bytes<T>(width), bytes<T>(1), buffer, to,
                                                               bytes<T>(width), bytes<T>(1), width, height);
    return pick<T>(kormQRDecomp_ma_32f, kormQRDecomp_ma_64f)(from, bytes<T>(width * height), bytes<T>(width),
                                                             bytes<T>(1), buffer, to, bytes<T>(width * height),
                                                             bytes<T>(width), bytes<T>(1), width, height, count);
}

template <class T>
int qrSolve(Form form, const T* factor, T* buffer, const T* from, T* to, int width, int height, int count) {
    if (form == Form::single)
        return pick<T>(kormQRBackSubst_mv_32f, kormQRBackSubst_mv_64f)(
            factor, bytes<T>(width), bytes<T>(1), buffer, from, bytes<T>(1), to, bytes<T>(1), width, height);
    return pick<T>(kormQRBackSubst_mava_32f, kormQRBackSubst_mava_64f)(
        factor, bytes<T>(width * height), bytes<T>(width), bytes<T>(1), buffer, from, bytes<T>(height), bytes<T>(1), to,
        bytes<T>(width), bytes<T>(1), width, height, count);
}

// Q from the reflectors below the diagonal, with beta = -2 / v^T v, in the element's type as a caller would do it.
template <class T>
std::vector<T> orthogonalOf(const T* factor, int width, int height) {
    std::vector<T> q(area(height, height));
    for (int i = 0; i < height; ++i) q[area(i, height + 1)] = 1;
    for (int r = std::min(width, height - 1) - 1; r >= 0; --r) {
        const auto v = [&](int i) { return i == r ? T(1) : factor[i * width + r]; };
        T square = 0;
        for (int i = r; i < height; ++i) square += v(i) * v(i);
        for (int j = 0; j < height; ++j) {
            T product = 0;
            for (int i = r; i < height; ++i) product += v(i) * q[area(i, height) + static_cast<std::size_t>(j)];
            for (int i = r; i < height; ++i)
                q[area(i, height) + static_cast<std::size_t>(j)] += v(i) * (-2 / square * product);
        }
    }
    return q;
}

// The upper triangle of a factor, and zeros below.
template <class T>
Checked<Wide<T>> triangleOf(const T* factor, int width, int height) {
    Checked<Wide<T>> upper(factor, height, width);
    for (int i = 0; i < height; ++i)
        for (int j = 0; j < std::min(i, width); ++j) upper(i, j) = 0;
    return upper;
}

struct QrTables {
    Table residuals{"QR decomposition: |A - Q R| / (m |A| u)"};
    Table orthogonality{"QR decomposition: |I - Q^T Q| / (m u)"};
    Table solutions{"QR solve of square systems: |b - A x| / (m |A| |x| u)"};
    Table leastSquares{"QR solve of least squares, condition 2: |A^T r| / (m |A| |b| u), r = b - A x"};
};

template <class T>
struct Qr {
    Checked<Wide<T>> q, r, x;
};

// Compact WY isn't used at these orders, so its factor and its scales make Q one reflector after the other, too.
template <class T>
Qr<T> lapackQr(const T* a, const T* b, int width, int height) {
    const auto size = area(height, height);
    std::vector<T> factor(size), q(size), byRows(size), scales(static_cast<std::size_t>(width)), work(64 * size + 64);
    std::vector<T> side(b, b + height);
    transpose(height, width, a, factor.data());
    const int workSize = static_cast<int>(work.size()), one = 1;
    int info = 0;
    pick<T>([](auto... p) { LAPACK_sgeqrf(p...); }, [](auto... p) { LAPACK_dgeqrf(p...); })(
        &height, &width, factor.data(), &height, scales.data(), work.data(), &workSize, &info);
    std::copy_n(factor.data(), height * width, q.data());
    transpose(width, height, factor.data(), byRows.data());
    Checked<Wide<T>> r = triangleOf(byRows.data(), width, height);
    const char left = 'L', transposed = 'T', upper = 'U', no = 'N';
    pick<T>([](auto... p) { LAPACK_sormqr(p...); }, [](auto... p) { LAPACK_dormqr(p...); })(
        &left, &transposed, &height, &one, &width, factor.data(), &height, scales.data(), side.data(), &height,
        work.data(), &workSize, &info);
    pick<T>([](auto... p) { LAPACK_strtrs(p...); }, [](auto... p) { LAPACK_dtrtrs(p...); })(
        &upper, &no, &no, &width, &one, factor.data(), &height, side.data(), &height, &info);
    pick<T>([](auto... p) { LAPACK_sorgqr(p...); }, [](auto... p) { LAPACK_dorgqr(p...); })(
        &height, &height, &width, q.data(), &height, scales.data(), work.data(), &workSize, &info);
    transpose(height, height, q.data(), byRows.data());
    return {{byRows.data(), height, height}, r, {side.data(), width, 1}};
}

template <class T>
void qrOf(std::size_t at, bool isTall, int scale, const MatrixKind<T>& kind, int* seed, QrTables& tables) {
    const int n = orders[at], m = isTall ? 2 * n : n;
    const Matrices<T> a = matricesOf<T>(m, n, scale, [&](T* to) {
        generate<T>(to, m, n, 'N', kind.spectrum, kind.condition, kind.lower, kind.upper, seed);
    });
    // Random sides leave a residual, which the ratio of least squares is about.
    const Matrices<T> b =
        isTall ? matricesOf<T>(m, 1, scale, [&](T* to) { generateRandom(to, m, seed); }) : rightSides(a, seed);
    // The ratio of least squares is one of well-conditioned matrices.
    const bool isSolved = !isTall || kind.condition <= 2;
    for (const Form form : {Form::single, Form::array}) {
        const std::string shape = isTall ? ", 2n by n" : ", n by n";
        const std::string row = rowName<T>("QRDecomp", form, scale) + shape;
        const std::string solveRow = rowName<T>("QRBackSubst", form, scale, "mava", "mv") + shape;
        Matrices<T> factors = empty<T>(m, n), x = empty<T>(n, 1);
        std::vector<T> buffer(static_cast<std::size_t>(m));
        const std::vector<int> statuses = statusesOf(form, [&](int k, int count) {
            return qrDecompose(form, a.object(k), buffer.data(), factors.object(k), n, m, count);
        });
        statusesOf(form, [&](int k, int count) {
            return qrSolve(form, factors.object(k), buffer.data(), b.object(k), x.object(k), n, m, count);
        });
        for (int k = 0; k < objects; ++k) {
            const auto matrix = checked(a, k), side = checked(b, k);
            const auto compare = [&](const Qr<T>& qr, auto add) {
                add(tables.residuals, row, differenceRatio(matrix, qr.q * qr.r, roundoff<T>));
                add(tables.orthogonality, row, orthogonalityRatio(qr.q, roundoff<T>));
                if (!isSolved) return;
                if (isTall) add(tables.leastSquares, solveRow, leastSquaresRatio(matrix, qr.x, side, roundoff<T>));
                else add(tables.solutions, solveRow, solveRatio(matrix, qr.x, side, Wide<T>(m), roundoff<T>));
            };
            compare(lapackQr(a.object(k), b.object(k), n, m),
                    [&](Table& table, const std::string& name, double found) { table.addPeer(name, at, found); });
            const int status = statuses[static_cast<std::size_t>(k)];
            if (status != korStatusOk) {
                tables.residuals.addRefusal(row, status);
                continue;
            }
            const std::vector<T> q = orthogonalOf(factors.object(k), n, m);
            compare({{q.data(), m, m}, triangleOf(factors.object(k), n, m), checked(x, k)},
                    [&](Table& table, const std::string& name, double found) { table.add(name, at, found); });
        }
    }
}

template <class T>
void qrOfType(QrTables& tables) {
    int seed[] = {1988, 1989, 1990, 1991};
    // So far that squares and their sums fit. Columns of small matrices fail, their squares being below 2^-23 or 2^-52.
    const int far = std::numeric_limits<T>::max_exponent / 2 - 8;
    for (const bool isTall : {false, true})
        for (const int scale : {0, far})
            for (std::size_t at = 0; at < std::size(orders); ++at)
                for (const MatrixKind<T>& kind : kindsOf<T>(true)) qrOf(at, isTall, scale, kind, seed, tables);
}

}  // namespace

void measureCholesky() {
    Table decompositions("Cholesky decomposition: |A - L L^T| / (n |A| u)");
    Table solutions("Cholesky solve: |b - A x| / (|A| |x| u)");
    choleskyOfType<float>(decompositions, solutions);
    choleskyOfType<double>(decompositions, solutions);
    decompositions.print();
    solutions.print();
}

void measureQr() {
    QrTables tables;
    qrOfType<float>(tables);
    qrOfType<double>(tables);
    tables.residuals.print();
    tables.orthogonality.print();
    tables.solutions.print();
    tables.leastSquares.print();
}

}  // namespace bench
