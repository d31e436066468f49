#pragma once

// Values between Python and the model. Every conversion from Python is whole
// before anything in a document changes, so that a refused value leaves the
// document as it was, and the messages name the field and the type expected,
// never the value itself (which may be a document of megabytes).

#include "handles.hpp"

#include <morv/qc/document.hpp>

#include <pybind11/numpy.h>

#include <cstdint>
#include <limits>
#include <optional>
#include <string>
#include <string_view>
#include <type_traits>
#include <variant>
#include <vector>

namespace morv::python {

// Strings hold whatever bytes the text held. Bytes that are not UTF-8 come
// through as Python spells undecodable file names (surrogateescape), and go
// back as the same bytes.
py::str text_to_python(std::string_view bytes);
std::string text_from_python(py::handle value, std::string const& where);

[[noreturn]] void throw_type_error(std::string const& where, std::string const& expected, py::handle value);
[[noreturn]] void throw_overflow(std::string const& where, std::string const& expected);

bool is_numpy_bool(py::handle value);
// A Python int or float or a NumPy number, but not a bool.
bool is_number(py::handle value);
double float_from_python(py::handle value, std::string const& where);
bool bool_from_python(py::handle value, std::string const& where);
// Any int, NumPy's included, from `min` to `max`.
long long integer_from_python(py::handle value, std::string const& where, long long min, long long max);
unsigned long long unsigned_from_python(py::handle value, std::string const& where, unsigned long long max);

template <typename T>
struct is_optional : std::false_type {};
template <typename T>
struct is_optional<std::optional<T>> : std::true_type {};
template <typename T>
struct is_vector : std::false_type {};
template <typename T>
struct is_vector<std::vector<T>> : std::true_type {};
template <typename T>
struct is_variant : std::false_type {};
template <typename... T>
struct is_variant<std::variant<T...>> : std::true_type {};
template <typename T>
struct is_entity_id : std::false_type {};
template <typename Tag>
struct is_entity_id<model::EntityId<Tag>> : std::true_type {};

// A record is a struct of the model, bound as a class of its own.
template <typename T>
constexpr bool is_record_v = std::is_class_v<T> && !std::is_same_v<T, std::string> && !is_optional<T>::value &&
                             !is_vector<T>::value && !is_variant<T>::value && !is_entity_id<T>::value;

template <typename T>
struct is_optional_record : std::false_type {};
template <typename T>
struct is_optional_record<std::optional<T>> : std::bool_constant<is_record_v<T>> {};

// What a value is called to a Python user, for messages: the bound class's
// name, filled in when the class is bound.
template <typename T>
struct PythonName {
    static inline std::string value;
};

// The enumerations are Python enum.IntEnum classes, made from the model's
// wire words when the module loads; the members are kept for the way back.
template <typename Enumeration>
struct EnumClass {
    static inline PyObject* type = nullptr;
    static inline std::vector<PyObject*> members;
};

template <typename T, typename = void>
struct Convert {
    static_assert(is_record_v<T>);

    static std::string expected() { return PythonName<T>::value; }

    static T from_python(py::handle value, std::string const& where) {
        if (py::isinstance<Ref<T>>(value)) {
            return value.cast<Ref<T> const&>().get();
        }
        throw_type_error(where, expected(), value);
    }
};

template <>
struct Convert<double> {
    static std::string expected() { return "float"; }
    static double from_python(py::handle value, std::string const& where) { return float_from_python(value, where); }
    static py::object to_python(double value) { return py::float_(value); }
};

template <>
struct Convert<bool> {
    static std::string expected() { return "bool"; }
    static bool from_python(py::handle value, std::string const& where) { return bool_from_python(value, where); }
    static py::object to_python(bool value) { return py::bool_(value); }
};

template <typename Integer>
struct Convert<Integer, std::enable_if_t<std::is_integral_v<Integer> && !std::is_same_v<Integer, bool> &&
                                         !std::is_same_v<Integer, char>>> {
    static std::string expected() { return "int"; }

    static Integer from_python(py::handle value, std::string const& where) {
        if constexpr (std::is_unsigned_v<Integer>) {
            return static_cast<Integer>(unsigned_from_python(value, where, std::numeric_limits<Integer>::max()));
        } else {
            return static_cast<Integer>(integer_from_python(value, where, std::numeric_limits<Integer>::min(),
                                                            std::numeric_limits<Integer>::max()));
        }
    }

    static py::object to_python(Integer value) { return py::int_(value); }
};

template <typename Tag>
struct Convert<model::EntityId<Tag>> {
    static std::string expected() { return "int"; }

    static model::EntityId<Tag> from_python(py::handle value, std::string const& where) {
        return model::EntityId<Tag>(Convert<std::uint32_t>::from_python(value, where));
    }

