#pragma once

#include <morv/model/diagnostic.hpp>
#include <morv/qc/model.hpp>

#include <string>
#include <vector>

namespace morv::testing {

using Lines = std::vector<std::string>;

// One line per diagnostic, "severity code: message", so that a test can
// compare the whole list, order included, in one assertion.
inline std::string describe(model::Diagnostic const& diagnostic) {
    return std::string(qc::to_string(diagnostic.severity)) + " " + diagnostic.code + ": " + diagnostic.message;
}

inline Lines describe(std::vector<model::Diagnostic> const& diagnostics) {
    Lines lines;
    for (auto const& diagnostic : diagnostics) {
        lines.push_back(describe(diagnostic));
    }
    return lines;
}

// The codec's own diagnostics, as `describe` prints them.
inline std::string invalid(std::string const& key) { return "error qc.json.invalid_field: Invalid value for field: " + key; }
inline std::string missing(std::string const& key) { return "error qc.json.missing_field: Missing required field: " + key; }
inline std::string out_of_range(std::string const& key) {
    return "error qc.json.id_out_of_range: Entity ID exceeds uint32 range: " + key;
}
inline std::string const bad_span = "error qc.json.invalid_source_span: Expected a source-span object.";
inline std::string const bad_position = "error qc.json.invalid_source_position: Expected a source-position object.";
inline std::string const bad_vec3 = "error qc.json.invalid_vec3: Expected a Cartesian vector object.";
inline std::string const bad_energy = "error qc.json.invalid_energy: Expected an energy object.";
inline std::string const bad_energy_record = "error qc.json.invalid_energy_record: Expected an energy-record object.";

// The one diagnostic of a decode that an exception ended.
inline std::string parse_failed(std::string const& what) {
    return "error qc.json.parse_failed: Failed to parse QC JSON: " + what;
}
// yaml-cpp's words for a key looked up in a scalar.
inline std::string on_scalar(int line, int column, std::string const& key) {
    return parse_failed("yaml-cpp: error at line " + std::to_string(line) + ", column " + std::to_string(column) +
                        ": operator[] call on a scalar (key: \"" + key + "\")");
}

}  // namespace morv::testing
