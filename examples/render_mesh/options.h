// The words of a command line that programs with a camera have in common.
#pragma once

#include <string>

#include "camera.h"

namespace example {

// Takes --size, --yaw, --pitch, --zoom and --z-up. Returns how many words it took: 0 if `name` is none of them. Fails if
// the value makes no sense.
int takeCameraOption(const std::string& name, const char* value, CameraOptions& camera);

// Two numbers from 0 to 100,000 with something between, as in 800x600.
bool parsePair(const char* text, char between, int& first, int& second);

}  // namespace example
