#pragma once

#include <morv/model/diagnostic.hpp>
#include <morv/model/equality.hpp>
#include <morv/qc/ids.hpp>

#include <cstdint>
#include <optional>
#include <string>
#include <tuple>

namespace morv::qc {

enum class EnergyKind : std::uint32_t {
    unknown = 0,
    electronic = 1,
    scf = 2,
    correlated = 3,
    excited_state_total = 4,
    gibbs_free = 5,
    enthalpy = 6,
    zero_point = 7,
    thermal_correction = 8,
};

// One labelled energy. Energies are held in hartree everywhere in the model.
struct EnergyRecord {
    EnergyId id;
    EnergyKind kind = EnergyKind::unknown;
    std::string label;
    std::string method;
    double value = 0.0;
    std::optional<model::SourceSpan> source;
};

inline auto fields_of(EnergyRecord const& e) {
    return std::tie(e.id, e.kind, e.label, e.method, e.value, e.source);
}

MORV_DEFINE_EQUALITY(EnergyRecord)

}  // namespace morv::qc
