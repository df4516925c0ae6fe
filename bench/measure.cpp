#include "measure.h"

#include <time.h>

#include <algorithm>
#include <cstring>
#include <vector>

namespace bench {

Settings settings;
std::int32_t threadsAllowed = 1;

namespace {

// Time of this thread alone is not disturbed by other programs' turns on the processor. With several threads
// it is the time that passes which counts.
double nanosecondsNow(bool forks) {
    timespec now;
    clock_gettime(forks ? CLOCK_MONOTONIC : CLOCK_THREAD_CPUTIME_ID, &now);
    return static_cast<double>(now.tv_sec) * 1e9 + static_cast<double>(now.tv_nsec);
}

template <class T>
double nanosecondsOf(const Contender<T>& contender, const Workload<T>& work, long calls) {
    // Volatile: the compiler must not see which function is called, nor that its effect is always the same.
    void (*volatile run)(const Workload<T>&) = contender.run;
    const double start = nanosecondsNow(contender.forks);
    for (long call = 0; call < calls; ++call) run(work);
    return (nanosecondsNow(contender.forks) - start) / static_cast<double>(calls);
}

// As many calls as fill one sample.
template <class T>
long callsFor(const Contender<T>& contender, const Workload<T>& work) {
    long calls = 1;
    for (;;) {
        const double one = nanosecondsOf(contender, work, calls);
        const double total = one * static_cast<double>(calls);
        if (total >= settings.sampleNanoseconds() / 4 || calls >= 1L << 30)
            return std::max(1L, static_cast<long>(settings.sampleNanoseconds() / one));
        calls *= 4;
    }
}

double median(std::vector<double> values) {
    const auto middle = values.begin() + static_cast<std::ptrdiff_t>(values.size() / 2);
    std::nth_element(values.begin(), middle, values.end());
    return *middle;
}

// The machine is never quiet, so the contenders take turns in short samples and a row is judged by medians.
template <class T>
class Series {
public:
    Series(std::span<const Contender<T>> contenders, const Workload<T>& work)
        : contenders_(contenders), work_(work), samples_(contenders.size()) {
        for (const Contender<T>& contender : contenders) calls_.push_back(callsFor(contender, work));
    }
    void take(int rounds) {
        const std::size_t all = contenders_.size();
        for (std::size_t round = 0; round < static_cast<std::size_t>(rounds); ++round) {
            // Each goes behind each of the others in turn.
            for (std::size_t turn = 0; turn < all; ++turn) {
                const std::size_t who = round % 2 ? (turn + round) % all : (2 * all - 1 - turn + round) % all;
                samples_[who].push_back(nanosecondsOf(contenders_[who], work_, calls_[who]));
            }
        }
    }
    double nanoseconds(std::size_t who) const { return median(samples_[who]); }
    // Of the best peer to the library.
    double ratio() const {
        double best = 0;
        for (std::size_t who = 1; who < contenders_.size(); ++who) {
            if (contenders_[who].isYardstick) continue;
            if (best == 0 || nanoseconds(who) < best) best = nanoseconds(who);
        }
        return best / nanoseconds(0);
    }

private:
    std::span<const Contender<T>> contenders_;
    const Workload<T>& work_;
    std::vector<long> calls_;
    std::vector<std::vector<double>> samples_;
};

// Every contender must leave the same bytes, in gaps too. Returns the name of the first that doesn't.
template <class T>
const char* firstToDiffer(std::span<const Contender<T>> contenders, const Workload<T>& work) {
    static std::vector<std::byte> expected;
    const auto clear = [&] { std::memset(work.resultBytes, 0x5a, work.resultSpan); };
    const Contender<T>& judge = contenders[contenders.size() > 1 ? 1 : 0];
    clear();
    judge.run(work);
    expected.assign(work.resultBytes, work.resultBytes + work.resultSpan);
    for (const Contender<T>& contender : contenders) {
        if (contender.isYardstick) continue;
        clear();
        contender.run(work);
        if (std::memcmp(expected.data(), work.resultBytes, work.resultSpan) != 0) return contender.name;
    }
    return nullptr;
}

}  // namespace

template <class T>
void measureRow(benchmark::State& state, const Shape& shape, Layout layout, int width, int height, const Place& place,
                std::span<const Contender<T>> contenders) {
    constexpr double goal = 0.97;
    const Workload<T> work = makeWorkload<T>(shape, layout, width, height, place.bytes);
    if (const char* name = firstToDiffer(contenders, work)) {
        state.SkipWithError((std::string("results differ: ") + name).c_str());
        return;
    }
    Series<T> series(contenders, work);
    const int rounds = place.bytes > inCache.bytes ? (settings.quick ? 5 : 7) : settings.rounds();
    series.take(rounds);
    // More samples where it is close or worse: all of them count, so this favours nobody.
    for (int again = 0; again < 2 && series.ratio() < goal + 0.03; ++again) series.take(rounds);

    for (auto _ : state) state.SetIterationTime(series.nanoseconds(0) * 1e-9);
    for (std::size_t who = 0; who < contenders.size(); ++who)
        state.counters[contenders[who].name] = series.nanoseconds(who);
    if (contenders.size() > 1) state.counters["ratio"] = series.ratio();
    state.counters["objects"] = work.count;
    state.counters["bytes"] = work.bytesMoved;
}

template void measureRow<float>(benchmark::State&, const Shape&, Layout, int, int, const Place&,
                                std::span<const Contender<float>>);
template void measureRow<double>(benchmark::State&, const Shape&, Layout, int, int, const Place&,
                                 std::span<const Contender<double>>);

}  // namespace bench
