// The tables of forms_table.cpp, one row per group of forms.
#pragma once

#include <span>

#include "forms.h"

namespace kormtest {

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

struct GroupRow {
    const char* operation;
    const char* tokens;  // separated by spaces
    Estimate estimate;
    const LimitRow* limits;
};

// A departure from the check order that layout and arrays give. type 0 means both.
struct OrderRow {
    const char* operation;
    const char* tokens;
    int type;
    Layout layout;
    const char* checks;
};

std::span<const GroupRow> groupRows();
std::span<const OrderRow> orderRows();

// The order of a form that has no row of its own.
const char* usualOrder(Layout layout, bool array);

// Forms that have no driver although their siblings have one.
bool lacksDriver(std::string_view name);

}  // namespace kormtest
