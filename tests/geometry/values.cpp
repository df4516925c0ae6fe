#include "values.h"

#include <cmath>
#include <cstring>

#include "../support/element_values.h"

namespace kormtest {

using namespace fixed;

namespace {

float fromBits(std::uint64_t bits) {
    const auto half = static_cast<std::uint32_t>(bits);
    float value;
    std::memcpy(&value, &half, sizeof value);
    return value;
}

void oneElement(float& element, GeometryMood mood, Random& random) {
    // Bits go straight to memory: a signalling NaN would not survive an x87 register.
    std::uint64_t bits = 0;
    switch (mood) {
        case GeometryMood::ordinary: bits = randomElement(Type::f32, Mood::ordinary, false, random); break;
        case GeometryMood::wide: bits = randomElement(Type::f32, Mood::wide, false, random); break;
        case GeometryMood::mixed: bits = randomElement(Type::f32, Mood::mixed, true, random); break;
        case GeometryMood::small:
            // Sums of these cancel exactly, and zeros of both signs occur.
            bits = random.pick<std::uint32_t>(
                {0, 0x80000000, 0, 0x3f800000, 0x3f800000, 0xbf800000, 0x40000000, 0xc0000000, 0x40400000});
            break;
    }
    const auto half = static_cast<std::uint32_t>(bits);
    std::memcpy(&element, &half, sizeof element);
}

// Is the value far enough from the middle between two floats that an error of a tenth of a unit can't matter?
bool roundsClearly(double exact) {
    const auto near = static_cast<float>(exact);
    const double distance = std::fabs(exact - double{near});
    const double unit = std::fabs(double{std::nextafter(near, 2.0F)} - double{near});
    return distance < 0.4 * unit && std::fabs(exact) > 1e-6;
}

float clearAngle(Random& random) {
    for (;;) {
        float angle;
        oneElement(angle, GeometryMood::ordinary, random);
        const double half = 0.5 * double{angle};
        if (roundsClearly(std::sin(double{angle})) && roundsClearly(std::cos(double{angle})) &&
            roundsClearly(std::sin(half)) && roundsClearly(std::cos(half)))
            return angle;
    }
}

float anyAngle(GeometryMood mood, Random& random) {
    if (random.chance(25)) {
        constexpr double pi = 3.14159265358979323846;
        return static_cast<float>(random.between(-8, 8) * pi / 4);
    }
    float angle;
    oneElement(angle, mood, random);
    return angle;
}

// Determinants of zero, around the limit of 2^-119, and everything else.
void forInversion(std::vector<float>& m, GeometryMood mood, Random& random) {
    const int kind = random.between(0, 9);
    if (kind < 4 || mood == GeometryMood::mixed) return;
    if (kind == 4) {  // one row twice
        for (std::size_t i = 0; i < 4; ++i) m[12 + i] = m[4 + i];
    } else if (kind == 5) {  // a diagonal whose product is around the limit
        m.assign(16, 0.0F);
        m[0] = fromBits(0x3f800000u + static_cast<std::uint32_t>(random.between(-3, 3)));
        m[5] = std::ldexp(1.0F, random.between(-60, -59));
        m[10] = std::ldexp(random.chance(50) ? -1.0F : 1.0F, -59);
        m[15] = 1;
    } else if (kind == 6) {  // small enough that rounding decides
        for (float& element : m) element *= std::ldexp(1.0F, random.between(-32, -28));
    } else if (kind == 7) {  // an affine transform
        m[3] = m[7] = m[11] = 0;
        m[15] = 1;
    } else if (kind == 8) {
        m.assign(16, 0.0F);
        for (std::size_t i = 0; i < 4; ++i) oneElement(m[5 * i], GeometryMood::ordinary, random);
    } else {
        for (float& element : m) element *= std::ldexp(1.0F, random.between(20, 40));
    }
}

void forIdentityTest(std::vector<float>& m, Random& random) {
    std::vector<float> spoiled = m;
    m.assign(16, 0.0F);
    m[0] = m[5] = m[10] = m[15] = 1;
    for (std::size_t i = 0; i < 16; ++i)
        if (m[i] == 0 && random.chance(30)) m[i] = -0.0F;
    const std::int32_t percent = random.pick({0, 5, 15, 40, 90});
    for (std::size_t i = 0; i < 16; ++i) {
        if (!random.chance(percent)) continue;
        std::memcpy(&m[i], &spoiled[i], sizeof(float));
        if (random.chance(30)) m[i] = fromBits(random.pick<std::uint32_t>({0x3f800001, 0x3f7fffff, 1, 0x80000001}));
    }
    if (random.chance(60)) m[0] = 1;
}

// What such matrices are in practice: a viewer, a scene, a perspective.
void forUnprojection(std::vector<float>& m, const std::string& name, Random& random) {
    if (random.chance(40)) return;
    const auto ordinary = [&] {
        std::vector<float> one(1);
        oneElement(one[0], GeometryMood::ordinary, random);
        return one;
    };
    const auto vector = [&] { return std::vector<float>{ordinary()[0], ordinary()[0], ordinary()[0]}; };
    Outcome out;
    if (name == "projection") perspectiveFovLH({{1.1F}, {1.5F}, {0.25F}, {random.chance(90) ? 50.0F : 0.25F}}, out);
    else if (name == "view") lookAtLH({vector(), vector(), vector()}, out);
    else if (random.chance(15)) scaling({{random.chance(50) ? 0.0F : 2.0F}, {2}, {3}}, out);
    else translation({ordinary(), ordinary(), ordinary()}, out);
    std::copy(out.dst.begin(), out.dst.end(), m.begin());
}

}  // namespace

std::vector<float> randomElements(const GeometryFunction& function, std::size_t argument, GeometryMood mood,
                                  bool clearAngles, Random& random) {
    const Slotted& slotted = function.arguments[argument];
    const bool constant = slotted.slot == Slot::constant;
    std::vector<float> elements(constant ? 1 : static_cast<std::size_t>(slotted.elements));
    if (constant && function.domain == Domain::angles) {
        elements[0] = clearAngles ? clearAngle(random) : anyAngle(mood, random);
        return elements;
    }
    for (float& element : elements) oneElement(element, mood, random);
    // Vectors of nothing but zeros: lengths, normals and planes that vanish.
    if (mood == GeometryMood::small && random.chance(15))
        for (float& element : elements) element = random.chance(50) ? 0.0F : -0.0F;
    if (elements.size() != 16) return elements;
    if (function.domain == Domain::inversion) forInversion(elements, mood, random);
    if (function.domain == Domain::identity) forIdentityTest(elements, random);
    if (function.domain == Domain::unprojection) forUnprojection(elements, slotted.name, random);
    return elements;
}

GeometryMood randomMood(bool special, Random& random) {
    if (!special) return random.chance(80) ? GeometryMood::ordinary : GeometryMood::small;
    return random.pick({GeometryMood::ordinary, GeometryMood::ordinary, GeometryMood::small, GeometryMood::wide,
                        GeometryMood::mixed, GeometryMood::mixed});
}

}  // namespace kormtest
