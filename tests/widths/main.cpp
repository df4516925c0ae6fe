// Are vectors of 32 and 64 bytes right, and what do they bring? Runs the kernels that have objects in lanes with 4, 8 and
// 16 floats and with 2, 4 and 8 doubles, holds their results against those of one object at a time, bit by bit, and
// prints the time per object.
//
// What the processor lacks is skipped. A NaN may be any: which of two goes on is the order of operands, which the
// compiler chooses.

#include <algorithm>
#include <chrono>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <limits>
#include <memory>
#include <random>
#include <span>
#include <type_traits>
#include <vector>

#include "widths/kernels.h"

namespace korm {
namespace v8 {
widths::Kernels<float> ofFloats();
widths::Kernels<double> ofDoubles();
}  // namespace v8
namespace avx2 {
widths::Kernels<float> ofFloats();
widths::Kernels<double> ofDoubles();
}  // namespace avx2
namespace avx512 {
widths::Kernels<float> ofFloats();
widths::Kernels<double> ofDoubles();
}  // namespace avx512

namespace widths {
namespace {

// --- Widths ---------------------------------------------------------------------------------------

struct Width {
    int bytes;
    const char* needs;
    bool isThere;
    Kernels<float> floats;
    Kernels<double> doubles;

    template <class T>
    const Kernels<T>& of() const {
        if constexpr (std::is_same_v<T, float>) return floats;
        else return doubles;
    }
};

std::vector<Width> allWidths() {
    const bool hasAvx512 =
        __builtin_cpu_supports("avx512f") && __builtin_cpu_supports("avx512vl") && __builtin_cpu_supports("avx512dq");
    std::vector<Width> all;
    all.push_back({16, "SSSE3", true, v8::ofFloats(), v8::ofDoubles()});
    all.push_back({32, "AVX2", __builtin_cpu_supports("avx2") != 0, {}, {}});
    all.push_back({64, "AVX-512 F, VL and DQ", hasAvx512, {}, {}});
    // Not a line of a variant runs on a processor that lacks its instructions.
    if (all[1].isThere) all[1].floats = avx2::ofFloats(), all[1].doubles = avx2::ofDoubles();
    if (all[2].isThere) all[2].floats = avx512::ofFloats(), all[2].doubles = avx512::ofDoubles();
    return all;
}

// --- Operands -------------------------------------------------------------------------------------

using Random = std::mt19937;

template <class T>
T ordinaryValue(Random& random) {
    return static_cast<T>(static_cast<double>(random()) * 0x1p-31 - 1);
}

template <class T>
T oddValue(Random& random) {
    using Limits = std::numeric_limits<T>;
    const T values[] = {0,
                        1,
                        Limits::infinity(),
                        Limits::quiet_NaN(),
                        Limits::denorm_min(),
                        Limits::min() / 2,
                        Limits::min(),
                        Limits::min() * 2,
                        Limits::min() * 600,
                        Limits::epsilon(),
                        Limits::max()};
    const T value = values[random() % std::size(values)];
    return random() % 2 == 0 ? value : -value;
}

// How operands lie, and how many of their elements are odd.
struct Arrangement {
    std::ptrdiff_t gap;
    std::ptrdiff_t pastBoundary;  // of 64 bytes, in elements
    unsigned oddOnesIn;           // one of so many elements; 0: none
};

template <class T>
struct Memory {
    // Both are used up to the last element, so that one too many is a finding of the sanitizers.
    Memory(std::ptrdiff_t elements, std::ptrdiff_t pastBoundary)
        : bytes(static_cast<std::size_t>(elements + pastBoundary) * sizeof(T)),
          block(static_cast<T*>(std::aligned_alloc(64, (bytes + 63) / 64 * 64))),
          elementsOf{block.get() + pastBoundary, static_cast<std::size_t>(elements)} {}

