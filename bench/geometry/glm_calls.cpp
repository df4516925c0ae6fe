// GLM behind calls of a library of its own, as korm is: arrays of floats in and out. Columns of GLM are rows of korm: the same
// 16 floats, with the factors of a product exchanged.
#include "calls.h"

#define GLM_ENABLE_EXPERIMENTAL
#include <cstring>
#include <glm/glm.hpp>
#include <glm/gtc/matrix_transform.hpp>
#include <glm/gtc/type_ptr.hpp>
#include <glm/gtx/euler_angles.hpp>
#include <glm/gtx/spline.hpp>

// Visible, so that a call goes over the linker's table even from here, and isn't inlined.
namespace glmCalls {
namespace {

template <class Value>
Value get(const float* from) {
    Value value;
    std::memcpy(&value, from, sizeof value);
    return value;
}

template <class Value>
void put(float* to, const Value& value) {
    std::memcpy(to, &value, sizeof value);
}

using glm::mat4;
using glm::vec2;
using glm::vec3;
using glm::vec4;

template <class V>
V bary(const float* a, const float* b, const float* c, float f, float g) {
    return (1.0F - f - g) * get<V>(a) + f * get<V>(b) + g * get<V>(c);
}

}  // namespace

void empty() {}

void Add_v2(const float* a, const float* b, float* d) { put(d, get<vec2>(a) + get<vec2>(b)); }
void Add_v3(const float* a, const float* b, float* d) { put(d, get<vec3>(a) + get<vec3>(b)); }
void Add_v4(const float* a, const float* b, float* d) { put(d, get<vec4>(a) + get<vec4>(b)); }
void Sub_v3(const float* a, const float* b, float* d) { put(d, get<vec3>(a) - get<vec3>(b)); }
void Min_v3(const float* a, const float* b, float* d) { put(d, glm::min(get<vec3>(a), get<vec3>(b))); }
void Max_v4(const float* a, const float* b, float* d) { put(d, glm::max(get<vec4>(a), get<vec4>(b))); }
void MulC_v2(const float* a, float factor, float* d) { put(d, get<vec2>(a) * factor); }
void MulC_v3(const float* a, float factor, float* d) { put(d, get<vec3>(a) * factor); }
void MulC_v4(const float* a, float factor, float* d) { put(d, get<vec4>(a) * factor); }
void DotProduct_v2(const float* a, const float* b, float* d) { *d = glm::dot(get<vec2>(a), get<vec2>(b)); }
void DotProduct_v3(const float* a, const float* b, float* d) { *d = glm::dot(get<vec3>(a), get<vec3>(b)); }
void DotProduct_v4(const float* a, const float* b, float* d) { *d = glm::dot(get<vec4>(a), get<vec4>(b)); }
void LenSqr_v3(const float* a, float* d) { *d = glm::dot(get<vec3>(a), get<vec3>(a)); }
void Len_v2(const float* a, float* d) { *d = glm::length(get<vec2>(a)); }
void Len_v3(const float* a, float* d) { *d = glm::length(get<vec3>(a)); }
void Len_v4(const float* a, float* d) { *d = glm::length(get<vec4>(a)); }
void Normalize_v2(const float* a, float* d) { put(d, glm::normalize(get<vec2>(a))); }
void Normalize_v3(const float* a, float* d) { put(d, glm::normalize(get<vec3>(a))); }
void Normalize_v4(const float* a, float* d) { put(d, glm::normalize(get<vec4>(a))); }
void CrossProduct_v2(const float* a, const float* b, float* d) {
    *d = glm::determinant(glm::mat2(get<vec2>(a), get<vec2>(b)));
}
void CrossProduct_v3(const float* a, const float* b, float* d) { put(d, glm::cross(get<vec3>(a), get<vec3>(b))); }

void Identity_m4(float* d) { put(d, mat4(1)); }
void Translation_m4(float x, float y, float z, float* d) { put(d, glm::translate(mat4(1), vec3(x, y, z))); }
void Scaling_m4(float x, float y, float z, float* d) { put(d, glm::scale(mat4(1), vec3(x, y, z))); }
void RotationX_m4(float angle, float* d) { put(d, glm::eulerAngleX(angle)); }
void RotationY_m4(float angle, float* d) { put(d, glm::eulerAngleY(angle)); }
void RotationZ_m4(float angle, float* d) { put(d, glm::eulerAngleZ(angle)); }
void RotationYawPitchRoll_m4(float yaw, float pitch, float roll, float* d) {
    put(d, glm::yawPitchRoll(yaw, pitch, roll));
}
void RotationAxis_v3m4(const float* axis, float angle, float* d) {
    put(d, glm::rotate(mat4(1), angle, get<vec3>(axis)));
}
void LookAtLH_m4(const float* eye, const float* at, const float* up, float* d) {
    put(d, glm::lookAtLH(get<vec3>(eye), get<vec3>(at), get<vec3>(up)));
}
void LookAtRH_m4(const float* eye, const float* at, const float* up, float* d) {
    put(d, glm::lookAtRH(get<vec3>(eye), get<vec3>(at), get<vec3>(up)));
}
void OrthoLH_m4(float width, float height, float zNear, float zFar, float* d) {
    put(d, glm::orthoLH_ZO(-0.5F * width, 0.5F * width, -0.5F * height, 0.5F * height, zNear, zFar));
}
void OrthoOffCenterRH_m4(float left, float right, float bottom, float top, float zNear, float zFar, float* d) {
    put(d, glm::orthoRH_ZO(left, right, bottom, top, zNear, zFar));
}
void PerspectiveLH_m4(float width, float height, float zNear, float zFar, float* d) {
    put(d, glm::frustumLH_ZO(-0.5F * width, 0.5F * width, -0.5F * height, 0.5F * height, zNear, zFar));
}
void PerspectiveFovLH_m4(float fovY, float aspect, float zNear, float zFar, float* d) {
    put(d, glm::perspectiveLH_ZO(fovY, aspect, zNear, zFar));
}
void PerspectiveFovRH_m4(float fovY, float aspect, float zNear, float zFar, float* d) {
    put(d, glm::perspectiveRH_ZO(fovY, aspect, zNear, zFar));
}
void PerspectiveOffCenterRH_m4(float left, float right, float bottom, float top, float zNear, float zFar, float* d) {
    put(d, glm::frustumRH_ZO(left, right, bottom, top, zNear, zFar));
}
void Det_m4(const float* m, float* d) { *d = glm::determinant(get<mat4>(m)); }
void Invert_m4(const float* m, float* d) { put(d, glm::inverse(get<mat4>(m))); }
void Transpose_m4(const float* m, float* d) { put(d, glm::transpose(get<mat4>(m))); }
void Mul_mm4x4(const float* a, const float* b, float* d) { put(d, get<mat4>(b) * get<mat4>(a)); }
void MulTranspose_m4(const float* a, const float* b, float* d) { put(d, glm::transpose(get<mat4>(b) * get<mat4>(a))); }
void AffineTransform_m4v2(const float* m, const float* v, float* d) { put(d, get<mat4>(m) * vec4(get<vec2>(v), 0, 1)); }
void AffineTransform_m4v3(const float* m, const float* v, float* d) { put(d, get<mat4>(m) * vec4(get<vec3>(v), 1)); }
void AffineTransform_m4v4(const float* m, const float* v, float* d) { put(d, get<mat4>(m) * get<vec4>(v)); }
void AffineTransformCoord_m4v2(const float* m, const float* v, float* d) {
    const vec4 p = get<mat4>(m) * vec4(get<vec2>(v), 0, 1);
    put(d, vec2(p) / p.w);
}
void AffineTransformCoord_m4v3(const float* m, const float* v, float* d) {
    const vec4 p = get<mat4>(m) * vec4(get<vec3>(v), 1);
    put(d, vec3(p) / p.w);
}
void AffineTransformNormal_m4v2(const float* m, const float* v, float* d) {
    put(d, glm::mat2(get<mat4>(m)) * get<vec2>(v));
}
void AffineTransformNormal_m4v3(const float* m, const float* v, float* d) {
    put(d, glm::mat3(get<mat4>(m)) * get<vec3>(v));
}

void BaryCentric_v3(const float* a, const float* b, const float* c, float f, float g, float* d) {
    put(d, bary<vec3>(a, b, c, f, g));
}
void BaryCentric_v4(const float* a, const float* b, const float* c, float f, float g, float* d) {
    put(d, bary<vec4>(a, b, c, f, g));
}
void InterpolationLinear_v2(const float* a, const float* b, float t, float* d) {
    put(d, glm::mix(get<vec2>(a), get<vec2>(b), t));
}
void InterpolationLinear_v3(const float* a, const float* b, float t, float* d) {
    put(d, glm::mix(get<vec3>(a), get<vec3>(b), t));
}
void InterpolationLinear_v4(const float* a, const float* b, float t, float* d) {
    put(d, glm::mix(get<vec4>(a), get<vec4>(b), t));
}
void Hermite_v2(const float* a, const float* b, const float* c, const float* d, float t, float* to) {
    put(to, glm::hermite(get<vec2>(a), get<vec2>(b), get<vec2>(c), get<vec2>(d), t));
}
void Hermite_v3(const float* a, const float* b, const float* c, const float* d, float t, float* to) {
    put(to, glm::hermite(get<vec3>(a), get<vec3>(b), get<vec3>(c), get<vec3>(d), t));
}
void Hermite_v4(const float* a, const float* b, const float* c, const float* d, float t, float* to) {
    put(to, glm::hermite(get<vec4>(a), get<vec4>(b), get<vec4>(c), get<vec4>(d), t));
}
void InterpolationCatmullRom_v2(const float* a, const float* b, const float* c, const float* d, float t, float* to) {
    put(to, glm::catmullRom(get<vec2>(a), get<vec2>(b), get<vec2>(c), get<vec2>(d), t));
}
void InterpolationCatmullRom_v3(const float* a, const float* b, const float* c, const float* d, float t, float* to) {
    put(to, glm::catmullRom(get<vec3>(a), get<vec3>(b), get<vec3>(c), get<vec3>(d), t));
}
void InterpolationCatmullRom_v4(const float* a, const float* b, const float* c, const float* d, float t, float* to) {
    put(to, glm::catmullRom(get<vec4>(a), get<vec4>(b), get<vec4>(c), get<vec4>(d), t));
}

}  // namespace glmCalls

