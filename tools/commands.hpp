#pragma once

#include "terminal.hpp"

#include <cstdint>
#include <string>
#include <vector>

namespace morv::cli {

struct CheckOptions {
    std::vector<std::string> paths;
    ColorMode color = ColorMode::automatic;
    bool json = false;
    unsigned jobs = 1;
};

struct FormatOptions {
    std::string path;
    std::string output = "-";
    bool pretty = false;
    std::uint32_t indent = 2;
    bool with_diagnostics = false;
    ColorMode color = ColorMode::automatic;
};

struct StatsOptions {
    std::vector<std::string> paths;
    bool json = false;
    unsigned jobs = 1;
};

// Each returns the exit status of the command.
int run_check(CheckOptions const& options);
int run_format(FormatOptions const& options);
int run_stats(StatsOptions const& options);

}  // namespace morv::cli
