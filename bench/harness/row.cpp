// The loop that measures all rows, their results as JSON, and the command line:
// bench_FAMILY [--quick] [--filter REGEX] [--list] [--out FILE.json] [--any-kernels]
#include "row.h"

#include <korm.h>
#include <time.h>
#include <unistd.h>

#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <regex>

namespace bench {

Settings settings;
std::int32_t threadsAllowed = 1;

namespace {

std::string context, rows;  // of the JSON
bool resultsDiffered = false;

std::string quoted(const std::string& text) {
    std::string result = "\"";
    for (const char c : text) {
        if (c == '"' || c == '\\') result += '\\';
        result += c;
    }
    return result + "\"";
}

void addPair(std::string& object, const std::string& key, double value) {
    char number[32];
    std::snprintf(number, sizeof number, "%.6g", value);
    object += (object.empty() ? "" : ", ") + quoted(key) + ": " + number;
}

double median(std::vector<double> values) {
    const auto middle = values.begin() + static_cast<std::ptrdiff_t>(values.size() / 2);
    std::nth_element(values.begin(), middle, values.end());
    return *middle;
}

// One thread, and kernels for the instruction set of the library and all other peers, unless they may use what the processor
// has. These are read when libraries are loaded, so the program starts itself again.
void holdPeers(char** argv, bool anyKernels) {
    const char* const mark = "KORM_BENCH_PEERS_HELD";
    if (std::getenv(mark) != nullptr) return;
    setenv(mark, "1", 1);
    setenv("OPENBLAS_NUM_THREADS", "1", 1);
    if (anyKernels) {
        unsetenv("OPENBLAS_CORETYPE");
        unsetenv("LIBXSMM_TARGET");
    } else {
        setenv("OPENBLAS_CORETYPE", "Core2", 1);
        setenv("LIBXSMM_TARGET", "sse4", 1);
    }
    execv("/proc/self/exe", argv);
    std::perror("cannot start again");
    std::exit(1);
}

}  // namespace

bool isWanted(const std::string& name) {
    static const std::regex filter(settings.filter);
    if (!std::regex_search(name, filter)) return false;
    if (settings.isList) std::printf("%s\n", name.c_str());
    return !settings.isList;
}

void note(const std::string& key, const std::string& value) {
    context += (context.empty() ? "" : ", ") + quoted(key) + ": " + quoted(value);
}

// The time of this thread alone is not disturbed by other programs' turns on the processor.
double Row::nanosecondsNow() const {
    timespec now;
    clock_gettime(usesThreads_ ? CLOCK_MONOTONIC : CLOCK_THREAD_CPUTIME_ID, &now);
    return static_cast<double>(now.tv_sec) * 1e9 + static_cast<double>(now.tv_nsec);
}

// Nanoseconds of one call.
double Row::sample(const Contender& contender) const {
    const double start = nanosecondsNow();
    for (long call = 0; call < contender.calls; ++call) contender.run();
    return (nanosecondsNow() - start) / static_cast<double>(contender.calls);
}

// As many calls as fill one sample.
void Row::chooseCalls(Contender& contender, double nanoseconds) const {
    for (contender.calls = 1;; contender.calls *= 4) {
        // The better of two: an interruption would make all samples short, and the clock a part of them.
        double one = sample(contender);
        if (one < nanoseconds) one = std::min(one, sample(contender));
        if (one * static_cast<double>(contender.calls) < nanoseconds / 4) continue;
        contender.calls = std::max(1L, static_cast<long>(nanoseconds / one));
        return;
    }
}

// The machine is never quiet, so the contenders take turns in short samples, each behind each of the others in turn, and
// a row is judged by medians.
void Row::takeSamples(int rounds) {
    const std::size_t all = contenders_.size();
    for (std::size_t round = 0; round < static_cast<std::size_t>(rounds); ++round) {
        for (std::size_t turn = 0; turn < all; ++turn) {
            Contender& contender =
                contenders_[round % 2 ? (turn + round) % all : (2 * all - 1 - turn + round % all) % all];
            contender.samples.push_back(sample(contender));
        }
    }
}

// Time of the best peer over the library's.
double Row::ratio() const {
    double best = INFINITY;
    for (std::size_t i = 1; i < contenders_.size(); ++i)
        if (!contenders_[i].isControl) best = std::min(best, median(contenders_[i].samples));
    return best / median(contenders_[0].samples);
}

// The name of the contender whose results are not the library's, or nothing.
std::string Row::firstToDiffer() const {
    std::vector<double> expected;
    double allowed = 0;
    for (const Contender& contender : contenders_) {
        if (contender.isControl) continue;
        if (clear_) clear_();
        contender.run();
        const Value& value = contender.value ? contender.value : value_;
        // Of large results a sample, at every position of an object.
        const std::size_t step = values_ / 200000 | 1;
        for (std::size_t i = 0; i < values_; i += step) {
            const double found = value(i);
            if (&contender == contenders_.data()) {
                expected.push_back(found);
                allowed = std::max(allowed, tolerance_ * std::fabs(found));
            } else if (!(std::fabs(found - expected[i / step]) <= allowed)) {
                std::fprintf(stderr, "%s: result %zu is %.9g, of %s %.9g\n", name_.c_str(), i, expected[i / step],
                             contender.name.c_str(), found);
                return contender.name;
            }
        }
    }
    return "";
}

void Row::measure() {
    const std::string different = firstToDiffer();
    resultsDiffered |= !different.empty();
    if (different.empty()) {
        const bool isSweep = name_.starts_with("sweep");
        const double nanoseconds = isSweep ? 20e3 : settings.quick ? 40e3 : 150e3;
        double round = 0;
        for (Contender& contender : contenders_) {
            chooseCalls(contender, nanoseconds);
            round += sample(contender) * static_cast<double>(contender.calls);
        }
        const int rounds = isSweep ? 7 : settings.quick ? 5 : round > 5e6 ? 7 : 21;
        takeSamples(rounds);
        // More samples where it is close or worse: all of them count, so this favours nobody.
        if (!settings.quick && !isSweep && ratio() < 1) takeSamples(rounds);
    }
    keep(different);
}

void Row::keep(const std::string& error) const {
    std::string times, controls, facts;
    if (error.empty()) {
        std::fprintf(stderr, "%-40s", name_.c_str());
        for (const Contender& contender : contenders_) {
            const double one = median(contender.samples) / objects_;
            std::fprintf(stderr, "  %s %.4g", contender.name.c_str(), one);
            addPair(times, contender.name, one);
            if (contender.isControl) controls += (controls.empty() ? "" : ", ") + quoted(contender.name);
        }
        if (std::isfinite(ratio())) std::fprintf(stderr, "  ratio %.2f", ratio());
        std::fprintf(stderr, "\n");
    }
    for (const auto& [key, value] : facts_) addPair(facts, key, value);
    rows += (rows.empty() ? "\n{\"name\": " : ",\n{\"name\": ") + quoted(name_) + ", \"ns\": {" + times +
            "}, \"controls\": [" + controls + "], \"facts\": {" + facts + "}, \"error\": " + quoted(error) + "}";
}

}  // namespace bench

