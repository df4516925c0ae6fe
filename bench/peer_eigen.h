// Eigen over the same memory: object by object with sizes known at compile time, and all objects as one
// array where the layout allows it.
#pragma once

#if defined(__GNUC__) && !defined(__clang__)
#pragma GCC diagnostic push
#pragma GCC diagnostic ignored "-Wmaybe-uninitialized"
#endif
#include <Eigen/Core>
#if defined(__GNUC__) && !defined(__clang__)
#pragma GCC diagnostic pop
#endif

#include "forms.h"

namespace bench {

template <class T, int rows, int columns>
using FixedArray = Eigen::Array<T, rows, columns, Eigen::RowMajor>;

// Where an Eigen::Map needs a stride, it is one that is known at run time.
template <Layout layout, bool isVector>
auto strideOf(const auto& operand) {
    if constexpr (isStrided(layout)) {
        if constexpr (isVector) return Eigen::InnerStride<>(operand.elementStep());
        else return Eigen::Stride<Eigen::Dynamic, Eigen::Dynamic>(operand.rowStep(), operand.elementStep());
    } else if constexpr (layout == Layout::padded && !isVector) {
        return Eigen::OuterStride<>(operand.rowStep());
    } else {
        return Eigen::Stride<0, 0>();
    }
}

template <Layout layout, class Plain, class T>
auto mapOf(const OperandOf<T>& operand, bool isArray, std::ptrdiff_t k) {
    constexpr bool isVector = Plain::RowsAtCompileTime == 1;
    T* const object = !isArray                         ? operand.base
                      : entryOf(layout) == Entry::list ? operand.table[k]
                      : layout == Layout::packed       ? operand.base + k * Plain::SizeAtCompileTime
                                                       : operand.base + k * operand.objectStep();
    const auto stride = strideOf<layout, isVector>(operand);
    return Eigen::Map<Plain, Eigen::Unaligned, std::remove_const_t<decltype(stride)>>(object, stride);
}

template <Operand::Kind kind, Layout layout, int rows, int columns, class T>
auto inputOf(const OperandOf<T>& operand, bool isArray, std::ptrdiff_t k) {
    if constexpr (kind == Operand::Kind::constant) {
        T value = operand.value;
        if (isArray) {
            if constexpr (entryOf(layout) == Entry::list) value = *operand.table[k];
            else value = operand.base[k * operand.objectStep()];
        }
        return FixedArray<T, rows, columns>::Constant(value);
    } else {
        return mapOf<layout, const FixedArray<T, rows, columns>>(operand, isArray, k);
    }
}

// An input that all objects share is held in a local of Eigen's own type, as Eigen's users do.
template <Operand::Kind kind, bool isArray, Layout layout, int rows, int columns, class T>
struct EigenInput {
    static constexpr bool keeps = !isArray && kind != Operand::Kind::constant && rows * columns <= 36;

    // A copy: seen through a reference it would have to be read again after every store of a vector.
    const OperandOf<T> operand;
    std::conditional_t<keeps, FixedArray<T, rows, columns>, int> kept;

