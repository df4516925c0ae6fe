// Operations that are one call of korm on the arrays as they lie.
#include "blocks.h"
#include "operations.h"

#include <atomic>
#include <cstring>

namespace korm::python {

namespace {

// Runs it; a status says which argument was bad, and none can be.
void runSound(Operation& operation, const Family& family, Call& call) {
    const int status = operation.run(family, call);
    if (status != 0) raise(PyExc_SystemError, "korm refused its arguments: status %d", status);
}

PyObject* finish(Operation& operation) {
    operation.deliver();
    return operation.result();
}

void readArray(Operation& it, PyObject* given, int axes) {
    it.input(axes == 1 ? "x" : "a", given);
    it.chooseElement();
    it.view(0, axes);
}

// After the inputs and the output are known: the call, for one object or for many.
PyObject* runSettled(Operation& it, const Family& one, const Family& many, Call call = {}) {
    it.separate(MayBeResult::none);
    it.settle();
    runSound(it, it.count == 1 ? one : many, call);
    return finish(it);
}

// The same number for each object.
PyObject* filled(Operation& it, double value) {
    Reference number = owned(PyFloat_FromDouble(value));
    Reference result(it.result());
    Reference ellipsis = Reference::shared(Py_Ellipsis);
    if (!PyArray_Check(result.get())) return number.release();
    if (PyObject_SetItem(result.get(), ellipsis.get(), number.get()) < 0) throw Raised{};
    return result.release();
}

PyObject* norm(PyObject* given, PyObject* out, int axes, const Family& one, const Family& many) {
    Operation it;
    readArray(it, given, axes);
    it.broadcast();
    it.output("out", out, 0, 1, 1, true);
    if (it.in[0].elements() == 0 && it.count > 0 && !plan) return filled(it, 0);
    return runSettled(it, one, many);
}

}

PyObject* determinant(Arguments given) {
    Operation it;
    readSquares(it, given[0]);
    it.broadcast();
    it.output("out", given[1], 0, 1, 1, true);
    if (it.in[0].elements() == 0 && it.count > 0 && !plan) return filled(it, 1);
    std::vector<std::byte> buffer(
        static_cast<std::size_t>((it.in[0].elements() + it.in[0].shape[0]) * it.itemSize + 1));
    Call call{};
    call.buffer = buffer.data();
    return runSettled(it, families::Det_m, families::Det_ma, call);
}

PyObject* frobeniusNorm(Arguments given) {
    return norm(given[0], given[1], 2, families::FrobNorm_m, families::FrobNorm_ma);
}

PyObject* vectorNorm(Arguments given) { return norm(given[0], given[1], 1, families::L2Norm_v, families::L2Norm_va); }

PyObject* trace(Arguments given) {
    Operation it;
    readArray(it, given[0], 2);
    // The diagonal ends at the shorter side.
    it.in[0].shape[0] = it.in[0].shape[1] = std::min(it.in[0].shape[0], it.in[0].shape[1]);
    if (it.in[0].shape[0] == 0) raise(PyExc_ValueError, "a: matrices without elements have no trace here");
    it.broadcast();
    it.output("out", given[1], 0, 1, 1, true);
    return runSettled(it, families::Trace_m, families::Trace_ma);
}

PyObject* transpose(Arguments given) {
    Operation it;
    readArray(it, given[0], 2);
    it.broadcast();
    it.output("out", given[1], 2, it.in[0].shape[1], it.in[0].shape[0]);
    return runSettled(it, families::Transpose_m, families::Transpose_ma);
}

namespace {

// Which of two inputs are arrays, and the families for that. Where there is none for a single first input, `first` is null and
// the inputs change places.
struct Pairs {
    const Family &one, &arrayFirst, *singleFirst, &both;
};

// Puts the inputs in the order that a form takes; true if they have changed places.
const Family& choose(Operation& it, const Pairs& pairs, bool& swapped) {
    swapped = false;
    if (it.count == 1) return pairs.one;
    if (!it.in[0].single && !it.in[1].single) return pairs.both;
    if (!it.in[0].single) return pairs.arrayFirst;
    if (pairs.singleFirst != nullptr) return *pairs.singleFirst;
    std::swap(it.in[0], it.in[1]);
    std::swap(it.argument(0), it.argument(1));
    swapped = true;
    return pairs.arrayFirst;
}

void readVectors(Operation& it, const char* first, PyObject* a, const char* second, PyObject* b) {
    it.input(first, a);
    it.input(second, b);
    for (int i = 0; i < 2; ++i)
        if (it.argument(i).number) raise(PyExc_ValueError, "%s must be an array of vectors", it.argument(i).name);
    it.chooseElement();
    it.view(0, 1);
    it.view(1, 1);
    if (it.in[0].shape[0] != it.in[1].shape[0])
        raise(PyExc_ValueError, "vectors of %zd and %zd elements don't fit", it.in[0].shape[0], it.in[1].shape[0]);
    it.broadcast();
}

}

PyObject* dot(Arguments given) {
    using namespace families;
    Operation it;
    readVectors(it, "a", given[0], "b", given[1]);
    it.output("out", given[2], 0, 1, 1, true);
    it.separate(MayBeResult::none);
    if (it.in[0].shape[0] == 0) raise(PyExc_ValueError, "vectors without elements have no dot product here");
    bool swapped;
    const Family& family = choose(it, {DotProduct_vv, DotProduct_vav, nullptr, DotProduct_vava}, swapped);
    it.settle();
    Call call{};
    runSound(it, family, call);
    return finish(it);
}

PyObject* cross(Arguments given) {
    using namespace families;
    Operation it;
    readVectors(it, "a", given[0], "b", given[1]);
    if (it.in[0].shape[0] != 3) raise(PyExc_ValueError, "cross products are of vectors of 3 elements");
    it.output("out", given[2], 1, 3);
    it.separate(MayBeResult::any);
    bool swapped;
    const Family& family =
        choose(it, {CrossProduct_vv, CrossProduct_vav, &CrossProduct_vva, CrossProduct_vava}, swapped);
    it.settle();
    Call call{};
    runSound(it, family, call);
    return finish(it);
}

PyObject* combine(Arguments given) {
    using namespace families;
    Operation it;
    const auto factor = [](PyObject* number) {
        const double value = PyFloat_AsDouble(number);
        if (PyErr_Occurred()) throw Raised{};
        return value;
    };
    readVectors(it, "x", given[1], "y", given[3]);
    it.output("out", given[4], 1, it.in[0].shape[0]);
    it.separate(MayBeResult::any);
    Call call{};
    call.value[0] = factor(given[0]);
    const bool both = given[2] != Py_None;
    if (both) call.value[1] = factor(given[2]);
    bool swapped;
    const Family& family = both ? choose(it, {LComb_vv, LComb_vav, nullptr, LComb_vava}, swapped)
                                : choose(it, {Saxpy_vv, Saxpy_vav, &Saxpy_vva, Saxpy_vava}, swapped);
    if (swapped) std::swap(call.value[0], call.value[1]);
    it.settle();
    runSound(it, family, call);
    return finish(it);
}

PyObject* gaxpy(Arguments given) {
    using namespace families;
    Operation it;
    const char* names[] = {"a", "x", "y"};
    for (int i = 0; i < 3; ++i) {
        if (it.input(names[i], given[i]).number) raise(PyExc_ValueError, "%s must be an array", names[i]);
    }
    it.chooseElement();
    it.view(0, 2);
    it.view(1, 1);
    it.view(2, 1);
    if (it.in[0].loops.axes > 0) raise(PyExc_ValueError, "a must be one matrix; take matmul and add for several");
    if (it.in[0].shape[1] != it.in[1].shape[0] || it.in[0].shape[0] != it.in[2].shape[0])
        raise(PyExc_ValueError, "sizes of matrix and vectors don't fit");
    it.broadcast();
    it.output("out", given[3], 1, it.in[0].shape[0]);
    it.separate(MayBeResult::none);
    if (it.in[0].shape[1] == 0) raise(PyExc_ValueError, "a has no columns");
    if (it.count > 1) {
        it.in[0].single = true;
        if (it.in[1].single) {
            it.in[1].single = false;
            it.copy(1);
        }
    }
    const Family& family = it.count == 1 ? Gaxpy_mv : it.in[2].single ? Gaxpy_mvav : Gaxpy_mva;
    it.settle();
    Call call{};
    runSound(it, family, call);
    return finish(it);
}

namespace {

// korm keeps the reciprocals of the diagonal, and leaves alone what stands above it.
template <class T>
void finishFactors(const View& out, const Place& place, Layout layout, Index first, Index count) {
    std::byte* const start = layout == listLayout ? nullptr : out.data + first * out.objectStride();
    const Index between = layout == listLayout ? 0 : out.objectStride();
    withOrder(out.shape[0], [&](auto order) {
        for (Index k = 0; k < count; ++k) {
            std::byte* row = layout == listLayout ? static_cast<std::byte* const*>(place.base)[k] : start + k * between;
            for (Index i = 0; i < order; ++i, row += out.stride[0]) {
                T value;
                std::memcpy(&value, row + i * out.stride[1], sizeof value);
                value = 1 / value;
                std::memcpy(row + i * out.stride[1], &value, sizeof value);
                for (Index j = i + 1; j < order; ++j) std::memset(row + j * out.stride[1], 0, sizeof value);
            }
        }
    });
}

}

PyObject* cholesky(Arguments given) {
    using namespace families;
    Operation it;
    readSquares(it, given[0]);
    it.broadcast();
    it.output("out", given[1], 2, it.in[0].shape[0], it.in[0].shape[0]);
    it.separate(MayBeResult::any);
    it.settle();
    const Family& family = it.count == 1 ? CholeskyDecomp_m : CholeskyDecomp_ma;
    const Form& form = formOf(family, it.element, it.layout);
    if (plan || it.isEmpty()) return finish(it);
    // A block at a time, so that the second pass finds the factors in the cache.
    const Index elements = it.in[0].elements();
    const Index block = it.count == 1 ? 1 : blockOf(it, elements);
    std::atomic<int> status = 0;
    {
        const Unlocked unlocked(it.count * elements);
        inBlocks(it.count, block, elements, [&](Blocks& blocks) {
            Call part{};
            Index first, objects;
            while (status == 0 && blocks.take(first, objects)) {
                Addresses addresses;
                it.place(part, first, objects, addresses);
                if (const int own = form.call(part)) status = own;
                if (it.element == float32) finishFactors<float>(it.out[0], part.out[0], it.layout, first, objects);
                else finishFactors<double>(it.out[0], part.out[0], it.layout, first, objects);
            }
        });
    }
    if (status != 0) raiseLinAlgError("Matrix is not positive definite", it.firstFailure(family), it.loops);
    return finish(it);
}

}
