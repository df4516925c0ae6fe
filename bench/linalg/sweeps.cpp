// All small orders, and heights of QR, beside the plain loops of the same steps that one writes in five minutes. They are told
// the sizes when they run.
#include <cmath>

#include "rows.h"
#include "sweeps.h"

namespace bench {
namespace {

// --- Operands -----------------------------------------------------------------------------------

// Matrices, their factors, right-hand sides and solutions; one matrix for all vectors or one for each.
template <class T, Layout layout, bool isArray, bool oneMatrix>
struct Systems {
    static constexpr Entry entry = entryOf(layout);
    static constexpr bool manyMatrices = isArray && !oneMatrix;

    const std::int32_t height, width, count;
    const std::size_t matrixCount = manyMatrices ? static_cast<std::size_t>(count) : 0;
    const std::size_t vectorCount = isArray ? static_cast<std::size_t>(count) : 0;
    const Operand<T> matrix = place<T>(matrices, layout, height, width, matrixCount);
    const Operand<T> factor = place<T>(factors, layout, height, width, matrixCount);
    const Operand<T> side = place<T>(rightSides, layout, 1, height, vectorCount);
    const Operand<T> solution = place<T>(solutions, layout, 1, width, vectorCount);
    T* const buffer = memoryOf<T>(scratch, 64);
    std::int32_t* const pivots = memoryOf<std::int32_t>(results, static_cast<std::size_t>(height* count));

    Systems(std::int32_t rows, std::int32_t columns)
        : height(rows), width(columns), count(isArray ? countOf(objectSpan<T>(layout, rows, columns)) : 1) {
        fill();
    }

    static std::int32_t countOf(std::size_t span) {
        return static_cast<std::int32_t>(std::max<std::size_t>(inCache.bytes / sizeof(T) / (2 * span), 8));
    }
    auto elements(const Operand<T>& operand) const {
        return Elements<layout, Kind::matrix, manyMatrices, T, std::ptrdiff_t, std::ptrdiff_t>(operand, height, width);
    }
    auto vectors(const Operand<T>& operand, std::ptrdiff_t length) const {
        return Elements<layout, Kind::vector, isArray, T, Known<1>, std::ptrdiff_t>(operand, {}, length);
    }
    std::int32_t* pivotsOf(std::ptrdiff_t k) const { return pivots + (manyMatrices ? k * height : 0); }
    static auto matrixArguments(const Operand<T>& operand) {
        return descriptor<Kind::matrix, manyMatrices, entry>(operand);
    }
    static auto vectorArguments(const Operand<T>& operand) { return descriptor<Kind::vector, isArray, entry>(operand); }
    auto countArgument() const {
        if constexpr (isArray) return std::tuple(count);
        else return std::tuple();
    }

private:
    // Squares are symmetric. Diagonals are heavier than rows, so that they are positive definite and all are well conditioned.
    void fill() const {
        const auto a = elements(matrix);
        std::uint64_t state = 0x9e3779b97f4a7c15U;
        for (std::ptrdiff_t k = 0; k < std::max<std::ptrdiff_t>(static_cast<std::ptrdiff_t>(matrixCount), 1); ++k)
            for (std::ptrdiff_t i = 0; i < height; ++i)
                for (std::ptrdiff_t j = 0; j < width; ++j) {
                    state = state * 6364136223846793005U + 1442695040888963407U;
                    const T value = static_cast<T>(state >> 40) / T(1 << 24);
                    if (i == j) a(k, i, j) = value + static_cast<T>(2 * height);
                    else a(k, i, j) = j < i && height == width ? a(k, j, i) : value;
                }
    }
};

// The function for an entry, of a single object's where there is no list.
#define SWEEP_FORM(NAME, LIST)                                              \
    struct NAME {                                                           \
        static constexpr std::string_view name = #NAME;                     \
        template <class T, Entry entry>                                     \
        static constexpr auto function() {                                  \
            if constexpr (entry == Entry::pointer) BENCH_PICK(NAME, _P)     \
            else if constexpr (entry == Entry::list) BENCH_PICK(NAME, LIST) \
            else BENCH_PICK(NAME, )                                         \
        }                                                                   \
    };
SWEEP_FORM(CholeskyDecomp_m, )
SWEEP_FORM(CholeskyDecomp_ma, _L)
SWEEP_FORM(CholeskyBackSubst_mv, )
SWEEP_FORM(CholeskyBackSubst_mva, _L)
SWEEP_FORM(CholeskyBackSubst_mava, _L)
SWEEP_FORM(LUDecomp_m, )
SWEEP_FORM(LUDecomp_ma, _L)
SWEEP_FORM(LUBackSubst_mv, )
SWEEP_FORM(LUBackSubst_mva, _L)
SWEEP_FORM(LUBackSubst_mava, _L)
SWEEP_FORM(QRDecomp_m, )
SWEEP_FORM(QRDecomp_ma, _L)
SWEEP_FORM(QRBackSubst_mv, )
SWEEP_FORM(QRBackSubst_mva, _L)
SWEEP_FORM(QRBackSubst_mava, _L)

// --- Plain loops --------------------------------------------------------------------------------

struct Cholesky {
    using Single = CholeskyDecomp_m;
    using Array = CholeskyDecomp_ma;
    using SingleSolve = CholeskyBackSubst_mv;
    using OneForAll = CholeskyBackSubst_mva;
    using OneForEach = CholeskyBackSubst_mava;

