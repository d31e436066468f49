#pragma once
// ORCA's simple input: the "!" lines of an input that name the method, the
// basis set and the kind of run, in any order and any case.
#include <morv/qc/job.hpp>

#include <string>
#include <string_view>
#include <vector>

namespace morv::qc::import::orca {

struct SimpleInput {
    // The "!" lines as written, joined with blanks.
    std::string text;
    std::string method;
    std::string basis_set;
    std::vector<TaskKind> tasks;
};

// `keywords` is the text of the "!" lines.
SimpleInput parse_simple_input(std::string_view keywords);

}  // namespace morv::qc::import::orca
