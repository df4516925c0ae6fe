#include "threads.h"

#include "rows.h"

namespace bench {
namespace {

BENCH_ARRAY_FORM(Add, mama)
BENCH_ARRAY_FORM(Mul, vac)

// The answer is left as the rows that follow expect it.
template <class Form, Layout layout, std::int32_t threads, class T>
void callWithThreads(const Workload<T>& work) {
    threadsAllowed = threads;
    callKorm<Form, layout, T>(work);
    threadsAllowed = 1;
}

// One thread is entered as the library, two as its peer; time that passes is what both are measured by.
template <class Form, class T, int rows, int columns>
void addThreadRow(const Place& place) {
    static constexpr Contender<T> contenders[] = {
        {"oneThread", callWithThreads<Form, Layout::packed, 1, T>, false, true},
        {"twoThreads", callWithThreads<Form, Layout::packed, 2, T>, false, true}};
    std::string name = "threads/" + std::string(Form::name);
    name += sizeof(T) == 4 ? "_32f/" : "_64f/";
    name += std::to_string(columns) + "/packed/" + place.name;
    benchmark::RegisterBenchmark(name.c_str(),
                                 [place](benchmark::State& state) {
                                     measureRow<T>(state, Form::shape, Layout::packed, columns, rows, place,
                                                   std::span<const Contender<T>>(contenders));
                                 })
        ->Iterations(1)
        ->UseManualTime()
        ->Unit(benchmark::kNanosecond);
}

constexpr Place secondLevel{"1MiB", 1 << 20};

}  // namespace

void addThreadRows() {
    addThreadRow<Add_mama, float, 4, 4>(inCache);
    addThreadRow<Add_mama, float, 4, 4>(secondLevel);
    addThreadRow<Add_mama, float, 4, 4>(outOfCache);
    addThreadRow<Add_mama, double, 6, 6>(outOfCache);
    addThreadRow<Mul_vac, float, 1, 4>(outOfCache);
}

}  // namespace bench
