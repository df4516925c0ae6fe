// Times contenders that do the same work, in turns, after their results have been compared.
#pragma once

#include <cstddef>
#include <cstdio>
#include <functional>
#include <string>
#include <vector>

namespace linalgbench {

struct Options {
    bool quick = false;
    std::string filter;  // part of a row's name
};
extern Options options;

struct Contender {
    std::string name;
    std::function<void()> run;
    // What one value of its result is; all contenders' values are compared with those of the first.
    std::function<double(std::size_t)> value;
};

// The first contender is the library.
struct Row {
    std::string name;
    std::size_t objects = 0;
    std::size_t values = 0;  // how many to compare
    double tolerance = 0;    // relative to the largest value
    std::vector<Contender> contenders;
};

struct Measured {
    std::string row;
    std::vector<std::string> names;
    std::vector<double> nanoseconds;  // of one object
};

// Nothing is measured, and `measured` stays as it is, when the name doesn't pass the filter. A difference of results is
// printed and remembered.
void measure(const Row& row, std::vector<Measured>& measured);

bool resultsDiffered();

// The rows as elements of a JSON array.
void writeRows(std::FILE* to, const std::vector<Measured>& measured);

// Cycles of this processor in a nanosecond, from a chain of additions that takes one each.
double cyclesPerNanosecond();

// Cycles between two independent multiplications of the x87 unit.
double x87MultiplicationCycles();

}  // namespace linalgbench
