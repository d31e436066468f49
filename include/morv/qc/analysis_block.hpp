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

#include <array>
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

// The `type` word of each alternative, in the order of the payload.
inline constexpr std::array analysis_type_words{"vibrational", "excited_states", "orbital_set", "thermochemistry",
                                                "dipoles",     "atomic_charges", "scalar_properties"};
static_assert(analysis_type_words.size() == std::variant_size_v<AnalysisPayload>,
              "every alternative of the payload needs its type word");

// The `type` word that a payload is written with.
constexpr char const* analysis_type(AnalysisPayload const& payload) { return analysis_type_words[payload.index()]; }

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
