// Operands as the loops of arrays take them: whether objects are found by a stride or by a list is known when running only,
// so that one loop serves both layouts. What an operand is (an array or shared by all objects, elements or constants) stays
// part of its type.
#pragma once

#include <cstddef>
#include <cstdint>
#include <type_traits>

#include "entry/views.h"
#include "kernel/known.h"
#include "kernel/predicates.h"
#include "kernel/unroll.h"
#include "kernel/vec.h"

namespace korm::inline KORM_VARIANT::arith {

// Vectors of 16 bytes: small objects hold no longer ones, and long runs wait for memory.
template <class T>
inline constexpr int lanes = 16 / static_cast<int>(sizeof(T));
template <class T>
using Vector = Vec<T, lanes<T>>;

template <class T>
[[gnu::always_inline]] inline Vector<T> repeated(T value) {
    return fromLanes<Vector<T>>([value](int) { return value; });
}

// The objects of an array, or its constants; `origin` is that of the object at hand.
template <class T, Spacing spacingOf>
struct Array {
    using Element = std::remove_const_t<T>;
    static constexpr Objects objects = Objects::stepped;
    static constexpr Spacing spacing = spacingOf;

    BytePointer<T> origin;
    T* const* list;               // null where objects lie a stride apart
    std::ptrdiff_t objectStride;  // of a list: the offset behind every entry
    std::ptrdiff_t rowStride;
    std::ptrdiff_t elementStride;

