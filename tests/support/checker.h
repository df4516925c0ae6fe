// Which checker watches this run: some tests do less under one, as they provoke what it reports.
#pragma once

#include <cstddef>
#include <cstdlib>
#include <cstring>

#if defined(__SANITIZE_ADDRESS__)
#define KORM_ADDRESS_SANITIZER 1
#elif defined(__SANITIZE_THREAD__)
#define KORM_THREAD_SANITIZER 1
#elif defined(__has_feature)
#if __has_feature(address_sanitizer)
#define KORM_ADDRESS_SANITIZER 1
#elif __has_feature(thread_sanitizer)
#define KORM_THREAD_SANITIZER 1
#elif __has_feature(memory_sanitizer)
#define KORM_MEMORY_SANITIZER 1
#include <sanitizer/msan_interface.h>
#endif
#endif

namespace kormtest {

#ifdef KORM_MEMORY_SANITIZER
inline constexpr bool underMemorySanitizer = true;
#else
inline constexpr bool underMemorySanitizer = false;
#endif

#ifdef KORM_ADDRESS_SANITIZER
inline constexpr bool underAddressSanitizer = true;
#else
inline constexpr bool underAddressSanitizer = false;
#endif

// What MemorySanitizer takes the bytes for: memory that nobody has written, or memory with a value. Nothing without it.
inline void setUnwritten([[maybe_unused]] const void* memory, [[maybe_unused]] std::size_t size) {
#ifdef KORM_MEMORY_SANITIZER
    __msan_poison(memory, size);
#endif
}

inline void setWritten([[maybe_unused]] const void* memory, [[maybe_unused]] std::size_t size) {
#ifdef KORM_MEMORY_SANITIZER
    __msan_unpoison(memory, size);
#endif
}

inline bool isUnwritten([[maybe_unused]] const void* memory, [[maybe_unused]] std::size_t size) {
#ifdef KORM_MEMORY_SANITIZER
    return __msan_test_shadow(memory, size) >= 0;
#else
    return false;
#endif
}

inline bool underValgrind() {
    const char* const preload = std::getenv("LD_PRELOAD");
    return preload != nullptr && std::strstr(preload, "vgpreload") != nullptr;
}

// Does a touch of an inaccessible page count as an error, also one that a test provokes and catches?
inline bool faultsAreErrors() {
#if defined(KORM_ADDRESS_SANITIZER) || defined(KORM_THREAD_SANITIZER)
    return true;
#else
    return underValgrind();
#endif
}

}  // namespace kormtest
