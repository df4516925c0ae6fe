#include "each.h"
#include "glm_calls.h"

namespace bench {

void addGlmCalls(std::vector<CallRow>& rows) {
    const auto add = [&](const char* name, void (*run)(const Calls&)) { compete(rows, name, "glm", run); };
    add("empty", each<glmCalls::empty>);
    add("Add_v2", each<glmCalls::addV2>);
    add("Add_v3", each<glmCalls::addV3>);
    add("Add_v4", each<glmCalls::addV4>);
    add("Sub_v3", each<glmCalls::subV3>);
    add("Min_v3", each<glmCalls::minV3>);
    add("Max_v4", each<glmCalls::maxV4>);
    add("MulC_v2", each<glmCalls::scaleV2>);
    add("MulC_v3", each<glmCalls::scaleV3>);
    add("MulC_v4", each<glmCalls::scaleV4>);
    add("DotProduct_v2", each<glmCalls::dotV2>);
    add("DotProduct_v3", each<glmCalls::dotV3>);
    add("DotProduct_v4", each<glmCalls::dotV4>);
    add("LenSqr_v3", each<glmCalls::lenSqrV3>);
    add("Len_v2", each<glmCalls::lenV2>);
    add("Len_v3", each<glmCalls::lenV3>);
    add("Len_v4", each<glmCalls::lenV4>);
    add("Normalize_v2", each<glmCalls::normalizeV2>);
    add("Normalize_v3", each<glmCalls::normalizeV3>);
    add("Normalize_v4", each<glmCalls::normalizeV4>);
    add("CrossProduct_v2", each<glmCalls::crossV2>);
    add("CrossProduct_v3", each<glmCalls::crossV3>);
    add("Identity_m4", each<glmCalls::identity>);
    add("Translation_m4", each<glmCalls::translation>);
    add("Scaling_m4", each<glmCalls::scaling>);
    add("RotationX_m4", each<glmCalls::rotationX>);
    add("RotationY_m4", each<glmCalls::rotationY>);
    add("RotationZ_m4", each<glmCalls::rotationZ>);
    add("RotationYawPitchRoll_m4", each<glmCalls::rotationYawPitchRoll>);
    add("RotationAxis_v3m4", each<glmCalls::rotationAxis>);
    add("LookAtLH_m4", each<glmCalls::lookAtLH>);
    add("LookAtRH_m4", each<glmCalls::lookAtRH>);
    add("OrthoLH_m4", each<glmCalls::orthoLH>);
    add("OrthoOffCenterRH_m4", each<glmCalls::orthoRH>);
    add("PerspectiveLH_m4", each<glmCalls::frustumLH>);
    add("PerspectiveFovLH_m4", each<glmCalls::perspectiveLH>);
    add("PerspectiveFovRH_m4", each<glmCalls::perspectiveRH>);
    add("PerspectiveOffCenterRH_m4", each<glmCalls::frustumOffCenterRH>);
    add("Det_m4", each<glmCalls::det>);
    add("Invert_m4", each<glmCalls::invert>);
    add("Transpose_m4", each<glmCalls::transpose>);
    add("Mul_mm4x4", each<glmCalls::multiply>);
    add("MulTranspose_m4", each<glmCalls::multiplyTransposed>);
    add("AffineTransform_m4v2", each<glmCalls::affineV2>);
    add("AffineTransform_m4v3", each<glmCalls::affineV3>);
    add("AffineTransform_m4v4", each<glmCalls::affineV4>);
    add("AffineTransformCoord_m4v2", each<glmCalls::coordV2>);
    add("AffineTransformCoord_m4v3", each<glmCalls::coordV3>);
    add("AffineTransformNormal_m4v2", each<glmCalls::normalV2>);
    add("AffineTransformNormal_m4v3", each<glmCalls::normalV3>);
    add("BaryCentric_v3", each<glmCalls::baryCentricV3>);
    add("BaryCentric_v4", each<glmCalls::baryCentricV4>);
    add("InterpolationLinear_v2", each<glmCalls::mixV2>);
    add("InterpolationLinear_v3", each<glmCalls::mixV3>);
    add("InterpolationLinear_v4", each<glmCalls::mixV4>);
    add("Hermite_v2", each<glmCalls::hermiteV2>);
    add("Hermite_v3", each<glmCalls::hermiteV3>);
    add("Hermite_v4", each<glmCalls::hermiteV4>);
    add("InterpolationCatmullRom_v2", each<glmCalls::catmullRomV2>);
    add("InterpolationCatmullRom_v3", each<glmCalls::catmullRomV3>);
    add("InterpolationCatmullRom_v4", each<glmCalls::catmullRomV4>);
}

}  // namespace bench
