#include "numerics_page.h"

#include <fstream>
#include <sstream>
#include <stdexcept>

namespace kormtest {
namespace {

std::string trimmed(const std::string& text) {
    const auto first = text.find_first_not_of(' '), last = text.find_last_not_of(' ');
    return first == std::string::npos ? "" : text.substr(first, last - first + 1);
}

std::vector<PageTable> readTables() {
    std::ifstream file(KORM_NUMERICS_PAGE);
    if (!file) throw std::runtime_error("can't read " KORM_NUMERICS_PAGE);
    std::vector<PageTable> tables;
    bool inTable = false;
    int number = 0;
    for (std::string line; std::getline(file, line);) {
        ++number;
        const bool isRow = line.starts_with("|");
        if (isRow && !line.starts_with("|---")) {
            const auto cells = split(line.substr(1), '|');
            if (inTable) tables.back().rows.push_back({cells, number});
            else tables.push_back({cells, {}});
        }
        inTable = isRow;
    }
    return tables;
}

}  // namespace

std::vector<std::string> split(const std::string& text, char separator) {
    std::vector<std::string> parts;
    std::istringstream stream(text);
    for (std::string part; std::getline(stream, part, separator);) parts.push_back(trimmed(part));
    return parts;
}

const PageTable& pageTable(const std::string& firstHeading, const std::string& secondHeading) {
    static const std::vector<PageTable> tables = readTables();
    for (const PageTable& one : tables)
        if (one.header.size() > 1 && one.header[0] == firstHeading && one.header[1] == secondHeading) return one;
    throw std::runtime_error("the page has no table of " + firstHeading + " and " + secondHeading);
}

}  // namespace kormtest
