#include "scene.h"

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <stdexcept>

#include "checker.h"
#include "element_values.h"
#include "family.h"
#include "fault.h"
#include "status.h"

namespace kormtest {
namespace {

std::string hex(const void* pointer) {
    char text[32];
    std::snprintf(text, sizeof text, "0x%llx",
                  static_cast<unsigned long long>(reinterpret_cast<std::uintptr_t>(pointer)));
    return text;
}

// Forms that don't check their offsets must serve any.
bool uncheckedOffset(const Form& form) {
    return form.layout == Layout::pointer && form.checks.find_first_of("Oo") == std::string::npos;
}

}  // namespace

Scene::Scene(Arena& arena, const Form& form, const SceneOptions& options, Random& places, Random& values)
    : Scene(arena, form, options, place(arena, form, options, places), places, values) {}

std::vector<Placed> Scene::place(Arena& arena, const Form& form, const SceneOptions& options, Random& places) {
    arena.clearWindows();
    std::vector<Placed> placed(form.operands.size());
    const std::size_t result = form.result();
    // Of all tables at once: some kernels take such calls for calls in the plain layout.
    const bool adjacentEntries = form.layout == Layout::pointer && !options.thin && places.chance(25);
    for (std::size_t index = form.operands.size(); index-- > 0;) {
        const Operand& operand = form.operands[index];
        if (operand.byValue()) continue;
        if (static_cast<int>(index) == options.alias) {
            placed[index] = placed[result];
            if (!operand.array && form.layout == Layout::list) {
                // A single operand that shares its place with the only object of the result.
                placed[index].entries.clear();
                placed[index].values.base = placed[result].entries[0];
            } else if (!placed[index].entries.empty() && places.chance(50)) {
                // The same table under another address serves as well as the same table.
                placed[index].values.base = placeTable(arena, index, placed[index].entries.size(), places);
            }
            continue;
        }
        PlacementOptions one;
        one.plain = options.plain || (!options.thin && places.chance(25));
        one.mayCollide = options.mayCollide && form.family->mayCollide && operand.use == Operand::Use::input;
        one.anyOffset = uncheckedOffset(form);
        one.anyLoneStride = form.checks.find('A') != std::string::npos;
        one.mayComb = options.mayComb && !adjacentEntries;
        one.adjacentEntries = adjacentEntries;
        one.thin = options.thin;
        placed[index] = placeOperand(arena, form, index, options.sizes, one, places);
    }
    return placed;
}

Scene::Scene(Arena& arena, const Form& form, const SceneOptions& options, const std::vector<Placed>& placed,
             Random& places, Random& values)
    : arena_(arena), form_(form), options_(options), operands_(form.operands.size()) {
    arena.fillWindows(places);
    for (std::size_t index = 0; index < placed.size(); ++index) {
        operands_[index] = placed[index].values;
        std::byte* at = operands_[index].base;
        const auto offset = static_cast<std::uintptr_t>(static_cast<std::intptr_t>(placed[index].values.offset));
        for (std::byte* const entry : placed[index].entries) {
            const std::uintptr_t stored = reinterpret_cast<std::uintptr_t>(entry) - offset;
            std::memcpy(at, &stored, sizeof stored);
            at += sizeof stored;
        }
    }
    for (std::size_t index = 0; index < operands_.size(); ++index) {
        const auto size = static_cast<std::size_t>(form_.sizeOf(form.operands[index]));
        visitElements(index, [&](std::byte* address) {
            if (!arena_.insideWindows(address, size))
                throw std::logic_error("element outside of its windows: " + describe());
        });
    }
    const int nanOperand = values.between(0, 2);
    for (std::size_t index = 0; index < operands_.size(); ++index) {
        if (form.operands[index].use == Operand::Use::input)
            fillValues(index, values, static_cast<int>(index) == nanOperand || !form.family->nanBits);
    }
    if (form.family->fill != nullptr) form.family->fill(form, operands_, options.sizes, options.special, values);
}

template <class Visit>
void Scene::visitElements(std::size_t operand, Visit&& visit) const {
    const Sizes& sizes = options_.sizes;
    const Operand& description = form_.operands[operand];
    if (description.byValue()) return;  // nothing in memory
    const std::int32_t rows = sizes.of(description.rows);
    const std::int32_t columns = sizes.of(description.columns);
    const std::int32_t objects = description.array ? sizes.count : 1;
    for (std::int32_t k = 0; k < objects; ++k)
        for (std::int32_t i = 0; i < rows; ++i)
            for (std::int32_t j = 0; j < columns; ++j)
                visit(elementAddress(form_, operand, operands_[operand], sizes, k, i, j));
}

void Scene::fillValues(std::size_t operand, Random& values, bool mayBeNan) {
    Mood mood = Mood::ordinary;
    if (options_.special) mood = values.pick({Mood::ordinary, Mood::wide, Mood::mixed, Mood::mixed});
    const Operand& description = form_.operands[operand];
    if (description.byValue()) {
        operands_[operand].constantBits = randomElement(form_.type, mood, mayBeNan, values);
        return;
    }
    const auto size = static_cast<std::size_t>(form_.sizeOf(description));
    visitElements(operand, [&](std::byte* address) {
        const std::uint64_t bits = randomElement(form_.type, mood, mayBeNan, values);
        std::memcpy(address, &bits, size);
    });
}

bool Scene::mayAlias(const Form& form, std::size_t operand, const Sizes& sizes) {
    const Operand& description = form.operands[operand];
    const Family& family = *form.family;
    if (!family.inPlace || (family.inPlaceFor != nullptr && !family.inPlaceFor(sizes))) return false;
    if (description.use != Operand::Use::input || description.kind != Operand::Kind::element) return false;
    const Operand& result = form.operands[form.result()];
    if (description.shape != result.shape || description.transposed || description.layout != result.layout)
        return false;
    return description.array == form.array || sizes.count == 1;
}

std::int64_t Scene::argumentValue(const Argument& argument) const {
    switch (argument.role) {
        case Role::size:
        case Role::count: return options_.sizes.of(argument.extent);
        case Role::pointer:
        case Role::value: return 0;
        default: break;
    }
    const OperandValues& values = operands_[static_cast<std::size_t>(argument.operand)];
    switch (argument.role) {
        case Role::objectStride: return values.objectStride;
        case Role::rowStride: return values.rowStride;
        case Role::elementStride: return values.elementStride;
        default: return values.offset;
    }
}

std::vector<CallValue> Scene::arguments() const {
    std::vector<CallValue> result;
    for (const Argument& argument : form_.arguments) {
        if (argument.role == Role::pointer || argument.role == Role::value) {
            const OperandValues& values = operands_[static_cast<std::size_t>(argument.operand)];
            if (argument.role == Role::pointer) result.push_back(CallValue::pointer(values.base));
            else if (form_.type == Type::f64) result.push_back(CallValue::realBits(values.constantBits));
            else result.push_back(CallValue::singleBits(static_cast<std::uint32_t>(values.constantBits)));
            continue;
        }
        result.push_back(CallValue::integer(static_cast<std::int32_t>(argumentValue(argument))));
    }
    return result;
}

bool Scene::plain() const { return plainStrides(form_, operands_); }

bool Scene::reachesDriver() const {
    if (!form_.driver) return false;
    return form_.estimate(options_.sizes) > (plain() ? form_.limit.plain : form_.limit.general);
}

// The driver's division of the objects: the first runs get one more. A run that fails stops, the others don't.
// Of a team, the failure that is met first wins, and each may be that.
std::vector<std::int32_t> Scene::reference(std::int32_t team) const {
    const std::int32_t count = form_.array ? options_.sizes.count : 1;
    std::vector<std::int32_t> failures;
    for (std::int32_t member = 0, first = 0; member < team && first < count; ++member) {
        const std::int32_t share = count / team + (member < count % team ? 1 : 0);
        const std::int32_t found = form_.family->reference(form_, operands_, options_.sizes, first, share);
        if (found != status::ok) failures.push_back(found);
        first += share;
    }
    return failures.empty() ? std::vector<std::int32_t>{status::ok} : failures;
}

// A value that lies where an open one may lie gets the expected bits.
void Scene::acceptOpen(const std::vector<OpenElement>& elements) const {
    for (const OpenElement& element : elements) {
        const auto far = [&](auto zero) {
            decltype(zero) value;
            std::memcpy(&value, element.at, sizeof value);
            const long double distance = std::fabs(static_cast<long double>(value) - element.middle);
            return !element.anything && !(distance <= element.radius);
        };
        if (!(form_.type == Type::f32 ? far(float{}) : far(double{})))
            std::memcpy(element.at, &element.bits, element.size);
    }
}

// A NaN where a NaN is expected gets the expected bits.
void Scene::acceptNans(const std::vector<std::byte>& expected) const {
    const std::byte* at = expected.data();
    for (std::size_t index = 0; index < operands_.size(); ++index) {
        const Operand& operand = form_.operands[index];
        if (!operand.output()) continue;
        const bool real = operand.kind == Operand::Kind::element;
        const auto size = static_cast<std::size_t>(form_.sizeOf(operand));
        visitElements(index, [&](std::byte* address) {
            if (real && isNan(form_.type, address) && isNan(form_.type, at)) std::memcpy(address, at, size);
            at += size;
        });
    }
}

std::string Scene::placeOf(const std::byte* address) const {
    std::string text;
    for (std::size_t index = 0; index < operands_.size(); ++index) {
        const Operand& operand = form_.operands[index];
        const std::int32_t columns = options_.sizes.of(operand.columns);
        const std::int32_t rows = options_.sizes.of(operand.rows);
        std::int32_t number = 0;
        visitElements(index, [&](const std::byte* begin) {
            if (address >= begin && address < begin + form_.sizeOf(operand)) {
                text += " (in " + operand.name + ", object " + std::to_string(number / columns / rows) + ", element " +
                        std::to_string(number / columns % rows) + ", " + std::to_string(number % columns) + ")";
            }
            ++number;
        });
    }
    return text;
}

// For MemorySanitizer: of all that surrounds the call it may use its inputs and its tables.
void Scene::setOnlyInputsWritten() const {
    if (!underMemorySanitizer) return;
    arena_.setAllUnwritten();
    for (std::size_t index = 0; index < operands_.size(); ++index) {
        const Operand& operand = form_.operands[index];
        const bool table = operand.layout == Layout::pointer && operand.shape != Shape::constant;
        const bool list = operand.layout == Layout::list && operand.array;
        if (!operand.dense && (table || list)) {
            const std::int32_t entries =
                table ? options_.sizes.of(operand.rows) * options_.sizes.of(operand.columns) : options_.sizes.count;
            setWritten(operands_[index].base, static_cast<std::size_t>(entries) * sizeof(void*));
        }
    }
    for (std::size_t index = 0; index < operands_.size(); ++index) {
        if (form_.operands[index].use != Operand::Use::input) continue;
        const auto size = static_cast<std::size_t>(form_.sizeOf(form_.operands[index]));
        visitElements(index, [&](const std::byte* address) { setWritten(address, size); });
    }
}

// The operand with an element that should have changed, but follows from memory that nobody has written.
std::string Scene::unwrittenResult(const std::vector<std::byte>& before, const std::vector<std::byte>& expected) const {
    if (!underMemorySanitizer) return {};
    std::string found;
    std::size_t at = 0;
    for (std::size_t index = 0; index < operands_.size(); ++index) {
        if (!form_.operands[index].output()) continue;
        const auto size = static_cast<std::size_t>(form_.sizeOf(form_.operands[index]));
        visitElements(index, [&](const std::byte* address) {
            const bool changes = std::memcmp(&before[at], &expected[at], size) != 0;
            if (changes && isUnwritten(address, size)) found = form_.operands[index].name;
            at += size;
        });
    }
    arena_.setAllWritten();
    return found;
}

Verdict Scene::run(const Library& library, unsigned stackShift, bool mayFork, std::int32_t team) const {
    const std::vector<std::byte> before = arena_.snapshot();
    // What is left in scratch means nothing: it is put back, by the reference untouched.
    const std::vector<std::byte> scratch = bytesOf(Operand::Use::scratch);
    const std::vector<std::byte> elementsBefore = resultBytes();
    openElements().clear();
    const std::vector<std::int32_t> statuses = reference(team);
    const std::vector<OpenElement> open = openElements();
    const std::vector<std::byte> elements = resultBytes();
    const std::vector<std::byte> expected = arena_.snapshot();
    arena_.restore(before);

    const std::vector<CallValue> values = arguments();
    CallResult result;
    setFaultContext(form_.name.c_str());
    setOnlyInputsWritten();
    if (mayFork) {
        result = callFunction(library.function(form_), values, stackShift);
    } else {
        const Fault fault = guarded([&] { result = callFunction(library.function(form_), values, stackShift); });
        if (fault.happened) return Verdict::fail(fault.text() + ", " + describe());
    }
    if (std::find(statuses.begin(), statuses.end(), result.status()) == statuses.end()) {
        return Verdict::fail("status " + std::to_string(result.status()) + ", expected " + std::to_string(statuses[0]) +
                             ", " + describe());
    }
    if (const std::string name = unwrittenResult(elementsBefore, elements); !name.empty())
        return Verdict::fail("a result of " + name + " follows from memory that nobody has written, " + describe());
    putBack(Operand::Use::scratch, scratch);
    if (!form_.family->nanBits) acceptNans(elements);
    acceptOpen(open);
    if (const std::byte* at = arena_.firstDifference(expected); at != nullptr)
        return Verdict::fail("wrong byte at " + hex(at) + ", " + describe() + placeOf(at));
    if (!result.frameDamage.empty()) return Verdict::fail("call frame:" + result.frameDamage + ", " + describe());
    return Verdict::pass();
}

std::vector<std::byte> Scene::bytesOf(Operand::Use use) const {
    std::vector<std::byte> bytes;
    for (std::size_t index = 0; index < operands_.size(); ++index) {
        if (form_.operands[index].use != use) continue;
        const std::int32_t size = form_.sizeOf(form_.operands[index]);
        visitElements(index, [&](const std::byte* address) { bytes.insert(bytes.end(), address, address + size); });
    }
    return bytes;
}

void Scene::putBack(Operand::Use use, const std::vector<std::byte>& bytes) const {
    const std::byte* at = bytes.data();
    for (std::size_t index = 0; index < operands_.size(); ++index) {
        if (form_.operands[index].use != use) continue;
        const auto size = static_cast<std::size_t>(form_.sizeOf(form_.operands[index]));
        visitElements(index, [&](std::byte* address) {
            std::memcpy(address, at, size);
            at += size;
        });
    }
}

void Scene::clearOutputs() const { putBack(Operand::Use::output, std::vector<std::byte>(resultBytes().size())); }

std::vector<std::byte> Scene::comparableResult() const {
    if (!form_.family->nanBits) {
        for (std::size_t index = 0; index < operands_.size(); ++index) {
            const Operand& operand = form_.operands[index];
            if (!operand.output() || operand.kind != Operand::Kind::element) continue;
            visitElements(index, [&](std::byte* address) {
                const auto size = static_cast<std::size_t>(form_.elementSize());
                if (isNan(form_.type, address)) std::memset(address, 0xff, size);
            });
        }
    }
    return resultBytes();
}

std::string Scene::describe() const {
    std::string text = form_.name + "(";
    for (const Argument& argument : form_.arguments) {
        text += text.back() == '(' ? "" : ", ";
        text += argument.name + "=";
        if (argument.role == Role::pointer || argument.role == Role::value) {
            const OperandValues& values = operands_[static_cast<std::size_t>(argument.operand)];
            text += argument.role == Role::pointer ? hex(values.base) : "bits " + std::to_string(values.constantBits);
        } else {
            text += std::to_string(argumentValue(argument));
        }
    }
    return text + ")";
}

}  // namespace kormtest
