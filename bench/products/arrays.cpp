// Packed arrays of square matrices.
#include "rows.h"

namespace bench {

void measureArrays() {
    packedRows<Mul_mama, 3, 4, 5, 6, 8, 16, 32>("arrays");
    packedRows<Mul_mam, 3, 4, 5, 6, 8, 16, 32>("arrays");
    packedRows<Mul_mma, 3, 4, 5, 6, 8, 16, 32>("arrays");
    packedRows<Mul_mata, 3, 4, 5, 6, 8>("arrays");
    packedRows<Mul_tama, 3, 4, 5, 6, 8>("arrays");
    packedRows<Mul_tata, 3, 4, 5, 6, 8>("arrays");
    packedRows<Mul_mama, 4, 8, 16>("memory", outOfCache);
}

}  // namespace bench
