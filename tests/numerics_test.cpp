// What docs/numerics.md tells about sums of products and of squares, read from its tables, is what the library computes, to
// the bit.
#include <algorithm>
#include <cmath>
#include <cstdio>
#include <map>
#include <numeric>
#include <optional>
#include <regex>
#include <set>
#include <stdexcept>
#include <tuple>

#include "support/each_form.h"
#include "support/numerics_page.h"
#include "support/scene.h"
#include "support/thread_number.h"

namespace kormtest {
namespace {

// --- Which kernels a row is about ---

// The kernel of a form for one kind of strides. The pointer layout has one kernel only.
struct Kernel {
    const Form* form;
    bool plain;
};

char kindOf(const Operand& operand) { return operand.transposed ? 't' : 'm'; }

// Takes each match of `pattern` out of `text`, and returns what its groups hold.
std::vector<std::smatch> takeOut(std::string& text, const char* pattern, std::vector<std::string>& keep) {
    keep.push_back(text);  // matches point into it
    const std::string& source = keep.back();
    const std::regex regex(pattern);
    const std::vector<std::smatch> found(std::sregex_iterator(source.begin(), source.end(), regex), {});
    text = std::regex_replace(source, regex, "");
    return found;
}

bool takeOutWords(std::string& text, const std::string& words) {
    const auto at = text.find(words);
    if (at != std::string::npos) text.erase(at, words.size());
    return at != std::string::npos;
}

// One item of a row's first cell: names, or types, operands and layouts that must all be right.
bool readItem(std::string item, const Kernel& kernel) {
    const Form& form = *kernel.form;
    if (item == "all others") return true;
    std::vector<std::string> keep;
    keep.reserve(8);
    bool right = true;
    for (const auto& name : takeOut(item, "all but `(kormMul_\\w+)`", keep)) right = right && form.name != name[1];
    const auto anyOf = [&](const std::vector<std::smatch>& found, const auto& fits) {
        if (!found.empty()) right = right && std::any_of(found.begin(), found.end(), fits);
    };
    anyOf(takeOut(item, "`(kormMul_\\w+)`", keep), [&](const std::smatch& name) { return name[1] == form.name; });
    anyOf(takeOut(item, "`(32|64)f`", keep),
          [&](const std::smatch& type) { return (type[1] == "32") == (form.type == Type::f32); });
    anyOf(takeOut(item, "`([mt])` by `([mt])`", keep), [&](const std::smatch& kinds) {
        return kinds[1] == std::string(1, kindOf(form.operands[0])) &&
               kinds[2] == std::string(1, kindOf(form.operands[1]));
    });
    anyOf(takeOut(item, "`([mt])`", keep),
          [&](const std::smatch& kind) { return kind[1] == std::string(1, kindOf(form.operands[0])); });
    anyOf(takeOut(item, "`([mt][mtva]+)`", keep), [&](const std::smatch& tokens) { return tokens[1] == form.tokens; });
    const bool pointer = form.layout == Layout::pointer;
    if (takeOutWords(item, "plain")) right = right && kernel.plain;
    if (takeOutWords(item, "any element stride")) right = right && !kernel.plain && !pointer;
    if (takeOutWords(item, "standard and list")) right = right && !pointer;
    takeOut(item, "\\b(of|and)\\b|[, ]", keep);
    if (!item.empty()) throw std::runtime_error("not understood in a row's first cell: " + item);
    return right;
}

// Each is read once.
bool isAbout(const std::string& item, const Kernel& kernel) {
    static std::map<std::tuple<std::string, const Form*, bool>, bool> known;
    const auto [at, isNew] = known.try_emplace({item, kernel.form, kernel.plain}, false);
    if (isNew) at->second = readItem(item, kernel);
    return at->second;
}

// --- Sums as the page writes them ---

// Evaluates ((p0 + p1) + p2) and the like.
template <class T>
class Formula {
public:
    Formula(const std::string& text, const std::vector<T>& values) : text_(text), values_(values) {}

    T value() {
        const T result = sum();
        if (at_ != text_.size()) throw std::runtime_error("no formula: " + text_);
        return result;
    }

private:
    void skipSpaces() {
        while (at_ < text_.size() && text_[at_] == ' ') ++at_;
    }
    T sum() {
        T result = term();
        for (skipSpaces(); at_ < text_.size() && text_[at_] == '+'; skipSpaces()) {
            ++at_;
            result = result + term();
        }
        return result;
    }
    T term() {
        skipSpaces();
        if (at_ < text_.size() && text_[at_] == '(') {
            ++at_;
            const T result = sum();
            if (at_ >= text_.size() || text_[at_++] != ')') throw std::runtime_error("no formula: " + text_);
            return result;
        }
        ++at_;  // the letter
        std::size_t digits = 0;
        const auto index = static_cast<std::size_t>(std::stoi(text_.substr(at_), &digits));
        at_ += digits;
        return values_.at(index);
    }

