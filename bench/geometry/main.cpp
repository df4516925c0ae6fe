// geometry_bench [--quick] [--filter TEXT] [--json FILE]
//
// Measures the functions of fixed size side by side with their peers: one call for one object, and batches of
// 100 to 1,000,000 vectors. Results are compared before anything is timed. Contenders take turns in short samples
// of the thread's own time, and a row tells medians.
#include <korm.h>
#include <time.h>

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <cstring>
#include <memory>
#include <random>

#include "work.h"

// Taken by the library instead of the core library's: everything is measured on one thread.
extern "C" std::int32_t ownGetNumThreads() { return 1; }

namespace bench {
namespace {

struct Settings {
    bool quick = false;
    std::string filter;
    std::FILE* json = nullptr;
};
Settings settings;
int failures = 0;
bool isFirst = true;  // of the rows that go into the file

double nanosecondsNow() {
    timespec now;
    clock_gettime(CLOCK_THREAD_CPUTIME_ID, &now);
    return static_cast<double>(now.tv_sec) * 1e9 + static_cast<double>(now.tv_nsec);
}

template <class Work>
double nanosecondsOf(void (*run)(const Work&), const Work& work, long times) {
    // Volatile: the compiler must not see which function is called, nor that its effect is always the same.
    void (*volatile hidden)(const Work&) = run;
    const double start = nanosecondsNow();
    for (long i = 0; i < times; ++i) hidden(work);
    return (nanosecondsNow() - start) / static_cast<double>(times);
}

template <class Work>
long timesFor(void (*run)(const Work&), const Work& work) {
    const double sample = settings.quick ? 40e3 : 120e3;
    for (long times = 1;; times *= 4) {
        // The best of three: one interruption of a short run would make all samples as short, and the clock a part of
        // them.
        double one = nanosecondsOf(run, work, times);
        for (int again = 0; again < 2; ++again) one = std::min(one, nanosecondsOf(run, work, times));
        if (one * static_cast<double>(times) >= sample / 4) return std::max(1L, static_cast<long>(sample / one));
    }
}

double median(std::vector<double> values) {
    const auto middle = values.begin() + static_cast<std::ptrdiff_t>(values.size() / 2);
    std::nth_element(values.begin(), middle, values.end());
    return *middle;
}

// Nanoseconds of one object, for each contender.
template <class Work>
std::vector<double> measure(const Row<Work>& row, const Work& work, double objects) {
    const std::size_t all = row.contenders.size();
    std::vector<long> times;
    for (const auto& contender : row.contenders) times.push_back(timesFor(contender.run, work));
    std::vector<std::vector<double>> samples(all);
    const std::size_t rounds = settings.quick ? 9 : 31;
    for (std::size_t round = 0; round < rounds; ++round)
        for (std::size_t turn = 0; turn < all; ++turn) {
            const std::size_t who = round % 2 ? (turn + round) % all : (2 * all - 1 - turn + round) % all;
            samples[who].push_back(nanosecondsOf(row.contenders[who].run, work, times[who]) / objects);
        }
    std::vector<double> medians;
    for (const auto& series : samples) medians.push_back(median(series));
    return medians;
}

// Rounding differs between the contenders by design, by no more than this.
bool isClose(float a, float b) {
    return std::fabs(a - b) <= 2e-3F * std::max(1.0F, std::max(std::fabs(a), std::fabs(b)));
}

// All contenders against the library. `step` floats lie from one object's result to the next.
template <class Work>
bool agree(const Row<Work>& row, const Work& work, std::ptrdiff_t objects, std::ptrdiff_t step) {
    const std::size_t floats = static_cast<std::size_t>(objects * step);
    std::vector<float> expected;
    for (const auto& contender : row.contenders) {
        std::fill(work.result, work.result + floats, 77.0F);
        contender.run(work);
        if (expected.empty()) expected.assign(work.result, work.result + floats);
        for (std::ptrdiff_t k = 0; k < objects; ++k)
            for (int i = 0; i < row.resultFloats; ++i) {
                const float ours = expected[static_cast<std::size_t>(k * step + i)], theirs = work.result[k * step + i];
                if (isClose(ours, theirs)) continue;
                std::printf("%s: results differ: object %td, element %d: korm %g, %s %g\n", row.name.c_str(), k, i,
                            static_cast<double>(ours), contender.name, static_cast<double>(theirs));
                ++failures;
                return false;
            }
    }
    return true;
}

template <class Work>
void report(const Row<Work>& row, const std::string& name, const std::vector<double>& nanoseconds) {
    double best = 0;
    for (std::size_t i = 1; i < nanoseconds.size(); ++i)
        if (row.contenders[i].isPeer && (best == 0 || nanoseconds[i] < best)) best = nanoseconds[i];
    std::printf("%-44s", name.c_str());
    for (std::size_t i = 0; i < nanoseconds.size(); ++i)
        std::printf(" %s %.2f", row.contenders[i].name, nanoseconds[i]);
    if (best > 0) std::printf("  ratio %.2f", best / nanoseconds[0]);
    std::printf("\n");
    std::fflush(stdout);
    if (settings.json == nullptr) return;
    std::fprintf(settings.json, "%s\n    {\"name\": \"%s\"", isFirst ? "" : ",", name.c_str());
    isFirst = false;
    for (std::size_t i = 0; i < nanoseconds.size(); ++i)
        std::fprintf(settings.json, ", \"%s\": %.4f", row.contenders[i].name, nanoseconds[i]);
    std::fprintf(settings.json, "}");
}

struct Free {
    void operator()(float* block) const { std::free(block); }
};
using Block = std::unique_ptr<float, Free>;

constexpr std::size_t page = 4096;

// From the start of a page on, with room for half a page in front.
Block block(std::size_t floats) {
    return Block(static_cast<float*>(std::aligned_alloc(page, (floats * sizeof(float) / page + 2) * page)));
}

void fill(float* to, std::size_t floats, unsigned seed) {
    std::mt19937 random(seed);
    std::uniform_real_distribution<float> values(0.5F, 2.0F);
    for (std::size_t i = 0; i < floats; ++i) to[i] = values(random);
}

bool isWanted(const std::string& name) { return name.find(settings.filter) != std::string::npos; }

void runCalls() {
    std::vector<CallRow> rows = callRows();
    addGlmCalls(rows);
    addCglmCalls(rows);
    constexpr std::size_t floats = static_cast<std::size_t>(Calls::objects) * Calls::floats;
    const Block memory[] = {block(floats), block(floats), block(floats), block(floats), block(floats)};
    for (const CallRow& row : rows) {
        if (!isWanted("call/" + row.name)) continue;
        Calls work{};
        for (unsigned i = 0; i < 4; ++i) {
            work.inputs[i] = memory[i].get();
            fill(work.inputs[i], floats, i);
        }
        // A matrix far from singular.
        for (std::size_t i = 0; i < floats; i += 5) work.inputs[0][i - i % 16 + i % 16] += 4;
        work.result = memory[4].get();
        const float scalars[] = {0.7F, 0.9F, 1.3F, 0.4F, 0.5F, 40.0F, 0.2F, 0.1F};
        std::copy(std::begin(scalars), std::end(scalars), work.scalars);
        if (!agree(row, work, Calls::objects, Calls::floats)) continue;
        report(row, "call/" + row.name, measure(row, work, Calls::objects));
    }
}

void runBatches() {
    std::vector<BatchRow> rows = batchRows();
    addLoops(rows);
    addGlmBatches(rows);
    addGlmSimdBatches(rows);
    addCglmBatches(rows);

    alignas(16) float world[16], view[16], projection[16], all[16], inverse[16];
    const float eye[] = {1, 2, -9}, at[] = {0.5F, 1, 1}, up[] = {0, 1, 0};
    kormRotationYawPitchRoll_m4_32f(0.4F, 0.3F, 0.2F, world);
    kormLookAtLH_m4_32f(eye, at, up, view);
    kormPerspectiveFovLH_m4_32f(0.8F, 1.5F, 0.5F, 50, projection);
    kormMul_mm4x4_32f(world, view, all);
    kormMul_mm4x4_32f(all, projection, all);
    kormInvert_m4_32f(all, nullptr, inverse);

    for (const BatchRow& row : rows)
        for (const std::int32_t count : {100, 1000, 10000, 100000, 1000000}) {
            const std::string name = row.name + "/" + std::to_string(count);
            if (!isWanted(name) || (settings.quick && count != 1000 && count != 1000000)) continue;
            const auto floats = static_cast<std::size_t>(count);
            const Block source = block(floats * static_cast<std::size_t>(row.inputs));
            const Block result = block(floats * static_cast<std::size_t>(row.outputs));
            fill(source.get(), floats * static_cast<std::size_t>(row.inputs), 7);
            // Half a page apart: what lies in the same place of two pages is taken for the same by the processor at
            // first, and whom that hits would be up to chance.
            float* const apart = result.get() + page / 2 / sizeof(float);
            Batch work{all,   projection,      view, world, source.get(), apart, 4 * row.inputs, 4 * row.outputs,
                       count, {640, 480, 0, 1}};
            if (row.name.starts_with("Unproject")) {
                // Points on the viewport, and the inverse for those who don't form it themselves.
                work.matrix = inverse;
                for (std::size_t k = 0; k < floats; ++k) source.get()[3 * k + 2] = 0.93F;
                for (std::size_t k = 0; k < floats; ++k) source.get()[3 * k] *= 200, source.get()[3 * k + 1] *= 150;
            }
            if (!agree(row, work, count, row.outputs)) continue;
            report(row, name, measure(row, work, count));
        }
}

}  // namespace
}  // namespace bench

