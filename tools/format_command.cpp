#include "commands.hpp"
#include "exit_status.hpp"
#include "file_reports.hpp"
#include "input_files.hpp"

#include <morv/qc/json/codec.hpp>

#include <cstdio>

#include <unistd.h>

namespace morv::cli {
namespace {

std::string formatted_text(FormatOptions const& options, model::ParseResult<qc::Document> const& result) {
    qc::json::SerializeOptions serialize_options;
    serialize_options.pretty = options.pretty;
    serialize_options.indent = options.indent;
    std::string text = options.with_diagnostics ? qc::json::serialize(result, serialize_options)
                                                : qc::json::serialize(result.value, serialize_options);
    // Pretty text ends with a line feed; compact text gets one too, so that
    // the output is a well-formed text file and a shell prompt starts on a
    // line of its own.
    if (!options.pretty) {
        text += '\n';
    }
    return text;
}

int write_output(std::string const& output, std::string const& text) {
    if (output == "-") {
        std::fwrite(text.data(), 1, text.size(), stdout);
        return std::fflush(stdout) == 0 ? exit_complete : exit_cannot_create;
    }
    if (auto const error = write_file_atomically(output, text)) {
        std::fprintf(stderr, "morv-qc-json: cannot write %s: %s\n", output.c_str(), error->c_str());
        return exit_cannot_create;
    }
    return exit_complete;
}

}  // namespace

int run_format(FormatOptions const& options) {
    InputText const input = read_input(options.path);
    if (input.error) {
        std::fputs(unreadable_message(options.path, *input.error).c_str(), stderr);
        return exit_no_input;
    }
    auto const result = qc::json::deserialize(input.text);
    // What went wrong goes to standard error, so that standard output holds
    // the document alone. A failed decode holds nothing worth writing, and
    // writing it could replace a damaged file with an empty document.
    if (result.status != model::ParseStatus::complete) {
        std::string const report = check_report_text(display_name(options.path), result,
                                                     use_color(options.color, STDERR_FILENO));
        std::fwrite(report.data(), 1, report.size(), stderr);
    }
    if (result.status == model::ParseStatus::failed) {
        return exit_failed;
    }
    int const written = write_output(options.output, formatted_text(options, result));
    return written != exit_complete ? written : exit_status_of(result.status);
}

}  // namespace morv::cli
