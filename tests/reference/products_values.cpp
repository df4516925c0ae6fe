#include <cmath>
#include <limits>

#include "../support/random.h"
#include "products.h"

namespace kormtest {
namespace {

enum class Kind {
    near,       // magnitudes around 1: the low bits tell orders apart
    spread,     // magnitudes that swallow each other's digits
    cancel,     // large parts that cancel, so that the digits which were lost show
    zeros,      // many zeros of either sign, products that are -0 throughout
    extremes,   // products that overflow and underflow
    nonFinite,  // a few infinities and NaN
};

template <class T>
class Values {
public:
    Values(Kind kind, std::int32_t length, Random& random) : kind_(kind), length_(length), random_(random) {}

    T draw() {
        switch (kind_) {
            case Kind::near: return number(-1, 1);
            case Kind::spread: return number(-digits / 2, digits / 2);
            case Kind::cancel: return large() ? large(random_.between(1, 3)) : number(-1, 1);
            case Kind::zeros:
                return random_.chance(60) ? sign() * T{0} : sign() * static_cast<T>(random_.between(1, 9));
            case Kind::extremes: return random_.chance(50) ? number(least, least / 2) : number(most / 2 - 4, most - 1);
            case Kind::nonFinite: break;
        }
        // About one in a sum, so that most sums still tell something.
        if (!random_.chance(100 / (2 * length_ + 1))) return number(-1, 1);
        switch (random_.between(0, 4)) {
            case 0: return std::numeric_limits<T>::quiet_NaN();
            case 1: return sign() * std::numeric_limits<T>::max();
            case 2: return sign() * std::numeric_limits<T>::denorm_min();
            default: return sign() * std::numeric_limits<T>::infinity();
        }
    }

private:
    static constexpr int digits = std::numeric_limits<T>::digits;
    static constexpr int least = std::numeric_limits<T>::min_exponent;
    static constexpr int most = std::numeric_limits<T>::max_exponent;

    T sign() { return random_.chance(50) ? T{1} : T{-1}; }
    bool large() { return random_.chance(60); }
    // Few digits, so that their products are exact and can cancel.
    T large(std::int32_t few) { return sign() * std::ldexp(static_cast<T>(few), digits / 2); }
    T number(int lowest, int highest) {
        const auto mantissa = static_cast<T>(static_cast<double>(random_.next() >> 11) * 0x1p-53 + 1);
        return sign() * std::ldexp(mantissa, random_.between(lowest, highest));
    }

    Kind kind_;
    std::int32_t length_;
    Random& random_;
};

template <class T>
void fill(const Form& form, std::vector<OperandValues>& operands, const Sizes& sizes, bool special, Random& random) {
    Kind kind = random.pick({Kind::near, Kind::spread, Kind::cancel, Kind::cancel, Kind::zeros});
    if (special && random.chance(15)) kind = random.pick({Kind::extremes, Kind::nonFinite});
    for (std::size_t index = 0; index < form.result(); ++index) {
        const Operand& operand = form.operands[index];
        if (operand.use != Operand::Use::input || operand.shape == Shape::constant) continue;
        const std::int32_t rows = sizes.of(operand.rows), columns = sizes.of(operand.columns);
        // The lines that are multiplied with each other: rows of the left operand, columns of the right one.
        const bool byRows = index == 0 || operand.shape == Shape::vector;
        const std::int32_t lines = byRows ? rows : columns, length = byRows ? columns : rows;
        Values<T> values(kind, length, random);
        for (std::int32_t k = 0; k < (operand.array ? sizes.count : 1); ++k) {
            for (std::int32_t line = 0; line < lines; ++line) {
                // Nothing but positive numbers times nothing but -0.
                const bool uniform = kind == Kind::zeros && random.chance(50);
                for (std::int32_t at = 0; at < length; ++at) {
                    T value = values.draw();
                    if (uniform) value = index == 0 ? std::fabs(value) : -T{0};
                    writeElement(form, index, operands[index], sizes, k, byRows ? line : at, byRows ? at : line, value);
                }
            }
        }
    }
}

}  // namespace

void fillSums(const Form& form, std::vector<OperandValues>& operands, const Sizes& sizes, bool special,
              Random& values) {
    if (form.type == Type::f32) fill<float>(form, operands, sizes, special, values);
    else fill<double>(form, operands, sizes, special, values);
}

}  // namespace kormtest
