#include <algorithm>

#include "../support/fault.h"
#include "../support/scene.h"
#include "../support/status.h"
#include "../support/thread_number.h"
#include "routines.h"
#include "sizes.h"

namespace kormtest {
namespace {

std::int32_t limitOf(const Form& form, bool plain) { return plain ? form.limit.plain : form.limit.general; }

bool hasElementStrides(const Form& form) {
    return std::any_of(form.arguments.begin(), form.arguments.end(),
                       [](const Argument& argument) { return argument.role == Role::elementStride; });
}

std::string text(const Sizes& sizes) {
    return "width " + std::to_string(sizes.width) + ", height " + std::to_string(sizes.height) + ", length " +
           std::to_string(sizes.length) + ", count " + std::to_string(sizes.count);
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
    if (result.status() != status::ok)
        return Verdict::fail("status " + std::to_string(result.status()) + ", " + scene.describe());
    return judge(form, sizes, plain);
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
            case Role::pointer: values.push_back(CallValue::pointer(nowhere)); break;
            case Role::value:
                values.push_back(form.type == Type::f64 ? CallValue::realBits(0) : CallValue::singleBits(0));
                break;
            case Role::offset: values.push_back(CallValue::integer(0)); break;
            case Role::objectStride:
            case Role::rowStride: values.push_back(CallValue::integer(size * random.between(1, 20))); break;
            case Role::elementStride: values.push_back(CallValue::integer(general-- == 0 ? 2 * size : size)); break;
            case Role::width: values.push_back(CallValue::integer(sizes.width)); break;
            case Role::height: values.push_back(CallValue::integer(sizes.height)); break;
            case Role::length: values.push_back(CallValue::integer(sizes.length)); break;
            case Role::count: values.push_back(CallValue::integer(sizes.count)); break;
        }
    }
    scriptThreadNumbers({1});
    CallResult result;
    const Fault fault = guarded([&] { result = callFunction(library.function(form), values); });
    if (!fault.happened)
        return Verdict::fail(form.name + ", " + text(sizes) + ": returned " + std::to_string(result.status()) +
                             " without touching its operands");
    return judge(form, sizes, plain);
}

// Sizes of about `area` elements an object.
Sizes shaped(const Form& form, std::int32_t area, Random& random) {
    Sizes sizes;
    if (!form.matrices()) {
        sizes.length = area;
        return sizes;
    }
    std::vector<std::int32_t> divisors;
    for (std::int32_t d = 1; d <= area; ++d)
        if (area % d == 0) divisors.push_back(d);
    sizes.width = divisors[static_cast<std::size_t>(random.between(0, static_cast<std::int32_t>(divisors.size()) - 1))];
    sizes.height = area / sizes.width;
    return sizes;
}

// The largest count whose estimate stays at or below the limit, 0 if there is none.
std::int32_t lastSerialCount(const Form& form, Sizes sizes, std::int32_t limit) {
    std::int32_t low = 0, high = 5000;
    while (low < high) {
        sizes.count = (low + high + 1) / 2;
        if (form.estimate(sizes) <= limit) low = sizes.count;
        else high = sizes.count - 1;
    }
    return low;
}

Verdict checkBothSides(const Form& form, const Library& library, bool plain, Random& random) {
    const std::int32_t limit = limitOf(form, plain);
    int exact = 0;
    for (std::int32_t area = 1; area <= limit + 1; ++area) {
        Sizes row;
        (form.matrices() ? row.width : row.length) = area;
        const std::int32_t serial = lastSerialCount(form, row, limit);
        for (const std::int32_t count : {serial, serial + 1}) {
            if (count < 1) continue;
            row.count = count;
            const std::int32_t estimate = form.estimate(row);
            // One form's estimate takes no notice of the length: not every length needs so many objects.
            if (elementsOf(form, row) > 100000) continue;
            // All sizes that meet the limit or pass it by one, up to a few; of the others a sample.
            const bool edge = (estimate == limit || estimate == limit + 1) && exact < 12;
            if (edge) ++exact;
            if (!edge && area > 9 && !random.chance(1)) continue;
            Sizes sizes = shaped(form, area, random);
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
        sizes = {anySize(random), anySize(random), anySize(random), anySize(random)};
        return sizes;
    }
    // Around the limit, and around where the product passes 2^31 and 2^32.
    sizes = shaped(form, random.between(1, 40), random);
    const std::int64_t target = random.pick<std::int64_t>({1500, 2500, 5000, 1ll << 31, 1ll << 32, 3ll << 31});
    const std::int64_t count =
        target / random.pick({2, 3}) / (form.matrices() ? sizes.width * sizes.height : sizes.length);
    sizes.count = static_cast<std::int32_t>(std::clamp<std::int64_t>(count + random.between(-3, 3), 1, 0x7fffffff));
    return sizes;
}

}  // namespace

Verdict checkThresholds(const Form& form, const Library& library, const Options& options, bool mayFault) {
    Random random = options.random(form, 0, 5);
    for (const bool plain : {true, false}) {
        if (!plain && !hasElementStrides(form)) continue;
        if (form.driver) {
            if (Verdict verdict = checkBothSides(form, library, plain, random); !verdict.ok) return verdict;
        }
        if (!mayFault) continue;
        for (int i = 0; i < options.casesOr(150); ++i) {
            const Sizes sizes = anySizes(form, random);
            if (Verdict verdict = runIntoFault(form, library, sizes, plain, random); !verdict.ok) return verdict;
        }
    }
    return Verdict::pass();
}

}  // namespace kormtest
