#include "cache_size.h"

namespace kormtest {
namespace {

thread_local std::int32_t answer = 0, statusOfAnswer = 0;
thread_local int questions = 0;

}  // namespace

void scriptCacheSize(std::int32_t bytes, std::int32_t status) {
    answer = bytes;
    statusOfAnswer = status;
    questions = 0;
}

int cacheSizeQuestions() { return questions; }

}  // namespace kormtest

extern "C" __attribute__((visibility("default"))) std::int32_t korGetMaxCacheSizeB(std::int32_t* bytes);

extern "C" std::int32_t korGetMaxCacheSizeB(std::int32_t* bytes) {
    using namespace kormtest;
    ++questions;
    *bytes = answer;
    return statusOfAnswer;
}
