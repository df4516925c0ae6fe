// Operands in every layout, as the library and plain loops see them, for forms whose name tells their operands:
// sums, differences, scaling and products.
#pragma once

#include <korm.h>

#include <span>
#include <string_view>
#include <tuple>
#include <type_traits>

#include "row.h"

namespace bench {

// How functions of the library are told where elements lie.
enum class Entry { standard, list, pointer };

// How elements really lie.
enum class Layout {
    packed,           // no gap anywhere
    padded,           // rows of matrices, and vectors, start at multiples of 16 bytes, with a gap between objects
    strided,          // every other element is used, and gaps behind rows and objects
    columns,          // no gap anywhere, elements of a column touch
    list,             // one pointer for each object, which is packed in itself
    stridedList,      // one pointer for each object, which is strided in itself
    streams,          // one pointer for each element position, objects one element apart
    pointers,         // one pointer for each element position, objects packed behind one another
    stridedPointers,  // one pointer for each element position, objects strided
};

constexpr std::string_view nameOf(Layout layout) {
    constexpr std::string_view names[] = {"packed",      "padded",  "strided",  "columns",        "list",
                                          "stridedList", "streams", "pointers", "stridedPointers"};
    return names[static_cast<int>(layout)];
}

// Is every other element used?
constexpr bool isStrided(Layout layout) {
    return layout == Layout::strided || layout == Layout::stridedList || layout == Layout::stridedPointers;
}

constexpr Entry entryOf(Layout layout) {
    switch (layout) {
        case Layout::list:
        case Layout::stridedList: return Entry::list;
        case Layout::streams:
        case Layout::pointers:
        case Layout::stridedPointers: return Entry::pointer;
        default: return Entry::standard;
    }
}

enum class Kind { matrix, transposed, vector, constant };

template <class T>
constexpr const char* suffix = sizeof(T) == 4 ? "_32f" : "_64f";

// One of several float or double functions.
template <class T, class Float, class Double>
constexpr auto pick(Float forFloat, Double forDouble) {
    if constexpr (std::is_same_v<T, float>) return forFloat;
    else return forDouble;
}

// `elements` numbers between 1 and 2 with all bits of the fraction in use. The memory belongs to operand `number` and is
// kept from row to row. Operands start at different places of a page: at the same one, a load seems to depend on a store.
template <class T>
T* memoryOf(int number, std::size_t elements);

template <class T>
struct Operand {
    T* base = nullptr;    // element 0 of object 0
    T** table = nullptr;  // list of objects, or table of element positions
    T value = T(1.375);   // of a single constant
    std::int32_t objectStride = 0, rowStride = 0, elementStride = 0, offset = 0;  // in bytes
    std::size_t span = 0;                                                         // in elements, gaps included

    static constexpr std::int32_t size = sizeof(T);
    std::ptrdiff_t objectStep() const { return objectStride / size; }
    std::ptrdiff_t rowStep() const { return rowStride / size; }
    std::ptrdiff_t elementStep() const { return elementStride / size; }
};

// `rows` and `columns` as they are stored, `objects` 0 where there is one and no array of them. The table is valid until
// operand `number` is placed again.
template <class T>
Operand<T> place(int number, Layout layout, int rows, int columns, std::size_t objects);

// Elements from one object to the next.
template <class T>
std::size_t objectSpan(Layout layout, int rows, int columns);

// Half of a first-level cache, and more than any cache of one core, for all operands together.
struct Place {
    const char* name;
    std::size_t bytes;
};
inline constexpr Place inCache{"cache", 24 << 10};
inline constexpr Place outOfCache{"memory", 64 << 20};

// --- Forms -------------------------------------------------------------------------------------

enum class Operation { add, subtract, multiply };

struct Shape {
    Operation operation = Operation::add;
    Kind firstKind = Kind::matrix, secondKind = Kind::matrix;
    bool firstIsArray = false, secondIsArray = false;
    bool constantFirst = false;  // in the formula; the vector comes first among the arguments all the same

