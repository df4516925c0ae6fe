// A user's C++ program: enough vectors to be split over threads, held against a plain loop; and the core library.
#include <korcore.h>
#include <korm.h>

#include <cstdint>
#include <cstdio>
#include <vector>

int main() {
    constexpr int count = 10000;
    std::vector<double> points(3 * count);
    for (std::size_t i = 0; i < points.size(); ++i) points[i] = 0.5 * static_cast<double>(i);
    std::vector<double> moved(points.size());
    const double offset[3] = {1, 2, 3};

    const std::int32_t status =
        kormSub_vav_64f(points.data(), 3 * sizeof(double), sizeof(double), offset, sizeof(double), moved.data(),
                        3 * sizeof(double), sizeof(double), 3, count);
    if (status != korStatusOk) return 1;
    for (std::size_t i = 0; i < points.size(); ++i) {
        if (moved[i] != points[i] - offset[i % 3]) return 2;
    }

    std::int32_t cacheSize = -1;
    if (ownGetNumThreads() < 1 || korGetMaxCacheSizeB(&cacheSize) != 0 || cacheSize < 0) return 3;
    std::printf("C++: %s, %d threads, largest cache %d bytes\n", kormGetLibVersion()->version,
                static_cast<int>(ownGetNumThreads()), static_cast<int>(cacheSize));
}
