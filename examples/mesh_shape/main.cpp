// What a surface tells about itself: its curvature, or normals that its file doesn't hold. Many small problems of linear
// algebra, one a vertex, solved by korm all at once; a picture, and the same job done with Eigen beside it.
#include <assimp/postprocess.h>

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <functional>

#include "../render_mesh/options.h"
#include "../render_mesh/png_file.h"
#include "../render_mesh/render.h"
#include "curvature.h"
#include "korm.h"
#include "normals.h"

namespace {

using namespace example;

constexpr const char* usage =
    "usage: mesh_shape curvature|normals [OPTION]... MODEL\n"
    "\n"
    "Reads a 3D model (any format of libassimp) and draws it twice, side by side, into a PNG file.\n"
    "\n"
    "  curvature       shaded, and coloured by mean curvature: red where it bulges, blue where it is hollow. A quadric "
    "is\n"
    "                  fitted to the vertices around each vertex, by least squares.\n"
    "  normals         with its own normals, and with normals from the vertices alone: across the plane in which the\n"
    "                  vertices around each vertex lie best, by the eigenvectors of their covariance.\n"
    "\n"
    "  --output FILE   the picture (shape.png if not given)\n"
    "  --size WxH      size of each half in pixels (400x400)\n"
    "  --yaw DEGREES   turns the model about its upward axis (30)\n"
    "  --pitch DEGREES tilts its top towards the viewer (20)\n"
    "  --z-up          the model's z axis points upwards, not its y axis\n"
    "  --help          this text\n";

constexpr int samplesAcross = 2;
constexpr float side = 2;

struct Arguments {
    std::string job, model, output = "shape.png";
    CameraOptions camera;
};

// The shortest of several runs: the machine does other things too. The first run starts threads and touches memory.
double microsecondsOf(const std::function<void()>& work) {
    double shortest = INFINITY;
    for (int i = 0; i < 5; ++i) {
        const auto start = std::chrono::steady_clock::now();
        work();
        shortest = std::min(shortest, microsecondsSince(start));
    }
    return shortest;
}

void row(const char* what, double microseconds, std::size_t vertices) {
    std::printf("  %-38s %9.3f ms, %7.1f ns a vertex\n", what, microseconds / 1000,
                1000 * microseconds / static_cast<double>(vertices));
}

void refuse(std::int32_t status) {
    if (status != korStatusOk) throw Failure("korm refused the problems with status " + std::to_string(status));
}

std::vector<ProjectedMesh> projected(const aiScene& scene, const Camera& camera) {
    KormTimes untold;
    return projectAll(scene, camera, untold);
}

Picture draw(const aiScene& scene, const std::vector<ProjectedMesh>& meshes, const CameraOptions& options) {
    Frame frame(options.width * samplesAcross, options.height * samplesAcross);
    rasterise(scene, meshes, -1, frame, [](double) {});
    return {options.width, options.height, resolve(frame, samplesAcross)};
}

Picture sideBySide(const Picture& left, const Picture& right) {
    Picture both{left.width + right.width, left.height, {}};
    for (int y = 0; y < left.height; ++y) {
        for (const Picture* half : {&left, &right}) {
            const unsigned char* const pixels = half->pixel(0, y);
            both.bytes.insert(both.bytes.end(), pixels, pixels + 3 * static_cast<std::ptrdiff_t>(half->width));
        }
    }
    return both;
}

// From -1, blue, over 0, nearly white, to 1, red.
Colour colourOf(float value) {
    const float t = std::clamp(value, -1.0F, 1.0F), grey = 0.75F;
    return t > 0 ? Colour{grey, grey * (1 - t), grey * (1 - t)} : Colour{grey * (1 + t), grey * (1 + t), grey};
}

// The value that a share of all lie below.
float quantile(std::vector<float> values, double share) {
    const auto at = values.begin() + static_cast<std::ptrdiff_t>(share * static_cast<double>(values.size() - 1));
    std::nth_element(values.begin(), at, values.end());
    return *at;
}

void showCurvature(const aiScene& scene, const Surface& surface, std::vector<ProjectedMesh>& meshes) {
    const auto start = std::chrono::steady_clock::now();
    const std::vector<QuadricProblems> problems = quadricProblems(surface);
    const double stating = microsecondsSince(start);
    if (problems.empty()) throw Failure("no vertex has neighbours");

    std::size_t fitted = 0;
    for (const QuadricProblems& p : problems) fitted += p.vertices.size();
    std::vector<Quadric> quadrics(surface.points.size()), peers(surface.points.size());
    std::vector<QuadricProblems> factors;
    const double korm = microsecondsOf([&] {
        factors = problems;  // the factors take the matrices' place
        refuse(solveWithKorm(factors, quadrics));
    });
    const double copying = microsecondsOf([&] { factors = problems; });
    const double eigen = microsecondsOf([&] { solveWithEigen(problems, peers); });
    const float off = largestDifference(quadrics, peers);
    if (!(off <= quadricTolerance))
        throw Failure("korm's and Eigen's quadrics differ by " + std::to_string(off) + " of a coefficient's unit");

    const std::vector<float> curvatures = meanCurvatures(surface, quadrics);
    std::vector<float> sizes;
    for (const float curvature : curvatures) sizes.push_back(std::fabs(curvature));
    const float most = std::max(quantile(sizes, 0.9), 1e-6F);
    for (unsigned m = 0; m < scene.mNumMeshes; ++m)
        for (const std::uint32_t v : surface.vertices[m]) meshes[m].colours.push_back(colourOf(curvatures[v] / most));

    std::printf("quadrics fitted to the %zu vertices that have neighbours, 6 to %d rows each, in %zu pairs of calls\n",
                fitted, problems.back().height, problems.size());
    row("stating the problems", stating, fitted);
    row("korm: QRDecomp_ma, QRBackSubst_mava", korm - copying, fitted);
    row("Eigen: HouseholderQR, one by one", eigen, fitted);
    std::printf(
        "korm takes %.2f of Eigen's time and %.0f %% of the job's; coefficients differ by %.1e at most (limit %.0e)\n",
        (korm - copying) / eigen, 100 * (korm - copying) / (korm - copying + stating), double{off},
        double{quadricTolerance});
    std::printf("mean curvature: half of the vertices below %.3g, nine of ten below %.3g, in units of 1 / length\n",
                double{quantile(sizes, 0.5)}, double{most});
}

void showNormals(const aiScene& scene, const Surface& surface, std::vector<ProjectedMesh>& meshes,
                 const Camera& camera) {
    auto start = std::chrono::steady_clock::now();
    std::vector<Covariance> covariances = covariancesOf(surface);
    const double stating = microsecondsSince(start);
    const std::size_t count = surface.points.size();
    std::vector<Axes> axes(count), peers(count);
    std::vector<Point> lengths(count), peerLengths(count);
    std::size_t again = 0;
    const double korm = microsecondsOf([&] { again = solveWithKorm(covariances, axes, lengths); });
    const double iteration = microsecondsOf([&] { solveByIteration(covariances, peers, peerLengths); });
    const float iterationOff = largestResidual(covariances, peers, peerLengths);
    const double closedForm = microsecondsOf([&] { solveInClosedForm(covariances, peers, peerLengths); });
    const float closedFormOff = largestResidual(covariances, peers, peerLengths);
    const float off = largestResidual(covariances, axes, lengths), tolerance = 2e-6F;
    if (!(off <= tolerance)) throw Failure("eigenvectors are off by " + std::to_string(off));

    start = std::chrono::steady_clock::now();
    const std::vector<Point> normals = orientedNormals(surface, axes);
    const double turning = microsecondsSince(start);
    std::vector<float> angles;
    std::size_t opposite = 0;
    for (std::size_t v = 0; v < count; ++v) {
        if (dot(surface.normals[v], surface.normals[v]) == 0) continue;
        const float cosine = dot(normals[v], surface.normals[v]);
        if (cosine < 0) ++opposite;
        angles.push_back(std::acos(std::min(1.0F, std::fabs(cosine))) * 57.29578F);
    }
    if (angles.empty()) throw Failure("no triangle has an area");
    for (unsigned m = 0; m < scene.mNumMeshes; ++m) {
        // The matrix of normals turns rows from the left.
        const Matrix& matrix = camera.normals;
        for (std::size_t k = 0; k < surface.vertices[m].size(); ++k) {
            const Point& normal = normals[surface.vertices[m][k]];
            Point seen{};
            for (std::size_t j = 0; j < 3; ++j)
                seen[j] = normal[0] * matrix[j] + normal[1] * matrix[4 + j] + normal[2] * matrix[8 + j];
            seen = ofLengthOne(seen);
            std::copy(seen.begin(), seen.end(), &meshes[m].normals[3 * k]);
        }
    }

    std::printf("normals of %zu vertices from the covariances of their neighbourhoods, in one call; %zu scaled anew\n",
                count, again);
    row("stating the problems", stating, count);
    row("korm: EigenValuesVectorsSym_ma", korm, count);
    row("Eigen: iteration, one by one", iteration, count);
    row("Eigen: closed form, one by one", closedForm, count);
    row("turning all outwards", turning, count);
    std::printf("korm takes %.2f of the iteration's time, %.2f of the closed form's, and %.0f %% of the job's\n",
                korm / iteration, korm / closedForm, 100 * korm / (stating + korm + turning));
    std::printf("matrix * axis is off by %.1e of the trace at most; Eigen's iteration %.1e, its closed form %.1e\n",
                double{off}, double{iterationOff}, double{closedFormOff});
    std::printf(
        "angle to the average normal of the triangles: half below %.2f degrees, 19 of 20 below %.1f; "
        "%.1f %% point the other way\n",
        double{quantile(angles, 0.5)}, double{quantile(angles, 0.95)},
        100 * static_cast<double>(opposite) / static_cast<double>(angles.size()));
}

void run(const Arguments& arguments) {
    const std::unique_ptr<aiScene> scene =
        readModel(arguments.model, aiProcess_Triangulate | aiProcess_SortByPType | aiProcess_GenSmoothNormals);
    if (triangleCount(*scene) == 0) throw Failure(arguments.model + ": there are no triangles in it");
    const Bounds before = boundsOf(*scene);
    const float scale = scaleTo(side, before, arguments.model);
    for (unsigned m = 0; m < scene->mNumMeshes; ++m) {
        if (!scene->mMeshes[m]->HasNormals()) throw Failure(arguments.model + ": a mesh has no normals");
        refuse(centerAndScale(*scene->mMeshes[m], before.center(), scale));
    }
    const Bounds after = boundsOf(*scene);
    checkBounds(before, after, side, scale, arguments.model);
    const Surface surface = surfaceOf(*scene);
    std::printf("%s: %llu vertices, %zu places, %zu triangles\n", arguments.model.c_str(),
                static_cast<unsigned long long>(vertexCount(*scene)), surface.points.size(), surface.triangles.size());

    KormTimes untold;
    const float radius = (after.high - after.low).Length() / 2;
    const Camera camera = fittingCamera(*scene, arguments.camera, radius, samplesAcross, untold);
    std::vector<ProjectedMesh> meshes = projected(*scene, camera);
    const Picture left = draw(*scene, meshes, arguments.camera);
    if (arguments.job == "curvature") showCurvature(*scene, surface, meshes);
    else showNormals(*scene, surface, meshes, camera);
    writePng(arguments.output, sideBySide(left, draw(*scene, meshes, arguments.camera)));
    std::printf("picture: %s, %d by %d\n", arguments.output.c_str(), 2 * arguments.camera.width,
                arguments.camera.height);
}

Arguments parse(int argc, char** argv) {
    Arguments arguments;
    arguments.camera.width = arguments.camera.height = 400;
    for (int i = 1; i < argc;) {
        const std::string word = argv[i];
        const char* const value = i + 1 < argc ? argv[i + 1] : "";
        if (const int taken = takeCameraOption(word, value, arguments.camera); taken > 0) {
            i += taken;
        } else if (word == "--output") {
            arguments.output = value;
            if (arguments.output.empty()) throw Failure("--output takes a file name");
            i += 2;
        } else if (word.empty() || word[0] == '-' || !arguments.model.empty()) {
            throw Failure("can't make sense of '" + word + "'\n" + usage);
        } else {
            (arguments.job.empty() ? arguments.job : arguments.model) = word;
            ++i;
        }
    }
    if (arguments.job != "curvature" && arguments.job != "normals")
        throw Failure(std::string("what is to be done: curvature or normals?\n") + usage);
    if (arguments.model.empty()) throw Failure(std::string("no model given\n") + usage);
    return arguments;
}

}  // namespace

int main(int argc, char** argv) {
    return runProgram("mesh_shape", usage, argc, argv, [](int count, char** words) { run(parse(count, words)); });
}
