#include "core/document.hpp"

#include "analyses/analysis_block.hpp"
#include "core/field_readers.hpp"
#include "core/sequences.hpp"
#include "core/source_spans.hpp"
#include "sections/extensions.hpp"
#include "sections/frames.hpp"
#include "sections/jobs.hpp"
#include "sections/metadata.hpp"
#include "sections/program.hpp"
#include "sections/sources.hpp"
#include "sections/steps.hpp"
#include "sections/systems.hpp"

#include <morv/qc/json/codec.hpp>
#include <morv/qc/model.hpp>

#include <algorithm>
#include <array>
#include <string>
#include <string_view>

namespace morv::qc::json {
namespace {

constexpr std::array<std::string_view, 12> known_root_keys = {
    "schema", "parse_status", "normalization", "program", "sources", "systems",
    "frames", "jobs",         "steps",         "analyses", "metadata", "diagnostics",
};

bool is_known_root_key(std::string const& key) {
    return std::find(known_root_keys.begin(), known_root_keys.end(), key) != known_root_keys.end();
}

bool read_schema(DocumentResult& result, Node const& root) {
    std::string const schema = read_string_field(result, root, "schema", true).value_or("");
    if (schema == schema_id) {
        return true;
    }
    add_diagnostic(result, "qc.json.unsupported_schema",
                   "Unsupported QC document schema: " + (schema.empty() ? std::string("<missing>") : schema));
    return false;
}

model::ParseStatus read_parse_status(DocumentResult& result, Node const& root) {
    std::string const text = read_string_field(result, root, "parse_status", false).value_or("complete");
    if (text == "complete") {
        return model::ParseStatus::complete;
    }
    if (text == "partial") {
        return model::ParseStatus::partial;
    }
    return model::ParseStatus::failed;
}

void read_extensions(DocumentResult& result, Node const& root) {
    for (auto const& member : root.members()) {
        std::string key = member.key.as<std::string>();
        if (is_known_root_key(key) || result.value.extensions.count(key) != 0) {
            continue;
        }
        result.value.extensions.emplace(std::move(key), read_extension_value(member.value));
    }
}

// Errors lower a status but never raise one: a text that says "partial"
// stays partial, and a document with nothing in its four main lists fails.
model::ParseStatus final_status(DocumentResult const& result) {
    bool const error_seen = std::any_of(result.diagnostics.begin(), result.diagnostics.end(),
                                        [](model::Diagnostic const& d) { return d.severity == model::Severity::error; });
    if (!error_seen) {
        return result.status;
    }
    Document const& document = result.value;
    if (document.systems.empty() && document.jobs.empty() && document.steps.empty() && document.analyses.empty()) {
        return model::ParseStatus::failed;
    }
    return result.status == model::ParseStatus::complete ? model::ParseStatus::partial : result.status;
}

}  // namespace

JsonValue write_document(Document const& document, model::ParseStatus status,
                         std::vector<model::Diagnostic> const& diagnostics) {
    JsonValue root = make_json_object();
    // Extensions go in first so that a fixed key of the same name replaces them.
    for (auto const& [key, value] : document.extensions) {
        root[key] = extension_to_json(value);
    }
    root["schema"] = schema_id;
    root["parse_status"] = to_string(status);
    root["normalization"] = write_normalization(document.normalization);
    root["program"] = write_program(document.program);
    root["sources"] = write_elements(document.sources, write_source_file);
    root["systems"] = write_elements(document.systems, write_system);
    root["frames"] = write_elements(document.frames, write_frame);
    root["jobs"] = write_elements(document.jobs, write_job);
    root["steps"] = write_elements(document.steps, write_step);
    root["analyses"] = write_elements(document.analyses, write_analysis_block);
    root["metadata"] = write_metadata(document.metadata);
    root["diagnostics"] = write_diagnostics(diagnostics);
    return root;
}

DocumentResult read_document(Node const& root) {
    DocumentResult result;
    if (!root.is_map()) {
        add_diagnostic(result, "qc.json.invalid_root", "The QC JSON root must be an object.");
        return result;
    }
    if (!read_schema(result, root)) {
        return result;
    }
    result.status = read_parse_status(result, root);

    if (Node const normalization = root["normalization"]; normalization.is_map()) {
        read_normalization(result, normalization);
    }
    if (Node const program = root["program"]; program.is_map()) {
        read_program(result, program);
    } else {
        add_diagnostic(result, "qc.json.missing_program", "QC document does not contain a program object.");
    }
    Document& document = result.value;
    read_elements(result, root["sources"], document.sources, read_source_file);
    read_elements(result, root["systems"], document.systems, read_system);
    read_elements(result, root["frames"], document.frames, read_frame);
    read_elements(result, root["jobs"], document.jobs, read_job);
    read_elements(result, root["steps"], document.steps, read_step);
    read_elements(result, root["analyses"], document.analyses, read_analysis_block);
    if (Node const metadata = root["metadata"]; metadata.is_map()) {
        read_metadata(result, metadata);
    }
    read_extensions(result, root);
    read_diagnostics(result, root["diagnostics"]);

    for (auto& finding : validate_document(result.value)) {
        result.diagnostics.push_back(std::move(finding));
    }
    result.status = final_status(result);
    return result;
}

}  // namespace morv::qc::json
