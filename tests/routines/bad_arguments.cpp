#include <algorithm>
#include <climits>
#include <vector>

#include "../support/arena.h"
#include "../support/check.h"
#include "../support/family.h"
#include "../support/fault.h"
#include "../support/status.h"
#include "../support/thread_number.h"
#include "routines.h"

namespace kormtest {
namespace {

struct BadValue {
    std::size_t argument;
    std::int32_t value;  // of a pointer: null
};

// Good sizes are at most this, so that any above it match no other size.
constexpr std::int32_t largestGoodSize = 100;

// Must it fit another argument?
bool mayMismatch(const Form& form, const Argument& argument) {
    return argument.role == Role::size &&
           (form.family->tall ||
            std::count_if(form.arguments.begin(), form.arguments.end(), [&](const Argument& other) {
                return other.role == Role::size && other.extent == argument.extent;
            }) > 1);
}

std::vector<std::int32_t> badValuesOf(const Form& form, const Argument& argument) {
    switch (argument.role) {
        case Role::pointer: return {0};
        case Role::count: return {0, -1, -7, INT_MIN};
        case Role::size:
            if (mayMismatch(form, argument)) return {0, -1, -7, INT_MIN, largestGoodSize + 1, INT_MAX};
            return {0, -1, -7, INT_MIN};
        case Role::objectStride:
        case Role::rowStride:
        case Role::elementStride: {
            // INT_MAX has its low bits set, INT_MIN only its sign; near both ends sums of checks could wrap.
            std::vector<std::int32_t> values{0, -4, -8, 1,       2,       3,           5,
                                             6, 7,  -1, INT_MAX, INT_MIN, INT_MIN + 8, -(1 << 30)};
            values.insert(values.end(), {(1 << 30) + 2, (1 << 30) + 1});
            if (form.type == Type::f64) values.insert(values.end(), {4, 12, INT_MAX - 3});
            return values;
        }
        case Role::offset: {
            std::vector<std::int32_t> values{-4, -8, 1, 2, 3, 5, 6, 7, -1, INT_MAX, INT_MIN, INT_MIN + 8};
            if (form.type == Type::f64) values.insert(values.end(), {4, 12, INT_MAX - 3});
            return values;
        }
        case Role::value: return {};
    }
    return {};
}

// Does some check of the form look at this argument?
bool isChecked(const Form& form, const Argument& argument) {
    return std::any_of(form.checks.begin(), form.checks.end(), [&](char letter) { return looksAt(letter, argument); });
}

// All bad values that some check of the form looks at.
std::vector<BadValue> allBadValues(const Form& form) {
    std::vector<BadValue> result;
    for (std::size_t i = 0; i < form.arguments.size(); ++i) {
        if (!isChecked(form, form.arguments[i])) continue;
        for (const std::int32_t value : badValuesOf(form, form.arguments[i])) result.push_back({i, value});
    }
    return result;
}

class Checker {
public:
    Checker(const Form& form, const Library& library, Random& random)
        : form_(form), function_(library.function(form)), random_(random) {}

    // Good values for everything; the pointers lead nowhere.
    void reset() {
        values_.clear();
        Sizes sizes;
        for (const Extent extent : form_.extents) sizes.set(extent, random_.between(1, largestGoodSize));
        sizes.count = random_.between(1, largestGoodSize);
        matchSizes(form_, sizes);
        std::byte* nowhere = threadArena().nowhere();
        for (const Argument& argument : form_.arguments) {
            const std::int32_t size = form_.elementSize();
            switch (argument.role) {
                case Role::pointer:
                    values_.push_back(CallValue::pointer(nowhere));
                    nowhere += 4096;
                    break;
                case Role::value:
                    values_.push_back(form_.type == Type::f64 ? CallValue::realBits(random_.next())
                                                              : CallValue::singleBits(0x3f800000));
                    break;
                case Role::offset:
                    // Without a check of offsets even bad ones must not matter to the others.
                    values_.push_back(CallValue::integer(
                        form_.checks.find_first_of("Oo") == std::string::npos ? -3 : size * random_.between(0, 9)));
                    break;
                case Role::objectStride:
                case Role::rowStride:
                case Role::elementStride:
                    // Good ones at both ends: the element size, and close to 2^31.
                    values_.push_back(CallValue::integer(
                        random_.chance(50)   ? size
                        : random_.chance(80) ? size * random_.between(1, 99)
                                             : INT_MAX - size + 1 - size * random_.between(0, 1 << 20)));
                    break;
                case Role::size:
                case Role::count: values_.push_back(CallValue::integer(sizes.of(argument.extent))); break;
            }
        }
    }

