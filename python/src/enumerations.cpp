#include "bindings.hpp"

namespace morv::python {

void bind_enumerations(py::module_& module) {
    py::enum_<model::ParseStatus>(module, "ParseStatus", "How far a decode got.")
        .value("complete", model::ParseStatus::complete)
        .value("partial", model::ParseStatus::partial)
        .value("failed", model::ParseStatus::failed);
    py::enum_<model::Severity>(module, "Severity")
        .value("note", model::Severity::note)
        .value("warning", model::Severity::warning)
        .value("error", model::Severity::error);
    py::enum_<qc::ProgramKind>(module, "ProgramKind")
        .value("unknown", qc::ProgramKind::unknown)
        .value("gaussian", qc::ProgramKind::gaussian)
        .value("orca", qc::ProgramKind::orca)
        .value("gamess", qc::ProgramKind::gamess);
    py::enum_<qc::ResultProfile>(module, "ResultProfile")
        .value("unknown", qc::ResultProfile::unknown)
        .value("summary", qc::ResultProfile::summary)
        .value("standard", qc::ResultProfile::standard)
        .value("full", qc::ResultProfile::full);
    py::enum_<qc::TerminationKind>(module, "TerminationKind")
        .value("unknown", qc::TerminationKind::unknown)
        .value("running", qc::TerminationKind::running)
        .value("normal", qc::TerminationKind::normal)
        .value("error", qc::TerminationKind::error)
        .value("interrupted", qc::TerminationKind::interrupted)
        .value("truncated", qc::TerminationKind::truncated);
    py::enum_<qc::TaskKind>(module, "TaskKind")
        .value("single_point", qc::TaskKind::single_point)
        .value("optimization", qc::TaskKind::optimization)
        .value("frequency", qc::TaskKind::frequency)
        .value("excited_state", qc::TaskKind::excited_state)
        .value("irc", qc::TaskKind::irc)
        .value("scan", qc::TaskKind::scan)
        .value("neb", qc::TaskKind::neb);
    py::enum_<qc::JobRelation>(module, "JobRelation")
        .value("none", qc::JobRelation::none)
        .value("link", qc::JobRelation::link)
        .value("restart", qc::JobRelation::restart)
        .value("branch", qc::JobRelation::branch)
        .value("image", qc::JobRelation::image);
    py::enum_<qc::EnergyKind>(module, "EnergyKind")
        .value("unknown", qc::EnergyKind::unknown)
        .value("electronic", qc::EnergyKind::electronic)
        .value("scf", qc::EnergyKind::scf)
        .value("correlated", qc::EnergyKind::correlated)
        .value("excited_state_total", qc::EnergyKind::excited_state_total)
        .value("gibbs_free", qc::EnergyKind::gibbs_free)
        .value("enthalpy", qc::EnergyKind::enthalpy)
        .value("zero_point", qc::EnergyKind::zero_point)
        .value("thermal_correction", qc::EnergyKind::thermal_correction);
    py::enum_<qc::ConvergenceStatus>(module, "ConvergenceStatus")
        .value("unknown", qc::ConvergenceStatus::unknown)
        .value("converged", qc::ConvergenceStatus::converged)
        .value("not_converged", qc::ConvergenceStatus::not_converged);
    py::enum_<qc::CriterionKind>(module, "CriterionKind")
        .value("max_force", qc::CriterionKind::max_force)
        .value("rms_force", qc::CriterionKind::rms_force)
        .value("max_displacement", qc::CriterionKind::max_displacement)
        .value("rms_displacement", qc::CriterionKind::rms_displacement)
        .value("energy_change", qc::CriterionKind::energy_change)
        .value("gradient_norm", qc::CriterionKind::gradient_norm)
        .value("constraint_violation", qc::CriterionKind::constraint_violation);
    py::enum_<qc::SpinChannel>(module, "SpinChannel")
        .value("none", qc::SpinChannel::none)
        .value("alpha", qc::SpinChannel::alpha)
        .value("beta", qc::SpinChannel::beta);
}

}  // namespace morv::python
