#include <morv/qc/import.hpp>
#include <morv/qc/json/codec.hpp>
#include <morv/qc/model.hpp>

#include <gtest/gtest.h>

#include <cstdlib>
#include <fstream>
#include <iterator>
#include <string>
#include <variant>

namespace morv::qc {
namespace {

std::string read_output(std::string const& name) {
    std::ifstream in(std::string(MORV_ORCA_DATA_DIR) + "/" + name, std::ios::binary);
    EXPECT_TRUE(in) << name;
    return {std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>()};
}

std::string spanned(std::string const& text, model::SourceSpan const& span) {
    return text.substr(span.begin.offset, span.end.offset - span.begin.offset);
}

EnergyRecord const* energy_labelled(CalculationStep const& step, std::string const& label) {
    for (auto const& energy : step.energies) {
        if (energy.label == label) {
            return &energy;
        }
    }
    return nullptr;
}

template <typename Payload>
std::vector<Payload const*> analyses_of(Document const& document) {
    std::vector<Payload const*> out;
    for (auto const& block : document.analyses) {
        if (auto const* payload = std::get_if<Payload>(&block.payload)) {
            out.push_back(payload);
        }
    }
    return out;
}

struct Expected {
    char const* file;
    char const* version;
    std::size_t atoms;
    int charge;
    std::size_t steps;
    char const* method;
    TaskKind task;
    double final_energy;
    std::uint64_t final_line;
    std::size_t modes;
    std::size_t excited_states;
    std::size_t warnings;
};

// The values as the outputs print them ("FINAL SINGLE POINT ENERGY").
constexpr Expected outputs[] = {
    {"dvb_gopt.out", "6.0.0", 20, 0, 4, "B3LYP", TaskKind::optimization, -382.055133399486, 7157, 0, 0, 2},
    {"dvb_ir.out", "6.0.1", 20, 0, 1, "B3LYP", TaskKind::frequency, -382.055107107616, 1232, 54, 0, 0},
    {"dvb_td.out", "6.0.0", 20, 0, 1, "B3LYP", TaskKind::excited_state, -381.858419046289, 3290, 0, 10, 1},
    {"dvb_eom_ccsd.log", "6.0.1", 20, 0, 1, "EOM-CCSD", TaskKind::excited_state, -380.500397408116, 1631, 0, 2, 4},
    {"water_ccsd_t.out", "6.0.1", 3, 0, 1, "CCSD(T)", TaskKind::single_point, -75.013556305763, 995, 0, 0, 2},
    {"water_hf_solvent_smd.log", "6.0.1", 3, 0, 1, "HF", TaskKind::single_point, -74.967666633980, 667, 0, 0, 0},
};

TEST(OrcaOutputs, ReadAsPrinted) {
    for (auto const& expected : outputs) {
        SCOPED_TRACE(expected.file);
        auto const text = read_output(expected.file);
        auto const result = import_output(text, expected.file);
        auto const& document = result.value;
        EXPECT_EQ(result.status, model::ParseStatus::complete);
        EXPECT_EQ(result.diagnostics.size(), expected.warnings);
        EXPECT_EQ(document.program.kind, ProgramKind::orca);
        EXPECT_EQ(document.program.version, expected.version);
        EXPECT_EQ(document.program.termination.kind, TerminationKind::normal);
        EXPECT_EQ(spanned(text, *document.program.termination.source), "****ORCA TERMINATED NORMALLY****");
        // The output, then the input that ORCA echoes by name.
        ASSERT_EQ(document.sources.size(), 2u);
        EXPECT_EQ(document.sources[0].size_bytes, text.size());
        EXPECT_EQ(document.sources[1].path, document.program.input_file_name);
        ASSERT_EQ(document.jobs.size(), 1u);
        EXPECT_EQ(document.jobs[0].method, expected.method);
        EXPECT_EQ(document.jobs[0].basis_set, "STO-3G");
        EXPECT_EQ(document.jobs[0].primary_task, expected.task);
        ASSERT_EQ(document.systems.size(), 1u);
        EXPECT_EQ(document.systems[0].topology.atoms.size(), expected.atoms);
        EXPECT_EQ(document.systems[0].electronic_state->charge, expected.charge);
        EXPECT_EQ(document.steps.size(), expected.steps);
        EXPECT_EQ(document.frames.size(), expected.steps);
        auto const* final = energy_labelled(document.steps.back(), "FINAL SINGLE POINT ENERGY");
        ASSERT_NE(final, nullptr);
        EXPECT_EQ(document.steps.back().primary_energy_id, final->id);
        EXPECT_EQ(final->value, expected.final_energy);
        EXPECT_EQ(final->source->begin.line, expected.final_line);
        auto const vibrations = analyses_of<VibrationalBlock>(document);
        EXPECT_EQ(vibrations.empty() ? 0u : vibrations.front()->modes.size(), expected.modes);
        std::size_t states = 0;
        for (auto const* block : analyses_of<ExcitedStateBlock>(document)) {
            states += block->states.size();
        }
        EXPECT_EQ(states, expected.excited_states);
        // Every energy's span covers the number it was read from.
        for (auto const& step : document.steps) {
            for (auto const& energy : step.energies) {
                EXPECT_EQ(std::strtod(spanned(text, *energy.source).c_str(), nullptr), energy.value) << energy.label;
            }
        }
        EXPECT_TRUE(validate_document(document).empty());
        EXPECT_EQ(json::deserialize(json::serialize(document, {})).value, document);
    }
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
    EXPECT_EQ(first.native_cycle, 1);
    EXPECT_EQ(document.steps[2].native_cycle, 3);
    EXPECT_EQ(document.frames.front().positions_angstrom[0].x, -1.415253);
    EXPECT_EQ(document.frames.front().source->begin.line, 416u);
    ASSERT_TRUE(first.gradient && first.convergence);
    ASSERT_EQ(first.gradient->vectors.size(), 20u);
    EXPECT_EQ(first.gradient->vectors[0].x, 0.000763548);
    EXPECT_EQ(first.gradient->vectors[19].y, 0.000096461);
    EXPECT_EQ(first.gradient->norm, 0.0033254869);
    EXPECT_EQ(first.gradient->rms, 0.0004293185);
    EXPECT_EQ(first.gradient->max, 0.0012287748);
    // The first cycle has no energy change to judge.
    ASSERT_EQ(first.convergence->criteria.size(), 4u);
    EXPECT_EQ(first.convergence->criteria[0].kind, CriterionKind::rms_force);
    EXPECT_EQ(first.convergence->status, ConvergenceStatus::not_converged);
    auto const& second = *document.steps[1].convergence;
    ASSERT_EQ(second.criteria.size(), 5u);
    EXPECT_EQ(second.criteria[0].kind, CriterionKind::energy_change);
    EXPECT_EQ(second.criteria[0].value, -0.0000179529);
    EXPECT_EQ(second.criteria[0].threshold, 0.0000050000);
    EXPECT_EQ(second.criteria[0].satisfied, false);
    EXPECT_EQ(second.criteria[3].kind, CriterionKind::rms_displacement);
    EXPECT_EQ(second.criteria[3].satisfied, true);
    // ORCA signals convergence with the energy change still above its
    // tolerance; its word decides.
    auto const& third = *document.steps[2].convergence;
    EXPECT_EQ(third.criteria[0].satisfied, false);
    EXPECT_EQ(third.status, ConvergenceStatus::converged);
    EXPECT_FALSE(document.steps.back().convergence);
    ASSERT_EQ(result.diagnostics.size(), 2u);
    EXPECT_EQ(result.diagnostics[0].code, "orca.warning");
    EXPECT_EQ(result.diagnostics[1].code, "orca.autostart_off");
    EXPECT_EQ(result.diagnostics[1].severity, model::Severity::note);
    EXPECT_EQ(result.diagnostics[1].message, "WARNING: Geometry Optimization ===> : Switching off AutoStart For "
                                             "restart on a previous wavefunction, please use MOREAD");
    EXPECT_EQ(result.diagnostics[1].source->begin.line, 171u);
    EXPECT_EQ(result.diagnostics[1].source->end.line, 173u);
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
    EXPECT_EQ(modes.front().index, 6);
    EXPECT_EQ(modes.front().frequency_cm1, 43.87);
    EXPECT_EQ(modes.front().symmetry, "2-Au");
    EXPECT_EQ(modes.front().ir_intensity_km_per_mol, 0.03);
    EXPECT_EQ(modes[8].ir_intensity_km_per_mol, 6.11);
    ASSERT_EQ(modes.front().displacements.size(), 20u);
    EXPECT_EQ(modes.front().displacements[0].z, 0.078313);
    EXPECT_EQ(modes.back().displacements[19].x, 0.472581);
    auto const& thermo = *analyses_of<ThermochemistryBlock>(document).front();
    EXPECT_EQ(thermo.temperature_kelvin, 298.15);
    EXPECT_EQ(thermo.total_mass_amu, 130.19);
    EXPECT_EQ(thermo.electronic_energy, -382.05510711);
    EXPECT_EQ(thermo.zero_point_energy, 0.17701463);
    EXPECT_EQ(thermo.thermal_correction, 0.18592781);
    EXPECT_EQ(thermo.thermal_energy, -381.86917930);
    EXPECT_EQ(thermo.enthalpy, -381.86823509);
    EXPECT_EQ(thermo.entropy_correction, -0.04291036);
    EXPECT_EQ(thermo.gibbs_free_energy, -381.91114546);
    EXPECT_EQ(thermo.gibbs_correction, 0.14396165);
    auto const charges = analyses_of<AtomicChargeBlock>(document);
    ASSERT_EQ(charges.size(), 2u);
    EXPECT_EQ(charges[0]->scheme, "Mulliken");
    EXPECT_EQ(charges[0]->records[0].charge, -0.004143);
    EXPECT_EQ(charges[1]->scheme, "Loewdin");
    EXPECT_EQ(charges[1]->records[0].charge, 0.003937);
    EXPECT_EQ(charges[1]->records.size(), 20u);
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
    EXPECT_EQ(scf.method, "HF");
    EXPECT_EQ(scf.atomic_units.z, -0.649766104);
    EXPECT_EQ(scf.magnitude_debye, 1.718914591);
    EXPECT_EQ(dipoles[1]->moments.at(0).method, "MDCI(SD)");
    EXPECT_EQ(dipoles[1]->moments.at(0).atomic_units.x, 0.139990021);
}

TEST(OrcaOutputs, ExcitedStatesAndSpectra) {
    auto const text = read_output("dvb_td.out");
    auto const document = import_output(text, "dvb_td.out").value;
    auto const blocks = analyses_of<ExcitedStateBlock>(document);
    ASSERT_EQ(blocks.size(), 2u);
    EXPECT_EQ(blocks[0]->method, "TD-DFT/TDA");
    EXPECT_EQ(blocks[1]->section, "TD-DFT/TDA EXCITED STATES (TRIPLETS)");
    auto const& state = blocks[0]->states[1];
    EXPECT_EQ(state.index, 2);
    EXPECT_EQ(state.excitation_energy, 0.210622);
    EXPECT_EQ(state.reported_wavenumber_cm1, 46226.2);
    EXPECT_EQ(state.symmetry, "Bu");
    EXPECT_EQ(state.multiplicity, 1);
    ASSERT_EQ(state.contributions.size(), 3u);
    EXPECT_EQ(state.contributions[2].from_orbital, 34);
    EXPECT_EQ(state.contributions[2].to_orbital, 35);
    EXPECT_EQ(state.contributions[2].from_spin, 'a');
    EXPECT_EQ(state.contributions[2].weight, 0.934296);
    EXPECT_EQ(state.contributions[2].coefficient, 0.96659001);
    EXPECT_EQ(blocks[1]->states[0].multiplicity, 3);
    // Four tables of ten transitions: absorption and CD, each from the
    // length and the velocity form.
    auto const& peaks = blocks[1]->absorption_peaks;
    ASSERT_EQ(peaks.size(), 40u);
    auto const& bright = peaks[6];
    EXPECT_EQ(bright.transition, "0-1Ag -> 2-1Bu");
    EXPECT_EQ(bright.target_state_index, 2);
    EXPECT_EQ(bright.excitation_energy, 5.731321 / 27.211386245988);
    EXPECT_EQ(bright.reported_wavelength_nm, 216.3);
    EXPECT_EQ(bright.oscillator_strength, 1.170940055);
    EXPECT_EQ(bright.strength_label, "D2");
    EXPECT_EQ(bright.strength, 8.33915);
    EXPECT_EQ(bright.transition_moment_au->x, 2.88656);
    EXPECT_EQ(bright.source->begin.line, 3217u);
    EXPECT_EQ(peaks[26].rotatory_strength, 0.0);
    EXPECT_EQ(peaks[26].spectrum_kind, "CD SPECTRUM VIA TRANSITION ELECTRIC DIPOLE MOMENTS");

    auto const eom = import_output(read_output("dvb_eom_ccsd.log"), "dvb_eom_ccsd.log").value;
    auto const roots = analyses_of<ExcitedStateBlock>(eom);
    // The left-hand roots repeat the right-hand ones and are left out.
    ASSERT_EQ(roots.size(), 1u);
    auto const& root = roots[0]->states[0];
    EXPECT_EQ(root.method, "EOM-CCSD");
    EXPECT_EQ(root.excitation_energy, 0.201084);
    EXPECT_EQ(root.singles_character_percent, 82.39);
    ASSERT_EQ(root.contributions.size(), 4u);
    EXPECT_EQ(root.contributions[1].coefficient, 0.455299);
    EXPECT_EQ(root.contributions[1].from_orbital, 33);
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
    EXPECT_EQ(peak.target_state_index, 1);
    EXPECT_EQ(peak.excitation_energy, 43168.0 / 219474.6313632);
    EXPECT_EQ(peak.oscillator_strength, 0.005038390);
    EXPECT_EQ(peak.strength_label, "T2");
    EXPECT_EQ(peak.transition_moment_au->y, 0.10906);
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
    EXPECT_EQ(sets[0]->spin, SpinChannel::alpha);
    ASSERT_EQ(sets[0]->orbitals.size(), 2u);
    EXPECT_EQ(sets[0]->orbitals[0].energy, -0.5);
    EXPECT_EQ(sets[0]->orbitals[0].occupation, 1.0);
    EXPECT_EQ(sets[1]->spin, SpinChannel::beta);
    EXPECT_EQ(sets[1]->orbitals.size(), 1u);
    EXPECT_EQ(analyses_of<AtomicChargeBlock>(result.value).at(0)->records.at(0).spin_population, 1.0);
    ASSERT_EQ(result.diagnostics.size(), 1u);
    EXPECT_EQ(result.diagnostics[0].code, "orca.autostart");
    EXPECT_EQ(result.diagnostics[0].source->begin.line, 2u);
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

TEST(OrcaOutputs, ErrorTermination) {
    auto text = read_output("water_hf_solvent_smd.log");
    text = text.substr(0, text.find("-------------------------   ----")) +
           "\nORCA finished by error termination in SCF\nCalling Command: orca_scf water.gbw b\n";
    auto const result = import_output(text, "failed.out");
    auto const& termination = result.value.program.termination;
    EXPECT_EQ(result.status, model::ParseStatus::complete);
    EXPECT_EQ(termination.kind, TerminationKind::error);
    EXPECT_EQ(spanned(text, *termination.source), "ORCA finished by error termination in SCF");
    EXPECT_EQ(result.diagnostics.back().code, "orca.error_termination");
}

// An output cut anywhere still imports, as far as it goes.
TEST(OrcaOutputs, EveryPrefixReturns) {
    for (char const* file : {"dvb_gopt.out", "dvb_ir.out", "dvb_td.out", "dvb_eom_ccsd.log"}) {
        auto const text = read_output(file);
        auto const whole = import_output(text, file).value;
        std::vector<std::size_t> cuts = {0, 1, 17, 333, text.size() - 1};
        for (std::size_t cut = 2048; cut < text.size(); cut += 2048) {
            cuts.push_back(cut);
        }
        for (auto const cut : cuts) {
            SCOPED_TRACE(std::string(file) + " cut at " + std::to_string(cut));
            auto const result = import_output(std::string_view(text).substr(0, cut), file);
            if (result.status == model::ParseStatus::failed) {
                EXPECT_EQ(result.diagnostics.at(0).code, "qc.import.unknown_program");
                EXPECT_LT(cut, 400u);
                continue;
            }
            if (text.rfind("****ORCA TERMINATED NORMALLY****", cut) != std::string::npos) {
                EXPECT_EQ(result.status, model::ParseStatus::complete);
                continue;
            }
            EXPECT_EQ(result.status, model::ParseStatus::partial);
            EXPECT_EQ(result.diagnostics.back().code, "orca.truncated");
            EXPECT_EQ(result.value.program.termination.kind, TerminationKind::truncated);
            EXPECT_TRUE(validate_document(result.value).empty());
            // What was read before the cut is what the whole output gives.
            auto const& frames = result.value.frames;
            ASSERT_LE(frames.size(), whole.frames.size());
            for (std::size_t i = 0; i < frames.size(); ++i) {
                EXPECT_EQ(frames[i].positions_angstrom, whole.frames[i].positions_angstrom);
            }
            ASSERT_LE(result.value.analyses.size(), whole.analyses.size());
        }
    }
}

}  // namespace
}  // namespace morv::qc
