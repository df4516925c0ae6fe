// A library of the geometry functions that computes by the references and makes one kind of mistake on purpose.
//
// Each name is a generated stub that pushes its function's index and enters mutantEntry (../../mutants/entry_*.S).
#include <algorithm>
#include <cerrno>
#include <cstring>

#include "../functions.h"
#include "../homogeneous.h"
#include "mistakes.h"

// Set by the program that loads the library.
extern "C" __attribute__((visibility("default"))) int mutantVariant;
int mutantVariant = 0;

extern "C" __attribute__((visibility("hidden"))) std::int32_t mutantCall(std::size_t index,
                                                                         const unsigned char* registers,
                                                                         const unsigned char* stack);
extern "C" std::int32_t ownGetNumThreads();

namespace kormtest {
namespace {

enum class Where : std::uint8_t { integer, single };

std::vector<std::uint64_t> collect(const std::vector<Where>& kinds, [[maybe_unused]] const unsigned char* registers,
                                   const unsigned char* stack, const std::vector<bool>& pointers) {
    std::vector<std::uint64_t> values;
    [[maybe_unused]] std::size_t integers = 0, vectors = 0;
    for (std::size_t i = 0; i < kinds.size(); ++i) {
        std::uint64_t bits = 0;
#if defined(__x86_64__)
        const unsigned char* from = stack;
        if (kinds[i] == Where::single && vectors < 8) from = registers + 48 + 8 * vectors++;
        else if (kinds[i] == Where::integer && integers < 6) from = registers + 8 * integers++;
        else stack += 8;
        std::memcpy(&bits, from, pointers[i] ? 8 : 4);
#else
        static_cast<void>(pointers);
        std::memcpy(&bits, stack, 4);
        stack += 4;
#endif
        values.push_back(bits);
    }
    return values;
}

std::int32_t number(std::uint64_t bits) { return static_cast<std::int32_t>(static_cast<std::uint32_t>(bits)); }

class Call {
public:
    Call(const GeometryFunction& function, const std::vector<std::uint64_t>& values)
        : function_(function), values_(values) {}

    std::int32_t run(Mistake mistake) const {
        if (mistake == Mistake::doesNothing) return 0;
        if (function_.nullCheck && mistake != Mistake::skipsChecks)
            for (const std::uint64_t value : values_)
                if (value == 0) return -8;
        std::int32_t count = function_.batch() ? number(values_.back()) : 1;
        if (mistake == Mistake::forgetsTheLast && function_.batch()) --count;
        // The matrices are read once, before the loop; a single call reads everything first.
        std::int32_t status = 0;
        for (std::int32_t k = 0; k < count && status == 0; ++k) status = one(k, mistake);
        return status;
    }

private:
    std::byte* at(std::size_t argument, std::int32_t k) const {
        const int stride = function_.arguments[argument].stride;
        const std::ptrdiff_t step = stride < 0 ? 0 : number(values_[static_cast<std::size_t>(stride)]);
        return reinterpret_cast<std::byte*>(static_cast<std::uintptr_t>(values_[argument])) + k * step;
    }

    std::int32_t one(std::int32_t k, Mistake mistake) const {
        Inputs in;
        if (mistake == Mistake::storesEarly)
            std::memset(at(function_.dst(), k), 0x5c,
                        static_cast<std::size_t>(4 * function_.arguments[function_.dst()].elements));
        for (std::size_t i = 0; i < values_.size(); ++i) {
            const Slotted& slotted = function_.arguments[i];
            if (slotted.slot == Slot::constant) {
                in.emplace_back(1);
                std::memcpy(in.back().data(), &values_[i], sizeof(float));
            } else if (slotted.slot == Slot::input) {
                in.emplace_back(static_cast<std::size_t>(slotted.elements));
                std::memcpy(in.back().data(), at(i, k), 4 * in.back().size());
            }
        }
        if (mistake == Mistake::swapsOperands) swapTwo(in);
        Outcome out;
        function_.reference(in, out);
        for (float& element : out.dst) {
            if (mistake == Mistake::flipsZeros && element == 0) element = -element;
            std::uint32_t bits;
            std::memcpy(&bits, &element, sizeof bits);
            // Bits, as an x87 register would quieten it unasked.
            if (mistake == Mistake::quietsNans && (bits & 0x7fffffff) > 0x7f800000) bits |= 0x00400000;
            std::memcpy(&element, &bits, sizeof bits);
        }
        const std::size_t dst = function_.dst();
        if (out.status != 0 && function_.batch()) return out.status;
        for (std::size_t i = 0; i < values_.size(); ++i) {
            const Slotted& slotted = function_.arguments[i];
            if (slotted.slot == Slot::optional && values_[i] != 0) std::memcpy(at(i, k), &out.det, 4);
            if (slotted.slot == Slot::integer) std::memcpy(at(i, k), &out.integer, 4);
            if (slotted.slot == Slot::output && out.writesDst)
                std::memcpy(at(i, k), out.dst.data(), static_cast<std::size_t>(4 * slotted.elements));
        }
        const bool last = !function_.batch() || k + 1 == number(values_.back());
        if (mistake == Mistake::writesBeyond && last && out.writesDst)
            std::memset(at(dst, k) + 4 * function_.arguments[dst].elements, 0x5c, 4);
        return out.status;
    }

