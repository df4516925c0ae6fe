// Runs cases that a fuzzer found: korm_fuzz_replay FILE...
//
// A file holds one case a line, its bytes as two digits each. Empty lines and what follows a # are left out.
#include <cstdio>
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

// False if it can't be read. (No stream: what the standard library has compiled is unknown to MemorySanitizer.)
bool linesOf(const char* name, std::vector<std::string>& lines) {
    std::FILE* const file = std::fopen(name, "re");
    if (file == nullptr) return false;
    lines.assign(1, {});
    for (int c = std::fgetc(file); c != EOF; c = std::fgetc(file)) {
        if (c == '\n') lines.emplace_back();
        else lines.back() += static_cast<char>(c);
    }
    std::fclose(file);
    return true;
}

}  // namespace

int main(int argc, char** argv) {
    kormtest::prepareProcess();
    int cases = 0, failed = 0;
    for (int i = 1; i < argc; ++i) {
        std::vector<std::string> lines;
        if (!linesOf(argv[i], lines)) {
            std::fprintf(stderr, "%s: can't be read\n", argv[i]);
            ++failed;
        }
        std::vector<std::uint8_t> bytes;
        int number = 0;
        for (const std::string& line : lines) {
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
