// What is measured: a function for each family.
#pragma once

#include <utility>
#include <vector>

#include "side_by_side.h"

namespace linalgbench {

void measureDecompositions(std::vector<Measured>& measured);
void measureSolutions(std::vector<Measured>& measured);
void measureInverses(std::vector<Measured>& measured);
void measureDeterminants(std::vector<Measured>& measured);

// A determinant in extended precision, and what its expansion takes if each minor is made once.
struct ExtendedRow {
    std::string name;
    int multiplications, additions;
    double cycles;
};
std::vector<ExtendedRow> measureExtendedDeterminants();

// Calls f with each order as a constant of the compiler, for both types.
template <int... orders, class F>
void forOrders(std::integer_sequence<int, orders...>, const F& f) {
    (f.template operator()<float, orders>(), ...);
    (f.template operator()<double, orders>(), ...);
}

}  // namespace linalgbench
