#include "sizes.h"

#include <algorithm>

namespace kormtest {
namespace {

// Orders around the unrolled 3 to 6, then around rounds of 4, 8 and 16.
std::int32_t randomEdge(Random& random) {
    if (random.chance(85)) return random.between(1, 9);
    return random.pick({10, 11, 12, 13, 15, 16, 17, 18, 31, 33});
}

}  // namespace

Sizes randomSizes(const Form& form, Random& random) {
    Sizes sizes;
    if (form.matrices()) {
        sizes.width = randomEdge(random);
        sizes.height = random.chance(50) ? sizes.width : randomEdge(random);
    } else if (random.chance(60)) {
        sizes.length = random.between(1, 9);
    } else {
        sizes.length = random.chance(90) ? random.between(7, 70) : random.between(70, 700);
    }
    if (form.array) sizes.count = random.chance(85) ? random.between(1, 9) : random.between(10, 40);
    // Large objects in large numbers show nothing that either doesn't show alone.
    if (elementsOf(form, sizes) > 4000) sizes.count = random.between(1, 3);
    return sizes;
}

std::int64_t elementsOf(const Form& form, const Sizes& sizes) {
    const std::int64_t objects = form.array ? sizes.count : 1;
    return objects * (form.matrices() ? static_cast<std::int64_t>(sizes.width) * sizes.height : sizes.length);
}

Sizes sizesBeyondLimit(const Form& form, std::int32_t count, Random& random) {
    const std::int32_t limit = std::max(form.limit.plain, form.limit.general);
    Sizes sizes;
    sizes.count = count;
    if (form.matrices()) {
        sizes.width = random.chance(40) ? random.between(3, 6) : random.between(1, 12);
        sizes.height = random.chance(40) ? sizes.width : random.between(1, 12);
    } else {
        sizes.length = random.between(1, 12);
    }
    // Either the objects grow or their number does, whichever the form's estimate heeds.
    const bool growCount = random.chance(30);
    for (int step = 0; form.estimate(sizes) <= limit; ++step) {
        const Sizes before = sizes;
        if (growCount) ++sizes.count;
        else if (!form.matrices()) ++sizes.length;
        else if (step % 2 == 0) ++sizes.width;
        else ++sizes.height;
        if (form.estimate(sizes) == form.estimate(before) && !growCount) {
            sizes = before;
            ++sizes.count;
        }
    }
    return sizes;
}

}  // namespace kormtest
