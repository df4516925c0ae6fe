#include "../rows.h"

namespace bench {

BENCH_ARRAY_FORM(Sub, cva)
BENCH_ARRAY_FORM(Sub, cav)
BENCH_ARRAY_FORM(Sub, cava)

void addConstantsFirst() {
    addForm<Sub_cva, Lengths>();
    addForm<Sub_cav, Lengths>();
    addForm<Sub_cava, Lengths>();
}

}  // namespace bench
