#pragma once

#include <morv/model/parse_result.hpp>

namespace morv::cli {

// The exit statuses of the tool; the last three are those of <sysexits.h>.
enum ExitStatus : int {
    exit_complete = 0,
    exit_partial = 1,
    exit_failed = 2,
    exit_usage = 64,
    exit_no_input = 66,
    exit_cannot_create = 73,
};

int exit_status_of(model::ParseStatus status);

// The status of a run over many files: a file that could not be read
// outranks every decode, and otherwise the worst decode decides.
int worse_exit_status(int a, int b);

}  // namespace morv::cli
