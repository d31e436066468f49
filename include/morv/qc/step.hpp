#pragma once

#include <morv/chem/frame.hpp>
#include <morv/chem/system.hpp>
#include <morv/model/diagnostic.hpp>
#include <morv/model/equality.hpp>
#include <morv/qc/convergence.hpp>
#include <morv/qc/energy.hpp>
#include <morv/qc/ids.hpp>

#include <cstdint>
#include <optional>
#include <tuple>
#include <vector>

namespace morv::qc {

// One point of a job's progress: a geometry with what was found there.
struct CalculationStep {
    StepId id;
    JobId job_id;
    chem::SystemId system_id;
    std::uint32_t ordinal = 0;
    std::optional<std::int32_t> native_cycle;
    std::optional<chem::FrameId> frame_id;
    std::vector<EnergyRecord> energies;
    std::optional<EnergyId> primary_energy_id;
    std::optional<GradientRecord> gradient;
    std::optional<ConvergenceRecord> convergence;
    std::optional<model::SourceSpan> source;
};

inline auto fields_of(CalculationStep const& s) {
    return std::tie(s.id, s.job_id, s.system_id, s.ordinal, s.native_cycle, s.frame_id, s.energies,
                    s.primary_energy_id, s.gradient, s.convergence, s.source);
}

MORV_DEFINE_EQUALITY(CalculationStep)

}  // namespace morv::qc
