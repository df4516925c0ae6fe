// The tables of docs/numerics.md, for tests that hold the library against what it tells.
#pragma once

#include <string>
#include <vector>

namespace kormtest {

std::vector<std::string> split(const std::string& text, char separator);

// The line of the page tells which rows were of use.
struct PageRow {
    std::vector<std::string> cells;
    int line;
};

struct PageTable {
    std::vector<std::string> header;
    std::vector<PageRow> rows;
};

// The one with these headings; throws if the page has none.
const PageTable& pageTable(const std::string& firstHeading, const std::string& secondHeading);

}  // namespace kormtest
