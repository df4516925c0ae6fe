#include <cstring>

#include "../reference/geometry.h"
#include "homogeneous.h"

namespace kormtest {

const std::array<HomogeneousArgument, 10> homogeneousArguments{{
    {"src1", 'N'},
    {"src1RowStride", 'T'},
    {"src1ElementStride", 'T'},
    {"src2", 'N'},
    {"src2ObjectStride", 'T'},
    {"src2ElementStride", 'T'},
    {"dst", 'N'},
    {"dstObjectStride", 'T'},
    {"dstElementStride", 'T'},
    {"count", 'C'},
}};

bool homogeneousReachesDriver(std::int32_t count) {
    return static_cast<std::int32_t>(6u * static_cast<std::uint32_t>(count)) > 784;
}

namespace {

std::int32_t number(const CallValue& value) {
    return static_cast<std::int32_t>(static_cast<std::uint32_t>(value.bits));
}

std::byte* address(const CallValue& base, std::int64_t offset) {
    return reinterpret_cast<std::byte*>(static_cast<std::uintptr_t>(base.bits)) + static_cast<std::ptrdiff_t>(offset);
}

float read(const std::byte* at) {
    float value;
    std::memcpy(&value, at, sizeof value);
    return value;
}

}  // namespace

std::int32_t HomogeneousScene::apply(const std::vector<CallValue>& arguments) {
    Inputs in{std::vector<float>(16), std::vector<float>(3)};
    for (std::size_t r = 0; r < 4; ++r)
        for (std::size_t c = 0; c < 4; ++c)
            in[0][4 * r + c] = read(address(arguments[0], static_cast<std::int64_t>(r) * number(arguments[1]) +
                                                              static_cast<std::int64_t>(c) * number(arguments[2])));
    std::int32_t status = 0;
    for (std::int64_t k = 0; k < number(arguments[9]); ++k) {
        for (std::size_t i = 0; i < 3; ++i)
            in[1][i] = read(
                address(arguments[3], k * number(arguments[4]) + static_cast<std::int64_t>(i) * number(arguments[5])));
        Outcome out;
        fixed::homogeneous(in, out);
        if (out.status != 0) status = out.status;
        for (std::size_t i = 0; i < 3; ++i)
            std::memcpy(
                address(arguments[6], k * number(arguments[7]) + static_cast<std::int64_t>(i) * number(arguments[8])),
                &out.dst[i], sizeof(float));
    }
    return status;
}

}  // namespace kormtest
