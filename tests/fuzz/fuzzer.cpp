// libFuzzer's program: korm_fuzz CORPUS-FOLDER
#include <cstdio>
#include <cstdlib>

#include "../support/process.h"
#include "fuzz_case.h"

extern "C" int LLVMFuzzerInitialize(int*, char***);
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size);

extern "C" int LLVMFuzzerInitialize(int*, char***) {
    kormtest::prepareProcess();
    return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const kormtest::Verdict verdict = kormtest::runFuzzCase({data, size});
    if (verdict.ok) return 0;
    std::fprintf(stderr, "%s\n", verdict.message.c_str());
    std::abort();  // the fuzzer keeps the bytes
}
