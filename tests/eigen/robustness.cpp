// Every matrix that bits can make through the functions of eigenproblems: each call must come back, with a status that its
// header names, and must have written within its results alone.
//
//     korm_eigen_robustness [--type 32f|64f] [--matrices N] [--seed S] [--batch B]
//
// N matrices of each type go through the symmetric array forms one by one, a batch of them in one call where most are solved
// and in a quarter of the other batches; in every fourth batch through the forms for one matrix; one batch in 32 through the
// general functions as well. B does one batch again. A call that hangs or faults is told with its batch.
#include <korm.h>
#include <unistd.h>

#include <algorithm>
#include <bit>
#include <cmath>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <limits>
#include <map>
#include <memory>
#include <string>
#include <vector>

#include "support/random.h"
#include "support/status.h"

// One thread: an array then stops at its first failure.
extern "C" [[gnu::visibility("default")]] std::int32_t ownGetNumThreads();
std::int32_t ownGetNumThreads() { return 1; }

namespace kormtest {
namespace {

constexpr std::int32_t together = 8;  // matrices of a batch, all of one order
constexpr std::int32_t largestOrder = 26;
constexpr std::int32_t generalEvery = 32;  // batches: general functions take their time where nothing converges

// --- Matrices -----------------------------------------------------------------------------------

template <class T>
T ofBits(std::uint64_t bits) {
    T value;
    std::memcpy(&value, &bits, sizeof value);
    return value;
}

template <class T>
bool hasSameBits(const T& x, const T& y) {
    using Bits = std::conditional_t<sizeof(T) == 4, std::uint32_t, std::uint64_t>;
    return std::bit_cast<Bits>(x) == std::bit_cast<Bits>(y);
}

template <class T>
T special(Random& random) {
    using Limits = std::numeric_limits<T>;
    const T eps = Limits::epsilon(),
            magnitude =
                random.pick<T>({0, Limits::denorm_min(), Limits::min(), eps, 2 * eps, 4 * eps, std::sqrt(Limits::min()),
                                std::sqrt(Limits::max()), 1, Limits::max(), Limits::infinity(), Limits::quiet_NaN()});
    return random.chance(50) ? magnitude : -magnitude;
}

// From -1 to 1, times a power of 2 of up to `exponent` either way.
template <class T>
T scaled(int exponent, Random& random) {
    return std::ldexp(static_cast<T>(random.between(-(1 << 24), 1 << 24)) / (1 << 24),
                      random.between(-exponent, exponent));
}

// On either side of what counts as zero beside the diagonal.
template <class T>
T nearLimit(Random& random) {
    const T limit = 2 * std::numeric_limits<T>::epsilon(), towards = random.pick<T>({0, limit, 1});
    return random.pick<T>({-1, 0, 1}) * std::nextafter(limit, towards);
}

template <class T>
void fill(T* a, std::int32_t n, bool tame, Random& random) {
    const int kind = random.between(tame ? 2 : 0, 5),
              exponent = tame ? 4 : random.pick({2, 20, 60, sizeof(T) == 4 ? 140 : 1060});
    const auto element = [&]() -> T {
        switch (kind) {
            case 0: return ofBits<T>(random.next());
            case 1: return special<T>(random);
            case 2: return static_cast<T>(random.between(-2, 2));
            case 3: return nearLimit<T>(random);
            default: return scaled<T>(exponent, random);
        }
    };
    std::generate_n(a, n * n, element);
    if (tame || random.chance(30))  // keeps the eigenvalues apart
        for (std::int32_t i = 0; i < n; ++i) a[i * n + i] += static_cast<T>(random.pick({-1, 1}) * (2 * i + 3));
    if (!tame && random.chance(20)) a[random.between(0, n * n - 1)] = special<T>(random);
    if (tame || random.chance(70))
        for (std::int32_t i = 0; i < n; ++i)
            for (std::int32_t j = 0; j < i; ++j) a[i * n + j] = a[j * n + i];
}

// --- Calls --------------------------------------------------------------------------------------

// Packed results or scratch of a call, with canaries around them.
template <class T>
class Guarded {
public:
    void reset(std::int32_t size) {
        size_ = size;
        std::fill_n(memory_, size + 2 * guard, canary());
    }
    T* data() { return memory_ + guard; }
    std::int32_t size() const { return size_; }
    bool isWithin() const { return isUntouched(memory_, guard) && isUntouched(memory_ + guard + size_, guard); }
    static bool isUntouched(const T* from, std::int32_t count) {
        return std::all_of(from, from + count, [](const T& x) { return hasSameBits(x, canary()); });
    }

private:
    static constexpr std::int32_t guard = 8;
    static T canary() { return ofBits<T>(0x5a5ac3c35a5ac3c3); }
    T memory_[together * largestOrder * largestOrder + 2 * guard];
    std::int32_t size_;
};

template <class T>
struct Outputs {
    Guarded<T> values[2], vectors[2], buffer;

