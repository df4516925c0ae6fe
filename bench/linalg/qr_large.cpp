#include "qr.h"

namespace bench {

void measureLargeLeastSquares() {
    measureSize<6, 6>();
    measureSize<16, 8>();
}

}  // namespace bench
