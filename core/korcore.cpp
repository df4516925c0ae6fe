#include "korcore.h"

#include <omp.h>
#include <unistd.h>

#include <algorithm>
#include <cstdint>
#include <cstdio>
#include <iterator>

namespace {

constexpr std::int32_t statusOk = 0;
constexpr std::int32_t statusNullPointer = -8;

// What the C library knows; it asks the processor, or the auxiliary vector.
std::int64_t largestCacheByLibrary() {
    std::int64_t largest = 0;
    for (const int level :
         {_SC_LEVEL1_DCACHE_SIZE, _SC_LEVEL2_CACHE_SIZE, _SC_LEVEL3_CACHE_SIZE, _SC_LEVEL4_CACHE_SIZE}) {
        largest = std::max<std::int64_t>(largest, sysconf(level));
    }
    return largest;
}

// What the kernel knows: one folder for each cache of processor 0, with a size such as "32768K". For
// processors (virtual ones mostly) that leave the C library without an answer.
std::int64_t largestCacheByKernel() {
    constexpr int mostCaches = 16;
    std::int64_t largest = 0;
    for (int cache = 0; cache < mostCaches; ++cache) {
        char path[80];
        std::snprintf(path, std::size(path), "/sys/devices/system/cpu/cpu0/cache/index%d/size", cache);
        std::FILE* const file = std::fopen(path, "re");
        if (file == nullptr) break;
        long long size = 0;
        char unit = 0;
        if (std::fscanf(file, "%lld%c", &size, &unit) >= 1) {
            const std::int64_t scale = unit == 'K' ? 1 << 10 : unit == 'M' ? 1 << 20 : 1;
            largest = std::max<std::int64_t>(largest, size * scale);
        }
        std::fclose(file);
    }
    return largest;
}

}  // namespace

std::int32_t ownGetNumThreads() { return omp_get_max_threads(); }

std::int32_t korGetMaxCacheSizeB(std::int32_t* bytes) {
    if (bytes == nullptr) return statusNullPointer;
    std::int64_t largest = largestCacheByLibrary();
    if (largest <= 0) largest = largestCacheByKernel();
    *bytes = static_cast<std::int32_t>(std::clamp<std::int64_t>(largest, 0, INT32_MAX));
    return statusOk;
}
