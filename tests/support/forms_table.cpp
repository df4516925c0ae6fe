#include "forms_table.h"

namespace kormtest {
namespace {

std::uint32_t u(std::int32_t value) { return static_cast<std::uint32_t>(value); }
std::int32_t wrapped(std::uint32_t value) { return static_cast<std::int32_t>(value); }

std::int32_t matrixOneArray(const Sizes& s) { return wrapped(u(s.width) * u(s.height) * (2 * u(s.count) + 1)); }
std::int32_t matrixTwoArrays(const Sizes& s) { return wrapped(3 * u(s.width) * u(s.height) * u(s.count)); }
std::int32_t matrixScaled(const Sizes& s) { return wrapped(2 * u(s.width) * u(s.height) * u(s.count)); }
std::int32_t vectorOneArray(const Sizes& s) { return wrapped((2 * u(s.count) + 1) * u(s.length)); }
std::int32_t vectorTwoArrays(const Sizes& s) { return wrapped(3 * u(s.length) * u(s.count)); }
std::int32_t vectorScaled(const Sizes& s) { return wrapped(2 * u(s.length) * u(s.count)); }
std::int32_t constantEach(const Sizes& s) { return wrapped((2 * u(s.length) + 1) * u(s.count)); }
std::int32_t oneVectorConstantEach(const Sizes& s) { return wrapped(u(s.length) * (u(s.count) + 1) + u(s.count)); }
std::int32_t countOnly(const Sizes& s) { return wrapped(2 * u(s.count)); }

constexpr Limit both(std::int32_t n) { return {n, n}; }

// Sums and differences of matrices.
constexpr LimitRow matrixSums{Compare::below, {3000, 2000}, both(2000), both(2000), both(2000), both(2000), both(2000)};

// Sums and differences of vectors, and with constants.
constexpr LimitRow vectorSums{Compare::overIsFork, both(4800), both(1400), both(2500),
                              both(2500),          both(1500), both(1500)};

// The constant minus each vector: the same numbers, but reaching the number is enough to fork.
constexpr LimitRow constantMinusArray{Compare::below, both(4800), both(1400), both(2500),
                                      both(2500),     both(1500), both(1500)};

constexpr LimitRow vectorScaledEach{Compare::overIsFork, both(2100), both(2100), both(1200),
                                    both(1200),          both(650),  both(650)};

constexpr LimitRow vectorScaledAll{Compare::below, {2501, 1441}, {3601, 1441}, {3601, 1441},
                                   {3601, 1441},   both(1441),   both(1441)};

constexpr LimitRow matrixScaledAll{Compare::below, both(3501), both(3501), {3501, 1501},
                                   both(3501),     both(1701), both(1701)};

constexpr GroupRow groups[] = {
    // Matrices.
    {"Add", "mm tm tt", nullptr, nullptr},
    {"Sub", "mm mt tm tt", nullptr, nullptr},
    {"Add", "mam mat tam tat", matrixOneArray, &matrixSums},
    {"Sub", "mam mat tam tat mma mta tma tta", matrixOneArray, &matrixSums},
    {"Add", "mama tama tata", matrixTwoArrays, &matrixSums},
    {"Sub", "mama mata tama tata", matrixTwoArrays, &matrixSums},
    // Vectors.
    {"Add", "vv", nullptr, nullptr},
    {"Sub", "vv", nullptr, nullptr},
    {"Add", "vav", vectorOneArray, &vectorSums},
    {"Sub", "vav vva", vectorOneArray, &vectorSums},
    {"Add", "vava", vectorTwoArrays, &vectorSums},
    {"Sub", "vava", vectorTwoArrays, &vectorSums},
    // Constants.
    {"Add", "vc", nullptr, nullptr},
    {"Sub", "vc cv", nullptr, nullptr},
    {"Mul", "mc tc vc", nullptr, nullptr},
    {"Add", "vac", vectorOneArray, &vectorSums},
    {"Sub", "vac", vectorOneArray, &vectorSums},
    {"Add", "vaca", constantEach, &vectorSums},
    {"Sub", "vaca cava", constantEach, &vectorSums},
    {"Add", "vca", oneVectorConstantEach, &vectorSums},
    {"Sub", "vca cav", oneVectorConstantEach, &vectorSums},
    {"Sub", "cva", countOnly, &constantMinusArray},
    {"Mul", "vaca", constantEach, &vectorScaledEach},
    {"Mul", "vca", oneVectorConstantEach, &vectorScaledEach},
    {"Mul", "vac", vectorScaled, &vectorScaledAll},
    {"Mul", "mac tac", matrixScaled, &matrixScaledAll},
};

constexpr OrderRow orders[] = {
    {"Add", "mam", 0, Layout::standard, "NCTS"},
    {"Sub", "mam mma", 0, Layout::standard, "NCTS"},
    {"Add", "vav", 0, Layout::standard, "NSTC"},
    {"Sub", "vav", 0, Layout::standard, "NSTC"},
    {"Add", "vav", 0, Layout::list, "NSTOC"},
    {"Sub", "vav", 0, Layout::list, "NSTOC"},
    {"Add", "vav", 0, Layout::pointer, "NSTCO"},
    {"Sub", "vav", 0, Layout::pointer, "NSTCO"},
    // Two forms take any offset, unlike their twins of the other type.
    {"Add", "vca", 64, Layout::pointer, "NCST"},
    {"Sub", "cav", 32, Layout::pointer, "NCST"},
};

}  // namespace

std::span<const GroupRow> groupRows() { return groups; }
std::span<const OrderRow> orderRows() { return orders; }

const char* usualOrder(Layout layout, bool array) {
    if (array) return layout == Layout::standard ? "NCST" : "NCSTO";
    return layout == Layout::pointer ? "NSO" : "NST";
}

bool lacksDriver(std::string_view name) { return name == "kormSub_vva_64f_P"; }

}  // namespace kormtest
