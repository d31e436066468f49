#include "sections/frames.hpp"
#include "support/json_text.hpp"

namespace morv::qc::json {
namespace {

using namespace morv::testing;
using chem::GeometryFrame;
using chem::Vec3;

GeometryFrame frame(std::uint32_t id, std::uint32_t system_id, std::vector<Vec3> positions = {}) {
    return GeometryFrame{chem::FrameId(id), chem::SystemId(system_id), std::move(positions), std::nullopt};
}

TEST(Frames, BothIdsAreReadAndEitherDropsTheFrameWhileBadPositionsOnlyLoseThemselves) {
    expect_reads(read_frame, {
        {R"({"id": 1})", std::nullopt, {missing("system_id")}},
        {R"({"system_id": 1, "positions_angstrom": [5], "source": 5})", std::nullopt, {missing("id")}},
        {"null", std::nullopt, {missing("id"), missing("system_id")}},
        {R"({"id": 4294967296, "system_id": "x"})", std::nullopt, {out_of_range("id"), invalid("system_id")}},
        {R"({"id": 1, "system_id": 4294967295, "positions_angstrom": {"x": 1, "y": 2, "z": 3}})", frame(1, 4294967295u),
         {}},
        {R"({"id": 2, "system_id": 0, "source": null, "positions_angstrom": [[0, 0, 0], {"x": 0, "y": 0}, 5,
             {"x": "-.inf", "y": ".Inf", "z": "1e2", "w": []}, {"x": null, "y": "a", "z": []}, {"x": 1, "y": 2, "z": 3}]})",
         frame(2, 0, {{-inf, inf, 100}, {1, 2, 3}}),
         {bad_vec3, missing("z"), bad_vec3, missing("x"), invalid("y"), invalid("z"), bad_span}},
    });
    DocumentResult result;
    EXPECT_THROW(read_frame(result, load_text("5")), YAML::BadSubscript);
}

TEST(Frames, NonFiniteComponentsPrintAsNullAndThatPositionIsLostOnTheWayBack) {
    std::string const text = compact(write_frame, frame(1, 2, {{nan, -inf, 0.1}, {1, 2, 3}}));
    EXPECT_EQ(text, R"({"id":1,"positions_angstrom":[{"x":null,"y":null,"z":0.10000000000000001},)"
                    R"({"x":1,"y":2,"z":3}],"system_id":2})");
    expect_reads(read_frame, {{text, frame(1, 2, {{1, 2, 3}}), {missing("x"), missing("y")}}});
}

TEST(Frames, WritesAnEmptyListOfPositions) {
    EXPECT_EQ(compact(write_frame, frame(0, 0)), R"({"id":0,"positions_angstrom":[],"system_id":0})");
}

}  // namespace
}  // namespace morv::qc::json