    // How many of each the function has.
    void reset(std::int32_t n, std::int32_t count, int sets, int sides, std::int32_t scratch) {
        for (int i = 0; i < 2; ++i) {
            values[i].reset(i < sets ? n * count : 0);
            vectors[i].reset(i < sides ? n * n * count : 0);
        }
        buffer.reset(scratch);
    }
    bool isWithin() const {
        const auto holds = [](const auto& block) { return block.isWithin(); };
        return std::all_of(values, values + 2, holds) && std::all_of(vectors, vectors + 2, holds) && holds(buffer);
    }
};

// `count` packed matrices of order n; 0: the form for one matrix.
template <class T>
struct Function {
    const char* name;
    bool isSymmetric;
    int sides;  // sets of vectors
    std::int32_t (*call)(const T* a, Outputs<T>& to, std::int32_t n, std::int32_t count);

    bool mayReturn(std::int32_t result) const {
        return result == status::ok || result == status::noConvergence ||
               result == (isSymmetric ? status::singular : status::nearSingularBlock);
    }
    void reset(Outputs<T>& to, std::int32_t n, std::int32_t count) const {
        to.reset(n, count, isSymmetric ? 1 : 2, sides, isSymmetric ? n * n : n * ((sides == 0 ? n : 3 * n) + 5));
    }
};

template <class F>
auto pick(F ofFloats, auto ofDoubles) {
    return [=](const auto* a, auto... arguments) {
        if constexpr (std::is_same_v<decltype(a), const float*>) return ofFloats(a, arguments...);
        else return ofDoubles(a, arguments...);
    };
}

// What the calls below have in common: strides of packed matrices.
struct Packed {
    std::int32_t object, row, element;
    template <class T>
    Packed(const T*, std::int32_t n)
        : object(n * n * static_cast<std::int32_t>(sizeof(T))),
          row(n * static_cast<std::int32_t>(sizeof(T))),
          element(static_cast<std::int32_t>(sizeof(T))) {}
};

template <class T>
std::int32_t symmetricValues(const T* a, Outputs<T>& to, std::int32_t n, std::int32_t count) {
    const Packed p(a, n);
    T *const buffer = to.buffer.data(), *const values = to.values[0].data();
    if (count == 0)
        return pick(kormEigenValuesSym_m_32f, kormEigenValuesSym_m_64f)(a, p.row, p.element, buffer, values, n);
    return pick(kormEigenValuesSym_ma_32f, kormEigenValuesSym_ma_64f)(a, p.object, p.row, p.element, buffer, values, n,
                                                                      count);
}

template <class T>
std::int32_t symmetricVectors(const T* a, Outputs<T>& to, std::int32_t n, std::int32_t count) {
    const Packed p(a, n);
    T *const buffer = to.buffer.data(), *const values = to.values[0].data(), *const vectors = to.vectors[0].data();
    if (count == 0)
        return pick(kormEigenValuesVectorsSym_m_32f, kormEigenValuesVectorsSym_m_64f)(
            a, p.row, p.element, buffer, vectors, p.row, p.element, values, n);
    return pick(kormEigenValuesVectorsSym_ma_32f, kormEigenValuesVectorsSym_ma_64f)(
        a, p.object, p.row, p.element, buffer, vectors, p.object, p.row, p.element, values, n, count);
}

template <class T>
std::int32_t generalValues(const T* a, Outputs<T>& to, std::int32_t n, std::int32_t count) {
    const Packed p(a, n);
    T *const re = to.values[0].data(), *const im = to.values[1].data(), *const buffer = to.buffer.data();
    if (count == 0) return pick(kormEigenValues_m_32f, kormEigenValues_m_64f)(a, p.row, p.element, re, im, n, buffer);
    return pick(kormEigenValues_ma_32f, kormEigenValues_ma_64f)(a, p.object, p.row, p.element, re, im, n, count,
                                                                buffer);
}

template <class T, bool isLeft>
std::int32_t oneSide(const T* a, Outputs<T>& to, std::int32_t n, std::int32_t count) {
    const Packed p(a, n);
    T *const re = to.values[0].data(), *const im = to.values[1].data(), *const buffer = to.buffer.data();
    T* const vectors = to.vectors[0].data();
    if (count == 0) {
        const auto f = isLeft ? pick(kormEigenValuesVectorsLeft_m_32f, kormEigenValuesVectorsLeft_m_64f)
                              : pick(kormEigenValuesVectorsRight_m_32f, kormEigenValuesVectorsRight_m_64f);
        return f(a, p.row, p.element, vectors, p.row, p.element, re, im, n, buffer);
    }
    const auto f = isLeft ? pick(kormEigenValuesVectorsLeft_ma_32f, kormEigenValuesVectorsLeft_ma_64f)
                          : pick(kormEigenValuesVectorsRight_ma_32f, kormEigenValuesVectorsRight_ma_64f);
    return f(a, p.object, p.row, p.element, vectors, p.object, p.row, p.element, re, im, n, count, buffer);
}

template <class T>
std::int32_t bothSides(const T* a, Outputs<T>& to, std::int32_t n, std::int32_t count) {
    const Packed p(a, n);
    T *const re = to.values[0].data(), *const im = to.values[1].data(), *const buffer = to.buffer.data();
    T *const right = to.vectors[0].data(), *const left = to.vectors[1].data();
    if (count == 0)
        return pick(kormEigenValuesVectors_m_32f, kormEigenValuesVectors_m_64f)(
            a, p.row, p.element, right, p.row, p.element, left, p.row, p.element, re, im, n, buffer);
    return pick(kormEigenValuesVectors_ma_32f, kormEigenValuesVectors_ma_64f)(
        a, p.object, p.row, p.element, right, p.object, p.row, p.element, left, p.object, p.row, p.element, re, im, n,
        count, buffer);
}

// --- Batches ------------------------------------------------------------------------------------

long long currentBatch = 0;

// Told by the least that a handler may call.
[[noreturn]] void tellSignal(int signal) {
    char text[80] = "batch ";
    char* end = text + 6;
    char digits[20];
    int count = 0;
    for (long long rest = currentBatch; count == 0 || rest != 0; rest /= 10)
        digits[count++] = static_cast<char>('0' + rest % 10);
    while (count > 0) *end++ = digits[--count];
    const char* const what = signal == SIGALRM ? ": a call doesn't end\n" : ": a call faults\n";
    std::memcpy(end, what, std::strlen(what));
    if (write(STDERR_FILENO, text, static_cast<std::size_t>(end - text) + std::strlen(what)) < 0) _exit(3);
    _exit(2);
}

template <class T>
bool isSame(const T* a, const T* b, std::int32_t count) {
    return std::equal(a, a + count, b,
                      [](const T& x, const T& y) { return hasSameBits(x, y) || (std::isnan(x) && std::isnan(y)); });
}

template <class T>
class Batches {
public:
    Batches(std::uint64_t seed, const char* type) : seed_(seed), type_(type) {}