    constexpr bool isArray() const { return firstIsArray || secondIsArray; }
    constexpr bool isProduct() const { return operation == Operation::multiply && secondKind != Kind::constant; }
    constexpr bool isVector() const { return (isProduct() ? secondKind : firstKind) == Kind::vector; }  // the result
    constexpr bool transposes() const { return firstKind == Kind::transposed || secondKind == Kind::transposed; }
};

// Read off a name: Add_mama, Sub_cva, Mul_tav.
constexpr Shape shapeOf(std::string_view name) {
    Shape shape;
    shape.operation = name.starts_with("Add")   ? Operation::add
                      : name.starts_with("Sub") ? Operation::subtract
                                                : Operation::multiply;
    name.remove_prefix(4);
    const auto operand = [&](Kind& kind, bool& isArray) {
        kind = name[0] == 'm'   ? Kind::matrix
               : name[0] == 't' ? Kind::transposed
               : name[0] == 'v' ? Kind::vector
                                : Kind::constant;
        name.remove_prefix(1);
        isArray = name.starts_with('a');
        if (isArray) name.remove_prefix(1);
    };
    shape.constantFirst = name[0] == 'c';
    if (shape.constantFirst) operand(shape.secondKind, shape.secondIsArray);
    operand(shape.firstKind, shape.firstIsArray);
    if (!shape.constantFirst) operand(shape.secondKind, shape.secondIsArray);
    return shape;
}

// A form is a type with its name, its shape and its functions. An array form exists in three layouts, a form for one
// object has no list.
#define BENCH_PICK(NAME, SUFFIX) return ::bench::pick<T>(&korm##NAME##_32f##SUFFIX, &korm##NAME##_64f##SUFFIX);
#define BENCH_FORM(NAME, LIST)                                          \
    struct NAME {                                                       \
        static constexpr std::string_view name = #NAME;                 \
        static constexpr ::bench::Shape shape = ::bench::shapeOf(name); \
        template <class T, ::bench::Entry entry>                        \
        static constexpr auto function() {                              \
            if constexpr (entry == ::bench::Entry::pointer) {           \
                BENCH_PICK(NAME, _P)                                    \
            } else if constexpr (entry == ::bench::Entry::list) {       \
                BENCH_PICK(NAME, LIST)                                  \
            } else {                                                    \
                BENCH_PICK(NAME, )                                      \
            }                                                           \
        }                                                               \
    };
#define ARRAY_FORM(NAME) BENCH_FORM(NAME, _L)
#define SINGLE_FORM(NAME) BENCH_FORM(NAME, _P)

// What a form works on.
template <class T>
struct Work {
    Operand<T> first, second, result;               // the inputs in the order of the arguments
    std::int32_t rows = 0, inner = 0, columns = 0;  // the result's, and of a product what is summed over
    std::int32_t count = 1;
};

template <Shape shape>
constexpr Kind resultKind = shape.isVector() ? Kind::vector : Kind::matrix;

// Vectors have `rows` 1 among sums, and `columns` 1 among products; they are stored as a row.
template <Shape shape, class T>
Work<T> makeWork(Layout layout, int rows, int inner, int columns, std::size_t bytes) {
    struct Stored {
        int rows, columns;
    };
    const auto stored = [&](Kind kind, int r, int c) {
        return kind == Kind::constant     ? Stored{1, 1}
               : kind == Kind::vector     ? Stored{1, r * c}
               : kind == Kind::transposed ? Stored{c, r}
                                          : Stored{r, c};
    };
    const Stored first = stored(shape.firstKind, rows, shape.isProduct() ? inner : columns);
    const Stored second = stored(shape.secondKind, shape.isProduct() ? inner : rows, columns);
    const auto span = [&](Stored s) { return objectSpan<T>(layout, s.rows, s.columns); };
    const Stored result = stored(resultKind<shape>, rows, columns);
    const std::size_t each =
        span(result) + (shape.firstIsArray ? span(first) : 0) + (shape.secondIsArray ? span(second) : 0);
    const std::size_t count = shape.isArray() ? std::max<std::size_t>(bytes / (each * sizeof(T)), 4) : 0;
    Work<T> work;
    work.rows = rows, work.inner = inner, work.columns = columns;
    work.count = static_cast<std::int32_t>(std::max<std::size_t>(count, 1));
    work.first = place<T>(0, layout, first.rows, first.columns, shape.firstIsArray ? count : 0);
    work.second = place<T>(1, layout, second.rows, second.columns, shape.secondIsArray ? count : 0);
    work.result = place<T>(2, layout, result.rows, result.columns, count);
    return work;
}

// An operand as the library's functions take it.
template <Kind kind, bool isArray, Entry entry, class T>
auto descriptor(const Operand<T>& operand) {
    const auto strides = [&] {
        if constexpr (kind == Kind::constant || entry == Entry::pointer) return std::tuple<>();
        else if constexpr (kind == Kind::vector) return std::tuple(operand.elementStride);
        else return std::tuple(operand.rowStride, operand.elementStride);
    }();
    if constexpr (kind == Kind::constant && !isArray) return std::tuple(operand.value);
    else if constexpr (entry == Entry::pointer && kind != Kind::constant) {
        if constexpr (isArray) return std::tuple(operand.table, operand.offset, operand.objectStride);
        else return std::tuple(operand.table, operand.offset);
    } else if constexpr (!isArray) return std::tuple_cat(std::tuple(operand.base), strides);
    else if constexpr (entry == Entry::list) return std::tuple_cat(std::tuple(operand.table, operand.offset), strides);
    else return std::tuple_cat(std::tuple(operand.base, operand.objectStride), strides);
}

template <Shape shape, Entry entry, class T>
auto argumentsOf(const Work<T>& work) {
    const auto first = descriptor<shape.firstKind, shape.firstIsArray, entry>(work.first);
    const auto second = descriptor<shape.secondKind, shape.secondIsArray, entry>(work.second);
    const auto result = descriptor<resultKind<shape>, shape.isArray(), entry>(work.result);
    const auto count = [&] {
        if constexpr (shape.isArray()) return std::tuple(work.count);
        else return std::tuple<>();
    }();
    if constexpr (shape.isProduct()) {
        // Each operand's width and height, as it is stored.
        const auto sizes = [](Kind kind, std::int32_t rows, std::int32_t columns) {
            return kind == Kind::transposed ? std::tuple(rows, columns) : std::tuple(columns, rows);
        };
        const auto secondSizes = [&] {
            if constexpr (shape.isVector()) return std::tuple(work.inner);
            else return sizes(shape.secondKind, work.inner, work.columns);
        }();
        return std::tuple_cat(first, sizes(shape.firstKind, work.rows, work.inner), second, secondSizes, result, count);
    } else if constexpr (shape.isVector()) {
        return std::tuple_cat(first, second, result, std::tuple(work.columns), count);
    } else {
        return std::tuple_cat(first, second, result, std::tuple(work.columns, work.rows), count);
    }
}

// The library's call.
template <class Form, Layout layout, class T>
Run kormCall(const Work<T>& work) {
    constexpr Entry entry = entryOf(layout);
    return [arguments = argumentsOf<Form::shape, entry>(work)] {
        std::apply(Form::template function<T, entry>(), arguments);
    };
}

// --- Plain loops -------------------------------------------------------------------------------

// A size that the compiler knows; std::ptrdiff_t is one that it doesn't.
template <int n>
using Known = std::integral_constant<std::ptrdiff_t, n>;

// How plain loops find element (i, j) of object k: all distances of packed objects follow from their sizes, those of
// strided ones are variables. A transposed operand's sizes are those of its transpose, which is what the loop sees.
template <Layout layout, Kind kind, bool isArray, class T, class Rows, class Columns>
struct Elements {
    T* const base;
    T* const* const table;
    const std::ptrdiff_t object, row, element;
    const std::remove_const_t<T> value;
    const Rows rows;
    const Columns columns;

