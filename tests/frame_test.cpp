// The parallel frame itself, with kernels that only take notes: the split, scratch, merging of statuses, and what
// happens where the runtime can't help. No form of the library reaches all of it.
#include "entry/parallel.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <atomic>
#include <chrono>
#include <cstdlib>
#include <cstring>
#include <mutex>
#include <set>
#include <thread>
#include <vector>

#include "support/thread_number.h"

namespace {

std::atomic<int> blocksTaken{0};
std::atomic<int> blocksGiven{0};
std::atomic<std::size_t> lastBlockSize{0};
std::atomic<bool> refuseBlocks{false};

}  // namespace

// Before the OpenMP runtime's own pair: counts, and refuses on demand.
extern "C" __attribute__((visibility("default"))) void* kmpc_malloc(std::size_t size);
extern "C" __attribute__((visibility("default"))) void kmpc_free(void* block);

extern "C" void* kmpc_malloc(std::size_t size) {
    lastBlockSize = size;
    if (refuseBlocks) return nullptr;
    ++blocksTaken;
    return std::malloc(size);
}

extern "C" void kmpc_free(void* block) {
    ++blocksGiven;
    std::free(block);
}

namespace kormtest {
namespace {

using Share = korm::Run;  // a test fixture has a member of the other name
using korm::Scratch;
using korm::Split;
using korm::Statuses;

struct Note {
    Share run;
    void* scratch;
    std::thread::id thread;
};

// Remembers every call of a kernel.
class Notes {
public:
    void add(Share run, void* scratch) {
        const std::lock_guard<std::mutex> lock(mutex_);
        notes_.push_back({run, scratch, std::this_thread::get_id()});
    }
    // Sorted by the first object, threads without objects last.
    std::vector<Note> sorted() {
        std::sort(notes_.begin(), notes_.end(), [](const Note& a, const Note& b) {
            return std::pair(a.run.count == 0, a.run.first) < std::pair(b.run.count == 0, b.run.first);
        });
        return notes_;
    }

private:
    std::mutex mutex_;
    std::vector<Note> notes_;
};

class Frame : public testing::Test {
protected:
    void SetUp() override {
        blocksTaken = 0;
        blocksGiven = 0;
        lastBlockSize = 0;
        refuseBlocks = false;
    }
    void TearDown() override {
        EXPECT_EQ(blocksTaken, blocksGiven);
        refuseBlocks = false;
    }
    // Runs `count` objects with notes only.
    std::vector<Note> take(std::int32_t count, Scratch scratch = {}) {
        Notes notes;
        const std::int32_t status = korm::forEachRun(count, Statuses::none, scratch, [&](Share run, void* piece) {
            notes.add(run, piece);
            return std::int32_t{0};
        });
        EXPECT_EQ(status, 0);
        return notes.sorted();
    }
};

// --- Split ---

TEST_F(Frame, SplitsTenObjectsOverFourThreads) {
    const Split split = Split::over(10, 4);
    EXPECT_EQ(split.chunk, 2);
    EXPECT_EQ(split.remainder, 2);
    const Share expected[] = {{0, 3}, {3, 3}, {6, 2}, {8, 2}};
    for (std::int32_t t = 0; t < 4; ++t) {
        EXPECT_EQ(split.run(t).first, expected[t].first);
        EXPECT_EQ(split.run(t).count, expected[t].count);
    }
}

TEST_F(Frame, SplitsAnyCountIntoNeighbouringRuns) {
    for (std::int32_t threads = 1; threads <= 20; ++threads) {
        for (std::int32_t count = 1; count <= 70; ++count) {
            const Split split = Split::over(count, threads);
            std::int32_t next = 0;
            for (std::int32_t t = 0; t < threads; ++t) {
                const Share run = split.run(t);
                EXPECT_EQ(run.first, next);
                EXPECT_EQ(run.count, count / threads + (t < count % threads ? 1 : 0));
                next += run.count;
            }
            EXPECT_EQ(next, count);
        }
    }
}

TEST_F(Frame, SplitsTheLargestCount) {
    const Split split = Split::over(INT32_MAX, 3);
    EXPECT_EQ(split.run(2).first + split.run(2).count, INT32_MAX);
}

// --- Gate and readings ---

TEST_F(Frame, StaysSerialForOneThreadOrFewObjects) {
    int scratch = 0;
    for (const auto& [threads, count] : {std::pair{1, 100}, {0, 100}, {-5, 100}, {INT32_MIN, 1}, {4, 3}, {16, 15}}) {
        scriptThreadNumbers({threads});
        const auto notes = take(count, {64, &scratch});
        ASSERT_EQ(notes.size(), 1u);
        EXPECT_EQ(notes[0].run.first, 0);
        EXPECT_EQ(notes[0].run.count, count);
        EXPECT_EQ(notes[0].scratch, &scratch);
        EXPECT_EQ(notes[0].thread, std::this_thread::get_id());
        EXPECT_EQ(threadNumberQuestions(), 1);
    }
    EXPECT_EQ(blocksTaken, 0);
}

TEST_F(Frame, GivesEachThreadOneRun) {
    for (const std::int32_t threads : {2, 3, 4, 8, 16}) {
        for (const std::int32_t count : {threads, threads + 1, 2 * threads + 1, 50}) {
            scriptThreadNumbers({threads});
            const auto notes = take(count);
            EXPECT_EQ(threadNumberQuestions(), 2);
            ASSERT_EQ(notes.size(), static_cast<std::size_t>(threads));
            std::set<std::thread::id> ids;
            std::int32_t next = 0;
            for (const Note& note : notes) {
                EXPECT_EQ(note.run.first, next);
                next += note.run.count;
                ids.insert(note.thread);
                EXPECT_EQ(note.scratch, nullptr);
            }
            EXPECT_EQ(next, count);
            EXPECT_EQ(ids.size(), notes.size());
        }
    }
}

TEST_F(Frame, TakesTheTeamFromTheSecondReading) {
    scriptThreadNumbers({4, 2});
    EXPECT_EQ(take(10).size(), 2u);
    scriptThreadNumbers({2, 6});
    EXPECT_EQ(take(10).size(), 6u);
    scriptThreadNumbers({4, 1});
    EXPECT_EQ(take(10).size(), 1u);
}

TEST_F(Frame, SurvivesASecondReadingThatIsNoNumberOfThreads) {
    for (const std::int32_t answer : {0, -3, INT32_MIN}) {
        scriptThreadNumbers({4, answer});
        const auto notes = take(10);
        ASSERT_EQ(notes.size(), 1u);
        EXPECT_EQ(notes[0].run.count, 10);
    }
}

TEST_F(Frame, GivesNothingToThreadsBeyondTheCount) {
    scriptThreadNumbers({3, 7});
    const auto notes = take(4);
    ASSERT_EQ(notes.size(), 7u);
    for (std::size_t i = 0; i < notes.size(); ++i) EXPECT_EQ(notes[i].run.count, i < 4 ? 1 : 0);
}

TEST_F(Frame, RunsOnTheCallingThreadInsideARegion) {
    int right = 0;
#pragma omp parallel num_threads(3) reduction(+ : right)
    {
        scriptThreadNumbers({4});
        const auto notes = take(9);
        const bool alone =
            notes.size() == 1 && notes[0].run.count == 9 && notes[0].thread == std::this_thread::get_id();
        right += alone && threadNumberQuestions() == 2 ? 1 : 0;
    }
    EXPECT_EQ(right, 3);
}

// --- Scratch ---

TEST_F(Frame, GivesEachThreadAPieceOfItsOwn) {
    constexpr std::size_t bytes = 4096;
    char callers[bytes];
    scriptThreadNumbers({5});
    Notes notes;
    korm::forEachRun(20, Statuses::none, {bytes, callers}, [&](Share run, void* piece) {
        notes.add(run, piece);
        std::memset(piece, run.first, bytes);
        std::this_thread::sleep_for(std::chrono::milliseconds(2));
        for (std::size_t i = 0; i < bytes; ++i) EXPECT_EQ(static_cast<char*>(piece)[i], static_cast<char>(run.first));
        return std::int32_t{0};
    });
    const auto all = notes.sorted();
    ASSERT_EQ(all.size(), 5u);
    EXPECT_EQ(blocksTaken, 1);
    EXPECT_EQ(lastBlockSize, 5 * bytes);
    for (std::size_t t = 0; t < all.size(); ++t)
        EXPECT_EQ(static_cast<char*>(all[t].scratch), static_cast<char*>(all[0].scratch) + t * bytes);
}

TEST_F(Frame, NeverPassesTheScratchBlock) {
    // The block has as many pieces as the first reading said; a larger team would write past it.
    constexpr std::size_t bytes = 1 << 16;
    int callers = 0;
    scriptThreadNumbers({3, 12});
    const auto notes = take(40, {bytes, &callers});
    EXPECT_EQ(lastBlockSize, 3 * bytes);
    ASSERT_FALSE(notes.empty());
    std::int32_t objects = 0;
    std::set<void*> pieces;
    for (const Note& note : notes) {
        objects += note.run.count;
        pieces.insert(note.scratch);
        const auto distance = static_cast<char*>(note.scratch) - static_cast<char*>(notes[0].scratch);
        EXPECT_TRUE(distance >= 0 && distance < static_cast<std::ptrdiff_t>(3 * bytes)) << distance;
    }
    EXPECT_EQ(pieces.size(), notes.size());
    EXPECT_EQ(objects, 40);
}

TEST_F(Frame, RunsSeriallyWithoutScratch) {
    int callers = 0;
    refuseBlocks = true;
    scriptThreadNumbers({4});
    auto notes = take(12, {64, &callers});
    ASSERT_EQ(notes.size(), 1u);
    EXPECT_EQ(notes[0].run.count, 12);
    EXPECT_EQ(notes[0].scratch, &callers);
    EXPECT_EQ(blocksGiven, 0);
    // A block larger than memory can ever be isn't even asked for, or is refused.
    scriptThreadNumbers({4});
    notes = take(12, {SIZE_MAX / 3, &callers});
    ASSERT_EQ(notes.size(), 1u);
    EXPECT_EQ(notes[0].scratch, &callers);
}

// --- Statuses ---

TEST_F(Frame, MergesTheFirstFailureAndFinishesTheOtherRuns) {
    for (const std::int32_t failing : {0, 3, 6, 8}) {
        scriptThreadNumbers({4});
        std::atomic<int> objects{0};
        const std::int32_t status = korm::forEachRun(10, Statuses::merged, {}, [&](Share run, void*) {
            objects += run.count;
            return run.first == failing ? std::int32_t{-195} : std::int32_t{0};
        });
        EXPECT_EQ(status, -195);
        EXPECT_EQ(objects, 10);
    }
}

TEST_F(Frame, TheStatusThatArrivesFirstWins) {
    scriptThreadNumbers({3});
    std::atomic<bool> last{false};
    const std::int32_t status = korm::forEachRun(3, Statuses::merged, {}, [&](Share run, void*) -> std::int32_t {
        if (run.first == 2) {
            last = true;
            return -179;
        }
        // The others come late, by far more than it takes to leave the kernel.
        while (!last) std::this_thread::yield();
        std::this_thread::sleep_for(std::chrono::milliseconds(300));
        return run.first == 0 ? -10 : 0;
    });
    EXPECT_EQ(status, -179);
}

TEST_F(Frame, SucceedsIfNoThreadFails) {
    scriptThreadNumbers({3});
    EXPECT_EQ(korm::forEachRun(7, Statuses::merged, {}, [](Share, void*) { return std::int32_t{0}; }), 0);
}

TEST_F(Frame, ReturnsWhatASerialRunReturns) {
    scriptThreadNumbers({1});
    EXPECT_EQ(korm::forEachRun(7, Statuses::merged, {}, [](Share, void*) { return std::int32_t{-205}; }), -205);
}

// --- Shifts ---

TEST_F(Frame, ShiftsEachKindOfOperand) {
    float data[40];
    EXPECT_EQ(korm::shifted(data, 3, 8), data + 6);
    EXPECT_EQ(korm::shifted(data, 0, INT32_MAX), data);
    float* list[5] = {};
    EXPECT_EQ(korm::shiftedList(list, 4), list + 4);
    EXPECT_EQ(korm::shiftedOffset(12, 3, 16), 60);
    if (sizeof(std::ptrdiff_t) == 8) {
        EXPECT_EQ(korm::shiftedOffset(4, 3, 0x60000000), static_cast<std::ptrdiff_t>(4 + 3ll * 0x60000000));
    }
    double results[20];
    EXPECT_EQ(korm::shiftedElements(results, 7), results + 7);
    // Blocks of indices, one for each column of each object.
    std::int32_t indices[30];
    EXPECT_EQ(korm::shiftedElements(indices, 4, 6), indices + 24);
}

}  // namespace
}  // namespace kormtest