    const std::string& text_;
    const std::vector<T>& values_;
    std::size_t at_ = 0;
};

// How w partial sums are joined.
std::string joining(const Form& form, std::size_t w) {
    const std::string type = form.type == Type::f32 ? "`32f`" : "`64f`";
    for (const PageRow& row : pageTable("w", "how the partial sums are joined").rows)
        if (row.cells[0] == std::to_string(w) || row.cells[0] == std::to_string(w) + ", " + type) return row.cells[1];
    throw std::runtime_error("the page doesn't tell how " + std::to_string(w) + " partial sums are joined");
}

// w partial sums take whole blocks of products in turn, the first one after `ahead` products of its own; what is left is added
// to the joined sum.
template <class T>
T evaluatePartial(const std::string& join, std::size_t w, std::size_t block, std::size_t ahead,
                  const std::vector<T>& p) {
    std::size_t k = 0;
    T s{};
    if (p.size() >= ahead + block) {
        std::vector<T> partial(w);
        for (; k < ahead; ++k) partial[0] = partial[0] + p[k];
        for (std::size_t turn = 0; turn < (p.size() - ahead) / block * block; ++turn, ++k)
            partial[turn % w] = partial[turn % w] + p[k];
        s = Formula<T>(join, partial).value();
    }
    for (; k < p.size(); ++k) s = s + p[k];
    return s;
}

// `address` is of the vector whose place has a say.
template <class T>
T evaluate(const Form& form, const std::string& shape, std::vector<T> p, std::uintptr_t address) {
    if (shape == "left to right") return std::accumulate(p.begin() + 1, p.end(), p[0]);
    if (shape == "zero-start") return std::accumulate(p.begin(), p.end(), T{});
    if (shape == "zero-start from the last product to the first") return std::accumulate(p.rbegin(), p.rend(), T{});
    if (shape == "eight in turn") return evaluatePartial("l0 + l1 + l2 + l3 + l4 + l5 + l6 + l7", 8, 8, 0, p);
    if (shape == "aligned") {
        if (address % sizeof(T) != 0) return std::accumulate(p.begin(), p.end(), T{});
        return evaluatePartial(joining(form, 8), 8, 8, (16 - address % 16) % 16 / sizeof(T), p);
    }
    unsigned w = 0, block = 0;
    if (std::sscanf(shape.c_str(), "(%u, %u)", &w, &block) == 2)
        return evaluatePartial(joining(form, w), w, block, 0, p);
    return Formula<T>(shape, p).value();
}

// --- Which sum an element gets ---

bool byVector(const Form& form) { return form.operands[1].shape == Shape::vector; }

// Lines of the page that have told something.
std::set<int> used;

const PageRow* find(const PageTable& rows, const Kernel& kernel) {
    for (const PageRow& row : rows.rows) {
        const auto items = split(row.cells[0], ';');
        if (std::any_of(items.begin(), items.end(), [&](const auto& item) { return isAbout(item, kernel); })) {
            used.insert(row.line);
            return &row;
        }
    }
    return nullptr;
}

// Squares of order 3 to 6 with a path of their own: the sum, or none.
std::optional<std::string> shapeInSquare(const Kernel& kernel, std::int32_t order, std::int32_t i) {
    const std::string leftToRight = "left to right";
    if (!byVector(*kernel.form)) {
        const PageRow* const exception = find(pageTable("kernels", "orders"), kernel);
        if (exception == nullptr || exception->cells[1].find(std::to_string(order)) != std::string::npos)
            return leftToRight;
        return std::nullopt;
    }
    if (order == 3 || !kernel.plain) return leftToRight;
    const PageTable& squares = pageTable("plain kernels", "order 4");
    const auto cell = static_cast<std::size_t>(order - 3);
    for (std::size_t index = 0; index < squares.rows.size(); ++index) {
        // The rows of an element stand behind the kernels, and those that are left have a row of their own.
        const PageRow& row = squares.rows[index];
        auto items = split(row.cells[0], ';');
        const std::string firstRows = ", rows 0 to 3";
        const bool others = items[0] == "the same, other rows";
        if (others) items = split(squares.rows[index - 1].cells[0], ';');
        const bool limited = takeOutWords(items.back(), firstRows);
        if (limited && (i > 3) != others) continue;
        if (std::none_of(items.begin(), items.end(), [&](const auto& item) { return isAbout(item, kernel); })) continue;
        used.insert(row.line);
        return row.cells[cell];
    }
    throw std::runtime_error("the page doesn't tell of order " + std::to_string(order) + " of " + kernel.form->name);
}

std::string shapeOf(const Kernel& kernel, const Sizes& sizes, std::int32_t i) {
    const bool vector = byVector(*kernel.form);
    const std::int32_t M = sizes.height, K = sizes.inner;
    if (M == K && (vector || sizes.width == K) && K >= 3 && K <= 6)
        if (const auto shape = shapeInSquare(kernel, K, i)) return *shape;
    const std::int32_t left = vector ? M % 8 : M % 4;
    const bool end = i >= M - left;
    if (vector) {
        const auto& cells = find(pageTable("kernels", "in general"), kernel)->cells;
        if (left == 1 && end) return cells[2];
        if (left == 2 && end) return cells[i == M - 2 ? 3 : 4];
        return cells[1];
    }
    const PageRow* const plain = kernel.plain ? find(pageTable("plain kernels", "blocks of four"), kernel) : nullptr;
    if (plain == nullptr) return find(pageTable("other kernels", "all rows"), kernel)->cells[1];
    if (!end) return plain->cells[1];
    if (left == 2) return plain->cells[i == M - 2 ? 3 : 4];
    return plain->cells[left == 1 ? 2 : 5];
}

// The sum of a dot product or a norm.
std::string shapeOfReduction(const Kernel& kernel, std::int32_t length) {
    const Form& form = *kernel.form;
    const auto isOf = [&](const PageRow& row) {
        const auto lengths = split(row.cells[0], ',');
        return std::find(lengths.begin(), lengths.end(), std::to_string(length)) != lengths.end() ||
               (row.cells[0] == "8 and more" && length >= 8);
    };
    const auto rowOf = [&](const PageTable& rows) {
        const auto row = std::find_if(rows.rows.begin(), rows.rows.end(), isOf);
        if (row == rows.rows.end()) return static_cast<const PageRow*>(nullptr);
        used.insert(row->line);
        return &*row;
    };
    if (form.operationWord == "L2Norm" && form.type == Type::f32)
        if (const PageRow* const row = rowOf(pageTable("length of `kormL2Norm` in `32f`", "sum"))) return row->cells[1];
    const PageRow* const row = rowOf(pageTable("length", "plain `32f`"));
    if (row == nullptr) throw std::runtime_error("the page doesn't tell of length " + std::to_string(length));
    const std::size_t ofType = form.type == Type::f32 ? 1 : 2;
    const std::size_t column = form.layout == Layout::pointer ? 4 : kernel.plain ? ofType : 3;
    const std::string& cell = row->cells[column];
    std::smatch byType;
    return std::regex_match(cell, byType, std::regex("`32f` (.*), `64f` (.*)")) ? byType[ofType].str() : cell;
}

// --- The library's results ---

void call(const Scene& scene) {
    scriptThreadNumbers({1});
    const CallResult result = callFunction(Library::linked().function(scene.form()), scene.arguments());
    ASSERT_EQ(result.status(), 0) << scene.describe();
}

template <class T>
void expectElement(const Scene& scene, const std::string& shape, T found, T expected) {
    ASSERT_EQ(std::memcmp(&found, &expected, sizeof found), 0) << "not " << shape << ": " << scene.describe();
}

Kernel kernelOf(const Scene& scene) { return {&scene.form(), scene.plain() && scene.form().layout != Layout::pointer}; }

template <class T>
void expectProduct(const Scene& scene) {
    const Form& form = scene.form();
    const Sizes& sizes = scene.sizes();
    const bool vector = byVector(form);
    const auto read = [&](std::size_t operand, std::int32_t k, std::int32_t i, std::int32_t j) {
        return readElement<T>(form, operand, scene.operands()[operand], sizes, k, i, j);
    };
    ASSERT_NO_FATAL_FAILURE(call(scene));
    std::vector<T> p(static_cast<std::size_t>(sizes.inner));
    for (std::int32_t i = 0; i < sizes.height; ++i) {
        const std::string shape = shapeOf(kernelOf(scene), sizes, i);
        for (std::int32_t object = 0; object < (form.array ? sizes.count : 1); ++object) {
            for (std::int32_t j = 0; j < (vector ? 1 : sizes.width); ++j) {
                for (std::int32_t k = 0; k < sizes.inner; ++k)
                    p[static_cast<std::size_t>(k)] =
                        read(0, object, i, k) * (vector ? read(1, object, 0, k) : read(1, object, k, j));
                const T found = vector ? read(2, object, 0, i) : read(2, object, i, j);
                ASSERT_NO_FATAL_FAILURE(expectElement(scene, shape, found, evaluate(form, shape, p, 0)));
            }
        }
    }
}

template <class T>
void expectReduction(const Scene& scene) {
    const Form& form = scene.form();
    const Sizes& sizes = scene.sizes();
    const std::size_t last = form.result() - 1;  // a norm's only source, a dot product's second one
    ASSERT_NO_FATAL_FAILURE(call(scene));
    const std::string shape = shapeOfReduction(kernelOf(scene), sizes.length);
    std::vector<T> p(static_cast<std::size_t>(sizes.length));
    for (std::int32_t object = 0; object < (form.array ? sizes.count : 1); ++object) {
        const auto read = [&](std::size_t operand, std::int32_t j) {
            return readElement<T>(form, operand, scene.operands()[operand], sizes, object, 0, j);
        };
        for (std::int32_t j = 0; j < sizes.length; ++j) p[static_cast<std::size_t>(j)] = read(0, j) * read(last, j);
        const auto address =
            reinterpret_cast<std::uintptr_t>(elementAddress(form, last, scene.operands()[last], sizes, object, 0, 0));
        const T sum = evaluate(form, shape, p, address);
        ASSERT_NO_FATAL_FAILURE(
            expectElement(scene, shape, read(form.result(), 0), form.operationWord == "L2Norm" ? std::sqrt(sum) : sum));
    }
}

bool isProduct(const Form& form) { return form.operationWord == "Mul" && form.has(Extent::inner); }
bool isReduction(const Form& form) { return form.operationWord == "DotProduct" || form.operationWord == "L2Norm"; }

std::vector<std::size_t> indicesOf(bool (*wanted)(const Form&)) {
    std::vector<std::size_t> indices;
    for (const Form& form : allForms())
        if (wanted(form)) indices.push_back(form.index);
    return indices;
}

class NumericsPage : public EachForm {
protected:
    // Some random places and values for these sizes.
    template <class Expect>
    void tryPlaces(const Sizes& sizes, int places, const Expect& expect) {
        for (int i = 0; i < places; ++i) {
            Random random = options.random(form(), number_++, 13);
            if (!random.chance(options.percent)) continue;
            SceneOptions scene;
            scene.sizes = sizes;
            scene.sizes.count = form().array ? 2 : 1;
            scene.plain = i % 2 == 0;
            scene.special = false;
            Random values(random.next());
            ASSERT_NO_FATAL_FAILURE(expect(Scene(threadArena(), form(), scene, random, values)));
        }
    }

private:
    int number_ = 0;
};

class ProductsOnNumericsPage : public NumericsPage {};

TEST_P(ProductsOnNumericsPage, AreTheLibrarys) {
    const auto expect = form().type == Type::f32 ? expectProduct<float> : expectProduct<double>;
    for (std::int32_t height = 1; height <= 11; ++height) {
        for (const std::int32_t inner : {1, 2, 3, 4, 5, 6, 7, 8, 9, 11, 16, 17}) {
            Sizes sizes;
            sizes.height = height;
            sizes.inner = inner;
            for (const std::int32_t width : {inner, inner + 1}) {
                sizes.width = width;
                // Sums of squares are told apart by few values.
                ASSERT_NO_FATAL_FAILURE(tryPlaces(sizes, height == inner ? 10 : 2, expect));
            }
        }
    }
}

INSTANTIATE_TEST_SUITE_P(Forms, ProductsOnNumericsPage, testing::ValuesIn(indicesOf(isProduct)), formName);

class ReductionsOnNumericsPage : public NumericsPage {};

TEST_P(ReductionsOnNumericsPage, AreTheLibrarys) {
    const auto expect = form().type == Type::f32 ? expectReduction<float> : expectReduction<double>;
    Sizes sizes;
    for (sizes.length = 1; sizes.length <= 40; ++sizes.length) ASSERT_NO_FATAL_FAILURE(tryPlaces(sizes, 40, expect));
}

INSTANTIATE_TEST_SUITE_P(Forms, ReductionsOnNumericsPage, testing::ValuesIn(indicesOf(isReduction)), formName);

TEST(NumericsPageRows, EachTellsOfSomeKernel) {
    for (const Form& form : allForms()) {
        for (const bool plain : {true, false}) {
            const Kernel kernel{&form, plain && form.layout != Layout::pointer};
            for (std::int32_t order = 1; order <= 8; ++order) {
                Sizes sizes;
                sizes.height = sizes.inner = sizes.width = order;
                for (std::int32_t i = 0; i < order && isProduct(form); ++i) shapeOf(kernel, sizes, i);
                if (isReduction(form)) shapeOfReduction(kernel, order);
            }
        }
    }
    for (const PageTable* one :
         {&pageTable("kernels", "orders"), &pageTable("plain kernels", "order 4"), &pageTable("kernels", "in general"),
          &pageTable("plain kernels", "blocks of four"), &pageTable("other kernels", "all rows"),
          &pageTable("length", "plain `32f`"), &pageTable("length of `kormL2Norm` in `32f`", "sum")})
        for (const PageRow& row : one->rows)
            EXPECT_TRUE(used.contains(row.line)) << "line " << row.line << " of the page";
}

}  // namespace
}  // namespace kormtest
