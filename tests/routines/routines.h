// What a form must show, one function each. They are called by the tests with the real library, and with
// libraries that are wrong on purpose, which they must tell from the real one.
#pragma once

#include <algorithm>
#include <cstdint>

#include "../support/forms.h"
#include "../support/library.h"
#include "../support/random.h"
#include "../support/verdict.h"

namespace kormtest {

struct Options {
    std::uint64_t seed = 1;  // KORM_TEST_SEED
    int percent = 100;       // KORM_TEST_PERCENT, of each routine's usual number of random cases
    static Options fromEnvironment();
    int share(int usual) const {
        return static_cast<int>(std::max<std::int64_t>(std::int64_t{usual} * percent / 100, 1));
    }
    Random random(const Form& form, int caseNumber, std::uint64_t routine) const {
        return Random(mixSeed(mixSeed(seed, form.index * 64 + routine), static_cast<std::uint64_t>(caseNumber)));
    }
};

// Each bad value of each argument, each pair of them, random subsets; pointers lead to inaccessible memory.
Verdict checkBadArguments(const Form& form, const Library& library, const Options& options);

// Results to the bit, and not one byte beside them, at random places.
Verdict checkResults(const Form& form, const Library& library, const Options& options);

// Sums of products: every combination of sizes around the kernels' own, contiguous elements and others.
bool hasEverySize(const Form& form);
Verdict checkEverySize(const Form& form, const Library& library, const Options& options);

// Products of matrices, and with vectors, large enough for a kernel to work in blocks, or on copies.
bool hasLargeSizes(const Form& form);
Verdict checkLargeSizes(const Form& form, const Library& library, const Options& options);

// Products whose sums are longer than any copy that a kernel makes of an operand, with every number of rows behind a
// block of four.
Verdict checkLongSums(const Form& form, const Library& library, const Options& options);

// Long runs whose result overlaps a source: the effect of single steps in ascending order.
bool hasOverlapRule(const Form& form);
Verdict checkOverlap(const Form& form, const Library& library, const Options& options);

// Movement: objects in such numbers, and of such sizes, that kernels work in blocks.
bool hasLargeMoves(const Form& form);
Verdict checkLargeMoves(const Form& form, const Library& library, const Options& options);

// Movement: result and source overlap in any way, and parts of the result meet each other.
bool hasForwardRule(const Form& form);
Verdict checkForwardMoves(const Form& form, const Library& library, const Options& options);

// Strides whose products pass 2^31 bytes; a 64-bit address space only.
Verdict checkFarObjects(const Form& form, const Library& library, const Options& options);

// Both sides of the limit, by whether the thread number was asked for. Without `mayFault` (a memory
// checker counts faults as errors) sizes stay small enough to be computed.
Verdict checkThresholds(const Form& form, const Library& library, const Options& options, bool mayFault);

// Teams of 1 to 16 threads, counts around them, two answers that differ.
Verdict checkTeams(const Form& form, const Library& library, const Options& options);

// The call frame at every stack alignment, serial and forked.
Verdict checkCallFrame(const Form& form, const Library& library, const Options& options);

// --- Single cases of the above; all choices are the generator's ---

Verdict resultsCase(const Form& form, const Library& library, Random& random);
Verdict badArgumentsCase(const Form& form, const Library& library, Random& random);
Verdict overlapCase(const Form& form, const Library& library, Random& random);
Verdict largeMoveCase(const Form& form, const Library& library, Random& random);
Verdict forwardMoveCase(const Form& form, const Library& library, Random& random);
Verdict teamCase(const Form& form, const Library& library, Random& random);

}  // namespace kormtest
