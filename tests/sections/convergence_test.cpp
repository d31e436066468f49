#include "sections/convergence.hpp"
#include "support/json_text.hpp"

namespace morv::qc::json {
namespace {

using namespace morv::testing;
using K = CriterionKind;

TEST(Gradient, ABlockThatIsNoObjectIsUnsetInSilenceAndBadEntriesOnlyLoseThemselves) {
    expect_reads(read_gradient, {
        {"[{}]", std::nullopt, {}},
        {R"({"unit": 5, "vectors": 7})", GradientRecord{}, {}},
        {R"({"unit": "hartree_per_angstrom", "source": 5, "max": "-.inf", "rms": null, "norm": [],
             "vectors": [{"x": 0, "y": 0, "z": 1}, 3, {"x": null, "y": "a"}, {"x": 1, "y": 2, "z": 3}]})",
         GradientRecord{{{0, 0, 1}, {1, 2, 3}}, {}, {}, -inf, {}},
         {invalid("norm"), bad_vec3, missing("x"), invalid("y"), missing("z"), bad_span}},
    });
}

TEST(Convergence, UnknownWordsFallBackInSilenceAndACriterionIsNeverDropped) {
    expect_reads(read_convergence, {
        {"5", std::nullopt, {}},
        {R"({"status": "Converged", "criteria": {"kind": "max_force", "value": 1}})", ConvergenceRecord{}, {}},
        {R"({"source": null, "criteria": [{"kind": "force", "value": 1}, {"kind": "gradient_norm", "value": "x"},
             {"kind": "max_force"}, null, {"unit": "au", "satisfied": false, "threshold": 0, "value": -2,
             "kind": "constraint_violation"}, {"kind": [], "value": 1, "threshold": "t", "satisfied": "maybe", "unit": {}}],
             "status": []})",
         ConvergenceRecord{{{K::gradient_norm, 1, {}, {}, ""}, {K::gradient_norm, 0, {}, {}, ""}, {K::max_force, 0, {}, {}, ""},
                            {K::gradient_norm, 0, {}, {}, ""}, {K::constraint_violation, -2, 0.0, false, "au"},
                            {K::gradient_norm, 1, {}, {}, ""}},
                           ConvergenceStatus::unknown, {}},
         {invalid("status"), invalid("value"), missing("value"), missing("value"), invalid("kind"), invalid("threshold"),
          invalid("satisfied"), invalid("unit"), bad_span}},
    });
    DocumentResult result;
    EXPECT_THROW(read_convergence(result, load_text(R"({"criteria": [5]})")), YAML::Exception);
}

TEST(Convergence, OptionalKeysAreWrittenByPresenceWhateverTheirValue) {
    EXPECT_EQ(compact(write_gradient, GradientRecord{{}, nan, {}, 0.0, {}}),
              R"({"max":0,"norm":null,"unit":"hartree_per_bohr"})");
    EXPECT_EQ(compact(write_convergence, ConvergenceRecord{}), R"({"criteria":[],"status":"unknown"})");
    EXPECT_EQ(compact(write_convergence, {{{K::max_force, nan, 0.0, false, ""}}, ConvergenceStatus::converged, {}}),
              R"({"criteria":[{"kind":"max_force","satisfied":false,"threshold":0,"value":null}],"status":"converged"})");
}

}  // namespace
}  // namespace morv::qc::json
