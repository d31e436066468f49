#include "conversions.hpp"

#include <cstring>
#include <stdexcept>

namespace morv::python {

void throw_gone() {
    throw std::runtime_error(
        "this record is no longer where it was taken from: its list was reordered or shortened, or it or a record "
        "holding it was replaced; take it again from the document");
}

py::str text_to_python(std::string_view bytes) {
    PyObject* const text = PyUnicode_DecodeUTF8(bytes.data(), static_cast<Py_ssize_t>(bytes.size()), "surrogateescape");
    if (text == nullptr) {
        throw py::error_already_set();
    }
    return py::reinterpret_steal<py::str>(text);
}

std::string text_from_python(py::handle value, std::string const& where) {
    if (!PyUnicode_Check(value.ptr())) {
        throw_type_error(where, "str", value);
    }
    PyObject* const bytes = PyUnicode_AsEncodedString(value.ptr(), "utf-8", "surrogateescape");
    if (bytes == nullptr) {
        throw py::error_already_set();
    }
    auto const owned = py::reinterpret_steal<py::bytes>(bytes);
    return std::string(PyBytes_AS_STRING(bytes), static_cast<std::size_t>(PyBytes_GET_SIZE(bytes)));
}

void throw_type_error(std::string const& where, std::string const& expected, py::handle value) {
    throw py::type_error(where + ": expected " + expected + ", not " + Py_TYPE(value.ptr())->tp_name);
}

void throw_overflow(std::string const& where, std::string const& expected) {
    PyErr_SetString(PyExc_OverflowError, (where + ": the value does not fit " + expected).c_str());
    throw py::error_already_set();
}

bool is_numpy_bool(py::handle value) {
    char const* const name = Py_TYPE(value.ptr())->tp_name;
    return std::strcmp(name, "numpy.bool_") == 0 || std::strcmp(name, "numpy.bool") == 0;
}

namespace {

bool is_bool(py::handle value) { return PyBool_Check(value.ptr()) || is_numpy_bool(value); }

// An int of Python or an integer scalar of NumPy, as a Python int.
py::int_ python_integer(py::handle value, std::string const& where) {
    if (is_bool(value) || !PyIndex_Check(value.ptr())) {
        throw_type_error(where, "int", value);
    }
    PyObject* const number = PyNumber_Index(value.ptr());
    if (number == nullptr) {
        throw py::error_already_set();
    }
    return py::reinterpret_steal<py::int_>(number);
}

std::string range_text(long long min, unsigned long long max) {
    return "an int from " + std::to_string(min) + " to " + std::to_string(max);
}

}  // namespace

bool is_number(py::handle value) {
    PyObject* const object = value.ptr();
    auto const* const number = Py_TYPE(object)->tp_as_number;
    bool const converts = PyFloat_Check(object) || PyIndex_Check(object) ||
                          (number != nullptr && number->nb_float != nullptr && !PyComplex_Check(object));
    return converts && !is_bool(value);
}

double float_from_python(py::handle value, std::string const& where) {
    PyObject* const object = value.ptr();
    if (PyFloat_Check(object)) {
        return PyFloat_AS_DOUBLE(object);
    }
    if (!is_number(value)) {
        throw_type_error(where, "float", value);
    }
    double const converted = PyFloat_AsDouble(object);
    if (converted == -1.0 && PyErr_Occurred() != nullptr) {
        if (PyErr_ExceptionMatches(PyExc_OverflowError) != 0) {
            PyErr_Clear();
            throw_overflow(where, "a float");
        }
        throw py::error_already_set();
    }
    return converted;
}

bool bool_from_python(py::handle value, std::string const& where) {
    if (!is_bool(value)) {
        throw_type_error(where, "bool", value);
    }
    return PyObject_IsTrue(value.ptr()) == 1;
}

long long integer_from_python(py::handle value, std::string const& where, long long min, long long max) {
    py::int_ const number = python_integer(value, where);
    int overflow = 0;
    long long const converted = PyLong_AsLongLongAndOverflow(number.ptr(), &overflow);
    if (overflow != 0 || converted < min || converted > max) {
        throw_overflow(where, range_text(min, static_cast<unsigned long long>(max)));
    }
    return converted;
}

unsigned long long unsigned_from_python(py::handle value, std::string const& where, unsigned long long max) {
    py::int_ const number = python_integer(value, where);
    unsigned long long const converted = PyLong_AsUnsignedLongLong(number.ptr());
    if (PyErr_Occurred() != nullptr) {
        PyErr_Clear();
        throw_overflow(where, range_text(0, max));
    }
    if (converted > max) {
        throw_overflow(where, range_text(0, max));
    }
    return converted;
}

// Anything NumPy reads as an (N, 3) array of floats; an empty array is an
// empty list whatever its shape.
std::vector<chem::Vec3> vectors_from_numpy(py::handle value, std::string const& where) {
    auto const array = py::array_t<double, py::array::c_style | py::array::forcecast>::ensure(value);
    if (!array) {
        throw py::error_already_set();
    }
    if (array.size() == 0) {
        return {};
    }
    if (array.ndim() != 2 || array.shape(1) != 3) {
        throw py::value_error(where + ": expected an array of shape (N, 3)");
    }
    auto const cells = array.unchecked<2>();
    std::vector<chem::Vec3> vectors;
    vectors.reserve(static_cast<std::size_t>(cells.shape(0)));
    for (py::ssize_t row = 0; row < cells.shape(0); ++row) {
        vectors.push_back({cells(row, 0), cells(row, 1), cells(row, 2)});
    }
    return vectors;
}

}  // namespace morv::python
