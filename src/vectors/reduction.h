// Dot products and norms: a number for each object, in a row.
//
// Objects are independent of each other. Where a vector of the processor can take one object in each lane, it does; every
// lane adds in the order of a single object. Roots are taken of as many sums at once as a vector has lanes.
#pragma once

#include <cstddef>
#include <cstdint>

#include "entry/views.h"
#include "kernel/groups.h"
#include "kernel/known.h"
#include "kernel/predicates.h"
#include "kernel/results.h"
#include "kernel/scalar.h"
#include "kernel/streams.h"
#include "kernel/unroll.h"
#include "kernel/vec.h"
#include "vectors/aligned.h"
#include "vectors/sums.h"

namespace korm::inline KORM_VARIANT::vectors {

// --- What is added --------------------------------------------------------------------------------

template <class Places>
struct SquarePlaces {
    Places a;

    template <class V>
    [[gnu::always_inline]] V get(int l, std::ptrdiff_t distance) const {
        const V x = a.template get<V>(l, distance);
        return x * x;
    }
    [[gnu::always_inline]] Float4 pairs(int l, std::ptrdiff_t distance) const {
        const Float4 x = a.pairs(l, distance);
        return x * x;
    }
    [[gnu::always_inline]] auto half(int which) const { return SquarePlaces<decltype(a.half(which))>{a.half(which)}; }
};

// The elements of as many objects as a vector has lanes, from object k on: of tables in any order, of others one after the
// other, since for the addresses of several elements of each object there are no registers.
template <class View>
struct LaneWalk {
    using T = typename View::Element;
    static constexpr int origins = isShared<View> ? 1 : laneCount<T>;

    const std::byte* origin[origins];
    std::ptrdiff_t step;
    mutable std::ptrdiff_t distance = 0;  // moved on by each element that is read

    [[gnu::always_inline]] LaneWalk(const View& view, std::ptrdiff_t k) : step(view.elementStride) {
        unrolled<origins>([&](auto l) __attribute__((always_inline)) { origin[l] = view.at(k + l).origin; });
    }
    [[gnu::always_inline]] Lanes<T> element(std::ptrdiff_t) const {
        const auto next = fromLanes<Lanes<T>>([&](int l) __attribute__((always_inline)) {
            return load<T>(origin[isShared<View> ? 0 : l] + distance);
        });
        distance = opaque(distance + step);
        return next;
    }
};

template <class View>
requires isScattered<View>
struct LaneWalk<View> {
    using T = typename View::Element;

    const View& view;
    std::ptrdiff_t k;

    [[gnu::always_inline]] Lanes<T> element(std::ptrdiff_t j) const {
        const std::byte* const first = view.at(k).address(0, j);
        if constexpr (isShared<View>) return broadcast(load<T>(first));
        else return gather<T>(first, view.objectStride);
    }
};

// From one object of an array to the next, in bytes.
template <class View>
[[gnu::always_inline]] inline std::ptrdiff_t strideOf(const View& view) {
    if constexpr (isShared<View>) return 0;
    else return view.objectStride;
}

// The products of object k, or of those from k on with one in each lane: `object` and `stream` give what makes product j,
// `group` what adjacent elements are read from.
template <class A, class B>
struct ProductsOf {
    using T = typename A::Element;
    static constexpr bool adjacent = isAdjacent<A>;
    static constexpr bool listed = isListed<A> || isListed<B>;
    static constexpr bool mayBePacked = !listed && !isShared<A> && !isShared<B>;
    static constexpr bool secondIsShared = isShared<B>;
    static constexpr Second whichSecond = isShared<B> ? Second::shared : Second::ofArray;
    A a;
    B b;

    [[gnu::always_inline]] bool streams() const { return areStreams(a, b); }
    [[gnu::always_inline]] bool packed(std::ptrdiff_t bytes) const {
        return a.objectStride == bytes && b.objectStride == bytes;
    }
    [[gnu::always_inline]] const std::byte* first(std::ptrdiff_t k) const { return a.at(k).origin; }
    [[gnu::always_inline]] const std::byte* second(std::ptrdiff_t k) const { return b.at(k).origin; }
    [[gnu::always_inline]] std::ptrdiff_t firstStride() const { return strideOf(a); }
    [[gnu::always_inline]] std::ptrdiff_t secondStride() const { return strideOf(b); }

