// Every function of fixed size against its reference.
#include <gtest/gtest.h>

#include "routines.h"

namespace kormtest {
namespace {

class Geometry : public testing::TestWithParam<std::size_t> {
protected:
    const GeometryFunction& function() const { return geometryFunctions()[GetParam()]; }
    const Library& library() const { return Library::linked(); }
    const Options options = Options::fromEnvironment();
    static void expectPass(const Verdict& verdict) { EXPECT_TRUE(verdict.ok) << verdict.message; }
};

TEST_P(Geometry, Results) { expectPass(checkGeometryResults(function(), library(), options)); }
TEST_P(Geometry, Batches) { expectPass(checkGeometryBatches(function(), library(), options)); }
TEST_P(Geometry, Nulls) { expectPass(checkGeometryNulls(function(), library(), options)); }
TEST_P(Geometry, CallFrame) { expectPass(checkGeometryCallFrame(function(), library(), options)); }

INSTANTIATE_TEST_SUITE_P(Functions, Geometry, testing::Range(std::size_t{0}, geometryFunctions().size()),
                         [](const auto& info) { return geometryFunctions()[info.param].name; });

TEST(GeometryNames, Are87) { EXPECT_EQ(geometryNames().size(), 87u); }

}  // namespace
}  // namespace kormtest
