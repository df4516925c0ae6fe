#include "../support/scene.h"
#include "../support/thread_number.h"
#include "routines.h"
#include "sizes.h"

namespace kormtest {
namespace {

// Every order with a path of its own, then both sides of rounds of 4, 8 and 16.
constexpr std::int32_t edges[] = {1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 13, 16, 17, 33};

}  // namespace

bool hasEverySize(const Form& form) { return form.has(Extent::inner); }

namespace {

Verdict checkSizes(const Form& form, const Library& library, const Options& options, Sizes sizes, bool plain,
                   int number) {
    Random random = options.random(form, number, 8);
    if (form.array) sizes.count = random.between(1, workOf(form, sizes) > 300 ? 2 : 5);
    SceneOptions scene;
    scene.sizes = sizes;
    scene.plain = plain;
    scene.mayCollide = random.chance(30);
    Random values(random.next());
    const Scene made(threadArena(), form, scene, random, values);
    scriptThreadNumbers({1});
    Verdict verdict = made.run(library, 4u * static_cast<unsigned>(random.between(0, 3)), false);
    if (!verdict.ok) verdict.message += ", seed " + std::to_string(options.seed);
    return verdict;
}

}  // namespace

Verdict checkEverySize(const Form& form, const Library& library, const Options& options) {
    // A vector has few elements to tell one order of additions from another.
    const int repeats = form.has(Extent::width) ? 1 : 15;
    int number = 0;
    for (const std::int32_t height : edges) {
        for (const std::int32_t inner : edges) {
            for (const std::int32_t width : edges) {
                if (!form.has(Extent::width) && width > 1) break;
                Sizes sizes;
                sizes.height = height;
                sizes.inner = inner;
                sizes.width = width;
                for (int repeat = 0; repeat < repeats; ++repeat) {
                    for (const bool plain : {true, false}) {
                        if (!plain && !form.hasRole(Role::elementStride)) continue;
                        Verdict verdict = checkSizes(form, library, options, sizes, plain, number++);
                        if (!verdict.ok) return verdict;
                    }
                }
            }
        }
    }
    return Verdict::pass();
}

}  // namespace kormtest
