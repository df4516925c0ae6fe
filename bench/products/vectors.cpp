// Matrices times vectors: one with one, one matrix with many vectors, many with one, and pair by pair.
#include "rows.h"

namespace bench {

SINGLE_FORM(Mul_mv)
SINGLE_FORM(Mul_tv)
ARRAY_FORM(Mul_mva)
ARRAY_FORM(Mul_tva)
ARRAY_FORM(Mul_mav)
ARRAY_FORM(Mul_tav)
ARRAY_FORM(Mul_mava)
ARRAY_FORM(Mul_tava)

namespace {

template <class... Forms>
void rowsOf() {
    (packedRows<Forms, 3, 4, 6, 16, 64>("vectors"), ...);
}

}  // namespace

void measureVectors() { rowsOf<Mul_mv, Mul_tv, Mul_mva, Mul_tva, Mul_mav, Mul_tav, Mul_mava, Mul_tava>(); }

}  // namespace bench
