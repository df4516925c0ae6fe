// Bad arguments: the status is that of the form's first failing check, and nothing is touched.
#include "support/each_form.h"

namespace kormtest {
namespace {

class Checks : public EachForm {};

TEST_P(Checks, EveryBadValueAndPair) { expectPass(checkBadArguments(form(), library(), options)); }

INSTANTIATE_TEST_SUITE_P(Forms, Checks, testing::Range(std::size_t{0}, allForms().size()), formName);

}  // namespace
}  // namespace kormtest