int main(int argc, char** argv) {
    for (int i = 1; i < argc; ++i) {
        if (!std::strcmp(argv[i], "--quick")) bench::settings.quick = true;
        else if (!std::strcmp(argv[i], "--filter") && i + 1 < argc) bench::settings.filter = argv[++i];
        else if (!std::strcmp(argv[i], "--json") && i + 1 < argc) {
            bench::settings.json = std::fopen(argv[++i], "w");
            if (bench::settings.json == nullptr) {
                std::fprintf(stderr, "geometry_bench: can't write %s\n", argv[i]);
                return 2;
            }
        } else {
            std::fprintf(stderr, "usage: geometry_bench [--quick] [--filter TEXT] [--json FILE]\n");
            return 2;
        }
    }
    const kormLibVersion* const version = kormGetLibVersion();
    std::printf("nanoseconds an object, median; ratio: best peer / korm\n");
    if (bench::settings.json != nullptr)
        std::fprintf(bench::settings.json,
                     "{\"library\": \"%s, %s\", \"compiler\": \"%s\", \"flags\": \"%s\", \"rows\": [", version->name,
                     version->version, KORM_BENCH_COMPILER, KORM_BENCH_FLAGS);
    bench::runCalls();
    bench::runBatches();
    if (bench::settings.json != nullptr) {
        std::fprintf(bench::settings.json, "\n]}\n");
        std::fclose(bench::settings.json);
    }
    return bench::failures == 0 ? 0 : 1;
}
