// Adds the products of an element in another order: the variant says which one takes the place of which.
#include "../reference/products.h"
#include "../routines/arguments.h"
#include "../support/check.h"
#include "mutant.h"

std::int32_t kormtest::misbehave(const Form& form, const std::vector<CallValue>& arguments, void*) {
    if (const std::int32_t status = firstFailure(form, arguments, form.checks); status != 0) return status;
    const DecodedCall call = decode(form, arguments);
    constexpr auto orders = static_cast<int>(std::size(allSums));
    referenceProductsWrong(form, call.operands, call.sizes, allSums[mutantVariant / orders],
                           allSums[mutantVariant % orders]);
    return 0;
}
