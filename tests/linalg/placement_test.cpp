// What a result may not depend on: the other objects of an array, its place among them, threads; and what a team may not touch.
#include "linalg_test.h"

namespace kormtest {
namespace {

template <class T>
Square<T> wild(std::int32_t n, Random& random) {
    Square<T> a(n);
    const Mood mood = random.pick({Mood::ordinary, Mood::ordinary, Mood::wide, Mood::mixed});
    for (std::size_t at = 0; at < a.size(); ++at) {
        const std::uint64_t bits = randomElement(sizeof(T) == 4 ? Type::f32 : Type::f64, mood, true, random);
        std::memcpy(a.data() + at, &bits, sizeof(T));
    }
    return a;
}

class LinalgPlaces : public LinalgForm {};

// Objects of an array against calls of their own, whatever bits they hold: kernels may take several objects at once, but
// each gets what it would get alone.
TEST_P(LinalgPlaces, AnObjectOfAnArrayGetsWhatItGetsAlone) {
    if (!form().array) return;
    Random random(GetParam());
    byType(form(), [&](auto zero) {
        using T = decltype(zero);
        const bool inverse = form().operationWord == "Invert";
        const std::int32_t resultRows = inverse ? 1 : 0;
        for (int number = 0; number < 150; ++number) {
            const std::int32_t n = random.between(3, 6), objects = random.between(2, 11);
            const std::int32_t spread = random.pick(spreadsOf(form()));
            // Alignment decides between two formats in one kernel.
            const std::size_t shift =
                form().name == "kormDet_ma_32f" && n == 4 ? 4 : 4 * static_cast<std::size_t>(random.between(0, 3));
            scriptThreadNumbers({1});
            DenseCall all(form(), squareSizes(n, objects), spread, shift);
            std::vector<Square<T>> sources;
            for (std::int32_t k = 0; k < objects; ++k) {
                // A failing object would end the array's call.
                for (;;) {
                    DenseCall alone(form(), squareSizes(n), spread, shift);
                    const Square<T> a = wild<T>(n, random);
                    setMatrix(alone, "src", 0, a);
                    if (alone.call() != status::ok) continue;
                    sources.push_back(a);
                    break;
                }
                setMatrix(all, "src", k, sources.back());
            }
            ASSERT_EQ(all.call(), status::ok);
            for (std::int32_t k = 0; k < objects; ++k) {
                DenseCall alone(form(), squareSizes(n), spread, shift);
                setMatrix(alone, "src", 0, sources[static_cast<std::size_t>(k)]);
                ASSERT_EQ(alone.call(), status::ok);
                for (std::int32_t i = 0; i < 1 + resultRows * (n - 1); ++i) {
                    for (std::int32_t j = 0; j < 1 + resultRows * (n - 1); ++j) {
                        const T found = all.get<T>("dst", k, i, j), wanted = alone.get<T>("dst", 0, i, j);
                        ASSERT_TRUE(sameBits(found, wanted) || (found != found && wanted != wanted))
                            << "order " << n << ", object " << k << " of " << objects << ", element " << i << ", " << j
                            << ": " << found << " instead of " << wanted;
                    }
                }
            }
        }
    });
}

// A team works in scratch of its own.
TEST_P(LinalgPlaces, ATeamLeavesTheCallersBufferAlone) {
    if (!form().driver) return;
    Random random(3);
    byType(form(), [&](auto zero) {
        using T = decltype(zero);
        const bool inverse = form().operationWord == "Invert";
        const Sizes sizes = inverse ? squareSizes(7, 400) : squareSizes(7, 2100);
        DenseCall call(form(), sizes);
        for (std::int32_t k = 0; k < sizes.count; ++k) {
            Square<T> a = identity<T>(7, T(2));
            a(random.between(0, 6), random.between(0, 6)) += 1;
            // Some fail, in every run.
            if (k % 50 == 49) a(3, 3) = 0;
            setMatrix(call, "src", k, a);
        }
        const std::vector<std::byte> before = call.memory("buffer");
        scriptThreadNumbers({3});
        const std::int32_t found = call.call();
        EXPECT_EQ(threadNumberQuestions(), 2);
        EXPECT_EQ(found, inverse ? status::singular : status::ok);
        EXPECT_TRUE(call.memory("buffer") == before);
        // Each run of an inversion stops at its own first failure.
        if (!inverse) return;
        const T untouched = call.get<T>("dst", 49, 0, 0);
        for (const std::int32_t first : {0, 134, 267}) {
            EXPECT_FALSE(sameBits(call.get<T>("dst", first, 0, 0), untouched)) << first;
        }
        EXPECT_TRUE(sameBits(call.get<T>("dst", 133, 0, 0), untouched));
        EXPECT_TRUE(sameBits(call.get<T>("dst", 399, 0, 0), untouched));
    });
}

std::vector<std::size_t> formsWithBuffers() {
    std::vector<std::size_t> result = formsOf("Det");
    for (const std::size_t form : formsOf("Invert")) result.push_back(form);
    return result;
}

INSTANTIATE_TEST_SUITE_P(Forms, LinalgPlaces, testing::ValuesIn(formsWithBuffers()), formName);

}  // namespace
}  // namespace kormtest
