#include "elementwise.h"

#include <cfloat>

namespace kormtest {
namespace {

// The comparison is to the bit: no wider intermediate results.
static_assert(FLT_EVAL_METHOD == 0);

template <class T>
void run(const Form& form, const std::vector<OperandValues>& operands, const Sizes& sizes) {
    const bool matrices = form.matrices();
    const std::int32_t rows = matrices ? sizes.height : 1;
    const std::int32_t columns = matrices ? sizes.width : sizes.length;
    const std::int32_t objects = form.array ? sizes.count : 1;
    const auto read = [&](std::size_t operand, std::int32_t k, std::int32_t i, std::int32_t j, T& value) {
        const OperandValues& values = operands[operand];
        const bool byValue = form.operands[operand].shape == Shape::constant && !form.operands[operand].array;
        if (byValue) std::memcpy(&value, &values.constantBits, sizeof value);
        else std::memcpy(&value, elementAddress(form, operand, values, sizes, k, i, j), sizeof value);
    };
    for (std::int32_t k = 0; k < objects; ++k) {
        for (std::int32_t i = 0; i < rows; ++i) {
            for (std::int32_t j = 0; j < columns; ++j) {
                T a, b, c = 0;
                read(form.first, k, i, j, a);
                read(form.second, k, i, j, b);
                switch (form.operation) {
                    case Operation::add: c = a + b; break;
                    case Operation::sub: c = a - b; break;
                    case Operation::mul: c = a * b; break;
                }
                const std::size_t result = form.result();
                std::memcpy(elementAddress(form, result, operands[result], sizes, k, i, j), &c, sizeof c);
            }
        }
    }
}

}  // namespace

void referenceElementwise(const Form& form, const std::vector<OperandValues>& operands, const Sizes& sizes) {
    if (form.type == Type::f32) run<float>(form, operands, sizes);
    else run<double>(form, operands, sizes);
}

}  // namespace kormtest
