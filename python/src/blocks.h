// Work on a block of objects at a time, so that scratch stays in the cache between the calls of an operation: objects one after the
// other, or streams, the same element of all objects in a row, which make vector instructions of loops over objects.
#pragma once

#include "operation.h"
#include "threads.h"

#include <algorithm>
#include <bit>
#include <cmath>
#include <cstring>
#include <limits>

namespace korm::python {

// How many objects of so many elements make a block: few enough for scratch to stay in a core's own cache and for threads to have
// something to share, in whole groups of lanes.
inline Index blockOf(const Operation& it, Index elements, Index bytes = 131072) {
    const Index fitting = bytes / (std::max<Index>(elements, 1) * it.itemSize);
    return std::min(it.count, std::max<Index>(64, std::min(fitting, it.count / 4) & ~Index{7}));
}

// f(order), where orders 3 to 6 are known when compiling, so that loops over the elements of an object unroll.
template <class Do>
void withOrder(Index order, Do f) {
    switch (order) {
        case 3: return f(std::integral_constant<Index, 3>{});
        case 4: return f(std::integral_constant<Index, 4>{});
        case 5: return f(std::integral_constant<Index, 5>{});
        case 6: return f(std::integral_constant<Index, 6>{});
        default: return f(order);
    }
}

// The power of two that brings a number to between 2^(exponent - 1) and 2^exponent; 1 where there is none.
template <class T>
T factorTo(int exponent, T number) {
    using Limits = std::numeric_limits<T>;
    using Bits = std::conditional_t<sizeof(T) == 4, std::uint32_t, std::uint64_t>;
    constexpr int fraction = Limits::digits - 1, bias = Limits::max_exponent - 1, range = bias - 1;
    if (!(number > 0 && number <= Limits::max())) return 1;
    const int own =
        number < Limits::min() ? std::ilogb(number) : static_cast<int>(std::bit_cast<Bits>(number) >> fraction) - bias;
    return std::bit_cast<T>(static_cast<Bits>(std::clamp(exponent - 1 - own, -range, range) + bias) << fraction);
}

// Objects one after the other, each in C order.
template <class T>
class Objects {
public:
    Objects(Index capacity, Index rows, Index columns)
        : elements(rows * columns), data(static_cast<std::size_t>(capacity * elements)) {
        view.data = reinterpret_cast<std::byte*>(data.data());
        view.axes = 2;
        view.shape[0] = rows;
        view.shape[1] = columns;
        view.stride[0] = columns * static_cast<Index>(sizeof(T));
        view.stride[1] = sizeof(T);
        view.loops.axes = 1;
        view.loops.shape[0] = capacity;
        view.loopStride[0] = elements * static_cast<Index>(sizeof(T));
    }

    T* object(Index k) { return data.data() + k * elements; }
    const T* object(Index k) const { return data.data() + k * elements; }

    // From an array, whatever its strides.
    void read(const View& from, Index first, Index count) {
        Addresses addresses;
        std::byte** list = addresses.take(count);
        listObjects(list, from, first, count);
        const bool dense = from.stride[1] == sizeof(T) || from.shape[1] == 1;
        const auto width = static_cast<std::size_t>(from.shape[1]);
        for (Index k = 0; k < count; ++k) {
            T* to = object(k);
            for (Index i = 0; i < from.shape[0]; ++i, to += width) {
                const std::byte* row = list[k] + i * from.stride[0];
                if (dense) std::memcpy(to, row, width * sizeof(T));
                else
                    for (std::size_t j = 0; j < width; ++j)
                        std::memcpy(to + j, row + static_cast<Index>(j) * from.stride[1], sizeof(T));
            }
        }
    }

