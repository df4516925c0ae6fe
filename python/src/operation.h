// An operation between Python's arguments and calls of korm: types, shapes, broadcasting, the choice of a layout, copies.
#pragma once

#include "forms.h"
#include "recorder.h"
#include "view.h"

#include <array>
#include <optional>

namespace korm::python {

// An argument before it is known how many of its axes belong to an object: an array, or a list of arrays alike in shape and
// strides, whose first axis is the list.
class Argument {
public:
    Argument() = default;
    Argument(const char* name, PyObject* given);

    const char* name = nullptr;
    std::optional<double> number;  // one of Python's own, which takes the type of the arrays
    Reference array;               // of a list, its first item
    std::vector<Reference> items;

    int axes() const { return number ? 0 : PyArray_NDIM(array.array()) + !items.empty(); }
    Index extent(int axis) const;
    void convert(Element element);  // copies, unless its elements are of that type already
    void stack();                   // a list becomes one array
};

// What may be the same place with the same strides as a result.
enum class MayBeResult { none, any, second };

class Operation {
public:
    static constexpr int maxInputs = 3, maxOutputs = 2;

    Element element = float64;
    Index itemSize = 8;
    Index count = 1;  // objects
    Loops loops;
    int inputs = 0, outputs = 0;
    std::array<View, maxInputs> in;
    std::array<View, maxOutputs> out;

    Argument& input(const char* name, PyObject* given);
    Argument& argument(int i) { return arguments[static_cast<std::size_t>(i)]; }

    // The type of all elements, which is that of the arrays. Afterwards their data can be looked at.
    void chooseElement();

    // The last axes of an argument are its objects'.
    void view(int i, int axes);

    // The loops of all inputs, as NumPy broadcasts. Inputs with one object for all become single.
    void broadcast();

    // A result of the loops' shape, then the object's: `given` unless it is null or None.
    void output(const char* name, PyObject* given, int axes, Index rows = 1, Index columns = 1, bool packed = false);

    // Copies what overlaps a result in a way that isn't allowed.
    void separate(MayBeResult may);

    // Chooses the layout of calls; copies what it can't describe. Leaves inputs from `end` on out of account.
    void settle(int end = maxInputs);

    Layout layout = standardLayout;
    bool isEmpty() const;    // is there nothing to compute?
    bool isInPlace() const;  // does a result stand where an input stood?
    bool isPlain(int i) const { return !in[static_cast<std::size_t>(i)].single; }

    // The operands in a call's places; inputs may be in another order.
    void place(Call& call, Index first, Index objects, Addresses& addresses);

    // Calls a form of the family for all objects, without the interpreter's lock where that pays.
    std::int32_t run(const Family& family, Call& call);

    // After a failure: the first object that fails by itself, or -1 if that can't be told.
    Index firstFailure(const Family& family);

    // Copies back what results were given in an unsuitable form; the results themselves.
    void deliver();
    PyObject* result(int i = 0);

    // A copy of an input, or a result that is copied back in the end; told to the plan.
    void copy(int i);
    void replaceOutput(int i);

private:
    std::array<Argument, maxInputs> arguments;
    struct Result {
        const char* name;
        Reference given, array;  // `array` is written to; where it isn't `given`, it is copied there
        std::vector<Reference> items;
    };
    std::array<Result, maxOutputs> results;
};

// The form of a family for an element type and layout; told to the plan.
const Form& formOf(const Family& family, Element element, Layout layout);

// Is work of so many elements worth the release of the interpreter's lock?
class Unlocked {
public:
    explicit Unlocked(Index elements) : state(elements > 2048 ? PyEval_SaveThread() : nullptr) {}
    ~Unlocked() {
        if (state) PyEval_RestoreThread(state);
    }
    Unlocked(const Unlocked&) = delete;
    Unlocked& operator=(const Unlocked&) = delete;

private:
    PyThreadState* state;
};

// numpy.linalg.LinAlgError with the index of the object among the loops, if that is known.
[[noreturn]] void raiseLinAlgError(const char* text, Index object, const Loops& loops);

// A contiguous array in C order: the loops' shape, then the object's.
Reference newArray(const Loops& loops, int axes, Index rows, Index columns, int type);

inline int typeNumber(Element element) { return element == float32 ? NPY_FLOAT32 : NPY_FLOAT64; }

}
