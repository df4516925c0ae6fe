#include "prototypes.h"

#include <cstdio>

#include "functions.h"

namespace kormtest {
namespace {

const char* typeOf(Slot slot) {
    switch (slot) {
        case Slot::input: return "const float *";
        case Slot::output:
        case Slot::optional: return "float *";
        case Slot::integer: return "int32_t *";
        case Slot::constant: return "float";
        default: return "int32_t";
    }
}

}  // namespace

void printGeometryPrototypes() {
    for (const GeometryFunction& function : geometryFunctions()) {
        std::string list;
        for (const Slotted& argument : function.arguments)
            list += (list.empty() ? "" : ", ") + std::string(typeOf(argument.slot));
        std::printf("int32_t (*typed_%s)(%s) = %s;\n", function.name.c_str(), list.c_str(), function.name.c_str());
    }
    std::puts(
        "int32_t (*typed_kormAffineTransform3DH_mva_32f)(const float *, int32_t, int32_t, const float *, int32_t,\n"
        "    int32_t, float *, int32_t, int32_t, int32_t) = kormAffineTransform3DH_mva_32f;");
}

void printGeometryStubs() {
    std::puts("    .text\n    .hidden mutantEntry");
    std::size_t index = 0;
    for (const std::string& name : geometryNames()) {
        std::printf(
            "    .globl %s\n    .type %s, @function\n%s:\n    push $%zu\n    jmp mutantEntry\n    .size %s, .-%s\n",
            name.c_str(), name.c_str(), name.c_str(), index++, name.c_str(), name.c_str());
    }
    std::puts("    .section .note.GNU-stack,\"\",@progbits");
}

}  // namespace kormtest
