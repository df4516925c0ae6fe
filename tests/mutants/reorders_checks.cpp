// Runs two neighbouring checks of the form in the other order; which two, the variant says.
#include "../support/status.h"
#include "mutant.h"

namespace kormtest {
namespace {

bool fails(const Form& form, const std::vector<CallValue>& arguments, char letter) {
    const auto mask = static_cast<std::uint32_t>(form.elementSize() - 1);
    for (std::size_t i = 0; i < form.arguments.size(); ++i) {
        if (checkLetter(form.arguments[i].role) != letter) continue;
        const auto bits = static_cast<std::uint32_t>(arguments[i].bits);
        const auto number = static_cast<std::int32_t>(bits);
        switch (letter) {
            case 'N':
                if (arguments[i].bits == 0) return true;
                break;
            case 'C':
            case 'S':
                if (number < 1) return true;
                break;
            case 'T':
                if (number < 1 || (bits & mask) != 0) return true;
                break;
            default:
                if (number < 0 || (bits & mask) != 0) return true;
                break;
        }
    }
    return false;
}

std::int32_t statusOf(char letter) {
    switch (letter) {
        case 'N': return status::nullPointer;
        case 'C': return status::badCount;
        case 'S': return status::badSize;
        case 'T': return status::badStride;
        default: return status::badOffset;
    }
}

}  // namespace

std::int32_t misbehave(const Form& form, const std::vector<CallValue>& arguments, void* real) {
    std::string checks = form.checks;
    const auto at = static_cast<std::size_t>(mutantVariant);
    std::swap(checks[at], checks[at + 1]);
    for (const char letter : checks)
        if (fails(form, arguments, letter)) return statusOf(letter);
    return behave(arguments, real);
}

}  // namespace kormtest
