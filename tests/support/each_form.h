// One test for each form.
#pragma once

#include <gtest/gtest.h>

#include "../routines/routines.h"

namespace kormtest {

class EachForm : public testing::TestWithParam<std::size_t> {
protected:
    const Form& form() const { return allForms()[GetParam()]; }
    const Library& library() const { return Library::linked(); }
    const Options options = Options::fromEnvironment();
};

inline std::string formName(const testing::TestParamInfo<std::size_t>& info) { return allForms()[info.param].name; }

inline void expectPass(const Verdict& verdict) { EXPECT_TRUE(verdict.ok) << verdict.message; }

}  // namespace kormtest
