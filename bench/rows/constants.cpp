#include "../rows.h"

namespace bench {

BENCH_ARRAY_FORM(Mul, vac)
BENCH_ARRAY_FORM(Add, vca)
BENCH_ARRAY_FORM(Mul, vaca)

void addConstants() {
    addForm<Mul_vac, Lengths>(true);
    addForm<Add_vca, Lengths>();
    addForm<Mul_vaca, Lengths>();
}

}  // namespace bench
