// Calls a function at any address with any argument list and watches the call frame.
#pragma once

#include <cstddef>
#include <cstdint>
#include <cstring>
#include <span>
#include <string>

namespace kormtest {

struct CallValue {
    enum class Kind : std::uint8_t { integer, pointer, single, real };
    Kind kind = Kind::integer;
    std::uint64_t bits = 0;

    static CallValue integer(std::int32_t value) { return {Kind::integer, static_cast<std::uint32_t>(value)}; }
    static CallValue pointer(const void* value) { return {Kind::pointer, reinterpret_cast<std::uintptr_t>(value)}; }
    // Constants travel as bits: a float through a return value could lose a signalling NaN on ia32.
    static CallValue singleBits(std::uint32_t bits) { return {Kind::single, bits}; }
    static CallValue realBits(std::uint64_t bits) { return {Kind::real, bits}; }
};

// What the trampoline reads and writes; call_x86_64.S and call_ia32.S know these offsets.
struct CallFrame {
    static constexpr std::size_t areaBytes = 512;

    std::uint64_t function = 0;               // 0
    std::uint64_t integers[6] = {};           // 8
    std::uint64_t vectors[8] = {};            // 56
    unsigned char area[areaBytes] = {};       // 120  arguments on the stack, then a pattern
    std::uint64_t savedBefore[6] = {};        // 632  values given to the callee-saved registers
    std::uint64_t savedAfter[6] = {};         // 680
    std::uint64_t result = 0;                 // 728
    std::uint32_t mxcsrBefore = 0;            // 736
    std::uint32_t mxcsrAfter = 0;             // 740
    unsigned char x87Before[32] = {};         // 744
    unsigned char x87After[32] = {};          // 776
    std::uint64_t flagsAfter = 0;             // 808
    unsigned char areaAfter[areaBytes] = {};  // 816
    std::uint64_t stackShift = 0;             // 1328  ia32: stack pointer modulo 16 at the call
    std::uint64_t stackDrift = 0;             // 1336  how far the stack pointer was off after the call
};
static_assert(offsetof(CallFrame, area) == 120 && offsetof(CallFrame, savedBefore) == 632);
static_assert(offsetof(CallFrame, result) == 728 && offsetof(CallFrame, x87Before) == 744);
static_assert(offsetof(CallFrame, flagsAfter) == 808 && offsetof(CallFrame, areaAfter) == 816);
static_assert(offsetof(CallFrame, stackShift) == 1328 && offsetof(CallFrame, stackDrift) == 1336);

struct CallResult {
    std::uint64_t word = 0;   // the whole return register
    std::string frameDamage;  // empty when everything was left as the calling convention demands
    std::int32_t status() const { return static_cast<std::int32_t>(static_cast<std::uint32_t>(word)); }
};

// On ia32 `stackShift` (0, 4, 8 or 12) places the stack pointer; x86_64 demands 16-byte alignment and ignores it.
CallResult callFunction(void* function, std::span<const CallValue> arguments, unsigned stackShift = 0);

}  // namespace kormtest
