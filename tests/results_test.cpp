// Results against plain loops, to the bit, between guard pages and canaries.
#include "support/each_form.h"

namespace kormtest {
namespace {

class Results : public EachForm {};

TEST_P(Results, EqualTheReference) { expectPass(checkResults(form(), library(), options)); }

TEST_P(Results, EverySize) {
    if (hasEverySize(form())) expectPass(checkEverySize(form(), library(), options));
}

TEST_P(Results, LargeSizes) {
    if (hasLargeSizes(form())) expectPass(checkLargeSizes(form(), library(), options));
}

TEST_P(Results, LongSums) {
    if (hasLargeSizes(form())) expectPass(checkLongSums(form(), library(), options));
}

TEST_P(Results, FarObjects) { expectPass(checkFarObjects(form(), library(), options)); }

TEST_P(Results, OverlapGoesStepByStep) {
    if (hasOverlapRule(form())) expectPass(checkOverlap(form(), library(), options));
}

TEST_P(Results, LargeMoves) {
    if (hasLargeMoves(form())) expectPass(checkLargeMoves(form(), library(), options));
}

TEST_P(Results, OverlappingMovesGoForward) {
    if (hasForwardRule(form())) expectPass(checkForwardMoves(form(), library(), options));
}

INSTANTIATE_TEST_SUITE_P(Forms, Results, testing::Range(std::size_t{0}, allForms().size()), formName);

}  // namespace
}  // namespace kormtest
