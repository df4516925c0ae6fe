// Eigenvalues and eigenvectors of symmetric matrices.
#include <cmath>
#include <cstring>
#include <limits>

#include "../reference/eigen/symmetric.h"
#include "../reference/linalg/square.h"
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

void shapeValues(Form& form) {
    form.operands[0].name = "src";
    form.operands[0].rows = form.operands[0].columns = Extent::order;
    addDense(form, "buffer", Extent::square, Use::scratch, false);
    addDense(form, "dstValues", Extent::order, Use::output, form.array);
}

void shapeVectors(Form& form) {
    shapeValues(form);
    Operand& vectors = addOperand(form, "dstVectors", Shape::matrix, Extent::order, Extent::order, Use::output);
    vectors.array = form.array;
    vectors.prefix = "dst";
}

const char* symmetricChecks(const Form& form) {
    if (form.array) return form.layout == Layout::standard ? "NSCT" : "NSCOT";
    return form.layout == Layout::pointer ? "NSO" : "NST";
}

// --- Values ---

enum class Kind : std::uint8_t {
    ordinary,
    definite,   // far from singular
    integers,   // singular now and then, with ties
    diagonal,   // with a zero, too
    identity,   // of any size
    twoBlocks,  // with nothing, or next to nothing, between them
    graded,     // from large to small or the other way round: both directions of the sweeps
    rankOne,
    nearLimit,  // a product of eigenvalues around the limits of the test
    huge,       // too large for absolute tests to end
    unsymmetric,
    wild,  // any bits
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
class SymmetricMatrices {
public:
    SymmetricMatrices(std::int32_t n, Random& random) : n_(n), random_(random) {}

    Square<T> one(bool mayFail) {
        return make(mayFail
                        ? random_.pick({Kind::ordinary, Kind::definite, Kind::integers, Kind::diagonal, Kind::identity,
                                        Kind::twoBlocks, Kind::graded, Kind::rankOne, Kind::nearLimit, Kind::nearLimit,
                                        Kind::huge, Kind::unsymmetric, Kind::wild, Kind::oneNan})
                        : random_.pick({Kind::ordinary, Kind::definite, Kind::definite, Kind::twoBlocks, Kind::integers,
                                        Kind::diagonal, Kind::unsymmetric}));
    }
    Square<T> definite() { return make(Kind::definite); }

private:
    Square<T> make(Kind kind) {
        Square<T> a(n_);
        const auto fill = [&](const auto& at) {
            for (std::int32_t i = 0; i < n_; ++i)
                for (std::int32_t j = 0; j <= i; ++j) a(i, j) = a(j, i) = at(i, j);
        };
        const auto ordinary = [&](std::int32_t, std::int32_t) { return element<T>(Mood::ordinary, false, random_); };
        fill(ordinary);
        switch (kind) {
            case Kind::ordinary: break;
            case Kind::definite:
            case Kind::oneNan:
                for (std::int32_t i = 0; i < n_; ++i)
                    a(i, i) += static_cast<T>(std::copysign(T(random_.between(4, 12)), a(i, i)));
                if (kind == Kind::oneNan) {
                    const std::int32_t i = index(), j = index();
                    a(i, j) = a(j, i) = std::numeric_limits<T>::quiet_NaN();
                }
                break;
            case Kind::integers:
                fill([&](std::int32_t, std::int32_t) { return static_cast<T>(random_.between(-2, 2)); });
                break;
            case Kind::diagonal:
                for (std::int32_t i = 0; i < n_; ++i)
                    for (std::int32_t j = 0; j < n_; ++j)
                        a(i, j) = i == j ? static_cast<T>(random_.between(-3, 9)) : T(0);
                break;
            case Kind::identity: {
                const T scale = std::ldexp(T(1), random_.between(-12, 3));
                fill([&](std::int32_t i, std::int32_t j) { return i == j ? scale : T(0); });
                break;
            }
            case Kind::twoBlocks: {
                const std::int32_t middle = index();
                const T between = random_.pick({T(0), -T(0), std::numeric_limits<T>::epsilon(),
                                                4 * std::numeric_limits<T>::epsilon(), std::numeric_limits<T>::min()});
                for (std::int32_t i = 0; i < n_; ++i)
                    for (std::int32_t j = 0; j < n_; ++j)
                        if ((i < middle) != (j < middle)) a(i, j) = between;
                break;
            }
            case Kind::graded: {
                const bool falls = random_.chance(50);
                for (std::int32_t i = 0; i < n_; ++i)
                    for (std::int32_t j = 0; j < n_; ++j)
                        a(i, j) = std::ldexp(a(i, j), falls ? -i - j : i + j - 2 * n_);
                break;
            }
            case Kind::rankOne: {
                std::vector<T> x;
                for (std::int32_t i = 0; i < n_; ++i) x.push_back(static_cast<T>(random_.between(-3, 3)));
                fill([&](std::int32_t i, std::int32_t j) {
                    return x[static_cast<std::size_t>(i)] * x[static_cast<std::size_t>(j)];
                });
                break;
            }
            case Kind::nearLimit: {
                const T limit = random_.pick({T(0x1p-23), std::numeric_limits<T>::epsilon()});
                const T last =
                    random_.pick({limit, std::nextafter(limit, T(0)), std::nextafter(limit, T(1)), 2 * limit, -limit});
                const std::int32_t place = index();
                fill([&](std::int32_t i, std::int32_t j) { return i != j ? T(0) : i == place ? last : T(1); });
                break;
            }
            case Kind::huge: {
                const std::int32_t power = random_.between(10, std::numeric_limits<T>::max_exponent - 1);
                fill([&](std::int32_t i, std::int32_t j) { return std::ldexp(ordinary(i, j), power); });
                break;
            }
            case Kind::unsymmetric:
                for (std::int32_t i = 0; i < n_; ++i)
                    for (std::int32_t j = 0; j < n_; ++j) a(i, j) = ordinary(i, j);
                break;
            case Kind::wild:
                for (std::int32_t i = 0; i < n_; ++i)
                    for (std::int32_t j = 0; j < n_; ++j) a(i, j) = element<T>(Mood::mixed, true, random_);
                break;
        }
        return a;
    }
    std::int32_t index() { return random_.between(0, n_ - 1); }

