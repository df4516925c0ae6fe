#include <cstring>

#include "../support/fault.h"
#include "../support/scene.h"
#include "../support/thread_number.h"
#include "routines.h"
#include "sizes.h"

namespace kormtest {

Verdict resultsCase(const Form& form, const Library& library, Random& random) {
    SceneOptions scene;
    scene.sizes = randomSizes(form, random);
    scene.plain = random.chance(55);
    scene.mayCollide = random.chance(50);
    if (random.chance(25) && form.result() > 0) {
        const int operand = random.between(0, static_cast<std::int32_t>(form.result()) - 1);
        if (Scene::mayAlias(form, static_cast<std::size_t>(operand), scene.sizes)) scene.alias = operand;
    }
    Random values = random.branch();
    const Scene made(threadArena(), form, scene, random, values);
    scriptThreadNumbers({1});
    Verdict verdict = made.run(library, 4u * static_cast<unsigned>(random.between(0, 3)), false);
    const int questions = made.reachesDriver() ? 1 : 0;
    if (verdict.ok && threadNumberQuestions() != questions) {
        verdict = Verdict::fail("asked for the thread number " + std::to_string(threadNumberQuestions()) +
                                " times, not " + std::to_string(questions) + ", " + made.describe());
    }
    return verdict;
}

Verdict checkResults(const Form& form, const Library& library, const Options& options) {
    const int cases = options.share(800);
    for (int number = 0; number < cases; ++number) {
        Random random = options.random(form, number, 2);
        if (Verdict verdict = resultsCase(form, library, random); !verdict.ok) {
            verdict.message += ", case " + std::to_string(number) + " of seed " + std::to_string(options.seed);
            return verdict;
        }
    }
    return Verdict::pass();
}

}  // namespace kormtest
