#include <cfloat>
#include <cmath>
#include <limits>

#include "geometry.h"

namespace kormtest::fixed {
namespace {

using Row = std::vector<float>;

Row apply(GeometryReference reference, const Inputs& in, std::size_t size) {
    Outcome out;
    reference(in, out);
    return {out.dst.begin(), out.dst.begin() + static_cast<std::ptrdiff_t>(size)};
}

}  // namespace

void affine2(const Inputs& in, Outcome& out) {
    const Row& m = in[0];
    const float x = in[1][0], y = in[1][1];
    for (std::size_t j = 0; j < 4; ++j) out.dst[j] = (m[12 + j] + m[j] * x) + m[4 + j] * y;
}

void affine3(const Inputs& in, Outcome& out) {
    const Row& m = in[0];
    const float x = in[1][0], y = in[1][1], z = in[1][2];
    for (std::size_t j = 0; j < 4; ++j) out.dst[j] = ((m[12 + j] + m[j] * x) + m[4 + j] * y) + m[8 + j] * z;
}

void affine4(const Inputs& in, Outcome& out) {
    const Row& m = in[0];
    const float x = in[1][0], y = in[1][1], z = in[1][2], w = in[1][3];
    for (std::size_t j = 0; j < 4; ++j) out.dst[j] = (m[j] * x + m[4 + j] * y) + (m[8 + j] * z + m[12 + j] * w);
}

void affineCoord2(const Inputs& in, Outcome& out) {
    const Row& m = in[0];
    const float x = in[1][0], y = in[1][1];
    const float w = (m[3] * x + m[15]) + m[7] * y;
    for (std::size_t j = 0; j < 2; ++j) out.dst[j] = ((m[j] * x + m[12 + j]) + m[4 + j] * y) / w;
}

void affineCoord3(const Inputs& in, Outcome& out) {
    const Row& m = in[0];
    const float x = in[1][0], y = in[1][1], z = in[1][2];
    const float w = (m[15] + m[11] * z) + (m[3] * x + m[7] * y);
    for (std::size_t j = 0; j < 3; ++j) out.dst[j] = ((m[12 + j] + m[8 + j] * z) + (m[j] * x + m[4 + j] * y)) / w;
}

void affineNormal2(const Inputs& in, Outcome& out) {
    const Row& m = in[0];
    const float x = in[1][0], y = in[1][1];
    for (std::size_t j = 0; j < 2; ++j) out.dst[j] = m[j] * x + m[4 + j] * y;
}

void affineNormal3(const Inputs& in, Outcome& out) {
    const Row& m = in[0];
    const float x = in[1][0], y = in[1][1], z = in[1][2];
    for (std::size_t j = 0; j < 3; ++j) out.dst[j] = (m[j] * x + m[4 + j] * y) + m[8 + j] * z;
}

// --- To the viewport and back. Inputs: projection, view, world, point, width, height, lowest and highest depth. ---

void project(const Inputs& in, Outcome& out) {
    const Row &projection = in[0], &view = in[1], &world = in[2];
    const float x = in[3][0], y = in[3][1], z = in[3][2];
    const float minZ = in[6][0], maxZ = in[7][0];
    Row p(4);
    for (std::size_t j = 0; j < 4; ++j) p[j] = (world[12 + j] + world[8 + j] * z) + (world[j] * x + world[4 + j] * y);
    p = apply(affine4, {view, p}, 4);
    p = apply(affine4, {projection, p}, 4);
    const float px = p[0] / p[3], py = p[1] / p[3], pz = p[2] / p[3];
    const float w2 = in[4][0] * 0.5F, h2 = in[5][0] * 0.5F;
    out.dst[0] = w2 + w2 * px;
    out.dst[1] = h2 + (0.0F - h2) * py;
    out.dst[2] = minZ + (maxZ - minZ) * pz;
}

void projectOfBatch(const Inputs& in, Outcome& out) {
    const Row &projection = in[0], &view = in[1], &world = in[2];
    const float x = in[3][0], y = in[3][1], z = in[3][2];
    const float minZ = in[6][0], maxZ = in[7][0];
    const Row t = apply(product, {world, apply(product, {view, projection}, 16)}, 16);
    const float w = (z * t[11] + t[15]) + (x * t[3] + y * t[7]);
    const float px = ((z * t[8] + t[12]) + (x * t[0] + y * t[4])) / w;
    const float py = ((z * t[9] + t[13]) + (x * t[1] + y * t[5])) / w;
    const float pz = ((z * t[10] + t[14]) + (x * t[2] + y * t[6])) / w;
    const float w2 = in[4][0] * 0.5F, h2 = in[5][0] * 0.5F;
    out.dst[0] = px * w2 + w2;
    out.dst[1] = py * (0.0F - h2) + h2;
    out.dst[2] = pz * (maxZ - minZ) + minZ;
}

namespace {

// The inverse in double precision has its order of operations open, so it is computed in a wider type here, with a bound
// on what any order may make of it.
struct WideInverse {
    long double det = 0;
    double detError = 0;
    std::array<long double, 16> elements{};
    std::array<double, 16> errors{};
};

struct Sum {
    long double value = 0;
    double magnitude = 0;  // the sum of the terms' absolute values
    void add(long double term) {
        value += term;
        magnitude += static_cast<double>(std::fabs(term));
    }
};

// The minor without one row and one column, by the six terms of its definition.
Sum minorOf(const Row& m, std::size_t withoutRow, std::size_t withoutColumn) {
    std::size_t rows[3], columns[3], rowCount = 0, columnCount = 0;
    for (std::size_t i = 0; i < 4; ++i) {
        if (i != withoutRow) rows[rowCount++] = i;
        if (i != withoutColumn) columns[columnCount++] = i;
    }
    static constexpr struct {
        std::size_t column[3];
        int sign;
    } terms[] = {{{0, 1, 2}, 1}, {{1, 2, 0}, 1}, {{2, 0, 1}, 1}, {{2, 1, 0}, -1}, {{1, 0, 2}, -1}, {{0, 2, 1}, -1}};
    Sum sum;
    for (const auto& term : terms) {
        long double factor = term.sign;
        for (std::size_t i = 0; i < 3; ++i) factor *= m[4 * rows[i] + columns[term.column[i]]];
        sum.add(factor);
    }
    return sum;
}

bool smallIntegers(const Row& m) {
    for (const float element : m)
        if (!(std::fabs(element) <= 4096) || element != std::floor(element)) return false;
    return true;
}

WideInverse wideInverse(const Row& m) {
    // No closed form needs more than this many roundings on the way to a minor or to the determinant.
    const double roundings = 16 * DBL_EPSILON;
    WideInverse result;
    std::array<Sum, 16> minors;
    Sum det;
    double detMagnitude = 0;
    for (std::size_t row = 0; row < 4; ++row) {
        for (std::size_t column = 0; column < 4; ++column) minors[4 * row + column] = minorOf(m, row, column);
        const long double sign = row % 2 == 0 ? 1 : -1;
        det.add(sign * m[4 * row] * minors[4 * row].value);
        detMagnitude += std::fabs(double{m[4 * row]}) * minors[4 * row].magnitude;
    }
    const bool exact = smallIntegers(m);
    result.det = det.value;
    result.detError = exact ? 0 : roundings * detMagnitude;
    for (std::size_t row = 0; row < 4; ++row) {
        for (std::size_t column = 0; column < 4; ++column) {
            const Sum& minor = minors[4 * row + column];
            const std::size_t to = 4 * column + row;
            result.elements[to] = ((row + column) % 2 == 0 ? minor.value : -minor.value) / det.value;
            const double size = static_cast<double>(std::fabs(result.elements[to]));
            result.errors[to] =
                (roundings * minor.magnitude + size * result.detError) / static_cast<double>(std::fabs(det.value)) +
                roundings * size;
        }
    }
    return result;
}

}  // namespace

void unproject(const Inputs& in, Outcome& out) {
    const Row &projection = in[0], &view = in[1], &world = in[2], &point = in[3];
    const float width = in[4][0], height = in[5][0], minZ = in[6][0], maxZ = in[7][0];
    const float x = (2.0F * point[0]) / width - 1.0F;
    const float y = (-2.0F * point[1]) / height + 1.0F;
    const float z = (point[2] - minZ) / (maxZ - minZ);
    out.dst[0] = x;
    out.dst[1] = y;
    out.dst[2] = z;
    const Row t = apply(product, {apply(product, {world, view}, 16), projection}, 16);
    const double anything = std::numeric_limits<double>::infinity();
    for (const float element : t) {
        if (std::isfinite(element)) continue;
        // Which of infinity, zero and NaN comes out depends on the order of operations; a NaN isn't singular.
        out.slack[0] = out.slack[1] = out.slack[2] = anything;
        return;
    }
    const WideInverse wide = wideInverse(t);
    // No determinant of single-precision elements lies between 0 and the limit of the double-precision inverse.
    if (wide.det == 0 && wide.detError == 0) {
        out.status = -195;
        return;
    }
    if (!(std::fabs(wide.det) > 2 * wide.detError)) {
        out.eitherStatus = true;
        out.slack[0] = out.slack[1] = out.slack[2] = anything;
        return;
    }
    Row narrowed(16);
    std::array<double, 16> errors;
    for (std::size_t i = 0; i < 16; ++i) {
        narrowed[i] = static_cast<float>(wide.elements[i]);
        // Another double next to a midpoint of two floats is rounded to the other one.
        const double ulp = static_cast<double>(std::nextafter(std::fabs(narrowed[i]), FLT_MAX)) -
                           std::fabs(static_cast<double>(narrowed[i]));
        errors[i] = wide.errors[i] + (wide.errors[i] == 0 ? 0 : ulp);
        // A double that rounds to the same float over its whole error changes nothing.
        const auto low = static_cast<float>(wide.elements[i] - wide.errors[i]);
        const auto high = static_cast<float>(wide.elements[i] + wide.errors[i]);
        if (low == high) errors[i] = 0;
    }
    const Inputs last{narrowed, {x, y, z}};
    Outcome straight;
    affineCoord3(last, straight);
    const double ax = std::fabs(double{x}), ay = std::fabs(double{y}), az = std::fabs(double{z});
    const auto spread = [&](std::size_t j, double& error, double& magnitude) {
        error = errors[12 + j] + errors[8 + j] * az + errors[j] * ax + errors[4 + j] * ay;
        magnitude = std::fabs(double{narrowed[12 + j]}) + std::fabs(double{narrowed[8 + j]}) * az +
                    std::fabs(double{narrowed[j]}) * ax + std::fabs(double{narrowed[4 + j]}) * ay;
    };
    const double w = (double{narrowed[15]} + double{narrowed[11]} * double{z}) +
                     (double{narrowed[3]} * double{x} + double{narrowed[7]} * double{y});
    double wError, wMagnitude;
    spread(3, wError, wMagnitude);
    for (std::size_t j = 0; j < 3; ++j) {
        double error, magnitude;
        spread(j, error, magnitude);
        out.dst[j] = straight.dst[j];
        // A zero cofactor may have either sign.
        out.slack[j] = DBL_MIN;
        if (wError == 0 && error == 0) continue;
        if (!std::isfinite(straight.dst[j])) {
            out.slack[j] = anything;
            continue;
        }
        // A changed operand changes the roundings after it too.
        error += 4 * FLT_EPSILON * magnitude;
        const double wWhole = wError + 4 * FLT_EPSILON * wMagnitude;
        const double size = std::fabs(double{straight.dst[j]});
        out.slack[j] = std::fabs(w) > 2 * wWhole
                           ? 2 * (error + size * wWhole) / std::fabs(w) + FLT_EPSILON * size + DBL_MIN
                           : anything;
    }
}

void homogeneous(const Inputs& in, Outcome& out) {
    const auto at = [&](std::size_t row, std::size_t column) { return in[0][4 * row + column]; };
    const float x = in[1][0], y = in[1][1], z = in[1][2];
    const float w = ((at(3, 0) * x + at(3, 3)) + at(3, 1) * y) + at(3, 2) * z;
    if (!(std::fabs(w) > FLT_MIN)) {
        out.status = -10;
        out.dst[0] = out.dst[1] = out.dst[2] = FLT_MAX;
        return;
    }
    const float r = 1.0F / w;
    for (std::size_t i = 0; i < 3; ++i) out.dst[i] = (((x * at(i, 0) + at(i, 3)) + y * at(i, 1)) + z * at(i, 2)) * r;
}

}  // namespace kormtest::fixed
