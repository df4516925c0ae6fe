// Matrices times vectors: one with one, one matrix with many vectors, many with one, and pair by pair.
#include "rows.h"

namespace bench {

namespace {

template <class... Forms>
void rowsOf() {
    (packedRows<Forms, 3, 4, 6, 16, 64>("vectors"), ...);
}

}  // namespace

void measureVectors() { rowsOf<Mul_mv, Mul_tv, Mul_mva, Mul_tva, Mul_mav, Mul_tav, Mul_mava, Mul_tava>(); }

}  // namespace bench
