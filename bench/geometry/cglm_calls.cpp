// cglm's call versions: the functions of its shared library.
#include <cglm/call.h>
#include <cglm/call/clipspace/ortho_rh_zo.h>
#include <cglm/call/clipspace/persp_lh_zo.h>
#include <cglm/call/clipspace/persp_rh_zo.h>
#include <cglm/call/clipspace/view_lh_zo.h>
#include <cglm/call/clipspace/view_rh_zo.h>

#include "each.h"

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

void addCglmCalls(std::vector<CallRow>& rows) {
    const auto add = [&](const char* name, void (*run)(const Calls&)) { compete(rows, name, "cglm", run); };
    add("Add_v2", each<glmc_vec2_add>);
    add("Add_v3", each<glmc_vec3_add>);
    add("Add_v4", each<glmc_vec4_add>);
    add("Sub_v3", each<glmc_vec3_sub>);
    add("Min_v3", each<glmc_vec3_minv>);
    add("Max_v4", each<glmc_vec4_maxv>);
    add("MulC_v2", each<glmc_vec2_scale>);
    add("MulC_v3", each<glmc_vec3_scale>);
    add("MulC_v4", each<glmc_vec4_scale>);
    add("DotProduct_v2", each<glmc_vec2_dot>);
    add("DotProduct_v3", each<glmc_vec3_dot>);
    add("DotProduct_v4", each<glmc_vec4_dot>);
    add("LenSqr_v3", each<glmc_vec3_norm2>);
    add("Len_v2", each<glmc_vec2_norm>);
    add("Len_v3", each<glmc_vec3_norm>);
    add("Len_v4", each<glmc_vec4_norm>);
    add("Normalize_v2", each<glmc_vec2_normalize_to>);
    add("Normalize_v3", each<glmc_vec3_normalize_to>);
    add("Normalize_v4", each<glmc_vec4_normalize_to>);
    add("CrossProduct_v2", each<glmc_vec2_cross>);
    add("CrossProduct_v3", each<glmc_vec3_cross>);
    add("Identity_m4", each<glmc_mat4_identity>);
    add("Translation_m4", fromVector<glmc_translate_make>);
    add("Scaling_m4", fromVector<glmc_scale_make>);
    add("RotationX_m4", turned<glmc_rotate_x>);
    add("RotationY_m4", turned<glmc_rotate_y>);
    add("RotationZ_m4", turned<glmc_rotate_z>);
    add("RotationAxis_v3m4", each<glmc_rotate_make, Output::first>);
    add("LookAtLH_m4", each<glmc_lookat_lh_zo>);
    add("LookAtRH_m4", each<glmc_lookat_rh_zo>);
    add("OrthoOffCenterRH_m4", each<glmc_ortho_rh_zo>);
    add("PerspectiveFovLH_m4", each<glmc_perspective_lh_zo>);
    add("PerspectiveFovRH_m4", each<glmc_perspective_rh_zo>);
    add("PerspectiveOffCenterRH_m4", each<glmc_frustum_rh_zo>);
    add("Det_m4", each<glmc_mat4_det>);
    add("Invert_m4", each<glmc_mat4_inv>);
    add("Transpose_m4", each<glmc_mat4_transpose_to>);
    add("Mul_mm4x4", exchanged);
    add("AffineTransform_m4v4", each<glmc_mat4_mulv>);
    add("InterpolationLinear_v2", each<glmc_vec2_lerp>);
    add("InterpolationLinear_v3", each<glmc_vec3_lerp>);
    add("InterpolationLinear_v4", each<glmc_vec4_lerp>);
}

}  // namespace bench
