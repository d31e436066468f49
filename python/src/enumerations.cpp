#include "bindings.hpp"

#include <morv/qc/wire_words.hpp>

namespace morv::python {
namespace {

// A class of the module made from the enumerators and their wire words,
// which are also the members' names.
template <typename Enumeration>
void bind_enumeration(py::module_& module, py::handle base, char const* name, char const* doc) {
    auto const& words = qc::WireWords<Enumeration>::words;
    std::size_t const count = words.size();
    py::list members;
    for (std::size_t value = 0; value < count; ++value) {
        members.append(py::make_tuple(words[value], value));
    }
    py::object type = base(name, members, py::arg("module") = "morv_qc_json", py::arg("qualname") = name);
    type.attr("__doc__") = doc;
    // Kept for the life of the process, as the module itself is.
    EnumClass<Enumeration>::type = type.inc_ref().ptr();
    for (std::size_t value = 0; value < count; ++value) {
        EnumClass<Enumeration>::members.push_back(type(value).release().ptr());
    }
    module.attr(name) = type;
}

}  // namespace

void bind_enumerations(py::module_& module) {
    py::object const base = py::module_::import("morv_qc_json._enumerations").attr("WireEnum");
    bind_enumeration<model::ParseStatus>(module, base, "ParseStatus", "How far a decode got.");
    bind_enumeration<model::Severity>(module, base, "Severity", "How much a diagnostic matters.");
    bind_enumeration<qc::ProgramKind>(module, base, "ProgramKind", "The program that made a document.");
    bind_enumeration<qc::ResultProfile>(module, base, "ResultProfile", "How much of a run the producer kept.");
    bind_enumeration<qc::TerminationKind>(module, base, "TerminationKind", "How a program or job ended.");
    bind_enumeration<qc::TaskKind>(module, base, "TaskKind", "What a job was asked to do.");
    bind_enumeration<qc::JobRelation>(module, base, "JobRelation", "How a job follows its parent.");
    bind_enumeration<qc::EnergyKind>(module, base, "EnergyKind", "What an energy record is.");
    bind_enumeration<qc::ConvergenceStatus>(module, base, "ConvergenceStatus", "Whether a step converged.");
    bind_enumeration<qc::CriterionKind>(module, base, "CriterionKind", "What a convergence test measures.");
    bind_enumeration<qc::SpinChannel>(module, base, "SpinChannel", "The spin of an orbital set.");
    module.attr("WireEnum") = base;
}

}  // namespace morv::python
