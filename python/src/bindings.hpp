#pragma once

// What every part of the Python module shares: the builder that gives each
// record its class (keyword constructor, fields, equality, a bounded repr,
// copy and pickle) and the one that makes a list class over a vector. Both
// work on handles (see handles.hpp), so that no Python object holds a pointer
// into a record.

#include "conversions.hpp"
#include "handles.hpp"

#include <pybind11/pybind11.h>

#include <algorithm>
#include <array>
#include <cstddef>
#include <string>
#include <type_traits>
#include <utility>
#include <vector>

namespace morv::python {

// The repr of a field's value, short whatever the value: long texts and big
// tables are cut, as numpy and reprlib do.
py::str bounded_repr(py::handle value);

// "Name([a, b, c, ..., x, y, z], len=N)": at most six elements shown, and
// inside the repr of a record only "Name(len=N)".
// Marks the repr of a record as open while it lasts.
class ReprNesting {
public:
    ReprNesting();
    ~ReprNesting();
    ReprNesting(ReprNesting const&) = delete;
    ReprNesting& operator=(ReprNesting const&) = delete;
};
py::str list_repr(std::string const& name, py::handle list, std::size_t size);

template <typename T>
py::object python_value(T const& value) {
    return Convert<T>::to_python(value);
}

template <typename T>
class RecordBinding {
public:
    RecordBinding(py::module_& module, char const* name, char const* doc) : name_(name), class_(module, name, doc) {
        PythonName<T>::value = name;
    }

