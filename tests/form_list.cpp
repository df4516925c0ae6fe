// Prints the tests' own list of functions:
//   korm_forms names       one name a line
//   korm_forms prototypes  a C file that assigns each function to a pointer of the expected type
//   korm_forms stubs       assembly with one stub for each function, for the libraries in mutants/
//   korm_forms geometry-stubs  the same for those in geometry/mutants/
#include <cstdio>
#include <cstring>

#include "geometry/functions.h"
#include "geometry/prototypes.h"
#include "support/forms.h"

namespace kormtest {
namespace {

std::string pointerType(const Form& form, const Argument& argument) {
    const Operand& operand = form.operands[static_cast<std::size_t>(argument.operand)];
    std::string element = form.type == Type::f32 ? "float" : "double";
    if (operand.kind == Operand::Kind::index) element = "int32_t";
    const bool constant = operand.shape == Shape::constant;
    const bool table = operand.layout == Layout::pointer ? !constant : operand.layout == Layout::list && operand.array;
    const bool input = operand.use == Operand::Use::input;
    return (input ? "const " : "") + element + (table && !operand.dense ? " *const *" : " *");
}

void printPrototypes() {
    std::puts("#include <korm.h>\n\nconst kormLibVersion *(*typed_kormGetLibVersion)(void) = kormGetLibVersion;");
    for (const std::string& name : sizeQueryNames())
        std::printf("int32_t (*typed_%s)(int32_t, uint32_t *) = %s;\n", name.c_str(), name.c_str());
    for (const Form& form : allForms()) {
        std::string list;
        for (const Argument& argument : form.arguments) {
            if (!list.empty()) list += ", ";
            if (argument.role == Role::pointer) list += pointerType(form, argument);
            else if (argument.role == Role::value) list += form.type == Type::f32 ? "float" : "double";
            else list += "int32_t";
        }
        std::printf("int32_t (*typed_%s)(%s) = %s;\n", form.name.c_str(), list.c_str(), form.name.c_str());
    }
}

void printStub(const std::string& name, std::size_t index) {
    std::printf("    .globl %s\n    .type %s, @function\n%s:\n    push $%zu\n    jmp mutantEntry\n    .size %s, .-%s\n",
                name.c_str(), name.c_str(), name.c_str(), index, name.c_str(), name.c_str());
}

void printStubs() {
    std::puts("    .text\n    .hidden mutantEntry");
    for (const Form& form : allForms()) printStub(form.name, form.index);
    printStub("kormGetLibVersion", allForms().size());
    for (const std::string& name : sizeQueryNames()) printStub(name, allForms().size());
    std::puts("    .section .note.GNU-stack,\"\",@progbits");
}

}  // namespace
}  // namespace kormtest

int main(int argc, char** argv) {
    using namespace kormtest;
    const std::string verb = argc == 2 ? argv[1] : "";
    if (verb == "names") {
        for (const std::string& name : allNames()) std::puts(name.c_str());
        for (const std::string& name : geometryNames()) std::puts(name.c_str());
    } else if (verb == "prototypes") {
        printPrototypes();
        printGeometryPrototypes();
    } else if (verb == "stubs") {
        printStubs();
    } else if (verb == "geometry-stubs") {
        printGeometryStubs();
    } else {
        std::fprintf(stderr, "usage: korm_forms names|prototypes|stubs|geometry-stubs\n");
        return 2;
    }
    return 0;
}
