// The tests' own model of the exported functions.
//
// A form is one exported function. Everything the tests expect of it (argument list, order of checks,
// work estimate, limits) is typed in forms_table.cpp by hand, on purpose a second time beside the
// library's tables: a slip in either shows as a difference.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace kormtest {

enum class Layout : std::uint8_t { standard, list, pointer };
enum class Type : std::uint8_t { f32, f64 };
enum class Shape : std::uint8_t { matrix, vector, constant };
enum class Operation : std::uint8_t { add, sub, mul };

enum class Role : std::uint8_t {
    pointer,
    objectStride,
    rowStride,
    elementStride,
    offset,
    width,
    height,
    length,
    count,
    value,  // a constant of the element type, by value
};

struct Sizes {
    std::int32_t width = 1;
    std::int32_t height = 1;
    std::int32_t length = 1;
    std::int32_t count = 1;
};

struct Operand {
    std::string name;  // the stem of its arguments: src, src1, val, dst
    Shape shape = Shape::vector;
    bool transposed = false;
    bool array = false;
    bool output = false;
};

struct Argument {
    std::string name;
    Role role = Role::pointer;
    int operand = -1;  // index into Form::operands, -1 for sizes and count
};

// Work estimates wrap at 32 bits, hence the unsigned arithmetic behind a signed result.
using Estimate = std::int32_t (*)(const Sizes&);

// The largest estimate that stays serial, by kernel kind. Without a driver nothing is compared.
struct Limit {
    std::int32_t plain = 0;
    std::int32_t general = 0;
};

struct Form {
    std::size_t index = 0;
    std::string name;
    std::string operationWord;
    std::string tokens;
    Operation operation = Operation::add;
    Type type = Type::f32;
    Layout layout = Layout::standard;
    std::vector<Operand> operands;  // in the order of the argument list, the result last
    std::size_t first = 0;          // the operand that stands left of the operator
    std::size_t second = 1;
    std::vector<Argument> arguments;
    std::string checks;  // N null, C count, S size, T stride, O offset, in order
    bool array = false;
    bool driver = false;
    Estimate estimate = nullptr;
    Limit limit;

    std::int32_t elementSize() const { return type == Type::f32 ? 4 : 8; }
    bool matrices() const { return operands.back().shape == Shape::matrix; }
    std::size_t result() const { return operands.size() - 1; }
};

// All forms with operands (288 of the 289 exports), in a fixed order.
const std::vector<Form>& allForms();

// Every exported name, sorted.
std::vector<std::string> allNames();

const Form& formNamed(std::string_view name);

// The letter of a check order under which an argument of this role is looked at, 0 for none.
char checkLetter(Role role);

}  // namespace kormtest
