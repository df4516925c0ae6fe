// What is printed: for each ratio the worst of each order, korm's before LAPACK's, and what korm refused.
#pragma once
#include <map>
#include <string>
#include <vector>

namespace bench {

inline constexpr int orders[] = {1, 2, 3, 4, 5, 6, 10, 16, 32};
inline constexpr double threshold = 30;  // LAPACK's own: its test programs report what is above

class Table {
public:
    explicit Table(std::string title) : title_(std::move(title)) {}

    // The ratio of one matrix of orders[at]. LAPACK has none where there is nothing to hold it against.
    void add(const std::string& row, std::size_t at, double korm);
    void addPeer(const std::string& row, std::size_t at, double lapack);
    void addRefusal(const std::string& row, int status);
    void print() const;

private:
    struct Cell {
        int count = 0, peerCount = 0, above = 0;
        double worst = 0, peerWorst = 0;
    };
    struct Row {
        std::string name;
        Cell cells[std::size(orders)];
        std::map<int, int> refusals;  // status, matrices
    };
    Row& rowOf(const std::string& name);
    static std::string cellsOf(const Row& row);

    std::string title_;
    std::vector<Row> rows_;
};

}  // namespace bench
