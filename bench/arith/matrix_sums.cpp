// Sums of matrices, and matrices times constants.
#include "rows.h"

namespace bench {

ARRAY_FORM(Add_mama)
ARRAY_FORM(Add_mam)
ARRAY_FORM(Sub_mma)
ARRAY_FORM(Mul_mac)

void measureMatrixSums() {
    sumForm<Add_mama, true>();
    sumForm<Add_mam>();
    sumForm<Sub_mma>();
    sumForm<Mul_mac>();
}

}  // namespace bench
