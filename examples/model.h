// What the examples share: a model as libassimp reads it, its bounds, and the korm calls that centre and scale it.
#pragma once

#include <assimp/scene.h>

#include <chrono>
#include <cstdint>
#include <memory>
#include <stdexcept>
#include <string>

namespace example {

// Something that the user should be told and that ends the program.
class Failure : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

// A program's main: prints `usage` if the words ask for help, else does the work. What fails is told under the program's name.
int runProgram(const char* name, const char* usage, int argc, char** argv, void (*work)(int argc, char** argv));

static_assert(sizeof(ai_real) == sizeof(float), "korm's 32f calls need a libassimp with single precision");
inline constexpr auto vertexStride = static_cast<std::int32_t>(sizeof(aiVector3D));
inline constexpr auto elementStride = static_cast<std::int32_t>(sizeof(float));
inline constexpr std::int32_t coordinates = 3;

// Reads any format of libassimp; `steps` are its aiProcess flags. All meshes share one space: transforms of nodes are
// applied while loading.
std::unique_ptr<aiScene> readModel(const std::string& name, unsigned steps = 0);

std::uint64_t vertexCount(const aiScene& scene);

struct Bounds {
    aiVector3D low, high;

    // Halves first: a sum of two large coordinates could overflow.
    aiVector3D center() const { return low * 0.5F + high * 0.5F; }
    float longestSide() const;
    float largestCoordinate() const;
};

Bounds boundsOf(const aiScene& scene);

// The factor that gives the longest side its length; fails for a model without an extent.
float scaleTo(float side, const Bounds& bounds, const std::string& name);

// Two calls, in place, on the vertices where libassimp put them. Returns korm's status.
std::int32_t centerAndScale(aiMesh& mesh, const aiVector3D& center, float scale);

// Are the bounds where they should be? Fails if not, else tells how far they are off and how far they may be.
struct BoundsCheck {
    float offCenter, offSide, tolerance;
};
BoundsCheck checkBounds(const Bounds& before, const Bounds& after, float side, float scale, const std::string& name);

inline double microsecondsSince(std::chrono::steady_clock::time_point start) {
    return std::chrono::duration<double, std::micro>(std::chrono::steady_clock::now() - start).count();
}

// The first call of a program that is large enough to be split also starts OpenMP's threads. That takes a millisecond or
// more, once, so it is done, and told, apart from the work. Returns microseconds.
double startThreads();

}  // namespace example
