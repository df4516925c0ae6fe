// Finds a random place in an arena for one operand: strides, offsets, gaps, alignment.
#pragma once

#include <vector>

#include "../reference/address.h"
#include "arena.h"
#include "forms.h"

namespace kormtest {

struct PlacementOptions {
    bool plain = true;           // all element strides equal the element size
    bool mayCollide = false;     // elements of a source may share memory
    bool anyOffset = false;      // the form takes negative and misaligned offsets too
    bool anyLoneStride = false;  // the form doesn't look at the object strides of a call of one object
    bool mayComb = true;
    bool adjacentEntries = false;  // a table's entries lead to adjacent elements, one object after the other
    bool thin = false;             // the least memory: every stride is the element size, all entries are one
};

struct Placed {
    OperandValues values;
    std::vector<std::byte*> entries;  // of the table or list, without the offset
};

// Adds the windows of the operand; the caller writes its table once the windows are filled.
Placed placeOperand(Arena& arena, const Form& form, std::size_t operandIndex, const Sizes& sizes,
                    const PlacementOptions& options, Random& random);

// A place between guard pages for a table or list of so many entries.
std::byte* placeTable(Arena& arena, std::size_t operandIndex, std::size_t entries, Random& random);

}  // namespace kormtest
