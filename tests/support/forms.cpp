#include "forms.h"

#include <algorithm>
#include <sstream>
#include <stdexcept>

#include "forms_table.h"

namespace kormtest {
namespace {

std::vector<std::string> words(const char* text) {
    std::istringstream stream(text);
    std::vector<std::string> result;
    for (std::string word; stream >> word;) result.push_back(word);
    return result;
}

Operand parseToken(const std::string& tokens, std::size_t& at) {
    Operand operand;
    switch (tokens.at(at++)) {
        case 'm': operand.shape = Shape::matrix; break;
        case 't':
            operand.shape = Shape::matrix;
            operand.transposed = true;
            break;
        case 'v': operand.shape = Shape::vector; break;
        case 'c': operand.shape = Shape::constant; break;
        default: throw std::logic_error("unknown operand in " + tokens);
    }
    if (at < tokens.size() && tokens[at] == 'a') {
        operand.array = true;
        ++at;
    }
    return operand;
}

void addOperands(Form& form) {
    std::size_t at = 0;
    while (at < form.tokens.size()) form.operands.push_back(parseToken(form.tokens, at));
    // A name may begin with the constant; its arguments still follow the vector's.
    if (form.operands[0].shape == Shape::constant) {
        std::swap(form.operands[0], form.operands[1]);
        std::swap(form.first, form.second);
    }
    if (form.operands[1].shape == Shape::constant) {
        form.operands[0].name = "src";
        form.operands[1].name = "val";
    } else {
        form.operands[0].name = "src1";
        form.operands[1].name = "src2";
    }
    Operand result;
    result.name = "dst";
    result.shape = form.operands[0].shape;
    for (const Operand& operand : form.operands) result.array = result.array || operand.array;
    result.output = true;
    form.array = result.array;
    form.operands.push_back(result);
}

void addArgument(Form& form, int operand, Role role, const char* suffix) {
    const std::string stem = operand < 0 ? "" : form.operands[static_cast<std::size_t>(operand)].name;
    form.arguments.push_back({stem + suffix, role, operand});
}

void addDescriptor(Form& form, int index) {
    const Operand& operand = form.operands[static_cast<std::size_t>(index)];
    if (operand.shape == Shape::constant) {
        addArgument(form, index, operand.array ? Role::pointer : Role::value, "");
        if (!operand.array) return;
        if (form.layout == Layout::list) addArgument(form, index, Role::offset, "Offset");
        else addArgument(form, index, Role::objectStride, "ObjectStride");
        return;
    }
    addArgument(form, index, Role::pointer, "");
    if (form.layout == Layout::pointer) {
        addArgument(form, index, Role::offset, "Offset");
        if (operand.array) addArgument(form, index, Role::objectStride, "ObjectStride");
        return;
    }
    if (operand.array) {
        if (form.layout == Layout::list) addArgument(form, index, Role::offset, "Offset");
        else addArgument(form, index, Role::objectStride, "ObjectStride");
    }
    if (operand.shape == Shape::matrix) addArgument(form, index, Role::rowStride, "RowStride");
    addArgument(form, index, Role::elementStride, "ElementStride");
}

void addArguments(Form& form) {
    for (std::size_t i = 0; i < form.operands.size(); ++i) addDescriptor(form, static_cast<int>(i));
    if (form.matrices()) {
        addArgument(form, -1, Role::width, "width");
        addArgument(form, -1, Role::height, "height");
    } else {
        addArgument(form, -1, Role::length, "length");
    }
    if (form.array) addArgument(form, -1, Role::count, "count");
}

Limit limitOf(const LimitRow& row, Layout layout, Type type) {
    const bool single = type == Type::f32;
    Limit limit;
    switch (layout) {
        case Layout::standard: limit = single ? row.standard32 : row.standard64; break;
        case Layout::list: limit = single ? row.list32 : row.list64; break;
        case Layout::pointer: limit = single ? row.pointer32 : row.pointer64; break;
    }
    if (row.compare == Compare::below) {
        --limit.plain;
        --limit.general;
    }
    return limit;
}

std::string orderOf(const Form& form) {
    for (const OrderRow& row : orderRows()) {
        if (row.operation != form.operationWord || row.layout != form.layout) continue;
        if (row.type != 0 && (row.type == 32) != (form.type == Type::f32)) continue;
        const auto names = words(row.tokens);
        if (std::find(names.begin(), names.end(), form.tokens) != names.end()) return row.checks;
    }
    return usualOrder(form.layout, form.array);
}

Operation operationNamed(const std::string& word) {
    if (word == "Add") return Operation::add;
    if (word == "Sub") return Operation::sub;
    if (word == "Mul") return Operation::mul;
    throw std::logic_error("unknown operation " + word);
}

Form makeForm(const GroupRow& row, const std::string& tokens, Type type, Layout layout) {
    Form form;
    form.operationWord = row.operation;
    form.operation = operationNamed(row.operation);
    form.tokens = tokens;
    form.type = type;
    form.layout = layout;
    form.name = "korm" + form.operationWord + "_" + tokens + (type == Type::f32 ? "_32f" : "_64f");
    if (layout == Layout::list) form.name += "_L";
    if (layout == Layout::pointer) form.name += "_P";
    addOperands(form);
    addArguments(form);
    form.checks = orderOf(form);
    form.driver = row.estimate != nullptr && !lacksDriver(form.name);
    if (form.driver) {
        form.estimate = row.estimate;
        form.limit = limitOf(*row.limits, layout, type);
    }
    return form;
}

std::vector<Form> makeForms() {
    std::vector<Form> forms;
    for (const GroupRow& row : groupRows()) {
        for (const std::string& tokens : words(row.tokens)) {
            const bool array = tokens.find('a') != std::string::npos;
            for (const Type type : {Type::f32, Type::f64}) {
                for (const Layout layout : {Layout::standard, Layout::list, Layout::pointer}) {
                    // A list of objects needs an array among the operands.
                    if (layout == Layout::list && !array) continue;
                    forms.push_back(makeForm(row, tokens, type, layout));
                    forms.back().index = forms.size() - 1;
                }
            }
        }
    }
    return forms;
}

}  // namespace

const std::vector<Form>& allForms() {
    static const std::vector<Form> forms = makeForms();
    return forms;
}

std::vector<std::string> allNames() {
    std::vector<std::string> names{"kormGetLibVersion"};
    for (const Form& form : allForms()) names.push_back(form.name);
    std::sort(names.begin(), names.end());
    return names;
}

const Form& formNamed(std::string_view name) {
    for (const Form& form : allForms())
        if (form.name == name) return form;
    throw std::logic_error("no form " + std::string(name));
}

char checkLetter(Role role) {
    switch (role) {
        case Role::pointer: return 'N';
        case Role::count: return 'C';
        case Role::width:
        case Role::height:
        case Role::length: return 'S';
        case Role::objectStride:
        case Role::rowStride:
        case Role::elementStride: return 'T';
        case Role::offset: return 'O';
        case Role::value: return '\0';
    }
    return '\0';
}

}  // namespace kormtest
