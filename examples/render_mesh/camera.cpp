#include "camera.h"

#include <algorithm>
#include <cmath>

#include "../model.h"
#include "korm.h"

namespace example {

Camera makeCamera(const CameraOptions& options, float radius, int samplesAcross) {
    constexpr float pi = 3.14159265F, degree = pi / 180;
    const auto start = std::chrono::steady_clock::now();
    Camera camera{};
    camera.viewportWidth = static_cast<float>(options.width * samplesAcross);
    camera.viewportHeight = static_cast<float>(options.height * samplesAcross);

    // Model files are right-handed, and so is the whole way to the picture. Turn about the upward axis first, then tilt
    // towards the viewer; a model with z upwards is laid on its back before.
    Matrix turn{}, tilt{};
    kormRotationY_m4_32f(options.yaw * degree, turn.data());
    kormRotationX_m4_32f(options.pitch * degree, tilt.data());
    kormMul_mm4x4_32f(turn.data(), tilt.data(), camera.world.data());
    if (options.zUp) {
        Matrix lay{};
        kormRotationX_m4_32f(-pi / 2, lay.data());
        kormMul_mm4x4_32f(lay.data(), camera.world.data(), camera.world.data());
    }

    // The sphere around the model touches the sides of the narrower angle of view. The viewer is always outside of it, so
    // nothing lies behind the viewer and nothing has to be clipped in depth.
    const float aspect = camera.viewportWidth / camera.viewportHeight;
    const float narrow = 35 * degree;
    const float fovY = aspect >= 1 ? narrow : 2 * std::atan(std::tan(narrow / 2) / aspect);
    const float distance = radius / std::sin(narrow / 2);
    const float eye[3] = {0, 0, distance}, at[3] = {0, 0, 0}, up[3] = {0, 1, 0};
    kormLookAtRH_m4_32f(eye, at, up, camera.view.data());
    const float zoomed = 2 * std::atan(std::tan(fovY / 2) / options.zoom);
    const float margin = 1.001F;
    kormPerspectiveFovRH_m4_32f(zoomed, aspect, distance - radius * margin, distance + radius * margin,
                                camera.projection.data());

    Matrix seen{}, inverse{};
    kormMul_mm4x4_32f(camera.world.data(), camera.view.data(), seen.data());
    if (kormInvert_m4_32f(seen.data(), nullptr, inverse.data()) != korStatusOk) throw Failure("the view is singular");
    kormTranspose_m4_32f(inverse.data(), camera.normals.data());
    camera.microseconds = microsecondsSince(start);
    return camera;
}

}  // namespace example
