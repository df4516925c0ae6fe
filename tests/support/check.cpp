#include "check.h"

#include "family.h"
#include "status.h"

namespace kormtest {
namespace {

std::int32_t sizeOf(const Form& form, std::span<const CallValue> arguments, Extent extent) {
    for (std::size_t i = 0; i < arguments.size(); ++i)
        if (form.arguments[i].role == Role::size && form.arguments[i].extent == extent)
            return static_cast<std::int32_t>(static_cast<std::uint32_t>(arguments[i].bits));
    return 0;
}

// Sizes of one extent that differ, or a width above the height where there is to be none.
bool mismatch(const Form& form, std::span<const CallValue> arguments) {
    for (std::size_t a = 0; a < arguments.size(); ++a) {
        if (form.arguments[a].role != Role::size) continue;
        for (std::size_t b = a + 1; b < arguments.size(); ++b) {
            const bool same =
                form.arguments[b].role == Role::size && form.arguments[a].extent == form.arguments[b].extent;
            if (same && arguments[a].bits != arguments[b].bits) return true;
        }
    }
    return form.family->tall && sizeOf(form, arguments, Extent::width) > sizeOf(form, arguments, Extent::height);
}

std::int32_t countOf(const Form& form, std::span<const CallValue> arguments) {
    for (std::size_t i = 0; i < arguments.size(); ++i)
        if (form.arguments[i].role == Role::count)
            return static_cast<std::int32_t>(static_cast<std::uint32_t>(arguments[i].bits));
    return 1;
}

}  // namespace

bool checkFails(const Form& form, std::span<const CallValue> arguments, char letter) {
    if (letter == 'M') return mismatch(form, arguments);
    if (letter == 'A' && countOf(form, arguments) < 2) return false;
    const auto mask = static_cast<std::uint32_t>(form.elementSize() - 1);
    for (std::size_t i = 0; i < arguments.size(); ++i) {
        if (!looksAt(letter, form.arguments[i])) continue;
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
            case 'R':
            case 'A':
            case 't':
            case 'u':
            case 'v':
                if (number < 1 || (bits & mask) != 0) return true;
                break;
            default:
                if (number < 0 || (bits & mask) != 0) return true;
                break;
        }
    }
    return false;
}

std::int32_t statusOfCheck(char letter) {
    switch (letter) {
        case 'N': return status::nullPointer;
        case 'C': return status::badCount;
        case 'S': return status::badSize;
        case 'M': return status::sizeMismatch;
        case 'T':
        case 'R':
        case 'A':
        case 't':
        case 'u':
        case 'v': return status::badStride;
        case 'O':
        case 'o':
        case 'p':
        case 'q': return status::badOffset;
        default: return status::ok;
    }
}

std::int32_t firstFailure(const Form& form, std::span<const CallValue> arguments, std::string_view order) {
    for (const char letter : order)
        if (checkFails(form, arguments, letter)) return statusOfCheck(letter);
    return status::ok;
}

}  // namespace kormtest
