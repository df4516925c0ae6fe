#include <algorithm>
#include <stdexcept>

#include "../support/family.h"
#include "../support/scene.h"
#include "../support/thread_number.h"
#include "routines.h"

namespace kormtest {
namespace {

// Many small objects, or a few large ones.
Sizes largeSizes(const Form& form, Random& random) {
    Sizes sizes;
    const bool many = form.array && random.chance(60);
    const std::int32_t edge = many ? 9 : 150;
    sizes.width = random.between(1, edge);
    sizes.height = random.chance(30) ? sizes.width : random.between(1, edge);
    sizes.length = random.between(1, many ? 40 : 5000);
    const std::int32_t elements = form.has(Extent::length) ? sizes.length : sizes.width * sizes.height;
    if (form.array) sizes.count = many ? random.between(1, std::min(3000, 20000 / elements)) : random.between(1, 3);
    return sizes;
}

Verdict numbered(Verdict verdict, const char* routine, int number) {
    if (!verdict.ok)
        verdict.message = std::string(routine) + ": " + verdict.message + ", case " + std::to_string(number);
    return verdict;
}

// Operands in one stretch of memory, with strides that may be far too small.
class Crowded {
public:
    Crowded(Arena& arena, const Form& form, const Sizes& sizes, Random& random)
        : form_(form), sizes_(sizes), random_(random), room_{arena.field(0).begin, arena.field(0).begin + roomBytes} {
        arena.clearWindows();
        arena.addWindow(arena.field(0), room_.begin, room_.end);
        for (std::size_t index = 0; index < form.operands.size(); ++index) {
            placed_.push_back(place(form.operands[index]));
            const std::size_t entries = placed_.back().entries.size();
            if (entries > 0) placed_.back().values.base = placeTable(arena, index, entries, random);
        }
    }

    const std::vector<Placed>& placed() const { return placed_; }

private:
    static constexpr std::int64_t roomBytes = 32 * 1024;

    std::int32_t elements(std::int32_t low, std::int32_t high) {
        return form_.elementSize() * random_.between(low, high);
    }

    // Packed behind `inner` bytes, with a gap, or too close.
    std::int32_t strideBehind(std::int32_t inner) {
        if (random_.chance(50)) return inner;
        return random_.chance(50) ? inner + elements(1, 4) : elements(1, std::max(inner / form_.elementSize(), 1));
    }

    // Near the middle of the room, so that operands meet.
    std::byte* somewhere(std::int64_t extent) {
        const std::int64_t size = form_.elementSize();
        const std::int64_t space = roomBytes - extent;
        if (space < 0) throw std::logic_error("operand too large for the room");
        const auto reach = static_cast<std::int32_t>(std::min<std::int64_t>(space / 2, random_.chance(50) ? 64 : 2000));
        std::int64_t at = space / 2 + random_.between(-reach, reach);
        if (random_.chance(70)) at = at / size * size;
        return room_.begin + at;
    }

    Placed place(const Operand& operand) {
        const std::int32_t size = form_.elementSize();
        const std::int32_t columns = sizes_.of(operand.storedColumns()), rows = sizes_.of(operand.storedRows());
        const std::int32_t objects = operand.array ? sizes_.count : 1;
        Placed result;
        OperandValues& values = result.values;
        if (operand.layout == Layout::pointer && !operand.dense) {
            values.objectStride = random_.chance(60) ? size : size * random_.between(1, rows * columns + 1);
            const std::int32_t stream = (objects - 1) * values.objectStride + size;
            placeEntries(result, rows * columns, stream);
            return result;
        }
        values.elementStride = operand.dense || random_.chance(60) ? size : elements(1, 3);
        values.rowStride = operand.dense ? columns * size : strideBehind(columns * values.elementStride);
        const std::int32_t object = (rows - 1) * values.rowStride + (columns - 1) * values.elementStride + size;
        values.objectStride =
            operand.dense ? rows * values.rowStride : strideBehind(std::max(object, rows * values.rowStride));
        if (!operand.dense && operand.array && random_.chance(10)) {
            // Elements as streams over the objects.
            values.objectStride = size;
            values.elementStride = size * objects;
            values.rowStride = values.elementStride * columns;
        }
        if (operand.layout == Layout::list && operand.array && !operand.dense) placeEntries(result, objects, object);
        else values.base = somewhere(object + static_cast<std::int64_t>(objects - 1) * values.objectStride);
        return result;
    }

