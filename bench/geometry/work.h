// What one row of the geometry benchmark works on, and who competes in it.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

namespace bench {

// One function, called for one object after the other. Every object has 16 floats of its own in every operand,
// at a multiple of 16 bytes, as some peers ask for.
struct Calls {
    static constexpr int objects = 32;
    static constexpr int floats = 16;

    float* inputs[4];
    float* result;
    float scalars[8];  // by value, in the order of the arguments
};

// One call for many vectors, or a loop over them.
struct Batch {
    const float* matrix;  // for projections: that of world * view * projection
    const float* projection;
    const float* view;
    const float* world;
    const float* source;
    float* result;
    std::int32_t sourceStride;  // in bytes
    std::int32_t resultStride;
    std::int32_t count;
    float viewport[4];  // width, height, nearest and farthest depth
};

template <class Work>
struct Contender {
    const char* name;
    void (*run)(const Work&);
    bool isPeer = true;  // or the library, or a control
};

template <class Work>
struct Row {
    std::string name;
    int resultFloats;  // of each object; they are compared
    int inputs;        // floats of each vector in memory, of a batch
    int outputs;
    std::vector<Contender<Work>> contenders;  // the library first
};

using CallRow = Row<Calls>;
using BatchRow = Row<Batch>;

std::vector<CallRow> callRows();
std::vector<BatchRow> batchRows();

// The peers that this program was built with add themselves to the rows they compete in.
void addGlmCalls(std::vector<CallRow>& rows);
void addCglmCalls(std::vector<CallRow>& rows);
void addLoops(std::vector<BatchRow>& rows);
void addGlmBatches(std::vector<BatchRow>& rows);
void addGlmSimdBatches(std::vector<BatchRow>& rows);
void addCglmBatches(std::vector<BatchRow>& rows);

// A contender of the row with this name. A name that no row has is a mistake in a table.
template <class Work>
void compete(std::vector<Row<Work>>& rows, const std::string& name, const char* who, void (*run)(const Work&)) {
    for (Row<Work>& row : rows)
        if (row.name == name) {
            row.contenders.push_back({who, run, true});
            return;
        }
    throw std::string("no row is called ") + name;
}

}  // namespace bench
