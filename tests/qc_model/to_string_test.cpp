#include <morv/qc/model.hpp>

#include <gtest/gtest.h>

#include <cstddef>
#include <string>
#include <vector>

namespace morv::qc {
namespace {

using Names = std::vector<std::string>;

// The enumerators of each enum are numbered from zero without gaps, so the
// names can be listed in the order of their values.
template <typename Enum>
Names names_of(std::size_t count) {
    Names names;
    for (std::size_t value = 0; value < count; ++value) {
        names.emplace_back(to_string(static_cast<Enum>(value)));
    }
    return names;
}

TEST(ToString, EveryEnumeratorHasItsWireName) {
    Names const parse_status = {"complete", "partial", "failed"};
    Names const profile = {"unknown", "summary", "standard", "full"};
    Names const program = {"unknown", "gaussian", "orca", "gamess"};
    Names const termination = {"unknown", "running", "normal", "error", "interrupted", "truncated"};
    Names const relation = {"none", "link", "restart", "branch", "image"};
    Names const task = {"single_point", "optimization", "frequency", "excited_state", "irc", "scan", "neb"};
    Names const energy = {"unknown",     "electronic", "scf",        "correlated",        "excited_state_total",
                          "gibbs_free", "enthalpy",   "zero_point", "thermal_correction"};
    Names const convergence = {"unknown", "converged", "not_converged"};
    Names const criterion = {"max_force",     "rms_force",     "max_displacement",    "rms_displacement",
                             "energy_change", "gradient_norm", "constraint_violation"};
    Names const spin = {"none", "alpha", "beta"};

    EXPECT_EQ(names_of<model::ParseStatus>(parse_status.size()), parse_status);
    EXPECT_EQ(names_of<ResultProfile>(profile.size()), profile);
    EXPECT_EQ(names_of<ProgramKind>(program.size()), program);
    EXPECT_EQ(names_of<TerminationKind>(termination.size()), termination);
    EXPECT_EQ(names_of<JobRelation>(relation.size()), relation);
    EXPECT_EQ(names_of<TaskKind>(task.size()), task);
    EXPECT_EQ(names_of<EnergyKind>(energy.size()), energy);
    EXPECT_EQ(names_of<ConvergenceStatus>(convergence.size()), convergence);
    EXPECT_EQ(names_of<CriterionKind>(criterion.size()), criterion);
    EXPECT_EQ(names_of<SpinChannel>(spin.size()), spin);
}

// A value read from a corrupt or newer producer still gets a name, never a
// null pointer that a writer would pass on.
TEST(ToString, AValueOutsideTheEnumGetsAFallbackName) {
    auto const stray = [](auto enumerator) { return std::string(to_string(decltype(enumerator)(99))); };
    Names const names = {stray(model::ParseStatus{}), stray(ResultProfile{}),   stray(ProgramKind{}),
                         stray(TerminationKind{}),    stray(JobRelation{}),     stray(TaskKind{}),
                         stray(EnergyKind{}),         stray(ConvergenceStatus{}), stray(CriterionKind{}),
                         stray(SpinChannel{})};
    EXPECT_EQ(names, (Names{"failed", "unknown", "unknown", "unknown", "none", "single_point", "unknown", "unknown",
                            "gradient_norm", "none"}));
}

}  // namespace
}  // namespace morv::qc
