#include "placement.h"

#include <algorithm>
#include <numeric>
#include <stdexcept>

namespace kormtest {
namespace {

struct Dimension {
    Role role;
    std::int64_t n;
    std::int64_t stride = 0;
};

// How an operand is made up: `items` places that a table names (1 without a table), each holding a
// lattice of elements with the dimensions from slow to fast.
struct MakeUp {
    std::int64_t items = 1;
    bool table = false;
    std::vector<Dimension> lattice;
};

MakeUp makeUpOf(const Operand& operand, const Sizes& sizes) {
    MakeUp result;
    result.lattice.reserve(3);
    const Dimension objects{Role::objectStride, sizes.count};
    const bool constant = operand.shape == Shape::constant;
    const bool matrix = operand.shape == Shape::matrix;
    const std::int64_t rows = sizes.of(operand.storedRows());
    const std::int64_t columns = sizes.of(operand.storedColumns());
    if (operand.dense) {
        result.lattice.push_back({Role::elementStride, rows * columns * (operand.array ? sizes.count : 1)});
        return result;
    }
    if (operand.layout == Layout::pointer && !constant) {
        result.table = true;
        result.items = rows * columns;
        if (operand.array) result.lattice.push_back(objects);
        return result;
    }
    if (operand.layout == Layout::list && operand.array) {
        result.table = true;
        result.items = sizes.count;
    } else if (operand.array) {
        result.lattice.push_back(objects);
    }
    if (matrix) result.lattice.push_back({Role::rowStride, rows});
    if (!constant) result.lattice.push_back({Role::elementStride, columns});
    return result;
}

class Placer {
public:
    Placer(Arena& arena, const Form& form, std::size_t index, const Sizes& sizes, const PlacementOptions& options,
           Random& random)
        : arena_(arena),
          index_(index),
          options_(options),
          random_(random),
          size_(form.sizeOf(form.operands[index])),
          dense_(form.operands[index].dense),
          table_(form.operands[index].layout == Layout::pointer),
          makeUp_(makeUpOf(form.operands[index], sizes)) {}

    Placed place() {
        if (options_.thin) placeThin();
        else if (!(options_.mayComb && random_.chance(15) && placeInComb())) placeInField();
        Placed placed;
        for (const Dimension& dimension : makeUp_.lattice) {
            const auto stride = static_cast<std::int32_t>(strideOrHuge(dimension));
            if (dimension.role == Role::objectStride) placed.values.objectStride = stride;
            if (dimension.role == Role::rowStride) placed.values.rowStride = stride;
            if (dimension.role == Role::elementStride) placed.values.elementStride = stride;
        }
        placed.values.base = positions_[0];
        if (makeUp_.table) {
            placed.values.offset = randomOffset();
            placed.entries = positions_;
            placed.values.base = placeTable(arena_, index_, positions_.size(), random_);
        }
        return placed;
    }

private:
    bool fixedToElement(const Dimension& dimension) const {
        return dimension.role == Role::elementStride && (options_.plain || dense_);
    }

    // A stride that is never multiplied by more than 0 may be large, and any number where it isn't checked either.
    std::int64_t strideOrHuge(const Dimension& dimension) {
        const bool unchecked = options_.anyLoneStride && dimension.role == Role::objectStride;
        if (dimension.n == 1 && unchecked && random_.chance(70))
            return random_.chance(50) ? random_.between(-9, 9) : random_.between(INT32_MIN, INT32_MAX);
        if (dimension.n > 1 || fixedToElement(dimension) || options_.thin || !random_.chance(5))
            return dimension.stride;
        return static_cast<std::int64_t>(random_.between(1, 0x7fffffff / size_)) * size_;
    }

    std::int32_t randomOffset() {
        if (options_.anyOffset && random_.chance(60)) return random_.between(-4096, 4096);
        if (random_.chance(40)) return 0;
        return size_ * random_.between(1, random_.chance(90) ? 64 : 1 << 18);
    }

