// Eigenproblems, a block of objects at a time. Matrices are scaled before, by powers of two, to where korm's absolute tests do no
// harm, and what comes back is held against the matrix: objects that korm refuses, and those whose results miss, are named.
#include "blocks.h"
#include "operations.h"

#include <atomic>
#include <numeric>

namespace korm::python {

namespace {

using namespace families;

// An object that is refused costs its whole block time, so blocks are of few bytes.
constexpr Index smallBlock = 16384;

constexpr int norm = 20;  // matrices are scaled to a greatest element of about 2^20

// Symmetric ones of floats to less, which takes less time: what korm takes for zero, half the square root of epsilon, is lost in
// rounding from 2^12 on.
template <class T>
constexpr int symmetricNorm = sizeof(T) == 4 ? 12 : norm;

// What a residual may be: a multiple of what rounding leaves.
template <class T>
T tolerance(Index order, int exponent) {
    return static_cast<T>(64 * order) * std::numeric_limits<T>::epsilon() * std::ldexp(T{1}, exponent);
}

// Objects `first` to `first + count` - 1 of streams, which may have no vectors.
template <class T>
std::int32_t callSolver(const Family& family, Element element, const Streams<T>& matrices, const Streams<T>* vectors,
                        T* buffer, T* values, T* imaginary, Index first, Index count) {
    Addresses addresses;
    Call call{};
    const Index order = matrices.view.shape[0];
    call.in[0] = matrices.place(first, count, addresses);
    if (vectors) call.out[0] = vectors->place(first, count, addresses);
    call.buffer = buffer;
    call.values = values + first * order;
    if (imaginary) call.imaginary = imaginary + first * order;
    call.count = static_cast<std::int32_t>(count);
    return formOf(family, element, pointerLayout).call(call);
}

// Eigenvalues and vectors of symmetric matrices, of which one triangle counts.
template <class T>
class Symmetric {
public:
    Symmetric(const Operation& it, Index capacity, bool upper, bool vectors)
        : it(it),
          order(it.in[0].shape[0]),
          upper(upper),
          vectors(vectors || order > 3),
          // Without vectors there is nothing to hold the values against, and above order 3 they may miss.
          block(capacity),
          matrices(block, 2, order, order),
          found(block, 2, order, order),
          columns(static_cast<std::size_t>(order)),
          sums(static_cast<std::size_t>(block)),
          opposite(sums),
          reversed(columns.size()),
          values(static_cast<std::size_t>(block * order)),
          buffer(static_cast<std::size_t>(order * order)),
          source(it.in[0], it.element) {
        if (it.outputs == 2) toVectors.emplace(it.out[1], it.element);
    }

    void run(Blocks& blocks, bool wantsVectors, Numbers& refused) {
        Index first, objects;
        while (blocks.take(first, objects)) {
            bad.assign(static_cast<std::size_t>(objects), 0);
            prepare(first, objects);
            shifts.assign(static_cast<std::size_t>(objects), 0);
            int failures = 0;
            inHalves(
                0, objects, failures, [&](Index k, Index n) { return call(k, n); },
                [&](Index k, Index n) { callShifted(k, n); });
            if (vectors) judge(objects);
            deliver(first, objects, wantsVectors);
            for (Index k = 0; k < objects; ++k)
                if (bad[static_cast<std::size_t>(k)]) refused.add(first + k);
        }
    }

private:
    void prepare(Index first, Index count) {
        source.read(matrices, first, count);
        for (Index i = 0; i < order; ++i)
            for (Index j = 0; j < i; ++j) {
                if (upper) std::copy_n(matrices.row(j, i), count, matrices.row(i, j));
                else std::copy_n(matrices.row(i, j), count, matrices.row(j, i));
            }
        factorsTo(symmetricNorm<T>, matrices, count, factors);
        matrices.scale(factors, count);
    }

    // Singular matrices are refused. Shifted by more than their norm they aren't singular, and the vectors are the same.
    void callShifted(Index first, Index count) {
        const T shift = std::ldexp(static_cast<T>(2 * order), symmetricNorm<T>);
        for (Index k = first; k < first + count; ++k) {
            shifts[static_cast<std::size_t>(k)] = shift;
            for (Index i = 0; i < order; ++i) matrices.row(i, i)[k] += shift;
        }
        if (call(first, count) == 0) return;
        for (Index k = first; k < first + count; ++k)
            if (call(k, 1) != 0) bad[static_cast<std::size_t>(k)] = 1;
    }

