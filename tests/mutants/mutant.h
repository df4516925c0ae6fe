// A library that is wrong on purpose: the same names, the same arguments, one kind of mistake.
//
// Each name is a generated stub that pushes its form's index and enters mutantEntry (entry_*.S), which
// collects the registers; mutant.cpp turns them into an argument list and asks misbehave() for the answer.
#pragma once

#include <cstdint>
#include <vector>

#include "../support/call.h"
#include "../support/forms.h"

namespace kormtest {

// The mistake. `real` is the function of the library that this one stands in for.
std::int32_t misbehave(const Form& form, const std::vector<CallValue>& arguments, void* real);

inline std::int32_t behave(const std::vector<CallValue>& arguments, void* real) {
    return callFunction(real, arguments).status();
}

}  // namespace kormtest

// Which of its variants of the mistake a library makes; set by the program that loads it.
extern "C" __attribute__((visibility("default"))) int mutantVariant;