#define LOOP(NAME) \
    { #NAME, each < glmCalls::NAME> }

const bench::CallLoops& bench::glmCallLoops() {
    static const CallLoops loops = {LOOP(empty),
                                    LOOP(Add_v2),
                                    LOOP(Add_v3),
                                    LOOP(Add_v4),
                                    LOOP(Sub_v3),
                                    LOOP(Min_v3),
                                    LOOP(Max_v4),
                                    LOOP(MulC_v2),
                                    LOOP(MulC_v3),
                                    LOOP(MulC_v4),
                                    LOOP(DotProduct_v2),
                                    LOOP(DotProduct_v3),
                                    LOOP(DotProduct_v4),
                                    LOOP(LenSqr_v3),
                                    LOOP(Len_v2),
                                    LOOP(Len_v3),
                                    LOOP(Len_v4),
                                    LOOP(Normalize_v2),
                                    LOOP(Normalize_v3),
                                    LOOP(Normalize_v4),
                                    LOOP(CrossProduct_v2),
                                    LOOP(CrossProduct_v3),
                                    LOOP(Identity_m4),
                                    LOOP(Translation_m4),
                                    LOOP(Scaling_m4),
                                    LOOP(RotationX_m4),
                                    LOOP(RotationY_m4),
                                    LOOP(RotationZ_m4),
                                    LOOP(RotationYawPitchRoll_m4),
                                    LOOP(RotationAxis_v3m4),
                                    LOOP(LookAtLH_m4),
                                    LOOP(LookAtRH_m4),
                                    LOOP(OrthoLH_m4),
                                    LOOP(OrthoOffCenterRH_m4),
                                    LOOP(PerspectiveLH_m4),
                                    LOOP(PerspectiveFovLH_m4),
                                    LOOP(PerspectiveFovRH_m4),
                                    LOOP(PerspectiveOffCenterRH_m4),
                                    LOOP(Det_m4),
                                    LOOP(Invert_m4),
                                    LOOP(Transpose_m4),
                                    LOOP(Mul_mm4x4),
                                    LOOP(MulTranspose_m4),
                                    LOOP(AffineTransform_m4v2),
                                    LOOP(AffineTransform_m4v3),
                                    LOOP(AffineTransform_m4v4),
                                    LOOP(AffineTransformCoord_m4v2),
                                    LOOP(AffineTransformCoord_m4v3),
                                    LOOP(AffineTransformNormal_m4v2),
                                    LOOP(AffineTransformNormal_m4v3),
                                    LOOP(BaryCentric_v3),
                                    LOOP(BaryCentric_v4),
                                    LOOP(InterpolationLinear_v2),
                                    LOOP(InterpolationLinear_v3),
                                    LOOP(InterpolationLinear_v4),
                                    LOOP(Hermite_v2),
                                    LOOP(Hermite_v3),
                                    LOOP(Hermite_v4),
                                    LOOP(InterpolationCatmullRom_v2),
                                    LOOP(InterpolationCatmullRom_v3),
                                    LOOP(InterpolationCatmullRom_v4)};
    return loops;
}
