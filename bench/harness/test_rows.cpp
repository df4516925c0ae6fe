// Rows whose outcome is known, for test_benchmarks.py.
#include "row.h"

namespace bench {
namespace {

float results[4];

Run writes(float last) {
    return [=] { results[0] = 1, results[1] = 2, results[3] = last; };
}

void row(const std::string& name, std::size_t used, float kormLast, float peerLast, double tolerance) {
    if (!isWanted(name)) return;
    Row row(name, 2);
    row.results(results, 4, used, 4, tolerance);
    row.fact("gap", 4.0 - static_cast<double>(used));
    row.korm(writes(kormLast));
    row.peer("peer", writes(peerLast));
    row.control("control", [] { results[0] = 77; });
    row.measure();
}

}  // namespace

void measureRows() {
    note("peer", "a \"quoted\" name");
    row("right/Equal_32f/4", 4, 3, 3, 0);
    row("right/Close_32f/4", 4, 1000, 1000.5F, 1e-3);
    row("right/Unused_32f/4", 3, 3, 4, 0);
    row("wrong/Close_32f/4", 4, 1000, 1001.5F, 1e-3);
    row("wrong/Equal_32f/4", 4, 3, 3.0000002F, 0);
    if (isWanted("wrong/Missing_32f/4")) {
        Row missing("wrong/Missing_32f/4", 1);
        missing.results(results, 4, 0);
        missing.korm(writes(3));
        missing.peer("peer", [] {});  // what the library left must not count as its results
        missing.measure();
    }
}

}  // namespace bench
