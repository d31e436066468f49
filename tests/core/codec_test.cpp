#include "analyses/analysis_block.hpp"
#include "core/document.hpp"
#include "core/sequences.hpp"
#include "sections/frames.hpp"
#include "sections/jobs.hpp"
#include "sections/sources.hpp"
#include "sections/steps.hpp"
#include "sections/systems.hpp"
#include "support/json_text.hpp"

namespace morv::qc::json {
namespace {

using namespace morv::testing;
using model::ParseStatus;
using model::Severity;

std::string const default_document_text =
    R"({"analyses":[],"diagnostics":[],"frames":[],"jobs":[],"metadata":{},)"
    R"("normalization":{"profile":"unknown","requested_analyses":{"dipoles":true,"excited_states":true,)"
    R"("gradients":true,"orbitals":true,"vibrations":true}},"parse_status":"complete",)"
    R"("program":{"kind":"unknown","name":"","termination":{"kind":"unknown","normal":false}},)"
    R"("schema":"morv.qc.document.v2","sources":[],"steps":[],"systems":[]})";

// `text` with the first `from` replaced by `to`.
std::string with(std::string text, std::string const& from, std::string const& to) {
    return text.replace(text.find(from), from.size(), to);
}

std::string unsupported(std::string const& schema) {
    return "error qc.json.unsupported_schema: Unsupported QC document schema: " + schema;
}

TEST(Deserialize, RootSchemaAndStatusDecideTheOutcome) {
    std::string const invalid_root = "error qc.json.invalid_root: The QC JSON root must be an object.";
    std::string const missing_program = "error qc.json.missing_program: QC document does not contain a program object.";
    std::string const v2 = R"({"schema": "morv.qc.document.v2", )";
    struct Case {
        std::string text;
        ParseStatus status;
        Lines diagnostics;
    };
    Case const cases[] = {
        {"", ParseStatus::failed, {invalid_root}},
        {"42", ParseStatus::failed, {invalid_root}},
        {"[]", ParseStatus::failed, {invalid_root}},
        {"{", ParseStatus::failed, {parse_failed("yaml-cpp: error at line 1, column 1: end of map flow not found")}},
        {"{}", ParseStatus::failed, {missing("schema"), unsupported("<missing>")}},
        {R"({"schema": ["morv.qc.document.v2"]})", ParseStatus::failed, {invalid("schema"), unsupported("<missing>")}},
        {R"({"schema": ""})", ParseStatus::failed, {unsupported("<missing>")}},
        {R"({"schema": "morv.qc.document.v1", "program": 5, "diagnostics": [5]})", ParseStatus::failed,
         {unsupported("morv.qc.document.v1")}},
        // No error: the status is the one that the text gives.
        {v2 + R"("program": {}})", ParseStatus::complete, {}},
        {v2 + R"("program": {}, "parse_status": "partial"})", ParseStatus::partial, {}},
        {v2 + R"("program": {}, "parse_status": "nonsense"})", ParseStatus::failed, {}},
        {v2 + R"("program": {}, "diagnostics": [{"severity": "warning"}]})", ParseStatus::complete, {"warning : "}},
        // An error with all four main lists empty fails the document, stored
        // errors and missing programs alike.
        {v2 + R"("parse_status": "complete"})", ParseStatus::failed, {missing_program}},
        {v2 + R"("program": [], "parse_status": "partial"})", ParseStatus::failed, {missing_program}},
        {v2 + R"("program": {}, "diagnostics": [{"severity": "error"}]})", ParseStatus::failed, {"error : "}},
        {v2 + R"("program": {}, "parse_status": ["complete"]})", ParseStatus::failed, {invalid("parse_status")}},
        {v2 + R"("program": {}, "sources": [{"id": 1, "path": []}]})", ParseStatus::failed, {invalid("path")}},
        // With something left in one of the four lists, an error lowers
        // "complete" to "partial" and leaves a lower status as it was.
        {v2 + R"("program": {}, "jobs": [{"id": 1, "system_id": 1, "method": []}]})", ParseStatus::partial,
         {invalid("method"), "warning qc.model.unknown_system: Job 1 names system 1, which the document does not contain."}},
        {v2 + R"("program": {}, "parse_status": "partial", "systems": [{"id": 1, "label": [], "topology": {}}]})",
         ParseStatus::partial, {invalid("label")}},
        {v2 + R"("program": {}, "parse_status": "nonsense", "systems": [{"id": 1, "label": [], "topology": {}}]})",
         ParseStatus::failed, {invalid("label")}},
        // A scalar where a record is looked into ends the decode and drops
        // what was read before.
        {v2 + R"("program": {"name": []}, "diagnostics": [5]})", ParseStatus::failed, {on_scalar(1, 76, "severity")}},
    };
    for (auto const& c : cases) {
        SCOPED_TRACE(c.text);
        auto const result = deserialize(c.text);
        EXPECT_EQ(result.status, c.status);
        EXPECT_EQ(describe(result.diagnostics), c.diagnostics);
    }
}

// The section that a decode of `json` writes again, as compact text.
std::string written_section(std::string const& json, char const* section) {
    Document const document = deserialize(json).value;
    SerializeOptions const options;
    JsonPrinter printer(options);
    std::string_view const name = section;
    if (name == "sources") {
        write_elements(printer, document.sources, write_source_file);
    } else if (name == "systems") {
        write_elements(printer, document.systems, write_system);
    } else if (name == "frames") {
        write_elements(printer, document.frames, write_frame);
    } else if (name == "jobs") {
        write_elements(printer, document.jobs, write_job);
    } else if (name == "steps") {
        write_elements(printer, document.steps, write_step);
    } else {
        write_elements(printer, document.analyses, write_analysis_block);
    }
    return printer.finish();
}

// The codec's own diagnostics of a decode: the validator's findings are
// tested with the validator.
Lines reader_diagnostics(model::ParseResult<Document> const& result) {
    Lines lines;
    for (auto const& line : describe(result.diagnostics)) {
        if (line.find(" qc.model.") == std::string::npos) {
            lines.push_back(line);
        }
    }
    return lines;
}

TEST(Deserialize, EveryRequiredKeyIsReportedWhenAbsentOrNullAndCostsWhatItGuards) {
    // `@` in an element stands where the key goes in; the element is valid
    // with the key. Without it, or with null there, the decode reports the
    // one diagnostic and writes the section as `written`.
    struct Case {
        char const* section;
        std::string element;
        std::string key;
        std::string value;
        std::string written;
        ParseStatus status;
        std::string diagnostic = "";
    };
    std::string const step = R"("id": 1, "job_id": 1, "system_id": 1, )";
    std::string const step_written = R"("id":1,"job_id":1,"ordinal":1,"system_id":1)";
    std::string const block = R"("id": 1, "job_id": 1, "type": )";
    std::string const zero_energy_object = "{\"excitation_energy\":" + zero_energy;
    Case const cases[] = {
        {"sources", R"({@"path": "a.out"})", "id", "1", "[]", ParseStatus::failed},
        {"systems", R"({@"topology": {}})", "id", "1", "[]", ParseStatus::failed},
        {"systems", R"({"id": 1, "electronic_state": {@"multiplicity": 1}, "topology": {}})", "charge", "0",
         R"([{"id":1,"topology":{"atoms":[]}}])", ParseStatus::partial},
        {"systems", R"({"id": 1, "electronic_state": {@"charge": 0}, "topology": {}})", "multiplicity", "1",
         R"([{"id":1,"topology":{"atoms":[]}}])", ParseStatus::partial},
        {"systems", R"({"id": 1, "topology": {"atoms": [{@"symbol": "C"}]}})", "id", "1",
         R"([{"id":1,"topology":{"atoms":[]}}])", ParseStatus::partial},
        {"systems", R"({"id": 1, "topology": {"atoms": [{@"id": 2}]}})", "symbol", R"("C")",
         R"([{"id":1,"topology":{"atoms":[{"id":2,"symbol":""}]}}])", ParseStatus::partial},
        {"frames", R"({@"system_id": 1})", "id", "1", "[]", ParseStatus::failed},
        {"frames", R"({@"id": 1})", "system_id", "1", "[]", ParseStatus::failed},
        // Frames do not count towards the status, whatever they hold.
        {"frames", R"({"id": 1, "system_id": 1, "positions_angstrom": [{@"y": 0, "z": 0}]})", "x", "0",
         R"([{"id":1,"positions_angstrom":[],"system_id":1}])", ParseStatus::failed},
        {"jobs", R"({@"system_id": 1})", "id", "1", "[]", ParseStatus::failed},
        {"jobs", R"({@"id": 1})", "system_id", "1", "[]", ParseStatus::failed},
        {"steps", R"({@"job_id": 1, "system_id": 1})", "id", "1", "[]", ParseStatus::failed},
        {"steps", R"({@"id": 1, "system_id": 1})", "job_id", "1", "[]", ParseStatus::failed},
        {"steps", R"({@"id": 1, "job_id": 1})", "system_id", "1", "[]", ParseStatus::failed},
        {"steps", "{" + step + R"("energies": [{@"value": {"hartree": 0}}]})", "id", "1",
         "[{\"energies\":[]," + step_written + "}]", ParseStatus::partial},
        {"steps", "{" + step + R"("energies": [{@"id": 1}]})", "value", R"({"hartree": 0})",
         "[{\"energies\":[]," + step_written + "}]", ParseStatus::partial, bad_energy},
        {"steps", "{" + step + R"("energies": [{"id": 1, "value": {@}}]})", "hartree", "0",
         "[{\"energies\":[]," + step_written + "}]", ParseStatus::partial},
        {"steps", "{" + step + R"("convergence": {"criteria": [{@"kind": "max_force"}]}})", "value", "1e-05",
         R"([{"convergence":{"criteria":[{"kind":"max_force","value":0}],"status":"unknown"},"energies":[],)" +
             step_written + "}]",
         ParseStatus::partial},
        {"steps", "{" + step + R"("source": {@"begin": {}, "end": {}}})", "source_id", "1",
         "[{\"energies\":[]," + step_written + "}]", ParseStatus::partial},
        {"analyses", R"({@"job_id": 1, "type": "dipoles"})", "id", "1", "[]", ParseStatus::failed},
        {"analyses", R"({@"id": 1, "type": "dipoles"})", "job_id", "1", "[]", ParseStatus::failed},
        {"analyses", R"({@"id": 1, "job_id": 1})", "type", R"("dipoles")", "[]", ParseStatus::failed},
        {"analyses", "{" + block + R"("vibrational", "modes": [{@}]})", "frequency_cm1", "1",
         R"([{"id":1,"job_id":1,"modes":[{"frequency_cm1":0,"imaginary":false}],"ordinal":1,"type":"vibrational"}])",
         ParseStatus::partial},
        {"analyses", "{" + block + R"("excited_states", "absorption_peaks": [{@}]})", "excitation_energy",
         R"({"hartree": 0})",
         "[{\"absorption_peaks\":[" + zero_energy_object +
             R"(}],"id":1,"job_id":1,"ordinal":1,"states":[],"total_energies":[],"type":"excited_states"}])",
         ParseStatus::partial, bad_energy},
        {"analyses", "{" + block + R"("orbital_set", "orbitals": [{@}]})", "energy", R"({"hartree": 0})",
         R"([{"id":1,"job_id":1,"kind":"canonical","orbitals":[{"energy":)" + zero_energy +
             R"(,"spin":"none"}],"ordinal":1,"spin":"none","type":"orbital_set"}])",
         ParseStatus::partial, bad_energy},
        {"analyses", "{" + block + R"("dipoles", "moments": [{"atomic_units": {@"x": 1, "y": 2}}]})", "z", "3",
         R"([{"id":1,"job_id":1,"moments":[{"atomic_units":{"x":0,"y":0,"z":0}}],"ordinal":1,"type":"dipoles"}])",
         ParseStatus::partial},
        {"analyses", "{" + block + R"("scalar_properties", "properties": [{@"value": 1}]})", "key", R"("homo")",
         R"([{"id":1,"job_id":1,"ordinal":1,"properties":[{"key":"","value":1}],"type":"scalar_properties"}])",
         ParseStatus::partial},
        {"analyses", "{" + block + R"("scalar_properties", "properties": [{@"key": "homo"}]})", "value", "1",
         R"([{"id":1,"job_id":1,"ordinal":1,"properties":[{"key":"homo","value":0}],"type":"scalar_properties"}])",
         ParseStatus::partial},
    };
    auto const document = [](Case const& c, std::string const& member) {
        std::string element = c.element;
        std::size_t const at = element.find('@');
        element.replace(at, 1, member.empty() || element[at + 1] != '}' ? member : member.substr(0, member.size() - 2));
        return document_with("\"" + std::string(c.section) + "\": [" + element + "]");
    };
    for (auto const& c : cases) {
        SCOPED_TRACE(c.element + " without " + c.key);
        std::string const with_key = document(c, "\"" + c.key + "\": " + c.value + ", ");
        EXPECT_EQ(reader_diagnostics(deserialize(with_key)), Lines{});
        for (std::string const& member : {std::string(), "\"" + c.key + "\": null, "}) {
            std::string const text = document(c, member);
            auto const result = deserialize(text);
            EXPECT_EQ(reader_diagnostics(result), Lines{c.diagnostic.empty() ? missing(c.key) : c.diagnostic});
            EXPECT_EQ(result.status, c.status);
            EXPECT_EQ(written_section(text, c.section), c.written);
        }
    }
}

TEST(Deserialize, SectionsAreReadInAFixedOrderWhateverTheOrderOfTheText) {
    auto const result = deserialize(R"({"diagnostics": [{"severity": "error", "message": "stored"}],
        "metadata": {"m": {}}, "analyses": [{"id": 1, "job_id": 1, "type": "x"}], "steps": [{"id": 1}],
        "jobs": [{"id": 1}], "frames": [{"id": 1}], "systems": [{"id": 1, "label": [], "topology": {}}],
        "sources": [{"id": "s"}], "program": {"name": []}, "normalization": {"profile": []},
        "parse_status": "partial", "schema": "morv.qc.document.v2"})");
    EXPECT_EQ(describe(result.diagnostics),
              (Lines{invalid("profile"), invalid("name"), invalid("id"), invalid("label"), missing("system_id"),
                     missing("system_id"), missing("job_id"), missing("system_id"),
                     "warning qc.json.unknown_analysis: Ignoring unknown analysis type: x",
                     "warning qc.json.unsupported_metadata: Ignoring non-scalar metadata field: m", "error : stored"}));
    EXPECT_EQ(result.status, ParseStatus::partial);
}

TEST(Deserialize, FailedDecodesReturnTheDefaultDocument) {
    for (char const* text : {"{", R"({"schema": "x", "program": {"name": "kept?"}})",
                             R"({"schema": "morv.qc.document.v2", "program": {"name": "n"}, "diagnostics": [1]})"}) {
        SCOPED_TRACE(text);
        EXPECT_EQ(deserialize(text).value, Document{});
    }
}

TEST(Deserialize, ValidatorFindingsJoinTheListAndComeBackOnEveryRead) {
    auto const first = deserialize(R"({"schema": "morv.qc.document.v2",
        "program": {"kind": "orca", "termination": {"kind": "normal", "source": {"source_id": 9}}}})");
    std::string const finding = "warning qc.model.unknown_source: Program termination names source 9, which the "
                                "document does not contain.";
    EXPECT_EQ(describe(first.diagnostics), (Lines{bad_position, bad_position, finding}));
    auto const second = deserialize(serialize(first));
    EXPECT_EQ(describe(second.diagnostics), (Lines{bad_position, bad_position, finding, finding}));
    EXPECT_EQ(second.status, ParseStatus::failed);
}