    [[gnu::always_inline]] auto object(std::ptrdiff_t k) const {
        return [ x = a.at(k), y = b.at(k) ](std::ptrdiff_t j) __attribute__((always_inline)) {
            return load<T>(x.address(0, j)) * load<T>(y.address(0, j));
        };
    }
    [[gnu::always_inline]] auto stream(std::ptrdiff_t k) const {
        return [ this, at = k * static_cast<std::ptrdiff_t>(sizeof(T)) ](std::ptrdiff_t j)
            __attribute__((always_inline)) {
            return streamOf(a, 0, j).template get<Lanes<T>>(at) * streamOf(b, 0, j).template get<Lanes<T>>(at);
        };
    }
    [[gnu::always_inline]] auto inLanes(std::ptrdiff_t k) const {
        return [ x = LaneWalk<A>{a, k}, y = LaneWalk<B>{b, k} ](std::ptrdiff_t j) __attribute__((always_inline)) {
            return x.element(j) * y.element(j);
        };
    }
    template <int lanes>
    [[gnu::always_inline]] auto group(std::ptrdiff_t k) const {
        return ProductPlaces<Places<const std::byte, lanes>>{groupAt<lanes>(a, k).at(0, 0),
                                                             groupAt<lanes>(b, k).at(0, 0)};
    }
};

template <class A>
struct SquaresOf {
    using T = typename A::Element;
    static constexpr bool adjacent = isAdjacent<A>;
    static constexpr bool listed = isListed<A>;
    static constexpr bool mayBePacked = !listed && !isShared<A>;
    static constexpr bool secondIsShared = false;
    static constexpr Second whichSecond = Second::first;
    A a;

    [[gnu::always_inline]] bool streams() const { return areStreams(a); }
    [[gnu::always_inline]] bool packed(std::ptrdiff_t bytes) const { return a.objectStride == bytes; }
    [[gnu::always_inline]] const std::byte* first(std::ptrdiff_t k) const { return a.at(k).origin; }
    [[gnu::always_inline]] const std::byte* second(std::ptrdiff_t k) const { return first(k); }
    [[gnu::always_inline]] std::ptrdiff_t firstStride() const { return strideOf(a); }
    [[gnu::always_inline]] std::ptrdiff_t secondStride() const { return strideOf(a); }

