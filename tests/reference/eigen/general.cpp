#include "general.h"

#include "../linalg/view.h"
#include "general_vectors.h"

namespace kormtest {
namespace {

template <class T>
struct Values {
    View<T> re, im;
    Values(const Form& form, const std::vector<OperandValues>& operands, const Sizes& sizes)
        : re(form, operands, sizes, "dstValuesRe"), im(form, operands, sizes, "dstValuesIm") {}
};

template <class T, class Problem>
void readTransposed(const View<T>& src, std::int32_t k, Problem& problem) {
    for (std::int32_t i = 1; i <= problem.n; ++i)
        for (std::int32_t j = 1; j <= problem.n; ++j) problem.h(j, i) = src.read(k, i - 1, j - 1);
}

template <class T>
std::int32_t values(const Form& form, const std::vector<OperandValues>& operands, const Sizes& sizes,
                    std::int32_t first, std::int32_t runCount) {
    const View<T> src(form, operands, sizes, "src");
    const Values<T> dst(form, operands, sizes);
    for (std::int32_t k = first; k < first + runCount; ++k) {
        GeneralProblem<T, T, T, T> problem(sizes.order, false);
        readTransposed(src, k, problem);
        problem.reduce();
        problem.clearTails();
        const std::int32_t result = problem.iterate(nullptr, [&](std::int32_t i, T re, T im) {
            dst.re.write(k, 0, i - 1, re);
            dst.im.write(k, 0, i - 1, im);
        });
        if (result != status::ok) return result;
    }
    return status::ok;
}

template <class T>
void write(const View<T>& dst, std::int32_t k, Matrix<T>& w) {
    for (std::int32_t i = 1; i <= w.order(); ++i)
        for (std::int32_t j = 1; j <= w.order(); ++j) dst.write(k, i - 1, j - 1, w(i, j));
}

template <class T, class S, class R, class N>
std::int32_t vectors(const Form& form, const std::vector<OperandValues>& operands, const Sizes& sizes,
                     std::int32_t first, std::int32_t runCount) {
    const bool both = form.operationWord == "EigenValuesVectors";
    const bool rightOnly = form.operationWord == "EigenValuesVectorsRight";
    const View<T> src(form, operands, sizes, "src");
    const Values<T> dst(form, operands, sizes);
    const std::int32_t n = sizes.order;
    Turn<S> turn;  // of the last block, also of the object before
    for (std::int32_t k = first; k < first + runCount; ++k) {
        GeneralProblem<T, S, R, N> problem(n, both && !form.array && sizeof(T) == 4);
        Matrix<T> rights(n), lefts(n);
        if (n == 1) {
            dst.re.write(k, 0, 0, src.read(k, 0, 0));
            dst.im.write(k, 0, 0, T(0));
            rights(1, 1) = lefts(1, 1) = T(1);
        } else {
            readTransposed(src, k, problem);
            problem.reduce();
            problem.collect();
            problem.clearTails();
            std::vector<T> imaginary(static_cast<std::size_t>(n));
            const std::int32_t result = problem.iterate(&turn, [&](std::int32_t i, T re, T im) {
                dst.re.write(k, 0, i - 1, re);
                dst.im.write(k, 0, i - 1, im);
                imaginary[static_cast<std::size_t>(i - 1)] = im;
            });
            if (result != status::ok) return result;
            rights = lefts = problem.w;
            GeneralVectors<T, S, R, N> search(problem);
            VectorsEnd end;
            if (both || rightOnly) end = search.rights(rights);
            if (end.delivered && !rightOnly) end = search.lefts(lefts);
            if (!end.delivered) return end.status;
            search.normalise(rights, imaginary);
            search.normalise(lefts, imaginary);
        }
        if (both) {
            write(View<T>(form, operands, sizes, "dstRight"), k, rights);
            write(View<T>(form, operands, sizes, "dstLeft"), k, lefts);
        } else {
            write(View<T>(form, operands, sizes, "dst"), k, rightOnly ? rights : lefts);
        }
    }
    return status::ok;
}

}  // namespace

std::int32_t referenceEigenValues(const Form& form, const std::vector<OperandValues>& operands, const Sizes& sizes,
                                  std::int32_t first, std::int32_t runCount) {
    return (form.type == Type::f32 ? values<float> : values<double>)(form, operands, sizes, first, runCount);
}

// Single objects of doubles compute in double throughout, both sides only; arrays of either type and single objects of
// doubles, one side, hold their shifts in single precision; single objects of floats compute in floats, sums of squares
// in double where one side is wanted.
std::int32_t referenceEigenVectors(const Form& form, const std::vector<OperandValues>& operands, const Sizes& sizes,
                                   std::int32_t first, std::int32_t runCount) {
    const bool both = form.operationWord == "EigenValuesVectors";
    const auto reference = [&] {
        if (form.type == Type::f64)
            return both && !form.array ? vectors<double, double, double, double>
                                       : vectors<double, double, float, double>;
        if (form.array) return vectors<float, double, float, double>;
        return both ? vectors<float, float, float, float> : vectors<float, float, float, double>;
    }();
    return reference(form, operands, sizes, first, runCount);
}

}  // namespace kormtest