    template <auto Member>
    RecordBinding& field(char const* name) {
        using Field = field_of<Member>;
        names_.emplace_back(name);
        std::string where = name_ + "." + name;
        if constexpr (is_vector<Field>::value || is_record_v<Field>) {
            class_.def_property(
                name, [](Ref<T> const& self) { return self.template part<Field>(field_link<Member>()); },
                [where](Ref<T> const& self, py::handle value) {
                    Field converted = Convert<Field>::from_python(value, where);
                    self.change_part(field_link<Member>(), [&](T& record) { record.*Member = std::move(converted); });
                });
        } else if constexpr (is_optional_record<Field>::value) {
            using Record = typename Field::value_type;
            class_.def_property(
                name,
                [](Ref<T> const& self) -> py::object {
                    Link const link{&OptionalFieldStep<Member>::step, 0};
                    return self.get().*Member ? py::cast(self.template part<Record>(link)) : py::none();
                },
                [where](Ref<T> const& self, py::handle value) {
                    Field converted = Convert<Field>::from_python(value, where);
                    Link const link{&OptionalFieldStep<Member>::step, 0};
                    self.change_part(link, [&](T& record) { record.*Member = std::move(converted); });
                });
        } else if constexpr (is_variant<Field>::value) {
            class_.def_property(
                name,
                [](Ref<T> const& self) {
                    auto const variant = self.template part<Field>(field_link<Member>());
                    return alternative_of(variant, std::make_index_sequence<std::variant_size_v<Field>>());
                },
                [where](Ref<T> const& self, py::handle value) {
                    Field converted = Convert<Field>::from_python(value, where);
                    self.change_part(field_link<Member>(), [&](T& record) { record.*Member = std::move(converted); });
                });
        } else {
            class_.def_property(
                name, [](Ref<T> const& self) { return python_value(self.get().*Member); },
                [where](Ref<T> const& self, py::handle value) {
                    Field converted = Convert<Field>::from_python(value, where);
                    self.change([&](T& record) { record.*Member = std::move(converted); });
                });
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

    py::class_<Ref<T>>& type() { return class_; }

    // The keyword constructor, equality, repr, copy and pickle, over the
    // fields given. Pickling goes through the fields' own values, so whatever
    // a field holds comes back as it was.
    RecordBinding& finish() {
        class_.def(py::init([name = name_, names = names_](py::kwargs const& fields) {
                       Ref<T> record = Ref<T>::owning(T{});
                       // Another Python object on the same new record, so
                       // that each field goes through its own setter.
                       py::object const view = py::cast(record);
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
        class_.def("__eq__", [](Ref<T> const& self, py::handle other) -> py::object {
            if (!py::isinstance<Ref<T>>(other)) {
                return py::reinterpret_borrow<py::object>(Py_NotImplemented);
            }
            return py::bool_(self.get() == other.cast<Ref<T> const&>().get());
        });
        class_.attr("__hash__") = py::none();
        class_.def("__repr__", [name = name_, names = names_](py::handle self) {
            ReprNesting const nesting;
            std::string text = name + "(";
            for (auto const& field : names) {
                text += (&field == &names.front() ? "" : ", ") + field + "=" +
                        py::cast<std::string>(bounded_repr(self.attr(field.c_str())));
            }
            return text + ")";
        });
        class_.def("__copy__", [](Ref<T> const& self) { return Ref<T>::owning(self.get()); });
        class_.def(
            "__deepcopy__", [](Ref<T> const& self, py::handle) { return Ref<T>::owning(self.get()); },
            py::arg("memo"));
        if constexpr (!std::is_same_v<T, qc::Document> && !std::is_same_v<T, model::ParseResult<qc::Document>>) {
            class_.def(py::pickle(
                [names = names_](Ref<T> const& self) {
                    py::object const record = py::cast(self);
                    py::tuple state(names.size());
                    for (std::size_t index = 0; index < names.size(); ++index) {
                        state[index] = record.attr(names[index].c_str());
                    }
                    return state;
                },
                [names = names_](py::tuple const& state) {
                    if (state.size() != names.size()) {
                        throw py::value_error("the pickled state does not match this record's fields");
                    }
                    Ref<T> record = Ref<T>::owning(T{});
                    py::object const view = py::cast(record);
                    for (std::size_t index = 0; index < names.size(); ++index) {
                        py::setattr(view, names[index].c_str(), state[index]);
                    }
                    return record;
                }));
        }
        return *this;
    }

private:
    template <typename Variant, std::size_t... Alternative>
    static py::object alternative_of(Ref<Variant> const& variant, std::index_sequence<Alternative...>) {
        std::size_t const active = variant.get().index();
        py::object alternative;
        ((Alternative == active ? void(alternative = py::cast(variant.template part<std::variant_alternative_t<Alternative, Variant>>(
                                       {&AlternativeStep<Variant, Alternative>::step, 0})))
                                : void()),
         ...);
        return alternative;
    }

    std::string name_;
    py::class_<Ref<T>> class_;
    std::vector<std::string> names_;
};

// Positions are found before the change that uses them; a finaliser run by
// the garbage collector in between could have shortened the list.
template <typename List>
void erase_at(List& elements, std::size_t position) {
    if (position >= elements.size()) {
        throw py::index_error("list index out of range");
    }
    elements.erase(elements.begin() + static_cast<std::ptrdiff_t>(position));
}

// A list of records or values as a Python sequence that stays the document's
// vector: reads and changes reach the document without a copy. An element
// taken from it is a handle on that element.
template <typename Element>
py::class_<Ref<std::vector<Element>>> bind_list(py::module_& module, char const* name) {
    using List = std::vector<Element>;
    using Handle = Ref<List>;
    PythonName<List>::value = name;
    std::string const where = name;
    py::class_<Handle> list(module, name);

    auto const index_of = [](Handle const& self, std::ptrdiff_t index) {
        auto const size = static_cast<std::ptrdiff_t>(self.get().size());
        if (index < 0) {
            index += size;
        }
        if (index < 0 || index >= size) {
            throw py::index_error("list index out of range");
        }
        return static_cast<std::size_t>(index);
    };
    auto const element = [](Handle const& self, std::size_t index) -> py::object {
        if constexpr (is_record_v<Element>) {
            return py::cast(self.template part<Element>(element_link<Element>(index)));
        } else {
            return python_value(self.get().at(index));
        }
    };
    auto const detached = [](Element value) -> py::object {
        if constexpr (is_record_v<Element>) {
            return py::cast(Ref<Element>::owning(std::move(value)));
        } else {
            return python_value(value);
        }
    };
    // Where an element would be found, or nothing for a value that is not
    // even of the element's type.
    auto const find = [](Handle const& self, py::handle value) -> std::optional<std::size_t> {
        std::optional<Element> wanted;
        try {
            wanted = Convert<Element>::from_python(value, "");
        } catch (py::builtin_exception const&) {
            return std::nullopt;
        } catch (py::error_already_set const&) {
            return std::nullopt;
        }
        List const& elements = self.get();
        auto const found = std::find(elements.begin(), elements.end(), *wanted);
        if (found == elements.end()) {
            return std::nullopt;
        }
        return static_cast<std::size_t>(found - elements.begin());
    };
    auto const every = element_link<Element>(every_element);

    list.def(py::init([where](py::handle items) { return Handle::owning(Convert<List>::from_python(items, where)); }),
             py::arg("items") = py::tuple(), "A list of its own, filled from any iterable of elements.");
    list.def("__len__", [](Handle const& self) { return self.get().size(); });
    list.def("__getitem__",
             [index_of, element](Handle const& self, std::ptrdiff_t index) { return element(self, index_of(self, index)); });
    list.def("__getitem__", [element](Handle const& self, py::slice const& slice) {
        std::size_t start = 0, stop = 0, step = 0, length = 0;
        if (!slice.compute(self.get().size(), &start, &stop, &step, &length)) {
            throw py::error_already_set();
        }
        py::list elements;
        for (std::size_t taken = 0; taken < length; ++taken, start += step) {
            elements.append(element(self, start));
        }
        return elements;
    });
    list.def("__setitem__", [index_of, where](Handle const& self, std::ptrdiff_t index, py::handle value) {
        Element converted = Convert<Element>::from_python(value, where);
        std::size_t const position = index_of(self, index);
        self.change_part(element_link<Element>(position),
                         [&](List& elements) { elements.at(position) = std::move(converted); });
    });
    list.def("__setitem__", [where, every](Handle const& self, py::slice const& slice, py::handle values) {
        List converted = Convert<List>::from_python(values, where);
        self.change_part(every, [&](List& elements) {
            std::size_t start = 0, stop = 0, step = 0, length = 0;
            if (!slice.compute(elements.size(), &start, &stop, &step, &length)) {
                throw py::error_already_set();
            }
            if (step == 1) {
                auto const first = elements.begin() + static_cast<std::ptrdiff_t>(start);
                elements.erase(first, first + static_cast<std::ptrdiff_t>(length));
                elements.insert(elements.begin() + static_cast<std::ptrdiff_t>(start),
                                std::make_move_iterator(converted.begin()), std::make_move_iterator(converted.end()));
                return;
            }
            if (converted.size() != length) {
                throw py::value_error("attempt to assign a sequence of size " + std::to_string(converted.size()) +
                                      " to an extended slice of size " + std::to_string(length));
            }
            for (auto& value : converted) {
                elements[start] = std::move(value);
                start += step;
            }
        });
    });
    list.def("__delitem__", [index_of, every](Handle const& self, std::ptrdiff_t index) {
        std::size_t const position = index_of(self, index);
        self.change_part(every, [&](List& elements) { erase_at(elements, position); });
    });
    list.def("__delitem__", [every](Handle const& self, py::slice const& slice) {
        self.change_part(every, [&](List& elements) {
            std::size_t start = 0, stop = 0, step = 0, length = 0;
            if (!slice.compute(elements.size(), &start, &stop, &step, &length)) {
                throw py::error_already_set();
            }
            std::vector<bool> doomed(elements.size(), false);
            for (std::size_t taken = 0; taken < length; ++taken, start += step) {
                doomed[start] = true;
            }
            std::size_t kept = 0;
            for (std::size_t index = 0; index < elements.size(); ++index) {
                if (!doomed[index]) {
                    elements[kept++] = std::move(elements[index]);
                }
            }
            elements.resize(kept);
        });
    });
    list.def("__contains__", [find](Handle const& self, py::handle value) { return find(self, value).has_value(); });
    list.def(
        "append",
        [where](Handle const& self, py::handle value) {
            Element converted = Convert<Element>::from_python(value, where);
            self.change([&](List& elements) { elements.push_back(std::move(converted)); });
        },
        py::arg("value"), "Adds an element at the end; elements taken before stay good.");
    list.def(
        "extend",
        [where](Handle const& self, py::handle values) {
            List converted = Convert<List>::from_python(values, where);
            self.change([&](List& elements) {
                elements.insert(elements.end(), std::make_move_iterator(converted.begin()),
                                std::make_move_iterator(converted.end()));
            });
        },
        py::arg("values"), "Adds the elements of an iterable at the end; elements taken before stay good.");
    list.def(
        "insert",
        [where, every](Handle const& self, std::ptrdiff_t index, py::handle value) {
            Element converted = Convert<Element>::from_python(value, where);
            self.change_part(every, [&](List& elements) {
                auto const size = static_cast<std::ptrdiff_t>(elements.size());
                std::ptrdiff_t const position = std::clamp(index < 0 ? index + size : index, std::ptrdiff_t{0}, size);
                elements.insert(elements.begin() + position, std::move(converted));
            });
        },
        py::arg("index"), py::arg("value"));
    list.def(
        "pop",
        [index_of, detached, every](Handle const& self, std::ptrdiff_t index) {
            if (self.get().empty()) {
                throw py::index_error("pop from empty list");
            }
            std::size_t const position = index_of(self, index);
            Element value = self.change_part(every, [&](List& elements) {
                Element taken = std::move(elements.at(position));
                erase_at(elements, position);
                return taken;
            });
            return detached(std::move(value));
        },
        py::arg("index") = -1, "Removes an element and gives it back as a record of its own.");
    list.def(
        "remove",
        [find, every](Handle const& self, py::handle value) {
            auto const position = find(self, value);
            if (!position) {
                throw py::value_error("list.remove(x): x not in list");
            }
            self.change_part(every, [&](List& elements) { erase_at(elements, *position); });
        },
        py::arg("value"));
    list.def("clear", [every](Handle const& self) { self.change_part(every, [](List& elements) { elements.clear(); }); });
    list.def(
        "index",
        [find](Handle const& self, py::handle value) {
            auto const position = find(self, value);
            if (!position) {
                throw py::value_error("value is not in list");
            }
            return *position;
        },
        py::arg("value"));
    list.def(
        "count",
        [](Handle const& self, py::handle value) -> std::size_t {
            try {
                Element const wanted = Convert<Element>::from_python(value, "");
                List const& elements = self.get();
                return static_cast<std::size_t>(std::count(elements.begin(), elements.end(), wanted));
            } catch (py::builtin_exception const&) {
                return 0;
            } catch (py::error_already_set const&) {
                return 0;
            }
        },
        py::arg("value"));
    list.def("__eq__", [where](Handle const& self, py::handle other) -> py::object {
        if (py::isinstance<Handle>(other)) {
            return py::bool_(self.get() == other.cast<Handle const&>().get());
        }
        if (PyList_Check(other.ptr()) || PyTuple_Check(other.ptr())) {
            try {
                return py::bool_(self.get() == Convert<List>::from_python(other, where));
            } catch (py::builtin_exception const&) {
                return py::bool_(false);
            } catch (py::error_already_set const&) {
                return py::bool_(false);
            }
        }
        return py::reinterpret_borrow<py::object>(Py_NotImplemented);
    });
    list.attr("__hash__") = py::none();
    list.def("__repr__", [name = std::string(name)](py::handle self) {
        return list_repr(name, self, self.cast<Handle const&>().get().size());
    });
    list.def("__copy__", [](Handle const& self) { return Handle::owning(self.get()); });
    list.def(
        "__deepcopy__", [](Handle const& self, py::handle) { return Handle::owning(self.get()); }, py::arg("memo"));
    list.def(py::pickle(
        [element](Handle const& self) {
            py::list elements;
            for (std::size_t index = 0; index < self.get().size(); ++index) {
                elements.append(element(self, index));
            }
            return elements;
        },
        [where](py::list const& elements) { return Handle::owning(Convert<List>::from_python(elements, where)); }));
    return list;
}

void bind_enumerations(py::module_& module);
void bind_lists(py::module_& module);
void bind_document_records(py::module_& module);
void bind_analysis_records(py::module_& module);
void bind_document(py::module_& module);
void bind_codec(py::module_& module);

}  // namespace morv::python
