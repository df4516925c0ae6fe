// Runs cases that a fuzzer found: korm_fuzz_replay FILE...
//
// A file holds one case a line, its bytes as two digits each. Empty lines and what follows a # are left out.
#include <cstdio>
#include <fstream>
#include <string>
#include <vector>

#include "../support/process.h"
#include "fuzz_case.h"

namespace {

bool bytesOf(const std::string& line, std::vector<std::uint8_t>& bytes) {
    static const std::string digits = "0123456789abcdef";
    bytes.clear();
    std::vector<std::size_t> values;
    for (const char digit : line.substr(0, line.find('#'))) {
        if (digit == ' ') continue;
        values.push_back(digits.find(digit));
        if (values.back() == std::string::npos) return false;
    }
    for (std::size_t i = 0; i + 1 < values.size(); i += 2)
        bytes.push_back(static_cast<std::uint8_t>(16 * values[i] + values[i + 1]));
    return values.size() % 2 == 0;
}

}  // namespace

int main(int argc, char** argv) {
    kormtest::prepareProcess();
    int cases = 0, failed = 0;
    for (int i = 1; i < argc; ++i) {
        std::ifstream file(argv[i]);
        if (!file) {
            std::fprintf(stderr, "%s: can't be read\n", argv[i]);
            ++failed;
        }
        std::vector<std::uint8_t> bytes;
        int number = 0;
        for (std::string line; std::getline(file, line);) {
            ++number;
            kormtest::Verdict verdict = kormtest::Verdict::fail("not hexadecimal digits in pairs");
            if (bytesOf(line, bytes)) {
                if (bytes.empty()) continue;
                verdict = kormtest::runFuzzCase(bytes);
            }
            ++cases;
            if (verdict.ok) continue;
            ++failed;
            std::fprintf(stderr, "%s:%d: %s\n", argv[i], number, verdict.message.c_str());
        }
    }
    std::printf("%d cases, %d failed\n", cases, failed);
    // Nothing shows nothing.
    return cases > 0 && failed == 0 ? 0 : 1;
}