    T* begin() const { return elementsOf.data(); }
    std::size_t bytes;
    std::unique_ptr<T, decltype([](T* p) { std::free(p); })> block;
    std::span<T> elementsOf;
};

// All that a kernel works on, for `count` objects.
template <class T>
class Scene {
public:
    Scene(const Kernel<T>& kernel, const Arrangement& how, std::ptrdiff_t count, unsigned seed)
        : objects(count),
          size(count * kernel.order * (kernel.order * kernel.element + how.gap)),
          left(size, how.pastBoundary),
          right(size, how.pastBoundary),
          results(size, how.pastBoundary),
          buffer(kernel.order * (kernel.order + 1), 0),
          pivots(static_cast<std::size_t>(count * kernel.order)),
          gap(how.gap) {
        Random random(seed);
        for (const Memory<T>* operand : {&left, &right})
            for (T& x : operand->elementsOf)
                x = how.oddOnesIn != 0 && random() % how.oddOnesIn == 0 ? oddValue<T>(random)
                                                                        : ordinaryValue<T>(random);
        const std::ptrdiff_t row = kernel.order * kernel.element + how.gap;
        if (kernel.needsDefinite)
            for (std::ptrdiff_t k = 0; k < count; ++k)
                for (std::ptrdiff_t i = 0; i < kernel.order; ++i)
                    left.begin()[(k * kernel.order + i) * row + i * kernel.element] += static_cast<T>(kernel.order);
        std::fill(results.elementsOf.begin(), results.elementsOf.end(), T{7});
        for (std::size_t at = 0; at < pivots.size(); at += static_cast<std::size_t>(kernel.order)) {
            const std::span<std::int32_t> own(&pivots[at], static_cast<std::size_t>(kernel.order));
            for (std::size_t k = 0; k < own.size(); ++k) own[k] = static_cast<std::int32_t>(k);
            std::shuffle(own.begin(), own.end(), random);
        }
    }

    // Runs a kernel on objects `first` to `first` + `count` - 1 and returns the status.
    std::int32_t run(const Kernel<T>& kernel, std::ptrdiff_t first, std::ptrdiff_t count) {
        return kernel.run(
            {left.begin(), right.begin(), pivots.data(), results.begin(), buffer.begin(), gap, first, count, objects});
    }

    // Runs it in steps of so many objects, as the kernel itself does on all of them: to the first that fails.
    std::int32_t runInSteps(const Kernel<T>& kernel, std::ptrdiff_t step, std::ptrdiff_t count) {
        for (std::ptrdiff_t k = 0; k < count; k += step)
            if (const std::int32_t status = run(kernel, k, std::min(step, count - k)); status != 0) return status;
        return 0;
    }

