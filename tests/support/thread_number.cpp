#include "thread_number.h"

#include <algorithm>
#include <array>

namespace kormtest {
namespace {

thread_local std::array<std::int32_t, 4> answers{1, 1, 1, 1};
thread_local int questions = 0;

}  // namespace

void scriptThreadNumbers(std::initializer_list<std::int32_t> script) {
    answers.fill(*(script.end() - 1));
    std::copy(script.begin(), script.end(), answers.begin());
    questions = 0;
}

int threadNumberQuestions() { return questions; }

}  // namespace kormtest

extern "C" __attribute__((visibility("default"))) std::int32_t ownGetNumThreads();

extern "C" std::int32_t ownGetNumThreads() {
    using namespace kormtest;
    const auto last = static_cast<int>(answers.size()) - 1;
    return answers[static_cast<std::size_t>(std::min(questions++, last))];
}