// Taken by the library instead of the core library's.
extern "C" __attribute__((visibility("default"))) std::int32_t ownGetNumThreads();
extern "C" std::int32_t ownGetNumThreads() { return bench::threadsAllowed; }

int main(int argc, char** argv) {
    using namespace bench;
    const char* out = nullptr;
    bool anyKernels = false;
    for (int i = 1; i < argc; ++i) {
        if (!std::strcmp(argv[i], "--quick")) settings.quick = true;
        else if (!std::strcmp(argv[i], "--list")) settings.isList = true;
        else if (!std::strcmp(argv[i], "--any-kernels")) anyKernels = true;
        else if (!std::strcmp(argv[i], "--filter") && i + 1 < argc) settings.filter = argv[++i];
        else if (!std::strcmp(argv[i], "--out") && i + 1 < argc) out = argv[++i];
        else {
            std::fprintf(stderr, "usage: %s [--quick] [--filter REGEX] [--list] [--out FILE.json] [--any-kernels]\n",
                         argv[0]);
            return 2;
        }
    }
    holdPeers(argv, anyKernels);
    note("library", std::string(kormGetLibVersion()->name) + ", " + kormGetLibVersion()->version);
    note("target", KORM_BENCH_TARGET);
    note("compiler", KORM_BENCH_COMPILER);
    note("flags", KORM_BENCH_FLAGS);
    note("mode", settings.quick ? "quick" : "full");
    measureRows();
    if (out != nullptr) {
        std::FILE* const file = std::fopen(out, "w");
        if (file == nullptr) return std::perror(out), 1;
        std::fprintf(file, "{\"context\": {%s},\n\"rows\": [%s\n]}\n", context.c_str(), rows.c_str());
        if (std::fclose(file) != 0) return std::perror(out), 1;
    }
    return resultsDiffered ? 1 : 0;
}
