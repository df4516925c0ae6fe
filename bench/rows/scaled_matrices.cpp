#include "../rows.h"

namespace bench {

BENCH_ARRAY_FORM(Mul, mac)
BENCH_ARRAY_FORM(Mul, tac)

void addScaledMatrices() {
    addForm<Mul_mac, Orders>();
    addForm<Mul_tac, Orders>();
}

}  // namespace bench