    bool hasResultsOf(const Scene& other) const {
        const auto same = [](T a, T b) {
            return std::memcmp(&a, &b, sizeof a) == 0 || (std::isnan(a) && std::isnan(b));
        };
        return pivots == other.pivots &&
               std::equal(results.elementsOf.begin(), results.elementsOf.end(), other.results.elementsOf.begin(), same);
    }

private:
    std::ptrdiff_t objects, size;
    Memory<T> left, right, results, buffer;
    std::vector<std::int32_t> pivots;
    std::ptrdiff_t gap;
};

// --- Bits -----------------------------------------------------------------------------------------

template <class T>
constexpr const char* typeName = std::is_same_v<T, float> ? "float" : "double";

// The kernel of 16 bytes has no lanes to fill with one object. Aligned packed matrices of four floats a row are
// inverted in pairs that fail together, Cholesky decompositions of floats of orders 3 to 6 fail in fours.
template <class T>
std::ptrdiff_t objectsInScalars(const Kernel<T>& kernel, const Arrangement& how) {
    const bool inPairs = std::is_same_v<T, float> && std::strcmp(kernel.name, "inverse") == 0 && kernel.order == 4 &&
                         kernel.element == 1 && how.gap == 0 && how.pastBoundary % 4 == 0;
    const bool inFours = std::is_same_v<T, float> && kernel.needsDefinite && kernel.element == 1 && kernel.order >= 3 &&
                         kernel.order <= 6 && how.oddOnesIn != 0;
    return inPairs ? 2 : inFours ? 4 : 1;
}

template <class T>
int differences(const Width& width, std::size_t which, const Kernel<T>& scalar) {
    const Kernel<T>& kernel = width.of<T>()[which];
    int found = 0;
    unsigned seed = 0;
    for (const std::ptrdiff_t gap : {0, 3})
        for (const std::ptrdiff_t pastBoundary : {0, 1})
            for (const unsigned oddOnesIn : {0U, 200U, 12U})
                for (int call = 0; call < (kernel.order > 6 ? 2 : 12); ++call) {
                    const Arrangement how{gap, pastBoundary, oddOnesIn};
                    const std::ptrdiff_t count = 16 + ++seed % 21;
                    Scene<T> expected(kernel, how, count, seed), seen(kernel, how, count, seed);
                    const std::int32_t status = expected.runInSteps(scalar, objectsInScalars(kernel, how), count);
                    if (seen.run(kernel, 0, count) == status && seen.hasResultsOf(expected)) continue;
                    std::printf(
                        "DIFFERS: %s of order %d, %s, %d bytes: elements %d apart, gap %td, start %td, %s odd\n",
                        kernel.name, kernel.order, typeName<T>, width.bytes, kernel.element, gap, pastBoundary,
                        oddOnesIn == 0    ? "none"
                        : oddOnesIn == 12 ? "many"
                                          : "some");
                    ++found;
                }
    return found;
}

// --- Time -----------------------------------------------------------------------------------------

// Nanoseconds per object, the least of several runs.
template <class Run>
double timeOf(const Run& run, std::ptrdiff_t count) {
    using Clock = std::chrono::steady_clock;
    double least = std::numeric_limits<double>::infinity();
    const auto end = Clock::now() + std::chrono::milliseconds(3);
    do {
        const auto start = Clock::now();
        run();
        least = std::min(least, std::chrono::duration<double, std::nano>(Clock::now() - start).count());
    } while (Clock::now() < end);
    return least / static_cast<double>(count);
}

template <class T>
void printTimes(const std::vector<Width>& widths, std::size_t which) {
    const Kernel<T>& scalar = widths[0].of<T>()[which];
    const std::ptrdiff_t count = scalar.order > 6 ? 16 : 96;
    Scene<T> scene(scalar, {0, 0, 0}, count, 1);
    std::printf("| %s | %d | %s | %.1f |", scalar.name, scalar.order, typeName<T>,
                timeOf([&] { scene.runInSteps(scalar, 1, count); }, count));
    for (const Width& width : widths) {
        if (width.isThere) std::printf(" %.1f |", timeOf([&] { scene.run(width.of<T>()[which], 0, count); }, count));
        else std::printf(" |");
    }
    std::printf("\n");
}

template <class T>
int compare(const std::vector<Width>& widths) {
    const Kernels<T>& scalars = widths[0].of<T>();
    int found = 0;
    for (std::size_t which = 0; which < scalars.size(); ++which) {
        for (const Width& width : widths)
            if (width.isThere) found += differences(width, which, scalars[which]);
        if (scalars[which].element == 1) printTimes<T>(widths, which);
    }
    return found;
}

int compareAll() {
    const std::vector<Width> widths = allWidths();
    for (const Width& width : widths)
        if (!width.isThere)
            std::printf("Skipped: vectors of %d bytes, since this processor lacks %s.\n", width.bytes, width.needs);
    std::printf(
        "Nanoseconds per object of packed arrays, one at a time and by bytes of a vector:\n\n"
        "| kernel | order | type | one | 16 | 32 | 64 |\n|---|---:|---|---:|---:|---:|---:|\n");
    const int found = compare<float>(widths) + compare<double>(widths);
    if (found == 0) std::printf("\nAll results have the bits of one object at a time.\n");
    else std::printf("\n%d results differ.\n", found);
    return found == 0 ? 0 : 1;
}

}  // namespace
}  // namespace widths
}  // namespace korm

int main() { return korm::widths::compareAll(); }
