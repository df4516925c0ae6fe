// What the checks of a form say to given arguments, from their definition.
#pragma once

#include <span>

#include "call.h"
#include "forms.h"

namespace kormtest {

// Does the check of this letter fail?
bool checkFails(const Form& form, std::span<const CallValue> arguments, char letter);

std::int32_t statusOfCheck(char letter);

// The status of the first check of `order` that fails, ok if none does.
std::int32_t firstFailure(const Form& form, std::span<const CallValue> arguments, std::string_view order);

}  // namespace kormtest
