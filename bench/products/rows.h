// Rows of packed square matrices, and of these with vectors.
#pragma once

#include <limits>

#include "peers.h"

namespace bench {

// --- Forms ---

SINGLE_FORM(Mul_mm)
SINGLE_FORM(Mul_mt)
SINGLE_FORM(Mul_mv)
SINGLE_FORM(Mul_tm)
SINGLE_FORM(Mul_tt)
SINGLE_FORM(Mul_tv)
ARRAY_FORM(Mul_mam)
ARRAY_FORM(Mul_mama)
ARRAY_FORM(Mul_mata)
ARRAY_FORM(Mul_mav)
ARRAY_FORM(Mul_mava)
ARRAY_FORM(Mul_mma)
ARRAY_FORM(Mul_mva)
ARRAY_FORM(Mul_tama)
ARRAY_FORM(Mul_tata)
ARRAY_FORM(Mul_tav)
ARRAY_FORM(Mul_tava)
ARRAY_FORM(Mul_tva)

// --- Rows ---

template <Shape shape, Layout layout, class T>
Work<T> squareWork(int order, std::size_t bytes) {
    return makeWork<shape, T>(layout, order, order, shape.isVector() ? 1 : order, bytes);
}

template <class Form, class T>
std::string squareName(const std::string& section, int order) {
    return section + "/" + std::string(Form::name) + suffix<T> + "/" + std::to_string(order);
}

// Values are between 1 and 2, so a sum's rounding errors are below order times epsilon times the sum.
template <class T>
double productTolerance(int order) {
    return static_cast<double>(std::numeric_limits<T>::epsilon()) * (order + 1);
}

// Peers with fixed sizes where these are small, the others where they are not, or where there is one product only.
template <class Form, class T, int order>
void packedRow(const std::string& section, const Place& place) {
    constexpr Shape shape = Form::shape;
    const std::string name = squareName<Form, T>(section, order);
    if (!isWanted(name)) return;
    const auto work = squareWork<shape, Layout::packed, T>(order, place.bytes);
    const auto p = Packed<T>::template of<shape>(work);
    Row row(name, work.count);
    row.results(work.result.base, work.result.span, productTolerance<T>(order));
    row.korm(kormCall<Form, Layout::packed>(work));
    if constexpr (shape.isArray() && order <= 16) addPeersOfKnownSize<shape, order>(row, p);
    if constexpr (!shape.isArray() && order <= 8) row.peer("Eigen, fixed sizes", [=] { eigen<shape, order>(p); });
    if constexpr (!shape.isArray() || order >= (shape.isVector() ? 16 : 8)) addPeersOfAnySize<shape>(row, p);
    row.measure();
}

template <class Form, int... orders>
void packedRows(const std::string& section, const Place& place = inCache) {
    (packedRow<Form, float, orders>(section, place), ...);
    (packedRow<Form, double, orders>(section, place), ...);
}

// A file for each.
void measureArrays();
void measureSingles();
void measureVectors();
void measureKnownSizes();
void measureSweeps();

}  // namespace bench
