// Determinant, trace, norm, LU and Cholesky decomposition with their solves, inverse.
#include <numeric>

#include "../reference/linalg/cholesky.h"
#include "../reference/linalg/linalg.h"
#include "../reference/linalg/precise.h"
#include "../reference/linalg/view.h"
#include "../reference/norms.h"
#include "../reference/products.h"
#include "element_values.h"
#include "family.h"

namespace kormtest {
namespace {

using Use = Operand::Use;

void addDense(Form& form, const char* name, Shape shape, Extent columns, Use use, bool array) {
    Operand& operand = addOperand(form, name, shape, Extent::one, columns, use);
    operand.dense = true;
    operand.array = array;
}

void addPivots(Form& form, Use use, bool array) {
    addDense(form, "pivots", Shape::vector, Extent::order, use, array);
    form.operands.back().kind = Operand::Kind::index;
}

void squareSource(Form& form) {
    form.operands[0].name = "src";
    form.operands[0].rows = form.operands[0].columns = Extent::order;
}

void shapeDet(Form& form) {
    squareSource(form);
    addDense(form, "buffer", Shape::vector, Extent::squareAndRow, Use::scratch, false);
    addDense(form, "dst", Shape::vector, Extent::one, Use::output, form.array);
}

void shapeTrace(Form& form) {
    squareSource(form);
    addDense(form, "dst", Shape::vector, Extent::one, Use::output, form.array);
}

void shapeFrobNorm(Form& form) {
    form.operands[0].name = "src";
    form.operands[0].rows = Extent::height;
    form.operands[0].columns = Extent::width;
    addDense(form, "dst", Shape::vector, Extent::one, Use::output, form.array);
}

void shapeLUDecomp(Form& form) {
    squareSource(form);
    addPivots(form, Use::output, form.array);
    addOperand(form, "dst", Shape::matrix, Extent::order, Extent::order, Use::output).array = form.array;
}

void shapeLUBackSubst(Form& form) {
    form.operands[0].name = "src1";
    form.operands[0].rows = form.operands[0].columns = Extent::order;
    form.operands[1].name = "src2";
    form.operands[1].columns = Extent::order;
    addPivots(form, Use::input, form.operands[0].array);
    addOperand(form, "dst", Shape::vector, Extent::one, Extent::order, Use::output).array = form.array;
}

void shapeInvert(Form& form) {
    squareSource(form);
    addDense(form, "buffer", Shape::vector, Extent::squareAndRow, Use::scratch, false);
    addOperand(form, "dst", Shape::matrix, Extent::order, Extent::order, Use::output).array = form.array;
}

void shapeCholeskyDecomp(Form& form) {
    squareSource(form);
    addOperand(form, "dst", Shape::matrix, Extent::order, Extent::order, Use::output).array = form.array;
}

void shapeCholeskyBackSubst(Form& form) {
    form.operands[0].name = "src1";
    form.operands[0].rows = form.operands[0].columns = Extent::order;
    form.operands[1].name = "src2";
    form.operands[1].columns = Extent::order;
    addOperand(form, "dst", Shape::vector, Extent::one, Extent::order, Use::output).array = form.array;
}

const char* usualChecks(const Form& form) {
    if (form.array) return form.layout == Layout::standard ? "NCST" : "NCSTO";
    return form.layout == Layout::pointer ? "NSO" : "NST";
}

// --- Values ---

enum class Kind : std::uint8_t {
    ordinary,
    dominant,  // never singular
    integers,  // small, so that closed forms are exact but for the reciprocal, and singular ones are
    ties,
    graded,
    identity,
    nearLimit,  // one pivot at, just below or just above the path's limit
    emptyLine,  // a row or a column of zeros
    twins,      // two equal rows
    wild,       // any bits
    oneNan,
};

template <class T>
T ordinaryElement(Random& random) {
    const std::uint64_t bits = randomElement(sizeof(T) == 4 ? Type::f32 : Type::f64, Mood::ordinary, false, random);
    T value;
    std::memcpy(&value, &bits, sizeof value);
    return value;
}

template <class T>
T wildElement(Random& random) {
    const std::uint64_t bits = randomElement(sizeof(T) == 4 ? Type::f32 : Type::f64, Mood::mixed, true, random);
    T value;
    std::memcpy(&value, &bits, sizeof value);
    return value;
}

template <class T>
T limitOf(const Form& form, bool plain, std::int32_t n) {
    const bool sized = n >= 3 && n <= 6;
    if (form.operationWord == "LUDecomp")
        return sized ? 2 * std::numeric_limits<T>::min() : std::numeric_limits<T>::epsilon();
    if (form.operationWord == "Invert" && sized) return static_cast<T>(invertThreshold(form, plain, n));
    return singularScale<T>(n);
}

template <class T>
class Matrices {
public:
    Matrices(const Form& form, bool plain, std::int32_t n, Random& random)
        : form_(form), plain_(plain), n_(n), random_(random) {
        inverts_ = form.operationWord == "Invert";
        path_ = inverts_ ? invertPath(form, plain, n) : InvertPath::general;
        closed_ = path_ == InvertPath::adjugate || path_ == InvertPath::block;
    }

