// Pictures of 3 bytes a pixel as PNG files.
#pragma once

#include <string>
#include <vector>

namespace example {

struct Picture {
    int width = 0, height = 0;
    std::vector<unsigned char> bytes;  // red, green, blue; rows from the top
    const unsigned char* pixel(int x, int y) const {
        return &bytes[3 *
                      (static_cast<std::size_t>(y) * static_cast<std::size_t>(width) + static_cast<std::size_t>(x))];
    }
};

void writePng(const std::string& name, const Picture& picture);
Picture readPng(const std::string& name);

}  // namespace example
