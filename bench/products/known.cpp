// Small shapes beside plain loops that know their sizes: those of points, projections, Jacobians and covariances, single rows and
// columns, cubes, and some that nobody asked for.
#include "rows.h"

namespace bench {

ARRAY_FORM(Mul_mama)
ARRAY_FORM(Mul_mam)
ARRAY_FORM(Mul_mma)
ARRAY_FORM(Mul_mava)
ARRAY_FORM(Mul_mva)
ARRAY_FORM(Mul_mav)

namespace {

template <class Form, class T, int rows, int inner, int columns>
void knownRow(const std::string& section) {
    constexpr Shape shape = Form::shape;
    const std::string width = shape.isVector() ? std::string() : std::string("x").append(std::to_string(columns));
    const std::string size = std::to_string(rows) + "x" + std::to_string(inner) + width;
    const std::string name = section + "/" + std::string(Form::name) + suffix<T> + "/" + size;
    if (!isWanted(name)) return;
    const Work<T> work = makeWork<shape, T>(Layout::packed, rows, inner, columns, inCache.bytes);
    Row row(name, work.count);
    row.results(work.result.base, work.result.span, 1e-5);
    row.korm(kormCall<Form, Layout::packed>(work));
    row.peer("plain loop, sizes known",
             [=] { plainLoop<shape, Layout::packed>(work, Known<rows>(), Known<inner>(), Known<columns>()); });
    row.measure();
}

template <int rows, int inner, int columns = 1>
void knownShape(const std::string& section) {
    const auto both = [&]<class Form>() {
        knownRow<Form, float, rows, inner, columns>(section);
        knownRow<Form, double, rows, inner, columns>(section);
    };
    if constexpr (columns > 1 || rows == 1) {
        both.template operator()<Mul_mama>();
        both.template operator()<Mul_mam>();
        both.template operator()<Mul_mma>();
    }
    if constexpr (columns == 1) {
        both.template operator()<Mul_mava>();
        both.template operator()<Mul_mva>();
        both.template operator()<Mul_mav>();
    }
}

// n by n times n by n, and times a vector.
template <int... orders>
void cubes() {
    (knownShape<orders, orders, orders>("known"), ...);
    (knownShape<orders, orders>("known"), ...);
}

}  // namespace

void measureKnownSizes() {
    knownShape<2, 2, 2>("known-common");
    knownShape<2, 3, 2>("known-common");
    knownShape<3, 2, 3>("known-common");
    knownShape<2, 3, 3>("known-common");
    knownShape<3, 4, 3>("known-common");
    knownShape<4, 3, 4>("known-common");
    knownShape<3, 4, 4>("known-common");
    knownShape<6, 3, 6>("known-common");
    knownShape<3, 6, 3>("known-common");
    knownShape<3, 3, 6>("known-common");
    knownShape<6, 3, 3>("known-common");
    knownShape<1, 3, 3>("known-common");
    knownShape<1, 4, 4>("known-common");
    knownShape<2, 2>("known-common");
    knownShape<2, 3>("known-common");
    knownShape<3, 2>("known-common");
    knownShape<3, 4>("known-common");
    knownShape<4, 3>("known-common");
    knownShape<6, 3>("known-common");
    knownShape<3, 6>("known-common");
    knownShape<1, 3>("known-common");
    knownShape<1, 4>("known-common");
    cubes<3, 4, 5, 6, 7, 8>();
    knownShape<1, 6, 6>("known");
    knownShape<1, 8, 8>("known");
    knownShape<2, 5, 7>("known");
    knownShape<2, 8, 2>("known");
    knownShape<3, 5, 7>("known");
    knownShape<4, 8, 4>("known");
    knownShape<5, 2, 4>("known");
    knownShape<5, 7, 3>("known");
    knownShape<7, 3, 2>("known");
    knownShape<8, 1, 8>("known");
    knownShape<8, 2, 8>("known");
    knownShape<8, 4, 8>("known");
    knownShape<2, 10>("known");
    knownShape<3, 12>("known");
    knownShape<5, 9>("known");
    knownShape<9, 5>("known");
    knownShape<10, 2>("known");
    knownShape<12, 3>("known");
}

}  // namespace bench
