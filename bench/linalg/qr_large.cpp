#include "qr.h"

namespace bench {

void measureLargeLeastSquares() {
    measureSize<16, 4>();
    measureSize<16, 8>();
    measureSize<16, 16>();
}

}  // namespace bench
