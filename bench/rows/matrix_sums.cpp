#include "../rows.h"

namespace bench {

BENCH_ARRAY_FORM(Add, mama)
BENCH_ARRAY_FORM(Add, mam)
BENCH_ARRAY_FORM(Sub, mma)

void addMatrixSums() {
    addForm<Add_mama, Orders>(true);
    addForm<Add_mam, Orders>();
    addForm<Sub_mma, Orders>();
}

}  // namespace bench
