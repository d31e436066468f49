// Decodes a morv.qc.document.v2 file, reports its status and diagnostics on
// standard error and writes the document back, indented, on standard output.
//
//   qc-json-roundtrip FILE     (or "-" for standard input)
//
// Exit status: 0 complete, 1 partial, 2 failed, 3 the file could not be read.

#include <morv/qc/json/codec.hpp>
#include <morv/qc/model.hpp>

#include <fstream>
#include <iostream>
#include <iterator>
#include <optional>
#include <sstream>
#include <string>

namespace {

std::optional<std::string> read_input(std::string const& path) {
    std::ostringstream text;
    if (path == "-") {
        text << std::cin.rdbuf();
        return text.str();
    }
    std::ifstream file(path, std::ios::binary);
    if (!file) {
        return std::nullopt;
    }
    text << file.rdbuf();
    return text.str();
}

char const* severity_text(morv::model::Severity severity) {
    switch (severity) {
        case morv::model::Severity::error: return "error";
        case morv::model::Severity::warning: return "warning";
        default: return "note";
    }
}

int exit_code(morv::model::ParseStatus status) {
    switch (status) {
        case morv::model::ParseStatus::complete: return 0;
        case morv::model::ParseStatus::partial: return 1;
        default: return 2;
    }
}

}  // namespace

int main(int argc, char** argv) {
    if (argc != 2) {
        std::cerr << "usage: qc-json-roundtrip FILE\n";
        return 3;
    }
    auto const text = read_input(argv[1]);
    if (!text) {
        std::cerr << "qc-json-roundtrip: cannot read " << argv[1] << '\n';
        return 3;
    }

    auto const result = morv::qc::json::deserialize(*text);
    std::cerr << "status: " << morv::qc::to_string(result.status) << '\n'
              << "diagnostics: " << result.diagnostics.size() << '\n';
    for (auto const& diagnostic : result.diagnostics) {
        std::cerr << "  " << severity_text(diagnostic.severity) << ' ' << diagnostic.code << ": "
                  << diagnostic.message << '\n';
    }

    morv::qc::json::SerializeOptions options;
    options.pretty = true;
    std::cout << morv::qc::json::serialize(result, options);
    return exit_code(result.status);
}
