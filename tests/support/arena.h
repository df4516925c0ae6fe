// Memory for the operands of one call, with inaccessible pages wherever nothing may be touched.
//
// Each operand owns three places:
//   field   one stretch of pages between two guard pages
//   comb    many single pages, each between guard pages: rows, objects or elements get a page of their own
//   tables  one stretch between guard pages, for pointer tables and lists
//
// Bytes around the operand are filled with random canaries, so that a stray read gives a wrong result and
// a stray write is seen even where no guard page stands.
#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

#include "random.h"

namespace kormtest {

inline constexpr std::size_t pageSize = 4096;

struct Stretch {
    std::byte* begin = nullptr;
    std::byte* end = nullptr;
    std::size_t size() const { return static_cast<std::size_t>(end - begin); }
};

class Arena {
public:
    static constexpr std::size_t operandCount = 6;
    static constexpr std::size_t fieldBytes = 1024 * 1024;
    static constexpr std::size_t tableBytes = 1024 * 1024;
    static constexpr std::size_t toothCount = 100;
    static constexpr std::size_t toothPitch = 2 * pageSize;

    Arena();
    Arena(const Arena&) = delete;
    Arena& operator=(const Arena&) = delete;
    ~Arena();

    Stretch field(std::size_t operand) const { return fields_[operand]; }
    Stretch table(std::size_t operand) const { return tables_[operand]; }
    Stretch tooth(std::size_t operand, std::size_t index) const;

    // An address whose surroundings of 64 KiB on both sides fault when touched.
    std::byte* nowhere() const { return nowhere_; }

    // --- Windows: the bytes that are filled before a call and compared after it ---

    void clearWindows() { windows_.clear(); }
    // Adds [begin, end) widened by a margin, as far as `room` goes.
    void addWindow(Stretch room, const std::byte* begin, const std::byte* end);
    void fillWindows(Random& random);
    bool insideWindows(const std::byte* address, std::size_t size) const;

    std::vector<std::byte> snapshot() const;
    void restore(const std::vector<std::byte>& image) const;
    // MemorySanitizer: are the bytes of all windows ones that nobody has written?
    void setAllUnwritten() const;
    void setAllWritten() const;
    // The first byte that differs from the image, nullptr if none does.
    const std::byte* firstDifference(const std::vector<std::byte>& image) const;

private:
    std::byte* reservation_ = nullptr;
    std::size_t reserved_ = 0;
    std::vector<Stretch> fields_, tables_, combs_;
    std::byte* nowhere_ = nullptr;
    std::vector<Stretch> windows_;
};

// One arena for each thread that runs test cases: mapping is slow, filling isn't.
Arena& threadArena();

}  // namespace kormtest
