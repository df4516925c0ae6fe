// GLM behind calls of a shared library, as korm is: arrays of floats in and out.
#pragma once

namespace glmCalls {

void empty();

void addV2(const float* a, const float* b, float* d);
void addV3(const float* a, const float* b, float* d);
void addV4(const float* a, const float* b, float* d);
void subV3(const float* a, const float* b, float* d);
void minV3(const float* a, const float* b, float* d);
void maxV4(const float* a, const float* b, float* d);
void scaleV2(const float* a, float factor, float* d);
void scaleV3(const float* a, float factor, float* d);
void scaleV4(const float* a, float factor, float* d);
void dotV2(const float* a, const float* b, float* d);
void dotV3(const float* a, const float* b, float* d);
void dotV4(const float* a, const float* b, float* d);
void lenSqrV3(const float* a, float* d);
void lenV2(const float* a, float* d);
void lenV3(const float* a, float* d);
void lenV4(const float* a, float* d);
void normalizeV2(const float* a, float* d);
void normalizeV3(const float* a, float* d);
void normalizeV4(const float* a, float* d);
void crossV2(const float* a, const float* b, float* d);
void crossV3(const float* a, const float* b, float* d);
void identity(float* d);
void translation(float x, float y, float z, float* d);
void scaling(float x, float y, float z, float* d);
void rotationX(float angle, float* d);
void rotationY(float angle, float* d);
void rotationZ(float angle, float* d);
void rotationYawPitchRoll(float yaw, float pitch, float roll, float* d);
void rotationAxis(const float* axis, float angle, float* d);
void lookAtLH(const float* eye, const float* at, const float* up, float* d);
void lookAtRH(const float* eye, const float* at, const float* up, float* d);
void orthoLH(float width, float height, float zNear, float zFar, float* d);
void orthoRH(float left, float right, float bottom, float top, float zNear, float zFar, float* d);
void frustumLH(float width, float height, float zNear, float zFar, float* d);
void perspectiveLH(float fovY, float aspect, float zNear, float zFar, float* d);
void perspectiveRH(float fovY, float aspect, float zNear, float zFar, float* d);
void frustumOffCenterRH(float left, float right, float bottom, float top, float zNear, float zFar, float* d);
void det(const float* m, float* d);
void invert(const float* m, float* d);
void transpose(const float* m, float* d);
void multiply(const float* a, const float* b, float* d);
void multiplyTransposed(const float* a, const float* b, float* d);
void affineV2(const float* m, const float* v, float* d);
void affineV3(const float* m, const float* v, float* d);
void affineV4(const float* m, const float* v, float* d);
void coordV2(const float* m, const float* v, float* d);
void coordV3(const float* m, const float* v, float* d);
void normalV2(const float* m, const float* v, float* d);
void normalV3(const float* m, const float* v, float* d);
void baryCentricV3(const float* a, const float* b, const float* c, float f, float g, float* d);
void baryCentricV4(const float* a, const float* b, const float* c, float f, float g, float* d);
void mixV2(const float* a, const float* b, float t, float* d);
void mixV3(const float* a, const float* b, float t, float* d);
void mixV4(const float* a, const float* b, float t, float* d);
void hermiteV2(const float* a, const float* b, const float* c, const float* d, float t, float* to);
void hermiteV3(const float* a, const float* b, const float* c, const float* d, float t, float* to);
void hermiteV4(const float* a, const float* b, const float* c, const float* d, float t, float* to);
void catmullRomV2(const float* a, const float* b, const float* c, const float* d, float t, float* to);
void catmullRomV3(const float* a, const float* b, const float* c, const float* d, float t, float* to);
void catmullRomV4(const float* a, const float* b, const float* c, const float* d, float t, float* to);

}  // namespace glmCalls
