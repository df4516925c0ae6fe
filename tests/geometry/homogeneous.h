// kormAffineTransform3DH_mva_32f: the one geometry function with strides for everything, checks and a parallel driver.
#pragma once

#include <array>
#include <optional>
#include <vector>

#include "../routines/routines.h"
#include "../support/arena.h"
#include "../support/call.h"
#include "../support/verdict.h"

namespace kormtest {

inline constexpr const char* homogeneousName = "kormAffineTransform3DH_mva_32f";

// Its arguments by name, with the letter of the check that looks at each: N null, C count, T stride.
struct HomogeneousArgument {
    const char* name;
    char check;
};
extern const std::array<HomogeneousArgument, 10> homogeneousArguments;
inline constexpr const char* homogeneousOrder = "NCT";

// Does a call of this many vectors go to the driver? The estimate wraps at 32 bits.
bool homogeneousReachesDriver(std::int32_t count);

struct HomogeneousOptions {
    std::int32_t count = 1;
    std::optional<bool> plain;  // all element strides 4, or at least one other
    bool inPlace = false;
    std::int32_t degeneratePercent = 10;  // vectors that are sent to infinity
    bool special = true;
};

class HomogeneousScene {
public:
    HomogeneousScene(Arena& arena, const HomogeneousOptions& options, Random& places, Random& values);
    std::vector<CallValue> arguments() const;
    // With `mayFork` a fault can't be caught and ends the program, by name.
    Verdict run(void* code, unsigned stackShift, bool mayFork) const;
    std::vector<std::byte> resultBytes() const;
    std::string describe() const;

    // The effect of a correct call on the memory that the arguments name; returns the status.
    static std::int32_t apply(const std::vector<CallValue>& arguments);

private:
    struct Place {
        std::byte* base = nullptr;
        std::int32_t outer = 4;    // row or object stride
        std::int32_t element = 4;  // element stride
    };
    Place choosePlace(std::size_t operand, std::int32_t outerCount, std::int32_t elementCount, bool plain, bool apart,
                      Random& places);
    void fillValues(Random& values);
    void makeNansEqual() const;
    std::byte* resultElement(std::int32_t k, std::int32_t i) const;

    Arena& arena_;
    const HomogeneousOptions options_;
    Place matrix_, source_, result_;
};

Verdict checkHomogeneousResults(const Library& library, const Options& options);
Verdict checkHomogeneousBadArguments(const Library& library, const Options& options);
Verdict checkHomogeneousThreshold(const Library& library, const Options& options, bool mayFault);
Verdict checkHomogeneousTeams(const Library& library, const Options& options);
Verdict checkHomogeneousCallFrame(const Library& library, const Options& options);

// Single cases; all choices are the generator's.
Verdict homogeneousCase(const Library& library, Random& random);
Verdict homogeneousBadArgumentsCase(const Library& library, Random& random);

}  // namespace kormtest
