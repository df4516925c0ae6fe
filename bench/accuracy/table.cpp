#include "table.h"

#include <korm.h>

#include <algorithm>
#include <cmath>
#include <cstdio>

#include "ratios.h"

namespace bench {
namespace {

std::string text(double ratio) {
    if (!std::isfinite(ratio)) return "NaN";
    char digits[32];
    std::snprintf(digits, sizeof digits, ratio < 1e4 ? (ratio < 9.95 ? "%.1f" : "%.0f") : "%.0e", ratio);
    return digits;
}

// What is no number is above the threshold, too.
std::string marked(double ratio) {
    return ratio <= threshold ? text(ratio) : std::string("**").append(text(ratio)).append("**");
}

const char* nameOf(int status) {
    switch (status) {
        case korStatusNotPositiveDefinite: return "NotPositiveDefinite";
        case korStatusDivideByZero: return "DivideByZero";
        case korStatusSingular: return "Singular";
        case korStatusNoConvergence: return "NoConvergence";
        case korStatusNearSingularBlock: return "NearSingularBlock";
        default: return "other";
    }
}

}  // namespace

Table::Row& Table::rowOf(const std::string& name) {
    for (Row& row : rows_)
        if (row.name == name) return row;
    rows_.push_back({name, {}, {}});
    return rows_.back();
}

void Table::add(const std::string& row, std::size_t at, double korm) {
    Cell& cell = rowOf(row).cells[at];
    cell.worst = worse(korm, cell.worst);
    ++cell.count;
    if (!(korm <= threshold)) ++cell.above;
}

void Table::addPeer(const std::string& row, std::size_t at, double lapack) {
    Cell& cell = rowOf(row).cells[at];
    cell.peerWorst = worse(lapack, cell.peerWorst);
    ++cell.peerCount;
}

void Table::addRefusal(const std::string& row, int status) { ++rowOf(row).refusals[status]; }

std::string Table::cellsOf(const Row& row) {
    std::string line;
    int taken = 0, above = 0;
    for (const Cell& cell : row.cells) {
        const bool isEmpty = cell.count + cell.peerCount == 0;
        line += ' ';
        if (!isEmpty) line += cell.count == 0 ? "-" : marked(cell.worst);
        if (cell.peerCount > 0) line.append(" / ").append(marked(cell.peerWorst));
        line += " |";
        taken += cell.count;
        above += cell.above;
    }
    line.append(" ").append(std::to_string(taken)).append(" | ").append(std::to_string(above)).append(" |");
    const char* separator = " ";
    for (const auto& [status, count] : row.refusals) {
        line.append(separator).append(std::to_string(count)).append(" ").append(nameOf(status));
        separator = ", ";
    }
    return line + " |";
}

void Table::print() const {
    std::printf("\n### %s\n\n|", title_.c_str());
    for (const int order : orders) std::printf(" | %d", order);
    std::printf(" | taken | above %g | refused |\n|---|", threshold);
    for (std::size_t i = 0; i < std::size(orders) + 2; ++i) std::printf("---:|");
    std::printf("---|\n");
    // Functions that come to the same, as most single and array forms do, share a row.
    struct Line {
        std::string functions, matrices, cells;
    };
    std::vector<Line> lines;
    for (const Row& row : rows_) {
        const std::size_t end = row.name.find(", ");
        Line line{row.name.substr(0, end), row.name.substr(end), cellsOf(row)};
        const auto same = std::find_if(lines.begin(), lines.end(), [&](const Line& other) {
            return other.matrices == line.matrices && other.cells == line.cells;
        });
        if (same == lines.end()) lines.push_back(std::move(line));
        else same->functions.append(", ").append(line.functions);
    }
    for (const Line& line : lines)
        std::printf("| %s%s |%s\n", line.functions.c_str(), line.matrices.c_str(), line.cells.c_str());
}

}  // namespace bench
