// Adds the products of an element in another order: the variant says which one takes the place of which.
#include "../routines/arguments.h"
#include "../support/check.h"
#include "../support/family.h"
#include "mutant.h"

std::int32_t kormtest::misbehave(const Form& form, const std::vector<CallValue>& arguments, void*) {
    if (const std::int32_t status = firstFailure(form, arguments, form.checks); status != 0) return status;
    const DecodedCall call = decode(form, arguments);
    constexpr auto orders = static_cast<int>(std::size(allSums));
    const SumReplaced replaced(allSums[mutantVariant / orders], allSums[mutantVariant % orders]);
    return form.family->reference(form, call.operands, call.sizes, 0, form.array ? call.sizes.count : 1);
}
