// Arrays beyond the processor's first cache, where kernels look ahead of the object in hand: results are those of the
// objects alone, and tables end where they end (the address sanitizer sees who looks further).
#include <gtest/gtest.h>
#include <korm.h>

#include <cstddef>
#include <cstdint>
#include <vector>

namespace kormtest {
namespace {

template <class T>
struct Functions;
template <>
struct Functions<float> {
    static constexpr auto decompose = kormLUDecomp_ma_32f;
    static constexpr auto decomposeListed = kormLUDecomp_ma_32f_L;
    static constexpr auto invert = kormInvert_ma_32f;
    static constexpr auto invertListed = kormInvert_ma_32f_L;
};
template <>
struct Functions<double> {
    static constexpr auto decompose = kormLUDecomp_ma_64f;
    static constexpr auto decomposeListed = kormLUDecomp_ma_64f_L;
    static constexpr auto invert = kormInvert_ma_64f;
    static constexpr auto invertListed = kormInvert_ma_64f_L;
};

template <class T>
class LargeArrays : public testing::Test {};
using ElementTypes = testing::Types<float, double>;
TYPED_TEST_SUITE(LargeArrays, ElementTypes);

// The diagonal is large enough for every matrix to have an inverse, rows are exchanged for some.
template <class T>
std::vector<T> matrices(std::size_t n, std::size_t count) {
    std::vector<T> all(n * n * count);
    for (std::size_t at = 0; at < all.size(); ++at) {
        const std::size_t row = at / n % n, column = at % n, object = at / (n * n);
        const bool isPivot = (column + object) % n == row;
        all[at] = static_cast<T>(at * 37 % 101) / 64 + (isPivot ? static_cast<T>(n * 2) : T{});
    }
    return all;
}

template <class T>
std::vector<T*> tableOf(std::vector<T>& objects, std::size_t size) {
    std::vector<T*> table;
    for (std::size_t at = 0; at < objects.size(); at += size) table.push_back(&objects[at]);
    table.shrink_to_fit();
    return table;
}

TYPED_TEST(LargeArrays, GiveWhatTheirObjectsGiveAlone) {
    using T = TypeParam;
    for (const int order : {1, 2, 3, 4, 5, 6, 7}) {
        const auto n = static_cast<std::size_t>(order);
        const int count = 70000 / (static_cast<int>(sizeof(T)) * order * order) + 3;
        const auto objects = static_cast<std::size_t>(count);
        const int element = sizeof(T), row = element * order, object = row * order;
        std::vector<T> source = matrices<T>(n, objects), found(source.size()), listed(source.size()),
                       wanted(source.size());
        std::vector<T> buffer(n * n + n);
        std::vector<std::int32_t> pivots(n * objects), listedPivots(pivots.size()), wantedPivots(pivots.size());
        const std::vector<T*> from = tableOf(source, n * n), to = tableOf(listed, n * n);
        const auto expectSame = [&](const char* operation, bool alsoListed) {
            EXPECT_EQ(found, wanted) << operation << " of order " << order;
            if (!alsoListed) return;
            EXPECT_EQ(listed, wanted) << operation << " of order " << order << ", list";
        };

        ASSERT_EQ(Functions<T>::decompose(source.data(), object, row, element, pivots.data(), found.data(), object, row,
                                          element, order, count),
                  korStatusOk);
        ASSERT_EQ(Functions<T>::decomposeListed(from.data(), 0, row, element, listedPivots.data(), to.data(), 0, row,
                                                element, order, count),
                  korStatusOk);
        for (std::size_t k = 0; k < objects; ++k)
            ASSERT_EQ(Functions<T>::decompose(from[k], object, row, element, &wantedPivots[k * n], &wanted[k * n * n],
                                              object, row, element, order, 1),
                      korStatusOk);
        expectSame("LU", true);
        EXPECT_EQ(pivots, wantedPivots) << order;
        EXPECT_EQ(listedPivots, wantedPivots) << order;

        ASSERT_EQ(Functions<T>::invert(source.data(), object, row, element, buffer.data(), found.data(), object, row,
                                       element, order, count),
                  korStatusOk);
        ASSERT_EQ(Functions<T>::invertListed(from.data(), 0, row, element, buffer.data(), to.data(), 0, row, element,
                                             order, count),
                  korStatusOk);
        for (std::size_t k = 0; k < objects; ++k)
            ASSERT_EQ(Functions<T>::invert(from[k], object, row, element, buffer.data(), &wanted[k * n * n], object,
                                           row, element, order, 1),
                      korStatusOk);
        // Of floats, order 3, the list's kernel multiplies by an approximate reciprocal where the other divides.
        expectSame("inverse", order != 3 || sizeof(T) == 8);
    }
}

}  // namespace
}  // namespace kormtest
