#pragma once

// What every part of the Python module shares: the list types that stay C++
// vectors (so that `document.steps.append(step)` changes the document), the
// conversion of identifiers to plain ints, strings that carry any bytes, and
// the builder that gives each record its keyword constructor, fields,
// equality and repr.

#include <morv/qc/document.hpp>

#include <pybind11/operators.h>
#include <pybind11/pybind11.h>
#include <pybind11/stl.h>
#include <pybind11/stl_bind.h>

#include <algorithm>
#include <cstdint>
#include <limits>
#include <optional>
#include <string>
#include <string_view>
#include <type_traits>
#include <utility>
#include <vector>

PYBIND11_MAKE_OPAQUE(std::vector<morv::model::Diagnostic>)
PYBIND11_MAKE_OPAQUE(std::vector<morv::model::SourceFile>)
PYBIND11_MAKE_OPAQUE(std::vector<morv::chem::Vec3>)
PYBIND11_MAKE_OPAQUE(std::vector<morv::chem::AtomSite>)
PYBIND11_MAKE_OPAQUE(std::vector<morv::chem::ChemicalSystem>)
PYBIND11_MAKE_OPAQUE(std::vector<morv::chem::GeometryFrame>)
PYBIND11_MAKE_OPAQUE(std::vector<morv::qc::CalculationJob>)
PYBIND11_MAKE_OPAQUE(std::vector<morv::qc::TaskKind>)
PYBIND11_MAKE_OPAQUE(std::vector<morv::qc::StepId>)
PYBIND11_MAKE_OPAQUE(std::vector<morv::qc::CalculationStep>)
PYBIND11_MAKE_OPAQUE(std::vector<morv::qc::EnergyRecord>)
PYBIND11_MAKE_OPAQUE(std::vector<morv::qc::ConvergenceCriterion>)
PYBIND11_MAKE_OPAQUE(std::vector<morv::qc::AnalysisBlock>)
PYBIND11_MAKE_OPAQUE(std::vector<morv::qc::VibrationalMode>)
PYBIND11_MAKE_OPAQUE(std::vector<morv::qc::ExcitationContribution>)
PYBIND11_MAKE_OPAQUE(std::vector<morv::qc::AbsorptionPeak>)
PYBIND11_MAKE_OPAQUE(std::vector<morv::qc::ExcitedState>)
PYBIND11_MAKE_OPAQUE(std::vector<morv::qc::Orbital>)
PYBIND11_MAKE_OPAQUE(std::vector<morv::qc::PermanentDipole>)
PYBIND11_MAKE_OPAQUE(std::vector<morv::qc::AtomicChargeRecord>)
PYBIND11_MAKE_OPAQUE(std::vector<morv::qc::ScalarProperty>)

namespace pybind11::detail {

// Identifiers are plain ints in Python: any int from 0 to 2^32 - 1, and
// nothing else (not a bool, not a float).
template <typename Tag>
struct type_caster<morv::model::EntityId<Tag>> {
    PYBIND11_TYPE_CASTER(morv::model::EntityId<Tag>, const_name("int"));

    bool load(handle source, bool) {
        if (!PyLong_Check(source.ptr()) || PyBool_Check(source.ptr())) {
            return false;
        }
        unsigned long long const number = PyLong_AsUnsignedLongLong(source.ptr());
        if (PyErr_Occurred() != nullptr) {
            PyErr_Clear();
            return false;
        }
        if (number > std::numeric_limits<std::uint32_t>::max()) {
            return false;
        }
        value = morv::model::EntityId<Tag>(static_cast<std::uint32_t>(number));
        return true;
    }

    static handle cast(morv::model::EntityId<Tag> id, return_value_policy, handle) {
        return PyLong_FromUnsignedLong(id.value);
    }
};

}  // namespace pybind11::detail

namespace morv::python {

namespace py = pybind11;

// Strings hold whatever bytes the text held. Bytes that are not UTF-8 come
// through as Python spells undecodable file names (surrogateescape), and go
// back as the same bytes.
py::str text_to_python(std::string_view bytes);
std::string text_from_python(py::handle value);

template <typename T>
struct is_optional : std::false_type {};
template <typename T>
struct is_optional<std::optional<T>> : std::true_type {};

template <typename T>
struct is_entity_id : std::false_type {};
template <typename Tag>
struct is_entity_id<model::EntityId<Tag>> : std::true_type {};

// An optional record, such as a step's `gradient`, is the record itself in
// Python (changed in place) or None.
template <typename Field>
constexpr bool is_optional_record() {
    if constexpr (is_optional<Field>::value) {
        using Inner = typename Field::value_type;
        return std::is_class_v<Inner> && !std::is_same_v<Inner, std::string> && !is_entity_id<Inner>::value;
    } else {
        return false;
    }
}

// A list of records or values as a Python sequence that stays the C++
// vector: reads and changes reach the document without a copy.
template <typename Vector>
py::class_<Vector> bind_list(py::module_& module, char const* name) {
    auto list = py::bind_vector<Vector>(module, name);
    // Any iterable of elements, such as a plain list, can be assigned to a
    // field of this type.
    py::implicitly_convertible<py::iterable, Vector>();
    list.def("__repr__", [name = std::string(name)](py::object const& self) {
        return py::str("{}({})").format(name, py::repr(py::list(self)));
    });
    return list;
}

template <typename T>
class RecordBinding {
public:
    RecordBinding(py::module_& module, char const* name, char const* doc) : name_(name), class_(module, name, doc) {}

