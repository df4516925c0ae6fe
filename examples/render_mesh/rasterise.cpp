#include <algorithm>
#include <cmath>
#include <limits>

#include "korm.h"
#include "render.h"

namespace example {

Frame::Frame(int w, int h) : width(w), height(h) {
    const std::size_t samples = static_cast<std::size_t>(w) * static_cast<std::size_t>(h);
    depth.assign(samples, std::numeric_limits<float>::infinity());
    triangle.assign(samples, -1);
    colour.resize(samples);
}

namespace {

struct Corner {
    double x, y;
    float depth;
    const float* normal;
    Colour surface;
};

// Twice the signed area of the triangle a, b, (x, y).
double edge(const Corner& a, const Corner& b, double x, double y) {
    return (b.x - a.x) * (y - a.y) - (b.y - a.y) * (x - a.x);
}

// A lamp over the viewer's left shoulder, a weaker one from the right, and the sky.
Colour shade(const Colour& surface, const float normal[3]) {
    const float length = std::sqrt(normal[0] * normal[0] + normal[1] * normal[1] + normal[2] * normal[2]);
    if (!(length > 0)) return surface;
    const float n[3] = {normal[0] / length, normal[1] / length, normal[2] / length};
    const auto lamp = [&](float x, float y, float z) { return std::max(0.0F, x * n[0] + y * n[1] + z * n[2]); };
    const float light = 0.16F + 0.10F * n[1] + 0.66F * lamp(-0.44F, 0.62F, 0.65F) + 0.22F * lamp(0.8F, 0.1F, 0.59F);
    // Half way between the lamp and the viewer.
    const float gloss = 0.22F * std::pow(lamp(-0.242F, 0.341F, 0.908F), 40.0F);
    return {surface.r * light + gloss, surface.g * light + gloss, surface.b * light + gloss};
}

// Do the normals of a triangle's corners lie on the side from which it runs counter-clockwise?
bool normalsAgree(const aiMesh& mesh, const unsigned* corners) {
    float ab[3], ac[3], upright[3], sum[3] = {}, cosine;
    kormSub_v3_32f(&mesh.mVertices[corners[1]].x, &mesh.mVertices[corners[0]].x, ab);
    kormSub_v3_32f(&mesh.mVertices[corners[2]].x, &mesh.mVertices[corners[0]].x, ac);
    kormCrossProduct_v3_32f(ab, ac, upright);
    for (int i = 0; i < 3; ++i) kormAdd_v3_32f(sum, &mesh.mNormals[corners[i]].x, sum);
    kormDotProduct_v3_32f(upright, sum, &cosine);
    return !(cosine < 0);
}

// `agree`: see above. Many models have triangles of both windings, and all are lit from the side that is seen.
void fill(const Corner (&corners)[3], bool agree, std::int32_t triangle, Frame& frame) {
    const double area = edge(corners[0], corners[1], corners[2].x, corners[2].y);
    if (!(std::fabs(area) > 0) || !std::isfinite(area)) return;
    // Rows of samples run downwards: counter-clockwise is negative.
    const float turned = (area < 0) == agree ? 1.0F : -1.0F;
    const auto bound = [](double low, double high, int size, int& first, int& last) {
        first = static_cast<int>(std::clamp(std::floor(low), 0.0, static_cast<double>(size)));
        last = static_cast<int>(std::clamp(std::ceil(high), -1.0, static_cast<double>(size - 1)));
    };
    int left, right, top, bottom;
    bound(std::min({corners[0].x, corners[1].x, corners[2].x}), std::max({corners[0].x, corners[1].x, corners[2].x}),
          frame.width, left, right);
    bound(std::min({corners[0].y, corners[1].y, corners[2].y}), std::max({corners[0].y, corners[1].y, corners[2].y}),
          frame.height, top, bottom);
    for (int y = top; y <= bottom; ++y) {
        for (int x = left; x <= right; ++x) {
            const double px = x + 0.5, py = y + 0.5;
            const double a = edge(corners[1], corners[2], px, py) / area;
            const double b = edge(corners[2], corners[0], px, py) / area;
            const double c = edge(corners[0], corners[1], px, py) / area;
            if (a < 0 || b < 0 || c < 0) continue;
            const auto wa = static_cast<float>(a), wb = static_cast<float>(b), wc = static_cast<float>(c);
            // Depth after the division by w is linear over the picture.
            const float depth = wa * corners[0].depth + wb * corners[1].depth + wc * corners[2].depth;
            const std::size_t at = frame.at(x, y);
            if (!(depth >= 0 && depth <= 1 && depth < frame.depth[at])) continue;
            float normal[3];
            for (int i = 0; i < 3; ++i)
                normal[i] =
                    turned * (wa * corners[0].normal[i] + wb * corners[1].normal[i] + wc * corners[2].normal[i]);
            frame.depth[at] = depth;
            frame.triangle[at] = triangle;
            const auto mixed = [&](float Colour::*part) {
                return wa * corners[0].surface.*part + wb * corners[1].surface.*part + wc * corners[2].surface.*part;
            };
            frame.colour[at] = shade({mixed(&Colour::r), mixed(&Colour::g), mixed(&Colour::b)}, normal);
        }
    }
}

}  // namespace

void rasterise(const aiScene& scene, const std::vector<ProjectedMesh>& meshes, std::int32_t highlighted, Frame& frame,
               const Progress& progress) {
    const auto all = static_cast<double>(triangleCount(scene));
    std::int32_t triangle = 0;
    for (unsigned m = 0; m < scene.mNumMeshes; ++m) {
        const aiMesh& mesh = *scene.mMeshes[m];
        const ProjectedMesh& projected = meshes[m];
        for (unsigned f = 0; f < mesh.mNumFaces; ++f, ++triangle) {
            if (triangle % 4096 == 0) progress(triangle / all);
            Corner corners[3];
            for (unsigned i = 0; i < 3; ++i) {
                const std::size_t vertex = mesh.mFaces[f].mIndices[i];
                const float* const point = &projected.points[4 * vertex];
                const Colour surface = triangle == highlighted     ? Colour{1.3F, 0.12F, 0.1F}
                                       : projected.colours.empty() ? projected.colour
                                                                   : projected.colours[vertex];
                corners[i] = {double{point[0]}, double{point[1]}, point[2], &projected.normals[3 * vertex], surface};
            }
            fill(corners, normalsAgree(mesh, mesh.mFaces[f].mIndices), triangle, frame);
        }
    }
    progress(1);
}

std::vector<unsigned char> resolve(const Frame& frame, int samplesAcross) {
    const int width = frame.width / samplesAcross, height = frame.height / samplesAcross;
    std::vector<unsigned char> bytes;
    bytes.reserve(3 * static_cast<std::size_t>(width) * static_cast<std::size_t>(height));
    const auto byte = [](float light) {
        // The eye's scale: half the light is written as 188, not 128.
        return static_cast<unsigned char>(std::lround(255 * std::pow(std::clamp(light, 0.0F, 1.0F), 1 / 2.2F)));
    };
    for (int y = 0; y < height; ++y) {
        const float down = static_cast<float>(y) / static_cast<float>(height);
        const Colour background{0.80F - 0.35F * down, 0.84F - 0.33F * down, 0.90F - 0.30F * down};
        for (int x = 0; x < width; ++x) {
            Colour sum;
            for (int sample = 0; sample < samplesAcross * samplesAcross; ++sample) {
                const std::size_t at =
                    frame.at(x * samplesAcross + sample % samplesAcross, y * samplesAcross + sample / samplesAcross);
                const Colour& one = frame.triangle[at] < 0 ? background : frame.colour[at];
                sum.r += one.r;
                sum.g += one.g;
                sum.b += one.b;
            }
            const float share = 1 / static_cast<float>(samplesAcross * samplesAcross);
            for (const float light : {sum.r, sum.g, sum.b}) bytes.push_back(byte(light * share));
        }
    }
    return bytes;
}

}  // namespace example
