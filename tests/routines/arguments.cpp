#include "arguments.h"

namespace kormtest {

DecodedCall decode(const Form& form, const std::vector<CallValue>& arguments) {
    DecodedCall call;
    call.operands.resize(form.operands.size());
    for (std::size_t i = 0; i < form.arguments.size(); ++i) {
        const Argument& argument = form.arguments[i];
        const auto number = static_cast<std::int32_t>(static_cast<std::uint32_t>(arguments[i].bits));
        OperandValues unused;
        OperandValues& operand =
            argument.operand < 0 ? unused : call.operands[static_cast<std::size_t>(argument.operand)];
        switch (argument.role) {
            case Role::pointer:
                operand.base = reinterpret_cast<std::byte*>(static_cast<std::uintptr_t>(arguments[i].bits));
                break;
            case Role::value: operand.constantBits = arguments[i].bits; break;
            case Role::objectStride: operand.objectStride = number; break;
            case Role::rowStride: operand.rowStride = number; break;
            case Role::elementStride: operand.elementStride = number; break;
            case Role::offset: operand.offset = number; break;
            case Role::size:
            case Role::count: call.sizes.set(argument.extent, number); break;
        }
    }
    return call;
}

}  // namespace kormtest