    // False: something is wrong, and told.
    bool run(long long batch) {
        currentBatch = batch;
        Random random(mixSeed(seed_, static_cast<std::uint64_t>(batch)));
        const std::int32_t n = random.between(0, 999) < 3 ? random.between(7, largestOrder)
                                                          : random.pick({1, 2, 3, 3, 3, 3, 4, 4, 4, 5, 5, 6});
        const bool tame = random.chance(50);
        for (std::int32_t k = 0; k < together; ++k) fill(matrices_ + k * n * n, n, tame && !random.chance(1), random);
        asArray_ = tame || batch % 4 == 0;
        asSingles_ = batch % 4 == 1 || batch % generalEvery == 0;
        for (std::size_t f = 0; f < std::size(functions); ++f) {
            if (!functions[f].isSymmetric && batch % generalEvery != 0) continue;
            if (const char* const wrong = judge(functions[f], n, statuses_[f])) {
                std::fprintf(stderr, "batch %lld, order %d, %s_%s: %s\n", batch, static_cast<int>(n), functions[f].name,
                             type_, wrong);
                return false;
            }
        }
        return true;
    }
    void report() const {
        for (std::size_t f = 0; f < std::size(functions); ++f) {
            std::printf("%-24s%s", functions[f].name, type_);
            for (const auto& [status, count] : statuses_[f]) std::printf("  %d: %lld", static_cast<int>(status), count);
            std::printf("\n");
        }
    }

private:
    using Statuses = std::map<std::int32_t, long long>;

