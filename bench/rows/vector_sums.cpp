#include "../rows.h"

namespace bench {

BENCH_ARRAY_FORM(Add, vav)
BENCH_ARRAY_FORM(Add, vava)
BENCH_ARRAY_FORM(Sub, vva)

void addVectorSums() {
    addForm<Add_vav, Lengths>();
    addForm<Add_vava, Lengths>(true);
    addForm<Sub_vva, Lengths>();
}

}  // namespace bench
