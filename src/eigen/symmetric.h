// Eigenvalues and eigenvectors of matrices that the caller declares symmetric.
#pragma once

#include <cstddef>
#include <cstdint>
#include <cstring>

#include "eigen/cells.h"
#include "eigen/pace.h"
#include "eigen/symmetric2.h"
#include "eigen/tridiagonal.h"
#include "entry/views.h"
#include "kernel/groups.h"
#include "kernel/predicates.h"
#include "korm.h"

namespace korm::inline KORM_VARIANT::eigen {

// --- Order 3 and up -----------------------------------------------------------------------------

// One object or a group: a group has failed as soon as one of its objects has. The values that the downward sweeps find are
// multiplied as they are found, those of blocks above the current one once in each sweep.
template <class S, class T>
[[gnu::noinline]] std::int32_t valuesOf(const CellMatrix<S, T> a, const CellVector<S, T> values,
                                        LaneUse<S>* use = nullptr) {
    const std::ptrdiff_t n = a.order;
    reduce(a, values, NoVectors{}, n);
    const Tridiagonal<S, T> t = gathered(a, n);
    const MaskOf<S> upward = t.upward;
    S product = all<S>(1);
    const auto found = [&](std::ptrdiff_t i, S value, MaskOf<S> lanes) __attribute__((always_inline)) {
        const MaskOf<S> downward = butNot(lanes, upward);
        product = chosen(downward, product * value, product);
        if constexpr (lanesOf<S> == 1)
            if (downward) values.set(i, value);
    };
    if (!iterate(t, NoVectors{}, found, use)) return korStatusNoConvergence;
    if (any(upward)) reverse(t.diagonal, n, upward);
    product = product * t.diagonal.get(0);
    S inOrder = all<S>(1);
    for (std::ptrdiff_t i = 0; i < n; ++i) {
        values.set(i, t.diagonal.get(i));
        inOrder = inOrder * t.diagonal.get(i);
    }
    if (any(all<S>(epsilon<T>) >= magnitude(chosen(upward, inOrder, product)))) return korStatusSingular;
    sortDescending(values, NoVectors{}, n);
    return korStatusOk;
}

// The test of the product of all eigenvalues. Kernels differ in it on purpose.
struct ProductTest {
    double limit;
    bool sortsFirst;  // what is left of a singular matrix is sorted, too
};

template <class S, class T, class Vectors>
[[gnu::noinline]] std::int32_t vectorsOf(const CellMatrix<S, T> a, const CellVector<S, T> values, const Vectors v,
                                         const ProductTest test, LaneUse<S>* use = nullptr) {
    const std::ptrdiff_t n = a.order;
    for (std::ptrdiff_t i = 0; i < n; ++i)
        for (std::ptrdiff_t j = 0; j < n; ++j) v.set(i, j, all<S>(static_cast<ElementOf<S>>(i == j)));
    reduce(a, values, v, n);
    const Tridiagonal<S, T> t = gathered(a, n);
    reverseColumns<S, T>(v, n, t.upward);
    const bool converged = iterate(t, v, NothingFound<S>{}, use);
    reverseColumns<S, T>(v, n, t.upward);
    if (!converged) return korStatusNoConvergence;
    if (any(t.upward)) reverse(t.diagonal, n, t.upward);
    S product = all<S>(1);
    for (std::ptrdiff_t i = 0; i < n; ++i) {
        values.set(i, t.diagonal.get(i));
        product = product * t.diagonal.get(i);
    }
    const bool singular = any(all<S>(static_cast<ElementOf<S>>(test.limit)) >= magnitude(product));
    if (!singular || test.sortsFirst) sortDescending(values, v, n);
    return singular ? korStatusSingular : korStatusOk;
}

// --- Groups -------------------------------------------------------------------------------------

// Cells of a group of matrices or vectors on the stack.
template <class S, class T, int length>
struct GroupCells {
    static constexpr int lanes = lanesOf<S>;
    alignas(16) std::byte bytes[length * lanes * sizeof(T)];

    CellVector<S, T> vector() { return {bytes}; }
    CellMatrix<S, T> matrix(std::ptrdiff_t n) { return {{bytes}, n}; }

