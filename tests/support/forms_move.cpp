// Movement between layouts, identity matrices, transposition.
#include "../reference/movement.h"
#include "family.h"

namespace kormtest {
namespace {

bool isMatrix(const Form& form) { return form.operands[0].shape == Shape::matrix; }

void shapeSource(Form& form) {
    form.operands[0].name = "src";
    form.operands[0].rows = isMatrix(form) ? Extent::height : Extent::one;
    form.operands[0].columns = isMatrix(form) ? Extent::width : Extent::length;
}

void shapeCopy(Form& form) {
    shapeSource(form);
    const Operand source = form.operands[0];
    addOperand(form, "dst", source.shape, source.rows, source.columns, Operand::Use::output).array = form.array;
}

// One block without gaps.
void shapeExtract(Form& form) {
    shapeCopy(form);
    form.operands.back().dense = true;
}

// The name tells of the result; there is nothing else.
void shapeIdentity(Form& form) {
    shapeSource(form);
    form.operands[0].name = "dst";
    form.operands[0].use = Operand::Use::output;
}

// Width and height are the source's.
void shapeTranspose(Form& form) {
    shapeSource(form);
    addOperand(form, "dst", Shape::matrix, Extent::width, Extent::height, Operand::Use::output).array = form.array;
}

// A check is left out where there is nothing that it could look at.
const char* copyChecks(const Form& form) {
    const Layout source = form.operands[0].layout, result = form.operands[1].layout;
    if (source == Layout::pointer && result == Layout::pointer) return "NSCOA";
    if (source == Layout::standard && result == Layout::standard) return "NSCRA";
    if (source == Layout::list && result == Layout::list) return "NSCRO";
    return "NSCROA";
}

const char* extractChecks(const Form& form) {
    if (form.array) return form.layout == Layout::standard ? "NSCT" : "NSCOT";
    return form.layout == Layout::pointer ? "NSO" : "NST";
}

const char* identityChecks(const Form& form) {
    switch (form.operands[0].layout) {
        case Layout::standard: return "NSCRA";
        case Layout::list: return "NSCTO";
        case Layout::pointer: return "NSCOA";
    }
    return "";
}

const char* transposeChecks(const Form& form) {
    if (form.array) return form.layout == Layout::standard ? "NCST" : "NCSTO";
    return form.layout == Layout::pointer ? "NSO" : "NST";
}

constexpr Family movement(const char* signature, void (*shape)(Form&), const char* (*checks)(const Form&),
                          Reference reference) {
    Family family{signature, shape, checks, reference};
    family.nanBits = true;
    return family;
}

constexpr Family copy(const char* signature) {
    Family family = movement(signature, shapeCopy, copyChecks, referenceCopy);
    family.inPlace = true;
    family.layoutPairs = true;
    family.withoutKernels = true;
    family.movesForward = true;
    return family;
}

constexpr Family extract(const char* signature) {
    Family family = movement(signature, shapeExtract, extractChecks, referenceExtract);
    family.withoutKernels = true;
    family.movesForward = true;
    return family;
}

constexpr Family identity() {
    Family family = movement("dst width height count", shapeIdentity, identityChecks, referenceLoadIdentity);
    family.withoutKernels = true;
    family.movesForward = true;
    return family;
}

constexpr Family copiedMatrices = copy("src dst width height count");
constexpr Family copiedVectors = copy("src dst length count");
constexpr Family extractedMatrices = extract("src dst width height count");
constexpr Family extractedVectors = extract("src dst length count");
constexpr Family identities = identity();
constexpr Family transposed =
    movement("src width height dst count", shapeTranspose, transposeChecks, referenceTranspose);

constexpr GroupRow groups[] = {
    {"Copy", "ma", &copiedMatrices, nullptr, nullptr},
    {"Copy", "va", &copiedVectors, nullptr, nullptr},
    {"Extract", "m t ma ta", &extractedMatrices, nullptr, nullptr},
    {"Extract", "v va", &extractedVectors, nullptr, nullptr},
    {"LoadIdentity", "ma", &identities, nullptr, nullptr},
    {"Transpose", "m ma", &transposed, nullptr, nullptr},
};

constexpr OrderRow orders[] = {
    // Offsets before strides, unlike the forms of the other type.
    {"Copy", "va", 32, Layout::standard, "NSCORA", Layout::pointer},
    {"Copy", "va", 32, Layout::list, "NSCORA", Layout::pointer},
    // Sizes before all else, but for vectors of one type.
    {"Extract", "m t", 0, Layout::pointer, "SNO"},
    {"Extract", "v", 64, Layout::pointer, "SNO"},
    {"LoadIdentity", "ma", 32, Layout::pointer, "NSOCA"},
};

}  // namespace

Table movementForms() { return {groups, orders, {}}; }

}  // namespace kormtest
