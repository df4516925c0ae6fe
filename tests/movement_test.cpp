// Movement: when the size of the cache is asked for, and entries of tables and lists that are written on the way.
#include <gtest/gtest.h>
#include <korm.h>

#include <cstring>
#include <ostream>
#include <vector>

#include "support/arena.h"
#include "support/cache_size.h"
#include "support/checker.h"
#include "support/dense_call.h"
#include "support/elf_file.h"
#include "support/fault.h"
#include "support/status.h"

namespace kormtest {
namespace {

// --- The size of the cache --------------------------------------------------------------------------

struct CacheCase {
    const char* name;
    Sizes sizes;
    std::int32_t spread;  // of elements
    int questions;
    friend void PrintTo(const CacheCase& one, std::ostream* out) { *out << one.name << " " << one.sizes.count; }
};

class MovementCache : public testing::TestWithParam<CacheCase> {};

// Whatever the answer is, the result is the transpose.
TEST_P(MovementCache, IsAskedForOnce) {
    const CacheCase& one = GetParam();
    const Form& form = formNamed(one.name);
    for (const std::int32_t answer : {0, 1, 200000, 2147483647}) {
        DenseCall call(form, one.sizes, one.spread);
        const auto value = [](std::int32_t k, std::int32_t i, std::int32_t j) {
            return static_cast<float>(k * 4096 + i * 64 + j);
        };
        for (std::int32_t k = 0; k < one.sizes.count; ++k)
            for (std::int32_t i = 0; i < one.sizes.height; ++i)
                for (std::int32_t j = 0; j < one.sizes.width; ++j)
                    if (form.type == Type::f32) call.set("src", k, i, j, value(k, i, j));
                    else call.set("src", k, i, j, static_cast<double>(value(k, i, j)));
        scriptCacheSize(answer, answer == 0 ? -8 : 0);
        ASSERT_EQ(call.call(), status::ok);
        EXPECT_EQ(cacheSizeQuestions(), one.questions);
        for (std::int32_t k = 0; k < one.sizes.count; ++k)
            for (std::int32_t i = 0; i < one.sizes.height; ++i)
                for (std::int32_t j = 0; j < one.sizes.width; ++j)
                    ASSERT_EQ(form.type == Type::f32 ? call.get<float>("dst", k, j, i)
                                                     : static_cast<float>(call.get<double>("dst", k, j, i)),
                              value(k, i, j));
    }
}

// width * height * count * 8 against 131072, in the general path of two forms.
INSTANTIATE_TEST_SUITE_P(Table, MovementCache,
                         testing::Values(CacheCase{"kormTranspose_ma_32f", {8, 16, 1, 128}, 1, 0},
                                         CacheCase{"kormTranspose_ma_32f", {8, 16, 1, 129}, 1, 1},
                                         CacheCase{"kormTranspose_ma_32f_L", {8, 16, 1, 128}, 1, 0},
                                         CacheCase{"kormTranspose_ma_32f_L", {8, 16, 1, 129}, 1, 1},
                                         CacheCase{"kormTranspose_ma_32f", {128, 128, 1, 1}, 1, 0},
                                         CacheCase{"kormTranspose_ma_32f", {127, 130, 1, 1}, 1, 1},
                                         CacheCase{"kormTranspose_ma_32f", {2, 2, 1, 5000}, 1, 1},
                                         CacheCase{"kormTranspose_ma_32f", {7, 7, 1, 400}, 1, 1},
                                         // Squares of order 3 to 6 never ask.
                                         CacheCase{"kormTranspose_ma_32f", {3, 3, 1, 5000}, 1, 0},
                                         CacheCase{"kormTranspose_ma_32f", {4, 4, 1, 5000}, 1, 0},
                                         CacheCase{"kormTranspose_ma_32f", {5, 5, 1, 5000}, 1, 0},
                                         CacheCase{"kormTranspose_ma_32f_L", {6, 6, 1, 5000}, 1, 0},
                                         CacheCase{"kormTranspose_ma_32f", {4, 6, 1, 5000}, 1, 1},
                                         // Nor do other kernels.
                                         CacheCase{"kormTranspose_ma_32f", {8, 16, 1, 500}, 2, 0},
                                         CacheCase{"kormTranspose_ma_32f_L", {8, 16, 1, 500}, 2, 0},
                                         CacheCase{"kormTranspose_ma_32f_P", {8, 16, 1, 500}, 1, 0},
                                         CacheCase{"kormTranspose_m_32f", {200, 300, 1, 1}, 1, 0},
                                         CacheCase{"kormTranspose_ma_64f", {8, 16, 1, 500}, 1, 0},
                                         CacheCase{"kormTranspose_ma_64f_L", {8, 16, 1, 500}, 1, 0}));

// The number of bytes wraps at 32 bits and is taken as signed. Its operands don't exist: the first touch faults.
TEST(MovementCacheSize, WrapsLikeASignedNumber) {
    if (faultsAreErrors()) GTEST_SKIP() << "a fault is an error here";
    struct Case {
        std::int32_t width, height, count;
        int questions;
    };
    for (const Case& one :
         {Case{1 << 14, 1 << 14, 1, 0},                                         // 2^31
          Case{1 << 14, (1 << 14) - 1, 1, 1},                                   // just below
          Case{1 << 15, 1 << 14, 1, 0},                                         // 2^32
          Case{1 << 15, 1 << 14, 3, 0},                                         // 3 * 2^32
          Case{1 << 15, (1 << 14) + 1, 1, 1},                                   // 2^18 above 2^32
          Case{65536, 65536, 32767, 0}, Case{2147483647, 2147483647, 7, 0}}) {  // 7 * 8 * (2^31 - 1)^2
        const Form& form = formNamed("kormTranspose_ma_32f");
        std::byte* const nowhere = threadArena().nowhere();
        std::vector<CallValue> values;
        for (const Argument& argument : form.arguments) {
            if (argument.role == Role::pointer) values.push_back(CallValue::pointer(nowhere));
            else if (argument.name == "width") values.push_back(CallValue::integer(one.width));
            else if (argument.name == "height") values.push_back(CallValue::integer(one.height));
            else if (argument.name == "count") values.push_back(CallValue::integer(one.count));
            else values.push_back(CallValue::integer(4));
        }
        scriptCacheSize(0);
        const Fault fault = guarded([&] { callFunction(Library::linked().function(form), values); });
        EXPECT_TRUE(fault.happened);
        EXPECT_EQ(cacheSizeQuestions(), one.questions) << one.width << " " << one.height << " " << one.count;
    }
}

// --- Functions that only profiles show ----------------------------------------------------------------

class MovementStrips : public testing::Test {
protected:
    // A function inside the library, with the arguments that all of them have.
    void run(const std::string& name, std::int32_t width, std::int32_t height, std::size_t shift,
             std::vector<std::int32_t> more = {}) {
        const std::int32_t fromStride = (width + 3) * 4, toStride = (height + 2) * 4;
        std::vector<std::uint32_t> from(static_cast<std::size_t>((width + 3) * height) + 4);
        std::vector<std::uint32_t> to(static_cast<std::size_t>((height + 2) * width) + 4, 0xa5a5a5a5), expected = to;
        for (std::size_t i = 0; i < from.size(); ++i) from[i] = static_cast<std::uint32_t>(i) * 2654435761u;
        for (std::int32_t i = 0; i < height; ++i)
            for (std::int32_t j = 0; j < width; ++j)
                expected[shift + static_cast<std::size_t>(j * (height + 2) + i)] =
                    from[shift + static_cast<std::size_t>(i * (width + 3) + j)];
        std::vector<CallValue> arguments{CallValue::pointer(from.data() + shift),
                                         CallValue::integer(fromStride),
                                         CallValue::pointer(to.data() + shift),
                                         CallValue::integer(toStride),
                                         CallValue::integer(width),
                                         CallValue::integer(height)};
        for (const std::int32_t value : more) arguments.push_back(CallValue::integer(value));
        const std::uintptr_t address = loaded.base + file.symbols().at(name).address;
        const CallResult result = callFunction(reinterpret_cast<void*>(address), arguments);
        EXPECT_EQ(result.frameDamage, "") << name;
        EXPECT_EQ(to, expected) << name << " " << width << " " << height;
    }

private:
    const LoadedLibrary loaded = loadedKorm();
    const ElfFile file{loaded.path};
};

TEST_F(MovementStrips, TransposeAnySize) {
    for (const std::int32_t width : {1, 2, 3, 4, 6, 15, 16, 17, 64, 65, 130}) {
        for (const std::int32_t height : {1, 2, 3, 4, 31, 32}) {
            for (const std::size_t shift : {0u, 1u, 2u}) {
                run("v8_owniTranspose_32s_NT", width, height, shift);
                if (width <= 64) run("v8_owniTranspose_32s_asm", width, height, shift);
                for (const std::int32_t beyondCache : {0, 1})
                    for (const std::int32_t strips : {0, 1, 2})
                        run("v8_ownm_Transpose_32s", width, height + 32 * strips, shift, {beyondCache});
            }
        }
    }
}

// --- Entries that are written on the way --------------------------------------------------------------

// Elements as large as pointers can be entries.
std::string withPointerSizedElements(const std::string& stem, const char* suffix) {
    return stem + (sizeof(void*) == 8 ? "_64f_" : "_32f_") + suffix;
}

std::uintptr_t word(const void* pointer) { return reinterpret_cast<std::uintptr_t>(pointer); }

void* functionNamed(const std::string& name) { return Library::linked().find(name); }

constexpr auto wordSize = static_cast<std::int32_t>(sizeof(void*));

TEST(MovementEntries, OfAListAreReadWhenTheirObjectIsReached) {
    std::uintptr_t first, second = 2, other = 3;
    first = word(&other);
    // Entry 1 is written as the result of object 0, and leads elsewhere then.
    std::uintptr_t list[3] = {word(&first), word(&second), 0};
    const CallValue arguments[] = {CallValue::pointer(list),     CallValue::integer(0),
                                   CallValue::integer(wordSize), CallValue::pointer(list + 1),
                                   CallValue::integer(wordSize), CallValue::integer(wordSize),
                                   CallValue::integer(1),        CallValue::integer(2)};
    void* const copy = functionNamed(withPointerSizedElements("kormCopy_va", "LS"));
    ASSERT_EQ(callFunction(copy, arguments).status(), status::ok);
    EXPECT_EQ(list[1], word(&other));
    EXPECT_EQ(list[2], 3u);
}

TEST(MovementEntries, OfATableAreReadWhenTheirElementIsReached) {
    constexpr std::int32_t count = 40;
    std::uintptr_t x[count], y[count], z[count];
    for (std::int32_t k = 0; k < count; ++k) {
        x[k] = word(z);
        y[k] = 1;
        z[k] = 100 + static_cast<std::uintptr_t>(k);
    }
    // Entry 1 is the place of the first element that is written: from then on it leads to z.
    std::vector<std::uintptr_t> table(2 * count + 1);
    table[0] = word(x);
    table[1] = word(y);
    const CallValue arguments[] = {CallValue::pointer(table.data()),
                                   CallValue::integer(0),
                                   CallValue::integer(wordSize),
                                   CallValue::pointer(table.data() + 1),
                                   CallValue::integer(2 * wordSize),
                                   CallValue::integer(wordSize),
                                   CallValue::integer(2),
                                   CallValue::integer(count)};
    void* const copy = functionNamed(withPointerSizedElements("kormCopy_va", "PS"));
    ASSERT_EQ(callFunction(copy, arguments).status(), status::ok);
    for (std::size_t k = 0; k < count; ++k) {
        EXPECT_EQ(table[1 + 2 * k], word(z));
        EXPECT_EQ(table[2 + 2 * k], 100 + k);
    }
}

// --- Blocks of objects --------------------------------------------------------------------------------

// To and from streams objects are turned so many at a time, 682 of three doubles; the last block may have one.
TEST(MovementBlocks, MayEndWithOneObject) {
    for (const std::int32_t count : {681, 682, 683, 684, 1364, 1365}) {
        const auto objects = static_cast<std::size_t>(count);
        std::vector<double> structures(3 * objects), streams(3 * objects, -1), back(3 * objects, -1);
        for (std::size_t e = 0; e < structures.size(); ++e) structures[e] = static_cast<double>(e);
        double* const table[] = {streams.data(), streams.data() + objects, streams.data() + 2 * objects};
        ASSERT_EQ(kormCopy_ma_64f_SP(structures.data(), 24, 24, 8, table, 0, 8, 3, 1, count), status::ok);
        for (std::size_t k = 0; k < objects; ++k)
            for (std::size_t j = 0; j < 3; ++j) ASSERT_EQ(streams[j * objects + k], structures[3 * k + j]) << k;
        ASSERT_EQ(kormCopy_ma_64f_PS(table, 0, 8, back.data(), 24, 24, 8, 3, 1, count), status::ok);
        ASSERT_EQ(back, structures);
    }
}

// --- Operands that meet ---------------------------------------------------------------------------------

// A list of objects of so many elements each, and as many streams, in one block of memory: places are numbers of elements.
// Moves from one to the other must have the outcome of the plain loop wherever a single object lies.
template <class Word>
void expectThePlainLoop(int elements, const std::vector<std::size_t>& objects, const std::vector<std::size_t>& streams,
                        bool toList, std::size_t size, const std::string& what) {
    std::vector<Word> memory(size);
    for (std::size_t i = 0; i < size; ++i) memory[i] = static_cast<Word>(i + 1);
    std::vector<Word> expected = memory;
    for (std::size_t k = 0; k < objects.size(); ++k)
        for (std::size_t j = 0; j < streams.size(); ++j) {
            Word &inObject = expected[objects[k] + j], &inStream = expected[streams[j] + k];
            (toList ? inObject : inStream) = toList ? inStream : inObject;
        }
    std::vector<Word*> list, table;
    for (const std::size_t place : objects) list.push_back(memory.data() + place);
    for (const std::size_t place : streams) table.push_back(memory.data() + place);
    constexpr auto bytes = static_cast<std::int32_t>(sizeof(Word));
    const std::vector<CallValue> asTable{CallValue::pointer(table.data()), CallValue::integer(0),
                                         CallValue::integer(bytes)};
    const std::vector<CallValue> asList{CallValue::pointer(list.data()), CallValue::integer(0),
                                        CallValue::integer(bytes)};
    std::vector<CallValue> arguments = toList ? asTable : asList;
    for (const CallValue& value : toList ? asList : asTable) arguments.push_back(value);
    arguments.push_back(CallValue::integer(elements));
    arguments.push_back(CallValue::integer(static_cast<std::int32_t>(objects.size())));
    const std::string name = std::string("kormCopy_va_") + (bytes == 4 ? "32f_" : "64f_") + (toList ? "PL" : "LP");
    ASSERT_EQ(callFunction(functionNamed(name), arguments).status(), status::ok);
    ASSERT_EQ(memory, expected) << name << " " << elements << " " << what;
}

class MovementOverlap : public testing::TestWithParam<int> {};

TEST_P(MovementOverlap, HasTheOutcomeOfThePlainLoop) {
    const int elements = GetParam();
    const auto length = static_cast<std::size_t>(elements);
    constexpr std::size_t count = 43;
    const std::size_t first = 1000, size = 4000;  // streams lie before the objects, and behind them is room
    std::vector<std::size_t> streams, objects;
    for (std::size_t j = 0; j < length; ++j) streams.push_back(100 + 50 * j);
    for (std::size_t k = 0; k < count; ++k) objects.push_back(first + k * (length + 1));
    const auto expectAll = [&](const std::vector<std::size_t>& places, const std::string& what) {
        for (const bool toList : {false, true}) {
            expectThePlainLoop<std::uint32_t>(elements, places, streams, toList, size, what);
            expectThePlainLoop<std::uint64_t>(elements, places, streams, toList, size, what);
        }
    };
    expectAll(objects, "in order");
    expectAll({objects.rbegin(), objects.rend()}, "in reverse order");
    std::vector<std::size_t> anyOrder = objects;
    for (std::size_t k = 0; k < count; ++k) anyOrder[k] = objects[k * 17 % count];
    expectAll(anyOrder, "in any order");
    for (std::size_t k = 0; k < count; ++k) {
        const std::string which = " object " + std::to_string(k);
        std::vector<std::size_t> places = objects;
        const auto expectAt = [&](std::size_t place, const std::string& what) {
            places[k] = place;
            expectAll(places, what + which);
            std::vector<std::size_t> mixed = anyOrder;
            mixed[k] = place;
            expectAll(mixed, what + which + " in any order");
        };
        expectAt(objects[(k + 1) % count] - 1, "meets the next:");
        expectAt(objects[(k + 1) % count] - length + 1, "meets the next by one element:");
        expectAt(objects[(k + count - 1) % count] + 1, "meets the one before:");
        expectAt(size - length, "behind all:");
        expectAt(0, "before all:");
        expectAt(streams[0] + 20, "in the first stream:");
        expectAt(streams[0] - length + 1, "meets the first stream's beginning:");
        expectAt(streams[length - 1] + count - 1, "meets the last stream's end:");
    }
}

INSTANTIATE_TEST_SUITE_P(Lengths, MovementOverlap, testing::Values(2, 3, 4, 5, 6, 9));

}  // namespace
}  // namespace kormtest
