// One product at a time. Eigen with fixed sizes has no arguments and no checks; the others take sizes as korm does.
#include "rows.h"

namespace bench {

void measureSingles() {
    packedRows<Mul_mm, 3, 4, 5, 6, 7, 8, 10, 12, 16, 20, 24, 32, 48, 64, 96, 128, 192, 256, 512, 1024>("singles");
    packedRows<Mul_mt, 4, 8, 16, 32, 64, 128, 256>("singles");
    packedRows<Mul_tm, 4, 8, 16, 32, 64, 128, 256, 512, 1024>("singles");
    packedRows<Mul_tt, 4, 8, 16, 32, 64, 128, 256, 512, 1024>("singles");
}

}  // namespace bench
