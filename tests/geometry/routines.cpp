#include "routines.h"

#include <vector>

#include "../support/fault.h"
#include "../support/status.h"
#include "../support/thread_number.h"
#include "scene.h"

namespace kormtest {
namespace {

Random caseRandom(const Options& options, const GeometryFunction& function, int number, std::uint64_t routine) {
    const std::uint64_t seed = mixSeed(options.seed, 0x67656f + 64 * function.index + routine);
    return Random(mixSeed(seed, static_cast<std::uint64_t>(number)));
}

Verdict runScene(const GeometryFunction& function, void* code, const GeometryOptions& options, Random& random,
                 unsigned stackShift) {
    Random values = random.branch();
    const GeometryScene scene(threadArena(), function, options, random, values);
    scriptThreadNumbers({1});
    Verdict verdict = scene.run(code, stackShift);
    if (verdict.ok && threadNumberQuestions() != 0)
        verdict = Verdict::fail(function.name + " asked for the thread number");
    return verdict;
}

int randomAlias(const GeometryFunction& function, Random& random) {
    std::vector<int> candidates;
    for (std::size_t argument = 0; argument < function.arguments.size(); ++argument)
        if (GeometryScene::mayAlias(function, argument)) candidates.push_back(static_cast<int>(argument));
    if (candidates.empty()) return -1;
    return candidates[static_cast<std::size_t>(random.between(0, static_cast<std::int32_t>(candidates.size()) - 1))];
}

}  // namespace

Verdict geometryCase(const GeometryFunction& function, const Library& library, Random& random) {
    GeometryOptions one;
    one.special = random.chance(67);
    one.nullOptional = random.chance(30);
    if (function.batch()) one.count = random.between(1, random.chance(20) ? 40 : 9);
    if (random.chance(25)) one.alias = randomAlias(function, random);
    const unsigned shift = 4u * static_cast<unsigned>(random.between(0, 3));
    return runScene(function, library.find(function.name), one, random, shift);
}

Verdict checkGeometryResults(const GeometryFunction& function, const Library& library, const Options& options) {
    const int cases = options.share(600);
    for (int number = 0; number < cases; ++number) {
        Random random = caseRandom(options, function, number, 1);
        if (Verdict verdict = geometryCase(function, library, random); !verdict.ok) {
            verdict.message += ", case " + std::to_string(number) + " of seed " + std::to_string(options.seed);
            return verdict;
        }
    }
    return Verdict::pass();
}

Verdict checkGeometryBatches(const GeometryFunction& function, const Library& library, const Options& options) {
    if (!function.batch()) return Verdict::pass();
    void* const code = library.find(function.name);
    static constexpr std::int32_t strides[] = {0,  4,  8,  12,   16, 20,  24,  28,  32, 36, 44,
                                               48, 52, 64, 1028, -4, -12, -16, -20, 13, 18};
    int number = 0;
    // All pairs of strides.
    for (const std::int32_t input : strides) {
        for (const std::int32_t dst : strides) {
            const bool named = (input == 12 || input == 16) && (dst == 12 || dst == 16);
            for (int repeat = 0; repeat < (named ? 60 : 3); ++repeat) {
                Random random = caseRandom(options, function, number++, 2);
                GeometryOptions one;
                one.inputStride = input;
                one.dstStride = dst;
                one.count = random.between(1, 40);
                one.special = random.chance(40);
                one.inputSpot = random.pick({Spot::pageEnd, Spot::aligned, Spot::middle, Spot::any});
                one.dstSpot = random.pick({Spot::pageEnd, Spot::aligned, Spot::middle, Spot::any});
                if (Verdict verdict = runScene(function, code, one, random, 0); !verdict.ok) return verdict;
            }
        }
    }
    // All counts at the strides that a path may be made for, in place too.
    for (std::int32_t count = 1; count <= 40; ++count) {
        for (const std::int32_t input : {4 * 2, 12, 16, 20}) {
            for (const std::int32_t dst : {4 * 2, 12, 16, 20}) {
                Random random = caseRandom(options, function, number++, 3);
                GeometryOptions one;
                one.count = count;
                one.special = random.chance(30);
                one.inputSpot = random.pick({Spot::pageEnd, Spot::aligned});
                one.dstSpot = random.pick({Spot::pageEnd, Spot::aligned});
                one.dstStride = dst;
                const int alias = randomAlias(function, random);
                if (input == dst && alias >= 0 && dst >= 4 * function.arguments[function.dst()].elements) {
                    one.alias = alias;
                    if (Verdict verdict = runScene(function, code, one, random, 0); !verdict.ok) return verdict;
                    one.alias = -1;
                }
                one.inputStride = input;
                if (Verdict verdict = runScene(function, code, one, random, 0); !verdict.ok) return verdict;
            }
        }
    }
    // Nothing to do: pointers to arrays aren't followed.
    for (const std::int32_t count : {0, -1, -40, -2147483647 - 1}) {
        for (int repeat = 0; repeat < 8; ++repeat) {
            Random random = caseRandom(options, function, number++, 4);
            GeometryOptions one;
            one.count = count;
            if (Verdict verdict = runScene(function, code, one, random, 0); !verdict.ok) return verdict;
        }
    }
    return Verdict::pass();
}

Verdict checkGeometryNulls(const GeometryFunction& function, const Library& library, const Options&) {
    if (!function.nullCheck) return Verdict::pass();
    void* const code = library.find(function.name);
    std::byte* const nowhere = threadArena().nowhere();
    const std::size_t pointers = function.arguments.size();
    // Every non-empty set of them; the others lead to inaccessible memory.
    for (std::size_t set = 1; set < std::size_t{1} << pointers; ++set) {
        for (const unsigned shift : {0u, 4u, 8u, 12u}) {
            std::vector<CallValue> values;
            for (std::size_t i = 0; i < pointers; ++i)
                values.push_back(CallValue::pointer((set >> i & 1) != 0 ? nullptr : nowhere + 64 * i + shift));
            CallResult result;
            const Fault fault = guarded([&] { result = callFunction(code, values, shift); });
            const std::string where = function.name + " with null pointers of set " + std::to_string(set);
            if (fault.happened) return Verdict::fail(fault.text() + " in " + where);
            if (result.status() != status::nullPointer)
                return Verdict::fail(where + ": status " + std::to_string(result.status()));
            if (!result.frameDamage.empty()) return Verdict::fail(where + ": call frame:" + result.frameDamage);
        }
    }
    return Verdict::pass();
}

Verdict checkGeometryCallFrame(const GeometryFunction& function, const Library& library, const Options& options) {
    void* const code = library.find(function.name);
    int number = 0;
    for (const unsigned shift : {0u, 4u, 8u, 12u}) {
        for (int repeat = 0; repeat < 40; ++repeat) {
            Random random = caseRandom(options, function, number++, 5);
            GeometryOptions one;
            one.special = repeat % 2 == 0;
            // Results of stack arrays lie anywhere too, so the fast paths of aligned ones as well.
            one.inputSpot = one.dstSpot = repeat % 4 == 0 ? Spot::aligned : Spot::any;
            if (function.batch()) {
                one.count = random.between(1, 12);
                if (repeat % 4 == 0) {
                    one.inputStride = random.pick({12, 16});
                    one.dstStride = random.pick({12, 16});
                }
            }
            if (Verdict verdict = runScene(function, code, one, random, shift); !verdict.ok) return verdict;
        }
    }
    return Verdict::pass();
}

}  // namespace kormtest
