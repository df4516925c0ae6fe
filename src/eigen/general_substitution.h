// General eigenproblems: eigenvectors of a quasi-triangular matrix, and from them those of the matrix it came from.
#pragma once

#include <cstddef>
#include <cstdint>

#include "eigen/general_hessenberg.h"
#include "eigen/general_solve.h"
#include "korm.h"

namespace korm::inline KORM_VARIANT::eigen {

// How a substitution ended: a system whose coefficients are all tiny ends it, and no vector is delivered.
enum class Ending { done, noConvergence, nearSingular, nearSingularComplex };

// The right or the left eigenvectors of t, all of which take the place of columns of w, whose columns are the Schur vectors.
// A vector of a complex eigenvalue is two columns, real and imaginary part.
template <class P>
struct Substitution {
    using S = typename P::Scalar;
    using L = Limits<typename P::Element>;
    using C = Complex<S>;

    Columns<P> t, w;
    Strip<P> norms;   // of the columns of t above the diagonal
    Strip<P> re, im;  // the vector, and while it isn't complete, right-hand sides

    // --- What it works on ---

    // Does a block of order 2 begin in row i?
    bool isPair(std::ptrdiff_t i) const { return i >= 0 && i + 1 < t.n && magnitude(t(i + 1, i)) > S(L::negligible); }

    template <class U>
    [[gnu::always_inline]] U get(std::ptrdiff_t i) const {
        if constexpr (isComplex<U>) return {re[i], im[i]};
        else return re[i];
    }
    [[gnu::always_inline]] void set(std::ptrdiff_t i, S x) const { re.set(i, x); }
    [[gnu::always_inline]] void set(std::ptrdiff_t i, C x) const {
        re.set(i, x.re);
        im.set(i, x.im);
    }

    template <class U>
    void scale(std::ptrdiff_t first, std::ptrdiff_t end, S factor) const {
        for (std::ptrdiff_t i = first; i < end; ++i) set(i, factor * get<U>(i));
    }

    void addUpColumns() const {
        for (std::ptrdiff_t j = 0; j < t.n; ++j) {
            const Strip<P> column = t.column(j);
            norms.set(j, adjacentSum<S>(j, [&](std::ptrdiff_t i) { return magnitude(column[i]); }));
        }
    }

    // The eigenvalue of the block that begins in row i: of a pair the one with the positive imaginary part.
    template <class U>
    U eigenvalue(std::ptrdiff_t i) const {
        if constexpr (isComplex<U>)
            return {t(i + 1, i + 1), squareRoot(magnitude(t(i + 1, i))) * squareRoot(magnitude(t(i, i + 1)))};
        else return t(i, i);
    }

    // Divisors below it count as that.
    template <class U>
    S leastDivisor(U eigenvalue) const {
        const S relative = S(L::epsilon) * sizeOf(eigenvalue), smallest = smallestNumber<P>(t.n);
        return relative > smallest ? relative : smallest;
    }

    // The greatest size that a norm of one of the columns allows.
    bool wouldOverflow(S size, S norm) const {
        const S largest = (1 - S(L::epsilon)) / smallestNumber<P>(t.n);
        return size > 1 && norm > largest / size;
    }

    // --- The block of order 2 that the vector belongs to ---

    // Its two elements, those that don't vanish: the real part of the first, the imaginary part of the second. `towards`
    // couples the first to the second, `back` the second to the first.
    void startPair(std::ptrdiff_t i, S towards, S back, S imaginary) const {
        const bool first = magnitude(towards) >= magnitude(back);
        set(i, C{first ? S(1) : -imaginary / back, 0});
        set(i + 1, C{0, first ? imaginary / towards : S(1)});
    }

    // Solves for the unknowns of the diagonal block that begins in row i; right-hand sides are read where the unknowns go.
    template <class U>
    Solution<U, S> solve(std::ptrdiff_t i, bool pair, bool transposed, U eigenvalue, S least) const {
        const U first = asUnknown<U>(t(i, i)) - eigenvalue;
        if (!pair) return solveOne<P>(first, get<U>(i), least);
        const U below = asUnknown<U>(t(i + 1, i)), above = asUnknown<U>(t(i, i + 1));
        const U c[4] = {first, transposed ? above : below, transposed ? below : above,
                        asUnknown<U>(t(i + 1, i + 1)) - eigenvalue};
        const U b[2] = {get<U>(i), get<U>(i + 1)};
        return solveTwo<P>(c, b, least);
    }

    template <class U>
    Ending nearSingular() const {
        return isComplex<U> ? Ending::nearSingularComplex : Ending::nearSingular;
    }

    // --- Right eigenvectors: upwards from the block that begins in row i ---

