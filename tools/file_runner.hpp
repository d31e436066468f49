#pragma once

#include <morv/model/parse_result.hpp>
#include <morv/qc/document.hpp>

#include <cstddef>
#include <functional>
#include <string>
#include <string_view>
#include <vector>

namespace morv::cli {

// What became of one input: the exit status it adds to the run, what goes to
// standard output and what goes to standard error.
struct FileOutcome {
    int exit_status = 0;
    std::string output;
    std::string error;
};

// What a command makes of the bytes of one input that could be read, given
// with its place among the paths.
using ProcessText =
    std::function<FileOutcome(std::size_t index, std::string const& path, std::string const& text)>;

// The default number of threads of a command that reads many files.
unsigned one_job_per_core();

// Reads each of `paths` on up to `jobs` threads and hands its bytes to
// `process`, printing the outcomes in the order of `paths`, each as soon as
// all before it are printed (standard output goes out in blocks, at the
// latest after the file that follows). A path that cannot be read is reported
// on standard error and the others are still processed. Returns the exit
// status of the run.
int run_over_files(std::vector<std::string> const& paths, unsigned jobs, std::string_view verb,
                   ProcessText const& process);

// What a command prints on standard output for one decoded input.
using DescribeFile = std::function<std::string(
    std::string const& name, std::size_t bytes, model::ParseResult<qc::Document> const& result)>;

// Decodes each of `paths` as a document, as run_over_files reads them, and
// prints what `describe` makes of it.
int process_files(std::vector<std::string> const& paths, unsigned jobs, std::string_view verb,
                  DescribeFile const& describe);

}  // namespace morv::cli
