#include "sections/frames.hpp"

#include "core/field_readers.hpp"
#include "core/sequences.hpp"
#include "core/source_spans.hpp"

namespace morv::qc::json {

std::optional<chem::GeometryFrame> read_frame(DocumentResult& result, Node const& node) {
    auto const id = read_entity_id_field<chem::FrameIdTag>(result, node, "id", Presence::required);
    auto const system_id = read_entity_id_field<chem::SystemIdTag>(result, node, "system_id", Presence::required);
    if (!id || !system_id) {
        return std::nullopt;
    }
    chem::GeometryFrame frame;
    frame.id = *id;
    frame.system_id = *system_id;
    read_elements(result, node["positions_angstrom"], frame.positions_angstrom, read_vec3);
    frame.source = read_source_key(result, node);
    return frame;
}

JsonValue write_frame(chem::GeometryFrame const& frame) {
    JsonValue object = make_json_object();
    object["id"] = frame.id.value;
    object["system_id"] = frame.system_id.value;
    object["positions_angstrom"] = write_elements(frame.positions_angstrom, write_vec3);
    write_source_key(object, frame.source);
    return object;
}

}  // namespace morv::qc::json
