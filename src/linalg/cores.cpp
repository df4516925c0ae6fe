#include "linalg/cores.h"

#include "linalg/cofactors.h"
#include "linalg/extended.h"
#include "linalg/invert.h"
#include "linalg/lu_general.h"

namespace korm::inline KORM_VARIANT::linalg {

void v8_a6_Det_m_32f_3x3(const float* src, std::ptrdiff_t rowStride, float* dst) {
    store(reinterpret_cast<std::byte*>(dst), extendedDeterminantOf<3, float>(plain(src, rowStride).at(0)));
}

void v8_a6_Det_m_32f_4x4(const float* src, std::ptrdiff_t rowStride, float* dst) {
    store(reinterpret_cast<std::byte*>(dst), extendedDeterminantOf<4, float>(plain(src, rowStride).at(0)));
}

void v8_a6_Det_m_32f_5x5(const float* src, std::ptrdiff_t rowStride, float* dst) {
    store(reinterpret_cast<std::byte*>(dst), extendedDeterminantOf<5, float>(plain(src, rowStride).at(0)));
}

void v8_a6_Det_m_32f_6x6(const float* src, std::ptrdiff_t rowStride, float* dst) {
    store(reinterpret_cast<std::byte*>(dst), extendedDeterminantOf<6, float>(plain(src, rowStride).at(0)));
}

void v8_a6_Det_m_64f_3x3(const double* src, std::ptrdiff_t rowStride, double* dst) {
    store(reinterpret_cast<std::byte*>(dst), extendedDeterminantOf<3, double>(plain(src, rowStride).at(0)));
}

void v8_a6_Det_m_64f_4x4(const double* src, std::ptrdiff_t rowStride, double* dst) {
    store(reinterpret_cast<std::byte*>(dst), extendedDeterminantOf<4, double>(plain(src, rowStride).at(0)));
}

void v8_a6_Det_m_64f_5x5(const double* src, std::ptrdiff_t rowStride, double* dst) {
    store(reinterpret_cast<std::byte*>(dst), extendedDeterminantOf<5, double>(plain(src, rowStride).at(0)));
}

void v8_a6_Det_m_64f_6x6(const double* src, std::ptrdiff_t rowStride, double* dst) {
    store(reinterpret_cast<std::byte*>(dst), extendedDeterminantOf<6, double>(plain(src, rowStride).at(0)));
}

std::int32_t v8_ownkormLUDecomp_m_32f_S_com(const PlainObject<const float>& src, const PlainObject<float>& dst,
                                            std::byte* pivots, std::ptrdiff_t order) {
    return luGeneral<float>(src, dst, pivots, order);
}

std::int32_t v8_ownkormLUDecomp_m_64f_S_com(const PlainObject<const double>& src, const PlainObject<double>& dst,
                                            std::byte* pivots, std::ptrdiff_t order) {
    return luGeneral<double>(src, dst, pivots, order);
}

std::int32_t v8_ownkormLUDecomp_m_32f_S2_com(const StridedObject<const float>& src, const StridedObject<float>& dst,
                                             std::byte* pivots, std::ptrdiff_t order) {
    return luGeneral<float>(src, dst, pivots, order);
}

std::int32_t v8_ownkormLUDecomp_m_64f_S2_com(const StridedObject<const double>& src, const StridedObject<double>& dst,
                                             std::byte* pivots, std::ptrdiff_t order) {
    return luGeneral<double>(src, dst, pivots, order);
}

std::int32_t v8_ownkormLUDecomp_m_32f_P_com(const TableObject<const float>& src, const TableObject<float>& dst,
                                            std::byte* pivots, std::ptrdiff_t order) {
    return luGeneral<float>(src, dst, pivots, order);
}

std::int32_t v8_ownkormLUDecomp_m_64f_P_com(const TableObject<const double>& src, const TableObject<double>& dst,
                                            std::byte* pivots, std::ptrdiff_t order) {
    return luGeneral<double>(src, dst, pivots, order);
}

std::int32_t v8_ownkormInvert_m_32f_com(const PlainObject<const float>& src, const PlainObject<float>& dst,
                                        float* buffer, std::int32_t order) {
    return invertByCofactors<float>(src, dst, buffer, order);
}

std::int32_t v8_ownkormInvert_m_64f_com(const PlainObject<const double>& src, const PlainObject<double>& dst,
                                        double* buffer, std::int32_t order) {
    return invertByCofactors<double>(src, dst, buffer, order);
}

std::int32_t v8_ownkormInvert_m_32f_S2_com(const StridedObject<const float>& src, const StridedObject<float>& dst,
                                           float* buffer, std::int32_t order) {
    return invertByCofactors<float>(src, dst, buffer, order);
}

std::int32_t v8_ownkormInvert_m_64f_S2_com(const StridedObject<const double>& src, const StridedObject<double>& dst,
                                           double* buffer, std::int32_t order) {
    return invertByCofactors<double>(src, dst, buffer, order);
}

std::int32_t v8_ownkormInvert_m_32f_P_com(const TableObject<const float>& src, const TableObject<float>& dst,
                                          float* buffer, std::int32_t order) {
    return invertByCofactors<float>(src, dst, buffer, order);
}

std::int32_t v8_ownkormInvert_m_64f_P_com(const TableObject<const double>& src, const TableObject<double>& dst,
                                          double* buffer, std::int32_t order) {
    return invertByCofactors<double>(src, dst, buffer, order);
}

std::int32_t v8_ownkormInvert_m_32f_4x4_loop2(const float* src, std::ptrdiff_t srcObjectStride, float* dst,
                                              std::ptrdiff_t dstObjectStride) {
    return invertPair(plainArray(src, srcObjectStride, 16), plainArray(dst, dstObjectStride, 16));
}

}  // namespace korm::inline KORM_VARIANT::linalg