    template <class View>
    [[gnu::always_inline]] void read(const View& view, std::ptrdiff_t k, std::ptrdiff_t n) {
        eachRun(
            view, k, n, [](const auto& from, std::byte* cells, auto together) __attribute__((always_inline)) {
                Part run[together];
                readRun<together>(from, run);
                for (std::ptrdiff_t i = 0; i < together; ++i) store(cells + i * size, run[i]);
            });
    }
    template <class View>
    [[gnu::always_inline]] void write(const View& view, std::ptrdiff_t k, std::ptrdiff_t n) {
        eachRun(
            view, k, n, [](const auto& to, const std::byte* cells, auto together) __attribute__((always_inline)) {
                Part run[together];
                for (std::ptrdiff_t i = 0; i < together; ++i) run[i] = load<Part>(cells + i * size);
                writeRun<together>(to, run);
            });
    }
    // Vectors that follow each other without gaps.
    void writeVectors(std::byte* to, std::ptrdiff_t n) {
        for (std::ptrdiff_t l = 0; l < lanes; ++l)
            for (std::ptrdiff_t i = 0; i < n; ++i, to += sizeof(T))
                store(to, load<T>(bytes + i * size + l * static_cast<std::ptrdiff_t>(sizeof(T))));
    }

private:
    using Part = Lanes<T>;
    static constexpr std::ptrdiff_t size = lanes * sizeof(T);

