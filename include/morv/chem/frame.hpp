#pragma once

#include <morv/chem/system.hpp>
#include <morv/chem/vec3.hpp>
#include <morv/model/diagnostic.hpp>
#include <morv/model/entity_id.hpp>

#include <optional>
#include <tuple>
#include <vector>

namespace morv::chem {

struct FrameIdTag {};
using FrameId = model::EntityId<FrameIdTag>;

// One set of atom positions of one chemical system.
struct GeometryFrame {
    FrameId id;
    SystemId system_id;
    std::vector<Vec3> positions_angstrom;
    std::optional<model::SourceSpan> source;
};

inline auto fields_of(GeometryFrame const& f) {
    return std::tie(f.id, f.system_id, f.positions_angstrom, f.source);
}

MORV_DEFINE_EQUALITY(GeometryFrame)

}  // namespace morv::chem
