// One line for each form: a digest of its results over a fixed set of inputs.
//   korm_digests             prints the lines
//   korm_digests check FILE  compares them with a committed file
//
// Sizes and values follow from the form's name alone; where operands lie doesn't matter, since only the
// result's elements are digested. So the lines are the same for every target, compiler and level of
// optimisation, and a changed line is a changed result.
#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <sstream>

#include "support/family.h"
#include "support/fault.h"
#include "support/scene.h"
#include "support/thread_number.h"

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
    std::uint64_t value() const { return value_; }

private:
    std::uint64_t value_ = 0xcbf29ce484222325u;
};

// Square orders 1 to 9 first, then other shapes.
Sizes sizesOf(const Form& form, int number, Random& random) {
    Sizes sizes;
    if (number < 18) {
        sizes.width = sizes.height = sizes.length = sizes.inner = sizes.order = number / 2 + 1;
    } else {
        sizes.width = random.between(1, 17);
        sizes.height = random.between(1, 17);
        sizes.length = random.between(1, 150);
    }
    sizes.count = random.between(1, 11);
    if (number >= 18 && form.has(Extent::inner)) sizes.inner = random.between(1, 40);
    if (number >= 18 && form.has(Extent::order)) sizes.order = random.between(1, 17);
    return sizes;
}

std::uint64_t digestOf(const Form& form) {
    constexpr int cases = 60;
    Digest name, digest;
    name.add(reinterpret_cast<const std::byte*>(form.name.data()), form.name.size());
    for (int number = 0; number < cases; ++number) {
        Random random(mixSeed(name.value(), static_cast<std::uint64_t>(number)));
        SceneOptions options;
        options.sizes = sizesOf(form, number, random);
        options.plain = number % 2 == 0;
        Random places(random.next()), values(random.next());
        const Scene scene(threadArena(), form, options, places, values);
        const auto fixedBits = form.family->fixedBits;
        if (fixedBits != nullptr && !fixedBits(form, options.sizes, scene.plain())) continue;
        scene.clearOutputs();
        scriptThreadNumbers({1});
        const CallResult result = callFunction(Library::linked().function(form), scene.arguments());
        const std::uint32_t status = static_cast<std::uint32_t>(result.status());
        digest.add(reinterpret_cast<const std::byte*>(&status), sizeof status);
        const std::vector<std::byte> bytes = scene.comparableResult();
        digest.add(bytes.data(), bytes.size());
    }
    return digest.value();
}

std::string allDigests() {
    std::string text;
    for (const Form& form : allForms()) {
        char line[80];
        std::snprintf(line, sizeof line, "%-22s %016llx\n", form.name.c_str(),
                      static_cast<unsigned long long>(digestOf(form)));
        text += line;
    }
    return text;
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
    std::fprintf(stderr, "usage: korm_digests [check FILE]\n");
    return 2;
}
