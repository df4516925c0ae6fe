// The operations of element-wise arithmetic. One text serves a single element and a vector of lanes.
#pragma once

namespace korm {

struct Plus {
    static constexpr bool commutes = true;
    template <class S>
    static S apply(S a, S b) {
        return a + b;
    }
};

struct Minus {
    static constexpr bool commutes = false;
    template <class S>
    static S apply(S a, S b) {
        return a - b;
    }
};

struct Times {
    static constexpr bool commutes = true;
    template <class S>
    static S apply(S a, S b) {
        return a * b;
    }
};

}  // namespace korm
