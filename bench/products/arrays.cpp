// Packed arrays of square matrices.
#include "korm_calls.h"
#include "peers.h"

namespace bench::products {
namespace {

PRODUCT_FORM(mama)
PRODUCT_FORM(mam)
PRODUCT_FORM(mma)
PRODUCT_FORM(mata)
PRODUCT_FORM(tama)
PRODUCT_FORM(tata)

template <class Form, class T, int n>
void addRow() {
    std::vector<Contender<T>> contenders{{"korm", callKorm<Form, T>}};
    if constexpr (n <= 16) addSmallPeers<Form, n>(contenders);
    if constexpr (n >= 8) addLargePeers<Form>(contenders);
    measure<T>("arrays/" + std::string(Form::name) + typeName<T>() + "/" + std::to_string(n), Form::shape, n, {},
               contenders);
}

template <class Form, int... orders>
void addForm() {
    (addRow<Form, float, orders>(), ...);
    (addRow<Form, double, orders>(), ...);
}

}  // namespace

void addArrays() {
    addForm<mama, 3, 4, 5, 6, 8, 16, 32>();
    addForm<mam, 3, 4, 5, 6, 8, 16, 32>();
    addForm<mma, 3, 4, 5, 6, 8, 16, 32>();
    addForm<mata, 3, 4, 5, 6, 8>();
    addForm<tama, 3, 4, 5, 6, 8>();
    addForm<tata, 3, 4, 5, 6, 8>();
}

}  // namespace bench::products
