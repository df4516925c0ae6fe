// Runs the contenders of one row side by side and hands the figures to Google Benchmark.
#pragma once

#include <benchmark/benchmark.h>

#include <span>
#include <string>

#include "forms.h"
#include "series.h"
#include "workload.h"

namespace bench {

// What the command line chose (main.cpp).
struct Settings {
    bool quick = false;  // fewer rows, shorter series
    bool all = false;    // every form in every layout out of cache as well
    int rounds() const { return quick ? 11 : 25; }
    double sampleNanoseconds() const { return quick ? 100e3 : 250e3; }
};
extern Settings settings;

// The answer that the library gets when it asks how many threads it may use.
extern std::int32_t threadsAllowed;

template <class T>
using Contender = Entrant<Workload<T>>;

struct Place {
    const char* name;
    std::size_t bytes;
};
// All operands together: half of a first-level cache, and more than any cache of one core.
inline constexpr Place inCache{"cache", 24 << 10};
inline constexpr Place outOfCache{"memory", 64 << 20};

// One row: counters are the nanoseconds of one call for each contender. The first contender is the library.
template <class T>
void measureRow(benchmark::State& state, const Shape& shape, Layout layout, int width, int height, const Place& place,
                std::span<const Contender<T>> contenders);

extern template void measureRow<float>(benchmark::State&, const Shape&, Layout, int, int, const Place&,
                                       std::span<const Contender<float>>);
extern template void measureRow<double>(benchmark::State&, const Shape&, Layout, int, int, const Place&,
                                        std::span<const Contender<double>>);

}  // namespace bench