TEST(Serialize, WritesTheStatusOfAResultAndItsDiagnosticsOnlyWhenAsked) {
    EXPECT_EQ(serialize(Document{}), default_document_text);
    model::ParseResult<Document> result;
    result.diagnostics = {{Severity::error, "c", "m", {}}};
    EXPECT_EQ(serialize(result), with(with(default_document_text, "complete", "failed"), R"("diagnostics":[])",
                                      R"("diagnostics":[{"code":"c","message":"m","severity":"error"}])"));
    result.status = ParseStatus::partial;
    SerializeOptions options;
    options.include_diagnostics = false;
    EXPECT_EQ(serialize(result, options), with(default_document_text, "complete", "partial"));
    // Pretty text ends its last line.
    options.pretty = true;
    EXPECT_EQ(serialize(Document{}, options).substr(serialize(Document{}, options).size() - 3), "\n}\n");
}

TEST(Serialize, ExtensionsFallInAmongTheFixedKeysButNeverReplaceThem) {
    Document document;
    document.extensions = {{"schema", {std::string("hijacked")}}, {"metadata", {1ull}}, {"b_extra", {nullptr}}};
    EXPECT_EQ(serialize(document), with(default_document_text, "[],", R"([],"b_extra":null,)"));
}

}  // namespace
}  // namespace morv::qc::json
