// What the tables forms_*.cpp are made of: one table for each subsystem, one row for each group of forms.
#pragma once

#include <optional>
#include <span>
#include <vector>

#include "../reference/sums.h"
#include "forms.h"
#include "random.h"

namespace kormtest {

struct OperandValues;

// Does on real memory what the form should do with `runCount` objects from `first` on, and returns the status.
using Reference = std::int32_t (*)(const Form& form, const std::vector<OperandValues>& operands, const Sizes& sizes,
                                   std::int32_t first, std::int32_t runCount);

// Writes what the inputs should hold over the random elements that stand there. `special` asks for
// infinities, NaN and the like among them.
using Filler = void (*)(const Form& form, std::vector<OperandValues>& operands, const Sizes& sizes, bool special,
                        Random& values);

// What groups of forms have in common.
struct Family {
    // Operands, sizes beside an operand (src1Width, src1Height, src2Length) and sizes of the form in the order of
    // the arguments; count is left out where there is no array.
    const char* signature;
    // Gives the operands that the name tells of their names and extents, and adds those that it doesn't tell of.
    void (*shape)(Form& form);
    const char* (*usualChecks)(const Form& form);
    Reference reference;
    Filler fill = nullptr;
    // The operations of a call, about, so that tests keep calls short. None: the elements of the result.
    std::int64_t (*work)(const Sizes& sizes) = nullptr;
    // The result may take the place of an untransposed source; of some sizes only, where there is a function.
    bool inPlace = false;
    bool (*inPlaceFor)(const Sizes& sizes) = nullptr;
    // Elements of a source may share memory.
    bool mayCollide = true;
    // A NaN keeps its bits; without it a NaN is a NaN.
    bool nanBits = false;
    // Contiguous single vectors that overlap in any way are done in ascending order, element by element.
    bool stepwise = false;
    // Statuses that depend on the data.
    bool mayFail = false;
    // Each pair of layouts of source and result is a form, and their letters end its name.
    bool layoutPairs = false;
    // The entry function does the work: there are no kernels with names of their own.
    bool withoutKernels = false;
    // One kernel for any stride, in every layout.
    bool oneKernel = false;
    // Operands may overlap in any way: each element is written before the next is read.
    bool movesForward = false;
    // Matrices have at least as many rows as columns; sizes match where they do.
    bool tall = false;
    // Results that depend on where operands lie or on the processor: they have no digest. None: all are fixed.
    bool (*fixedBits)(const Form& form, const Sizes& sizes, bool plain) = nullptr;
    // Results that are sums of products: the order in which element i of a result is added.
    Sum (*sum)(const Form& form, bool plain, const Sizes& sizes, std::int32_t i) = nullptr;
};

enum class Compare : std::uint8_t {
    none,        // no driver
    below,       // serial while the estimate is below the number
    overIsFork,  // serial while the estimate is at most the number
};

// Numbers by layout and type; plain and general stand side by side where a form has both.
struct LimitRow {
    Compare compare;
    Limit standard32, standard64, list32, list64, pointer32, pointer64;
};

constexpr Limit both(std::int32_t n) { return {n, n}; }

// One limit in all layouts and types.
constexpr LimitRow everywhere(Compare compare, std::int32_t number) {
    return {compare, both(number), both(number), both(number), both(number), both(number), both(number)};
}

struct GroupRow {
    const char* operation;
    const char* tokens;  // separated by spaces
    const Family* family;
    Estimate estimate;
    const LimitRow* limits;
};

// A departure from the check order that layout and arrays give. type 0 means both; a row for one layout of the result
// says which.
struct OrderRow {
    const char* operation;
    const char* tokens;
    int type;
    Layout layout;
    const char* checks;
    std::optional<Layout> resultLayout = std::nullopt;
};

struct Table {
    std::span<const GroupRow> groups;
    std::span<const OrderRow> orders;
    // Forms that have no driver although their siblings have one.
    std::span<const char* const> withoutDriver;
};

Table arithForms();
Table productForms();
Table vectorForms();
Table movementForms();
Table linalgForms();
Table eigenForms();
Table qrForms();
Table generalEigenForms();

// --- Helpers of the tables ---

inline std::uint32_t u(std::int32_t value) { return static_cast<std::uint32_t>(value); }
inline std::int32_t wrapped(std::uint32_t value) { return static_cast<std::int32_t>(value); }

// Sizes that don't match take each other's place.
void matchSizes(const Form& form, Sizes& sizes);

// Adds an operand that the name doesn't tell of.
Operand& addOperand(Form& form, const char* name, Shape shape, Extent rows, Extent columns, Operand::Use use);

}  // namespace kormtest