    static py::object to_python(model::EntityId<Tag> id) { return py::int_(id.value); }
};

template <>
struct Convert<std::string> {
    static std::string expected() { return "str"; }
    static std::string from_python(py::handle value, std::string const& where) {
        return text_from_python(value, where);
    }
    static py::object to_python(std::string const& value) { return text_to_python(value); }
};

// One byte, such as a spin letter: a str of one character that stands for
// one byte.
template <>
struct Convert<char> {
    static std::string expected() { return "str of one byte"; }

    static char from_python(py::handle value, std::string const& where) {
        std::string const bytes = text_from_python(value, where);
        if (bytes.size() != 1) {
            throw py::value_error(where + ": expected one character standing for one byte");
        }
        return bytes.front();
    }

    static py::object to_python(char value) { return text_to_python(std::string_view(&value, 1)); }
};

template <typename Enumeration>
struct Convert<Enumeration, std::enable_if_t<std::is_enum_v<Enumeration>>> {
    static std::string expected() { return reinterpret_cast<PyTypeObject*>(EnumClass<Enumeration>::type)->tp_name; }

    static Enumeration from_python(py::handle value, std::string const& where) {
        if (PyObject_IsInstance(value.ptr(), EnumClass<Enumeration>::type) != 1) {
            PyErr_Clear();
            throw_type_error(where, expected(), value);
        }
        return static_cast<Enumeration>(PyLong_AsUnsignedLong(value.ptr()));
    }

    static py::object to_python(Enumeration value) {
        auto const& members = EnumClass<Enumeration>::members;
        return py::reinterpret_borrow<py::object>(members.at(static_cast<std::size_t>(value)));
    }
};

template <typename T>
struct Convert<std::optional<T>> {
    static std::string expected() { return Convert<T>::expected() + " or None"; }

    static std::optional<T> from_python(py::handle value, std::string const& where) {
        if (value.is_none()) {
            return std::nullopt;
        }
        try {
            return Convert<T>::from_python(value, where);
        } catch (py::type_error const&) {
            throw_type_error(where, expected(), value);
        }
    }

    static py::object to_python(std::optional<T> const& value) {
        return value ? Convert<T>::to_python(*value) : py::none();
    }
};

template <typename... Alternatives>
struct Convert<std::variant<Alternatives...>> {
    using Variant = std::variant<Alternatives...>;

    static std::string expected() {
        std::string names;
        ((names += (names.empty() ? "" : ", ") + PythonName<Alternatives>::value), ...);
        return "one of " + names;
    }

    static Variant from_python(py::handle value, std::string const& where) {
        std::optional<Variant> converted;
        ((!converted && py::isinstance<Ref<Alternatives>>(value)
              ? void(converted = Variant(value.cast<Ref<Alternatives> const&>().get()))
              : void()),
         ...);
        if (!converted) {
            throw_type_error(where, expected(), value);
        }
        return std::move(*converted);
    }
};

std::vector<chem::Vec3> vectors_from_numpy(py::handle array, std::string const& where);

template <>
struct Convert<chem::Vec3> {
    static std::string expected() { return "Vec3 or three floats"; }

    // A sequence of three numbers stands for a vector, so that a list of
    // tuples or the rows of an array fill a list of vectors.
    static chem::Vec3 from_python(py::handle value, std::string const& where) {
        if (py::isinstance<Ref<chem::Vec3>>(value)) {
            return value.cast<Ref<chem::Vec3> const&>().get();
        }
        if (PySequence_Check(value.ptr()) && !PyUnicode_Check(value.ptr()) && !PyBytes_Check(value.ptr())) {
            auto const items = py::reinterpret_borrow<py::sequence>(value);
            if (py::len(items) == 3) {
                return {float_from_python(items[0], where), float_from_python(items[1], where),
                        float_from_python(items[2], where)};
            }
        }
        throw_type_error(where, expected(), value);
    }
};

template <typename Element>
struct Convert<std::vector<Element>> {
    using List = std::vector<Element>;

    static std::string expected() { return "an iterable of " + Convert<Element>::expected(); }

    // Any iterable but a text or a mapping, whose items would be characters
    // or keys.
    static List from_python(py::handle value, std::string const& where) {
        if (py::isinstance<Ref<List>>(value)) {
            return value.cast<Ref<List> const&>().get();
        }
        if constexpr (std::is_same_v<Element, chem::Vec3>) {
            if (py::isinstance<py::array>(value)) {
                return vectors_from_numpy(value, where);
            }
        }
        if (PyUnicode_Check(value.ptr()) || PyBytes_Check(value.ptr()) || PyDict_Check(value.ptr()) ||
            !py::isinstance<py::iterable>(value)) {
            throw_type_error(where, expected(), value);
        }
        List elements;
        if (PySequence_Check(value.ptr())) {
            Py_ssize_t const size = PySequence_Size(value.ptr());
            if (size > 0) {
                elements.reserve(static_cast<std::size_t>(size));
            }
            PyErr_Clear();
        }
        for (py::handle item : py::reinterpret_borrow<py::iterable>(value)) {
            elements.push_back(Convert<Element>::from_python(item, where));
        }
        return elements;
    }
};

}  // namespace morv::python
