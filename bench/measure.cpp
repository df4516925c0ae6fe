#include "measure.h"

#include <cstring>
#include <vector>

namespace bench {

Settings settings;
std::int32_t threadsAllowed = 1;

namespace {

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
    Series<Workload<T>> series(contenders, work, settings.sampleNanoseconds());
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
