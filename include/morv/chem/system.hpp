#pragma once

#include <morv/model/diagnostic.hpp>
#include <morv/model/entity_id.hpp>
#include <morv/model/equality.hpp>

#include <cstdint>
#include <optional>
#include <string>
#include <tuple>
#include <vector>

namespace morv::chem {

struct SystemIdTag {};
struct AtomIdTag {};
using SystemId = model::EntityId<SystemIdTag>;
using AtomId = model::EntityId<AtomIdTag>;

struct AtomSite {
    AtomId id;
    std::string symbol;
    std::string raw_label;
    std::optional<std::uint16_t> atomic_number;
    std::optional<std::uint16_t> isotope;
    std::optional<std::int32_t> formal_charge;
};

struct Topology {
    std::vector<AtomSite> atoms;
};

struct ElectronicState {
    std::int32_t charge = 0;
    std::uint32_t multiplicity = 0;
};

// A labelled list of atoms. Coordinates live in geometry frames.
struct ChemicalSystem {
    SystemId id;
    std::string label;
    Topology topology;
    std::optional<ElectronicState> electronic_state;
    std::optional<model::SourceSpan> source;
};

inline auto fields_of(AtomSite const& a) {
    return std::tie(a.id, a.symbol, a.raw_label, a.atomic_number, a.isotope, a.formal_charge);
}
inline auto fields_of(Topology const& t) { return std::tie(t.atoms); }
inline auto fields_of(ElectronicState const& e) { return std::tie(e.charge, e.multiplicity); }
inline auto fields_of(ChemicalSystem const& s) {
    return std::tie(s.id, s.label, s.topology, s.electronic_state, s.source);
}

MORV_DEFINE_EQUALITY(AtomSite)
MORV_DEFINE_EQUALITY(Topology)
MORV_DEFINE_EQUALITY(ElectronicState)
MORV_DEFINE_EQUALITY(ChemicalSystem)

}  // namespace morv::chem
