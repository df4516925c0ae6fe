// Decompositions and what is made of them, a block of objects at a time.
#include "blocks.h"
#include "operations.h"

namespace korm::python {

namespace {

using namespace families;

// LU decompositions of a block of matrices. Orders 1, 2 and from 7 on refuse pivots below an absolute limit, so their matrices are
// scaled; others are read where they lie.
template <class T>
class LU {
public:
    LU(const Operation& it, Index capacity, bool scaled)
        : it(it),
          order(it.in[0].shape[0]),
          scaled(scaled || order < 3 || order > 6),
          factored(capacity, order, order),
          pivots(static_cast<std::size_t>(capacity * order)) {}

    // The first object of all that has no decomposition, or -1.
    Index decompose(Index first, Index count) {
        Index failed = -1;
        allOrEach(
            count,
            [&] {
                if (!scaled) return;
                factored.read(it.in[0], first, count);
                factored.scaleTo(0, count, factors);
            },
            [&](Index begin, Index objects) {
                Addresses addresses;
                Call call{};
                describe(call.out[0], factored.view, it.layout, begin, objects, sizeof(T), addresses);
                if (scaled) call.in[0] = call.out[0];
                else describe(call.in[0], it.in[0], it.layout, first + begin, objects, sizeof(T), addresses);
                call.pivots = pivots.data() + begin * order;
                call.count = static_cast<std::int32_t>(objects);
                return formOf(LUDecomp_ma, it.element, it.layout).call(call);
            },
            [&](Index k) { failed = failed < 0 ? first + k : failed; });
        return failed;
    }

    // Solves with object k of the block for vector k of an array, or with one object for all.
    void solve(bool oneMatrix, const View& right, const View& solutions, Index first, Index count) {
        Addresses addresses;
        Place place;
        describe(place, right, it.layout, first, count, sizeof(T), addresses);
        solveScaled(oneMatrix, place, solutions, first, count);
        if (!scaled) return;
        if (oneMatrix) factors.resize(static_cast<std::size_t>(count), factors[0]);
        scaleObjects(solutions, first, count, factors.data());
    }

    // With the matrices as they have been scaled.
    void solveScaled(bool oneMatrix, const Place& right, const View& solutions, Index first, Index count) {
        Addresses addresses;
        Call call{};
        factored.view.single = oneMatrix;
        describe(call.in[0], factored.view, it.layout, 0, count, sizeof(T), addresses);
        factored.view.single = false;
        call.in[1] = right;
        describe(call.out[0], solutions, it.layout, first, count, sizeof(T), addresses);
        call.pivots = pivots.data();
        call.count = static_cast<std::int32_t>(count);
        formOf(oneMatrix ? LUBackSubst_mva : LUBackSubst_mava, it.element, it.layout).call(call);
    }

