#include "../rows.h"

namespace bench {

BENCH_ARRAY_FORM(Add, mat)
BENCH_ARRAY_FORM(Add, tam)
BENCH_ARRAY_FORM(Add, tama)
BENCH_ARRAY_FORM(Add, tata)

void addTransposedSums() {
    addForm<Add_mat, Orders>();
    addForm<Add_tam, Orders>(true);
    addForm<Add_tama, Orders>();
    addForm<Add_tata, Orders>();
}

}  // namespace bench
