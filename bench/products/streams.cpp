// The pointer layout with objects one element apart, beside the same products of packed arrays.
#include "korm_calls.h"
#include "peers.h"

namespace bench::products {
namespace {

PRODUCT_FORM(mama)
PRODUCT_FORM(mam)
PRODUCT_FORM(mma)
PRODUCT_FORM(mata)
PRODUCT_FORM(mava)
PRODUCT_FORM(mva)
PRODUCT_FORM(mav)

template <class Form, class T, int n>
void addRow() {
    const std::vector<Contender<T>> contenders{{"korm", callKormStreams<Form, T>},
                                               {"loopAlongStreams", loopAlongStreams<Form::shape, n, T>},
                                               {"kormPacked", callKorm<Form, T>, true}};
    RowOptions options;
    options.streams = true;
    measure<T>("streams/" + std::string(Form::name) + typeName<T>() + "/" + std::to_string(n), Form::shape, n, options,
               contenders);
}

template <class Form, int... orders>
void addForm() {
    (addRow<Form, float, orders>(), ...);
    (addRow<Form, double, orders>(), ...);
}

}  // namespace

void addStreams() {
    addForm<mama, 3, 4, 5, 6, 8>();
    addForm<mam, 3, 4, 5, 6>();
    addForm<mma, 3, 4, 5, 6>();
    addForm<mata, 3, 4, 5, 6>();
    addForm<mava, 3, 4, 6>();
    addForm<mva, 3, 4, 6>();
    addForm<mav, 3, 4, 6>();
}

}  // namespace bench::products
