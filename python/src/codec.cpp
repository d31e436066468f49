#include "bindings.hpp"

#include <morv/qc/import.hpp>
#include <morv/qc/json/codec.hpp>
#include <morv/qc/model.hpp>

#include <cstring>

namespace morv::python {
namespace {

using Result = model::ParseResult<qc::Document>;

// The bytes of a text to decode, viewed where Python keeps them: `owner`
// holds them while the lock is released. A str goes through UTF-8, with
// surrogateescape for the bytes that a decode of ours let through.
std::string_view text_bytes(py::handle text, py::object& owner, char const* function = "loads") {
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
        throw_type_error(function, "str or bytes", text);
    }
    return {PyBytes_AS_STRING(owner.ptr()), static_cast<std::size_t>(PyBytes_GET_SIZE(owner.ptr()))};
}

Ref<Result> loads(py::handle text) {
    py::object owner;
    std::string_view const bytes = text_bytes(text, owner);
    Result result;
    {
        py::gil_scoped_release unlocked;
        result = qc::json::deserialize(bytes);
    }
    return Ref<Result>::owning(std::move(result));
}

// A path, or an object with read(). pathlib opens and closes the file, and
// raises Python's own OSError when it cannot.
py::object path_of(py::object const& file) { return py::module_::import("pathlib").attr("Path")(file); }

Ref<Result> load(py::object const& file) {
    if (py::hasattr(file, "read")) {
        return loads(file.attr("read")());
    }
    return loads(path_of(file).attr("read_bytes")());
}

// A str or bytes with a line break is the output itself: every output is
// many lines long, and a file name holds none. Anything else is a path.
bool holds_line_break(py::handle source) {
    if (PyUnicode_Check(source.ptr())) {
        return PyUnicode_FindChar(source.ptr(), '\n', 0, PyUnicode_GET_LENGTH(source.ptr()), 1) >= 0;
    }
    return PyBytes_Check(source.ptr()) &&
           std::memchr(PyBytes_AS_STRING(source.ptr()), '\n', static_cast<std::size_t>(PyBytes_GET_SIZE(source.ptr()))) !=
               nullptr;
}

// The file name goes through the file system's encoding, so that a name that
// is not UTF-8 reaches the document as the same bytes.
std::string file_system_bytes(py::handle name) {
    return py::module_::import("os").attr("fsencode")(name).cast<std::string>();
}

Ref<Result> import_output(py::handle source, py::handle file_name) {
    py::object owner;
    std::string_view text;
    std::string name;
    if (holds_line_break(source)) {
        text = text_bytes(source, owner, "import_output");
    } else if (PyUnicode_Check(source.ptr()) || PyBytes_Check(source.ptr()) ||
               py::isinstance(source, py::module_::import("os").attr("PathLike"))) {
        py::object const path = path_of(py::module_::import("os").attr("fsdecode")(source));
        text = text_bytes(path.attr("read_bytes")(), owner, "import_output");
        name = file_system_bytes(path.attr("name"));
    } else {
        throw_type_error("import_output", "str, bytes or os.PathLike", source);
    }
    if (!file_name.is_none()) {
        name = file_system_bytes(file_name);
    }
    Result result;
    {
        py::gil_scoped_release unlocked;
        result = qc::import_output(text, name);
    }
    return Ref<Result>::owning(std::move(result));
}

// Writes with the GIL released, under the tree's shared lock: a change from
// another thread waits until the text is whole.
template <typename Value>
std::string serialize_unlocked(Ref<Value> const& handle, qc::json::SerializeOptions const& options) {
    std::shared_lock lock(handle.root().writers());
    Value const& value = handle.get();
    std::string text;
    py::gil_scoped_release unlocked;
    try {
        text = qc::json::serialize(value, options);
    } catch (...) {
        lock.unlock();
        throw;
    }
    lock.unlock();
    return text;
}

std::string serialize_object(py::handle object, qc::json::SerializeOptions const& options) {
    if (py::isinstance<Ref<Result>>(object)) {
        return serialize_unlocked(object.cast<Ref<Result> const&>(), options);
    }
    if (py::isinstance<Ref<qc::Document>>(object)) {
        return serialize_unlocked(object.cast<Ref<qc::Document> const&>(), options);
    }
    throw_type_error("dumps", "Document or ParseResult", object);
}

// Whether a file object takes str: io's text files, and file-like objects
// that are not io's binary ones but have an encoding (such as a
// SpooledTemporaryFile opened in text mode).
bool takes_text(py::handle file) {
    py::module_ const io = py::module_::import("io");
    if (py::isinstance(file, io.attr("TextIOBase"))) {
        return true;
    }
    bool const binary = py::isinstance(file, io.attr("BufferedIOBase")) || py::isinstance(file, io.attr("RawIOBase"));
    return !binary && py::hasattr(file, "encoding");
}

// A text file gets the str, a binary file or a path the exact bytes.
void dump(py::handle object, py::object const& file, qc::json::SerializeOptions const& options) {
    std::string const text = serialize_object(object, options);
    if (!py::hasattr(file, "write")) {
        path_of(file).attr("write_bytes")(py::bytes(text));
    } else if (takes_text(file)) {
        file.attr("write")(text_to_python(text));
    } else {
        file.attr("write")(py::bytes(text));
    }
}

}  // namespace

void bind_codec(py::module_& module) {
    module.def("loads", &loads, py::arg("text"),
               "Reads a document from str or bytes. Never raises for bad content: the result holds what could be "
               "read, a status and the diagnostics.");
    module.def("load", &load, py::arg("file"),
               "Reads a document from a path or a binary file. A path that cannot be opened raises OSError.");
    module.def("import_output", &import_output, py::arg("path_or_text"), py::arg("file_name") = py::none(),
               "Reads a program's output into a document: a str or bytes with a line break is the output's text, "
               "anything else a path to it (OSError when it cannot be read). file_name names the output among the "
               "document's sources; by default the path's file name, or none for a text. Never raises for bad "
               "content: an output of no known program gives a failed result.");
    module.def(
        "dumps",
        [](py::handle object, bool pretty, std::uint32_t indent, bool include_diagnostics) {
            return text_to_python(serialize_object(object, {pretty, indent, include_diagnostics}));
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
        "validate_document",
        [](Ref<qc::Document> const& document) {
            return Ref<std::vector<model::Diagnostic>>::owning(qc::validate_document(document.get()));
        },
        py::arg("document"), "Checks the references between the records of a document; returns the findings.");
    module.def(
        "to_string",
        [base = module.attr("WireEnum")](py::handle value) -> py::object {
            if (!py::isinstance(value, base)) {
                throw_type_error("to_string", "a member of one of the module's enumerations", value);
            }
            return value.attr("name");
        },
        py::arg("value"), "The wire word of an enumerator.");
}

}  // namespace morv::python
