// Eigen's solutions of general eigenproblems of known order. A type is a file of its own: each takes half a minute to compile.
#pragma once

#include "general.h"

namespace bench {

template <class T>
Run eigenOfKnownOrder(const Problems<T>& p, const Family& family) {
    switch (p.n) {
        case 3: return [=] { eigenSolve<T, 3>(p, family); };
        case 4: return [=] { eigenSolve<T, 4>(p, family); };
        case 6: return [=] { eigenSolve<T, 6>(p, family); };
        default: return nullptr;
    }
}

}  // namespace bench
