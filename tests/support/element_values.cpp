#include "element_values.h"

#include <cstring>

namespace kormtest {
namespace {

struct Format {
    int mantissaBits;
    int exponentBits;
    std::uint64_t exponentMask() const { return (std::uint64_t{1} << exponentBits) - 1; }
    std::uint64_t mantissaMask() const { return (std::uint64_t{1} << mantissaBits) - 1; }
    std::uint64_t make(bool negative, std::uint64_t exponent, std::uint64_t mantissa) const {
        return (std::uint64_t{negative} << (mantissaBits + exponentBits)) | (exponent << mantissaBits) | mantissa;
    }
};

constexpr Format formatOf(Type type) { return type == Type::f32 ? Format{23, 8} : Format{52, 11}; }

std::uint64_t ordinary(const Format& format, Random& random) {
    const std::uint64_t bias = format.exponentMask() / 2;
    const std::uint64_t exponent = bias + static_cast<std::uint64_t>(random.between(0, 8)) - 4;
    const std::uint64_t bits = random.next();
    // Every fourth is a short number, so that exact sums and cancellation occur too.
    const std::uint64_t mantissa = (bits & 3) == 0 ? (bits & format.mantissaMask()) >> (format.mantissaBits - 3)
                                                                                           << (format.mantissaBits - 3)
                                                   : bits & format.mantissaMask();
    return format.make((bits >> 63) != 0, exponent, mantissa);
}

std::uint64_t wide(const Format& format, Random& random) {
    const std::uint64_t bits = random.next();
    const std::uint64_t exponent = (bits >> 52) % format.exponentMask();
    return format.make((bits >> 63) != 0, exponent, random.next() & format.mantissaMask());
}

std::uint64_t special(const Format& format, bool mayBeNan, Random& random) {
    const bool negative = random.chance(50);
    const std::uint64_t all = format.exponentMask();
    const std::uint64_t quiet = std::uint64_t{1} << (format.mantissaBits - 1);
    const std::uint64_t payload = random.next() & (quiet - 1);
    switch (random.between(0, mayBeNan ? 10 : 7)) {
        case 0: return format.make(negative, 0, 0);
        case 1: return format.make(negative, 0, 1);
        case 2: return format.make(negative, 0, random.next() & format.mantissaMask());
        case 3: return format.make(negative, 0, format.mantissaMask());
        case 4: return format.make(negative, 1, 0);
        case 5: return format.make(negative, all - 1, format.mantissaMask());
        case 6: return format.make(negative, all - 1, payload);
        case 7: return format.make(negative, all, 0);
        case 8:
        case 9: return format.make(negative, all, quiet | payload);
        default: return format.make(negative, all, payload | 1);  // signalling
    }
}

}  // namespace

bool isNan(Type type, const std::byte* element) {
    std::uint64_t bits = 0;
    std::memcpy(&bits, element, type == Type::f32 ? 4 : 8);
    const Format format = formatOf(type);
    return (bits >> format.mantissaBits & format.exponentMask()) == format.exponentMask() &&
           (bits & format.mantissaMask()) != 0;
}

std::uint64_t randomElement(Type type, Mood mood, bool mayBeNan, Random& random) {
    const Format format = formatOf(type);
    switch (mood) {
        case Mood::ordinary: return ordinary(format, random);
        case Mood::wide: return wide(format, random);
        case Mood::mixed: break;
    }
    if (random.chance(35)) return special(format, mayBeNan, random);
    return random.chance(50) ? wide(format, random) : ordinary(format, random);
}

}  // namespace kormtest
