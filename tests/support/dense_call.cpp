#include "dense_call.h"

#include <stdexcept>

namespace kormtest {

DenseCall::DenseCall(const Form& form, const Sizes& sizes, std::int32_t spread, std::size_t shift)
    : form_(form), sizes_(sizes), values_(form.operands.size()), memory_(values_.size()), entries_(values_.size()) {
    for (std::size_t index = 0; index < values_.size(); ++index) {
        const Operand& operand = form.operands[index];
        const std::int32_t size = form.sizeOf(operand);
        const std::int32_t rows = sizes.of(operand.storedRows()), columns = sizes.of(operand.storedColumns());
        const std::int32_t objects = operand.array ? sizes.count : 1;
        OperandValues& values = values_[index];
        values.elementStride = operand.dense ? size : spread * size;
        values.rowStride = columns * values.elementStride;
        values.objectStride = rows * values.rowStride;
        const auto bytes = static_cast<std::size_t>(values.objectStride) * static_cast<std::size_t>(objects);
        std::vector<std::byte>& memory = memory_[index];
        memory.assign(bytes + 64 + shift, std::byte{0xa5});
        const std::size_t misplaced = reinterpret_cast<std::uintptr_t>(memory.data()) % 64;
        std::byte* const begin = memory.data() + (64 - misplaced) % 64 + shift;
        values.base = begin;
        if (operand.dense) continue;
        std::vector<std::byte*>& entries = entries_[index];
        if (operand.layout == Layout::pointer) {
            for (std::int32_t at = 0; at < rows * columns; ++at) entries.push_back(begin + at * values.elementStride);
        } else if (operand.layout == Layout::list && operand.array) {
            for (std::int32_t k = 0; k < objects; ++k)
                entries.push_back(begin + static_cast<std::ptrdiff_t>(k) * values.objectStride);
        }
        if (!entries.empty()) values.base = reinterpret_cast<std::byte*>(entries.data());
    }
}

std::size_t DenseCall::find(const char* operand) const {
    for (std::size_t index = 0; index < form_.operands.size(); ++index)
        if (form_.operands[index].name == operand) return index;
    throw std::logic_error("no operand " + std::string(operand) + " in " + form_.name);
}

void DenseCall::alias(const char* operand) { values_[form_.result()] = values_[find(operand)]; }

std::byte* DenseCall::address(const char* operand, std::int32_t k, std::int32_t i, std::int32_t j) const {
    const std::size_t index = find(operand);
    return elementAddress(form_, index, values_[index], sizes_, k, i, j);
}

std::int32_t DenseCall::call(const Library& library) {
    std::vector<CallValue> arguments;
    for (const Argument& argument : form_.arguments) {
        if (argument.operand < 0) {
            arguments.push_back(CallValue::integer(sizes_.of(argument.extent)));
            continue;
        }
        const OperandValues& values = values_[static_cast<std::size_t>(argument.operand)];
        switch (argument.role) {
            case Role::pointer: arguments.push_back(CallValue::pointer(values.base)); break;
            case Role::objectStride: arguments.push_back(CallValue::integer(values.objectStride)); break;
            case Role::rowStride: arguments.push_back(CallValue::integer(values.rowStride)); break;
            case Role::elementStride: arguments.push_back(CallValue::integer(values.elementStride)); break;
            case Role::offset: arguments.push_back(CallValue::integer(values.offset)); break;
            default: throw std::logic_error("constants by value aren't provided for");
        }
    }
    return callFunction(library.function(form_), arguments).status();
}

}  // namespace kormtest
