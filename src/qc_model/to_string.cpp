#include <morv/qc/model.hpp>

namespace morv::qc {

char const* to_string(model::ParseStatus value) {
    switch (value) {
        case model::ParseStatus::complete: return "complete";
        case model::ParseStatus::partial: return "partial";
        case model::ParseStatus::failed: return "failed";
    }
    return "failed";
}

char const* to_string(model::Severity value) {
    switch (value) {
        case model::Severity::note: return "note";
        case model::Severity::warning: return "warning";
        case model::Severity::error: return "error";
    }
    return "note";
}

char const* to_string(ResultProfile value) {
    switch (value) {
        case ResultProfile::unknown: return "unknown";
        case ResultProfile::summary: return "summary";
        case ResultProfile::standard: return "standard";
        case ResultProfile::full: return "full";
    }
    return "unknown";
}

char const* to_string(ProgramKind value) {
    switch (value) {
        case ProgramKind::unknown: return "unknown";
        case ProgramKind::gaussian: return "gaussian";
        case ProgramKind::orca: return "orca";
        case ProgramKind::gamess: return "gamess";
    }
    return "unknown";
}

char const* to_string(TerminationKind value) {
    switch (value) {
        case TerminationKind::unknown: return "unknown";
        case TerminationKind::running: return "running";
        case TerminationKind::normal: return "normal";
        case TerminationKind::error: return "error";
        case TerminationKind::interrupted: return "interrupted";
        case TerminationKind::truncated: return "truncated";
    }
    return "unknown";
}

char const* to_string(JobRelation value) {
    switch (value) {
        case JobRelation::none: return "none";
        case JobRelation::link: return "link";
        case JobRelation::restart: return "restart";
        case JobRelation::branch: return "branch";
        case JobRelation::image: return "image";
    }
    return "none";
}

char const* to_string(TaskKind value) {
    switch (value) {
        case TaskKind::single_point: return "single_point";
        case TaskKind::optimization: return "optimization";
        case TaskKind::frequency: return "frequency";
        case TaskKind::excited_state: return "excited_state";
        case TaskKind::irc: return "irc";
        case TaskKind::scan: return "scan";
        case TaskKind::neb: return "neb";
    }
    return "single_point";
}

char const* to_string(EnergyKind value) {
    switch (value) {
        case EnergyKind::unknown: return "unknown";
        case EnergyKind::electronic: return "electronic";
        case EnergyKind::scf: return "scf";
        case EnergyKind::correlated: return "correlated";
        case EnergyKind::excited_state_total: return "excited_state_total";
        case EnergyKind::gibbs_free: return "gibbs_free";
        case EnergyKind::enthalpy: return "enthalpy";
        case EnergyKind::zero_point: return "zero_point";
        case EnergyKind::thermal_correction: return "thermal_correction";
    }
    return "unknown";
}

char const* to_string(ConvergenceStatus value) {
    switch (value) {
        case ConvergenceStatus::unknown: return "unknown";
        case ConvergenceStatus::converged: return "converged";
        case ConvergenceStatus::not_converged: return "not_converged";
    }
    return "unknown";
}

char const* to_string(CriterionKind value) {
    switch (value) {
        case CriterionKind::max_force: return "max_force";
        case CriterionKind::rms_force: return "rms_force";
        case CriterionKind::max_displacement: return "max_displacement";
        case CriterionKind::rms_displacement: return "rms_displacement";
        case CriterionKind::energy_change: return "energy_change";
        case CriterionKind::gradient_norm: return "gradient_norm";
        case CriterionKind::constraint_violation: return "constraint_violation";
    }
    return "gradient_norm";
}

char const* to_string(SpinChannel value) {
    switch (value) {
        case SpinChannel::none: return "none";
        case SpinChannel::alpha: return "alpha";
        case SpinChannel::beta: return "beta";
    }
    return "none";
}

}  // namespace morv::qc
