// Operands in blocks of exactly their size, at multiples of 16 as malloc gives them. A checker of memory sees every
// byte beyond that is touched, also the fourth element behind a vector of three that a 16-byte load would read
// unpunished.
#include <gtest/gtest.h>

#include <cmath>
#include <cstring>
#include <memory>

#include "../support/call.h"
#include "../support/library.h"
#include "values.h"

namespace kormtest {
namespace {

class Block {
public:
    explicit Block(std::size_t size) : bytes_(static_cast<std::byte*>(std::malloc(size)), std::free) {
        std::memset(bytes_.get(), 0x77, size);
    }
    std::byte* at(std::ptrdiff_t offset) const { return bytes_.get() + offset; }

private:
    std::unique_ptr<std::byte, void (*)(void*)> bytes_;
};

class GeometryOnTheHeap : public testing::TestWithParam<std::size_t> {};

TEST_P(GeometryOnTheHeap, TouchesNothingElse) {
    const GeometryFunction& function = geometryFunctions()[GetParam()];
    const std::size_t dst = function.dst();
    for (int number = 0; number < 60; ++number) {
        Random random(mixSeed(function.index, static_cast<std::uint64_t>(number)));
        const std::int32_t count = function.batch() ? random.between(1, 11) : 1;
        std::vector<Block> blocks;
        std::vector<CallValue> values;
        std::vector<Inputs> inputs(static_cast<std::size_t>(count));
        std::int32_t stride = 0, dstStride = 0;
        std::byte* result = nullptr;
        for (std::size_t i = 0; i < function.arguments.size(); ++i) {
            const Slotted& slotted = function.arguments[i];
            if (slotted.slot == Slot::stride) {
                values.push_back(CallValue::integer(stride));
                continue;
            }
            if (slotted.slot == Slot::count) {
                values.push_back(CallValue::integer(count));
                continue;
            }
            const bool array = slotted.stride >= 0;
            if (slotted.slot == Slot::constant) {
                const auto value = randomElements(function, i, GeometryMood::ordinary, false, random);
                std::uint32_t bits;
                std::memcpy(&bits, value.data(), sizeof bits);
                values.push_back(CallValue::singleBits(bits));
                for (Inputs& in : inputs) in.push_back(value);
                continue;
            }
            const std::int32_t bytes = 4 * slotted.elements;
            stride = array ? std::max(bytes, random.pick({8, 12, 16, 20})) : 0;
            blocks.emplace_back(static_cast<std::size_t>((array ? count - 1 : 0) * stride + bytes));
            values.push_back(CallValue::pointer(blocks.back().at(0)));
            if (i == dst) {
                result = blocks.back().at(0);
                dstStride = stride;
            }
            if (slotted.slot != Slot::input) continue;
            for (std::int32_t k = 0; k < (array ? count : 1); ++k) {
                const auto vector = randomElements(function, i, GeometryMood::ordinary, false, random);
                std::memcpy(blocks.back().at(k * stride), vector.data(), static_cast<std::size_t>(bytes));
                for (std::int32_t to = array ? k : 0; to < (array ? k + 1 : count); ++to)
                    inputs[static_cast<std::size_t>(to)].push_back(vector);
            }
        }
        const CallResult call = callFunction(Library::linked().find(function.name), values);
        for (std::int32_t k = 0; k < count; ++k) {
            Outcome out;
            function.reference(inputs[static_cast<std::size_t>(k)], out);
            if (out.eitherStatus || (out.status != 0 && function.batch())) continue;
            ASSERT_EQ(call.status(), out.status) << function.name;
            if (function.arguments[dst].slot == Slot::integer) {
                EXPECT_EQ(std::memcmp(result, &out.integer, sizeof out.integer), 0) << function.name;
                continue;
            }
            if (!out.writesDst) continue;
            for (std::int32_t i = 0; i < function.arguments[dst].elements; ++i) {
                float found;
                std::memcpy(&found, result + k * dstStride + 4 * i, sizeof found);
                const auto at = static_cast<std::size_t>(i);
                const bool same = found == out.dst[at] || (std::isnan(found) && std::isnan(out.dst[at])) ||
                                  std::fabs(double{found} - double{out.dst[at]}) <= out.slack[at] ||
                                  std::isinf(out.slack[at]);
                EXPECT_TRUE(same) << function.name << ": " << found << " is not " << out.dst[at];
            }
        }
    }
}

INSTANTIATE_TEST_SUITE_P(Functions, GeometryOnTheHeap, testing::Range(std::size_t{0}, geometryFunctions().size()),
                         [](const auto& info) { return geometryFunctions()[info.param].name; });

}  // namespace
}  // namespace kormtest
