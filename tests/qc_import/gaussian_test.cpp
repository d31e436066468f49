#include <morv/qc/import.hpp>
#include <morv/qc/model.hpp>

#include <gtest/gtest.h>

#include "output_test_support.hpp"

#include <string>
#include <tuple>

namespace morv::qc {
namespace {

using test_support::analyses_of;
using test_support::primary_energy;
using test_support::spanned;

std::string read_output(std::string const& name) { return test_support::read_output(MORV_GAUSSIAN_DATA_DIR, name); }

// Gaussian breaks a long route over lines anywhere, inside a word too.
TEST(GaussianOutputs, RouteOverTwoLines) {
    auto const document = import_output(read_output("water_hf_solvent_cpcm.log"), "water.log").value;
    EXPECT_EQ(document.jobs[0].keywords, "#p SP HF/STO-3G SCF=(DIIS) Symmetry=(Tight) SCRF=(CPCM, Solvent=Toluene)");
}

// An output with Windows line ends reads as the same document, with spans
// into its own bytes.
TEST(GaussianOutputs, CarriageReturns) {
    auto const text = read_output("water_mp2.log");
    std::string crlf;
    for (char c : text) {
        crlf += c == '\n' ? std::string("\r\n") : std::string(1, c);
    }
    auto const plain = import_output(text, "w.log").value;
    auto const windows = import_output(crlf, "w.log").value;
    ASSERT_EQ(windows.steps.size(), plain.steps.size());
    EXPECT_EQ(windows.steps[0].energies.size(), plain.steps[0].energies.size());
    auto const& energy = primary_energy(windows.steps[0]);
    EXPECT_EQ(energy.value, -75.002282127454);
    EXPECT_EQ(spanned(crlf, *energy.source), "-0.75002282127454D+02");
    EXPECT_EQ(windows.frames.at(0).positions_angstrom, plain.frames.at(0).positions_angstrom);
}

TEST(GaussianOutputs, OptimisationSteps) {
    auto const text = read_output("dvb_gopt.out");
    auto const document = import_output(text, "dvb_gopt.out").value;
    auto const& first = document.steps.front();
    ASSERT_TRUE(first.gradient && first.convergence);
    // The printed force on atom 1, (-0.050454775, 0, 0.000584594) in the
    // input orientation, negated and turned into the standard orientation
    // (checked with an SVD superposition of the two printed geometries).
    auto const& force = first.gradient->vectors[0];
    EXPECT_NEAR(force.x, -0.024825690245, 1e-11);
    EXPECT_NEAR(force.y, -0.043928477942, 1e-11);
    EXPECT_NEAR(force.z, 0.0, 1e-11);
    EXPECT_EQ(std::make_tuple(first.gradient->max, first.gradient->rms), std::make_tuple(0.050454775, 0.015077523));
    auto const& criteria = first.convergence->criteria;
    ASSERT_EQ(criteria.size(), 4u);
    EXPECT_EQ(fields_of(criteria[0]),
              fields_of(ConvergenceCriterion{CriterionKind::max_force, 0.060680, 0.000450, false, "hartree/bohr"}));
    EXPECT_EQ(criteria[3].value, 0.138777);
    EXPECT_EQ(std::make_tuple(first.convergence->status, document.steps.back().convergence->status),
              std::make_tuple(ConvergenceStatus::not_converged, ConvergenceStatus::converged));
    EXPECT_EQ(std::make_tuple(first.native_cycle, document.steps.back().native_cycle), std::make_tuple(1, 5));
    auto const& frame = document.frames.front();
    EXPECT_EQ(std::make_tuple(frame.positions_angstrom[0].x, frame.source->begin.line),
              std::make_tuple(1.205666, 410u));
    auto const& system = document.systems[0];
    EXPECT_EQ(std::make_tuple(system.electronic_state->multiplicity, system.label),
              std::make_tuple(1u, "Title Card Required"));
    auto const& scalars = *analyses_of<ScalarPropertyBlock>(document).front();
    ASSERT_EQ(scalars.properties.size(), 2u);
    auto const& repulsion = scalars.properties[1];
    EXPECT_EQ(std::make_tuple(repulsion.key, repulsion.value, spanned(text, *repulsion.source)),
              std::make_tuple("nuclear_repulsion_energy", 455.3072831857, "455.3072831857"));
}

TEST(GaussianOutputs, AnalysesOfAFrequencyJob) {
    auto const result = import_output(read_output("dvb_raman.out"), "dvb_raman.out");
    auto const& document = result.value;
    auto const& mode = analyses_of<VibrationalBlock>(document).front()->modes.back();
    EXPECT_EQ(std::make_tuple(mode.symmetry, mode.raman_activity), std::make_tuple("AG", 137.6843));
    auto const& thermo = *analyses_of<ThermochemistryBlock>(document).front();
    EXPECT_EQ(std::make_tuple(thermo.temperature_kelvin, thermo.zero_point_energy, thermo.gibbs_free_energy),
              std::make_tuple(298.15, 0.177131, -382.164919));
    ASSERT_EQ(analyses_of<OrbitalSetBlock>(document).size(), 1u);
    auto const& orbitals = analyses_of<OrbitalSetBlock>(document).front()->orbitals;
    ASSERT_EQ(orbitals.size(), 60u);
    EXPECT_EQ(std::make_tuple(orbitals[34].occupation, orbitals[35].occupation), std::make_tuple(2.0, 0.0));
    // The APT charges, without the table of hydrogens summed into heavy atoms.
    std::size_t apt_blocks = 0;
    for (auto const& block : document.analyses) {
        auto const* charges = std::get_if<AtomicChargeBlock>(&block.payload);
        if (charges == nullptr || charges->scheme != "APT") {
            continue;
        }
        ++apt_blocks;
        ASSERT_EQ(charges->records.size(), 20u);
        auto const& records = charges->records;
        EXPECT_EQ(std::make_tuple(records.front().charge, records.back().charge, records.back().element),
                  std::make_tuple(0.021475, 0.057858, "H"));
        EXPECT_EQ(std::make_tuple(block.source->begin.line, block.source->end.line), std::make_tuple(876u, 898u));
    }
    EXPECT_EQ(apt_blocks, 1u);
    ASSERT_EQ(result.diagnostics.size(), 1u);
    EXPECT_EQ(result.diagnostics[0].code, "gaussian.warning");
    // A warning keeps the lines it goes on over.
    EXPECT_EQ(result.diagnostics[0].message,
              "Warning -- explicit consideration of  11 degrees of freedom as vibrations may cause significant error");
    EXPECT_EQ(std::make_tuple(result.diagnostics[0].source->begin.line, result.diagnostics[0].source->end.line),
              std::make_tuple(1555u, 1556u));
}

TEST(GaussianOutputs, ExcitedStates) {
    auto const document = import_output(read_output("dvb_td.out"), "dvb_td.out").value;
    auto const& block = *analyses_of<ExcitedStateBlock>(document).front();
    EXPECT_EQ(block.method, "TD-HF/TD-DFT");
    auto const& state = block.states.front();
    EXPECT_EQ(std::make_tuple(state.multiplicity, state.symmetry, state.excitation_energy, state.oscillator_strength,
                              state.total_energy),
              std::make_tuple(1, "BU", 5.3351 / 27.211386245988, 0.1707, -382.112205281));
    ASSERT_EQ(state.contributions.size(), 10u);
    EXPECT_EQ(std::make_tuple(state.contributions[3].coefficient, state.contributions[8].reverse),
              std::make_tuple(0.48145, true));
    // Four tables of a row per state: electric and velocity dipoles, and
    // rotatory strengths in both gauges; each row takes its state's energy.
    ASSERT_EQ(block.absorption_peaks.size(), 20u);
    auto const& second = block.absorption_peaks[1];
    EXPECT_EQ(second.spectrum_kind, "Ground to excited state transition electric dipole moments (Au)");
    EXPECT_EQ(second.transition_moment_au, (chem::Vec3{0.0386, 2.2686, 0.0}));
    EXPECT_EQ(std::make_tuple(second.target_state_index, second.strength, second.oscillator_strength,
                              second.excitation_energy, second.source->begin.line),
              std::make_tuple(2, 5.1481, 0.6779, block.states[1].excitation_energy, 592u));
    auto const& last = block.absorption_peaks.back();
    EXPECT_EQ(std::make_tuple(last.spectrum_kind, last.rotatory_strength, last.reported_wavelength_nm),
              std::make_tuple("Rotatory Strengths (R) in cgs (10**-40 erg-esu-cm/Gauss) R(length)", -0.0,
                              block.states[4].reported_wavelength_nm));
}

// CIS(D) prints a total for each of its states after the CIS ones.
TEST(GaussianOutputs, CisDoublesTotals) {
    auto const document = import_output(read_output("water_cisd.log"), "water_cisd.log").value;
    std::vector<EnergyRecord const*> totals;
    for (auto const& energy : document.steps[0].energies) {
        if (energy.method == "CIS(D)") {
            totals.push_back(&energy);
        }
    }
    ASSERT_EQ(totals.size(), 10u);
    EXPECT_EQ(std::make_tuple(totals.back()->label, totals.back()->kind, totals.back()->value),
              std::make_tuple("E(CIS(D)) state 10", EnergyKind::excited_state_total, -74.2785409992));
}

// Eigenvalues fill ten columns each and run together when a value needs them
// all; an unrestricted run prints the beta orbitals after the alpha ones.
TEST(GaussianOutputs, UnrestrictedOrbitalsAndSpinDensities) {
    auto const result = import_output(" Entering Gaussian System, Link 0=g16\n"
                                      " ------------\n"
                                      " #p ub3lyp/sto-3g\n"
                                      " ------------\n"
                                      " Alpha  occ. eigenvalues -- -100.12345-100.54321 -10.12345\n"
                                      " Alpha virt. eigenvalues --    0.50000\n"
                                      "  Beta  occ. eigenvalues -- -100.00001\n"
                                      "  Beta virt. eigenvalues --    0.10000   0.20000\n"
                                      " Mulliken charges and spin densities:\n"
                                      "               1          2\n"
                                      "     1  O   -0.100000   1.000000\n"
                                      " Sum of Mulliken charges =  -0.10000   1.00000\n"
                                      " Normal termination of Gaussian 16\n",
                                      "u.log");
    EXPECT_EQ(result.status, model::ParseStatus::complete);
    auto const sets = analyses_of<OrbitalSetBlock>(result.value);
    ASSERT_EQ(sets.size(), 2u);
    ASSERT_EQ(sets[0]->orbitals.size(), 4u);
    auto const& alpha = sets[0]->orbitals;
    EXPECT_EQ(std::make_tuple(sets[0]->spin, alpha[1].energy, alpha[2].occupation, alpha[3].occupation),
              std::make_tuple(SpinChannel::alpha, -100.54321, 1.0, 0.0));
    EXPECT_EQ(std::make_tuple(sets[1]->spin, sets[1]->orbitals.size()), std::make_tuple(SpinChannel::beta, 3u));
    auto const& charges = analyses_of<AtomicChargeBlock>(result.value).front()->records;
    ASSERT_EQ(charges.size(), 1u);
    EXPECT_EQ(charges[0].spin_population, 1.0);
    EXPECT_TRUE(validate_document(result.value).empty());
}

// A relaxed scan is an optimisation whose route does not say that it scans.
TEST(GaussianOutputs, RelaxedScanFromItsSteps) {
    auto const result = import_output(" Entering Gaussian System, Link 0=g16\n"
                                      " #p b3lyp/sto-3g opt=modredundant\n"
                                      " ------------\n"
                                      " Step number   3 out of a maximum of  100 on scan point     1 out of    13\n"
                                      " Normal termination of Gaussian 16\n",
                                      "scan.log");
    ASSERT_EQ(result.value.jobs.size(), 1u);
    EXPECT_EQ(result.value.jobs[0].tasks, (std::vector<TaskKind>{TaskKind::optimization, TaskKind::scan}));
    EXPECT_EQ(result.value.steps.at(0).native_cycle, 3);
}

// Two outputs one after the other stand for the jobs of a Link1 run.
TEST(GaussianOutputs, Link1JobsFollowEachOther) {
    auto const result = import_output(read_output("dvb_gopt.out") + read_output("dvb_ir.out"), "link1.log");
    auto const& document = result.value;
    EXPECT_EQ(result.status, model::ParseStatus::complete);
    ASSERT_EQ(document.jobs.size(), 2u);
    EXPECT_EQ(std::make_tuple(document.jobs[1].parent_job_id, document.jobs[1].relation, document.jobs[1].step_ids),
              std::make_tuple(JobId(1), JobRelation::link, std::vector<StepId>{StepId(6)}));
    EXPECT_EQ(document.systems.size(), 1u);
    EXPECT_TRUE(validate_document(document).empty());
}

// A job cut short and a whole one after it: the second banner still starts a
// job of its own.
TEST(GaussianOutputs, JobAfterACutOne) {
    auto const first = read_output("water_mp2.log");
    auto const result = import_output(first.substr(0, 20000) + read_output("dvb_td.out"), "joined.log");
    EXPECT_EQ(result.status, model::ParseStatus::partial);
    ASSERT_EQ(result.value.jobs.size(), 2u);
    EXPECT_EQ(std::make_tuple(result.value.jobs[0].termination.kind, result.value.jobs[1].termination.kind),
              std::make_tuple(TerminationKind::truncated, TerminationKind::normal));
    ASSERT_EQ(result.value.systems.size(), 2u);
    EXPECT_EQ(result.value.systems[0].label, "Water");
}

}  // namespace
}  // namespace morv::qc
