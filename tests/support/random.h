// A small generator with the same sequence on every target and standard library. Its choices can also be given to it as
// bytes, which is how a fuzzer steers them.
#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <initializer_list>
#include <span>
#include <utility>
#include <vector>

namespace kormtest {

// SplitMix64: passes the usual batteries, one word of state, any seed is good.
class Random {
public:
    explicit Random(std::uint64_t seed) : state_(seed) {}

    // Choices are made of the bytes as long as there are any, of the seed from then on.
    Random(std::span<const std::uint8_t> choices, std::uint64_t seed) : choices_(choices), state_(seed) {}

    std::uint64_t next() {
        if (!choices_.empty()) return take(8);
        std::uint64_t z = (state_ += 0x9e3779b97f4a7c15u);
        z = (z ^ (z >> 30)) * 0xbf58476d1ce4e5b9u;
        z = (z ^ (z >> 27)) * 0x94d049bb133111ebu;
        return z ^ (z >> 31);
    }

    // A number in [low, high].
    std::int32_t between(std::int32_t low, std::int32_t high) {
        const auto span = static_cast<std::uint64_t>(static_cast<std::int64_t>(high) - low) + 1;
        const std::uint64_t chosen = choices_.empty() ? next() >> 16 : take(span <= 256 ? 1 : span <= 65536 ? 2 : 4);
        return static_cast<std::int32_t>(low + static_cast<std::int64_t>(chosen % span));
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

    // A generator of its own for what is decided next. It gets the bytes that are left, but for those of a few choices.
    Random branch() {
        if (choices_.empty()) return Random(next());
        constexpr std::size_t kept = 96;
        const auto rest = choices_.subspan(std::min(kept, choices_.size()));
        choices_ = choices_.first(choices_.size() - rest.size());
        return {rest, state_ + 1};
    }

private:
    std::uint64_t take(std::size_t bytes) {
        std::uint64_t value = 0;
        for (std::size_t i = 0; i < bytes && !choices_.empty(); ++i, choices_ = choices_.subspan(1))
            value |= std::uint64_t{choices_[0]} << 8 * i;
        return value;
    }

    std::span<const std::uint8_t> choices_;
    std::uint64_t state_;
};

inline std::uint64_t mixSeed(std::uint64_t a, std::uint64_t b) { return Random(a * 0x2545f4914f6cdd1du + b).next(); }

}  // namespace kormtest
