// Products of matrices, and of matrices with vectors.
#include "../reference/products.h"
#include "family.h"

namespace kormtest {
namespace {

// (height x inner) times (inner x width), or times a vector of the inner length.
void shapeOperands(Form& form) {
    Operand& left = form.operands[0];
    Operand& right = form.operands[1];
    left.name = "src1";
    left.rows = Extent::height;
    left.columns = Extent::inner;
    right.name = "src2";
    if (right.shape == Shape::vector) {
        right.columns = Extent::inner;
        addOperand(form, "dst", Shape::vector, Extent::one, Extent::height, Operand::Use::output);
    } else {
        right.rows = Extent::inner;
        right.columns = Extent::width;
        addOperand(form, "dst", Shape::matrix, Extent::height, Extent::width, Operand::Use::output);
    }
    form.operands.back().array = form.array;
}

const char* usualChecks(const Form& form) {
    if (form.array) return form.layout == Layout::standard ? "NCSMT" : "NCSMTO";
    return form.layout == Layout::pointer ? "NSMO" : "NSMT";
}

std::int64_t work(const Sizes& s) { return std::int64_t{s.width} * s.height * s.inner; }

constexpr Family product(const char* signature) {
    Family family{signature, shapeOperands, usualChecks, referenceProducts};
    family.fill = fillSums;
    family.work = work;
    family.sum = productSum;
    return family;
}

constexpr Family byMatrix = product("src1 src1Width src1Height src2 src2Width src2Height dst count");
constexpr Family byVector = product("src1 src1Width src1Height src2 src2Length dst count");

// What a call touches: M x K, K x N and M x N elements, each for a single operand or for every object.
struct Touched {
    std::uint32_t M, N, K, count;
    explicit Touched(const Sizes& s) : M(u(s.height)), N(u(s.width)), K(u(s.inner)), count(u(s.count)) {}
};

std::int32_t arrayByMatrix(const Sizes& s) {
    const Touched t(s);
    return wrapped(t.K * t.N + (t.K + t.N) * t.M * t.count);
}
std::int32_t matrixByArray(const Sizes& s) {
    const Touched t(s);
    return wrapped(t.M * t.K + (t.M + t.K) * t.N * t.count);
}
std::int32_t arrayByArray(const Sizes& s) {
    const Touched t(s);
    return wrapped((t.K * t.N + (t.K + t.N) * t.M) * t.count);
}
std::int32_t matrixByVectors(const Sizes& s) {
    const Touched t(s);
    return wrapped(t.M * t.K + (t.M + t.K) * t.count);
}
std::int32_t matricesByVector(const Sizes& s) {
    const Touched t(s);
    return wrapped((t.M * t.K + t.M) * t.count + t.K);
}
std::int32_t matricesByVectors(const Sizes& s) {
    const Touched t(s);
    return wrapped((t.M * t.K + t.M + t.K) * t.count);
}

constexpr LimitRow products{Compare::below, {2501, 1441}, {3601, 1441}, {3601, 1441},
                            {3601, 1441},   both(1441),   both(1441)};

constexpr GroupRow groups[] = {
    {"Mul", "mm mt tm tt", &byMatrix, nullptr, nullptr},
    {"Mul", "mam mat tam tat", &byMatrix, arrayByMatrix, &products},
    {"Mul", "mma mta tma tta", &byMatrix, matrixByArray, &products},
    {"Mul", "mama mata tama tata", &byMatrix, arrayByArray, &products},
    {"Mul", "mv tv", &byVector, nullptr, nullptr},
    {"Mul", "mva tva", &byVector, matrixByVectors, &products},
    {"Mul", "mav tav", &byVector, matricesByVector, &products},
    {"Mul", "mava tava", &byVector, matricesByVectors, &products},
};

}  // namespace

Table productForms() { return {groups, {}, {}}; }

}  // namespace kormtest
