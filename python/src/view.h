// Where the objects of an array lie, and which layouts of korm can say so.
#pragma once

#include "call.h"
#include "python.h"

#include <vector>

namespace korm::python {

using Index = npy_intp;

constexpr int maxLoops = NPY_MAXDIMS;

// The axes before those of an object.
struct Loops {
    int axes = 0;
    Index shape[maxLoops];

    Index count() const;
};

// Objects are numbers, vectors or matrices: `axes` is 0, 1 or 2. They lie at strides, or each at an address of its own.
struct View {
    std::byte* data = nullptr;
    std::vector<std::byte*> list;
    int axes = 0;
    Index shape[2] = {1, 1}, stride[2] = {0, 0};
    Loops loops;
    Index loopStride[maxLoops];
    bool single = false;  // one object that serves all
    bool packed = false;  // a result without strides

    Index elements() const { return shape[0] * shape[1]; }

    // The stride from each object to the next; -1 if there is none that is the same everywhere.
    Index objectStride() const;

    // The layouts that can describe it, as bits 1 << Layout.
    unsigned layouts(Index itemSize) const;

    // Are objects one element apart, and the elements of an object not?
    bool streams(Index itemSize) const;

    View transposed() const;

    // The lowest address of an element, and the end of the highest.
    std::pair<const std::byte*, const std::byte*> bounds(Index itemSize) const;

    // Does it lie at the same place with the same strides?
    bool operator==(const View& other) const;
};

// The view of an array's last axes as objects.
View viewOf(PyArrayObject* array, int axes);

// Addresses of objects (lists) and of elements (tables), while a call needs them.
class Addresses {
public:
    std::byte** take(Index count);

private:
    std::byte* few[160];
    Index used = 0;
    std::vector<std::vector<std::byte*>> more;
};

// The addresses of objects first to first + count - 1 of a view.
void listObjects(std::byte** list, const View& view, Index first, Index count);

// The same objects in the words of a layout.
void describe(Place& place, const View& view, Layout layout, Index first, Index count, Index itemSize,
              Addresses& addresses);

}
