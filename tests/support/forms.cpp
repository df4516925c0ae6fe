#include "forms.h"

#include <algorithm>
#include <stdexcept>

#include "family.h"
#include "words.h"

namespace kormtest {
namespace {

// In the order of subsystems; a form's place in it takes part in the seeds of its random cases.
std::vector<Table> allTables() {
    return {
        arithForms(),  productForms(), vectorForms(), movementForms(),
        linalgForms(), eigenForms(),   qrForms(),     generalEigenForms(),
    };
}

bool contains(const char* list, const std::string& word) {
    const auto names = wordsOf(list);
    return std::find(names.begin(), names.end(), word) != names.end();
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

void addArgument(Form& form, int operand, Role role, const char* suffix) {
    const Operand& described = form.operands[static_cast<std::size_t>(operand)];
    const bool base = *suffix == '\0' || described.prefix.empty();
    form.arguments.push_back({(base ? described.name : described.prefix) + suffix, role, operand, Extent::one});
}

void addDescriptor(Form& form, int index) {
    const Operand& operand = form.operands[static_cast<std::size_t>(index)];
    addArgument(form, index, operand.byValue() ? Role::value : Role::pointer, "");
    if (operand.byValue() || operand.dense) return;
    const bool constant = operand.shape == Shape::constant;
    if (operand.layout == Layout::pointer && !constant) {
        addArgument(form, index, Role::offset, "Offset");
        if (operand.array) addArgument(form, index, Role::objectStride, "ObjectStride");
        return;
    }
    if (operand.array) {
        if (operand.layout == Layout::list) addArgument(form, index, Role::offset, "Offset");
        else addArgument(form, index, Role::objectStride, "ObjectStride");
    }
    if (operand.shape == Shape::matrix) addArgument(form, index, Role::rowStride, "RowStride");
    if (!constant) addArgument(form, index, Role::elementStride, "ElementStride");
}

void addSize(Form& form, const std::string& name, Extent extent) {
    form.arguments.push_back({name, Role::size, -1, extent});
    if (!form.has(extent)) form.extents.push_back(extent);
}

// A word of a signature: an operand, a size of the form, or a size of an operand as it is stored.
void addWord(Form& form, const std::string& word) {
    for (std::size_t i = 0; i < form.operands.size(); ++i) {
        const Operand& operand = form.operands[i];
        if (word == operand.name) return addDescriptor(form, static_cast<int>(i));
        if (word == operand.name + "Width") return addSize(form, word, operand.storedColumns());
        if (word == operand.name + "Height") return addSize(form, word, operand.storedRows());
        if (word == operand.name + "Length") return addSize(form, word, operand.columns);
    }
    if (word == "width") return addSize(form, word, Extent::width);
    if (word == "height") return addSize(form, word, Extent::height);
    if (word == "length") return addSize(form, word, Extent::length);
    if (word == "order") return addSize(form, word, Extent::order);
    if (word != "count") throw std::logic_error("unknown word in a signature: " + word);
    if (form.array) form.arguments.push_back({word, Role::count, -1, Extent::count});
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

std::string orderOf(const Form& form, const Table& table) {
    for (const OrderRow& row : table.orders) {
        if (row.operation != form.operationWord || row.layout != form.layout) continue;
        if (row.type != 0 && (row.type == 32) != (form.type == Type::f32)) continue;
        if (row.resultLayout && *row.resultLayout != form.operands[form.result()].layout) continue;
        if (contains(row.tokens, form.tokens)) return row.checks;
    }
    return form.family->usualChecks(form);
}

// The layouts of source and result, in forms that have two.
std::string pairName(Layout source, Layout result) {
    constexpr char letters[] = {'S', 'L', 'P'};
    return {letters[static_cast<int>(source)], letters[static_cast<int>(result)]};
}

Form makeForm(const Table& table, const GroupRow& row, const std::string& tokens, Type type, Layout layout,
              Layout resultLayout) {
    Form form;
    form.operationWord = row.operation;
    form.tokens = tokens;
    form.type = type;
    form.layout = layout;
    form.family = row.family;
    form.name = "korm" + form.operationWord + "_" + tokens + (type == Type::f32 ? "_32f" : "_64f");
    if (row.family->layoutPairs) form.name.append(1, '_').append(pairName(layout, resultLayout));
    else if (layout == Layout::list) form.name += "_L";
    else if (layout == Layout::pointer) form.name += "_P";
    for (std::size_t at = 0; at < tokens.size();) form.operands.push_back(parseToken(tokens, at));
    for (const Operand& operand : form.operands) form.array = form.array || operand.array;
    row.family->shape(form);
    for (Operand& operand : form.operands) operand.layout = operand.output() ? resultLayout : layout;
    for (const std::string& word : wordsOf(row.family->signature)) addWord(form, word);
    form.checks = orderOf(form, table);
    const auto& without = table.withoutDriver;
    form.driver = row.estimate != nullptr && std::find(without.begin(), without.end(), form.name) == without.end();
    if (form.driver) {
        form.estimate = row.estimate;
        form.limit = limitOf(*row.limits, layout, type);
    }
    return form;
}

std::vector<Form> makeForms() {
    std::vector<Form> forms;
    for (const Table& table : allTables()) {
        for (const GroupRow& row : table.groups) {
            for (const std::string& tokens : wordsOf(row.tokens)) {
                const bool array = tokens.find('a') != std::string::npos;
                for (const Type type : {Type::f32, Type::f64}) {
                    for (const Layout layout : {Layout::standard, Layout::list, Layout::pointer}) {
                        // A list of objects needs an array among the operands.
                        if (layout == Layout::list && !array) continue;
                        for (const Layout result : {Layout::standard, Layout::list, Layout::pointer}) {
                            if (!row.family->layoutPairs && result != layout) continue;
                            forms.push_back(makeForm(table, row, tokens, type, layout, result));
                            forms.back().index = forms.size() - 1;
                        }
                    }
                }
            }
        }
    }
    return forms;
}

}  // namespace

std::int32_t Sizes::of(Extent extent) const {
    switch (extent) {
        case Extent::one: return 1;
        case Extent::three: return 3;
        case Extent::width: return width;
        case Extent::height: return height;
        case Extent::length: return length;
        case Extent::inner: return inner;
        case Extent::order: return order;
        case Extent::count: return count;
        case Extent::square: return order * order;
        case Extent::squareAndRow: return order * order + order;
        case Extent::squareAndFiveRows: return order * (order + 5);
        case Extent::threeSquaresAndFiveRows: return order * (3 * order + 5);
    }
    return 0;
}

void Sizes::set(Extent extent, std::int32_t value) {
    switch (extent) {
        case Extent::width: width = value; return;
        case Extent::height: height = value; return;
        case Extent::length: length = value; return;
        case Extent::inner: inner = value; return;
        case Extent::order: order = value; return;
        case Extent::count: count = value; return;
        case Extent::one:
        case Extent::three:
        case Extent::square:
        case Extent::squareAndRow:
        case Extent::squareAndFiveRows:
        case Extent::threeSquaresAndFiveRows: throw std::logic_error("not a size of its own");
    }
}

bool Form::has(Extent extent) const { return std::find(extents.begin(), extents.end(), extent) != extents.end(); }

bool Form::hasRole(Role role) const {
    return std::any_of(arguments.begin(), arguments.end(),
                       [&](const Argument& argument) { return argument.role == role; });
}

bool Form::uses(Operand::Use use) const {
    return std::any_of(operands.begin(), operands.end(), [&](const Operand& operand) { return operand.use == use; });
}

void matchSizes(const Form& form, Sizes& sizes) {
    if (form.family->tall && sizes.width > sizes.height) std::swap(sizes.width, sizes.height);
}

Operand& addOperand(Form& form, const char* name, Shape shape, Extent rows, Extent columns, Operand::Use use) {
    Operand operand;
    operand.name = name;
    operand.shape = shape;
    operand.rows = rows;
    operand.columns = columns;
    operand.use = use;
    form.operands.push_back(operand);
    return form.operands.back();
}

const std::vector<Form>& allForms() {
    static const std::vector<Form> forms = makeForms();
    return forms;
}

std::vector<std::string> allNames() {
    std::vector<std::string> names{"kormGetLibVersion"};
    for (const std::string& name : sizeQueryNames()) names.push_back(name);
    for (const Form& form : allForms()) names.push_back(form.name);
    std::sort(names.begin(), names.end());
    return names;
}

std::vector<std::string> sizeQueryNames() {
    return {"kormEigenValuesGetBufSize_32f", "kormEigenValuesGetBufSize_64f", "kormEigenValuesVectorsGetBufSize_32f",
            "kormEigenValuesVectorsGetBufSize_64f"};
}

const Form& formNamed(std::string_view name) {
    for (const Form& form : allForms())
        if (form.name == name) return form;
    throw std::logic_error("no form " + std::string(name));
}

bool looksAt(char letter, const Argument& argument) {
    const auto ofOperand = [&](char ofFirst) { return letter == ofFirst + argument.operand; };
    switch (argument.role) {
        case Role::pointer: return letter == 'N';
        case Role::count: return letter == 'C';
        case Role::size: return letter == 'S';
        case Role::objectStride: return letter == 'T' || letter == 'A' || ofOperand('t');
        case Role::rowStride:
        case Role::elementStride: return letter == 'T' || letter == 'R' || ofOperand('t');
        case Role::offset: return letter == 'O' || ofOperand('o');
        case Role::value: return false;
    }
    return false;
}

}  // namespace kormtest
