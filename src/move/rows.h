// Rows of elements on their way from one place to another, with the outcome of the plain loop: each element is written
// before the next is read. That lets a result which begins inside its source, behind it, repeat what it has written.
#pragma once

#include <cstring>

#include "kernel/walk.h"
#include "move/move.h"
#include "move/words.h"

namespace korm::inline KORM_VARIANT::move {

// Elements at fixed distances.
template <class Word>
inline void moveElements(std::byte* to, std::ptrdiff_t toStep, const std::byte* from, std::ptrdiff_t fromStep,
                         std::ptrdiff_t n) {
    ElementWalk source{from, fromStep};
    ElementWalk result{to, toStep};
    inRounds(
        n, [&](auto number) __attribute__((always_inline)) {
            unrolled<number>([&](auto i) __attribute__((always_inline)) {
                store(result.template address<i>(), load<Word>(source.template address<i>()));
            });
            source.moveOn(number);
            result.moveOn(number);
        });
}

// The row's result begins in the row itself, where elements of so many bytes repeat the piece in front of it.
[[gnu::noinline]] inline void repeatRow(std::byte* to, const std::byte* from, std::ptrdiff_t bytes,
                                        std::ptrdiff_t size) {
    const std::ptrdiff_t period = to - from;
    if (period == 0) return;
    if (period < 16) {
        if (size == 4) return moveElements<std::uint32_t>(to, 4, from, 4, bytes / 4);
        return moveElements<std::uint64_t>(to, 8, from, 8, bytes / 8);
    }
    for (std::ptrdiff_t done = 0; done < bytes; done += period)
        std::memcpy(to + done, from + done, static_cast<std::size_t>(std::min(period, bytes - done)));
}

// The ways of moving a row of adjacent elements, by its number of bytes. All that a short row holds is loaded before
// anything is stored, so that the row may overlap a result in front of it.
template <int bytes>
struct ShortRow {  // exactly so many
    [[gnu::always_inline]] void operator()(std::byte* to, const std::byte* from, std::ptrdiff_t) const {
        storeFirst<bytes>(to, loadFirst<bytes>(from));
    }
};

template <int bytes>
struct OverlappingHalves {  // of so many bytes each
    [[gnu::always_inline]] void operator()(std::byte* to, const std::byte* from, std::ptrdiff_t n) const {
        const Bits first = loadFirst<bytes>(from), last = loadFirst<bytes>(from + n - bytes);
        storeFirst<bytes>(to, first);
        storeFirst<bytes>(to + n - bytes, last);
    }
};

struct ThreeVectors {  // of 33 to 48 bytes
    [[gnu::always_inline]] void operator()(std::byte* to, const std::byte* from, std::ptrdiff_t n) const {
        const Bits a = loadBits(from), b = loadBits(from + 16), c = loadBits(from + n - 16);
        storeBits(to, a);
        storeBits(to + 16, b);
        storeBits(to + n - 16, c);
    }
};

struct FourVectors {  // of 49 to 64 bytes
    [[gnu::always_inline]] void operator()(std::byte* to, const std::byte* from, std::ptrdiff_t n) const {
        const Bits a = loadBits(from), b = loadBits(from + 16), c = loadBits(from + 32), d = loadBits(from + n - 16);
        storeBits(to, a);
        storeBits(to + 16, b);
        storeBits(to + 32, c);
        storeBits(to + n - 16, d);
    }
};

// The C library knows how long runs are moved best on the processor at hand.
inline constexpr std::ptrdiff_t longRow = 1024;

struct AnyRow {
    [[gnu::always_inline]] void operator()(std::byte* to, const std::byte* from, std::ptrdiff_t n) const {
        if (n >= longRow) {
            std::memmove(to, from, static_cast<std::size_t>(n));
            return;
        }
        const Bits last = loadBits(from + n - 16);
        std::ptrdiff_t at = 0;
        for (; at < n - 16; at += 16) storeBits(to + at, loadBits(from + at));
        storeBits(to + n - 16, last);
    }
};

// Calls f with the way that is right for rows of so many bytes.
template <class F>
[[gnu::always_inline]] inline void forRowsOf(std::ptrdiff_t bytes, const F& f) {
    switch (bytes) {
        case 4: return f(ShortRow<4>{});
        case 8: return f(ShortRow<8>{});
        case 12: return f(ShortRow<12>{});
        case 16: return f(ShortRow<16>{});
        default: break;
    }
    if (bytes <= 32) f(OverlappingHalves<16>{});
    else if (bytes <= 48) f(ThreeVectors{});
    else if (bytes <= 64) f(FourVectors{});
    else f(AnyRow{});
}

// One row of adjacent elements of so many bytes.
template <class Way>
[[gnu::always_inline]] inline void moveRow(std::byte* to, const std::byte* from, std::ptrdiff_t bytes,
                                           std::ptrdiff_t size, const Way& way) {
    const auto ahead = static_cast<std::size_t>(to - from);
    if (ahead < static_cast<std::size_t>(bytes)) [[unlikely]]
        repeatRow(to, from, bytes, size);
    else way(to, from, bytes);
}

// n elements at any distances.
template <class Word>
inline void moveRun(std::byte* to, std::ptrdiff_t toStep, const std::byte* from, std::ptrdiff_t fromStep,
                    std::ptrdiff_t n) {
    if (toStep != sizeOf<Word> || fromStep != sizeOf<Word>) return moveElements<Word>(to, toStep, from, fromStep, n);
    moveBlock(to, from, n * sizeOf<Word>, sizeOf<Word>);
}

// Elements that lie apart, in rows of a number that is known.
template <class Word, int n>
[[gnu::always_inline]] inline void moveFew(std::byte* to, std::ptrdiff_t toStep, const std::byte* from,
                                           std::ptrdiff_t fromStep) {
    unrolled<n>([&](auto i)
                    __attribute__((always_inline)) { store(to + i * toStep, load<Word>(from + i * fromStep)); });
}

}  // namespace korm::inline KORM_VARIANT::move
