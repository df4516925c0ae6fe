// Where the model stands, where it is seen from, and what of that becomes pixels: all of it matrices made by korm.
#pragma once

#include <array>

namespace example {

using Matrix = std::array<float, 16>;  // row by row, row vectors multiply from the left

struct CameraOptions {
    int width = 800, height = 600;
    float yaw = 30, pitch = 20;  // degrees: its front to the right, then its top towards the viewer
    float zoom = 1;              // 1: the sphere around the model touches the frame
    bool zUp = false;            // the model's z points upwards, not its y
};

struct Camera {
    Matrix world, view, projection;
    // For normals, into the viewer's space: the transposed inverse of world * view.
    Matrix normals;
    // The picture in samples, several a pixel.
    float viewportWidth = 0, viewportHeight = 0;
    double microseconds = 0;
};

// A model with its middle at the origin, none of it further away than `radius`, fills the picture.
Camera makeCamera(const CameraOptions& options, float radius, int samplesAcross);

}  // namespace example
