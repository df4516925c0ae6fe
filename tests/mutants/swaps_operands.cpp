// Computes with the operands the wrong way round.
#include "../reference/elementwise.h"
#include "../routines/arguments.h"
#include "mutant.h"

std::int32_t kormtest::misbehave(const Form& form, const std::vector<CallValue>& arguments, void*) {
    const DecodedCall call = decode(form, arguments);
    Form swapped = form;
    std::swap(swapped.first, swapped.second);
    referenceElementwise(swapped, call.operands, call.sizes);
    return 0;
}
