// The orders in which the products of one element of a matrix product are added.
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
};

inline constexpr Sum allSums[] = {Sum::leftToRight, Sum::zeroStart, Sum::two2,  Sum::two8,        Sum::four4,
                                  Sum::four8,       Sum::eight8,    Sum::pairs, Sum::pairsInside, Sum::crossed};

// Is there such an order of so many products?
bool sumExists(Sum sum, std::size_t products);

// `wide` is of 64f, where eight partial sums are joined in another order than in 32f.
template <class Number>
Number sumOf(Sum sum, bool wide, const std::vector<Number>& p);

// How the sum is made, written down. Two texts are equal if the two sums are equal to the bit for any products.
std::string sumText(Sum sum, bool wide, std::size_t products);

}  // namespace kormtest
