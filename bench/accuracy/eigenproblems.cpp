// Symmetric and general eigenproblems.
#include <functional>

#include "families.h"

namespace bench {
namespace {

template <class T>
struct Kind {
    const char* group;
    std::function<void(T* to, int n, int* seed)> make;
};

template <class T>
void identity(T* to, int n) {
    for (int i = 0; i < n * n; ++i) to[i] = i % (n + 1) == 0 ? T(1) : T(0);
}

// Values that lie close together stand apart: with them the iteration may leave a sweep early.
template <class T>
std::vector<Kind<T>> symmetricKinds() {
    const char *close = "values close together", *wide = "condition 1 / ulp", *others = "condition up to 100";
    std::vector<Kind<T>> kinds = {{close, [](T* to, int n, int*) { identity(to, n); }}};
    const auto add = [&](Spectrum spectrum, T condition, bool full) {
        const char* group = spectrum == clustered ? close : condition > 100 ? wide : others;
        kinds.push_back({group, [=](T* to, int n, int* seed) {
                             generate<T>(to, n, n, 'S', spectrum, condition, full, full, seed);
                         }});
    };
    for (const Spectrum spectrum : {clustered, geometric, arithmetic}) add(spectrum, 1 / ulp<T>, false);
    for (const T condition : {T(2), T(100), 1 / ulp<T>})
        for (const Spectrum spectrum : {clustered, geometric, arithmetic, randomLogarithms})
            add(spectrum, condition, true);
    add(randomValues, 2, true);
    return kinds;
}

// By LAPACK, from the largest value down.
template <class T>
void lapackSymmetric(const T* a, int n, T* values, T* vectors) {
    const char withVectors = 'V', lower = 'L';
    std::vector<T> byColumns(a, a + n * n), ascending(static_cast<std::size_t>(n));
    std::vector<T> work(area(64, n + 1));
    const int workSize = static_cast<int>(work.size());
    int info = 0;
    pick<T>([](auto... p) { LAPACK_ssyev(p...); }, [](auto... p) { LAPACK_dsyev(p...); })(
        &withVectors, &lower, &n, byColumns.data(), &n, ascending.data(), work.data(), &workSize, &info);
    for (int j = 0; j < n; ++j) {
        values[j] = ascending[static_cast<std::size_t>(n - 1 - j)];
        for (int i = 0; i < n; ++i) vectors[i * n + j] = byColumns[area(n - 1 - j, n) + static_cast<std::size_t>(i)];
    }
}

template <class T>
Checked<Wide<T>> productOf(const T* values, const T* vectors, int n) {
    const Checked<Wide<T>> v(vectors, n, n);
    Checked<Wide<T>> scaled = v;
    for (int i = 0; i < n; ++i)
        for (int j = 0; j < n; ++j) scaled(i, j) *= values[j];
    return scaled * v.transposed();
}

// The greatest |found - expected| / (|A| ulp). Order 2 may come in ascending order.
template <class T>
double valuesRatio(const Checked<Wide<T>>& a, const T* values, const double* expected) {
    std::vector<T> found(values, values + a.height);
    std::sort(found.begin(), found.end(), std::greater<>());
    Wide<T> worst = 0;
    for (int i = 0; i < a.height; ++i)
        worst = worse(std::abs(Wide<T>(found[static_cast<std::size_t>(i)]) - Wide<T>(expected[i])), worst);
    return ratio(worst, norm(a) * Wide<T>(ulp<T>));
}

struct SymmetricTables {
    Table residuals{"Symmetric eigenproblems: |A - V D V^T| / (n |A| ulp)"};
    Table orthogonality{"Symmetric eigenproblems: |I - V^T V| / (n ulp)"};
    Table values{"Symmetric eigenvalues against LAPACK's in double: |w - w'| / (|A| ulp)"};
};

template <class T>
int symmetricVectors(Form form, const T* a, T* buffer, T* vectors, T* values, int n, int count) {
    if (form == Form::single)
        return pick<T>(kormEigenValuesVectorsSym_m_32f, kormEigenValuesVectorsSym_m_64f)(
            a, bytes<T>(n), bytes<T>(1), buffer, vectors, bytes<T>(n), bytes<T>(1), values, n);
    return pick<T>(kormEigenValuesVectorsSym_ma_32f, kormEigenValuesVectorsSym_ma_64f)(
        a, bytes<T>(n * n), bytes<T>(n), bytes<T>(1), buffer, vectors, bytes<T>(n * n), bytes<T>(n), bytes<T>(1),
        values, n, count);
}

template <class T>
int symmetricValues(Form form, const T* a, T* buffer, T* values, int n, int count) {
    if (form == Form::single)
        return pick<T>(kormEigenValuesSym_m_32f, kormEigenValuesSym_m_64f)(a, bytes<T>(n), bytes<T>(1), buffer, values,
                                                                           n);
    return pick<T>(kormEigenValuesSym_ma_32f, kormEigenValuesSym_ma_64f)(a, bytes<T>(n * n), bytes<T>(n), bytes<T>(1),
                                                                         buffer, values, n, count);
}

template <class T>
void symmetricOf(std::size_t at, int scale, const Kind<T>& kind, int* seed, SymmetricTables& tables) {
    const int n = orders[at];
    const Matrices<T> a = matricesOf<T>(n, n, scale, [&](T* to) { kind.make(to, n, seed); });
    std::vector<T> buffer(area(n, n));
    for (const Form form : {Form::single, Form::array}) {
        const auto nameOf = [&](const char* function) { return rowName<T>(function, form, scale) + ", " + kind.group; };
        const std::string row = nameOf("EigenValuesVectorsSym"), valuesRow = nameOf("EigenValuesSym");
        Matrices<T> values = empty<T>(n, 1), vectors = empty<T>(n, n), alone = empty<T>(n, 1);
        const std::vector<int> statuses = statusesOf(form, [&](int k, int count) {
            return symmetricVectors(form, a.object(k), buffer.data(), vectors.object(k), values.object(k), n, count);
        });
        const std::vector<int> statusesAlone = statusesOf(form, [&](int k, int count) {
            return symmetricValues(form, a.object(k), buffer.data(), alone.object(k), n, count);
        });
        for (int k = 0; k < objects; ++k) {
            const auto matrix = checked(a, k);
            const Wide<T> unit = ulp<T>;
            const std::vector<double> inDouble(a.object(k), a.object(k) + n * n);
            std::vector<double> expected(static_cast<std::size_t>(n)), ignored(inDouble.size());
            lapackSymmetric(inDouble.data(), n, expected.data(), ignored.data());
            std::vector<T> w(static_cast<std::size_t>(n)), v(area(n, n));
            lapackSymmetric(a.object(k), n, w.data(), v.data());
            tables.residuals.addPeer(row, at, differenceRatio(matrix, productOf(w.data(), v.data(), n), unit));
            tables.orthogonality.addPeer(row, at, orthogonalityRatio(Checked<Wide<T>>(v.data(), n, n), unit));
            if (sizeof(T) == 4) {
                const double found = valuesRatio(matrix, w.data(), expected.data());
                tables.values.addPeer(row, at, found);
                tables.values.addPeer(valuesRow, at, found);
            }
            if (const int status = statuses[static_cast<std::size_t>(k)]; status != korStatusOk) {
                tables.residuals.addRefusal(row, status);
            } else {
                const auto product = productOf(values.object(k), vectors.object(k), n);
                tables.residuals.add(row, at, differenceRatio(matrix, product, unit));
                tables.orthogonality.add(row, at, orthogonalityRatio(checked(vectors, k), unit));
                tables.values.add(row, at, valuesRatio(matrix, values.object(k), expected.data()));
            }
            if (const int status = statusesAlone[static_cast<std::size_t>(k)]; status != korStatusOk)
                tables.values.addRefusal(valuesRow, status);
            else tables.values.add(valuesRow, at, valuesRatio(matrix, alone.object(k), expected.data()));
        }
    }
}

template <class T>
void symmetricOfType(SymmetricTables& tables) {
    int seed[] = {1988, 1989, 1990, 1991};
    for (const int scale : {-10, 0, 10, 20})
        for (std::size_t at = 0; at < std::size(orders); ++at)
            for (const Kind<T>& kind : symmetricKinds<T>()) symmetricOf(at, scale, kind, seed, tables);
}

// Values that lie close together mostly have vectors that do, too: such a matrix is near to one without a full set.
template <class T>
std::vector<Kind<T>> generalKinds() {
    const char *exact = "diagonal or Jordan block", *close = "values close together";
    const char *well = "others, well conditioned", *badly = "others, badly conditioned";
    std::vector<Kind<T>> kinds = {{exact, [](T* to, int n, int*) { identity(to, n); }}};
    kinds.push_back({exact, [](T* to, int n, int*) {
                         identity(to, n);
                         for (int i = 0; i + 1 < n; ++i) to[(i + 1) * n + i] = 1;
                     }});
    for (const Spectrum spectrum : {clustered, geometric, arithmetic})
        kinds.push_back({exact, [=](T* to, int n, int* seed) {
                             generate<T>(to, n, n, 'S', spectrum, 1 / ulp<T>, false, false, seed);
                         }});
    for (const Spectrum spectrum : {clustered, geometric, arithmetic, randomLogarithms})
        for (const bool isWell : {true, false}) {
            const char* group = spectrum == clustered ? close : isWell ? well : badly;
            const T condition = isWell ? 1 : 1 / std::sqrt(ulp<T>);
            kinds.push_back(
                {group, [=](T* to, int n, int* seed) { generateGeneral<T>(to, n, spectrum, condition, seed); }});
        }
    kinds.push_back({well, [](T* to, int n, int* seed) { generateRandom(to, n * n, seed); }});
    return kinds;
}

template <class T>
struct General {
    std::vector<T> re, im, right, left;  // as most expect: A y = w y are right vectors, y^T A = w y^T left ones

