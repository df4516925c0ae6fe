// What a test routine found out about one form: nothing wrong, or the first thing that was.
#pragma once

#include <string>
#include <utility>

namespace kormtest {

struct Verdict {
    bool ok = true;
    std::string message;

    static Verdict pass() { return {}; }
    static Verdict fail(std::string text) { return {false, std::move(text)}; }
};

}  // namespace kormtest
