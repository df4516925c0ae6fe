// One call ready to be made: operands placed in an arena and filled, arguments in order.
#pragma once

#include <string>
#include <vector>

#include "../reference/address.h"
#include "../reference/open_elements.h"
#include "arena.h"
#include "call.h"
#include "forms.h"
#include "library.h"
#include "placement.h"
#include "verdict.h"

namespace kormtest {

struct SceneOptions {
    Sizes sizes;
    bool plain = true;
    bool mayCollide = false;
    bool mayComb = true;
    bool thin = false;
    int alias = -1;       // the result takes the place of this operand
    bool special = true;  // infinities, NaN, zeros and the like among the values
};

class Scene {
public:
    // `places` decides where operands lie, `values` what they hold: a digest depends on the latter only.
    Scene(Arena& arena, const Form& form, const SceneOptions& options, Random& places, Random& values);

    // Operands that have been placed already; their windows are in the arena.
    Scene(Arena& arena, const Form& form, const SceneOptions& options, const std::vector<Placed>& placed,
          Random& places, Random& values);

    const Form& form() const { return form_; }
    const Sizes& sizes() const { return options_.sizes; }
    const std::vector<OperandValues>& operands() const { return operands_; }
    std::vector<CallValue> arguments() const;

    // All element strides equal the element size, so the plain kernel and its limit apply.
    bool plain() const;
    // Does the work estimate send the call to the driver?
    bool reachesDriver() const;

    // Calls the library and the reference from the same state and compares the status and every byte of all
    // windows but those of scratch. With `mayFork` a fault can't be caught, as it may arise in a team; `team` is
    // the size of that team, whose members each do a run of the objects.
    Verdict run(const Library& library, unsigned stackShift, bool mayFork, std::int32_t team = 1) const;

    // All outputs' elements in the order of operands, objects, rows, columns.
    std::vector<std::byte> resultBytes() const { return bytesOf(Operand::Use::output); }

    // The same for every target and place: outputs may be left unwritten, and the bits of a NaN may be free.
    void clearOutputs() const;
    std::vector<std::byte> comparableResult() const;

    std::string describe() const;

    // May the result take this operand's place in a call of that many objects?
    static bool mayAlias(const Form& form, std::size_t operand, const Sizes& sizes);

private:
    static std::vector<Placed> place(Arena& arena, const Form& form, const SceneOptions& options, Random& places);
    void fillValues(std::size_t operand, Random& values, bool mayBeNan);
    std::vector<std::int32_t> reference(std::int32_t team) const;
    std::vector<std::byte> bytesOf(Operand::Use use) const;
    void putBack(Operand::Use use, const std::vector<std::byte>& bytes) const;
    void setOnlyInputsWritten() const;
    std::string unwrittenResult(const std::vector<std::byte>& before, const std::vector<std::byte>& expected) const;
    void acceptOpen(const std::vector<OpenElement>& elements) const;
    void acceptNans(const std::vector<std::byte>& expected) const;
    std::string placeOf(const std::byte* address) const;
    std::int64_t argumentValue(const Argument& argument) const;
    template <class Visit>
    void visitElements(std::size_t operand, Visit&& visit) const;

    Arena& arena_;
    const Form& form_;
    SceneOptions options_;
    std::vector<OperandValues> operands_;
};

}  // namespace kormtest