    Elements(const Operand<std::remove_const_t<T>>& operand, Rows r, Columns c)
        : base(operand.base),
          table(operand.table),
          object(operand.objectStep()),
          row(operand.rowStep()),
          element(operand.elementStep()),
          value(operand.value),
          rows(r),
          columns(c) {}

    // Inlined always: a call for each element is not what anyone would write.
    [[gnu::always_inline]] decltype(auto) operator()(std::ptrdiff_t k, std::ptrdiff_t i, std::ptrdiff_t j) const {
        if constexpr (kind == Kind::vector) return stored(k, 0, i + j, Known<1>(), rows * columns);
        else if constexpr (kind == Kind::transposed) return stored(k, j, i, columns, rows);
        else return stored(k, i, j, rows, columns);
    }

private:
    [[gnu::always_inline]] decltype(auto) stored(std::ptrdiff_t k, std::ptrdiff_t i, std::ptrdiff_t j, auto height,
                                                 auto width) const {
        if constexpr (!isArray) k = 0;
        if constexpr (kind == Kind::constant) {
            if constexpr (!isArray) return value;
            else if constexpr (entryOf(layout) == Entry::list) return (table[k][0]);
            else if constexpr (isStrided(layout) || layout == Layout::padded) return (base[k * object]);
            else return (base[k]);
        } else if constexpr (layout == Layout::streams) return (table[i * width + j][k]);
        else if constexpr (entryOf(layout) == Entry::pointer) return (table[i * width + j][k * object]);
        else if constexpr (layout == Layout::packed) return (base[(k * height + i) * width + j]);
        else if constexpr (layout == Layout::columns) return (base[(k * width + j) * height + i]);
        else if constexpr (layout == Layout::padded) return (base[k * object + i * row + j]);
        else if constexpr (layout == Layout::strided) return (base[k * object + i * row + j * element]);
        else if constexpr (layout == Layout::list) return ((isArray ? table[k] : base)[i * width + j]);
        else return ((isArray ? table[k] : base)[i * row + j * element]);
    }
};

template <Shape shape, class T>
constexpr T combine(T first, T second) {
    if constexpr (shape.operation == Operation::add) return first + second;
    else if constexpr (shape.operation == Operation::multiply) return first * second;
    else if constexpr (shape.constantFirst) return second - first;
    else return first - second;
}

// What one writes in five minutes: object by object, or in the pointer layout along the streams, no intrinsics.
template <Shape shape, Layout layout, bool alongStreams = false, class T, class Rows, class Inner, class Columns>
[[gnu::noinline]] void plainLoop(const Work<T>& work, Rows rows, Inner inner, Columns columns) {
    const auto elements = [&]<Kind kind, bool isArray, class E>(const Operand<T>& operand, auto r, auto c) {
        return Elements<layout, kind, isArray, E, decltype(r), decltype(c)>(operand, r, c);
    };
    const std::ptrdiff_t count = shape.isArray() ? work.count : 1;
    const auto each = [&](auto&& element) {
        if constexpr (alongStreams) {
            for (std::ptrdiff_t i = 0; i < rows; ++i)
                for (std::ptrdiff_t j = 0; j < columns; ++j)
                    for (std::ptrdiff_t k = 0; k < count; ++k) element(k, i, j);
        } else {
            for (std::ptrdiff_t k = 0; k < count; ++k)
                for (std::ptrdiff_t i = 0; i < rows; ++i)
                    for (std::ptrdiff_t j = 0; j < columns; ++j) element(k, i, j);
        }
    };
    const auto result = elements.template operator()<resultKind<shape>, shape.isArray(), T>(work.result, rows, columns);
    if constexpr (shape.isProduct()) {
        const auto a =
            elements.template operator()<shape.firstKind, shape.firstIsArray, const T>(work.first, rows, inner);
        const auto b =
            elements.template operator()<shape.secondKind, shape.secondIsArray, const T>(work.second, inner, columns);
        each([&](std::ptrdiff_t k, std::ptrdiff_t i, std::ptrdiff_t j) {
            T sum = 0;
            for (std::ptrdiff_t l = 0; l < inner; ++l) sum += a(k, i, l) * b(k, l, j);
            result(k, i, j) = sum;
        });
    } else {
        const auto a =
            elements.template operator()<shape.firstKind, shape.firstIsArray, const T>(work.first, rows, columns);
        const auto b =
            elements.template operator()<shape.secondKind, shape.secondIsArray, const T>(work.second, rows, columns);
        each([&](std::ptrdiff_t k, std::ptrdiff_t i, std::ptrdiff_t j) {
            result(k, i, j) = combine<shape, T>(a(k, i, j), b(k, i, j));
        });
    }
}

// --- Sweeps ------------------------------------------------------------------------------------

// What a single call takes without its work: the same call with an argument that the last of its checks finds.
inline constexpr const char* lastCheck = "korm, last check";

// The library beside a plain loop whose sizes are known at run time only, for one small shape in one layout.
template <class Form, Layout layout, class T>
void sweepRow(const std::string& size, int rows, int inner, int columns) {
    constexpr Shape shape = Form::shape;
    const std::string name =
        "sweep/" + std::string(Form::name) + suffix<T> + "/" + size + "/" + std::string(nameOf(layout));
    if (!isWanted(name)) return;
    const Work<T> work = makeWork<shape, T>(layout, rows, inner, columns, inCache.bytes);
    Row row(name, work.count);
    row.results(work.result.base, work.result.span, shape.isProduct() ? 1e-5 : 0);
    row.korm(kormCall<Form, layout>(work));
    row.peer("plain loop, sizes at run time", [=] {
        plainLoop<shape, layout>(work, std::ptrdiff_t{rows}, std::ptrdiff_t{inner}, std::ptrdiff_t{columns});
    });
    if constexpr (!shape.isArray() && entryOf(layout) == Entry::standard) {
        // Strides are looked at last.
        Work<T> wrong = work;
        (shape.isVector() ? wrong.result.elementStride : wrong.result.rowStride) += 1;
        row.control(lastCheck, kormCall<Form, layout>(wrong));
    }
    row.measure();
}

// All small sizes of a form: lengths and orders up to 16, shapes of products up to 8 cubed.
template <class Form, Layout layout, class T>
void sweepSizes() {
    constexpr Shape shape = Form::shape;
    const int most = shape.isProduct() && !shape.isVector() ? 8 : 16;
    const auto by = [](int a, int b) { return std::to_string(a) + "x" + std::to_string(b); };
    for (int i = 1; i <= most; ++i) {
        if (shape.isVector() && !shape.isProduct()) sweepRow<Form, layout, T>(std::to_string(i), 1, 1, i);
        else
            for (int j = 1; j <= most; ++j) {
                if (!shape.isProduct()) sweepRow<Form, layout, T>(by(i, j), i, 1, j);
                else if (shape.isVector()) sweepRow<Form, layout, T>(by(i, j), i, j, 1);
                else
                    for (int l = 1; l <= most; ++l)
                        sweepRow<Form, layout, T>(by(i, l) + "x" + std::to_string(j), i, l, j);
            }
    }
}

template <class Form, Layout... layouts>
void sweep() {
    (sweepSizes<Form, layouts, float>(), ...);
    (sweepSizes<Form, layouts, double>(), ...);
}

}  // namespace bench
