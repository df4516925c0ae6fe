// Draws a 3D model into a PNG file; the geometry is korm's from the file's vertices to the picture's samples.
#include <unistd.h>

#include <assimp/postprocess.h>

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <cstdlib>

#include "korm.h"
#include "options.h"
#include "png_file.h"
#include "render.h"

namespace {

using namespace example;

constexpr const char* usage =
    "usage: render_mesh [OPTION]... MODEL\n"
    "\n"
    "Reads a 3D model (any format of libassimp), centres and scales it, and draws it into a PNG file.\n"
    "\n"
    "  --output FILE   the picture (model.png if not given)\n"
    "  --size WxH      its size in pixels (800x600)\n"
    "  --yaw DEGREES   turns the model about its upward axis (30)\n"
    "  --pitch DEGREES tilts its top towards the viewer (20)\n"
    "  --zoom FACTOR   narrows the angle of view (1: the model fills the picture)\n"
    "  --z-up          the model's z axis points upwards, not its y axis\n"
    "  --pick X,Y      says which triangle is seen in pixel X,Y, counted from 0,0 at the top left, and paints it red\n"
    "  --help          this text\n";

constexpr int samplesAcross = 2;
constexpr float side = 2;

struct Arguments {
    std::string model, output = "model.png";
    CameraOptions camera;
    bool picks = false;
    int pickX = 0, pickY = 0;
};

// One line that is written over while something takes long, and only where somebody watches.
class ProgressLine {
public:
    explicit ProgressLine(std::string what) : what_(std::move(what)) {
        if (watched_) std::fprintf(stderr, "%s ...\033[K", what_.c_str());
    }
    ~ProgressLine() {
        if (watched_) std::fputs("\r\033[K", stderr);
    }
    ProgressLine(const ProgressLine&) = delete;
    ProgressLine& operator=(const ProgressLine&) = delete;
    void operator()(double done) {
        if (!watched_ || microsecondsSince(last_) < 100'000) return;
        last_ = std::chrono::steady_clock::now();
        std::fprintf(stderr, "\r%s: %.0f %%\033[K", what_.c_str(), 100 * done);
    }

private:
    const std::string what_;
    const bool watched_ = isatty(STDERR_FILENO) != 0;
    std::chrono::steady_clock::time_point last_ = std::chrono::steady_clock::now();
};

class Stopwatch {
public:
    // Microseconds since the last lap.
    double lap() {
        const double taken = microsecondsSince(start_);
        start_ = std::chrono::steady_clock::now();
        return taken;
    }

private:
    std::chrono::steady_clock::time_point start_ = std::chrono::steady_clock::now();
};

void row(const char* what, double microseconds) { std::printf("  %-34s %10.3f ms\n", what, microseconds / 1000); }

void sayPicked(const aiScene& scene, const Frame& frame, const Arguments& arguments,
               const std::optional<Picked>& picked) {
    if (!picked) {
        std::printf("pixel %d,%d: the background\n", arguments.pickX, arguments.pickY);
        return;
    }
    const aiMesh& mesh = *scene.mMeshes[picked->mesh];
    int shown = 0;
    for (int sample = 0; sample < samplesAcross * samplesAcross; ++sample)
        if (frame.triangle[frame.at(arguments.pickX * samplesAcross + sample % samplesAcross,
                                    arguments.pickY * samplesAcross + sample / samplesAcross)] == picked->triangle)
            ++shown;
    std::printf("pixel %d,%d: triangle %u of mesh %u '%s' at (%.5g, %.5g, %.5g), in %d of the pixel's %d samples\n",
                arguments.pickX, arguments.pickY, picked->face, picked->mesh, mesh.mName.C_Str(),
                double{picked->point[0]}, double{picked->point[1]}, double{picked->point[2]}, shown,
                samplesAcross * samplesAcross);
}

void run(const Arguments& arguments) {
    Stopwatch watch;
    const std::unique_ptr<aiScene> scene = [&] {
        const ProgressLine progress("reading " + arguments.model);
        return readModel(arguments.model, aiProcess_Triangulate | aiProcess_SortByPType | aiProcess_GenSmoothNormals);
    }();
    const std::int64_t triangles = triangleCount(*scene);
    if (triangles == 0) throw Failure(arguments.model + ": there are no triangles in it");
    if (triangles > INT32_MAX) throw Failure(arguments.model + ": it has too many triangles");
    for (unsigned m = 0; m < scene->mNumMeshes; ++m)
        if (!scene->mMeshes[m]->HasNormals()) throw Failure(arguments.model + ": a mesh has no normals");
    const double reading = watch.lap();
    const double threads = startThreads();

    const Bounds before = boundsOf(*scene);
    const float scale = scaleTo(side, before, arguments.model);
    watch.lap();
    for (unsigned m = 0; m < scene->mNumMeshes; ++m) {
        const std::int32_t status = centerAndScale(*scene->mMeshes[m], before.center(), scale);
        if (status != korStatusOk)
            throw Failure(arguments.model + ": korm refused a mesh with status " + std::to_string(status));
    }
    const double centring = watch.lap();
    const Bounds after = boundsOf(*scene);
    checkBounds(before, after, side, scale, arguments.model);

    // Half the diagonal of the box.
    const float radius = (after.high - after.low).Length() / 2;
    KormTimes times;
    const Camera camera = fittingCamera(*scene, arguments.camera, radius, samplesAcross, times);
    const std::vector<ProjectedMesh> meshes = projectAll(*scene, camera, times);

    std::optional<Picked> picked;
    if (arguments.picks)
        picked = pick(*scene, camera, (static_cast<float>(arguments.pickX) + 0.5F) * samplesAcross,
                      (static_cast<float>(arguments.pickY) + 0.5F) * samplesAcross, times);

    watch.lap();
    Frame frame(arguments.camera.width * samplesAcross, arguments.camera.height * samplesAcross);
    {
        ProgressLine progress("drawing");
        rasterise(*scene, meshes, picked ? picked->triangle : -1, frame, [&](double done) { progress(done); });
    }
    const Picture picture{arguments.camera.width, arguments.camera.height, resolve(frame, samplesAcross)};
    const double drawing = watch.lap();
    writePng(arguments.output, picture);
    const double writing = watch.lap();

    const StreamTimes streams = copyThroughStreams(*scene);

    const auto vertices = static_cast<double>(vertexCount(*scene));
    std::printf("%s: %u %s, %.0f vertices, %lld triangles\n", arguments.model.c_str(), scene->mNumMeshes,
                scene->mNumMeshes == 1 ? "mesh" : "meshes", vertices, static_cast<long long>(triangles));
    std::printf("centred and scaled, the bounds are right: (%g, %g, %g) to (%g, %g, %g)\n", double{after.low.x},
                double{after.low.y}, double{after.low.z}, double{after.high.x}, double{after.high.y},
                double{after.high.z});
    const double korm = centring + times.matrices + times.projecting + times.normals + times.picking;
    std::puts("korm:");
    row("centring and scaling", centring);
    row("world, view, projection, twice", times.matrices);
    row("projecting all vertices, twice", times.projecting);
    row("turning all normals, twice", times.normals);
    if (arguments.picks) row("finding the picked triangle", times.picking);
    std::printf("beside that, one call each for %zu of the vertices:\n", StreamTimes::points);
    row("to streams of x, y and z", streams.toStreams);
    row("and back", streams.back);
    std::puts("the rest:");
    row("reading the model (libassimp)", reading);
    row("starting OpenMP's threads, once", threads);
    row("drawing, with a depth buffer", drawing);
    row("writing the picture (libpng)", writing);
    const double all = korm + reading + threads + drawing + writing;
    std::printf("korm took %.3f of %.3f ms (%.1f %%), %.1f ns a vertex\n", korm / 1000, all / 1000, 100 * korm / all,
                1000 * korm / vertices);
    if (arguments.picks) sayPicked(*scene, frame, arguments, picked);
    std::printf("picture: %s, %d by %d\n", arguments.output.c_str(), picture.width, picture.height);
}

Arguments parse(int argc, char** argv) {
    Arguments arguments;
    for (int i = 1; i < argc;) {
        const std::string name = argv[i];
        const char* const value = i + 1 < argc ? argv[i + 1] : "";
        if (const int taken = takeCameraOption(name, value, arguments.camera); taken > 0) {
            i += taken;
        } else if (name == "--output") {
            arguments.output = value;
            if (arguments.output.empty()) throw Failure("--output takes a file name");
            i += 2;
        } else if (name == "--pick") {
            if (!parsePair(value, ',', arguments.pickX, arguments.pickY))
                throw Failure("--pick takes a pixel, as in 400,300");
            arguments.picks = true;
            i += 2;
        } else if (name.empty() || name[0] == '-' || !arguments.model.empty()) {
            throw Failure("can't make sense of '" + name + "'\n" + usage);
        } else {
            arguments.model = name;
            ++i;
        }
    }
    if (arguments.model.empty()) throw Failure(std::string("no model given\n") + usage);
    if (arguments.pickX >= arguments.camera.width || arguments.pickY >= arguments.camera.height)
        throw Failure("--pick names a pixel outside of the picture");
    return arguments;
}

}  // namespace

int main(int argc, char** argv) {
    return runProgram("render_mesh", usage, argc, argv, [](int count, char** words) { run(parse(count, words)); });
}
