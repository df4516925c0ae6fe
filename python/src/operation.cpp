#include "operation.h"

#include <algorithm>

namespace korm::python {

namespace {

// An array of vectors may go to one of matrices with a single row or column each.
void copyInto(PyArrayObject* to, PyArrayObject* from) {
    PyArray_Dims shape{PyArray_DIMS(to), PyArray_NDIM(to)};
    Reference shaped = owned(PyArray_Newshape(from, &shape, NPY_CORDER));
    if (PyArray_CopyInto(to, shaped.array()) < 0) throw Raised{};
}

// Of one dtype that is native, shape and strides?
bool alike(PyArrayObject* a, PyArrayObject* b) {
    if (PyArray_NDIM(a) != PyArray_NDIM(b) || PyArray_TYPE(a) != PyArray_TYPE(b)) return false;
    if (!PyArray_ISNOTSWAPPED(a) || !PyArray_ISNOTSWAPPED(b)) return false;
    for (int i = 0; i < PyArray_NDIM(a); ++i)
        if (PyArray_DIM(a, i) != PyArray_DIM(b, i) || PyArray_STRIDE(a, i) != PyArray_STRIDE(b, i)) return false;
    return true;
}

bool isListOfArrays(PyObject* given) {
    if (!PyList_Check(given) && !PyTuple_Check(given)) return false;
    const Py_ssize_t size = PySequence_Fast_GET_SIZE(given);
    PyObject** items = PySequence_Fast_ITEMS(given);
    for (Py_ssize_t i = 0; i < size; ++i) {
        if (!PyArray_Check(items[i]) || PyArray_NDIM(reinterpret_cast<PyArrayObject*>(items[i])) == 0) return false;
        if (!alike(reinterpret_cast<PyArrayObject*>(items[i]), reinterpret_cast<PyArrayObject*>(items[0])))
            return false;
    }
    return size > 0;
}

std::vector<Reference> itemsOf(PyObject* list) {
    std::vector<Reference> items;
    for (Py_ssize_t i = 0; i < PySequence_Fast_GET_SIZE(list); ++i)
        items.push_back(Reference::shared(PySequence_Fast_GET_ITEM(list, i)));
    return items;
}

void addressesOf(View& view, const std::vector<Reference>& items) {
    view.loops.axes = 1;
    view.loops.shape[0] = static_cast<Index>(items.size());
    for (const Reference& item : items) view.list.push_back(static_cast<std::byte*>(PyArray_DATA(item.array())));
}

}

Argument::Argument(const char* givenName, PyObject* given) : name(givenName) {
    if (PyFloat_Check(given) || PyLong_Check(given)) {
        number = PyFloat_AsDouble(given);
        if (PyErr_Occurred()) throw Raised{};
    } else if (PyArray_Check(given)) {
        array = Reference::shared(given);
    } else if (isListOfArrays(given)) {
        items = itemsOf(given);
        array = Reference::shared(items[0].get());
    } else {
        array = owned(PyArray_FROM_O(given));
        if (plan) addOnce(plan->copied, std::string(name));
    }
}

Index Argument::extent(int axis) const {
    if (items.empty()) return PyArray_DIM(array.array(), axis);
    return axis == 0 ? static_cast<Index>(items.size()) : PyArray_DIM(array.array(), axis - 1);
}

void Argument::convert(Element element) {
    if (number) return;
    if (PyArray_TYPE(array.array()) == typeNumber(element) && PyArray_ISNOTSWAPPED(array.array())) return;
    stack();
    if (plan) {
        addOnce(plan->copied, std::string(name));
        array = owned(PyArray_EMPTY(PyArray_NDIM(array.array()), PyArray_DIMS(array.array()), typeNumber(element), 0));
    } else {
        array = owned(PyArray_FROM_OTF(array.get(), typeNumber(element), NPY_ARRAY_CARRAY_RO | NPY_ARRAY_FORCECAST));
    }
}

void Argument::stack() {
    if (items.empty()) return;
    Reference list = owned(PyList_New(static_cast<Py_ssize_t>(items.size())));
    for (std::size_t i = 0; i < items.size(); ++i)
        PyList_SET_ITEM(list.get(), static_cast<Py_ssize_t>(i), items[i].release());
    items.clear();
    array = owned(PyArray_FROM_O(list.get()));
    if (plan) addOnce(plan->copied, std::string(name));
}

Argument& Operation::input(const char* name, PyObject* given) {
    Argument& made = arguments[static_cast<std::size_t>(inputs++)];
    made = Argument(name, given);
    return made;
}

void Operation::chooseElement() {
    bool arrays = false, allFloat = true;
    for (int i = 0; i < inputs; ++i) {
        const Argument& it = argument(i);
        if (it.number) continue;
        arrays = true;
        const int type = PyArray_TYPE(it.array.array());
        if (type != NPY_FLOAT32 && type != NPY_FLOAT64 && !PyTypeNum_ISINTEGER(type) && !PyTypeNum_ISBOOL(type))
            raise(PyExc_TypeError, "%s: korm computes in float32 and float64, not in %S", it.name,
                  reinterpret_cast<PyObject*>(PyArray_DESCR(it.array.array())));
        allFloat = allFloat && type == NPY_FLOAT32;
    }
    element = arrays && allFloat ? float32 : float64;
    itemSize = element == float32 ? 4 : 8;
    for (int i = 0; i < inputs; ++i) argument(i).convert(element);
}

void Operation::view(int i, int axes) {
    Argument& it = argument(i);
    if (it.axes() < axes) raise(PyExc_ValueError, "%s has %d axes and needs %d or more", it.name, it.axes(), axes);
    if (!it.items.empty() && it.axes() != axes + 1) it.stack();
    View& made = in[static_cast<std::size_t>(i)];
    made = viewOf(it.array.array(), it.items.empty() ? axes : PyArray_NDIM(it.array.array()));
    if (!it.items.empty()) addressesOf(made, it.items);
    for (int axis = 0; axis < made.axes; ++axis)
        if (made.shape[axis] > INT32_MAX) raise(PyExc_ValueError, "%s: an object is too large", it.name);
}

void Operation::broadcast() {
    for (int i = 0; i < inputs; ++i) {
        const Loops& own = in[static_cast<std::size_t>(i)].loops;
        const int more = own.axes - loops.axes;
        if (more > 0) {
            std::copy_backward(loops.shape, loops.shape + loops.axes, loops.shape + own.axes);
            std::fill_n(loops.shape, more, 1);
            loops.axes = own.axes;
        }
        for (int axis = 0; axis < own.axes; ++axis) {
            Index& common = loops.shape[loops.axes - own.axes + axis];
            if (common == 1) common = own.shape[axis];
            else if (own.shape[axis] != 1 && own.shape[axis] != common)
                raise(PyExc_ValueError, "%s can't be broadcast to the other arrays' leading axes", argument(i).name);
        }
    }
    count = loops.count();
    if (count > INT32_MAX) raise(PyExc_ValueError, "korm takes 2147483647 objects at most in a call");
    bool anyArray = false;
    for (int i = 0; i < inputs; ++i) {
        View& it = in[static_cast<std::size_t>(i)];
        if (!it.list.empty()) {
            if (loops.axes == 1 && it.loops.shape[0] == loops.shape[0]) {
                anyArray = true;
                continue;
            }
            argument(i).stack();
            view(i, it.axes);
        }
        const int missing = loops.axes - it.loops.axes;
        it.single = true;
        for (int axis = loops.axes; axis-- > 0;) {
            const Index own = axis < missing ? 1 : it.loops.shape[axis - missing];
            it.loopStride[axis] = own == 1 ? 0 : it.loopStride[axis - missing];
            it.single = it.single && (loops.shape[axis] == 1 || it.loopStride[axis] == 0);
        }
        it.loops = loops;
        anyArray = anyArray || !it.single;
    }
    // The same object again and again: a list can say so.
    for (int i = 0; i < inputs && !anyArray && count > 1; ++i) {
        anyArray = !argument(i).number;
        in[static_cast<std::size_t>(i)].single = !anyArray;
    }
}

void Operation::output(const char* name, PyObject* given, int axes, Index rows, Index columns, bool packed) {
    Result& it = results[static_cast<std::size_t>(outputs)];
    View& made = out[static_cast<std::size_t>(outputs++)];
    it.name = name;
    const Index shape[2] = {rows, columns};
    if (given == nullptr || given == Py_None) {
        it.array = newArray(loops, axes, rows, columns, typeNumber(element));
        made = viewOf(it.array.array(), axes);
    } else {
        it.given = Reference::shared(given);
        const bool list = isListOfArrays(given);
        if (!list && !PyArray_Check(given))
            raise(PyExc_TypeError, "%s must be an array, or a list of arrays alike", name);
        if (list) it.items = itemsOf(given);
        PyArrayObject* array = list ? it.items[0].array() : it.given.array();
        const int leading = list ? 1 : PyArray_NDIM(array) - axes;
        bool fits = leading == loops.axes && PyArray_NDIM(array) == (list ? axes : leading + axes);
        for (int i = 0; fits && i < leading; ++i)
            fits = (list ? static_cast<Index>(it.items.size()) : PyArray_DIM(array, i)) == loops.shape[i];
        for (int i = 0; fits && i < axes; ++i) fits = PyArray_DIM(array, PyArray_NDIM(array) - axes + i) == shape[i];
        if (!fits) raise(PyExc_ValueError, "%s has another shape than the result", name);
        for (const Reference& item : it.items)
            if (PyArray_FailUnlessWriteable(item.array(), name) < 0) throw Raised{};
        if (!list && PyArray_FailUnlessWriteable(array, name) < 0) throw Raised{};
        Reference own = owned(reinterpret_cast<PyObject*>(PyArray_DescrFromType(typeNumber(element))));
        if (!PyArray_CanCastTypeTo(reinterpret_cast<PyArray_Descr*>(own.get()), PyArray_DESCR(array),
                                   NPY_SAME_KIND_CASTING))
            raise(PyExc_TypeError, "%s can't hold results of type %S", name, own.get());
        made = viewOf(array, list ? PyArray_NDIM(array) : axes);
        if (list) addressesOf(made, it.items);
        else it.array = Reference::shared(given);
        if (PyArray_TYPE(array) != typeNumber(element) || !PyArray_ISNOTSWAPPED(array)) replaceOutput(outputs - 1);
    }
    if (packed) made.axes = 0;
    made.packed = packed;
}

void Operation::replaceOutput(int i) {
    Result& it = results[static_cast<std::size_t>(i)];
    View& old = out[static_cast<std::size_t>(i)];
    it.array = newArray(loops, old.axes, old.shape[0], old.shape[1], typeNumber(element));
    const bool packed = old.packed;
    old = viewOf(it.array.array(), old.axes);
    old.packed = packed;
    if (plan) addOnce(plan->copied, std::string(it.name));
}

void Operation::separate(MayBeResult may) {
    for (int r = 0; r < outputs; ++r) {
        if (!results[static_cast<std::size_t>(r)].given) continue;
        const View& result = out[static_cast<std::size_t>(r)];
        const auto [low, high] = result.bounds(itemSize);
        for (int i = 0; i < inputs; ++i) {
            const View& source = in[static_cast<std::size_t>(i)];
            if (source.data == nullptr && source.list.empty()) continue;
            const auto [from, to] = source.bounds(itemSize);
            if (to <= low || high <= from) continue;
            if (may == MayBeResult::any && source == result) continue;
            if (may == MayBeResult::second && i == 1 && source == result) continue;
            copy(i);
        }
    }
}

void Operation::copy(int i) {
    Argument& it = argument(i);
    View& old = in[static_cast<std::size_t>(i)];
    if (plan) addOnce(plan->copied, std::string(it.name));
    Reference array = old.single ? newArray(Loops{}, old.axes, old.shape[0], old.shape[1], typeNumber(element))
                                 : newArray(loops, old.axes, old.shape[0], old.shape[1], typeNumber(element));
    if (!plan) {
        // NumPy copies from an array that looks at the same memory, broadcast as the view is.
        it.stack();
        if (!old.list.empty()) {
            if (PyArray_CopyInto(array.array(), it.array.array()) < 0) throw Raised{};
        } else {
            Index shape[maxLoops], stride[maxLoops];
            int axes = 0;
            for (int axis = 0; !old.single && axis < loops.axes; ++axis, ++axes) {
                shape[axes] = loops.shape[axis];
                stride[axes] = old.loopStride[axis];
            }
            for (int axis = 0; axis < old.axes; ++axis, ++axes) {
                shape[axes] = old.shape[axis];
                stride[axes] = old.stride[axis];
            }
            Reference source =
                owned(PyArray_New(&PyArray_Type, axes, shape, typeNumber(element), stride, old.data, 0, 0, nullptr));
            if (PyArray_CopyInto(array.array(), source.array()) < 0) throw Raised{};
        }
    }
    const bool single = old.single;
    old = viewOf(array.array(), old.axes);
    if (single) {
        old.loops = loops;
        std::fill_n(old.loopStride, loops.axes, 0);
        old.single = true;
    }
    it.items.clear();
    it.array = std::move(array);
}

void Operation::settle(int end) {
    unsigned can[maxInputs + maxOutputs];
    const int considered = std::min(end, inputs);
    bool streams = false;
    for (int i = 0; i < considered; ++i) {
        const View& it = in[static_cast<std::size_t>(i)];
        const bool constant = argument(i).number.has_value();
        can[i] = constant ? ~0U : it.layouts(itemSize);
        streams = streams || (!constant && it.streams(itemSize));
    }
    for (int i = 0; i < outputs; ++i) {
        const View& it = out[static_cast<std::size_t>(i)];
        can[considered + i] = it.layouts(itemSize);
        streams = streams || it.streams(itemSize);
    }
    const Layout preferred[] = {streams ? pointerLayout : standardLayout, streams ? standardLayout : pointerLayout,
                                listLayout};
    int fewest = maxInputs + maxOutputs + 1;
    for (const Layout candidate : preferred) {
        if (candidate == listLayout && count == 1) continue;
        int copies = 0;
        for (int i = 0; i < considered + outputs; ++i) copies += !(can[i] >> candidate & 1U);
        if (copies < fewest) {
            fewest = copies;
            layout = candidate;
        }
    }
    if (fewest == 0) return;
    for (int i = 0; i < considered; ++i)
        if (!(can[i] >> layout & 1U)) copy(i);
    for (int i = 0; i < outputs; ++i)
        if (!(can[considered + i] >> layout & 1U)) replaceOutput(i);
}

bool Operation::isEmpty() const {
    if (count == 0) return true;
    for (int i = 0; i < outputs; ++i)
        if (out[static_cast<std::size_t>(i)].elements() == 0) return true;
    return false;
}

bool Operation::isInPlace() const {
    for (int r = 0; r < outputs; ++r)
        for (int i = 0; i < inputs; ++i) {
            const View &source = in[static_cast<std::size_t>(i)], &result = out[static_cast<std::size_t>(r)];
            if (source.data == result.data && source.list == result.list) return true;
        }
    return false;
}

void Operation::place(Call& call, Index first, Index objects, Addresses& addresses) {
    int number = 0;
    for (int i = 0; i < inputs; ++i) {
        if (argument(i).number) continue;
        describe(call.in[number++], in[static_cast<std::size_t>(i)], layout, first, objects, itemSize, addresses);
    }
    for (int i = 0; i < outputs; ++i)
        describe(call.out[i], out[static_cast<std::size_t>(i)], layout, first, objects, itemSize, addresses);
    call.count = static_cast<std::int32_t>(objects);
}

std::int32_t Operation::run(const Family& family, Call& call) {
    const Form& form = formOf(family, element, layout);
    if (plan || isEmpty()) return 0;
    Addresses addresses;
    place(call, 0, count, addresses);
    const Unlocked unlocked(count * std::max(out[0].elements(), in[0].elements()));
    return form.call(call);
}

Index Operation::firstFailure(const Family& family) {
    if (isInPlace()) return -1;
    const Form& form = formOf(family, element, layout);
    Call call{};
    Index begin = 0, end = count;
    while (begin < end) {
        const Index half = (end - begin + 1) / 2;
        Addresses addresses;
        place(call, begin, half, addresses);
        const bool fails = form.call(call) != 0;
        if (half == 1 && end - begin == 1) return fails ? begin : -1;
        if (fails) end = begin + half;
        else begin += half;
    }
    return -1;
}

void Operation::deliver() {
    if (plan) return;
    for (int i = 0; i < outputs; ++i) {
        Result& it = results[static_cast<std::size_t>(i)];
        if (!it.given || it.given.get() == it.array.get() || !it.array) continue;
        if (it.items.empty()) {
            copyInto(it.given.array(), it.array.array());
            continue;
        }
        for (std::size_t k = 0; k < it.items.size(); ++k) {
            Reference row = owned(PySequence_GetItem(it.array.get(), static_cast<Py_ssize_t>(k)));
            copyInto(it.items[k].array(), row.array());
        }
    }
}

PyObject* Operation::result(int i) {
    Result& it = results[static_cast<std::size_t>(i)];
    if (it.given) return it.given.release();
    return PyArray_NDIM(it.array.array()) == 0 && !plan
               ? PyArray_Return(reinterpret_cast<PyArrayObject*>(it.array.release()))
               : it.array.release();
}

const Form& formOf(const Family& family, Element element, Layout layout) {
    const Form& form = family.forms[element][layout];
    if (plan) addOnce(plan->functions, form.name);
    return form;
}

void raiseLinAlgError(const char* text, Index object, const Loops& loops) {
    Reference module = owned(PyImport_ImportModule("numpy.linalg"));
    Reference type = owned(PyObject_GetAttrString(module.get(), "LinAlgError"));
    Reference index = Reference::shared(Py_None);
    Reference message;
    if (object >= 0) {
        index = owned(PyTuple_New(loops.axes));
        for (int axis = loops.axes; axis-- > 0; object /= loops.shape[axis])
            PyTuple_SET_ITEM(index.get(), axis, owned(PyLong_FromSsize_t(object % loops.shape[axis])).release());
    }
    if (object >= 0 && loops.axes > 0) message = owned(PyUnicode_FromFormat("%s (index %R)", text, index.get()));
    else message = owned(PyUnicode_FromString(text));
    Reference error = owned(PyObject_CallOneArg(type.get(), message.get()));
    if (PyObject_SetAttrString(error.get(), "index", index.get()) < 0) throw Raised{};
    PyErr_SetObject(type.get(), error.get());
    throw Raised{};
}

Reference newArray(const Loops& loops, int axes, Index rows, Index columns, int type) {
    Index shape[maxLoops];
    if (loops.axes + axes > maxLoops) raise(PyExc_ValueError, "an array would have more than %d axes", maxLoops);
    std::copy_n(loops.shape, loops.axes, shape);
    if (axes > 0) shape[loops.axes] = rows;
    if (axes > 1) shape[loops.axes + 1] = columns;
    return owned(PyArray_EMPTY(loops.axes + axes, shape, type, 0));
}

}
