// How much scratch the functions of general eigenproblems need, in bytes.

#include <cstdint>

#include "entry/checks.h"
#include "entry/variant.h"
#include "korm.h"

namespace korm::inline KORM_VARIANT::eigen {
namespace {

// (matrices * order + 5) rows of `order` elements; the product wraps.
std::int32_t bufferSize(std::int32_t order, std::uint32_t* size, std::uint32_t elementSize, std::uint32_t matrices) {
    if (size == nullptr) return korStatusNullPointer;
    if (order < 1) return korStatusBadSize;
    const std::uint32_t n = bitsOf(order);
    *size = n * elementSize * (matrices * n + 5);
    return korStatusOk;
}

}  // namespace

extern "C" {

std::int32_t valuesOfFloats(std::int32_t order, std::uint32_t* size) asm(KORM_SYMBOL("kormEigenValuesGetBufSize_32f"));
std::int32_t valuesOfFloats(std::int32_t order, std::uint32_t* size) { return bufferSize(order, size, 4, 1); }

std::int32_t valuesOfDoubles(std::int32_t order, std::uint32_t* size) asm(KORM_SYMBOL("kormEigenValuesGetBufSize_64f"));
std::int32_t valuesOfDoubles(std::int32_t order, std::uint32_t* size) { return bufferSize(order, size, 8, 1); }

std::int32_t vectorsOfFloats(std::int32_t order,
                             std::uint32_t* size) asm(KORM_SYMBOL("kormEigenValuesVectorsGetBufSize_32f"));
std::int32_t vectorsOfFloats(std::int32_t order, std::uint32_t* size) { return bufferSize(order, size, 4, 3); }

std::int32_t vectorsOfDoubles(std::int32_t order,
                              std::uint32_t* size) asm(KORM_SYMBOL("kormEigenValuesVectorsGetBufSize_64f"));
std::int32_t vectorsOfDoubles(std::int32_t order, std::uint32_t* size) { return bufferSize(order, size, 8, 3); }

}  // extern "C"
}  // namespace korm::inline KORM_VARIANT::eigen