    void placeEntries(Placed& result, std::int32_t entries, std::int32_t extent) {
        const std::int32_t size = form_.elementSize();
        std::int32_t step = random_.chance(40) ? extent : random_.chance(50) ? size : elements(0, 2);
        if (std::int64_t{entries} * step + extent > roomBytes) step = 0;
        std::byte* const first = somewhere(extent + std::int64_t{entries - 1} * step);
        const bool scattered = random_.chance(25);
        for (std::int32_t at = 0; at < entries; ++at)
            result.entries.push_back(scattered ? somewhere(extent) : first + static_cast<std::ptrdiff_t>(at) * step);
        if (random_.chance(20)) random_.shuffle(result.entries);
        result.values.offset = elements(0, 5);
    }

    const Form& form_;
    const Sizes& sizes_;
    Random& random_;
    Stretch room_;
    std::vector<Placed> placed_;
};

}  // namespace

bool hasLargeMoves(const Form& form) { return form.operationWord == "Transpose" || form.family->movesForward; }

Verdict largeMoveCase(const Form& form, const Library& library, Random& random) {
    SceneOptions scene;
    scene.sizes = largeSizes(form, random);
    scene.plain = random.chance(70);
    scene.special = random.chance(20);
    Random values = random.branch();
    const Scene made(threadArena(), form, scene, random, values);
    scriptThreadNumbers({4});
    Verdict verdict = made.run(library, 0, false);
    if (verdict.ok && threadNumberQuestions() != 0) verdict = Verdict::fail("asked for the thread number");
    return verdict;
}

Verdict checkLargeMoves(const Form& form, const Library& library, const Options& options) {
    for (int number = 0; number < options.share(80); ++number) {
        Random random = options.random(form, number, 8);
        if (Verdict verdict = largeMoveCase(form, library, random); !verdict.ok)
            return numbered(verdict, "large moves", number);
    }
    return Verdict::pass();
}

bool hasForwardRule(const Form& form) { return form.family->movesForward; }

Verdict forwardMoveCase(const Form& form, const Library& library, Random& random) {
    SceneOptions scene;
    scene.special = false;
    scene.sizes.width = random.between(1, 9);
    scene.sizes.height = random.between(1, random.chance(50) ? 3 : 9);
    scene.sizes.length = random.chance(80) ? random.between(1, 12) : random.between(1, 100);
    if (random.chance(10)) scene.sizes.width = random.between(10, 60);
    const std::int32_t elements =
        form.has(Extent::length) ? scene.sizes.length : scene.sizes.width * scene.sizes.height;
    // Elements up to three elements apart, with gaps behind rows and objects, fit the room.
    if (form.array) scene.sizes.count = random.between(1, std::clamp(360 / elements, 1, 90));
    const Crowded crowded(threadArena(), form, scene.sizes, random);
    Random values = random.branch();
    const Scene made(threadArena(), form, scene, crowded.placed(), random, values);
    scriptThreadNumbers({1});
    return made.run(library, 0, false);
}

Verdict checkForwardMoves(const Form& form, const Library& library, const Options& options) {
    for (int number = 0; number < options.share(400); ++number) {
        Random random = options.random(form, number, 9);
        if (Verdict verdict = forwardMoveCase(form, library, random); !verdict.ok)
            return numbered(verdict, "overlapping moves", number);
    }
    return Verdict::pass();
}

}  // namespace kormtest