    // Hands runs of elements to `each`: where they are in each object, and their cells, of which a part is theirs. Elements
    // that touch come by fours.
    template <class View, class Each>
    [[gnu::always_inline]] void eachRun(const View& view, std::ptrdiff_t k, std::ptrdiff_t n, const Each& each) {
        constexpr int four = isAdjacent<View> ? 4 : 1;
        for (std::ptrdiff_t part = 0; part < lanes; part += laneCount<T>) {
            const auto group = groupAt<laneCount<T>>(view, k + part);
            std::byte* cells = bytes + part * static_cast<std::ptrdiff_t>(sizeof(T));
            const bool isOneRun = rowsTouch(group, n);
            const std::ptrdiff_t height = isOneRun ? 1 : n, width = isOneRun ? n * n : n;
            for (std::ptrdiff_t i = 0; i < height; ++i) {
                std::ptrdiff_t j = 0;
                for (; j + four <= width; j += four, cells += four * size)
                    each(group.at(i, j), cells, std::integral_constant<int, four>{});
                for (; j < width; ++j, cells += size) each(group.at(i, j), cells, std::integral_constant<int, 1>{});
            }
        }
    }
    template <class Object>
    [[gnu::always_inline]] static bool rowsTouch(const Group<Object, laneCount<T>>& group, std::ptrdiff_t n) {
        if constexpr (isAdjacent<Object>)
            return group.object[0].rowStride == n * static_cast<std::ptrdiff_t>(sizeof(T));
        else return false;
    }
};

// Of a group's steps. Small matrices gain more by groups and bear more waiting.
inline float leastUse(std::ptrdiff_t order) { return order <= 4 ? 0.25F : 0.5F; }

// --- Forms ----------------------------------------------------------------------------------------

template <class T, class Object>
[[gnu::always_inline]] inline void readInto(std::byte* buffer, const Object& object, std::ptrdiff_t n) {
    for (std::ptrdiff_t i = 0; i < n; ++i)
        for (std::ptrdiff_t j = 0; j < n; ++j, buffer += sizeof(T)) store(buffer, load<T>(object.address(i, j)));
}

// Of one object with adjacent elements.
template <class T, class Object>
[[gnu::noinline]] void transposeInPlace(const Object& object, std::ptrdiff_t n) {
    for (std::ptrdiff_t i = 0; i < n; ++i)
        for (std::ptrdiff_t j = 0; j < i; ++j) {
            const T below = load<T>(object.address(i, j));
            store(object.address(i, j), load<T>(object.address(j, i)));
            store(object.address(j, i), below);
        }
}

// Hands the objects one by one to `each` until one fails.
template <class Count, class Each>
[[gnu::always_inline]] inline std::int32_t oneByOne(Count count, const Each& each) {
    for (std::ptrdiff_t k = 0; k < count; ++k)
        if (const std::int32_t status = each(k); status != korStatusOk) return status;
    return korStatusOk;
}

template <class A, class T, class Count>
[[gnu::always_inline]] inline std::int32_t symmetricValues(A source, T* buffer, T* dstValues, std::int32_t order,
                                                           Count count) {
    const auto src = withAnyObjects(source);
    const auto small = withAnyObjects<2>(source);
    auto* const scratch = reinterpret_cast<std::byte*>(buffer);
    const auto valuesAt = [&](std::ptrdiff_t k) {
        return reinterpret_cast<std::byte*>(dstValues) + k * order * static_cast<std::ptrdiff_t>(sizeof(T));
    };
    if (order == 1)
        return oneByOne(count, [&](std::ptrdiff_t k) {
            store(valuesAt(k), load<T>(small.at(k).address(0, 0)));
            return korStatusOk;
        });
    if (order == 2)
        return oneByOne(count, [&](std::ptrdiff_t k) {
            return solve2<T>(small.at(k), valuesAt(k), [](T, T, T, const Values2<T>&) {});
        });
    const auto each = [&](std::ptrdiff_t k) {
        readInto<T>(scratch, src.at(k), order);
        return valuesOf<T, T>({{scratch}, order}, {valuesAt(k)});
    };
    if constexpr (!isOneObject<Count>) {
        using S = Twin<Lanes<T>>;
        Pace pace(leastUse(order));
        const auto together = [&](std::ptrdiff_t k) {
            return pace.tryGroup<S>([&](LaneUse<S>& use) {
                GroupCells<S, T, largestGrouped * largestGrouped> a;
                GroupCells<S, T, largestGrouped> values;
                a.read(src, k, order);
                if (valuesOf(a.matrix(order), values.vector(), &use) != korStatusOk) return false;
                values.writeVectors(valuesAt(k), order);
                return true;
            });
        };
        if (order <= largestGrouped) return inGroups<lanesOf<S>>(count, together, each);
    }
    return oneByOne(count, each);
}

// What differs between kernels with vectors: the scalars of order 3 and up, and the test of the product.
struct One {
    template <class T>
    using Scalar = T;
    template <class T>
    static constexpr ProductTest test{epsilon<T>, true};
};
struct OneUnsorted {
    template <class T>
    using Scalar = T;
    template <class T>
    static constexpr ProductTest test{epsilon<T>, false};
};
struct Several {
    template <class T>
    using Scalar = double;
    template <class T>
    static constexpr ProductTest test{epsilon<float>, false};
};

template <class Member, class A, class V, class T, class Count>
[[gnu::always_inline]] inline std::int32_t symmetricVectors(A source, V destination, T* buffer, T* dstValues,
                                                            std::int32_t order, Count count) {
    using Scalar = typename Member::template Scalar<T>;
    constexpr ProductTest test = Member::template test<T>;
    const auto src = withAnyObjects(source);
    const auto dst = withAnyObjects(destination);
    auto* const scratch = reinterpret_cast<std::byte*>(buffer);
    const auto valuesAt = [&](std::ptrdiff_t k) {
        return reinterpret_cast<std::byte*>(dstValues) + k * order * static_cast<std::ptrdiff_t>(sizeof(T));
    };
    if (order == 1)
        return oneByOne(count, [&](std::ptrdiff_t k) {
            store(dst.at(k).address(0, 0), T(1));
            store(valuesAt(k), load<T>(src.at(k).address(0, 0)));
            return korStatusOk;
        });
    if (order == 2)
        return oneByOne(count, [&](std::ptrdiff_t k) {
            return solve2<T>(src.at(k), valuesAt(k), [&](T a, T b, T d, const Values2<T>& values) {
                const Rotation2<T> rotation = vectors2(a, b, d, values);
                const T v[2][2] = {{rotation.cosine, 0 - rotation.sine}, {rotation.sine, rotation.cosine}};
                writeMatrix(dst.at(k), v);
            });
        });
    const auto each = [&](std::ptrdiff_t k) {
        readInto<T>(scratch, src.at(k), order);
        const auto object = dst.at(k);
        using Matrix = ObjectMatrix<Scalar, decltype(object)>;
        const CellMatrix<Scalar, T> a{{scratch}, order};
        const CellVector<Scalar, T> values{valuesAt(k)};
        if constexpr (isAdjacent<decltype(object)>) {
            const std::int32_t status = vectorsOf(a, values, TransposedMatrix<Matrix>{{object}}, test);
            transposeInPlace<T>(object, order);
            return status;
        } else {
            return vectorsOf(a, values, Matrix{object}, test);
        }
    };
    if constexpr (!isOneObject<Count>) {
        using S = Twin<Lanes<Scalar>>;
        Pace pace(leastUse(order));
        const auto together = [&](std::ptrdiff_t k) {
            return pace.tryGroup<S>([&](LaneUse<S>& use) {
                GroupCells<S, T, largestGrouped * largestGrouped> a, v;
                GroupCells<S, T, largestGrouped> values;
                a.read(src, k, order);
                if (vectorsOf(a.matrix(order), values.vector(), v.matrix(order), test, &use) != korStatusOk)
                    return false;
                values.writeVectors(valuesAt(k), order);
                v.write(dst, k, order);
                return true;
            });
        };
        if (order <= largestGrouped) return inGroups<lanesOf<S>>(count, together, each);
    }
    return oneByOne(count, each);
}

}  // namespace korm::inline KORM_VARIANT::eigen
