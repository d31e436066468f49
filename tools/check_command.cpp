#include "commands.hpp"
#include "file_reports.hpp"
#include "file_runner.hpp"

#include <unistd.h>

namespace morv::cli {

int run_check(CheckOptions const& options) {
    bool const color = !options.json && use_color(options.color, STDOUT_FILENO);
    return process_files(options.paths, options.jobs, "checked",
                         [&](std::string const& name, std::size_t, model::ParseResult<qc::Document> const& result) {
                             return options.json ? json_line(check_report_json(name, result))
                                                 : check_report_text(name, result, color);
                         });
}

}  // namespace morv::cli
