// One operand of a call, by objects.
#pragma once

#include "../address.h"
#include "../open_elements.h"
#include "square.h"

namespace kormtest {

inline std::size_t operandNamed(const Form& form, const char* name) {
    std::size_t index = 0;
    while (form.operands[index].name != name) ++index;
    return index;
}

template <class T>
class View {
public:
    View(const Form& form, const std::vector<OperandValues>& operands, const Sizes& sizes, const char* name)
        : form_(form), index_(operandNamed(form, name)), values_(operands[index_]), sizes_(sizes) {}

    T read(std::int32_t k, std::int32_t i, std::int32_t j) const {
        return readElement<T>(form_, index_, values_, sizes_, k, i, j);
    }
    void write(std::int32_t k, std::int32_t i, std::int32_t j, T value) const {
        writeElement<T>(form_, index_, values_, sizes_, k, i, j, value);
    }
    // A value that may be off by the radius.
    void writeOpen(std::int32_t k, std::int32_t i, std::int32_t j, long double middle, long double radius) const {
        writeOpen(k, i, j, OpenElement{address(k, i, j), middle, radius, false, 0, sizeof(T)});
    }
    void writeAnything(std::int32_t k, std::int32_t i, std::int32_t j) const {
        writeOpen(k, i, j, OpenElement{address(k, i, j), 0, 0, true, 0, sizeof(T)});
    }
    std::byte* address(std::int32_t k, std::int32_t i, std::int32_t j) const {
        return elementAddress(form_, index_, values_, sizes_, k, i, j);
    }
    Square<T> square(std::int32_t k) const {
        Square<T> result(sizes_.order);
        for (std::int32_t i = 0; i < sizes_.order; ++i)
            for (std::int32_t j = 0; j < sizes_.order; ++j) result(i, j) = read(k, i, j);
        return result;
    }
    void writeSquare(std::int32_t k, const Square<T>& matrix) const {
        for (std::int32_t i = 0; i < sizes_.order; ++i)
            for (std::int32_t j = 0; j < sizes_.order; ++j) write(k, i, j, matrix(i, j));
    }
    std::vector<T> vector(std::int32_t k) const {
        std::vector<T> result;
        for (std::int32_t j = 0; j < sizes_.order; ++j) result.push_back(read(k, 0, j));
        return result;
    }
    void writeVector(std::int32_t k, const std::vector<T>& vector) const {
        for (std::int32_t j = 0; j < sizes_.order; ++j) write(k, 0, j, vector[static_cast<std::size_t>(j)]);
    }

private:
    void writeOpen(std::int32_t k, std::int32_t i, std::int32_t j, OpenElement element) const {
        const T value = static_cast<T>(element.middle);
        std::memcpy(&element.bits, &value, sizeof value);
        write(k, i, j, value);
        openElements().push_back(element);
    }

    const Form& form_;
    std::size_t index_;
    const OperandValues& values_;
    const Sizes& sizes_;
};

}  // namespace kormtest