    std::int32_t n_;
    Random& random_;
};

template <class T>
void fillMatrices(const Form& form, const std::vector<OperandValues>& operands, const Sizes& sizes, bool special,
                  Random& random) {
    const View<T> src(form, operands, sizes, "src");
    SymmetricMatrices<T> matrices(sizes.order, random);
    // Arrays fail rarely enough that later objects are reached.
    const std::int32_t percent = random.chance(50) ? 0 : form.array ? random.pick({5, 20}) : 80;
    for (std::int32_t k = 0; k < (form.array ? sizes.count : 1); ++k)
        src.writeSquare(k, special ? matrices.one(random.chance(percent)) : matrices.definite());
}

void fillSymmetric(const Form& form, std::vector<OperandValues>& operands, const Sizes& sizes, bool special,
                   Random& values) {
    if (form.type == Type::f32) fillMatrices<float>(form, operands, sizes, special, values);
    else fillMatrices<double>(form, operands, sizes, special, values);
}

// Reduction and sweeps.
std::int64_t symmetricWork(const Sizes& s) { return std::int64_t{8} * s.order * s.order * s.order; }

constexpr Family symmetric(const char* signature, void (*shape)(Form&), Reference reference) {
    Family result{signature, shape, symmetricChecks, reference};
    result.fill = fillSymmetric;
    result.work = symmetricWork;
    result.mayFail = true;
    return result;
}

constexpr Family values = symmetric("src buffer dstValues order count", shapeValues, referenceEigenValuesSym);
constexpr Family vectors =
    symmetric("src buffer dstVectors dstValues order count", shapeVectors, referenceEigenValuesVectorsSym);

// --- Estimates and limits ---

std::int32_t valuesEstimate(const Sizes& s) { return wrapped(u(s.order) * (u(s.order) + 1) * u(s.count)); }
std::int32_t vectorsEstimate(const Sizes& s) { return wrapped(u(s.order) * (2 * u(s.order) + 1) * u(s.count)); }

constexpr LimitRow valuesLimits = everywhere(Compare::below, 1001);
constexpr LimitRow vectorsLimits = everywhere(Compare::below, 701);

constexpr GroupRow groups[] = {
    {"EigenValuesSym", "m", &values, nullptr, nullptr},
    {"EigenValuesSym", "ma", &values, valuesEstimate, &valuesLimits},
    {"EigenValuesVectorsSym", "m", &vectors, nullptr, nullptr},
    {"EigenValuesVectorsSym", "ma", &vectors, vectorsEstimate, &vectorsLimits},
};

}  // namespace

Table eigenForms() { return {groups, {}, {}}; }

}  // namespace kormtest
