#include "commands.hpp"
#include "document_text.hpp"
#include "exit_status.hpp"
#include "file_reports.hpp"
#include "input_files.hpp"

#include <morv/qc/json/codec.hpp>

#include <cstdio>

#include <unistd.h>

namespace morv::cli {
namespace {

int write_output(std::string const& output, std::string const& text) {
    if (output == "-") {
        std::fwrite(text.data(), 1, text.size(), stdout);
        return std::fflush(stdout) == 0 ? exit_complete : exit_cannot_create;
    }
    if (auto const error = write_file_atomically(output, text)) {
        std::fputs(unwritable_message(output, *error).c_str(), stderr);
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
    int const written = write_output(
        options.output, document_text(result, {options.pretty, options.indent, options.with_diagnostics}));
    return written != exit_complete ? written : exit_status_of(result.status);
}

}  // namespace morv::cli
