// Vectors: combinations with constants, dot and cross products, norms; and matrix times vector plus vector.
#include "../reference/vectors.h"

#include "../reference/products.h"
#include "family.h"

namespace kormtest {
namespace {

using Use = Operand::Use;

void nameVectors(Form& form, Extent length) {
    const bool oneOperand = form.operands.size() == 1;
    form.operands[0].name = oneOperand ? "src" : "src1";
    if (!oneOperand) form.operands[1].name = "src2";
    for (Operand& operand : form.operands) operand.columns = length;
}

void addResult(Form& form, Extent length) {
    addOperand(form, "dst", Shape::vector, Extent::one, length, Use::output).array = form.array;
}

void shapeSaxpy(Form& form) {
    nameVectors(form, Extent::length);
    addOperand(form, "val", Shape::constant, Extent::one, Extent::one, Use::input);
    addResult(form, Extent::length);
}

void shapeLComb(Form& form) {
    nameVectors(form, Extent::length);
    addOperand(form, "val1", Shape::constant, Extent::one, Extent::one, Use::input);
    addOperand(form, "val2", Shape::constant, Extent::one, Extent::one, Use::input);
    addResult(form, Extent::length);
}

void shapeReduction(Form& form) {
    nameVectors(form, Extent::length);
    addResult(form, Extent::one);
    form.operands.back().dense = true;
}

void shapeCross(Form& form) {
    nameVectors(form, Extent::three);
    addResult(form, Extent::three);
}

// The vector that is added is not in the name of two forms: of one vector it is one, of an array an array.
void shapeGaxpy(Form& form) {
    form.operands[0].name = "src1";
    form.operands[0].rows = Extent::height;
    form.operands[0].columns = Extent::inner;
    form.operands[1].name = "src2";
    form.operands[1].columns = Extent::inner;
    if (form.operands.size() == 2)
        addOperand(form, "", Shape::vector, Extent::one, Extent::one, Use::input).array = form.array;
    form.operands[2].name = "src3";
    form.operands[2].columns = Extent::height;
    addResult(form, Extent::height);
}

const char* usualChecks(const Form& form) {
    if (form.array) return form.layout == Layout::standard ? "NCST" : "NCSTO";
    return form.layout == Layout::pointer ? "NSO" : "NST";
}

const char* crossChecks(const Form& form) {
    if (form.array) return form.layout == Layout::standard ? "NCT" : "NCTO";
    return form.layout == Layout::pointer ? "NO" : "NT";
}

const char* matchingChecks(const Form& form) {
    if (form.array) return form.layout == Layout::standard ? "NCSMT" : "NCSMTO";
    return form.layout == Layout::pointer ? "NSMO" : "NSMT";
}

constexpr Family combination(const char* signature, void (*shape)(Form&)) {
    Family family{signature, shape, usualChecks, referenceCombination};
    family.inPlace = true;
    family.stepwise = true;
    return family;
}

std::int64_t lengthOf(const Sizes& s) { return s.length; }

// Long sums of adjacent elements depend on where these lie.
bool reductionFixed(const Form& form, const Sizes& s, bool plain) {
    return s.length < 8 || !plain || form.layout == Layout::pointer;
}

constexpr Family reduction(const char* signature) {
    Family family{signature, shapeReduction, usualChecks, referenceReduction};
    family.fill = fillSums;
    family.work = lengthOf;
    family.fixedBits = reductionFixed;
    family.sum = reductionSum;
    return family;
}

constexpr Family saxpy = combination("src1 val src2 dst length count", shapeSaxpy);
constexpr Family lcomb = combination("src1 val1 src2 val2 dst length count", shapeLComb);
constexpr Family dotProduct = reduction("src1 src2 dst length count");
constexpr Family l2Norm = reduction("src dst length count");

constexpr Family crossProduct = [] {
    Family family{"src1 src2 dst count", shapeCross, crossChecks, referenceCrossProduct};
    family.inPlace = true;
    return family;
}();

std::int64_t productsOf(const Sizes& s) { return std::int64_t{s.height} * s.inner; }

constexpr Family gaxpy = [] {
    Family family{"src1 src1Width src1Height src2 src2Length src3 src3Length dst count", shapeGaxpy, matchingChecks,
                  referenceProducts};
    family.fill = fillSums;
    family.work = productsOf;
    family.sum = productSum;
    return family;
}();

// --- Estimates and limits ---

std::int32_t oneArray(const Sizes& s) { return wrapped((2 * u(s.count) + 1) * u(s.length)); }
std::int32_t twoArrays(const Sizes& s) { return wrapped(3 * u(s.length) * u(s.count)); }
std::int32_t dotOneArray(const Sizes& s) { return wrapped((u(s.count) + 1) * u(s.length)); }
std::int32_t dotTwoArrays(const Sizes& s) { return wrapped(2 * u(s.count) * u(s.length)); }
std::int32_t normEstimate(const Sizes& s) { return wrapped(u(s.length) * u(s.count)); }
std::int32_t crossOneArray(const Sizes& s) { return wrapped(2 * u(s.count)); }
std::int32_t crossTwoArrays(const Sizes& s) { return wrapped(3 * u(s.count)); }
// Matrix W by H, vectors of W and H elements.
std::int32_t gaxpyArrays(const Sizes& s) { return wrapped((u(s.inner) + 2 * u(s.height)) * u(s.count)); }
std::int32_t gaxpyOneAdded(const Sizes& s) { return wrapped(u(s.inner) * u(s.count) + u(s.height) * (u(s.count) + 1)); }

// clang-format off
//                               32f standard  64f standard  32f list      64f list      32f pointer  64f pointer
constexpr LimitRow saxpyLimits{Compare::below,
                                 {3001, 2001}, {3001, 1201}, {1501, 1001}, {1001, 1001}, both(1201),  both(1201)};
constexpr LimitRow saxpyVvaLimits{Compare::below,
                                 {3001, 2001}, {3001, 1201}, {1501, 1501}, {1001, 1001}, both(1201),  both(1201)};
constexpr LimitRow lcombLimits{Compare::below,
                                 {4501, 4501}, {4501, 4501}, {4501, 3751}, {4501, 4501}, both(4501),  both(4501)};
constexpr LimitRow dotLimits{Compare::below,
                                 {5001, 2621}, {3501, 2001}, {2401, 2401}, {4201, 3301}, both(2401),  both(2001)};
constexpr LimitRow normLimits{Compare::below,
                                 both(1501),   both(1501),   both(1501),   both(1501),   both(1501),  both(1501)};
// Two for each object: more than 2999; three for each: more than 3000.
constexpr LimitRow crossOneLimits{Compare::overIsFork,
                                 both(2999),   both(2999),   both(2999),   both(2999),   both(2999),  both(2999)};
constexpr LimitRow crossTwoLimits{Compare::overIsFork,
                                 both(3000),   both(3000),   both(3000),   both(3000),   both(3000),  both(3000)};
constexpr LimitRow gaxpyLimits{Compare::below,
                                 {7001, 5001}, {5001, 5001}, {7001, 501},  {6001, 5001}, both(4501),  both(7001)};
// clang-format on

constexpr GroupRow groups[] = {
    {"Saxpy", "vv", &saxpy, nullptr, nullptr},
    {"Saxpy", "vav", &saxpy, oneArray, &saxpyLimits},
    {"Saxpy", "vva", &saxpy, oneArray, &saxpyVvaLimits},
    {"Saxpy", "vava", &saxpy, twoArrays, &saxpyLimits},
    {"LComb", "vv", &lcomb, nullptr, nullptr},
    {"LComb", "vav", &lcomb, oneArray, &lcombLimits},
    {"LComb", "vava", &lcomb, twoArrays, &lcombLimits},
    {"DotProduct", "vv", &dotProduct, nullptr, nullptr},
    {"DotProduct", "vav", &dotProduct, dotOneArray, &dotLimits},
    {"DotProduct", "vava", &dotProduct, dotTwoArrays, &dotLimits},
    {"L2Norm", "v", &l2Norm, nullptr, nullptr},
    {"L2Norm", "va", &l2Norm, normEstimate, &normLimits},
    {"CrossProduct", "vv", &crossProduct, nullptr, nullptr},
    {"CrossProduct", "vav vva", &crossProduct, crossOneArray, &crossOneLimits},
    {"CrossProduct", "vava", &crossProduct, crossTwoArrays, &crossTwoLimits},
    {"Gaxpy", "mv", &gaxpy, nullptr, nullptr},
    {"Gaxpy", "mva", &gaxpy, gaxpyArrays, &gaxpyLimits},
    {"Gaxpy", "mvav", &gaxpy, gaxpyOneAdded, &gaxpyLimits},
};

constexpr OrderRow orders[] = {
    {"CrossProduct", "vav", 0, Layout::standard, "NTC"},
    {"CrossProduct", "vav", 0, Layout::list, "NTOC"},
    {"CrossProduct", "vav", 0, Layout::pointer, "NTCO"},
};

constexpr const char* withoutDriver[] = {"kormCrossProduct_vva_64f_P"};

}  // namespace

Table vectorForms() { return {groups, orders, withoutDriver}; }

}  // namespace kormtest
