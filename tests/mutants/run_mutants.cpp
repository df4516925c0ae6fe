// Runs the test routines against libraries that are wrong on purpose: each must be caught for every form that
// its mistake applies to, and the real library must pass the same routines.
#include <dlfcn.h>

#include <cstdio>
#include <cstdlib>
#include <functional>
#include <iterator>
#include <regex>

#include "../routines/routines.h"
#include "../routines/sizes.h"
#include "../support/family.h"
#include "../support/fault.h"
#include "../support/verdict.h"

namespace kormtest {
namespace {

using Routine = std::function<Verdict(const Form&, const Library&)>;
// How many variants of the mistake a form has; 0 where it doesn't apply.
using Variants = std::function<int(const Form&)>;

struct Mutant {
    const char* name;
    Routine routine;
    Variants variants;
    // Does this variant change anything that could be seen?
    std::function<bool(const Form&, int)> shows;
};

const Options options = Options::fromEnvironment();

Verdict results(const Form& form, const Library& library) { return checkResults(form, library, options); }
Verdict checks(const Form& form, const Library& library) { return checkBadArguments(form, library, options); }
Verdict thresholds(const Form& form, const Library& library) { return checkThresholds(form, library, options, false); }

Verdict everySize(const Form& form, const Library& library) { return checkEverySize(form, library, options); }

constexpr auto orders = static_cast<int>(std::size(allSums));
constexpr int sumVariants = orders * orders;

// Squares are never -0, so that a start from +0 can't be seen.
std::string visibleText(const Form& form, Sum sum, std::size_t products, std::size_t ahead) {
    const std::string text = sumText(sum, form.type == Type::f64, products, {true, ahead});
    static const std::regex started("\\(0\\+(p[0-9]+)\\)");
    return form.operationWord == "L2Norm" ? std::regex_replace(text, started, "$1") : text;
}

// Is there a size at which the form adds in the one order and the other gives something else?
bool sumsDiffer(const Form& form, int variant) {
    const Sum right = allSums[variant / orders], wrong = allSums[variant % orders];
    const auto differ = [&](std::size_t products) {
        if (!sumExists(wrong, products) || !sumExists(right, products)) return false;
        for (std::size_t ahead = 0; ahead < 4; ++ahead)
            if (visibleText(form, right, products, ahead) != visibleText(form, wrong, products, ahead)) return true;
        return false;
    };
    const std::int32_t tallest = form.has(Extent::height) ? 11 : 1;
    for (std::int32_t height = 1; height <= tallest; ++height) {
        for (std::int32_t inner = 1; inner <= 17; ++inner) {
            if (!differ(static_cast<std::size_t>(inner))) continue;
            Sizes sizes;
            sizes.height = height;
            sizes.inner = sizes.length = sizes.order = inner;
            for (const std::int32_t width : {inner, inner + 1}) {
                sizes.width = width;
                for (std::int32_t i = 0; i < height; ++i)
                    for (const bool plain : {true, false})
                        if ((plain || form.hasRole(Role::elementStride)) &&
                            form.family->sum(form, plain, sizes, i) == right)
                            return true;
            }
        }
    }
    return false;
}

const Mutant mutants[] = {
    {"does_nothing", results, [](const Form&) { return 1; }, [](const Form&, int) { return true; }},
    // A sum or product is the same either way round.
    {"swaps_operands", results, [](const Form& form) { return form.operationWord == "Sub" ? 1 : 0; },
     [](const Form&, int) { return true; }},
    {"writes_beyond", results, [](const Form&) { return 1; }, [](const Form&, int) { return true; }},
    {"reorders_checks", checks, [](const Form& form) { return static_cast<int>(form.checks.size()) - 1; },
     [](const Form&, int) { return true; }},
    {"adds_otherwise", everySize, [](const Form& form) { return hasEverySize(form) ? sumVariants : 0; }, sumsDiffer},
    {"misses_limit", thresholds, [](const Form& form) { return form.driver ? 2 : 0; },
     [](const Form& form, int variant) {
         return estimateOccurs(form, form.limit.plain + variant) || estimateOccurs(form, form.limit.general + variant);
     }},
};

bool judge(const Mutant& mutant, const std::string& folder) {
    const Library wrong = Library::open(folder + "/libmutant_" + mutant.name + ".so");
    int* const variant = static_cast<int*>(wrong.find("mutantVariant"));
    int applies = 0, caught = 0, hidden = 0, falseAlarms = 0;
    for (const Form& form : allForms()) {
        const int variants = mutant.variants(form);
        if (variants == 0) continue;
        if (const Verdict verdict = mutant.routine(form, Library::linked()); !verdict.ok) {
            ++falseAlarms;
            std::printf("the real library fails: %s\n", verdict.message.c_str());
        }
        for (*variant = 0; *variant < variants; ++*variant) {
            if (!mutant.shows(form, *variant)) {
                ++hidden;
                continue;
            }
            ++applies;
            if (!mutant.routine(form, wrong).ok) ++caught;
            else std::printf("not caught: %s, variant %d, in %s\n", mutant.name, *variant, form.name.c_str());
        }
    }
    std::printf("%-16s applies %4d times, caught %4d, changes nothing %d times\n", mutant.name, applies, caught,
                hidden);
    return applies > 0 && caught == applies && falseAlarms == 0;
}

}  // namespace
}  // namespace kormtest

int main(int argc, char** argv) {
    if (argc != 2) {
        std::fprintf(stderr, "usage: korm_mutants FOLDER_OF_THE_LIBRARIES\n");
        return 2;
    }
    kormtest::installFaultHandlers();
    bool good = true;
    for (const auto& mutant : kormtest::mutants) good = kormtest::judge(mutant, argv[1]) && good;
    return good ? EXIT_SUCCESS : EXIT_FAILURE;
}
