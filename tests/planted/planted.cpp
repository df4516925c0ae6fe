// Mistakes on purpose, for the sanitizers to find in the library's own code: planted NAME

#include <omp.h>
#include <sched.h>

#include <atomic>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <vector>

#include "korm.h"

namespace {

constexpr std::int32_t size = 4;
constexpr std::int32_t count = 1000;  // enough to be split over threads

std::int32_t scale(const std::vector<float>& vectors, std::vector<float>& result) {
    return kormMul_vac_32f(vectors.data(), size * 4, 4, 2, result.data(), size * 4, 4, size, count);
}

// Two threads, each with a result of its own, or both with one.
std::int32_t callFromTwoThreads(bool shareResult) {
    const std::vector<float> vectors(size * count, 1.5F);
    std::vector<float> results[2] = {std::vector<float>(size * count), std::vector<float>(size * count)};
    std::int32_t sum = 0;
    std::atomic<int> arrived{0};
#pragma omp parallel num_threads(2) default(none) shared(vectors, results, shareResult, sum, arrived)
    {
        // Both are at work before either writes, in no order that a checker could see.
        arrived.fetch_add(1, std::memory_order_relaxed);
        while (arrived.load(std::memory_order_relaxed) < 2) sched_yield();
        const std::int32_t status = scale(vectors, results[shareResult ? 0 : omp_get_thread_num()]);
#pragma omp critical
        sum += status;
    }
    return sum;
}

std::int32_t callWithLength(std::size_t length) {
    const std::vector<float> vectors(length, 1.5F);
    std::vector<float> result(size * count);
    return scale(vectors, result);
}

// One vector of which the last element was never written; does the result say so?
std::int32_t callUnwritten() {
    auto* const vector = static_cast<float*>(std::malloc(size * sizeof(float)));
    float result[size];
    vector[0] = vector[1] = vector[2] = 1.5F;
    kormMul_vac_32f(vector, size * 4, 4, 2, result, size * 4, 4, size, 1);
    std::free(vector);
    return result[size - 1] > 0 ? 1 : 0;
}

}  // namespace

int main(int argc, char** argv) {
    const char* const name = argc == 2 ? argv[1] : "";
    if (std::strcmp(name, "nothing") == 0) return callFromTwoThreads(false) + callWithLength(size * count);
    if (std::strcmp(name, "race") == 0) return callFromTwoThreads(true);
    if (std::strcmp(name, "overread") == 0) return callWithLength(size * count - 1);
    if (std::strcmp(name, "unwritten") == 0) return callUnwritten();
    if (std::strcmp(name, "overflow") == 0) {
        volatile std::int32_t largest = INT32_MAX;
        return largest + argc;
    }
    std::fputs("usage: planted nothing|race|overread|unwritten|overflow\n", stderr);
    return 2;
}
