// General eigenvalues, with and without vectors.
#include <cmath>
#include <limits>

#include "../reference/eigen/general.h"
#include "../reference/linalg/view.h"
#include "element_values.h"
#include "family.h"

namespace kormtest {
namespace {

using Use = Operand::Use;

void addDense(Form& form, const char* name, Extent columns, Use use, bool array) {
    Operand& operand = addOperand(form, name, Shape::vector, Extent::one, columns, use);
    operand.dense = true;
    operand.array = array;
}

void addMatrix(Form& form, const char* name) {
    addOperand(form, name, Shape::matrix, Extent::order, Extent::order, Use::output).array = form.array;
}

void addValues(Form& form, Extent scratch) {
    addDense(form, "buffer", scratch, Use::scratch, false);
    addDense(form, "dstValuesRe", Extent::order, Use::output, form.array);
    addDense(form, "dstValuesIm", Extent::order, Use::output, form.array);
}

void squareSource(Form& form) {
    form.operands[0].name = "src";
    form.operands[0].rows = form.operands[0].columns = Extent::order;
}

void shapeValues(Form& form) {
    squareSource(form);
    addValues(form, Extent::squareAndFiveRows);
}

void shapeOneSide(Form& form) {
    squareSource(form);
    addMatrix(form, "dst");
    addValues(form, Extent::threeSquaresAndFiveRows);
}

void shapeBothSides(Form& form) {
    squareSource(form);
    addMatrix(form, "dstRight");
    addMatrix(form, "dstLeft");
    addValues(form, Extent::threeSquaresAndFiveRows);
}

const char* checksOfValues(const Form& form) {
    if (!form.array) return form.layout == Layout::pointer ? "NSO" : "NST";
    return form.layout == Layout::standard ? "NSCT" : "NSCOT";
}

// Lists and tables: operand by operand, the offset, then the strides.
const char* checksOfVectors(const Form& form) {
    if (!form.array || form.layout == Layout::standard) return checksOfValues(form);
    return form.operationWord == "EigenValuesVectors" ? "NSCotpuqv" : "NSCotpu";
}

// --- Values ---

enum class Kind : std::uint8_t {
    ordinary,
    symmetric,
    integers,
    sparse,      // many zeros, so that blocks split off early
    triangular,  // either way
    turning,     // blocks with equal diagonal elements and signs that differ
    equalPair,   // the same with signs that don't
    chained,     // one eigenvalue, one vector
    graded,
    tiny,
    huge,
    zero,
    identity,
    cyclic,  // a permutation: shifts stand still until an exceptional one
    wild,    // any bits
    oneNan,
};

template <class T>
T element(Mood mood, bool mayBeNan, Random& random) {
    const std::uint64_t bits = randomElement(sizeof(T) == 4 ? Type::f32 : Type::f64, mood, mayBeNan, random);
    T value;
    std::memcpy(&value, &bits, sizeof value);
    return value;
}

template <class T>
Square<T> matrixOf(Kind kind, std::int32_t n, Random& random) {
    Square<T> a(n);
    const auto each = [&](const auto& value) {
        for (std::int32_t i = 0; i < n; ++i)
            for (std::int32_t j = 0; j < n; ++j) a(i, j) = value(i, j);
    };
    const auto number = [&](std::int32_t, std::int32_t) { return element<T>(Mood::ordinary, false, random); };
    const auto small = [&] { return static_cast<T>(random.between(-4, 4)); };
    each(number);
    switch (kind) {
        case Kind::ordinary: break;
        case Kind::symmetric: each([&](std::int32_t i, std::int32_t j) { return i > j ? a(j, i) : a(i, j); }); break;
        case Kind::integers: each([&](std::int32_t, std::int32_t) { return small(); }); break;
        case Kind::sparse:
            each([&](std::int32_t i, std::int32_t j) { return random.chance(70) ? T(0) : a(i, j); });
            break;
        case Kind::triangular: {
            const bool lower = random.chance(50);
            each([&](std::int32_t i, std::int32_t j) { return lower == (j > i) && i != j ? T(0) : a(i, j); });
            break;
        }
        case Kind::turning:
        case Kind::equalPair:
            each([&](std::int32_t i, std::int32_t j) {
                return i / 2 == j / 2 ? T(0) : random.chance(50) ? T(0) : small();
            });
            for (std::int32_t i = 0; i < n; i += 2) {
                a(i, i) = small();
                if (i + 1 == n) break;
                a(i + 1, i + 1) = a(i, i);
                a(i, i + 1) = static_cast<T>(random.between(1, 4));
                a(i + 1, i) = static_cast<T>(random.between(1, 4)) * (kind == Kind::turning ? T(-1) : T(1));
            }
            if (random.chance(60)) {
                each([&](std::int32_t i, std::int32_t j) { return j / 2 > i / 2 ? T(0) : a(i, j); });
            }
            break;
        case Kind::chained: {
            const T value = small();
            each([&](std::int32_t i, std::int32_t j) { return i == j ? value : j == i + 1 ? T(1) : T(0); });
            break;
        }
        case Kind::graded:
            each([&](std::int32_t i, std::int32_t j) { return std::ldexp(a(i, j), -6 * i - 3 * j); });
            break;
        case Kind::tiny: {
            const int exponent = -random.between(10, std::numeric_limits<T>::max_exponent);
            each([&](std::int32_t i, std::int32_t j) { return std::ldexp(a(i, j), exponent); });
            break;
        }
        case Kind::huge: {
            const int exponent = random.between(10, std::numeric_limits<T>::max_exponent - 5);
            each([&](std::int32_t i, std::int32_t j) { return std::ldexp(a(i, j), exponent); });
            break;
        }
        case Kind::zero: each([](std::int32_t, std::int32_t) { return T(0); }); break;
        case Kind::identity: each([](std::int32_t i, std::int32_t j) { return i == j ? T(1) : T(0); }); break;
        case Kind::cyclic: each([&](std::int32_t i, std::int32_t j) { return (i + 1) % n == j ? T(1) : T(0); }); break;
        case Kind::wild: each([&](std::int32_t, std::int32_t) { return element<T>(Mood::mixed, true, random); }); break;
        case Kind::oneNan:
            a(random.between(0, n - 1), random.between(0, n - 1)) = std::numeric_limits<T>::quiet_NaN();
            break;
    }
    return a;
}

template <class T>
void fill(const Form& form, std::vector<OperandValues>& operands, const Sizes& sizes, bool special, Random& random) {
    const View<T> src(form, operands, sizes, "src");
    for (std::int32_t k = 0; k < (form.array ? sizes.count : 1); ++k) {
        Kind kind = Kind::ordinary;
        // Most calls get to their last object: what comes to no end is rare.
        if (special && random.chance(75))
            kind =
                static_cast<Kind>(random.between(0, static_cast<int>(random.chance(20) ? Kind::oneNan : Kind::cyclic)));
        src.writeSquare(k, matrixOf<T>(kind, sizes.order, random));
    }
}

void fillSquare(const Form& form, std::vector<OperandValues>& operands, const Sizes& sizes, bool special,
                Random& random) {
    (form.type == Type::f32 ? fill<float> : fill<double>)(form, operands, sizes, special, random);
}

// --- Families ---

std::int64_t sweeps(const Sizes& s) { return std::int64_t{10} * s.order * s.order * s.order; }

// Reciprocal roots by the processor's estimate.
bool fixed(const Form& form, const Sizes& s, bool) {
    const bool estimates = form.operationWord == "EigenValuesVectors" && !form.array && form.type == Type::f32;
    return !estimates || s.order == 1;
}

constexpr Family family(const char* signature, void (*shape)(Form&), const char* (*checks)(const Form&),
                        Reference reference) {
    Family result{signature, shape, checks, reference};
    result.fill = fillSquare;
    result.work = sweeps;
    result.mayFail = true;
    result.oneKernel = true;
    result.fixedBits = fixed;
    return result;
}

constexpr Family eigenvalues =
    family("src dstValuesRe dstValuesIm order count buffer", shapeValues, checksOfValues, referenceEigenValues);
constexpr Family oneSide =
    family("src dst dstValuesRe dstValuesIm order count buffer", shapeOneSide, checksOfVectors, referenceEigenVectors);
constexpr Family bothSides = family("src dstRight dstLeft dstValuesRe dstValuesIm order count buffer", shapeBothSides,
                                    checksOfVectors, referenceEigenVectors);

std::int32_t valuesEstimate(const Sizes& s) { return wrapped(u(s.order) * (u(s.order) + 1) * u(s.count)); }
std::int32_t vectorsEstimate(const Sizes& s) { return wrapped(u(s.order) * (3 * u(s.order) + 1) * u(s.count)); }

constexpr LimitRow valuesLimits = everywhere(Compare::below, 251);
constexpr LimitRow vectorsLimits = everywhere(Compare::below, 501);

constexpr GroupRow groups[] = {
    {"EigenValues", "m", &eigenvalues, nullptr, nullptr},
    {"EigenValues", "ma", &eigenvalues, valuesEstimate, &valuesLimits},
    {"EigenValuesVectors", "m", &bothSides, nullptr, nullptr},
    {"EigenValuesVectors", "ma", &bothSides, vectorsEstimate, &vectorsLimits},
    {"EigenValuesVectorsLeft", "m ma", &oneSide, nullptr, nullptr},
    {"EigenValuesVectorsRight", "m ma", &oneSide, nullptr, nullptr},
};

}  // namespace

Table generalEigenForms() { return {groups, {}, {}}; }

}  // namespace kormtest