    template <class U>
    Ending right(std::ptrdiff_t i) const {
        const U value = eigenvalue<U>(i);
        const S least = leastDivisor(value);
        const std::ptrdiff_t end = isComplex<U> ? i + 2 : i + 1;
        if constexpr (isComplex<U>) {
            startPair(i, t(i, i + 1), t(i + 1, i), value.im);
            for (std::ptrdiff_t k = 0; k < i; ++k) set(k, C{-re[i] * t(k, i), -im[i + 1] * t(k, i + 1)});
        } else {
            set(i, S(1));
            for (std::ptrdiff_t k = 0; k < i; ++k) set(k, -t(k, i));
        }
        for (std::ptrdiff_t j = i - 1; j >= 0; --j) {
            const bool pair = isPair(j - 1);
            if (pair) --j;
            Solution<U, S> solution = solve<U>(j, pair, false, value, least);
            if (!solution.found) return nearSingular<U>();
            auto& [x, factor, found] = solution;
            const S size = pair ? greaterOf(sizeOf(x[0]), sizeOf(x[1])) : sizeOf(x[0]);
            if (wouldOverflow(size, pair ? greaterOf(norms[j], norms[j + 1]) : norms[j])) {
                const S down = 1 / size;
                x[0] = down * x[0];
                x[1] = down * x[1];
                factor *= down;
            }
            if (factor != 1) scale<U>(0, end, factor);
            set(j, x[0]);
            if (pair) set(j + 1, x[1]);
            for (std::ptrdiff_t k = 0; k < j; ++k) {
                U rest = get<U>(k) - t(k, j) * x[0];
                if (pair) rest = rest - t(k, j + 1) * x[1];
                set(k, rest);
            }
        }
        return finish<U>(i, 0, i, true);
    }

    // --- Left eigenvectors: downwards ---

    template <class U>
    Ending left(std::ptrdiff_t i) const {
        const U value = eigenvalue<U>(i);
        const S least = leastDivisor(value);
        const std::ptrdiff_t begin = isComplex<U> ? i + 2 : i + 1;
        if constexpr (isComplex<U>) {
            startPair(i, t(i + 1, i), t(i, i + 1), value.im);
            for (std::ptrdiff_t k = begin; k < t.n; ++k) set(k, C{-re[i] * t(i, k), -im[i + 1] * t(i + 1, k)});
        } else {
            set(i, S(1));
            for (std::ptrdiff_t k = begin; k < t.n; ++k) set(k, -t(i, k));
        }
        S greatest = 1;
        for (std::ptrdiff_t j = begin; j < t.n; ++j) {
            const bool pair = isPair(j);
            if (wouldOverflow(greatest, pair ? greaterOf(norms[j], norms[j + 1]) : norms[j])) {
                scale<U>(i, t.n, 1 / greatest);
                greatest = 1;
            }
            subtractProducts<U>(j, begin, j);
            if (pair) subtractProducts<U>(j + 1, begin, j);
            const Solution<U, S> solution = solve<U>(j, pair, true, value, least);
            if (!solution.found) return nearSingular<U>();
            if (solution.scale != 1) scale<U>(i, t.n, solution.scale);
            set(j, solution.x[0]);
            greatest = greaterOf(greatest, sizeOf(solution.x[0]));
            if (!pair) continue;
            set(++j, solution.x[1]);
            greatest = greaterOf(greatest, sizeOf(solution.x[1]));
        }
        return finish<U>(i, begin, t.n - begin, false);
    }

    // From the right-hand side j: the products of column j of t and the unknowns.
    template <class U>
    void subtractProducts(std::ptrdiff_t j, std::ptrdiff_t begin, std::ptrdiff_t end) const {
        const Strip<P> column = t.column(j);
        const auto products = [&](Strip<P> x) {
            return adjacentSum<S>(end - begin, [&](std::ptrdiff_t k) { return column[begin + k] * x[begin + k]; });
        };
        re.set(j, re[j] - products(re));
        if constexpr (isComplex<U>) im.set(j, im[j] - products(im));
    }

    // Columns of w from the complete vector, whose elements outside of the block are `count` from `first` on. Its greatest
    // element becomes 1.
    template <class U>
    Ending finish(std::ptrdiff_t i, std::ptrdiff_t first, std::ptrdiff_t count, bool mayVanish) const {
        const auto combine = [&](std::ptrdiff_t j, Strip<P> x) {
            const S own = x[j];
            const Strip<P> column = w.column(j);
            combineColumns(
                w, first, count, Strip<P>{x.address(first)}, [&](std::ptrdiff_t r) { return own * column[r]; },
                [&](std::ptrdiff_t r, S sum) { column.set(r, sum); });
        };
        combine(i, re);
        if constexpr (isComplex<U>) combine(i + 1, im);
        S greatest = 0;
        for (std::ptrdiff_t r = 0; r < w.n; ++r) {
            S size = magnitude(w(r, i));
            if constexpr (isComplex<U>) size += magnitude(w(r, i + 1));
            if (size > greatest) greatest = size;
        }
        if (mayVanish && S(L::epsilon) >= greatest) return Ending::noConvergence;
        const S factor = 1 / greatest;
        for (std::ptrdiff_t j = i; j <= (isComplex<U> ? i + 1 : i); ++j)
            for (std::ptrdiff_t r = 0; r < w.n; ++r) w.set(r, j, w(r, j) * factor);
        return Ending::done;
    }

    // Right eigenvectors from the last to the first: a vector needs the Schur vectors before its own.
    Ending allRight() const {
        for (std::ptrdiff_t i = t.n - 1; i >= 0; --i) {
            const bool pair = isPair(i - 1);
            const Ending ending = pair ? right<C>(--i) : right<S>(i);
            if (ending != Ending::done) return ending;
        }
        return Ending::done;
    }

    Ending allLeft() const {
        for (std::ptrdiff_t i = 0; i < t.n; ++i) {
            const bool pair = isPair(i);
            const Ending ending = pair ? left<C>(i++) : left<S>(i);
            if (ending != Ending::done) return ending;
        }
        return Ending::done;
    }
};

}  // namespace korm::inline KORM_VARIANT::eigen
