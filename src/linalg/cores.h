// The kernels that work on one object and that many forms share, under names of their own, so that they show in a
// profile and a debugger. They are defined in cores.cpp, each from its template.
#pragma once

#include <cstddef>
#include <cstdint>

#include "entry/views.h"

namespace korm::inline KORM_VARIANT::linalg {

template <class T>
using PlainObject = Grid<T, Spacing::rowAdjacent>;
template <class T>
using StridedObject = Grid<T, Spacing::strided>;
template <class T>
using TableObject = Scatter<T, false>;

extern "C" {
// Determinants in extended precision: matrix, row stride in bytes, result.
void v8_a6_Det_m_32f_3x3(const float* src, std::ptrdiff_t rowStride, float* dst);
void v8_a6_Det_m_32f_4x4(const float* src, std::ptrdiff_t rowStride, float* dst);
void v8_a6_Det_m_32f_5x5(const float* src, std::ptrdiff_t rowStride, float* dst);
void v8_a6_Det_m_32f_6x6(const float* src, std::ptrdiff_t rowStride, float* dst);
void v8_a6_Det_m_64f_3x3(const double* src, std::ptrdiff_t rowStride, double* dst);
void v8_a6_Det_m_64f_4x4(const double* src, std::ptrdiff_t rowStride, double* dst);
void v8_a6_Det_m_64f_5x5(const double* src, std::ptrdiff_t rowStride, double* dst);
void v8_a6_Det_m_64f_6x6(const double* src, std::ptrdiff_t rowStride, double* dst);

// LU decomposition of any order.
std::int32_t v8_ownkormLUDecomp_m_32f_S_com(const PlainObject<const float>& src, const PlainObject<float>& dst,
                                            std::byte* pivots, std::ptrdiff_t order);
std::int32_t v8_ownkormLUDecomp_m_64f_S_com(const PlainObject<const double>& src, const PlainObject<double>& dst,
                                            std::byte* pivots, std::ptrdiff_t order);
std::int32_t v8_ownkormLUDecomp_m_32f_S2_com(const StridedObject<const float>& src, const StridedObject<float>& dst,
                                             std::byte* pivots, std::ptrdiff_t order);
std::int32_t v8_ownkormLUDecomp_m_64f_S2_com(const StridedObject<const double>& src, const StridedObject<double>& dst,
                                             std::byte* pivots, std::ptrdiff_t order);
std::int32_t v8_ownkormLUDecomp_m_32f_P_com(const TableObject<const float>& src, const TableObject<float>& dst,
                                            std::byte* pivots, std::ptrdiff_t order);
std::int32_t v8_ownkormLUDecomp_m_64f_P_com(const TableObject<const double>& src, const TableObject<double>& dst,
                                            std::byte* pivots, std::ptrdiff_t order);

// Inverses of any order by cofactors.
std::int32_t v8_ownkormInvert_m_32f_com(const PlainObject<const float>& src, const PlainObject<float>& dst,
                                        float* buffer, std::int32_t order);
std::int32_t v8_ownkormInvert_m_64f_com(const PlainObject<const double>& src, const PlainObject<double>& dst,
                                        double* buffer, std::int32_t order);
std::int32_t v8_ownkormInvert_m_32f_S2_com(const StridedObject<const float>& src, const StridedObject<float>& dst,
                                           float* buffer, std::int32_t order);
std::int32_t v8_ownkormInvert_m_64f_S2_com(const StridedObject<const double>& src, const StridedObject<double>& dst,
                                           double* buffer, std::int32_t order);
std::int32_t v8_ownkormInvert_m_32f_P_com(const TableObject<const float>& src, const TableObject<float>& dst,
                                          float* buffer, std::int32_t order);
std::int32_t v8_ownkormInvert_m_64f_P_com(const TableObject<const double>& src, const TableObject<double>& dst,
                                          double* buffer, std::int32_t order);

// Inverses of two packed 4 by 4 matrices: neither is written if one is singular. Object strides in bytes.
std::int32_t v8_ownkormInvert_m_32f_4x4_loop2(const float* src, std::ptrdiff_t srcObjectStride, float* dst,
                                              std::ptrdiff_t dstObjectStride);
}

// --- The same by the types of their arguments -----------------------------------------------------

// clang-format off
template <int n>
void extendedCore(const float* src, std::ptrdiff_t rowStride, float* dst) {
    if constexpr (n == 3) v8_a6_Det_m_32f_3x3(src, rowStride, dst);
    else if constexpr (n == 4) v8_a6_Det_m_32f_4x4(src, rowStride, dst);
    else if constexpr (n == 5) v8_a6_Det_m_32f_5x5(src, rowStride, dst);
    else v8_a6_Det_m_32f_6x6(src, rowStride, dst);
}
template <int n>
void extendedCore(const double* src, std::ptrdiff_t rowStride, double* dst) {
    if constexpr (n == 3) v8_a6_Det_m_64f_3x3(src, rowStride, dst);
    else if constexpr (n == 4) v8_a6_Det_m_64f_4x4(src, rowStride, dst);
    else if constexpr (n == 5) v8_a6_Det_m_64f_5x5(src, rowStride, dst);
    else v8_a6_Det_m_64f_6x6(src, rowStride, dst);
}

inline std::int32_t luCore(const PlainObject<const float>& src, const PlainObject<float>& dst, std::byte* pivots, std::ptrdiff_t order) { return v8_ownkormLUDecomp_m_32f_S_com(src, dst, pivots, order); }
inline std::int32_t luCore(const PlainObject<const double>& src, const PlainObject<double>& dst, std::byte* pivots, std::ptrdiff_t order) { return v8_ownkormLUDecomp_m_64f_S_com(src, dst, pivots, order); }
inline std::int32_t luCore(const StridedObject<const float>& src, const StridedObject<float>& dst, std::byte* pivots, std::ptrdiff_t order) { return v8_ownkormLUDecomp_m_32f_S2_com(src, dst, pivots, order); }
inline std::int32_t luCore(const StridedObject<const double>& src, const StridedObject<double>& dst, std::byte* pivots, std::ptrdiff_t order) { return v8_ownkormLUDecomp_m_64f_S2_com(src, dst, pivots, order); }
inline std::int32_t luCore(const TableObject<const float>& src, const TableObject<float>& dst, std::byte* pivots, std::ptrdiff_t order) { return v8_ownkormLUDecomp_m_32f_P_com(src, dst, pivots, order); }
inline std::int32_t luCore(const TableObject<const double>& src, const TableObject<double>& dst, std::byte* pivots, std::ptrdiff_t order) { return v8_ownkormLUDecomp_m_64f_P_com(src, dst, pivots, order); }

inline std::int32_t inverseCore(const PlainObject<const float>& src, const PlainObject<float>& dst, float* buffer, std::int32_t order) { return v8_ownkormInvert_m_32f_com(src, dst, buffer, order); }
inline std::int32_t inverseCore(const PlainObject<const double>& src, const PlainObject<double>& dst, double* buffer, std::int32_t order) { return v8_ownkormInvert_m_64f_com(src, dst, buffer, order); }
inline std::int32_t inverseCore(const StridedObject<const float>& src, const StridedObject<float>& dst, float* buffer, std::int32_t order) { return v8_ownkormInvert_m_32f_S2_com(src, dst, buffer, order); }
inline std::int32_t inverseCore(const StridedObject<const double>& src, const StridedObject<double>& dst, double* buffer, std::int32_t order) { return v8_ownkormInvert_m_64f_S2_com(src, dst, buffer, order); }
inline std::int32_t inverseCore(const TableObject<const float>& src, const TableObject<float>& dst, float* buffer, std::int32_t order) { return v8_ownkormInvert_m_32f_P_com(src, dst, buffer, order); }
inline std::int32_t inverseCore(const TableObject<const double>& src, const TableObject<double>& dst, double* buffer, std::int32_t order) { return v8_ownkormInvert_m_64f_P_com(src, dst, buffer, order); }
// clang-format on

}  // namespace korm::inline KORM_VARIANT::linalg
