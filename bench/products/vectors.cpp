// Matrices times vectors: alone, one matrix with many vectors, many with one, and pair by pair.
#include "korm_calls.h"
#include "peers.h"

namespace bench::products {
namespace {

PRODUCT_FORM(mv)
PRODUCT_FORM(tv)
PRODUCT_FORM(mva)
PRODUCT_FORM(tva)
PRODUCT_FORM(mav)
PRODUCT_FORM(tav)
PRODUCT_FORM(mava)
PRODUCT_FORM(tava)

template <class Form, class T, int n>
void addRow() {
    std::vector<Contender<T>> contenders{{"korm", callKorm<Form, T>}};
    if constexpr (n <= 16 && Form::shape.isArray()) addSmallPeers<Form, n>(contenders);
    if constexpr (n >= 16 || !Form::shape.isArray()) addLargePeers<Form>(contenders);
    measure<T>("vectors/" + std::string(Form::name) + typeName<T>() + "/" + std::to_string(n), Form::shape, n, {},
               contenders);
}

template <class Form>
void addForm() {
    addRow<Form, float, 3>(), addRow<Form, float, 4>(), addRow<Form, float, 6>(), addRow<Form, float, 16>(),
        addRow<Form, float, 64>();
    addRow<Form, double, 3>(), addRow<Form, double, 4>(), addRow<Form, double, 6>(), addRow<Form, double, 16>(),
        addRow<Form, double, 64>();
}

}  // namespace

void addVectors() {
    addForm<mv>();
    addForm<tv>();
    addForm<mva>();
    addForm<tva>();
    addForm<mav>();
    addForm<tav>();
    addForm<mava>();
    addForm<tava>();
}

}  // namespace bench::products
