// Centres a 3D model at the origin and scales it to a given size, with two korm calls a mesh.
//
// libassimp keeps the vertices of a mesh as an array of aiVector3D. To korm that is an array of vectors
// of length 3, one every sizeof(aiVector3D) bytes, so both calls work on the loaded model itself.

#include <assimp/Importer.hpp>
#include <assimp/postprocess.h>
#include <assimp/scene.h>

#include <algorithm>
#include <chrono>
#include <cmath>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <limits>
#include <memory>
#include <string>
#include <vector>

#include "korm.h"

namespace {

constexpr const char* usage =
    "usage: center_model [--side LENGTH] MODEL\n"
    "\n"
    "Reads a 3D model (any format of libassimp), moves the middle of its bounding box to the origin,\n"
    "scales its longest side to LENGTH (2 if not given), and checks the bounds that come out.\n";

static_assert(sizeof(ai_real) == sizeof(float), "korm's 32f calls need a libassimp with single precision");
constexpr auto vertexStride = static_cast<std::int32_t>(sizeof(aiVector3D));
constexpr auto elementStride = static_cast<std::int32_t>(sizeof(float));
constexpr std::int32_t coordinates = 3;

struct Bounds {
    aiVector3D low{std::numeric_limits<float>::infinity()};
    aiVector3D high{-std::numeric_limits<float>::infinity()};

