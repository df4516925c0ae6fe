// Results whose order of evaluation is open: a reference tells how far each may be off instead of its bits.
#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

namespace kormtest {

struct OpenElement {
    std::byte* at = nullptr;
    long double middle = 0;
    long double radius = 0;  // infinite: anything will do
    std::uint64_t bits = 0;  // what the reference wrote there
    std::size_t size = 0;
};

// Those of this thread's last reference.
std::vector<OpenElement>& openElements();

}  // namespace kormtest
