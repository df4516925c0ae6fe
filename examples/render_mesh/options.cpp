#include "options.h"

#include <algorithm>
#include <cmath>
#include <cstdlib>

#include "../model.h"

namespace example {
namespace {

bool parseNumber(const char* text, float& number) {
    char* end = nullptr;
    number = std::strtof(text, &end);
    return end != text && *end == '\0' && std::isfinite(number);
}

}  // namespace

bool parsePair(const char* text, char between, int& first, int& second) {
    char* end = nullptr;
    const long a = std::strtol(text, &end, 10);
    if (end == text || *end != between) return false;
    const char* const rest = end + 1;
    const long b = std::strtol(rest, &end, 10);
    if (end == rest || *end != '\0' || std::max(a, b) > 100'000 || std::min(a, b) < 0) return false;
    first = static_cast<int>(a);
    second = static_cast<int>(b);
    return true;
}

int takeCameraOption(const std::string& name, const char* value, CameraOptions& camera) {
    if (name == "--z-up") {
        camera.zUp = true;
        return 1;
    }
    if (name == "--size") {
        if (!parsePair(value, 'x', camera.width, camera.height) || std::min(camera.width, camera.height) < 1 ||
            std::max(camera.width, camera.height) > 8192)
            throw Failure("--size takes a width and a height from 1 to 8192, as in 800x600");
    } else if (name == "--yaw") {
        if (!parseNumber(value, camera.yaw)) throw Failure("--yaw takes a number of degrees");
    } else if (name == "--pitch") {
        if (!parseNumber(value, camera.pitch)) throw Failure("--pitch takes a number of degrees");
    } else if (name == "--zoom") {
        if (!parseNumber(value, camera.zoom) || !(camera.zoom >= 0.1F) || camera.zoom > 1000)
            throw Failure("--zoom takes a factor from 0.1 to 1000");
    } else {
        return 0;
    }
    return 2;
}

}  // namespace example
