// Sums with transposed matrices.
#include "rows.h"

namespace bench {

ARRAY_FORM(Add_mat)
ARRAY_FORM(Add_tam)
ARRAY_FORM(Add_tama)
ARRAY_FORM(Add_tata)
ARRAY_FORM(Mul_tac)

void measureTransposedSums() {
    sumForm<Add_mat>();
    sumForm<Add_tam, true>();
    sumForm<Add_tama>();
    sumForm<Add_tata>();
    sumForm<Mul_tac>();
}

}  // namespace bench
