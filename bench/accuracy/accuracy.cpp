// Prints the accuracy of decompositions, solves, inverses and eigenproblems beside LAPACK's, as tables of ratios: bench_accuracy
#include <cstdio>
#include <exception>

#include "families.h"

int main() try {
    bench::measureCholesky();
    bench::measureQr();
    bench::measureLu();
    bench::measureInverses();
    bench::measureSymmetric();
    bench::measureGeneral();
    return 0;
} catch (const std::exception& error) {
    std::fprintf(stderr, "bench_accuracy: %s\n", error.what());
    return 1;
}