    static auto decomposition(const auto& s) {
        return std::tuple_cat(s.matrixArguments(s.matrix), s.matrixArguments(s.factor), std::tuple(s.height));
    }
    static auto solve(const auto& s) {
        return std::tuple_cat(s.matrixArguments(s.factor), s.vectorArguments(s.side), s.vectorArguments(s.solution),
                              std::tuple(s.height));
    }

    template <class S>
    [[gnu::noinline]] static void decompose(const S& s) {
        const auto a = s.elements(s.matrix), f = s.elements(s.factor);
        for (std::ptrdiff_t k = 0; k < s.count; ++k)
            for (std::ptrdiff_t j = 0; j < s.height; ++j)
                for (std::ptrdiff_t i = 0; i <= j; ++i) {
                    auto sum = a(k, j, i);
                    for (std::ptrdiff_t l = 0; l < i; ++l) sum -= f(k, j, l) * f(k, i, l);
                    f(k, j, i) = i < j ? sum * f(k, i, i) : 1 / std::sqrt(sum);
                }
    }
    template <class S>
    [[gnu::noinline]] static void substitute(const S& s) {
        const auto f = s.elements(s.factor);
        const auto b = s.vectors(s.side, s.height), x = s.vectors(s.solution, s.width);
        for (std::ptrdiff_t k = 0; k < s.count; ++k) {
            for (std::ptrdiff_t j = 0; j < s.height; ++j) {
                auto sum = b(k, 0, j);
                for (std::ptrdiff_t l = 0; l < j; ++l) sum -= f(k, j, l) * x(k, 0, l);
                x(k, 0, j) = sum * f(k, j, j);
            }
            for (std::ptrdiff_t j = s.height - 1; j >= 0; --j) {
                auto sum = x(k, 0, j);
                for (std::ptrdiff_t l = j + 1; l < s.height; ++l) sum -= f(k, l, j) * x(k, 0, l);
                x(k, 0, j) = sum * f(k, j, j);
            }
        }
    }
};

struct Lu {
    using Single = LUDecomp_m;
    using Array = LUDecomp_ma;
    using SingleSolve = LUBackSubst_mv;
    using OneForAll = LUBackSubst_mva;
    using OneForEach = LUBackSubst_mava;

    static auto decomposition(const auto& s) {
        return std::tuple_cat(s.matrixArguments(s.matrix), std::tuple(s.pivots), s.matrixArguments(s.factor),
                              std::tuple(s.height));
    }
    static auto solve(const auto& s) {
        return std::tuple_cat(s.matrixArguments(s.factor), std::tuple(s.pivots), s.vectorArguments(s.side),
                              s.vectorArguments(s.solution), std::tuple(s.height));
    }

