// One function for each table.
#pragma once

#include <utility>

namespace linalgbench {

void measureDecompositions();
void measureSolutions();
void measureInverses();
void measureDeterminants();

// Calls f with each order as a constant of the compiler, for both types.
template <int... orders, class F>
void forOrders(std::integer_sequence<int, orders...>, const F& f) {
    (f.template operator()<float, orders>(), ...);
    (f.template operator()<double, orders>(), ...);
}

}  // namespace linalgbench
