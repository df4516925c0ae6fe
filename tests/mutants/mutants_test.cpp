// Libraries that are wrong on purpose: each must be caught for every form that its mistake applies to.
#include <gtest/gtest.h>

#include <algorithm>
#include <functional>
#include <iterator>
#include <map>
#include <regex>
#include <string>
#include <utility>
#include <vector>

#include "../routines/routines.h"
#include "../routines/sizes.h"
#include "../support/check.h"
#include "../support/family.h"
#include "../support/library.h"

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

// Whether a sum starts from +0 shows in the sign of a zero. Squares are never -0, and sums of nothing but -0 are hardly ever
// among a trace's random values: linalg/trace_test.cpp has them.
std::string visibleText(const Form& form, Sum sum, std::size_t products, std::size_t ahead) {
    const std::string text = sumText(sum, form.type == Type::f64, products, {true, ahead});
    static const std::regex started("\\(0\\+(p[0-9]+)\\)");
    const bool hidden = form.operationWord == "L2Norm" || form.operationWord == "Trace";
    return hidden ? std::regex_replace(text, started, "$1") : text;
}

// The lengths of sums that the form adds in this order at some size.
std::vector<std::int32_t> findLengths(const Form& form, Sum sum) {
    std::vector<std::int32_t> lengths;
    const std::int32_t tallest = form.has(Extent::height) ? 11 : 1;
    const auto occurs = [&](std::int32_t inner) {
        Sizes sizes;
        sizes.inner = sizes.length = sizes.order = inner;
        for (sizes.height = 1; sizes.height <= tallest; ++sizes.height)
            for (sizes.width = inner; sizes.width <= inner + 1; ++sizes.width)
                for (std::int32_t i = 0; i < sizes.height; ++i)
                    for (const bool plain : {true, false})
                        if ((plain || form.hasRole(Role::elementStride)) &&
                            form.family->sum(form, plain, sizes, i) == sum)
                            return true;
        return false;
    };
    for (std::int32_t inner = 1; inner <= 17; ++inner)
        if (occurs(inner)) lengths.push_back(inner);
    return lengths;
}

const std::vector<std::int32_t>& lengthsOf(const Form& form, Sum sum) {
    static std::map<std::pair<const Form*, Sum>, std::vector<std::int32_t>> known;
    const auto [at, isNew] = known.try_emplace({&form, sum});
    if (isNew) at->second = findLengths(form, sum);
    return at->second;
}

// Is there a size at which the form adds in the one order and the other gives something else?
bool sumsDiffer(const Form& form, int variant) {
    const Sum right = allSums[variant / orders], wrong = allSums[variant % orders];
    for (const std::int32_t length : lengthsOf(form, right)) {
        const auto products = static_cast<std::size_t>(length);
        if (!sumExists(wrong, products) || !sumExists(right, products)) continue;
        // Where a vector lies has a say in sums over vectors only.
        for (std::size_t ahead = 0; ahead < (form.has(Extent::length) ? 4u : 1u); ++ahead)
            if (visibleText(form, right, products, ahead) != visibleText(form, wrong, products, ahead)) return true;
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
     [](const Form& form, int variant) {
         const std::string two = form.checks.substr(static_cast<std::size_t>(variant), 2);
         // Strides between objects (A) are right wherever the count (C) is wrong: either order gives the same.
         return two != "CA" && two != "AC" && statusOfCheck(two[0]) != statusOfCheck(two[1]);
     }},
    {"adds_otherwise", everySize, [](const Form& form) { return hasEverySize(form) ? sumVariants : 0; }, sumsDiffer},
    {"misses_limit", thresholds, [](const Form& form) { return form.driver ? 2 : 0; },
     [](const Form& form, int variant) {
         return estimateOccurs(form, form.limit.plain + variant) || estimateOccurs(form, form.limit.general + variant);
     }},
};

struct Case {
    const Mutant* mutant;
    const Form* form;
};

std::vector<Case> casesOf(const Mutant& mutant) {
    std::vector<Case> cases;
    for (const Form& form : allForms())
        if (mutant.variants(form) > 0) cases.push_back({&mutant, &form});
    return cases;
}

std::vector<Case> allCases() {
    std::vector<Case> cases;
    for (const Mutant& mutant : mutants)
        for (const Case& one : casesOf(mutant)) cases.push_back(one);
    return cases;
}

Library open(const Mutant& mutant) {
    return Library::open(std::string(KORM_MUTANTS "/libmutant_") + mutant.name + ".so");
}

class Caught : public testing::TestWithParam<Case> {};

TEST_P(Caught, EachVariant) {
    const auto [mutant, form] = GetParam();
    const Verdict right = mutant->routine(*form, Library::linked());
    EXPECT_TRUE(right.ok) << "the real library fails: " << right.message;
    const Library wrong = open(*mutant);
    int& variant = *static_cast<int*>(wrong.find("mutantVariant"));
    for (variant = 0; variant < mutant->variants(*form); ++variant) {
        if (!mutant->shows(*form, variant)) continue;
        EXPECT_FALSE(mutant->routine(*form, wrong).ok) << "not caught: variant " << variant;
    }
}

INSTANTIATE_TEST_SUITE_P(Mutants, Caught, testing::ValuesIn(allCases()),
                         [](const auto& info) { return info.param.mutant->name + ("_" + info.param.form->name); });

// A mistake that shows nowhere would be no test of anything.
TEST(Mutants, EachShowsSomewhere) {
    for (const Mutant& mutant : mutants) {
        const std::vector<Case> cases = casesOf(mutant);
        EXPECT_TRUE(std::any_of(cases.begin(), cases.end(), [&](const Case& one) {
            for (int variant = 0; variant < mutant.variants(*one.form); ++variant)
                if (mutant.shows(*one.form, variant)) return true;
            return false;
        })) << mutant.name;
    }
}

}  // namespace
}  // namespace kormtest
