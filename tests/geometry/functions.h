// The functions of fixed size as the tests know them: typed by hand in functions.cpp, a second time beside the
// library.
//
// The homogeneous transform of arrays isn't among them: it is a form with strides, checks and a driver, and has tests
// of its own (homogeneous.h).
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "../reference/geometry.h"

namespace kormtest {

enum class Slot : std::uint8_t {
    input,     // pointer to elements that are read
    output,    // pointer to elements that are written
    integer,   // pointer to one 32-bit integer that is written
    optional,  // pointer to one element that is written, or null
    constant,  // an element by value
    stride,    // of the operand before it, which is an array
    count,
};

struct Slotted {
    std::string name;
    Slot slot = Slot::input;
    int elements = 0;          // of a pointer
    int stride = -1;           // of an array: the argument that holds its stride
    bool mayEqualDst = false;  // in place: this input may lie where the result goes
    bool pointer() const { return slot <= Slot::optional; }
};

// What a function's elements are, as far as ordinary random numbers wouldn't show all of it.
enum class Domain : std::uint8_t {
    any,
    angles,        // calls sine and cosine: an infinite angle may set errno
    inversion,     // singular and nearly singular matrices matter
    identity,      // matrices near the identity
    unprojection,  // a product of matrices to be inverted
};

struct GeometryFunction {
    std::size_t index = 0;
    std::string name;
    std::vector<Slotted> arguments;
    GeometryReference reference = nullptr;
    Domain domain = Domain::any;
    bool copies = false;     // elements are copied, so NaNs keep their bits
    bool nullCheck = false;  // null pointers give korStatusNullPointer
    bool contracts = true;   // somewhere a product goes into a sum
    bool commutes = false;   // equal inputs may be exchanged without effect

    bool batch() const { return arguments.back().slot == Slot::count; }
    // Index of the argument through which the result goes.
    std::size_t dst() const;
};

const std::vector<GeometryFunction>& geometryFunctions();
const GeometryFunction& geometryFunction(std::string_view name);

// All 87 names, in the order of the table.
std::vector<std::string> geometryNames();

}  // namespace kormtest
