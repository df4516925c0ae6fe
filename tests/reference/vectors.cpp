#include "vectors.h"

#include <cfloat>
#include <cmath>
#include <stdexcept>

namespace kormtest {
namespace {

// The comparison is to the bit: no wider intermediate results.
static_assert(FLT_EVAL_METHOD == 0);

// --- Which sum a reduction gets, by kernel and length ---

enum class Kernel { plain32, plain64, strided32, strided64, table };

Kernel kernelOf(const Form& form, bool plain) {
    const bool single = form.type == Type::f32;
    if (form.layout == Layout::pointer) return Kernel::table;
    if (plain) return single ? Kernel::plain32 : Kernel::plain64;
    return single ? Kernel::strided32 : Kernel::strided64;
}

Sum unrolledSum(Kernel kernel, std::int32_t length) {
    switch (kernel) {
        case Kernel::plain32:
        case Kernel::table: return Sum::leftToRight;
        case Kernel::plain64: return length == 3 ? Sum::leftToRight : Sum::halves;
        case Kernel::strided32:
        case Kernel::strided64: return Sum::middleFirst;
    }
    throw std::logic_error("no such kernel");
}

Sum shortSum(Kernel kernel) {
    switch (kernel) {
        case Kernel::plain32:
        case Kernel::plain64:
        case Kernel::strided64: return Sum::zeroStart;
        case Kernel::strided32: return Sum::two2;
        case Kernel::table: return Sum::descending;
    }
    throw std::logic_error("no such kernel");
}

Sum longSum(Kernel kernel) {
    switch (kernel) {
        case Kernel::plain32:
        case Kernel::plain64: return Sum::aligned;
        case Kernel::strided32: return Sum::two2;
        case Kernel::strided64: return Sum::eight8;
        case Kernel::table: return Sum::eightsInTurn;
    }
    throw std::logic_error("no such kernel");
}

template <class T>
T read(const Form& form, std::size_t operand, const std::vector<OperandValues>& operands, const Sizes& sizes,
       std::int32_t k, std::int32_t j) {
    return readElement<T>(form, operand, operands[operand], sizes, k, 0, j);
}

template <class T>
void write(const Form& form, const std::vector<OperandValues>& operands, const Sizes& sizes, std::int32_t k,
           std::int32_t j, T value) {
    writeElement(form, form.result(), operands[form.result()], sizes, k, 0, j, value);
}

template <class T>
T constantOf(const OperandValues& values) {
    T value;
    std::memcpy(&value, &values.constantBits, sizeof value);
    return value;
}

// Operands are src1, src2, the constant of src1 and, of a linear combination, that of src2.
template <class T>
void combine(const Form& form, const std::vector<OperandValues>& operands, const Sizes& sizes, std::int32_t k) {
    const T val1 = constantOf<T>(operands[2]);
    for (std::int32_t j = 0; j < sizes.length; ++j) {
        T product = read<T>(form, 0, operands, sizes, k, j) * val1;
        T other = read<T>(form, 1, operands, sizes, k, j);
        if (form.operationWord == "LComb") other = other * constantOf<T>(operands[3]);
        product = product + other;
        write(form, operands, sizes, k, j, product);
    }
}

template <class T>
void reduce(const Form& form, const std::vector<OperandValues>& operands, const Sizes& sizes, std::int32_t k) {
    const std::size_t last = form.result() - 1;  // a norm's only source, a dot product's second one
    std::vector<T> p(static_cast<std::size_t>(sizes.length));
    for (std::int32_t j = 0; j < sizes.length; ++j)
        p[static_cast<std::size_t>(j)] =
            read<T>(form, 0, operands, sizes, k, j) * read<T>(form, last, operands, sizes, k, j);
    const Sum order = reductionSum(form, plainStrides(form, operands), sizes, k);
    const Place place = placeOf(elementAddress(form, last, operands[last], sizes, k, 0, 0), form.elementSize());
    const T sum = sumOf(order, form.type == Type::f64, p, place);
    write(form, operands, sizes, k, 0, form.operationWord == "L2Norm" ? std::sqrt(sum) : sum);
}

template <class T>
void cross(const Form& form, const std::vector<OperandValues>& operands, const Sizes& sizes, std::int32_t k) {
    T a[3], b[3];
    for (std::int32_t j = 0; j < 3; ++j) {
        a[j] = read<T>(form, 0, operands, sizes, k, j);
        b[j] = read<T>(form, 1, operands, sizes, k, j);
    }
    for (std::int32_t j = 0; j < 3; ++j) {
        const std::int32_t next = (j + 1) % 3, after = (j + 2) % 3;
        const T plus = a[next] * b[after], minus = a[after] * b[next];
        write(form, operands, sizes, k, j, plus - minus);
    }
}

using Object = void (*)(const Form&, const std::vector<OperandValues>&, const Sizes&, std::int32_t);

std::int32_t each(Object single, Object wide, const Form& form, const std::vector<OperandValues>& operands,
                  const Sizes& sizes, std::int32_t first, std::int32_t runCount) {
    for (std::int32_t k = first; k < first + runCount; ++k)
        (form.type == Type::f32 ? single : wide)(form, operands, sizes, k);
    return 0;
}

}  // namespace

Sum reductionSum(const Form& form, bool plain, const Sizes& sizes, std::int32_t) {
    const Kernel kernel = kernelOf(form, plain);
    if (sizes.length >= 8) return longSum(kernel);
    if (sizes.length < 3 || sizes.length > 6) return shortSum(kernel);
    const bool inPairs = form.operationWord == "L2Norm" && form.type == Type::f32;
    if (inPairs && (sizes.length == 4 || sizes.length == 5)) return Sum::pairs;
    return unrolledSum(kernel, sizes.length);
}

std::int32_t referenceCombination(const Form& form, const std::vector<OperandValues>& operands, const Sizes& sizes,
                                  std::int32_t first, std::int32_t runCount) {
    return each(combine<float>, combine<double>, form, operands, sizes, first, runCount);
}

std::int32_t referenceReduction(const Form& form, const std::vector<OperandValues>& operands, const Sizes& sizes,
                                std::int32_t first, std::int32_t runCount) {
    return each(reduce<float>, reduce<double>, form, operands, sizes, first, runCount);
}

std::int32_t referenceCrossProduct(const Form& form, const std::vector<OperandValues>& operands, const Sizes& sizes,
                                   std::int32_t first, std::int32_t runCount) {
    return each(cross<float>, cross<double>, form, operands, sizes, first, runCount);
}

}  // namespace kormtest
