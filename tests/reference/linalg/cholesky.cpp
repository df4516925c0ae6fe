#include "cholesky.h"

#include <algorithm>

#include "view.h"

namespace kormtest {
namespace {

template <class T>
Square<T> lowerTriangle(const View<T>& view, std::int32_t k, std::int32_t n) {
    Square<T> result(n);
    for (std::int32_t i = 0; i < n; ++i)
        for (std::int32_t j = 0; j <= i; ++j) result(i, j) = view.read(k, i, j);
    return result;
}

// The finished rows, and of the next what is left of the diagonal.
template <class T>
void writeRows(const View<T>& view, std::int32_t k, const Square<T>& factor, std::int32_t finished) {
    for (std::int32_t i = 0; i < factor.order() && i <= finished; ++i)
        for (std::int32_t j = 0; j < (i < finished ? i + 1 : i); ++j) view.write(k, i, j, factor(i, j));
}

template <class T>
std::int32_t factors(const Form& form, const std::vector<OperandValues>& operands, const Sizes& sizes,
                     std::int32_t first, std::int32_t runCount) {
    const View<T> src(form, operands, sizes, "src"), dst(form, operands, sizes, "dst");
    const std::int32_t n = sizes.order;
    const bool plain = plainStrides(form, operands);
    CholeskyRules rules;
    rules.threshold = choleskyThreshold(form, plain, n);
    rules.refinesInFours = choleskyGoesInFours(form, plain, n);
    for (std::int32_t k = first; k < first + runCount;) {
        const std::int32_t left = first + runCount - k;
        const std::int32_t together = rules.refinesInFours && left >= 4 ? 4 : 1;
        std::vector<Square<T>> group;
        std::int32_t finished = n;
        for (std::int32_t l = 0; l < together; ++l) {
            group.push_back(lowerTriangle(src, k + l, n));
            Square<T> trial = group.back();
            finished = std::min(finished, choleskyRows(trial, rules, n));
        }
        for (std::int32_t l = 0; l < together; ++l) {
            Square<T>& factor = group[static_cast<std::size_t>(l)];
            // One row more, so that what is left of the failing pivot is there too.
            choleskyRows(factor, rules, std::min(finished + 1, n));
            writeRows(dst, k + l, factor, finished);
        }
        if (finished < n) return status::notPositiveDefinite;
        k += together;
    }
    return status::ok;
}

template <class T>
std::int32_t solutions(const Form& form, const std::vector<OperandValues>& operands, const Sizes& sizes,
                       std::int32_t first, std::int32_t runCount) {
    const View<T> src1(form, operands, sizes, "src1"), src2(form, operands, sizes, "src2");
    const View<T> dst(form, operands, sizes, "dst");
    CholeskySolveRules rules;
    rules.partialSums = form.layout != Layout::pointer && plainStrides(form, operands);
    for (std::int32_t k = first; k < first + runCount; ++k) {
        rules.work = reinterpret_cast<std::uintptr_t>(dst.address(k, 0, 0));
        dst.writeVector(k, referenceCholeskySolve(lowerTriangle(src1, k, sizes.order), src2.vector(k), rules));
    }
    return status::ok;
}

}  // namespace

bool choleskyGoesInFours(const Form& form, bool plain, std::int32_t order) {
    return form.name == "kormCholeskyDecomp_ma_32f" && plain && order >= 3 && order <= 6;
}

long double choleskyThreshold(const Form& form, bool plain, std::int32_t order) {
    if (form.layout == Layout::pointer) return order == 3 ? 0x1p-23L : 0;
    if (form.name == "kormCholeskyDecomp_ma_64f" && !plain && (order < 3 || order > 5)) return 0x1p-52L;
    return 0;
}

std::int32_t referenceCholeskyDecomp(const Form& form, const std::vector<OperandValues>& operands, const Sizes& sizes,
                                     std::int32_t first, std::int32_t runCount) {
    return (form.type == Type::f32 ? factors<float> : factors<double>)(form, operands, sizes, first, runCount);
}

std::int32_t referenceCholeskyBackSubst(const Form& form, const std::vector<OperandValues>& operands,
                                        const Sizes& sizes, std::int32_t first, std::int32_t runCount) {
    return (form.type == Type::f32 ? solutions<float> : solutions<double>)(form, operands, sizes, first, runCount);
}

}  // namespace kormtest
