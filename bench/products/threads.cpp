// The library on one thread and on two, with a control: the same plain loop on one and on two threads, which shows
// what two threads are worth on this machine at this moment. The control's second thread is the library's too, from the
// OpenMP runtime: it goes on looking for work for a while after a call, and a thread beside it would share a processor
// with it.
#include "korm_calls.h"
#include "peers.h"

namespace bench::products {
namespace {

PRODUCT_FORM(mama)
PRODUCT_FORM(mava)

// The answer is left as the rows that follow expect it.
template <class Form, std::int32_t threads, class T>
void korm(const Problem<T>& problem) {
    threadsAllowed = threads;
    callKorm<Form>(problem);
    threadsAllowed = 1;
}

template <class Form, int n, class T>
void controlOnTwo(const Problem<T>& problem) {
    Problem<T> halves[2] = {problem, problem};
    halves[0].count = problem.count / 2;
    halves[1].count = problem.count - halves[0].count;
    halves[1].first = problem.a(halves[0].count);
    halves[1].second = problem.b(halves[0].count);
    halves[1].result = problem.c(halves[0].count);
#pragma omp parallel for num_threads(2) schedule(static)
    for (int half = 0; half < 2; ++half) loop<Form::shape, n, T>(halves[half]);
}

template <class Form, class T, int n>
void addRow(const char* place, std::size_t bytes) {
    const std::vector<Contender<T>> contenders{{"oneThread", korm<Form, 1, T>, false, true},
                                               {"twoThreads", korm<Form, 2, T>, false, true},
                                               {"controlOne", loop<Form::shape, n, T>, false, true},
                                               {"controlTwo", controlOnTwo<Form, n, T>, false, true}};
    RowOptions options;
    options.bytes = bytes;
    measure<T>("threads/" + std::string(Form::name) + typeName<T>() + "/" + std::to_string(n) + "/" + place,
               Form::shape, n, options, contenders);
}

}  // namespace

void addThreads() {
    addRow<mama, float, 4>("1MiB", 1 << 20);
    addRow<mama, float, 6>("16MiB", 16 << 20);
    addRow<mama, double, 8>("16MiB", 16 << 20);
    addRow<mava, float, 16>("16MiB", 16 << 20);
}

}  // namespace bench::products
