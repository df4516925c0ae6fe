// Products of square matrices with objects in lanes, compiled once for each width as kernels.cpp is. One object alone is
// multiplied by plain loops.
#include <cstddef>
#include <cstdint>
#include <type_traits>

#include "kernel/predicates.h"
#include "kernel/unroll.h"
#include "products/squares.h"
#include "products/streams.h"
#include "products/vectors.h"
#include "widths/kernels.h"
#include "widths/operands.h"

namespace korm::inline KORM_VARIANT {
namespace {

using namespace products;
using widths::Kernels;

// Which operand is the same for all objects.
enum class Shared { none, left, right };

// The definition. Products are added from left to right, to the first of them or to +0.
template <Start start, class T, class Left, class Right, class Result>
void multiplyPlainly(int n, int columns, const Left& left, const Right& right, const Result& result) {
    for (int i = 0; i < n; ++i)
        for (int j = 0; j < columns; ++j) {
            T sum = left(i, 0) * right(0, j);
            if (start == Start::zero) sum = T{} + sum;
            for (int k = 1; k < n; ++k) sum = sum + left(i, k) * right(k, j);
            result(i, j) = sum;
        }
}

// --- Objects at any stride ------------------------------------------------------------------------

template <class T, int n, int element, Shared shared>
std::int32_t multiply(const Operands<T>& on) {
    const std::ptrdiff_t row = n * element + on.gap;
    const auto elementsOf = [&](auto* base, bool isShared) {
        return [=](int i, int j) -> auto& { return base[((isShared ? 0 : on.first) * n + i) * row + j * element]; };
    };
    if (on.count == 1) {
        multiplyPlainly<Start::firstProduct, T>(n, n, elementsOf(on.left, shared == Shared::left),
                                                elementsOf(on.right, shared == Shared::right),
                                                elementsOf(on.results, false));
        return korStatusOk;
    }
    const auto left = shared == Shared::left ? objectsOf(oneMatrix<element>(on.left, on, n))
                                             : objectsOf(matrices<element>(on.left, on, n, n));
    const auto right = shared == Shared::right ? objectsOf(oneMatrix<element>(on.right, on, n))
                                               : objectsOf(matrices<element>(on.right, on, n, n));
    squaresInLanes<Lanes<T>>(left, right, objectsOf(matrices<element>(on.results, on, n, n)), n,
                             static_cast<std::int32_t>(on.count));
    return korStatusOk;
}

// The orders of addition that rows of a matrix can have: the irregular ones are held against the code for one object.
template <class T, int n, int element, class Order>
std::int32_t multiplyVectors(const Operands<T>& on) {
    const auto left = objectsOf(matrices<element>(on.left, on, n, n));
    const auto right = objectsOf(matrices<element>(on.right, on, 1, n));
    const auto result = objectsOf(matrices<element>(on.results, on, 1, n));
    if (on.count > 1)
        squareVectorsInLanes<Lanes<T>, Order>(left, right, result, n, static_cast<std::int32_t>(on.count));
    else squareVectorObject<T, n, Order>(left.at(0), right.at(0), result.at(0));
    return korStatusOk;
}

// --- Streams --------------------------------------------------------------------------------------

// A table whose entry e leads to element e of the first object; objects are one element apart.
template <class T, int height, int width>
struct Streams {
    const void* entries[height * width];

    Streams(T* base, const Operands<std::remove_const_t<T>>& on, bool isShared) {
        for (std::ptrdiff_t e = 0; e < height * width; ++e)
            entries[e] = base + e * on.objects + (isShared ? 0 : on.first);
    }
    TableOperand operand() const { return {entries, 0, width, 1}; }
    T& operator()(int i, int j) const { return *static_cast<T*>(const_cast<void*>(entries[i * width + j])); }
};

template <class T, int n, int columns, Shared shared, Start start>
std::int32_t multiplyStreams(const Operands<T>& on) {
    constexpr bool sharedLeft = shared == Shared::left, sharedRight = shared == Shared::right;
    const Streams<const T, n, n> left(on.left, on, sharedLeft);
    const Streams<const T, n, columns> right(on.right, on, sharedRight);
    const Streams<T, n, columns> result(on.results, on, false);
    const auto count = static_cast<std::int32_t>(on.count);
    if (count == 1) multiplyPlainly<start, T>(n, columns, left, right, result);
    else if constexpr (n <= 6)
        squareStreams<Lanes<T>, n, columns, sharedLeft, sharedRight, start>(left.operand(), right.operand(),
                                                                            result.operand(), count);
    else
        anyStreams<Lanes<T>, sharedRight>(left.operand(), right.operand(), result.operand(), {n, n, columns}, count,
                                          sharedLeft);
    return korStatusOk;
}

// --- All of them ----------------------------------------------------------------------------------

template <class T>
void addAll(Kernels<T>& all) {
    constexpr Start first = Start::firstProduct, zero = Start::zero;
    using Irregular = std::conditional_t<isFloat<T>, square::mva_32f, square::mv_64f>;
    unrolled<4>([&](auto before) {
        constexpr int n = before + 3;
        const auto add = [&](const char* name, std::int32_t (*run)(const Operands<T>&), int element = 1) {
            all.push_back({name, n, element, run});
        };
        add("product", multiply<T, n, 1, Shared::none>);
        add("product", multiply<T, n, 2, Shared::none>, 2);
        add("product, one left matrix", multiply<T, n, 1, Shared::left>);
        add("product, one right matrix", multiply<T, n, 2, Shared::right>, 2);
        add("product with a vector", multiplyVectors<T, n, 1, square::left_to_right>);
        add("product with a vector, in other orders", multiplyVectors<T, n, 2, Irregular>, 2);
        add("product of streams", multiplyStreams<T, n, n, Shared::none, first>);
        add("product of streams, one left matrix", multiplyStreams<T, n, n, Shared::left, first>);
        add("product of streams, one right matrix", multiplyStreams<T, n, n, Shared::right, zero>);
        add("product of streams with a vector", multiplyStreams<T, n, 1, Shared::none, first>);
    });
    all.push_back({"product of streams", 8, 1, multiplyStreams<T, 8, 8, Shared::none, zero>});
    all.push_back({"product of streams, one right matrix", 7, 1, multiplyStreams<T, 7, 7, Shared::right, zero>});
    // More products than are added at a time.
    all.push_back({"product of streams", 65, 1, multiplyStreams<T, 65, 3, Shared::none, zero>});
}

}  // namespace

void addProducts(Kernels<float>& all) { addAll(all); }
void addProducts(Kernels<double>& all) { addAll(all); }

}  // namespace korm::inline KORM_VARIANT