    // Closed forms leave the order of their operations open, so it must be certain that they find the matrix regular,
    // or certain that they don't.
    Square<T> one(bool mayFail) {
        for (;;) {
            const Kind kind = mayFail ? random_.pick({Kind::ordinary, Kind::ordinary, Kind::dominant, Kind::integers,
                                                      Kind::graded, Kind::identity, Kind::nearLimit, Kind::nearLimit,
                                                      Kind::emptyLine, Kind::twins, Kind::wild, Kind::oneNan})
                                      : random_.pick({Kind::ordinary, Kind::dominant, Kind::integers, Kind::ties,
                                                      Kind::graded, Kind::dominant});
            const Square<T> a = make(kind);
            if (!closed_ || decided(a, kind)) return a;
        }
    }

    Square<T> dominant() { return make(Kind::dominant); }

private:
    bool decided(const Square<T>& a, Kind kind) const {
        switch (kind) {
            case Kind::identity:
            case Kind::nearLimit:
            case Kind::emptyLine: return true;
            case Kind::wild: return false;
            case Kind::oneNan: return true;
            default: break;
        }
        const long double det = absolute(static_cast<long double>(preciseDeterminant(a)));
        const bool exact = kind == Kind::integers || kind == Kind::ties;
        if (path_ == InvertPath::adjugate && exact && det == 0) return true;
        return det > (path_ == InvertPath::block ? 1024 : 64) * determinantBound(a);
    }

    Square<T> make(Kind kind) {
        Square<T> a(n_);
        fill(a, [&] { return ordinaryElement<T>(random_); });
        switch (kind) {
            case Kind::ordinary: break;
            case Kind::dominant:
            case Kind::oneNan:
                for (std::int32_t i = 0; i < n_; ++i) a(i, i) += static_cast<T>(std::copysign(T(32 * n_), a(i, i)));
                if (kind == Kind::oneNan) {
                    // Not both in one expression: in which order a compiler draws them is its own affair.
                    const std::int32_t column = anyIndex();
                    a(anyIndex(), column) = std::numeric_limits<T>::quiet_NaN();
                }
                break;
            case Kind::integers: fill(a, [&] { return static_cast<T>(random_.between(-4, 4)); }); break;
            case Kind::ties: fill(a, [&] { return static_cast<T>(random_.pick({-1, -1, 1, 1, 1, 2, -2, 0})); }); break;
            case Kind::graded:
                for (std::int32_t i = 0; i < n_; ++i)
                    for (std::int32_t j = 0; j < n_; ++j) a(i, j) = std::ldexp(a(i, j), -2 * (i + j));
                break;
            case Kind::identity:
                fill(a, [] { return T(0); });
                for (std::int32_t i = 0; i < n_; ++i) a(i, i) = 1;
                break;
            case Kind::nearLimit: nearLimit(a); break;
            case Kind::emptyLine: {
                const std::int32_t line = anyIndex();
                const bool row = random_.chance(50);
                for (std::int32_t i = 0; i < n_; ++i) (row ? a(line, i) : a(i, line)) = 0;
                break;
            }
            case Kind::twins: {
                const std::int32_t from = anyIndex(), to = anyIndex();
                for (std::int32_t j = 0; j < n_; ++j) a(to, j) = a(from, j);
                break;
            }
            case Kind::wild: fill(a, [&] { return wildElement<T>(random_); }); break;
        }
        return a;
    }

