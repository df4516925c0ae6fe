// The tests' own model of the exported functions.
//
// A form is one exported function. Everything the tests expect of it (argument list, order of checks,
// work estimate, limits) is typed in the tables forms_*.cpp by hand, on purpose a second time beside the
// library's tables: a slip in either shows as a difference.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace kormtest {

enum class Layout : std::uint8_t { standard, list, pointer };
enum class Type : std::uint8_t { f32, f64 };
enum class Shape : std::uint8_t { matrix, vector, constant };

enum class Role : std::uint8_t {
    pointer,
    objectStride,
    rowStride,
    elementStride,
    offset,
    size,
    count,
    value,  // a constant of the element type, by value
};

// The sizes of a form. Operands are as large as these say, so sizes that must match are one extent.
enum class Extent : std::uint8_t {
    one,
    three,
    width,   // of the result
    height,  // of the result
    length,
    inner,  // the length of each sum of a product
    order,
    count,
    square,        // order * order: a scratch area, as are those below
    squareAndRow,  // order * order + order
    squareAndFiveRows,
    threeSquaresAndFiveRows,
};

struct Sizes {
    std::int32_t width = 1;
    std::int32_t height = 1;
    std::int32_t length = 1;
    std::int32_t count = 1;
    std::int32_t inner = 1;
    std::int32_t order = 1;

    std::int32_t of(Extent extent) const;
    void set(Extent extent, std::int32_t value);
};

struct Operand {
    enum class Use : std::uint8_t { input, output, scratch };
    enum class Kind : std::uint8_t { element, index };  // index: int32_t whatever the form's type

    std::string name;    // src, src1, val, dst
    std::string prefix;  // of its strides and its offset, where that isn't the name
    Shape shape = Shape::vector;
    // As it is read: a transposed operand is stored with `columns` rows and `rows` columns.
    Extent rows = Extent::one;
    Extent columns = Extent::one;
    bool transposed = false;
    bool array = false;
    Layout layout = Layout::standard;
    // A bare pointer in every layout: rows, columns and objects follow each other without gaps.
    bool dense = false;
    Use use = Use::input;
    Kind kind = Kind::element;

    bool output() const { return use == Use::output; }
    bool byValue() const { return shape == Shape::constant && !array && !dense; }
    Extent storedRows() const { return transposed ? columns : rows; }
    Extent storedColumns() const { return transposed ? rows : columns; }
};

struct Argument {
    std::string name;
    Role role = Role::pointer;
    int operand = -1;             // index into Form::operands, -1 for sizes and count
    Extent extent = Extent::one;  // of a size or the count
};

// Work estimates wrap at 32 bits, hence the unsigned arithmetic behind a signed result.
using Estimate = std::int32_t (*)(const Sizes&);

// The largest estimate that stays serial, by kernel kind. Without a driver nothing is compared.
struct Limit {
    std::int32_t plain = 0;
    std::int32_t general = 0;
};

struct Family;

struct Form {
    std::size_t index = 0;
    std::string name;
    std::string operationWord;
    std::string tokens;
    Type type = Type::f32;
    Layout layout = Layout::standard;  // of the inputs; the result has another one in some forms
    const Family* family = nullptr;
    std::vector<Operand> operands;  // the main result last
    std::size_t first = 0;          // the operand that stands left of the operator
    std::size_t second = 1;
    std::vector<Argument> arguments;
    std::vector<Extent> extents;  // without the count, each once
    // In order: N null, C count, S size, M match, T stride, O offset. Where the strides of objects are looked at on
    // their own and only above one object, that is A, and R the other strides. Where operands are looked at one after the
    // other, o, p, q are the offsets of the first, second and third, t, u, v their strides.
    std::string checks;
    bool array = false;
    bool driver = false;
    Estimate estimate = nullptr;
    Limit limit;

    std::int32_t elementSize() const { return type == Type::f32 ? 4 : 8; }
    std::int32_t sizeOf(const Operand& operand) const {
        return operand.kind == Operand::Kind::index ? 4 : elementSize();
    }
    std::size_t result() const { return operands.size() - 1; }
    bool has(Extent extent) const;
    bool hasRole(Role role) const;
    bool uses(Operand::Use use) const;
};

// All forms with operands, in a fixed order.
const std::vector<Form>& allForms();

// Every exported name, sorted.
std::vector<std::string> allNames();

// Those that tell the size of a buffer and have no operands.
std::vector<std::string> sizeQueryNames();

const Form& formNamed(std::string_view name);

// Does the check of this letter look at this argument?
bool looksAt(char letter, const Argument& argument);

}  // namespace kormtest
