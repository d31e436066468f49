#include "bindings.hpp"

namespace morv::python {

py::str text_to_python(std::string_view bytes) {
    PyObject* const text = PyUnicode_DecodeUTF8(bytes.data(), static_cast<Py_ssize_t>(bytes.size()), "surrogateescape");
    if (text == nullptr) {
        throw py::error_already_set();
    }
    return py::reinterpret_steal<py::str>(text);
}

std::string text_from_python(py::handle value) {
    if (!PyUnicode_Check(value.ptr())) {
        throw py::type_error("expected str, not " + std::string(Py_TYPE(value.ptr())->tp_name));
    }
    PyObject* const bytes = PyUnicode_AsEncodedString(value.ptr(), "utf-8", "surrogateescape");
    if (bytes == nullptr) {
        throw py::error_already_set();
    }
    auto const owned = py::reinterpret_steal<py::bytes>(bytes);
    return std::string(PyBytes_AS_STRING(bytes), static_cast<std::size_t>(PyBytes_GET_SIZE(bytes)));
}

}  // namespace morv::python
