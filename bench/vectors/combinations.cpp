// Saxpy, LComb and cross products of packed arrays.
#include "rows.h"

namespace bench {
namespace {

constexpr double first = 0.75, second = -1.25;

// Arrays of both sources, or one second source for all.
template <class T, int n>
void combinations(const Place& place, bool oneSecond) {
    const std::size_t count = objectsIn<T>(place, (oneSecond ? 2 * n : 3 * n));
    const auto objects = static_cast<std::int32_t>(count);
    const Numbers<T> a(n * count), b(oneSecond ? n : n * count);
    const Numbers<T> result(n * count);
    T* const to = result.data();
    const auto at = [=](std::size_t k) { return oneSecond ? 0 : k; };
    const T factor = static_cast<T>(first), other = static_cast<T>(second);
    const std::int32_t object = bytes<T>(n), element = bytes<T>(1);

    const std::string saxpyName = packedName<T>(oneSecond ? "Saxpy_vav" : "Saxpy_vava", n, place);
    Row saxpy(saxpyName, static_cast<double>(count));
    saxpy.results(to, count * n, tolerance<T>(n));
    saxpy.korm([=] {
        if (oneSecond)
            pick<T>(kormSaxpy_vav_32f, kormSaxpy_vav_64f)(a.data(), object, element, factor, b.data(), element, to,
                                                          object, element, n, objects);
        else
            pick<T>(kormSaxpy_vava_32f, kormSaxpy_vava_64f)(a.data(), object, element, factor, b.data(), object,
                                                            element, to, object, element, n, objects);
    });
    saxpy.peer("Eigen", [=] {
        for (std::size_t k = 0; k < count; ++k)
            vectorAt<T, n>(to, k) = vectorAt<const T, n>(a.data(), k) * factor + vectorAt<const T, n>(b.data(), at(k));
    });
    saxpy.peer("plain loop", [=] {
        for (std::size_t k = 0; k < count; ++k)
            for (std::size_t j = 0; j < n; ++j) to[k * n + j] = a[k * n + j] * factor + b[at(k) * n + j];
    });
    if (isWanted(saxpyName)) saxpy.measure();

    const std::string lcombName = packedName<T>(oneSecond ? "LComb_vav" : "LComb_vava", n, place);
    Row lcomb(lcombName, static_cast<double>(count));
    lcomb.results(to, count * n, tolerance<T>(n));
    lcomb.korm([=] {
        if (oneSecond)
            pick<T>(kormLComb_vav_32f, kormLComb_vav_64f)(a.data(), object, element, factor, b.data(), element, other,
                                                          to, object, element, n, objects);
        else
            pick<T>(kormLComb_vava_32f, kormLComb_vava_64f)(a.data(), object, element, factor, b.data(), object,
                                                            element, other, to, object, element, n, objects);
    });
    lcomb.peer("Eigen", [=] {
        for (std::size_t k = 0; k < count; ++k)
            vectorAt<T, n>(to, k) =
                vectorAt<const T, n>(a.data(), k) * factor + vectorAt<const T, n>(b.data(), at(k)) * other;
    });
    lcomb.peer("plain loop", [=] {
        for (std::size_t k = 0; k < count; ++k)
            for (std::size_t j = 0; j < n; ++j) to[k * n + j] = a[k * n + j] * factor + b[at(k) * n + j] * other;
    });
    if (isWanted(lcombName)) lcomb.measure();
}

template <class T>
void crossProducts(const Place& place) {
    const std::size_t count = objectsIn<T>(place, 9);
    const auto objects = static_cast<std::int32_t>(count);
    const Numbers<T> a(3 * count), b(3 * count);
    const Numbers<T> result(3 * count);
    T* const to = result.data();
    const std::string rowName = packedName<T>("CrossProduct_vava", 3, place);
    Row row(rowName, static_cast<double>(count));
    row.results(to, count * 3, tolerance<T>(3));
    row.korm([=] {
        pick<T>(kormCrossProduct_vava_32f, kormCrossProduct_vava_64f)(a.data(), bytes<T>(3), bytes<T>(1), b.data(),
                                                                      bytes<T>(3), bytes<T>(1), to, bytes<T>(3),
                                                                      bytes<T>(1), objects);
    });
    row.peer("Eigen", [=] {
        for (std::size_t k = 0; k < count; ++k)
            vectorAt<T, 3>(to, k) = vectorAt<const T, 3>(a.data(), k).cross(vectorAt<const T, 3>(b.data(), k));
    });
    row.peer("plain loop", [=] {
        for (std::size_t k = 0; k < count; ++k) {
            const T* const x = a.data() + 3 * k;
            const T* const y = b.data() + 3 * k;
            T* const z = to + 3 * k;
            z[0] = x[1] * y[2] - x[2] * y[1];
            z[1] = x[2] * y[0] - x[0] * y[2];
            z[2] = x[0] * y[1] - x[1] * y[0];
        }
    });
#ifdef BENCH_GLM
    row.peer("GLM", [=] {
        using V = glm::vec<3, T>;
        for (std::size_t k = 0; k < count; ++k)
            reinterpret_cast<V*>(to)[k] =
                glm::cross(reinterpret_cast<const V*>(a.data())[k], reinterpret_cast<const V*>(b.data())[k]);
    });
#endif
    if (isWanted(rowName)) row.measure();
}

// One matrix for all vectors.
template <class T, int n>
void matrixVectorSums(const Place& place) {
    const std::size_t count = objectsIn<T>(place, 3 * n);
    const auto objects = static_cast<std::int32_t>(count);
    const Numbers<T> a(n * n), x(n * count), y(n * count), result(n * count);
    T* const to = result.data();
    const std::string name = packedName<T>("Gaxpy_mva", n, place);
    Row row(name, static_cast<double>(count));
    row.results(to, count * n, tolerance<T>(n));
    row.korm([=] {
        pick<T>(kormGaxpy_mva_32f, kormGaxpy_mva_64f)(a.data(), bytes<T>(n), bytes<T>(1), n, n, x.data(), bytes<T>(n),
                                                      bytes<T>(1), n, y.data(), bytes<T>(n), bytes<T>(1), n, to,
                                                      bytes<T>(n), bytes<T>(1), objects);
    });
    row.peer("Eigen", [=] {
        constexpr int size = n <= 16 ? n : Eigen::Dynamic;
        const Eigen::Map<const Eigen::Matrix<T, size, size, Eigen::RowMajor>, Eigen::Unaligned> matrix(a.data(), n, n);
        for (std::size_t k = 0; k < count; ++k)
            vectorAt<T, n>(to, k).noalias() =
                matrix * vectorAt<const T, n>(x.data(), k) + vectorAt<const T, n>(y.data(), k);
    });
    row.peer("loop", [=] {
        for (std::size_t k = 0; k < count; ++k)
            for (std::size_t i = 0; i < n; ++i) {
                T sum = 0;
                for (std::size_t j = 0; j < n; ++j) sum += a[i * n + j] * x[k * n + j];
                to[k * n + i] = sum + y[k * n + i];
            }
    });
    if (isWanted(name)) row.measure();
}

}  // namespace

void measureCombinations() {
    using Lengths = std::integer_sequence<int, 1, 2, 3, 4, 5, 6, 7, 8, 16, 256, 1000>;
    forEach(Lengths(), [&]<class T, int n>(const Place& place) {
        combinations<T, n>(place, false);
        combinations<T, n>(place, true);
        if constexpr (n == 3) crossProducts<T>(place);
    });
    forEach(std::integer_sequence<int, 3, 4, 5, 6, 8, 16, 64>(),
            [&]<class T, int n>(const Place& place) { matrixVectorSums<T, n>(place); });
}

}  // namespace bench