    void spoil(const BadValue& bad) {
        const Argument& argument = form_.arguments[bad.argument];
        values_[bad.argument] =
            argument.role == Role::pointer ? CallValue::pointer(nullptr) : CallValue::integer(bad.value);
        text_ += " " + argument.name + "=" + std::to_string(bad.value);
    }

    Verdict expectFirst() {
        const std::int32_t expected = firstFailure(form_, values_, form_.checks);
        const std::string where = form_.name + " with" + std::exchange(text_, {});
        // Two sizes too many may match each other.
        if (expected == status::ok) return Verdict::pass();
        // A call that wrongly passes must not fork: a fault in a team couldn't be caught.
        scriptThreadNumbers({1});
        setFaultContext(form_.name.c_str());
        CallResult result;
        const unsigned stackShift = 4u * static_cast<unsigned>(random_.between(0, 3));
        const Fault fault = guarded([&] { result = callFunction(function_, values_, stackShift); });
        if (fault.happened) return Verdict::fail(fault.text() + " in " + where);
        if (result.status() != expected) {
            return Verdict::fail(where + ": status " + std::to_string(result.status()) + ", expected " +
                                 std::to_string(expected));
        }
        if (!result.frameDamage.empty()) return Verdict::fail(where + ": call frame:" + result.frameDamage);
        if (threadNumberQuestions() != 0) return Verdict::fail(where + ": asked for the thread number");
        return Verdict::pass();
    }

private:
    const Form& form_;
    void* function_;
    Random& random_;
    std::vector<CallValue> values_;
    std::string text_;
};

}  // namespace

Verdict badArgumentsCase(const Form& form, const Library& library, Random& random) {
    Checker checker(form, library, random);
    checker.reset();
    const std::int32_t percent = random.between(10, 90);
    for (std::size_t i = 0; i < form.arguments.size(); ++i) {
        const Argument& argument = form.arguments[i];
        if (!isChecked(form, argument) || !random.chance(percent)) continue;
        const bool listed = argument.role == Role::pointer || random.chance(60);
        checker.spoil({i, listed ? random.pick(badValuesOf(form, argument)) : random.between(INT_MIN, INT_MAX)});
    }
    return checker.expectFirst();
}

Verdict checkBadArguments(const Form& form, const Library& library, const Options& options) {
    const std::vector<BadValue> bad = allBadValues(form);
    Random random = options.random(form, 0, 1);
    Checker checker(form, library, random);
    for (const BadValue& one : bad) {
        checker.reset();
        checker.spoil(one);
        if (Verdict verdict = checker.expectFirst(); !verdict.ok) return verdict;
    }
    for (std::size_t a = 0; a < bad.size(); ++a) {
        for (std::size_t b = a + 1; b < bad.size(); ++b) {
            if (bad[a].argument == bad[b].argument) continue;
            checker.reset();
            checker.spoil(bad[a]);
            checker.spoil(bad[b]);
            if (Verdict verdict = checker.expectFirst(); !verdict.ok) return verdict;
        }
    }
    const int subsets = options.share(300);
    for (int i = 0; i < subsets; ++i)
        if (Verdict verdict = badArgumentsCase(form, library, random); !verdict.ok) return verdict;
    return Verdict::pass();
}

}  // namespace kormtest