    [[gnu::always_inline]] auto object(std::ptrdiff_t k) const {
        return [x = a.at(k)](std::ptrdiff_t j) __attribute__((always_inline)) {
            const T element = load<T>(x.address(0, j));
            return element * element;
        };
    }
    [[gnu::always_inline]] auto stream(std::ptrdiff_t k) const {
        return [ this, at = k * static_cast<std::ptrdiff_t>(sizeof(T)) ](std::ptrdiff_t j)
            __attribute__((always_inline)) {
            const auto element = streamOf(a, 0, j).template get<Lanes<T>>(at);
            return element * element;
        };
    }
    [[gnu::always_inline]] auto inLanes(std::ptrdiff_t k) const {
        return [x = LaneWalk<A>{a, k}](std::ptrdiff_t j) __attribute__((always_inline)) {
            const auto elements = x.element(j);
            return elements * elements;
        };
    }
    template <int lanes>
    [[gnu::always_inline]] auto group(std::ptrdiff_t k) const {
        return SquarePlaces<Places<const std::byte, lanes>>{groupAt<lanes>(a, k).at(0, 0)};
    }
};

// --- Loops ----------------------------------------------------------------------------------------

// Three to six products.
template <class Order, int n, class S, class Product>
[[gnu::always_inline]] inline S sizedSum(const Product& product) {
    S p[n];
    unrolled<n>([&](auto j) __attribute__((always_inline)) { p[j] = product(j); });
    return Order::of(p);
}

// Packed objects of n elements are whole vectors, from which these split what stands in the same place of each object.
template <class T, int n>
inline constexpr bool isSplit = n == 3 || (n == 5 && !isFloat<T>);

template <class V>
[[gnu::always_inline]] inline void splitObjects(V (&v)[3]) {
    splitThrees(v);
}
[[gnu::always_inline]] inline void splitObjects(Double2 (&v)[5]) {
    const Double2 a = __builtin_shufflevector(v[0], v[2], 0, 3), b = __builtin_shufflevector(v[0], v[3], 1, 2);
    const Double2 c = __builtin_shufflevector(v[1], v[3], 0, 3), d = __builtin_shufflevector(v[1], v[4], 1, 2);
    v[4] = __builtin_shufflevector(v[2], v[4], 0, 3);
    v[0] = a;
    v[1] = b;
    v[2] = c;
    v[3] = d;
}

template <class Result, class Order, int n, class Products>
[[gnu::noinline, gnu::aligned(64)]] void reduceSized(const Products& source, typename Products::T* dst,
                                                     std::ptrdiff_t count) {
    Products products = source;
    using T = typename Products::T;
    constexpr bool isVectorOf16 = sizeof(Lanes<T>) == 16;
    const auto one = [&](std::ptrdiff_t k) __attribute__((always_inline)) {
        return sizedSum<Order, n, T>(products.object(k));
    };
    if constexpr (Products::adjacent) {
        if constexpr (isSplit<T, n> && Products::mayBePacked && isVectorOf16)
            if (products.packed(n * sizeof(T))) {
                const auto whole = [&](std::ptrdiff_t k) __attribute__((always_inline)) {
                    const auto first = products.template group<1>(k);
                    Lanes<T> p[n];
                    unrolled<n>([&](auto v)
                                    __attribute__((always_inline)) { p[v] = first.template get<Lanes<T>>(0, 16 * v); });
                    splitObjects(p);
                    return Order::of(p);
                };
                return resultsOfGroups<Result>(whole, one, dst, count);
            }
        // An operand that serves all objects is read before the first result is written: from here on it lies on the stack.
        [[maybe_unused]] T shared[n];
        if constexpr (Products::secondIsShared) {
            __builtin_memcpy(shared, products.b.origin, sizeof shared);
            products.b.origin = reinterpret_cast<const std::byte*>(shared);
        }
        const auto group = [&](std::ptrdiff_t k) __attribute__((always_inline)) {
            Lanes<T> p[n];
            readRun<n>(products.template group<laneCount<T>>(k), p);
            return Order::of(p);
        };
        resultsOfGroups<Result>(group, one, dst, count);
    } else {
        const auto stream = [&](std::ptrdiff_t k) __attribute__((always_inline)) {
            return sizedSum<Order, n, Lanes<T>>(products.stream(k));
        };
        if (products.streams()) resultsOfGroups<Result>(stream, one, dst, count);
        else resultsOfEach<Result>(one, dst, count);
    }
}

template <class Result, class Order, class Products>
[[gnu::noinline]] void reduceAny(const Products& source, typename Products::T* dst, std::ptrdiff_t length,
                                 std::ptrdiff_t count) {
    const Products products = source;
    using T = typename Products::T;
    const auto one = [&](std::ptrdiff_t k) __attribute__((always_inline)) {
        return Order::template of<T>(length, products.object(k));
    };
    if constexpr (!Products::adjacent) {
        const auto stream = [&](std::ptrdiff_t k) __attribute__((always_inline)) {
            return Order::template of<Lanes<T>>(length, products.stream(k));
        };
        if (products.streams()) return resultsOfGroups<Result>(stream, one, dst, count);
    }
    const auto group = [&](std::ptrdiff_t k) __attribute__((always_inline)) {
        return Order::template of<Lanes<T>>(length, products.inLanes(k));
    };
    resultsOfGroups<Result>(group, one, dst, count);
}

// Objects whose second vectors lie alike modulo 16 bytes go side by side: all of an array, every other one or every fourth; of
// a list those that happen to. Long ones that lie beyond the first cache are read one by one, as the processor expects it.
template <class Result, class Products>
[[gnu::noinline]] void reduceAligned(const Products& source, typename Products::T* dst, std::ptrdiff_t length,
                                     std::ptrdiff_t count) {
    const Products products = source;
    using T = typename Products::T;
    constexpr int objects = alignedObjects<T>;
    constexpr std::ptrdiff_t longObject = 32;
    const bool areFar = length >= longObject && count * length > firstCache / static_cast<std::ptrdiff_t>(sizeof(T));
    std::ptrdiff_t k = 0;
    const auto sumOfOne = [&]() __attribute__((always_inline)) {
        storeResult(dst, k, Result::of(alignedSum<T>(products.first(k), products.second(k), length)));
        ++k;
    };
    if constexpr (Products::listed) {
        while (!areFar && k + objects <= count) {
            const std::byte *x[objects], *y[objects];
            const std::ptrdiff_t ahead = elementsAhead<T>(products.second(k));
            bool alike = true;
            unrolled<objects>([&](auto o) __attribute__((always_inline)) {
                x[o] = products.first(k + o);
                y[o] = products.second(k + o);
                alike &= length < partialSums || elementsAhead<T>(y[o]) == ahead;
            });
            if (alike) {
                storeResult(dst, k, Result::of(alignedSums<T>(x, y, ahead, length)));
                k += objects;
            } else {
                for (int o = 0; o < objects; ++o) sumOfOne();
            }
        }
    } else if (!areFar) {
        const std::ptrdiff_t xStride = products.firstStride(), yStride = products.secondStride();
        // Those that lie alike are 2^doublings objects apart.
        int doublings = 0;
        while (length >= partialSums && (yStride << doublings) % blockAlignment != 0) ++doublings;
        const std::ptrdiff_t step = std::ptrdiff_t{1} << doublings, groups = (count >> doublings) / objects;
        for (; k < step && groups > 0; ++k) {
            const std::byte* const second = products.second(k);
            constexpr auto which = Products::whichSecond;
            auto sum = sumGroups<Result, T, which, false>;
            if (elementsAhead<T>(second) == 0) {
                sum = sumGroups<Result, T, which, true>;
                // Two vectors wait for loads alone, and a loop of one or two rounds would take a tenth of their time.
                if constexpr (which != Second::first) {
                    if (length == 8) sum = sumGroups<Result, T, which, true, 1>;
                    if (length == 16) sum = sumGroups<Result, T, which, true, 2>;
                }
            }
            sum(products.first(k), step * xStride, second, step * yStride, length, dst + k, step, groups);
        }
        k = groups * objects * step;
    }
    while (k < count) sumOfOne();
}

// --- Choice ---------------------------------------------------------------------------------------

// `Sized` is the order of lengths 3 to 6, `Short` that of others below 8, `Long` that of 8 and more.
template <class Result, class Sized, class Short, class Long, class Products, class Count>
[[gnu::always_inline]] inline void reduce(Products products, typename Products::T* dst, std::int32_t length,
                                          Count count) {
    using T = typename Products::T;
    forOrder(
        length,
        [&](auto n) __attribute__((always_inline)) {
            if constexpr (isOneObject<Count>)
                storeResult(dst, 0, Result::of(sizedSum<Sized, n, T>(products.object(0))));
            else reduceSized<Result, Sized, n>(products, dst, count);
        },
        [&]() __attribute__((always_inline)) {
            if constexpr (std::is_same_v<Long, lengths::aligned>) {
                static_assert(Products::adjacent && std::is_same_v<Short, lengths::zero_start>);
                if constexpr (isOneObject<Count>)
                    storeResult(dst, 0, Result::of(alignedSum<T>(products.first(0), products.second(0), length)));
                else reduceAligned<Result>(products, dst, length, count);
            } else if (length < 8) {
                reduceAny<Result, Short>(products, dst, length, count);
            } else {
                reduceAny<Result, Long>(products, dst, length, count);
            }
        });
}

template <class Sized, class Short, class Long, class A, class B, class T, class Count>
[[gnu::always_inline]] inline void dotProduct(A a, B b, T* dst, VectorShape shape, Count count) {
    reduce<Sums, Sized, Short, Long>(ProductsOf<A, B>{a, b}, dst, shape.length, count);
}

template <class Sized, class Short, class Long, class A, class T, class Count>
[[gnu::always_inline]] inline void l2Norm(A a, T* dst, VectorShape shape, Count count) {
    reduce<Roots, Sized, Short, Long>(SquaresOf<A>{a}, dst, shape.length, count);
}

}  // namespace korm::inline KORM_VARIANT::vectors