    const char* judge(const Function<T>& function, std::int32_t n, Statuses& statuses) {
        std::int32_t results[together];
        std::int32_t first = status::ok, failed = together;
        for (std::int32_t k = 0; k < together; ++k) {
            const T* const a = matrices_ + k * n * n;
            if (asSingles_) {
                function.reset(single_, n, 1);
                if (!function.mayReturn(function.call(a, single_, n, 0)))
                    return "a form for one matrix returns another status";
                if (!single_.isWithin()) return "a form for one matrix writes beyond its results";
            }
            function.reset(alone_[k], n, 1);
            results[k] = function.call(a, alone_[k], n, 1);
            ++statuses[results[k]];
            if (!function.mayReturn(results[k])) return "an array of one returns another status";
            if (!alone_[k].isWithin()) return "an array of one writes beyond its results";
            if (results[k] != status::ok && failed == together) {
                first = results[k];
                failed = k;
            }
        }
        if (!asArray_) return nullptr;
        function.reset(array_, n, together);
        const std::int32_t result = function.call(matrices_, array_, n, together);
        if (!function.mayReturn(result)) return "an array returns another status";
        if (!array_.isWithin()) return "an array writes beyond its results";
        if (!function.isSymmetric) return nullptr;  // a block may use the rotation of the object before
        if (result != first) return "an array returns another status than its first failing object";
        for (std::int32_t k = 0; k < together; ++k) {
            const auto differs = [&](Guarded<T>& all, Guarded<T>& one) {
                const T* const object = all.data() + k * one.size();
                return k <= failed ? !isSame<T>(object, one.data(), one.size())
                                   : !Guarded<T>::isUntouched(object, one.size());
            };
            for (int i = 0; i < 2; ++i)
                if (differs(array_.values[i], alone_[k].values[i]) || differs(array_.vectors[i], alone_[k].vectors[i]))
                    return k <= failed ? "an array has other results than its objects alone"
                                       : "an array goes on after a failing object";
        }
        return nullptr;
    }

    static constexpr Function<T> functions[] = {{"EigenValuesSym", true, 0, symmetricValues<T>},
                                                {"EigenValuesVectorsSym", true, 1, symmetricVectors<T>},
                                                {"EigenValues", false, 0, generalValues<T>},
                                                {"EigenValuesVectorsLeft", false, 1, oneSide<T, true>},
                                                {"EigenValuesVectorsRight", false, 1, oneSide<T, false>},
                                                {"EigenValuesVectors", false, 2, bothSides<T>}};
    std::uint64_t seed_;
    const char* type_;
    bool asArray_ = false, asSingles_ = false;  // is this batch called in these ways, too?
    T matrices_[together * largestOrder * largestOrder];
    Outputs<T> single_, alone_[together], array_;
    Statuses statuses_[std::size(functions)];
};

template <class T>
bool run(const char* type, std::uint64_t seed, long long first, long long end) {
    const auto batches = std::make_unique<Batches<T>>(seed, type);
    for (long long batch = first; batch < end; ++batch) {
        if (batch % 1024 == 0) alarm(120);
        if (!batches->run(batch)) return false;
    }
    batches->report();
    return true;
}

}  // namespace
}  // namespace kormtest

int main(int argc, char** argv) {
    long long matrices = 20000, batch = -1;
    std::uint64_t seed = 20261122;
    std::string type;
    for (int i = 1; i + 1 < argc; i += 2) {
        const std::string option = argv[i];
        if (option == "--matrices") matrices = std::atoll(argv[i + 1]);
        else if (option == "--seed") seed = std::strtoull(argv[i + 1], nullptr, 10);
        else if (option == "--batch") batch = std::atoll(argv[i + 1]);
        else if (option == "--type") type = argv[i + 1];
        else return 2;
    }
    for (const int signal : {SIGSEGV, SIGBUS, SIGFPE, SIGILL, SIGALRM}) std::signal(signal, kormtest::tellSignal);
    const long long first = std::max(batch, 0LL),
                    end = batch < 0 ? (matrices + kormtest::together - 1) / kormtest::together : batch + 1;
    const bool isSound = (type == "64f" || kormtest::run<float>("32f", seed, first, end)) &&
                         (type == "32f" || kormtest::run<double>("64f", seed, first, end));
    return isSound ? 0 : 1;
}
