#include <morv/qc/model.hpp>

#include <gtest/gtest.h>

#include <cstddef>
#include <string>
#include <vector>

namespace morv::qc {
namespace {

using Names = std::vector<std::string>;

// The names of the values 0 to count - 1, which number each enum without
// gaps, and last the name of 99: a value from a corrupt or newer producer
// still gets a name, never a null pointer that a writer would pass on.
template <typename Enum>
Names names_of(std::size_t count) {
    Names names;
    for (std::size_t value = 0; value < count; ++value) {
        names.emplace_back(to_string(static_cast<Enum>(value)));
    }
    names.emplace_back(to_string(static_cast<Enum>(99)));
    return names;
}

TEST(ToString, EveryEnumeratorHasItsWireNameAndAStrayValueAFallback) {
    EXPECT_EQ(names_of<model::ParseStatus>(3), (Names{"complete", "partial", "failed", "failed"}));
    EXPECT_EQ(names_of<model::Severity>(3), (Names{"note", "warning", "error", "note"}));
    EXPECT_EQ(names_of<ResultProfile>(4), (Names{"unknown", "summary", "standard", "full", "unknown"}));
    EXPECT_EQ(names_of<ProgramKind>(4), (Names{"unknown", "gaussian", "orca", "gamess", "unknown"}));
    EXPECT_EQ(names_of<TerminationKind>(6),
              (Names{"unknown", "running", "normal", "error", "interrupted", "truncated", "unknown"}));
    EXPECT_EQ(names_of<JobRelation>(5), (Names{"none", "link", "restart", "branch", "image", "none"}));
    EXPECT_EQ(names_of<TaskKind>(7), (Names{"single_point", "optimization", "frequency", "excited_state", "irc", "scan",
                                            "neb", "single_point"}));
    EXPECT_EQ(names_of<EnergyKind>(9), (Names{"unknown", "electronic", "scf", "correlated", "excited_state_total",
                                              "gibbs_free", "enthalpy", "zero_point", "thermal_correction", "unknown"}));
    EXPECT_EQ(names_of<ConvergenceStatus>(3), (Names{"unknown", "converged", "not_converged", "unknown"}));
    EXPECT_EQ(names_of<CriterionKind>(7), (Names{"max_force", "rms_force", "max_displacement", "rms_displacement",
                                                 "energy_change", "gradient_norm", "constraint_violation", "gradient_norm"}));
    EXPECT_EQ(names_of<SpinChannel>(3), (Names{"none", "alpha", "beta", "none"}));
}

}  // namespace
}  // namespace morv::qc
