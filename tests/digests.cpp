// One line for each form: a digest of its results over a fixed set of inputs.
//   korm_digests             prints the lines
//   korm_digests check FILE  compares them with a committed file
//   korm_digests everything  prints lines that take in what depends on the processor or on addresses
//
// Sizes and values follow from the form's name alone; where operands lie doesn't matter, since only the
// result's elements are digested. So the lines are the same for every target, compiler and level of
// optimisation, and a changed line is a changed result.
#include "support/digest.h"
#include "support/family.h"
#include "support/scene.h"
#include "support/thread_number.h"

namespace kormtest {
namespace {

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
    matchSizes(form, sizes);
    return sizes;
}

std::uint64_t digestOf(const Form& form, Digested digested) {
    constexpr int cases = 60;
    Digest digest;
    for (int number = 0; number < cases; ++number) {
        Random random(mixSeed(seedOfName(form.name), static_cast<std::uint64_t>(number)));
        SceneOptions options;
        options.sizes = sizesOf(form, number, random);
        options.plain = number % 2 == 0;
        Random places(random.next()), values(random.next());
        const Scene scene(threadArena(), form, options, places, values);
        const auto fixedBits = form.family->fixedBits;
        if (digested == Digested::fixedBits && fixedBits != nullptr && !fixedBits(form, options.sizes, scene.plain()))
            continue;
        scene.clearOutputs();
        scriptThreadNumbers({1});
        const CallResult result = callFunction(Library::linked().function(form), scene.arguments());
        digest.add(result.status());
        const std::vector<std::byte> bytes = scene.comparableResult();
        digest.add(bytes.data(), bytes.size());
    }
    return digest.value();
}

std::string allDigests(Digested digested) {
    std::string text;
    for (const Form& form : allForms()) text += digestLine(form.name, 22, digestOf(form, digested));
    return text;
}

}  // namespace
}  // namespace kormtest

int main(int argc, char** argv) { return kormtest::runDigests(argc, argv, "korm_digests", kormtest::allDigests); }
