#include "analyses/scalar_properties.hpp"

#include "core/field_readers.hpp"
#include "core/optional_keys.hpp"
#include "core/sequences.hpp"
#include "core/source_spans.hpp"

namespace morv::qc::json {
namespace {

JsonValue write_scalar_property(ScalarProperty const& property) {
    JsonValue object = make_json_object();
    object["key"] = property.key;
    set_unless_empty(object, "label", property.label);
    object["value"] = property.value;
    set_unless_empty(object, "unit", property.unit);
    write_source_key(object, property.source);
    return object;
}

}  // namespace

ScalarProperty read_scalar_property(DocumentResult& result, Node const& node) {
    ScalarProperty property;
    property.key = read_string_field(result, node, "key", Presence::required).value_or("");
    property.label = read_string_field(result, node, "label", Presence::optional).value_or("");
    property.value = read_double_field(result, node, "value", Presence::required).value_or(0.0);
    property.unit = read_string_field(result, node, "unit", Presence::optional).value_or("");
    property.source = read_source_key(result, node);
    return property;
}

ScalarPropertyBlock read_scalar_property_block(DocumentResult& result, Node const& node) {
    ScalarPropertyBlock block;
    read_elements(result, node["properties"], block.properties, read_scalar_property);
    return block;
}

void write_scalar_property_block(JsonValue& object, ScalarPropertyBlock const& block) {
    object["properties"] = write_elements(block.properties, write_scalar_property);
}

}  // namespace morv::qc::json
