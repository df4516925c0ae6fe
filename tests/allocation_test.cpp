// No call takes memory from anyone unless it forks.
//
// This program stands before the C library's allocator and counts the calls made while a form runs.
#include <gtest/gtest.h>
#include <sys/mman.h>

#include <atomic>
#include <cstddef>

#include "geometry/homogeneous.h"
#include "geometry/scene.h"
#include "routines/sizes.h"
#include "support/check.h"
#include "support/checker.h"
#include "support/each_form.h"
#include "support/family.h"
#include "support/scene.h"
#include "support/thread_number.h"

#if defined(KORM_ADDRESS_SANITIZER) || defined(KORM_THREAD_SANITIZER)
#define KORM_SANITIZED 1
#endif

namespace {

std::atomic<bool> counting{false};
std::atomic<int> allocations{0};

void note() {
    if (counting) ++allocations;
}

}  // namespace

#ifdef KORM_SANITIZED
// The sanitizers' own allocator offers a hook instead.
extern "C" int __sanitizer_install_malloc_and_free_hooks(void (*)(const volatile void*, std::size_t),
                                                         void (*)(const volatile void*));
#else
extern "C" {
void* __libc_malloc(std::size_t);
void* __libc_calloc(std::size_t, std::size_t);
void* __libc_realloc(void*, std::size_t);
void* __libc_memalign(std::size_t, std::size_t);

__attribute__((visibility("default"))) void* malloc(std::size_t size) {
    note();
    return __libc_malloc(size);
}
__attribute__((visibility("default"))) void* calloc(std::size_t count, std::size_t size) {
    note();
    return __libc_calloc(count, size);
}
__attribute__((visibility("default"))) void* realloc(void* block, std::size_t size) {
    note();
    return __libc_realloc(block, size);
}
__attribute__((visibility("default"))) void* aligned_alloc(std::size_t alignment, std::size_t size) {
    note();
    return __libc_memalign(alignment, size);
}
__attribute__((visibility("default"))) void* memalign(std::size_t alignment, std::size_t size) {
    note();
    return __libc_memalign(alignment, size);
}
}
#endif

namespace kormtest {
namespace {

void startCounting() {
    allocations = 0;
    counting = true;
}
int stopCounting() {
    counting = false;
    return allocations;
}

class Allocations : public EachForm {
protected:
    static void SetUpTestSuite() {
#ifdef KORM_SANITIZED
        static const int installed = __sanitizer_install_malloc_and_free_hooks(
            [](const volatile void*, std::size_t) { note(); }, [](const volatile void*){});
        ASSERT_GT(installed, 0);
#endif
        // The counter itself: a test that counts nothing would pass always.
        startCounting();
        void* volatile block = std::malloc(24);
        const int counted = stopCounting();
        std::free(block);
        // valgrind's allocator stands before this one, so there only the calls themselves are watched.
        if (!underValgrind()) {
            ASSERT_EQ(counted, 1);
        }
    }
};

TEST_P(Allocations, NoneWithoutAFork) {
    Random random(GetParam());
    for (int i = 0; i < 12; ++i) {
        SceneOptions options;
        options.sizes = randomSizes(form(), random);
        options.plain = i % 2 == 0;
        std::int32_t threads = 1;
        if (form().driver && i >= 8) {
            // To the driver, but not to a team: too few threads, or too few objects.
            threads = i % 2 == 0 ? 1 : 8;
            options.sizes = sizesBeyondLimit(form(), 3, random);
            if (options.sizes.count >= 8) threads = 1;
        }
        Random values(1);
        const Scene scene(threadArena(), form(), options, random, values);
        const auto arguments = scene.arguments();
        void* const function = library().function(form());
        scriptThreadNumbers({threads});
        startCounting();
        const CallResult result = callFunction(function, arguments);
        const int counted = stopCounting();
        if (!form().family->mayFail) {
            EXPECT_EQ(result.status(), 0);
        }
        EXPECT_EQ(counted, 0) << scene.describe();
    }
}

TEST_P(Allocations, NoneForABadCall) {
    std::vector<CallValue> arguments;
    for (const Argument& argument : form().arguments) {
        CallValue value = CallValue::integer(0);
        if (argument.role == Role::pointer) value = CallValue::pointer(nullptr);
        if (argument.role == Role::value)
            value = form().type == Type::f64 ? CallValue::realBits(0) : CallValue::singleBits(0);
        arguments.push_back(value);
    }
    void* const function = library().function(form());
    startCounting();
    const CallResult result = callFunction(function, arguments);
    EXPECT_EQ(stopCounting(), 0);
    // All arguments are bad: the form's first check is the one that tells.
    EXPECT_EQ(result.status(), statusOfCheck(form().checks[0]));
}

TEST(GeometryAllocations, None) {
    for (const GeometryFunction& function : geometryFunctions()) {
        for (int i = 0; i < 12; ++i) {
            Random random(mixSeed(function.index, static_cast<std::uint64_t>(i))), values(1);
            GeometryOptions options;
            if (function.batch()) options.count = random.between(1, 40);
            const GeometryScene scene(threadArena(), function, options, random, values);
            const auto arguments = scene.arguments();
            void* const code = Library::linked().find(function.name);
            startCounting();
            callFunction(code, arguments);
            EXPECT_EQ(stopCounting(), 0) << scene.describe();
        }
    }
}

TEST(HomogeneousAllocations, NoneWithoutAFork) {
    for (const std::int32_t count : {1, 5, 130, 131, 200}) {
        Random random(static_cast<std::uint64_t>(count)), values(1);
        HomogeneousOptions options;
        options.count = count;
        const HomogeneousScene scene(threadArena(), options, random, values);
        const auto arguments = scene.arguments();
        void* const code = Library::linked().find(homogeneousName);
        scriptThreadNumbers({count == 131 ? 1 : 1000});
        startCounting();
        callFunction(code, arguments);
        EXPECT_EQ(stopCounting(), 0) << scene.describe();
    }
}

INSTANTIATE_TEST_SUITE_P(Forms, Allocations, testing::Range(std::size_t{0}, allForms().size()), formName);

}  // namespace
}  // namespace kormtest
