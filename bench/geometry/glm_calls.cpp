// Columns of GLM are rows of korm: the same 16 floats, with the factors of a product exchanged.
#include "glm_calls.h"

#define GLM_ENABLE_EXPERIMENTAL
#include <cstring>
#include <glm/glm.hpp>
#include <glm/gtc/matrix_transform.hpp>
#include <glm/gtc/type_ptr.hpp>
#include <glm/gtx/euler_angles.hpp>
#include <glm/gtx/spline.hpp>

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

void addV2(const float* a, const float* b, float* d) { put(d, get<vec2>(a) + get<vec2>(b)); }
void addV3(const float* a, const float* b, float* d) { put(d, get<vec3>(a) + get<vec3>(b)); }
void addV4(const float* a, const float* b, float* d) { put(d, get<vec4>(a) + get<vec4>(b)); }
void subV3(const float* a, const float* b, float* d) { put(d, get<vec3>(a) - get<vec3>(b)); }
void minV3(const float* a, const float* b, float* d) { put(d, glm::min(get<vec3>(a), get<vec3>(b))); }
void maxV4(const float* a, const float* b, float* d) { put(d, glm::max(get<vec4>(a), get<vec4>(b))); }
void scaleV2(const float* a, float factor, float* d) { put(d, get<vec2>(a) * factor); }
void scaleV3(const float* a, float factor, float* d) { put(d, get<vec3>(a) * factor); }
void scaleV4(const float* a, float factor, float* d) { put(d, get<vec4>(a) * factor); }
void dotV2(const float* a, const float* b, float* d) { *d = glm::dot(get<vec2>(a), get<vec2>(b)); }
void dotV3(const float* a, const float* b, float* d) { *d = glm::dot(get<vec3>(a), get<vec3>(b)); }
void dotV4(const float* a, const float* b, float* d) { *d = glm::dot(get<vec4>(a), get<vec4>(b)); }
void lenSqrV3(const float* a, float* d) { *d = glm::dot(get<vec3>(a), get<vec3>(a)); }
void lenV2(const float* a, float* d) { *d = glm::length(get<vec2>(a)); }
void lenV3(const float* a, float* d) { *d = glm::length(get<vec3>(a)); }
void lenV4(const float* a, float* d) { *d = glm::length(get<vec4>(a)); }
void normalizeV2(const float* a, float* d) { put(d, glm::normalize(get<vec2>(a))); }
void normalizeV3(const float* a, float* d) { put(d, glm::normalize(get<vec3>(a))); }
void normalizeV4(const float* a, float* d) { put(d, glm::normalize(get<vec4>(a))); }
void crossV2(const float* a, const float* b, float* d) { *d = glm::determinant(glm::mat2(get<vec2>(a), get<vec2>(b))); }
void crossV3(const float* a, const float* b, float* d) { put(d, glm::cross(get<vec3>(a), get<vec3>(b))); }

