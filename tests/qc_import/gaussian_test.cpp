#include <morv/qc/import.hpp>
#include <morv/qc/json/codec.hpp>
#include <morv/qc/model.hpp>

#include <gtest/gtest.h>

#include "output_test_support.hpp"

#include <cstdlib>
#include <string>

namespace morv::qc {
namespace {

using test_support::analyses_of;
using test_support::primary_energy;
using test_support::spanned;

std::string read_output(std::string const& name) { return test_support::read_output(MORV_GAUSSIAN_DATA_DIR, name); }

struct Expected {
    char const* file;
    char const* version;
    char const* input;
    std::size_t atoms;
    std::size_t steps;
    char const* method;
    TaskKind task;
    double final_energy;
    char const* final_label;
    std::uint64_t final_line;
    std::size_t modes;
    double first_frequency;
    double last_frequency;
    std::size_t excited_states;
};

constexpr Expected outputs[] = {
    {"dvb_gopt.out", "16 Revision A.03", "", 20, 5, "B3LYP", TaskKind::optimization, -382.308266602, "SCF Done", 2785, 0, 0, 0, 0},
    {"dvb_ir.out", "16 Revision A.03", "", 20, 1, "B3LYP", TaskKind::frequency, -382.308266602, "SCF Done", 0, 54, 53.1981, 3548.3320, 0},
    {"dvb_raman.out", "16 Revision A.03", "", 20, 1, "RB3LYP", TaskKind::frequency, -382.308266561, "SCF Done", 0, 54, 53.1117, 3548.4260,
     0},
    {"dvb_td.out", "16 Revision A.03", "", 20, 1, "B3LYP", TaskKind::excited_state, -382.112205281, "E(TD-HF/TD-DFT)", 655, 0, 0, 0, 5},
    {"water_mp2.log", "16 Revision A.03", "", 3, 1, "MP2", TaskKind::single_point, -75.002282127454, "EUMP2", 342, 0, 0, 0, 0},
    {"water_ccsdt.log", "16 Revision A.03", "", 3, 1, "CCSD(T)", TaskKind::single_point, -75.017760422, "CCSD(T)",
     437, 0, 0, 0, 0},
    {"water_cisd.log", "16 Revision A.03", "", 3, 1, "CIS(D)", TaskKind::excited_state, -74.6308293204,
     "E(CIS(D)) state 1", 545, 0, 0, 0, 10},
    {"water_hf_solvent_cpcm.log", "16 Revision C.01", "water.com", 3, 1, "HF", TaskKind::single_point,
     -74.9667426458, "SCF Done", 348, 0, 0, 0, 0},
};

TEST(GaussianOutputs, ReadAsPrinted) {
    for (auto const& expected : outputs) {
        SCOPED_TRACE(expected.file);
        auto const text = read_output(expected.file);
        auto const result = import_output(text, expected.file);
        auto const& document = result.value;
        EXPECT_EQ(result.status, model::ParseStatus::complete);
        EXPECT_EQ(document.program.kind, ProgramKind::gaussian);
        EXPECT_EQ(document.program.version, expected.version);
        EXPECT_EQ(document.program.input_file_name, expected.input);
        EXPECT_EQ(document.program.termination.kind, TerminationKind::normal);
        // The input, where Gaussian names it, is the second source.
        ASSERT_EQ(document.sources.size(), *expected.input == '\0' ? 1u : 2u);
        EXPECT_EQ(document.sources[0].path, expected.file);
        EXPECT_EQ(document.sources[0].size_bytes, text.size());
        ASSERT_EQ(document.jobs.size(), 1u);
        EXPECT_EQ(document.jobs[0].method, expected.method);
        EXPECT_EQ(document.jobs[0].basis_set, "STO-3G");
        EXPECT_EQ(document.jobs[0].primary_task, expected.task);
        ASSERT_EQ(document.systems.size(), 1u);
        EXPECT_EQ(document.systems[0].topology.atoms.size(), expected.atoms);
        EXPECT_EQ(document.steps.size(), expected.steps);
        EXPECT_EQ(document.frames.size(), expected.steps);
        auto const& energy = primary_energy(document.steps.back());
        EXPECT_EQ(energy.value, expected.final_energy);
        EXPECT_EQ(energy.label, expected.final_label);
        if (expected.final_line != 0) {
            EXPECT_EQ(energy.source->begin.line, expected.final_line);
        }
        auto const vibrations = analyses_of<VibrationalBlock>(document);
        EXPECT_EQ(vibrations.size(), expected.modes == 0 ? 0u : 1u);
        if (!vibrations.empty()) {
            auto const& modes = vibrations.front()->modes;
            ASSERT_EQ(modes.size(), expected.modes);
            EXPECT_EQ(modes.front().frequency_cm1, expected.first_frequency);
            EXPECT_EQ(modes.back().frequency_cm1, expected.last_frequency);
            EXPECT_EQ(modes.back().displacements.size(), expected.atoms);
        }
        std::size_t states = 0;
        for (auto const* block : analyses_of<ExcitedStateBlock>(document)) {
            states += block->states.size();
        }
        EXPECT_EQ(states, expected.excited_states);
    }
}

// Every energy's span covers the number it was read from, in Gaussian's
// spelling; so does the termination's.
TEST(GaussianOutputs, SpansCoverThePrintedText) {
    for (auto const& expected : outputs) {
        SCOPED_TRACE(expected.file);
        auto const text = read_output(expected.file);
        auto const document = import_output(text, expected.file).value;
        for (auto const& step : document.steps) {
            for (auto const& energy : step.energies) {
                std::string number = spanned(text, *energy.source);
                for (char& c : number) {
                    c = c == 'D' ? 'E' : c;
                }
                EXPECT_EQ(std::strtod(number.c_str(), nullptr), energy.value) << number;
            }
        }
        EXPECT_EQ(spanned(text, *document.program.termination.source).substr(0, 30),
                  "Normal termination of Gaussian");
    }
}

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
    EXPECT_NEAR(first.gradient->vectors[0].x, -0.024825690245, 1e-11);
    EXPECT_NEAR(first.gradient->vectors[0].y, -0.043928477942, 1e-11);
    EXPECT_NEAR(first.gradient->vectors[0].z, 0.0, 1e-11);
    EXPECT_EQ(first.gradient->max, 0.050454775);
    EXPECT_EQ(first.gradient->rms, 0.015077523);
    EXPECT_EQ(first.convergence->status, ConvergenceStatus::not_converged);
    ASSERT_EQ(first.convergence->criteria.size(), 4u);
    EXPECT_EQ(first.convergence->criteria[0].kind, CriterionKind::max_force);
    EXPECT_EQ(first.convergence->criteria[0].value, 0.060680);
    EXPECT_EQ(first.convergence->criteria[0].threshold, 0.000450);
    EXPECT_EQ(first.convergence->criteria[3].value, 0.138777);
    EXPECT_EQ(document.steps.back().convergence->status, ConvergenceStatus::converged);
    EXPECT_EQ(first.native_cycle, 1);
    EXPECT_EQ(document.steps.back().native_cycle, 5);
    EXPECT_EQ(document.frames.front().positions_angstrom[0].x, 1.205666);
    EXPECT_EQ(document.frames.front().source->begin.line, 410u);
    EXPECT_EQ(document.systems[0].electronic_state->multiplicity, 1u);
    EXPECT_EQ(document.systems[0].label, "Title Card Required");
    EXPECT_EQ(document.sources[0].sha256, "f4e280b32b0d9f25ac7a21cfe47e810fe5cecb8b669e8d9751329a0ffded260d");
    auto const& scalars = *analyses_of<ScalarPropertyBlock>(document).front();
    ASSERT_EQ(scalars.properties.size(), 2u);
    EXPECT_EQ(scalars.properties[1].key, "nuclear_repulsion_energy");
    EXPECT_EQ(scalars.properties[1].value, 455.3072831857);
    EXPECT_EQ(spanned(text, *scalars.properties[1].source), "455.3072831857");
}

TEST(GaussianOutputs, AnalysesOfAFrequencyJob) {
    auto const result = import_output(read_output("dvb_raman.out"), "dvb_raman.out");
    auto const& document = result.value;
    auto const& mode = analyses_of<VibrationalBlock>(document).front()->modes.back();
    EXPECT_EQ(mode.symmetry, "AG");
    EXPECT_EQ(mode.raman_activity, 137.6843);
    auto const& thermo = *analyses_of<ThermochemistryBlock>(document).front();
    EXPECT_EQ(thermo.temperature_kelvin, 298.15);
    EXPECT_EQ(thermo.zero_point_energy, 0.177131);
    EXPECT_EQ(thermo.gibbs_free_energy, -382.164919);
    ASSERT_EQ(analyses_of<OrbitalSetBlock>(document).size(), 1u);
    auto const& orbitals = *analyses_of<OrbitalSetBlock>(document).front();
    EXPECT_EQ(orbitals.orbitals.size(), 60u);
    EXPECT_EQ(orbitals.orbitals[34].occupation, 2.0);
    EXPECT_EQ(orbitals.orbitals[35].occupation, 0.0);
    EXPECT_EQ(analyses_of<AtomicChargeBlock>(document).front()->records[0].charge, -0.004506);
    // The APT charges, without the table of hydrogens summed into heavy atoms.
    std::size_t apt_blocks = 0;
    for (auto const& block : document.analyses) {
        auto const* charges = std::get_if<AtomicChargeBlock>(&block.payload);
        if (charges == nullptr || charges->scheme != "APT") {
            continue;
        }
        ++apt_blocks;
        ASSERT_EQ(charges->records.size(), 20u);
        EXPECT_EQ(charges->records.front().charge, 0.021475);
        EXPECT_EQ(charges->records.back().charge, 0.057858);
        EXPECT_EQ(charges->records.back().element, "H");
        EXPECT_EQ(block.source->begin.line, 876u);
        EXPECT_EQ(block.source->end.line, 898u);
    }
    EXPECT_EQ(apt_blocks, 1u);
    ASSERT_EQ(result.diagnostics.size(), 1u);
    EXPECT_EQ(result.diagnostics[0].code, "gaussian.warning");
    // A warning keeps the lines it goes on over.
    EXPECT_EQ(result.diagnostics[0].message,
              "Warning -- explicit consideration of  11 degrees of freedom as vibrations may cause significant error");
    EXPECT_EQ(result.diagnostics[0].source->begin.line, 1555u);
    EXPECT_EQ(result.diagnostics[0].source->end.line, 1556u);
}

TEST(GaussianOutputs, ExcitedStates) {
    auto const document = import_output(read_output("dvb_td.out"), "dvb_td.out").value;
    auto const& block = *analyses_of<ExcitedStateBlock>(document).front();
    EXPECT_EQ(block.method, "TD-HF/TD-DFT");
    auto const& state = block.states.front();
    EXPECT_EQ(state.multiplicity, 1);
    EXPECT_EQ(state.symmetry, "BU");
    EXPECT_EQ(state.excitation_energy, 5.3351 / 27.211386245988);
    EXPECT_EQ(state.oscillator_strength, 0.1707);
    EXPECT_EQ(state.total_energy, -382.112205281);
    ASSERT_EQ(state.contributions.size(), 10u);
    EXPECT_EQ(state.contributions[3].coefficient, 0.48145);
    EXPECT_TRUE(state.contributions[8].reverse);
    // Four tables of a row per state: electric and velocity dipoles, and
    // rotatory strengths in both gauges; each row takes its state's energy.
    ASSERT_EQ(block.absorption_peaks.size(), 20u);
    auto const& second = block.absorption_peaks[1];
    EXPECT_EQ(second.spectrum_kind, "Ground to excited state transition electric dipole moments (Au)");
    EXPECT_EQ(second.target_state_index, 2);
    EXPECT_EQ(second.transition_moment_au, (chem::Vec3{0.0386, 2.2686, 0.0}));
    EXPECT_EQ(second.strength, 5.1481);
    EXPECT_EQ(second.oscillator_strength, 0.6779);
    EXPECT_EQ(second.excitation_energy, block.states[1].excitation_energy);
    EXPECT_EQ(second.source->begin.line, 592u);
    auto const& last = block.absorption_peaks.back();
    EXPECT_EQ(last.spectrum_kind, "Rotatory Strengths (R) in cgs (10**-40 erg-esu-cm/Gauss) R(length)");
    EXPECT_EQ(last.rotatory_strength, -0.0);
    EXPECT_EQ(last.reported_wavelength_nm, block.states[4].reported_wavelength_nm);
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
    EXPECT_EQ(totals.back()->label, "E(CIS(D)) state 10");
    EXPECT_EQ(totals.back()->kind, EnergyKind::excited_state_total);
    EXPECT_EQ(totals.back()->value, -74.2785409992);
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
    EXPECT_EQ(sets[0]->spin, SpinChannel::alpha);
    ASSERT_EQ(sets[0]->orbitals.size(), 4u);
    EXPECT_EQ(sets[0]->orbitals[1].energy, -100.54321);
    EXPECT_EQ(sets[0]->orbitals[2].occupation, 1.0);
    EXPECT_EQ(sets[0]->orbitals[3].occupation, 0.0);
    EXPECT_EQ(sets[1]->spin, SpinChannel::beta);
    EXPECT_EQ(sets[1]->orbitals.size(), 3u);
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

// The records of an import name only records of the document, and the codec
// gives back the document it wrote.
TEST(GaussianOutputs, ValidAndRoundTrip) {
    for (auto const& expected : outputs) {
        SCOPED_TRACE(expected.file);
        auto const document = import_output(read_output(expected.file), expected.file).value;
        EXPECT_TRUE(validate_document(document).empty());
        EXPECT_EQ(json::deserialize(json::serialize(document, {})).value, document);
    }
}

// Two outputs one after the other stand for the jobs of a Link1 run.
TEST(GaussianOutputs, Link1JobsFollowEachOther) {
    auto const result = import_output(read_output("dvb_gopt.out") + read_output("dvb_ir.out"), "link1.log");
    auto const& document = result.value;
    EXPECT_EQ(result.status, model::ParseStatus::complete);
    ASSERT_EQ(document.jobs.size(), 2u);
    EXPECT_EQ(document.jobs[1].parent_job_id, JobId(1));
    EXPECT_EQ(document.jobs[1].relation, JobRelation::link);
    EXPECT_EQ(document.jobs[1].step_ids, std::vector<StepId>{StepId(6)});
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
    EXPECT_EQ(result.value.jobs[0].termination.kind, TerminationKind::truncated);
    EXPECT_EQ(result.value.jobs[1].termination.kind, TerminationKind::normal);
    ASSERT_EQ(result.value.systems.size(), 2u);
    EXPECT_EQ(result.value.systems[0].label, "Water");
}

TEST(GaussianOutputs, ErrorTermination) {
    auto text = read_output("water_mp2.log");
    auto const at = text.find(" Normal termination");
    text = text.substr(0, at) + " Convergence failure -- run terminated.\n Error termination via Lnk1e.\n";
    auto const result = import_output(text, "failed.log");
    auto const& termination = result.value.program.termination;
    EXPECT_EQ(termination.kind, TerminationKind::error);
    EXPECT_EQ(termination.reason, "Convergence failure -- run terminated.");
    EXPECT_EQ(spanned(text, *termination.source), termination.reason);
    ASSERT_FALSE(result.diagnostics.empty());
    EXPECT_EQ(result.diagnostics.back().code, "gaussian.error_termination");
}

TEST(GaussianOutputs, EveryPrefixReturns) {
    for (char const* file : {"dvb_gopt.out", "dvb_td.out", "dvb_raman.out"}) {
        test_support::expect_every_prefix_imports(read_output(file), file, "Normal termination", "gaussian.truncated",
                                                  0);
    }
}

TEST(GaussianOutputs, TextOfNoProgram) {
    std::string garbage;
    std::srand(7);
    for (int i = 0; i < 20000; ++i) {
        garbage.push_back(static_cast<char>(std::rand() % 256));
    }
    auto const unknown = import_output(garbage, "x.log");
    EXPECT_EQ(unknown.status, model::ParseStatus::failed);
    EXPECT_EQ(unknown.diagnostics.at(0).code, "qc.import.unknown_program");
    auto const bannered = import_output(" Entering Gaussian System\n" + garbage, "x.log");
    EXPECT_EQ(bannered.status, model::ParseStatus::partial);
    EXPECT_TRUE(validate_document(bannered.value).empty());
}

}  // namespace
}  // namespace morv::qc