    std::int32_t call(Index first, Index count) {
        return callSolver<T>(vectors ? EigenValuesVectorsSym_ma : EigenValuesSym_ma, it.element, matrices,
                             vectors ? &found : nullptr, buffer.data(), values.data(), nullptr, first, count);
    }

    // Is A v - w v as short for each vector as rounding leaves it?
    void judge(Index count) {
        const T limit = tolerance<T>(order, symmetricNorm<T>);
        T* __restrict const sum = sums.data();
        char* const isBad = bad.data();
        withOrder(order, [&](auto n) {
            for (Index c = 0; c < n; ++c) {
                const T* const w = values.data() + c;
                for (Index k = 0; k < count; ++k) opposite[static_cast<std::size_t>(k)] = -w[k * n];
                std::fill_n(sum, count, T{0});
                for (Index i = 0; i < n; ++i) {
                    const T *const minusW = opposite.data(), *const own = found.row(i, c), *const v = found.row(0, c),
                                   *const a = matrices.row(i, 0);
                    const Index nextV = found.row(1, 0) - found.row(0, 0),
                                nextA = matrices.row(0, 1) - matrices.row(0, 0);
                    for (Index k = 0; k < count; ++k) {
                        T rest = minusW[k] * own[k];
                        for (Index j = 0; j < n; ++j) rest += a[j * nextA + k] * v[j * nextV + k];
                        sum[k] += std::fabs(rest);
                    }
                }
                for (Index k = 0; k < count; ++k) isBad[k] |= !(sum[k] <= limit);
            }
        });
    }

    // In ascending order, as NumPy has them: mostly the reverse of korm's.
    void deliver(Index first, Index count, bool wantsVectors) {
        if (wantsVectors) {
            View reversed = found.view;
            reversed.data += (order - 1) * reversed.stride[1];
            reversed.stride[1] = -reversed.stride[1];
            toVectors->write(reversed, first, count);
        }
        auto* const w = reinterpret_cast<T*>(it.out[0].data) + first * order;
        const T *const shift = shifts.data(), *const factor = factors.data();
        withOrder(order, [&](auto n) {
            for (Index k = 0; k < count; ++k) {
                const T* const own = values.data() + k * n;
                bool isDescending = true;
                for (Index j = 1; j < n; ++j) isDescending &= own[j - 1] >= own[j];
                for (Index j = 0; j < n; ++j) w[k * n + j] = (own[n - 1 - j] - shift[k]) * (1 / factor[k]);
                if (!isDescending) sort(k, w + k * n, wantsVectors ? first : -1);
            }
        });
    }

    // Values that are delivered, and the vectors of an object that stands there in the results.
    void sort(Index k, T* w, Index first) {
        std::iota(columns.begin(), columns.end(), 0);
        std::sort(columns.begin(), columns.end(),
                  [&](Index a, Index b) { return w[a] < w[b] || (!std::isnan(w[a]) && std::isnan(w[b])); });
        std::copy_n(w, order, reversed.begin());
        for (Index j = 0; j < order; ++j) {
            const Index c = columns[static_cast<std::size_t>(j)];
            w[j] = reversed[static_cast<std::size_t>(c)];
            if (first < 0) continue;
            T* const v = reinterpret_cast<T*>(it.out[1].data) + (first + k) * order * order;
            for (Index i = 0; i < order; ++i) v[i * order + j] = found.row(i, order - 1 - c)[k];
        }
    }

    const Operation& it;
    Index order;
    bool upper, vectors;
    Index block;
    Streams<T> matrices, found;
    std::vector<Index> columns;
    std::vector<T> sums, opposite, reversed, values, buffer, factors, shifts;
    Bridge<T> source;
    std::optional<Bridge<T>> toVectors;
    std::vector<char> bad;
};

template <class T>
class General {
public:
    General(const Operation& it, Index capacity, bool vectors)
        : it(it),
          order(it.in[0].shape[0]),
          vectors(vectors),
          block(capacity),
          matrices(block, 2, order, order),
          found(block, 2, order, order),
          re(static_cast<std::size_t>(block * order)),
          im(re),
          buffer(static_cast<std::size_t>(order * (3 * order + 5))),
          source(it.in[0], it.element) {}