    const Operation& it;
    Index order;
    bool scaled;
    Objects<T> factored;
    std::vector<std::int32_t> pivots;
    std::vector<T> factors;
};

View columnOf(const View& matrix, Index j) {
    View vector = matrix;
    vector.axes = 1;
    vector.shape[1] = 1;
    vector.data += matrix.list.empty() ? j * matrix.stride[1] : 0;
    for (std::byte*& object : vector.list) object += j * matrix.stride[1];
    return vector;
}

// The columns of one matrix, as an array of vectors.
View columnsOf(const View& matrix) {
    View vectors = matrix;
    vectors.axes = 1;
    vectors.loops.axes = 1;
    vectors.loops.shape[0] = matrix.shape[1];
    vectors.loopStride[0] = matrix.stride[1];
    vectors.shape[1] = 1;
    vectors.single = false;
    return vectors;
}

void planLU(const Operation& it, const Family* solves) {
    formOf(LUDecomp_ma, it.element, it.layout);
    if (solves) formOf(*solves, it.element, it.layout);
}

// Where x is an array of vectors, or else of its columns: f(j), or f(0) for vectors.
template <class Do>
void forColumns(const View& x, Do f) {
    for (Index j = 0; j < (x.axes == 1 ? 1 : x.shape[1]); ++j) f(j);
}

View vectorsOf(const View& array, Index j) { return array.axes == 1 ? array : columnOf(array, j); }

// Decomposes all matrices a block at a time, and calls use(lu, first, objects) for each. The object that has no decomposition, or -1.
template <class T, class Use>
Index decomposeBlocks(const Operation& it, const Use& use) {
    const Index elements = it.in[0].elements(), block = blockOf(it, elements);
    Numbers failures;
    inBlocks(it.count, block, elements, [&](Blocks& blocks) {
        LU<T> lu(it, block, false);
        Index first, objects;
        while (blocks.take(first, objects)) {
            const Index failed = lu.decompose(first, objects);
            if (failed >= 0) return failures.add(failed);
            use(lu, first, objects);
        }
    });
    return failures.lowest();
}

// Solves for the columns of b. The object that has no solution, or -1.
template <class T>
Index solveBlocks(const Operation& it, bool oneMatrix) {
    const Unlocked unlocked(it.count * it.in[0].elements());
    const auto solve = [&](LU<T>& lu, Index first, Index count) {
        forColumns(it.out[0], [&](Index j) {
            lu.solve(oneMatrix, vectorsOf(it.in[1], j), vectorsOf(it.out[0], j), first, count);
        });
    };
    if (oneMatrix) {
        LU<T> lu(it, 1, false);
        if (lu.decompose(0, 1) >= 0) return 0;
        solve(lu, 0, it.count);
        return -1;
    }
    return decomposeBlocks<T>(it, solve);
}

// From order 7 on a call for each matrix, whose vectors are columns, is faster than one for each column of all matrices.
bool solvesEach(const Operation& it) {
    return it.in[0].shape[0] > 6 && it.layout == standardLayout &&
           (columnsOf(it.out[0]).layouts(it.itemSize) >> standardLayout & 1U);
}

// Inverses of a block by LU decomposition: solutions for the columns of the identity, times the factors of the matrices. The
// object that has none, or -1.
template <class T>
Index invertByLU(const Operation& it, LU<T>& lu, Index first, Index objects) {
    const Index order = it.in[0].shape[0];
    const Index failed = lu.decompose(first, objects);
    if (failed >= 0) return failed;
    const bool each = solvesEach(it);
    const Index vectors = each ? order : objects;
    Objects<T> units(vectors, order, 1);
    units.view.axes = 1;
    Addresses addresses;
    if (each) {
        Call call{};
        describe(call.in[0], lu.factored.view, standardLayout, 0, objects, sizeof(T), addresses);
        describe(call.in[1], units.view, standardLayout, 0, order, sizeof(T), addresses);
        describe(call.out[0], columnsOf(it.out[0]), standardLayout, 0, order, sizeof(T), addresses);
        call.count = static_cast<std::int32_t>(order);
        const Form& form = formOf(LUBackSubst_mva, it.element, standardLayout);
        for (Index k = 0; k < objects; ++k) {
            for (Index j = 0; j < order; ++j) units.object(j)[j] = lu.factors[static_cast<std::size_t>(k)];
            call.in[0].base = lu.factored.object(k);
            call.out[0].base = it.out[0].data + (first + k) * it.out[0].objectStride();
            call.pivots = lu.pivots.data() + k * order;
            form.call(call);
        }
        return -1;
    }
    Place right;
    describe(right, units.view, it.layout, 0, objects, sizeof(T), addresses);
    for (Index j = 0; j < order; ++j) {
        for (Index k = 0; k < objects; ++k)
            for (Index i = 0; i < order; ++i) units.object(k)[i] = i == j ? lu.factors[static_cast<std::size_t>(k)] : 0;
        lu.solveScaled(false, right, columnOf(it.out[0], j), first, objects);
    }
    return -1;
}

// May the determinants of objects that lie as described, and all that leads to them, have no place in the type's range?
template <class T>
bool isFarFromOne(const Place& place, Layout layout, Index order, Index count) {
    constexpr int word = sizeof(T) / 4;  // the upper half of a double holds its exponent
    constexpr int shift = sizeof(T) == 4 ? 23 : 20, bias = sizeof(T) == 4 ? 127 : 1023;
    const std::int32_t most = (sizeof(T) == 4 ? 100 : 900) / static_cast<std::int32_t>(order);
    const bool dense =
        layout != pointerLayout && place.elementStride == sizeof(T) && place.rowStride == order * place.elementStride;
    const auto greater = [](std::int32_t greatest, const std::byte* element) {
        std::int32_t bits;
        std::memcpy(&bits, element + (word - 1) * 4, sizeof bits);
        return std::max(greatest, bits & INT32_MAX);
    };
    for (Index k = 0; k < count; ++k) {
        std::int32_t greatest = 0;
        if (layout == pointerLayout) {
            const auto* table = static_cast<std::byte* const*>(place.base);
            for (Index e = 0; e < order * order; ++e) greatest = greater(greatest, table[e] + k * place.objectStride);
        } else {
            const std::byte* object = layout == listLayout
                                          ? static_cast<std::byte* const*>(place.base)[k]
                                          : static_cast<const std::byte*>(place.base) + k * place.objectStride;
            if (dense) {
                for (Index e = 0; e < order * order; ++e)
                    greatest = greater(greatest, object + e * static_cast<Index>(sizeof(T)));
            } else {
                for (Index i = 0; i < order; ++i)
                    for (Index j = 0; j < order; ++j)
                        greatest = greater(greatest, object + i * place.rowStride + j * place.elementStride);
            }
        }
        if (std::abs((greatest >> shift) - bias) > most) return true;
    }
    return false;
}

// Closed forms a block at a time; a block for which they are no good goes by LU decomposition of matrices that are scaled.
// The object that is singular, -1, or -2 if it can't be told.
template <class T>
Index invertBlocks(Operation& it, bool closedForm) {
    const Index order = it.in[0].shape[0], elements = order * order;
    const Unlocked unlocked(it.count * elements);
    const Index block = blockOf(it, elements);
    const Form& form = formOf(it.count == 1 ? families::Invert_m : families::Invert_ma, it.element, it.layout);
    Numbers failures;
    inBlocks(it.count, block, elements, [&](Blocks& blocks) {
        std::optional<LU<T>> lu;
        double buffer[6 * 7];
        Call call{};
        call.buffer = buffer;
        Index first, objects;
        while (blocks.take(first, objects)) {
            if (closedForm) {
                Addresses addresses;
                it.place(call, first, objects, addresses);
                // In place, a form that fails has overwritten what LU decomposition would need. Without it, that works in place as
                // well: the whole block is read first.
                const bool far = isFarFromOne<T>(call.in[0], it.layout, order, objects);
                if (!far && form.call(call) == 0) continue;
                if (!far && it.isInPlace()) return failures.add(-2);
            }
            if (!lu) lu.emplace(it, block, true);
            const Index failed = invertByLU(it, *lu, first, objects);
            if (failed >= 0) return failures.add(failed);
        }
    });
    return failures.lowest();
}

}

void readSquares(Operation& operation, PyObject* given) {
    operation.input("a", given);
    operation.chooseElement();
    operation.view(0, 2);
    requireSquare(operation);
}

void requireSquare(const Operation& operation) {
    if (operation.in[0].shape[0] == operation.in[0].shape[1]) return;
    Reference module = owned(PyImport_ImportModule("numpy.linalg"));
    Reference error = owned(PyObject_GetAttrString(module.get(), "LinAlgError"));
    raise(error.get(), "Last 2 dimensions of the array must be square");
}

PyObject* inverse(Arguments given) {
    Operation it;
    readSquares(it, given[0]);
    it.broadcast();
    const Index order = it.in[0].shape[0];
    it.output("out", given[1], 2, order, order);
    // By LU decomposition from order 7 on, where cofactors take long, and of order 2, where those that are zero come out as tiny
    // numbers; and, as long as the input stands, where a determinant has no place in the type's range.
    const bool closedForm = order <= 6 && order != 2;
    it.separate(closedForm ? MayBeResult::any : MayBeResult::none);
    if (it.isEmpty()) return it.result();
    if (closedForm) {
        it.settle();
        formOf(it.count == 1 ? families::Invert_m : families::Invert_ma, it.element, it.layout);
    } else {
        readInBlocks(it, 0);
        it.settle(0);
        planLU(it, solvesEach(it) ? &LUBackSubst_mva : &LUBackSubst_mava);
    }
    if (!plan) {
        const Index failed =
            it.element == float32 ? invertBlocks<float>(it, closedForm) : invertBlocks<double>(it, closedForm);
        if (failed != -1) raiseLinAlgError("Singular matrix", failed, it.loops);
    }
    it.deliver();
    return it.result();
}

namespace {

// Matrices and right-hand sides. Are those vectors?
bool readSystem(Operation& it, Arguments given) {
    it.input("a", given[0]);
    it.input("b", given[1]);
    for (int i = 0; i < 2; ++i)
        if (it.argument(i).number) raise(PyExc_ValueError, "%s must be an array", it.argument(i).name);
    it.chooseElement();
    const bool vectors = it.argument(1).axes() == std::max(it.argument(0).axes() - 1, 1);
    it.view(0, 2);
    it.view(1, vectors ? 1 : 2);
    return vectors;
}

}  // namespace

PyObject* solve(Arguments given) {
    Operation it;
    const bool vectors = readSystem(it, given);
    requireSquare(it);
    const Index order = it.in[0].shape[0];
    if (it.in[1].shape[0] != order)
        raise(PyExc_ValueError, "b has %zd rows for matrices of order %zd", it.in[1].shape[0], order);
    it.broadcast();
    it.output("out", given[2], vectors ? 1 : 2, order, it.in[1].shape[1]);
    it.separate(MayBeResult::none);
    if (it.isEmpty()) return it.result();
    const Loops loops = it.loops;
    bool oneMatrix = it.in[0].single && it.count > 1;
    if (it.count == 1 && !vectors && it.in[1].list.empty() && it.out[0].list.empty()) {
        // The columns are the vectors that one matrix serves.
        const auto areStandard = [&](const View& array) {
            return columnsOf(array).layouts(it.itemSize) >> standardLayout & 1U;
        };
        if (!areStandard(it.in[1])) it.copy(1);
        if (!areStandard(it.out[0])) it.replaceOutput(0);
        it.in[1] = columnsOf(it.in[1]);
        it.out[0] = columnsOf(it.out[0]);
        it.loops = it.in[1].loops;
        it.count = it.loops.count();
        oneMatrix = true;
    }
    it.in[0].single = oneMatrix;
    it.in[1].single = false;
    if (order < 3 || order > 6) readInBlocks(it, 0);
    it.settle();
    planLU(it, oneMatrix ? &LUBackSubst_mva : &LUBackSubst_mava);
    Index failed = -1;
    if (!plan) failed = it.element == float32 ? solveBlocks<float>(it, oneMatrix) : solveBlocks<double>(it, oneMatrix);
    if (failed >= 0) raiseLinAlgError("Singular matrix", oneMatrix && loops.axes > 0 ? -1 : failed, loops);
    it.deliver();
    return it.result();
}

namespace {

template <class T>
Index luBlocks(const Operation& it, std::int32_t* rows) {
    const Index order = it.in[0].shape[0], elements = order * order;
    const Unlocked unlocked(it.count * elements);
    return decomposeBlocks<T>(it, [&](const LU<T>& lu, Index first, Index objects) {
        std::copy_n(lu.pivots.data(), objects * order, rows + first * order);
        for (Index k = 0; k < objects; ++k) {
            const std::int32_t* pivots = rows + (first + k) * order;
            T* lower = reinterpret_cast<T*>(it.out[0].data) + (first + k) * elements;
            T* upper = reinterpret_cast<T*>(it.out[1].data) + (first + k) * elements;
            const T back = lu.scaled ? 1 / lu.factors[static_cast<std::size_t>(k)] : 1;
            for (Index i = 0; i < order; ++i, lower += order, upper += order) {
                const T* row = lu.factored.object(k) + pivots[i] * order;
                for (Index j = 0; j < order; ++j) {
                    lower[j] = j < i ? row[j] : static_cast<T>(i == j);
                    upper[j] = j < i ? 0 : row[j] * back;
                }
            }
        }
    });
}

}

// Lower and upper triangles, and the rows of a that they belong to.
PyObject* lu(Arguments given) {
    Operation it;
    readSquares(it, given[0]);
    it.broadcast();
    const Index order = it.in[0].shape[0];
    it.output("l", nullptr, 2, order, order);
    it.output("u", nullptr, 2, order, order);
    Reference rows = newArray(it.loops, 1, order, 1, NPY_INT32);
    if (!it.isEmpty()) {
        it.in[0].single = false;
        if (order < 3 || order > 6) readInBlocks(it, 0);
        it.settle();
        planLU(it, nullptr);
        if (!plan) {
            auto* pivots = static_cast<std::int32_t*>(PyArray_DATA(rows.array()));
            const Index failed = it.element == float32 ? luBlocks<float>(it, pivots) : luBlocks<double>(it, pivots);
            if (failed >= 0) raiseLinAlgError("Singular matrix", failed, it.loops);
        }
    }
    return Py_BuildValue("NNN", it.result(0), it.result(1), rows.release());
}

namespace {

// QR decompositions of a block, of matrices scaled so far up that no column's square is below the absolute limit.
template <class T>
class QR {
public:
    QR(const Operation& it, Index capacity)
        : element(it.element),
          matrices(capacity, 2, it.in[0].shape[0], it.in[0].shape[1]),
          buffer(static_cast<std::size_t>(it.in[0].shape[0])) {}