    explicit EigenInput(const OperandOf<T>& from, bool isShared) : operand(from), kept() {
        if constexpr (keeps) {
            if (isShared) kept = inputOf<kind, layout, rows, columns>(operand, false, 0);
        }
    }
    template <class Use>
    [[gnu::always_inline]] void with(std::ptrdiff_t k, bool isShared, Use use) const {
        constexpr bool isTransposed = kind == Operand::Kind::transposed;
        if constexpr (keeps) {
            if (isShared) {
                if constexpr (isTransposed) use(kept.transpose());
                else use(kept);
                return;
            }
        }
        const auto input = inputOf<kind, layout, rows, columns>(operand, isArray, k);
        if constexpr (isTransposed) use(input.transpose());
        else use(input);
    }
};

template <class Form>
auto combineExpressions(const auto& first, const auto& second) {
    constexpr Shape shape = Form::shape;
    if constexpr (shape.operation == Operation::add) return first + second;
    else if constexpr (shape.operation == Operation::multiply) return first * second;
    else if constexpr (shape.constantFirst) return second - first;
    else return first - second;
}

template <class Form, Layout layout, class T, int rows, int columns>
[[gnu::noinline]] void eigenFixed(const Workload<T>& work) {
    constexpr Shape shape = Form::shape;
    constexpr bool isShared = shape.isArray();  // a single call has nothing to keep
    const EigenInput<shape.firstKind, shape.firstIsArray, layout, rows, columns, T> first(work.first, isShared);
    const EigenInput<shape.secondKind, shape.secondIsArray, layout, rows, columns, T> second(work.second, isShared);
    const OperandOf<T> target = work.result;
    const std::ptrdiff_t count = shape.isArray() ? work.count : 1;
    for (std::ptrdiff_t k = 0; k < count; ++k) {
        auto result = mapOf<layout, FixedArray<T, rows, columns>>(target, shape.isArray(), k);
        first.with(k, isShared, [&](const auto& a) {
            second.with(k, isShared, [&](const auto& b) { result = combineExpressions<Form>(a, b); });
        });
    }
}

// Packed and untransposed: one column an object. An input without objects is repeated for each of them.
template <class Form, class T, int rows, int columns>
[[gnu::noinline]] void eigenFlat(const Workload<T>& work) {
    constexpr Shape shape = Form::shape;
    static_assert(shape.isArray() && !shape.transposes());
    constexpr int size = rows * columns;
    using Objects = Eigen::Array<T, size, Eigen::Dynamic>;
    using Object = Eigen::Array<T, size, 1>;
    using Constants = Eigen::Array<T, 1, Eigen::Dynamic>;
    using Elements = Eigen::Array<T, Eigen::Dynamic, 1>;
    const Eigen::Index count = work.count;

    constexpr bool isOneRun = shape.firstIsArray && (shape.secondKind == Operand::Kind::constant ? !shape.secondIsArray
                                                                                                 : shape.secondIsArray);
    if constexpr (isOneRun) {
        const auto run = [&](const OperandOf<T>& operand) {
            return Eigen::Map<const Elements>(operand.base, count * size);
        };
        Eigen::Map<Elements> result(work.result.base, count * size);
        if constexpr (shape.secondKind == Operand::Kind::constant)
            result = combineExpressions<Form>(run(work.first), Elements::Constant(count * size, work.second.value));
        else result = combineExpressions<Form>(run(work.first), run(work.second));
    } else {
        const auto input = [&]<Operand::Kind kind, bool isArray>(const OperandOf<T>& operand) {
            if constexpr (kind == Operand::Kind::constant) {
                if constexpr (isArray)
                    return Eigen::Map<const Constants>(operand.base, count).template replicate<size, 1>();
                else return Objects::Constant(size, count, operand.value);
            } else if constexpr (isArray) return Eigen::Map<const Objects>(operand.base, size, count);
            else {
                using Shared = Eigen::Map<const Object>;
                return Eigen::Replicate<Shared, 1, Eigen::Dynamic>(Shared(operand.base), 1, count);
            }
        };
        Eigen::Map<Objects>(work.result.base, size, count) =
            combineExpressions<Form>(input.template operator()<shape.firstKind, shape.firstIsArray>(work.first),
                                     input.template operator()<shape.secondKind, shape.secondIsArray>(work.second));
    }
}

// Pointer layout: each stream is an array.
template <class Form, Layout layout, class T, int rows, int columns>
[[gnu::noinline]] void eigenStreams(const Workload<T>& work) {
    constexpr Shape shape = Form::shape;
    static_assert(shape.isArray() && entryOf(layout) == Entry::pointer);
    using Stream = Eigen::Array<T, Eigen::Dynamic, 1>;
    using Stride = std::conditional_t<layout == Layout::streams, Eigen::Stride<0, 0>, Eigen::InnerStride<>>;
    const Eigen::Index count = work.count;
    const auto strided = [](const OperandOf<T>& operand) {
        if constexpr (layout == Layout::streams) return Stride();
        else return Stride(operand.objectStep());
    };
    const auto input = [&]<Operand::Kind kind, bool isArray>(const OperandOf<T>& operand, int i, int j) {
        if constexpr (kind == Operand::Kind::constant && isArray)
            return Eigen::Map<const Stream, Eigen::Unaligned, Stride>(operand.base, count, strided(operand));
        else if constexpr (kind == Operand::Kind::constant) return Stream::Constant(count, operand.value);
        else {
            const T* const entry = operand.table[kind == Operand::Kind::transposed ? j * rows + i : i * columns + j];
            if constexpr (isArray)
                return Eigen::Map<const Stream, Eigen::Unaligned, Stride>(entry, count, strided(operand));
            else return Stream::Constant(count, *entry);
        }
    };
    for (int i = 0; i < rows; ++i)
        for (int j = 0; j < columns; ++j)
            Eigen::Map<Stream, Eigen::Unaligned, Stride>(work.result.table[i * columns + j], count,
                                                         strided(work.result)) =
                combineExpressions<Form>(
                    input.template operator()<shape.firstKind, shape.firstIsArray>(work.first, i, j),
                    input.template operator()<shape.secondKind, shape.secondIsArray>(work.second, i, j));
}

}  // namespace bench
