#include "bindings.hpp"

#include <morv/qc/json/codec.hpp>

#include <pybind11/numpy.h>

#include <algorithm>
#include <cstring>

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
using qc::Document;
using qc::MetadataValue;
using Result = model::ParseResult<Document>;

// As deep as a value can nest and still be read back (the reader gives up a
// little below 500 levels).
constexpr std::size_t max_extension_depth = 400;

std::string key_from_python(py::handle key, std::string const& where) {
    if (!PyUnicode_Check(key.ptr())) {
        throw py::type_error(where + ": keys must be str, not " + Py_TYPE(key.ptr())->tp_name);
    }
    return text_from_python(key, where);
}

py::object metadata_to_python(MetadataValue const& value) {
    return std::visit(
        [](auto const& alternative) -> py::object {
            using Alternative = std::decay_t<decltype(alternative)>;
            if constexpr (is_vector<Alternative>::value) {
                py::list items;
                for (auto const& item : alternative) {
                    items.append(python_value(item));
                }
                return std::move(items);
            } else {
                return python_value(alternative);
            }
        },
        value);
}

// A list of texts stays texts; a list of numbers, or an empty list, becomes
// numbers, as the reader gives them.
MetadataValue metadata_list_from_python(py::handle list, std::string const& where) {
    auto const items = py::reinterpret_borrow<py::sequence>(list);
    bool const all_texts = py::len(items) > 0 && std::all_of(items.begin(), items.end(), [](py::handle item) {
                               return PyUnicode_Check(item.ptr());
                           });
    if (all_texts) {
        return Convert<std::vector<std::string>>::from_python(list, where);
    }
    std::vector<double> numbers;
    for (auto const item : items) {
        if (!is_number(item)) {
            throw py::type_error(where + ": a list holds only texts or only numbers, not " + Py_TYPE(item.ptr())->tp_name);
        }
        numbers.push_back(float_from_python(item, where));
    }
    return numbers;
}

MetadataValue metadata_from_python(py::handle value, std::string const& where) {
    if (PyBool_Check(value.ptr()) || is_numpy_bool(value)) {
        return bool_from_python(value, where);
    }
    if (PyIndex_Check(value.ptr())) {
        return Convert<long long>::from_python(value, where);
    }
    if (is_number(value)) {
        return float_from_python(value, where);
    }
    if (PyUnicode_Check(value.ptr())) {
        return text_from_python(value, where);
    }
    if (PyList_Check(value.ptr()) || PyTuple_Check(value.ptr())) {
        return metadata_list_from_python(value, where);
    }
    throw_type_error(where, "bool, int, float, str or a list of str or of numbers", value);
}

std::map<std::string, MetadataValue> metadata_from_python(py::handle table) {
    if (!PyDict_Check(table.ptr())) {
        throw_type_error("Document.metadata", "dict", table);
    }
    std::map<std::string, MetadataValue> metadata;
    for (auto const& [key, value] : py::reinterpret_borrow<py::dict>(table)) {
        std::string name = key_from_python(key, "Document.metadata");
        metadata[name] = metadata_from_python(value, "Document.metadata['" + name + "']");
    }
    return metadata;
}

py::object extension_to_python(ExtensionValue const& value) {
    return std::visit(
        [](auto const& alternative) -> py::object {
            using Alternative = std::decay_t<decltype(alternative)>;
            if constexpr (std::is_same_v<Alternative, std::nullptr_t>) {
                return py::none();
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
                return python_value(alternative);
            }
        },
        value.value);
}

// Reads a JSON-like Python value, refusing what JSON cannot hold: a value
// that contains itself, or nests deeper than a reader can follow.
class ExtensionReader {
public:
    explicit ExtensionReader(std::string where) : where_(std::move(where)) {}

    ExtensionValue value(py::handle value) {
        PyObject* const object = value.ptr();
        if (value.is_none()) {
            return {nullptr};
        }
        if (PyBool_Check(object) || is_numpy_bool(value)) {
            return {bool_from_python(value, where_)};
        }
        if (PyIndex_Check(object)) {
            return integer(value);
        }
        if (is_number(value)) {
            return {float_from_python(value, where_)};
        }
        if (PyUnicode_Check(object)) {
            return {text_from_python(value, where_)};
        }
        if (PyList_Check(object) || PyTuple_Check(object) || PyDict_Check(object)) {
            return container(value);
        }
        throw_type_error(where_, "None, bool, int, float, str, list or dict", value);
    }

