#include "linalg.h"

#include <algorithm>

#include "../../support/status.h"
#include "determinant.h"
#include "inverse.h"
#include "lu.h"
#include "precise.h"
#include "solve.h"
#include "view.h"

namespace kormtest {
namespace {

// The bounds take products of n elements to stay clear of both ends of the range.
template <class T>
bool tame(const Square<T>& a) {
    for (std::int32_t i = 0; i < a.order(); ++i) {
        for (std::int32_t j = 0; j < a.order(); ++j) {
            const T size = std::fabs(a(i, j));
            if (size == 0) continue;
            const int exponent = std::isfinite(size) && size > 0 ? std::ilogb(size) : 10000;
            const int room = (std::numeric_limits<T>::max_exponent - 40) / (2 * a.order());
            if (exponent < -room || exponent > room) return false;
        }
    }
    return true;
}

template <class T>
bool anyNan(const Square<T>& a) {
    return std::any_of(a.data(), a.data() + a.size(), [](T value) { return value != value; });
}

// --- Determinant ---

template <class T>
std::int32_t determinants(const Form& form, const std::vector<OperandValues>& operands, const Sizes& sizes,
                          std::int32_t first, std::int32_t runCount) {
    const View<T> src(form, operands, sizes, "src"), dst(form, operands, sizes, "dst");
    const std::int32_t n = sizes.order;
    EliminationRules rules;
    rules.array = form.array;
    const bool extended = extendedFormatWorks();
    rules.singleSearch = form.name == "kormDet_m_64f" && plainStrides(form, operands);
    for (std::int32_t k = first; k < first + runCount; ++k) {
        const Square<T> a = src.square(k);
        const DetPath path = detPath(form, operands, sizes, k, first, runCount);
        if (path == DetPath::elimination) {
            dst.write(k, 0, 0, eliminatedDeterminant(a, rules));
        } else if (path == DetPath::closed && n == 3) {
            dst.write(k, 0, 0, closedDeterminant3(a));
        } else if (!extended || (n > 3 && !tame(a))) {
            dst.writeOpen(k, 0, 0, 0, std::numeric_limits<long double>::infinity());
        } else if (n == 3) {
            dst.write(k, 0, 0, extendedDeterminant3(a));
        } else if (path == DetPath::closed) {
            dst.writeOpen(k, 0, 0, static_cast<long double>(preciseDeterminant(a)), determinantBound(a));
        } else {
            const Interval<T> interval = n == 4 ? extendedDeterminant4(a) : extendedDeterminant56(a);
            dst.writeOpen(k, 0, 0, static_cast<long double>(interval.middle), interval.radius);
        }
    }
    return status::ok;
}

// --- LU decomposition ---

template <class T>
std::int32_t decompositions(const Form& form, const std::vector<OperandValues>& operands, const Sizes& sizes,
                            std::int32_t first, std::int32_t runCount) {
    const View<T> src(form, operands, sizes, "src"), dst(form, operands, sizes, "dst");
    const View<std::int32_t> pivots(form, operands, sizes, "pivots");
    for (std::int32_t k = first; k < first + runCount; ++k) {
        const Factored<T> factored = referenceFactor(src.square(k), form.layout == Layout::pointer);
        for (std::int32_t i = 0; i < sizes.order; ++i) {
            if (!factored.rowsWritten[static_cast<std::size_t>(i)]) continue;
            for (std::int32_t j = 0; j < sizes.order; ++j) dst.write(k, i, j, factored.matrix(i, j));
        }
        pivots.writeVector(k, factored.pivots);
        if (factored.status != status::ok) return factored.status;
    }
    return status::ok;
}

// --- Solve ---

template <class T>
std::int32_t solutions(const Form& form, const std::vector<OperandValues>& operands, const Sizes& sizes,
                       std::int32_t first, std::int32_t runCount) {
    const View<T> src1(form, operands, sizes, "src1"), src2(form, operands, sizes, "src2");
    const View<T> dst(form, operands, sizes, "dst");
    const View<std::int32_t> pivots(form, operands, sizes, "pivots");
    SolveRules rules;
    rules.oneMatrix = form.tokens == "mva";
    rules.longSums = form.layout != Layout::pointer && plainStrides(form, operands);
    for (std::int32_t k = first; k < first + runCount; ++k) {
        rules.work = reinterpret_cast<std::uintptr_t>(dst.address(k, 0, 0));
        dst.writeVector(k, referenceSolve(src1.square(k), pivots.vector(k), src2.vector(k), rules));
    }
    return status::ok;
}

// --- Inverse ---

template <class T>
std::int32_t adjugate(const Form& form, const View<T>& dst, const Square<T>& a, std::int32_t k, bool plain) {
    const std::int32_t n = a.order();
    const auto everywhere = [&](long double middle, long double radius) {
        for (std::int32_t i = 0; i < n; ++i)
            for (std::int32_t j = 0; j < n; ++j) dst.writeOpen(k, i, j, middle, radius);
    };
    if (anyNan(a)) {
        everywhere(std::numeric_limits<long double>::quiet_NaN(), 0);
        return status::ok;
    }
    const BoundedInverse<T> inverse = boundedInverse(a, invertApproximates(form, plain, n));
    if (absolute(inverse.det) < invertThreshold(form, plain, n)) return status::singular;
    // Data for these paths are chosen so that this decides; how far a block elimination may be off is told apart.
    const bool bounded = extendedFormatWorks() && tame(a) && inverse.detBound < absolute(inverse.det) / 64 &&
                         invertPath(form, plain, n) == InvertPath::adjugate;
    if (!bounded) {
        everywhere(0, std::numeric_limits<long double>::infinity());
        return status::ok;
    }
    for (std::int32_t i = 0; i < n; ++i)
        for (std::int32_t j = 0; j < n; ++j) dst.writeOpen(k, i, j, inverse.matrix(i, j), inverse.bound(i, j));
    return status::ok;
}

// A failed block elimination may leave anything in its first rows.
template <class T>
void blockResidue(const View<T>& dst, std::int32_t k, std::int32_t n) {
    for (std::int32_t i = 0; i < n - 4; ++i)
        for (std::int32_t j = 0; j < n; ++j) dst.writeOpen(k, i, j, 0, std::numeric_limits<long double>::infinity());
}

// Matrices of order 4 go in pairs, both of which are tested before either is stored.
bool invertsInPairs(const Form& form, const std::vector<OperandValues>& operands, const Sizes& sizes) {
    if (form.name != "kormInvert_ma_32f" || sizes.order != 4 || !plainStrides(form, operands)) return false;
    const OperandValues& src = operands[operandNamed(form, "src")];
    const OperandValues& dst = operands[operandNamed(form, "dst")];
    for (const OperandValues* one : {&src, &dst}) {
        if (reinterpret_cast<std::uintptr_t>(one->base) % 16 != 0 || one->objectStride % 16 != 0) return false;
        if (one->rowStride != 16) return false;
    }
    return true;
}

template <class T>
std::int32_t inverses(const Form& form, const std::vector<OperandValues>& operands, const Sizes& sizes,
                      std::int32_t first, std::int32_t runCount) {
    const View<T> src(form, operands, sizes, "src"), dst(form, operands, sizes, "dst");
    const bool plain = plainStrides(form, operands);
    const std::int32_t n = sizes.order;
    const InvertPath path = invertPath(form, plain, n);
    const bool pairs = invertsInPairs(form, operands, sizes);
    for (std::int32_t k = first; k < first + runCount; ++k) {
        const Square<T> a = src.square(k);
        std::int32_t status = status::ok;
        if (path == InvertPath::one || path == InvertPath::general) {
            const Inverted<T> inverted = path == InvertPath::one ? invertOne(a) : invertGeneral(a);
            status = inverted.status;
            if (status == status::ok) dst.writeSquare(k, inverted.matrix);
        } else {
            const bool opensPair = pairs && (k - first) % 2 == 0 && k + 1 < first + runCount;
            if (opensPair) {
                const BoundedInverse<T> next = boundedInverse(src.square(k + 1), true);
                if (absolute(next.det) < invertThreshold(form, plain, n)) return status::singular;
            }
            status = adjugate(form, dst, a, k, plain);
            if (status != status::ok && path == InvertPath::block) blockResidue(dst, k, n);
        }
        if (status != status::ok) return status;
    }
    return status::ok;
}

using Whole = std::int32_t(const Form&, const std::vector<OperandValues>&, const Sizes&, std::int32_t, std::int32_t);

std::int32_t byType(const Form& form, const std::vector<OperandValues>& operands, const Sizes& sizes,
                    std::int32_t first, std::int32_t runCount, Whole* single, Whole* real) {
    return (form.type == Type::f32 ? single : real)(form, operands, sizes, first, runCount);
}

}  // namespace

std::vector<OpenElement>& openElements() {
    thread_local std::vector<OpenElement> elements;
    return elements;
}

DetPath detPath(const Form& form, const std::vector<OperandValues>& operands, const Sizes& sizes, std::int32_t object,
                std::int32_t first, std::int32_t runCount) {
    const std::int32_t n = sizes.order;
    if (n < 3 || n > 6) return DetPath::elimination;
    if (form.layout == Layout::pointer || !plainStrides(form, operands)) return DetPath::closed;
    if (form.name != "kormDet_ma_32f" || n > 4) return DetPath::extended;
    if (n == 3) return DetPath::closed;
    // Pairs where everything is aligned; the last of an odd number is alone.
    const OperandValues& src = operands[operandNamed(form, "src")];
    const bool aligned =
        reinterpret_cast<std::uintptr_t>(src.base) % 16 == 0 && src.objectStride % 16 == 0 && src.rowStride % 16 == 0;
    const bool paired = object - first < runCount / 2 * 2;
    return aligned && paired ? DetPath::closed : DetPath::extended;
}

InvertPath invertPath(const Form& form, bool plain, std::int32_t order) {
    if (order == 1) return InvertPath::one;
    if (order < 3 || order > 6) return InvertPath::general;
    const bool block = form.type == Type::f32 && form.layout != Layout::pointer && plain && order >= 5;
    return block ? InvertPath::block : InvertPath::adjugate;
}

bool invertApproximates(const Form& form, bool plain, std::int32_t order) {
    if (form.type != Type::f32 || form.layout == Layout::pointer || !plain) return false;
    // The standard array form alone divides at order 3.
    if (order == 3) return form.name != "kormInvert_ma_32f";
    return order >= 4 && order <= 6;
}

long double invertThreshold(const Form& form, bool plain, std::int32_t order) {
    const bool single = form.type == Type::f32;
    const long double scale = single ? singularScale<float>(order) : singularScale<double>(order);
    const bool doubled = !single && form.layout != Layout::pointer && plain && order <= 4;
    return doubled ? 2 * scale : scale;
}

std::int32_t referenceDet(const Form& form, const std::vector<OperandValues>& operands, const Sizes& sizes,
                          std::int32_t first, std::int32_t runCount) {
    return byType(form, operands, sizes, first, runCount, determinants<float>, determinants<double>);
}

std::int32_t referenceLUDecomp(const Form& form, const std::vector<OperandValues>& operands, const Sizes& sizes,
                               std::int32_t first, std::int32_t runCount) {
    return byType(form, operands, sizes, first, runCount, decompositions<float>, decompositions<double>);
}

std::int32_t referenceLUBackSubst(const Form& form, const std::vector<OperandValues>& operands, const Sizes& sizes,
                                  std::int32_t first, std::int32_t runCount) {
    return byType(form, operands, sizes, first, runCount, solutions<float>, solutions<double>);
}

std::int32_t referenceInvert(const Form& form, const std::vector<OperandValues>& operands, const Sizes& sizes,
                             std::int32_t first, std::int32_t runCount) {
    return byType(form, operands, sizes, first, runCount, inverses<float>, inverses<double>);
}

}  // namespace kormtest
