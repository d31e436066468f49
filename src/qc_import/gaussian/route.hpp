#pragma once
// The route section of a Gaussian job: the "#" lines that say what the job
// computes.
#include <morv/qc/job.hpp>

#include <string>
#include <vector>

namespace morv::qc::import::gaussian {

// What the route section asks for.
struct Route {
    std::string text;
    std::string method;
    std::string basis_set;
    std::vector<TaskKind> tasks;
};

// `text` is the route as printed, its lines joined.
Route parse_route(std::string text);

}  // namespace morv::qc::import::gaussian
