// The forms that are measured, and how to call them. A form's shape is read off its name, so that a row
// of the benchmark is a name and nothing else.
#pragma once

#include <korm.h>

#include <cstdint>
#include <string_view>
#include <tuple>
#include <type_traits>

#include "workload.h"

namespace bench {

enum class Operation { add, subtract, multiply };

struct Shape {
    Operation operation = Operation::add;
    Operand::Kind firstKind = Operand::Kind::matrix;
    Operand::Kind secondKind = Operand::Kind::matrix;
    bool firstIsArray = false;
    bool secondIsArray = false;
    bool constantFirst = false;  // in the formula; the vector comes first among the arguments all the same

    constexpr bool isArray() const { return firstIsArray || secondIsArray; }
    constexpr bool isVector() const { return firstKind == Operand::Kind::vector; }
    constexpr bool transposes() const {
        return firstKind == Operand::Kind::transposed || secondKind == Operand::Kind::transposed;
    }
};

constexpr Operand::Kind kindOf(char letter) {
    switch (letter) {
        case 'm': return Operand::Kind::matrix;
        case 't': return Operand::Kind::transposed;
        case 'v': return Operand::Kind::vector;
        default: return Operand::Kind::constant;
    }
}

constexpr Shape shapeOf(std::string_view operation, std::string_view operands) {
    Shape shape;
    shape.operation = operation == "Add"   ? Operation::add
                      : operation == "Sub" ? Operation::subtract
                                           : Operation::multiply;
    const auto token = [&](Operand::Kind& kind, bool& isArray) {
        kind = kindOf(operands[0]);
        operands.remove_prefix(1);
        isArray = !operands.empty() && operands[0] == 'a';
        if (isArray) operands.remove_prefix(1);
    };
    shape.constantFirst = operands[0] == 'c';
    if (shape.constantFirst) {
        token(shape.secondKind, shape.secondIsArray);
        token(shape.firstKind, shape.firstIsArray);
    } else {
        token(shape.firstKind, shape.firstIsArray);
        token(shape.secondKind, shape.secondIsArray);
    }
    return shape;
}

// The two inputs in the order of the arguments; a constant that comes first in the formula is the minuend.
template <Shape shape, class T>
constexpr T combine(T first, T second) {
    if constexpr (shape.operation == Operation::add) return first + second;
    else if constexpr (shape.operation == Operation::multiply) return first * second;
    else if constexpr (shape.constantFirst) return second - first;
    else return first - second;
}

template <Operand::Kind kind, bool isArray, Entry entry, class T>
auto descriptor(const OperandOf<T>& operand) {
    const bool isMatrix = kind == Operand::Kind::matrix || kind == Operand::Kind::transposed;
    if constexpr (kind == Operand::Kind::constant) {
        if constexpr (!isArray) return std::tuple(operand.value);
        else if constexpr (entry == Entry::list) return std::tuple(operand.table, operand.offset);
        else return std::tuple(operand.base, operand.objectStride);
    } else if constexpr (entry == Entry::pointer) {
        if constexpr (isArray) return std::tuple(operand.table, operand.offset, operand.objectStride);
        else return std::tuple(operand.table, operand.offset);
    } else if constexpr (!isArray) {
        if constexpr (isMatrix) return std::tuple(operand.base, operand.rowStride, operand.elementStride);
        else return std::tuple(operand.base, operand.elementStride);
    } else if constexpr (entry == Entry::list) {
        if constexpr (isMatrix)
            return std::tuple(operand.table, operand.offset, operand.rowStride, operand.elementStride);
        else return std::tuple(operand.table, operand.offset, operand.elementStride);
    } else {
        if constexpr (isMatrix)
            return std::tuple(operand.base, operand.objectStride, operand.rowStride, operand.elementStride);
        else return std::tuple(operand.base, operand.objectStride, operand.elementStride);
    }
}

template <class Form, Entry entry, class T>
auto argumentsOf(const Workload<T>& work) {
    constexpr Shape shape = Form::shape;
    const auto sizes = [&] {
        if constexpr (shape.isVector()) return std::tuple(work.width);
        else return std::tuple(work.width, work.height);
    }();
    const auto count = [&] {
        if constexpr (shape.isArray()) return std::tuple(work.count);
        else return std::tuple<>();
    }();
    return std::tuple_cat(descriptor<shape.firstKind, shape.firstIsArray, entry>(work.first),
                          descriptor<shape.secondKind, shape.secondIsArray, entry>(work.second),
                          descriptor < shape.isVector() ? Operand::Kind::vector : Operand::Kind::matrix,
                          shape.isArray(), entry > (work.result), sizes, count);
}

template <class Form, Layout layout, class T>
void callKorm(const Workload<T>& work) {
    constexpr Entry entry = entryOf(layout);
    std::apply(Form::template function<T, entry>(), argumentsOf<Form, entry>(work));
}

// An array form exists in three layouts, a single-object form has no list.
#define BENCH_FORM_COMMON(OPERATION, OPERANDS)                         \
    static constexpr std::string_view name = #OPERATION "_" #OPERANDS; \
    static constexpr ::bench::Shape shape = ::bench::shapeOf(#OPERATION, #OPERANDS);
#define BENCH_FORM_PICK(NAME, SUFFIX)                                   \
    if constexpr (std::is_same_v<T, float>) return &NAME##_32f##SUFFIX; \
    else return &NAME##_64f##SUFFIX;

#define BENCH_ARRAY_FORM(OPERATION, OPERANDS)                        \
    struct OPERATION##_##OPERANDS {                                  \
        BENCH_FORM_COMMON(OPERATION, OPERANDS)                       \
        template <class T, ::bench::Entry entry>                     \
        static constexpr auto function() {                           \
            if constexpr (entry == ::bench::Entry::list) {           \
                BENCH_FORM_PICK(korm##OPERATION##_##OPERANDS, _L)    \
            } else if constexpr (entry == ::bench::Entry::pointer) { \
                BENCH_FORM_PICK(korm##OPERATION##_##OPERANDS, _P)    \
            } else {                                                 \
                BENCH_FORM_PICK(korm##OPERATION##_##OPERANDS, )      \
            }                                                        \
        }                                                            \
    };
#define BENCH_SINGLE_FORM(OPERATION, OPERANDS)                    \
    struct OPERATION##_##OPERANDS {                               \
        BENCH_FORM_COMMON(OPERATION, OPERANDS)                    \
        template <class T, ::bench::Entry entry>                  \
        static constexpr auto function() {                        \
            if constexpr (entry == ::bench::Entry::pointer) {     \
                BENCH_FORM_PICK(korm##OPERATION##_##OPERANDS, _P) \
            } else {                                              \
                BENCH_FORM_PICK(korm##OPERATION##_##OPERANDS, )   \
            }                                                     \
        }                                                         \
    };

}  // namespace bench