    template <class S>
    [[gnu::noinline]] static void decompose(const S& s) {
        const auto a = s.elements(s.matrix), f = s.elements(s.factor);
        const std::ptrdiff_t n = s.height;
        for (std::ptrdiff_t k = 0; k < s.count; ++k) {
            std::int32_t* const row = s.pivotsOf(k);
            for (std::ptrdiff_t i = 0; i < n; ++i) {
                row[i] = static_cast<std::int32_t>(i);
                for (std::ptrdiff_t j = 0; j < n; ++j) f(k, i, j) = a(k, i, j);
            }
            for (std::ptrdiff_t p = 0; p < n; ++p) {
                std::ptrdiff_t best = p;
                for (std::ptrdiff_t i = p + 1; i < n; ++i)
                    if (std::fabs(f(k, row[i], p)) > std::fabs(f(k, row[best], p))) best = i;
                std::swap(row[p], row[best]);
                const auto scale = 1 / f(k, row[p], p);
                for (std::ptrdiff_t i = p + 1; i < n; ++i) {
                    const auto multiplier = f(k, row[i], p) *= scale;
                    for (std::ptrdiff_t j = p + 1; j < n; ++j) f(k, row[i], j) -= multiplier * f(k, row[p], j);
                }
            }
        }
    }
    template <class S>
    [[gnu::noinline]] static void substitute(const S& s) {
        const auto f = s.elements(s.factor);
        const auto b = s.vectors(s.side, s.height), x = s.vectors(s.solution, s.width);
        const std::ptrdiff_t n = s.height;
        for (std::ptrdiff_t k = 0; k < s.count; ++k) {
            const std::int32_t* const row = s.pivotsOf(k);
            for (std::ptrdiff_t j = 0; j < n; ++j) {
                auto sum = b(k, 0, row[j]);
                for (std::ptrdiff_t l = 0; l < j; ++l) sum -= f(k, row[j], l) * x(k, 0, l);
                x(k, 0, j) = sum;
            }
            for (std::ptrdiff_t j = n - 1; j >= 0; --j) {
                auto sum = x(k, 0, j);
                for (std::ptrdiff_t l = j + 1; l < n; ++l) sum -= f(k, row[j], l) * x(k, 0, l);
                x(k, 0, j) = sum / f(k, row[j], j);
            }
        }
    }
};

struct Qr {
    using Single = QRDecomp_m;
    using Array = QRDecomp_ma;
    using SingleSolve = QRBackSubst_mv;
    using OneForAll = QRBackSubst_mva;
    using OneForEach = QRBackSubst_mava;

    static auto decomposition(const auto& s) {
        return std::tuple_cat(s.matrixArguments(s.matrix), std::tuple(s.buffer), s.matrixArguments(s.factor),
                              std::tuple(s.width, s.height));
    }
    static auto solve(const auto& s) {
        return std::tuple_cat(s.matrixArguments(s.factor), std::tuple(s.buffer), s.vectorArguments(s.side),
                              s.vectorArguments(s.solution), std::tuple(s.width, s.height));
    }

    static std::ptrdiff_t reflections(const auto& s) { return s.width < s.height ? s.width : s.width - 1; }

