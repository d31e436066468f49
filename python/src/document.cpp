#include "bindings.hpp"

namespace morv::model {

inline bool operator==(ParseResult<qc::Document> const& lhs, ParseResult<qc::Document> const& rhs) {
    return lhs.value == rhs.value && lhs.status == rhs.status && lhs.diagnostics == rhs.diagnostics;
}
inline bool operator!=(ParseResult<qc::Document> const& lhs, ParseResult<qc::Document> const& rhs) {
    return !(lhs == rhs);
}

}  // namespace morv::model

namespace morv::python {
namespace {

using model::ExtensionValue;
using qc::MetadataValue;

bool is_number(py::handle value) {
    return (PyLong_Check(value.ptr()) || PyFloat_Check(value.ptr())) && !PyBool_Check(value.ptr());
}

std::string describe_type(py::handle value) { return Py_TYPE(value.ptr())->tp_name; }

py::object metadata_to_python(MetadataValue const& value) {
    return std::visit(
        [](auto const& alternative) -> py::object {
            using Alternative = std::decay_t<decltype(alternative)>;
            if constexpr (std::is_same_v<Alternative, std::string>) {
                return text_to_python(alternative);
            } else if constexpr (std::is_same_v<Alternative, std::vector<std::string>>) {
                py::list texts;
                for (auto const& text : alternative) {
                    texts.append(text_to_python(text));
                }
                return std::move(texts);
            } else {
                return py::cast(alternative);
            }
        },
        value);
}

// A list of texts stays texts; a list of numbers, or an empty list, becomes
// numbers, as the reader gives them.
MetadataValue metadata_list_from_python(py::handle list, std::string const& key) {
    py::sequence const items = py::reinterpret_borrow<py::sequence>(list);
    bool const all_texts = py::len(items) > 0 && std::all_of(items.begin(), items.end(), [](py::handle item) {
                               return PyUnicode_Check(item.ptr());
                           });
    if (all_texts) {
        std::vector<std::string> texts;
        for (auto const item : items) {
            texts.push_back(text_from_python(item));
        }
        return texts;
    }
    std::vector<double> numbers;
    for (auto const item : items) {
        if (!is_number(item)) {
            throw py::type_error("metadata '" + key + "': a list holds only texts or only numbers");
        }
        numbers.push_back(item.cast<double>());
    }
    return numbers;
}

MetadataValue metadata_from_python(py::handle value, std::string const& key) {
    if (PyBool_Check(value.ptr())) {
        return value.cast<bool>();
    }
    if (PyLong_Check(value.ptr())) {
        return value.cast<long long>();
    }
    if (PyFloat_Check(value.ptr())) {
        return value.cast<double>();
    }
    if (PyUnicode_Check(value.ptr())) {
        return text_from_python(value);
    }
    if (PyList_Check(value.ptr()) || PyTuple_Check(value.ptr())) {
        return metadata_list_from_python(value, key);
    }
    throw py::type_error("metadata '" + key + "': cannot hold a value of type " + describe_type(value));
}

py::object extension_to_python(ExtensionValue const& value) {
    return std::visit(
        [](auto const& alternative) -> py::object {
            using Alternative = std::decay_t<decltype(alternative)>;
            if constexpr (std::is_same_v<Alternative, std::nullptr_t>) {
                return py::none();
            } else if constexpr (std::is_same_v<Alternative, std::string>) {
                return text_to_python(alternative);
            } else if constexpr (std::is_same_v<Alternative, std::vector<ExtensionValue>>) {
                py::list items;
                for (auto const& item : alternative) {
                    items.append(extension_to_python(item));
                }
                return std::move(items);
            } else if constexpr (std::is_same_v<Alternative, std::map<std::string, ExtensionValue>>) {
                py::dict members;
                for (auto const& [key, member] : alternative) {
                    members[text_to_python(key)] = extension_to_python(member);
                }
                return std::move(members);
            } else {
                return py::cast(alternative);
            }
        },
        value.value);
}

std::map<std::string, ExtensionValue> extension_members_from_python(py::handle dict);

// Whole numbers keep the reader's types: signed where they fit, unsigned
// above that.
ExtensionValue extension_integer_from_python(py::handle value) {
    long long const number = PyLong_AsLongLong(value.ptr());
    if (PyErr_Occurred() == nullptr) {
        return {number};
    }
    PyErr_Clear();
    unsigned long long const large = PyLong_AsUnsignedLongLong(value.ptr());
    if (PyErr_Occurred() != nullptr) {
        PyErr_Clear();
        throw py::value_error("an extension integer must lie between -2^63 and 2^64 - 1");
    }
    return {large};
}

ExtensionValue extension_from_python(py::handle value) {
    if (value.is_none()) {
        return {nullptr};
    }
    if (PyBool_Check(value.ptr())) {
        return {value.cast<bool>()};
    }
    if (PyLong_Check(value.ptr())) {
        return extension_integer_from_python(value);
    }
    if (PyFloat_Check(value.ptr())) {
        return {value.cast<double>()};
    }
    if (PyUnicode_Check(value.ptr())) {
        return {text_from_python(value)};
    }
    if (PyList_Check(value.ptr()) || PyTuple_Check(value.ptr())) {
        std::vector<ExtensionValue> items;
        for (auto const item : py::reinterpret_borrow<py::sequence>(value)) {
            items.push_back(extension_from_python(item));
        }
        return {std::move(items)};
    }
    if (PyDict_Check(value.ptr())) {
        return {extension_members_from_python(value)};
    }
    throw py::type_error("an extension value cannot be of type " + describe_type(value));
}

std::string key_from_python(py::handle key) {
    if (!PyUnicode_Check(key.ptr())) {
        throw py::type_error("keys must be str, not " + describe_type(key));
    }
    return text_from_python(key);
}

std::map<std::string, ExtensionValue> extension_members_from_python(py::handle dict) {
    std::map<std::string, ExtensionValue> members;
    for (auto const& [key, member] : py::reinterpret_borrow<py::dict>(dict)) {
        members[key_from_python(key)] = extension_from_python(member);
    }
    return members;
}

py::dict metadata_table_to_python(qc::Document const& document) {
    py::dict table;
    for (auto const& [key, value] : document.metadata) {
        table[text_to_python(key)] = metadata_to_python(value);
    }
    return table;
}

void set_metadata_table(qc::Document& document, py::dict const& table) {
    std::map<std::string, MetadataValue> metadata;
    for (auto const& [key, value] : table) {
        std::string name = key_from_python(key);
        metadata[name] = metadata_from_python(value, name);
    }
    document.metadata = std::move(metadata);
}

py::dict extension_table_to_python(qc::Document const& document) {
    py::dict table;
    for (auto const& [key, value] : document.extensions) {
        table[text_to_python(key)] = extension_to_python(value);
    }
    return table;
}

}  // namespace

void bind_document(py::module_& module) {
    using qc::Document;
    RecordBinding<Document>(module, "Document",
                            "One run of a calculation program: what it did and found. metadata and extensions are "
                            "plain dicts, copied on access: assign a whole dict to change them.")
        .field<&Document::program>("program")
        .field<&Document::normalization>("normalization")
        .field<&Document::sources>("sources")
        .field<&Document::systems>("systems")
        .field<&Document::frames>("frames")
        .field<&Document::jobs>("jobs")
        .field<&Document::steps>("steps")
        .field<&Document::analyses>("analyses")
        .property("metadata", &metadata_table_to_python, &set_metadata_table)
        .property("extensions", &extension_table_to_python,
                  [](Document& document, py::dict const& table) {
                      document.extensions = extension_members_from_python(table);
                  })
        .finish();

    using Result = model::ParseResult<Document>;
    RecordBinding<Result>(module, "ParseResult", "What a decode gives back: the document, a status, diagnostics.")
        .field<&Result::value>("value")
        .field<&Result::status>("status")
        .field<&Result::diagnostics>("diagnostics")
        .finish();
}

}  // namespace morv::python
