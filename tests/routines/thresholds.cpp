#include <algorithm>

#include "../support/family.h"
#include "../support/fault.h"
#include "../support/scene.h"
#include "../support/status.h"
#include "../support/thread_number.h"
#include "routines.h"
#include "sizes.h"

namespace kormtest {
namespace {

std::int32_t limitOf(const Form& form, bool plain) { return plain ? form.limit.plain : form.limit.general; }

std::string text(const Sizes& sizes) {
    return "width " + std::to_string(sizes.width) + ", height " + std::to_string(sizes.height) + ", length " +
           std::to_string(sizes.length) + ", inner " + std::to_string(sizes.inner) + ", order " +
           std::to_string(sizes.order) + ", count " + std::to_string(sizes.count);
}

Verdict judge(const Form& form, const Sizes& sizes, bool plain) {
    const bool driver = form.driver && form.estimate(sizes) > limitOf(form, plain);
    if (threadNumberQuestions() == (driver ? 1 : 0)) return Verdict::pass();
    return Verdict::fail(form.name + ", " + text(sizes) + (plain ? ", plain" : ", general") +
                         ": asked for the thread number " + std::to_string(threadNumberQuestions()) + " times, not " +
                         std::to_string(driver ? 1 : 0));
}

// A call that is carried out, on as little memory as legal strides allow.
Verdict runThin(const Form& form, const Library& library, const Sizes& sizes, bool plain, Random& random) {
    SceneOptions options;
    options.sizes = sizes;
    options.plain = plain;
    options.thin = true;
    options.special = false;  // arithmetic on denormals is slow
    Random values(1);
    const Scene scene(threadArena(), form, options, random, values);
    scriptThreadNumbers({1});
    CallResult result;
    const auto arguments = scene.arguments();
    const Fault fault = guarded([&] { result = callFunction(library.function(form), arguments); });
    if (fault.happened) return Verdict::fail(fault.text() + ", " + scene.describe());
    if (result.status() != status::ok && !form.family->mayFail)
        return Verdict::fail("status " + std::to_string(result.status()) + ", " + scene.describe());
    return judge(form, sizes, plain);
}

// Nothing is promised of a call whose objects can't exist.
bool fitsAddressSpace(const Form& form, const Sizes& sizes) {
    double bytes = static_cast<double>(form.elementSize()) * sizes.count;
    for (const Extent extent : form.extents) bytes *= sizes.of(extent);
    return sizeof(void*) > 4 || bytes < 2147483648.0;
}

// A call of any size: the first touch of its memory faults, by then the decision has been taken.
Verdict runIntoFault(const Form& form, const Library& library, const Sizes& sizes, bool plain, Random& random) {
    std::vector<CallValue> values;
    std::byte* nowhere = threadArena().nowhere();
    const std::int32_t size = form.elementSize();
    // Any one element stride makes a call a general one.
    int general = plain ? -1
                        : random.between(0, static_cast<std::int32_t>(std::count_if(
                                                form.arguments.begin(), form.arguments.end(),
                                                [](const Argument& a) { return a.role == Role::elementStride; })) -
                                                1);
    for (const Argument& argument : form.arguments) {
        switch (argument.role) {
            case Role::pointer:
                values.push_back(CallValue::pointer(nowhere));
                nowhere += 512;  // a copy of something to where it is touches nothing
                break;
            case Role::value:
                values.push_back(form.type == Type::f64 ? CallValue::realBits(0) : CallValue::singleBits(0));
                break;
            case Role::offset: values.push_back(CallValue::integer(0)); break;
            case Role::objectStride:
            case Role::rowStride: values.push_back(CallValue::integer(size * random.between(1, 20))); break;
            case Role::elementStride: values.push_back(CallValue::integer(general-- == 0 ? 2 * size : size)); break;
            case Role::size:
            case Role::count: values.push_back(CallValue::integer(sizes.of(argument.extent))); break;
        }
    }
    scriptThreadNumbers({1});
    CallResult result;
    const Fault fault = guarded([&] { result = callFunction(library.function(form), values); });
    if (!fault.happened && fitsAddressSpace(form, sizes))
        return Verdict::fail(form.name + ", " + text(sizes) + ": returned " + std::to_string(result.status()) +
                             " without touching its operands");
    return judge(form, sizes, plain);
}

// Objects of `area` elements, of any shape where only that number counts.
Sizes shaped(const Form& form, std::int32_t area, Random& random) {
    Sizes sizes;
    if (form.extents.empty()) return sizes;
    if (form.extents.size() == 1) {
        sizes.set(form.extents[0], area);
        return sizes;
    }
    std::vector<std::int32_t> divisors;
    for (std::int32_t d = 1; d <= area; ++d)
        if (area % d == 0) divisors.push_back(d);
    sizes.width = divisors[static_cast<std::size_t>(random.between(0, static_cast<std::int32_t>(divisors.size()) - 1))];
    sizes.height = area / sizes.width;
    matchSizes(form, sizes);
    return sizes;
}

Sizes smallObjects(const Form& form, Random& random) {
    if (!form.has(Extent::inner)) return shaped(form, random.between(1, 40), random);
    Sizes sizes;
    for (const Extent extent : form.extents) sizes.set(extent, random.between(1, 12));
    return sizes;
}

Verdict checkBothSides(const Form& form, const Library& library, bool plain, Random& random) {
    const std::int32_t limit = limitOf(form, plain);
    const bool byArea = estimatesByArea(form);
    int below = 0, above = 0, tried = 0;
    for (Sizes row : shapesUpTo(form, limit + 1)) {
        ++tried;
        const std::int32_t serial = lastSerialCount(form, row, limit);
        for (const std::int32_t count : {serial, serial + 1}) {
            if (count < 1) continue;
            row.count = count;
            const std::int32_t estimate = form.estimate(row);
            // One form's estimate takes no notice of the length: not every length needs so many objects.
            if (workOf(form, row) > longestWork) continue;
            // All sizes that meet the limit or pass it by one, up to a few; of the others a sample.
            const bool edge = (estimate == limit && below++ < 10) || (estimate == limit + 1 && above++ < 10);
            if (!edge && tried > 9 && !random.chance(byArea ? 1 : 3)) continue;
            const bool reshaped = byArea && !form.extents.empty();
            Sizes sizes = reshaped ? shaped(form, row.of(form.extents[0]), random) : row;
            sizes.count = count;
            if (Verdict verdict = runThin(form, library, sizes, plain, random); !verdict.ok) return verdict;
        }
    }
    return Verdict::pass();
}

// Any positive number, small and large ones alike.
std::int32_t anySize(Random& random) {
    return static_cast<std::int32_t>((random.next() & 0x7fffffff) >> random.between(0, 30)) | 1;
}

Sizes anySizes(const Form& form, Random& random) {
    Sizes sizes;
    if (random.chance(40)) {
        for (const Extent extent : form.extents) sizes.set(extent, anySize(random));
        sizes.count = anySize(random);
        matchSizes(form, sizes);
        return sizes;
    }
    // Around the limit, and around where the product passes 2^31 and 2^32.
    sizes = smallObjects(form, random);
    const std::int64_t target = random.pick<std::int64_t>({1500, 2500, 5000, 1ll << 31, 1ll << 32, 3ll << 31});
    std::int64_t slope = 2;
    if (form.estimate != nullptr) {
        Sizes next = sizes;
        next.count = 2;
        slope = form.estimate(next) - form.estimate(sizes);
    }
    const std::int64_t count = target / std::max<std::int64_t>(slope, 1);
    sizes.count = static_cast<std::int32_t>(std::clamp<std::int64_t>(count + random.between(-3, 3), 1, 0x7fffffff));
    return sizes;
}

}  // namespace

Verdict checkThresholds(const Form& form, const Library& library, const Options& options, bool mayFault) {
    Random random = options.random(form, 0, 5);
    const bool scratch = form.uses(Operand::Use::scratch);
    const bool readsNothing = !form.uses(Operand::Use::input);
    for (const bool plain : {true, false}) {
        if (!plain && !form.hasRole(Role::elementStride)) continue;
        if (form.driver) {
            if (Verdict verdict = checkBothSides(form, library, plain, random); !verdict.ok) return verdict;
        }
        if (!mayFault) continue;
        for (int i = 0; i < options.share(150); ++i) {
            Sizes sizes = anySizes(form, random);
            // All of the scratch area must be inaccessible, or its far end could be anyone's memory.
            if (scratch)
                for (const Extent extent : form.extents) sizes.set(extent, std::min(sizes.of(extent), 80));
            // So must all of a first row that is written before anything is read.
            if (readsNothing) {
                const std::int32_t count = sizes.count;
                sizes = smallObjects(form, random);
                sizes.count = count;
            }
            if (Verdict verdict = runIntoFault(form, library, sizes, plain, random); !verdict.ok) return verdict;
        }
    }
    return Verdict::pass();
}

}  // namespace kormtest
