// Whether the objects of an array of eigenproblems go on in groups or one by one.
#pragma once

#include <algorithm>
#include <cstddef>
#include <cstring>

#include "eigen/twins.h"
#include "kernel/scalar.h"

namespace korm::inline KORM_VARIANT::eigen {

// How many of a group's steps each lane needed, and how many the group took.
template <class S>
struct LaneUse {
    S needed = all<S>(0);
    std::ptrdiff_t taken = 0;

    [[gnu::always_inline]] void add(MaskOf<S> lanes, std::ptrdiff_t steps) {
        needed += chosen(lanes, all<S>(static_cast<ElementOf<S>>(steps)), all<S>(0));
        taken += steps;
    }
    float neededByAll() const {
        ElementOf<S> each[lanesOf<S>], sum = 0;
        std::memcpy(each, &needed, sizeof each);
        for (const ElementOf<S> steps : each) sum += steps;
        return static_cast<float>(sum);
    }
    float takenByAll() const { return static_cast<float>(lanesOf<S> * taken); }
};

// A group is as slow as its slowest object. Where objects of an array differ so much that lanes mostly wait, the next ones go
// one by one, until a group is tried again; if that waits, too, twice as many.
class Pace {
public:
    // `least` is the share of steps that must be needed.
    explicit Pace(float least) : least_(least) {}

    // False where the next objects go one by one, and where `group(use)`, which solves them together, says so.
    template <class S, class Group>
    [[gnu::always_inline]] bool tryGroup(const Group& group) {
        if (singly_ > 0) {
            --singly_;
            return false;
        }
        LaneUse<S> use;
        const bool isDone = group(use);
        note(use);
        return isDone;
    }

private:
    template <class S>
    void note(const LaneUse<S>& use) {
        constexpr float kept = 0.75F;
        needed_ = kept * needed_ + use.neededByAll();
        taken_ = kept * taken_ + use.takenByAll();
        if (needed_ < least_ * taken_) {
            needed_ = taken_ = 0;
            singly_ = pause_;
            pause_ = std::min(2 * pause_, 1024);
        } else if (use.taken > 0) {
            pause_ = 16;
        }
    }

    float least_;
    float needed_ = 0, taken_ = 0;
    int singly_ = 0;  // groups whose objects go one by one
    int pause_ = 16;
};

}  // namespace korm::inline KORM_VARIANT::eigen
