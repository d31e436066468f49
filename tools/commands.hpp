#pragma once

#include "file_runner.hpp"
#include "terminal.hpp"

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace morv::cli {

struct CheckOptions {
    std::vector<std::string> paths;
    ColorMode color = ColorMode::automatic;
    bool json = false;
    unsigned jobs = one_job_per_core();
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
    unsigned jobs = one_job_per_core();
};

struct ImportOptions {
    std::vector<std::string> paths;
    // A file for one output, otherwise a folder; without it each document
    // goes beside its output.
    std::optional<std::string> output;
    bool pretty = false;
    std::uint32_t indent = 2;
    bool json = false;
    ColorMode color = ColorMode::automatic;
    unsigned jobs = one_job_per_core();
};

// Each returns the exit status of the command.
int run_check(CheckOptions const& options);
int run_format(FormatOptions const& options);
int run_stats(StatsOptions const& options);
int run_import(ImportOptions const& options);

}  // namespace morv::cli
