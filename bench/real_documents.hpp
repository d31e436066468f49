#pragma once

#include <morv/model/parse_result.hpp>
#include <morv/qc/document.hpp>

#include <cstddef>
#include <string>
#include <string_view>

namespace morv::bench {

// `output` with the text of its first `steps` steps repeated `times` times:
// a step begins on the line that holds `mark`, and the repeated text runs
// from the first such line to the one of step `steps + 1`, which with the
// rest of the output follows the repeats as it was.
std::string grown_output(std::string_view output, std::string_view mark, std::size_t steps, std::size_t times);

// The compact JSON text `json` with every number that has a fraction or an
// exponent printed as a program's output prints it rather than with 17
// digits: rounded to `significant` digits, or with 0 in the shortest form
// that reads back to the same double (`-0.0113`).
std::string printed_numbers(std::string_view json, int significant);

// A document as the importer makes it from an output, grown until its text
// is close to `target_bytes` (0: the output as it is).
struct GrownOutput {
    char const* path;  // relative to the source tree
    char const* mark;
    std::size_t steps;
};

// Optimisations bundled with the tests, grown by their first steps, and a
// small single point as it is.
inline constexpr GrownOutput gaussian_optimisation{"tests/data/gaussian/dvb_gopt.out", "Input orientation:", 4};
inline constexpr GrownOutput orca_optimisation{"tests/data/orca/dvb_gopt.out", "GEOMETRY OPTIMIZATION CYCLE", 2};
inline constexpr GrownOutput gamess_optimisation{"tests/data/gamess/dvb_gopt_a.out", "BEGINNING GEOMETRY SEARCH POINT",
                                                 5};
inline constexpr GrownOutput gaussian_single_point{"tests/data/gaussian/water_mp2.log", "", 0};

// The compact text of the imported document with the numbers as the program
// printed them; `target_bytes` is met within one step's share of the text.
std::string imported_text(std::string const& source_dir, GrownOutput const& output, std::size_t target_bytes);

}  // namespace morv::bench
