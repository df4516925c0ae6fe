#include "../rows.h"

namespace bench {

BENCH_SINGLE_FORM(Add, mm)
BENCH_SINGLE_FORM(Add, tm)
BENCH_SINGLE_FORM(Mul, mc)
BENCH_SINGLE_FORM(Add, vv)
BENCH_SINGLE_FORM(Mul, vc)

void addSingles() {
    addForm<Add_mm, Orders>();
    addForm<Add_tm, Orders>();
    addForm<Mul_mc, Orders>();
    addForm<Add_vv, Lengths>();
    addForm<Mul_vc, Lengths>();
    addForm<Add_vv, LongLengths>();
    addForm<Mul_vc, LongLengths>();
}

}  // namespace bench
