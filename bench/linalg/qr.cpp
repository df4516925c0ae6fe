#include "qr.h"

namespace bench {

void measureLeastSquares() {
    measureSize<1, 1>();
    measureSize<2, 1>();
    measureSize<2, 2>();
    measureSize<3, 3>();
    measureSize<4, 3>();
    measureLargeLeastSquares();
}

}  // namespace bench
