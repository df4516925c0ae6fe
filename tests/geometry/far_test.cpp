// Strides whose products pass 2^31 and 2^32 bytes, forwards and backwards; a 64-bit address space only.
#include <gtest/gtest.h>
#include <sys/mman.h>

#include <cmath>
#include <cstring>

#include "../support/arena.h"
#include "../support/call.h"
#include "../support/fault.h"
#include "../support/library.h"
#include "../support/thread_number.h"
#include "homogeneous.h"
#include "values.h"

namespace kormtest {
namespace {

#if defined(__x86_64__)

constexpr std::int32_t farStride = 0x60000000;
constexpr std::int32_t spots = 4;

// Address space with a page of memory at each multiple of the far stride.
class FarRoom {
public:
    FarRoom() {
        void* const memory = mmap(nullptr, bytes, PROT_NONE, MAP_PRIVATE | MAP_ANONYMOUS | MAP_NORESERVE, -1, 0);
        if (memory == MAP_FAILED) throw std::runtime_error("no address space for far vectors");
        begin_ = static_cast<std::byte*>(memory);
        for (std::int32_t i = 0; i < spots; ++i)
            if (mprotect(spot(i), pageSize, PROT_READ | PROT_WRITE) != 0) throw std::runtime_error("mprotect failed");
    }
    FarRoom(const FarRoom&) = delete;
    FarRoom& operator=(const FarRoom&) = delete;
    ~FarRoom() { munmap(begin_, bytes); }
    std::byte* spot(std::int32_t i) const { return begin_ + static_cast<std::ptrdiff_t>(i) * farStride; }

private:
    static constexpr std::size_t bytes = std::size_t{spots - 1} * farStride + pageSize;
    std::byte* begin_ = nullptr;
};

class GeometryFar : public testing::TestWithParam<std::size_t> {};

TEST_P(GeometryFar, Vectors) {
    const GeometryFunction& function = geometryFunctions()[GetParam()];
    if (!function.batch()) return;
    static const FarRoom source, result;
    const std::size_t dst = function.dst();
    for (const int direction : {1, -1}) {
        Random random(mixSeed(function.index, static_cast<std::uint64_t>(direction)));
        const auto vector = [&](const FarRoom& room, std::int32_t k) {
            return room.spot(direction > 0 ? k : spots - 1 - k);
        };
        std::vector<std::vector<float>> fixed;
        fixed.reserve(function.arguments.size());
        std::vector<CallValue> values;
        std::vector<Inputs> inputs(spots);
        for (std::size_t i = 0; i < function.arguments.size(); ++i) {
            const Slotted& slotted = function.arguments[i];
            if (slotted.slot == Slot::stride) {
                values.push_back(CallValue::integer(direction * farStride));
            } else if (slotted.slot == Slot::count) {
                values.push_back(CallValue::integer(spots));
            } else if (i == dst) {
                values.push_back(CallValue::pointer(vector(result, 0)));
            } else if (slotted.stride >= 0) {
                values.push_back(CallValue::pointer(vector(source, 0)));
                for (std::int32_t k = 0; k < spots; ++k) {
                    const auto elements = randomElements(function, i, GeometryMood::ordinary, false, random);
                    std::memcpy(vector(source, k), elements.data(), 4 * elements.size());
                    inputs[static_cast<std::size_t>(k)].push_back(elements);
                }
            } else {
                fixed.push_back(randomElements(function, i, GeometryMood::ordinary, false, random));
                std::uint32_t bits;
                std::memcpy(&bits, fixed.back().data(), sizeof bits);
                values.push_back(slotted.pointer() ? CallValue::pointer(fixed.back().data())
                                                   : CallValue::singleBits(bits));
                for (Inputs& in : inputs) in.push_back(fixed.back());
            }
        }
        CallResult call;
        void* const code = Library::linked().find(function.name);
        const Fault fault = guarded([&] { call = callFunction(code, values); });
        ASSERT_FALSE(fault.happened) << function.name << ": " << fault.text();
        EXPECT_EQ(call.status(), 0);
        for (std::int32_t k = 0; k < spots; ++k) {
            Outcome out;
            function.reference(inputs[static_cast<std::size_t>(k)], out);
            for (std::int32_t i = 0; i < function.arguments[dst].elements; ++i) {
                float found;
                std::memcpy(&found, vector(result, k) + 4 * i, sizeof found);
                const auto at = static_cast<std::size_t>(i);
                EXPECT_TRUE(found == out.dst[at] || std::fabs(double{found} - double{out.dst[at]}) <= out.slack[at])
                    << function.name << " vector " << k << ": " << found << " is not " << out.dst[at];
            }
        }
    }
}

INSTANTIATE_TEST_SUITE_P(Functions, GeometryFar, testing::Range(std::size_t{0}, geometryFunctions().size()),
                         [](const auto& info) { return geometryFunctions()[info.param].name; });

// Each of its six strides in turn.
TEST(HomogeneousFar, EveryStride) {
    static const FarRoom rooms[3];
    void* const code = Library::linked().find(homogeneousName);
    for (std::size_t far = 0; far < homogeneousArguments.size(); ++far) {
        if (homogeneousArguments[far].check != 'T') continue;
        Random random(far);
        std::vector<CallValue> values;
        std::size_t room = 0;
        for (std::size_t i = 0; i < homogeneousArguments.size(); ++i) {
            if (homogeneousArguments[i].check == 'N') values.push_back(CallValue::pointer(rooms[room++].spot(0)));
            else if (homogeneousArguments[i].check == 'C') values.push_back(CallValue::integer(3));
            else if (i == far) values.push_back(CallValue::integer(farStride));
            // Each operand is a pointer, a stride of its rows or objects, one of its elements.
            else values.push_back(CallValue::integer(i % 3 == 2 ? 4 : 32));
        }
        for (const FarRoom& one : rooms) {
            for (std::int32_t spot = 0; spot < spots; ++spot) {
                for (std::ptrdiff_t at = 0; at < 256; at += 4) {
                    const float value = 0.25F * static_cast<float>(random.between(1, 100));
                    std::memcpy(one.spot(spot) + at, &value, sizeof value);
                }
            }
        }
        const auto resultBytes = [&] {
            std::vector<std::byte> bytes;
            for (std::int32_t spot = 0; spot < spots; ++spot)
                bytes.insert(bytes.end(), rooms[2].spot(spot), rooms[2].spot(spot) + 512);
            return bytes;
        };
        const auto before = resultBytes();
        const std::int32_t status = HomogeneousScene::apply(values);
        const auto expected = resultBytes();
        for (std::int32_t spot = 0; spot < spots; ++spot)
            std::memcpy(rooms[2].spot(spot), &before[static_cast<std::size_t>(spot) * 512], 512);
        scriptThreadNumbers({1});
        CallResult call;
        const Fault fault = guarded([&] { call = callFunction(code, values); });
        ASSERT_FALSE(fault.happened) << homogeneousArguments[far].name << ": " << fault.text();
        EXPECT_EQ(call.status(), status);
        EXPECT_TRUE(resultBytes() == expected) << homogeneousArguments[far].name;
        EXPECT_FALSE(before == expected);
    }
}

#endif

}  // namespace
}  // namespace kormtest
