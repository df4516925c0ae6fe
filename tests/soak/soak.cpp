// Calls all functions from several threads at once for a given time: korm_soak [--seconds N] [--callers N] [--seed N]
//
// The callers change their numbers of threads, end and make room for new ones, one of them calls from regions of another
// OpenMP runtime, a timer interrupts them all and calls the library in its handler, and children are forked that go on
// calling, some of them without memory. Each call must give the bits that it gave when it was alone; in the end there
// must be no more memory in use than early on, and no thread left. AddressSanitizer keeps memory back, and a
// process that forks while another thread has the lock of its allocator leaves a child that waits forever: under it nothing
// is forked, and what is in use isn't judged.
#include <dlfcn.h>
#include <malloc.h>
#include <sys/time.h>
#include <sys/wait.h>
#include <unistd.h>

#include <array>
#include <atomic>
#include <cerrno>
#include <chrono>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <optional>
#include <shared_mutex>
#include <thread>

#include "../support/checker.h"
#include "../support/family.h"
#include "../support/process.h"
#include "korm.h"
#include "work.h"

extern "C" int omp_pause_resource_all(int kind);

namespace kormtest {
namespace {

using Clock = std::chrono::steady_clock;

struct Settings {
    int seconds = 60;
    int callers = 4;
    std::uint64_t seed = 1;
};

std::atomic<std::int64_t> calls{0}, children{0}, starvedChildren{0}, regions{0}, interrupts{0}, failures{0};

void fail(const std::string& text) {
    ++failures;
    std::fprintf(stderr, "FAILED: %s\n", text.c_str());
}

// --- What each call gives when it is alone ---

// By the number of threads: a few forms' bits depend on it, as documented.
using Digests = std::array<std::uint64_t, largestTeam>;

struct Expected {
    std::vector<Work> work = allWork();
    std::vector<Digests> digests;

    Expected() {
        for (const Work& one : work) {
            Digests& digest = digests.emplace_back();
            for (std::int32_t threads = 1; threads <= largestTeam; ++threads)
                digest[static_cast<std::size_t>(threads - 1)] = digestOfWork(one, threads);
        }
    }

