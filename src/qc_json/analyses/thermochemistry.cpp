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

}  // namespace

ThermochemistryBlock read_thermochemistry_block(DocumentResult& result, Node const& node) {
    ThermochemistryBlock block;
    Node const values = node["values"];
    read_number_fields(result, values, block, conditions);
    read_energy_fields(result, values, block, energies);
    return block;
}

void write_thermochemistry_block(JsonValue& object, ThermochemistryBlock const& block) {
    JsonValue values = make_json_object();
    write_number_fields(values, block, conditions);
    write_energy_fields(values, block, energies);
    object["values"] = std::move(values);
}

}  // namespace morv::qc::json
