#include <bit>

#include "move/move.h"
#include "move/overlap.h"
#include "move/rows.h"

namespace korm::inline KORM_VARIANT::move {
namespace {

template <class Word>
inline constexpr Word one = std::bit_cast<Word>(std::conditional_t<sizeof(Word) == 4, float, double>(1));

// Objects of at most so many elements are copies of one that is made first.
constexpr std::ptrdiff_t smallObject = 256;

// Rows are written in order, the element on the diagonal behind the others of its row. `element` tells where they lie.
template <class Word, class F>
[[gnu::always_inline]] inline void writeIdentity(const Extent& extent, const F& element) {
    for (std::ptrdiff_t i = 0; i < extent.rows; ++i) {
        for (std::ptrdiff_t j = 0; j < extent.columns; ++j) store(element(i, j), Word{0});
        if (i < extent.columns) store(element(i, i), one<Word>);
    }
}

template <class Word>
void writeEach(const Side& to, const Extent& extent) {
    for (std::ptrdiff_t k = 0; k < extent.objects; ++k) {
        if (to.isTable()) {
            writeIdentity<Word>(extent, [&](std::ptrdiff_t i, std::ptrdiff_t j) { return to.element(i, j, k); });
            continue;
        }
        std::byte* row = to.object(k);
        for (std::ptrdiff_t i = 0; i < extent.rows; ++i, row += to.rowStride) {
            if (to.elementStride == sizeOf<Word>)
                std::memset(row, 0, static_cast<std::size_t>(extent.columns * sizeOf<Word>));
            else
                for (std::ptrdiff_t j = 0; j < extent.columns; ++j) store(row + j * to.elementStride, Word{0});
            if (i < extent.columns) store(row + i * to.elementStride, one<Word>);
        }
    }
}

}  // namespace

template <class Word>
void loadIdentities(const Side& to, const Extent& extent) {
    if (extent.rows * extent.columns > smallObject) return writeEach<Word>(to, extent);
    Word elements[smallObject];
    auto* const first = reinterpret_cast<std::byte*>(elements);
    const std::ptrdiff_t row = extent.columns * sizeOf<Word>;
    writeIdentity<Word>(extent, [&](std::ptrdiff_t i, std::ptrdiff_t j) { return first + i * row + j * sizeOf<Word>; });
    const Side object{Side::Layout::standard, {first}, 0, 0, row, sizeOf<Word>};
    // Where elements of a table's row meet, the one on the diagonal is the last to be written.
    if (to.isTable() && !mayReorder(object, to, extent, sizeOf<Word>, Listed::inParts))
        return writeEach<Word>(to, extent);
    moveObjects<Word>(object, to, extent, Order::objects);
}

template void loadIdentities<std::uint32_t>(const Side&, const Extent&);
template void loadIdentities<std::uint64_t>(const Side&, const Extent&);

}  // namespace korm::inline KORM_VARIANT::move
