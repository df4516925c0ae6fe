#include "movement.h"

namespace kormtest {
namespace {

// The element as bits: no value passes through a register that could change it.
void move(const Form& form, std::byte* to, const std::byte* from) {
    std::byte element[8];
    const auto size = static_cast<std::size_t>(form.elementSize());
    std::memcpy(element, from, size);
    std::memcpy(to, element, size);
}

struct Call {
    const Form& form;
    const std::vector<OperandValues>& operands;
    const Sizes& sizes;

    std::byte* at(std::size_t operand, std::int32_t k, std::int32_t i, std::int32_t j) const {
        return elementAddress(form, operand, operands[operand], sizes, k, i, j);
    }
    std::int32_t rows() const { return sizes.of(form.operands[form.result()].rows); }
    std::int32_t columns() const { return sizes.of(form.operands[form.result()].columns); }
};

}  // namespace

std::int32_t referenceCopy(const Form& form, const std::vector<OperandValues>& operands, const Sizes& sizes,
                           std::int32_t first, std::int32_t runCount) {
    const Call call{form, operands, sizes};
    for (std::int32_t k = first; k < first + runCount; ++k)
        for (std::int32_t i = 0; i < call.rows(); ++i)
            for (std::int32_t j = 0; j < call.columns(); ++j) move(form, call.at(1, k, i, j), call.at(0, k, i, j));
    return 0;
}

// The pointer layout goes through its table once, entry by entry as they are stored, and for each through all objects.
std::int32_t referenceExtract(const Form& form, const std::vector<OperandValues>& operands, const Sizes& sizes,
                              std::int32_t first, std::int32_t runCount) {
    if (form.layout != Layout::pointer) return referenceCopy(form, operands, sizes, first, runCount);
    const Call call{form, operands, sizes};
    const bool transposed = form.operands[0].transposed;
    const std::int32_t rows = transposed ? call.columns() : call.rows();
    const std::int32_t columns = transposed ? call.rows() : call.columns();
    for (std::int32_t row = 0; row < rows; ++row) {
        for (std::int32_t column = 0; column < columns; ++column) {
            const std::int32_t i = transposed ? column : row;
            const std::int32_t j = transposed ? row : column;
            for (std::int32_t k = first; k < first + runCount; ++k)
                move(form, call.at(1, k, i, j), call.at(0, k, i, j));
        }
    }
    return 0;
}

std::int32_t referenceLoadIdentity(const Form& form, const std::vector<OperandValues>& operands, const Sizes& sizes,
                                   std::int32_t first, std::int32_t runCount) {
    const Call call{form, operands, sizes};
    const float one32 = 1;
    const double one64 = 1;
    const std::byte zero[8] = {};
    const auto* const one = form.type == Type::f32 ? reinterpret_cast<const std::byte*>(&one32)
                                                   : reinterpret_cast<const std::byte*>(&one64);
    for (std::int32_t k = first; k < first + runCount; ++k) {
        for (std::int32_t i = 0; i < call.rows(); ++i) {
            for (std::int32_t j = 0; j < call.columns(); ++j) move(form, call.at(0, k, i, j), zero);
            if (i < call.columns()) move(form, call.at(0, k, i, i), one);
        }
    }
    return 0;
}

std::int32_t referenceTranspose(const Form& form, const std::vector<OperandValues>& operands, const Sizes& sizes,
                                std::int32_t first, std::int32_t runCount) {
    const Call call{form, operands, sizes};
    for (std::int32_t k = first; k < first + runCount; ++k)
        for (std::int32_t i = 0; i < call.columns(); ++i)
            for (std::int32_t j = 0; j < call.rows(); ++j) move(form, call.at(1, k, j, i), call.at(0, k, i, j));
    return 0;
}

}  // namespace kormtest