    template <class Failed>
    void decompose(const Bridge<T>& source, Index first, Index count, Failed failed) {
        allOrEach(
            count,
            [&] {
                source.read(matrices, first, count);
                factorsTo(sizeof(T) == 4 ? 50 : 480, matrices, count, factors);
                matrices.scale(factors, count);
            },
            [&](Index begin, Index objects) {
                Addresses addresses;
                Call call{};
                call.in[0] = call.out[0] = matrices.place(begin, objects, addresses);
                call.buffer = buffer.data();
                call.count = static_cast<std::int32_t>(objects);
                return formOf(QRDecomp_ma, element, pointerLayout).call(call);
            },
            failed);
    }

    // The first columns of the product of all reflections.
    void formQ(Streams<T>& q, Index count) {
        const Index height = matrices.rows(), width = matrices.columns();
        std::vector<T> weights(static_cast<std::size_t>(count)), sums(weights);
        q.fill(0);
        for (Index j = 0; j < width; ++j) std::fill_n(q.row(j, j), count, T{1});
        for (Index j = std::min(width, height - 1); j-- > 0;) {
            std::fill(weights.begin(), weights.end(), T{1});
            for (Index i = j + 1; i < height; ++i) {
                const T* v = matrices.row(i, j);
                for (Index k = 0; k < count; ++k) weights[static_cast<std::size_t>(k)] += v[k] * v[k];
            }
            for (T& weight : weights) weight = 2 / weight;
            for (Index c = j; c < width; ++c) {
                std::copy_n(q.row(j, c), count, sums.data());
                for (Index i = j + 1; i < height; ++i) {
                    const T *v = matrices.row(i, j), *column = q.row(i, c);
                    for (Index k = 0; k < count; ++k) sums[static_cast<std::size_t>(k)] += v[k] * column[k];
                }
                T* top = q.row(j, c);
                for (Index k = 0; k < count; ++k) {
                    T& sum = sums[static_cast<std::size_t>(k)];
                    sum *= weights[static_cast<std::size_t>(k)];
                    top[k] -= sum;
                }
                for (Index i = j + 1; i < height; ++i) {
                    const T* v = matrices.row(i, j);
                    T* column = q.row(i, c);
                    for (Index k = 0; k < count; ++k) column[k] -= v[k] * sums[static_cast<std::size_t>(k)];
                }
            }
        }
    }