    // Multiplies each of objects 0 to count - 1 by the power of two that brings its greatest element below 2^exponent.
    void scaleTo(int exponent, Index count, std::vector<T>& factors) {
        factors.resize(static_cast<std::size_t>(count));
        for (Index k = 0; k < count; ++k) {
            T* const own = object(k);
            const T factor = factorTo(exponent, greatestOf(own));
            for (Index e = 0; e < elements; ++e) own[e] *= factor;
            factors[static_cast<std::size_t>(k)] = factor;
        }
    }

    View view;

private:
    // The greatest magnitude. Several at once, since each comparison waits for the last.
    T greatestOf(const T* own) const {
        constexpr Index lanes = 8;
        T greatest[lanes] = {};
        Index e = 0;
        for (; e + lanes <= elements; e += lanes)
            for (Index i = 0; i < lanes; ++i) greatest[i] = std::max(greatest[i], std::fabs(own[e + i]));
        for (; e < elements; ++e) greatest[0] = std::max(greatest[0], std::fabs(own[e]));
        return *std::max_element(greatest, greatest + lanes);
    }

    Index elements;
    std::vector<T> data;
};

// Multiplies each object of an array by a factor of its own.
template <class T>
void scaleObjects(const View& array, Index first, Index count, const T* factors) {
    Addresses addresses;
    std::byte** list = addresses.take(count);
    listObjects(list, array, first, count);
    for (Index k = 0; k < count; ++k)
        for (Index i = 0; i < array.shape[0]; ++i)
            for (Index j = 0; j < array.shape[1]; ++j) {
                std::byte* element = list[k] + i * array.stride[0] + j * array.stride[1];
                T value;
                std::memcpy(&value, element, sizeof value);
                value *= factors[k];
                std::memcpy(element, &value, sizeof value);
            }
}

template <class T>
class Streams {
public:
    Streams(Index capacity, int axes, Index rows, Index columns = 1)
        // An odd number of cache lines lies between streams, so that they don't meet in the same sets.
        : pitch(capacity < 16 ? capacity : ((capacity * size + 63) / 64 | 1) * 64 / size),
          data(static_cast<std::size_t>(pitch * rows * columns)) {
        view.data = reinterpret_cast<std::byte*>(data.data());
        view.axes = axes;
        view.shape[0] = rows;
        view.shape[1] = columns;
        view.stride[0] = columns * pitch * static_cast<Index>(sizeof(T));
        view.stride[1] = pitch * static_cast<Index>(sizeof(T));
        view.loops.axes = 1;
        view.loops.shape[0] = capacity;
        view.loopStride[0] = sizeof(T);
    }

    // Element (i, j) of all objects.
    T* row(Index i, Index j = 0) { return data.data() + (i * view.shape[1] + j) * pitch; }
    Index rows() const { return view.shape[0]; }
    Index columns() const { return view.shape[1]; }
    void fill(T value) { std::fill(data.begin(), data.end(), value); }

    // All elements of objects 0 to count - 1 times a factor of the object's own.
    void scale(const std::vector<T>& factors, Index count) {
        for (Index e = 0; e < rows() * columns(); ++e) {
            T* elements = data.data() + e * pitch;
            for (Index k = 0; k < count; ++k) elements[k] *= factors[static_cast<std::size_t>(k)];
        }
    }

    Place place(Index first, Index count, Addresses& addresses) const {
        Place place;
        describe(place, view, pointerLayout, first, count, sizeof(T), addresses);
        if (view.axes == 1) place.shape[1] = 1;
        return place;
    }

    View view;

private:
    static constexpr Index size = sizeof(T);
    Index pitch;
    std::vector<T> data;
};

// A way between an array and streams: the array's own layout, whatever the others have.
template <class T>
class Bridge {
public:
    Bridge(const View& array, Element element) : array(array), element(element) {
        const unsigned can = array.layouts(sizeof(T));
        layout = can >> standardLayout & 1U ? standardLayout : can >> pointerLayout & 1U ? pointerLayout : listLayout;
    }

    static bool canCross(const View& array) { return array.layouts(sizeof(T)) != 0; }

