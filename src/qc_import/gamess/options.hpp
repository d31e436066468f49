#pragma once
// The option groups that GAMESS echoes before it computes: "$CONTRL OPTIONS"
// and "BASIS OPTIONS" print each option as KEY=VALUE, several to a line, and
// together they say what the run computes.
#include <morv/qc/job.hpp>

#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace morv::qc::import::gamess {

// The KEY=VALUE pairs of the printed option lines, in order; "CITYP =NONE"
// and "MPLEVL=       2" alike.
class Options {
public:
    void add_line(std::string_view line);
    // The value of the last `key` read, "" when there is none.
    std::string_view value(std::string_view key) const;

private:
    std::vector<std::pair<std::string_view, std::string_view>> pairs_;
};

// "B3LYP", "MP2", "CCSD(T)", "CIS", "RHF", "AM1": the most correlated method
// the options ask for.
std::string method_of(Options const& options);
// "STO-3G", "6-31G(d,p)", "3-21G(d)", or GBASIS as printed for the named
// sets; "" for a semi-empirical run, whose GBASIS names the method.
std::string basis_of(Options const& options);
// The runtype's task, and the excited states that TDDFT or CIS add to it.
std::vector<TaskKind> tasks_of(Options const& options);

}  // namespace morv::qc::import::gamess
