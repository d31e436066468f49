#pragma once

#include <morv/model/diagnostic.hpp>

#include <string>
#include <vector>

namespace morv::testing {

// One line per diagnostic, "severity code: message", so that a test can
// compare the whole list, order included, in one assertion.
inline std::string describe(model::Diagnostic const& diagnostic) {
    char const* severity = diagnostic.severity == model::Severity::error     ? "error"
                           : diagnostic.severity == model::Severity::warning ? "warning"
                                                                              : "note";
    return std::string(severity) + " " + diagnostic.code + ": " + diagnostic.message;
}

inline std::vector<std::string> describe(std::vector<model::Diagnostic> const& diagnostics) {
    std::vector<std::string> lines;
    for (auto const& diagnostic : diagnostics) {
        lines.push_back(describe(diagnostic));
    }
    return lines;
}

}  // namespace morv::testing
