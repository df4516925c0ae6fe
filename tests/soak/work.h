// What the callers of a soak do: a fixed list of calls, each with the digest that it has when nothing else happens.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

#include "../support/forms.h"
#include "../support/random.h"

namespace kormtest {

// One call of a form or a function of fixed size; sizes, places and values follow from its name and number.
struct Work {
    std::string name;
    const Form* form = nullptr;  // none: a function of fixed size
    std::uint64_t number = 0;
    bool large = false;  // beyond the limit of the serial kernel
};

inline constexpr std::int32_t largestTeam = 4;

// A small call of every function, and one that forks of every form that can.
std::vector<Work> allWork();

// Makes the call with teams of that many threads. The digest is of status and results.
std::uint64_t digestOfWork(const Work& work, std::int32_t threads);

// The same for a large call with scratch of its own while no memory can be had. Tells whether it asked for the thread number
// twice, as calls that get their scratch do.
struct StarvedCall {
    std::uint64_t digest = 0;
    bool forked = false;
};
StarvedCall starvedCall(const Work& work, std::int32_t threads);

}  // namespace kormtest
