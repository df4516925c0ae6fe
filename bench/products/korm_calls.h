// The library's functions over a problem.
#pragma once

#include <korm.h>

#include <tuple>
#include <type_traits>

#include "problem.h"

namespace bench::products {

template <Shape shape, class T>
auto packedArguments(const Problem<T>& p) {
    constexpr auto size = static_cast<std::int32_t>(sizeof(T));
    const std::int32_t n = p.order, row = n * size;
    const auto bytes = [](std::ptrdiff_t elements) { return static_cast<std::int32_t>(elements) * size; };
    const auto matrix = [&]<bool isArray>(auto* base, std::ptrdiff_t step) {
        if constexpr (isArray) return std::tuple(base, bytes(step), row, size);
        else return std::tuple(base, row, size);
    };
    const auto vector = [&]<bool isArray>(auto* base, std::ptrdiff_t step) {
        if constexpr (isArray) return std::tuple(base, bytes(step), size);
        else return std::tuple(base, size);
    };
    const auto count = [&] {
        if constexpr (shape.isArray()) return std::tuple(static_cast<std::int32_t>(p.count));
        else return std::tuple<>();
    }();
    const auto first = matrix.template operator()<shape.firstIsArray>(p.first, p.firstStep);
    if constexpr (shape.isVector) {
        return std::tuple_cat(first, std::tuple(n, n),
                              vector.template operator()<shape.secondIsArray>(p.second, p.secondStep), std::tuple(n),
                              vector.template operator()<shape.isArray()>(p.result, p.resultStep), count);
    } else {
        return std::tuple_cat(first, std::tuple(n, n),
                              matrix.template operator()<shape.secondIsArray>(p.second, p.secondStep), std::tuple(n, n),
                              matrix.template operator()<shape.isArray()>(p.result, p.resultStep), count);
    }
}

// Objects one element apart.
template <Shape shape, class T>
auto streamArguments(const Problem<T>& p) {
    constexpr auto size = static_cast<std::int32_t>(sizeof(T));
    const std::int32_t n = p.order;
    const auto operand = [&]<bool isArray>(auto* table) {
        if constexpr (isArray) return std::tuple(table, std::int32_t{0}, size);
        else return std::tuple(table, std::int32_t{0});
    };
    const auto sizes = [&] {
        if constexpr (shape.isVector) return std::tuple(n);
        else return std::tuple(n, n);
    }();
    return std::tuple_cat(operand.template operator()<shape.firstIsArray>(p.firstStreams.data()), std::tuple(n, n),
                          operand.template operator()<shape.secondIsArray>(p.secondStreams.data()), sizes,
                          operand.template operator()<true>(p.resultStreams.data()),
                          std::tuple(static_cast<std::int32_t>(p.count)));
}

// A form is a type with its name, its shape, and its functions for either element type.
#define PRODUCT_FORM_PICK(NAME, SUFFIX)                                 \
    if constexpr (std::is_same_v<T, float>) return &NAME##_32f##SUFFIX; \
    else return &NAME##_64f##SUFFIX;
#define PRODUCT_FORM(OPERANDS)                                                                   \
    struct OPERANDS {                                                                            \
        static constexpr std::string_view name = #OPERANDS;                                      \
        static constexpr ::bench::products::Shape shape = ::bench::products::shapeOf(#OPERANDS); \
        template <class T>                                                                       \
        static constexpr auto packed() {                                                         \
            PRODUCT_FORM_PICK(kormMul_##OPERANDS, )                                              \
        }                                                                                        \
        template <class T>                                                                       \
        static constexpr auto streams() {                                                        \
            PRODUCT_FORM_PICK(kormMul_##OPERANDS, _P)                                            \
        }                                                                                        \
    };

template <class Form, class T>
void callKorm(const Problem<T>& problem) {
    std::apply(Form::template packed<T>(), packedArguments<Form::shape>(problem));
}

template <class Form, class T>
void callKormStreams(const Problem<T>& problem) {
    std::apply(Form::template streams<T>(), streamArguments<Form::shape>(problem));
}

}  // namespace bench::products
