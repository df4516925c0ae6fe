// Contenders that do the same work, timed side by side.
#pragma once

#include <time.h>

#include <algorithm>
#include <cstddef>
#include <span>
#include <vector>

namespace bench {

template <class Work>
struct Entrant {
    const char* name;
    void (*run)(const Work&);
    // The copying loop shows what the memory gives; it computes nothing that could be compared.
    bool isYardstick = false;
    bool forks = false;  // may run on several threads
};

// Time of this thread alone is not disturbed by other programs' turns on the processor. With several threads
// it is the time that passes which counts.
inline double nanosecondsNow(bool forks) {
    timespec now;
    clock_gettime(forks ? CLOCK_MONOTONIC : CLOCK_THREAD_CPUTIME_ID, &now);
    return static_cast<double>(now.tv_sec) * 1e9 + static_cast<double>(now.tv_nsec);
}

// The machine is never quiet, so the contenders take turns in short samples and a row is judged by medians.
template <class Work>
class Series {
public:
    Series(std::span<const Entrant<Work>> contenders, const Work& work, double sampleNanoseconds)
        : contenders_(contenders), work_(work), sampleNanoseconds_(sampleNanoseconds), samples_(contenders.size()) {
        for (const Entrant<Work>& contender : contenders) calls_.push_back(callsFor(contender));
    }
    void take(int rounds) {
        const std::size_t all = contenders_.size();
        for (std::size_t round = 0; round < static_cast<std::size_t>(rounds); ++round) {
            // Each goes behind each of the others in turn.
            for (std::size_t turn = 0; turn < all; ++turn) {
                const std::size_t who = round % 2 ? (turn + round) % all : (2 * all - 1 - turn + round) % all;
                samples_[who].push_back(nanosecondsOf(contenders_[who], calls_[who]));
            }
        }
    }
    double nanoseconds(std::size_t who) const {
        std::vector<double> values = samples_[who];
        const auto middle = values.begin() + static_cast<std::ptrdiff_t>(values.size() / 2);
        std::nth_element(values.begin(), middle, values.end());
        return *middle;
    }
    // Of the best peer to the library, which is the first.
    double ratio() const {
        double best = 0;
        for (std::size_t who = 1; who < contenders_.size(); ++who) {
            if (contenders_[who].isYardstick) continue;
            if (best == 0 || nanoseconds(who) < best) best = nanoseconds(who);
        }
        return best / nanoseconds(0);
    }

private:
    double nanosecondsOf(const Entrant<Work>& contender, long calls) const {
        // Volatile: the compiler must not see which function is called, nor that its effect is always the same.
        void (*volatile run)(const Work&) = contender.run;
        const double start = nanosecondsNow(contender.forks);
        for (long call = 0; call < calls; ++call) run(work_);
        return (nanosecondsNow(contender.forks) - start) / static_cast<double>(calls);
    }

    // As many calls as fill one sample.
    long callsFor(const Entrant<Work>& contender) const {
        long calls = 1;
        for (;;) {
            const double one = nanosecondsOf(contender, calls);
            const double total = one * static_cast<double>(calls);
            if (total >= sampleNanoseconds_ / 4 || calls >= 1L << 30)
                return std::max(1L, static_cast<long>(sampleNanoseconds_ / one));
            calls *= 4;
        }
    }

    std::span<const Entrant<Work>> contenders_;
    const Work& work_;
    double sampleNanoseconds_;
    std::vector<long> calls_;
    std::vector<std::vector<double>> samples_;
};

}  // namespace bench
