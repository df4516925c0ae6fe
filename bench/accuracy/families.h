// What the families have in common: forms for single objects and for arrays, matrices scaled by powers of 2, statuses.
#pragma once
#include "ratios.h"
#include "table.h"

namespace bench {

// Prints the tables of its families.
void measureCholesky();
void measureQr();
void measureLu();
void measureInverses();
void measureSymmetric();
void measureGeneral();

inline constexpr int objects = 8;  // of one kind and order; an array form gets them in one call

enum class Form { single, array };

// `call(k, count)` hands `count` objects from object k on to korm. An array that stops at a failure is taken apart, so that
// each object has a status and results of its own.
template <class Call>
std::vector<int> statusesOf(Form form, Call call) {
    std::vector<int> statuses(objects, korStatusOk);
    if (form == Form::array && call(0, objects) == korStatusOk) return statuses;
    for (int k = 0; k < objects; ++k) statuses[static_cast<std::size_t>(k)] = call(k, 1);
    return statuses;
}

template <class T>
std::string rowName(const std::string& function, Form form, int scale, const char* arrayOperands = "ma",
                    const char* singleOperands = "m") {
    return "`korm" + function + "_" + (form == Form::array ? arrayOperands : singleOperands) + suffix<T> + "`, 2^" +
           std::to_string(scale);
}

// A distance of so many elements in bytes.
template <class T>
std::int32_t bytes(int elements) {
    return elements * static_cast<std::int32_t>(sizeof(T));
}

template <class T>
void scaleBy(int exponent, Matrices<T>& matrices) {
    for (T& element : matrices.elements) element = std::ldexp(element, exponent);
}

template <class T>
Matrices<T> empty(int height, int width) {
    Matrices<T> matrices{height, width, objects, {}};
    // What a call leaves unwritten must show.
    matrices.elements.assign(matrices.size() * objects, std::numeric_limits<T>::quiet_NaN());
    return matrices;
}

// Makes `objects` matrices by make(matrix, number of the matrix) and scales them.
template <class T, class Make>
Matrices<T> matricesOf(int height, int width, int scale, Make make) {
    Matrices<T> matrices = empty<T>(height, width);
    for (int k = 0; k < objects; ++k) make(matrices.object(k));
    scaleBy(scale, matrices);
    return matrices;
}

template <class T>
Checked<Wide<T>> checked(const Matrices<T>& matrices, int k) {
    return {matrices.object(k), matrices.height, matrices.width};
}

template <class T>
struct MatrixKind {
    Spectrum spectrum;
    T condition;
    bool lower, upper;  // elements below and above the diagonal
};

// The kinds of LAPACK's programs, where spectra are geometric, and the other spectra with its three conditions.
template <class T>
std::vector<MatrixKind<T>> kindsOf(bool triangles) {
    const T hard = std::sqrt(T(0.2) / ulp<T>), hardest = T(0.2) / ulp<T>;
    std::vector<MatrixKind<T>> kinds = {{geometric, 2, false, false}};
    if (triangles) kinds.insert(kinds.end(), {{geometric, 2, false, true}, {geometric, 2, true, false}});
    for (const T condition : {T(2), hard, hardest})
        for (const Spectrum spectrum : {clustered, geometric, arithmetic, randomLogarithms})
            kinds.push_back({spectrum, condition, true, true});
    return kinds;
}

// The right-hand side A x of random x.
template <class T>
Matrices<T> rightSides(const Matrices<T>& a, int* seed) {
    Matrices<T> result = empty<T>(a.height, 1);
    for (int k = 0; k < a.count; ++k) {
        Matrices<T> x = matricesOf<T>(a.width, 1, 0, [=](T* to) { generateRandom(to, a.width, seed); });
        const auto product = checked(a, k) * checked(x, 0);
        for (int i = 0; i < a.height; ++i) result.object(k)[i] = static_cast<T>(product(i, 0));
    }
    return result;
}

}  // namespace bench
