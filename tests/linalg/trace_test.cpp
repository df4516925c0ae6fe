// The sign of a trace of negative zeros: random elements hardly ever have one.
#include <cmath>
#include <cstring>

#include "../support/each_form.h"
#include "../support/scene.h"
#include "../support/thread_number.h"

namespace kormtest {
namespace {

std::vector<std::size_t> traces() {
    std::vector<std::size_t> forms;
    for (const Form& form : allForms())
        if (form.operationWord == "Trace") forms.push_back(form.index);
    return forms;
}

class Trace : public EachForm {};

template <class T>
void expectSign(const Scene& scene, bool negative) {
    const Form& form = scene.form();
    const Sizes& sizes = scene.sizes();
    for (std::int32_t k = 0; k < sizes.count; ++k)
        for (std::int32_t i = 0; i < sizes.order; ++i)
            writeElement(form, 0, scene.operands()[0], sizes, k, i, i, -T{0});
    scriptThreadNumbers({1});
    ASSERT_EQ(callFunction(Library::linked().function(form), scene.arguments()).status(), 0);
    for (std::int32_t k = 0; k < sizes.count; ++k) {
        const T trace = readElement<T>(form, form.result(), scene.operands()[form.result()], sizes, k, 0, 0);
        EXPECT_TRUE(trace == 0 && std::signbit(trace) == negative)
            << trace << ", object " << k << ": " << scene.describe();
    }
}

TEST_P(Trace, OfNegativeZerosIsNegativeWhereNothingIsAddedBefore) {
    for (std::int32_t order = 1; order <= 10; ++order) {
        for (const bool plain : {true, false}) {
            for (int repeat = 0; repeat < 4; ++repeat) {
                Random random = options.random(form(), order * 8 + repeat * 2 + (plain ? 1 : 0), 14);
                SceneOptions scene;
                scene.sizes.order = order;
                scene.sizes.count = form().array ? 5 : 1;
                scene.plain = plain;
                Random values(random.next());
                const Scene made(threadArena(), form(), scene, random, values);
                const bool fromTheFirst = order >= 3 && order <= 6;
                if (form().type == Type::f32) expectSign<float>(made, fromTheFirst);
                else expectSign<double>(made, fromTheFirst);
            }
        }
    }
}

INSTANTIATE_TEST_SUITE_P(Forms, Trace, testing::ValuesIn(traces()), formName);

}  // namespace
}  // namespace kormtest
