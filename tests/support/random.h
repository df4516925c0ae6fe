// A small generator with the same sequence on every target and standard library.
#pragma once

#include <cstdint>
#include <initializer_list>
#include <utility>
#include <vector>

namespace kormtest {

// SplitMix64: passes the usual batteries, one word of state, any seed is good.
class Random {
public:
    explicit Random(std::uint64_t seed) : state_(seed) {}

    std::uint64_t next() {
        std::uint64_t z = (state_ += 0x9e3779b97f4a7c15u);
        z = (z ^ (z >> 30)) * 0xbf58476d1ce4e5b9u;
        z = (z ^ (z >> 27)) * 0x94d049bb133111ebu;
        return z ^ (z >> 31);
    }

    // A number in [low, high].
    std::int32_t between(std::int32_t low, std::int32_t high) {
        const auto span = static_cast<std::uint64_t>(static_cast<std::int64_t>(high) - low) + 1;
        return static_cast<std::int32_t>(low + static_cast<std::int64_t>((next() >> 16) % span));
    }

    // True in `percent` of a hundred cases.
    bool chance(std::int32_t percent) { return between(0, 99) < percent; }

    template <class T>
    T pick(std::initializer_list<T> values) {
        return values.begin()[between(0, static_cast<std::int32_t>(values.size()) - 1)];
    }

    template <class T>
    T pick(const std::vector<T>& values) {
        return values[static_cast<std::size_t>(between(0, static_cast<std::int32_t>(values.size()) - 1))];
    }

    template <class Container>
    void shuffle(Container& items) {
        for (std::size_t i = items.size(); i > 1; --i)
            std::swap(items[i - 1], items[static_cast<std::size_t>(between(0, static_cast<std::int32_t>(i) - 1))]);
    }

private:
    std::uint64_t state_;
};

inline std::uint64_t mixSeed(std::uint64_t a, std::uint64_t b) { return Random(a * 0x2545f4914f6cdd1du + b).next(); }

}  // namespace kormtest
