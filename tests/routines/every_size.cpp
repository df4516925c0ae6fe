#include <algorithm>
#include <vector>

#include "../support/family.h"
#include "../support/scene.h"
#include "../support/thread_number.h"
#include "routines.h"
#include "sizes.h"

namespace kormtest {
namespace {

// Every order with a path of its own, then both sides of rounds of 4, 8 and 16.
constexpr std::int32_t edges[] = {1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 13, 16, 17, 33};

// With both sides of rounds of eight behind a head that aligns them.
constexpr std::int32_t lengths[] = {1,  2,  3,  4,  5,  6,  7,  8,  9,  10, 11, 12, 13, 14, 15,
                                    16, 17, 18, 19, 20, 23, 24, 25, 31, 32, 33, 40, 63, 64, 67};

}  // namespace

bool hasEverySize(const Form& form) { return form.family->sum != nullptr; }
bool hasLargeSizes(const Form& form) { return hasEverySize(form) && form.has(Extent::inner); }

namespace {

// A vector has few elements to tell one order of additions from another. Squares have orders of their own, some of
// which differ from others in the sign of a zero only.
int repeatsOf(const Form& form, const Sizes& sizes) {
    // A reduction has one element, and the root of a norm hides half of the differences.
    if (form.has(Extent::length) || form.has(Extent::order)) return sizes.length < 8 && sizes.order < 8 ? 400 : 60;
    const bool vector = !form.has(Extent::width);
    const bool square = sizes.height == sizes.inner && (vector || sizes.width == sizes.inner);
    if (square && sizes.inner >= 3 && sizes.inner <= 6) return 60;
    return vector ? 15 : 1;
}

// Both sides of where a kernel may cut its work into blocks.
std::int32_t largeSize(Random& random) {
    const std::int32_t edge = random.pick({32, 48, 64, 80, 96, 128, 160, 192, 256, 320, 384, 512, 1024});
    return random.chance(30) ? random.between(20, 300) : edge + random.between(-2, 3);
}

// Objects of tables may go in vectors of four and more, whatever their sizes.
std::int32_t objectsBeyondOneVector(const Form& form, std::int32_t otherwise) {
    return form.layout == Layout::pointer ? 5 : otherwise;
}

Verdict checkSizes(const Form& form, const Library& library, const Options& options, Sizes sizes, bool plain,
                   int number) {
    Random random = options.random(form, number, 8);
    if (form.array && sizes.count == 1 && workOf(form, sizes) < 40000)
        sizes.count = random.between(1, workOf(form, sizes) > 300 ? objectsBeyondOneVector(form, 2) : 5);
    SceneOptions scene;
    scene.sizes = sizes;
    scene.plain = plain;
    scene.mayCollide = random.chance(30);
    Random values(random.next());
    const Scene made(threadArena(), form, scene, random, values);
    scriptThreadNumbers({1});
    Verdict verdict = made.run(library, 4u * static_cast<unsigned>(random.between(0, 3)), false);
    if (!verdict.ok) verdict.message += ", seed " + std::to_string(options.seed);
    return verdict;
}

}  // namespace

Verdict checkLargeSizes(const Form& form, const Library& library, const Options& options) {
    // A table has as many entries as its operand elements, and must fit into the arena as they must.
    const std::int32_t mostElements = form.layout == Layout::pointer ? 8000 : 30000;
    for (int number = 0; number < options.share(12); ++number) {
        Random random = options.random(form, number, 10);
        Sizes sizes;
        const auto fits = [&] {
            return sizes.height * sizes.inner <= mostElements && sizes.inner * sizes.width <= mostElements &&
                   sizes.height * sizes.width <= mostElements && workOf(form, sizes) <= 1500000;
        };
        do {
            for (const Extent extent : form.extents)
                sizes.set(extent, random.chance(25) ? random.between(1, 20) : largeSize(random));
        } while (!fits() || workOf(form, sizes) < mostElements / 4);
        if (form.array) sizes.count = workOf(form, sizes) < 100000 ? objectsBeyondOneVector(form, 2) : 1;
        const bool plain = number % 3 != 0 || !form.hasRole(Role::elementStride);
        Verdict verdict = checkSizes(form, library, options, sizes, plain, 1000000 + number);
        if (!verdict.ok) return verdict;
    }
    return Verdict::pass();
}

Verdict checkLongSums(const Form& form, const Library& library, const Options& options) {
    int number = 2000000;
    const auto check = [&](std::int32_t height, std::int32_t width, std::int32_t inner) {
        for (const bool plain : {true, false}) {
            if (!plain && !form.hasRole(Role::elementStride)) break;
            Sizes sizes;
            sizes.height = height;
            sizes.inner = inner;
            sizes.width = width;
            Verdict verdict = checkSizes(form, library, options, sizes, plain, number++);
            if (!verdict.ok) return verdict;
        }
        return Verdict::pass();
    };
    for (const std::int32_t height : {5, 6, 7}) {
        for (const std::int32_t width : {1, 5}) {
            if (!form.has(Extent::width) && width > 1) break;
            Verdict verdict = check(height, width, options.random(form, number, 12).between(800, 1000));
            if (!verdict.ok) return verdict;
        }
    }
    // Results so wide and high that both operands are packed, too: all numbers of rows modulo four, columns that end within a
    // panel, and sums that end within a block.
    if (!form.has(Extent::width) || form.layout == Layout::pointer) return Verdict::pass();
    for (const std::int32_t height : {16, 18, 21, 31}) {
        Random random = options.random(form, number, 13);
        const std::int32_t width = random.between(12, 29);
        Verdict verdict = check(height, width, height % 2 == 0 ? random.between(260, 600) : random.between(769, 1000));
        if (!verdict.ok) return verdict;
    }
    return Verdict::pass();
}

Verdict checkEverySize(const Form& form, const Library& library, const Options& options) {
    struct Case {
        Sizes sizes;
        bool plain;
    };
    std::vector<Case> cases;
    const auto add = [&](const Sizes& sizes) {
        for (int repeat = 0; repeat < repeatsOf(form, sizes); ++repeat) {
            cases.push_back({sizes, true});
            if (form.hasRole(Role::elementStride)) cases.push_back({sizes, false});
        }
    };
    for (const Extent extent : {Extent::length, Extent::order}) {
        if (!form.has(extent)) continue;
        for (const std::int32_t value : lengths) {
            Sizes sizes;
            sizes.set(extent, value);
            add(sizes);
        }
    }
    for (const std::int32_t height : edges) {
        for (const std::int32_t inner : edges) {
            for (const std::int32_t width : edges) {
                if (!form.has(Extent::inner) || (!form.has(Extent::width) && width > 1)) break;
                Sizes sizes;
                sizes.height = height;
                sizes.inner = inner;
                sizes.width = width;
                add(sizes);
            }
        }
    }
    // A mistake at some size is found sooner, and a part of the cases is a fair one.
    options.random(form, 0, 9).shuffle(cases);
    const int all = static_cast<int>(cases.size());
    for (int number = 0; number < std::min(options.share(all), all); ++number) {
        const Case& one = cases[static_cast<std::size_t>(number)];
        Verdict verdict = checkSizes(form, library, options, one.sizes, one.plain, number);
        if (!verdict.ok) return verdict;
    }
    return Verdict::pass();
}

}  // namespace kormtest
