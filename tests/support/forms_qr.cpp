// QR decomposition and the solve with it.
#include <algorithm>
#include <cmath>
#include <cstring>
#include <limits>

#include "../reference/linalg/qr.h"
#include "../reference/linalg/view.h"
#include "element_values.h"
#include "family.h"

namespace kormtest {
namespace {

using Use = Operand::Use;

void addBuffer(Form& form) {
    Operand& buffer = addOperand(form, "buffer", Shape::vector, Extent::one, Extent::height, Use::scratch);
    buffer.dense = true;
}

void shapeQRDecomp(Form& form) {
    form.operands[0].name = "src";
    form.operands[0].rows = Extent::height;
    form.operands[0].columns = Extent::width;
    addBuffer(form);
    addOperand(form, "dst", Shape::matrix, Extent::height, Extent::width, Use::output).array = form.array;
}

void shapeQRBackSubst(Form& form) {
    form.operands[0].name = "src1";
    form.operands[0].rows = Extent::height;
    form.operands[0].columns = Extent::width;
    form.operands[1].name = "src2";
    form.operands[1].columns = Extent::height;
    addBuffer(form);
    addOperand(form, "dst", Shape::vector, Extent::one, Extent::width, Use::output).array = form.array;
}

// The match comes last in every layout.
const char* checksOf(const Form& form) {
    switch (form.layout) {
        case Layout::standard: return form.array ? "NCSTM" : "NSTM";
        case Layout::list: return "NCSTOM";
        case Layout::pointer: return form.array ? "NCSTOM" : "NSOM";
    }
    return "";
}

// --- Values ---

enum class Kind : std::uint8_t {
    ordinary,
    integers,  // sums that are exact
    wild,      // any bits
    oneNan,
    nearLimit,  // what is left of one column has a square at, just below or just above the limit
    emptyColumn,
    twins,  // two equal columns: what is left of the second is rounding
};

template <class T>
class Matrices {
public:
    Matrices(const Sizes& sizes, Random& random) : sizes_(sizes), random_(random) {}

    Rectangle<T> one(bool mayFail) {
        const Kind kind = mayFail ? random_.pick({Kind::ordinary, Kind::integers, Kind::wild, Kind::oneNan,
                                                  Kind::nearLimit, Kind::nearLimit, Kind::emptyColumn, Kind::twins})
                                  : random_.pick({Kind::ordinary, Kind::integers});
        Rectangle<T> a(sizes_.height, sizes_.width);
        fill(a, [&] { return element(Mood::ordinary, false); });
        // In most cases far from the limit, too.
        for (std::int32_t j = 0; j < sizes_.width; ++j) a(j, j) += std::copysign(T(4), a(j, j));
        const std::int32_t column = random_.between(0, sizes_.width - 1), other = random_.between(0, sizes_.width - 1);
        switch (kind) {
            case Kind::ordinary: break;
            case Kind::integers:
                fill(a, [&] { return static_cast<T>(random_.between(-4, 4)); });
                for (std::int32_t j = 0; j < sizes_.width; ++j) a(j, j) = static_cast<T>(20 + j);
                break;
            case Kind::wild: fill(a, [&] { return element(Mood::mixed, true); }); break;
            case Kind::oneNan:
                a(random_.between(0, sizes_.height - 1), column) = std::numeric_limits<T>::quiet_NaN();
                break;
            case Kind::nearLimit: nearLimit(a, column); break;
            case Kind::emptyColumn:
                for (std::int32_t i = 0; i < sizes_.height; ++i) a(i, column) = 0;
                break;
            case Kind::twins:
                for (std::int32_t i = 0; i < sizes_.height; ++i) a(i, column) = a(i, other);
                break;
        }
        return a;
    }

private:
    T element(Mood mood, bool mayBeNan) {
        const std::uint64_t bits = randomElement(sizeof(T) == 4 ? Type::f32 : Type::f64, mood, mayBeNan, random_);
        T value;
        std::memcpy(&value, &bits, sizeof value);
        return value;
    }

