#include "fuzz_case.h"

#include <climits>

#include "../geometry/homogeneous.h"
#include "../geometry/routines.h"
#include "../routines/routines.h"
#include "../support/checker.h"
#include "../support/family.h"
#include "../support/status.h"

namespace kormtest {
namespace {

using RoutineCase = Verdict (*)(const Form& form, const Library& library, Random& random);

// Calls are so short that the fuzzer's own work takes longer than one.
Verdict repeated(int times, RoutineCase routine, const Form& form, Random& random) {
    Verdict verdict;
    for (int i = 0; i < times && verdict.ok; ++i) verdict = routine(form, Library::linked(), random);
    return verdict;
}

Verdict formCase(const Form& form, Random& random) {
    const Library& library = Library::linked();
    switch (random.between(0, 7)) {
        case 0: return repeated(40, badArgumentsCase, form, random);
        case 1:
            // (The OpenMP runtime isn't compiled for MemorySanitizer, which would take what it hands on for unwritten.)
            if (form.array && !underMemorySanitizer) return teamCase(form, library, random);
            if (hasOverlapRule(form)) return overlapCase(form, library, random);
            break;
        case 2:
            if (hasForwardRule(form)) return forwardMoveCase(form, library, random);
            if (hasLargeMoves(form)) return largeMoveCase(form, library, random);
            break;
        default: break;
    }
    return repeated(5, resultsCase, form, random);
}

// The four functions that tell the size of a buffer: order * (order + 5) or order * (3 * order + 5) elements, cut to
// 32 bits.
Verdict sizeQueryCase(const std::string& name, Random& random) {
    const std::int32_t order = random.between(INT_MIN, INT_MAX);
    const bool null = random.chance(20);
    std::uint32_t size = 77;
    using Query = std::int32_t (*)(std::int32_t, std::uint32_t*);
    const std::int32_t found = reinterpret_cast<Query>(Library::linked().find(name))(order, null ? nullptr : &size);
    const auto n = static_cast<std::uint32_t>(order);
    const std::uint32_t squares = name.find("Vectors") == std::string::npos ? 1 : 3;
    const std::uint32_t bytes = (name.ends_with("_32f") ? 4u : 8u) * n * (squares * n + 5);
    const std::int32_t expected = null ? status::nullPointer : order < 1 ? status::badSize : status::ok;
    if (found == expected && size == (expected == status::ok ? bytes : 77)) return Verdict::pass();
    return Verdict::fail("order " + std::to_string(order) + ": status " + std::to_string(found) + ", size " +
                         std::to_string(size));
}

Verdict named(const std::string& name, Verdict verdict) {
    if (!verdict.ok) verdict.message = name + ": " + verdict.message;
    return verdict;
}

}  // namespace

Verdict runFuzzCase(std::span<const std::uint8_t> bytes) {
    std::uint64_t seed = 0;
    for (int i = 0; i < 2 && !bytes.empty(); ++i, bytes = bytes.subspan(1)) seed = seed << 8 | bytes[0];
    Random random(bytes, seed);
    static const std::vector<std::string> queries = sizeQueryNames();
    const std::size_t forms = allForms().size(), functions = geometryFunctions().size();
    const auto all = static_cast<std::int32_t>(forms + functions + queries.size() + 1);
    auto chosen = static_cast<std::size_t>(random.between(0, all - 1));
    if (chosen < forms) return named(allForms()[chosen].name, formCase(allForms()[chosen], random));
    chosen -= forms;
    if (chosen < functions) {
        const GeometryFunction& function = geometryFunctions()[chosen];
        return named(function.name, geometryCase(function, Library::linked(), random));
    }
    chosen -= functions;
    if (chosen < queries.size()) return named(queries[chosen], sizeQueryCase(queries[chosen], random));
    return named(homogeneousName, random.chance(20) ? homogeneousBadArgumentsCase(Library::linked(), random)
                                                    : homogeneousCase(Library::linked(), random));
}

}  // namespace kormtest
