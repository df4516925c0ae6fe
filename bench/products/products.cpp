// The program's rows: products of matrices, and of matrices and vectors.
#include "rows.h"
#ifdef BENCH_CGLM
#include <cglm/version.h>
#endif

namespace bench {

namespace {

// Objects one element apart, beside the same products of packed arrays.
template <class Form, class T, int order>
void streamRow() {
    constexpr Shape shape = Form::shape;
    const std::string name = squareName<Form, T>("streams", order);
    if (!isWanted(name)) return;
    const auto packed = squareWork<shape, Layout::packed, T>(order, inCache.bytes);
    const auto packedCall = kormCall<Form, Layout::packed>(packed);
    const auto work = squareWork<shape, Layout::streams, T>(order, inCache.bytes);
    Row row(name, work.count);
    row.results(work.result.base, work.result.span, productTolerance<T>(order));
    row.korm(kormCall<Form, Layout::streams>(work));
    row.peer("plain loop along streams", [=] {
        plainLoop<shape, Layout::streams, true>(work, Known<order>(), Known<order>(),
                                                Known < shape.isVector() ? 1 : order > ());
    });
    row.control("korm, packed", packedCall);
    row.measure();
}

template <class Form, int... orders>
void streamRows() {
    (streamRow<Form, float, orders>(), ...);
    (streamRow<Form, double, orders>(), ...);
}

// The library on two threads and on one, with a control: the same plain loop on one and on two threads, which shows what two
// threads are worth on this machine at this moment. The control's second thread is the library's too, from the OpenMP
// runtime: it goes on looking for work for a while after a call, and a thread beside it would share a processor with it.
template <class Form, class T, int order>
void threadRow(const Place& place) {
    constexpr Shape shape = Form::shape;
    const std::string name = squareName<Form, T>("threads", order) + "/" + place.name;
    if (!isWanted(name)) return;
    const auto work = squareWork<shape, Layout::packed, T>(order, place.bytes);
    const auto p = Packed<T>::template of<shape>(work);
    Row row(name, work.count);
    row.usesThreads();
    row.results(work.result.base, work.result.span, productTolerance<T>(order));
    const Run call = kormCall<Form, Layout::packed>(work);
    row.korm(onThreads(2, call));
    row.peer("korm, one thread", onThreads(1, call));
    row.control("plain loop, two threads", [=] {
#pragma omp parallel for num_threads(2) schedule(static)
        for (int half = 0; half < 2; ++half) {
            Packed<T> part = p;
            const std::ptrdiff_t begin = half * (p.count / 2);
            part.first = p.a(begin), part.second = p.b(begin), part.result = p.c(begin);
            part.count = half == 0 ? p.count / 2 : p.count - begin;
            knownLoop<shape, order>(part);
        }
    });
    row.control("plain loop, one thread", [=] { knownLoop<shape, order>(p); });
    row.measure();
}

}  // namespace

void measureRows() {
    noteVersion("Eigen", EIGEN_WORLD_VERSION, EIGEN_MAJOR_VERSION, EIGEN_MINOR_VERSION);
#ifdef BENCH_GLM
    note("GLM", std::to_string(GLM_VERSION));
#endif
#ifdef BENCH_CGLM
    noteVersion("cglm", CGLM_VERSION_MAJOR, CGLM_VERSION_MINOR, CGLM_VERSION_PATCH);
#endif
#ifdef BENCH_OPENBLAS
    // Held to kernels of the instruction set that the library and all other peers are built for (harness/row.cpp).
    note("OpenBLAS", std::string(openblas_get_config()) + ", kernels for " + openblas_get_corename());
#endif
#ifdef BENCH_LIBXSMM
    note("libxsmm", LIBXSMM_VERSION + std::string(", kernels for ") + libxsmm_get_target_arch());
#endif
    measureArrays();
    streamRows<Mul_mama, 3, 4, 5, 6, 8>();
    streamRows<Mul_mam, 3, 4, 5, 6>();
    streamRows<Mul_mma, 3, 4, 5, 6>();
    streamRows<Mul_mata, 3, 4, 5, 6>();
    streamRows<Mul_mava, 3, 4, 6>();
    streamRows<Mul_mva, 3, 4, 6>();
    streamRows<Mul_mav, 3, 4, 6>();
    measureSingles();
    measureVectors();
    threadRow<Mul_mama, float, 4>({"1MiB", 1 << 20});
    threadRow<Mul_mama, float, 6>({"16MiB", 16 << 20});
    threadRow<Mul_mama, double, 8>({"16MiB", 16 << 20});
    threadRow<Mul_mava, float, 16>({"16MiB", 16 << 20});
    measureKnownSizes();
    measureSweeps();
}

}  // namespace bench