    template <class S>
    [[gnu::noinline]] static void decompose(const S& s) {
        const auto a = s.elements(s.matrix), f = s.elements(s.factor);
        for (std::ptrdiff_t k = 0; k < s.count; ++k) {
            for (std::ptrdiff_t i = 0; i < s.height; ++i)
                for (std::ptrdiff_t j = 0; j < s.width; ++j) f(k, i, j) = a(k, i, j);
            for (std::ptrdiff_t j = 0; j < reflections(s); ++j) {
                auto square = f(k, j, j) * f(k, j, j);
                for (std::ptrdiff_t i = j + 1; i < s.height; ++i) square += f(k, i, j) * f(k, i, j);
                const auto norm = std::sqrt(square), diagonal = f(k, j, j);
                const auto scale = 1 / (diagonal > 0 ? diagonal + norm : diagonal - norm);
                auto t = diagonal;
                square = 1;
                for (std::ptrdiff_t i = j + 1; i < s.height; ++i) {
                    const auto v = f(k, i, j) * scale;
                    square += v * v;
                    t += f(k, i, j) * v;
                    f(k, i, j) = v;
                }
                const auto beta = -2 / square;
                f(k, j, j) += t * beta;
                for (std::ptrdiff_t c = j + 1; c < s.width; ++c) {
                    t = f(k, j, c);
                    for (std::ptrdiff_t i = j + 1; i < s.height; ++i) t += f(k, i, j) * f(k, i, c);
                    t *= beta;
                    f(k, j, c) += t;
                    for (std::ptrdiff_t i = j + 1; i < s.height; ++i) f(k, i, c) += t * f(k, i, j);
                }
            }
        }
    }
    template <class S>
    [[gnu::noinline]] static void substitute(const S& s) {
        const auto f = s.elements(s.factor);
        const auto b = s.vectors(s.side, s.height), x = s.vectors(s.solution, s.width);
        auto* const work = s.buffer;
        for (std::ptrdiff_t k = 0; k < s.count; ++k) {
            for (std::ptrdiff_t i = 0; i < s.height; ++i) work[i] = b(k, 0, i);
            for (std::ptrdiff_t j = 0; j < reflections(s); ++j) {
                auto t = work[j], square = work[j];
                square = 1;
                for (std::ptrdiff_t i = j + 1; i < s.height; ++i) {
                    square += f(k, i, j) * f(k, i, j);
                    t += f(k, i, j) * work[i];
                }
                t *= -2 / square;
                work[j] += t;
                for (std::ptrdiff_t i = j + 1; i < s.height; ++i) work[i] += t * f(k, i, j);
            }
            for (std::ptrdiff_t j = s.width - 1; j >= 0; --j) {
                auto sum = work[j];
                for (std::ptrdiff_t l = j + 1; l < s.width; ++l) sum -= f(k, j, l) * x(k, 0, l);
                x(k, 0, j) = sum / f(k, j, j);
            }
        }
    }
};

// --- Rows ---------------------------------------------------------------------------------------

template <class Form, class T, Layout layout, class S, class Arguments>
void measureRow(const std::string& name, const S& systems, const Operand<T>& result, const Arguments& arguments,
                void (*loop)(const S&)) {
    Row row(name, systems.count);
    row.results(result.base, result.span, 1e4 * Eigen::NumTraits<T>::epsilon());
    row.korm([=] { std::apply(Form::template function<T, S::entry>(), arguments); });
    row.peer("plain loop, sizes at run time", [=] { loop(systems); });
    row.measure();
}

template <class Form, class T, Layout layout>
std::string sweepName(std::int32_t height, std::int32_t width, bool isSquare) {
    const std::string size = isSquare ? std::to_string(width) : std::to_string(height) + "x" + std::to_string(width);
    return "sweep/" + std::string(Form::name) + suffix<T> + "/" + size + "/" + std::string(nameOf(layout));
}

template <class Factorisation, class T, Layout layout, bool isArray>
void sweepDecomposition(std::int32_t height, std::int32_t width, bool isSquare) {
    using Form = std::conditional_t<isArray, typename Factorisation::Array, typename Factorisation::Single>;
    const std::string name = sweepName<Form, T, layout>(height, width, isSquare);
    if (!isWanted(name)) return;
    using S = Systems<T, layout, isArray, false>;
    const S s(height, width);
    measureRow<Form, T, layout>(name, s, s.factor, std::tuple_cat(Factorisation::decomposition(s), s.countArgument()),
                                Factorisation::template decompose<S>);
}

template <class Factorisation, class Form, class T, Layout layout, bool isArray, bool oneMatrix>
void sweepSolve(std::int32_t height, std::int32_t width, bool isSquare) {
    const std::string name = sweepName<Form, T, layout>(height, width, isSquare);
    if (!isWanted(name)) return;
    using S = Systems<T, layout, isArray, oneMatrix>;
    const S s(height, width);
    Factorisation::decompose(s);
    measureRow<Form, T, layout>(name, s, s.solution, std::tuple_cat(Factorisation::solve(s), s.countArgument()),
                                Factorisation::template substitute<S>);
}

template <class F, class T, Layout layout>
void sweepArrays(std::int32_t height, std::int32_t width, bool isSquare) {
    sweepDecomposition<F, T, layout, true>(height, width, isSquare);
    sweepSolve<F, typename F::OneForEach, T, layout, true, false>(height, width, isSquare);
    sweepSolve<F, typename F::OneForAll, T, layout, true, true>(height, width, isSquare);
}

template <class F, class T, Layout layout>
void sweepSingles(std::int32_t height, std::int32_t width, bool isSquare) {
    sweepDecomposition<F, T, layout, false>(height, width, isSquare);
    sweepSolve<F, typename F::SingleSolve, T, layout, false, false>(height, width, isSquare);
}

template <class F, class T>
void sweepLayouts(std::int32_t height, std::int32_t width, bool isSquare) {
    using enum Layout;
    sweepSingles<F, T, packed>(height, width, isSquare);
    sweepSingles<F, T, strided>(height, width, isSquare);
    sweepSingles<F, T, pointers>(height, width, isSquare);
    sweepArrays<F, T, packed>(height, width, isSquare);
    sweepArrays<F, T, strided>(height, width, isSquare);
    sweepArrays<F, T, list>(height, width, isSquare);
    sweepArrays<F, T, streams>(height, width, isSquare);
    sweepArrays<F, T, pointers>(height, width, isSquare);
}

template <class T>
void sweepSizes() {
    for (std::int32_t n = 1; n <= 24; ++n) sweepLayouts<Cholesky, T>(n, n, true);
    for (std::int32_t n = 1; n <= 24; ++n) sweepLayouts<Lu, T>(n, n, true);
    for (std::int32_t height = 1; height <= 16; ++height)
        for (std::int32_t width = 1; width <= height; ++width) sweepLayouts<Qr, T>(height, width, false);
}

}  // namespace

void measureSweeps() {
    sweepSizes<float>();
    sweepSizes<double>();
}

}  // namespace bench
