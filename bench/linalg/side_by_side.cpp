#include "side_by_side.h"

#include <time.h>

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <cstdio>

namespace linalgbench {

Options options;

namespace {

bool differed = false;

double now() {
    timespec time;
    clock_gettime(CLOCK_THREAD_CPUTIME_ID, &time);
    return static_cast<double>(time.tv_sec) * 1e9 + static_cast<double>(time.tv_nsec);
}

double nanosecondsOf(const Contender& contender, long calls) {
    const double start = now();
    for (long call = 0; call < calls; ++call) contender.run();
    return (now() - start) / static_cast<double>(calls);
}

double median(std::vector<double> values) {
    const auto middle = values.begin() + static_cast<std::ptrdiff_t>(values.size() / 2);
    std::nth_element(values.begin(), middle, values.end());
    return *middle;
}

bool sameResults(const Row& row) {
    double largest = 0;
    for (std::size_t i = 0; i < row.values; ++i) largest = std::max(largest, std::fabs(row.contenders[0].value(i)));
    for (const Contender& contender : row.contenders) {
        for (std::size_t i = 0; i < row.values; ++i) {
            const double off = std::fabs(contender.value(i) - row.contenders[0].value(i));
            if (off <= row.tolerance * largest) continue;
            std::fprintf(stderr, "%s: %s differs at value %zu: %g instead of %g\n", row.name.c_str(),
                         contender.name.c_str(), i, contender.value(i), row.contenders[0].value(i));
            return false;
        }
    }
    return true;
}

}  // namespace

void measure(const Row& row, std::vector<Measured>& measured) {
    if (row.name.find(options.filter) == std::string::npos) return;
    for (const Contender& contender : row.contenders) contender.run();
    if (!sameResults(row)) {
        differed = true;
        return;
    }
    const double sample = options.quick ? 1e5 : 4e5;
    std::vector<long> calls;
    for (const Contender& contender : row.contenders)
        calls.push_back(std::max(1L, static_cast<long>(sample / nanosecondsOf(contender, 1))));
    const bool slow = nanosecondsOf(row.contenders[0], 1) > 1e6;
    const int rounds = options.quick ? 5 : slow ? 7 : 15;
    std::vector<std::vector<double>> samples(calls.size());
    for (int round = 0; round < rounds; ++round) {
        for (std::size_t turn = 0; turn < calls.size(); ++turn) {
            const std::size_t who = (turn + static_cast<std::size_t>(round)) % calls.size();
            samples[who].push_back(nanosecondsOf(row.contenders[who], calls[who]));
        }
    }
    Measured result{row.name, {}, {}};
    for (std::size_t who = 0; who < calls.size(); ++who) {
        result.names.push_back(row.contenders[who].name);
        result.nanoseconds.push_back(median(samples[who]) / static_cast<double>(row.objects));
    }
    measured.push_back(result);
    std::fprintf(stderr, "%-32s", row.name.c_str());
    for (std::size_t i = 0; i < result.names.size(); ++i)
        std::fprintf(stderr, "  %s %.4g", result.names[i].c_str(), result.nanoseconds[i]);
    std::fprintf(stderr, "\n");
}

bool resultsDiffered() { return differed; }

void writeRows(std::FILE* to, const std::vector<Measured>& measured) {
    const char* before = "";
    for (const Measured& row : measured) {
        std::fprintf(to, "%s\n    {\"name\": \"%s\", \"ns\": {", before, row.row.c_str());
        for (std::size_t i = 0; i < row.names.size(); ++i)
            std::fprintf(to, "%s\"%s\": %.6g", i == 0 ? "" : ", ", row.names[i].c_str(), row.nanoseconds[i]);
        std::fprintf(to, "}}");
        before = ",";
    }
}

double cyclesPerNanosecond() {
    static const double rate = [] {
        double best = 0;
        for (int round = 0; round < 20; ++round) {
            constexpr int loops = 20000;
            std::uintptr_t value = 1;
            const double start = now();
            for (int i = 0; i < loops; ++i) {
                asm volatile(
                    "add %0, %0\n\tadd %0, %0\n\tadd %0, %0\n\tadd %0, %0\n\tadd %0, %0\n\t"
                    "add %0, %0\n\tadd %0, %0\n\tadd %0, %0\n\tadd %0, %0\n\tadd %0, %0"
                    : "+r"(value));
            }
            best = std::max(best, 10.0 * loops / (now() - start));
        }
        return best;
    }();
    return rate;
}

double x87MultiplicationCycles() {
    double best = 1e9;
    for (int round = 0; round < 20; ++round) {
        constexpr int loops = 20000;
        const double start = now();
        // Seven products in flight: each waits for its own predecessor only.
        asm volatile("fld1\n\tfld1\n\tfld1\n\tfld1\n\tfld1\n\tfld1\n\tfld1\n\tfld1" ::
                         : "st", "st(1)", "st(2)", "st(3)", "st(4)", "st(5)", "st(6)", "st(7)");
        for (int i = 0; i < loops; ++i) {
            asm volatile(
                "fmul %%st, %%st(1)\n\tfmul %%st, %%st(2)\n\tfmul %%st, %%st(3)\n\tfmul %%st, %%st(4)\n\t"
                "fmul %%st, %%st(5)\n\tfmul %%st, %%st(6)\n\tfmul %%st, %%st(7)" ::
                    : "memory");
        }
        asm volatile(
            "fstp %%st(0)\n\tfstp %%st(0)\n\tfstp %%st(0)\n\tfstp %%st(0)\n\t"
            "fstp %%st(0)\n\tfstp %%st(0)\n\tfstp %%st(0)\n\tfstp %%st(0)" ::
                : "memory");
        best = std::min(best, (now() - start) * cyclesPerNanosecond() / (7.0 * loops));
    }
    return best;
}

}  // namespace linalgbench
