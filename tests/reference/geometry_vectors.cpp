#include <cfloat>
#include <cmath>

#include "geometry.h"

namespace kormtest::fixed {

// The comparison is to the bit: no wider intermediate results.
static_assert(FLT_EVAL_METHOD == 0);

template <int n>
void vectorSum(const Inputs& in, Outcome& out) {
    for (std::size_t i = 0; i < n; ++i) out.dst[i] = in[0][i] + in[1][i];
}

template <int n>
void vectorDifference(const Inputs& in, Outcome& out) {
    for (std::size_t i = 0; i < n; ++i) out.dst[i] = in[0][i] - in[1][i];
}

// A comparison with a NaN fails, so that the second operand's element is taken.
template <int n>
void vectorMinimum(const Inputs& in, Outcome& out) {
    for (std::size_t i = 0; i < n; ++i) out.dst[i] = in[0][i] < in[1][i] ? in[0][i] : in[1][i];
}

template <int n>
void vectorMaximum(const Inputs& in, Outcome& out) {
    for (std::size_t i = 0; i < n; ++i) out.dst[i] = in[0][i] > in[1][i] ? in[0][i] : in[1][i];
}

template <int n>
void vectorScaled(const Inputs& in, Outcome& out) {
    for (std::size_t i = 0; i < n; ++i) out.dst[i] = in[0][i] * in[1][0];
}

namespace {

template <int n>
float sumOfProducts(const std::vector<float>& a, const std::vector<float>& b) {
    float sum = a[0] * b[0];
    for (std::size_t i = 1; i < n; ++i) {
        const float product = a[i] * b[i];
        sum = sum + product;
    }
    return sum;
}

// The sum of squares is complete, in single precision, before anything is widened.
template <int n>
float lengthOf(const std::vector<float>& a) {
    const float square = sumOfProducts<n>(a, a);
    return static_cast<float>(std::sqrt(static_cast<double>(square)));
}

}  // namespace

template <int n>
void dotProduct(const Inputs& in, Outcome& out) {
    out.dst[0] = sumOfProducts<n>(in[0], in[1]);
}

template <int n>
void squaredLength(const Inputs& in, Outcome& out) {
    out.dst[0] = sumOfProducts<n>(in[0], in[0]);
}

template <int n>
void length(const Inputs& in, Outcome& out) {
    out.dst[0] = lengthOf<n>(in[0]);
}

template <int n>
void normalized(const Inputs& in, Outcome& out) {
    const float size = lengthOf<n>(in[0]);
    for (std::size_t i = 0; i < n; ++i) out.dst[i] = in[0][i] / size;
}

void crossProduct2(const Inputs& in, Outcome& out) {
    const auto &a = in[0], &b = in[1];
    out.dst[0] = a[0] * b[1] - a[1] * b[0];
}

void crossProduct3(const Inputs& in, Outcome& out) {
    const auto &a = in[0], &b = in[1];
    out.dst[0] = a[1] * b[2] - a[2] * b[1];
    out.dst[1] = a[2] * b[0] - a[0] * b[2];
    out.dst[2] = a[0] * b[1] - a[1] * b[0];
}

void crossProduct4(const Inputs& in, Outcome& out) {
    const auto &u = in[0], &v = in[1], &w = in[2];
    const float p = v[2] * w[3] - v[3] * w[2];
    const float q = w[3] * v[1] - v[3] * w[1];
    const float r = w[2] * v[1] - v[2] * w[1];
    const float s = w[3] * v[0] - v[3] * w[0];
    const float t = w[2] * v[0] - v[2] * w[0];
    const float x = w[1] * v[0] - v[1] * w[0];
    out.dst[0] = (p * u[1] - q * u[2]) + r * u[3];
    out.dst[1] = 0.0F - ((p * u[0] - s * u[2]) + t * u[3]);
    out.dst[2] = (q * u[0] - s * u[1]) + x * u[3];
    out.dst[3] = 0.0F - ((r * u[0] - t * u[1]) + x * u[2]);
}

template <int n>
void baryCentric(const Inputs& in, Outcome& out) {
    const float f = in[3][0], g = in[4][0];
    for (std::size_t i = 0; i < n; ++i) {
        const float a = in[0][i], b = in[1][i], c = in[2][i];
        const float first = (b - a) * f + a;
        out.dst[i] = first + (c - a) * g;
    }
}

template <int n>
void linear(const Inputs& in, Outcome& out) {
    const float t = in[2][0];
    for (std::size_t i = 0; i < n; ++i) out.dst[i] = in[0][i] + (in[1][i] - in[0][i]) * t;
}

namespace {

// Start point a, tangent b, end point c, tangent d.
float hermiteElement(float a, float b, float c, float d, float t) {
    const float t2 = t * t;
    const float t3 = t2 * t;
    const double wide = t, wide2 = t2, wide3 = t3;
    double sum = wide - wide2;
    sum = sum - wide2;
    sum = sum + wide3;
    const auto h1 = static_cast<float>(sum);
    const double triple = 3.0 * wide2;
    sum = wide3 - triple;
    sum = sum + wide3;
    const auto h2 = static_cast<float>(sum);
    const auto h3 = static_cast<float>(wide3 - wide2);
    const float left = (a - c) * h2;
    const float right = (a + b * h1) + d * h3;
    return left + right;
}

}  // namespace

template <int n>
void hermite(const Inputs& in, Outcome& out) {
    for (std::size_t i = 0; i < n; ++i) out.dst[i] = hermiteElement(in[0][i], in[1][i], in[2][i], in[3][i], in[4][0]);
}

template <int n>
void catmullRom(const Inputs& in, Outcome& out) {
    for (std::size_t i = 0; i < n; ++i) {
        const float a = in[0][i], b = in[1][i], c = in[2][i], d = in[3][i];
        const float tangentAtStart = (c - a) * 0.5F;
        const float tangentAtEnd = (d - b) * 0.5F;
        out.dst[i] = hermiteElement(b, tangentAtStart, c, tangentAtEnd, in[4][0]);
    }
}

#define INSTANTIATE(function)                           \
    template void function<2>(const Inputs&, Outcome&); \
    template void function<3>(const Inputs&, Outcome&); \
    template void function<4>(const Inputs&, Outcome&);
INSTANTIATE(vectorSum)
INSTANTIATE(vectorDifference)
INSTANTIATE(vectorMinimum)
INSTANTIATE(vectorMaximum)
INSTANTIATE(vectorScaled)
INSTANTIATE(dotProduct)
INSTANTIATE(squaredLength)
INSTANTIATE(length)
INSTANTIATE(normalized)
INSTANTIATE(baryCentric)
INSTANTIATE(linear)
INSTANTIATE(hermite)
INSTANTIATE(catmullRom)
#undef INSTANTIATE

}  // namespace kormtest::fixed
