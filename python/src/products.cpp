// Products of matrices, and of matrices and vectors, with the shapes of numpy.matmul.
#include "operation.h"
#include "operations.h"

namespace korm::python {

namespace {

using namespace families;

// By what is transposed: neither, the second, the first, both. Rows: one of each, the first an array, the second, both.
const Family* const matrixProducts[4][4] = {
    {&Mul_mm, &Mul_mt, &Mul_tm, &Mul_tt},
    {&Mul_mam, &Mul_mat, &Mul_tam, &Mul_tat},
    {&Mul_mma, &Mul_mta, &Mul_tma, &Mul_tta},
    {&Mul_mama, &Mul_mata, &Mul_tama, &Mul_tata},
};
const Family* const vectorProducts[4][2] = {
    {&Mul_mv, &Mul_tv},
    {&Mul_mav, &Mul_tav},
    {&Mul_mva, &Mul_tva},
    {&Mul_mava, &Mul_tava},
};

// Do the elements of a column touch, and those of a row not? Then it is read as the transpose of what lies there.
bool isTurned(const View& view, Index itemSize) {
    return view.shape[1] > 1 && view.stride[1] != itemSize && (view.shape[0] == 1 || view.stride[0] == itemSize);
}

int row(const Operation& it) { return it.count == 1 ? 0 : !it.in[0].single ? (it.in[1].single ? 1 : 3) : 2; }

void run(Operation& it, const Family& family) {
    Call call{};
    const int status = it.run(family, call);
    if (status != 0) raise(PyExc_SystemError, "korm refused its arguments: status %d", status);
}

// One axis of a view of matrices, as vectors.
View asVector(const View& matrix, int axis) {
    View vector = matrix;
    vector.axes = 1;
    vector.shape[0] = matrix.shape[axis];
    vector.stride[0] = matrix.stride[axis];
    vector.shape[1] = 1;
    return vector;
}

void fillWithZeros(Operation& it, PyObject* result) {
    if (plan || it.count == 0) return;
    Reference zero = owned(PyLong_FromLong(0));
    if (PyArray_Check(result)) PyArray_FillWithScalar(reinterpret_cast<PyArrayObject*>(result), zero.get());
}

}

PyObject* matmul(Arguments given) {
    Operation it;
    it.input("a", given[0]);
    it.input("b", given[1]);
    for (int i = 0; i < 2; ++i)
        if (it.argument(i).number || it.argument(i).axes() == 0)
            raise(PyExc_ValueError, "matmul: %s has no axes; scale multiplies by a number", it.argument(i).name);
    it.chooseElement();
    const bool vectorFirst = it.argument(0).axes() == 1, vectorSecond = it.argument(1).axes() == 1;
    if (vectorFirst && vectorSecond) {
        PyObject* const arguments[] = {given[0], given[1], given[2]};
        return dot(arguments);
    }
    it.view(0, vectorFirst ? 1 : 2);
    it.view(1, vectorSecond ? 1 : 2);
    const Index m = vectorFirst ? 1 : it.in[0].shape[0], k = it.in[0].shape[vectorFirst ? 0 : 1];
    const Index n = vectorSecond ? 1 : it.in[1].shape[1];
    if (k != it.in[1].shape[0]) raise(PyExc_ValueError, "matmul: %zd columns don't fit %zd rows", k, it.in[1].shape[0]);
    it.broadcast();
    if (vectorFirst || vectorSecond) it.output("out", given[2], 1, vectorFirst ? n : m);
    else it.output("out", given[2], 2, m, n);
    it.separate(MayBeResult::none);
    if (k == 0 || it.isEmpty()) {
        Reference result(it.result());
        fillWithZeros(it, result.get());
        return result.release();
    }
    if (n == 1 || m == 1) {  // a product with a vector: the vector comes second
        const bool turn = vectorFirst || (m == 1 && !vectorSecond && n > 1);
        if (!vectorSecond && !turn) it.in[1] = asVector(it.in[1], 0);
        if (turn) {
            if (!vectorFirst) it.in[0] = asVector(it.in[0], 1);
            it.in[1] = it.in[1].transposed();
            std::swap(it.in[0], it.in[1]);
            std::swap(it.argument(0), it.argument(1));
        }
        if (it.out[0].axes == 2) it.out[0] = asVector(it.out[0], turn ? 1 : 0);
        it.settle();
        const bool turned = it.layout != pointerLayout && isTurned(it.in[0], it.itemSize);
        if (turned) it.in[0] = it.in[0].transposed();
        run(it, *vectorProducts[row(it)][turned]);
    } else {
        it.settle();
        int turned = 0;
        for (int i = 0; i < 2; ++i) {
            View& operand = it.in[static_cast<std::size_t>(i)];
            if (it.layout == pointerLayout || !isTurned(operand, it.itemSize)) continue;
            operand = operand.transposed();
            turned |= i == 0 ? 2 : 1;
        }
        run(it, *matrixProducts[row(it)][turned]);
    }
    it.deliver();
    return it.result();
}

}
