// The parallel frame: every driver v8_ownOMP_kormX is a call of forEachRun.
//
// Objects of an array are independent of each other, so a team of threads takes one contiguous run of
// objects each, and each thread calls, for its run, the kernel that a small call would use. The frame
// knows nothing of data, kernels know nothing of threads; between them stands a driver's lambda, which
// shifts the arguments to the first object of a run.
#pragma once

#include <cstddef>
#include <cstdint>

#include "entry/variant.h"

namespace korm::inline KORM_VARIANT {

struct Run {
    std::int32_t first;
    std::int32_t count;
};

// How `count` objects are divided: each thread takes `chunk` of them, the first `remainder` threads one more.
struct Split {
    std::int32_t chunk;
    std::int32_t remainder;

    static Split over(std::int32_t count, std::int32_t numThreads) { return {count / numThreads, count % numThreads}; }

    Run run(std::int32_t thread) const {
        if (thread < remainder) return {(chunk + 1) * thread, chunk + 1};
        return {(chunk + 1) * remainder + (thread - remainder) * chunk, chunk};
    }
};

// Does a family report statuses that depend on the data? Then the first one stored is the call's.
enum class Statuses { none, merged };

// Scratch that a kernel needs: the caller's for a serial call, a piece of its own for each thread.
struct Scratch {
    std::size_t bytesPerThread = 0;
    void* callers = nullptr;
};

// A driver's part: call the kernel on a run. `call` points to the driver's lambda.
using RunFunction = std::int32_t (*)(const void* call, Run run, void* scratch);

std::int32_t forEachRun(std::int32_t count, Statuses statuses, Scratch scratch, RunFunction function, const void* call);

template <class Call>
std::int32_t forEachRun(std::int32_t count, Statuses statuses, Scratch scratch, const Call& call) {
    const RunFunction function = [](const void* pointer, Run run, void* piece) {
        return (*static_cast<const Call*>(pointer))(run, piece);
    };
    return forEachRun(count, statuses, scratch, function, &call);
}

// For kernels that can't fail and need no scratch.
template <class Call>
std::int32_t forEachRun(std::int32_t count, const Call& call) {
    const RunFunction function = [](const void* pointer, Run run, void*) {
        return (*static_cast<const Call*>(pointer))(run);
    };
    return forEachRun(count, Statuses::none, Scratch{}, function, &call);
}

// --- Shifting an operand to object `first`, by the make-up of its descriptor --------------------

// Standard layout. Bytes, not elements: the base need not be aligned.
template <class T>
T* shifted(T* base, std::int32_t first, std::int32_t objectStride) {
    const auto distance = static_cast<std::ptrdiff_t>(first) * objectStride;
    return reinterpret_cast<T*>(reinterpret_cast<std::uintptr_t>(base) + static_cast<std::uintptr_t>(distance));
}

// A list has one entry for each object, its offset stays.
template <class T>
T* const* shiftedList(T* const* list, std::int32_t first) {
    return list + first;
}

// A table has one entry for each element position and stays; the offset moves. It may pass 2^31, so
// kernels of the pointer layout take the offsets of arrays in full width.
inline std::ptrdiff_t shiftedOffset(std::int32_t offset, std::int32_t first, std::int32_t objectStride) {
    return offset + static_cast<std::ptrdiff_t>(first) * objectStride;
}

// Contiguous results and blocks: `perObject` elements for each object.
template <class T>
T* shiftedElements(T* base, std::int32_t first, std::ptrdiff_t perObject = 1) {
    const auto distance = first * perObject * static_cast<std::ptrdiff_t>(sizeof(T));
    return reinterpret_cast<T*>(reinterpret_cast<std::uintptr_t>(base) + static_cast<std::uintptr_t>(distance));
}

}  // namespace korm::inline KORM_VARIANT