    // Reflections of columns that are zero below the diagonal leave lower rows alone.
    void nearLimit(Rectangle<T>& a, std::int32_t column) {
        for (std::int32_t i = 1; i < sizes_.height; ++i)
            for (std::int32_t j = 0; j < std::min(i, sizes_.width); ++j) a(i, j) = 0;
        // The squares of both add up to 2^-23, or to 2^-52.
        const T first = sizeof(T) == 4 ? T(0x1p-12) : T(0x1p-26), second = sizeof(T) == 4 ? T(0x1p-12) : T(0);
        const T side =
            random_.pick({first, first, std::nextafter(first, T(0)), std::nextafter(first, T(1)), first / 2});
        a(column, column) = random_.chance(50) ? side : -side;
        if (column + 1 < sizes_.height) a(column + 1, column) = second;
    }

    template <class Make>
    void fill(Rectangle<T>& a, const Make& make) {
        for (std::int32_t i = 0; i < sizes_.height; ++i)
            for (std::int32_t j = 0; j < sizes_.width; ++j) a(i, j) = make();
    }

    const Sizes& sizes_;
    Random& random_;
};

template <class T>
void fillMatrices(const Form& form, const std::vector<OperandValues>& operands, const Sizes& sizes, bool special,
                  Random& random) {
    const View<T> src(form, operands, sizes, "src");
    Matrices<T> matrices(sizes, random);
    // Arrays fail rarely enough that later objects are reached.
    const std::int32_t percent = !special || random.chance(50) ? 0 : form.array ? random.pick({5, 20}) : 80;
    for (std::int32_t k = 0; k < (form.array ? sizes.count : 1); ++k) {
        const Rectangle<T> a = matrices.one(random.chance(percent));
        for (std::int32_t i = 0; i < sizes.height; ++i)
            for (std::int32_t j = 0; j < sizes.width; ++j) src.write(k, i, j, a(i, j));
    }
}

void fillQRDecomp(const Form& form, std::vector<OperandValues>& operands, const Sizes& sizes, bool special,
                  Random& values) {
    (form.type == Type::f32 ? fillMatrices<float> : fillMatrices<double>)(form, operands, sizes, special, values);
}

// --- Families ---

std::int64_t decompositionWork(const Sizes& s) { return std::int64_t{2} * s.width * s.width * s.height; }
std::int64_t solutionWork(const Sizes& s) { return std::int64_t{2} * s.width * s.height; }

constexpr Family decomposition = [] {
    Family result{"src buffer dst width height count", shapeQRDecomp, checksOf, referenceQRDecomp};
    result.fill = fillQRDecomp;
    result.work = decompositionWork;
    result.inPlace = true;
    result.mayFail = true;
    result.tall = true;
    return result;
}();

bool isSquare(const Sizes& s) { return s.width == s.height; }

constexpr Family solution = [] {
    Family result{"src1 buffer src2 dst width height count", shapeQRBackSubst, checksOf, referenceQRBackSubst};
    result.work = solutionWork;
    result.inPlace = true;
    result.inPlaceFor = isSquare;
    result.tall = true;
    return result;
}();

// --- Estimates and limits ---

std::int32_t decompositionEstimate(const Sizes& s) { return wrapped(u(s.width) * 2 * u(s.height) * u(s.count)); }
std::int32_t vectorsEstimate(const Sizes& s) {
    return wrapped(u(s.width) * u(s.height) + (u(s.height) + u(s.width)) * u(s.count));
}
std::int32_t bothEstimate(const Sizes& s) {
    return wrapped((u(s.width) * (u(s.height) + 1) + u(s.height)) * u(s.count));
}

constexpr LimitRow limits{Compare::below, both(2801), both(2801), both(1801), both(1801), both(1801), both(1801)};

constexpr GroupRow groups[] = {
    {"QRDecomp", "m", &decomposition, nullptr, nullptr},
    {"QRDecomp", "ma", &decomposition, decompositionEstimate, &limits},
    {"QRBackSubst", "mv", &solution, nullptr, nullptr},
    {"QRBackSubst", "mva", &solution, vectorsEstimate, &limits},
    {"QRBackSubst", "mava", &solution, bothEstimate, &limits},
};

}  // namespace

Table qrForms() { return {groups, {}, {}}; }

}  // namespace kormtest
