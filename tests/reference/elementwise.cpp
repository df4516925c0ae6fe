#include "elementwise.h"

#include <cfloat>
#include <stdexcept>

namespace kormtest {
namespace {

// The comparison is to the bit: no wider intermediate results.
static_assert(FLT_EVAL_METHOD == 0);

enum class Operation { add, sub, mul };

Operation operationOf(const Form& form) {
    if (form.operationWord == "Add") return Operation::add;
    if (form.operationWord == "Sub") return Operation::sub;
    if (form.operationWord == "Mul") return Operation::mul;
    throw std::logic_error("no element-wise operation " + form.operationWord);
}

template <class T>
void run(const Form& form, const std::vector<OperandValues>& operands, const Sizes& sizes, std::int32_t first,
         std::int32_t runCount) {
    const Operation operation = operationOf(form);
    const std::size_t result = form.result();
    const std::int32_t rows = sizes.of(form.operands[result].rows);
    const std::int32_t columns = sizes.of(form.operands[result].columns);
    for (std::int32_t k = first; k < first + runCount; ++k) {
        for (std::int32_t i = 0; i < rows; ++i) {
            for (std::int32_t j = 0; j < columns; ++j) {
                const T a = readElement<T>(form, form.first, operands[form.first], sizes, k, i, j);
                const T b = readElement<T>(form, form.second, operands[form.second], sizes, k, i, j);
                T c = 0;
                switch (operation) {
                    case Operation::add: c = a + b; break;
                    case Operation::sub: c = a - b; break;
                    case Operation::mul: c = a * b; break;
                }
                writeElement(form, result, operands[result], sizes, k, i, j, c);
            }
        }
    }
}

}  // namespace

std::int32_t referenceElementwise(const Form& form, const std::vector<OperandValues>& operands, const Sizes& sizes,
                                  std::int32_t first, std::int32_t runCount) {
    if (form.type == Type::f32) run<float>(form, operands, sizes, first, runCount);
    else run<double>(form, operands, sizes, first, runCount);
    return 0;
}

}  // namespace kormtest
