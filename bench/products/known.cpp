// Small shapes beside plain loops that know their sizes: those of points, projections, Jacobians and covariances, single rows and
// columns, cubes, and some that nobody asked for.
#include "rows.h"

namespace bench {

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
    Work<T> one = work;
    one.count = 1;
    const Run call = kormCall<Form, Layout::packed>(work), callWithOne = kormCall<Form, Layout::packed>(one);
    row.kormWithCall([=](std::int32_t objects) { objects == 1 ? callWithOne() : call(); }, work.count);
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

// M by K times K by N, or with N of 1 times a vector.
template <int rows, int inner, int columns = 1>
struct KnownShape {
    static void measure(const std::string& section) { knownShape<rows, inner, columns>(section); }
};

template <class... Shapes>
void knownShapes(const std::string& section) {
    (Shapes::measure(section), ...);
}

// n by n times n by n, and times a vector.
template <int... orders>
void cubes() {
    knownShapes<KnownShape<orders, orders, orders>...>("known");
    knownShapes<KnownShape<orders, orders>...>("known");
}

}  // namespace

void measureKnownSizes() {
    knownShapes<KnownShape<2, 2, 2>, KnownShape<2, 3, 2>, KnownShape<3, 2, 3>, KnownShape<2, 3, 3>, KnownShape<3, 4, 3>,
                KnownShape<4, 3, 4>, KnownShape<3, 4, 4>, KnownShape<6, 3, 6>, KnownShape<3, 6, 3>, KnownShape<3, 3, 6>,
                KnownShape<6, 3, 3>, KnownShape<1, 3, 3>, KnownShape<1, 4, 4>, KnownShape<2, 2>, KnownShape<2, 3>,
                KnownShape<3, 2>, KnownShape<3, 4>, KnownShape<4, 3>, KnownShape<6, 3>, KnownShape<3, 6>,
                KnownShape<1, 3>, KnownShape<1, 4>>("known-common");
    cubes<3, 4, 5, 6, 7, 8>();
    knownShapes<KnownShape<1, 6, 6>, KnownShape<1, 8, 8>, KnownShape<2, 5, 7>, KnownShape<2, 8, 2>, KnownShape<3, 5, 7>,
                KnownShape<4, 8, 4>, KnownShape<5, 2, 4>, KnownShape<5, 7, 3>, KnownShape<7, 3, 2>, KnownShape<8, 1, 8>,
                KnownShape<8, 2, 8>, KnownShape<8, 4, 8>, KnownShape<2, 10>, KnownShape<3, 12>, KnownShape<5, 9>,
                KnownShape<9, 5>, KnownShape<10, 2>, KnownShape<12, 3>>("known");
}

}  // namespace bench
