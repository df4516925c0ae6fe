// Loads the library, lets it work with a team, and unloads it: korm_reload LIBRARY TIMES
#include <dlfcn.h>
#include <unistd.h>

#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <vector>

namespace {

constexpr std::int32_t size = 4;
constexpr std::int32_t count = 1000;  // enough to be split over threads

using Multiply = std::int32_t (*)(const float*, std::int32_t, std::int32_t, float, float*, std::int32_t, std::int32_t,
                                  std::int32_t, std::int32_t);
using SetThreads = void (*)(int);

long residentPages() {
    long all = 0, resident = 0;
    std::FILE* const file = std::fopen("/proc/self/statm", "re");
    if (file == nullptr || std::fscanf(file, "%ld %ld", &all, &resident) != 2) std::abort();
    std::fclose(file);
    return resident;
}

long threadsAlive() {
    const std::filesystem::directory_iterator tasks("/proc/self/task");
    return std::distance(begin(tasks), end(tasks));
}

int fail(int time, const char* text) {
    std::fprintf(stderr, "time %d: %s\n", time, text);
    return 1;
}

}  // namespace

int main(int argc, char** argv) {
    if (argc != 3) return std::fputs("usage: korm_reload LIBRARY TIMES\n", stderr), 2;
    setenv("KMP_BLOCKTIME", "0", 0);
    const int times = std::atoi(argv[2]);
    const std::vector<float> vectors(size * count, 1.5F);
    long pages = 0, threads = 0;
    for (int time = 1; time <= times; ++time) {
        void* const library = dlopen(argv[1], RTLD_NOW | RTLD_LOCAL);
        if (library == nullptr) return fail(time, dlerror());
        const auto multiply = reinterpret_cast<Multiply>(dlsym(library, "kormMul_vac_32f"));
        const auto setThreads = reinterpret_cast<SetThreads>(dlsym(library, "omp_set_num_threads"));
        if (multiply == nullptr || setThreads == nullptr) return fail(time, "functions are missing");
        setThreads(2 + time % 3);
        std::vector<float> result(size * count);
        if (multiply(vectors.data(), size * 4, 4, 2, result.data(), size * 4, 4, size, count) != 0)
            return fail(time, "a status");
        for (const float element : result)
            if (element != 3) return fail(time, "a wrong result");
        if (dlclose(library) != 0) return fail(time, dlerror());
        if (dlopen(argv[1], RTLD_NOW | RTLD_NOLOAD) != nullptr) return fail(time, "the library is still there");
        // What counts the threads takes memory, too.
        if (time == times / 4) {
            threads = threadsAlive();
            pages = residentPages();
        }
    }
    constexpr long noise = 32;
    std::printf("%d times, %ld pages at first, %ld in the end, %ld threads, %ld in the end\n", times, pages,
                residentPages(), threads, threadsAlive());
    if (residentPages() > pages + noise) return fail(times, "memory grew");
    if (threadsAlive() > threads) return fail(times, "threads were left");
    return 0;
}
