// What korm.plan tells: the forms that an operation calls, and the operands that it copies.
#pragma once

#include <string>
#include <vector>

namespace korm::python {

struct Plan {
    std::vector<const char*> functions;
    std::vector<std::string> copied;  // as a whole, before or after the calls
    std::vector<std::string> blocks;  // a block at a time, into scratch that stays in the cache
};

// Where it is set, operations on this thread tell what they would do, and neither copy nor compute.
inline thread_local Plan* plan = nullptr;

template <class List, class Item>
void addOnce(List& list, const Item& item) {
    for (const auto& present : list)
        if (present == item) return;
    list.push_back(item);
}

}
