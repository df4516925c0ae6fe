#include "sums.h"

#include <array>
#include <cfloat>
#include <stdexcept>
#include <utility>

namespace kormtest {
namespace {

// The comparison is to the bit: no wider intermediate results.
static_assert(FLT_EVAL_METHOD == 0);

// Writes down its additions. The operands of one may change places, so they stand in the order of their texts.
struct Text {
    std::string text = "0";
    friend Text operator+(const Text& a, const Text& b) {
        const bool inOrder = a.text <= b.text;
        Text sum{"("};
        sum.text.append(inOrder ? a.text : b.text).append("+").append(inOrder ? b.text : a.text).append(")");
        return sum;
    }
};

template <class Number>
Number join(bool wide, std::size_t w, const std::array<Number, 8>& l) {
    switch (w) {
        case 1: return l[0];
        case 2: return l[0] + l[1];
        case 4: return (l[0] + l[2]) + (l[1] + l[3]);
        default: break;
    }
    if (wide) return ((l[0] + l[2]) + (l[4] + l[6])) + ((l[1] + l[3]) + (l[5] + l[7]));
    return ((l[0] + l[4]) + (l[2] + l[6])) + ((l[1] + l[5]) + (l[3] + l[7]));
}

template <class Number>
Number partialSums(bool wide, std::size_t w, std::size_t block, const std::vector<Number>& p) {
    Number s{};
    std::size_t k = 0;
    if (p.size() >= block) {
        const std::size_t T = block * (p.size() / block);
        std::array<Number, 8> l{};
        for (; k < T; ++k) l[k % w] = l[k % w] + p[k];
        s = join(wide, w, l);
    }
    for (; k < p.size(); ++k) s = s + p[k];
    return s;
}

// Eight partial sums, the first opened by the products before a boundary; too few products are added one by one.
template <class Number>
Number alignedSum(bool wide, const std::vector<Number>& p, Place place) {
    if (!place.onElements || p.size() < place.ahead + 8) return partialSums(wide, 1, 1, p);
    std::array<Number, 8> l{};
    std::size_t k = 0;
    for (; k < place.ahead; ++k) l[0] = l[0] + p[k];
    for (; k + 8 <= p.size(); k += 8)
        for (std::size_t c = 0; c < 8; ++c) l[c] = l[c] + p[k + c];
    Number s = join(wide, 8, l);
    for (; k < p.size(); ++k) s = s + p[k];
    return s;
}

template <class Number>
Number eightsInTurn(const std::vector<Number>& p) {
    std::array<Number, 8> l{};
    const std::size_t T = p.size() / 8 * 8;
    for (std::size_t k = 0; k < T; ++k) l[k % 8] = l[k % 8] + p[k];
    Number s = l[0];
    for (std::size_t c = 1; c < 8; ++c) s = s + l[c];
    for (std::size_t k = T; k < p.size(); ++k) s = s + p[k];
    return s;
}

// The order that stands in place of another, if any.
struct Replacement {
    bool active = false;
    Sum right{}, wrong{};
};
Replacement replacement;

}  // namespace

Place placeOf(const std::byte* address, std::int32_t elementSize) {
    const auto at = reinterpret_cast<std::uintptr_t>(address);
    const auto size = static_cast<std::uintptr_t>(elementSize);
    return {at % size == 0, (16 - at % 16) % 16 / size};
}

SumReplaced::SumReplaced(Sum right, Sum wrong) { replacement = {true, right, wrong}; }
SumReplaced::~SumReplaced() { replacement.active = false; }

bool sumExists(Sum sum, std::size_t products) {
    switch (sum) {
        case Sum::pairs:
        case Sum::crossed: return products >= 4 && products <= 6;
        case Sum::pairsInside: return products == 5;
        case Sum::halves: return products >= 4 && products <= 6;
        case Sum::middleFirst: return products >= 3 && products <= 6;
        case Sum::lastTwoFirst: return products >= 3 && products <= 5;
        case Sum::eightsInTurn:
        case Sum::aligned: return products >= 8;
        default: return true;
    }
}

template <class Number>
Number sumOf(Sum sum, bool wide, const std::vector<Number>& p, Place place) {
    if (replacement.active && sum == replacement.right && sumExists(replacement.wrong, p.size()))
        sum = replacement.wrong;
    if (!sumExists(sum, p.size())) throw std::logic_error("no such order of so many products");
    const std::size_t n = p.size();
    switch (sum) {
        case Sum::leftToRight: {
            Number s = p[0];
            for (std::size_t k = 1; k < n; ++k) s = s + p[k];
            return s;
        }
        case Sum::zeroStart: {
            Number s{};
            for (std::size_t k = 0; k < n; ++k) s = s + p[k];
            return s;
        }
        case Sum::two2: return partialSums(wide, 2, 2, p);
        case Sum::two8: return partialSums(wide, 2, 8, p);
        case Sum::four4: return partialSums(wide, 4, 4, p);
        case Sum::four8: return partialSums(wide, 4, 8, p);
        case Sum::eight8: return partialSums(wide, 8, 8, p);
        case Sum::pairs:
            if (n == 4) return (p[0] + p[1]) + (p[2] + p[3]);
            if (n == 5) return ((p[0] + p[1]) + (p[2] + p[3])) + p[4];
            return ((p[0] + p[1]) + (p[2] + p[3])) + (p[4] + p[5]);
        case Sum::pairsInside: return ((p[0] + p[1]) + p[4]) + (p[2] + p[3]);
        case Sum::crossed:
            if (n == 4) return (p[0] + p[2]) + (p[1] + p[3]);
            if (n == 5) return ((p[0] + p[2]) + p[4]) + (p[1] + p[3]);
            return ((p[0] + p[2]) + p[4]) + ((p[1] + p[3]) + p[5]);
        case Sum::halves:
            if (n == 4) return (p[0] + p[2]) + (p[1] + p[3]);
            if (n == 5) return ((p[0] + p[2]) + (p[1] + p[3])) + p[4];
            return ((p[2] + p[4]) + p[0]) + ((p[3] + p[5]) + p[1]);
        case Sum::middleFirst:
            if (n == 3) return (p[1] + p[2]) + p[0];
            if (n == 4) return ((p[1] + p[3]) + p[2]) + p[0];
            if (n == 5) return (((p[2] + p[4]) + p[3]) + p[0]) + p[1];
            return ((((p[3] + p[5]) + p[4]) + p[0]) + p[1]) + p[2];
        case Sum::descending: {
            Number s{};
            for (std::size_t k = n; k-- > 0;) s = s + p[k];
            return s;
        }
        case Sum::eightsInTurn: return eightsInTurn(p);
        case Sum::aligned: return alignedSum(wide, p, place);
        case Sum::lastTwoFirst:
            if (n == 3) return (p[1] + p[2]) + p[0];
            if (n == 4) return ((p[2] + p[3]) + p[1]) + p[0];
            return (((p[3] + p[4]) + p[2]) + p[0]) + p[1];
    }
    return Number{};
}

template float sumOf(Sum, bool, const std::vector<float>&, Place);
template double sumOf(Sum, bool, const std::vector<double>&, Place);

std::string sumText(Sum sum, bool wide, std::size_t products, Place place) {
    std::vector<Text> p(products);
    for (std::size_t k = 0; k < products; ++k) p[k].text = std::string("p").append(std::to_string(k));
    return sumOf(sum, wide, p, place).text;
}

}  // namespace kormtest
