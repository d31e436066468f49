#include "sections/frames.hpp"

#include "core/field_readers.hpp"
#include "core/sequences.hpp"
#include "core/vec3_fields.hpp"
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

void write_frame(JsonPrinter& printer, chem::GeometryFrame const& frame) {
    printer.begin_object();
    printer.member("id", frame.id.value);
    printer.key("positions_angstrom");
    write_elements(printer, frame.positions_angstrom, write_vec3);
    write_source_key(printer, frame.source);
    printer.member("system_id", frame.system_id.value);
    printer.end_object();
}

}  // namespace morv::qc::json