    std::size_t dependOnThreads() const {
        std::size_t number = 0;
        for (const Digests& digest : digests)
            if (std::count(digest.begin(), digest.end(), digest[0]) != largestTeam) ++number;
        return number;
    }
};

// --- Callers ---

// The lock with which a team merges its statuses has, in a child, the state of the moment of the fork: a process forks while
// no such team is at work, or makes no such calls in the child.
std::shared_mutex merging;
bool inChild = false;

bool mergesStatuses(const Work& work) { return work.large && work.form->family->mayFail; }

// One random call; an empty text if it gave what it should. Inside of another region a team is one thread.
std::string randomCall(const Expected& expected, Random& random, std::optional<std::int32_t> onlyThreads = {}) {
    const auto at = static_cast<std::size_t>(random.between(0, static_cast<std::int32_t>(expected.work.size()) - 1));
    const std::int32_t threads = onlyThreads ? *onlyThreads : random.between(1, largestTeam);
    std::shared_lock lock(merging, std::defer_lock);
    if (!inChild && mergesStatuses(expected.work[at])) lock.lock();
    const std::uint64_t found = digestOfWork(expected.work[at], threads);
    ++calls;
    if (found == expected.digests[at][static_cast<std::size_t>(threads - 1)]) return {};
    return expected.work[at].name + (expected.work[at].large ? ", large" : "") + ", " + std::to_string(threads) +
           " threads: other bits than alone";
}

void callRepeatedly(const Expected& expected, Random random, int number) {
    for (int i = 0; i < number; ++i)
        if (const std::string text = randomCall(expected, random); !text.empty()) fail(text);
}

// A team of GNU's runtime, whose members are callers of their own. Null where that runtime isn't there.
using GnuParallel = void (*)(void (*)(void*), void*, unsigned, unsigned);

GnuParallel gnuParallel() {
    void* const runtime = dlopen("libgomp.so.1", RTLD_NOW | RTLD_LOCAL);
    return runtime == nullptr ? nullptr : reinterpret_cast<GnuParallel>(dlsym(runtime, "GOMP_parallel"));
}

struct Region {
    const Expected& expected;
    std::uint64_t seed;
    std::atomic<int> members{0};
};

void callInGnuRegion(const Expected& expected, Random& random, GnuParallel parallel) {
    Region region{expected, random.next()};
    parallel(
        [](void* data) {
            auto& it = *static_cast<Region*>(data);
            callRepeatedly(it.expected, Random(mixSeed(it.seed, static_cast<std::uint64_t>(++it.members))), 20);
        },
        &region, 2, 0);
    ++regions;
}

// --- Children ---

enum ChildResult : std::uint8_t { asAlone, otherBits, otherBitsStarved, notStarved };

// In a child, calls go on.
ChildResult callInChild(const Expected& expected, Random random) {
    for (int i = 0; i < 3; ++i)
        if (!randomCall(expected, random).empty()) return otherBits;
    return asAlone;
}

// A call with scratch, while there is no memory for it: it works alone, in its caller's buffer.
ChildResult callStarved(const Expected& expected, Random random) {
    for (;;) {
        const auto at =
            static_cast<std::size_t>(random.between(0, static_cast<std::int32_t>(expected.work.size()) - 1));
        const Work& work = expected.work[at];
        if (!work.large || !work.form->uses(Operand::Use::scratch)) continue;
        const StarvedCall found = starvedCall(work, largestTeam);
        if (found.forked) return notStarved;
        return found.digest == expected.digests[at][0] ? asAlone : otherBitsStarved;
    }
}

void forkRepeatedly(const Expected& expected, Random random, Clock::time_point end) {
    for (int number = 0; Clock::now() < end; ++number) {
        const std::uint64_t seed = random.next();
        const bool starve = number % 3 == 0;
        merging.lock();
        const pid_t child = fork();
        if (child == 0) {
            inChild = true;
            std::signal(SIGALRM, SIG_DFL);
            alarm(120);
            _exit(starve ? callStarved(expected, Random(seed)) : callInChild(expected, Random(seed)));
        }
        merging.unlock();
        if (child < 0) return fail("no child");
        int state = 0;
        while (waitpid(child, &state, 0) < 0)
            if (errno != EINTR) return fail("waitpid");
        ++children;
        if (starve) ++starvedChildren;
        if (WIFSIGNALED(state)) fail("a child ended by signal " + std::to_string(WTERMSIG(state)));
        else if (WEXITSTATUS(state) == otherBits) fail("other bits in a child");
        else if (WEXITSTATUS(state) == otherBitsStarved) fail("other bits without memory");
        else if (WEXITSTATUS(state) == notStarved) fail("a child had memory for scratch although it was to have none");
        std::this_thread::sleep_for(std::chrono::milliseconds(50));
    }
}

// --- A timer whose handler calls the library ---

constexpr float left[9] = {1, 2, 3, 4, 5, 6, 7, 8, 9};
constexpr float right[9] = {9, 8, 7, 6, 5, 4, 3, 2, 1};
constexpr float product[9] = {30, 24, 18, 84, 69, 54, 138, 114, 90};

void onTimer(int) {
    float result[9];
    const std::int32_t status = kormMul_mm_32f(left, 12, 4, 3, 3, right, 12, 4, 3, 3, result, 12, 4);
    if (status != 0 || std::memcmp(result, product, sizeof product) != 0) ++failures;
    ++interrupts;
}

void startTimer() {
    struct sigaction action {};
    action.sa_handler = onTimer;
    action.sa_flags = SA_RESTART;
    sigaction(SIGALRM, &action, nullptr);
    const itimerval often{{0, 1000}, {0, 1000}};
    setitimer(ITIMER_REAL, &often, nullptr);
}

void stopTimer() {
    const itimerval never{};
    setitimer(ITIMER_REAL, &never, nullptr);
}

// --- What the process has ---

int threadsAlive() {
    const std::filesystem::directory_iterator tasks("/proc/self/task");
    return static_cast<int>(std::distance(begin(tasks), end(tasks)));
}

long residentKilobytes() {
    malloc_trim(0);
    long size = 0, resident = 0;
    std::FILE* const file = std::fopen("/proc/self/statm", "re");
    if (file == nullptr || std::fscanf(file, "%ld %ld", &size, &resident) != 2) std::abort();
    std::fclose(file);
    return resident * (sysconf(_SC_PAGESIZE) / 1024);
}

// --- The whole ---

// Callers live for a round, so that threads come and go and the memory of a quiet moment can be read between.
void round(const Expected& expected, const Settings& settings, Random& random, Clock::time_point end) {
    static const GnuParallel parallel = gnuParallel();
    std::vector<std::thread> callers;
    for (int caller = 0; caller < settings.callers; ++caller) {
        callers.emplace_back([&expected, caller, end, mine = Random(random.next())]() mutable {
            while (Clock::now() < end) {
                if (caller == 0 && parallel != nullptr && mine.chance(5)) callInGnuRegion(expected, mine, parallel);
                callRepeatedly(expected, Random(mine.next()), 20);
            }
        });
    }
    if (!underAddressSanitizer) forkRepeatedly(expected, Random(random.next()), end);
    for (std::thread& caller : callers) caller.join();
}

void report(const char* when, Clock::time_point start) {
    std::printf(
        "%s, %lld s: %lld calls, %lld interrupts, %lld children, %lld of them without memory, %lld regions of "
        "another runtime, %ld KB, %d threads\n",
        when, static_cast<long long>(std::chrono::duration_cast<std::chrono::seconds>(Clock::now() - start).count()),
        static_cast<long long>(calls), static_cast<long long>(interrupts), static_cast<long long>(children),
        static_cast<long long>(starvedChildren), static_cast<long long>(regions), residentKilobytes(), threadsAlive());
    std::fflush(stdout);
}

int soak(const Settings& settings) {
    // One heap for all threads: what it holds at most doesn't depend on which thread asked when.
    mallopt(M_ARENA_MAX, 1);
    const auto start = Clock::now();
    const Expected expected;
    std::printf("%zu calls to make, bits of %zu depend on the number of threads\n", expected.work.size(),
                expected.dependOnThreads());
    report("alone", start);
    const auto begin = Clock::now();
    const auto end = begin + std::chrono::seconds(settings.seconds);
    const auto roundTime = std::chrono::milliseconds(settings.seconds * 100);
    Random random(settings.seed);
    startTimer();
    long early = 0;
    for (int number = 1; number <= 10; ++number) {
        round(expected, settings, random, std::min(end, begin + number * roundTime));
        report("round", start);
        if (number == 3) early = residentKilobytes();
    }
    stopTimer();
    // Blocks that the runtime keeps for threads to come make no trend.
    constexpr long noise = 4096;
    if (const long late = residentKilobytes(); late > early + noise && !underAddressSanitizer)
        fail("memory grew from " + std::to_string(early) + " to " + std::to_string(late) + " KB");
    // The runtime keeps its threads for the next team until it is told that there will be none.
    constexpr int hard = 2;
    if (omp_pause_resource_all(hard) != 0) fail("the runtime doesn't let its threads go");
    for (int tries = 0; tries < 50 && threadsAlive() > 1; ++tries)
        std::this_thread::sleep_for(std::chrono::milliseconds(100));
    if (threadsAlive() > 1) fail(std::to_string(threadsAlive() - 1) + " threads are left");
    const bool forked = underAddressSanitizer || (children > 0 && starvedChildren > 0);
    if (calls == 0 || interrupts == 0 || !forked) fail("something never happened");
    report("end", start);
    std::printf("%lld failures\n", static_cast<long long>(failures));
    return failures == 0 ? 0 : 1;
}

}  // namespace
}  // namespace kormtest

int main(int argc, char** argv) {
    kormtest::Settings settings;
    for (int i = 1; i + 1 < argc; i += 2) {
        if (std::strcmp(argv[i], "--seconds") == 0) settings.seconds = std::atoi(argv[i + 1]);
        else if (std::strcmp(argv[i], "--callers") == 0) settings.callers = std::atoi(argv[i + 1]);
        else if (std::strcmp(argv[i], "--seed") == 0) settings.seed = std::strtoull(argv[i + 1], nullptr, 0);
        else return std::fputs("usage: korm_soak [--seconds N] [--callers N] [--seed N]\n", stderr), 2;
    }
    kormtest::prepareProcess();
    return kormtest::soak(settings);
}