    [[gnu::always_inline]] void nextByStride() { origin += objectStride; }
    [[gnu::always_inline]] void nextOfList() { origin = reinterpret_cast<BytePointer<T>>(*++list) + objectStride; }
};

// Moves operands on to their next objects; those that have no others stay where they are.
template <class Operand, class... Others>
[[gnu::always_inline]] inline void nextByStride(Operand& operand, Others&... others) {
    if constexpr (requires { operand.nextByStride(); }) operand.nextByStride();
    if constexpr (sizeof...(others) > 0) nextByStride(others...);
}
template <class Operand, class... Others>
[[gnu::always_inline]] inline void nextOfList(Operand& operand, Others&... others) {
    if constexpr (requires { operand.nextOfList(); }) operand.nextOfList();
    if constexpr (sizeof...(others) > 0) nextOfList(others...);
}

// An operand for `eachObject`. There must be an object: the first entry of a list is read.
template <class T, Objects objects, Spacing spacing>
[[gnu::always_inline]] inline auto operand(const GridView<T, objects, spacing>& view) {
    if constexpr (objects == Objects::single) return view;
    else if constexpr (objects == Objects::stepped)
        return Array<T, spacing>{view.origin, nullptr, view.objectStride, view.rowStride, view.elementStride};
    else return Array<T, spacing>{view.at(0).origin, view.list, view.objectStride, view.rowStride, view.elementStride};
}

template <class T, Objects objects>
[[gnu::always_inline]] inline auto operand(const ConstantView<T, objects>& view) {
    using Constants = Array<const T, Spacing::constant>;
    if constexpr (objects == Objects::single) return view;
    else if constexpr (objects == Objects::stepped) return Constants{view.origin, nullptr, view.objectStride, 0, 0};
    else {
        const auto first = reinterpret_cast<const std::byte*>(view.list[0]) + view.objectStride;
        return Constants{first, view.list, view.objectStride, 0, 0};
    }
}

// A shared operand as an array whose objects all are the same one, for loops in which that costs nothing.
template <class T, Spacing spacing>
[[gnu::always_inline]] inline auto asArray(const GridView<T, Objects::single, spacing>& view) {
    return Array<T, spacing>{view.origin, nullptr, 0, view.rowStride, view.elementStride};
}
template <class T>
[[gnu::always_inline]] inline auto asArray(const ConstantView<T, Objects::single>& view) {
    return Array<const T, Spacing::constant>{reinterpret_cast<const std::byte*>(&view.value), nullptr, 0, 0, 0};
}
template <class T, Spacing spacing>
[[gnu::always_inline]] inline const auto& asArray(const Array<T, spacing>& array) {
    return array;
}

// Calls f for each object and moves the operands on: one loop for both layouts, but where `together` isn't 0, objects a stride
// apart have their own, in which so many go at a time. Behind the last entry of a list nothing is read.
template <int together = 0, class A, class B, class D, class F>
[[gnu::always_inline]] inline void eachObject(A a, B b, D dst, std::ptrdiff_t count, const F& f) {
    const bool listed = dst.list != nullptr;
    if (together > 0 && !listed) {
        for (; count >= together; count -= together)
            unrolled<together>([&](auto) __attribute__((always_inline)) {
                f(a, b, dst);
                nextByStride(a, b, dst);
            });
        if (count > 0) f(a, b, dst);
        return;
    }
    for (;;) {
        f(a, b, dst);
        if (--count == 0) return;
        if (together > 0 || listed) [[unlikely]]
            nextOfList(a, b, dst);
        else nextByStride(a, b, dst);
    }
}

// The same where arrays may be shared operands, which have no list and stay where they are.
template <class A, class B, class D, class F>
[[gnu::always_inline]] inline void eachOfArrays(A a, B b, D dst, std::ptrdiff_t count, const F& f) {
    const bool listed = dst.list != nullptr;
    const auto nextOfOwn = [](auto& array) __attribute__((always_inline)) {
        if (array.list != nullptr) array.nextOfList();
    };
    for (;;) {
        f(a, b, dst);
        if (--count == 0) return;
        if (!listed) nextByStride(a, b, dst);
        else (nextOfOwn(a), nextOfOwn(b), nextOfOwn(dst));
    }
}

// Object k, by a layout that is known.
template <bool listed, class View>
[[gnu::always_inline]] inline decltype(auto) objectAt(const View& view, std::ptrdiff_t k) {
    if constexpr (isShared<View>) return (view);
    else {
        View object = view;
        if constexpr (listed) object.origin = reinterpret_cast<decltype(view.origin)>(view.list[k]) + view.objectStride;
        else object.origin = view.origin + k * view.objectStride;
        return object;
    }
}

// The same for small objects: each layout has a loop of its own, and of the smallest two go at a time. `elements` is what an
// object has at most. To transpose doubles takes registers, which leaves none for a choice of the layout up to order 6.
template <int elements, class A, class B, class D, class F>
[[gnu::always_inline]] inline void eachSmallObject(const A& a, const B& b, const D& dst, std::ptrdiff_t count,
                                                   const F& f) {
    constexpr int small = (isTransposed<A> || isTransposed<B>)&&sizeof(typename D::Element) == 8 ? 36 : 18;
    if constexpr (elements > small) eachObject(a, b, dst, count, f);
    else {
        const auto loop = [&](auto listed) __attribute__((always_inline)) {
            const auto one = [&](std::ptrdiff_t k) __attribute__((always_inline)) {
                f(objectAt<listed>(a, k), objectAt<listed>(b, k), objectAt<listed>(dst, k));
            };
            std::ptrdiff_t k = 0;
            if constexpr (elements <= 6)
                for (; k + 2 <= count; k += 2) {
                    one(k);
                    one(k + 1);
                }
            for (; k < count; ++k) one(k);
        };
        if (dst.list == nullptr) loop(std::false_type{});
        else loop(std::true_type{});
    }
}

// The constant of the object at hand.
template <class View>
[[gnu::always_inline]] inline auto constantOf(const View& view) {
    if constexpr (isShared<View>) return view.value;
    else return load<typename View::Element>(view.origin);
}

// Do the rows of an object touch, and its objects?
template <class View>
[[gnu::always_inline]] inline bool rowsTouch(const View& view, std::ptrdiff_t rowBytes) {
    if constexpr (isConstant<View>) return true;
    else return (isTransposed<View> ? view.elementStride : view.rowStride) == rowBytes;
}

template <class... Views>
[[gnu::always_inline]] inline bool objectsTouch(std::ptrdiff_t objectBytes, const Views&... views) {
    return ((isShared<Views> || isConstant<Views> || views.objectStride == objectBytes) && ...);
}

// The width and height of a result.
inline std::int32_t widthOf(MatrixShape shape) { return shape.width; }
inline std::int32_t widthOf(VectorShape shape) { return shape.length; }
inline std::int32_t heightOf(MatrixShape shape) { return shape.height; }
inline Known<1> heightOf(VectorShape) { return {}; }

}  // namespace korm::inline KORM_VARIANT::arith
