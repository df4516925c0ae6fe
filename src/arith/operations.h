// The operations of element-wise arithmetic. One text serves a single element and a vector of lanes.
#pragma once

namespace korm {

struct Plus {
    template <class S>
    static S apply(S a, S b) {
        return a + b;
    }
};

struct Minus {
    template <class S>
    static S apply(S a, S b) {
        return a - b;
    }
};

struct Times {
    template <class S>
    static S apply(S a, S b) {
        return a * b;
    }
};

}  // namespace korm
