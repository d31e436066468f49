#include "bindings.hpp"

#include <morv/qc/json/codec.hpp>
#include <morv/qc/model.hpp>

namespace morv::python {
namespace {

using Result = model::ParseResult<qc::Document>;

// The bytes of a text to decode, viewed where Python keeps them: `owner`
// holds them while the lock is released. A str goes through UTF-8, with
// surrogateescape for the bytes that a decode of ours let through.
std::string_view text_bytes(py::handle text, py::object& owner) {
    if (PyUnicode_Check(text.ptr())) {
        Py_ssize_t size = 0;
        if (char const* const utf8 = PyUnicode_AsUTF8AndSize(text.ptr(), &size)) {
            owner = py::reinterpret_borrow<py::object>(text);
            return {utf8, static_cast<std::size_t>(size)};
        }
        PyErr_Clear();
        PyObject* const bytes = PyUnicode_AsEncodedString(text.ptr(), "utf-8", "surrogateescape");
        if (bytes == nullptr) {
            throw py::error_already_set();
        }
        owner = py::reinterpret_steal<py::object>(bytes);
    } else if (PyBytes_Check(text.ptr())) {
        owner = py::reinterpret_borrow<py::object>(text);
    } else if (PyByteArray_Check(text.ptr()) || PyMemoryView_Check(text.ptr())) {
        PyObject* const bytes = PyBytes_FromObject(text.ptr());
        if (bytes == nullptr) {
            throw py::error_already_set();
        }
        owner = py::reinterpret_steal<py::object>(bytes);
    } else {
        throw py::type_error("expected str or bytes, not " + std::string(Py_TYPE(text.ptr())->tp_name));
    }
    return {PyBytes_AS_STRING(owner.ptr()), static_cast<std::size_t>(PyBytes_GET_SIZE(owner.ptr()))};
}

Result loads(py::handle text) {
    py::object owner;
    std::string_view const bytes = text_bytes(text, owner);
    py::gil_scoped_release unlocked;
    return qc::json::deserialize(bytes);
}

// A path, or an object with read(). pathlib opens and closes the file, and
// raises Python's own OSError when it cannot.
py::object path_of(py::object const& file) { return py::module_::import("pathlib").attr("Path")(file); }

Result load(py::object const& file) {
    if (py::hasattr(file, "read")) {
        return loads(file.attr("read")());
    }
    return loads(path_of(file).attr("read_bytes")());
}

struct WriteOptions {
    bool pretty;
    std::uint32_t indent;
    bool include_diagnostics;

    qc::json::SerializeOptions serialize_options() const { return {pretty, indent, include_diagnostics}; }
};

std::string serialize_unlocked(py::handle object, WriteOptions const& options) {
    if (py::isinstance<Result>(object)) {
        Result const& result = object.cast<Result const&>();
        py::gil_scoped_release unlocked;
        return qc::json::serialize(result, options.serialize_options());
    }
    if (py::isinstance<qc::Document>(object)) {
        qc::Document const& document = object.cast<qc::Document const&>();
        py::gil_scoped_release unlocked;
        return qc::json::serialize(document, options.serialize_options());
    }
    throw py::type_error("expected Document or ParseResult, not " + std::string(Py_TYPE(object.ptr())->tp_name));
}

py::str dumps(py::handle object, WriteOptions const& options) {
    return text_to_python(serialize_unlocked(object, options));
}

// A text file gets the str, a binary file or a path the exact bytes.
void dump(py::handle object, py::object const& file, WriteOptions const& options) {
    std::string const text = serialize_unlocked(object, options);
    if (!py::hasattr(file, "write")) {
        path_of(file).attr("write_bytes")(py::bytes(text));
    } else if (py::isinstance(file, py::module_::import("io").attr("TextIOBase"))) {
        file.attr("write")(text_to_python(text));
    } else {
        file.attr("write")(py::bytes(text));
    }
}

template <typename Enumeration>
void def_to_string(py::module_& module) {
    module.def(
        "to_string", [](Enumeration value) { return std::string(qc::to_string(value)); }, py::arg("value"),
        "The wire word of an enumerator.");
}

}  // namespace

void bind_codec(py::module_& module) {
    module.def("loads", &loads, py::arg("text"),
               "Reads a document from str or bytes. Never raises for bad content: the result holds what could be "
               "read, a status and the diagnostics.");
    module.def("load", &load, py::arg("file"),
               "Reads a document from a path or a binary file. A path that cannot be opened raises OSError.");
    module.def(
        "dumps",
        [](py::handle object, bool pretty, std::uint32_t indent, bool include_diagnostics) {
            return dumps(object, {pretty, indent, include_diagnostics});
        },
        py::arg("obj"), py::kw_only(), py::arg("pretty") = false, py::arg("indent") = 2,
        py::arg("include_diagnostics") = true,
        "Writes a Document (as complete, without diagnostics) or a ParseResult as JSON text.");
    module.def(
        "dump",
        [](py::handle object, py::object const& file, bool pretty, std::uint32_t indent, bool include_diagnostics) {
            dump(object, file, {pretty, indent, include_diagnostics});
        },
        py::arg("obj"), py::arg("file"), py::kw_only(), py::arg("pretty") = false, py::arg("indent") = 2,
        py::arg("include_diagnostics") = true, "Writes as dumps does, to a path or a file.");
    module.def(
        "validate_document", [](qc::Document const& document) { return qc::validate_document(document); },
        py::arg("document"), "Checks the references between the records of a document; returns the findings.");
    def_to_string<model::ParseStatus>(module);
    def_to_string<qc::ResultProfile>(module);
    def_to_string<qc::ProgramKind>(module);
    def_to_string<qc::TerminationKind>(module);
    def_to_string<qc::JobRelation>(module);
    def_to_string<qc::TaskKind>(module);
    def_to_string<qc::EnergyKind>(module);
    def_to_string<qc::ConvergenceStatus>(module);
    def_to_string<qc::CriterionKind>(module);
    def_to_string<qc::SpinChannel>(module);
}

}  // namespace morv::python
