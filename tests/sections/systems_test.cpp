#include "core/json_writer.hpp"
#include "sections/systems.hpp"
#include "support/diagnostics.hpp"

#include <morv/qc/json/codec.hpp>

#include <gtest/gtest.h>
#include <yaml-cpp/exceptions.h>

#include <sstream>

namespace morv::qc::json {
namespace {

using chem::AtomId;
using chem::AtomSite;
using chem::ChemicalSystem;
using morv::testing::describe;
using Lines = std::vector<std::string>;

std::string compact(JsonValue const& value) {
    std::ostringstream out;
    write_json(out, value, SerializeOptions{});
    return out.str();
}

std::string invalid(std::string const& key) { return "error qc.json.invalid_field: Invalid value for field: " + key; }
std::string missing(std::string const& key) { return "error qc.json.missing_field: Missing required field: " + key; }

ChemicalSystem system(std::uint32_t id, std::string label = "", std::vector<AtomSite> atoms = {},
                      std::optional<chem::ElectronicState> state = {}) {
    return ChemicalSystem{chem::SystemId(id), std::move(label), {std::move(atoms)}, state, std::nullopt};
}

TEST(Systems, UnusableIdsDropTheirRecordWhileOtherFaultsOnlyEmptyTheirField) {
    struct Case { char const* json; std::optional<ChemicalSystem> system; Lines diagnostics; };
    Case const cases[] = {
        {R"({"id": 1, "topology": {}})", system(1), {}},
        {R"({"label": [], "topology": {"atoms": [{"symbol": "C"}]}})", std::nullopt, {missing("id")}},
        {R"({"id": 4294967296})", std::nullopt, {"error qc.json.id_out_of_range: Entity ID exceeds uint32 range: id"}},
        {R"({"id": 2, "label": 5, "electronic_state": 5, "topology": {"atoms": {"id": 1}}})", system(2, "5"), {}},
        {R"({"id": 2, "label": [], "electronic_state": {"charge": "x"}, "topology": null, "source": null})",
         system(2),
         {invalid("label"), invalid("charge"), missing("multiplicity"),
          "error qc.json.invalid_source_span: Expected a source-span object."}},
        {R"({"id": 2, "electronic_state": {"charge": 0, "multiplicity": -2}, "topology": []})", system(2),
         {invalid("multiplicity")}},
        {R"({"id": 7, "label": "w", "electronic_state": {"charge": -1, "multiplicity": "2"},
             "source": {"source_id": "x"}, "topology": {"atoms": [
               {"id": 1, "symbol": "Fe"}, {"symbol": "O", "raw_label": []}, {"id": 2, "raw_label": "X"},
               {"id": 3, "symbol": "C", "raw_label": {}, "atomic_number": 70000, "isotope": 0, "formal_charge": -2},
               {"id": 4, "symbol": "H", "raw_label": "H1", "atomic_number": "1", "formal_charge": 1.5},
               {"id": 5, "symbol": "O", "raw_label": ""}, null]}})",
         system(7, "w",
                {{AtomId(1), "Fe", "Fe", {}, {}, {}}, {AtomId(2), "", "X", {}, {}, {}}, {AtomId(3), "C", "C", {}, 0, -2},
                 {AtomId(4), "H", "H1", 1, {}, {}}, {AtomId(5), "O", "", {}, {}, {}}},
                chem::ElectronicState{-1, 2}),
         {missing("id"), missing("symbol"), invalid("raw_label"), invalid("atomic_number"), invalid("formal_charge"),
          missing("id"), invalid("source_id")}},
    };
    for (auto const& c : cases) {
        SCOPED_TRACE(c.json);
        DocumentResult result;
        EXPECT_EQ(read_system(result, load_text(c.json)), c.system);
        EXPECT_EQ(describe(result.diagnostics), c.diagnostics);
    }
}

TEST(Systems, AUsableSystemWithoutATopologyObjectOrWithAScalarAtomEndsTheDecode) {
    DocumentResult result;
    EXPECT_THROW(read_system(result, load_text(R"({"id": 1})")), YAML::InvalidNode);
    EXPECT_THROW(read_system(result, load_text(R"({"id": 1, "topology": "none"})")), YAML::BadSubscript);
    EXPECT_THROW(read_system(result, load_text(R"({"id": 1, "topology": {"atoms": [5]}})")), YAML::BadSubscript);

    auto const failed = deserialize(R"({"schema": "morv.qc.document.v2", "program": {}, "systems": [{"id": 1}]})");
    EXPECT_EQ(describe(failed.diagnostics),
              Lines{"error qc.json.parse_failed: Failed to parse QC JSON: invalid node; first invalid key: \"topology\""});
}

TEST(Systems, EveryFieldTravelsThroughTextAndRawLabelsAreWrittenOnlyWhenTheyDifferFromTheSymbol) {
    ChemicalSystem full = system(4294967295u, "water anion",
                                 {{AtomId(4294967295u), "O", "O1", 8, 18, -1}, {AtomId(0), "H", "H", 1, 0, 0}},
                                 chem::ElectronicState{-1, 2});
    full.source = model::SourceSpan{model::SourceId(3), {1, 2, 3}, {4, 5, 6}};
    std::string const text = compact(write_system(full));
    DocumentResult result;
    auto const read = read_system(result, load_text(text));
    EXPECT_TRUE(result.diagnostics.empty());
    ASSERT_EQ(read, full);
    EXPECT_EQ(compact(write_system(*read)), text);
    std::vector<AtomSite> const atoms{{AtomId(3), "", "", {}, {}, {}}, {AtomId(4), "O", "", {}, {}, {}},
                                      {AtomId(5), "O", "O", {}, {}, {}}};
    EXPECT_EQ(compact(write_system(system(6, "", atoms))),
              R"({"id":6,"topology":{"atoms":[{"id":3,"symbol":""},{"id":4,"symbol":"O"},{"id":5,"symbol":"O"}]}})");
}

}  // namespace
}  // namespace morv::qc::json