    // Halves first: a sum of two large coordinates could overflow.
    aiVector3D center() const { return low * 0.5F + high * 0.5F; }
    float longestSide() const {
        const aiVector3D side = high - low;
        return std::max({side.x, side.y, side.z});
    }
    float largestCoordinate() const {
        float largest = 0;
        for (unsigned i = 0; i < 3; ++i) largest = std::max({largest, std::fabs(low[i]), std::fabs(high[i])});
        return largest;
    }
};

Bounds boundsOf(const aiScene& scene) {
    Bounds bounds;
    for (unsigned m = 0; m < scene.mNumMeshes; ++m) {
        const aiMesh& mesh = *scene.mMeshes[m];
        for (unsigned k = 0; k < mesh.mNumVertices; ++k) {
            for (unsigned i = 0; i < 3; ++i) {
                bounds.low[i] = std::min(bounds.low[i], mesh.mVertices[k][i]);
                bounds.high[i] = std::max(bounds.high[i], mesh.mVertices[k][i]);
            }
        }
    }
    return bounds;
}

void print(const char* when, const Bounds& bounds) {
    const aiVector3D center = bounds.center();
    std::printf("%s: (%g, %g, %g) to (%g, %g, %g), centre (%g, %g, %g), longest side %g\n", when,
                double{bounds.low.x}, double{bounds.low.y}, double{bounds.low.z}, double{bounds.high.x},
                double{bounds.high.y}, double{bounds.high.z}, double{center.x}, double{center.y}, double{center.z},
                double{bounds.longestSide()});
}

// What is done to the model: two calls, in place, on the vertices where libassimp put them.
std::int32_t centerAndScale(aiMesh& mesh, const aiVector3D& center, float scale) {
    float* const vertices = &mesh.mVertices->x;
    const auto count = static_cast<std::int32_t>(mesh.mNumVertices);
    const std::int32_t status = kormSub_vav_32f(vertices, vertexStride, elementStride, &center.x, elementStride,
                                                vertices, vertexStride, elementStride, coordinates, count);
    if (status != korStatusOk) return status;
    return kormMul_vac_32f(vertices, vertexStride, elementStride, scale, vertices, vertexStride, elementStride,
                           coordinates, count);
}

double microsecondsSince(std::chrono::steady_clock::time_point start) {
    return std::chrono::duration<double, std::micro>(std::chrono::steady_clock::now() - start).count();
}

// The first call of a program that is large enough to be split also starts OpenMP's threads. That takes
// a millisecond or more, once, so it is told apart from the work: 4000 vertices are split, 0 * 1 is 0.
double startThreads() {
    std::vector<aiVector3D> zeros(4000);
    const auto start = std::chrono::steady_clock::now();
    kormMul_vac_32f(&zeros.front().x, vertexStride, elementStride, 1, &zeros.front().x, vertexStride,
                    elementStride, coordinates, static_cast<std::int32_t>(zeros.size()));
    return microsecondsSince(start);
}

int fail(const std::string& message) {
    std::fprintf(stderr, "center_model: %s\n", message.c_str());
    return EXIT_FAILURE;
}

int run(const char* path, float side) {
    // One space for all meshes: a node's transform is applied to the vertices below it while loading.
    Assimp::Importer importer;
    const std::string name = path;
    if (importer.ReadFile(name, aiProcess_PreTransformVertices) == nullptr) {
        const std::string reason = importer.GetErrorString();
        return fail(name + ": " + (reason.empty() ? "can't be read as a model" : reason));
    }
    const std::unique_ptr<aiScene> scene(importer.GetOrphanedScene());

    std::uint64_t vertices = 0;
    for (unsigned m = 0; m < scene->mNumMeshes; ++m) vertices += scene->mMeshes[m]->mNumVertices;
    if (vertices == 0) return fail(name + ": there are no vertices in it");

    const Bounds before = boundsOf(*scene);
    const float scale = side / before.longestSide();
    if (!std::isfinite(before.largestCoordinate())) return fail(name + ": not all coordinates are finite");
    if (!std::isfinite(scale)) return fail(name + ": it has no extent, all vertices lie in one point");

    std::printf("%s: %u %s, %llu vertices\n", path, scene->mNumMeshes,
                scene->mNumMeshes == 1 ? "mesh" : "meshes",
                static_cast<unsigned long long>(vertices));
    print("before", before);

    std::printf("OpenMP's threads started in %.0f us\n", startThreads());

    double microseconds = 0;
    const aiVector3D center = before.center();
    for (unsigned m = 0; m < scene->mNumMeshes; ++m) {
        aiMesh& mesh = *scene->mMeshes[m];
        if (mesh.mNumVertices > std::uint32_t{INT32_MAX}) return fail(name + ": a mesh is too large");
        if (mesh.mNumVertices == 0) continue;
        const auto start = std::chrono::steady_clock::now();
        const std::int32_t status = centerAndScale(mesh, center, scale);
        const double taken = microsecondsSince(start);
        if (status != korStatusOk) return fail(name + ": korm refused a mesh with status " + std::to_string(status));
        std::printf("  mesh %u '%s': %u vertices centred and scaled in %.1f us\n", m, mesh.mName.C_Str(),
                    mesh.mNumVertices, taken);
        microseconds += taken;
    }

    const Bounds after = boundsOf(*scene);
    print("after ", after);
    std::printf("korm: %llu vertices in %.1f us, %.2f ns a vertex\n", static_cast<unsigned long long>(vertices),
                microseconds, 1e3 * microseconds / static_cast<double>(vertices));

    // Half a unit in the last place for each of: the middle, the difference, the scale and the product.
    // A model far from the origin has coordinates, and so errors, that are large beside its side.
    const float tolerance = 4 * std::numeric_limits<float>::epsilon() * std::max(side, before.largestCoordinate() * scale);
    const aiVector3D middle = after.center();
    const float offCenter = std::max({std::fabs(middle.x), std::fabs(middle.y), std::fabs(middle.z)});
    const float offSide = std::fabs(after.longestSide() - side);
    if (!(offCenter <= tolerance && offSide <= tolerance)) {
        return fail(name + ": the bounds are wrong: centre off by " + std::to_string(offCenter) +
                    ", longest side off by " + std::to_string(offSide));
    }
    std::printf("The bounds are right: centre off by %.1g, longest side off by %.1g (%.1g allowed)\n",
                double{offCenter}, double{offSide}, double{tolerance});
    return EXIT_SUCCESS;
}

}  // namespace

int main(int argc, char** argv) {
    const char* path = nullptr;
    float side = 2;
    for (int i = 1; i < argc; ++i) {
        if (std::strcmp(argv[i], "--help") == 0 || std::strcmp(argv[i], "-h") == 0) {
            std::fputs(usage, stdout);
            return EXIT_SUCCESS;
        }
        if (std::strcmp(argv[i], "--side") == 0) {
            char* end = nullptr;
            side = i + 1 < argc ? std::strtof(argv[++i], &end) : 0;
            if (end == nullptr || *end != '\0' || !(side > 0) || !std::isfinite(side))
                return fail("--side takes a positive number");
        } else if (argv[i][0] == '-' || path != nullptr) {
            return fail(std::string("can't make sense of '") + argv[i] + "'\n" + usage);
        } else {
            path = argv[i];
        }
    }
    if (path == nullptr) return fail(std::string("no model given\n") + usage);
    return run(path, side);
}
