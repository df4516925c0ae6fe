// Has its limit one off: variant 0 goes to the driver at the limit already, variant 1 not yet behind it.
#include "../routines/arguments.h"
#include "../support/family.h"
#include "mutant.h"

extern "C" std::int32_t ownGetNumThreads();

std::int32_t kormtest::misbehave(const Form& form, const std::vector<CallValue>& arguments, void* real) {
    if (!form.driver) return behave(arguments, real);
    const DecodedCall call = decode(form, arguments);
    const std::int32_t limit = plainStrides(form, call.operands) ? form.limit.plain : form.limit.general;
    const std::int32_t estimate = form.estimate(call.sizes);
    if (mutantVariant == 0 && estimate == limit) ownGetNumThreads();
    if (mutantVariant == 1 && estimate == limit + 1)
        return form.family->reference(form, call.operands, call.sizes, 0, call.sizes.count);
    return behave(arguments, real);
}
