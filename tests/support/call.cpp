#include "call.h"

#include <cerrno>

#include "checker.h"

#ifdef KORM_MEMORY_SANITIZER
// Where a caller tells which of its arguments have a value.
extern "C" thread_local unsigned long long __msan_param_tls[100];
#endif

extern "C" void kormtestTrampoline(kormtest::CallFrame* frame);

namespace kormtest {
namespace {

constexpr std::uint64_t canaryWord = 0xc5a30f96d2e1784bu;
constexpr int errnoMark = 0x5a5a;
// Bits of MXCSR that a function must preserve; the lower six are sticky exception flags.
constexpr std::uint32_t mxcsrControl = 0xffc0;
constexpr std::uint64_t directionFlag = 1u << 10;

void fill(unsigned char* bytes, std::size_t size) {
    for (std::size_t i = 0; i < size; i += sizeof canaryWord) {
        const std::uint64_t word = canaryWord + i * 0x0101;
        std::memcpy(bytes + i, &word, sizeof word);
    }
}

// Places the arguments; returns the number of bytes used on the stack.
std::size_t place(CallFrame& frame, std::span<const CallValue> arguments) {
    std::size_t used = 0;
#if defined(__x86_64__)
    std::size_t integers = 0, vectors = 0;
    for (const CallValue& argument : arguments) {
        std::uint64_t bits = argument.bits;
        // The upper half of a register that passes 32 bits is unspecified: a callee may not rely on it.
        const bool half = argument.kind == CallValue::Kind::integer || argument.kind == CallValue::Kind::single;
        if (half) bits |= canaryWord << 32;
        const bool vector = argument.kind == CallValue::Kind::single || argument.kind == CallValue::Kind::real;
        if (vector && vectors < 8) {
            frame.vectors[vectors++] = bits;
        } else if (!vector && integers < 6) {
            frame.integers[integers++] = bits;
        } else {
            std::memcpy(frame.area + used, &bits, 8);
            used += 8;
        }
    }
#else
    for (const CallValue& argument : arguments) {
        const std::size_t size = argument.kind == CallValue::Kind::real ? 8 : 4;
        std::memcpy(frame.area + used, &argument.bits, size);
        used += size;
    }
#endif
    return used;
}

std::uint16_t half(const unsigned char* bytes) {
    std::uint16_t value;
    std::memcpy(&value, bytes, sizeof value);
    return value;
}

std::string damageOf(const CallFrame& frame, std::size_t used) {
    static constexpr const char* names[] = {
#if defined(__x86_64__)
        "rbx",
        "rbp",
        "r12",
        "r13",
        "r14",
        "r15"
#else
        "ebx",
        "ebp",
        "esi",
        "edi"
#endif
    };
    std::string damage;
    for (std::size_t i = 0; i < std::size(names); ++i) {
        using Register = std::uintptr_t;
        if (static_cast<Register>(frame.savedBefore[i]) != static_cast<Register>(frame.savedAfter[i]))
            damage += std::string(" ") + names[i];
    }
    if (frame.stackDrift != 0) damage += " stack pointer";
    if (((frame.mxcsrBefore ^ frame.mxcsrAfter) & mxcsrControl) != 0) damage += " MXCSR";
    if (half(frame.x87Before) != half(frame.x87After)) damage += " x87 control word";
    // An empty register stack: all tags set. The top-of-stack field must be where it was.
    if (half(frame.x87After + 8) != 0xffff) damage += " x87 tags";
    if (((half(frame.x87Before + 4) ^ half(frame.x87After + 4)) & 0x3800) != 0) damage += " x87 stack top";
    if ((frame.flagsAfter & directionFlag) != 0) damage += " direction flag";
    if (std::memcmp(frame.area + used, frame.areaAfter + used, CallFrame::areaBytes - used) != 0)
        damage += " stack above the arguments";
    return damage;
}

// The trampoline can't say that all arguments have values; what is there is of an earlier call.
void setArgumentsWritten() {
#ifdef KORM_MEMORY_SANITIZER
    for (unsigned long long& shadow : __msan_param_tls) shadow = 0;
#endif
}

}  // namespace

CallResult callFunction(void* function, std::span<const CallValue> arguments, unsigned stackShift) {
    CallFrame frame;
    frame.function = reinterpret_cast<std::uintptr_t>(function);
    frame.stackShift = stackShift;
    fill(frame.area, sizeof frame.area);
    for (std::size_t i = 0; i < 6; ++i) {
        frame.savedBefore[i] = canaryWord * (i + 3);
        frame.integers[i] = canaryWord * (i + 11);
    }
    const std::size_t used = place(frame, arguments);
    setArgumentsWritten();
    errno = errnoMark;
    kormtestTrampoline(&frame);
    const int errnoAfter = errno;
    CallResult result{frame.result, damageOf(frame, used)};
    if (errnoAfter != errnoMark) result.frameDamage += " errno";
    return result;
}

}  // namespace kormtest
