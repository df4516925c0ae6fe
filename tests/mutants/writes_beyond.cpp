// Does its work and then writes one element more: the next in the last row, or at the end of the last stream.
#include "../routines/arguments.h"
#include "mutant.h"

std::int32_t kormtest::misbehave(const Form& form, const std::vector<CallValue>& arguments, void* real) {
    if (const std::int32_t status = behave(arguments, real); status != 0) return status;
    const DecodedCall call = decode(form, arguments);
    const Sizes& sizes = call.sizes;
    const Operand& operand = form.operands[form.result()];
    const std::int32_t lastRow = sizes.of(operand.rows) - 1;
    const std::int32_t lastColumn = sizes.of(operand.columns) - 1;
    const OperandValues& result = call.operands[form.result()];
    std::byte* const last = elementAddress(form, form.result(), result, sizes, sizes.count - 1, lastRow, lastColumn);
    std::ptrdiff_t step = form.elementSize();
    if (operand.dense) step = form.sizeOf(operand);
    else if (operand.layout != Layout::pointer) step = result.elementStride;
    else if (form.array) step = result.objectStride;
    std::memcpy(last + step, last, static_cast<std::size_t>(form.sizeOf(operand)));
    return 0;
}
