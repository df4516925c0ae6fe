#include "model.h"

#include <assimp/postprocess.h>
#include <sys/resource.h>
#include <unistd.h>
#include <assimp/Importer.hpp>

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <limits>
#include <vector>

#include "korm.h"

namespace example {

namespace {

// While it lives, the process gets no more memory than a model of this size could need. Libassimp makes room for as many
// vertices as a file announces; a broken one may announce billions, and the machine would be busy clearing memory.
class MemoryLimit {
public:
    explicit MemoryLimit(const std::string& model) {
        std::error_code unknown;
        const std::uintmax_t fileSize = std::filesystem::file_size(model, unknown);
        std::uintmax_t pagesInUse = 0;
        std::ifstream("/proc/self/statm") >> pagesInUse;
        if (unknown || pagesInUse == 0 || getrlimit(RLIMIT_AS, &before_) != 0) return;
        // The constant also stands for files that the model names: textures, buffers of vertices.
        constexpr std::uintmax_t anyModel = std::uintmax_t{4} << 30, bytesOfAByte = 64;
        const std::uintmax_t limit =
            pagesInUse * static_cast<std::uintmax_t>(sysconf(_SC_PAGESIZE)) + anyModel + bytesOfAByte * fileSize;
        rlimit lower = before_;
        lower.rlim_cur = std::min<std::uintmax_t>(limit, before_.rlim_cur);
        isSet_ = setrlimit(RLIMIT_AS, &lower) == 0;
    }
    ~MemoryLimit() {
        if (isSet_) setrlimit(RLIMIT_AS, &before_);
    }
    MemoryLimit(const MemoryLimit&) = delete;
    MemoryLimit& operator=(const MemoryLimit&) = delete;

private:
    rlimit before_{};
    bool isSet_ = false;
};

}  // namespace

int runProgram(const char* name, const char* usage, int argc, char** argv, void (*work)(int argc, char** argv)) {
    for (int i = 1; i < argc; ++i) {
        if (std::strcmp(argv[i], "--help") == 0 || std::strcmp(argv[i], "-h") == 0) {
            std::fputs(usage, stdout);
            return EXIT_SUCCESS;
        }
    }
    try {
        work(argc, argv);
    } catch (const std::exception& failure) {
        std::fprintf(stderr, "%s: %s\n", name, failure.what());
        return EXIT_FAILURE;
    }
    return EXIT_SUCCESS;
}

std::unique_ptr<aiScene> readModel(const std::string& name, unsigned steps) {
    Assimp::Importer importer;
    const MemoryLimit limit(name);
    // Lines and points that are in the way go while triangles are sorted from them.
    importer.SetPropertyInteger(AI_CONFIG_PP_SBP_REMOVE, aiPrimitiveType_LINE | aiPrimitiveType_POINT);
    const aiScene* const read = importer.ReadFile(name, aiProcess_PreTransformVertices | steps);
    if (read == nullptr) {
        const std::string reason = importer.GetErrorString();
        if (reason.find("bad_alloc") != std::string::npos)
            throw Failure(name + ": reading it takes more memory than a model of its size can need; it may be broken");
        throw Failure(name + ": " + (reason.empty() ? "can't be read as a model" : reason));
    }
    std::unique_ptr<aiScene> scene(importer.GetOrphanedScene());
    if (vertexCount(*scene) == 0) throw Failure(name + ": there are no vertices in it");
    for (unsigned m = 0; m < scene->mNumMeshes; ++m)
        if (scene->mMeshes[m]->mNumVertices > std::uint32_t{INT32_MAX}) throw Failure(name + ": a mesh is too large");
    return scene;
}

std::uint64_t vertexCount(const aiScene& scene) {
    std::uint64_t count = 0;
    for (unsigned m = 0; m < scene.mNumMeshes; ++m) count += scene.mMeshes[m]->mNumVertices;
    return count;
}

float Bounds::longestSide() const {
    const aiVector3D side = high - low;
    return std::max({side.x, side.y, side.z});
}

float Bounds::largestCoordinate() const {
    float largest = 0;
    for (unsigned i = 0; i < 3; ++i) largest = std::max({largest, std::fabs(low[i]), std::fabs(high[i])});
    return largest;
}

Bounds boundsOf(const aiScene& scene) {
    Bounds bounds;
    bounds.low = aiVector3D(std::numeric_limits<float>::infinity());
    bounds.high = aiVector3D(-std::numeric_limits<float>::infinity());
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

float scaleTo(float side, const Bounds& bounds, const std::string& name) {
    const float scale = side / bounds.longestSide();
    if (!std::isfinite(bounds.largestCoordinate())) throw Failure(name + ": not all coordinates are finite");
    if (!std::isfinite(scale)) throw Failure(name + ": it has no extent, all vertices lie in one point");
    return scale;
}

std::int32_t centerAndScale(aiMesh& mesh, const aiVector3D& center, float scale) {
    if (mesh.mNumVertices == 0) return korStatusOk;
    float* const vertices = &mesh.mVertices->x;
    const auto count = static_cast<std::int32_t>(mesh.mNumVertices);
    const std::int32_t status = kormSub_vav_32f(vertices, vertexStride, elementStride, &center.x, elementStride,
                                                vertices, vertexStride, elementStride, coordinates, count);
    if (status != korStatusOk) return status;
    return kormMul_vac_32f(vertices, vertexStride, elementStride, scale, vertices, vertexStride, elementStride,
                           coordinates, count);
}

BoundsCheck checkBounds(const Bounds& before, const Bounds& after, float side, float scale, const std::string& name) {
    BoundsCheck check{};
    // Half a unit in the last place for each of: the middle, the difference, the scale and the product.
    // A model far from the origin has coordinates, and so errors, that are large beside its side.
    check.tolerance = 4 * std::numeric_limits<float>::epsilon() * std::max(side, before.largestCoordinate() * scale);
    const aiVector3D middle = after.center();
    check.offCenter = std::max({std::fabs(middle.x), std::fabs(middle.y), std::fabs(middle.z)});
    check.offSide = std::fabs(after.longestSide() - side);
    if (!(check.offCenter <= check.tolerance && check.offSide <= check.tolerance))
        throw Failure(name + ": the bounds are wrong: centre off by " + std::to_string(check.offCenter) +
                      ", longest side off by " + std::to_string(check.offSide));
    return check;
}

double startThreads() {
    // 4000 vertices are split over threads; 0 * 1 is 0.
    std::vector<aiVector3D> zeros(4000);
    const auto start = std::chrono::steady_clock::now();
    kormMul_vac_32f(&zeros.front().x, vertexStride, elementStride, 1, &zeros.front().x, vertexStride, elementStride,
                    coordinates, static_cast<std::int32_t>(zeros.size()));
    return microsecondsSince(start);
}

}  // namespace example
