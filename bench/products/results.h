// The figures of a run, and the file that the report is made from.
#pragma once

#include <string>
#include <utility>
#include <vector>

namespace bench::products {

struct Row {
    std::string name;
    int order;
    int objects;
    std::vector<std::pair<std::string, double>> nanoseconds;  // of one call, by contender
    std::string error;                                        // the contender whose results differ
};

// Also says on standard error how it went.
void addResult(const Row& row);

using Context = std::vector<std::pair<std::string, std::string>>;
bool writeResults(const std::string& file, const Context& context);

}  // namespace bench::products
