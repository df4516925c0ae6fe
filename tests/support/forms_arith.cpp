// Element-wise arithmetic.
#include "../reference/elementwise.h"
#include "family.h"

namespace kormtest {
namespace {

// Two operands and a result of one shape.
void shapeOperands(Form& form) {
    // A name may begin with the constant; its arguments still follow the vector's.
    if (form.operands[0].shape == Shape::constant) {
        std::swap(form.operands[0], form.operands[1]);
        std::swap(form.first, form.second);
    }
    const Shape shape = form.operands[0].shape;
    const bool withConstant = form.operands[1].shape == Shape::constant;
    const Extent rows = shape == Shape::matrix ? Extent::height : Extent::one;
    const Extent columns = shape == Shape::matrix ? Extent::width : Extent::length;
    form.operands[0].name = withConstant ? "src" : "src1";
    form.operands[1].name = withConstant ? "val" : "src2";
    for (Operand& operand : form.operands) {
        if (operand.shape == Shape::constant) continue;
        operand.rows = rows;
        operand.columns = columns;
    }
    addOperand(form, "dst", shape, rows, columns, Operand::Use::output).array = form.array;
}

const char* usualChecks(const Form& form) {
    if (form.array) return form.layout == Layout::standard ? "NCST" : "NCSTO";
    return form.layout == Layout::pointer ? "NSO" : "NST";
}

constexpr Family elementwise(const char* signature) {
    Family family{signature, shapeOperands, usualChecks, referenceElementwise};
    family.inPlace = true;
    family.nanBits = true;
    family.stepwise = true;
    return family;
}

constexpr Family matrices = elementwise("src1 src2 dst width height count");
constexpr Family vectors = elementwise("src1 src2 dst length count");
constexpr Family matricesConstants = elementwise("src val dst width height count");
constexpr Family vectorsConstants = elementwise("src val dst length count");

std::int32_t matrixOneArray(const Sizes& s) { return wrapped(u(s.width) * u(s.height) * (2 * u(s.count) + 1)); }
std::int32_t matrixTwoArrays(const Sizes& s) { return wrapped(3 * u(s.width) * u(s.height) * u(s.count)); }
std::int32_t matrixScaled(const Sizes& s) { return wrapped(2 * u(s.width) * u(s.height) * u(s.count)); }
std::int32_t vectorOneArray(const Sizes& s) { return wrapped((2 * u(s.count) + 1) * u(s.length)); }
std::int32_t vectorTwoArrays(const Sizes& s) { return wrapped(3 * u(s.length) * u(s.count)); }
std::int32_t vectorScaled(const Sizes& s) { return wrapped(2 * u(s.length) * u(s.count)); }
std::int32_t constantEach(const Sizes& s) { return wrapped((2 * u(s.length) + 1) * u(s.count)); }
std::int32_t oneVectorConstantEach(const Sizes& s) { return wrapped(u(s.length) * (u(s.count) + 1) + u(s.count)); }
std::int32_t countOnly(const Sizes& s) { return wrapped(2 * u(s.count)); }

// Sums and differences of matrices.
constexpr LimitRow matrixSums{Compare::below, {3000, 2000}, both(2000), both(2000), both(2000), both(2000), both(2000)};

// Sums and differences of vectors, and with constants.
constexpr LimitRow vectorSums{Compare::overIsFork, both(4800), both(1400), both(2500),
                              both(2500),          both(1500), both(1500)};

// The constant minus each vector: the same numbers, but reaching the number is enough to fork.
constexpr LimitRow constantMinusArray{Compare::below, both(4800), both(1400), both(2500),
                                      both(2500),     both(1500), both(1500)};

constexpr LimitRow vectorScaledEach{Compare::overIsFork, both(2100), both(2100), both(1200),
                                    both(1200),          both(650),  both(650)};

constexpr LimitRow vectorScaledAll{Compare::below, {2501, 1441}, {3601, 1441}, {3601, 1441},
                                   {3601, 1441},   both(1441),   both(1441)};

constexpr LimitRow matrixScaledAll{Compare::below, both(3501), both(3501), {3501, 1501},
                                   both(3501),     both(1701), both(1701)};

constexpr GroupRow groups[] = {
    // Matrices.
    {"Add", "mm tm tt", &matrices, nullptr, nullptr},
    {"Sub", "mm mt tm tt", &matrices, nullptr, nullptr},
    {"Add", "mam mat tam tat", &matrices, matrixOneArray, &matrixSums},
    {"Sub", "mam mat tam tat mma mta tma tta", &matrices, matrixOneArray, &matrixSums},
    {"Add", "mama tama tata", &matrices, matrixTwoArrays, &matrixSums},
    {"Sub", "mama mata tama tata", &matrices, matrixTwoArrays, &matrixSums},
    // Vectors.
    {"Add", "vv", &vectors, nullptr, nullptr},
    {"Sub", "vv", &vectors, nullptr, nullptr},
    {"Add", "vav", &vectors, vectorOneArray, &vectorSums},
    {"Sub", "vav vva", &vectors, vectorOneArray, &vectorSums},
    {"Add", "vava", &vectors, vectorTwoArrays, &vectorSums},
    {"Sub", "vava", &vectors, vectorTwoArrays, &vectorSums},
    // Constants.
    {"Add", "vc", &vectorsConstants, nullptr, nullptr},
    {"Sub", "vc cv", &vectorsConstants, nullptr, nullptr},
    {"Mul", "mc tc", &matricesConstants, nullptr, nullptr},
    {"Mul", "vc", &vectorsConstants, nullptr, nullptr},
    {"Add", "vac", &vectorsConstants, vectorOneArray, &vectorSums},
    {"Sub", "vac", &vectorsConstants, vectorOneArray, &vectorSums},
    {"Add", "vaca", &vectorsConstants, constantEach, &vectorSums},
    {"Sub", "vaca cava", &vectorsConstants, constantEach, &vectorSums},
    {"Add", "vca", &vectorsConstants, oneVectorConstantEach, &vectorSums},
    {"Sub", "vca cav", &vectorsConstants, oneVectorConstantEach, &vectorSums},
    {"Sub", "cva", &vectorsConstants, countOnly, &constantMinusArray},
    {"Mul", "vaca", &vectorsConstants, constantEach, &vectorScaledEach},
    {"Mul", "vca", &vectorsConstants, oneVectorConstantEach, &vectorScaledEach},
    {"Mul", "vac", &vectorsConstants, vectorScaled, &vectorScaledAll},
    {"Mul", "mac tac", &matricesConstants, matrixScaled, &matrixScaledAll},
};

constexpr OrderRow orders[] = {
    {"Add", "mam", 0, Layout::standard, "NCTS"},
    {"Sub", "mam mma", 0, Layout::standard, "NCTS"},
    {"Add", "vav", 0, Layout::standard, "NSTC"},
    {"Sub", "vav", 0, Layout::standard, "NSTC"},
    {"Add", "vav", 0, Layout::list, "NSTOC"},
    {"Sub", "vav", 0, Layout::list, "NSTOC"},
    {"Add", "vav", 0, Layout::pointer, "NSTCO"},
    {"Sub", "vav", 0, Layout::pointer, "NSTCO"},
    // Two forms take any offset, unlike their twins of the other type.
    {"Add", "vca", 64, Layout::pointer, "NCST"},
    {"Sub", "cav", 32, Layout::pointer, "NCST"},
};

constexpr const char* withoutDriver[] = {"kormSub_vva_64f_P"};

}  // namespace

Table arithForms() { return {groups, orders, withoutDriver}; }

}  // namespace kormtest
