// Points and directions through 4 by 4 matrices of float32: vectors are rows, on the left of the matrix.
#include "operation.h"
#include "operations.h"

#include "korm.h"

#include <algorithm>
#include <iterator>
#include <string_view>

namespace korm::python {

namespace {

using Batch = std::int32_t (*)(const float*, const float*, std::int32_t, float*, std::int32_t, std::int32_t);

struct Kind {
    const char* name;
    Batch batches[3];  // of vectors of 2, 3 and 4 elements
    const char* names[3];
    Index resultLength;  // 0: that of the vectors
};

const Kind kinds[] = {
    {"all",
     {kormAffineTransform_m4v2a_32f, kormAffineTransform_m4v3a_32f, kormAffineTransform_m4v4a_32f},
     {"kormAffineTransform_m4v2a_32f", "kormAffineTransform_m4v3a_32f", "kormAffineTransform_m4v4a_32f"},
     4},
    {"points",
     {kormAffineTransformCoord_m4v2a_32f, kormAffineTransformCoord_m4v3a_32f, nullptr},
     {"kormAffineTransformCoord_m4v2a_32f", "kormAffineTransformCoord_m4v3a_32f", nullptr},
     0},
    {"directions",
     {kormAffineTransformNormal_m4v2a_32f, kormAffineTransformNormal_m4v3a_32f, nullptr},
     {"kormAffineTransformNormal_m4v2a_32f", "kormAffineTransformNormal_m4v3a_32f", nullptr},
     0},
};

void requireFloats(Operation& it) {
    if (it.element == float32) return;
    it.element = float32;
    it.itemSize = 4;
    for (int i = 0; i < it.inputs; ++i) it.argument(i).convert(float32);
}

// A batch takes vectors whose elements touch, at any distance that has a place in 32 bits.
bool isBatch(const View& view) {
    if (!view.list.empty() || (view.shape[0] > 1 && view.stride[0] != 4)) return false;
    const Index between = view.objectStride();
    return (between != -1 || view.loops.axes == 1) && between >= INT32_MIN && between <= INT32_MAX;
}

std::int32_t distance(const View& view) { return static_cast<std::int32_t>(view.objectStride()); }

// One matrix, contiguous.
void readMatrix(Operation& it, int i) {
    it.view(i, 2);
    View& matrix = it.in[static_cast<std::size_t>(i)];
    if (matrix.loops.axes > 0 || matrix.shape[0] != 4 || matrix.shape[1] != 4)
        raise(PyExc_ValueError, "%s must be one matrix of 4 by 4", it.argument(i).name);
    matrix.single = true;
    if (matrix.stride[1] != 4 || matrix.stride[0] != 16) it.copy(i);
}

void readVectors(Operation& it, int i) {
    it.view(i, 1);
    View& vectors = it.in[static_cast<std::size_t>(i)];
    it.loops = vectors.loops;
    it.count = it.loops.count();
    if (it.count > INT32_MAX) raise(PyExc_ValueError, "korm takes 2147483647 objects at most in a call");
    if (!isBatch(vectors)) it.copy(i);
}

// Results that aren't vectors with elements that touch are copied back.
PyObject* finish(Operation& it) {
    it.deliver();
    return it.result();
}

}

PyObject* transform(Arguments given) {
    const char* wanted = PyUnicode_AsUTF8(given[0]);
    if (wanted == nullptr) throw Raised{};
    const Kind* kind = std::find_if(std::begin(kinds), std::end(kinds),
                                    [&](const Kind& it) { return std::string_view(it.name) == wanted; });
    if (kind == std::end(kinds)) raise(PyExc_ValueError, "there is no transform of '%s'", wanted);
    Operation it;
    it.input("matrix", given[1]);
    it.input("vectors", given[2]);
    it.chooseElement();
    requireFloats(it);
    it.view(1, 1);
    const Index length = it.in[1].shape[0];
    if (length < 2 || length > 4 || kind->batches[length - 2] == nullptr)
        raise(PyExc_ValueError, "vectors of %zd elements have no such transform", length);
    readVectors(it, 1);
    const Loops loops = it.loops;
    readMatrix(it, 0);
    it.loops = loops;
    it.output("out", given[3], 1, kind->resultLength ? kind->resultLength : length);
    it.separate(kind->resultLength ? MayBeResult::none : MayBeResult::second);
    if (plan) addOnce(plan->functions, kind->names[length - 2]);
    if (!isBatch(it.out[0])) it.replaceOutput(0);
    if (!plan && it.count > 0) {
        const Unlocked unlocked(it.count * 4);
        kind->batches[length - 2](reinterpret_cast<float*>(it.in[0].data), reinterpret_cast<float*>(it.in[1].data),
                                  distance(it.in[1]), reinterpret_cast<float*>(it.out[0].data), distance(it.out[0]),
                                  static_cast<std::int32_t>(it.count));
    }
    return finish(it);
}

PyObject* toViewport(Arguments given) {
    const int back = PyObject_IsTrue(given[0]);
    if (back < 0) throw Raised{};
    float viewport[4];
    if (!PyArg_ParseTuple(given[5], "ffff", &viewport[0], &viewport[1], &viewport[2], &viewport[3])) throw Raised{};
    // An operation has three inputs; the product of a camera's matrices would have other bits, so each is read by one of its own.
    Operation matrices, it;
    const char* names[] = {"projection", "view", "world"};
    for (int i = 0; i < 3; ++i) matrices.input(names[i], given[i + 1]);
    matrices.chooseElement();
    requireFloats(matrices);
    for (int i = 0; i < 3; ++i) readMatrix(matrices, i);
    it.input("points", given[4]);
    it.chooseElement();
    requireFloats(it);
    it.view(0, 1);
    if (it.in[0].shape[0] != 3) raise(PyExc_ValueError, "points have 3 elements");
    readVectors(it, 0);
    it.output("out", given[6], 1, 3);
    it.separate(MayBeResult::any);
    if (!isBatch(it.out[0])) it.replaceOutput(0);
    if (plan) addOnce(plan->functions, back ? "kormUnproject_m4v3a_32f" : "kormProject_m4v3a_32f");
    int status = 0;
    if (!plan && it.count > 0) {
        const auto matrix = [&](std::size_t i) { return reinterpret_cast<const float*>(matrices.in[i].data); };
        const Unlocked unlocked(it.count * 4);
        status = (back ? kormUnproject_m4v3a_32f : kormProject_m4v3a_32f)(
            matrix(0), matrix(1), matrix(2), reinterpret_cast<float*>(it.in[0].data), distance(it.in[0]), viewport[0],
            viewport[1], viewport[2], viewport[3], reinterpret_cast<float*>(it.out[0].data), distance(it.out[0]),
            static_cast<std::int32_t>(it.count));
    }
    if (status != 0) raiseLinAlgError("The product of the matrices is singular", -1, it.loops);
    return finish(it);
}

}
