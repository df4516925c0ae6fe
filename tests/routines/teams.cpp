#include <algorithm>

#include "../support/scene.h"
#include "../support/thread_number.h"
#include "routines.h"
#include "sizes.h"

namespace kormtest {
namespace {

// One call with two answers; they need not agree.
Verdict runTeam(const Form& form, const Library& library, const Sizes& sizes, std::int32_t decision, std::int32_t team,
                unsigned stackShift, Random& random) {
    SceneOptions options;
    options.sizes = sizes;
    options.plain = random.chance(50);
    options.mayCollide = true;
    if (random.chance(20) && Scene::mayAlias(form, 0, sizes)) options.alias = 0;
    Random values = random.branch();
    const Scene scene(threadArena(), form, options, random, values);
    scriptThreadNumbers({decision, team});
    const bool forks = scene.reachesDriver() && decision > 1 && sizes.count >= decision;
    const int questions = forks ? 2 : scene.reachesDriver() ? 1 : 0;
    // Each thread needs a piece of scratch, and there are as many as the first answer says.
    const std::int32_t members = form.uses(Operand::Use::scratch) ? std::min(decision, team) : team;
    Verdict verdict = scene.run(library, stackShift, forks, forks ? std::max(members, 1) : 1);
    if (verdict.ok && threadNumberQuestions() != questions) {
        verdict = Verdict::fail("asked for the thread number " + std::to_string(threadNumberQuestions()) +
                                " times, not " + std::to_string(questions) + ", " + scene.describe());
    }
    if (!verdict.ok) {
        verdict.message += ", " + std::to_string(decision) + " threads by the first answer, " + std::to_string(team) +
                           " by the second";
    }
    return verdict;
}

}  // namespace

Verdict teamCase(const Form& form, const Library& library, Random& random) {
    const std::int32_t decision = random.between(1, 4);
    const std::int32_t team = random.chance(70) ? decision : random.between(-1, 5);
    const std::int32_t count = std::max(random.between(decision - 1, 3 * decision + 1), 1);
    const Sizes sizes = form.driver ? sizesBeyondLimit(form, count, random) : randomSizes(form, random);
    return runTeam(form, library, sizes, decision, team, 4u * static_cast<unsigned>(random.between(0, 3)), random);
}

Verdict checkTeams(const Form& form, const Library& library, const Options& options) {
    if (!form.array) return Verdict::pass();
    int number = 0;
    for (const std::int32_t threads : {1, 2, 3, 4, 8, 16}) {
        for (const std::int32_t count : {threads - 1, threads, threads + 1, 2 * threads + 1, 3 * threads - 1}) {
            if (count < 1) continue;
            Random random = options.random(form, number++, 6);
            // A form without a driver must serve the same sizes.
            Sizes sizes{5, 4, 30, count, 5, 5};
            if (form.driver) sizes = sizesBeyondLimit(form, count, random);
            std::int32_t team = threads;
            if (random.chance(40)) team = random.pick({1, 2, 3, 5, threads + 1, std::min(2 * count, 20)});
            const unsigned shift = 4u * static_cast<unsigned>(random.between(0, 3));
            if (Verdict verdict = runTeam(form, library, sizes, threads, team, shift, random); !verdict.ok)
                return verdict;
        }
    }
    // No threading at all, and answers that make no sense.
    for (const std::int32_t answer : {0, -1, -2147483647 - 1, 2147483647}) {
        Random random = options.random(form, number++, 6);
        Sizes sizes{5, 4, 30, 6, 5, 5};
        if (form.driver) sizes = sizesBeyondLimit(form, 6, random);
        if (Verdict verdict = runTeam(form, library, sizes, answer, answer, 0, random); !verdict.ok) return verdict;
    }
    return Verdict::pass();
}

Verdict checkCallFrame(const Form& form, const Library& library, const Options& options) {
    int number = 0;
    for (const unsigned shift : {0u, 4u, 8u, 12u}) {
        for (const bool large : {false, true}) {
            for (const std::int32_t threads : {1, 2}) {
                if (!large && threads > 1) continue;
                for (int repeat = 0; repeat < (large ? 2 : 12); ++repeat) {
                    Random random = options.random(form, number++, 7);
                    const Sizes sizes =
                        large && form.driver ? sizesBeyondLimit(form, 3, random) : randomSizes(form, random);
                    if (Verdict verdict = runTeam(form, library, sizes, threads, threads, shift, random); !verdict.ok)
                        return verdict;
                }
            }
        }
    }
    return Verdict::pass();
}

}  // namespace kormtest
