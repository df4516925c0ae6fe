// Sums of vectors.
#include "rows.h"

namespace bench {

ARRAY_FORM(Add_vav)
ARRAY_FORM(Add_vava)
ARRAY_FORM(Sub_vva)

void measureVectorSums() {
    sumForm<Add_vav>();
    sumForm<Add_vava, true>();
    sumForm<Sub_vva>();
}

}  // namespace bench