    template <auto Member>
    RecordBinding& field(char const* name) {
        using Field = std::decay_t<decltype(std::declval<T&>().*Member)>;
        names_.emplace_back(name);
        if constexpr (std::is_same_v<Field, std::string>) {
            class_.def_property(
                name, [](T const& self) { return text_to_python(self.*Member); },
                [](T& self, py::object const& value) { self.*Member = text_from_python(value); });
        } else if constexpr (std::is_same_v<Field, std::optional<std::string>>) {
            class_.def_property(
                name,
                [](T const& self) -> py::object {
                    return (self.*Member) ? py::object(text_to_python(*(self.*Member))) : py::none();
                },
                [](T& self, py::object const& value) {
                    self.*Member = value.is_none() ? std::nullopt : std::optional(text_from_python(value));
                });
        } else if constexpr (std::is_same_v<Field, std::optional<char>>) {
            class_.def_property(
                name,
                [](T const& self) -> py::object {
                    return (self.*Member) ? py::object(text_to_python(std::string(1, *(self.*Member)))) : py::none();
                },
                [](T& self, py::object const& value) { self.*Member = one_byte_from_python(value); });
        } else if constexpr (is_optional_record<Field>()) {
            using Inner = typename Field::value_type;
            class_.def_property(
                name,
                [](py::object const& self) -> py::object {
                    auto& value = self.cast<T&>().*Member;
                    return value ? py::cast(&*value, py::return_value_policy::reference_internal, self) : py::none();
                },
                [](T& self, std::optional<Inner> value) { self.*Member = std::move(value); });
        } else {
            class_.def_readwrite(name, Member);
        }
        return *this;
    }

    // A field whose conversion is the caller's own.
    template <typename Getter, typename Setter>
    RecordBinding& property(char const* name, Getter&& getter, Setter&& setter) {
        names_.emplace_back(name);
        class_.def_property(name, std::forward<Getter>(getter), std::forward<Setter>(setter));
        return *this;
    }

    py::class_<T>& type() { return class_; }

    // The keyword constructor, equality and repr, over the fields given.
    void finish() {
        class_.def(py::init([name = name_, names = names_](py::kwargs const& fields) {
                       T record{};
                       // A non-owning view of the new record, so that each
                       // field goes through its own setter and its checks.
                       py::object view = py::cast(&record, py::return_value_policy::reference);
                       for (auto const& [key, value] : fields) {
                           std::string const field = py::cast<std::string>(key);
                           if (std::find(names.begin(), names.end(), field) == names.end()) {
                               throw py::type_error(name + "() got an unexpected keyword argument '" + field + "'");
                           }
                           py::setattr(view, key, value);
                       }
                       return record;
                   }),
                   "Builds the record from keyword arguments, one per field; the others keep their defaults.");
        class_.def(py::self == py::self);
        class_.def(py::self != py::self);
        class_.def("__repr__", [name = name_, names = names_](py::object const& self) {
            py::list parts;
            for (auto const& field : names) {
                parts.append(py::str("{}={}").format(field, py::repr(self.attr(field.c_str()))));
            }
            return py::str("{}({})").format(name, py::str(", ").attr("join")(parts));
        });
    }

private:
    static std::optional<char> one_byte_from_python(py::object const& value) {
        if (value.is_none()) {
            return std::nullopt;
        }
        std::string const bytes = text_from_python(value);
        if (bytes.size() != 1) {
            throw py::value_error("expected one character standing for one byte, or None");
        }
        return bytes.front();
    }

    std::string name_;
    py::class_<T> class_;
    std::vector<std::string> names_;
};

void bind_enumerations(py::module_& module);
void bind_lists(py::module_& module);
void bind_document_records(py::module_& module);
void bind_analysis_records(py::module_& module);
void bind_document(py::module_& module);
void bind_codec(py::module_& module);

}  // namespace morv::python
