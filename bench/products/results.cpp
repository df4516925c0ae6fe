#include "results.h"

#include <cstdio>

namespace bench::products {
namespace {

std::vector<Row> rows;

std::string quoted(const std::string& text) {
    std::string result = "\"";
    for (const char c : text) {
        if (c == '"' || c == '\\') result += '\\';
        result += c;
    }
    return result + "\"";
}

}  // namespace

void addResult(const Row& row) {
    rows.push_back(row);
    if (!row.error.empty()) {
        std::fprintf(stderr, "%-28s results differ: %s\n", row.name.c_str(), row.error.c_str());
        return;
    }
    std::fprintf(stderr, "%-28s", row.name.c_str());
    for (const auto& [name, time] : row.nanoseconds)
        std::fprintf(stderr, "  %s %.2f", name.c_str(), time / static_cast<double>(row.objects));
    std::fprintf(stderr, "\n");
}

bool writeResults(const std::string& file, const Context& context) {
    std::FILE* const out = std::fopen(file.c_str(), "w");
    if (out == nullptr) return false;
    std::fputs("{\"context\": {", out);
    const char* separator = "";
    for (const auto& [key, value] : context) {
        std::fprintf(out, "%s%s: %s", separator, quoted(key).c_str(), quoted(value).c_str());
        separator = ", ";
    }
    std::fputs("},\n\"rows\": [", out);
    separator = "\n";
    for (const Row& row : rows) {
        std::fprintf(out, "%s{\"name\": %s, \"order\": %d, \"objects\": %d, \"error\": %s, \"ns\": {", separator,
                     quoted(row.name).c_str(), row.order, row.objects, quoted(row.error).c_str());
        separator = "";
        for (const auto& [name, time] : row.nanoseconds) {
            std::fprintf(out, "%s%s: %.3f", separator, quoted(name).c_str(), time);
            separator = ", ";
        }
        std::fputs("}}", out);
        separator = ",\n";
    }
    std::fputs("\n]}\n", out);
    return std::fclose(out) == 0;
}

}  // namespace bench::products
