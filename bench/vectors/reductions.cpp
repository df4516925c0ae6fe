// Dot products, norms and traces of packed arrays.
#include "rows.h"

namespace bench {
namespace {

// What the orders of additions cost: loops that know the size and add as the library does, in eight partial sums from a
// boundary of 16 bytes on.
template <class T>
struct Eights {
    typedef T V __attribute__((vector_size(16), aligned(alignof(T)), may_alias));
    static constexpr int lanes = 16 / sizeof(T), vectors = 8 / lanes;
    V sums[vectors] = {};

    void add(const T* x, const T* y) {
        for (int v = 0; v < vectors; ++v)
            sums[v] += *reinterpret_cast<const V*>(x + v * lanes) * *reinterpret_cast<const V*>(y + v * lanes);
    }
    V joinedVectors() const {
        if constexpr (lanes == 4) return sums[0] + sums[1];
        else return (sums[0] + sums[1]) + (sums[2] + sums[3]);
    }
    static T joinedLanes(V one) {
        if constexpr (lanes == 4) return (one[0] + one[2]) + (one[1] + one[3]);
        else return one[0] + one[1];
    }
};

template <class T, int n>
auto vectorInEights(const T* x, const T* y) {
    Eights<T> l;
    for (int j = 0; j < n; j += 8) l.add(x + j, y + j);
    return l.joinedVectors();
}

// Those of as many objects as a vector has lanes are joined together.
template <class T, int n>
void sumsInEights(const T* x, const T* y, int yStep, T* to, std::size_t count) {
    using V = typename Eights<T>::V;
    constexpr int lanes = Eights<T>::lanes;
    std::size_t k = 0;
    for (; k + lanes <= count; k += lanes, x += lanes * n, y += lanes * yStep) {
        V one[lanes];
        for (int o = 0; o < lanes; ++o) one[o] = vectorInEights<T, n>(x + o * n, y + o * yStep);
        V sums;
        if constexpr (lanes == 4) {
            const V even[2] = {__builtin_shufflevector(one[0], one[1], 0, 2, 4, 6),
                               __builtin_shufflevector(one[2], one[3], 0, 2, 4, 6)};
            const V odd[2] = {__builtin_shufflevector(one[0], one[1], 1, 3, 5, 7),
                              __builtin_shufflevector(one[2], one[3], 1, 3, 5, 7)};
            sums = (__builtin_shufflevector(even[0], even[1], 0, 2, 4, 6) +
                    __builtin_shufflevector(even[0], even[1], 1, 3, 5, 7)) +
                   (__builtin_shufflevector(odd[0], odd[1], 0, 2, 4, 6) +
                    __builtin_shufflevector(odd[0], odd[1], 1, 3, 5, 7));
        } else {
            sums = __builtin_shufflevector(one[0], one[1], 0, 2) + __builtin_shufflevector(one[0], one[1], 1, 3);
        }
        *reinterpret_cast<V*>(to + k) = sums;
    }
    for (; k < count; ++k, x += n, y += yStep) to[k] = Eights<T>::joinedLanes(vectorInEights<T, n>(x, y));
}

// Norms of doubles in rows of eight and more: the first partial sum of a row goes on with the rows before.
template <int n>
double normInEights(const double* a) {
    double total = 0;
    for (int i = 0; i < n; ++i, a += n) {
        Eights<double> l;
        l.sums[0][0] = total;
        for (int j = 0; j < n; j += 8) l.add(a + j, a + j);
        total = Eights<double>::joinedLanes(l.joinedVectors());
    }
    return std::sqrt(total);
}

template <class T, int n>
void dotProducts(const Place& place, bool oneSecond) {
    const std::size_t count = objectsIn<T>(place, (oneSecond ? n + 1 : 2 * n + 1));
    const auto objects = static_cast<std::int32_t>(count);
    const Numbers<T> a(n * count), b(oneSecond ? n : n * count);
    const Numbers<T> result(count);
    T* const to = result.data();
    const std::string rowName = packedName<T>(oneSecond ? "DotProduct_vav" : "DotProduct_vava", n, place);
    Row row(rowName, static_cast<double>(count));
    row.results(to, count, tolerance<T>(n));
    const auto korm = [=](std::int32_t some) {
        if (oneSecond)
            pick<T>(kormDotProduct_vav_32f, kormDotProduct_vav_64f)(a.data(), bytes<T>(n), bytes<T>(1), b.data(),
                                                                    bytes<T>(1), to, n, some);
        else
            pick<T>(kormDotProduct_vava_32f, kormDotProduct_vava_64f)(a.data(), bytes<T>(n), bytes<T>(1), b.data(),
                                                                      bytes<T>(n), bytes<T>(1), to, n, some);
    };
    row.kormWithCall(korm, objects);
    row.peer("Eigen", [=] {
        for (std::size_t k = 0; k < count; ++k)
            to[k] = vectorAt<const T, n>(a.data(), k).dot(vectorAt<const T, n>(b.data(), oneSecond ? 0 : k));
    });
    row.peer("plain loop", [=] {
        for (std::size_t k = 0; k < count; ++k) {
            const T* const x = a.data() + k * n;
            const T* const y = b.data() + (oneSecond ? 0 : k * n);
            T sum = 0;
            for (int j = 0; j < n; ++j) sum += x[j] * y[j];
            to[k] = sum;
        }
    });
    if constexpr (n % 8 == 0)
        row.control("partial sums alone",
                    [=] { sumsInEights<T, n>(a.data(), b.data(), oneSecond ? 0 : n, to, count); });
#ifdef BENCH_GLM
    if constexpr (n == 3 || n == 4)
        row.peer("GLM", [=] {
            using V = glm::vec<n, T>;
            for (std::size_t k = 0; k < count; ++k)
                to[k] = glm::dot(reinterpret_cast<const V*>(a.data())[k],
                                 reinterpret_cast<const V*>(b.data())[oneSecond ? 0 : k]);
        });
#endif
    if (isWanted(rowName)) row.measure();
}

template <class T, int n>
void norms(const Place& place) {
    const std::size_t count = objectsIn<T>(place, (n + 1));
    const auto objects = static_cast<std::int32_t>(count);
    const Numbers<T> a(n * count);
    const Numbers<T> result(count);
    T* const to = result.data();
    const std::string rowName = packedName<T>("L2Norm_va", n, place);
    Row row(rowName, static_cast<double>(count));
    row.results(to, count, tolerance<T>(n));
    const auto korm = [=](std::int32_t some) {
        pick<T>(kormL2Norm_va_32f, kormL2Norm_va_64f)(a.data(), bytes<T>(n), bytes<T>(1), to, n, some);
    };
    row.kormWithCall(korm, objects);
    row.peer("Eigen", [=] {
        for (std::size_t k = 0; k < count; ++k) to[k] = vectorAt<const T, n>(a.data(), k).norm();
    });
    row.peer("plain loop", [=] {
        for (std::size_t k = 0; k < count; ++k) {
            T sum = 0;
            for (int j = 0; j < n; ++j)
                sum += a[k * n + static_cast<std::size_t>(j)] * a[k * n + static_cast<std::size_t>(j)];
            to[k] = std::sqrt(sum);
        }
    });
    if (isWanted(rowName)) row.measure();
}

template <class T, int n>
void matrices(const Place& place) {
    constexpr std::size_t size = n * n;
    const std::size_t count = objectsIn<T>(place, (size + 1));
    const auto objects = static_cast<std::int32_t>(count);
    const Numbers<T> a(size * count);
    const Numbers<T> result(count);
    T* const to = result.data();
    using M = Eigen::Matrix<T, n, n, Eigen::RowMajor>;
    const auto matrixAt = [=](std::size_t k) { return Eigen::Map<const M, Eigen::Unaligned>(a.data() + k * size); };

    const std::string normName = packedName<T>("FrobNorm_ma", n, place);
    Row norm(normName, static_cast<double>(count));
    norm.results(to, count, tolerance<T>(n * n));
    const auto kormNorm = [=](std::int32_t some) {
        pick<T>(kormFrobNorm_ma_32f, kormFrobNorm_ma_64f)(a.data(), bytes<T>(size), bytes<T>(n), bytes<T>(1), n, n, to,
                                                          some);
    };
    norm.kormWithCall(kormNorm, objects);
    if constexpr (n % 8 == 0 && std::is_same_v<T, double>)
        norm.control("partial sums alone", [=] {
            for (std::size_t k = 0; k < count; ++k) to[k] = normInEights<n>(a.data() + k * size);
        });
    norm.peer("Eigen", [=] {
        for (std::size_t k = 0; k < count; ++k) to[k] = matrixAt(k).norm();
    });
    norm.peer("plain loop", [=] {
        for (std::size_t k = 0; k < count; ++k) {
            T sum = 0;
            for (std::size_t e = 0; e < size; ++e) sum += a[k * size + e] * a[k * size + e];
            to[k] = std::sqrt(sum);
        }
    });
    if (isWanted(normName)) norm.measure();

    const std::string traceName = packedName<T>("Trace_ma", n, place);
    Row trace(traceName, static_cast<double>(count));
    trace.results(to, count, tolerance<T>(n));
    const auto kormTrace = [=](std::int32_t some) {
        pick<T>(kormTrace_ma_32f, kormTrace_ma_64f)(a.data(), bytes<T>(size), bytes<T>(n), bytes<T>(1), n, to, some);
    };
    trace.kormWithCall(kormTrace, objects);
    trace.peer("Eigen", [=] {
        for (std::size_t k = 0; k < count; ++k) to[k] = matrixAt(k).trace();
    });
    trace.peer("plain loop", [=] {
        for (std::size_t k = 0; k < count; ++k) {
            T sum = 0;
            for (std::size_t i = 0; i < n; ++i) sum += a[k * size + i * (n + 1)];
            to[k] = sum;
        }
    });
    if (isWanted(traceName)) trace.measure();
}

}  // namespace

void measureReductions() {
    using Lengths = std::integer_sequence<int, 1, 2, 3, 4, 5, 6, 7, 8, 16, 256, 1000>;
    forEach(Lengths(), [&]<class T, int n>(const Place& place) {
        dotProducts<T, n>(place, false);
        dotProducts<T, n>(place, true);
        norms<T, n>(place);
    });
    using Orders = std::integer_sequence<int, 2, 3, 4, 5, 6, 8, 16>;
    forEach(Orders(), [&]<class T, int n>(const Place& place) { matrices<T, n>(place); });
}

}  // namespace bench
