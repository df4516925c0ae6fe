#include "../support/family.h"
#include "../support/scene.h"
#include "../support/thread_number.h"
#include "routines.h"

namespace kormtest {

bool hasOverlapRule(const Form& form) {
    return form.family->stepwise && form.layout == Layout::standard && !form.array &&
           form.operands[form.result()].shape == Shape::vector;
}

Verdict overlapCase(const Form& form, const Library& library, Random& random) {
    Arena& arena = threadArena();
    const std::int32_t size = form.elementSize();
    const bool constant = form.operands[1].shape == Shape::constant;
    SceneOptions scene;
    scene.special = false;
    // Chains of sums double at worst: 100 steps stay within the range of single precision.
    scene.sizes.length = random.between(7, 100);
    const std::int32_t reach = 24 * size;
    arena.clearWindows();
    std::byte* const middle = arena.field(0).begin + pageSize + random.between(0, 15);
    const std::ptrdiff_t extent = static_cast<std::ptrdiff_t>(scene.sizes.length) * size;
    arena.addWindow(arena.field(0), middle - reach, middle + reach + extent);
    // One sum of two overlapping sources at odd distances could meet two NaNs made of shifted bytes.
    const auto distance = [&] {
        return constant && random.chance(30) ? random.between(-reach, reach) : size * random.between(-24, 24);
    };
    std::vector<Placed> placed(form.operands.size());
    for (Placed& one : placed) one.values.elementStride = size;
    placed[form.result()].values.base = middle;
    placed[0].values.base = middle + distance();
    if (!constant) placed[1].values.base = middle + distance();
    Random values = random.branch();
    const Scene made(arena, form, scene, placed, random, values);
    scriptThreadNumbers({1});
    return made.run(library, 0, false);
}

Verdict checkOverlap(const Form& form, const Library& library, const Options& options) {
    for (int number = 0; number < options.share(300); ++number) {
        Random random = options.random(form, number, 3);
        if (Verdict verdict = overlapCase(form, library, random); !verdict.ok) {
            verdict.message = "overlap: " + verdict.message + ", case " + std::to_string(number);
            return verdict;
        }
    }
    return Verdict::pass();
}

}  // namespace kormtest
