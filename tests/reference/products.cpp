#include "products.h"

#include <array>
#include <stdexcept>
#include <string>

#include "../support/family.h"
#include "../support/words.h"

namespace kormtest {
namespace {

// --- Which sum an element gets ---

// The general path of a kernel. `group` rows are done together; r rows remain.
struct General {
    std::int32_t group;
    Sum usual;       // rows in whole groups, and the rest where nothing else stands
    Sum single;      // r = 1: the last row
    Sum nextToLast;  // r = 2: row M-2
    Sum last;        // r = 2: row M-1
    Sum three;       // r = 3: the last three rows
};

// clang-format off
// Matrix by matrix.
//                            group  usual           r = 1           r = 2: M-2      r = 2: M-1      r = 3
constexpr General mm_32f      {4, Sum::zeroStart, Sum::two2,      Sum::two2,      Sum::two2,      Sum::zeroStart};
constexpr General tt_32f      {4, Sum::zeroStart, Sum::two2,      Sum::two2,      Sum::two2,      Sum::zeroStart};
constexpr General tm_32f      {4, Sum::zeroStart, Sum::two2,      Sum::zeroStart, Sum::zeroStart, Sum::zeroStart};
constexpr General mt_32f      {4, Sum::four4,     Sum::eight8,    Sum::eight8,    Sum::four8,     Sum::four8};
constexpr General mm_64f      {4, Sum::two2,      Sum::eight8,    Sum::four8,     Sum::two8,      Sum::two8};
constexpr General zeroStart   {4, Sum::zeroStart, Sum::zeroStart, Sum::zeroStart, Sum::zeroStart, Sum::zeroStart};
constexpr General eightByEight{4, Sum::eight8,    Sum::eight8,    Sum::eight8,    Sum::eight8,    Sum::eight8};

// Matrix by vector; a rest of 3 to 7 rows is like the others.
constexpr General mv_32f      {8, Sum::four4,     Sum::eight8,    Sum::eight8,    Sum::four8,     Sum::four4};
constexpr General tv_32f      {8, Sum::zeroStart, Sum::two2,      Sum::two2,      Sum::two2,      Sum::zeroStart};
constexpr General mv_64f      {8, Sum::two2,      Sum::eight8,    Sum::four8,     Sum::two8,      Sum::two2};

// Matrix by vector, to which a vector is added.
constexpr General fourByFour  {8, Sum::four4,     Sum::four4,     Sum::four4,     Sum::four4,     Sum::four4};
constexpr General twoByTwo    {8, Sum::two2,      Sum::two2,      Sum::two2,      Sum::two2,      Sum::two2};
// clang-format on

struct KernelRow {
    const char* kernels;  // form, type and kernel kind, separated by spaces; with * all others that end so
    const char* squares;  // square orders with a path of their own
    const General* general;
};

// Matrix by matrix: the first row that names the kernel.
constexpr KernelRow matrixKernels[] = {
    // One product.
    {"mm_32f", "3456", &mm_32f},
    {"tt_32f", "3456", &tt_32f},
    {"tm_32f", "345", &tm_32f},
    {"mt_32f", "3456", &mt_32f},
    {"mt_64f_S2", "3456", &eightByEight},
    // Arrays.
    {"mam_32f mma_32f mama_32f mam_32f_L mma_32f_L mama_32f_L", "3456", &mm_32f},
    {"tam_32f tma_32f tama_32f tam_32f_L tma_32f_L tama_32f_L", "3456", &tm_32f},
    {"tat_32f tata_32f tat_32f_L tata_32f_L tta_32f", "3456", &tt_32f},
    {"mat_32f_L mta_32f mata_32f mata_32f_L", "3456", &mt_32f},
    {"mat_32f", "356", &mt_32f},
    {"mta_32f_L", "", &mt_32f},
    {"tta_32f_L", "", &tt_32f},
    {"tta_64f_L", "", &mm_64f},
    {"mata_64f", "3456", &zeroStart},
    {"mat_64f_S2 mta_64f_S2 mata_64f_S2 mat_64f_LS2 mta_64f_LS2 mata_64f_LS2", "3456", &eightByEight},
    {"mam_32f_LS2 mam_32f_P mat_32f_S2 mat_32f_LS2 mat_32f_P tam_32f_S2 tam_32f_LS2 tam_32f_P tat_32f_LS2", "3",
     &zeroStart},
    {"mama_32f_S2", "345", &zeroStart},
    {"*_64f *_64f_L", "3456", &mm_64f},
    {"*_S2 *_LS2 *_P", "3456", &zeroStart},
};

constexpr KernelRow vectorKernels[] = {
    {"mv_32f mva_32f mav_32f mava_32f mva_32f_L mav_32f_L mava_32f_L", "3456", &mv_32f},
    {"tv_32f tva_32f tav_32f tava_32f tva_32f_L tav_32f_L tava_32f_L", "3456", &tv_32f},
    {"*_64f *_64f_L", "3456", &mv_64f},
    {"mv_64f_S2 mva_64f_S2 mav_64f_S2 mava_64f_S2 mva_64f_LS2 mav_64f_LS2 mava_64f_LS2", "3456", &eightByEight},
    {"*_S2 *_LS2 *_P", "3456", &zeroStart},
};

// Matrix by vector, to which another vector is added.
constexpr KernelRow sumKernels[] = {
    {"mv_32f mva_32f mvav_32f mva_32f_L mvav_32f_L", "3456", &fourByFour},
    {"mv_64f mva_64f mvav_64f mva_64f_L mvav_64f_L", "3456", &twoByTwo},
    {"*_S2 *_LS2 *_P", "", &zeroStart},
};

// Squares of matrix by vector, in plain kernels; left to right where nothing stands.
struct SquareRow {
    const char* forms;
    Sum four, five, fiveLastRow, six;
};

// clang-format off
constexpr SquareRow vectorSquares[] = {
    {"mv_32f tv_32f",
     // 4               5: rows 0 to 3    5: row 4          6
     Sum::leftToRight, Sum::leftToRight, Sum::leftToRight, Sum::leftToRight},
    {"tv_64f tva_64f tav_64f tava_64f",
     Sum::leftToRight, Sum::leftToRight, Sum::leftToRight, Sum::leftToRight},
    {"mv_64f mva_64f mav_64f mava_64f",
     Sum::pairs,       Sum::pairs,       Sum::pairs,       Sum::pairs},
    {"tva_32f tav_32f tava_32f",
     Sum::pairs,       Sum::pairsInside, Sum::pairsInside, Sum::pairs},
    {"mva_32f mav_32f mava_32f",
     Sum::crossed,     Sum::pairsInside, Sum::crossed,     Sum::crossed},
};
// clang-format on

bool names(const char* list, const std::string& kernel) {
    for (const std::string& word : wordsOf(list)) {
        if (word == kernel) return true;
        if (word[0] == '*' && kernel.ends_with(word.substr(1))) return true;
    }
    return false;
}

std::string formAndType(const Form& form) { return form.tokens + (form.type == Type::f32 ? "_32f" : "_64f"); }

std::string kernelOf(const Form& form, bool plain) {
    switch (form.layout) {
        case Layout::standard: return formAndType(form) + (plain ? "" : "_S2");
        case Layout::list: return formAndType(form) + (plain ? "_L" : "_LS2");
        case Layout::pointer: break;
    }
    return formAndType(form) + "_P";
}

bool byVector(const Form& form) { return form.operands[1].shape == Shape::vector; }
bool addsVector(const Form& form) { return form.result() == 3; }

struct Kernel {
    const KernelRow* row = nullptr;
    const SquareRow* squares = nullptr;
};

Kernel lookUp(const Form& form, bool plain) {
    const std::string name = kernelOf(form, plain);
    Kernel kernel;
    if (addsVector(form)) {
        for (const KernelRow& row : sumKernels)
            if (kernel.row == nullptr && names(row.kernels, name)) kernel.row = &row;
    } else if (byVector(form)) {
        for (const KernelRow& row : vectorKernels)
            if (kernel.row == nullptr && names(row.kernels, name)) kernel.row = &row;
        for (const SquareRow& row : vectorSquares)
            if (plain && form.layout != Layout::pointer && names(row.forms, formAndType(form))) kernel.squares = &row;
    } else {
        for (const KernelRow& row : matrixKernels)
            if (kernel.row == nullptr && names(row.kernels, name)) kernel.row = &row;
    }
    if (kernel.row == nullptr) throw std::logic_error("no row for kernel " + name);
    return kernel;
}

// Looked up once for each form.
const Kernel& kernelFor(const Form& form, bool plain) {
    static const std::vector<std::array<Kernel, 2>> kernels = [] {
        std::vector<std::array<Kernel, 2>> result(allForms().size());
        for (const Form& one : allForms())
            if (one.family->reference == referenceProducts) result[one.index] = {lookUp(one, false), lookUp(one, true)};
        return result;
    }();
    return kernels[form.index][plain ? 1 : 0];
}

Sum sumOfRow(const Form& form, const Kernel& kernel, const Sizes& sizes, std::int32_t i) {
    const std::int32_t M = sizes.height, K = sizes.inner;
    const bool square = M == K && (byVector(form) || sizes.width == K) && K >= 3 && K <= 6;
    if (square && std::string(kernel.row->squares).find(static_cast<char>('0' + K)) != std::string::npos) {
        if (kernel.squares == nullptr || K == 3) return Sum::leftToRight;
        if (K == 4) return kernel.squares->four;
        if (K == 6) return kernel.squares->six;
        return i == 4 ? kernel.squares->fiveLastRow : kernel.squares->five;
    }
    const General& general = *kernel.row->general;
    const std::int32_t r = M % general.group;
    if (i >= M - r) {
        if (r == 1) return general.single;
        if (r == 2) return i == M - 2 ? general.nextToLast : general.last;
        if (r == 3) return general.three;
    }
    return general.usual;
}

// --- Products ---

template <class T>
void readAll(const Form& form, std::size_t operand, const std::vector<OperandValues>& operands, const Sizes& sizes,
             std::int32_t object, std::vector<T>& elements) {
    const Operand& description = form.operands[operand];
    const std::int32_t rows = sizes.of(description.rows), columns = sizes.of(description.columns);
    elements.clear();
    for (std::int32_t i = 0; i < rows; ++i)
        for (std::int32_t j = 0; j < columns; ++j)
            elements.push_back(readElement<T>(form, operand, operands[operand], sizes, object, i, j));
}

template <class T>
void run(const Form& form, const std::vector<OperandValues>& operands, const Sizes& sizes, std::int32_t first,
         std::int32_t runCount) {
    const Kernel& kernel = kernelFor(form, plainStrides(form, operands));
    const bool vector = byVector(form);
    const auto K = static_cast<std::size_t>(sizes.inner);
    const std::size_t N = vector ? 1 : static_cast<std::size_t>(sizes.width);
    std::vector<T> a, b, p(K);
    for (std::int32_t object = first; object < first + runCount; ++object) {
        readAll(form, 0, operands, sizes, object, a);
        readAll(form, 1, operands, sizes, object, b);
        for (std::int32_t i = 0; i < sizes.height; ++i) {
            const Sum sum = sumOfRow(form, kernel, sizes, i);
            for (std::size_t j = 0; j < N; ++j) {
                for (std::size_t k = 0; k < K; ++k) p[k] = a[static_cast<std::size_t>(i) * K + k] * b[k * N + j];
                T s = sumOf(sum, form.type == Type::f64, p);
                if (addsVector(form)) s = s + readElement<T>(form, 2, operands[2], sizes, object, 0, i);
                const auto column = static_cast<std::int32_t>(j);
                // The elements of a vector are its columns.
                const std::size_t result = form.result();
                writeElement(form, result, operands[result], sizes, object, vector ? 0 : i, vector ? i : column, s);
            }
        }
    }
}

}  // namespace

Sum productSum(const Form& form, bool plain, const Sizes& sizes, std::int32_t i) {
    return sumOfRow(form, kernelFor(form, plain), sizes, i);
}

std::int32_t referenceProducts(const Form& form, const std::vector<OperandValues>& operands, const Sizes& sizes,
                               std::int32_t first, std::int32_t runCount) {
    if (form.type == Type::f32) run<float>(form, operands, sizes, first, runCount);
    else run<double>(form, operands, sizes, first, runCount);
    return 0;
}

}  // namespace kormtest
