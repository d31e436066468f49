#pragma once

#include <morv/model/parse_result.hpp>
#include <morv/qc/document.hpp>

#include <cstddef>
#include <functional>
#include <string>
#include <string_view>
#include <vector>

namespace morv::cli {

// What a command prints on standard output for one decoded input.
using DescribeFile = std::function<std::string(
    std::string const& name, std::size_t bytes, model::ParseResult<qc::Document> const& result)>;

// Reads and decodes each of `paths` on up to `jobs` threads and prints what
// `describe` makes of it, in the order of `paths`, each as soon as all before
// it are printed. A path that cannot be read is reported on standard error
// and the others are still processed. Returns the exit status of the run.
int process_files(std::vector<std::string> const& paths, unsigned jobs, std::string_view verb,
                  DescribeFile const& describe);

}  // namespace morv::cli
