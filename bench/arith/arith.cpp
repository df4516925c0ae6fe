// The program's rows: sums, differences and scaling of matrices and vectors.
#include "rows.h"

namespace bench {

ARRAY_FORM(Add_mama)
ARRAY_FORM(Add_mam)
ARRAY_FORM(Add_tama)
ARRAY_FORM(Mul_mac)
ARRAY_FORM(Add_vava)
ARRAY_FORM(Mul_vac)
SINGLE_FORM(Add_mm)
SINGLE_FORM(Add_tm)
SINGLE_FORM(Mul_mc)
SINGLE_FORM(Add_vv)
SINGLE_FORM(Mul_vc)

namespace {

// The library on two threads and on one.
template <class Form, class T, int rows, int columns>
void threadRow(const Place& place) {
    const std::string name =
        "threads/" + std::string(Form::name) + suffix<T> + "/" + std::to_string(columns) + "/" + place.name;
    if (!isWanted(name)) return;
    const Work<T> work = makeWork<Form::shape, T>(Layout::packed, rows, 1, columns, place.bytes);
    const Run call = kormCall<Form, Layout::packed>(work);
    Row row(name, work.count);
    row.usesThreads();
    row.results(work.result.base, work.result.span, 0);
    row.korm(onThreads(2, call));
    row.peer("korm, one thread", onThreads(1, call));
    row.measure();
}

template <class Form>
void sweepLayouts() {
    using enum Layout;
    if constexpr (Form::shape.isArray()) sweep<Form, packed, padded, strided, list, streams, pointers>();
    else sweep<Form, packed>();
}

}  // namespace

void measureRows() {
    noteVersion("Eigen", EIGEN_WORLD_VERSION, EIGEN_MAJOR_VERSION, EIGEN_MINOR_VERSION);
    measureMatrixSums();
    measureTransposedSums();
    measureVectorSums();
    measureConstants();
    sumForm<Add_mm>();
    sumForm<Add_tm>();
    sumForm<Mul_mc>();
    sumForm<Add_vv>();
    sumForm<Mul_vc>();
    sumRows<Add_vv, Layout::packed, 4000000>(outOfCache);
    sumRows<Mul_vc, Layout::packed, 4000000>(outOfCache);
    threadRow<Add_mama, float, 4, 4>(inCache);
    threadRow<Add_mama, float, 4, 4>({"1MiB", 1 << 20});
    threadRow<Add_mama, float, 4, 4>(outOfCache);
    threadRow<Add_mama, double, 6, 6>(outOfCache);
    threadRow<Mul_vac, float, 1, 4>(outOfCache);
    sweepLayouts<Add_mama>();
    sweepLayouts<Add_mam>();
    sweepLayouts<Add_tama>();
    sweepLayouts<Mul_mac>();
    sweepLayouts<Add_vava>();
    sweepLayouts<Mul_vac>();
    sweepLayouts<Add_mm>();
    sweepLayouts<Add_vv>();
}

}  // namespace bench
