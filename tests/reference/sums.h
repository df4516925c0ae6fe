// The orders in which the products of one sum are added: of an element of a matrix product, of a dot product, a norm, a
// trace.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

namespace kormtest {

enum class Sum : std::uint8_t {
    leftToRight,  // ((p0 + p1) + p2) + ...
    zeroStart,    // (((+0 + p0) + p1) + p2) + ...
    // Partial sums, each from +0: how many there are, and how many products make a block.
    two2,
    two8,
    four4,
    four8,
    eight8,
    // Matrix times vector, orders 4 to 6.
    pairs,        // (p0 + p1) + (p2 + p3), then + p4 or + (p4 + p5)
    pairsInside,  // ((p0 + p1) + p4) + (p2 + p3)
    crossed,      // ((p0 + p2) + p4) + ((p1 + p3) + p5), as far as there are products
    // Reductions of vectors.
    halves,        // (p0 + p2) + (p1 + p3), then + p4; of six ((p2 + p4) + p0) + ((p3 + p5) + p1)
    middleFirst,   // three to six, beginning with p[n / 2]: ((p1 + p3) + p2) + p0 of four
    descending,    // ((+0 + p[n - 1]) + p[n - 2]) + ... + p0
    eightsInTurn,  // eight partial sums over whole blocks of eight, joined from left to right
    aligned,       // products before a boundary of 16 bytes open the first of eight partial sums
    lastTwoFirst,  // traces of orders 3 to 5 with other strides: ((p2 + p3) + p1) + p0 of four
};

inline constexpr Sum allSums[] = {Sum::leftToRight, Sum::zeroStart,    Sum::two2,    Sum::two8,
                                  Sum::four4,       Sum::four8,        Sum::eight8,  Sum::pairs,
                                  Sum::pairsInside, Sum::crossed,      Sum::halves,  Sum::middleFirst,
                                  Sum::descending,  Sum::eightsInTurn, Sum::aligned, Sum::lastTwoFirst};

// Where a vector of elements lies, for Sum::aligned: how many of them stand before a boundary of 16 bytes.
struct Place {
    bool onElements = true;  // the address is a multiple of the element size
    std::size_t ahead = 0;
};
Place placeOf(const std::byte* address, std::int32_t elementSize);

// Is there such an order of so many products?
bool sumExists(Sum sum, std::size_t products);

// `wide` is of 64f, where eight partial sums are joined in another order than in 32f.
template <class Number>
Number sumOf(Sum sum, bool wide, const std::vector<Number>& p, Place place = {});

// Has sumOf add in another order, as far as there is such a one, wherever `right` is asked for: a mistake made on purpose.
class SumReplaced {
public:
    SumReplaced(Sum right, Sum wrong);
    SumReplaced(const SumReplaced&) = delete;
    SumReplaced& operator=(const SumReplaced&) = delete;
    ~SumReplaced();
};

// How the sum is made, written down. Two texts are equal if the two sums are equal to the bit for any products.
std::string sumText(Sum sum, bool wide, std::size_t products, Place place = {});

}  // namespace kormtest
