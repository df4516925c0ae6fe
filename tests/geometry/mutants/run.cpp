// Runs the geometry routines against libraries that are wrong on purpose: each must be caught for each function that its
// mistake applies to.
#include <algorithm>
#include <cstdio>
#include <cstdlib>

#include "../../support/fault.h"
#include "../homogeneous.h"
#include "../routines.h"
#include "mistakes.h"

namespace kormtest {
namespace {

const Options options = Options::fromEnvironment();

using Routine = Verdict (*)(const GeometryFunction&, const Library&, const Options&);
using HomogeneousRoutine = Verdict (*)(const Library&, const Options&);

Verdict thresholds(const Library& library, const Options& some) {
    return checkHomogeneousThreshold(library, some, false);
}

bool always(const GeometryFunction&) { return true; }
bool never(const GeometryFunction&) { return false; }

bool hasTwoAlike(const GeometryFunction& function) {
    for (std::size_t a = 0; a < function.arguments.size(); ++a) {
        for (std::size_t b = a + 1; b < function.arguments.size(); ++b) {
            const Slotted &one = function.arguments[a], &other = function.arguments[b];
            const bool inputs = (one.slot == Slot::input || one.slot == Slot::constant) && one.slot == other.slot;
            if (inputs && one.elements == other.elements && !function.commutes) return true;
        }
    }
    return false;
}

struct Row {
    const char* name;
    Mistake mistake;
    Routine routine;
    bool (*applies)(const GeometryFunction&);
    HomogeneousRoutine homogeneous;  // null where the mistake doesn't apply to it
};

const Row rows[] = {
    {"does nothing", Mistake::doesNothing, checkGeometryResults, always, checkHomogeneousResults},
    {"swaps operands", Mistake::swapsOperands, checkGeometryResults, hasTwoAlike, nullptr},
    {"writes beyond", Mistake::writesBeyond, checkGeometryResults, always, checkHomogeneousResults},
    // The double-precision inverse leaves the sign of a zero open; of one function the result is no number.
    {"flips zeros", Mistake::flipsZeros, checkGeometryResults,
     [](const GeometryFunction& function) {
         return function.domain != Domain::unprojection && function.domain != Domain::identity;
     },
     nullptr},
    {"quiets NaNs", Mistake::quietsNans, checkGeometryResults,
     [](const GeometryFunction& function) { return function.copies && function.arguments.size() > 1; }, nullptr},
    {"stores early", Mistake::storesEarly, checkGeometryResults,
     [](const GeometryFunction& function) {
         return std::any_of(function.arguments.begin(), function.arguments.end(),
                            [](const Slotted& argument) { return argument.mayEqualDst; });
     },
     nullptr},
    {"forgets the last", Mistake::forgetsTheLast, checkGeometryBatches,
     [](const GeometryFunction& function) { return function.batch(); }, checkHomogeneousResults},
    {"skips checks", Mistake::skipsChecks, checkGeometryNulls,
     [](const GeometryFunction& function) { return function.nullCheck; }, checkHomogeneousBadArguments},
    {"reorders checks", Mistake::reordersChecks, checkGeometryNulls, never, checkHomogeneousBadArguments},
    {"misses the limit", Mistake::missesLimit, checkGeometryResults, never, thresholds},
    {"forgets failures", Mistake::forgetsFailures, checkGeometryResults, never, checkHomogeneousResults},
};

// What this program must not find in a library without a mistake.
bool passes(const Library& library, const char* what) {
    bool good = true;
    const auto judge = [&](const Verdict& verdict) {
        if (verdict.ok) return;
        good = false;
        std::printf("%s fails: %s\n", what, verdict.message.c_str());
    };
    for (const GeometryFunction& function : geometryFunctions()) {
        judge(checkGeometryResults(function, library, options));
        judge(checkGeometryBatches(function, library, options));
        judge(checkGeometryNulls(function, library, options));
    }
    judge(checkHomogeneousResults(library, options));
    judge(checkHomogeneousBadArguments(library, options));
    judge(thresholds(library, options));
    return good;
}

bool judge(const Row& row, const Library& wrong) {
    int applies = 0, caught = 0;
    const auto judgeOne = [&](const Verdict& verdict, const char* function) {
        ++applies;
        if (!verdict.ok) ++caught;
        else std::printf("not caught: %s, in %s\n", row.name, function);
    };
    for (const GeometryFunction& function : geometryFunctions())
        if (row.applies(function)) judgeOne(row.routine(function, wrong, options), function.name.c_str());
    if (row.homogeneous != nullptr) judgeOne(row.homogeneous(wrong, options), homogeneousName);
    std::printf("%-18s applies %3d times, caught %3d\n", row.name, applies, caught);
    return applies > 0 && caught == applies;
}

// Products that go into sums without being rounded.
bool judgeContraction(const Library& wrong) {
    if (!__builtin_cpu_supports("fma")) {
        std::printf("contracts sums      can't be run: this processor has no fused multiply and add\n");
        return true;
    }
    int applies = 0, caught = 0;
    for (const GeometryFunction& function : geometryFunctions()) {
        if (!function.contracts) continue;
        ++applies;
        if (!checkGeometryResults(function, wrong, options).ok) ++caught;
        else std::printf("not caught: contracts sums, in %s\n", function.name.c_str());
    }
    ++applies;
    if (!checkHomogeneousResults(wrong, options).ok) ++caught;
    std::printf("%-18s applies %3d times, caught %3d\n", "contracts sums", applies, caught);
    return caught == applies;
}

}  // namespace
}  // namespace kormtest

int main(int argc, char** argv) {
    using namespace kormtest;
    if (argc != 2) {
        std::fprintf(stderr, "usage: korm_geometry_mutants FOLDER_OF_THE_LIBRARIES\n");
        return 2;
    }
    installFaultHandlers();
    const std::string folder = argv[1];
    const Library wrong = Library::open(folder + "/libgeometry_mutant.so");
    const Library contracting = Library::open(folder + "/libgeometry_contracts.so");
    bool good = passes(wrong, "the library without a mistake");
    int* const variant = static_cast<int*>(wrong.find("mutantVariant"));
    for (const Row& row : rows) {
        *variant = static_cast<int>(row.mistake);
        good = judge(row, wrong) && good;
    }
    good = judgeContraction(contracting) && good;
    return good ? EXIT_SUCCESS : EXIT_FAILURE;
}
