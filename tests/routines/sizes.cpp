#include "sizes.h"

#include <algorithm>

#include "../support/family.h"

namespace kormtest {
namespace {

// Orders around the unrolled 3 to 6, then around rounds of 4, 8 and 16.
std::int32_t randomEdge(Random& random) {
    if (random.chance(85)) return random.between(1, 9);
    return random.pick({10, 11, 12, 13, 15, 16, 17, 18, 31, 33});
}

std::int64_t largestOperand(const Form& form, const Sizes& sizes) {
    std::int64_t largest = 0;
    for (const Operand& operand : form.operands) {
        const std::int64_t objects = operand.array ? sizes.count : 1;
        largest = std::max(largest, objects * sizes.of(operand.rows) * sizes.of(operand.columns));
    }
    return largest;
}

}  // namespace

Sizes randomSizes(const Form& form, Random& random) {
    Sizes sizes;
    if (form.has(Extent::order)) {
        sizes.order = randomEdge(random);
    } else if (form.has(Extent::inner)) {
        sizes.height = randomEdge(random);
        sizes.inner = random.chance(50) ? sizes.height : randomEdge(random);
        if (form.has(Extent::width)) sizes.width = random.chance(50) ? sizes.inner : randomEdge(random);
    } else if (form.has(Extent::width)) {
        sizes.width = randomEdge(random);
        sizes.height = random.chance(50) ? sizes.width : randomEdge(random);
    } else if (random.chance(60)) {
        sizes.length = random.between(1, 9);
    } else {
        sizes.length = random.chance(90) ? random.between(7, 70) : random.between(70, 700);
    }
    matchSizes(form, sizes);
    if (form.array) sizes.count = random.chance(85) ? random.between(1, 9) : random.between(10, 40);
    // Where each object is dear, the orders just above the sized ones must do.
    if (form.has(Extent::order) && form.family->work(sizes) > 200000) sizes.order = random.between(7, 10);
    // Large objects in large numbers show nothing that either doesn't show alone.
    if (workOf(form, sizes) > 4000) sizes.count = random.between(1, 3);
    return sizes;
}

std::int64_t workOf(const Form& form, const Sizes& sizes) {
    const std::int64_t objects = form.array ? sizes.count : 1;
    if (form.family->work != nullptr) return objects * form.family->work(sizes);
    const Operand& result = form.operands[form.result()];
    return objects * sizes.of(result.rows) * sizes.of(result.columns);
}

Sizes sizesBeyondLimit(const Form& form, std::int32_t count, Random& random) {
    const std::int32_t limit = std::max(form.limit.plain, form.limit.general);
    // Either the objects grow or their number does, whichever the form's estimate heeds and time and memory allow.
    bool growCount = random.chance(30);
    Sizes sizes;
    for (int tries = 0; tries < 30; ++tries) {
        sizes.count = count;
        const bool square = random.chance(40);
        const std::int32_t edge = random.between(3, 6);
        for (const Extent extent : form.extents)
            sizes.set(extent, square && extent != Extent::length ? edge : random.between(1, 12));
        for (std::size_t step = 0; form.estimate(sizes) <= limit; ++step) {
            Sizes larger = sizes, more = sizes;
            if (!form.extents.empty()) {
                const Extent extent = form.extents[step % form.extents.size()];
                larger.set(extent, larger.of(extent) + 1);
            }
            ++more.count;
            const bool heeded = form.estimate(larger) != form.estimate(sizes);
            const bool countHeeded = form.estimate(more) != form.estimate(sizes);
            const bool byCount = growCount || !heeded || workOf(form, larger) > longestWork;
            sizes = byCount && countHeeded ? more : larger;
        }
        matchSizes(form, sizes);
        if (workOf(form, sizes) <= 3 * longestWork && largestOperand(form, sizes) <= 64 * 1024) break;
        growCount = true;
    }
    return sizes;
}

bool estimatesByArea(const Form& form) { return !form.has(Extent::inner) && !form.family->tall; }

std::vector<Sizes> shapesUpTo(const Form& form, std::int32_t estimate) {
    std::vector<Sizes> shapes;
    if (form.extents.empty()) return {Sizes{}};
    if (estimatesByArea(form)) {
        // Estimates without sums depend on the number of elements, so one extent tells all.
        for (std::int32_t area = 1; area <= estimate; ++area) {
            shapes.emplace_back();
            shapes.back().set(form.extents[0], area);
        }
        return shapes;
    }
    Random random(11);
    for (std::int32_t i = 0; i < 8 * 8 * 8 + 1000; ++i) {
        Sizes sizes{i % 8 + 1, i / 8 % 8 + 1, 1, 1, i / 64 + 1, 1};
        if (i >= 8 * 8 * 8) {
            sizes.height = random.between(1, 60);
            sizes.inner = random.between(1, 60);
            sizes.width = random.between(1, random.chance(70) ? 12 : 60);
        }
        if (!form.has(Extent::width)) sizes.width = 1;
        matchSizes(form, sizes);
        shapes.push_back(sizes);
    }
    random.shuffle(shapes);
    return shapes;
}

std::int32_t lastSerialCount(const Form& form, Sizes sizes, std::int32_t limit) {
    std::int32_t low = 0, high = 20000;
    while (low < high) {
        sizes.count = (low + high + 1) / 2;
        if (form.estimate(sizes) <= limit) low = sizes.count;
        else high = sizes.count - 1;
    }
    return low;
}

bool estimateOccurs(const Form& form, std::int32_t estimate) {
    for (Sizes& sizes : shapesUpTo(form, estimate)) {
        sizes.count = lastSerialCount(form, sizes, estimate);
        if (sizes.count > 0 && form.estimate(sizes) == estimate && workOf(form, sizes) <= longestWork) return true;
    }
    return false;
}

}  // namespace kormtest
