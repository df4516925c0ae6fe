#include "norms.h"

#include <array>
#include <cfloat>
#include <cmath>

namespace kormtest {
namespace {

// The comparison is to the bit: no wider intermediate results.
static_assert(FLT_EVAL_METHOD == 0);

template <class T>
std::vector<T> rowOfSquares(const Form& form, const OperandValues& src, const Sizes& sizes, std::int32_t k,
                            std::int32_t i) {
    std::vector<T> squares;
    for (std::int32_t j = 0; j < sizes.width; ++j) {
        const T element = readElement<T>(form, 0, src, sizes, k, i, j);
        squares.push_back(element * element);
    }
    return squares;
}

// Which way the squares of a matrix are added.
enum class Way {
    fourInTurn,   // small squares: four sums over all elements
    fourByRows,   // adjacent floats: four sums over blocks of eight, a rest goes to the first
    eightByRows,  // adjacent doubles: eight sums for each row of eight and more
    inTurn,       // one sum
    pairsInTurn,  // tables: pairs go to two sums
};

Way wayOf(const Form& form, bool plain, const Sizes& sizes) {
    const bool table = form.layout == Layout::pointer, single = form.type == Type::f32;
    const std::int32_t least = form.array ? 3 : 2;
    std::int32_t greatest = table ? 4 : 6;
    if (!form.array) greatest = table || !single ? 0 : 5;
    if (sizes.width == sizes.height && sizes.width >= least && sizes.width <= greatest) return Way::fourInTurn;
    if (table) return Way::pairsInTurn;
    if (!plain) return Way::inTurn;
    return single ? Way::fourByRows : Way::eightByRows;
}

template <class T>
T joinFour(const std::array<T, 4>& s) {
    return (s[0] + s[2]) + (s[1] + s[3]);
}

// Blocks of eight go to four sums in turn, what is left of a row to the first.
template <class T>
void addRow(std::array<T, 4>& s, const std::vector<T>& row) {
    std::size_t j = 0;
    for (; j + 8 <= row.size(); j += 8)
        for (std::size_t c = 0; c < 8; ++c) s[c % 4] += row[j + c];
    for (; j < row.size(); ++j) s[0] += row[j];
}

template <class T>
T addEights(T total, const std::vector<T>& row) {
    std::size_t j = 0;
    if (row.size() >= 8) {
        std::array<T, 8> a{};
        a[0] = total;
        for (; j + 8 <= row.size(); j += 8)
            for (std::size_t c = 0; c < 8; ++c) a[c] += row[j + c];
        total = ((a[0] + a[2]) + (a[4] + a[6])) + ((a[1] + a[3]) + (a[5] + a[7]));
    }
    for (; j < row.size(); ++j) total += row[j];
    return total;
}

template <class T>
T addPairs(const std::vector<T>& all) {
    T sums[2] = {};
    const std::size_t pairs = all.size() / 2;
    for (std::size_t t = 0; t < pairs; ++t) {
        const bool last = t + 1 == pairs && pairs % 2 != 0;
        sums[last ? 0 : t % 2] += all[2 * t] + all[2 * t + 1];
    }
    if (all.size() % 2 != 0) sums[0] += all.back();
    return sums[0] + sums[1];
}

template <class T>
T sumOfSquares(const Form& form, const std::vector<OperandValues>& operands, const Sizes& sizes, std::int32_t k) {
    std::vector<std::vector<T>> rows;
    std::vector<T> all;
    for (std::int32_t i = 0; i < sizes.height; ++i) {
        rows.push_back(rowOfSquares<T>(form, operands[0], sizes, k, i));
        all.insert(all.end(), rows.back().begin(), rows.back().end());
    }
    switch (wayOf(form, plainStrides(form, operands), sizes)) {
        case Way::fourInTurn: {
            std::array<T, 4> s{};
            for (std::size_t e = 0; e < all.size(); ++e) s[e % 4] += all[e];
            return joinFour(s);
        }
        case Way::fourByRows: {
            std::array<T, 4> s{};
            if (operands[0].rowStride == sizes.width * form.elementSize()) rows = {all};
            for (const std::vector<T>& row : rows) addRow(s, row);
            return joinFour(s);
        }
        case Way::eightByRows: {
            T total = 0;
            for (const std::vector<T>& row : rows) total = addEights(total, row);
            return total;
        }
        case Way::inTurn: {
            T total = 0;
            for (const T square : all) total += square;
            return total;
        }
        case Way::pairsInTurn: break;
    }
    return addPairs(all);
}

template <class T>
void frobNorm(const Form& form, const std::vector<OperandValues>& operands, const Sizes& sizes, std::int32_t k) {
    writeElement(form, 1, operands[1], sizes, k, 0, 0, std::sqrt(sumOfSquares<T>(form, operands, sizes, k)));
}

template <class T>
void trace(const Form& form, const std::vector<OperandValues>& operands, const Sizes& sizes, std::int32_t k) {
    std::vector<T> diagonal;
    for (std::int32_t i = 0; i < sizes.order; ++i)
        diagonal.push_back(readElement<T>(form, 0, operands[0], sizes, k, i, i));
    const Sum order = traceSum(form, plainStrides(form, operands), sizes, k);
    writeElement(form, 1, operands[1], sizes, k, 0, 0, sumOf(order, form.type == Type::f64, diagonal));
}

}  // namespace

Sum traceSum(const Form& form, bool plain, const Sizes& sizes, std::int32_t) {
    const std::int32_t order = sizes.order;
    if (order < 3 || order > 6) return Sum::zeroStart;
    const bool anyStride = form.layout != Layout::pointer && !plain;
    return anyStride && order < 6 ? Sum::lastTwoFirst : Sum::leftToRight;
}

std::int32_t referenceTrace(const Form& form, const std::vector<OperandValues>& operands, const Sizes& sizes,
                            std::int32_t first, std::int32_t runCount) {
    for (std::int32_t k = first; k < first + runCount; ++k)
        (form.type == Type::f32 ? trace<float> : trace<double>)(form, operands, sizes, k);
    return 0;
}

std::int32_t referenceFrobNorm(const Form& form, const std::vector<OperandValues>& operands, const Sizes& sizes,
                               std::int32_t first, std::int32_t runCount) {
    for (std::int32_t k = first; k < first + runCount; ++k)
        (form.type == Type::f32 ? frobNorm<float> : frobNorm<double>)(form, operands, sizes, k);
    return 0;
}

}  // namespace kormtest
