// Computes with the operands the wrong way round.
#include "../routines/arguments.h"
#include "../support/family.h"
#include "mutant.h"

std::int32_t kormtest::misbehave(const Form& form, const std::vector<CallValue>& arguments, void*) {
    const DecodedCall call = decode(form, arguments);
    Form swapped = form;
    std::swap(swapped.first, swapped.second);
    return form.family->reference(swapped, call.operands, call.sizes, 0, form.array ? call.sizes.count : 1);
}
