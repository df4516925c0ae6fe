// Vectors and constants.
#include "rows.h"

namespace bench {

ARRAY_FORM(Mul_vac)
ARRAY_FORM(Add_vca)
ARRAY_FORM(Mul_vaca)
ARRAY_FORM(Sub_cva)
ARRAY_FORM(Sub_cav)
ARRAY_FORM(Sub_cava)

void measureConstants() {
    sumForm<Mul_vac, true>();
    sumForm<Add_vca>();
    sumForm<Mul_vaca>();
    sumForm<Sub_cva>();
    sumForm<Sub_cav>();
    sumForm<Sub_cava>();
}

}  // namespace bench
