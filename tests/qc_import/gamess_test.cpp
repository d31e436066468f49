#include <morv/qc/import.hpp>
#include <morv/qc/model.hpp>

#include <gtest/gtest.h>

#include "output_test_support.hpp"

#include <string>
#include <tuple>
#include <vector>

namespace morv::qc {
namespace {

using test_support::analyses_of;
using test_support::spanned;

std::string read_output(std::string const& name) { return test_support::read_output(MORV_GAMESS_DATA_DIR, name); }

TEST(GamessOutputs, OptimisationSteps) {
    auto const text = read_output("dvb_gopt_a.out");
    auto const document = import_output(text, "dvb_gopt_a.out").value;
    auto const& first = document.steps.front();
    ASSERT_TRUE(first.gradient && first.convergence);
    // dE/dx of atom 1 as printed, in hartree/bohr.
    auto const& gradient = *first.gradient;
    EXPECT_EQ(std::make_tuple(gradient.vectors[0].x, gradient.vectors[19].y, gradient.max, gradient.rms),
              std::make_tuple(-0.0006827, -0.0001414, 0.0013457, 0.0004696));
    auto const& criteria = first.convergence->criteria;
    ASSERT_EQ(criteria.size(), 2u);
    EXPECT_EQ(std::make_tuple(criteria[0].kind, criteria[0].threshold, criteria[1].value),
              std::make_tuple(CriterionKind::max_force, 1e-4, 0.0004696));
    EXPECT_EQ(std::make_tuple(first.convergence->status, document.steps.back().convergence->status),
              std::make_tuple(ConvergenceStatus::not_converged, ConvergenceStatus::converged));
    EXPECT_EQ(std::make_tuple(first.native_cycle, document.steps.back().native_cycle), std::make_tuple(0, 6));
    // The first point's geometry is the one printed in angstrom at NSERCH=0
    // (line 487), not the input's in bohr.
    auto const& frames = document.frames;
    EXPECT_EQ(std::make_tuple(frames.front().positions_angstrom[0].x, frames.front().source->begin.line,
                              frames.back().positions_angstrom[0].x),
              std::make_tuple(1.4141666009, 487u, 1.4168673288));
    EXPECT_EQ(std::make_tuple(document.systems[0].electronic_state->multiplicity, document.systems[0].label,
                              document.program.input_file_name),
              std::make_tuple(1u, "divinylbenzene", "dvb_gopt_a.inp"));
    auto const& scalars = *analyses_of<ScalarPropertyBlock>(document).front();
    ASSERT_EQ(scalars.properties.size(), 2u);
    EXPECT_EQ(std::make_tuple(scalars.properties[1].key, spanned(text, *scalars.properties[1].source)),
              std::make_tuple("nuclear_repulsion_energy", "445.9370123699"));
}

// The input geometry in bohr, the frame in angstrom.
TEST(GamessOutputs, InputGeometryInBohr) {
    auto const document = import_output(read_output("water_mp2.out"), "water_mp2.out").value;
    EXPECT_DOUBLE_EQ(document.frames[0].positions_angstrom[1].x, 1.8708287278 * 0.529177210903);
    EXPECT_EQ(document.systems[0].electronic_state->charge, 0);
    auto const dipoles = analyses_of<DipoleBlock>(document);
    ASSERT_EQ(dipoles.size(), 2u);
    auto const& mp2 = dipoles[1]->moments[0];
    EXPECT_EQ(std::make_tuple(mp2.method, mp2.magnitude_debye), std::make_tuple("MP2", 1.599447));
    EXPECT_DOUBLE_EQ(mp2.atomic_units.x, 0.962571 / 2.541746473);
    auto const charges = analyses_of<AtomicChargeBlock>(document);
    ASSERT_EQ(charges.size(), 4u);
    EXPECT_EQ(std::make_tuple(charges[2]->scheme, charges[2]->records[0].charge, charges[3]->scheme,
                              charges[3]->records[2].population),
              std::make_tuple("Mulliken", -0.319889, "Lowdin", 0.889422));
    auto const& orbitals = analyses_of<OrbitalSetBlock>(document).front()->orbitals;
    ASSERT_EQ(orbitals.size(), 7u);
    EXPECT_EQ(std::make_tuple(orbitals[4].occupation, orbitals[5].occupation, orbitals[6].energy),
              std::make_tuple(2.0, 0.0, 0.7086));
}

// A transition state: its imaginary mode first, the six of translation and
// rotation GAMESS names left out, intensities in km/mol.
TEST(GamessOutputs, FrequenciesOfATransitionState) {
    auto const result = import_output(read_output("nh3_ts_ir.out"), "nh3_ts_ir.out");
    auto const& modes = analyses_of<VibrationalBlock>(result.value).front()->modes;
    ASSERT_EQ(modes.size(), 6u);
    EXPECT_EQ(std::make_tuple(modes[0].frequency_cm1, modes[0].index, modes[1].index, modes[0].reduced_mass_amu),
              std::make_tuple(-825.18, 1, 8, 1.20753));
    EXPECT_NEAR(*modes[0].ir_intensity_km_per_mol, 21.64357 * 42.25606, 1e-3);
    EXPECT_EQ(modes[5].displacements[3].x, 0.57700408);
    auto const& thermo = *analyses_of<ThermochemistryBlock>(result.value).front();
    EXPECT_EQ(std::make_tuple(thermo.temperature_kelvin, thermo.pressure_atmosphere, thermo.zero_point_energy),
              std::make_tuple(298.15, 1.0, 0.032631));
    EXPECT_DOUBLE_EQ(*thermo.gibbs_correction, 35.938 / 2625.4996394799);
    EXPECT_DOUBLE_EQ(*thermo.total_mass_amu, 14.00307 + 3 * 1.00782);
    EXPECT_DOUBLE_EQ(*thermo.gibbs_free_energy, -9.1286961082 + 35.938 / 2625.4996394799);
    ASSERT_EQ(result.diagnostics.size(), 1u);
    auto const& warning = result.diagnostics[0];
    EXPECT_EQ(std::make_tuple(warning.code, warning.source->begin.line, warning.source->end.line),
              std::make_tuple("gamess.warning", 1987u, 1989u));
}

TEST(GamessOutputs, ExcitedStates) {
    auto const cis = import_output(read_output("water_cis_dets.out"), "cis.out").value;
    auto const& block = *analyses_of<ExcitedStateBlock>(cis).front();
    ASSERT_EQ(block.states.size(), 10u);
    auto const& second = block.states[1];
    EXPECT_EQ(std::make_tuple(second.multiplicity, second.total_energy, second.excitation_energy,
                              second.reported_wavenumber_cm1, second.oscillator_strength),
              std::make_tuple(1, -74.5150077566, 0.4493210354, 98614.57, 0.001677));
    EXPECT_EQ(std::make_tuple(block.states[0].multiplicity, block.states[0].oscillator_strength),
              std::make_tuple(3, 0.0));
    ASSERT_EQ(block.states[2].contributions.size(), 6u);
    auto const& contribution = block.states[2].contributions[3];
    EXPECT_EQ(std::make_tuple(contribution.from_spin, contribution.coefficient), std::make_tuple('B', -0.07179490));

    auto const tddft = import_output(read_output("dvb_td_trplet.out"), "td.out").value;
    auto const& triplets = *analyses_of<ExcitedStateBlock>(tddft).front();
    ASSERT_EQ(triplets.states.size(), 5u);
    EXPECT_EQ(std::make_tuple(triplets.states[0].multiplicity, triplets.states[0].excitation_energy,
                              triplets.states[3].total_energy),
              std::make_tuple(3, 2.623204 / 27.211386245988, -381.8783889749));
    ASSERT_EQ(triplets.states[2].contributions.size(), 12u);
    auto const& excitation = triplets.states[2].contributions[3];
    EXPECT_EQ(std::make_tuple(excitation.from_orbital, excitation.to_orbital, excitation.coefficient),
              std::make_tuple(34, 37, 0.760217));
}

// Occupations from the electron counts (three alpha, two beta): an
// unrestricted run prints each spin's set after its heading, filled to its
// own count; a restricted open-shell one, a single set with one singly
// occupied orbital.
TEST(GamessOutputs, OrbitalOccupations) {
    struct Case {
        char const* scf;
        char const* heading;
        SpinChannel spin;
        std::vector<double> occupations;
    };
    Case const cases[] = {
        {"UHF", "  ----- BETA SET -----\n", SpinChannel::beta, {1, 1, 0, 0}},
        {"UHF", "  ----- ALPHA SET -----\n", SpinChannel::alpha, {1, 1, 1, 0}},
        {"ROHF", "", SpinChannel::none, {2, 2, 1, 0}},
    };
    for (auto const& c : cases) {
        SCOPED_TRACE(std::string(c.scf) + " " + c.heading);
        auto const text = std::string(" GAMESS VERSION = 30 SEP 2018 (R3)\n"
                                      " NUMBER OF OCCUPIED ORBITALS (ALPHA)          =    3\n"
                                      " NUMBER OF OCCUPIED ORBITALS (BETA )          =    2\n"
                                      "     $CONTRL OPTIONS\n"
                                      "     ---------------\n"
                                      " SCFTYP=") +
                          c.scf + "          RUNTYP=ENERGY       EXETYP=RUN\n\n" + c.heading +
                          "          EIGENVECTORS\n"
                          "          ------------\n"
                          "\n"
                          "                      1          2          3          4\n"
                          "                  -10.5000    -0.5000    -0.2500     0.2500\n"
                          "                     A          A          A          A\n"
                          "    1  C  1  S    0.994203  -0.234218  -0.000000   0.100000\n"
                          "\n"
                          " ...... END OF SCF CALCULATION ......\n"
                          " EXECUTION OF GAMESS TERMINATED NORMALLY\n";
        auto const result = import_output(text, "o.out");
        EXPECT_EQ(result.status, model::ParseStatus::complete);
        auto const sets = analyses_of<OrbitalSetBlock>(result.value);
        ASSERT_EQ(sets.size(), 1u);
        EXPECT_EQ(sets[0]->spin, c.spin);
        ASSERT_EQ(sets[0]->orbitals.size(), 4u);
        EXPECT_EQ(sets[0]->orbitals[1].energy, -0.5);
        for (std::size_t i = 0; i < 4; ++i) {
            EXPECT_EQ(sets[0]->orbitals[i].occupation, c.occupations[i]) << i;
        }
        EXPECT_EQ(result.value.jobs[0].method, c.scf);
        EXPECT_TRUE(validate_document(result.value).empty());
    }
}

}  // namespace
}  // namespace morv::qc
