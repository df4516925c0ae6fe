// One test for each form.
#pragma once

#include <gtest/gtest.h>

#include <cstdlib>
#include <cstring>

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

// A memory checker reports each touch of an inaccessible page, also the ones that a test provokes.
inline bool underValgrind() {
    const char* const preload = std::getenv("LD_PRELOAD");
    return preload != nullptr && std::strstr(preload, "vgpreload") != nullptr;
}

}  // namespace kormtest
