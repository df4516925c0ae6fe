// Centres a 3D model at the origin and scales it to a given size, with two korm calls a mesh.
//
// libassimp keeps the vertices of a mesh as an array of aiVector3D. To korm that is an array of vectors
// of length 3, one every sizeof(aiVector3D) bytes, so both calls work on the loaded model itself.

#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <cstring>

#include "korm.h"
#include "model.h"

namespace {

using namespace example;

constexpr const char* usage =
    "usage: center_model [--side LENGTH] MODEL\n"
    "\n"
    "Reads a 3D model (any format of libassimp), moves the middle of its bounding box to the origin,\n"
    "scales its longest side to LENGTH (2 if not given), and checks the bounds that come out.\n";

void print(const char* when, const Bounds& bounds) {
    const aiVector3D center = bounds.center();
    std::printf("%s: (%g, %g, %g) to (%g, %g, %g), centre (%g, %g, %g), longest side %g\n", when, double{bounds.low.x},
                double{bounds.low.y}, double{bounds.low.z}, double{bounds.high.x}, double{bounds.high.y},
                double{bounds.high.z}, double{center.x}, double{center.y}, double{center.z},
                double{bounds.longestSide()});
}

void run(const std::string& name, float side) {
    const std::unique_ptr<aiScene> scene = readModel(name);
    const std::uint64_t vertices = vertexCount(*scene);
    const Bounds before = boundsOf(*scene);
    const float scale = scaleTo(side, before, name);

    std::printf("%s: %u %s, %llu vertices\n", name.c_str(), scene->mNumMeshes,
                scene->mNumMeshes == 1 ? "mesh" : "meshes", static_cast<unsigned long long>(vertices));
    print("before", before);

    std::printf("OpenMP's threads started in %.0f us\n", startThreads());

    double microseconds = 0;
    const aiVector3D center = before.center();
    for (unsigned m = 0; m < scene->mNumMeshes; ++m) {
        aiMesh& mesh = *scene->mMeshes[m];
        const auto start = std::chrono::steady_clock::now();
        const std::int32_t status = centerAndScale(mesh, center, scale);
        const double taken = microsecondsSince(start);
        if (status != korStatusOk) throw Failure(name + ": korm refused a mesh with status " + std::to_string(status));
        std::printf("  mesh %u '%s': %u vertices centred and scaled in %.1f us\n", m, mesh.mName.C_Str(),
                    mesh.mNumVertices, taken);
        microseconds += taken;
    }

    const Bounds after = boundsOf(*scene);
    print("after ", after);
    std::printf("korm: %llu vertices in %.1f us, %.2f ns a vertex\n", static_cast<unsigned long long>(vertices),
                microseconds, 1e3 * microseconds / static_cast<double>(vertices));
    const BoundsCheck check = checkBounds(before, after, side, scale, name);
    std::printf("The bounds are right: centre off by %.1g, longest side off by %.1g (%.1g allowed)\n",
                double{check.offCenter}, double{check.offSide}, double{check.tolerance});
}

void parseAndRun(int argc, char** argv) {
    const char* path = nullptr;
    float side = 2;
    for (int i = 1; i < argc; ++i) {
        if (std::strcmp(argv[i], "--side") == 0) {
            char* end = nullptr;
            side = i + 1 < argc ? std::strtof(argv[++i], &end) : 0;
            if (end == nullptr || *end != '\0' || !(side > 0) || !std::isfinite(side))
                throw Failure("--side takes a positive number");
        } else if (argv[i][0] == '-' || path != nullptr) {
            throw Failure(std::string("can't make sense of '") + argv[i] + "'\n" + usage);
        } else {
            path = argv[i];
        }
    }
    if (path == nullptr) throw Failure(std::string("no model given\n") + usage);
    run(path, side);
}

}  // namespace

int main(int argc, char** argv) { return runProgram("center_model", usage, argc, argv, parseAndRun); }