    // Writes complex values and vectors. Are any not real?
    bool run(Blocks& blocks, T* w, T* v, Numbers& refused) {
        bool complex = false;
        Index first, objects;
        while (blocks.take(first, objects)) {
            bad.assign(static_cast<std::size_t>(objects), 0);
            source.read(matrices, first, objects);
            factorsTo(norm, matrices, objects, factors);
            matrices.scale(factors, objects);
            // An object may end without vectors and with status Ok; then these stay, and it is found out.
            found.fill(std::numeric_limits<T>::quiet_NaN());
            std::fill(re.begin(), re.end(), std::numeric_limits<T>::quiet_NaN());
            int failures = 0;
            inHalves(
                0, objects, failures, [&](Index k, Index n) { return call(k, n); },
                [&](Index from, Index n) {
                    for (Index k = from; k < from + n; ++k)
                        if (call(k, 1) != 0) bad[static_cast<std::size_t>(k)] = 1;
                });
            for (Index k = 0; k < objects; ++k) {
                if (!(vectors ? solves(k) : agrees(k))) bad[static_cast<std::size_t>(k)] = 1;
                if (bad[static_cast<std::size_t>(k)]) refused.add(first + k);
                else complex = deliver(k, w + 2 * (first + k) * order, v + 2 * (first + k) * order * order) || complex;
            }
        }
        return complex;
    }

private:
    std::int32_t call(Index first, Index count) {
        return callSolver<T>(vectors ? EigenValuesVectorsLeft_ma : EigenValues_ma, it.element, matrices,
                             vectors ? &found : nullptr, buffer.data(), re.data(), im.data(), first, count);
    }

    // A y = w y, for a value or for both of a conjugate pair?
    bool solves(Index k) {
        const T most = tolerance<T>(order, norm);
        const T *a = re.data() + k * order, *b = im.data() + k * order;
        for (Index c = 0; c < order; ++c) {
            const bool pair = b[c] != 0;
            if (pair && (c + 1 == order || b[c + 1] != -b[c])) return false;
            T length = 0;
            for (Index i = 0; i < order; ++i) {
                const T x = found.row(i, c)[k], y = pair ? found.row(i, c + 1)[k] : T{0};
                T real = b[c] * y - a[c] * x, imaginary = -(a[c] * y + b[c] * x);
                for (Index j = 0; j < order; ++j) {
                    const T element = matrices.row(i, j)[k];
                    real += element * found.row(j, c)[k];
                    if (pair) imaginary += element * found.row(j, c + 1)[k];
                }
                if (!(std::fabs(real) <= most) || (pair && !(std::fabs(imaginary) <= most))) return false;
                length += x * x + y * y;
            }
            if (!(std::fabs(length - 1) <= static_cast<T>(1e-3))) return false;
            c += pair;
        }
        return true;
    }

    // Without vectors: are the sums of the values and of their squares those of the matrix and of its square?
    bool agrees(Index k) {
        const T scale = std::ldexp(T{1}, -norm);
        T first = 0, second = 0;
        for (Index i = 0; i < order; ++i) {
            first += matrices.row(i, i)[k] * scale;
            for (Index j = 0; j < order; ++j) second += matrices.row(i, j)[k] * scale * (matrices.row(j, i)[k] * scale);
        }
        for (Index i = 0; i < order; ++i) {
            const T a = re[static_cast<std::size_t>(k * order + i)] * scale,
                    b = im[static_cast<std::size_t>(k * order + i)] * scale;
            first -= a;
            second -= (a - b) * (a + b);
        }
        const T most = static_cast<T>(64 * order * order) * std::numeric_limits<T>::epsilon();
        return std::fabs(first) <= most && std::fabs(second) <= most;
    }