    // Rows of a triangle in random order: its diagonal is what elimination finds as pivots. A block elimination
    // takes its pivots otherwise, so there is nothing beside the diagonal.
    void nearLimit(Square<T>& a) {
        const T limit = limitOf<T>(form_, plain_, n_);
        const T zero = 0, huge = std::numeric_limits<T>::max();
        const T value = random_.pick(
            {limit, limit, std::nextafter(limit, zero), std::nextafter(limit, huge), limit / 2, 2 * limit});
        const bool bare = path_ == InvertPath::block || random_.chance(30);
        Positions rows(n_);
        for (std::int32_t i = n_ - 1; i > 0; --i)
            if (random_.chance(60)) rows.exchange(i, random_.between(0, i));
        const std::int32_t step = anyIndex();
        for (std::int32_t k = 0; k < n_; ++k) {
            for (std::int32_t j = 0; j < n_; ++j)
                a(rows[k], j) = j <= k || bare ? T(0) : static_cast<T>(random_.between(-2, 2));
            a(rows[k], k) = (random_.chance(50) ? T(1) : T(-1)) * (k == step ? value : T(1));
        }
    }

    template <class Make>
    void fill(Square<T>& a, const Make& make) {
        for (std::int32_t i = 0; i < n_; ++i)
            for (std::int32_t j = 0; j < n_; ++j) a(i, j) = make();
    }
    std::int32_t anyIndex() { return random_.between(0, n_ - 1); }

