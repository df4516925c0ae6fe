// Functions that are called for one object at a time.
#include "calls.h"

#include "rows.h"

namespace bench {
namespace {

template <auto invert>
[[gnu::noinline]] void invertEach(const Calls& calls) {
    for (std::ptrdiff_t k = 0; k < Calls::objects; ++k)
        invert(calls.inputs[0] + k * Calls::floats, nullptr, calls.result + k * Calls::floats);
}

// `floats` of each object are results. The library's own loop, and the same without its functions' stubs, which is a control.
void callRow(const std::string& function, std::size_t floats, CallLoop korm, CallLoop withoutStub) {
    const std::string name = "calls/" + function + "_32f";
    if (!isWanted(name)) return;
    constexpr std::size_t all = std::size_t{Calls::objects} * Calls::floats;
    Calls calls{{}, memoryOf<float>(4, all), {0.7F, 0.9F, 1.3F, 0.4F, 0.5F, 40.0F, 0.2F, 0.1F}};
    for (int i = 0; i < 4; ++i) calls.inputs[i] = memoryOf<float>(i, all);
    // A matrix far from singular.
    for (std::size_t i = 0; i < all; ++i)
        if (i % Calls::floats % 5 == 0) calls.inputs[0][i] = 5;
    Row row(name, Calls::objects);
    // Rounding differs between the contenders by design, by no more than this.
    row.results(calls.result, all, floats, Calls::floats, 2e-3);
    row.korm([=] { korm(calls); });
    if (withoutStub != nullptr) row.control("korm, without its stub", [=] { withoutStub(calls); });
    [[maybe_unused]] const auto add = [&](const char* peer, const CallLoops& loops) {
        if (const auto found = loops.find(function); found != loops.end())
            row.peer(peer, [=, loop = found->second] { loop(calls); });
    };
#ifdef BENCH_GLM
    add("GLM", glmCallLoops());
#endif
#ifdef BENCH_CGLM
    add("cglm", cglmCallLoops());
#endif
    row.measure();
}

}  // namespace

#if defined(__x86_64__)
#define ROW(NAME, FLOATS, LOOP, FUNCTION) callRow(NAME, FLOATS, LOOP<FUNCTION>, LOOP<Direct<FUNCTION>::call>)
#else
#define ROW(NAME, FLOATS, LOOP, FUNCTION) callRow(NAME, FLOATS, LOOP<FUNCTION>, nullptr)
#endif
#define CALL(NAME, FLOATS) ROW(#NAME, FLOATS, each, korm##NAME##_32f)

void measureCalls() {
    // What a call costs by itself: korm's goes over a stub, which is one jump more than to other libraries.
    ROW("empty", 0, each, kormGetLibVersion);
    CALL(Add_v2, 2);
    CALL(Add_v3, 3);
    CALL(Add_v4, 4);
    CALL(Sub_v3, 3);
    CALL(Min_v3, 3);
    CALL(Max_v4, 4);
    CALL(MulC_v2, 2);
    CALL(MulC_v3, 3);
    CALL(MulC_v4, 4);
    CALL(DotProduct_v2, 1);
    CALL(DotProduct_v3, 1);
    CALL(DotProduct_v4, 1);
    CALL(LenSqr_v3, 1);
    CALL(Len_v2, 1);
    CALL(Len_v3, 1);
    CALL(Len_v4, 1);
    CALL(Normalize_v2, 2);
    CALL(Normalize_v3, 3);
    CALL(Normalize_v4, 4);
    CALL(CrossProduct_v2, 1);
    CALL(CrossProduct_v3, 3);
    CALL(CrossProduct_v4, 4);
    CALL(Identity_m4, 16);
    CALL(Translation_m4, 16);
    CALL(Scaling_m4, 16);
    CALL(RotationX_m4, 16);
    CALL(RotationY_m4, 16);
    CALL(RotationZ_m4, 16);
    CALL(RotationYawPitchRoll_m4, 16);
    CALL(RotationAxis_v3m4, 16);
    CALL(LookAtLH_m4, 16);
    CALL(LookAtRH_m4, 16);
    CALL(OrthoLH_m4, 16);
    CALL(OrthoOffCenterRH_m4, 16);
    CALL(PerspectiveLH_m4, 16);
    CALL(PerspectiveFovLH_m4, 16);
    CALL(PerspectiveFovRH_m4, 16);
    CALL(PerspectiveOffCenterRH_m4, 16);
    CALL(Det_m4, 1);
    ROW("Invert_m4", 16, invertEach, kormInvert_m4_32f);
    CALL(Transpose_m4, 16);
    CALL(Mul_mm4x4, 16);
    CALL(MulTranspose_m4, 16);
    CALL(AffineTransform_m4v2, 4);
    CALL(AffineTransform_m4v3, 4);
    CALL(AffineTransform_m4v4, 4);
    CALL(AffineTransformCoord_m4v2, 2);
    CALL(AffineTransformCoord_m4v3, 3);
    CALL(AffineTransformNormal_m4v2, 2);
    CALL(AffineTransformNormal_m4v3, 3);
    CALL(BaryCentric_v3, 3);
    CALL(BaryCentric_v4, 4);
    CALL(InterpolationLinear_v2, 2);
    CALL(InterpolationLinear_v3, 3);
    CALL(InterpolationLinear_v4, 4);
    CALL(Hermite_v2, 2);
    CALL(Hermite_v3, 3);
    CALL(Hermite_v4, 4);
    CALL(InterpolationCatmullRom_v2, 2);
    CALL(InterpolationCatmullRom_v3, 3);
    CALL(InterpolationCatmullRom_v4, 4);
}

}  // namespace bench