    Element element;
    Streams<T> matrices;
    std::vector<T> buffer, factors;
};

template <class T>
void qrBlocks(const Operation& it, Numbers& refused) {
    const Index height = it.in[0].shape[0], width = it.in[0].shape[1];
    const Index block = blockOf(it, height * width);
    const Bridge<T> source(it.in[0], it.element), toQ(it.out[0], it.element), toR(it.out[1], it.element);
    const Unlocked unlocked(it.count * height * width);
    inBlocks(it.count, block, height * width, [&](Blocks& blocks) {
        QR<T> qr(it, block);
        Streams<T> q(block, 2, height, width), r(block, 2, width, width);
        Index first, objects;
        while (blocks.take(first, objects)) {
            qr.decompose(source, first, objects, [&](Index k) { refused.add(first + k); });
            qr.formQ(q, objects);
            r.fill(0);
            for (T& factor : qr.factors) factor = 1 / factor;
            for (Index i = 0; i < width; ++i)
                for (Index j = i; j < width; ++j) std::copy_n(qr.matrices.row(i, j), objects, r.row(i, j));
            r.scale(qr.factors, objects);
            toQ.write(q.view, first, objects);
            toR.write(r.view, first, objects);
        }
    });
}

template <class T>
void leastSquaresBlocks(const Operation& it, Numbers& refused) {
    const Index height = it.in[0].shape[0], width = it.in[0].shape[1];
    const Index block = blockOf(it, height * width);
    const Bridge<T> source(it.in[0], it.element);
    std::vector<Bridge<T>> rights, results;
    forColumns(it.out[0], [&](Index j) {
        rights.emplace_back(vectorsOf(it.in[1], j), it.element);
        results.emplace_back(vectorsOf(it.out[0], j), it.element);
    });
    const Unlocked unlocked(it.count * height * width);
    inBlocks(it.count, block, height * width, [&](Blocks& blocks) {
        QR<T> qr(it, block);
        Streams<T> right(block, 1, height), solution(block, 1, width);
        std::vector<char> bad;
        Index first, objects;
        while (blocks.take(first, objects)) {
            bad.assign(static_cast<std::size_t>(objects), 0);
            qr.decompose(source, first, objects, [&](Index k) { bad[static_cast<std::size_t>(k)] = 1; });
            for (std::size_t c = 0; c < rights.size(); ++c) {
                rights[c].read(right, first, objects);
                Addresses addresses;
                Call call{};
                call.in[0] = qr.matrices.place(0, objects, addresses);
                call.in[1] = right.place(0, objects, addresses);
                call.out[0] = solution.place(0, objects, addresses);
                call.buffer = qr.buffer.data();
                call.count = static_cast<std::int32_t>(objects);
                formOf(QRBackSubst_mava, it.element, pointerLayout).call(call);
                solution.scale(qr.factors, objects);
                // The last column of a square matrix isn't tested.
                for (Index i = 0; i < width; ++i)
                    for (Index k = 0; k < objects; ++k)
                        bad[static_cast<std::size_t>(k)] |= !std::isfinite(solution.row(i)[k]);
                results[c].write(solution.view, first, objects);
            }
            for (Index k = 0; k < objects; ++k)
                if (bad[static_cast<std::size_t>(k)]) refused.add(first + k);
        }
    });
}

void requireTall(const Operation& it) {
    if (it.in[0].shape[0] < it.in[0].shape[1])
        raise(PyExc_ValueError, "a has %zd rows and %zd columns; korm takes at least as many rows as columns",
              it.in[0].shape[0], it.in[0].shape[1]);
}

}

// Q, R, and the objects that were refused, whose results mean nothing.
PyObject* qr(Arguments given) {
    Operation it;
    it.input("a", given[0]);
    it.chooseElement();
    it.view(0, 2);
    requireTall(it);
    it.broadcast();
    it.output("q", nullptr, 2, it.in[0].shape[0], it.in[0].shape[1]);
    it.output("r", nullptr, 2, it.in[0].shape[1], it.in[0].shape[1]);
    Numbers refused;
    if (!it.isEmpty()) {
        makeReadable(it, 0);
        if (plan) formOf(QRDecomp_ma, it.element, pointerLayout);
        else if (it.element == float32) qrBlocks<float>(it, refused);
        else qrBlocks<double>(it, refused);
    }
    return Py_BuildValue("NNN", it.result(0), it.result(1), listOf(refused.sorted()).release());
}

// The solutions, and the objects that were refused.
PyObject* leastSquares(Arguments given) {
    Operation it;
    const bool vectors = readSystem(it, given);
    requireTall(it);
    if (it.in[1].shape[0] != it.in[0].shape[0])
        raise(PyExc_ValueError, "b has %zd rows for matrices of %zd", it.in[1].shape[0], it.in[0].shape[0]);
    it.broadcast();
    it.output("x", nullptr, vectors ? 1 : 2, it.in[0].shape[1], it.in[1].shape[1]);
    Numbers refused;
    if (!it.isEmpty()) {
        makeReadable(it, 0);
        makeReadable(it, 1);
        if (plan) {
            formOf(QRDecomp_ma, it.element, pointerLayout);
            formOf(QRBackSubst_mava, it.element, pointerLayout);
        } else if (it.element == float32) {
            leastSquaresBlocks<float>(it, refused);
        } else {
            leastSquaresBlocks<double>(it, refused);
        }
    }
    return Py_BuildValue("NN", it.result(), listOf(refused.sorted()).release());
}

}
