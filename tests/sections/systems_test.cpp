#include "sections/systems.hpp"
#include "support/json_text.hpp"

namespace morv::qc::json {
namespace {

using namespace morv::testing;
using chem::AtomId;
using chem::AtomSite;
using chem::ChemicalSystem;

ChemicalSystem system(std::uint32_t id, std::string label = "", std::vector<AtomSite> atoms = {},
                      std::optional<chem::ElectronicState> state = {}) {
    return ChemicalSystem{chem::SystemId(id), std::move(label), {std::move(atoms)}, state, std::nullopt};
}

TEST(Systems, UnusableIdsDropTheirRecordWhileOtherFaultsOnlyEmptyTheirField) {
    expect_reads(read_system, {
        {R"({"label": [], "topology": {"atoms": [{"symbol": "C"}]}})", std::nullopt, {missing("id")}},
        {R"({"id": 4294967296})", std::nullopt, {out_of_range("id")}},
        {R"({"id": 2, "label": 5, "electronic_state": 5, "topology": {"atoms": {"id": 1}}})", system(2, "5"), {}},
        {R"({"id": 2, "label": [], "electronic_state": {"charge": "x"}, "topology": null, "source": null})", system(2),
         {invalid("label"), invalid("charge"), missing("multiplicity"), bad_span}},
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
    });
}

TEST(Systems, AUsableSystemWithoutATopologyObjectOrWithAScalarAtomEndsTheDecode) {
    DocumentResult result;
    EXPECT_THROW(read_system(result, load_text(R"({"id": 1, "topology": "none"})")), YAML::BadSubscript);
    EXPECT_THROW(read_system(result, load_text(R"({"id": 1, "topology": {"atoms": [5]}})")), YAML::BadSubscript);
    EXPECT_EQ(describe(deserialize(document_with(R"("systems": [{"id": 1}])")).diagnostics),
              Lines{parse_failed("invalid node; first invalid key: \"topology\"")});
}

TEST(Systems, RawLabelsAreWrittenOnlyWhenTheyDifferFromTheSymbol) {
    std::vector<AtomSite> const atoms{{AtomId(3), "", "", {}, {}, {}}, {AtomId(4), "O", "", {}, {}, {}},
                                      {AtomId(5), "O", "O", {}, {}, {}}};
    EXPECT_EQ(compact(write_system, system(6, "", atoms)),
              R"({"id":6,"topology":{"atoms":[{"id":3,"symbol":""},{"id":4,"symbol":"O"},{"id":5,"symbol":"O"}]}})");
}

}  // namespace
}  // namespace morv::qc::json