    bool deliver(Index k, T* w, T* v) {
        const T back = 1 / factors[static_cast<std::size_t>(k)];
        bool complex = false;
        for (Index c = 0; c < order; ++c) {
            const T b = im[static_cast<std::size_t>(k * order + c)];
            w[2 * c] = re[static_cast<std::size_t>(k * order + c)] * back;
            w[2 * c + 1] = b * back;
            complex = complex || b != 0;
            if (!vectors) continue;
            const Index left =
                b < 0 ? c - 1 : c;  // of a pair, the first column is the real part, the second the imaginary
            for (Index i = 0; i < order; ++i) {
                v[2 * (i * order + c)] = found.row(i, left)[k];
                v[2 * (i * order + c) + 1] = b == 0  ? 0
                                             : b < 0 ? -found.row(i, left + 1)[k]
                                                     : found.row(i, left + 1)[k];
            }
        }
        return complex;
    }

    const Operation& it;
    Index order;
    bool vectors;
    Index block;
    Streams<T> matrices, found;
    std::vector<T> re, im, buffer, factors;
    Bridge<T> source;
    std::vector<char> bad;
};

template <class T>
void solveSymmetric(const Operation& it, bool upper, bool vectors, Numbers& refused) {
    const Index elements = it.in[0].elements(), block = blockOf(it, elements, smallBlock);
    const Unlocked unlocked(it.count * elements);
    inBlocks(it.count, block, elements,
             [&](Blocks& blocks) { Symmetric<T>(it, block, upper, vectors).run(blocks, vectors, refused); });
}

// Are any values not real?
template <class T>
bool solveGeneral(const Operation& it, void* w, void* v, Numbers& refused) {
    const Index elements = it.in[0].elements(), block = blockOf(it, elements, smallBlock);
    const Unlocked unlocked(it.count * elements);
    std::atomic<bool> complex = false;
    inBlocks(it.count, block, elements, [&](Blocks& blocks) {
        if (General<T>(it, block, v != nullptr).run(blocks, static_cast<T*>(w), static_cast<T*>(v), refused))
            complex = true;
    });
    return complex;
}

bool truth(PyObject* object) {
    const int is = PyObject_IsTrue(object);
    if (is < 0) throw Raised{};
    return is != 0;
}

}

// Values, vectors or None, and the objects that were refused.
PyObject* symmetricEigen(Arguments given) {
    Operation it;
    readSquares(it, given[0]);
    it.broadcast();
    const bool upper = truth(given[1]), vectors = truth(given[2]);
    const Index order = it.in[0].shape[0];
    it.output("w", nullptr, 1, order);
    if (vectors) it.output("v", nullptr, 2, order, order);
    Numbers refused;
    if (!it.isEmpty()) {
        makeReadable(it, 0);
        if (plan)
            formOf(vectors || order > 3 ? EigenValuesVectorsSym_ma : EigenValuesSym_ma, it.element, pointerLayout);
        else if (it.element == float32) solveSymmetric<float>(it, upper, vectors, refused);
        else solveSymmetric<double>(it, upper, vectors, refused);
    }
    Reference v = vectors ? Reference(it.result(1)) : Reference::shared(Py_None);
    return Py_BuildValue("NNN", it.result(0), v.release(), listOf(refused.sorted()).release());
}

// Complex values, complex vectors or None, whether any value isn't real, and the objects that were refused.
PyObject* generalEigen(Arguments given) {
    Operation it;
    readSquares(it, given[0]);
    it.broadcast();
    const bool vectors = truth(given[1]);
    const Index order = it.in[0].shape[0];
    const int type = it.element == float32 ? NPY_COMPLEX64 : NPY_COMPLEX128;
    Reference w = newArray(it.loops, 1, order, 1, type);
    Reference v = vectors ? newArray(it.loops, 2, order, order, type) : Reference::shared(Py_None);
    Numbers refused;
    bool complex = false;
    if (it.count > 0 && order > 0) {
        makeReadable(it, 0);
        void* const toW = PyArray_DATA(w.array());
        void* const toV = vectors ? PyArray_DATA(v.array()) : nullptr;
        if (plan) formOf(vectors ? EigenValuesVectorsLeft_ma : EigenValues_ma, it.element, pointerLayout);
        else if (it.element == float32) complex = solveGeneral<float>(it, toW, toV, refused);
        else complex = solveGeneral<double>(it, toW, toV, refused);
    }
    return Py_BuildValue("NNNN", w.release(), v.release(), PyBool_FromLong(complex),
                         listOf(refused.sorted()).release());
}

}
