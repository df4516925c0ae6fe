// One line for each geometry function: a digest of its results over a fixed set of inputs.
//   korm_geometry_digests             prints the lines
//   korm_geometry_digests check FILE  compares them with a committed file
//   korm_geometry_digests everything  prints lines that take in what depends on the processor
//
// The lines are the same for every target, compiler and level of optimisation. Two things would differ for reasons that
// aren't the library's, and are kept out: angles are such that any good mathematics library rounds their sine and
// cosine to the same number, and of the inverse only status and determinant are digested, as its elements start from
// the processor's own approximation of a reciprocal.
#include "../support/digest.h"
#include "../support/library.h"
#include "../support/thread_number.h"
#include "homogeneous.h"
#include "scene.h"

namespace kormtest {
namespace {

constexpr int cases = 120;

std::uint64_t digestOf(const GeometryFunction& function, Digested digested) {
    Digest digest;
    const bool approximate = function.domain == Domain::inversion && digested == Digested::fixedBits;
    for (int number = 0; number < cases; ++number) {
        Random random(mixSeed(seedOfName(function.name), static_cast<std::uint64_t>(number)));
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
        Random random(mixSeed(seedOfName(homogeneousName), static_cast<std::uint64_t>(number)));
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

std::string allDigests(Digested digested) {
    std::string text;
    for (const GeometryFunction& function : geometryFunctions())
        text += digestLine(function.name, 42, digestOf(function, digested));
    return text + digestLine(homogeneousName, 42, digestOfHomogeneous());
}

}  // namespace
}  // namespace kormtest

int main(int argc, char** argv) {
    return kormtest::runDigests(argc, argv, "korm_geometry_digests", kormtest::allDigests);
}