    std::map<std::string, ExtensionValue> members(py::handle dict) {
        std::map<std::string, ExtensionValue> members;
        for (auto const& [key, member] : py::reinterpret_borrow<py::dict>(dict)) {
            std::string name = key_from_python(key, where_);
            members[std::move(name)] = value(member);
        }
        return members;
    }

private:
    // Whole numbers keep the reader's types: signed where they fit,
    // unsigned above that.
    ExtensionValue integer(py::handle value) {
        py::int_ const number(py::reinterpret_steal<py::object>(PyNumber_Index(value.ptr())));
        int overflow = 0;
        long long const signed_number = PyLong_AsLongLongAndOverflow(number.ptr(), &overflow);
        if (overflow == 0) {
            return {signed_number};
        }
        return {Convert<unsigned long long>::from_python(number, where_)};
    }

    ExtensionValue container(py::handle value) {
        if (std::find(open_.begin(), open_.end(), value.ptr()) != open_.end()) {
            throw py::value_error(where_ + ": circular reference detected");
        }
        if (open_.size() >= max_extension_depth) {
            throw py::value_error(where_ + ": nests deeper than " + std::to_string(max_extension_depth) + " levels");
        }
        open_.push_back(value.ptr());
        ExtensionValue read;
        if (PyDict_Check(value.ptr())) {
            read = {members(value)};
        } else {
            std::vector<ExtensionValue> items;
            for (auto const item : py::reinterpret_borrow<py::sequence>(value)) {
                items.push_back(this->value(item));
            }
            read = {std::move(items)};
        }
        open_.pop_back();
        return read;
    }

    std::string where_;
    std::vector<PyObject*> open_;
};

std::map<std::string, ExtensionValue> extensions_from_python(py::handle table) {
    if (!PyDict_Check(table.ptr())) {
        throw_type_error("Document.extensions", "dict", table);
    }
    return ExtensionReader("Document.extensions").members(table);
}

template <typename Table, typename ToPython>
py::dict table_to_python(Table const& table, ToPython to_python) {
    py::dict python;
    for (auto const& [key, value] : table) {
        python[text_to_python(key)] = to_python(value);
    }
    return python;
}

// The positions of every frame as one (frames, atoms, 3) array; frames of
// different sizes do not make one array.
py::array_t<double> positions_array(Document const& document) {
    std::size_t const atoms = document.frames.empty() ? 0 : document.frames.front().positions_angstrom.size();
    for (auto const& frame : document.frames) {
        if (frame.positions_angstrom.size() != atoms) {
            throw py::value_error("the frames hold different numbers of atoms; take each frame's positions instead");
        }
    }
    py::array_t<double> array({document.frames.size(), atoms, std::size_t{3}});
    double* cell = array.mutable_data();
    for (auto const& frame : document.frames) {
        for (auto const& position : frame.positions_angstrom) {
            *cell++ = position.x;
            *cell++ = position.y;
            *cell++ = position.z;
        }
    }
    return array;
}

void set_positions_array(Ref<Document> const& self, py::handle value) {
    auto const array = py::array_t<double, py::array::c_style | py::array::forcecast>::ensure(value);
    if (!array) {
        throw py::error_already_set();
    }
    std::size_t const frames = self.get().frames.size();
    if (array.ndim() != 3 || static_cast<std::size_t>(array.shape(0)) != frames || array.shape(2) != 3) {
        throw py::value_error("expected an array of shape (" + std::to_string(frames) + ", N, 3), one row per frame");
    }
    auto const atoms = static_cast<std::size_t>(array.shape(1));
    double const* cell = array.data();
    std::vector<std::vector<chem::Vec3>> positions(frames, std::vector<chem::Vec3>(atoms));
    for (auto& frame : positions) {
        for (auto& position : frame) {
            position = {cell[0], cell[1], cell[2]};
            cell += 3;
        }
    }
    self.change([&](Document& document) {
        for (std::size_t index = 0; index < frames; ++index) {
            document.frames[index].positions_angstrom = std::move(positions[index]);
        }
    });
}

// One row per energy record of every step, in document order.
py::array energies_array(Document const& document) {
    std::size_t rows = 0;
    for (auto const& step : document.steps) {
        rows += step.energies.size();
    }
    py::dtype const type = py::dtype::from_args(py::list(py::make_tuple(
        py::make_tuple("step_id", "<u4"), py::make_tuple("energy_id", "<u4"), py::make_tuple("kind", "<u4"),
        py::make_tuple("value", "<f8"))));
    py::array array(type, std::vector<py::ssize_t>{static_cast<py::ssize_t>(rows)});
    auto* cell = static_cast<char*>(array.mutable_data());
    auto const put = [&cell](auto value) {
        std::memcpy(cell, &value, sizeof value);
        cell += sizeof value;
    };
    for (auto const& step : document.steps) {
        for (auto const& energy : step.energies) {
            put(step.id.value);
            put(energy.id.value);
            put(static_cast<std::uint32_t>(energy.kind));
            put(energy.value);
        }
    }
    return array;
}

