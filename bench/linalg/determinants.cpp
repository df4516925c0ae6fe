// Determinants of arrays of matrices, and what the extended-precision kernels cost beside their unit's own limit.
#include <time.h>

#include "rows.h"

namespace bench {
namespace {

template <class T, int n>
void determinantRow(const Objects& objects) {
    const std::string name = rowName<T>("determinant", "Det_ma", n, objects);
    if (!isWanted(name)) return;
    constexpr std::size_t size = n * n;
    const std::size_t count = objectsIn<T>(objects, n);
    const T* const source = shuffledMatrices<T>(matrices, n, count);
    T* const result = memoryOf<T>(results, count);
    T* const buffer = memoryOf<T>(scratch, 2 * size);
    Row row(name, static_cast<double>(count));
    row.results(result, count, sizeof(T) == 4 ? 1e-4 : 1e-12);
    row.korm([=] {
        pick<T>(kormDet_ma_32f, kormDet_ma_64f)(source, bytes<T>(size), bytes<T>(n), bytes<T>(1), n, buffer, result,
                                                static_cast<std::int32_t>(count));
    });
    row.peer("Eigen", [=] {
        for (std::size_t k = 0; k < count; ++k) result[k] = mapOf<const Matrix<T, n>>(source + k * size).determinant();
    });
#ifdef BENCH_GLM
    if constexpr (n >= 2 && n <= 4) {
        row.peer("GLM", [=] {
            for (std::size_t k = 0; k < count; ++k)
                result[k] = glm::determinant(loaded<glm::mat<n, n, T>>(source + k * size));
        });
    }
#endif
#ifdef BENCH_CGLM
    if constexpr (sizeof(T) == 4 && (n == 3 || n == 4)) {
        row.peer("cglm", [=] {
            for (std::size_t k = 0; k < count; ++k) {
                const auto from = reinterpret_cast<float(*)[n]>(const_cast<T*>(source + k * size));
                if constexpr (n == 3) result[k] = glm_mat3_det(from);
                else result[k] = glm_mat4_det(from);
            }
        });
    }
#endif
#ifdef BENCH_LAPACK
    if constexpr (n >= 5) {
        T* const lu = memoryOf<T>(factors, size * count);
        row.peer("LAPACK", [=] {
            std::memcpy(lu, source, size * count * sizeof(T));
            for (std::size_t k = 0; k < count; ++k) {
                std::int32_t pivots[n];
                T* const a = lu + k * size;
                lapackFactor(n, a, pivots);
                T product = 1;
                for (int i = 0; i < n; ++i) product *= (pivots[i] == i + 1 ? T(1) : T(-1)) * a[i * (n + 1)];
                result[k] = product;
            }
        });
    }
#endif
    row.measure();
}

// --- Extended precision ------------------------------------------------------------------------

double now() {
    timespec time;
    clock_gettime(CLOCK_THREAD_CPUTIME_ID, &time);
    return static_cast<double>(time.tv_sec) * 1e9 + static_cast<double>(time.tv_nsec);
}

// The shortest time of 20000 rounds of `body`, in nanoseconds a round.
template <class Body>
double shortest(const Body& body) {
    constexpr int rounds = 20000;
    double best = 1e9;
    for (int again = 0; again < 20; ++again) {
        const double start = now();
        for (int i = 0; i < rounds; ++i) body();
        best = std::min(best, (now() - start) / rounds);
    }
    return best;
}

// From a chain of additions that takes one cycle each.
double cyclesPerNanosecond() {
    std::uintptr_t value = 1;
    return 10 / shortest([&] {
               asm volatile(
                   "add %0, %0\n\tadd %0, %0\n\tadd %0, %0\n\tadd %0, %0\n\tadd %0, %0\n\t"
                   "add %0, %0\n\tadd %0, %0\n\tadd %0, %0\n\tadd %0, %0\n\tadd %0, %0"
                   : "+r"(value));
           });
}

// Nanoseconds between two independent multiplications of the x87 unit: six are in flight, each waits for its own predecessor
// only. One register is left for what ia32 functions return.
double x87Multiplication() {
    asm volatile("fld1\n\tfld1\n\tfld1\n\tfld1\n\tfld1\n\tfld1\n\tfld1");
    const double six = shortest([] {
        asm volatile(
            "fmul %%st, %%st(1)\n\tfmul %%st, %%st(2)\n\tfmul %%st, %%st(3)\n\t"
            "fmul %%st, %%st(4)\n\tfmul %%st, %%st(5)\n\tfmul %%st, %%st(6)" ::
                : "memory");
    });
    asm volatile("fninit");
    return six / 6;
}

struct Operations {
    int multiplications, additions;
};

// Of an expansion that makes each minor of the last rows once.
constexpr Operations expansionOperations(int n) {
    if (n == 3) return {9, 5};
    int choose = n, multiplications = 0, additions = 0;
    for (int rows = 2; rows <= n; ++rows) {
        choose = choose * (n - rows + 1) / rows;
        multiplications += choose * rows;
        additions += choose * (rows - 1);
    }
    return {multiplications, additions};
}

// The list form takes its matrices one by one through the extended kernels at all orders 3 to 6.
template <class T, int n>
void extendedRow(const Objects& objects) {
    const std::string name = "extended/Det_ma" + std::string(suffix<T>) + "_L/" + std::to_string(n);
    if (objects.place != places[0].place || !isWanted(name)) return;
    static const double clock = cyclesPerNanosecond(), multiplication = x87Multiplication();
    constexpr std::size_t size = n * n, count = 100;
    T* const source = const_cast<T*>(shuffledMatrices<T>(matrices, n, count));
    std::vector<const T*> list;
    for (std::size_t k = 0; k < count; ++k) list.push_back(source + k * size);
    T* const result = memoryOf<T>(results, count);
    T* const buffer = memoryOf<T>(scratch, 2 * size);
    Row row(name, count);
    row.korm([=] {
        pick<T>(kormDet_ma_32f_L, kormDet_ma_64f_L)(list.data(), 0, bytes<T>(n), bytes<T>(1), n, buffer, result,
                                                    static_cast<std::int32_t>(count));
    });
    constexpr Operations operations = expansionOperations(n);
    row.fact("multiplications", operations.multiplications);
    row.fact("additions", operations.additions);
    row.fact("gigahertz", clock);
    row.fact("multiplication", multiplication * clock);
    row.measure();
}

}  // namespace

void measureDeterminants() {
    forOrders(std::integer_sequence<int, 2, 3, 4, 5, 6, 7, 8>(),
              []<class T, int n>(const Objects& objects) { determinantRow<T, n>(objects); });
    forOrders(std::integer_sequence<int, 3, 4, 5, 6>(),
              []<class T, int n>(const Objects& objects) { extendedRow<T, n>(objects); });
}

}  // namespace bench
