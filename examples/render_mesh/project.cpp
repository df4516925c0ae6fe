// The two batches that the whole model goes through.
#include <algorithm>
#include <cmath>

#include "korm.h"
#include "render.h"

namespace example {
namespace {

Colour materialColour(const aiScene& scene, const aiMesh& mesh) {
    aiColor4D diffuse(0.72F, 0.7F, 0.66F, 1);
    if (mesh.mMaterialIndex < scene.mNumMaterials) {
        const aiMaterial& material = *scene.mMaterials[mesh.mMaterialIndex];
        aiColor4D given;
        const bool textured = material.GetTextureCount(aiTextureType_DIFFUSE) > 0;
        if (!textured && aiGetMaterialColor(&material, AI_MATKEY_COLOR_DIFFUSE, &given) == aiReturn_SUCCESS)
            diffuse = given;
    }
    // A black material would show no shape.
    const float floor = 0.06F;
    return {std::max(diffuse.r, floor), std::max(diffuse.g, floor), std::max(diffuse.b, floor)};
}

// By how much the angle of view may be narrowed until the model touches the frame.
float roomToZoom(const std::vector<ProjectedMesh>& meshes, const Camera& camera) {
    const float middleX = camera.viewportWidth / 2, middleY = camera.viewportHeight / 2;
    float used = 0;  // 1 at the frame
    for (const ProjectedMesh& mesh : meshes) {
        for (std::size_t at = 0; at < mesh.points.size(); at += 4) {
            used = std::max(used, std::fabs(mesh.points[at] - middleX) / middleX);
            used = std::max(used, std::fabs(mesh.points[at + 1] - middleY) / middleY);
        }
    }
    const float margin = 0.94F;
    return used > 0 ? margin / used : 1;
}

}  // namespace

std::vector<ProjectedMesh> projectAll(const aiScene& scene, const Camera& camera, KormTimes& times) {
    std::vector<ProjectedMesh> result;
    for (unsigned m = 0; m < scene.mNumMeshes; ++m) {
        const aiMesh& mesh = *scene.mMeshes[m];
        const auto count = static_cast<std::int32_t>(mesh.mNumVertices);
        ProjectedMesh projected;
        projected.points.resize(4 * std::size_t{mesh.mNumVertices});
        projected.normals.resize(3 * std::size_t{mesh.mNumVertices});
        projected.colour = materialColour(scene, mesh);

        auto start = std::chrono::steady_clock::now();
        kormProject_m4v3a_32f(camera.projection.data(), camera.view.data(), camera.world.data(), &mesh.mVertices->x,
                              vertexStride, camera.viewportWidth, camera.viewportHeight, 0, 1, projected.points.data(),
                              4 * elementStride, count);
        times.projecting += microsecondsSince(start);

        start = std::chrono::steady_clock::now();
        float* const normals = projected.normals.data();
        kormAffineTransformNormal_m4v3a_32f(camera.normals.data(), &mesh.mNormals->x, vertexStride, normals,
                                            3 * elementStride, count);
        for (std::size_t k = 0; k < mesh.mNumVertices; ++k) kormNormalize_v3_32f(normals + 3 * k, normals + 3 * k);
        times.normals += microsecondsSince(start);
        result.push_back(std::move(projected));
    }
    return result;
}

Camera fittingCamera(const aiScene& scene, CameraOptions options, float radius, int samplesAcross, KormTimes& times) {
    const float zoom = options.zoom;
    options.zoom = 1;
    const Camera first = makeCamera(options, radius, samplesAcross);
    options.zoom = zoom * roomToZoom(projectAll(scene, first, times), first);
    Camera camera = makeCamera(options, radius, samplesAcross);
    times.matrices += first.microseconds + camera.microseconds;
    return camera;
}

std::int64_t triangleCount(const aiScene& scene) {
    std::int64_t count = 0;
    for (unsigned m = 0; m < scene.mNumMeshes; ++m) count += scene.mMeshes[m]->mNumFaces;
    return count;
}

}  // namespace example