    const Form& form_;
    bool plain_;
    std::int32_t n_;
    Random& random_;
    bool inverts_ = false;
    InvertPath path_ = InvertPath::general;
    bool closed_ = false;
};

template <class T>
void fillMatrices(const Form& form, const std::vector<OperandValues>& operands, const Sizes& sizes, bool special,
                  Random& random) {
    const View<T> src(form, operands, sizes, "src");
    Matrices<T> matrices(form, plainStrides(form, operands), sizes.order, random);
    // Arrays fail rarely enough that later objects are reached.
    const std::int32_t percent = random.chance(50) ? 0 : form.array ? random.pick({5, 20}) : 80;
    for (std::int32_t k = 0; k < (form.array ? sizes.count : 1); ++k)
        src.writeSquare(k, special ? matrices.one(random.chance(percent)) : matrices.dominant());
}

void fillSquare(const Form& form, std::vector<OperandValues>& operands, const Sizes& sizes, bool special,
                Random& values) {
    if (form.type == Type::f32) fillMatrices<float>(form, operands, sizes, special, values);
    else fillMatrices<double>(form, operands, sizes, special, values);
}

// Pivots that name rows; now and then not each row once, which a solve isn't to notice.
void fillSolve(const Form& form, std::vector<OperandValues>& operands, const Sizes& sizes, bool, Random& values) {
    const View<std::int32_t> pivots(form, operands, sizes, "pivots");
    for (std::int32_t k = 0; k < (form.operands[0].array ? sizes.count : 1); ++k) {
        std::vector<std::int32_t> rows(static_cast<std::size_t>(sizes.order));
        std::iota(rows.begin(), rows.end(), 0);
        if (values.chance(90)) values.shuffle(rows);
        if (values.chance(10))
            for (std::int32_t& row : rows) row = values.between(0, sizes.order - 1);
        pivots.writeVector(k, rows);
    }
}

// Sources of a Cholesky decomposition: positive definite ones, with anything above the diagonal, and some that fail at
// one pivot or nearly do.
template <class T>
Square<T> definite(std::int32_t n, Random& random) {
    Square<T> g(n), a(n);
    for (std::int32_t i = 0; i < n; ++i)
        for (std::int32_t j = 0; j < n; ++j) {
            g(i, j) = static_cast<T>(random.between(-99, 99)) / 64;
            a(i, j) = wildElement<T>(random);
        }
    for (std::int32_t i = 0; i < n; ++i)
        for (std::int32_t j = 0; j <= i; ++j) {
            T sum = i == j ? T(1) : T(0);
            for (std::int32_t k = 0; k < n; ++k) sum += g(i, k) * g(j, k);
            a(i, j) = sum;
        }
    return a;
}

template <class T>
Square<T> nearlyDefinite(T threshold, std::int32_t n, Random& random) {
    Square<T> a = definite<T>(n, random);
    const std::int32_t at = random.between(0, n - 1);
    switch (random.between(0, 4)) {
        case 0: a(at, at) = -a(at, at); break;
        case 1: a(at, random.between(0, at)) = wildElement<T>(random); break;
        case 2: a(at, at) = std::numeric_limits<T>::quiet_NaN(); break;
        case 3:
            for (std::int32_t i = 0; i < n; ++i)
                for (std::int32_t j = 0; j <= i; ++j) a(i, j) = wildElement<T>(random);
            break;
        default: {
            // Nothing left of the diagonal in one row, so that its element is the pivot: at the threshold or beside it.
            for (std::int32_t j = 0; j < at; ++j) a(at, j) = 0;
            const T zero = 0, one = 1, tiny = std::numeric_limits<T>::denorm_min();
            a(at, at) = random.pick({threshold, std::nextafter(threshold, one), std::nextafter(threshold, -one),
                                     2 * threshold, threshold / 2, zero, -zero, tiny, T(0x1p-23), T(0x1p-52)});
        }
    }
    return a;
}

template <class T>
void fillDefiniteMatrices(const Form& form, const std::vector<OperandValues>& operands, const Sizes& sizes,
                          bool special, Random& random) {
    const View<T> src(form, operands, sizes, "src");
    const auto threshold = static_cast<T>(choleskyThreshold(form, plainStrides(form, operands), sizes.order));
    const std::int32_t percent = random.chance(50) || !special ? 0 : form.array ? random.pick({5, 20}) : 80;
    for (std::int32_t k = 0; k < (form.array ? sizes.count : 1); ++k)
        src.writeSquare(k, random.chance(percent) ? nearlyDefinite(threshold, sizes.order, random)
                                                  : definite<T>(sizes.order, random));
}

void fillDefinite(const Form& form, std::vector<OperandValues>& operands, const Sizes& sizes, bool special,
                  Random& values) {
    if (form.type == Type::f32) fillDefiniteMatrices<float>(form, operands, sizes, special, values);
    else fillDefiniteMatrices<double>(form, operands, sizes, special, values);
}

// Reciprocals so small that solutions keep their size; now and then whatever is there.
template <class T>
void fillReciprocals(const Form& form, const std::vector<OperandValues>& operands, const Sizes& sizes, bool special,
                     Random& random) {
    if (special && random.chance(30)) return;
    const View<T> factor(form, operands, sizes, "src1");
    for (std::int32_t k = 0; k < (form.operands[0].array ? sizes.count : 1); ++k)
        for (std::int32_t i = 0; i < sizes.order; ++i)
            factor.write(k, i, i, static_cast<T>(random.between(60, 90)) / static_cast<T>(100 * sizes.order));
}

void fillFactors(const Form& form, std::vector<OperandValues>& operands, const Sizes& sizes, bool special,
                 Random& values) {
    if (form.type == Type::f32) fillReciprocals<float>(form, operands, sizes, special, values);
    else fillReciprocals<double>(form, operands, sizes, special, values);
}

// --- Work, places, bits ---

std::int64_t cube(const Sizes& s) { return std::int64_t{s.order} * s.order * s.order; }
std::int64_t square(const Sizes& s) { return std::int64_t{s.order} * s.order; }
// The cofactor core eliminates once for each element.
std::int64_t fifthPower(const Sizes& s) {
    const std::int64_t n = s.order;
    return n >= 7 ? n * n * n * n * n / 3 : n * n * n;
}

std::int64_t area(const Sizes& s) { return std::int64_t{s.width} * s.height; }

bool sized(const Sizes& s) { return s.order >= 3 && s.order <= 6; }
bool sizedOrOne(const Sizes& s) { return s.order == 1 || sized(s); }

// Pairs of aligned matrices are done in another format than a single one.
bool detFixed(const Form& form, const Sizes& s, bool plain) {
    return !(form.name == "kormDet_ma_32f" && s.order == 4 && plain);
}
// A sum of 8 terms is parted by the address of the solution.
bool solveFixed(const Form& form, const Sizes& s, bool plain) {
    return s.order <= 8 || !plain || form.layout == Layout::pointer;
}
bool invertFixed(const Form& form, const Sizes& s, bool plain) { return !invertApproximates(form, plain, s.order); }

// Floats have an approximate root; a sum of 8 terms of a solve is parted by the address of the solution.
bool choleskyFixed(const Form& form, const Sizes&, bool) { return form.type == Type::f64; }

constexpr Family family(const char* signature, void (*shape)(Form&), Reference reference, Filler fill,
                        std::int64_t (*work)(const Sizes&)) {
    Family result{signature, shape, usualChecks, reference};
    result.fill = fill;
    result.work = work;
    return result;
}

constexpr Family det = [] {
    Family result = family("src order buffer dst count", shapeDet, referenceDet, fillSquare, cube);
    result.fixedBits = detFixed;
    return result;
}();

constexpr Family trace = [] {
    Family result = family("src order dst count", shapeTrace, referenceTrace, fillSums, square);
    result.sum = traceSum;
    return result;
}();

constexpr Family frobNorm = family("src width height dst count", shapeFrobNorm, referenceFrobNorm, fillSums, area);

constexpr Family luDecomp = [] {
    Family result = family("src pivots dst order count", shapeLUDecomp, referenceLUDecomp, fillSquare, cube);
    result.inPlace = true;
    result.mayFail = true;
    return result;
}();

constexpr Family luBackSubst = [] {
    Family result =
        family("src1 pivots src2 dst order count", shapeLUBackSubst, referenceLUBackSubst, fillSolve, square);
    // The general path reads the right-hand side while it writes the solution.
    result.inPlace = true;
    result.inPlaceFor = sized;
    result.fixedBits = solveFixed;
    return result;
}();

constexpr Family choleskyDecomp = [] {
    Family result = family("src dst order count", shapeCholeskyDecomp, referenceCholeskyDecomp, fillDefinite, cube);
    result.inPlace = true;
    result.mayFail = true;
    result.fixedBits = choleskyFixed;
    return result;
}();

constexpr Family choleskyBackSubst = [] {
    Family result =
        family("src1 src2 dst order count", shapeCholeskyBackSubst, referenceCholeskyBackSubst, fillFactors, square);
    result.inPlace = true;
    result.fixedBits = solveFixed;
    return result;
}();

constexpr Family invert = [] {
    Family result = family("src buffer dst order count", shapeInvert, referenceInvert, fillSquare, fifthPower);
    result.mayFail = true;
    // The cofactor core reads the source again for each element.
    result.inPlace = true;
    result.inPlaceFor = sizedOrOne;
    // Whether closed forms find a matrix singular is certain only for chosen ones.
    result.mayCollide = false;
    result.fixedBits = invertFixed;
    return result;
}();

// --- Estimates and limits ---

std::int32_t detEstimate(const Sizes& s) { return wrapped(u(s.order) * u(s.count)); }
std::int32_t normEstimate(const Sizes& s) { return wrapped(u(s.width) * u(s.height) * u(s.count)); }
std::int32_t decompEstimate(const Sizes& s) { return wrapped(u(s.order) * u(s.order) * u(s.count)); }
std::int32_t vectorsEstimate(const Sizes& s) { return wrapped((u(s.order) + 2 * u(s.count)) * u(s.order)); }
std::int32_t bothEstimate(const Sizes& s) { return wrapped((u(s.order) + 2) * u(s.order) * u(s.count)); }
// Order 1 is done by the entry function itself, whatever the count.
std::int32_t invertEstimate(const Sizes& s) { return s.order == 1 ? 0 : wrapped(u(s.order) * 2 * u(s.count)); }

constexpr LimitRow detLimits = everywhere(Compare::overIsFork, 14400);
constexpr LimitRow traceLimits = everywhere(Compare::below, 3601);
constexpr LimitRow normLimits{Compare::below, {2501, 1801}, {1801, 1501}, both(1601),
                              both(1601),     both(1501),   both(2501)};
constexpr LimitRow decompLimits = everywhere(Compare::below, 1001);
constexpr LimitRow vectorsLimits = everywhere(Compare::below, 701);
constexpr LimitRow bothLimits = everywhere(Compare::below, 1201);
constexpr LimitRow choleskyLimits{Compare::below, both(7501), both(2001), both(2001),
                                  {721, 2001},    both(2001), both(2001)};
constexpr LimitRow choleskyVectorsLimits{Compare::below, both(1201), both(721), both(721),
                                         both(721),      both(721),  both(721)};
constexpr LimitRow choleskyBothLimits{Compare::below, {2051, 1701}, both(1701), both(1701),
                                      both(1701),     both(1701),   both(2051)};
constexpr LimitRow invertLimits{Compare::below, {3601, 2501}, both(2501), both(2501),
                                both(2501),     both(2501),   both(2501)};

constexpr GroupRow groups[] = {
    {"Det", "m", &det, nullptr, nullptr},
    {"Det", "ma", &det, detEstimate, &detLimits},
    {"Trace", "m", &trace, nullptr, nullptr},
    {"Trace", "ma", &trace, detEstimate, &traceLimits},
    {"FrobNorm", "m", &frobNorm, nullptr, nullptr},
    {"FrobNorm", "ma", &frobNorm, normEstimate, &normLimits},
    {"LUDecomp", "m", &luDecomp, nullptr, nullptr},
    {"LUDecomp", "ma", &luDecomp, decompEstimate, &decompLimits},
    {"LUBackSubst", "mv", &luBackSubst, nullptr, nullptr},
    {"LUBackSubst", "mva", &luBackSubst, vectorsEstimate, &vectorsLimits},
    {"LUBackSubst", "mava", &luBackSubst, bothEstimate, &bothLimits},
    {"CholeskyDecomp", "m", &choleskyDecomp, nullptr, nullptr},
    {"CholeskyDecomp", "ma", &choleskyDecomp, decompEstimate, &choleskyLimits},
    {"CholeskyBackSubst", "mv", &choleskyBackSubst, nullptr, nullptr},
    {"CholeskyBackSubst", "mva", &choleskyBackSubst, vectorsEstimate, &choleskyVectorsLimits},
    {"CholeskyBackSubst", "mava", &choleskyBackSubst, bothEstimate, &choleskyBothLimits},
    {"Invert", "m", &invert, nullptr, nullptr},
    {"Invert", "ma", &invert, invertEstimate, &invertLimits},
};

constexpr OrderRow orders[] = {{"CholeskyBackSubst", "mva", 0, Layout::list, "NTOSC"}};

}  // namespace

Table linalgForms() { return {groups, orders, {}}; }

}  // namespace kormtest
