// Python's and NumPy's C interfaces, and references that release themselves.
#pragma once

#define PY_SSIZE_T_CLEAN
#include <Python.h>

#define NPY_NO_DEPRECATED_API NPY_1_20_API_VERSION
#define PY_ARRAY_UNIQUE_SYMBOL korm_python_array_api
#ifndef KORM_PYTHON_MODULE
#define NO_IMPORT_ARRAY
#endif
#include <numpy/arrayobject.h>

#include <utility>

namespace korm::python {

// Thrown when Python's error is set.
struct Raised {};

class Reference {
public:
    Reference() = default;
    explicit Reference(PyObject* owned) : object(owned) {}
    Reference(Reference&& other) noexcept : object(std::exchange(other.object, nullptr)) {}
    Reference& operator=(Reference&& other) noexcept {
        std::swap(object, other.object);
        return *this;
    }
    ~Reference() { Py_XDECREF(object); }

    static Reference shared(PyObject* object) {
        Py_XINCREF(object);
        return Reference(object);
    }
    PyObject* get() const { return object; }
    PyArrayObject* array() const { return reinterpret_cast<PyArrayObject*>(object); }
    PyObject* release() { return std::exchange(object, nullptr); }
    explicit operator bool() const { return object != nullptr; }

private:
    PyObject* object = nullptr;
};

// The result of a call of Python's interface; null there means that an error is set.
inline Reference owned(PyObject* object) {
    if (object == nullptr) throw Raised{};
    return Reference(object);
}

template <class... Arguments>
[[noreturn]] void raise(PyObject* type, const char* format, Arguments... arguments) {
    PyErr_Format(type, format, arguments...);
    throw Raised{};
}

}
