// cglm's call versions: the functions of its shared library.
#include <cglm/call.h>
#include <cglm/call/clipspace/ortho_rh_zo.h>
#include <cglm/call/clipspace/persp_lh_zo.h>
#include <cglm/call/clipspace/persp_rh_zo.h>
#include <cglm/call/clipspace/view_lh_zo.h>
#include <cglm/call/clipspace/view_rh_zo.h>

#include "calls.h"

namespace bench {
namespace {

// Those that take a vector where korm takes numbers, or a matrix to turn.
template <auto make>
void fromVector(const Calls& work) {
    for (std::ptrdiff_t k = 0; k < Calls::objects; ++k) {
        vec3 v = {work.scalars[0], work.scalars[1], work.scalars[2]};
        make(reinterpret_cast<vec4*>(work.result + k * Calls::floats), v);
    }
}

template <auto turn>
void turned(const Calls& work) {
    static mat4 identity = GLM_MAT4_IDENTITY_INIT;
    for (std::ptrdiff_t k = 0; k < Calls::objects; ++k)
        turn(identity, work.scalars[0], reinterpret_cast<vec4*>(work.result + k * Calls::floats));
}

// Its columns are korm's rows, so the factors of a product are exchanged.
void exchanged(const Calls& work) {
    const auto matrix = [](float* operand, std::ptrdiff_t k) {
        return reinterpret_cast<vec4*>(operand + k * Calls::floats);
    };
    for (std::ptrdiff_t k = 0; k < Calls::objects; ++k)
        glmc_mat4_mul(matrix(work.inputs[1], k), matrix(work.inputs[0], k), matrix(work.result, k));
}

}  // namespace

const CallLoops& cglmCallLoops() {
    static const CallLoops loops = {{"Add_v2", each<glmc_vec2_add>},
                                    {"Add_v3", each<glmc_vec3_add>},
                                    {"Add_v4", each<glmc_vec4_add>},
                                    {"Sub_v3", each<glmc_vec3_sub>},
                                    {"Min_v3", each<glmc_vec3_minv>},
                                    {"Max_v4", each<glmc_vec4_maxv>},
                                    {"MulC_v2", each<glmc_vec2_scale>},
                                    {"MulC_v3", each<glmc_vec3_scale>},
                                    {"MulC_v4", each<glmc_vec4_scale>},
                                    {"DotProduct_v2", each<glmc_vec2_dot>},
                                    {"DotProduct_v3", each<glmc_vec3_dot>},
                                    {"DotProduct_v4", each<glmc_vec4_dot>},
                                    {"LenSqr_v3", each<glmc_vec3_norm2>},
                                    {"Len_v2", each<glmc_vec2_norm>},
                                    {"Len_v3", each<glmc_vec3_norm>},
                                    {"Len_v4", each<glmc_vec4_norm>},
                                    {"Normalize_v2", each<glmc_vec2_normalize_to>},
                                    {"Normalize_v3", each<glmc_vec3_normalize_to>},
                                    {"Normalize_v4", each<glmc_vec4_normalize_to>},
                                    {"CrossProduct_v2", each<glmc_vec2_cross>},
                                    {"CrossProduct_v3", each<glmc_vec3_cross>},
                                    {"Identity_m4", each<glmc_mat4_identity>},
                                    {"Translation_m4", fromVector<glmc_translate_make>},
                                    {"Scaling_m4", fromVector<glmc_scale_make>},
                                    {"RotationX_m4", turned<glmc_rotate_x>},
                                    {"RotationY_m4", turned<glmc_rotate_y>},
                                    {"RotationZ_m4", turned<glmc_rotate_z>},
                                    {"RotationAxis_v3m4", each<glmc_rotate_make, Output::first>},
                                    {"LookAtLH_m4", each<glmc_lookat_lh_zo>},
                                    {"LookAtRH_m4", each<glmc_lookat_rh_zo>},
                                    {"OrthoOffCenterRH_m4", each<glmc_ortho_rh_zo>},
                                    {"PerspectiveFovLH_m4", each<glmc_perspective_lh_zo>},
                                    {"PerspectiveFovRH_m4", each<glmc_perspective_rh_zo>},
                                    {"PerspectiveOffCenterRH_m4", each<glmc_frustum_rh_zo>},
                                    {"Det_m4", each<glmc_mat4_det>},
                                    {"Invert_m4", each<glmc_mat4_inv>},
                                    {"Transpose_m4", each<glmc_mat4_transpose_to>},
                                    {"Mul_mm4x4", exchanged},
                                    {"AffineTransform_m4v4", each<glmc_mat4_mulv>},
                                    {"InterpolationLinear_v2", each<glmc_vec2_lerp>},
                                    {"InterpolationLinear_v3", each<glmc_vec3_lerp>},
                                    {"InterpolationLinear_v4", each<glmc_vec4_lerp>}};
    return loops;
}

}  // namespace bench
