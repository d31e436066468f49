#include <morv/qc/import.hpp>
#include <morv/qc/json/codec.hpp>
#include <morv/qc/model.hpp>

#include <gtest/gtest.h>

#include "output_test_support.hpp"

#include <string>
#include <vector>

namespace morv::qc {
namespace {

using test_support::analyses_of;
using test_support::primary_energy;
using test_support::spanned;

std::string read_output(std::string const& name) { return test_support::read_output(MORV_GAMESS_DATA_DIR, name); }

struct Expected {
    char const* file;
    std::size_t atoms;
    std::size_t steps;
    char const* method;
    char const* basis;
    TaskKind task;
    double final_energy;
    char const* final_label;
    std::uint64_t final_line;
    std::size_t modes;
    std::size_t excited_states;
};

constexpr Expected outputs[] = {
    {"water_mp2.out", 3, 1, "MP2", "STO-3G", TaskKind::single_point, -75.0022821133, "E(MP2)", 514, 0, 0},
    {"water_ccsdt.out", 3, 1, "CCSD(T)", "6-31G(d,p)", TaskKind::single_point, -76.2299053356, "CCSD(T)", 804, 0, 0},
    {"water_cis_dets.out", 3, 1, "CIS", "STO-3G", TaskKind::excited_state, -74.5903204319, "CIS state 1", 526, 0, 10},
    {"nh3_ts_ir.out", 4, 1, "AM1", "", TaskKind::frequency, -9.1286961082, "FINAL ENERGY", 311, 6, 0},
    {"dvb_gopt_a.out", 20, 7, "B3LYP", "STO-3G", TaskKind::optimization, -382.0506677654, "FINAL ENERGY", 3216, 0, 0},
    {"dvb_td_trplet.out", 20, 1, "B3LYP", "STO-3G", TaskKind::excited_state, -381.9542288095, "TDDFT state 1", 2068,
     0, 5},
};

TEST(GamessOutputs, ReadAsPrinted) {
    for (auto const& expected : outputs) {
        SCOPED_TRACE(expected.file);
        auto const text = read_output(expected.file);
        auto const result = import_output(text, expected.file);
        auto const& document = result.value;
        EXPECT_EQ(result.status, model::ParseStatus::complete);
        EXPECT_EQ(document.program.kind, ProgramKind::gamess);
        EXPECT_EQ(document.program.version, "30 SEP 2018 (R3)");
        EXPECT_EQ(document.program.termination.kind, TerminationKind::normal);
        // The input that the script copied for GAMESS is the second source.
        ASSERT_EQ(document.sources.size(), 2u);
        EXPECT_EQ(document.sources[0].size_bytes, text.size());
        EXPECT_EQ(document.sources[1].path, document.program.input_file_name);
        ASSERT_EQ(document.jobs.size(), 1u);
        EXPECT_EQ(document.jobs[0].method, expected.method);
        EXPECT_EQ(document.jobs[0].basis_set, expected.basis);
        EXPECT_EQ(document.jobs[0].primary_task, expected.task);
        ASSERT_EQ(document.systems.size(), 1u);
        EXPECT_EQ(document.systems[0].topology.atoms.size(), expected.atoms);
        EXPECT_EQ(document.steps.size(), expected.steps);
        EXPECT_EQ(document.frames.size(), expected.steps);
        auto const& energy = primary_energy(document.steps.back());
        EXPECT_EQ(energy.value, expected.final_energy);
        EXPECT_EQ(energy.label, expected.final_label);
        EXPECT_EQ(energy.source->begin.line, expected.final_line);
        auto const vibrations = analyses_of<VibrationalBlock>(document);
        EXPECT_EQ(vibrations.empty() ? 0u : vibrations.front()->modes.size(), expected.modes);
        std::size_t states = 0;
        for (auto const* block : analyses_of<ExcitedStateBlock>(document)) {
            states += block->states.size();
        }
        EXPECT_EQ(states, expected.excited_states);
        // Every energy's span covers the number it was read from.
        for (auto const& step : document.steps) {
            for (auto const& each : step.energies) {
                EXPECT_EQ(std::stod(spanned(text, *each.source)), each.value) << each.label;
            }
        }
        EXPECT_EQ(spanned(text, *document.program.termination.source).substr(0, 39),
                  "EXECUTION OF GAMESS TERMINATED NORMALLY");
        EXPECT_TRUE(validate_document(document).empty());
        EXPECT_EQ(json::deserialize(json::serialize(document, {})).value, document);
    }
}

TEST(GamessOutputs, OptimisationSteps) {
    auto const text = read_output("dvb_gopt_a.out");
    auto const document = import_output(text, "dvb_gopt_a.out").value;
    auto const& first = document.steps.front();
    ASSERT_TRUE(first.gradient && first.convergence);
    // dE/dx of atom 1 as printed, in hartree/bohr.
    EXPECT_EQ(first.gradient->vectors[0].x, -0.0006827);
    EXPECT_EQ(first.gradient->vectors[19].y, -0.0001414);
    EXPECT_EQ(first.gradient->max, 0.0013457);
    EXPECT_EQ(first.gradient->rms, 0.0004696);
    EXPECT_EQ(first.convergence->status, ConvergenceStatus::not_converged);
    ASSERT_EQ(first.convergence->criteria.size(), 2u);
    EXPECT_EQ(first.convergence->criteria[0].kind, CriterionKind::max_force);
    EXPECT_EQ(first.convergence->criteria[0].threshold, 1e-4);
    EXPECT_EQ(first.convergence->criteria[1].value, 0.0004696);
    EXPECT_EQ(document.steps.back().convergence->status, ConvergenceStatus::converged);
    EXPECT_EQ(first.native_cycle, 0);
    EXPECT_EQ(document.steps.back().native_cycle, 6);
    // The first point's geometry is the one printed in angstrom at NSERCH=0
    // (line 487), not the input's in bohr.
    EXPECT_EQ(document.frames.front().positions_angstrom[0].x, 1.4141666009);
    EXPECT_EQ(document.frames.front().source->begin.line, 487u);
    EXPECT_EQ(document.frames.back().positions_angstrom[0].x, 1.4168673288);
    EXPECT_EQ(document.systems[0].electronic_state->multiplicity, 1u);
    EXPECT_EQ(document.systems[0].label, "divinylbenzene");
    EXPECT_EQ(document.program.input_file_name, "dvb_gopt_a.inp");
    auto const& scalars = *analyses_of<ScalarPropertyBlock>(document).front();
    ASSERT_EQ(scalars.properties.size(), 2u);
    EXPECT_EQ(scalars.properties[1].key, "nuclear_repulsion_energy");
    EXPECT_EQ(spanned(text, *scalars.properties[1].source), "445.9370123699");
}

// The input geometry in bohr, the frame in angstrom.
TEST(GamessOutputs, InputGeometryInBohr) {
    auto const document = import_output(read_output("water_mp2.out"), "water_mp2.out").value;
    EXPECT_DOUBLE_EQ(document.frames[0].positions_angstrom[1].x, 1.8708287278 * 0.529177210903);
    EXPECT_EQ(document.systems[0].electronic_state->charge, 0);
    auto const dipoles = analyses_of<DipoleBlock>(document);
    ASSERT_EQ(dipoles.size(), 2u);
    EXPECT_EQ(dipoles[1]->moments[0].method, "MP2");
    EXPECT_EQ(dipoles[1]->moments[0].magnitude_debye, 1.599447);
    EXPECT_DOUBLE_EQ(dipoles[1]->moments[0].atomic_units.x, 0.962571 / 2.541746473);
    auto const charges = analyses_of<AtomicChargeBlock>(document);
    ASSERT_EQ(charges.size(), 4u);
    EXPECT_EQ(charges[2]->scheme, "Mulliken");
    EXPECT_EQ(charges[2]->records[0].charge, -0.319889);
    EXPECT_EQ(charges[3]->scheme, "Lowdin");
    EXPECT_EQ(charges[3]->records[2].population, 0.889422);
    auto const& orbitals = *analyses_of<OrbitalSetBlock>(document).front();
    ASSERT_EQ(orbitals.orbitals.size(), 7u);
    EXPECT_EQ(orbitals.orbitals[4].occupation, 2.0);
    EXPECT_EQ(orbitals.orbitals[5].occupation, 0.0);
    EXPECT_EQ(orbitals.orbitals[6].energy, 0.7086);
}

// A transition state: its imaginary mode first, the six of translation and
// rotation GAMESS names left out, intensities in km/mol.
TEST(GamessOutputs, FrequenciesOfATransitionState) {
    auto const result = import_output(read_output("nh3_ts_ir.out"), "nh3_ts_ir.out");
    auto const& modes = analyses_of<VibrationalBlock>(result.value).front()->modes;
    ASSERT_EQ(modes.size(), 6u);
    EXPECT_EQ(modes[0].frequency_cm1, -825.18);
    EXPECT_EQ(modes[0].index, 1);
    EXPECT_EQ(modes[1].index, 8);
    EXPECT_EQ(modes[0].reduced_mass_amu, 1.20753);
    EXPECT_NEAR(*modes[0].ir_intensity_km_per_mol, 21.64357 * 42.25606, 1e-3);
    EXPECT_EQ(modes[5].displacements[3].x, 0.57700408);
    auto const& thermo = *analyses_of<ThermochemistryBlock>(result.value).front();
    EXPECT_EQ(thermo.temperature_kelvin, 298.15);
    EXPECT_EQ(thermo.pressure_atmosphere, 1.0);
    EXPECT_EQ(thermo.zero_point_energy, 0.032631);
    EXPECT_DOUBLE_EQ(*thermo.gibbs_correction, 35.938 / 2625.4996394799);
    EXPECT_DOUBLE_EQ(*thermo.total_mass_amu, 14.00307 + 3 * 1.00782);
    EXPECT_DOUBLE_EQ(*thermo.gibbs_free_energy, -9.1286961082 + 35.938 / 2625.4996394799);
    ASSERT_EQ(result.diagnostics.size(), 1u);
    EXPECT_EQ(result.diagnostics[0].code, "gamess.warning");
    EXPECT_EQ(result.diagnostics[0].source->begin.line, 1987u);
    EXPECT_EQ(result.diagnostics[0].source->end.line, 1989u);
}

TEST(GamessOutputs, ExcitedStates) {
    auto const cis = import_output(read_output("water_cis_dets.out"), "cis.out").value;
    auto const& block = *analyses_of<ExcitedStateBlock>(cis).front();
    ASSERT_EQ(block.states.size(), 10u);
    auto const& second = block.states[1];
    EXPECT_EQ(second.multiplicity, 1);
    EXPECT_EQ(second.total_energy, -74.5150077566);
    EXPECT_EQ(second.excitation_energy, 0.4493210354);
    EXPECT_EQ(second.reported_wavenumber_cm1, 98614.57);
    EXPECT_EQ(second.oscillator_strength, 0.001677);
    EXPECT_EQ(block.states[0].multiplicity, 3);
    EXPECT_EQ(block.states[0].oscillator_strength, 0.0);
    ASSERT_EQ(block.states[2].contributions.size(), 6u);
    EXPECT_EQ(block.states[2].contributions[3].from_spin, 'B');
    EXPECT_EQ(block.states[2].contributions[3].coefficient, -0.07179490);

    auto const tddft = import_output(read_output("dvb_td_trplet.out"), "td.out").value;
    auto const& triplets = *analyses_of<ExcitedStateBlock>(tddft).front();
    ASSERT_EQ(triplets.states.size(), 5u);
    EXPECT_EQ(triplets.states[0].multiplicity, 3);
    EXPECT_EQ(triplets.states[0].excitation_energy, 2.623204 / 27.211386245988);
    EXPECT_EQ(triplets.states[3].total_energy, -381.8783889749);
    ASSERT_EQ(triplets.states[2].contributions.size(), 12u);
    EXPECT_EQ(triplets.states[2].contributions[3].from_orbital, 34);
    EXPECT_EQ(triplets.states[2].contributions[3].to_orbital, 37);
    EXPECT_EQ(triplets.states[2].contributions[3].coefficient, 0.760217);
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

TEST(GamessOutputs, ErrorTermination) {
    auto text = read_output("water_mp2.out");
    text = text.substr(0, text.find(" EXECUTION OF GAMESS TERMINATED")) +
           " SCF DID NOT CONVERGE...NO MPLEVL=2 CALCULATION\n"
           " EXECUTION OF GAMESS TERMINATED -ABNORMALLY- AT Mon Aug  5 13:05:47 2019\n";
    auto const result = import_output(text, "failed.out");
    EXPECT_EQ(result.status, model::ParseStatus::complete);
    auto const& termination = result.value.program.termination;
    EXPECT_EQ(termination.kind, TerminationKind::error);
    EXPECT_EQ(termination.reason, "SCF DID NOT CONVERGE...NO MPLEVL=2 CALCULATION");
    EXPECT_EQ(spanned(text, *termination.source), termination.reason);
    ASSERT_FALSE(result.diagnostics.empty());
    EXPECT_EQ(result.diagnostics.back().code, "gamess.error_termination");
}

// An optimisation's first frame is the input's geometry until GAMESS prints
// it again in angstrom: the last frame of a cut output may still change.
TEST(GamessOutputs, EveryPrefixReturns) {
    for (char const* file : {"dvb_gopt_a.out", "water_cis_dets.out", "nh3_ts_ir.out", "dvb_td_trplet.out"}) {
        test_support::expect_every_prefix_imports(read_output(file), file, "EXECUTION OF GAMESS TERMINATED",
                                                  "gamess.truncated", 1);
    }
}

}  // namespace
}  // namespace morv::qc
