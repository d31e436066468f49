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

void write_source_file(JsonPrinter& printer, model::SourceFile const& file) {
    printer.begin_object();
    member_if_present(printer, "embedded_content", file.embedded_content);
    printer.member("id", file.id.value);
    printer.member("path", file.path);
    member_if_present(printer, "sha256", file.sha256);
    member_if_present(printer, "size_bytes", file.size_bytes);
    printer.end_object();
}

}  // namespace morv::qc::json
