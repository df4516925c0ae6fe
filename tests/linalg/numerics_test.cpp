// What docs/numerics.md tells about the sums and limits of Cholesky and QR, read from its tables, is what the library
// computes, to the bit.
#include "../support/numerics_page.h"

#include <cmath>
#include <map>
#include <stdexcept>

#include "../reference/linalg/cholesky.h"
#include "../reference/linalg/qr.h"
#include "linalg_test.h"

namespace kormtest {
namespace {

// --- Sums as the page words them ---

enum class Order {
    oneByOne,
    blocks,              // of eight from the first term on
    blocksFromBoundary,  // single terms before them
    pairs,
};

Order orderOf(const std::string& words) {
    static const std::map<std::string, Order> orders = {
        {"subtracted one by one, `k` ascending", Order::oneByOne},
        {"subtracted one by one, `j` ascending in both sweeps", Order::oneByOne},
        {"one by one onto the start", Order::oneByOne},
        {"eight partial sums from the first term on, the rest one by one", Order::blocks},
        {"eight partial sums over whole blocks of 8, the first from the start, the others from +0; joined as in (8, "
         "8); "
         "then the rest one by one",
         Order::blocks},
        {"8 terms and more: single terms up to a 16-byte boundary of dst, then eight partial sums, the rest one by one",
         Order::blocksFromBoundary},
        {"2 terms and more: pairs in two partial sums, which are added, then the one that is left", Order::pairs},
    };
    return orders.at(words);
}

// What the row that begins with these words tells in a column.
const std::string& tells(const PageTable& table, const std::string& words, std::size_t column = 1) {
    for (const PageRow& row : table.rows)
        if (row.cells[0] == words) return row.cells.at(column);
    throw std::runtime_error("the page says nothing of " + words);
}

// start + sign * term(first) + ... + sign * term(end - 1); `prologue` terms lie before the boundary.
template <class T, class Term>
T sumAsTold(Order order, T start, T sign, std::int32_t first, std::int32_t end, std::int32_t prologue,
            const Term& term) {
    T sum = start;
    std::int32_t i = first;
    const auto add = [&](T& part) {
        part = part + sign * term(i);
        ++i;
    };
    if (order == Order::pairs && end - i >= 2) {
        T odd = 0;
        while (end - i >= 2) {
            add(sum);
            add(odd);
        }
        sum = sum + odd;
    }
    if (order == Order::blocksFromBoundary) {
        if (end - first - prologue < 8) order = Order::oneByOne;
        else
            while (i < first + prologue) add(sum);
    }
    if ((order == Order::blocks || order == Order::blocksFromBoundary) && end - i >= 8) {
        T p[8] = {sum};
        while (end - i >= 8)
            for (T& part : p) add(part);
        if constexpr (sizeof(T) == 4) sum = ((p[0] + p[4]) + (p[2] + p[6])) + ((p[1] + p[5]) + (p[3] + p[7]));
        else sum = ((p[0] + p[2]) + (p[4] + p[6])) + ((p[1] + p[3]) + (p[5] + p[7]));
    }
    while (i < end) add(sum);
    return sum;
}

// --- Cholesky ---

const PageTable& choleskySums() { return pageTable("sums", "order"); }

class NumericsOfCholesky : public LinalgForm {};

// Diagonals that outweigh their rows.
template <class T>
Square<T> definite(std::int32_t n, Random& random) {
    Square<T> a = ordinary<T>(n, random);
    for (std::int32_t i = 0; i < n; ++i) {
        a(i, i) = 1;
        for (std::int32_t j = 0; j < n; ++j)
            if (j != i) a(i, i) += std::fabs(a(i, j)) + std::fabs(a(j, i));
    }
    return a;
}

TEST_P(NumericsOfCholesky, DecompositionIsAsTold) {
    if (form().operationWord != "CholeskyDecomp") return;
    const Order few = orderOf(tells(choleskySums(), "decomposition, fewer than 8 terms"));
    const Order many = orderOf(tells(choleskySums(), "decomposition, 8 terms and more"));
    Random random(1);
    byType(form(), [&](auto zero) {
        using T = decltype(zero);
        for (std::int32_t n = 1; n <= 26; ++n) {
            for (const std::int32_t spread : spreadsOf(form())) {
                DenseCall call(form(), squareSizes(n, count(5)), spread);
                std::vector<Square<T>> factors;
                for (std::int32_t k = 0; k < count(5); ++k) {
                    factors.push_back(definite<T>(n, random));
                    setMatrix(call, "src", k, factors.back());
                }
                ASSERT_EQ(call.call(), status::ok);
                CholeskyRules rules;
                rules.refinesInFours = choleskyGoesInFours(form(), spread == 1, n);
                for (std::int32_t k = 0; k < count(5); ++k) {
                    Square<T>& a = factors[static_cast<std::size_t>(k)];
                    for (std::int32_t j = 0; j < n; ++j)
                        for (std::int32_t i = 0; i <= j; ++i) {
                            const T s = sumAsTold(i < 8 ? few : many, a(j, i), T(-1), 0, i, 0,
                                                  [&](std::int32_t m) { return a(j, m) * a(i, m); });
                            a(j, i) = i < j ? s * a(i, i) : referenceReciprocalRoot(s, rules);
                            ASSERT_TRUE(sameBits(call.get<T>("dst", k, j, i), a(j, i)))
                                << "order " << n << ", element " << j << ", " << i;
                        }
                }
            }
        }
    });
}

TEST_P(NumericsOfCholesky, SolveIsAsTold) {
    if (form().operationWord != "CholeskyBackSubst") return;
    const Order simple = orderOf(tells(choleskySums(), "solve at orders 3 to 6, strided, or in the pointer layout"));
    const Order down = orderOf(tells(choleskySums(), "solve at other orders, adjacent elements, downwards"));
    const Order up = orderOf(tells(choleskySums(), "solve at other orders, adjacent elements, upwards"));
    Random random(2);
    byType(form(), [&](auto zero) {
        using T = decltype(zero);
        for (std::int32_t n = 1; n <= 26; ++n) {
            for (const std::int32_t spread : spreadsOf(form())) {
                const bool isSimple = (n >= 3 && n <= 6) || spread != 1 || form().layout == Layout::pointer;
                DenseCall call(form(), squareSizes(n, count(7)), spread, 4 * static_cast<std::size_t>(n % 4));
                const std::int32_t matrices = form().tokens == "mava" ? count(7) : 1;
                std::vector<Square<T>> factors;
                for (std::int32_t k = 0; k < matrices; ++k) {
                    factors.push_back(ordinary<T>(n, random));
                    for (std::int32_t i = 0; i < n; ++i) factors.back()(i, i) = T(1) / static_cast<T>(2 * n + i);
                    setMatrix(call, "src1", k, factors.back());
                }
                const Square<T> sides = ordinary<T>(std::max(n, 7), random);
                for (std::int32_t v = 0; v < count(7); ++v)
                    for (std::int32_t j = 0; j < n; ++j) call.set<T>("src2", v, 0, j, sides(v, j));
                ASSERT_EQ(call.call(), status::ok);
                for (std::int32_t v = 0; v < count(7); ++v) {
                    const Square<T>& l = factors[static_cast<std::size_t>(matrices == 1 ? 0 : v)];
                    const auto place = reinterpret_cast<std::uintptr_t>(call.address("dst", v, 0, 0));
                    std::vector<T> x(static_cast<std::size_t>(n));
                    const auto at = [&](std::int32_t k) -> T& { return x[static_cast<std::size_t>(k)]; };
                    for (std::int32_t k = 0; k < n; ++k)
                        at(k) = sumAsTold(isSimple ? simple : down, sides(v, k), T(-1), 0, k, singleTerms<T>(place, k),
                                          [&](std::int32_t j) { return l(k, j) * at(j); }) *
                                l(k, k);
                    for (std::int32_t k = n - 1; k >= 0; --k)
                        at(k) = sumAsTold(isSimple ? simple : up, at(k), T(-1), k + 1, n, 0,
                                          [&](std::int32_t j) { return l(j, k) * at(j); }) *
                                l(k, k);
                    for (std::int32_t k = 0; k < n; ++k)
                        ASSERT_TRUE(sameBits(call.get<T>("dst", v, 0, k), at(k)))
                            << "order " << n << ", vector " << v << ", element " << k;
                }
            }
        }
    });
}

// The identity times the limit fails, times the next number above it passes.
TEST_P(NumericsOfCholesky, LimitIsAsTold) {
    if (form().operationWord != "CholeskyDecomp") return;
    const PageTable& limits = pageTable("where", "limit");
    byType(form(), [&](auto zero) {
        using T = decltype(zero);
        for (const std::int32_t n : {1, 2, 3, 4, 5, 6, 7, 12}) {
            for (const std::int32_t spread : spreadsOf(form())) {
                std::string where = "all others";
                if (form().layout == Layout::pointer && n == 3) where = "pointer layout, order 3";
                if (form().name == "kormCholeskyDecomp_ma_64f" && spread != 1 && (n < 3 || n > 5))
                    where =
                        "`kormCholeskyDecomp_ma_64f` with an element stride other than 8, all orders but 3, 4 and 5";
                const std::string& words = tells(limits, where);
                const T limit = words == "0" ? T(0) : static_cast<T>(std::ldexp(1.0, std::stoi(words.substr(2))));
                for (const bool isAbove : {false, true}) {
                    DenseCall call(form(), squareSizes(n, count(2)), spread);
                    const T pivot = isAbove ? std::nextafter(limit, T(1)) : limit;
                    for (std::int32_t k = 0; k < count(2); ++k) setMatrix(call, "src", k, identity<T>(n, pivot));
                    ASSERT_EQ(call.call(), isAbove ? status::ok : status::notPositiveDefinite) << "order " << n;
                }
            }
        }
    });
}

std::vector<std::size_t> formsOfBoth(const char* decomposition, const char* solve) {
    std::vector<std::size_t> forms = formsOf(decomposition);
    for (const std::size_t form : formsOf(solve)) forms.push_back(form);
    return forms;
}

INSTANTIATE_TEST_SUITE_P(Forms, NumericsOfCholesky,
                         testing::ValuesIn(formsOfBoth("CholeskyDecomp", "CholeskyBackSubst")), formName);

// --- QR ---

class NumericsOfQR : public LinalgForm {
protected:
    // A sum onto a start, for one kind of strides.
    template <class T, class Term>
    T sum(std::int32_t spread, T start, std::int32_t first, std::int32_t end, const Term& term) const {
        const PageTable& table = pageTable("sums", "adjacent elements, list layout too");
        const std::size_t column = spread == 1 && form().layout != Layout::pointer ? 1 : 2;
        const std::string& words = tells(table, end - first < 8 ? "fewer than 8 terms" : "8 terms and more", column);
        return sumAsTold(orderOf(words), start, T(1), first, end, 0, term);
    }

