// The homogeneous transform of arrays: results, checks, threshold, threads, call frame.
#include "homogeneous.h"

#include <gtest/gtest.h>

#include <cfloat>
#include <thread>

#include "../support/checker.h"
#include "../support/each_form.h"
#include "../support/thread_number.h"

namespace kormtest {
namespace {

class Homogeneous : public testing::Test {
protected:
    const Library& library = Library::linked();
    const Options options = Options::fromEnvironment();
};

TEST_F(Homogeneous, Results) { expectPass(checkHomogeneousResults(library, options)); }
TEST_F(Homogeneous, Checks) { expectPass(checkHomogeneousBadArguments(library, options)); }
TEST_F(Homogeneous, Threshold) { expectPass(checkHomogeneousThreshold(library, options, !faultsAreErrors())); }
TEST_F(Homogeneous, Threads) { expectPass(checkHomogeneousTeams(library, options)); }
TEST_F(Homogeneous, CallFrame) { expectPass(checkHomogeneousCallFrame(library, options)); }

TEST_F(Homogeneous, OneVectorAtInfinityAmongOthers) {
    // w is z; the others are divided by it.
    const float matrix[16] = {1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1, 0, 0, 0, 1, 0};
    float points[5][3] = {{2, 4, 2}, {3, 5, 1}, {1, 1, 0}, {8, 4, 4}, {-1, 2, -1}};
    const float expected[5][3] = {{1, 2, 1}, {3, 5, 1}, {FLT_MAX, FLT_MAX, FLT_MAX}, {2, 1, 1}, {1, -2, 1}};
    const std::vector<CallValue> arguments{CallValue::pointer(matrix), CallValue::integer(16), CallValue::integer(4),
                                           CallValue::pointer(points), CallValue::integer(12), CallValue::integer(4),
                                           CallValue::pointer(points), CallValue::integer(12), CallValue::integer(4),
                                           CallValue::integer(5)};
    EXPECT_EQ(callFunction(library.find(homogeneousName), arguments).status(), -10);
    for (int k = 0; k < 5; ++k)
        for (int i = 0; i < 3; ++i) EXPECT_EQ(points[k][i], expected[k][i]) << k << " " << i;
}

// Each vector is read when its turn has come: what results before it have left there counts.
TEST_F(Homogeneous, OverlappingVectorsGoOneByOne) {
    const float matrix[16] = {1, 2, 0, 0, 0, 1, 3, 0, 1, 0, 1, 0, 0, 0, 0, 1};
    const std::int32_t count = 9;
    for (const int stride : {1, 2, 3, 4})
        for (const int distance : {-4, -1, 0, 1, 2, 3, 5}) {
            std::vector<float> found(60);
            for (std::size_t i = 0; i < found.size(); ++i) found[i] = static_cast<float>(i % 7) - 2;
            std::vector<float> expected = found;
            float* const source = found.data() + 10;
            for (int k = 0; k < count; ++k) {
                float* const at = expected.data() + 10 + k * stride;
                const float x = at[0], y = at[1], z = at[2];
                at[distance] = x + y * 2;
                at[distance + 1] = y + z * 3;
                at[distance + 2] = x + z;
            }
            const std::vector<CallValue> arguments{CallValue::pointer(matrix),
                                                   CallValue::integer(16),
                                                   CallValue::integer(4),
                                                   CallValue::pointer(source),
                                                   CallValue::integer(4 * stride),
                                                   CallValue::integer(4),
                                                   CallValue::pointer(source + distance),
                                                   CallValue::integer(4 * stride),
                                                   CallValue::integer(4),
                                                   CallValue::integer(count)};
            EXPECT_EQ(callFunction(library.find(homogeneousName), arguments).status(), 0);
            EXPECT_EQ(found, expected) << "stride " << stride << ", distance " << distance;
        }
}

// Every caller has its own team.
TEST_F(Homogeneous, ManyCallersAtOnce) {
    std::vector<std::string> messages(4);
    std::vector<std::thread> callers;
    for (std::size_t caller = 0; caller < messages.size(); ++caller) {
        callers.emplace_back([&, caller] {
            Random random(mixSeed(options.seed, 2000 + caller));
            for (int i = 0; i < 60 && messages[caller].empty(); ++i) {
                HomogeneousOptions one;
                one.count = random.between(131, 300);
                Random values(random.next());
                const HomogeneousScene scene(threadArena(), one, random, values);
                scriptThreadNumbers({random.between(2, 4)});
                messages[caller] = scene.run(library.find(homogeneousName), 0, true).message;
            }
        });
    }
    for (std::thread& caller : callers) caller.join();
    for (const std::string& message : messages) EXPECT_EQ(message, "");
}

}  // namespace
}  // namespace kormtest