    void read(Streams<T>& to, Index first, Index count) const {
        Addresses addresses;
        Call call{};
        describe(call.in[0], array, layout, first, count, sizeof(T), addresses);
        call.out[0] = to.place(0, count, addresses);
        call.count = static_cast<std::int32_t>(count);
        const Family& family = array.axes == 2 ? families::Copy_ma_toPointer : families::Copy_va_toPointer;
        family.forms[element][layout].call(call);
    }

    // From streams, whose objects may be turned.
    void write(const View& from, Index first, Index count) const {
        Addresses addresses;
        Call call{};
        describe(call.in[0], from, pointerLayout, 0, count, sizeof(T), addresses);
        describe(call.out[0], array, layout, first, count, sizeof(T), addresses);
        call.count = static_cast<std::int32_t>(count);
        const Family& family = array.axes == 2 ? families::Copy_ma_fromPointer : families::Copy_va_fromPointer;
        family.forms[element][layout].call(call);
    }

private:
    View array;
    Element element;
    Layout layout;
};

// Powers of two that bring each object's greatest element to between 2^(exponent - 1) and 2^exponent.
template <class T>
void factorsTo(int exponent, Streams<T>& matrices, Index count, std::vector<T>& factors) {
    factors.assign(static_cast<std::size_t>(count), 0);
    for (Index i = 0; i < matrices.rows(); ++i)
        for (Index j = 0; j < matrices.columns(); ++j) {
            const T* elements = matrices.row(i, j);
            for (Index k = 0; k < count; ++k) {
                T& greatest = factors[static_cast<std::size_t>(k)];
                const T magnitude = std::fabs(elements[k]);
                greatest = magnitude > greatest ? magnitude : greatest;
            }
        }
    for (T& factor : factors) factor = factorTo(exponent, factor);
}

// Does all objects of a block in one call; where that fails, each alone. `prepare` is made before either, `call` takes the
// first object and a count and returns a status, `failed` gets the objects that fail by themselves.
template <class Prepare, class DoCall, class Failed>
void allOrEach(Index count, Prepare prepare, DoCall call, Failed failed) {
    prepare();
    if (call(Index{0}, count) == 0) return;
    prepare();
    for (Index k = 0; k < count; ++k)
        if (call(k, Index{1}) != 0) failed(k);
}

// Does objects in one call; where that fails, in halves, and so on. Ranges of few objects that fail, and all that fail when many calls
// have, go to `leaf`. A call that fails ends early, so that this takes little longer than calls that don't.
template <class DoCall, class Leaf>
void inHalves(Index first, Index count, int& failures, DoCall call, Leaf leaf) {
    if (call(first, count) == 0) return;
    if (count <= 16 || ++failures > 64) return leaf(first, count);
    inHalves(first, count / 2, failures, call, leaf);
    inHalves(first + count / 2, count - count / 2, failures, call, leaf);
}

// An input goes into scratch a block at a time, objects that serve all included.
inline void readInBlocks(Operation& it, int i) {
    View& view = it.in[static_cast<std::size_t>(i)];
    view.single = view.single && it.count == 1;
    if (plan) addOnce(plan->blocks, std::string(it.argument(i).name));
}

// The same by a bridge, which reads what korm can.
inline void makeReadable(Operation& it, int i) {
    readInBlocks(it, i);
    if (it.in[static_cast<std::size_t>(i)].layouts(it.itemSize) == 0) it.copy(i);
}

// A list of numbers for Python.
inline Reference listOf(const std::vector<Index>& numbers) {
    Reference list = owned(PyList_New(static_cast<Py_ssize_t>(numbers.size())));
    for (std::size_t i = 0; i < numbers.size(); ++i)
        PyList_SET_ITEM(list.get(), static_cast<Py_ssize_t>(i), owned(PyLong_FromSsize_t(numbers[i])).release());
    return list;
}

void requireSquare(const Operation& operation);

// Reads argument `a`, square matrices.
void readSquares(Operation& operation, PyObject* given);

}
