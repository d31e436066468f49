#include "gaussian/route.hpp"

#include <gtest/gtest.h>

namespace morv::qc::import::gaussian {
namespace {

TEST(GaussianRoute, MethodBasisAndTasks) {
    struct Case {
        char const* route;
        char const* method;
        char const* basis_set;
        std::vector<TaskKind> tasks;
    };
    Case const cases[] = {
        {"#P CIS(50-50,NStates=5)/STO-3G Density Pop=(Full,NaturalOrbitals)", "CIS", "STO-3G",
         {TaskKind::excited_state}},
        {"# opt=(calcfc, tight) freq b3lyp/6-31g(d)", "B3LYP", "6-31G(D)",
         {TaskKind::optimization, TaskKind::frequency}},
        {"#n opt Opt=MaxCycle=5 hf/3-21g", "HF", "3-21G", {TaskKind::optimization}},
        {"#p irc=(calcfc) b3lyp/6-31g", "B3LYP", "6-31G", {TaskKind::irc}},
        {"#p CISD/STO-3G", "CISD", "STO-3G", {TaskKind::single_point}},
        {"#p am1 scan", "AM1", "", {TaskKind::scan}},
        {"#p EOMCCSD=(nstates=10, root=1, Singlets, Triplets) STO-3G SCF=(DIIS)", "EOMCCSD", "STO-3G",
         {TaskKind::excited_state}},
    };
    for (auto const& c : cases) {
        auto const route = parse_route(c.route);
        EXPECT_EQ(route.method, c.method) << c.route;
        EXPECT_EQ(route.basis_set, c.basis_set) << c.route;
        EXPECT_EQ(route.tasks, c.tasks) << c.route;
    }
}

}  // namespace
}  // namespace morv::qc::import::gaussian
