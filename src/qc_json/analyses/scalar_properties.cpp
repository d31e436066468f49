#include "analyses/scalar_properties.hpp"

#include "core/field_readers.hpp"
#include "core/optional_keys.hpp"
#include "core/sequences.hpp"
#include "core/source_spans.hpp"

namespace morv::qc::json {
namespace {

void write_scalar_property(JsonPrinter& printer, ScalarProperty const& property) {
    printer.begin_object();
    printer.member("key", property.key);
    member_unless_empty(printer, "label", property.label);
    write_source_key(printer, property.source);
    member_unless_empty(printer, "unit", property.unit);
    printer.member("value", property.value);
    printer.end_object();
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

void write_scalar_property_block(JsonPrinter& printer, ScalarPropertyBlock const& block) {
    printer.key("properties");
    write_elements(printer, block.properties, write_scalar_property);
}

}  // namespace morv::qc::json
