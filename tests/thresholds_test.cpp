// When a call goes to the parallel driver, told by whether it asks for the number of threads.
#include <ostream>

#include "support/checker.h"
#include "support/each_form.h"
#include "support/scene.h"
#include "support/thread_number.h"

namespace kormtest {
namespace {

class Thresholds : public EachForm {};

TEST_P(Thresholds, BothSides) { expectPass(checkThresholds(form(), library(), options, !faultsAreErrors())); }

INSTANTIATE_TEST_SUITE_P(Forms, Thresholds, testing::Range(std::size_t{0}, allForms().size()), formName);

// Worked examples, independent of the model's formulas.
struct Example {
    const char* name;
    Sizes sizes;
    bool plain;
    bool driver;
    // Not by its bytes, which is GoogleTest's way: some are padding.
    friend void PrintTo(const Example& example, std::ostream* out) { *out << example.name; }
};

class ThresholdExamples : public testing::TestWithParam<Example> {};

TEST_P(ThresholdExamples, AskForTheThreadNumber) {
    const Example& example = GetParam();
    const Form& form = formNamed(example.name);
    SceneOptions options;
    options.sizes = example.sizes;
    options.plain = example.plain;
    options.thin = true;
    options.special = false;
    Random places(1), values(1);
    const Scene scene(threadArena(), form, options, places, values);
    ASSERT_TRUE(form.layout == Layout::pointer || scene.plain() == example.plain);
    scriptThreadNumbers({1});
    const CallResult result = callFunction(Library::linked().function(form), scene.arguments());
    EXPECT_EQ(result.status(), 0);
    EXPECT_EQ(threadNumberQuestions(), example.driver ? 1 : 0) << scene.describe();
}

INSTANTIATE_TEST_SUITE_P(Table, ThresholdExamples,
                         testing::Values(Example{"kormAdd_mam_32f", {10, 10, 1, 9}, true, false},
                                         Example{"kormAdd_mam_32f", {10, 10, 1, 9}, false, false},
                                         Example{"kormAdd_mam_64f", {10, 10, 1, 9}, true, false},
                                         Example{"kormAdd_mam_32f", {10, 10, 1, 10}, true, false},
                                         Example{"kormAdd_mam_32f", {10, 10, 1, 10}, false, true},
                                         Example{"kormAdd_mam_64f", {10, 10, 1, 10}, true, true},
                                         Example{"kormAdd_mam_32f", {10, 10, 1, 15}, true, true},
                                         Example{"kormAdd_mam_32f", {10, 10, 1, 15}, false, true},
                                         Example{"kormAdd_mam_64f", {10, 10, 1, 15}, true, true},
                                         Example{"kormAdd_vav_32f", {1, 1, 10, 239}, true, false},
                                         Example{"kormAdd_vav_32f", {1, 1, 10, 240}, true, true},
                                         Example{"kormSub_vva_64f_P", {1, 1, 1000, 50}, true, false},
                                         Example{"kormSub_vva_32f_P", {1, 1, 1000, 50}, true, true},
                                         Example{"kormSub_cva_32f", {1, 1, 1, 2400}, true, true},
                                         Example{"kormSub_cva_32f", {1, 1, 7, 2400}, false, true},
                                         Example{"kormSub_cva_32f", {1, 1, 1, 2399}, true, false},
                                         Example{"kormSub_cva_32f", {1, 1, 30000, 2399}, true, false},
                                         Example{"kormMul_mac_32f_L", {10, 10, 1, 10}, true, false},
                                         Example{"kormMul_mac_32f_L", {10, 10, 1, 10}, false, true},
                                         // 36 + 72 * count against 2501 and 1441.
                                         Example{"kormMul_mam_32f", {6, 6, 1, 34, 6}, true, false},
                                         Example{"kormMul_mam_32f", {6, 6, 1, 35, 6}, true, true},
                                         Example{"kormMul_mam_32f", {6, 6, 1, 19, 6}, false, false},
                                         Example{"kormMul_mam_32f", {6, 6, 1, 20, 6}, false, true},
                                         Example{"kormMul_mam_64f", {6, 6, 1, 35, 6}, true, false},
                                         // Just 2500, and just 2501.
                                         Example{"kormMul_mama_32f", {2, 1, 1, 500, 1}, true, false},
                                         Example{"kormMul_mama_32f", {1, 20, 1, 61, 1}, true, true},
                                         Example{"kormMul_mama_32f_L", {1, 20, 1, 61, 1}, true, false},
                                         Example{"kormMul_mama_32f_P", {1, 20, 1, 61, 1}, true, true},
                                         // 4 * 4 + (4 + 4) * count, (4 * 4 + 4) * count + 4, (4 * 4 + 4 + 4) * count.
                                         Example{"kormMul_mva_32f", {1, 4, 1, 310, 4}, true, false},
                                         Example{"kormMul_mva_32f", {1, 4, 1, 311, 4}, true, true},
                                         Example{"kormMul_tav_64f", {1, 4, 1, 179, 4}, true, false},
                                         Example{"kormMul_tav_64f", {1, 4, 1, 180, 4}, true, true},
                                         Example{"kormMul_mava_64f_P", {1, 4, 1, 60, 4}, true, false},
                                         Example{"kormMul_mava_64f_P", {1, 4, 1, 61, 4}, true, true},
                                         // (2 * count + 1) * 100 against 3001.
                                         Example{"kormSaxpy_vav_32f", {1, 1, 100, 14}, true, false},
                                         Example{"kormSaxpy_vav_32f", {1, 1, 100, 15}, true, true},
                                         Example{"kormCrossProduct_vava_64f", {1, 1, 1, 1000}, true, false},
                                         Example{"kormCrossProduct_vava_64f", {1, 1, 1, 1001}, true, true},
                                         Example{"kormCrossProduct_vva_64f_P", {1, 1, 1, 5000}, true, false},
                                         Example{"kormCrossProduct_vva_32f_P", {1, 1, 1, 5000}, true, true},
                                         Example{"kormFrobNorm_ma_32f", {10, 10, 1, 18}, false, false},
                                         Example{"kormFrobNorm_ma_32f", {17, 1, 1, 106}, false, true},
                                         Example{"kormFrobNorm_ma_32f", {10, 10, 1, 25}, true, false},
                                         Example{"kormFrobNorm_ma_32f", {10, 10, 1, 26}, true, true}));

}  // namespace
}  // namespace kormtest
