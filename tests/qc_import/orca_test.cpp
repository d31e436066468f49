#include <morv/qc/import.hpp>
#include <morv/qc/model.hpp>

#include <gtest/gtest.h>

#include "output_test_support.hpp"

#include <string>
#include <tuple>
#include <variant>

namespace morv::qc {
namespace {

using test_support::analyses_of;
using test_support::spanned;

std::string read_output(std::string const& name) { return test_support::read_output(MORV_ORCA_DATA_DIR, name); }

EnergyRecord const* energy_labelled(CalculationStep const& step, std::string const& label) {
    for (auto const& energy : step.energies) {
        if (energy.label == label) {
            return &energy;
        }
    }
    return nullptr;
}

// Labels and methods of the energies a correlated and a solvated run print;
// a part of the energy (the solvent's) never becomes the step's own.
TEST(OrcaOutputs, EnergiesOfTheirMethods) {
    struct Row {
        char const* file;
        char const* label;
        char const* method;
        EnergyKind kind;
        double value;
    };
    constexpr Row rows[] = {
        {"water_ccsd_t.out", "Total Energy", "HF", EnergyKind::scf, -74.96357424008319},
        {"water_ccsd_t.out", "CCSD", "CCSD", EnergyKind::correlated, -75.013487814},
        {"water_ccsd_t.out", "CCSD(T)", "CCSD(T)", EnergyKind::correlated, -75.013556306},
        {"water_hf_solvent_smd.log", "CPCM Dielectric", "", EnergyKind::unknown, -0.00203326633278},
        {"water_hf_solvent_smd.log", "SMD CDS (Gcds)", "", EnergyKind::unknown, -0.00134274227128},
        {"dvb_eom_ccsd.log", "CCSD", "CCSD", EnergyKind::correlated, -380.500397408},
    };
    for (auto const& row : rows) {
        SCOPED_TRACE(std::string(row.file) + " " + row.label);
        auto const document = import_output(read_output(row.file), row.file).value;
        auto const* energy = energy_labelled(document.steps.at(0), row.label);
        ASSERT_NE(energy, nullptr);
        EXPECT_EQ(energy->method, row.method);
        EXPECT_EQ(energy->kind, row.kind);
        EXPECT_EQ(energy->value, row.value);
    }
    // MP2 and MP3 as their runs print them.
    auto const mp = import_output(" * O   R   C   A *\n"
                                  "E(MP3)  =    -75.009120941   EC(MP3)=    -0.045546696  E3=    -0.009746325\n"
                                  "MP2 TOTAL ENERGY:      -74.999374598 Eh\n"
                                  "CPCM Dielectric    :  -0.00203326633278 Eh  -0.05533 eV\n"
                                  "                             ****ORCA TERMINATED NORMALLY****\n",
                                  "mp.out");
    ASSERT_EQ(mp.value.steps.size(), 1u);
    EXPECT_EQ(energy_labelled(mp.value.steps[0], "MP2")->value, -74.999374598);
    EXPECT_EQ(energy_labelled(mp.value.steps[0], "E(MP3)")->method, "MP3");
    EXPECT_EQ(mp.value.steps[0].primary_energy_id, energy_labelled(mp.value.steps[0], "MP2")->id);
}

TEST(OrcaOutputs, OptimisationSteps) {
    auto const text = read_output("dvb_gopt.out");
    auto const result = import_output(text, "dvb_gopt.out");
    auto const& document = result.value;
    auto const& first = document.steps.front();
    EXPECT_EQ(std::make_tuple(first.native_cycle, document.steps[2].native_cycle), std::make_tuple(1, 3));
    EXPECT_EQ(document.frames.front().positions_angstrom[0].x, -1.415253);
    EXPECT_EQ(document.frames.front().source->begin.line, 416u);
    ASSERT_TRUE(first.gradient && first.convergence);
    auto const& gradient = *first.gradient;
    ASSERT_EQ(gradient.vectors.size(), 20u);
    EXPECT_EQ(std::make_tuple(gradient.vectors[0].x, gradient.vectors[19].y),
              std::make_tuple(0.000763548, 0.000096461));
    EXPECT_EQ(std::make_tuple(gradient.norm, gradient.rms, gradient.max),
              std::make_tuple(0.0033254869, 0.0004293185, 0.0012287748));
    // The first cycle has no energy change to judge.
    ASSERT_EQ(first.convergence->criteria.size(), 4u);
    EXPECT_EQ(first.convergence->criteria[0].kind, CriterionKind::rms_force);
    EXPECT_EQ(first.convergence->status, ConvergenceStatus::not_converged);
    auto const& second = *document.steps[1].convergence;
    ASSERT_EQ(second.criteria.size(), 5u);
    EXPECT_EQ(fields_of(second.criteria[0]), fields_of(ConvergenceCriterion{CriterionKind::energy_change, -0.0000179529,
                                                                            0.0000050000, false, "hartree"}));
    EXPECT_EQ(std::make_tuple(second.criteria[3].kind, second.criteria[3].satisfied),
              std::make_tuple(CriterionKind::rms_displacement, true));
    // ORCA signals convergence with the energy change still above its
    // tolerance; its word decides.
    auto const& third = *document.steps[2].convergence;
    EXPECT_EQ(std::make_tuple(third.criteria[0].satisfied, third.status),
              std::make_tuple(false, ConvergenceStatus::converged));
    EXPECT_FALSE(document.steps.back().convergence);
    ASSERT_EQ(result.diagnostics.size(), 2u);
    EXPECT_EQ(result.diagnostics[0].code, "orca.warning");
    auto const& note = result.diagnostics[1];
    EXPECT_EQ(std::make_tuple(note.code, note.severity, note.source->begin.line, note.source->end.line),
              std::make_tuple("orca.autostart_off", model::Severity::note, 171u, 173u));
    EXPECT_EQ(note.message, "WARNING: Geometry Optimization ===> : Switching off AutoStart For restart on a previous "
                            "wavefunction, please use MOREAD");
}

// An optimisation with frequencies is two jobs, the second from the final
// evaluation at the stationary point on. No such output is at hand: the
// frequencies of dvb_ir.out set into dvb_gopt.out, whose input then asks for
// them, stand in for one.
TEST(OrcaOutputs, OptimisationThenFrequencies) {
    auto text = read_output("dvb_gopt.out");
    auto const ir = read_output("dvb_ir.out");
    text.replace(text.find("usesym opt"), 10, "usesym opt freq");
    auto const from = ir.find("-----------------------\nVIBRATIONAL FREQUENCIES");
    auto const to = ir.find('\n', ir.find("G-E(el)")) + 1;
    text.insert(text.find("                             ****ORCA TERMINATED NORMALLY****"), ir.substr(from, to - from));
    auto const result = import_output(text, "opt_freq.out");
    auto const& document = result.value;
    EXPECT_EQ(result.status, model::ParseStatus::complete);
    ASSERT_EQ(document.jobs.size(), 2u);
    auto const& optimisation = document.jobs[0];
    EXPECT_EQ(optimisation.tasks, std::vector<TaskKind>{TaskKind::optimization});
    EXPECT_EQ(optimisation.step_ids.size(), 3u);
    EXPECT_EQ(optimisation.termination.reason, "THE OPTIMIZATION HAS CONVERGED");
    EXPECT_EQ(spanned(text, *optimisation.termination.source), optimisation.termination.reason);
    auto const& frequencies = document.jobs[1];
    EXPECT_EQ(frequencies.tasks, std::vector<TaskKind>{TaskKind::frequency});
    EXPECT_EQ(frequencies.keywords, "! rks b3lyp sto-3g usesym opt freq");
    EXPECT_EQ(frequencies.parent_job_id, JobId(1));
    EXPECT_EQ(frequencies.step_ids, std::vector<StepId>{StepId(4)});
    EXPECT_EQ(frequencies.termination.kind, TerminationKind::normal);
    for (auto const& block : document.analyses) {
        if (std::holds_alternative<VibrationalBlock>(block.payload)) {
            EXPECT_EQ(block.job_id, JobId(2));
            EXPECT_EQ(block.reference_step_id, StepId(4));
        }
    }
    EXPECT_EQ(analyses_of<VibrationalBlock>(document).size(), 1u);
    EXPECT_TRUE(validate_document(document).empty());
}

TEST(OrcaOutputs, AnalysesOfAFrequencyJob) {
    auto const document = import_output(read_output("dvb_ir.out"), "dvb_ir.out").value;
    // The six translations and rotations at zero are left out.
    auto const& modes = analyses_of<VibrationalBlock>(document).front()->modes;
    EXPECT_EQ(
        std::make_tuple(modes[0].index, modes[0].frequency_cm1, modes[0].symmetry, modes[0].ir_intensity_km_per_mol),
        std::make_tuple(6, 43.87, "2-Au", 0.03));
    EXPECT_EQ(modes[8].ir_intensity_km_per_mol, 6.11);
    ASSERT_EQ(modes.front().displacements.size(), 20u);
    EXPECT_EQ(std::make_tuple(modes.front().displacements[0].z, modes.back().displacements[19].x),
              std::make_tuple(0.078313, 0.472581));
    auto const& thermo = *analyses_of<ThermochemistryBlock>(document).front();
    EXPECT_EQ(fields_of(thermo), fields_of(ThermochemistryBlock{298.15, 1.0, 130.19, -382.05510711, 0.17701463,
                                                                -381.86917930, 0.18592781, -381.86823509, std::nullopt,
                                                                -0.04291036, -381.91114546, 0.14396165}));
    auto const charges = analyses_of<AtomicChargeBlock>(document);
    ASSERT_EQ(charges.size(), 2u);
    EXPECT_EQ(std::make_tuple(charges[0]->scheme, charges[0]->records[0].charge),
              std::make_tuple("Mulliken", -0.004143));
    EXPECT_EQ(std::make_tuple(charges[1]->scheme, charges[1]->records[0].charge, charges[1]->records.size()),
              std::make_tuple("Loewdin", 0.003937, 20u));
    for (auto const& block : document.analyses) {
        auto const* loewdin = std::get_if<AtomicChargeBlock>(&block.payload);
        if (loewdin != nullptr && loewdin->scheme == "Loewdin") {
            EXPECT_EQ(block.source->begin.line, 992u);
            EXPECT_EQ(block.source->end.line, 1013u);
        }
    }
    auto const& orbitals = *analyses_of<OrbitalSetBlock>(document).front();
    EXPECT_EQ(orbitals.spin, SpinChannel::none);
    // ORCA prints the first ten virtual orbitals only.
    EXPECT_EQ(orbitals.orbitals.size(), 46u);
    EXPECT_EQ(orbitals.orbitals[34].occupation, 2.0);
    EXPECT_EQ(orbitals.orbitals[35].kind, "virtual");
}

TEST(OrcaOutputs, DipolesOfEachDensity) {
    auto const document = import_output(read_output("water_ccsd_t.out"), "water_ccsd_t.out").value;
    auto const dipoles = analyses_of<DipoleBlock>(document);
    ASSERT_EQ(dipoles.size(), 2u);
    auto const& scf = dipoles[0]->moments.at(0);
    EXPECT_EQ(std::make_tuple(scf.method, scf.atomic_units.z, scf.magnitude_debye),
              std::make_tuple("HF", -0.649766104, 1.718914591));
    auto const& correlated = dipoles[1]->moments.at(0);
    EXPECT_EQ(std::make_tuple(correlated.method, correlated.atomic_units.x), std::make_tuple("MDCI(SD)", 0.139990021));
}

TEST(OrcaOutputs, ExcitedStatesAndSpectra) {
    auto const text = read_output("dvb_td.out");
    auto const document = import_output(text, "dvb_td.out").value;
    auto const blocks = analyses_of<ExcitedStateBlock>(document);
    ASSERT_EQ(blocks.size(), 2u);
    EXPECT_EQ(blocks[0]->method, "TD-DFT/TDA");
    EXPECT_EQ(blocks[1]->section, "TD-DFT/TDA EXCITED STATES (TRIPLETS)");
    auto const& state = blocks[0]->states[1];
    EXPECT_EQ(std::make_tuple(state.index, state.excitation_energy, state.reported_wavenumber_cm1, state.symmetry,
                              state.multiplicity),
              std::make_tuple(2, 0.210622, 46226.2, "Bu", 1));
    ASSERT_EQ(state.contributions.size(), 3u);
    auto const& contribution = state.contributions[2];
    EXPECT_EQ(std::make_tuple(contribution.from_orbital, contribution.to_orbital, contribution.from_spin,
                              contribution.weight, contribution.coefficient),
              std::make_tuple(34, 35, 'a', 0.934296, 0.96659001));
    EXPECT_EQ(blocks[1]->states[0].multiplicity, 3);
    // Four tables of ten transitions: absorption and CD, each from the
    // length and the velocity form.
    auto const& peaks = blocks[1]->absorption_peaks;
    ASSERT_EQ(peaks.size(), 40u);
    auto const& bright = peaks[6];
    EXPECT_EQ(std::make_tuple(bright.transition, bright.target_state_index, bright.excitation_energy,
                              bright.reported_wavelength_nm, bright.oscillator_strength, bright.strength_label,
                              bright.strength, bright.transition_moment_au->x, bright.source->begin.line),
              std::make_tuple("0-1Ag -> 2-1Bu", 2, 5.731321 / 27.211386245988, 216.3, 1.170940055, "D2", 8.33915,
                              2.88656, 3217u));
    EXPECT_EQ(std::make_tuple(peaks[26].rotatory_strength, peaks[26].spectrum_kind),
              std::make_tuple(0.0, "CD SPECTRUM VIA TRANSITION ELECTRIC DIPOLE MOMENTS"));

    auto const eom = import_output(read_output("dvb_eom_ccsd.log"), "dvb_eom_ccsd.log").value;
    auto const roots = analyses_of<ExcitedStateBlock>(eom);
    // The left-hand roots repeat the right-hand ones and are left out.
    ASSERT_EQ(roots.size(), 1u);
    auto const& root = roots[0]->states[0];
    EXPECT_EQ(std::make_tuple(root.method, root.excitation_energy, root.singles_character_percent),
              std::make_tuple("EOM-CCSD", 0.201084, 82.39));
    ASSERT_EQ(root.contributions.size(), 4u);
    EXPECT_EQ(std::make_tuple(root.contributions[1].coefficient, root.contributions[1].from_orbital),
              std::make_tuple(0.455299, 33));
    EXPECT_EQ(roots[0]->absorption_peaks.size(), 6u);
    EXPECT_EQ(roots[0]->absorption_peaks[0].spectrum_kind,
              "RIGHT TRANSITION MOMENTS: ABSORPTION SPECTRUM VIA TRANSITION ELECTRIC DIPOLE MOMENTS");
}

// ORCA 5 numbers the rows of a spectrum by the state and gives no energy in
// eV.
TEST(OrcaOutputs, SpectrumOfOrca5) {
    auto const result = import_output(
        " * O   R   C   A *\n"
        "---------------------------------\n"
        "TD-DFT EXCITED STATES (SINGLETS)\n"
        "---------------------------------\n"
        "STATE  1:  E=   0.196688 au      5.352 eV    43168.0 cm**-1 <S**2> =   0.000000\n"
        "    34a ->  35a  :     0.934296 (c=  0.96659001)\n"
        "\n"
        "-----------------------------------------------------------------------------\n"
        "         ABSORPTION SPECTRUM VIA TRANSITION ELECTRIC DIPOLE MOMENTS\n"
        "-----------------------------------------------------------------------------\n"
        "State   Energy    Wavelength  fosc         T2         TX        TY        TZ\n"
        "        (cm-1)      (nm)                 (au**2)     (au)      (au)      (au)\n"
        "-----------------------------------------------------------------------------\n"
        "   1   43168.0    231.7   0.005038390   0.03842   0.16288   0.10906   0.00000\n"
        "\n"
        "                             ****ORCA TERMINATED NORMALLY****\n",
        "td5.out");
    auto const blocks = analyses_of<ExcitedStateBlock>(result.value);
    ASSERT_EQ(blocks.size(), 1u);
    EXPECT_EQ(blocks[0]->method, "TD-DFT");
    ASSERT_EQ(blocks[0]->absorption_peaks.size(), 1u);
    auto const& peak = blocks[0]->absorption_peaks[0];
    EXPECT_EQ(std::make_tuple(peak.target_state_index, peak.excitation_energy, peak.oscillator_strength,
                              peak.strength_label, peak.transition_moment_au->y),
              std::make_tuple(1, 43168.0 / 219474.6313632, 0.005038390, "T2", 0.10906));
}

// Spin up and spin down orbitals, charges with spin populations, and the
// note of an SCF that started from an earlier run's orbitals.
TEST(OrcaOutputs, UnrestrictedRun) {
    auto const result = import_output(" * O   R   C   A *\n"
                                      "Checking for AutoStart:\n"
                                      "The File: h.gbw exists\n"
                                      "     ... Fine, the orbitals can be read\n"
                                      "\n"
                                      "----------------\n"
                                      "ORBITAL ENERGIES\n"
                                      "----------------\n"
                                      "                 SPIN UP ORBITALS\n"
                                      "  NO   OCC          E(Eh)            E(eV) \n"
                                      "   0   1.0000      -0.500000       -13.6057 \n"
                                      "   1   0.0000       0.300000         8.1634 \n"
                                      "\n"
                                      "                 SPIN DOWN ORBITALS\n"
                                      "  NO   OCC          E(Eh)            E(eV) \n"
                                      "   0   0.0000       0.100000         2.7211 \n"
                                      "\n"
                                      "--------------------------------------------\n"
                                      "MULLIKEN ATOMIC CHARGES AND SPIN POPULATIONS\n"
                                      "--------------------------------------------\n"
                                      "   0 H :    0.000000    1.000000\n"
                                      "Sum of atomic charges         :    0.0000000\n"
                                      "                             ****ORCA TERMINATED NORMALLY****\n",
                                      "h.out");
    EXPECT_EQ(result.status, model::ParseStatus::complete);
    auto const sets = analyses_of<OrbitalSetBlock>(result.value);
    ASSERT_EQ(sets.size(), 2u);
    ASSERT_EQ(sets[0]->orbitals.size(), 2u);
    EXPECT_EQ(std::make_tuple(sets[0]->spin, sets[0]->orbitals[0].energy, sets[0]->orbitals[0].occupation),
              std::make_tuple(SpinChannel::alpha, -0.5, 1.0));
    EXPECT_EQ(std::make_tuple(sets[1]->spin, sets[1]->orbitals.size()), std::make_tuple(SpinChannel::beta, 1u));
    EXPECT_EQ(analyses_of<AtomicChargeBlock>(result.value).at(0)->records.at(0).spin_population, 1.0);
    ASSERT_EQ(result.diagnostics.size(), 1u);
    EXPECT_EQ(std::make_tuple(result.diagnostics[0].code, result.diagnostics[0].source->begin.line),
              std::make_tuple("orca.autostart", 2u));
    EXPECT_TRUE(validate_document(result.value).empty());
}

// ORCA heads each job of a $new_job run with a banner and ends the run with
// one termination line. Two joined outputs only approximate such a run: each
// keeps its own echo of the input, of which the first is read.
TEST(OrcaOutputs, JobsOfOneRun) {
    auto first = read_output("water_ccsd_t.out");
    first = first.substr(0, first.find("****ORCA TERMINATED NORMALLY****"));
    auto const text = first + "\n                         $$$$$$$$$$$$$$$$  JOB NUMBER  2 $$$$$$$$$$$$$$\n" +
                      read_output("water_hf_solvent_smd.log");
    auto const result = import_output(text, "run.out");
    auto const& document = result.value;
    EXPECT_EQ(result.status, model::ParseStatus::complete);
    ASSERT_EQ(document.jobs.size(), 2u);
    EXPECT_EQ(document.jobs[0].termination.kind, TerminationKind::normal);
    EXPECT_EQ(document.jobs[0].termination.source->begin.line, document.jobs[1].source->begin.line);
    EXPECT_EQ(document.jobs[1].parent_job_id, JobId(1));
    EXPECT_EQ(document.jobs[1].step_ids, std::vector<StepId>{StepId(2)});
    EXPECT_EQ(document.systems.size(), 1u);
    EXPECT_TRUE(validate_document(document).empty());
}

}  // namespace
}  // namespace morv::qc
