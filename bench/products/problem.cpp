#include "problem.h"

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <limits>
#include <regex>

#include "results.h"

namespace bench::products {

Settings settings;
std::int32_t threadsAllowed = 1;

namespace {

// Kept from row to row, each operand at another place of a page: at the same one, a load seems to depend on a store.
template <class T>
T* memoryOf(int operand, std::size_t elements, bool fill) {
    static std::vector<T> memories[6];
    std::vector<T>& memory = memories[operand];
    const std::size_t spare = 4096 / sizeof(T);
    if (memory.size() < elements + 2 * spare) {
        memory.resize(elements + 2 * spare);
        std::uint64_t state = 0x9e3779b97f4a7c15u + static_cast<std::uint64_t>(operand);
        // Values between 1 and 2 with all bits of the fraction in use.
        for (T& one : memory) {
            state = state * 6364136223846793005u + 1442695040888963407u;
            one = T(1) + static_cast<T>(state >> 40) / static_cast<T>(1 << 24);
        }
    }
    T* const page = memory.data() + (4096 - reinterpret_cast<std::uintptr_t>(memory.data()) % 4096) / sizeof(T);
    T* const begin = page + static_cast<std::size_t>(operand) * 448 / sizeof(T);
    if (!fill) std::fill(begin, begin + elements, T(-1));
    return begin;
}

template <class T, class Pointer>
std::size_t placeStreams(int operand, std::size_t positions, std::size_t objects, bool fill,
                         std::vector<Pointer>& table) {
    // An odd number of cache lines apart: powers of two would make the streams evict one another.
    const std::size_t line = 64 / sizeof(T);
    const std::size_t pitch = ((objects + line - 1) / line | 1) * line;
    T* const memory = memoryOf<T>(operand, positions * pitch, fill);
    for (std::size_t e = 0; e < positions; ++e) table.push_back(memory + e * pitch);
    return positions * pitch;
}

// The largest difference in units of the rounding errors that any order of additions may leave. All values are
// positive, so a sum's error is below order times epsilon times the sum.
template <class T>
double differenceOf(const T* expected, const T* found, std::size_t elements, int order) {
    double worst = 0;
    for (std::size_t i = 0; i < elements; ++i) {
        const double sum = static_cast<double>(expected[i]);
        const double allowed = static_cast<double>(std::numeric_limits<T>::epsilon()) * (order + 1) * std::fabs(sum);
        worst = std::max(worst, std::fabs(sum - static_cast<double>(found[i])) / allowed);
    }
    return worst;
}

template <class T>
Problem<T> makeProblem(const Shape& shape, int order, const RowOptions& options) {
    const auto n = static_cast<std::size_t>(order);
    const std::size_t square = n * n, other = shape.isVector ? n : square;
    std::size_t moved = other;
    if (shape.firstIsArray) moved += square;
    if (shape.secondIsArray) moved += other;
    const std::size_t count = shape.isArray() ? std::max<std::size_t>(options.bytes / (moved * sizeof(T)), 4) : 1;
    const std::size_t firstObjects = shape.firstIsArray ? count : 1, secondObjects = shape.secondIsArray ? count : 1;
    Problem<T> problem;
    problem.order = order;
    problem.count = static_cast<int>(count);
    problem.first = memoryOf<T>(0, firstObjects * square, true);
    problem.second = memoryOf<T>(1, secondObjects * other, true);
    problem.result = memoryOf<T>(2, count * other, false);
    if (shape.firstIsArray) problem.firstStep = static_cast<std::ptrdiff_t>(square);
    if (shape.secondIsArray) problem.secondStep = static_cast<std::ptrdiff_t>(other);
    problem.resultStep = static_cast<std::ptrdiff_t>(other);
    problem.written = problem.result;
    problem.writtenElements = count * other;
    if (options.streams) {
        placeStreams<T>(3, square, firstObjects, true, problem.firstStreams);
        placeStreams<T>(4, other, secondObjects, true, problem.secondStreams);
        problem.writtenElements = placeStreams<T>(5, other, count, false, problem.resultStreams);
        problem.written = problem.resultStreams[0];
    }
    return problem;
}

}  // namespace

template <class T>
void measure(const std::string& name, const Shape& shape, int order, const RowOptions& options,
             const std::vector<Contender<T>>& contenders) {
    static const std::regex wanted(settings.filter);
    if (!std::regex_search(name, wanted)) return;
    const Problem<T> problem = makeProblem<T>(shape, order, options);
    Row row{name, order, problem.count, {}, ""};
    std::vector<T> expected;
    for (const Contender<T>& contender : contenders) {
        if (contender.isYardstick) continue;
        std::fill(problem.written, problem.written + problem.writtenElements, T(-1));
        contender.run(problem);
        if (expected.empty()) expected.assign(problem.written, problem.written + problem.writtenElements);
        if (differenceOf(expected.data(), problem.written, expected.size(), order) > 1) row.error = contender.name;
    }
    if (row.error.empty()) {
        Series<Problem<T>> series(contenders, problem, settings.quick ? 50e3 : 150e3);
        const bool isLong = options.bytes > inCache || order >= 96;
        series.take(settings.quick || isLong ? 7 : 21);
        // More samples where it is close or worse: all of them count, so this favours nobody.
        if (contenders.size() > 1 && series.ratio() < 1 && !settings.quick) series.take(isLong ? 7 : 21);
        for (std::size_t who = 0; who < contenders.size(); ++who)
            row.nanoseconds.push_back({contenders[who].name, series.nanoseconds(who)});
    }
    addResult(row);
}

template void measure<float>(const std::string&, const Shape&, int, const RowOptions&,
                             const std::vector<Contender<float>>&);
template void measure<double>(const std::string&, const Shape&, int, const RowOptions&,
                              const std::vector<Contender<double>>&);

}  // namespace bench::products
