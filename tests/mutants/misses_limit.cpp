// Has its limit one off: variant 0 goes to the driver at the limit already, variant 1 not yet behind it.
#include "../reference/elementwise.h"
#include "../routines/arguments.h"
#include "mutant.h"

extern "C" std::int32_t ownGetNumThreads();

std::int32_t kormtest::misbehave(const Form& form, const std::vector<CallValue>& arguments, void* real) {
    if (!form.driver) return behave(arguments, real);
    const DecodedCall call = decode(form, arguments);
    bool plain = true;
    for (std::size_t i = 0; i < arguments.size(); ++i) {
        if (form.arguments[i].role == Role::elementStride)
            plain = plain && static_cast<std::int32_t>(arguments[i].bits) == form.elementSize();
    }
    const std::int32_t limit = plain ? form.limit.plain : form.limit.general;
    const std::int32_t estimate = form.estimate(call.sizes);
    if (mutantVariant == 0 && estimate == limit) ownGetNumThreads();
    if (mutantVariant == 1 && estimate == limit + 1) {
        referenceElementwise(form, call.operands, call.sizes);
        return 0;
    }
    return behave(arguments, real);
}
