// The functions that are called for one object at a time.
#include <korm.h>

#include "each.h"

namespace bench {
namespace {

template <auto invert>
[[gnu::noinline]] void invertEach(const Calls& work) {
    for (std::ptrdiff_t k = 0; k < Calls::objects; ++k)
        invert(work.inputs[0] + k * Calls::floats, nullptr, work.result + k * Calls::floats);
}

// The library's own loop, and the same without the stub: a control, not a peer.
CallRow row(const char* name, int floats, void (*run)(const Calls&), void (*direct)(const Calls&)) {
    CallRow made{name, floats, 0, 0, {{"korm", run}}};
    if (direct != nullptr) made.contenders.push_back({"direct", direct, false});
    return made;
}

}  // namespace

#if defined(__x86_64__)
#define ROW(name, floats, loop, function) row(name, floats, loop<function>, loop<Direct<function>::call>)
#else
#define ROW(name, floats, loop, function) row(name, floats, loop<function>, nullptr)
#endif
#define CALL(name, floats) ROW(#name, floats, each, korm##name##_32f)

std::vector<CallRow> callRows() {
    return {
        // What a call costs by itself: korm's goes over a stub, which is one jump more than to other libraries.
        ROW("empty", 0, each, kormGetLibVersion),
        CALL(Add_v2, 2),
        CALL(Add_v3, 3),
        CALL(Add_v4, 4),
        CALL(Sub_v3, 3),
        CALL(Min_v3, 3),
        CALL(Max_v4, 4),
        CALL(MulC_v2, 2),
        CALL(MulC_v3, 3),
        CALL(MulC_v4, 4),
        CALL(DotProduct_v2, 1),
        CALL(DotProduct_v3, 1),
        CALL(DotProduct_v4, 1),
        CALL(LenSqr_v3, 1),
        CALL(Len_v2, 1),
        CALL(Len_v3, 1),
        CALL(Len_v4, 1),
        CALL(Normalize_v2, 2),
        CALL(Normalize_v3, 3),
        CALL(Normalize_v4, 4),
        CALL(CrossProduct_v2, 1),
        CALL(CrossProduct_v3, 3),
        CALL(CrossProduct_v4, 4),
        CALL(Identity_m4, 16),
        CALL(Translation_m4, 16),
        CALL(Scaling_m4, 16),
        CALL(RotationX_m4, 16),
        CALL(RotationY_m4, 16),
        CALL(RotationZ_m4, 16),
        CALL(RotationYawPitchRoll_m4, 16),
        CALL(RotationAxis_v3m4, 16),
        CALL(LookAtLH_m4, 16),
        CALL(LookAtRH_m4, 16),
        CALL(OrthoLH_m4, 16),
        CALL(OrthoOffCenterRH_m4, 16),
        CALL(PerspectiveLH_m4, 16),
        CALL(PerspectiveFovLH_m4, 16),
        CALL(PerspectiveFovRH_m4, 16),
        CALL(PerspectiveOffCenterRH_m4, 16),
        CALL(Det_m4, 1),
        ROW("Invert_m4", 16, invertEach, kormInvert_m4_32f),
        CALL(Transpose_m4, 16),
        CALL(Mul_mm4x4, 16),
        CALL(MulTranspose_m4, 16),
        CALL(AffineTransform_m4v2, 4),
        CALL(AffineTransform_m4v3, 4),
        CALL(AffineTransform_m4v4, 4),
        CALL(AffineTransformCoord_m4v2, 2),
        CALL(AffineTransformCoord_m4v3, 3),
        CALL(AffineTransformNormal_m4v2, 2),
        CALL(AffineTransformNormal_m4v3, 3),
        CALL(BaryCentric_v3, 3),
        CALL(BaryCentric_v4, 4),
        CALL(InterpolationLinear_v2, 2),
        CALL(InterpolationLinear_v3, 3),
        CALL(InterpolationLinear_v4, 4),
        CALL(Hermite_v2, 2),
        CALL(Hermite_v3, 3),
        CALL(Hermite_v4, 4),
        CALL(InterpolationCatmullRom_v2, 2),
        CALL(InterpolationCatmullRom_v3, 3),
        CALL(InterpolationCatmullRom_v4, 4),
    };
}

}  // namespace bench