    // The first two inputs of one shape.
    static void swapTwo(Inputs& in) {
        for (std::size_t a = 0; a < in.size(); ++a) {
            for (std::size_t b = a + 1; b < in.size(); ++b) {
                if (in[a].size() != in[b].size()) continue;
                std::swap(in[a], in[b]);
                return;
            }
        }
    }

    const GeometryFunction& function_;
    const std::vector<std::uint64_t>& values_;
};

std::int32_t runHomogeneous(const std::vector<std::uint64_t>& bits, Mistake mistake) {
    std::vector<CallValue> values;
    for (std::size_t i = 0; i < bits.size(); ++i)
        values.push_back(homogeneousArguments[i].check == 'N' ? CallValue{CallValue::Kind::pointer, bits[i]}
                                                              : CallValue::integer(number(bits[i])));
    const auto fails = [&](char letter) {
        for (std::size_t i = 0; i < values.size(); ++i) {
            const std::int32_t value = number(bits[i]);
            if (homogeneousArguments[i].check != letter) continue;
            if (letter == 'N' ? bits[i] == 0 : letter == 'C' ? value < 1 : value < 1 || (value & 3) != 0) return true;
        }
        return false;
    };
    if (mistake == Mistake::doesNothing) return 0;
    if (mistake != Mistake::skipsChecks) {
        std::string order = homogeneousOrder;
        if (mistake == Mistake::reordersChecks) std::swap(order[1], order[2]);
        for (const char letter : order)
            if (fails(letter)) return letter == 'N' ? -8 : letter == 'C' ? -203 : -182;
    }
    std::int32_t count = number(bits[9]);
    std::int32_t decision = count;
    if (mistake == Mistake::missesLimit && count == 131) decision = 130;
    if (homogeneousReachesDriver(decision)) ownGetNumThreads();
    if (mistake == Mistake::forgetsTheLast) values[9] = CallValue::integer(count - 1);
    std::int32_t status = HomogeneousScene::apply(values);
    if (mistake == Mistake::forgetsFailures) status = 0;
    if (mistake == Mistake::writesBeyond) {
        const std::ptrdiff_t offset = static_cast<std::ptrdiff_t>(count - 1) * number(bits[7]) + 3 * number(bits[8]);
        std::memset(reinterpret_cast<std::byte*>(static_cast<std::uintptr_t>(bits[6])) + offset, 0x5c, 4);
    }
    return status;
}

}  // namespace
}  // namespace kormtest

namespace kormtest {
namespace {

// The references' own use of the mathematics library isn't the mistake that is to be seen.
class KeptErrno {
public:
    KeptErrno() = default;
    KeptErrno(const KeptErrno&) = delete;
    KeptErrno& operator=(const KeptErrno&) = delete;
    ~KeptErrno() { errno = before_; }

private:
    const int before_ = errno;
};

}  // namespace
}  // namespace kormtest

extern "C" std::int32_t mutantCall(std::size_t index, const unsigned char* registers, const unsigned char* stack) {
    using namespace kormtest;
    const KeptErrno kept;
    const auto mistake = static_cast<Mistake>(mutantVariant);
    std::vector<Where> kinds;
    std::vector<bool> pointers;
    if (index == geometryFunctions().size()) {
        for (const HomogeneousArgument& argument : homogeneousArguments) {
            kinds.push_back(Where::integer);
            pointers.push_back(argument.check == 'N');
        }
        return runHomogeneous(collect(kinds, registers, stack, pointers), mistake);
    }
    const GeometryFunction& function = geometryFunctions()[index];
    for (const Slotted& argument : function.arguments) {
        kinds.push_back(argument.slot == Slot::constant ? Where::single : Where::integer);
        pointers.push_back(argument.pointer());
    }
    const auto values = collect(kinds, registers, stack, pointers);
    return Call(function, values).run(mistake);
}
