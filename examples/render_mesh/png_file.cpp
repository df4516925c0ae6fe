#include "png_file.h"

#include <png.h>

#include "../model.h"

namespace example {

void writePng(const std::string& name, const Picture& picture) {
    png_image image{};
    image.version = PNG_IMAGE_VERSION;
    image.width = static_cast<png_uint_32>(picture.width);
    image.height = static_cast<png_uint_32>(picture.height);
    image.format = PNG_FORMAT_RGB;
    if (png_image_write_to_file(&image, name.c_str(), 0, picture.bytes.data(), 0, nullptr) == 0)
        throw Failure(name + ": can't be written: " + image.message);
}

Picture readPng(const std::string& name) {
    png_image image{};
    image.version = PNG_IMAGE_VERSION;
    if (png_image_begin_read_from_file(&image, name.c_str()) == 0)
        throw Failure(name + ": can't be read: " + image.message);
    image.format = PNG_FORMAT_RGB;
    Picture picture{static_cast<int>(image.width), static_cast<int>(image.height),
                    std::vector<unsigned char>(PNG_IMAGE_SIZE(image))};
    if (png_image_finish_read(&image, nullptr, picture.bytes.data(), 0, nullptr) == 0)
        throw Failure(name + ": can't be read: " + image.message);
    return picture;
}

}  // namespace example
