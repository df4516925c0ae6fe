// Runs two neighbouring checks of the form in the other order; which two, the variant says.
#include "../support/check.h"
#include "mutant.h"

std::int32_t kormtest::misbehave(const Form& form, const std::vector<CallValue>& arguments, void* real) {
    std::string order = form.checks;
    const auto at = static_cast<std::size_t>(mutantVariant);
    std::swap(order[at], order[at + 1]);
    const std::int32_t status = firstFailure(form, arguments, order);
    return status != 0 ? status : behave(arguments, real);
}
