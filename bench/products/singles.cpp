// One product at a time. Peers with fixed sizes have no arguments and no checks; the others take sizes as korm does.
#include "korm_calls.h"
#include "peers.h"

namespace bench::products {
namespace {

PRODUCT_FORM(mm)
PRODUCT_FORM(mt)
PRODUCT_FORM(tm)
PRODUCT_FORM(tt)

template <class Form, class T, int n>
void addRow() {
    std::vector<Contender<T>> contenders{{"korm", callKorm<Form, T>}};
    addLargePeers<Form>(contenders);
    if constexpr (n <= 8) contenders.push_back({"eigenFixed", eigenFixed<Form::shape, n, T>});
    measure<T>("singles/" + std::string(Form::name) + typeName<T>() + "/" + std::to_string(n), Form::shape, n, {},
               contenders);
}

template <class Form, int... orders>
void addForm() {
    (addRow<Form, float, orders>(), ...);
    (addRow<Form, double, orders>(), ...);
}

}  // namespace

void addSingles() {
    addForm<mm, 3, 4, 5, 6, 7, 8, 10, 12, 16, 20, 24, 32, 48, 64, 96, 128, 192, 256>();
    addForm<mt, 4, 8, 16, 32, 64, 128, 256>();
    addForm<tm, 4, 8, 16, 32, 64, 128, 256>();
    addForm<tt, 4, 8, 16, 32, 64, 128, 256>();
}

}  // namespace bench::products
