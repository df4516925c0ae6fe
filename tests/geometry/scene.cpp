#include "scene.h"

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <stdexcept>

#include "../support/fault.h"
#include "../support/status.h"
#include "values.h"

namespace kormtest {
namespace {

constexpr auto combStride = static_cast<std::int32_t>(Arena::toothPitch);
constexpr std::uint32_t oneNan = 0x7fc00000;

std::string hex(std::uint64_t number) {
    char text[32];
    std::snprintf(text, sizeof text, "0x%llx", static_cast<unsigned long long>(number));
    return text;
}

std::int64_t span(std::int32_t count, std::int32_t stride) { return static_cast<std::int64_t>(count - 1) * stride; }

}  // namespace

std::int32_t randomStride(std::int32_t elements, Random& random) {
    if (random.chance(30)) return 4 * elements;
    if (random.chance(40)) return random.pick({12, 16});
    return random.pick({0,   4,    8,  12, 16,  20,  24,  28,  32, 36, 44, 48,  64, 100,
                        260, 1028, -4, -8, -12, -16, -20, -48, 13, 18, 31, -27, 5});
}

GeometryScene::GeometryScene(Arena& arena, const GeometryFunction& function, const GeometryOptions& options,
                             Random& places, Random& values)
    : arena_(arena), function_(function), options_(options), places_(function.arguments.size()) {
    arena.clearWindows();
    place(places);
    arena.fillWindows(places);
    fillValues(values);
}

std::int32_t GeometryScene::vectors(std::size_t argument) const {
    return function_.arguments[argument].stride < 0 ? 1 : options_.count;
}

std::byte* GeometryScene::element(std::size_t argument, std::int32_t k, std::int32_t i) const {
    const Place& place = places_[argument];
    return place.base + static_cast<std::ptrdiff_t>(k) * place.stride + static_cast<std::ptrdiff_t>(4 * i);
}

template <class Visit>
void GeometryScene::visitResults(Visit&& visit) const {
    for (std::size_t argument = 0; argument < places_.size(); ++argument) {
        const Slotted& slotted = function_.arguments[argument];
        if (slotted.slot != Slot::output && slotted.slot != Slot::optional) continue;
        if (places_[argument].base == nullptr) continue;
        for (std::int32_t k = 0; k < vectors(argument); ++k)
            for (std::int32_t i = 0; i < slotted.elements; ++i) visit(element(argument, k, i));
    }
}

bool GeometryScene::mayAlias(const GeometryFunction& function, std::size_t argument) {
    return function.arguments[argument].mayEqualDst;
}

void GeometryScene::choosePlace(std::size_t argument, std::size_t operand, Spot spot,
                                std::optional<std::int32_t> stride, Random& places) {
    const Slotted& slotted = function_.arguments[argument];
    const std::int32_t count = vectors(argument);
    const auto bytes = static_cast<std::ptrdiff_t>(4 * slotted.elements);
    Place& place = places_[argument];
    if (count < 1) return;  // an empty array has no place
    if (spot == Spot::any) {
        spot = places.pick({Spot::pageEnd, Spot::pageEnd, Spot::pageEnd, Spot::pageBegin, Spot::middle, Spot::middle,
                            Spot::aligned, Spot::aligned, Spot::unaligned});
        if (slotted.stride >= 0 && !stride && places.chance(15)) spot = Spot::comb;
    }
    if (slotted.stride >= 0) place.stride = stride ? *stride : randomStride(slotted.elements, places);
    if (spot == Spot::comb) {
        if (slotted.stride < 0) throw std::logic_error("a comb is for arrays");
        place.stride = places.chance(50) ? combStride : -combStride;
        const bool end = places.chance(70);
        for (std::int32_t k = 0; k < count; ++k) {
            const Stretch room = arena_.tooth(operand, static_cast<std::size_t>(k));
            std::byte* const at = end ? room.end - bytes : room.begin;
            arena_.addWindow(room, at, at + bytes);
            if (k == (place.stride > 0 ? 0 : count - 1)) place.base = at;
        }
        return;
    }
    const Stretch room = arena_.field(operand);
    // The extent of the array around its first vector.
    const std::int64_t low = std::min<std::int64_t>(0, span(count, place.stride));
    const std::int64_t high = std::max<std::int64_t>(0, span(count, place.stride)) + bytes;
    if (high - low > static_cast<std::int64_t>(room.size()) - 512) throw std::logic_error("array too large");
    if (spot == Spot::pageEnd) {
        place.base = room.end - high;
    } else if (spot == Spot::pageBegin) {
        place.base = room.begin - low;
    } else {
        const std::int32_t step = spot == Spot::aligned ? 16 : spot == Spot::middle ? 4 : 1;
        place.base = room.begin - low + 128;
        place.base += 16 - reinterpret_cast<std::uintptr_t>(place.base) % 16;
        place.base += step * places.between(0, 256 / step - 1);
    }
    if (std::abs(place.stride) <= 512) {
        arena_.addWindow(room, place.base + low, place.base + high);
        return;
    }
    for (std::int32_t k = 0; k < count; ++k)
        arena_.addWindow(room, element(argument, k, 0), element(argument, k, 0) + bytes);
}

void GeometryScene::place(Random& places) {
    std::size_t operand = 0;
    const std::size_t dst = function_.dst();
    const std::int32_t written = 4 * function_.arguments[dst].elements;
    // The result first, as an input may share its place.
    const bool array = function_.arguments[dst].stride >= 0;
    std::optional<std::int32_t> stride = options_.dstStride;
    if (options_.alias >= 0 && array && !stride) {
        // A vector's result must not reach into the next vector's source.
        do stride = randomStride(4, places);
        while (std::abs(*stride) < written && options_.count > 1);
    }
    choosePlace(dst, operand++, options_.dstSpot, stride, places);
    if (array) torn_ = std::abs(places_[dst].stride) < written && places_[dst].stride % 4 != 0;
    for (std::size_t argument = 0; argument < places_.size(); ++argument) {
        const Slotted& slotted = function_.arguments[argument];
        if (argument == dst || !slotted.pointer()) continue;
        if (static_cast<int>(argument) == options_.alias) {
            places_[argument] = places_[dst];
            // An input that is longer than the result.
            if (slotted.elements > function_.arguments[dst].elements) {
                choosePlace(argument, operand++, options_.inputSpot, std::nullopt, places);
                places_[dst].base = places_[argument].base + 4 * places.between(0, slotted.elements - 1);
            }
            continue;
        }
        if (slotted.slot == Slot::optional && options_.nullOptional) continue;
        choosePlace(argument, operand++, options_.inputSpot, slotted.stride >= 0 ? options_.inputStride : std::nullopt,
                    places);
    }
}

void GeometryScene::writeElements(std::size_t argument, std::int32_t k, const std::vector<float>& elements) const {
    for (std::size_t i = 0; i < elements.size(); ++i)
        std::memcpy(element(argument, k, static_cast<std::int32_t>(i)), &elements[i], sizeof(float));
}

void GeometryScene::fillValues(Random& values) {
    // Torn elements mean nothing as numbers; NaNs among them could not be compared.
    const bool special = options_.special && !torn_;
    GeometryMood mood = randomMood(special, values);
    if (torn_) mood = GeometryMood::ordinary;
    for (std::size_t argument = 0; argument < places_.size(); ++argument) {
        const Slotted& slotted = function_.arguments[argument];
        if (special && values.chance(25)) mood = randomMood(special, values);
        if (slotted.slot == Slot::constant) {
            const auto value = randomElements(function_, argument, mood, options_.clearAngles, values);
            std::memcpy(&places_[argument].constantBits, value.data(), sizeof(float));
        } else if (slotted.slot == Slot::input) {
            for (std::int32_t k = 0; k < vectors(argument); ++k)
                writeElements(argument, k, randomElements(function_, argument, mood, options_.clearAngles, values));
        }
    }
}

std::vector<CallValue> GeometryScene::arguments() const {
    std::vector<CallValue> values;
    for (std::size_t argument = 0; argument < places_.size(); ++argument) {
        const Slotted& slotted = function_.arguments[argument];
        if (slotted.pointer()) values.push_back(CallValue::pointer(places_[argument].base));
        else if (slotted.slot == Slot::constant)
            values.push_back(CallValue::singleBits(places_[argument].constantBits));
        else if (slotted.slot == Slot::count) values.push_back(CallValue::integer(options_.count));
        else values.push_back(CallValue::integer(places_[argument - 1].stride));
    }
    return values;
}

Inputs GeometryScene::inputs(std::int32_t k) const {
    Inputs in;
    for (std::size_t argument = 0; argument < places_.size(); ++argument) {
        const Slotted& slotted = function_.arguments[argument];
        if (slotted.slot == Slot::constant) {
            in.emplace_back(1);
            std::memcpy(in.back().data(), &places_[argument].constantBits, sizeof(float));
        } else if (slotted.slot == Slot::input) {
            in.emplace_back(static_cast<std::size_t>(slotted.elements));
            for (std::int32_t i = 0; i < slotted.elements; ++i)
                std::memcpy(&in.back()[static_cast<std::size_t>(i)], element(argument, slotted.stride < 0 ? 0 : k, i),
                            sizeof(float));
        }
    }
    return in;
}

// Does in the arena what the call should do.
std::int32_t GeometryScene::applyReference(std::vector<std::vector<double>>& slack, bool& eitherStatus) const {
    const std::size_t dst = function_.dst();
    const auto elements = static_cast<std::size_t>(function_.arguments[dst].elements);
    for (std::int32_t k = 0; k < options_.count; ++k) {
        const Inputs in = inputs(k);
        Outcome out;
        function_.reference(in, out);
        eitherStatus = eitherStatus || out.eitherStatus;
        // A batch finds out before it touches a result.
        if (out.status != status::ok && function_.batch()) return out.status;
        slack.emplace_back(out.slack.begin(), out.slack.begin() + static_cast<std::ptrdiff_t>(elements));
        for (std::size_t argument = 0; argument < places_.size(); ++argument) {
            if (places_[argument].base == nullptr) continue;
            switch (function_.arguments[argument].slot) {
                case Slot::optional: writeElements(argument, k, {out.det}); break;
                case Slot::integer: std::memcpy(places_[argument].base, &out.integer, sizeof out.integer); break;
                case Slot::output:
                    if (out.writesDst)
                        writeElements(argument, k,
                                      {out.dst.begin(), out.dst.begin() + static_cast<std::ptrdiff_t>(elements)});
                    break;
                default: break;
            }
        }
        if (out.status != status::ok) return out.status;
    }
    return status::ok;
}

void GeometryScene::makeNansEqual() const {
    if (function_.copies || torn_) return;
    visitResults([](std::byte* address) {
        float value;
        std::memcpy(&value, address, sizeof value);
        if (std::isnan(value)) std::memcpy(address, &oneNan, sizeof oneNan);
    });
}

Verdict GeometryScene::run(void* code, unsigned stackShift) const {
    const std::vector<std::byte> before = arena_.snapshot();
    std::vector<std::vector<double>> slack;
    bool eitherStatus = false;
    bool infiniteConstant = false;
    for (std::size_t argument = 0; argument < places_.size(); ++argument)
        if ((places_[argument].constantBits & 0x7fffffff) == 0x7f800000) infiniteConstant = true;
    const std::int32_t expectedStatus = applyReference(slack, eitherStatus);
    makeNansEqual();
    const std::vector<std::byte> expected = arena_.snapshot();
    const std::size_t dst = function_.dst();
    const bool bounded = function_.domain == Domain::unprojection && expectedStatus == status::ok;
    std::vector<float> expectedElements;
    if (bounded) {
        visitResults([&](const std::byte* address) {
            expectedElements.emplace_back();
            std::memcpy(&expectedElements.back(), address, sizeof(float));
        });
    }
    arena_.restore(before);

    const std::vector<CallValue> values = arguments();
    CallResult result;
    setFaultContext(function_.name.c_str());
    const Fault fault = guarded([&] { result = callFunction(code, values, stackShift); });
    if (fault.happened) return Verdict::fail(fault.text() + ", " + describe());
    if (eitherStatus && result.status() == -195) return Verdict::pass();
    if (result.status() != expectedStatus)
        return Verdict::fail("status " + std::to_string(result.status()) + ", not " + std::to_string(expectedStatus) +
                             ", " + describe());
    makeNansEqual();
    if (bounded) {
        // An element within its bound is taken for the expected one. Later vectors lie over earlier ones where they
        // overlap.
        std::size_t index = 0;
        const bool overlap = vectors(dst) > 1 && std::abs(places_[dst].stride) < 4 * function_.arguments[dst].elements;
        visitResults([&](std::byte* address) {
            float found;
            std::memcpy(&found, address, sizeof found);
            const std::size_t elements = slack[0].size();
            double allowed = slack[index / elements][index % elements];
            if (overlap)
                for (const auto& row : slack) allowed = std::max(allowed, *std::max_element(row.begin(), row.end()));
            const double difference = std::fabs(double{found} - double{expectedElements[index]});
            if (difference <= allowed || std::isinf(allowed))
                std::memcpy(address, &expectedElements[index], sizeof(float));
            ++index;
        });
    }
    if (const std::byte* at = arena_.firstDifference(expected); at != nullptr) {
        std::string text = "wrong byte at " + hex(reinterpret_cast<std::uintptr_t>(at));
        for (std::size_t argument = 0; argument < places_.size(); ++argument) {
            const Slotted& slotted = function_.arguments[argument];
            if (!slotted.pointer() || places_[argument].base == nullptr) continue;
            for (std::int32_t k = 0; k < vectors(argument); ++k) {
                const std::ptrdiff_t offset = at - element(argument, k, 0);
                if (offset < 0 || offset >= 4 * slotted.elements) continue;
                std::uint32_t found;
                std::memcpy(&found, element(argument, k, static_cast<std::int32_t>(offset / 4)), sizeof found);
                text += " (" + slotted.name + " " + std::to_string(k) + "[" + std::to_string(offset / 4) + "] is " +
                        hex(found);
                arena_.restore(expected);
                std::memcpy(&found, element(argument, k, static_cast<std::int32_t>(offset / 4)), sizeof found);
                text += ", not " + hex(found) + ")";
                break;
            }
        }
        return Verdict::fail(text + ", " + describe());
    }
    // The C library reports the sine of an infinity through errno.
    if (result.frameDamage == " errno" && function_.domain == Domain::angles && infiniteConstant)
        result.frameDamage.clear();
    if (!result.frameDamage.empty()) return Verdict::fail("call frame:" + result.frameDamage + ", " + describe());
    return Verdict::pass();
}

std::vector<std::byte> GeometryScene::resultBytes() const {
    makeNansEqual();
    std::vector<std::byte> bytes;
    const std::size_t dst = function_.dst();
    for (const std::size_t argument : {dst, dst - 1}) {
        if (argument >= places_.size()) continue;
        const Slotted& slotted = function_.arguments[argument];
        const bool result = argument == dst || slotted.slot == Slot::optional;
        if (!result || places_[argument].base == nullptr) continue;
        for (std::int32_t k = 0; k < vectors(argument); ++k)
            for (std::int32_t i = 0; i < slotted.elements; ++i)
                bytes.insert(bytes.end(), element(argument, k, i), element(argument, k, i) + 4);
    }
    return bytes;
}

std::string GeometryScene::describe() const {
    std::string text = function_.name + "(";
    for (std::size_t argument = 0; argument < places_.size(); ++argument) {
        const Slotted& slotted = function_.arguments[argument];
        const Place& place = places_[argument];
        text += (argument == 0 ? "" : ", ") + slotted.name + "=";
        if (slotted.slot == Slot::constant) {
            float value;
            std::memcpy(&value, &place.constantBits, sizeof value);
            char number[32];
            std::snprintf(number, sizeof number, "%a", double{value});
            text += number;
        } else if (slotted.pointer()) {
            text += hex(reinterpret_cast<std::uintptr_t>(place.base));
        } else if (slotted.slot == Slot::count) {
            text += std::to_string(options_.count);
        } else {
            text += std::to_string(places_[argument - 1].stride);
        }
    }
    return text + ")";
}

}  // namespace kormtest