// A document pickles as its exact JSON text when that text reads back to
// an equal document (by far the usual case, and the fastest); otherwise
// through its fields, which keep whatever JSON would not.
template <typename Value>
py::object document_state(Ref<Value> const& self, std::vector<char const*> const& fields) {
    Value const& value = self.get();
    std::string text = qc::json::serialize(value);
    Result const read = qc::json::deserialize(text);
    bool exact = false;
    if constexpr (std::is_same_v<Value, Result>) {
        exact = read == value;
    } else {
        exact = read.diagnostics.empty() && read.value == value;
    }
    if (exact) {
        return py::bytes(text);
    }
    py::object const object = py::cast(self);
    py::tuple state(fields.size());
    for (std::size_t index = 0; index < fields.size(); ++index) {
        state[index] = object.attr(fields[index]);
    }
    return std::move(state);
}

template <typename Value>
Ref<Value> from_document_state(py::handle state, std::vector<char const*> const& fields) {
    if (PyBytes_Check(state.ptr())) {
        std::string_view const text(PyBytes_AS_STRING(state.ptr()),
                                    static_cast<std::size_t>(PyBytes_GET_SIZE(state.ptr())));
        Result read = qc::json::deserialize(text);
        if constexpr (std::is_same_v<Value, Result>) {
            return Ref<Value>::owning(std::move(read));
        } else {
            return Ref<Value>::owning(std::move(read.value));
        }
    }
    auto const values = py::reinterpret_borrow<py::tuple>(state);
    if (values.size() != fields.size()) {
        throw py::value_error("the pickled state does not match the record's fields");
    }
    Ref<Value> value = Ref<Value>::owning(Value{});
    py::object const view = py::cast(value);
    for (std::size_t index = 0; index < fields.size(); ++index) {
        py::setattr(view, fields[index], values[index]);
    }
    return value;
}

template <typename Value>
void def_document_pickle(py::class_<Ref<Value>>& type, std::vector<char const*> const& fields) {
    type.def(py::pickle([fields](Ref<Value> const& self) { return document_state(self, fields); },
                        [fields](py::object const& state) { return from_document_state<Value>(state, fields); }));
}

}  // namespace

void bind_document(py::module_& module) {
    RecordBinding<Document> document(module, "Document",
                                     "One run of a calculation program: what it did and found. metadata and "
                                     "extensions are plain dicts, copied on access: assign a whole dict to change "
                                     "them.");
    document.field<&Document::program>("program")
        .field<&Document::normalization>("normalization")
        .field<&Document::sources>("sources")
        .field<&Document::systems>("systems")
        .field<&Document::frames>("frames")
        .field<&Document::jobs>("jobs")
        .field<&Document::steps>("steps")
        .field<&Document::analyses>("analyses")
        .property(
            "metadata",
            [](Ref<Document> const& self) { return table_to_python(self.get().metadata, &metadata_to_python); },
            [](Ref<Document> const& self, py::handle table) {
                auto metadata = metadata_from_python(table);
                self.change([&](Document& value) { value.metadata = std::move(metadata); });
            })
        .property(
            "extensions",
            [](Ref<Document> const& self) { return table_to_python(self.get().extensions, &extension_to_python); },
            [](Ref<Document> const& self, py::handle table) {
                auto extensions = extensions_from_python(table);
                self.change([&](Document& value) { value.extensions = std::move(extensions); });
            })
        .finish();
    def_document_pickle(document.type(), {"program", "normalization", "sources", "systems", "frames", "jobs", "steps",
                                          "analyses", "metadata", "extensions"});
    document.type().def(
        "positions_array", [](Ref<Document> const& self) { return positions_array(self.get()); },
        "The positions of every frame in angstrom, a float64 array of shape (frames, atoms, 3) (a copy).");
    document.type().def("set_positions_array", &set_positions_array, py::arg("positions"),
                        "Writes an array of shape (frames, atoms, 3), in angstrom, into the frames' positions.");
    document.type().def(
        "energies_array", [](Ref<Document> const& self) { return energies_array(self.get()); },
        "Every energy record of every step, in document order, as a structured array with the fields step_id, "
        "energy_id, kind (the EnergyKind number) and value (hartree); pandas.DataFrame takes it as it is.");

    RecordBinding<Result> result(module, "ParseResult", "What a decode gives back: the document, a status, diagnostics.");
    result.field<&Result::value>("value")
        .field<&Result::status>("status")
        .field<&Result::diagnostics>("diagnostics")
        .finish();
    def_document_pickle(result.type(), {"value", "status", "diagnostics"});
}

}  // namespace morv::python
