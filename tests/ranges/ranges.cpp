// At which scales are results right? korm_ranges [check FILE]
//
// Good matrices, whose condition is below 4 (general eigenproblems: 40), times 2^k for each k of the type's range. A result is right
// when the status is Ok and a residual, computed in extended precision, is below the threshold of LAPACK's test programs. Prints
// the longest run of such k for each function and order, as the table of docs/ranges.md; `check` holds the table of a file against it.
#include <korm.h>

#include <cstdio>
#include <cstring>
#include <fstream>
#include <functional>
#include <iostream>
#include <sstream>
#include <string>

#include "matrices.h"

namespace ranges {
namespace {

constexpr int largestOrder = 8;

struct Layout {
    bool array;
    int step;  // elements from one to the next
};

// What a function is asked: are its results right for good matrices of this order, times 2^k?
using Question = std::function<bool(int order, int k, Layout layout)>;

struct Function {
    std::string name;  // korm...
    const char* single;
    const char* array;  // operands; nothing where there is no array form
    const char* element;
    Question isRight;
    bool strided;
    int firstOrder, lastOrder;
};

template <class T>
Batch<T> rounded(const std::vector<Matrix>& from, int k, int step) {
    Batch<T> to(from[0].height, from[0].width, step);
    for (int o = 0; o < objects; ++o)
        for (int i = 0; i < to.height; ++i)
            for (int j = 0; j < to.width; ++j)
                *to.at(o, i, j) = static_cast<T>(std::ldexp(from[static_cast<std::size_t>(o)](i, j), k));
    return to;
}

template <class T>
Matrix exact(Batch<T>& from, int object) {
    Matrix to(from.height, from.width);
    for (int i = 0; i < to.height; ++i)
        for (int j = 0; j < to.width; ++j) to(i, j) = *from.at(object, i, j);
    return to;
}

std::vector<Matrix> goodMatrices(int order, bool symmetric) {
    std::vector<Matrix> all;
    for (int number = 0; number < objects; ++number)
        all.push_back(symmetric ? goodSymmetric(order, number) : goodGeneral(order, number));
    return all;
}

// Calls single(k) for each object, or array() once; all must say Ok.
template <class Single, class Array>
bool allOk(Layout layout, Single single, Array array) {
    if (layout.array) return array() == korStatusOk;
    for (int k = 0; k < objects; ++k)
        if (single(k) != korStatusOk) return false;
    return true;
}

bool forAll(const std::function<bool(int)>& isRight) {
    for (int k = 0; k < objects; ++k)
        if (!isRight(k)) return false;
    return true;
}

template <class T>
bool invert(int n, int scale, Layout layout) {
    Batch<T> a = rounded<T>(goodMatrices(n, false), scale, layout.step), x(n, n, layout.step);
    std::vector<T> buffer(static_cast<std::size_t>(n * n + n));
    const bool ok = allOk(
        layout,
        [&](int k) {
            return pick<T>(kormInvert_m_32f, kormInvert_m_64f)(a.at(k), a.rowStride(), a.elementStride(), buffer.data(),
                                                               x.at(k), x.rowStride(), x.elementStride(), n);
        },
        [&] {
            return pick<T>(kormInvert_ma_32f, kormInvert_ma_64f)(
                a.at(0), a.objectStride(), a.rowStride(), a.elementStride(), buffer.data(), x.at(0), x.objectStride(),
                x.rowStride(), x.elementStride(), n, objects);
        });
    return ok && forAll([&](int k) {
               const Matrix matrix = exact(a, k), inverse = exact(x, k);
               return isSmall<T>(norm(identity(n) - matrix * inverse), n, norm(matrix) * norm(inverse));
           });
}

template <class T>
bool determinant(int n, int scale, Layout layout) {
    Batch<T> a = rounded<T>(goodMatrices(n, true), scale, layout.step), d(1, 1, 1);
    std::vector<T> buffer(static_cast<std::size_t>(n * n + n));
    const bool ok = allOk(
        layout,
        [&](int k) {
            return pick<T>(kormDet_m_32f, kormDet_m_64f)(a.at(k), a.rowStride(), a.elementStride(), n, buffer.data(),
                                                         d.at(k));
        },
        [&] {
            return pick<T>(kormDet_ma_32f, kormDet_ma_64f)(a.at(0), a.objectStride(), a.rowStride(), a.elementStride(),
                                                           n, buffer.data(), d.at(0), objects);
        });
    return ok && forAll([&](int k) {
               const Wide wanted = determinantOf(exact(a, k));
               return isSmall<T>(*d.at(k) - wanted, n, std::fabs(wanted));
           });
}

// x from b = A times a vector around 1, where solve(a, b, x) is the status.
template <class T, class Solve>
bool solves(int n, int scale, Layout layout, bool symmetric, Solve solve) {
    Batch<T> a = rounded<T>(goodMatrices(n, symmetric), scale, layout.step), x(n, 1, layout.step);
    std::vector<Matrix> sides;
    for (int k = 0; k < objects; ++k) {
        Matrix ones(n, 1);
        for (int i = 0; i < n; ++i) ones(i, 0) = 1 + static_cast<Wide>((i + k) % 3) / 4;
        sides.push_back(exact(a, k) * ones);
    }
    Batch<T> b = rounded<T>(sides, 0, layout.step);
    return solve(a, b, x) && forAll([&](int k) {
               const Matrix matrix = exact(a, k), solution = exact(x, k);
               return isSmall<T>(norm(exact(b, k) - matrix * solution), n, norm(matrix) * norm(solution));
           });
}

template <class T>
bool lu(int n, int scale, Layout layout) {
    return solves<T>(n, scale, layout, false, [&](Batch<T>& a, Batch<T>& b, Batch<T>& x) {
        Batch<T> factor(n, n, layout.step);
        std::vector<std::int32_t> pivots(static_cast<std::size_t>(n * objects));
        const auto of = [&](int k) { return pivots.data() + k * n; };
        return allOk(
                   layout,
                   [&](int k) {
                       return pick<T>(kormLUDecomp_m_32f, kormLUDecomp_m_64f)(a.at(k), a.rowStride(), a.elementStride(),
                                                                              of(k), factor.at(k), factor.rowStride(),
                                                                              factor.elementStride(), n);
                   },
                   [&] {
                       return pick<T>(kormLUDecomp_ma_32f, kormLUDecomp_ma_64f)(
                           a.at(0), a.objectStride(), a.rowStride(), a.elementStride(), of(0), factor.at(0),
                           factor.objectStride(), factor.rowStride(), factor.elementStride(), n, objects);
                   }) &&
               allOk(
                   layout,
                   [&](int k) {
                       return pick<T>(kormLUBackSubst_mv_32f, kormLUBackSubst_mv_64f)(
                           factor.at(k), factor.rowStride(), factor.elementStride(), of(k), b.at(k), b.elementStride(),
                           x.at(k), x.elementStride(), n);
                   },
                   [&] {
                       return pick<T>(kormLUBackSubst_mava_32f, kormLUBackSubst_mava_64f)(
                           factor.at(0), factor.objectStride(), factor.rowStride(), factor.elementStride(), of(0),
                           b.at(0), b.objectStride(), b.elementStride(), x.at(0), x.objectStride(), x.elementStride(),
                           n, objects);
                   });
    });
}

template <class T>
bool cholesky(int n, int scale, Layout layout) {
    return solves<T>(n, scale, layout, true, [&](Batch<T>& a, Batch<T>& b, Batch<T>& x) {
        Batch<T> factor(n, n, layout.step);
        return allOk(
                   layout,
                   [&](int k) {
                       return pick<T>(kormCholeskyDecomp_m_32f, kormCholeskyDecomp_m_64f)(
                           a.at(k), a.rowStride(), a.elementStride(), factor.at(k), factor.rowStride(),
                           factor.elementStride(), n);
                   },
                   [&] {
                       return pick<T>(kormCholeskyDecomp_ma_32f, kormCholeskyDecomp_ma_64f)(
                           a.at(0), a.objectStride(), a.rowStride(), a.elementStride(), factor.at(0),
                           factor.objectStride(), factor.rowStride(), factor.elementStride(), n, objects);
                   }) &&
               allOk(
                   layout,
                   [&](int k) {
                       return pick<T>(kormCholeskyBackSubst_mv_32f, kormCholeskyBackSubst_mv_64f)(
                           factor.at(k), factor.rowStride(), factor.elementStride(), b.at(k), b.elementStride(),
                           x.at(k), x.elementStride(), n);
                   },
                   [&] {
                       return pick<T>(kormCholeskyBackSubst_mava_32f, kormCholeskyBackSubst_mava_64f)(
                           factor.at(0), factor.objectStride(), factor.rowStride(), factor.elementStride(), b.at(0),
                           b.objectStride(), b.elementStride(), x.at(0), x.objectStride(), x.elementStride(), n,
                           objects);
                   });
    });
}

template <class T>
bool qr(int n, int scale, Layout layout) {
    return solves<T>(n, scale, layout, false, [&](Batch<T>& a, Batch<T>& b, Batch<T>& x) {
        Batch<T> factor(n, n, layout.step);
        std::vector<T> buffer(static_cast<std::size_t>(n));
        return allOk(
                   layout,
                   [&](int k) {
                       return pick<T>(kormQRDecomp_m_32f, kormQRDecomp_m_64f)(
                           a.at(k), a.rowStride(), a.elementStride(), buffer.data(), factor.at(k), factor.rowStride(),
                           factor.elementStride(), n, n);
                   },
                   [&] {
                       return pick<T>(kormQRDecomp_ma_32f, kormQRDecomp_ma_64f)(
                           a.at(0), a.objectStride(), a.rowStride(), a.elementStride(), buffer.data(), factor.at(0),
                           factor.objectStride(), factor.rowStride(), factor.elementStride(), n, n, objects);
                   }) &&
               allOk(
                   layout,
                   [&](int k) {
                       return pick<T>(kormQRBackSubst_mv_32f, kormQRBackSubst_mv_64f)(
                           factor.at(k), factor.rowStride(), factor.elementStride(), buffer.data(), b.at(k),
                           b.elementStride(), x.at(k), x.elementStride(), n, n);
                   },
                   [&] {
                       return pick<T>(kormQRBackSubst_mava_32f, kormQRBackSubst_mava_64f)(
                           factor.at(0), factor.objectStride(), factor.rowStride(), factor.elementStride(),
                           buffer.data(), b.at(0), b.objectStride(), b.elementStride(), x.at(0), x.objectStride(),
                           x.elementStride(), n, n, objects);
                   });
    });
}

template <class T>
bool frobenius(int n, int scale, Layout layout) {
    Batch<T> a = rounded<T>(goodMatrices(n, false), scale, layout.step), d(1, 1, 1);
    const bool ok = allOk(
        layout,
        [&](int k) {
            return pick<T>(kormFrobNorm_m_32f, kormFrobNorm_m_64f)(a.at(k), a.rowStride(), a.elementStride(), n, n,
                                                                   d.at(k));
        },
        [&] {
            return pick<T>(kormFrobNorm_ma_32f, kormFrobNorm_ma_64f)(a.at(0), a.objectStride(), a.rowStride(),
                                                                     a.elementStride(), n, n, d.at(0), objects);
        });
    return ok && forAll([&](int k) {
               Wide squares = 0;
               for (const Wide element : exact(a, k).elements) squares += element * element;
               return isSmall<T>(*d.at(k) - std::sqrt(squares), n, std::sqrt(squares));
           });
}

template <class T>
bool l2(int n, int scale, Layout layout) {
    std::vector<Matrix> vectors;
    for (const Matrix& one : goodMatrices(n, false)) {
        vectors.emplace_back(n, 1);
        for (int i = 0; i < n; ++i) vectors.back()(i, 0) = one(i, 0);
    }
    Batch<T> a = rounded<T>(vectors, scale, layout.step), d(1, 1, 1);
    const bool ok = allOk(
        layout,
        [&](int k) { return pick<T>(kormL2Norm_v_32f, kormL2Norm_v_64f)(a.at(k), a.elementStride(), d.at(k), n); },
        [&] {
            return pick<T>(kormL2Norm_va_32f, kormL2Norm_va_64f)(a.at(0), a.objectStride(), a.elementStride(), d.at(0),
                                                                 n, objects);
        });
    return ok && forAll([&](int k) {
               Wide squares = 0;
               for (const Wide element : exact(a, k).elements) squares += element * element;
               return isSmall<T>(*d.at(k) - std::sqrt(squares), n, std::sqrt(squares));
           });
}

// Are these the values of the matrix? Their imaginary parts are zero.
template <class T>
bool areValues(const T* re, const T* im, std::vector<Wide> wanted, int scale) {
    const int n = static_cast<int>(wanted.size());
    std::vector<Wide> found;
    for (int i = 0; i < n; ++i) {
        if (im != nullptr && im[i] != 0) return false;
        found.push_back(std::ldexp(static_cast<Wide>(re[i]), -scale));
    }
    std::sort(found.begin(), found.end());
    for (std::size_t i = 0; i < found.size(); ++i)
        if (!isSmall<T>(found[i] - wanted[i], n, 2 * wanted.back())) return false;
    return true;
}

// |A V - V D| and, for symmetric ones, |V^T V - 1|: in columns, to 30 n ulp.
template <class T>
bool areVectors(const Matrix& a, const Matrix& v, const T* values) {
    const int n = a.height;
    const Matrix product = a * v;
    for (int j = 0; j < n; ++j) {
        Wide residual = 0, length = 0;
        for (int i = 0; i < n; ++i) {
            residual += std::fabs(product(i, j) - values[j] * v(i, j));
            length += std::fabs(v(i, j));
        }
        if (!(length > 0) || !isSmall<T>(residual, n, 2 * norm(a) * length)) return false;
    }
    return true;
}

template <class T>
bool symmetricEigenvalues(int n, int scale, Layout layout) {
    const std::vector<Matrix> good = goodMatrices(n, true);
    Batch<T> a = rounded<T>(good, scale, layout.step), values(n, 1, 1);
    std::vector<T> buffer(static_cast<std::size_t>(n * n + 8 * n));
    const bool ok = allOk(
        layout,
        [&](int k) {
            return pick<T>(kormEigenValuesSym_m_32f, kormEigenValuesSym_m_64f)(
                a.at(k), a.rowStride(), a.elementStride(), buffer.data(), values.at(k), n);
        },
        [&] {
            return pick<T>(kormEigenValuesSym_ma_32f, kormEigenValuesSym_ma_64f)(
                a.at(0), a.objectStride(), a.rowStride(), a.elementStride(), buffer.data(), values.at(0), n, objects);
        });
    return ok && forAll([&](int k) {
               return areValues<T>(values.at(k), nullptr, symmetricValues(good[static_cast<std::size_t>(k)]), scale);
           });
}

template <class T>
bool symmetricEigenvectors(int n, int scale, Layout layout) {
    Batch<T> a = rounded<T>(goodMatrices(n, true), scale, layout.step), values(n, 1, 1), v(n, n, layout.step);
    std::vector<T> buffer(static_cast<std::size_t>(n * n + 8 * n));
    const bool ok = allOk(
        layout,
        [&](int k) {
            return pick<T>(kormEigenValuesVectorsSym_m_32f, kormEigenValuesVectorsSym_m_64f)(
                a.at(k), a.rowStride(), a.elementStride(), buffer.data(), v.at(k), v.rowStride(), v.elementStride(),
                values.at(k), n);
        },
        [&] {
            return pick<T>(kormEigenValuesVectorsSym_ma_32f, kormEigenValuesVectorsSym_ma_64f)(
                a.at(0), a.objectStride(), a.rowStride(), a.elementStride(), buffer.data(), v.at(0), v.objectStride(),
                v.rowStride(), v.elementStride(), values.at(0), n, objects);
        });
    return ok && forAll([&](int k) { return areVectors<T>(exact(a, k), exact(v, k), values.at(k)); });
}

template <class T>
bool generalEigenvalues(int n, int scale, Layout layout) {
    Batch<T> a = rounded<T>(goodMatrices(n, false), scale, layout.step), re(n, 1, 1), im(n, 1, 1);
    std::vector<T> buffer(static_cast<std::size_t>(n * (n + 5)));
    const bool ok = allOk(
        layout,
        [&](int k) {
            return pick<T>(kormEigenValues_m_32f, kormEigenValues_m_64f)(a.at(k), a.rowStride(), a.elementStride(),
                                                                         re.at(k), im.at(k), n, buffer.data());
        },
        [&] {
            return pick<T>(kormEigenValues_ma_32f, kormEigenValues_ma_64f)(a.at(0), a.objectStride(), a.rowStride(),
                                                                           a.elementStride(), re.at(0), im.at(0), n,
                                                                           objects, buffer.data());
        });
    std::vector<Wide> wanted;
    for (int i = 0; i < n; ++i) wanted.push_back(1 + static_cast<Wide>(i) / static_cast<Wide>(n));
    return ok && forAll([&](int k) { return areValues<T>(re.at(k), im.at(k), wanted, scale); });
}

template <class T>
bool generalEigenvectors(int n, int scale, Layout layout) {
    Batch<T> a = rounded<T>(goodMatrices(n, false), scale, layout.step), re(n, 1, 1), im(n, 1, 1), v(n, n, layout.step);
    std::vector<T> buffer(static_cast<std::size_t>(n * (3 * n + 5)));
    const bool ok = allOk(
        layout,
        [&](int k) {
            return pick<T>(kormEigenValuesVectorsLeft_m_32f, kormEigenValuesVectorsLeft_m_64f)(
                a.at(k), a.rowStride(), a.elementStride(), v.at(k), v.rowStride(), v.elementStride(), re.at(k),
                im.at(k), n, buffer.data());
        },
        [&] {
            return pick<T>(kormEigenValuesVectorsLeft_ma_32f, kormEigenValuesVectorsLeft_ma_64f)(
                a.at(0), a.objectStride(), a.rowStride(), a.elementStride(), v.at(0), v.objectStride(), v.rowStride(),
                v.elementStride(), re.at(0), im.at(0), n, objects, buffer.data());
        });
    return ok && forAll([&](int k) {
               for (int i = 0; i < n; ++i)
                   if (*im.at(k, i) != 0) return false;
               return areVectors<T>(exact(a, k), exact(v, k), re.at(k));
           });
}

// --- Functions of fixed size ---

template <class Call>
bool vectorsAreRight(int n, int scale, Call isRight) {
    Batch<float> a = rounded<float>(goodMatrices(n, false), scale, 1);
    return forAll([&](int k) {
        Wide squares = 0;
        for (int i = 0; i < n; ++i) squares += static_cast<Wide>(*a.at(k, 0, i)) * *a.at(k, 0, i);
        return isRight(a.at(k), std::sqrt(squares));
    });
}

bool normalize(int n, int scale, Layout) {
    const auto call = n == 2 ? kormNormalize_v2_32f : n == 3 ? kormNormalize_v3_32f : kormNormalize_v4_32f;
    return vectorsAreRight(n, scale, [&](const float* src, Wide length) {
        float dst[4];
        if (call(src, dst) != korStatusOk) return false;
        for (int i = 0; i < n; ++i)
            if (!isSmall<float>(dst[i] - src[i] / length, n, 1)) return false;
        return true;
    });
}

bool vectorLength(int n, int scale, Layout) {
    const auto call = n == 2 ? kormLen_v2_32f : n == 3 ? kormLen_v3_32f : kormLen_v4_32f;
    return vectorsAreRight(n, scale, [&](const float* src, Wide length) {
        float dst;
        return call(src, &dst) == korStatusOk && isSmall<float>(dst - length, n, length);
    });
}

bool invert4(int n, int scale, Layout) {
    Batch<float> a = rounded<float>(goodMatrices(n, false), scale, 1), x(n, n, 1);
    return forAll([&](int k) {
        if (kormInvert_m4_32f(a.at(k), nullptr, x.at(k)) != korStatusOk) return false;
        const Matrix matrix = exact(a, k), inverse = exact(x, k);
        return isSmall<float>(norm(identity(n) - matrix * inverse), n, norm(matrix) * norm(inverse));
    });
}

bool determinant4(int n, int scale, Layout) {
    Batch<float> a = rounded<float>(goodMatrices(n, true), scale, 1);
    return forAll([&](int k) {
        float found;
        const Wide wanted = determinantOf(exact(a, k));
        return kormDet_m4_32f(a.at(k), &found) == korStatusOk && isSmall<float>(found - wanted, n, std::fabs(wanted));
    });
}

// --- The table ---

template <class T>
std::vector<Function> functionsOf(const char* element) {
    const auto one = [&](const char* name, Question isRight, const char* single = "m", const char* array = "ma") {
        return Function{name, single, array, element, std::move(isRight), true, 1, largestOrder};
    };
    return {
        one("Invert", invert<T>),
        one("Det", determinant<T>),
        one("LUDecomp", lu<T>),
        one("CholeskyDecomp", cholesky<T>),
        one("QRDecomp", qr<T>),
        one("FrobNorm", frobenius<T>),
        one("L2Norm", l2<T>, "v", "va"),
        one("EigenValuesSym", symmetricEigenvalues<T>),
        one("EigenValuesVectorsSym", symmetricEigenvectors<T>),
        one("EigenValues", generalEigenvalues<T>),
        one("EigenValuesVectorsLeft", generalEigenvectors<T>),
    };
}

std::vector<Function> fixedFunctions() {
    return {
        {"Normalize", "v2`, `_v3`, `_v4", nullptr, "32f", normalize, false, 2, 4},
        {"Len", "v2`, `_v3`, `_v4", nullptr, "32f", vectorLength, false, 2, 4},
        {"Invert", "m4", nullptr, "32f", invert4, false, 4, 4},
        {"Det", "m4", nullptr, "32f", determinant4, false, 4, 4},
    };
}

// The longest run of right results, found by steps and made exact at both ends.
std::string runOf(const Function& function, int order, Layout layout) {
    const bool isDouble = std::strcmp(function.element, "64f") == 0;
    const int lowest = isDouble ? -1056 : -140, highest = isDouble ? 1024 : 128, step = isDouble ? 16 : 4;
    const auto isRight = [&](int k) { return function.isRight(order, k, layout); };
    int first = 1, last = 0;
    for (int k = lowest; k <= highest;) {
        if (!isRight(k)) {
            k += step;
            continue;
        }
        int from = k, to = k;
        while (from > lowest && isRight(from - 1)) --from;
        while (to + step <= highest && isRight(to + step)) to += step;
        k = to + step;
        while (to < highest && isRight(to + 1)) ++to;
        if (to - from > last - first) first = from, last = to;
    }
    return first > last ? "-" : std::to_string(first) + " to " + std::to_string(last);
}

std::string rowOf(const Function& function, Layout layout) {
    std::string row;
    for (int order = 1; order <= largestOrder; ++order)
        row += order < function.firstOrder || order > function.lastOrder ? " |"
                                                                         : " " + runOf(function, order, layout) + " |";
    return row;
}

std::string nameOf(const Function& function, bool array) {
    return "`korm" + function.name + "_" + (array ? function.array : function.single) + "_" + function.element + "`";
}

// Layouts of a function that have the same runs share a row.
std::string table() {
    std::string text = "| |";
    for (int order = 1; order <= largestOrder; ++order) text += " " + std::to_string(order) + " |";
    text += "\n|---|---:|---:|---:|---:|---:|---:|---:|---:|\n";
    std::vector<Function> all = functionsOf<float>("32f");
    for (Function& one : functionsOf<double>("64f")) all.push_back(std::move(one));
    for (Function& one : fixedFunctions()) all.push_back(std::move(one));
    for (const Function& function : all) {
        std::vector<std::pair<std::string, std::string>> rows;  // names, runs
        const auto add = [&](const std::string& name, const std::string& runs) {
            const auto same =
                std::find_if(rows.begin(), rows.end(), [&](const auto& row) { return row.second == runs; });
            if (same == rows.end()) rows.emplace_back(name, runs);
            else same->first += ", " + name;
        };
        for (const bool array : {false, true}) {
            if (array && function.array == nullptr) continue;
            const std::string name = nameOf(function, array), packed = rowOf(function, {array, 1});
            const std::string strided = function.strided ? rowOf(function, {array, 2}) : packed;
            add(packed == strided ? name : name + " packed", packed);
            if (packed != strided) add(name + " strided", strided);
        }
        for (const auto& [names, runs] : rows) text.append("| ").append(names).append(" |").append(runs).append("\n");
    }
    return text;
}

}  // namespace
}  // namespace ranges

int main(int count, char** arguments) {
    const std::string found = ranges::table();
    if (count < 3) {
        std::cout << found;
        return 0;
    }
    std::stringstream page;
    page << std::ifstream(arguments[2]).rdbuf();
    if (page.str().find(found) != std::string::npos) return 0;
    std::cout << arguments[2] << " should have this table:\n" << found;
    return 1;
}