    std::int64_t roundUp(std::int64_t value) const { return aligned_ ? (value + 15) / 16 * 16 : value; }

    // Strides of lattice dimensions [from, end), so that no two elements meet. Returns the extent.
    std::int64_t assignStrides(std::size_t from, bool loose) {
        auto& lattice = makeUp_.lattice;
        std::vector<std::size_t> order(lattice.size() - from);
        std::iota(order.begin(), order.end(), from);
        std::reverse(order.begin(), order.end());
        const bool collide = loose && options_.mayCollide && random_.chance(10);
        if (loose && random_.chance(20)) {
            // Contiguous elements must stay the fastest dimension of a plain operand.
            const bool pinned = !order.empty() && fixedToElement(lattice[order[0]]);
            std::vector<std::size_t> rest(order.begin() + (pinned ? 1 : 0), order.end());
            random_.shuffle(rest);
            std::copy(rest.begin(), rest.end(), order.begin() + (pinned ? 1 : 0));
        }
        const bool packed = random_.chance(40);
        std::int64_t next = size_;
        std::int64_t extent = size_;
        for (const std::size_t at : order) {
            Dimension& dimension = lattice[at];
            std::int64_t stride = next;
            if (fixedToElement(dimension)) stride = size_;
            else if (collide) stride = static_cast<std::int64_t>(size_) * random_.between(1, 4);
            else if (loose && !packed && random_.chance(70))
                stride += static_cast<std::int64_t>(size_) * random_.between(1, 5);
            if (dimension.role != Role::elementStride) stride = roundUp(stride);
            dimension.stride = stride;
            extent += (dimension.n - 1) * stride;
            next = std::max(next, stride * dimension.n);
        }
        return extent;
    }

    // Where the data begin in a room, touching one of its ends or at a chosen address modulo 16.
    std::byte* beginIn(Stretch room, std::int64_t extent) {
        const auto space = static_cast<std::int64_t>(room.size()) - extent;
        const bool right = random_.chance(60);
        std::int64_t begin = right ? space : 0;
        if (aligned_) begin = begin / 16 * 16;
        else if (random_.chance(30)) begin += (right ? -1 : 1) * std::min<std::int64_t>(random_.between(0, 31), space);
        return room.begin + begin;
    }

    bool placeInComb() {
        const auto teeth = static_cast<std::int64_t>(Arena::toothCount);
        auto& lattice = makeUp_.lattice;
        std::int64_t used = makeUp_.items;
        std::size_t outer = 0;
        if (used > teeth) return false;
        if (!makeUp_.table) {
            // The slow dimensions step from tooth to tooth, the fast ones stay in one.
            const auto wanted = static_cast<std::size_t>(random_.between(1, static_cast<std::int32_t>(lattice.size())));
            while (outer < wanted && !fixedToElement(lattice[outer]) && used * lattice[outer].n <= teeth)
                used *= lattice[outer++].n;
            if (outer == 0) return false;
        }
        const std::int64_t extent = assignStrides(outer, true);
        if (extent > static_cast<std::int64_t>(pageSize)) return false;
        std::int64_t stride = Arena::toothPitch;
        for (std::size_t at = outer; at-- > 0; stride *= lattice[at].n) lattice[at].stride = stride;
        std::vector<std::size_t> order(static_cast<std::size_t>(used));
        std::iota(order.begin(), order.end(), 0u);
        if (makeUp_.table) random_.shuffle(order);
        std::byte* const origin = arena_.tooth(index_, 0).begin;
        const std::ptrdiff_t inside = beginIn(arena_.tooth(index_, 0), extent) - origin;
        for (const std::size_t tooth : order) {
            const Stretch room = arena_.tooth(index_, tooth);
            std::byte* const begin = room.begin + inside;
            if (makeUp_.table || tooth == 0) positions_.push_back(begin);
            arena_.addWindow(room, begin, begin + extent);
        }
        return true;
    }

