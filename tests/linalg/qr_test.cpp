// QR decomposition and the solve with it: what they mean, the limit, what a failure leaves, arrays against single objects.
#include <cmath>
#include <vector>

#include "../reference/linalg/qr.h"
#include "linalg_test.h"

namespace kormtest {
namespace {

struct Size {
    std::int32_t height, width;
};
constexpr Size sizesOfAllPaths[] = {{1, 1},  {2, 1},   {3, 1},  {2, 2},   {3, 2},   {3, 3},   {4, 3},  {4, 4},
                                    {5, 5},  {6, 6},   {6, 4},  {7, 7},   {8, 8},   {9, 8},   {9, 9},  {10, 5},
                                    {16, 8}, {17, 17}, {33, 3}, {24, 12}, {33, 33}, {130, 2}, {40, 30}};

Sizes sizesOf(Size size, std::int32_t count) {
    Sizes sizes;
    sizes.height = size.height;
    sizes.width = size.width;
    sizes.count = count;
    return sizes;
}

template <class T>
Rectangle<T> ordinary(Size size, Random& random) {
    Rectangle<T> a(size.height, size.width);
    const Square<T> elements = ordinary<T>(size.height, random);
    for (std::int32_t i = 0; i < size.height; ++i)
        for (std::int32_t j = 0; j < size.width; ++j) a(i, j) = elements(i, j);
    return a;
}

// Ones on the diagonal.
template <class T>
Rectangle<T> unit(Size size, T scale = 1) {
    Rectangle<T> a(size.height, size.width);
    for (std::int32_t j = 0; j < size.width; ++j) a(j, j) = scale;
    return a;
}

template <class T>
void set(DenseCall& call, const char* operand, std::int32_t k, const Rectangle<T>& a) {
    for (std::int32_t i = 0; i < a.height(); ++i)
        for (std::int32_t j = 0; j < a.width(); ++j) call.set<T>(operand, k, i, j, a(i, j));
}

template <class T>
Rectangle<T> get(const DenseCall& call, const char* operand, std::int32_t k) {
    Rectangle<T> a(call.sizes().height, call.sizes().width);
    for (std::int32_t i = 0; i < a.height(); ++i)
        for (std::int32_t j = 0; j < a.width(); ++j) a(i, j) = call.get<T>(operand, k, i, j);
    return a;
}

// Reflection j of a decomposition, applied to a vector.
template <class T>
void applyReflection(const Rectangle<T>& qr, std::int32_t j, std::vector<long double>& x) {
    const auto v = [&](std::int32_t i) { return i == j ? 1.0L : static_cast<long double>(qr(i, j)); };
    long double square = 0, product = 0;
    for (std::int32_t i = j; i < qr.height(); ++i) {
        square += v(i) * v(i);
        product += v(i) * x[static_cast<std::size_t>(i)];
    }
    for (std::int32_t i = j; i < qr.height(); ++i) x[static_cast<std::size_t>(i)] -= 2 * product / square * v(i);
}

template <class T>
constexpr T limitOfType = sizeof(T) == 4 ? T(0x1p-23) : T(0x1p-52);

class QRDecomp : public LinalgForm {};

// A = H(0) H(1) ... R, column by column, within a few roundings of the column's length.
TEST_P(QRDecomp, ReflectionsOfRAreTheMatrix) {
    Random random(1);
    byType(form(), [&](auto zero) {
        using T = decltype(zero);
        for (const Size size : sizesOfAllPaths) {
            for (const std::int32_t spread : spreadsOf(form())) {
                const std::int32_t objects = count(5);
                DenseCall call(form(), sizesOf(size, objects), spread);
                std::vector<Rectangle<T>> sources;
                for (std::int32_t k = 0; k < objects; ++k) {
                    sources.push_back(ordinary<T>(size, random));
                    set(call, "src", k, sources.back());
                }
                ASSERT_EQ(call.call(), status::ok);
                for (std::int32_t k = 0; k < objects; ++k) {
                    const Rectangle<T> qr = get<T>(call, "dst", k), &source = sources[static_cast<std::size_t>(k)];
                    for (std::int32_t c = 0; c < size.width; ++c) {
                        std::vector<long double> x(static_cast<std::size_t>(size.height));
                        long double length = 0;
                        for (std::int32_t i = 0; i < size.height; ++i) {
                            if (i <= c) x[static_cast<std::size_t>(i)] = static_cast<long double>(qr(i, c));
                            length += std::pow(static_cast<long double>(source(i, c)), 2.0L);
                        }
                        for (std::int32_t j = qr.reflections() - 1; j >= 0; --j) applyReflection(qr, j, x);
                        const long double bound = (size.height + size.width + 4) * std::sqrt(length) *
                                                  static_cast<long double>(std::numeric_limits<T>::epsilon());
                        for (std::int32_t i = 0; i < size.height; ++i)
                            ASSERT_LE(
                                std::fabs(x[static_cast<std::size_t>(i)] - static_cast<long double>(source(i, c))),
                                bound)
                                << size.height << " by " << size.width << " at " << i << ", " << c;
                    }
                }
            }
        }
    });
}

// A column whose square is the limit passes, one just below doesn't; the last column of a square matrix is never tested.
TEST_P(QRDecomp, FailsBelowTheLimit) {
    byType(form(), [&](auto zero) {
        using T = decltype(zero);
        // 2^-12 twice, or 2^-26: the squares add up to 2^-23, 2^-52.
        const T side = sizeof(T) == 4 ? T(0x1p-12) : T(0x1p-26), other = sizeof(T) == 4 ? side : T(0);
        ASSERT_EQ(side * side + other * other, limitOfType<T>);
        for (const Size size : sizesOfAllPaths) {
            for (std::int32_t column = 0; column < size.width; ++column) {
                const bool tested = column < size.width - 1 || size.width < size.height;
                for (const std::int32_t spread : spreadsOf(form())) {
                    for (const auto& [value, passes] : {std::pair{std::nextafter(side, T(0)), false}, {side, true}}) {
                        for (const T sign : {T(1), T(-1)}) {
                            const std::int32_t objects = count(4);
                            DenseCall call(form(), sizesOf(size, objects), spread);
                            for (std::int32_t k = 0; k < objects; ++k) {
                                Rectangle<T> a = unit<T>(size);
                                if (k == objects - 1) {
                                    a(column, column) = sign * value;
                                    if (column + 1 < size.height) a(column + 1, column) = other;
                                }
                                set(call, "src", k, a);
                            }
                            ASSERT_EQ(call.call(), passes || !tested ? status::ok : status::divideByZero)
                                << size.height << " by " << size.width << ", column " << column << ", value " << value;
                        }
                    }
                }
            }
        }
    });
}

TEST_P(QRDecomp, LeavesTheReflectionsBeforeAFailure) {
    byType(form(), [&](auto zero) {
        using T = decltype(zero);
        for (const std::int32_t spread : spreadsOf(form())) {
            // An empty first column: a copy.
            DenseCall call(form(), sizesOf({4, 3}, 1), spread);
            Rectangle<T> a(4, 3);
            for (std::int32_t i = 0; i < 4; ++i) a(i, 1) = static_cast<T>(i + 1), a(i, 2) = static_cast<T>(7 - i);
            set(call, "src", 0, a);
            ASSERT_EQ(call.call(), status::divideByZero);
            for (std::int32_t i = 0; i < 4; ++i)
                for (std::int32_t j = 0; j < 3; ++j) EXPECT_EQ(call.get<T>("dst", 0, i, j), a(i, j));
            // (3, 4) has length 5: d = 8, v = (1, 1/2), beta = -8/5. The second column is twice the first.
            DenseCall next(form(), sizesOf({3, 2}, 1), spread);
            Rectangle<T> b(3, 2);
            b(0, 0) = 3;
            b(1, 0) = 4;
            b(0, 1) = 6;
            b(1, 1) = 8;
            set(next, "src", 0, b);
            ASSERT_EQ(next.call(), status::divideByZero);
            const T beta = T(-2) / T(1.25), t = T(10) * beta;
            EXPECT_EQ(next.get<T>("dst", 0, 0, 0), T(3) + T(5) * beta);
            EXPECT_EQ(next.get<T>("dst", 0, 0, 1), T(6) + t);
            EXPECT_EQ(next.get<T>("dst", 0, 1, 0), T(0.5));
            EXPECT_EQ(next.get<T>("dst", 0, 1, 1), T(8) + T(0.5) * t);
            EXPECT_EQ(next.get<T>("dst", 0, 2, 0), T(0));
        }
    });
}

TEST_P(QRDecomp, SmallExamples) {
    byType(form(), [&](auto zero) {
        using T = decltype(zero);
        for (const std::int32_t spread : spreadsOf(form())) {
            // Order 1 has no reflection, whatever the element.
            DenseCall one(form(), sizesOf({1, 1}, 1), spread);
            one.set<T>("src", 0, 0, 0, T(0));
            EXPECT_EQ(one.call(), status::ok);
            EXPECT_EQ(one.get<T>("dst", 0, 0, 0), T(0));
            DenseCall column(form(), sizesOf({3, 1}, 1), spread);
            set(column, "src", 0, Rectangle<T>(3, 1));
            EXPECT_EQ(column.call(), status::divideByZero);
            // Of a diagonal element of zero the negative sign is chosen, so that R has the length itself.
            for (const auto& [alpha, sign] : {std::pair{T(0), T(1)}, {T(-0.0), T(1)}, {T(-3), T(1)}, {T(3), T(-1)}}) {
                Rectangle<T> a(3, 1);
                a(0, 0) = alpha;
                a(1, 0) = 4;
                set(column, "src", 0, a);
                ASSERT_EQ(column.call(), status::ok);
                const T length = alpha == T(0) ? T(4) : T(5);
                EXPECT_NEAR(static_cast<double>(column.get<T>("dst", 0, 0, 0)), static_cast<double>(sign * length),
                            1e-5);
            }
            // A NaN is no failure.
            Rectangle<T> a(3, 1);
            a(1, 0) = std::numeric_limits<T>::quiet_NaN();
            set(column, "src", 0, a);
            EXPECT_EQ(column.call(), status::ok);
            EXPECT_TRUE(std::isnan(column.get<T>("dst", 0, 0, 0)));
        }
    });
}

TEST_P(QRDecomp, ASerialCallStopsAtTheFirstFailure) {
    if (!form().array) return;
    byType(form(), [&](auto zero) {
        using T = decltype(zero);
        for (const Size size : {Size{2, 2}, {4, 3}, {6, 6}, {16, 8}, {40, 30}}) {
            for (std::int32_t failing = 0; failing < 9; ++failing) {
                for (const std::int32_t spread : spreadsOf(form())) {
                    DenseCall call(form(), sizesOf(size, 9), spread);
                    for (std::int32_t k = 0; k < 9; ++k)
                        set(call, "src", k,
                            k == failing ? Rectangle<T>(size.height, size.width) : unit<T>(size, T(k + 1)));
                    const T pattern = call.get<T>("dst", 0, 0, 0);
                    ASSERT_EQ(call.call(), status::divideByZero);
                    for (std::int32_t k = 0; k < 9; ++k) {
                        const T first = call.get<T>("dst", k, 0, 0);
                        const T wanted = k < failing ? T(-k - 1) : k == failing ? T(0) : pattern;
                        ASSERT_TRUE(sameBits(first, wanted))
                            << size.height << ", failing " << failing << ", object " << k;
                    }
                }
            }
        }
    });
}

INSTANTIATE_TEST_SUITE_P(Forms, QRDecomp, testing::ValuesIn(formsOf("QRDecomp")), formName);

// --- Solve --------------------------------------------------------------------------------------

class QRBackSubst : public LinalgForm {
protected:
    bool oneMatrix() const { return !form().operands[0].array; }
};

// What is left of the right-hand side is orthogonal to all columns; of a square system nothing is left.
TEST_P(QRBackSubst, SolvesByLeastSquares) {
    Random random(2);
    byType(form(), [&](auto zero) {
        using T = decltype(zero);
        for (const Size size : sizesOfAllPaths) {
            for (const std::int32_t spread : spreadsOf(form())) {
                const std::int32_t objects = count(21);
                DenseCall call(form(), sizesOf(size, objects), spread);
                std::vector<Rectangle<T>> sources, sides;
                for (std::int32_t k = 0; k < objects; ++k) {
                    Rectangle<T> a = ordinary<T>(size, random);
                    for (std::int32_t j = 0; j < size.width; ++j)
                        a(j, j) += std::copysign(static_cast<T>(2 * size.height), a(j, j));
                    if (k > 0 && oneMatrix()) a = sources[0];
                    sources.push_back(a);
                    Rectangle<T> qr = a;
                    ASSERT_EQ(reflectColumns(qr, false), status::ok);
                    if (k == 0 || !oneMatrix()) set(call, "src1", k, qr);
                    sides.push_back(ordinary<T>({size.height, 1}, random));
                    for (std::int32_t i = 0; i < size.height; ++i) call.set<T>("src2", k, 0, i, sides.back()(i, 0));
                }
                ASSERT_EQ(call.call(), status::ok);
                for (std::int32_t k = 0; k < objects; ++k) {
                    const Rectangle<T>& a = sources[static_cast<std::size_t>(k)];
                    const auto x = [&](std::int32_t j) {
                        return static_cast<long double>(call.get<T>("dst", k, 0, j));
                    };
                    std::vector<long double> left;
                    long double matrixSquare = 0, sideSquare = 0, solutionSquare = 0;
                    for (std::int32_t i = 0; i < size.height; ++i) {
                        left.push_back(static_cast<long double>(sides[static_cast<std::size_t>(k)](i, 0)));
                        sideSquare += left.back() * left.back();
                        for (std::int32_t j = 0; j < size.width; ++j) {
                            const auto element = static_cast<long double>(a(i, j));
                            matrixSquare += element * element;
                            left.back() -= element * x(j);
                        }
                    }
                    for (std::int32_t j = 0; j < size.width; ++j) solutionSquare += x(j) * x(j);
                    const long double length = std::sqrt(matrixSquare);
                    const long double bound = 4 * (size.height + size.width) * length *
                                              (std::sqrt(sideSquare) + length * std::sqrt(solutionSquare)) *
                                              static_cast<long double>(std::numeric_limits<T>::epsilon());
                    for (std::int32_t j = 0; j < size.width; ++j) {
                        long double product = 0;
                        for (std::int32_t i = 0; i < size.height; ++i)
                            product += left[static_cast<std::size_t>(i)] * static_cast<long double>(a(i, j));
                        ASSERT_LE(std::fabs(product), bound) << size.height << " by " << size.width << ", object " << k;
                    }
                }
            }
        }
    });
}

TEST_P(QRBackSubst, DividesByWhateverTheDiagonalHolds) {
    byType(form(), [&](auto zero) {
        using T = decltype(zero);
        for (const std::int32_t n : {1, 2, 3, 4, 6, 7, 9}) {
            const std::int32_t objects = count(9);
            DenseCall call(form(), sizesOf({n, n}, objects));
            for (std::int32_t k = 0; k < objects; ++k) {
                Rectangle<T> qr = unit<T>({n, n});
                qr(n - 1, n - 1) = 0;
                if (k == 0 || !oneMatrix()) set(call, "src1", k, qr);
                for (std::int32_t i = 0; i < n; ++i) call.set<T>("src2", k, 0, i, T(1));
            }
            ASSERT_EQ(call.call(), status::ok);
            for (std::int32_t k = 0; k < objects; ++k) EXPECT_TRUE(std::isinf(call.get<T>("dst", k, 0, n - 1))) << n;
        }
    });
}

TEST_P(QRBackSubst, OfSquareOrders3To6LeavesScratchAlone) {
    byType(form(), [&](auto zero) {
        using T = decltype(zero);
        for (const std::int32_t n : {3, 4, 5, 6}) {
            for (const std::int32_t spread : spreadsOf(form())) {
                for (const std::int32_t objects : {1, 2, 21}) {
                    DenseCall call(form(), sizesOf({n, n}, count(objects)), spread);
                    for (std::int32_t k = 0; k < count(objects); ++k) {
                        if (k == 0 || !oneMatrix()) set(call, "src1", k, unit<T>({n, n}));
                        for (std::int32_t i = 0; i < n; ++i) call.set<T>("src2", k, 0, i, T(i));
                    }
                    const std::vector<std::byte> before = call.memory("buffer");
                    ASSERT_EQ(call.call(), status::ok);
                    EXPECT_TRUE(call.memory("buffer") == before) << n << ", " << objects << " objects";
                }
            }
        }
    });
}

INSTANTIATE_TEST_SUITE_P(Forms, QRBackSubst, testing::ValuesIn(formsOf("QRBackSubst")), formName);

// --- Both ---------------------------------------------------------------------------------------

class QRArrays : public LinalgForm {};

// Lanes take the steps of the definition, in arrays that fill them and in what is left over.
TEST_P(QRArrays, GiveTheBitsOfTheReference) {
    Random random(4);
    byType(form(), [&](auto zero) {
        using T = decltype(zero);
        const bool solves = form().operationWord == "QRBackSubst";
        for (const Size size : sizesOfAllPaths) {
            for (const std::int32_t spread : spreadsOf(form())) {
                const bool inEights = form().layout != Layout::pointer && spread == 1;
                const std::int32_t objects = random.pick({4, 9, 21});
                DenseCall call(form(), sizesOf(size, objects), spread,
                               static_cast<std::size_t>(random.pick({0, 4, 8, 12})));
                std::vector<Rectangle<T>> wanted;
                for (std::int32_t k = 0; k < objects; ++k) {
                    Rectangle<T> a = ordinary<T>(size, random);
                    set(call, solves ? "src1" : "src", k, a);
                    if (!solves) {
                        ASSERT_EQ(reflectColumns(a, inEights), status::ok);
                        wanted.push_back(a);
                        continue;
                    }
                    const Rectangle<T> side = ordinary<T>({size.height, 1}, random);
                    for (std::int32_t i = 0; i < size.height; ++i) call.set<T>("src2", k, 0, i, side(i, 0));
                }
                for (std::int32_t k = 0; solves && k < objects; ++k) {
                    std::vector<T> side(static_cast<std::size_t>(size.height));
                    for (std::int32_t i = 0; i < size.height; ++i)
                        side[static_cast<std::size_t>(i)] = call.get<T>("src2", k, 0, i);
                    const auto x = solveReflected(get<T>(call, "src1", k), side, inEights);
                    wanted.emplace_back(1, size.width);
                    for (std::int32_t j = 0; j < size.width; ++j) wanted.back()(0, j) = x[static_cast<std::size_t>(j)];
                }
                ASSERT_EQ(call.call(), status::ok);
                for (std::int32_t k = 0; k < objects; ++k) {
                    const Rectangle<T>& one = wanted[static_cast<std::size_t>(k)];
                    for (std::int32_t i = 0; i < one.height(); ++i)
                        for (std::int32_t j = 0; j < one.width(); ++j)
                            ASSERT_TRUE(sameBits(call.get<T>("dst", k, i, j), one(i, j)))
                                << size.height << " by " << size.width << ", object " << k << " of " << objects
                                << ", element " << i << ", " << j;
                }
            }
        }
    });
}

// A team works in scratch of its own.
TEST_P(QRArrays, ATeamLeavesTheCallersBufferAlone) {
    byType(form(), [&](auto zero) {
        using T = decltype(zero);
        const bool solves = form().operationWord == "QRBackSubst";
        const Size size{33, 33};
        DenseCall call(form(), sizesOf(size, 30));
        for (std::int32_t k = 0; k < 30; ++k) {
            set(call, solves ? "src1" : "src", k, k == 17 ? Rectangle<T>(33, 33) : unit<T>(size));
            for (std::int32_t i = 0; solves && i < 33; ++i) call.set<T>("src2", k, 0, i, T(i));
        }
        const std::vector<std::byte> before = call.memory("buffer");
        const T untouched = call.get<T>("dst", 0, 0, 0);
        scriptThreadNumbers({3});
        EXPECT_EQ(call.call(), solves ? status::ok : status::divideByZero);
        EXPECT_EQ(threadNumberQuestions(), 2);
        EXPECT_TRUE(call.memory("buffer") == before);
        // A run stops at its failure, the others don't.
        for (const std::int32_t k : {0, 10, 16, 20, 29}) EXPECT_FALSE(sameBits(call.get<T>("dst", k, 0, 0), untouched));
        EXPECT_EQ(sameBits(call.get<T>("dst", 18, 0, 0), untouched), !solves);
    });
}

std::vector<std::size_t> arrayForms() {
    std::vector<std::size_t> result;
    for (const char* operation : {"QRDecomp", "QRBackSubst"})
        for (const std::size_t form : formsOf(operation))
            if (allForms()[form].array) result.push_back(form);
    return result;
}

INSTANTIATE_TEST_SUITE_P(Forms, QRArrays, testing::ValuesIn(arrayForms()), formName);

}  // namespace
}  // namespace kormtest
