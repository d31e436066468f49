#include "core/json_writer.hpp"
#include "sections/convergence.hpp"
#include "support/diagnostics.hpp"

#include <gtest/gtest.h>
#include <yaml-cpp/exceptions.h>

#include <limits>
#include <sstream>
#include <string>
#include <vector>

namespace morv::qc::json {
namespace {

using morv::testing::describe;
using Lines = std::vector<std::string>;
using K = CriterionKind;

std::string compact(JsonValue const& value) {
    std::ostringstream out;
    write_json(out, value, SerializeOptions{});
    return out.str();
}

std::string invalid(std::string const& key) { return "error qc.json.invalid_field: Invalid value for field: " + key; }
std::string missing(std::string const& key) { return "error qc.json.missing_field: Missing required field: " + key; }
std::string const bad_span = "error qc.json.invalid_source_span: Expected a source-span object.";

TEST(Gradient, ABlockThatIsNoObjectIsUnsetInSilenceAndBadEntriesOnlyLoseThemselves) {
    struct Case { char const* json; std::optional<GradientRecord> gradient; Lines diagnostics; };
    Case const cases[] = {
        {"[{}]", std::nullopt, {}},
        {R"({"unit": 5, "vectors": 7})", GradientRecord{}, {}},
        {R"({"unit": "hartree_per_angstrom", "source": 5, "max": "-.inf", "rms": null, "norm": [],
             "vectors": [{"x": 0, "y": 0, "z": 1}, 3, {"x": null, "y": "a"}, {"x": 1, "y": 2, "z": 3}]})",
         GradientRecord{{{0, 0, 1}, {1, 2, 3}}, {}, {}, -std::numeric_limits<double>::infinity(), {}},
         {invalid("norm"), "error qc.json.invalid_vec3: Expected a Cartesian vector object.", missing("x"),
          invalid("y"), missing("z"), bad_span}},
    };
    for (auto const& c : cases) {
        SCOPED_TRACE(c.json);
        DocumentResult result;
        EXPECT_EQ(read_gradient(result, load_text(c.json)), c.gradient);
        EXPECT_EQ(describe(result.diagnostics), c.diagnostics);
    }
}

TEST(Convergence, UnknownWordsFallBackInSilenceAndACriterionIsNeverDropped) {
    struct Case { char const* json; std::optional<ConvergenceRecord> convergence; Lines diagnostics; };
    Case const cases[] = {
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
    };
    for (auto const& c : cases) {
        SCOPED_TRACE(c.json);
        DocumentResult result;
        EXPECT_EQ(read_convergence(result, load_text(c.json)), c.convergence);
        EXPECT_EQ(describe(result.diagnostics), c.diagnostics);
    }
    DocumentResult result;
    EXPECT_THROW(read_convergence(result, load_text(R"({"criteria": [5]})")), YAML::Exception);
}

TEST(Convergence, OptionalKeysAreWrittenByPresenceWhateverTheirValue) {
    double const nan = std::numeric_limits<double>::quiet_NaN();
    EXPECT_EQ(compact(write_gradient(GradientRecord{{}, nan, {}, 0.0, {}})),
              R"({"max":0,"norm":null,"unit":"hartree_per_bohr"})");
    EXPECT_EQ(compact(write_convergence(ConvergenceRecord{})), R"({"criteria":[],"status":"unknown"})");
    EXPECT_EQ(compact(write_convergence({{{K::max_force, nan, 0.0, false, ""}}, ConvergenceStatus::converged, {}})),
              R"({"criteria":[{"kind":"max_force","satisfied":false,"threshold":0,"value":null}],"status":"converged"})");
}

TEST(Convergence, EveryKindStatusAndKeyTravelsThroughText) {
    model::SourceSpan const span{model::SourceId(1), {1, 2, 3}, {4, 5, 6}};
    GradientRecord const gradient{{{0.1, -2, 3e-7}, {0, 0, 0}}, 0.5, 0.25, 0.125, span};
    ConvergenceRecord convergence{{}, ConvergenceStatus::unknown, span};
    for (std::uint32_t kind = 0; kind <= 6; ++kind) {
        convergence.criteria.push_back({static_cast<K>(kind), 0.1 * kind, 0.01, kind % 2 == 0, "hartree"});
    }
    DocumentResult result;
    EXPECT_EQ(read_gradient(result, load_text(compact(write_gradient(gradient)))), gradient);
    for (std::uint32_t status = 0; status <= 2; ++status) {
        convergence.status = static_cast<ConvergenceStatus>(status);
        std::string const text = compact(write_convergence(convergence));
        SCOPED_TRACE(text);
        auto const back = read_convergence(result, load_text(text));
        EXPECT_EQ(back, convergence);
        EXPECT_EQ(compact(write_convergence(back.value_or(ConvergenceRecord{}))), text);
    }
    EXPECT_TRUE(result.diagnostics.empty());
}

}  // namespace
}  // namespace morv::qc::json