    void placeInField() {
        aligned_ = random_.chance(25);
        // Padding may not fit for long operands: then the plainest arrangement.
        if (!tryField(true)) {
            aligned_ = false;
            if (!tryField(false)) throw std::logic_error("operand too large for its field");
        }
    }

    bool tryField(bool loose) {
        std::int64_t extent = assignStrides(0, loose);
        const std::int64_t items = makeUp_.items;
        std::int64_t pitch = roundUp(extent);
        bool interleaved = false;
        if (loose && table_ && makeUp_.table &&
            (options_.adjacentEntries || (!makeUp_.lattice.empty() && random_.chance(50)))) {
            // The entries of a table as one object after the other.
            interleaved = true;
            pitch = static_cast<std::int64_t>(size_) * (options_.adjacentEntries ? 1 : random_.between(1, 3));
            if (!makeUp_.lattice.empty()) {
                std::int64_t step = pitch * items;
                if (random_.chance(30)) step += static_cast<std::int64_t>(size_) * random_.between(1, 4);
                makeUp_.lattice[0].stride = roundUp(step);
                extent = size_ + (makeUp_.lattice[0].n - 1) * makeUp_.lattice[0].stride;
            }
        } else if (loose && random_.chance(60)) {
            // Objects of a list may lie anywhere, at any byte.
            pitch +=
                random_.chance(70) ? static_cast<std::int64_t>(size_) * random_.between(0, 4) : random_.between(0, 15);
        }
        const std::int64_t total = extent + (items - 1) * pitch;
        const Stretch room = arena_.field(index_);
        if (total > static_cast<std::int64_t>(room.size())) return false;
        std::byte* const begin = beginIn(room, total);
        std::vector<std::int64_t> order(static_cast<std::size_t>(items));
        std::iota(order.begin(), order.end(), 0);
        if (!interleaved && loose && random_.chance(50)) random_.shuffle(order);
        for (const std::int64_t item : order) positions_.push_back(begin + item * pitch);
        if (options_.mayCollide && loose && items > 1 && random_.chance(10))
            positions_[0] = positions_[static_cast<std::size_t>(items) - 1];
        arena_.addWindow(room, begin, begin + total);
        return true;
    }

    void placeThin() {
        std::int64_t extent = size_;
        for (Dimension& dimension : makeUp_.lattice) {
            // Twice the element size where the general kernel is wanted.
            dimension.stride = dimension.role == Role::elementStride && !fixedToElement(dimension) ? 2 * size_ : size_;
            extent += (dimension.n - 1) * dimension.stride;
        }
        const Stretch room = arena_.field(index_);
        if (extent > static_cast<std::int64_t>(room.size())) throw std::logic_error("operand too large for its field");
        positions_.assign(static_cast<std::size_t>(makeUp_.items), room.begin);
        arena_.addWindow(room, room.begin, room.begin + extent);
    }

    Arena& arena_;
    std::size_t index_;
    const PlacementOptions& options_;
    Random& random_;
    std::int32_t size_;
    bool dense_;
    bool table_;
    MakeUp makeUp_;
    bool aligned_ = false;
    std::vector<std::byte*> positions_;
};

}  // namespace

Placed placeOperand(Arena& arena, const Form& form, std::size_t operandIndex, const Sizes& sizes,
                    const PlacementOptions& options, Random& random) {
    return Placer(arena, form, operandIndex, sizes, options, random).place();
}

std::byte* placeTable(Arena& arena, std::size_t operandIndex, std::size_t entries, Random& random) {
    const Stretch room = arena.table(operandIndex);
    const std::size_t bytes = entries * sizeof(std::byte*);
    if (bytes > room.size()) throw std::logic_error("table too large");
    std::byte* const table = random.chance(70) ? room.end - bytes : room.begin;
    arena.addWindow(room, table, table + bytes);
    return table;
}

}  // namespace kormtest
