#include "file_reports.hpp"

#include "terminal.hpp"

#include <morv/qc/model.hpp>

#include <cstddef>
#include <string>
#include <string_view>
#include <utility>

namespace morv::cli {
namespace {

// The diagnostics of each severity, counted under the severity's word, from
// the gravest down: the order in which a report names them.
std::vector<std::pair<std::string, std::size_t>> count_severities(std::vector<model::Diagnostic> const& diagnostics) {
    std::vector<std::pair<std::string, std::size_t>> counts;
    for (auto const severity : {model::Severity::error, model::Severity::warning, model::Severity::note}) {
        std::size_t count = 0;
        for (auto const& diagnostic : diagnostics) {
            count += std::string_view(qc::to_string(diagnostic.severity)) == qc::to_string(severity) ? 1 : 0;
        }
        counts.emplace_back(qc::to_string(severity), count);
    }
    return counts;
}

std::string counted(std::size_t count, char const* noun) {
    return std::to_string(count) + " " + noun + (count == 1 ? "" : "s");
}

std::vector<std::pair<char const*, std::size_t>> section_sizes(qc::Document const& document) {
    return {{"sources", document.sources.size()}, {"systems", document.systems.size()},
            {"frames", document.frames.size()},   {"jobs", document.jobs.size()},
            {"steps", document.steps.size()},     {"analyses", document.analyses.size()}};
}

std::string position_text(model::SourcePosition const& position) {
    return std::to_string(position.line) + ":" + std::to_string(position.column);
}

std::string diagnostic_line(model::Diagnostic const& diagnostic, bool color) {
    std::string line = "  " + paint(qc::to_string(diagnostic.severity), diagnostic.severity, color) + " " +
                       diagnostic.code + ": " + diagnostic.message;
    if (diagnostic.source) {
        auto const& span = *diagnostic.source;
        line += " (source " + std::to_string(span.source_id.value) + ", " + position_text(span.begin) + "-" +
                position_text(span.end) + ")";
    }
    return line + "\n";
}

Json position_json(model::SourcePosition const& position) {
    return Json{{"offset", position.offset}, {"line", position.line}, {"column", position.column}};
}

Json diagnostic_json(model::Diagnostic const& diagnostic) {
    Json object{{"severity", qc::to_string(diagnostic.severity)},
                {"code", diagnostic.code},
                {"message", diagnostic.message}};
    if (diagnostic.source) {
        auto const& span = *diagnostic.source;
        object["source"] = Json{{"source_id", span.source_id.value},
                                {"begin", position_json(span.begin)},
                                {"end", position_json(span.end)}};
    }
    return object;
}

}  // namespace

std::string check_report_text(std::string const& name, model::ParseResult<qc::Document> const& result,
                              bool color) {
    std::string text = name + ": " + paint(qc::to_string(result.status), result.status, color);
    for (auto const& [severity, count] : count_severities(result.diagnostics)) {
        text += ", " + counted(count, severity.c_str());
    }
    text += ";";
    char const* separator = " ";
    for (auto const& [section, size] : section_sizes(result.value)) {
        text += separator + std::string(section) + " " + std::to_string(size);
        separator = ", ";
    }
    text += "\n";
    for (auto const& diagnostic : result.diagnostics) {
        text += diagnostic_line(diagnostic, color);
    }
    return text;
}

Json check_report_json(std::string const& name, model::ParseResult<qc::Document> const& result) {
    Json records = Json::object();
    for (auto const& [section, size] : section_sizes(result.value)) {
        records[section] = size;
    }
    Json diagnostics = Json::array();
    for (auto const& diagnostic : result.diagnostics) {
        diagnostics.push_back(diagnostic_json(diagnostic));
    }
    Json report{{"path", name}, {"status", qc::to_string(result.status)}};
    for (auto const& [severity, count] : count_severities(result.diagnostics)) {
        report[severity + "s"] = count;
    }
    report["records"] = std::move(records);
    report["diagnostics"] = std::move(diagnostics);
    return report;
}

std::string json_line(Json const& value) {
    return value.dump(-1, ' ', false, Json::error_handler_t::replace) + "\n";
}

}  // namespace morv::cli