    explicit General(int n)
        : re(static_cast<std::size_t>(n)),
          im(re),
          right(area(n, n), std::numeric_limits<T>::quiet_NaN()),
          left(right) {}
};

template <class T>
General<T> lapackGeneral(const T* a, int n) {
    General<T> result(n);
    std::vector<T> byColumns(result.right), right(result.right), left(result.right);
    std::vector<T> work(area(64, n + 1));
    transpose(n, n, a, byColumns.data());
    const char yes = 'V';
    const int workSize = static_cast<int>(work.size());
    int info = 0;
    pick<T>([](auto... p) { LAPACK_sgeev(p...); }, [](auto... p) { LAPACK_dgeev(p...); })(
        &yes, &yes, &n, byColumns.data(), &n, result.re.data(), result.im.data(), left.data(), &n, right.data(), &n,
        work.data(), &workSize, &info);
    transpose(n, n, right.data(), result.right.data());
    transpose(n, n, left.data(), result.left.data());
    // Its left vectors are conjugates: u^H A = w u^H.
    for (int j = 0; j < n; ++j)
        if (result.im[static_cast<std::size_t>(j)] < 0)
            for (int i = 0; i < n; ++i) result.left[area(i, n) + static_cast<std::size_t>(j)] *= -1;
    return result;
}

// Each eigenvalue's condition |y^T x| / (|y| |x|): an error of the matrix moves it by the error over that.
std::vector<double> conditionsOf(const General<double>& solved, int n) {
    std::vector<double> result;
    for (int j = 0; j < n; ++j) {
        const double im = solved.im[static_cast<std::size_t>(j)];
        const int first = im < 0 ? j - 1 : j;
        std::complex<double> product = 0;
        double rightSquare = 0, leftSquare = 0;
        for (int i = 0; i < n; ++i) {
            const auto at = area(i, n) + static_cast<std::size_t>(first);
            const std::complex<double> x(solved.right[at], im == 0 ? 0 : solved.right[at + 1]);
            const std::complex<double> y(solved.left[at], im == 0 ? 0 : solved.left[at + 1]);
            product += x * y;
            rightSquare += std::norm(x);
            leftSquare += std::norm(y);
        }
        result.push_back(std::abs(product) / std::sqrt(rightSquare * leftSquare));
    }
    return result;
}

// The greatest condition |w - w'| / (|A| ulp), each expected value against the nearest that is left. Only of values that
// stand apart: an error of n |A| ulp moves them by less than a hundredth of the distance to another value.
template <class T>
double generalValuesRatio(const Checked<Wide<T>>& a, const T* re, const T* im, const General<double>& expected) {
    const auto n = static_cast<std::size_t>(a.height);
    const std::vector<double> conditions = conditionsOf(expected, a.height);
    const double error = static_cast<double>(norm(a) * ulp<T>);
    std::vector<std::complex<double>> left, values;
    for (std::size_t i = 0; i < n; ++i) {
        left.emplace_back(re[i], im[i]);
        values.emplace_back(expected.re[i], expected.im[i]);
    }
    double worst = 0;
    for (std::size_t i = 0; i < n; ++i) {
        const auto from = [&](const auto& value) { return std::abs(value - values[i]); };
        const auto nearest =
            std::min_element(left.begin(), left.end(), [&](const auto& b, const auto& c) { return from(b) < from(c); });
        bool standsApart = true;
        for (std::size_t j = 0; j < n; ++j)
            if (j != i &&
                from(values[j]) < 100 * static_cast<double>(n) * error * (1 / conditions[i] + 1 / conditions[j]))
                standsApart = false;
        if (standsApart) worst = worse(conditions[i] * from(*nearest), worst);
        left.erase(nearest);
    }
    return ratio(worst, error);
}

struct GeneralTables {
    Table right{"General eigenproblems, `Left`: |A y - w y| / (|A| |y| ulp)"};
    Table left{"General eigenproblems, `Right`: |A^T y - w y| / (|A^T| |y| ulp)"};
    Table values{"General eigenvalues that stand apart, against LAPACK's in double: condition |w - w'| / (|A| ulp)"};
};

// One set of vectors of `Left` or `Right`.
template <class T>
int oneSet(bool left, Form form, const T* a, T* vectors, T* re, T* im, int n, int count, T* buffer) {
    if (form == Form::single) {
        const auto call = left ? pick<T>(kormEigenValuesVectorsLeft_m_32f, kormEigenValuesVectorsLeft_m_64f)
                               : pick<T>(kormEigenValuesVectorsRight_m_32f, kormEigenValuesVectorsRight_m_64f);
        return call(a, bytes<T>(n), bytes<T>(1), vectors, bytes<T>(n), bytes<T>(1), re, im, n, buffer);
    }
    const auto call = left ? pick<T>(kormEigenValuesVectorsLeft_ma_32f, kormEigenValuesVectorsLeft_ma_64f)
                           : pick<T>(kormEigenValuesVectorsRight_ma_32f, kormEigenValuesVectorsRight_ma_64f);
    return call(a, bytes<T>(n * n), bytes<T>(n), bytes<T>(1), vectors, bytes<T>(n * n), bytes<T>(n), bytes<T>(1), re,
                im, n, count, buffer);
}

template <class T>
int bothSets(Form form, const T* a, T* right, T* left, T* re, T* im, int n, int count, T* buffer) {
    if (form == Form::single)
        return pick<T>(kormEigenValuesVectors_m_32f, kormEigenValuesVectors_m_64f)(
            a, bytes<T>(n), bytes<T>(1), right, bytes<T>(n), bytes<T>(1), left, bytes<T>(n), bytes<T>(1), re, im, n,
            buffer);
    return pick<T>(kormEigenValuesVectors_ma_32f, kormEigenValuesVectors_ma_64f)(
        a, bytes<T>(n * n), bytes<T>(n), bytes<T>(1), right, bytes<T>(n * n), bytes<T>(n), bytes<T>(1), left,
        bytes<T>(n * n), bytes<T>(n), bytes<T>(1), re, im, n, count, buffer);
}

template <class T>
int onlyValues(Form form, const T* a, T* re, T* im, int n, int count, T* buffer) {
    if (form == Form::single)
        return pick<T>(kormEigenValues_m_32f, kormEigenValues_m_64f)(a, bytes<T>(n), bytes<T>(1), re, im, n, buffer);
    return pick<T>(kormEigenValues_ma_32f, kormEigenValues_ma_64f)(a, bytes<T>(n * n), bytes<T>(n), bytes<T>(1), re, im,
                                                                   n, count, buffer);
}

template <class T>
void generalOf(std::size_t at, int scale, const Kind<T>& kind, int* seed, GeneralTables& tables) {
    const int n = orders[at];
    const Matrices<T> a = matricesOf<T>(n, n, scale, [&](T* to) { kind.make(to, n, seed); });
    std::vector<T> buffer(area(n, 3 * n + 5));
    std::vector<General<T>> peers;
    std::vector<General<double>> expected;
    for (int k = 0; k < objects; ++k) {
        peers.push_back(lapackGeneral(a.object(k), n));
        const std::vector<double> inDouble(a.object(k), a.object(k) + n * n);
        expected.push_back(lapackGeneral(inDouble.data(), n));
    }
    for (const Form form : {Form::single, Form::array}) {
        Matrices<T> re = empty<T>(n, 1), im = re, right = empty<T>(n, n), left = right;
        const auto compare = [&](const char* function, Table& table, auto call, auto ratioOf, bool hasPeer) {
            const std::string row = rowName<T>(function, form, scale) + ", " + kind.group;
            re = im = empty<T>(n, 1);
            right = left = empty<T>(n, n);
            const std::vector<int> statuses = statusesOf(form, call);
            for (int k = 0; k < objects; ++k) {
                const auto index = static_cast<std::size_t>(k);
                const auto matrix = checked(a, k);
                const General<T>& peer = peers[index];
                if (hasPeer)
                    table.addPeer(
                        row, at,
                        ratioOf(k, matrix, peer.re.data(), peer.im.data(), peer.right.data(), peer.left.data()));
                if (statuses[index] != korStatusOk) table.addRefusal(row, statuses[index]);
                else
                    table.add(row, at, ratioOf(k, matrix, re.object(k), im.object(k), right.object(k), left.object(k)));
            }
        };
        using W = Wide<T>;
        const auto rightRatio = [&](int, const Checked<W>& matrix, const T* wr, const T* wi, const T* y, const T*) {
            return vectorsRatio(matrix, Checked<W>(y, n, n), wr, wi, W(ulp<T>));
        };
        const auto leftRatio = [&](int, const Checked<W>& matrix, const T* wr, const T* wi, const T*, const T* y) {
            return vectorsRatio(matrix.transposed(), Checked<W>(y, n, n), wr, wi, W(ulp<T>));
        };
        const auto valuesOnly = [&](int k, const Checked<W>& matrix, const T* wr, const T* wi, const T*, const T*) {
            return generalValuesRatio(matrix, wr, wi, expected[static_cast<std::size_t>(k)]);
        };
        const auto both = [&](int k, int count) {
            return bothSets(form, a.object(k), left.object(k), right.object(k), re.object(k), im.object(k), n, count,
                            buffer.data());
        };
        compare(
            "EigenValuesVectorsLeft", tables.right,
            [&](int k, int count) {
                return oneSet(true, form, a.object(k), right.object(k), re.object(k), im.object(k), n, count,
                              buffer.data());
            },
            rightRatio, true);
        compare("EigenValuesVectors", tables.right, both, rightRatio, true);
        compare(
            "EigenValuesVectorsRight", tables.left,
            [&](int k, int count) {
                return oneSet(false, form, a.object(k), left.object(k), re.object(k), im.object(k), n, count,
                              buffer.data());
            },
            leftRatio, true);
        compare("EigenValuesVectors", tables.left, both, leftRatio, true);
        compare(
            "EigenValues", tables.values,
            [&](int k, int count) {
                return onlyValues(form, a.object(k), re.object(k), im.object(k), n, count, buffer.data());
            },
            valuesOnly, sizeof(T) == 4);
        compare("EigenValuesVectors", tables.values, both, valuesOnly, sizeof(T) == 4);
    }
}

template <class T>
void generalOfType(GeneralTables& tables) {
    int seed[] = {1988, 1989, 1990, 1991};
    for (const int scale : {-10, 0, 20})
        for (std::size_t at = 0; at < std::size(orders); ++at)
            for (const Kind<T>& kind : generalKinds<T>()) generalOf(at, scale, kind, seed, tables);
}

}  // namespace

void measureSymmetric() {
    SymmetricTables tables;
    symmetricOfType<float>(tables);
    symmetricOfType<double>(tables);
    tables.residuals.print();
    tables.orthogonality.print();
    tables.values.print();
}

void measureGeneral() {
    GeneralTables tables;
    generalOfType<float>(tables);
    generalOfType<double>(tables);
    tables.right.print();
    tables.left.print();
    tables.values.print();
}

}  // namespace bench
