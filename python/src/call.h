// A call of any form: where its operands lie, and the forms of a family.
#pragma once

#include <cstddef>
#include <cstdint>

namespace korm::python {

enum Layout { standardLayout, listLayout, pointerLayout, layoutCount };
enum Element { float32, float64, elementCount };

// An operand in the words of a layout. `shape` is that in which it is stored.
struct Place {
    const void* base;
    std::int32_t objectStride, rowStride, elementStride, offset;
    std::int32_t shape[2];
};

struct Call {
    Place in[3], out[2];
    double value[2];  // constants that are passed by value
    void *buffer, *pivots, *values, *imaginary;
    std::int32_t count;
};

struct Form {
    const char* name;
    std::int32_t (*call)(const Call&);
};

// Those that differ in element type and layout alone. A form that doesn't exist has no name.
struct Family {
    Form forms[elementCount][layoutCount];
};

}
