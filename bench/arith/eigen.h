// Eigen for sums, differences and scaling: object by object with sizes known to the compiler, and packed objects as one array.
#pragma once

#include "../harness/eigen.h"
#include "../harness/operands.h"

namespace bench {

template <class T, int rows, int columns>
using FixedArray = Eigen::Array<T, rows, columns, Eigen::RowMajor>;

// Where an Eigen::Map needs a stride, it is one that is known at run time.
template <Layout layout, class Plain, class T>
auto mapOf(const Operand<T>& operand, bool isArray, std::ptrdiff_t k) {
    constexpr bool isVector = Plain::RowsAtCompileTime == 1;
    T* const object = !isArray                         ? operand.base
                      : entryOf(layout) == Entry::list ? operand.table[k]
                      : layout == Layout::packed       ? operand.base + k * Plain::SizeAtCompileTime
                                                       : operand.base + k * operand.objectStep();
    const auto stride = [&] {
        if constexpr (isStrided(layout) && isVector) return Eigen::InnerStride<>(operand.elementStep());
        else if constexpr (isStrided(layout))
            return Eigen::Stride<Eigen::Dynamic, Eigen::Dynamic>(operand.rowStep(), operand.elementStep());
        else if constexpr (layout == Layout::padded && !isVector) return Eigen::OuterStride<>(operand.rowStep());
        else return Eigen::Stride<0, 0>();
    }();
    return Eigen::Map<Plain, Eigen::Unaligned, std::remove_const_t<decltype(stride)>>(object, stride);
}

// An input as an expression of the result's shape, handed to `use`. One that all objects share is held in a local of Eigen's
// own type where it is small, as Eigen's users do.
template <Kind kind, bool isArray, Layout layout, int rows, int columns, class T>
struct EigenInput {
    static constexpr bool isHeld = !isArray && kind != Kind::constant && rows * columns <= 36;
    static constexpr bool isTransposed = kind == Kind::transposed;
    using Plain = FixedArray<T, isTransposed ? columns : rows, isTransposed ? rows : columns>;

    const Operand<T> operand;  // a copy: seen through a reference it would be read again after every store of a vector
    std::conditional_t<isHeld, Plain, int> held{};

    explicit EigenInput(const Operand<T>& from) : operand(from) {
        if constexpr (isHeld) held = mapOf<layout, const Plain>(operand, false, 0);
    }
    template <class Use>
    [[gnu::always_inline]] void with(std::ptrdiff_t k, Use use) const {
        if constexpr (kind == Kind::constant && !isArray) use(Plain::Constant(operand.value));
        else if constexpr (kind == Kind::constant && entryOf(layout) == Entry::list)
            use(Plain::Constant(*operand.table[k]));
        else if constexpr (kind == Kind::constant) use(Plain::Constant(operand.base[k * operand.objectStep()]));
        else if constexpr (isHeld && isTransposed) use(held.transpose());
        else if constexpr (isHeld) use(held);
        else if constexpr (isTransposed) use(mapOf<layout, const Plain>(operand, isArray, k).transpose());
        else use(mapOf<layout, const Plain>(operand, isArray, k));
    }
};

template <Shape shape>
auto combineExpressions(const auto& first, const auto& second) {
    if constexpr (shape.operation == Operation::add) return first + second;
    else if constexpr (shape.operation == Operation::multiply) return first * second;
    else if constexpr (shape.constantFirst) return second - first;
    else return first - second;
}

template <Shape shape, Layout layout, int rows, int columns, class T>
[[gnu::noinline]] void eigenFixed(const Work<T>& work) {
    const EigenInput<shape.firstKind, shape.firstIsArray, layout, rows, columns, T> first(work.first);
    const EigenInput<shape.secondKind, shape.secondIsArray, layout, rows, columns, T> second(work.second);
    const Operand<T> target = work.result;
    const std::ptrdiff_t count = shape.isArray() ? work.count : 1;
    for (std::ptrdiff_t k = 0; k < count; ++k) {
        auto result = mapOf<layout, FixedArray<T, rows, columns>>(target, shape.isArray(), k);
        first.with(k, [&](const auto& a) {
            second.with(k, [&](const auto& b) { result = combineExpressions<shape>(a, b); });
        });
    }
}

// Packed and untransposed: one column an object. An input without objects is repeated for each of them.
template <Shape shape, int size, class T>
[[gnu::noinline]] void eigenFlat(const Work<T>& work) {
    using Object = Eigen::Array<T, size, 1>;
    using Objects = Eigen::Array<T, size, Eigen::Dynamic>;
    using Elements = Eigen::Array<T, Eigen::Dynamic, 1>;
    const Eigen::Index count = work.count;
    if constexpr (shape.firstIsArray && (shape.secondKind == Kind::constant) != shape.secondIsArray) {
        const auto run = [&](const Operand<T>& operand) {
            return Eigen::Map<const Elements>(operand.base, count * size);
        };
        Eigen::Map<Elements> result(work.result.base, count * size);
        if constexpr (shape.secondKind == Kind::constant)
            result = combineExpressions<shape>(run(work.first), Elements::Constant(count * size, work.second.value));
        else result = combineExpressions<shape>(run(work.first), run(work.second));
    } else {
        const auto input = [&]<Kind kind, bool isArray>(const Operand<T>& operand) {
            using Constants = Eigen::Map<const Eigen::Array<T, 1, Eigen::Dynamic>>;
            using Shared = Eigen::Map<const Object>;
            if constexpr (kind == Kind::constant && isArray)
                return Constants(operand.base, count).template replicate<size, 1>();
            else if constexpr (kind == Kind::constant) return Objects::Constant(size, count, operand.value);
            else if constexpr (isArray) return Eigen::Map<const Objects>(operand.base, size, count);
            else return Eigen::Replicate<Shared, 1, Eigen::Dynamic>(Shared(operand.base), 1, count);
        };
        Eigen::Map<Objects>(work.result.base, size, count) =
            combineExpressions<shape>(input.template operator()<shape.firstKind, shape.firstIsArray>(work.first),
                                      input.template operator()<shape.secondKind, shape.secondIsArray>(work.second));
    }
}

}  // namespace bench
