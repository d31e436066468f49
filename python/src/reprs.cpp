#include "bindings.hpp"

namespace morv::python {
namespace {

// How many elements a list's repr shows at each end once it is long.
constexpr std::size_t shown_at_each_end = 3;

// reprlib's limits for the values that are plain Python objects: texts cut
// in the middle, dicts and lists (metadata, extensions) after a few items.
py::handle short_repr() {
    static PyObject* const repr = [] {
        py::object made = py::module_::import("reprlib").attr("Repr")();
        made.attr("maxstring") = 80;
        made.attr("maxother") = 80;
        made.attr("maxlevel") = 3;
        made.attr("maxdict") = 6;
        made.attr("maxlist") = 6;
        return made.release().ptr();
    }();
    return repr;
}

// How many reprs of records are open on this thread: a list inside a
// record's repr shows only its length, so that a document's repr stays a few
// lines whatever its size.
thread_local int open_reprs = 0;

}  // namespace

ReprNesting::ReprNesting() { ++open_reprs; }

ReprNesting::~ReprNesting() { --open_reprs; }

py::str bounded_repr(py::handle value) {
    if (PyUnicode_Check(value.ptr()) || PyDict_Check(value.ptr()) || PyList_Check(value.ptr())) {
        return short_repr().attr("repr")(value);
    }
    return py::repr(value);
}

py::str list_repr(std::string const& name, py::handle list, std::size_t size) {
    auto const element = [&list](std::size_t index) {
        return py::cast<std::string>(bounded_repr(list.attr("__getitem__")(index)));
    };
    if (open_reprs > 0) {
        return name + "(len=" + std::to_string(size) + ")";
    }
    ReprNesting const nesting;
    std::string text = name + "([";
    if (size <= 2 * shown_at_each_end) {
        for (std::size_t index = 0; index < size; ++index) {
            text += (index == 0 ? "" : ", ") + element(index);
        }
        return text + "])";
    }
    for (std::size_t index = 0; index < shown_at_each_end; ++index) {
        text += element(index) + ", ";
    }
    text += "...";
    for (std::size_t index = size - shown_at_each_end; index < size; ++index) {
        text += ", " + element(index);
    }
    return text + "], len=" + std::to_string(size) + ")";
}

}  // namespace morv::python
