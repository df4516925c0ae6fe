// LU decomposition with its solve, inverses and determinants.
#include "families.h"

namespace bench {
namespace {

template <class T>
int luDecompose(Form form, const T* from, std::int32_t* pivots, T* to, int n, int count) {
    if (form == Form::single)
        return pick<T>(kormLUDecomp_m_32f, kormLUDecomp_m_64f)(from, bytes<T>(n), bytes<T>(1), pivots, to, bytes<T>(n),
                                                               bytes<T>(1), n);
    return pick<T>(kormLUDecomp_ma_32f, kormLUDecomp_ma_64f)(from, bytes<T>(n * n), bytes<T>(n), bytes<T>(1), pivots,
                                                             to, bytes<T>(n * n), bytes<T>(n), bytes<T>(1), n, count);
}

template <class T>
int luSolve(Form form, const T* factor, const std::int32_t* pivots, const T* from, T* to, int n, int count) {
    if (form == Form::single)
        return pick<T>(kormLUBackSubst_mv_32f, kormLUBackSubst_mv_64f)(factor, bytes<T>(n), bytes<T>(1), pivots, from,
                                                                       bytes<T>(1), to, bytes<T>(1), n);
    return pick<T>(kormLUBackSubst_mava_32f, kormLUBackSubst_mava_64f)(
        factor, bytes<T>(n * n), bytes<T>(n), bytes<T>(1), pivots, from, bytes<T>(n), bytes<T>(1), to, bytes<T>(n),
        bytes<T>(1), n, count);
}

template <class T>
int invert(Form form, const T* from, T* buffer, T* to, int n, int count) {
    if (form == Form::single)
        return pick<T>(kormInvert_m_32f, kormInvert_m_64f)(from, bytes<T>(n), bytes<T>(1), buffer, to, bytes<T>(n),
                                                           bytes<T>(1), n);
    return pick<T>(kormInvert_ma_32f, kormInvert_ma_64f)(from, bytes<T>(n * n), bytes<T>(n), bytes<T>(1), buffer, to,
                                                         bytes<T>(n * n), bytes<T>(n), bytes<T>(1), n, count);
}

template <class T>
int determinant(Form form, const T* from, T* buffer, T* to, int n, int count) {
    if (form == Form::single)
        return pick<T>(kormDet_m_32f, kormDet_m_64f)(from, bytes<T>(n), bytes<T>(1), n, buffer, to);
    return pick<T>(kormDet_ma_32f, kormDet_ma_64f)(from, bytes<T>(n * n), bytes<T>(n), bytes<T>(1), n, buffer, to,
                                                   count);
}

// A with its rows in the order of the pivots, and L U: row k of both factors is where korm has left it.
template <class T>
struct Factored {
    Checked<Wide<T>> matrix, product;
};

template <class T, class RowOf>
Factored<T> factoredOf(const Checked<Wide<T>>& a, const T* factor, RowOf rowOf, int n) {
    Checked<Wide<T>> matrix(n, n), lower = Checked<Wide<T>>::identity(n), upper(n, n);
    for (int i = 0; i < n; ++i)
        for (int j = 0; j < n; ++j) {
            matrix(i, j) = a(rowOf(i), j);
            (j < i ? lower : upper)(i, j) = factor[i * n + j];
        }
    return {matrix, lower * upper};
}

// LAPACK's factors by rows, and for each row of them the row of A that it comes from; its solution, inverse and determinant.
template <class T>
struct Peer {
    int info = 0;
    std::vector<T> factor, solution, inverse;
    std::vector<int> rows;
    T determinant = 1;
};

template <class T>
Peer<T> lapackLu(const T* a, const T* b, int n) {
    const auto size = area(n, n);
    std::vector<T> byColumns(size), work(64 * size);
    std::vector<int> pivots(static_cast<std::size_t>(n));
    Peer<T> peer{0, std::vector<T>(size), {}, std::vector<T>(size), std::vector<int>(static_cast<std::size_t>(n))};
    transpose(n, n, a, byColumns.data());
    pick<T>([](auto... p) { LAPACK_sgetrf(p...); }, [](auto... p) { LAPACK_dgetrf(p...); })(
        &n, &n, byColumns.data(), &n, pivots.data(), &peer.info);
    if (peer.info != 0) return peer;
    transpose(n, n, byColumns.data(), peer.factor.data());
    for (int i = 0; i < n; ++i) peer.rows[static_cast<std::size_t>(i)] = i;
    for (int i = 0; i < n; ++i) {
        const int other = pivots[static_cast<std::size_t>(i)] - 1;
        std::swap(peer.rows[static_cast<std::size_t>(i)], peer.rows[static_cast<std::size_t>(other)]);
        peer.determinant *= (other == i ? 1 : -1) * peer.factor[area(i, n + 1)];
    }
    const char no = 'N';
    const int one = 1, workSize = static_cast<int>(work.size());
    peer.solution.assign(b, b + n);
    pick<T>([](auto... p) { LAPACK_sgetrs(p...); }, [](auto... p) { LAPACK_dgetrs(p...); })(
        &no, &n, &one, byColumns.data(), &n, pivots.data(), peer.solution.data(), &n, &peer.info);
    pick<T>([](auto... p) { LAPACK_sgetri(p...); }, [](auto... p) { LAPACK_dgetri(p...); })(
        &n, byColumns.data(), &n, pivots.data(), work.data(), &workSize, &peer.info);
    transpose(n, n, byColumns.data(), peer.inverse.data());
    return peer;
}

// What determinants are held against: by elimination with row pivoting, in the wider type.
template <class W>
struct Exact {
    W determinant;
    Checked<W> inverse;
};

template <class W>
Exact<W> exactly(Checked<W> a) {
    const int n = a.height;
    Exact<W> exact{1, Checked<W>::identity(n)};
    for (int k = 0; k < n; ++k) {
        int pivot = k;
        for (int i = k + 1; i < n; ++i)
            if (std::abs(a(i, k)) > std::abs(a(pivot, k))) pivot = i;
        const W scale = 1 / a(pivot, k);
        exact.determinant *= (pivot == k ? 1 : -1) * a(pivot, k);
        for (Checked<W>* matrix : {&a, &exact.inverse})
            for (int j = 0; j < n; ++j) {
                std::swap((*matrix)(k, j), (*matrix)(pivot, j));
                (*matrix)(k, j) *= scale;
            }
        for (int i = 0; i < n; ++i) {
            const W factor = i == k ? W(0) : a(i, k);
            for (Checked<W>* matrix : {&a, &exact.inverse})
                for (int j = 0; j < n; ++j) (*matrix)(i, j) -= factor * (*matrix)(k, j);
        }
    }
    return exact;
}

// |X A - I| / (n |A| |X| unit), as LAPACK's dget03.
template <class W>
double inverseRatio(const Checked<W>& a, const Checked<W>& inverse, W unit) {
    return ratio(norm(inverse * a - Checked<W>::identity(a.width)),
                 static_cast<W>(a.width) * norm(a) * norm(inverse) * unit);
}

// |d - det A| / (n |A| |A^-1| |det A| unit): to first order the determinants of all matrices within n |A| unit of A.
template <class W>
double determinantRatio(const Checked<W>& a, W found, const Exact<W>& exact, W unit) {
    return ratio(std::abs(found - exact.determinant),
                 static_cast<W>(a.width) * norm(a) * norm(exact.inverse) * std::abs(exact.determinant) * unit);
}

struct LuTables {
    Table residuals{"LU decomposition: |P A - L U| / (n |A| u)"};
    Table solutions{"LU solve: |b - A x| / (|A| |x| u)"};
};

template <class T>
void luOf(std::size_t at, int scale, const MatrixKind<T>& kind, int* seed, LuTables& tables) {
    const int n = orders[at];
    const Matrices<T> a = matricesOf<T>(n, n, scale, [&](T* to) {
        generate<T>(to, n, n, 'N', kind.spectrum, kind.condition, kind.lower, kind.upper, seed);
    });
    const Matrices<T> b = rightSides(a, seed);
    for (const Form form : {Form::single, Form::array}) {
        const std::string row = rowName<T>("LUDecomp", form, scale);
        const std::string solveRow = rowName<T>("LUBackSubst", form, scale, "mava", "mv");
        Matrices<T> factors = empty<T>(n, n), x = empty<T>(n, 1);
        std::vector<std::int32_t> pivots(area(objects, n));
        const auto pivotsOf = [&](int k) { return pivots.data() + area(k, n); };
        const std::vector<int> statuses = statusesOf(form, [&](int k, int count) {
            return luDecompose(form, a.object(k), pivotsOf(k), factors.object(k), n, count);
        });
        for (int k = 0; k < objects; ++k) {
            const auto matrix = checked(a, k), side = checked(b, k);
            const Peer<T> peer = lapackLu(a.object(k), b.object(k), n);
            if (peer.info == 0) {
                const auto rowOf = [&](int i) { return peer.rows[static_cast<std::size_t>(i)]; };
                const Factored<T> factored = factoredOf<T>(matrix, peer.factor.data(), rowOf, n);
                tables.residuals.addPeer(row, at, differenceRatio(factored.matrix, factored.product, roundoff<T>));
                const Checked<Wide<T>> solution(peer.solution.data(), n, 1);
                tables.solutions.addPeer(solveRow, at, solveRatio(matrix, solution, side, Wide<T>(1), roundoff<T>));
            }
            const int status = statuses[static_cast<std::size_t>(k)];
            if (status != korStatusOk) {
                tables.residuals.addRefusal(row, status);
                continue;
            }
            // Rows are left where they were.
            const auto rowOf = [&](int i) { return pivotsOf(k)[i]; };
            std::vector<T> factor(area(n, n));
            for (int i = 0; i < n; ++i) std::copy_n(factors.object(k) + rowOf(i) * n, n, factor.data() + area(i, n));
            const Factored<T> factored = factoredOf<T>(matrix, factor.data(), rowOf, n);
            tables.residuals.add(row, at, differenceRatio(factored.matrix, factored.product, roundoff<T>));
        }
        // No pivots, no solution: objects that were refused are left out.
        for (int k = 0; k < objects; ++k)
            if (statuses[static_cast<std::size_t>(k)] != korStatusOk)
                for (int i = 0; i < n; ++i) pivotsOf(k)[i] = i;
        statusesOf(form, [&](int k, int count) {
            return luSolve(form, factors.object(k), pivotsOf(k), b.object(k), x.object(k), n, count);
        });
        for (int k = 0; k < objects; ++k)
            if (statuses[static_cast<std::size_t>(k)] == korStatusOk)
                tables.solutions.add(solveRow, at,
                                     solveRatio(checked(a, k), checked(x, k), checked(b, k), Wide<T>(1), roundoff<T>));
    }
}

struct InverseTables {
    Table inverses{"Inverses: |X A - I| / (n |A| |X| u)"};
    Table determinants{"Determinants: |d - det A| / (n |A| |A^-1| |det A| u)"};
};

template <class T>
void inverseOf(std::size_t at, const MatrixKind<T>& kind, int* seed, InverseTables& tables) {
    const int n = orders[at];
    const Matrices<T> a = matricesOf<T>(n, n, 0, [&](T* to) {
        generate<T>(to, n, n, 'N', kind.spectrum, kind.condition, kind.lower, kind.upper, seed);
    });
    const Matrices<T> b = empty<T>(n, 1);
    const std::string matrices = kind.condition <= 2                ? ", condition 2"
                                 : kind.condition * ulp<T> < T(0.1) ? ", condition (0.2 / ulp)^(1/2)"
                                                                    : ", condition 0.2 / ulp";
    for (const Form form : {Form::single, Form::array}) {
        const std::string row = rowName<T>("Invert", form, 0) + matrices;
        const std::string determinantRow = rowName<T>("Det", form, 0) + matrices;
        Matrices<T> inverses = empty<T>(n, n), determinants = empty<T>(1, 1);
        std::vector<T> buffer(area(n, n + 1));
        const std::vector<int> statuses = statusesOf(form, [&](int k, int count) {
            return invert(form, a.object(k), buffer.data(), inverses.object(k), n, count);
        });
        statusesOf(form, [&](int k, int count) {
            return determinant(form, a.object(k), buffer.data(), determinants.object(k), n, count);
        });
        for (int k = 0; k < objects; ++k) {
            const auto matrix = checked(a, k);
            const Exact<Wide<T>> exact = exactly(matrix);
            const Peer<T> peer = lapackLu(a.object(k), b.object(k), n);
            // One beyond the type's range has nothing that it could be rounded to.
            const Wide<T> size = std::abs(exact.determinant);
            const bool hasDeterminant = size >= std::numeric_limits<T>::min() && size <= std::numeric_limits<T>::max();
            if (peer.info == 0) {
                const Checked<Wide<T>> inverse(peer.inverse.data(), n, n);
                tables.inverses.addPeer(row, at, inverseRatio(matrix, inverse, roundoff<T>));
                if (hasDeterminant)
                    tables.determinants.addPeer(
                        determinantRow, at,
                        determinantRatio(matrix, static_cast<Wide<T>>(peer.determinant), exact, roundoff<T>));
            }
            const int status = statuses[static_cast<std::size_t>(k)];
            if (status != korStatusOk) tables.inverses.addRefusal(row, status);
            else tables.inverses.add(row, at, inverseRatio(matrix, checked(inverses, k), roundoff<T>));
            if (hasDeterminant)
                tables.determinants.add(
                    determinantRow, at,
                    determinantRatio(matrix, static_cast<Wide<T>>(*determinants.object(k)), exact, roundoff<T>));
        }
    }
}

template <class T>
void luOfType(LuTables& tables) {
    int seed[] = {1988, 1989, 1990, 1991};
    const int far = std::numeric_limits<T>::max_exponent - std::numeric_limits<T>::digits - 4;
    for (const int scale : {-far, 0, far})
        for (std::size_t at = 0; at < std::size(orders); ++at)
            for (const MatrixKind<T>& kind : kindsOf<T>(true)) luOf(at, scale, kind, seed, tables);
}

template <class T>
void inversesOfType(InverseTables& tables) {
    int seed[] = {1988, 1989, 1990, 1991};
    for (std::size_t at = 0; at < std::size(orders); ++at)
        for (const MatrixKind<T>& kind : kindsOf<T>(true)) inverseOf(at, kind, seed, tables);
}

}  // namespace

void measureLu() {
    LuTables tables;
    luOfType<float>(tables);
    luOfType<double>(tables);
    tables.residuals.print();
    tables.solutions.print();
}

void measureInverses() {
    InverseTables tables;
    inversesOfType<float>(tables);
    inversesOfType<double>(tables);
    tables.inverses.print();
    tables.determinants.print();
}

}  // namespace bench
