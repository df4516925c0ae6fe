#include <sys/mman.h>

#include <stdexcept>

#include "../support/scene.h"
#include "../support/thread_number.h"
#include "routines.h"

namespace kormtest {
namespace {

// Two strides of it pass 2^31 and two and a half pass 2^32, as signed and unsigned products would notice.
constexpr std::int64_t farStride = 0x60000000;
constexpr std::int64_t spots = 3;
constexpr std::size_t spotBytes = 16 * pageSize;

// Address space with a few pages of memory at each multiple of the far stride.
class FarRoom {
public:
    FarRoom() {
        void* const memory = mmap(nullptr, bytes(), PROT_NONE, MAP_PRIVATE | MAP_ANONYMOUS | MAP_NORESERVE, -1, 0);
        if (memory == MAP_FAILED) throw std::runtime_error("no address space for far objects");
        begin_ = static_cast<std::byte*>(memory);
        for (std::int64_t i = 0; i < spots; ++i) {
            if (mprotect(spot(i).begin, spotBytes, PROT_READ | PROT_WRITE) != 0)
                throw std::runtime_error("mprotect failed");
        }
    }
    FarRoom(const FarRoom&) = delete;
    FarRoom& operator=(const FarRoom&) = delete;
    ~FarRoom() { munmap(begin_, bytes()); }

    Stretch spot(std::int64_t i) const {
        std::byte* const begin = begin_ + static_cast<std::ptrdiff_t>(i * farStride);
        return {begin, begin + spotBytes};
    }

private:
    static constexpr std::size_t bytes() { return static_cast<std::size_t>((spots - 1) * farStride) + spotBytes; }
    std::byte* begin_ = nullptr;
};

struct Strides {
    std::int64_t object, row, element;
};

// Packed but for the dimension in question.
Strides stridesFor(const Form& form, const Operand& operand, const Sizes& sizes, Role farRole) {
    const std::int64_t size = form.elementSize();
    const bool far = operand.shape == Shape::matrix || farRole != Role::rowStride;
    const std::int64_t columns = sizes.of(operand.storedColumns());
    const std::int64_t rows = sizes.of(operand.storedRows());
    Strides strides{size * columns * rows, size * columns, size};
    if (!far) return strides;
    if (farRole == Role::objectStride) strides.object = farStride;
    if (farRole == Role::rowStride) strides = {columns * size, farStride, size};
    if (farRole == Role::elementStride) strides = {rows * size, size, farStride};
    return strides;
}

[[maybe_unused]] Placed placeFar(Arena& arena, const FarRoom& room, const Form& form, std::size_t index,
                                 const Sizes& sizes, Role farRole, Random& random) {
    const Operand& operand = form.operands[index];
    const Strides strides = stridesFor(form, operand, sizes, farRole);
    Placed placed;
    placed.values.objectStride = static_cast<std::int32_t>(strides.object);
    placed.values.rowStride = static_cast<std::int32_t>(strides.row);
    placed.values.elementStride = static_cast<std::int32_t>(strides.element);
    for (std::int64_t i = 0; i < spots; ++i) arena.addWindow(room.spot(i), room.spot(i).begin, room.spot(i).end);
    std::byte* const begin = room.spot(0).begin;
    const bool constant = operand.shape == Shape::constant;
    if (operand.layout == Layout::pointer && !constant) {
        const std::int32_t entries = sizes.of(operand.rows) * sizes.of(operand.columns);
        for (std::int32_t i = 0; i < entries; ++i) placed.entries.push_back(begin + i * form.elementSize());
    } else if (operand.layout == Layout::list && operand.array) {
        for (std::int32_t k = 0; k < sizes.count; ++k)
            placed.entries.push_back(
                begin + (constant ? k * form.elementSize() : static_cast<std::ptrdiff_t>(k * strides.object)));
    }
    placed.values.base = placed.entries.empty() ? begin : placeTable(arena, index, placed.entries.size(), random);
    return placed;
}

}  // namespace

Verdict checkFarObjects(const Form& form, const Library& library, const Options& options) {
    static_assert(sizeof(void*) >= 4);
    if constexpr (sizeof(void*) == 8) {
        static const FarRoom rooms[Arena::operandCount];
        Arena& arena = threadArena();
        Random random = options.random(form, 0, 4);
        for (const Role role : {Role::objectStride, Role::rowStride, Role::elementStride}) {
            if (!form.hasRole(role)) continue;
            for (const bool large : {false, true}) {
                SceneOptions scene;
                scene.sizes = {3, 3, 3, 3, 3, 3};
                // Beyond every limit the driver shifts the arguments itself.
                if (large && role == Role::objectStride) scene.sizes = {20, 30, 900, 3, 10, 24};
                arena.clearWindows();
                std::vector<Placed> placed(form.operands.size());
                for (std::size_t index = 0; index < placed.size(); ++index) {
                    const Operand& operand = form.operands[index];
                    if (operand.byValue()) continue;
                    placed[index] = operand.dense
                                        ? placeOperand(arena, form, index, scene.sizes, {}, random)
                                        : placeFar(arena, rooms[index], form, index, scene.sizes, role, random);
                }
                Random values(random.next());
                const Scene made(arena, form, scene, placed, random, values);
                scriptThreadNumbers({large ? 3 : 1});
                const bool forks = large && made.reachesDriver();
                Verdict verdict = made.run(library, 0, forks, forks ? 3 : 1);
                if (!verdict.ok) {
                    verdict.message = "far objects: " + verdict.message;
                    return verdict;
                }
            }
        }
    }
    return Verdict::pass();
}

}  // namespace kormtest
