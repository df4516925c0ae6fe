// Sums, differences and scaling, with NumPy's broadcasting over all axes.
#include "operation.h"
#include "operations.h"

namespace korm::python {

namespace {

using namespace families;

// Rows: one of each, the first an array, the second, both. A row of matrices is by what is transposed: neither, the second, the
// first, both. Null: the inputs change places, which is the same sum.
struct Sums {
    const Family* matrices[4][4];
    const Family* vectors[4];
    const Family* constantSecond[4];  // one of each, vectors an array, constants an array, both
    const Family* constantFirst[4];   // the same
};

const Sums addition = {
    {{&Add_mm, nullptr, &Add_tm, &Add_tt},
     {&Add_mam, &Add_mat, &Add_tam, &Add_tat},
     {nullptr, nullptr, nullptr, nullptr},
     {&Add_mama, nullptr, &Add_tama, &Add_tata}},
    {&Add_vv, &Add_vav, nullptr, &Add_vava},
    {&Add_vc, &Add_vac, &Add_vca, &Add_vaca},
    {nullptr, nullptr, nullptr, nullptr},
};

const Sums subtraction = {
    {{&Sub_mm, &Sub_mt, &Sub_tm, &Sub_tt},
     {&Sub_mam, &Sub_mat, &Sub_tam, &Sub_tat},
     {&Sub_mma, &Sub_mta, &Sub_tma, &Sub_tta},
     {&Sub_mama, &Sub_mata, &Sub_tama, &Sub_tata}},
    {&Sub_vv, &Sub_vav, &Sub_vva, &Sub_vava},
    {&Sub_vc, &Sub_vac, &Sub_vca, &Sub_vaca},
    {&Sub_cv, &Sub_cva, &Sub_cav, &Sub_cava},
};

void run(Operation& it, const Family& family, Call& call) {
    const int status = it.run(family, call);
    if (status != 0) raise(PyExc_SystemError, "korm refused its arguments: status %d", status);
}

void swapInputs(Operation& it) {
    std::swap(it.in[0], it.in[1]);
    std::swap(it.argument(0), it.argument(1));
}

int row(const Operation& it, int first) {
    const int second = 1 - first;
    if (it.count == 1) return 0;
    const bool firstArray = !it.in[static_cast<std::size_t>(first)].single,
               secondArray = !it.in[static_cast<std::size_t>(second)].single;
    return firstArray && secondArray ? 3 : firstArray ? 1 : 2;
}

bool isTurned(const View& view, Index itemSize) {
    return view.shape[1] > 1 && view.stride[1] != itemSize && (view.shape[0] == 1 || view.stride[0] == itemSize);
}

double valueOf(const View& view, Element element) {
    if (plan) return 0;
    return element == float32 ? static_cast<double>(*reinterpret_cast<float*>(view.data))
                              : *reinterpret_cast<double*>(view.data);
}

// The last axis of both is the vectors', unless one is a constant for each vector.
void readLastAxis(Operation& it) {
    const int axes[] = {it.argument(0).axes(), it.argument(1).axes()};
    const auto length = [&](int i) { return axes[i] == 0 ? Index{1} : it.argument(i).extent(axes[i] - 1); };
    const Index longest = length(0) == 1 ? length(1) : length(0);
    for (int i = 0; i < 2; ++i) {
        if (length(i) != 1 && length(i) != longest)
            raise(PyExc_ValueError, "%s can't be broadcast to the other array", it.argument(i).name);
        if (it.argument(i).number) {
            it.in[static_cast<std::size_t>(i)].single = true;
            continue;
        }
        it.view(i, axes[i] == 0 ? 0 : 1);
        View& view = it.in[static_cast<std::size_t>(i)];
        if (length(i) == 1 && longest > 1) view.axes = 0;
        if (longest == 1 && axes[i] == 0) view.axes = axes[1 - i] == 0 || it.argument(1 - i).number ? 1 : 0;
    }
}

PyObject* sum(Arguments given, const Sums& sums) {
    Operation it;
    it.input("a", given[0]);
    it.input("b", given[1]);
    if (it.argument(0).number && it.argument(1).number) raise(PyExc_TypeError, "a or b must be an array");
    it.chooseElement();
    Call call{};
    const int axes[] = {it.argument(0).axes(), it.argument(1).axes()};
    bool matrices = std::max(axes[0], axes[1]) > 2 && std::min(axes[0], axes[1]) >= 2;
    for (int i = 1; matrices && i <= 2; ++i)
        matrices = it.argument(0).extent(axes[0] - i) == it.argument(1).extent(axes[1] - i);
    if (matrices) {
        it.view(0, 2);
        it.view(1, 2);
        it.broadcast();
        it.output("out", given[2], 2, it.in[0].shape[0], it.in[0].shape[1]);
        it.separate(MayBeResult::any);
        it.settle();
        const auto turn = [&](int i) {
            return it.layout != pointerLayout && isTurned(it.in[static_cast<std::size_t>(i)], it.itemSize);
        };
        int turned = turn(0) * 2 + turn(1);
        if (sums.matrices[row(it, 0)][turned] == nullptr) {
            swapInputs(it);
            turned = turned >> 1 | (turned & 1) << 1;
        }
        const Family& family = *sums.matrices[row(it, 0)][turned];
        if (turned & 2) it.in[0] = it.in[0].transposed();
        if (turned & 1) it.in[1] = it.in[1].transposed();
        run(it, family, call);
    } else {
        readLastAxis(it);
        it.broadcast();
        const int resultAxes = std::max(axes[0], axes[1]) > 0;
        const bool constant[] = {it.argument(0).number || it.in[0].axes == 0,
                                 it.argument(1).number || it.in[1].axes == 0};
        const View& vectors = it.in[constant[0] ? 1 : 0];
        it.output("out", given[2], resultAxes, vectors.axes == 0 ? 1 : vectors.shape[0]);
        it.out[0].axes = 1;
        it.separate(MayBeResult::any);
        if (constant[0] && sums.constantFirst[0] == nullptr) swapInputs(it);
        const int number = constant[0] || constant[1] ? (it.argument(0).number || it.in[0].axes == 0 ? 0 : 1) : -1;
        it.settle();
        const Family* family;
        if (number >= 0) {
            const int which = row(it, 1 - number);
            family = number == 0 ? sums.constantFirst[which] : sums.constantSecond[which];
            if (which < 2) {  // passed by value
                View& view = it.in[static_cast<std::size_t>(number)];
                Argument& argument = it.argument(number);
                if (!argument.number) argument.number = valueOf(view, it.element);
                call.value[0] = *argument.number;
            }
        } else {
            if (sums.vectors[row(it, 0)] == nullptr) swapInputs(it);
            family = sums.vectors[row(it, 0)];
        }
        run(it, *family, call);
    }
    it.deliver();
    return it.result();
}

}

PyObject* add(Arguments given) { return sum(given, addition); }

PyObject* subtract(Arguments given) { return sum(given, subtraction); }

PyObject* scale(Arguments given) {
    Operation it;
    it.input("a", given[0]);
    it.input("factor", given[1]);
    if (it.argument(0).number) raise(PyExc_TypeError, "a must be an array");
    it.chooseElement();
    Argument& factor = it.argument(1);
    const int axes = it.argument(0).axes();
    const bool constant = factor.number || factor.axes() == 0;
    const bool matrices = constant && axes > 2;
    it.view(0, matrices ? 2 : std::min(axes, 1));
    it.in[1].single = true;
    if (!factor.number) it.view(1, 0);
    it.broadcast();
    View& source = it.in[0];
    it.output("out", given[2], source.axes, source.shape[0], source.shape[1]);
    if (source.axes == 0) source.axes = it.out[0].axes = 1;
    it.separate(MayBeResult::any);
    it.settle();
    Call call{};
    const Family* family;
    if (constant) {
        call.value[0] = factor.number ? *factor.number : valueOf(it.in[1], it.element);
        factor.number = call.value[0];
        const bool turned = matrices && it.layout != pointerLayout && isTurned(source, it.itemSize);
        if (turned) {  // the result has the shape that isn't turned
            source = source.transposed();
            family = it.count == 1 ? &Mul_tc : &Mul_tac;
        } else {
            family = matrices ? (it.count == 1 ? &Mul_mc : &Mul_mac) : it.count == 1 ? &Mul_vc : &Mul_vac;
        }
    } else {
        const Family* const scaling[] = {&Mul_vc, &Mul_vac, &Mul_vca, &Mul_vaca};
        const int which = row(it, 0);
        family = scaling[which];
        if (which < 2) {
            factor.number = valueOf(it.in[1], it.element);
            call.value[0] = *factor.number;
        }
    }
    run(it, *family, call);
    it.deliver();
    return it.result();
}

}
