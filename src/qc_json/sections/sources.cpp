#include "sections/sources.hpp"

#include "core/field_readers.hpp"
#include "core/optional_keys.hpp"

namespace morv::qc::json {

std::optional<model::SourceFile> read_source_file(DocumentResult& result, Node const& node) {
    auto const id = read_id_field(result, node, "id", Presence::required);
    if (!id) {
        return std::nullopt;
    }
    model::SourceFile file;
    file.id = model::SourceId(*id);
    file.path = read_string_field(result, node, "path", Presence::optional).value_or("");
    file.sha256 = read_string_field(result, node, "sha256", Presence::optional);
    file.size_bytes = read_uint64_field(result, node, "size_bytes", Presence::optional);
    file.embedded_content = read_string_field(result, node, "embedded_content", Presence::optional);
    return file;
}

JsonValue write_source_file(model::SourceFile const& file) {
    JsonValue object = make_json_object();
    object["id"] = file.id.value;
    object["path"] = file.path;
    set_if_present(object, "sha256", file.sha256);
    set_if_present(object, "size_bytes", file.size_bytes);
    set_if_present(object, "embedded_content", file.embedded_content);
    return object;
}

}  // namespace morv::qc::json
