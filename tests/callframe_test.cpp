// What a call must leave as it was: callee-saved registers, control words, the caller's stack.
#include "support/call.h"
#include "support/each_form.h"

namespace kormtest {
namespace {

class CallFrames : public EachForm {};

TEST_P(CallFrames, AreLeftAsTheyWere) { expectPass(checkCallFrame(form(), library(), options)); }

INSTANTIATE_TEST_SUITE_P(Forms, CallFrames, testing::Range(std::size_t{0}, allForms().size()), formName);

TEST(CallFrame, OfTheVersionQuery) {
    for (const unsigned shift : {0u, 4u, 8u, 12u}) {
        const CallResult result = callFunction(Library::linked().find("kormGetLibVersion"), {}, shift);
        EXPECT_NE(result.word, 0u);
        EXPECT_EQ(result.frameDamage, "");
    }
}

}  // namespace
}  // namespace kormtest