    static Sizes sizesOf(std::int32_t height, std::int32_t width, std::int32_t count) {
        Sizes sizes;
        sizes.height = height;
        sizes.width = width;
        sizes.count = count;
        return sizes;
    }

    template <class T>
    static Rectangle<T> ordinaryRectangle(std::int32_t height, std::int32_t width, Random& random) {
        const Square<T> all = ordinary<T>(height, random);
        Rectangle<T> a(height, width);
        for (std::int32_t i = 0; i < height; ++i)
            for (std::int32_t j = 0; j < width; ++j) a(i, j) = all(i, j);
        return a;
    }

    template <class T>
    static void set(DenseCall& call, const char* operand, std::int32_t k, const Rectangle<T>& a) {
        for (std::int32_t i = 0; i < a.height(); ++i)
            for (std::int32_t j = 0; j < a.width(); ++j) call.set<T>(operand, k, i, j, a(i, j));
    }
};

TEST_P(NumericsOfQR, DecompositionIsAsTold) {
    if (form().operationWord != "QRDecomp") return;
    Random random(3);
    byType(form(), [&](auto zero) {
        using T = decltype(zero);
        for (const std::int32_t height : {1, 2, 5, 8, 9, 12, 17, 25}) {
            for (const std::int32_t width : {1, height / 2, height}) {
                if (width < 1) continue;
                for (const std::int32_t spread : spreadsOf(form())) {
                    DenseCall call(form(), sizesOf(height, width, count(5)), spread);
                    std::vector<Rectangle<T>> matrices;
                    for (std::int32_t k = 0; k < count(5); ++k) {
                        matrices.push_back(ordinaryRectangle<T>(height, width, random));
                        set(call, "src", k, matrices.back());
                    }
                    ASSERT_EQ(call.call(), status::ok);
                    for (std::int32_t k = 0; k < count(5); ++k) {
                        Rectangle<T>& a = matrices[static_cast<std::size_t>(k)];
                        for (std::int32_t j = 0; j < a.reflections(); ++j) {
                            const T square =
                                sum(spread, T(0), j, height, [&](std::int32_t i) { return a(i, j) * a(i, j); });
                            const T root = std::sqrt(square),
                                    r = T(1) / (a(j, j) > 0 ? a(j, j) + root : a(j, j) - root);
                            std::vector<T> v(static_cast<std::size_t>(height), T(1));
                            const auto at = [&](std::int32_t i) -> T& { return v[static_cast<std::size_t>(i)]; };
                            for (std::int32_t i = j + 1; i < height; ++i) at(i) = a(i, j) * r;
                            const T beta =
                                T(-2) / sum(spread, T(1), j + 1, height, [&](std::int32_t i) { return at(i) * at(i); });
                            for (std::int32_t c = j; c < width; ++c) {
                                const T t = sum(spread, a(j, c), j + 1, height,
                                                [&](std::int32_t i) { return a(i, c) * at(i); }) *
                                            beta;
                                for (std::int32_t i = j; i < height; ++i) a(i, c) = a(i, c) + at(i) * t;
                            }
                            for (std::int32_t i = j + 1; i < height; ++i) a(i, j) = at(i);
                        }
                        for (std::int32_t i = 0; i < height; ++i)
                            for (std::int32_t j = 0; j < width; ++j)
                                ASSERT_TRUE(sameBits(call.get<T>("dst", k, i, j), a(i, j)))
                                    << height << " by " << width << ", element " << i << ", " << j;
                    }
                }
            }
        }
    });
}

TEST_P(NumericsOfQR, SolveIsAsTold) {
    if (form().operationWord != "QRBackSubst") return;
    Random random(4);
    byType(form(), [&](auto zero) {
        using T = decltype(zero);
        for (const std::int32_t height : {1, 2, 4, 8, 9, 12, 17, 25}) {
            for (const std::int32_t width : {1, height / 2, height}) {
                if (width < 1) continue;
                for (const std::int32_t spread : spreadsOf(form())) {
                    DenseCall call(form(), sizesOf(height, width, count(9)), spread);
                    const std::int32_t many = form().tokens == "mava" ? count(9) : 1;
                    std::vector<Rectangle<T>> matrices;
                    for (std::int32_t k = 0; k < many; ++k) {
                        matrices.push_back(ordinaryRectangle<T>(height, width, random));
                        set(call, "src1", k, matrices.back());
                    }
                    const Square<T> sides = ordinary<T>(std::max(height, 9), random);
                    for (std::int32_t v = 0; v < count(9); ++v)
                        for (std::int32_t i = 0; i < height; ++i) call.set<T>("src2", v, 0, i, sides(v, i));
                    ASSERT_EQ(call.call(), status::ok);
                    for (std::int32_t v = 0; v < count(9); ++v) {
                        const Rectangle<T>& a = matrices[static_cast<std::size_t>(many == 1 ? 0 : v)];
                        std::vector<T> x(static_cast<std::size_t>(height));
                        const auto at = [&](std::int32_t i) -> T& { return x[static_cast<std::size_t>(i)]; };
                        for (std::int32_t i = 0; i < height; ++i) at(i) = sides(v, i);
                        for (std::int32_t j = 0; j < a.reflections(); ++j) {
                            const T square =
                                sum(spread, T(1), j + 1, height, [&](std::int32_t i) { return a(i, j) * a(i, j); });
                            const T product =
                                sum(spread, at(j), j + 1, height, [&](std::int32_t i) { return a(i, j) * at(i); });
                            const T t = (T(-2) / square) * product;
                            at(j) = at(j) + t;
                            for (std::int32_t i = j + 1; i < height; ++i) at(i) = at(i) + a(i, j) * t;
                        }
                        for (std::int32_t k = width - 1; k >= 0; --k) {
                            const T known =
                                sum(spread, T(0), k + 1, width, [&](std::int32_t j) { return a(k, j) * at(j); });
                            at(k) = (k < width - 1 ? at(k) - known : at(k)) / a(k, k);
                            ASSERT_TRUE(sameBits(call.get<T>("dst", v, 0, k), at(k)))
                                << height << " by " << width << ", vector " << v << ", element " << k;
                        }
                    }
                }
            }
        }
    });
}

INSTANTIATE_TEST_SUITE_P(Forms, NumericsOfQR, testing::ValuesIn(formsOfBoth("QRDecomp", "QRBackSubst")), formName);

// Each row is asked for above: by these words, or the test of it has thrown.
TEST(NumericsOfFactorisations, HasNoOtherRows) {
    EXPECT_EQ(choleskySums().rows.size(), 5U);
    EXPECT_EQ(pageTable("sums", "adjacent elements, list layout too").rows.size(), 2U);
    EXPECT_EQ(pageTable("where", "limit").rows.size(), 3U);
}

}  // namespace
}  // namespace kormtest
