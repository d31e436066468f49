#include "sections/energy.hpp"
#include "support/json_text.hpp"

#include <utility>

namespace morv::qc::json {
namespace {

using namespace morv::testing;

TEST(EnergyValue, WritesDerivedUnitsAndAWavelengthOnlyForAnEnergyAboveZero) {
    std::pair<double, std::string> const cases[] = {
        {-76.4, R"({"electron_volt":-2078.9499091934831,"hartree":-76.400000000000006,"wavenumber_cm1":-16767861.83614848})"},
        {0.0, zero_energy},
        {0.1, R"({"electron_volt":2.7211386245988001,"hartree":0.10000000000000001,"wavelength_nm":455.63352529120147,)"
              R"("wavenumber_cm1":21947.463136320002})"},
        {inf, R"({"electron_volt":null,"hartree":null,"wavelength_nm":0,"wavenumber_cm1":null})"},
        {nan, R"({"electron_volt":null,"hartree":null,"wavelength_nm":null,"wavenumber_cm1":null})"},
    };
    for (auto const& [hartree, text] : cases) {
        EXPECT_EQ(compact(write_energy_value, hartree), text) << hartree;
    }
}

TEST(EnergyRecords, IdAndValueAreBothReadAndEitherDropsTheRecord) {
    expect_reads(read_energy_record, {
        {"{}", std::nullopt, {missing("id"), bad_energy}},
        {R"({"id": 4294967296, "value": {"electron_volt": 1}})", std::nullopt, {out_of_range("id"), missing("hartree")}},
        {R"({"id": 1, "value": null, "kind": [], "source": 5})", std::nullopt, {bad_energy}},
        {"5", std::nullopt, {bad_energy_record}},
        {R"({"source": null, "method": [], "label": 5, "kind": "Electronic", "value": {"hartree": -1.5, "electron_volt": 9},
             "id": 2})",
         EnergyRecord{EnergyId(2), EnergyKind::unknown, "5", "", -1.5, std::nullopt}, {invalid("method"), bad_span}},
    });
}

TEST(EnergyRecords, WritesEveryKeyAndTheValueInEachUnit) {
    EXPECT_EQ(compact(write_energy_record, EnergyRecord{}), R"({"id":0,"kind":"unknown","value":)" + zero_energy + "}");
    EnergyRecord const record{EnergyId(45), EnergyKind::gibbs_free, "G", "B3LYP", -0.5, some_span};
    EXPECT_EQ(compact(write_energy_record, record),
              R"({"id":45,"kind":"gibbs_free","label":"G","method":"B3LYP","source":{"begin":)"
              R"({"column":3,"line":2,"offset":1},"end":{"column":6,"line":5,"offset":4},"source_id":2},)"
              R"("value":{"electron_volt":-13.605693122993999,"hartree":-0.5,"wavenumber_cm1":-109737.3156816}})");
}

}  // namespace
}  // namespace morv::qc::json
