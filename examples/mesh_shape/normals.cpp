#include "normals.h"

#include <algorithm>
#include <cmath>
#include <queue>

#include "korm.h"

namespace example {

std::vector<Covariance> covariancesOf(const Surface& surface) {
    std::vector<Covariance> covariances(surface.points.size());
    for (std::size_t v = 0; v < surface.points.size(); ++v) {
        std::array<float, 3> means{};
        std::array<float, 9> products{};
        // Relative to the vertex: far from the origin the differences would be lost in rounding.
        for (std::size_t k = surface.first[v]; k < surface.first[v + 1]; ++k) {
            const Point along = difference(surface.points[surface.neighbours[k]], surface.points[v]);
            for (std::size_t i = 0; i < 3; ++i) {
                means[i] += along[i];
                for (std::size_t j = 0; j < 3; ++j) products[3 * i + j] += along[i] * along[j];
            }
        }
        const auto count = static_cast<float>(surface.neighbourCount(v) + 1);
        Covariance& c = covariances[v];
        for (std::size_t i = 0; i < 3; ++i)
            for (std::size_t j = 0; j < 3; ++j)
                c[3 * i + j] = products[3 * i + j] / count - means[i] * means[j] / (count * count);
        const float sum = c[0] + c[4] + c[8];
        for (float& element : c) element = sum > 0 ? element / sum * trace : 0;
        for (std::size_t i = 0; i < 3; ++i) c[4 * i] += lift;
    }
    return covariances;
}

std::size_t solveWithKorm(std::vector<Covariance>& covariances, std::vector<Axes>& axes, std::vector<Point>& lengths) {
    // An array of one, too, is solved with doubles between the steps, unlike a single matrix.
    const auto solve = [](const float* matrices, float* vectors, float* values, std::size_t count) {
        float buffer[9];
        constexpr std::int32_t matrixStride = sizeof(Covariance), rowStride = 3 * elementStride;
        return kormEigenValuesVectorsSym_ma_32f(matrices, matrixStride, rowStride, elementStride, buffer, vectors,
                                                matrixStride, rowStride, elementStride, values, coordinates,
                                                static_cast<std::int32_t>(count));
    };
    // The first value of a matrix is written last of all, so it tells which matrices are done.
    for (Point& values : lengths) values[0] = NAN;
    if (solve(covariances.front().data(), axes.front().data(), lengths.front().data(), covariances.size()) ==
        korStatusOk)
        return 0;
    std::size_t again = 0;
    for (std::size_t k = 0; k < covariances.size(); ++k) {
        if (!std::isnan(lengths[k][0])) continue;
        ++again;
        std::int32_t status = korStatusNoConvergence;
        for (float scale = 2; status != korStatusOk && scale < 1000; scale *= 2) {
            Covariance scaled = covariances[k];
            for (float& element : scaled) element *= scale;
            status = solve(scaled.data(), axes[k].data(), lengths[k].data(), 1);
            for (float& value : lengths[k]) value /= scale;
        }
        if (status != korStatusOk) throw Failure("korm refused a covariance with status " + std::to_string(status));
        // Those behind it were left untouched, as far as a thread's run reached. Another of them may fail in its turn.
        std::size_t end = k + 1;
        while (end < covariances.size() && std::isnan(lengths[end][0])) ++end;
        if (end > k + 1) solve(covariances[k + 1].data(), axes[k + 1].data(), lengths[k + 1].data(), end - k - 1);
    }
    return again;
}

float largestResidual(const std::vector<Covariance>& covariances, const std::vector<Axes>& axes,
                      const std::vector<Point>& lengths) {
    float largest = 0;
    for (std::size_t k = 0; k < covariances.size(); ++k) {
        for (std::size_t axis = 0; axis < 3; ++axis) {
            for (std::size_t i = 0; i < 3; ++i) {
                float off = -lengths[k][axis] * axes[k][3 * i + axis];
                for (std::size_t j = 0; j < 3; ++j) off += covariances[k][3 * i + j] * axes[k][3 * j + axis];
                if (!(std::fabs(off) <= largest)) largest = std::fabs(off);
            }
        }
    }
    return largest / trace;
}

namespace {

struct Step {
    float deviation;
    std::uint32_t from, to;
    bool operator<(const Step& other) const { return deviation > other.deviation; }  // the smallest comes first
};

}  // namespace

std::vector<Point> orientedNormals(const Surface& surface, const std::vector<Axes>& axes) {
    std::vector<Point> normals(axes.size());
    for (std::size_t v = 0; v < axes.size(); ++v) normals[v] = {axes[v][2], axes[v][5], axes[v][8]};

    std::array<double, 3> middle{};
    for (const Point& point : surface.points)
        for (std::size_t i = 0; i < 3; ++i) middle[i] += static_cast<double>(point[i]);
    Point center{};
    for (std::size_t i = 0; i < 3; ++i)
        center[i] = static_cast<float>(middle[i] / static_cast<double>(surface.points.size()));

    // Parts that hang together are turned one by one, each from its outermost vertex.
    std::vector<std::uint32_t> byDistance(normals.size());
    std::vector<float> distances(normals.size());
    for (std::uint32_t v = 0; v < normals.size(); ++v) {
        const Point out = difference(surface.points[v], center);
        byDistance[v] = v;
        distances[v] = dot(out, out);
    }
    std::sort(byDistance.begin(), byDistance.end(),
              [&](std::uint32_t a, std::uint32_t b) { return distances[a] > distances[b]; });

    std::vector<bool> isTurned(normals.size());
    std::priority_queue<Step> steps;
    const auto turn = [&](std::uint32_t v, const Point& like) {
        if (dot(normals[v], like) < 0)
            for (float& coordinate : normals[v]) coordinate = -coordinate;
        isTurned[v] = true;
        for (std::size_t k = surface.first[v]; k < surface.first[v + 1]; ++k) {
            const std::uint32_t next = surface.neighbours[k];
            if (!isTurned[next]) steps.push({1 - std::fabs(dot(normals[v], normals[next])), v, next});
        }
    };
    for (const std::uint32_t start : byDistance) {
        if (isTurned[start]) continue;
        turn(start, difference(surface.points[start], center));
        while (!steps.empty()) {
            const Step step = steps.top();
            steps.pop();
            if (!isTurned[step.to]) turn(step.to, normals[step.from]);
        }
    }
    return normals;
}

}  // namespace example
