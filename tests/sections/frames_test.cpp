#include "core/json_writer.hpp"
#include "sections/frames.hpp"
#include "support/diagnostics.hpp"

#include <gtest/gtest.h>
#include <yaml-cpp/exceptions.h>

#include <limits>
#include <sstream>

namespace morv::qc::json {
namespace {

using chem::GeometryFrame;
using chem::Vec3;
using morv::testing::describe;
using Lines = std::vector<std::string>;

std::string compact(JsonValue const& value) {
    std::ostringstream out;
    write_json(out, value, SerializeOptions{});
    return out.str();
}

std::string invalid(std::string const& key) { return "error qc.json.invalid_field: Invalid value for field: " + key; }
std::string missing(std::string const& key) { return "error qc.json.missing_field: Missing required field: " + key; }
std::string const not_a_vector = "error qc.json.invalid_vec3: Expected a Cartesian vector object.";
double const inf = std::numeric_limits<double>::infinity();

GeometryFrame frame(std::uint32_t id, std::uint32_t system_id, std::vector<Vec3> positions = {}) {
    return GeometryFrame{chem::FrameId(id), chem::SystemId(system_id), std::move(positions), std::nullopt};
}

TEST(Frames, BothIdsAreReadAndEitherDropsTheFrameWhileBadPositionsOnlyLoseThemselves) {
    struct Case { char const* json; std::optional<GeometryFrame> frame; Lines diagnostics; };
    Case const cases[] = {
        {R"({"id": 1})", std::nullopt, {missing("system_id")}},
        {R"({"system_id": 1, "positions_angstrom": [5], "source": 5})", std::nullopt, {missing("id")}},
        {"null", std::nullopt, {missing("id"), missing("system_id")}},
        {R"({"id": 4294967296, "system_id": "x"})", std::nullopt,
         {"error qc.json.id_out_of_range: Entity ID exceeds uint32 range: id", invalid("system_id")}},
        {R"({"id": 1, "system_id": 4294967295, "positions_angstrom": {"x": 1, "y": 2, "z": 3}})", frame(1, 4294967295u),
         {}},
        {R"({"id": 2, "system_id": 0, "source": null, "positions_angstrom": [[0, 0, 0], {"x": 0, "y": 0}, 5,
             {"x": "-.inf", "y": ".Inf", "z": "1e2", "w": []}, {"x": null, "y": "a", "z": []}, {"x": 1, "y": 2, "z": 3}]})",
         frame(2, 0, {{-inf, inf, 100}, {1, 2, 3}}),
         {not_a_vector, missing("z"), not_a_vector, missing("x"), invalid("y"), invalid("z"),
          "error qc.json.invalid_source_span: Expected a source-span object."}},
    };
    for (auto const& c : cases) {
        SCOPED_TRACE(c.json);
        DocumentResult result;
        EXPECT_EQ(read_frame(result, load_text(c.json)), c.frame);
        EXPECT_EQ(describe(result.diagnostics), c.diagnostics);
    }
    DocumentResult result;
    EXPECT_THROW(read_frame(result, load_text("5")), YAML::BadSubscript);
}

TEST(Frames, NonFiniteComponentsPrintAsNullAndThatPositionIsLostOnTheWayBack) {
    std::string const text =
        compact(write_frame(frame(1, 2, {{std::numeric_limits<double>::quiet_NaN(), -inf, 0.1}, {1, 2, 3}})));
    EXPECT_EQ(text, R"({"id":1,"positions_angstrom":[{"x":null,"y":null,"z":0.10000000000000001},)"
                    R"({"x":1,"y":2,"z":3}],"system_id":2})");
    DocumentResult result;
    EXPECT_EQ(read_frame(result, load_text(text)), frame(1, 2, {{1, 2, 3}}));
    EXPECT_EQ(describe(result.diagnostics), (Lines{missing("x"), missing("y")}));
}

TEST(Frames, EveryFieldTravelsThroughText) {
    GeometryFrame full = frame(4294967295u, 7, {{0.1, -2.5, 1e-300}, {-0.0, 1.7976931348623157e308, 3}});
    full.source = model::SourceSpan{model::SourceId(3), {1, 2, 3}, {4, 5, 6}};
    std::string const text = compact(write_frame(full));
    DocumentResult result;
    auto const read = read_frame(result, load_text(text));
    EXPECT_TRUE(result.diagnostics.empty());
    ASSERT_EQ(read, full);
    EXPECT_EQ(compact(write_frame(*read)), text);
    EXPECT_EQ(compact(write_frame(frame(0, 0))), R"({"id":0,"positions_angstrom":[],"system_id":0})");
}

}  // namespace
}  // namespace morv::qc::json
