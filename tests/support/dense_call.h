// One call on memory of its own, in any layout, for tests that want to choose each element themselves.
#pragma once

#include <vector>

#include "../reference/address.h"
#include "call.h"
#include "forms.h"
#include "library.h"

namespace kormtest {

class DenseCall {
public:
    // Elements lie `spread` elements apart, rows and objects follow each other; every operand begins `shift` bytes after
    // a multiple of 64. Memory holds a pattern that is no sensible number.
    DenseCall(const Form& form, const Sizes& sizes, std::int32_t spread = 1, std::size_t shift = 0);

    template <class T>
    T get(const char* operand, std::int32_t k, std::int32_t i, std::int32_t j) const {
        const std::size_t index = find(operand);
        return readElement<T>(form_, index, values_[index], sizes_, k, i, j);
    }
    template <class T>
    void set(const char* operand, std::int32_t k, std::int32_t i, std::int32_t j, T value) {
        const std::size_t index = find(operand);
        writeElement<T>(form_, index, values_[index], sizes_, k, i, j, value);
    }

    // The result takes an input's place.
    void alias(const char* operand);

    std::int32_t call(const Library& library = Library::linked());

    // The memory of one operand, gaps included.
    const std::vector<std::byte>& memory(const char* operand) const { return memory_[find(operand)]; }
    std::byte* address(const char* operand, std::int32_t k, std::int32_t i, std::int32_t j) const;

    const Form& form() const { return form_; }
    const Sizes& sizes() const { return sizes_; }
    const std::vector<OperandValues>& values() const { return values_; }

private:
    std::size_t find(const char* operand) const;

    const Form& form_;
    Sizes sizes_;
    std::vector<OperandValues> values_;
    std::vector<std::vector<std::byte>> memory_;
    std::vector<std::vector<std::byte*>> entries_;
};

}  // namespace kormtest
