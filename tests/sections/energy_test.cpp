#include "core/json_writer.hpp"
#include "sections/energy.hpp"
#include "support/diagnostics.hpp"

#include <gtest/gtest.h>

#include <limits>
#include <sstream>
#include <string>
#include <utility>
#include <vector>

namespace morv::qc::json {
namespace {

using morv::testing::describe;
using Lines = std::vector<std::string>;

std::string compact(JsonValue const& value) {
    std::ostringstream out;
    write_json(out, value, SerializeOptions{});
    return out.str();
}

std::string invalid(std::string const& key) { return "error qc.json.invalid_field: Invalid value for field: " + key; }
std::string const missing_hartree = "error qc.json.missing_field: Missing required field: hartree";
std::string const not_an_energy = "error qc.json.invalid_energy: Expected an energy object.";

TEST(EnergyValue, WritesDerivedUnitsAndAWavelengthOnlyForAnEnergyAboveZero) {
    std::pair<double, char const*> const cases[] = {
        {-76.4, R"({"electron_volt":-2078.9499091934831,"hartree":-76.400000000000006,"wavenumber_cm1":-16767861.83614848})"},
        {0.0, R"({"electron_volt":0,"hartree":0,"wavenumber_cm1":0})"},
        {0.1, R"({"electron_volt":2.7211386245988001,"hartree":0.10000000000000001,"wavelength_nm":455.63352529120147,)"
              R"("wavenumber_cm1":21947.463136320002})"},
        {std::numeric_limits<double>::infinity(),
         R"({"electron_volt":null,"hartree":null,"wavelength_nm":0,"wavenumber_cm1":null})"},
        {std::numeric_limits<double>::quiet_NaN(),
         R"({"electron_volt":null,"hartree":null,"wavelength_nm":null,"wavenumber_cm1":null})"},
    };
    for (auto const& [hartree, text] : cases) {
        EXPECT_EQ(compact(write_energy_value(hartree)), text) << hartree;
    }
}

TEST(EnergyRecords, IdAndValueAreBothReadAndEitherDropsTheRecord) {
    struct Case { char const* json; std::optional<EnergyRecord> record; Lines diagnostics; };
    Case const cases[] = {
        {"{}", std::nullopt, {"error qc.json.missing_field: Missing required field: id", not_an_energy}},
        {R"({"id": 4294967296, "value": {"electron_volt": 1}})",
         std::nullopt,
         {"error qc.json.id_out_of_range: Entity ID exceeds uint32 range: id", missing_hartree}},
        {R"({"id": 1, "value": null, "kind": [], "source": 5})", std::nullopt, {not_an_energy}},
        {R"({"id": 1, "value": {"hartree": null, "electron_volt": null, "wavelength_nm": null}})", std::nullopt,
         {missing_hartree}},
        {"5", std::nullopt, {"error qc.json.invalid_energy_record: Expected an energy-record object."}},
        {R"({"source": null, "method": [], "label": 5, "kind": "Electronic", "value": {"hartree": -1.5, "electron_volt": 9},
             "id": 2})",
         EnergyRecord{EnergyId(2), EnergyKind::unknown, "5", "", -1.5, std::nullopt},
         {invalid("method"), "error qc.json.invalid_source_span: Expected a source-span object."}},
    };
    for (auto const& c : cases) {
        SCOPED_TRACE(c.json);
        DocumentResult result;
        EXPECT_EQ(read_energy_record(result, load_text(c.json)), c.record);
        EXPECT_EQ(describe(result.diagnostics), c.diagnostics);
    }
}

TEST(EnergyRecords, EveryKindAndKeyTravelsThroughText) {
    EXPECT_EQ(compact(write_energy_record(EnergyRecord{})),
              R"({"id":0,"kind":"unknown","value":{"electron_volt":0,"hartree":0,"wavenumber_cm1":0}})");
    model::SourceSpan const span{model::SourceId(1), {1, 2, 3}, {4, 5, 6}};
    for (std::uint32_t kind = 0; kind <= 8; ++kind) {
        SCOPED_TRACE(kind);
        EnergyRecord const record{EnergyId(kind + 40), static_cast<EnergyKind>(kind), "G", "B3LYP", -0.5, span};
        std::string const text = compact(write_energy_record(record));
        DocumentResult result;
        auto const back = read_energy_record(result, load_text(text));
        EXPECT_EQ(back, record);
        EXPECT_TRUE(result.diagnostics.empty());
        EXPECT_EQ(compact(write_energy_record(back.value_or(EnergyRecord{}))), text);
        if (kind == 5) {
            EXPECT_EQ(text, R"({"id":45,"kind":"gibbs_free","label":"G","method":"B3LYP","source":{"begin":)"
                            R"({"column":3,"line":2,"offset":1},"end":{"column":6,"line":5,"offset":4},"source_id":1},)"
                            R"("value":{"electron_volt":-13.605693122993999,"hartree":-0.5,"wavenumber_cm1":-109737.3156816}})");
        }
    }
}

}  // namespace
}  // namespace morv::qc::json
