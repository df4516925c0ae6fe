// Does its work and then writes one element more: the next in the last row, or at the end of the last stream.
#include "../routines/arguments.h"
#include "mutant.h"

std::int32_t kormtest::misbehave(const Form& form, const std::vector<CallValue>& arguments, void* real) {
    if (const std::int32_t status = behave(arguments, real); status != 0) return status;
    const DecodedCall call = decode(form, arguments);
    const Sizes& sizes = call.sizes;
    const std::int32_t lastRow = form.matrices() ? sizes.height - 1 : 0;
    const std::int32_t lastColumn = (form.matrices() ? sizes.width : sizes.length) - 1;
    const OperandValues& result = call.operands[form.result()];
    std::byte* const last = elementAddress(form, form.result(), result, sizes, sizes.count - 1, lastRow, lastColumn);
    std::ptrdiff_t step = form.elementSize();
    if (form.layout != Layout::pointer) step = result.elementStride;
    else if (form.array) step = result.objectStride;
    std::memcpy(last + step, last, static_cast<std::size_t>(form.elementSize()));
    return 0;
}
