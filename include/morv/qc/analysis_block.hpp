#pragma once

#include <morv/model/diagnostic.hpp>
#include <morv/model/equality.hpp>
#include <morv/qc/atomic_charges.hpp>
#include <morv/qc/dipoles.hpp>
#include <morv/qc/excited_states.hpp>
#include <morv/qc/ids.hpp>
#include <morv/qc/orbitals.hpp>
#include <morv/qc/scalar_properties.hpp>
#include <morv/qc/thermochemistry.hpp>
#include <morv/qc/vibrations.hpp>

#include <cstdint>
#include <optional>
#include <tuple>
#include <variant>

namespace morv::qc {

// The alternatives keep this order: it is the order of the `type` table of
// the format, and a default payload is the first one.
using AnalysisPayload = std::variant<VibrationalBlock,
                                     ExcitedStateBlock,
                                     OrbitalSetBlock,
                                     ThermochemistryBlock,
                                     DipoleBlock,
                                     AtomicChargeBlock,
                                     ScalarPropertyBlock>;

struct AnalysisBlock {
    AnalysisId id;
    JobId job_id;
    std::uint32_t ordinal = 0;
    std::optional<StepId> reference_step_id;
    AnalysisPayload payload;
    std::optional<model::SourceSpan> source;
};

inline auto fields_of(AnalysisBlock const& b) {
    return std::tie(b.id, b.job_id, b.ordinal, b.reference_step_id, b.payload, b.source);
}

MORV_DEFINE_EQUALITY(AnalysisBlock)

}  // namespace morv::qc
