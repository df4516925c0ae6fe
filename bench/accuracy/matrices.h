// Test matrices as LAPACK's own test programs have them, from its generators (libtmglib). Everything is stored by rows.
#pragma once
#include <lapack.h>

#include <cmath>
#include <limits>
#include <stdexcept>
#include <string>
#include <type_traits>
#include <vector>

#include "../harness/operands.h"

// The generator of matrices with given eigenvalues has no declaration in <lapack.h>. Fortran wants the lengths of its
// texts behind the arguments.
#define ACCURACY_LATME(NAME, T)                                                                                        \
    void NAME(const int* n, const char* distribution, int* seed, T* values, const int* mode, const T* condition,       \
              const T* largest, const char* kinds, const char* randomSigns, const char* upper, const char* similarity, \
              T* singularValues, const int* similarityMode, const T* similarityCondition, const int* below,            \
              const int* above, const T* norm, T* a, const int* rows, T* work, int* info, std::size_t, std::size_t,    \
              std::size_t, std::size_t, std::size_t)
extern "C" {
ACCURACY_LATME(slatme_, float);
ACCURACY_LATME(dlatme_, double);
}
#undef ACCURACY_LATME

namespace bench {

// The number of elements of so many rows.
constexpr std::size_t area(int rows, int columns) {
    return static_cast<std::size_t>(rows) * static_cast<std::size_t>(columns);
}

// Matrices of one kind and one shape, one behind the other.
template <class T>
struct Matrices {
    int height = 0, width = 0, count = 0;
    std::vector<T> elements;

    std::size_t size() const { return area(height, width); }
    T* object(int k) { return elements.data() + static_cast<std::size_t>(k) * size(); }
    const T* object(int k) const { return elements.data() + static_cast<std::size_t>(k) * size(); }
};

// How the eigenvalues or singular values lie, by the generators' numbers.
enum Spectrum { clustered = 1, geometric = 3, arithmetic = 4, randomLogarithms = 5, randomValues = 6 };

template <class T>
inline constexpr T ulp = std::numeric_limits<T>::epsilon();

// A generator writes by columns; its matrices are read by rows here.
template <class T>
void transpose(int rows, int columns, const T* from, T* to) {
    for (int i = 0; i < rows; ++i)
        for (int j = 0; j < columns; ++j) to[j * rows + i] = from[i * columns + j];
}

// symmetry: 'N' none, 'S' symmetric, 'P' symmetric and positive. Bands of 0 make the matrix diagonal.
template <class T>
void generate(T* to, int height, int width, char symmetry, Spectrum spectrum, T condition, bool lower, bool upper,
              int* seed) {
    const char uniform = 'S', full = 'N';
    const int mode = spectrum, below = lower ? height - 1 : 0, above = upper ? width - 1 : 0;
    const T largest = 1;
    const std::size_t size = area(height, width);
    std::vector<T> values(static_cast<std::size_t>(width)), work(area(3, height)), a(size);
    int info = 0;
    pick<T>([](auto... p) { LAPACK_slatms(p...); }, [](auto... p) { LAPACK_dlatms(p...); })(
        &height, &width, &uniform, seed, &symmetry, values.data(), &mode, &condition, &largest, &below, &above, &full,
        a.data(), &height, work.data(), &info);
    if (info != 0) throw std::runtime_error("latms: info " + std::to_string(info));
    transpose(width, height, a.data(), to);
}

// X D X^-1, where X has the given condition and D has blocks of order 2 for conjugate eigenvalues if the spectrum is random.
template <class T>
void generateGeneral(T* to, int order, Spectrum spectrum, T similarityCondition, int* seed) {
    const char uniform = 'S', yes = 'T', kinds = ' ';
    const int mode = spectrum, similarityMode = 4;
    const T condition = 1 / ulp<T>, largest = 1, norm = 1;
    const auto n = static_cast<std::size_t>(order);
    std::vector<T> values(n), singularValues(n), work(3 * n), a(n * n);
    int info = 0;
    pick<T>(slatme_, dlatme_)(&order, &uniform, seed, values.data(), &mode, &condition, &largest, &kinds, &yes, &yes,
                              &yes, singularValues.data(), &similarityMode, &similarityCondition, &order, &order, &norm,
                              a.data(), &order, work.data(), &info, 1, 1, 1, 1, 1);
    if (info != 0) throw std::runtime_error("latme: info " + std::to_string(info));
    transpose(order, order, a.data(), to);
}

// Numbers between -1 and 1.
template <class T>
void generateRandom(T* to, int count, int* seed) {
    const int uniform = 2;
    pick<T>([](auto... p) { LAPACK_slarnv(p...); }, [](auto... p) { LAPACK_dlarnv(p...); })(&uniform, seed, &count, to);
}

}  // namespace bench
