// What the programs of digests share: the digest itself, printing lines and comparing them with committed ones.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>

namespace kormtest {

// FNV-1a, 64 bits.
class Digest {
public:
    void add(const std::byte* bytes, std::size_t size) {
        for (std::size_t i = 0; i < size; ++i) {
            value_ ^= static_cast<std::uint64_t>(bytes[i]);
            value_ *= 0x100000001b3u;
        }
    }
    void add(std::int32_t number) { add(reinterpret_cast<const std::byte*>(&number), sizeof number); }
    std::uint64_t value() const { return value_; }

private:
    std::uint64_t value_ = 0xcbf29ce484222325u;
};

// Where a function's random inputs start: they follow from its name alone.
std::uint64_t seedOfName(const std::string& name);

// One line of a file of digests, the name filled up to `width` characters.
std::string digestLine(const std::string& name, int width, std::uint64_t digest);

// Which results are digested: those that are the same everywhere, or those that depend on the processor as well.
enum class Digested : bool { fixedBits, everything };

// main() of such a program: PROGRAM prints the lines, PROGRAM check FILE compares them with FILE; PROGRAM everything prints
// lines that hold for this processor.
int runDigests(int argc, char** argv, const char* program, std::string (*allDigests)(Digested));

}  // namespace kormtest
