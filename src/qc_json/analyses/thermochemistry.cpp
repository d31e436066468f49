#include "analyses/thermochemistry.hpp"

#include "analyses/number_fields.hpp"

#include <array>

namespace morv::qc::json {
namespace {

using Field = NumberField<ThermochemistryBlock>;

constexpr std::array<Field, 3> conditions = {{
    {"temperature_kelvin", &ThermochemistryBlock::temperature_kelvin},
    {"pressure_atmosphere", &ThermochemistryBlock::pressure_atmosphere},
    {"total_mass_amu", &ThermochemistryBlock::total_mass_amu},
}};
constexpr auto condition_order = byte_order(conditions);

// Energies are energy value objects, never plain numbers.
constexpr std::array<Field, 9> energies = {{
    {"electronic_energy", &ThermochemistryBlock::electronic_energy},
    {"zero_point_energy", &ThermochemistryBlock::zero_point_energy},
    {"thermal_energy", &ThermochemistryBlock::thermal_energy},
    {"thermal_correction", &ThermochemistryBlock::thermal_correction},
    {"enthalpy", &ThermochemistryBlock::enthalpy},
    {"enthalpy_correction", &ThermochemistryBlock::enthalpy_correction},
    {"entropy_correction", &ThermochemistryBlock::entropy_correction},
    {"gibbs_free_energy", &ThermochemistryBlock::gibbs_free_energy},
    {"gibbs_correction", &ThermochemistryBlock::gibbs_correction},
}};
constexpr auto energy_order = byte_order(energies);

}  // namespace

ThermochemistryBlock read_thermochemistry_block(DocumentResult& result, Node const& node) {
    ThermochemistryBlock block;
    Node const values = node["values"];
    read_number_fields(result, values, block, conditions);
    read_energy_fields(result, values, block, energies);
    return block;
}

void write_thermochemistry_block(JsonPrinter& printer, ThermochemistryBlock const& block) {
    NumberMembers<ThermochemistryBlock, conditions.size()> numbers(block, conditions, condition_order);
    EnergyMembers<ThermochemistryBlock, energies.size()> energy_values(block, energies, energy_order);
    MergedSources<2> values({&numbers, &energy_values});
    printer.key("values");
    printer.begin_object(values);
    printer.end_object();
}

}  // namespace morv::qc::json
