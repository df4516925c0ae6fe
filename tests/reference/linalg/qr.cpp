#include "qr.h"

#include "view.h"

namespace kormtest {
namespace {

// Only kernels of adjacent elements take long sums in eight parts.
bool sumsInEights(const Form& form, const std::vector<OperandValues>& operands) {
    return form.layout != Layout::pointer && plainStrides(form, operands);
}

template <class T>
Rectangle<T> rectangle(const View<T>& from, const Sizes& sizes, std::int32_t k) {
    Rectangle<T> result(sizes.height, sizes.width);
    for (std::int32_t i = 0; i < sizes.height; ++i)
        for (std::int32_t j = 0; j < sizes.width; ++j) result(i, j) = from.read(k, i, j);
    return result;
}

template <class T>
std::int32_t decompositions(const Form& form, const std::vector<OperandValues>& operands, const Sizes& sizes,
                            std::int32_t first, std::int32_t runCount) {
    const View<T> src(form, operands, sizes, "src"), dst(form, operands, sizes, "dst");
    for (std::int32_t k = first; k < first + runCount; ++k) {
        Rectangle<T> a = rectangle(src, sizes, k);
        const std::int32_t found = reflectColumns(a, sumsInEights(form, operands));
        for (std::int32_t i = 0; i < sizes.height; ++i)
            for (std::int32_t j = 0; j < sizes.width; ++j) dst.write(k, i, j, a(i, j));
        if (found != status::ok) return found;
    }
    return status::ok;
}

template <class T>
std::int32_t solutions(const Form& form, const std::vector<OperandValues>& operands, const Sizes& sizes,
                       std::int32_t first, std::int32_t runCount) {
    const View<T> src1(form, operands, sizes, "src1"), src2(form, operands, sizes, "src2");
    const View<T> dst(form, operands, sizes, "dst");
    for (std::int32_t k = first; k < first + runCount; ++k) {
        std::vector<T> b(static_cast<std::size_t>(sizes.height));
        for (std::int32_t i = 0; i < sizes.height; ++i) b[static_cast<std::size_t>(i)] = src2.read(k, 0, i);
        const auto x = solveReflected(rectangle(src1, sizes, k), b, sumsInEights(form, operands));
        for (std::int32_t j = 0; j < sizes.width; ++j) dst.write(k, 0, j, x[static_cast<std::size_t>(j)]);
    }
    return status::ok;
}

}  // namespace

std::int32_t referenceQRDecomp(const Form& form, const std::vector<OperandValues>& operands, const Sizes& sizes,
                               std::int32_t first, std::int32_t runCount) {
    return (form.type == Type::f32 ? decompositions<float> : decompositions<double>)(form, operands, sizes, first,
                                                                                     runCount);
}

std::int32_t referenceQRBackSubst(const Form& form, const std::vector<OperandValues>& operands, const Sizes& sizes,
                                  std::int32_t first, std::int32_t runCount) {
    return (form.type == Type::f32 ? solutions<float> : solutions<double>)(form, operands, sizes, first, runCount);
}

}  // namespace kormtest
