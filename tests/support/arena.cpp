#include "arena.h"

#include <sys/mman.h>

#include <algorithm>
#include <cstring>
#include <memory>
#include <stdexcept>

#include "checker.h"

namespace kormtest {
namespace {

// Wide enough for a whole round of any unrolled loop.
constexpr std::size_t margin = 128;
constexpr std::size_t nowhereBytes = 128 * 1024;

void open(std::byte* begin, std::size_t size) {
    if (mprotect(begin, size, PROT_READ | PROT_WRITE) != 0) throw std::runtime_error("mprotect failed");
}

}  // namespace

Arena::Arena() {
    const std::size_t fieldPitch = fieldBytes + pageSize;
    const std::size_t tablePitch = tableBytes + pageSize;
    const std::size_t combBytes = toothCount * toothPitch;
    reserved_ = pageSize + operandCount * (fieldPitch + tablePitch + combBytes) + nowhereBytes;
    void* const memory = mmap(nullptr, reserved_, PROT_NONE, MAP_PRIVATE | MAP_ANONYMOUS | MAP_NORESERVE, -1, 0);
    if (memory == MAP_FAILED) throw std::runtime_error("mmap failed");
    reservation_ = static_cast<std::byte*>(memory);
    std::byte* at = reservation_ + pageSize;
    for (std::size_t i = 0; i < operandCount; ++i) {
        open(at, fieldBytes);
        fields_.push_back({at, at + fieldBytes});
        at += fieldPitch;
        open(at, tableBytes);
        tables_.push_back({at, at + tableBytes});
        at += tablePitch;
        combs_.push_back({at, at + combBytes});
        for (std::size_t tooth = 0; tooth < toothCount; ++tooth) open(at + tooth * toothPitch, pageSize);
        at += combBytes;
    }
    nowhere_ = at + nowhereBytes / 2;
}

Arena::~Arena() { munmap(reservation_, reserved_); }

Stretch Arena::tooth(std::size_t operand, std::size_t index) const {
    if (index >= toothCount) throw std::logic_error("not that many teeth");
    std::byte* const begin = combs_[operand].begin + index * toothPitch;
    return {begin, begin + pageSize};
}

void Arena::addWindow(Stretch room, const std::byte* begin, const std::byte* end) {
    const auto before = std::min(margin, static_cast<std::size_t>(begin - room.begin));
    const auto after = std::min(margin, static_cast<std::size_t>(room.end - end));
    if (begin < room.begin || end > room.end) throw std::logic_error("operand outside of its room");
    const auto offset = static_cast<std::size_t>(begin - room.begin) - before;
    windows_.push_back({room.begin + offset, room.begin + (end - room.begin) + after});
}

void Arena::fillWindows(Random& random) {
    for (const Stretch& window : windows_) {
        std::byte* at = window.begin;
        for (; at + 8 <= window.end; at += 8) {
            const std::uint64_t word = random.next();
            std::memcpy(at, &word, 8);
        }
        for (; at < window.end; ++at) *at = static_cast<std::byte>(random.next());
    }
}

bool Arena::insideWindows(const std::byte* address, std::size_t size) const {
    return std::any_of(windows_.begin(), windows_.end(),
                       [&](const Stretch& window) { return address >= window.begin && address + size <= window.end; });
}

std::vector<std::byte> Arena::snapshot() const {
    std::vector<std::byte> image;
    for (const Stretch& window : windows_) image.insert(image.end(), window.begin, window.end);
    return image;
}

void Arena::restore(const std::vector<std::byte>& image) const {
    const std::byte* at = image.data();
    for (const Stretch& window : windows_) {
        std::memcpy(window.begin, at, window.size());
        at += window.size();
    }
}

void Arena::setAllUnwritten() const {
    for (const Stretch& window : windows_) setUnwritten(window.begin, window.size());
}

void Arena::setAllWritten() const {
    for (const Stretch& window : windows_) setWritten(window.begin, window.size());
}

const std::byte* Arena::firstDifference(const std::vector<std::byte>& image) const {
    const std::byte* at = image.data();
    for (const Stretch& window : windows_) {
        if (std::memcmp(window.begin, at, window.size()) != 0) return std::mismatch(window.begin, window.end, at).first;
        at += window.size();
    }
    return nullptr;
}

Arena& threadArena() {
    thread_local std::unique_ptr<Arena> arena;
    if (!arena) arena = std::make_unique<Arena>();
    return *arena;
}

}  // namespace kormtest
