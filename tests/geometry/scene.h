// One call of a function of fixed size: its operands in an arena, the call, and the comparison with the reference.
#pragma once

#include <optional>

#include "../support/arena.h"
#include "../support/call.h"
#include "../support/random.h"
#include "../support/verdict.h"
#include "functions.h"

namespace kormtest {

enum class Spot : std::uint8_t {
    any,        // one of the following by chance
    pageEnd,    // the last byte is the last before an inaccessible page
    pageBegin,  // the first byte is the first behind an inaccessible page
    middle,     // at a multiple of 4, between canaries
    aligned,    // at a multiple of 16, between canaries
    unaligned,  // at any address, between canaries
    comb,       // each vector of an array in a page of its own between inaccessible pages
};

struct GeometryOptions {
    std::int32_t count = 1;
    int alias = -1;  // the input that lies where the result goes
    Spot inputSpot = Spot::any;
    Spot dstSpot = Spot::any;
    std::optional<std::int32_t> inputStride, dstStride;
    bool special = true;  // infinities, NaNs, denormals among the elements
    bool nullOptional = false;
    // Angles whose sine and cosine every good library rounds to the same number.
    bool clearAngles = false;
};

class GeometryScene {
public:
    GeometryScene(Arena& arena, const GeometryFunction& function, const GeometryOptions& options, Random& places,
                  Random& values);

    std::vector<CallValue> arguments() const;
    // Calls, and compares status, result, every byte around all operands, and the call frame.
    Verdict run(void* code, unsigned stackShift = 0) const;
    // The elements of the results, NaNs made equal.
    std::vector<std::byte> resultBytes() const;
    std::string describe() const;

    // May the input and the result be one memory with these strides?
    static bool mayAlias(const GeometryFunction& function, std::size_t argument);

private:
    struct Place {
        std::byte* base = nullptr;
        std::int32_t stride = 0;
        std::uint32_t constantBits = 0;
    };

    std::int32_t vectors(std::size_t argument) const;
    std::byte* element(std::size_t argument, std::int32_t k, std::int32_t i) const;
    template <class Visit>
    void visitResults(Visit&& visit) const;
    void choosePlace(std::size_t argument, std::size_t operand, Spot spot, std::optional<std::int32_t> stride,
                     Random& places);
    void place(Random& places);
    void fillValues(Random& values);
    void writeElements(std::size_t argument, std::int32_t k, const std::vector<float>& elements) const;
    Inputs inputs(std::int32_t k) const;
    std::int32_t applyReference(std::vector<std::vector<double>>& slack, bool& eitherStatus) const;
    void makeNansEqual() const;

    Arena& arena_;
    const GeometryFunction& function_;
    const GeometryOptions options_;
    std::vector<Place> places_;
    bool torn_ = false;  // elements of neighbouring results overlap in part
};

// A stride of an array of vectors, of every kind that callers have: packed, 12, 16, with gaps, backwards, none.
std::int32_t randomStride(std::int32_t elements, Random& random);

}  // namespace kormtest
