// The extension module korm._korm. Its functions take positional arguments; korm/__init__.py gives them their shape.
#define KORM_PYTHON_MODULE
#include "operations.h"
#include "recorder.h"

#include "korm.h"

#include <new>

namespace korm::python {

namespace {

// An operation as a method: its number of arguments is checked, exceptions become Python's.
template <PyObject* (*operation)(Arguments), Py_ssize_t arguments>
PyObject* method(PyObject*, PyObject* const* given, Py_ssize_t count) {
    if (count != arguments) {
        PyErr_Format(PyExc_TypeError, "%zd arguments were expected, not %zd", arguments, count);
        return nullptr;
    }
    try {
        return operation(given);
    } catch (const Raised&) {
        return nullptr;
    } catch (const std::bad_alloc&) {
        return PyErr_NoMemory();
    }
}

template <class Names>
Reference tupleOf(const Names& names) {
    Reference tuple = owned(PyTuple_New(static_cast<Py_ssize_t>(names.size())));
    Py_ssize_t i = 0;
    for (const auto& name : names)
        PyTuple_SET_ITEM(tuple.get(), i++, owned(PyUnicode_FromString(std::string(name).c_str())).release());
    return tuple;
}

// planned(function, arguments, keywords): functions, operands that are copied, operands that go in blocks.
PyObject* planned(Arguments given) {
    Plan recorded;
    Plan* const outer = std::exchange(plan, &recorded);
    Reference result(PyObject_Call(given[0], given[1], given[2]));
    plan = outer;
    if (!result) throw Raised{};
    return Py_BuildValue("NNN", tupleOf(recorded.functions).release(), tupleOf(recorded.copied).release(),
                         tupleOf(recorded.blocks).release());
}

PyObject* version(Arguments) { return PyUnicode_FromString(kormGetLibVersion()->version); }

template <PyObject* (*operation)(Arguments), Py_ssize_t arguments>
PyMethodDef methodOf(const char* name) {
    return {name, reinterpret_cast<PyCFunction>(reinterpret_cast<void (*)()>(method<operation, arguments>)),
            METH_FASTCALL, nullptr};
}

PyMethodDef methods[] = {
    methodOf<determinant, 2>("det"),
    methodOf<trace, 2>("trace"),
    methodOf<vectorNorm, 2>("vector_norm"),
    methodOf<frobeniusNorm, 2>("frobenius_norm"),
    methodOf<transpose, 2>("transpose"),
    methodOf<cross, 3>("cross"),
    methodOf<dot, 3>("dot"),
    methodOf<combine, 5>("combine"),
    methodOf<gaxpy, 4>("gaxpy"),
    methodOf<cholesky, 2>("cholesky"),
    methodOf<matmul, 3>("matmul"),
    methodOf<add, 3>("add"),
    methodOf<subtract, 3>("subtract"),
    methodOf<scale, 3>("scale"),
    methodOf<transform, 4>("transform"),
    methodOf<toViewport, 7>("to_viewport"),
    methodOf<inverse, 2>("inv"),
    methodOf<solve, 3>("solve"),
    methodOf<lu, 1>("lu"),
    methodOf<qr, 1>("qr"),
    methodOf<leastSquares, 2>("lstsq"),
    methodOf<symmetricEigen, 3>("symmetric_eigen"),
    methodOf<generalEigen, 2>("general_eigen"),
    methodOf<planned, 3>("planned"),
    methodOf<version, 0>("version"),
    {},
};

PyModuleDef definition{PyModuleDef_HEAD_INIT, "korm._korm", nullptr, -1, methods, nullptr, nullptr, nullptr, nullptr};

}

}

PyMODINIT_FUNC PyInit__korm() {
    import_array();
    return PyModule_Create(&korm::python::definition);
}
