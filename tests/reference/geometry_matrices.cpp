#include <emmintrin.h>

#include <cmath>

#include "geometry.h"

namespace kormtest::fixed {

// --- Constructors. Elements that aren't named are +0, which they are from the start. ---

void identity(const Inputs&, Outcome& out) {
    auto& m = out.dst;
    m[0] = m[5] = m[10] = m[15] = 1;
}

void translation(const Inputs& in, Outcome& out) {
    auto& m = out.dst;
    m[0] = m[5] = m[10] = m[15] = 1;
    m[12] = in[0][0];
    m[13] = in[1][0];
    m[14] = in[2][0];
}

void scaling(const Inputs& in, Outcome& out) {
    auto& m = out.dst;
    m[0] = in[0][0];
    m[5] = in[1][0];
    m[10] = in[2][0];
    m[15] = 1;
}

void rotationX(const Inputs& in, Outcome& out) {
    const float s = sinf(in[0][0]), c = cosf(in[0][0]);
    auto& m = out.dst;
    m[0] = 1;
    m[5] = c;
    m[6] = s;
    m[9] = 0.0F - s;
    m[10] = c;
    m[15] = 1;
}

void rotationY(const Inputs& in, Outcome& out) {
    const float s = sinf(in[0][0]), c = cosf(in[0][0]);
    auto& m = out.dst;
    m[0] = c;
    m[2] = 0.0F - s;
    m[5] = 1;
    m[8] = s;
    m[10] = c;
    m[15] = 1;
}

void rotationZ(const Inputs& in, Outcome& out) {
    const float s = sinf(in[0][0]), c = cosf(in[0][0]);
    auto& m = out.dst;
    m[0] = c;
    m[1] = s;
    m[4] = 0.0F - s;
    m[5] = c;
    m[10] = 1;
    m[15] = 1;
}

void rotationYawPitchRoll(const Inputs& in, Outcome& out) {
    const float yaw = in[0][0], pitch = in[1][0], roll = in[2][0];
    const float sy = sinf(yaw), cy = cosf(yaw);
    const float sp = sinf(pitch), cp = cosf(pitch);
    const float sr = sinf(roll), cr = cosf(roll);
    const float t = sy * sp, u = sp * cy;
    auto& m = out.dst;
    m[0] = sr * t + cy * cr;
    m[1] = sr * cp;
    m[2] = sr * u - sy * cr;
    m[4] = t * cr - cy * sr;
    m[5] = cr * cp;
    m[6] = sy * sr + cr * u;
    m[8] = sy * cp;
    m[9] = 0.0F - sp;
    m[10] = cy * cp;
    m[15] = 1;
}

void rotationAxis(const Inputs& in, Outcome& out) {
    const float x = in[0][0], y = in[0][1], z = in[0][2];
    const float squares = (x * x + y * y) + z * z;
    // The root in single precision, unlike that of a normalised vector.
    const float size = _mm_cvtss_f32(_mm_sqrt_ss(_mm_set_ss(squares)));
    const float ux = x / size, uy = y / size, uz = z / size;
    const float s = sinf(in[1][0]), c = cosf(in[1][0]);
    const float w = 1.0F - c;
    const float a = w * ux, b = w * uy, e = w * uz;
    const float sx = s * ux, sy = s * uy, sz = s * uz;
    auto& m = out.dst;
    m[0] = a * ux + c;
    m[1] = b * ux + sz;
    m[2] = e * ux - sy;
    m[4] = a * uy - sz;
    m[5] = b * uy + c;
    m[6] = uy * e + sx;
    m[8] = sy + a * uz;
    m[9] = b * uz - sx;
    m[10] = c + uz * e;
    m[15] = 1;
}

namespace {

std::vector<float> apply(GeometryReference reference, const Inputs& in, std::size_t size) {
    Outcome out;
    reference(in, out);
    return {out.dst.begin(), out.dst.begin() + static_cast<std::ptrdiff_t>(size)};
}

// from, to: the direction of view.
void lookAlong(const std::vector<float>& from, const std::vector<float>& to, const std::vector<float>& eye,
               const std::vector<float>& up, Outcome& out) {
    const auto z = apply(normalized<3>, {apply(vectorDifference<3>, {to, from}, 3)}, 3);
    const auto x = apply(normalized<3>, {apply(crossProduct3, {up, z}, 3)}, 3);
    const auto y = apply(crossProduct3, {z, x}, 3);
    auto& m = out.dst;
    for (std::size_t i = 0; i < 3; ++i) {
        m[4 * i] = x[i];
        m[4 * i + 1] = y[i];
        m[4 * i + 2] = z[i];
    }
    m[12] = 0.0F - apply(dotProduct<3>, {x, eye}, 1)[0];
    m[13] = 0.0F - apply(dotProduct<3>, {y, eye}, 1)[0];
    m[14] = 0.0F - apply(dotProduct<3>, {z, eye}, 1)[0];
    m[15] = 1;
}

}  // namespace

void lookAtLH(const Inputs& in, Outcome& out) { lookAlong(in[0], in[1], in[0], in[2], out); }
void lookAtRH(const Inputs& in, Outcome& out) { lookAlong(in[1], in[0], in[0], in[2], out); }

void orthoLH(const Inputs& in, Outcome& out) {
    const float viewWidth = in[0][0], viewHeight = in[1][0], zNear = in[2][0], zFar = in[3][0];
    auto& m = out.dst;
    m[0] = 2.0F / viewWidth;
    m[5] = 2.0F / viewHeight;
    m[10] = 1.0F / (zFar - zNear);
    m[14] = zNear / (0.0F - (zFar - zNear));
    m[15] = 1;
}

void orthoRH(const Inputs& in, Outcome& out) {
    const float viewWidth = in[0][0], viewHeight = in[1][0], zNear = in[2][0], zFar = in[3][0];
    auto& m = out.dst;
    m[0] = 2.0F / viewWidth;
    m[5] = 2.0F / viewHeight;
    m[10] = 1.0F / (zNear - zFar);
    m[14] = zNear / (zNear - zFar);
    m[15] = 1;
}

void orthoOffCenterLH(const Inputs& in, Outcome& out) {
    const float left = in[0][0], right = in[1][0], bottom = in[2][0], top = in[3][0], zNear = in[4][0], zFar = in[5][0];
    auto& m = out.dst;
    m[0] = 2.0F / (right - left);
    m[5] = 2.0F / (top - bottom);
    m[10] = 1.0F / (zFar - zNear);
    m[12] = (left + right) / (0.0F - (right - left));
    m[13] = (bottom + top) / (0.0F - (top - bottom));
    m[14] = zNear / (0.0F - (zFar - zNear));
    m[15] = 1;
}

void orthoOffCenterRH(const Inputs& in, Outcome& out) {
    const float left = in[0][0], right = in[1][0], bottom = in[2][0], top = in[3][0], zNear = in[4][0], zFar = in[5][0];
    auto& m = out.dst;
    m[0] = 2.0F / (right - left);
    m[5] = 2.0F / (top - bottom);
    m[10] = 1.0F / (zNear - zFar);
    m[12] = (left + right) / (0.0F - (right - left));
    m[13] = (bottom + top) / (0.0F - (top - bottom));
    m[14] = zNear / (zNear - zFar);
    m[15] = 1;
}

void perspectiveLH(const Inputs& in, Outcome& out) {
    const float viewWidth = in[0][0], viewHeight = in[1][0], zNear = in[2][0], zFar = in[3][0];
    auto& m = out.dst;
    m[0] = (zNear + zNear) / viewWidth;
    m[5] = (zNear + zNear) / viewHeight;
    m[10] = zFar / (zFar - zNear);
    m[11] = 1;
    m[14] = (zNear * zFar) / (0.0F - (zFar - zNear));
}

void perspectiveRH(const Inputs& in, Outcome& out) {
    const float viewWidth = in[0][0], viewHeight = in[1][0], zNear = in[2][0], zFar = in[3][0];
    auto& m = out.dst;
    m[0] = (zNear + zNear) / viewWidth;
    m[5] = (zNear + zNear) / viewHeight;
    m[10] = zFar / (zNear - zFar);
    m[11] = -1;
    m[14] = (zNear * zFar) / (zNear - zFar);
}

namespace {

float cotangentOfHalf(float fovY) {
    const float a = fovY * 0.5F;
    const float c = cosf(a), s = sinf(a);
    return c / s;
}

}  // namespace

void perspectiveFovLH(const Inputs& in, Outcome& out) {
    const float aspect = in[1][0], zNear = in[2][0], zFar = in[3][0], h = cotangentOfHalf(in[0][0]);
    auto& m = out.dst;
    m[0] = h / aspect;
    m[5] = h;
    m[10] = zFar / (zFar - zNear);
    m[11] = 1;
    m[14] = (0.0F - zNear * zFar) / (zFar - zNear);
}

void perspectiveFovRH(const Inputs& in, Outcome& out) {
    const float aspect = in[1][0], zNear = in[2][0], zFar = in[3][0], h = cotangentOfHalf(in[0][0]);
    auto& m = out.dst;
    m[0] = h / aspect;
    m[5] = h;
    m[10] = zFar / (zNear - zFar);
    m[11] = -1;
    m[14] = (zNear * zFar) / (zNear - zFar);
}

void perspectiveOffCenterLH(const Inputs& in, Outcome& out) {
    const float left = in[0][0], right = in[1][0], bottom = in[2][0], top = in[3][0], zNear = in[4][0], zFar = in[5][0];
    auto& m = out.dst;
    m[0] = (zNear + zNear) / (right - left);
    m[5] = (zNear + zNear) / (top - bottom);
    m[8] = (left + right) / (0.0F - (right - left));
    m[9] = (bottom + top) / (0.0F - (top - bottom));
    m[10] = zFar / (zFar - zNear);
    m[11] = 1;
    m[14] = (zNear * zFar) / (0.0F - (zFar - zNear));
}

void perspectiveOffCenterRH(const Inputs& in, Outcome& out) {
    const float left = in[0][0], right = in[1][0], bottom = in[2][0], top = in[3][0], zNear = in[4][0], zFar = in[5][0];
    auto& m = out.dst;
    m[0] = (zNear + zNear) / (right - left);
    m[5] = (zNear + zNear) / (top - bottom);
    m[8] = (left + right) / (right - left);
    m[9] = (bottom + top) / (top - bottom);
    m[10] = zFar / (zNear - zFar);
    m[11] = -1;
    m[14] = (zNear * zFar) / (zNear - zFar);
}

// --- Algebra ---

void determinant(const Inputs& in, Outcome& out) {
    const auto& m = in[0];
    const float t23 = m[10] * m[15] - m[11] * m[14];
    const float t13 = m[9] * m[15] - m[11] * m[13];
    const float t12 = m[9] * m[14] - m[10] * m[13];
    const float t03 = m[8] * m[15] - m[11] * m[12];
    const float t02 = m[8] * m[14] - m[10] * m[12];
    const float t01 = m[8] * m[13] - m[9] * m[12];
    const float c0 = (t23 * m[5] - t13 * m[6]) + t12 * m[7];
    const float c1 = (t23 * m[4] - t03 * m[6]) + t02 * m[7];
    const float c2 = (t13 * m[4] - t03 * m[5]) + t01 * m[7];
    const float c3 = (t12 * m[4] - t02 * m[5]) + t01 * m[6];
    out.dst[0] = (c0 * m[0] - c1 * m[1]) + (c2 * m[2] - c3 * m[3]);
}

void inverse(const Inputs& in, Outcome& out) {
    const auto& m = in[0];
    const float p1 = m[6] * m[15], p2 = m[2] * m[11], p3 = m[10] * m[3], p4 = m[14] * m[7];
    const float p5 = m[13] * m[6], p6 = m[9] * m[2], p7 = m[1] * m[10], p8 = m[5] * m[14];
    const float p9 = m[5] * m[15], p10 = m[1] * m[11], p11 = m[13] * m[7], p12 = m[9] * m[3];
    const float c00 = m[10] * p9 + (m[11] * p5 + (m[9] * p4 - m[9] * p1) - m[11] * p8) - m[10] * p11;
    const float c01 = m[14] * p10 + (m[15] * p6 + (m[13] * p3 - m[13] * p2) - m[15] * p7) - m[14] * p12;
    const float c02 = m[2] * p11 + (m[3] * p8 + (m[1] * p1 - m[1] * p4) - m[3] * p5) - m[2] * p9;
    const float c03 = m[6] * p12 + (m[7] * p7 + (m[5] * p2 - m[5] * p3) - m[7] * p6) - m[6] * p10;
    const float d = m[12] * c03 + m[4] * c01 + (m[8] * c02 + m[0] * c00);
    // The limit is 2^-119.
    if (std::fabs(static_cast<double>(d)) < std::ldexp(1.0, -119)) {
        out.status = -195;
        out.writesDst = false;
        out.det = 0;
        return;
    }
    out.det = d;
    const float r0 = _mm_cvtss_f32(_mm_rcp_ss(_mm_set_ss(d)));
    const float square = r0 * r0;
    const float r = (r0 + r0) - d * square;
    const float q1 = m[4] * m[13], q2 = m[0] * m[9], q3 = m[8] * m[1], q4 = m[12] * m[5];
    const float q5 = m[4] * m[15], q6 = m[0] * m[11], q7 = m[8] * m[3], q8 = m[12] * m[7];
    const float q9 = m[2] * m[8], q10 = m[6] * m[12], q11 = m[14] * m[4], q12 = m[10] * m[0];
    const float c10 = m[11] * q11 + (m[10] * q8 + (p1 * m[8] - m[8] * p4 - m[10] * q5)) - m[11] * q10;
    const float c11 = m[15] * q12 + (m[14] * q7 + (p2 * m[12] - m[12] * p3 - m[14] * q6)) - m[15] * q9;
    const float c12 = m[3] * q10 + (m[2] * q5 + (p4 * m[0] - m[0] * p1 - m[2] * q8)) - m[3] * q11;
    const float c13 = m[7] * q9 + (m[6] * q6 + (p3 * m[4] - m[4] * p2 - m[6] * q7)) - m[7] * q12;
    const float c20 = m[9] * q5 + (m[11] * q4 - (m[11] * q1 + (p9 * m[8] - m[8] * p11))) - q8 * m[9];
    const float c21 = m[13] * q6 + (m[15] * q3 - (m[15] * q2 + (p10 * m[12] - m[12] * p12))) - q7 * m[13];
    const float c22 = m[1] * q8 + (m[3] * q1 - (m[3] * q4 + (p11 * m[0] - m[0] * p9))) - q5 * m[1];
    const float c23 = m[5] * q7 + (m[7] * q2 - (m[7] * q3 + (p12 * m[4] - m[4] * p10))) - q6 * m[5];
    const float c30 = m[9] * q10 + (m[10] * q1 - (p5 * m[8] - m[8] * p8) - q4 * m[10] - m[9] * q11);
    const float c31 = m[13] * q9 + (m[14] * q2 - (p6 * m[12] - m[12] * p7) - q3 * m[14] - m[13] * q12);
    const float c32 = m[1] * q11 + (m[2] * q4 - (p8 * m[0] - m[0] * p5) - q1 * m[2] - m[1] * q10);
    const float c33 = m[5] * q12 + (m[6] * q3 - (p7 * m[4] - m[4] * p6) - q2 * m[6] - m[5] * q9);
    const std::array<float, 16> c{c00, c01, c02, c03, c10, c11, c12, c13, c20, c21, c22, c23, c30, c31, c32, c33};
    for (std::size_t i = 0; i < 16; ++i) out.dst[i] = c[i] * r;
}

void transpose(const Inputs& in, Outcome& out) {
    for (std::size_t row = 0; row < 4; ++row)
        for (std::size_t column = 0; column < 4; ++column) out.dst[4 * column + row] = in[0][4 * row + column];
}

namespace {

float productElement(const std::vector<float>& a, const std::vector<float>& b, std::size_t row, std::size_t column) {
    float sum = a[4 * row] * b[column];
    for (std::size_t k = 1; k < 4; ++k) {
        const float term = a[4 * row + k] * b[4 * k + column];
        sum = sum + term;
    }
    return sum;
}

}  // namespace

void product(const Inputs& in, Outcome& out) {
    for (std::size_t row = 0; row < 4; ++row)
        for (std::size_t column = 0; column < 4; ++column)
            out.dst[4 * row + column] = productElement(in[0], in[1], row, column);
}

void transposedProduct(const Inputs& in, Outcome& out) {
    for (std::size_t row = 0; row < 4; ++row)
        for (std::size_t column = 0; column < 4; ++column)
            out.dst[4 * column + row] = productElement(in[0], in[1], row, column);
}

// Not what its name says: the first element and any one whole column suffice.
void identityTest(const Inputs& in, Outcome& out) {
    const auto& m = in[0];
    out.integer = 0;
    if (!(m[0] == 1)) return;
    for (std::size_t column = 0; column < 4; ++column) {
        bool same = true;
        for (std::size_t row = 0; row < 4; ++row) same = same && m[4 * row + column] == (row == column ? 1.0F : 0.0F);
        if (same) out.integer = 1;
    }
}

}  // namespace kormtest::fixed
