// One line for each geometry function: a digest of its results over a fixed set of inputs.
//   korm_geometry_digests             prints the lines
//   korm_geometry_digests check FILE  compares them with a committed file
//
// The lines are the same for every target, compiler and level of optimisation. Two things would differ for reasons that
// aren't the library's, and are kept out: angles are such that any good mathematics library rounds their sine and cosine
// to the same number, and of the inverse only status and determinant are digested, as its elements start from the
// processor's own approximation of a reciprocal.
#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <sstream>

#include "../support/fault.h"
#include "../support/library.h"
#include "../support/thread_number.h"
#include "homogeneous.h"
#include "scene.h"

namespace kormtest {
namespace {

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

constexpr int cases = 120;

std::uint64_t seedOf(const std::string& name) {
    Digest digest;
    digest.add(reinterpret_cast<const std::byte*>(name.data()), name.size());
    return digest.value();
}

std::uint64_t digestOf(const GeometryFunction& function) {
    Digest digest;
    const bool approximate = function.domain == Domain::inversion;
    for (int number = 0; number < cases; ++number) {
        Random random(mixSeed(seedOf(function.name), static_cast<std::uint64_t>(number)));
        GeometryOptions options;
        if (function.batch()) options.count = random.between(1, 11);
        options.clearAngles = true;
        options.special = number % 2 == 0;
        // Overlapping results would make the digest depend on where they lie.
        options.dstStride = random.pick({16, 20, 32});
        Random places(random.next()), values(random.next());
        const GeometryScene scene(threadArena(), function, options, places, values);
        scriptThreadNumbers({1});
        digest.add(callFunction(Library::linked().find(function.name), scene.arguments()).status());
        std::vector<std::byte> bytes = scene.resultBytes();
        // The result proper stands first, the determinant behind it.
        if (approximate) bytes.erase(bytes.begin(), bytes.begin() + 64);
        digest.add(bytes.data(), bytes.size());
    }
    return digest.value();
}

std::uint64_t digestOfHomogeneous() {
    Digest digest;
    for (int number = 0; number < cases; ++number) {
        Random random(mixSeed(seedOf(homogeneousName), static_cast<std::uint64_t>(number)));
        HomogeneousOptions options;
        options.count = random.between(1, 150);
        Random places(random.next()), values(random.next());
        const HomogeneousScene scene(threadArena(), options, places, values);
        scriptThreadNumbers({1});
        digest.add(callFunction(Library::linked().find(homogeneousName), scene.arguments()).status());
        const std::vector<std::byte> bytes = scene.resultBytes();
        digest.add(bytes.data(), bytes.size());
    }
    return digest.value();
}

std::string line(const std::string& name, std::uint64_t digest) {
    char text[100];
    std::snprintf(text, sizeof text, "%-42s %016llx\n", name.c_str(), static_cast<unsigned long long>(digest));
    return text;
}

std::string allDigests() {
    std::string text;
    for (const GeometryFunction& function : geometryFunctions()) text += line(function.name, digestOf(function));
    return text + line(homogeneousName, digestOfHomogeneous());
}

int compare(const char* file) {
    std::ifstream stream(file);
    std::stringstream committed;
    committed << stream.rdbuf();
    std::istringstream expected(committed.str()), found(allDigests());
    int differences = 0;
    for (std::string a, b;;) {
        const bool more = static_cast<bool>(std::getline(expected, a));
        if (more != static_cast<bool>(std::getline(found, b))) {
            std::printf("%s has another number of lines\n", file);
            ++differences;
            break;
        }
        if (!more) break;
        if (a == b) continue;
        std::printf("committed %s\nfound     %s\n", a.c_str(), b.c_str());
        ++differences;
    }
    return differences == 0 ? EXIT_SUCCESS : EXIT_FAILURE;
}

}  // namespace
}  // namespace kormtest

int main(int argc, char** argv) {
    kormtest::installFaultHandlers();
    if (argc == 1) {
        std::fputs(kormtest::allDigests().c_str(), stdout);
        return EXIT_SUCCESS;
    }
    if (argc == 3 && std::string(argv[1]) == "check") return kormtest::compare(argv[2]);
    std::fprintf(stderr, "usage: korm_geometry_digests [check FILE]\n");
    return 2;
}
