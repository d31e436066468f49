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

constexpr char const schema_key[] = "schema";
constexpr char const parse_status_key[] = "parse_status";

// What the writer puts under the keys of the root.
struct Written {
    JsonPrinter& printer;
    Document const& document;
    model::ParseStatus status;
    std::vector<model::Diagnostic> const& diagnostics;
};

using RootReader = void (*)(DocumentResult& result, Node const& value);

template <void (*read)(DocumentResult&, Node const&)>
void read_if_map(DocumentResult& result, Node const& value) {
    if (value.is_map()) {
        read(result, value);
    }
}

template <typename Record, std::vector<Record> Document::*list,
          std::optional<Record> (*read)(DocumentResult&, Node const&)>
void read_list(DocumentResult& result, Node const& value) {
    read_elements(result, value, result.value.*list, read);
}

void read_program_key(DocumentResult& result, Node const& value) {
    if (value.is_map()) {
        read_program(result, value);
    } else {
        add_error(result, "qc.json.missing_program", "QC document does not contain a program object.");
    }
}

// Every key of the root that the format fixes, in the order in which they
// are read and written. Schema, status and stored diagnostics have no
// reader here: the first two decide whether and how the rest is read, and
// the stored diagnostics are read after the extensions.
struct RootKey {
    std::string_view key;
    void (*write)(Written const& written);
    RootReader read;
};

constexpr std::array<RootKey, 12> root_keys = {{
    {schema_key, [](Written const& w) { w.printer.value(schema_id); }, nullptr},
    {parse_status_key, [](Written const& w) { w.printer.value(to_string(w.status)); }, nullptr},
    {"normalization", [](Written const& w) { write_normalization(w.printer, w.document.normalization); },
     read_if_map<read_normalization>},
    {"program", [](Written const& w) { write_program(w.printer, w.document.program); }, read_program_key},
    {"sources", [](Written const& w) { write_elements(w.printer, w.document.sources, write_source_file); },
     read_list<model::SourceFile, &Document::sources, read_source_file>},
    {"systems", [](Written const& w) { write_elements(w.printer, w.document.systems, write_system); },
     read_list<chem::ChemicalSystem, &Document::systems, read_system>},
    {"frames", [](Written const& w) { write_elements(w.printer, w.document.frames, write_frame); },
     read_list<chem::GeometryFrame, &Document::frames, read_frame>},
    {"jobs", [](Written const& w) { write_elements(w.printer, w.document.jobs, write_job); },
     read_list<CalculationJob, &Document::jobs, read_job>},
    {"steps", [](Written const& w) { write_elements(w.printer, w.document.steps, write_step); },
     read_list<CalculationStep, &Document::steps, read_step>},
    {"analyses", [](Written const& w) { write_elements(w.printer, w.document.analyses, write_analysis_block); },
     read_list<AnalysisBlock, &Document::analyses, read_analysis_block>},
    {"metadata", [](Written const& w) { write_metadata(w.printer, w.document.metadata); },
     read_if_map<read_metadata>},
    {diagnostics_key, [](Written const& w) { write_diagnostics(w.printer, w.diagnostics); }, nullptr},
}};
// The fixed keys hold each member of the document but its extensions, and
// the schema, the status and the diagnostics of the decode besides.
static_assert(root_keys.size() == model::detail::member_count<Document>() - 1 + 3,
              "every member of the document needs its root key");
constexpr auto root_key_order = byte_order(root_keys);

bool is_known_root_key(std::string_view key) {
    return std::any_of(root_keys.begin(), root_keys.end(), [&](RootKey const& entry) { return entry.key == key; });
}

bool read_schema(DocumentResult& result, Node const& root) {
    std::string const schema = read_string_field(result, root, schema_key, Presence::required).value_or("");
    if (schema == schema_id) {
        return true;
    }
    add_error(result, "qc.json.unsupported_schema",
                   "Unsupported QC document schema: " + (schema.empty() ? std::string("<missing>") : schema));
    return false;
}

model::ParseStatus read_parse_status(DocumentResult& result, Node const& root) {
    // A document that does not say how far its producer got is complete.
    return enumerator_or_otherwise<model::ParseStatus>(
        read_string_field(result, root, parse_status_key, Presence::optional).value_or("complete"));
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

std::string write_document(Document const& document, model::ParseStatus status,
                           std::vector<model::Diagnostic> const& diagnostics, SerializeOptions const& options) {
    static std::vector<model::Diagnostic> const none;
    JsonPrinter printer(options);
    Written const written{printer, document, status, options.include_diagnostics ? diagnostics : none};
    // A fixed key takes the place of an extension of the same name.
    ExtensionMembers extensions(document.extensions);
    printer.begin_object(extensions);
    for (std::size_t const index : root_key_order) {
        printer.key(root_keys[index].key);
        root_keys[index].write(written);
    }
    printer.end_object();
    return printer.finish();
}

DocumentResult read_document(Node const& root) {
    DocumentResult result;
    if (!root.is_map()) {
        add_error(result, "qc.json.invalid_root", "The QC JSON root must be an object.");
        return result;
    }
    if (!read_schema(result, root)) {
        return result;
    }
    result.status = read_parse_status(result, root);

    for (auto const& entry : root_keys) {
        if (entry.read) {
            // Only the extensions are read after, and they are other keys.
            Node const value = root[entry.key];
            entry.read(result, value);
            value.release();
        }
    }
    read_extensions(result, root);
    read_diagnostics(result, root[diagnostics_key]);

    for (auto& finding : validate_document(result.value)) {
        result.diagnostics.push_back(std::move(finding));
    }
    result.status = final_status(result);
    return result;
}

}  // namespace morv::qc::json
