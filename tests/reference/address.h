// Where element (i, j) of object k lies, straight from the definition of the layouts.
#pragma once

#include <cstddef>
#include <cstdint>
#include <cstring>

#include "../support/forms.h"

namespace kormtest {

// The values of one operand's arguments.
struct OperandValues {
    std::byte* base = nullptr;  // data, table or list
    std::int32_t objectStride = 0;
    std::int32_t rowStride = 0;
    std::int32_t elementStride = 0;
    std::int32_t offset = 0;
    std::uint64_t constantBits = 0;  // of a constant by value
};

// (i, j) are the logical row and column. A vector has row 0 only.
inline std::byte* elementAddress(const Form& form, std::size_t operandIndex, const OperandValues& values,
                                 const Sizes& sizes, std::int32_t k, std::int32_t i, std::int32_t j) {
    const Operand& operand = form.operands[operandIndex];
    const auto entry = [&](std::ptrdiff_t index) {
        std::byte* pointer;
        std::memcpy(&pointer, values.base + index * static_cast<std::ptrdiff_t>(sizeof pointer), sizeof pointer);
        return reinterpret_cast<std::uintptr_t>(pointer);
    };
    const auto times = [](std::int32_t n, std::int32_t stride) {
        return static_cast<std::uintptr_t>(static_cast<std::intptr_t>(n) * stride);
    };
    const std::int32_t object = operand.array ? k : 0;
    // The stored place of a transposed operand's logical element (i, j) is (j, i).
    const std::int32_t row = operand.transposed ? j : i;
    const std::int32_t column = operand.transposed ? i : j;
    const auto storedWidth = static_cast<std::ptrdiff_t>(sizes.of(operand.storedColumns()));

    if (operand.dense) {
        const std::ptrdiff_t rows = sizes.of(operand.storedRows());
        return values.base + ((object * rows + row) * storedWidth + column) * form.sizeOf(operand);
    }
    std::uintptr_t address = 0;
    if (operand.shape == Shape::constant) {
        if (operand.layout == Layout::list) address = entry(object) + static_cast<std::uintptr_t>(values.offset);
        else address = reinterpret_cast<std::uintptr_t>(values.base) + times(object, values.objectStride);
    } else if (operand.layout == Layout::pointer) {
        address = entry(row * storedWidth + column) + static_cast<std::uintptr_t>(values.offset);
        if (operand.array) address += times(k, values.objectStride);
    } else {
        if (operand.layout == Layout::list && operand.array)
            address = entry(k) + static_cast<std::uintptr_t>(values.offset);
        else address = reinterpret_cast<std::uintptr_t>(values.base) + times(object, values.objectStride);
        if (operand.shape == Shape::matrix) address += times(row, values.rowStride);
        address += times(column, values.elementStride);
    }
    return reinterpret_cast<std::byte*>(address);
}

template <class T>
T readElement(const Form& form, std::size_t operandIndex, const OperandValues& values, const Sizes& sizes,
              std::int32_t k, std::int32_t i, std::int32_t j) {
    const void* const from = form.operands[operandIndex].byValue()
                                 ? static_cast<const void*>(&values.constantBits)
                                 : elementAddress(form, operandIndex, values, sizes, k, i, j);
    T value;
    std::memcpy(&value, from, sizeof value);
    return value;
}

template <class T>
void writeElement(const Form& form, std::size_t operandIndex, const OperandValues& values, const Sizes& sizes,
                  std::int32_t k, std::int32_t i, std::int32_t j, T value) {
    std::memcpy(elementAddress(form, operandIndex, values, sizes, k, i, j), &value, sizeof value);
}

// All element strides equal the element size: the plain kernel's case.
inline bool plainStrides(const Form& form, const std::vector<OperandValues>& operands) {
    for (const Argument& argument : form.arguments) {
        if (argument.role != Role::elementStride) continue;
        if (operands[static_cast<std::size_t>(argument.operand)].elementStride != form.elementSize()) return false;
    }
    return true;
}

}  // namespace kormtest