void identity(float* d) { put(d, mat4(1)); }
void translation(float x, float y, float z, float* d) { put(d, glm::translate(mat4(1), vec3(x, y, z))); }
void scaling(float x, float y, float z, float* d) { put(d, glm::scale(mat4(1), vec3(x, y, z))); }
void rotationX(float angle, float* d) { put(d, glm::eulerAngleX(angle)); }
void rotationY(float angle, float* d) { put(d, glm::eulerAngleY(angle)); }
void rotationZ(float angle, float* d) { put(d, glm::eulerAngleZ(angle)); }
void rotationYawPitchRoll(float yaw, float pitch, float roll, float* d) { put(d, glm::yawPitchRoll(yaw, pitch, roll)); }
void rotationAxis(const float* axis, float angle, float* d) { put(d, glm::rotate(mat4(1), angle, get<vec3>(axis))); }
void lookAtLH(const float* eye, const float* at, const float* up, float* d) {
    put(d, glm::lookAtLH(get<vec3>(eye), get<vec3>(at), get<vec3>(up)));
}
void lookAtRH(const float* eye, const float* at, const float* up, float* d) {
    put(d, glm::lookAtRH(get<vec3>(eye), get<vec3>(at), get<vec3>(up)));
}
void orthoLH(float width, float height, float zNear, float zFar, float* d) {
    put(d, glm::orthoLH_ZO(-0.5F * width, 0.5F * width, -0.5F * height, 0.5F * height, zNear, zFar));
}
void orthoRH(float left, float right, float bottom, float top, float zNear, float zFar, float* d) {
    put(d, glm::orthoRH_ZO(left, right, bottom, top, zNear, zFar));
}
void frustumLH(float width, float height, float zNear, float zFar, float* d) {
    put(d, glm::frustumLH_ZO(-0.5F * width, 0.5F * width, -0.5F * height, 0.5F * height, zNear, zFar));
}
void perspectiveLH(float fovY, float aspect, float zNear, float zFar, float* d) {
    put(d, glm::perspectiveLH_ZO(fovY, aspect, zNear, zFar));
}
void perspectiveRH(float fovY, float aspect, float zNear, float zFar, float* d) {
    put(d, glm::perspectiveRH_ZO(fovY, aspect, zNear, zFar));
}
void frustumOffCenterRH(float left, float right, float bottom, float top, float zNear, float zFar, float* d) {
    put(d, glm::frustumRH_ZO(left, right, bottom, top, zNear, zFar));
}
void det(const float* m, float* d) { *d = glm::determinant(get<mat4>(m)); }
void invert(const float* m, float* d) { put(d, glm::inverse(get<mat4>(m))); }
void transpose(const float* m, float* d) { put(d, glm::transpose(get<mat4>(m))); }
void multiply(const float* a, const float* b, float* d) { put(d, get<mat4>(b) * get<mat4>(a)); }
void multiplyTransposed(const float* a, const float* b, float* d) {
    put(d, glm::transpose(get<mat4>(b) * get<mat4>(a)));
}
void affineV2(const float* m, const float* v, float* d) { put(d, get<mat4>(m) * vec4(get<vec2>(v), 0, 1)); }
void affineV3(const float* m, const float* v, float* d) { put(d, get<mat4>(m) * vec4(get<vec3>(v), 1)); }
void affineV4(const float* m, const float* v, float* d) { put(d, get<mat4>(m) * get<vec4>(v)); }
void coordV2(const float* m, const float* v, float* d) {
    const vec4 p = get<mat4>(m) * vec4(get<vec2>(v), 0, 1);
    put(d, vec2(p) / p.w);
}
void coordV3(const float* m, const float* v, float* d) {
    const vec4 p = get<mat4>(m) * vec4(get<vec3>(v), 1);
    put(d, vec3(p) / p.w);
}
void normalV2(const float* m, const float* v, float* d) { put(d, glm::mat2(get<mat4>(m)) * get<vec2>(v)); }
void normalV3(const float* m, const float* v, float* d) { put(d, glm::mat3(get<mat4>(m)) * get<vec3>(v)); }

void baryCentricV3(const float* a, const float* b, const float* c, float f, float g, float* d) {
    put(d, bary<vec3>(a, b, c, f, g));
}
void baryCentricV4(const float* a, const float* b, const float* c, float f, float g, float* d) {
    put(d, bary<vec4>(a, b, c, f, g));
}
void mixV2(const float* a, const float* b, float t, float* d) { put(d, glm::mix(get<vec2>(a), get<vec2>(b), t)); }
void mixV3(const float* a, const float* b, float t, float* d) { put(d, glm::mix(get<vec3>(a), get<vec3>(b), t)); }
void mixV4(const float* a, const float* b, float t, float* d) { put(d, glm::mix(get<vec4>(a), get<vec4>(b), t)); }
void hermiteV2(const float* a, const float* b, const float* c, const float* d, float t, float* to) {
    put(to, glm::hermite(get<vec2>(a), get<vec2>(b), get<vec2>(c), get<vec2>(d), t));
}
void hermiteV3(const float* a, const float* b, const float* c, const float* d, float t, float* to) {
    put(to, glm::hermite(get<vec3>(a), get<vec3>(b), get<vec3>(c), get<vec3>(d), t));
}
void hermiteV4(const float* a, const float* b, const float* c, const float* d, float t, float* to) {
    put(to, glm::hermite(get<vec4>(a), get<vec4>(b), get<vec4>(c), get<vec4>(d), t));
}
void catmullRomV2(const float* a, const float* b, const float* c, const float* d, float t, float* to) {
    put(to, glm::catmullRom(get<vec2>(a), get<vec2>(b), get<vec2>(c), get<vec2>(d), t));
}
void catmullRomV3(const float* a, const float* b, const float* c, const float* d, float t, float* to) {
    put(to, glm::catmullRom(get<vec3>(a), get<vec3>(b), get<vec3>(c), get<vec3>(d), t));
}
void catmullRomV4(const float* a, const float* b, const float* c, const float* d, float t, float* to) {
    put(to, glm::catmullRom(get<vec4>(a), get<vec4>(b), get<vec4>(c), get<vec4>(d), t));
}

}  // namespace glmCalls
