#include "homogeneous.h"

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <cstring>
#include <stdexcept>

#include "../support/element_values.h"
#include "../support/fault.h"
#include "../support/status.h"
#include "../support/thread_number.h"

namespace kormtest {

namespace {

constexpr std::uint32_t oneNan = 0x7fc00000;

std::int32_t number(const CallValue& value) {
    return static_cast<std::int32_t>(static_cast<std::uint32_t>(value.bits));
}

float read(const std::byte* at) {
    float value;
    std::memcpy(&value, at, sizeof value);
    return value;
}

void writeBits(std::byte* at, std::uint64_t bits) {
    const auto half = static_cast<std::uint32_t>(bits);
    std::memcpy(at, &half, sizeof half);
}

}  // namespace

HomogeneousScene::Place HomogeneousScene::choosePlace(std::size_t operand, std::int32_t outerCount,
                                                      std::int32_t elementCount, bool plain, bool apart,
                                                      Random& places) {
    Place place;
    place.element = plain ? 4 : 4 * places.between(2, 6);
    place.outer = place.element * elementCount + 4 * places.between(0, 3);
    // Streams: the elements of one position side by side, the positions apart. Only element strides of 4 are plain.
    if (!plain && places.chance(40)) {
        place.outer = 4 * places.between(1, 3);
        place.element = std::max(8, place.outer * outerCount + 4 * places.between(0, 3));
    } else if (!apart && places.chance(20)) {
        place.outer = 4 * places.between(1, 4);  // sources may overlap themselves
    }
    const std::ptrdiff_t bytes = static_cast<std::ptrdiff_t>(place.outer) * (outerCount - 1) +
                                 static_cast<std::ptrdiff_t>(place.element) * (elementCount - 1) + 4;
    const Stretch room = arena_.field(operand);
    if (bytes + 512 > static_cast<std::ptrdiff_t>(room.size())) throw std::logic_error("operand too large");
    switch (places.between(0, 4)) {
        case 0:
        case 1: place.base = room.end - bytes; break;
        case 2: place.base = room.begin; break;
        case 3: place.base = room.begin + 128 + places.between(0, 127); break;  // any address will do
        default: place.base = room.begin + 128 + 16 * places.between(0, 7); break;
    }
    arena_.addWindow(room, place.base, place.base + bytes);
    return place;
}

HomogeneousScene::HomogeneousScene(Arena& arena, const HomogeneousOptions& options, Random& places, Random& values)
    : arena_(arena), options_(options) {
    arena.clearWindows();
    // Any one element stride other than 4 makes a call a general one.
    int general = 0;
    const bool plain = options.plain ? *options.plain : places.chance(50);
    if (!plain) general = places.between(1, 7);
    result_ = choosePlace(0, options.count, 3, (general & 1) == 0, true, places);
    matrix_ = choosePlace(1, 4, 4, (general & 2) == 0, false, places);
    source_ = options.inPlace ? result_ : choosePlace(2, options.count, 3, (general & 4) == 0, false, places);
    if (options.plain && !plain && options.inPlace && general == 4)
        matrix_ = choosePlace(3, 4, 4, false, false, places);
    arena.fillWindows(places);
    fillValues(values);
}

void HomogeneousScene::fillValues(Random& values) {
    const auto element = [&](bool special) {
        const Mood mood = special ? values.pick({Mood::ordinary, Mood::wide, Mood::mixed}) : Mood::ordinary;
        return randomElement(Type::f32, mood, true, values);
    };
    const bool special = options_.special && values.chance(50);
    const auto matrixElement = [&](std::int32_t r, std::int32_t c) {
        return matrix_.base + static_cast<std::ptrdiff_t>(r) * matrix_.outer +
               static_cast<std::ptrdiff_t>(c) * matrix_.element;
    };
    for (std::int32_t r = 0; r < 4; ++r)
        for (std::int32_t c = 0; c < 4; ++c) writeBits(matrixElement(r, c), element(special));
    // A last row of (1, 0, 0, 0): w is x, so that any w can be had.
    const bool chosen = !special && values.chance(60);
    if (chosen) {
        for (std::int32_t c = 0; c < 4; ++c) writeBits(matrixElement(3, c), c == 0 ? 0x3f800000u : 0u);
    }
    for (std::int32_t k = 0; k < options_.count; ++k) {
        for (std::int32_t i = 0; i < 3; ++i) {
            std::byte* const at = source_.base + static_cast<std::ptrdiff_t>(k) * source_.outer +
                                  static_cast<std::ptrdiff_t>(i) * source_.element;
            writeBits(at, element(special));
            if (!chosen || i != 0 || !values.chance(options_.degeneratePercent)) continue;
            // Zeros, denormals, both sides of the smallest normal number, NaN.
            writeBits(at, values.pick<std::uint32_t>({0, 0x80000000, 1, 0x007fffff, 0x00800000, 0x80800000, 0x00800001,
                                                      0x80800001, 0x7fc00000, 0x7f800000}));
        }
    }
}

std::byte* HomogeneousScene::resultElement(std::int32_t k, std::int32_t i) const {
    return result_.base + static_cast<std::ptrdiff_t>(k) * result_.outer +
           static_cast<std::ptrdiff_t>(i) * result_.element;
}

void HomogeneousScene::makeNansEqual() const {
    for (std::int32_t k = 0; k < options_.count; ++k)
        for (std::int32_t i = 0; i < 3; ++i)
            if (std::isnan(read(resultElement(k, i)))) writeBits(resultElement(k, i), oneNan);
}

std::vector<CallValue> HomogeneousScene::arguments() const {
    return {CallValue::pointer(matrix_.base),  CallValue::integer(matrix_.outer), CallValue::integer(matrix_.element),
            CallValue::pointer(source_.base),  CallValue::integer(source_.outer), CallValue::integer(source_.element),
            CallValue::pointer(result_.base),  CallValue::integer(result_.outer), CallValue::integer(result_.element),
            CallValue::integer(options_.count)};
}

Verdict HomogeneousScene::run(void* code, unsigned stackShift, bool mayFork) const {
    const std::vector<CallValue> values = arguments();
    const std::vector<std::byte> before = arena_.snapshot();
    const std::int32_t expectedStatus = apply(values);
    makeNansEqual();
    const std::vector<std::byte> expected = arena_.snapshot();
    arena_.restore(before);

    CallResult result;
    setFaultContext(homogeneousName);
    if (mayFork) {
        result = callFunction(code, values, stackShift);
    } else {
        const Fault fault = guarded([&] { result = callFunction(code, values, stackShift); });
        if (fault.happened) return Verdict::fail(fault.text() + ", " + describe());
    }
    if (result.status() != expectedStatus)
        return Verdict::fail("status " + std::to_string(result.status()) + ", not " + std::to_string(expectedStatus) +
                             ", " + describe());
    makeNansEqual();
    if (const std::byte* at = arena_.firstDifference(expected); at != nullptr) {
        std::string text = "wrong byte";
        for (std::int32_t k = 0; k < options_.count; ++k)
            for (std::int32_t i = 0; i < 3; ++i)
                if (at >= resultElement(k, i) && at < resultElement(k, i) + 4)
                    text.append(" in element ")
                        .append(std::to_string(i))
                        .append(" of vector ")
                        .append(std::to_string(k));
        return Verdict::fail(text + ", " + describe());
    }
    if (!result.frameDamage.empty()) return Verdict::fail("call frame:" + result.frameDamage + ", " + describe());
    return Verdict::pass();
}

std::vector<std::byte> HomogeneousScene::resultBytes() const {
    makeNansEqual();
    std::vector<std::byte> bytes;
    for (std::int32_t k = 0; k < options_.count; ++k)
        for (std::int32_t i = 0; i < 3; ++i) bytes.insert(bytes.end(), resultElement(k, i), resultElement(k, i) + 4);
    return bytes;
}

std::string HomogeneousScene::describe() const {
    const auto values = arguments();
    std::string text = homogeneousName;
    text += "(";
    for (std::size_t i = 0; i < values.size(); ++i) {
        char one[64];
        if (homogeneousArguments[i].check == 'N')
            std::snprintf(one, sizeof one, "%s=0x%llx", homogeneousArguments[i].name,
                          static_cast<unsigned long long>(values[i].bits));
        else std::snprintf(one, sizeof one, "%s=%d", homogeneousArguments[i].name, number(values[i]));
        if (i != 0) text += ", ";
        text += one;
    }
    return text + ")";
}

namespace {

Random caseRandom(const Options& options, int number, std::uint64_t routine) {
    return Random(mixSeed(mixSeed(options.seed, 0x33444800 + routine), static_cast<std::uint64_t>(number)));
}

// One call with two answers about the threads; they need not agree.
Verdict runTeam(const Library& library, HomogeneousOptions one, std::int32_t decision, std::int32_t team,
                unsigned stackShift, Random& random) {
    Random values = random.branch();
    const HomogeneousScene scene(threadArena(), one, random, values);
    scriptThreadNumbers({decision, team});
    const bool driver = homogeneousReachesDriver(one.count);
    const bool forks = driver && decision > 1 && one.count >= decision;
    Verdict verdict = scene.run(library.find(homogeneousName), stackShift, forks);
    const int questions = forks ? 2 : driver ? 1 : 0;
    if (verdict.ok && threadNumberQuestions() != questions)
        verdict = Verdict::fail("asked for the thread number " + std::to_string(threadNumberQuestions()) +
                                " times, not " + std::to_string(questions) + ", " + scene.describe());
    if (!verdict.ok)
        verdict.message += ", " + std::to_string(decision) + " threads by the first answer, " + std::to_string(team) +
                           " by the second";
    return verdict;
}

}  // namespace

Verdict homogeneousCase(const Library& library, Random& random) {
    HomogeneousOptions one;
    one.count = random.chance(90) ? random.between(1, 24) : random.between(25, 130);
    one.plain = random.chance(60);
    one.inPlace = random.chance(20);
    one.degeneratePercent = random.pick({0, 3, 20, 100});
    const unsigned shift = 4u * static_cast<unsigned>(random.between(0, 3));
    return runTeam(library, one, 1, 1, shift, random);
}

Verdict checkHomogeneousResults(const Library& library, const Options& options) {
    for (int i = 0; i < options.share(4000); ++i) {
        Random random = caseRandom(options, i, 1);
        if (Verdict verdict = homogeneousCase(library, random); !verdict.ok) {
            verdict.message += ", case " + std::to_string(i);
            return verdict;
        }
    }
    return Verdict::pass();
}

namespace {

struct BadValue {
    std::size_t argument;
    std::int32_t value;
};

std::int32_t statusOfLetter(char letter) {
    return letter == 'N' ? status::nullPointer : letter == 'C' ? status::badCount : status::badStride;
}

Verdict callBadly(const Library& library, const std::vector<BadValue>& bad, Random& random) {
    std::vector<CallValue> values;
    std::byte* nowhere = threadArena().nowhere();
    for (const HomogeneousArgument& argument : homogeneousArguments) {
        if (argument.check == 'N') values.push_back(CallValue::pointer(nowhere += 4096));
        else if (argument.check == 'C') values.push_back(CallValue::integer(random.between(1, 1000)));
        else values.push_back(CallValue::integer(random.chance(80) ? 4 * random.between(1, 99) : 0x7ffffffc));
    }
    std::string failed, text;
    for (const BadValue& one : bad) {
        const HomogeneousArgument& argument = homogeneousArguments[one.argument];
        values[one.argument] = argument.check == 'N' ? CallValue::pointer(nullptr) : CallValue::integer(one.value);
        failed += argument.check;
        text.append(" ").append(argument.name).append("=").append(std::to_string(one.value));
    }
    std::int32_t expected = status::ok;
    for (const char* letter = homogeneousOrder; expected == status::ok && *letter != 0; ++letter)
        if (failed.find(*letter) != std::string::npos) expected = statusOfLetter(*letter);
    scriptThreadNumbers({1});
    CallResult result;
    void* const code = library.find(homogeneousName);
    const auto shift = 4u * static_cast<unsigned>(random.between(0, 3));
    const Fault fault = guarded([&] { result = callFunction(code, values, shift); });
    std::string where = homogeneousName;
    where.append(" with").append(text);
    if (fault.happened) return Verdict::fail(fault.text() + " in " + where);
    if (result.status() != expected)
        return Verdict::fail(where + ": status " + std::to_string(result.status()) + ", not " +
                             std::to_string(expected));
    if (!result.frameDamage.empty()) return Verdict::fail(where + ": call frame:" + result.frameDamage);
    if (threadNumberQuestions() != 0) return Verdict::fail(where + ": asked for the thread number");
    return Verdict::pass();
}

}  // namespace

Verdict homogeneousBadArgumentsCase(const Library& library, Random& random) {
    std::vector<BadValue> some;
    for (std::size_t argument = 0; argument < homogeneousArguments.size(); ++argument)
        if (random.chance(40)) some.push_back({argument, homogeneousArguments[argument].check == 'T' ? 6 : 0});
    return some.empty() ? Verdict::pass() : callBadly(library, some, random);
}

Verdict checkHomogeneousBadArguments(const Library& library, const Options& options) {
    std::vector<BadValue> all;
    for (std::size_t i = 0; i < homogeneousArguments.size(); ++i) {
        std::vector<std::int32_t> values{0};
        if (homogeneousArguments[i].check == 'C') values = {0, -1, -7, -2147483647 - 1};
        if (homogeneousArguments[i].check == 'T')
            values = {0, -4, -8, 1, 2, 3, 5, 6, 7, -1, 0x7fffffff, -2147483647 - 1, -2147483640, 0x40000002};
        for (const std::int32_t value : values) all.push_back({i, value});
    }
    Random random = caseRandom(options, 0, 2);
    for (const BadValue& one : all)
        if (Verdict verdict = callBadly(library, {one}, random); !verdict.ok) return verdict;
    for (const BadValue& a : all) {
        for (const BadValue& b : all) {
            if (a.argument >= b.argument) continue;
            if (Verdict verdict = callBadly(library, {a, b}, random); !verdict.ok) return verdict;
        }
    }
    for (int i = 0; i < 500; ++i)
        if (Verdict verdict = homogeneousBadArgumentsCase(library, random); !verdict.ok) return verdict;
    return Verdict::pass();
}

Verdict checkHomogeneousThreshold(const Library& library, const Options& options, bool mayFault) {
    for (int i = 0; i < 200; ++i) {
        Random random = caseRandom(options, i, 3);
        HomogeneousOptions one;
        one.count = i < 20 ? 130 + i % 2 : random.between(100, 160);
        one.plain = i % 4 < 2;
        if (Verdict verdict = runTeam(library, one, 1, 1, 0, random); !verdict.ok) return verdict;
    }
    if (!mayFault) return Verdict::pass();
    // Where the estimate wraps. The first touch of memory faults; by then the decision has been taken.
    static constexpr std::int32_t counts[] = {131,        357913941,  357913942,  357913943, 700000000,  715827882,
                                              715827883,  715828013,  715828014,  715828100, 1073741823, 1431655765,
                                              1431655766, 1431655896, 1431655897, 2147483647};
    Random random = caseRandom(options, 0, 4);
    for (const std::int32_t count : counts) {
        for (int repeat = 0; repeat < 4; ++repeat) {
            std::vector<CallValue> values;
            for (const HomogeneousArgument& argument : homogeneousArguments) {
                if (argument.check == 'N') values.push_back(CallValue::pointer(threadArena().nowhere()));
                else if (argument.check == 'T')
                    values.push_back(CallValue::integer(repeat < 2 ? 4 : 4 * random.between(1, 9)));
                else values.push_back(CallValue::integer(count));
            }
            scriptThreadNumbers({1});
            void* const code = library.find(homogeneousName);
            CallResult result;
            const Fault fault = guarded([&] { result = callFunction(code, values); });
            std::string where = homogeneousName;
            where.append(" with count ").append(std::to_string(count));
            if (!fault.happened) return Verdict::fail(where + " returned " + std::to_string(result.status()));
            if (threadNumberQuestions() != (homogeneousReachesDriver(count) ? 1 : 0))
                return Verdict::fail(where + " asked for the thread number " + std::to_string(threadNumberQuestions()) +
                                     " times");
        }
    }
    return Verdict::pass();
}

Verdict checkHomogeneousTeams(const Library& library, const Options& options) {
    int number = 0;
    for (std::int32_t threads = 1; threads <= 16; ++threads) {
        for (int repeat = 0; repeat < 6; ++repeat) {
            Random random = caseRandom(options, number++, 5);
            HomogeneousOptions one;
            one.count = random.between(131, 400);
            one.plain = random.chance(50);
            one.inPlace = random.chance(20);
            // Few degenerate vectors, so that some slices have one and others none.
            one.degeneratePercent = random.pick({0, 1, 1, 30});
            const std::int32_t team = random.chance(60) ? threads : random.between(1, 20);
            const unsigned shift = 4u * static_cast<unsigned>(random.between(0, 3));
            if (Verdict verdict = runTeam(library, one, threads, team, shift, random); !verdict.ok) return verdict;
        }
    }
    for (const std::int32_t answer : {0, -1, -2147483647 - 1, 2147483647, 401, 200}) {
        Random random = caseRandom(options, number++, 5);
        HomogeneousOptions one;
        one.count = 200 - (answer == 200 ? 0 : 1);
        if (Verdict verdict = runTeam(library, one, answer, answer == 200 ? 3 : answer, 0, random); !verdict.ok)
            return verdict;
    }
    return Verdict::pass();
}

Verdict checkHomogeneousCallFrame(const Library& library, const Options& options) {
    int number = 0;
    for (const unsigned shift : {0u, 4u, 8u, 12u}) {
        for (const std::int32_t count : {1, 2, 3, 4, 7, 8, 130, 131, 200}) {
            for (const bool plain : {true, false}) {
                for (const std::int32_t threads : {1, 2}) {
                    Random random = caseRandom(options, number++, 6);
                    HomogeneousOptions one;
                    one.count = count;
                    one.plain = plain;
                    if (Verdict verdict = runTeam(library, one, threads, threads, shift, random); !verdict.ok)
                        return verdict;
                }
            }
        }
    }
    return Verdict::pass();
}

}  // namespace kormtest
