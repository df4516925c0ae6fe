// The functions of fixed size, from their definitions: scalar code, one rounded operation at a time, in the order given.
//
// A reference maps values to values. Where they lie, and how often it is done, is the business of its caller.
#pragma once

#include <array>
#include <cstdint>
#include <vector>

namespace kormtest {

// The inputs in the order of the argument list: 2, 3, 4 or 16 elements of each pointer, one of each constant.
using Inputs = std::vector<std::vector<float>>;

struct Outcome {
    std::int32_t status = 0;
    bool writesDst = true;
    std::array<float, 16> dst{};
    float det = 0;             // of the one function with a second output
    std::int32_t integer = 0;  // of the one function whose dst is a 32-bit integer
    // Where the definition leaves an order of operations open: by how much each element of dst may differ.
    std::array<double, 16> slack{};
    bool eitherStatus = false;  // ... and whether rounding decides between success and korStatusSingular
};

using GeometryReference = void (*)(const Inputs& in, Outcome& out);

namespace fixed {

// --- Vectors (n = 2, 3, 4) ---
template <int n>
void vectorSum(const Inputs& in, Outcome& out);
template <int n>
void vectorDifference(const Inputs& in, Outcome& out);
template <int n>
void vectorMinimum(const Inputs& in, Outcome& out);
template <int n>
void vectorMaximum(const Inputs& in, Outcome& out);
template <int n>
void vectorScaled(const Inputs& in, Outcome& out);
template <int n>
void dotProduct(const Inputs& in, Outcome& out);
template <int n>
void squaredLength(const Inputs& in, Outcome& out);
template <int n>
void length(const Inputs& in, Outcome& out);
template <int n>
void normalized(const Inputs& in, Outcome& out);
void crossProduct2(const Inputs& in, Outcome& out);
void crossProduct3(const Inputs& in, Outcome& out);
void crossProduct4(const Inputs& in, Outcome& out);

// --- Curves (n = 2, 3, 4) ---
template <int n>
void baryCentric(const Inputs& in, Outcome& out);
template <int n>
void linear(const Inputs& in, Outcome& out);
template <int n>
void hermite(const Inputs& in, Outcome& out);
template <int n>
void catmullRom(const Inputs& in, Outcome& out);

// --- Constructors of 4x4 matrices ---
void identity(const Inputs& in, Outcome& out);
void translation(const Inputs& in, Outcome& out);
void scaling(const Inputs& in, Outcome& out);
void rotationX(const Inputs& in, Outcome& out);
void rotationY(const Inputs& in, Outcome& out);
void rotationZ(const Inputs& in, Outcome& out);
void rotationYawPitchRoll(const Inputs& in, Outcome& out);
void rotationAxis(const Inputs& in, Outcome& out);
void lookAtLH(const Inputs& in, Outcome& out);
void lookAtRH(const Inputs& in, Outcome& out);
void orthoLH(const Inputs& in, Outcome& out);
void orthoRH(const Inputs& in, Outcome& out);
void orthoOffCenterLH(const Inputs& in, Outcome& out);
void orthoOffCenterRH(const Inputs& in, Outcome& out);
void perspectiveLH(const Inputs& in, Outcome& out);
void perspectiveRH(const Inputs& in, Outcome& out);
void perspectiveFovLH(const Inputs& in, Outcome& out);
void perspectiveFovRH(const Inputs& in, Outcome& out);
void perspectiveOffCenterLH(const Inputs& in, Outcome& out);
void perspectiveOffCenterRH(const Inputs& in, Outcome& out);

// --- Algebra of 4x4 matrices ---
void determinant(const Inputs& in, Outcome& out);
void inverse(const Inputs& in, Outcome& out);
void transpose(const Inputs& in, Outcome& out);
void product(const Inputs& in, Outcome& out);
void transposedProduct(const Inputs& in, Outcome& out);
void identityTest(const Inputs& in, Outcome& out);

// --- Transforms and projection: one vector ---
void affine2(const Inputs& in, Outcome& out);
void affine3(const Inputs& in, Outcome& out);
void affine4(const Inputs& in, Outcome& out);
void affineCoord2(const Inputs& in, Outcome& out);
void affineCoord3(const Inputs& in, Outcome& out);
void affineNormal2(const Inputs& in, Outcome& out);
void affineNormal3(const Inputs& in, Outcome& out);
void project(const Inputs& in, Outcome& out);         // matrix after matrix
void projectOfBatch(const Inputs& in, Outcome& out);  // through the product of the matrices
void unproject(const Inputs& in, Outcome& out);
// The homogeneous transform; in[0] holds A(r, c) at 4 * r + c.
void homogeneous(const Inputs& in, Outcome& out);

}  // namespace fixed

}  // namespace kormtest
