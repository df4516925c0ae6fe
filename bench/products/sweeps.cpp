// All small shapes.
#include "rows.h"

namespace bench {

ARRAY_FORM(Mul_mama)
ARRAY_FORM(Mul_mam)
ARRAY_FORM(Mul_mma)
ARRAY_FORM(Mul_mata)
ARRAY_FORM(Mul_mava)
ARRAY_FORM(Mul_mva)
ARRAY_FORM(Mul_mav)
SINGLE_FORM(Mul_mm)
SINGLE_FORM(Mul_mv)

void measureSweeps() {
    sweep<Mul_mama, Layout::packed, Layout::padded, Layout::strided, Layout::list, Layout::streams, Layout::pointers>();
    sweep<Mul_mam, Layout::packed>();
    sweep<Mul_mma, Layout::packed>();
    sweep<Mul_mata, Layout::packed>();
    sweep<Mul_mava, Layout::packed, Layout::strided, Layout::streams>();
    sweep<Mul_mva, Layout::packed, Layout::strided, Layout::streams>();
    sweep<Mul_mav, Layout::packed>();
    sweep<Mul_mm, Layout::packed>();
    sweep<Mul_mv, Layout::packed>();
}

}  // namespace bench
