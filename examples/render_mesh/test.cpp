// Checks of the renderer:
//   render_mesh_test pixels PICTURE X,Y=COLOUR...  red, green, blue or background in these pixels
//   render_mesh_test agree MODEL                   the triangle drawn in each of many pixels is the one picked there
#include <assimp/postprocess.h>

#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <string>

#include "png_file.h"
#include "render.h"

namespace {

using namespace example;

std::string nameOf(const unsigned char* pixel) {
    const int r = pixel[0], g = pixel[1], b = pixel[2];
    const int much = 40;
    if (r > g + much && r > b + much) return "red";
    if (g > r + much && g > b + much) return "green";
    if (b > r + much && b > g + much) return "blue";
    // Light, and bluish a little.
    if (b >= g && g >= r && r > 150) return "background";
    return "something else";
}

bool pixels(int count, char** words) {
    const Picture picture = readPng(words[0]);
    bool good = true;
    for (int i = 1; i < count; ++i) {
        int x = 0, y = 0, end = 0;
        if (std::sscanf(words[i], "%d,%d=%n", &x, &y, &end) != 2 || end == 0) throw Failure("not X,Y=COLOUR");
        if (x < 0 || y < 0 || x >= picture.width || y >= picture.height)
            throw Failure("a pixel outside of the picture");
        const std::string found = nameOf(picture.pixel(x, y)), expected = words[i] + end;
        if (found == expected) continue;
        good = false;
        const unsigned char* const pixel = picture.pixel(x, y);
        std::printf("pixel %d,%d is %s (%d %d %d), not %s\n", x, y, found.c_str(), pixel[0], pixel[1], pixel[2],
                    expected.c_str());
    }
    return good;
}

bool agree(const std::string& name) {
    const auto scene = readModel(name, aiProcess_Triangulate | aiProcess_SortByPType | aiProcess_GenSmoothNormals);
    const Bounds bounds = boundsOf(*scene);
    for (unsigned m = 0; m < scene->mNumMeshes; ++m)
        centerAndScale(*scene->mMeshes[m], bounds.center(), scaleTo(2, bounds, name));
    const Bounds after = boundsOf(*scene);
    CameraOptions options;
    options.width = 96;
    options.height = 72;
    KormTimes times;
    const float radius = (after.high - after.low).Length() / 2;
    const Camera camera = fittingCamera(*scene, options, radius, 1, times);
    // One sample a pixel lies in its middle, where the pick goes through.
    Frame frame(options.width, options.height);
    rasterise(*scene, projectAll(*scene, camera, times), -1, frame, [](double) {});
    int hits = 0, equal = 0, wrong = 0;
    for (int y = 0; y < options.height; ++y) {
        for (int x = 0; x < options.width; ++x) {
            const auto picked = pick(*scene, camera, static_cast<float>(x) + 0.5F, static_cast<float>(y) + 0.5F, times);
            const std::int32_t drawn = frame.triangle[frame.at(x, y)];
            if (drawn >= 0) ++hits;
            if (drawn == (picked ? picked->triangle : -1)) {
                if (drawn >= 0) ++equal;
                continue;
            }
            // On a common side of two triangles, and at an outline, rounding decides.
            ++wrong;
        }
    }
    std::printf("%s: %d pixels show the model, %d of them pick what they show, %d pixels differ\n", name.c_str(), hits,
                equal, wrong);
    return hits > 500 && wrong * 100 <= hits;
}

}  // namespace

int main(int argc, char** argv) {
    try {
        const std::string verb = argc > 2 ? argv[1] : "";
        if (verb == "pixels") return pixels(argc - 2, argv + 2) ? EXIT_SUCCESS : EXIT_FAILURE;
        if (verb == "agree" && argc == 3) return agree(argv[2]) ? EXIT_SUCCESS : EXIT_FAILURE;
        std::fprintf(stderr, "usage: render_mesh_test pixels PICTURE X,Y=COLOUR... | agree MODEL\n");
        return 2;
    } catch (const std::exception& failure) {
        std::fprintf(stderr, "render_mesh_test: %s\n", failure.what());
        return EXIT_FAILURE;
    }
}
