// All small shapes.
#include "rows.h"

namespace bench {

void measureSweeps() {
    sweep<Mul_mama, Layout::packed, Layout::padded, Layout::strided, Layout::columns, Layout::list, Layout::streams,
          Layout::pointers>();
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
