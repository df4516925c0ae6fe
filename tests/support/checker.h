// Which checker watches this run: some tests do less under one, as they provoke what it reports.
#pragma once

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
#endif
#endif

namespace kormtest {

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
