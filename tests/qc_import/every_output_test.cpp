// What holds for every bundled output of every program read: it imports
// complete into a valid document that the codec gives back unchanged and that
// holds what the output prints, each span covers the text it names, and any
// prefix of it still imports.

#include <morv/qc/import.hpp>
#include <morv/qc/json/codec.hpp>
#include <morv/qc/model.hpp>

#include <gtest/gtest.h>

#include "framework/sha256.hpp"
#include "output_test_support.hpp"

#include <algorithm>
#include <cctype>
#include <cstdlib>
#include <filesystem>
#include <string>
#include <tuple>
#include <vector>

namespace morv::qc {
namespace {

using test_support::spanned;

struct Program {
    char const* folder;
    ProgramKind kind;
    char const* normal_termination;
    char const* truncated_code;
    // The last frames of a cut output that later text may still change.
    std::size_t unsettled_frames;
};

// GAMESS gives an optimisation's first frame from the input's geometry until
// it prints it again in angstrom.
constexpr Program programs[] = {
    {MORV_GAUSSIAN_DATA_DIR, ProgramKind::gaussian, "Normal termination of Gaussian", "gaussian.truncated", 0},
    {MORV_ORCA_DATA_DIR, ProgramKind::orca, "****ORCA TERMINATED NORMALLY****", "orca.truncated", 0},
    {MORV_GAMESS_DATA_DIR, ProgramKind::gamess, "EXECUTION OF GAMESS TERMINATED NORMALLY", "gamess.truncated", 1},
};

// What each output holds, as it prints it: its program's version, the input
// it names, its job, the atoms of its system, its steps, the primary energy of
// its last step with the line it is printed on, its modes with the first and
// last frequency, its excited states, and its diagnostics.
struct Expected {
    ProgramKind program;
    char const* file;
    char const* version;
    char const* input;
    char const* method;
    char const* basis;
    TaskKind task;
    std::size_t atoms;
    std::size_t steps;
    double final_energy;
    char const* final_label;
    std::uint64_t final_line;
    std::size_t modes;
    double first_frequency;
    double last_frequency;
    std::size_t excited_states;
    std::size_t diagnostics;
};

constexpr auto gaussian = ProgramKind::gaussian;
constexpr auto orca = ProgramKind::orca;
constexpr auto gamess = ProgramKind::gamess;
constexpr char const* g16 = "16 Revision A.03";
constexpr char const* gamess_2018 = "30 SEP 2018 (R3)";
constexpr char const* orca_final = "FINAL SINGLE POINT ENERGY";
using Task = TaskKind;

constexpr Expected expected_outputs[] = {
    {gaussian, "dvb_gopt.out", g16, "", "B3LYP", "STO-3G", Task::optimization, 20, 5, -382.308266602, "SCF Done", 2785,
     0, 0, 0, 0, 0},
    {gaussian, "dvb_ir.out", g16, "", "B3LYP", "STO-3G", Task::frequency, 20, 1, -382.308266602, "SCF Done", 457, 54,
     53.1981, 3548.3320, 0, 1},
    {gaussian, "dvb_raman.out", g16, "", "RB3LYP", "STO-3G", Task::frequency, 20, 1, -382.308266561, "SCF Done", 612,
     54, 53.1117, 3548.4260, 0, 1},
    {gaussian, "dvb_td.out", g16, "", "B3LYP", "STO-3G", Task::excited_state, 20, 1, -382.112205281, "E(TD-HF/TD-DFT)",
     655, 0, 0, 0, 5, 0},
    {gaussian, "water_mp2.log", g16, "", "MP2", "STO-3G", Task::single_point, 3, 1, -75.002282127454, "EUMP2", 342, 0,
     0, 0, 0, 0},
    {gaussian, "water_ccsdt.log", g16, "", "CCSD(T)", "STO-3G", Task::single_point, 3, 1, -75.017760422, "CCSD(T)", 437,
     0, 0, 0, 0, 0},
    {gaussian, "water_cisd.log", g16, "", "CIS(D)", "STO-3G", Task::excited_state, 3, 1, -74.6308293204,
     "E(CIS(D)) state 1", 545, 0, 0, 0, 10, 1},
    {gaussian, "water_hf_solvent_cpcm.log", "16 Revision C.01", "water.com", "HF", "STO-3G", Task::single_point, 3, 1,
     -74.9667426458, "SCF Done", 348, 0, 0, 0, 0, 0},
    {orca, "dvb_gopt.out", "6.0.0", "dvb_gopt.inp", "B3LYP", "STO-3G", Task::optimization, 20, 4, -382.055133399486,
     orca_final, 7157, 0, 0, 0, 0, 2},
    {orca, "dvb_ir.out", "6.0.1", "dvb_ir.inp", "B3LYP", "STO-3G", Task::frequency, 20, 1, -382.055107107616,
     orca_final, 1232, 54, 43.87, 3546.41, 0, 0},
    {orca, "dvb_td.out", "6.0.0", "dvb_td.inp", "B3LYP", "STO-3G", Task::excited_state, 20, 1, -381.858419046289,
     orca_final, 3290, 0, 0, 0, 10, 1},
    {orca, "dvb_eom_ccsd.log", "6.0.1", "dvb_eom_ccsd.inp", "EOM-CCSD", "STO-3G", Task::excited_state, 20, 1,
     -380.500397408116, orca_final, 1631, 0, 0, 0, 2, 4},
    {orca, "water_ccsd_t.out", "6.0.1", "water_ccsd_t.inp", "CCSD(T)", "STO-3G", Task::single_point, 3, 1,
     -75.013556305763, orca_final, 995, 0, 0, 0, 0, 2},
    {orca, "water_hf_solvent_smd.log", "6.0.1", "water_hf_solvent_smd.inp", "HF", "STO-3G", Task::single_point, 3, 1,
     -74.967666633980, orca_final, 667, 0, 0, 0, 0, 0},
    {gamess, "water_mp2.out", gamess_2018, "water_mp2.inp", "MP2", "STO-3G", Task::single_point, 3, 1, -75.0022821133,
     "E(MP2)", 514, 0, 0, 0, 0, 0},
    {gamess, "water_ccsdt.out", gamess_2018, "water_ccsd(t).inp", "CCSD(T)", "6-31G(d,p)", Task::single_point, 3, 1,
     -76.2299053356, "CCSD(T)", 804, 0, 0, 0, 0, 0},
    {gamess, "water_cis_dets.out", gamess_2018, "water_cis_dets.inp", "CIS", "STO-3G", Task::excited_state, 3, 1,
     -74.5903204319, "CIS state 1", 526, 0, 0, 0, 10, 1},
    {gamess, "nh3_ts_ir.out", gamess_2018, "nh3_ts_ir.inp", "AM1", "", Task::frequency, 4, 1, -9.1286961082,
     "FINAL ENERGY", 311, 6, -825.18, 3661.48, 0, 1},
    {gamess, "dvb_gopt_a.out", gamess_2018, "dvb_gopt_a.inp", "B3LYP", "STO-3G", Task::optimization, 20, 7,
     -382.0506677654, "FINAL ENERGY", 3216, 0, 0, 0, 0, 0},
    {gamess, "dvb_td_trplet.out", gamess_2018, "dvb_td_trplet.inp", "B3LYP", "STO-3G", Task::excited_state, 20, 1,
     -381.9542288095, "TDDFT state 1", 2068, 0, 0, 0, 5, 0},
};

struct Output {
    Program const* program;
    std::string file;
};

std::vector<Output> bundled_outputs() {
    std::vector<Output> found;
    for (auto const& program : programs) {
        for (auto const& entry : std::filesystem::directory_iterator(program.folder)) {
            auto const extension = entry.path().extension();
            if (extension == ".log" || extension == ".out") {
                found.push_back({&program, entry.path().filename().string()});
            }
        }
    }
    return found;
}

void PrintTo(Output const& output, std::ostream* out) { *out << output.file; }

std::string test_name(testing::TestParamInfo<Output> const& info) {
    std::string name = std::string(to_string(info.param.program->kind)) + "_" + info.param.file;
    for (char& c : name) {
        c = std::isalnum(static_cast<unsigned char>(c)) ? c : '_';
    }
    return name;
}

class EveryOutput : public testing::TestWithParam<Output> {
protected:
    std::string text = test_support::read_output(GetParam().program->folder, GetParam().file);
};

TEST_P(EveryOutput, ImportsCompleteValidAndRoundTrips) {
    auto const& [program, file] = GetParam();
    auto const result = import_output(text, file);
    auto const& document = result.value;
    EXPECT_EQ(result.status, model::ParseStatus::complete);
    EXPECT_EQ(document.program.kind, program->kind);
    EXPECT_EQ(document.program.termination.kind, TerminationKind::normal);
    // The termination's span runs from the program's words to the end of their line.
    auto const& ending = *document.program.termination.source;
    EXPECT_EQ(spanned(text, ending).rfind(program->normal_termination, 0), 0u);
    EXPECT_TRUE(ending.end.offset == text.size() || text[ending.end.offset] == '\n') << spanned(text, ending);
    // The output, then the input where the output names one.
    ASSERT_EQ(document.sources.size(), document.program.input_file_name.empty() ? 1u : 2u);
    EXPECT_EQ(document.sources[0].path, file);
    EXPECT_EQ(document.sources[0].size_bytes, text.size());
    EXPECT_EQ(document.sources[0].sha256, import::sha256_hex(text));
    EXPECT_EQ(std::filesystem::path(document.sources.back().path).filename(),
              document.program.input_file_name.empty() ? file : document.program.input_file_name);
    // Every energy's span covers the number it was read from, in the
    // program's spelling (Gaussian's exponents are D).
    for (auto const& step : document.steps) {
        for (auto const& energy : step.energies) {
            std::string number = spanned(text, *energy.source);
            for (char& c : number) {
                c = c == 'D' ? 'E' : c;
            }
            EXPECT_EQ(std::strtod(number.c_str(), nullptr), energy.value) << energy.label;
        }
    }
    EXPECT_TRUE(validate_document(document).empty());
    EXPECT_EQ(json::deserialize(json::serialize(document, {})).value, document);

    auto const* expected = std::find_if(std::begin(expected_outputs), std::end(expected_outputs), [&](auto const& row) {
        return row.program == program->kind && row.file == file;
    });
    ASSERT_NE(expected, std::end(expected_outputs)) << "every bundled output belongs in the table";
    EXPECT_EQ(result.diagnostics.size(), expected->diagnostics);
    EXPECT_EQ(std::make_tuple(document.program.version, document.program.input_file_name),
              std::make_tuple(expected->version, expected->input));
    ASSERT_EQ(document.jobs.size(), 1u);
    auto const& job = document.jobs[0];
    EXPECT_EQ(std::make_tuple(job.method, job.basis_set, job.primary_task),
              std::make_tuple(expected->method, expected->basis, expected->task));
    ASSERT_EQ(document.systems.size(), 1u);
    EXPECT_EQ(document.systems[0].topology.atoms.size(), expected->atoms);
    EXPECT_EQ(std::make_tuple(document.steps.size(), document.frames.size()),
              std::make_tuple(expected->steps, expected->steps));
    auto const& energy = test_support::primary_energy(document.steps.back());
    EXPECT_EQ(std::make_tuple(energy.value, energy.label, energy.source->begin.line),
              std::make_tuple(expected->final_energy, expected->final_label, expected->final_line));
    auto const vibrations = test_support::analyses_of<VibrationalBlock>(document);
    ASSERT_EQ(vibrations.size(), expected->modes == 0 ? 0u : 1u);
    if (!vibrations.empty()) {
        auto const& modes = vibrations.front()->modes;
        ASSERT_EQ(modes.size(), expected->modes);
        EXPECT_EQ(std::make_tuple(modes.front().frequency_cm1, modes.back().frequency_cm1),
                  std::make_tuple(expected->first_frequency, expected->last_frequency));
        EXPECT_EQ(modes.back().displacements.size(), expected->atoms);
    }
    EXPECT_EQ(test_support::excited_state_count(document), expected->excited_states);
}

// An output cut anywhere still imports, as far as it goes: failed only
// before the program's banner, all within the first kilobyte; complete once
// the text holds the normal termination; else partial with the truncation
// last and a document that validates. What was read before the cut is what
// the whole output gives.
TEST_P(EveryOutput, EveryPrefixImports) {
    auto const& [program, file] = GetParam();
    auto const whole = import_output(text, file).value;
    std::vector<std::size_t> cuts = {0, 1, 17, 333, text.size() - 200, text.size() - 1};
    for (std::size_t cut = 2048; cut < text.size(); cut += 2048) {
        cuts.push_back(cut);
    }
    for (auto const cut : cuts) {
        SCOPED_TRACE("cut at " + std::to_string(cut));
        auto const result = import_output(std::string_view(text).substr(0, cut), file);
        if (result.status == model::ParseStatus::failed) {
            EXPECT_EQ(result.diagnostics.at(0).code, "qc.import.unknown_program");
            EXPECT_LT(cut, 1024u);
            continue;
        }
        if (std::string_view(text).substr(0, cut).find(program->normal_termination) != std::string::npos) {
            EXPECT_EQ(result.status, model::ParseStatus::complete);
            continue;
        }
        EXPECT_EQ(result.status, model::ParseStatus::partial);
        ASSERT_FALSE(result.diagnostics.empty());
        EXPECT_EQ(result.diagnostics.back().code, program->truncated_code);
        EXPECT_EQ(result.value.program.termination.kind, TerminationKind::truncated);
        EXPECT_TRUE(validate_document(result.value).empty());
        auto const& frames = result.value.frames;
        ASSERT_LE(frames.size(), whole.frames.size());
        for (std::size_t i = 0; i + program->unsettled_frames < frames.size(); ++i) {
            EXPECT_EQ(frames[i].positions_angstrom, whole.frames[i].positions_angstrom);
        }
        EXPECT_LE(result.value.analyses.size(), whole.analyses.size());
    }
}

INSTANTIATE_TEST_SUITE_P(Bundled, EveryOutput, testing::ValuesIn(bundled_outputs()), test_name);

// An output ended by an error: its own words give the reason, a diagnostic
// says so, and the import is still complete.
TEST(EveryProgram, ErrorTermination) {
    struct Row {
        char const* folder;
        char const* file;
        char const* cut_before;
        char const* ending;
        char const* reason;
        char const* code;
    };
    constexpr Row rows[] = {
        {MORV_GAUSSIAN_DATA_DIR, "water_mp2.log", " Normal termination",
         " Convergence failure -- run terminated.\n Error termination via Lnk1e.\n",
         "Convergence failure -- run terminated.", "gaussian.error_termination"},
        {MORV_ORCA_DATA_DIR, "water_hf_solvent_smd.log", "-------------------------   ----",
         "\nORCA finished by error termination in SCF\nCalling Command: orca_scf water.gbw b\n",
         "ORCA finished by error termination in SCF", "orca.error_termination"},
        {MORV_GAMESS_DATA_DIR, "water_mp2.out", " EXECUTION OF GAMESS TERMINATED",
         " SCF DID NOT CONVERGE...NO MPLEVL=2 CALCULATION\n"
         " EXECUTION OF GAMESS TERMINATED -ABNORMALLY- AT Mon Aug  5 13:05:47 2019\n",
         "SCF DID NOT CONVERGE...NO MPLEVL=2 CALCULATION", "gamess.error_termination"},
    };
    for (auto const& row : rows) {
        SCOPED_TRACE(row.file);
        auto text = test_support::read_output(row.folder, row.file);
        text = text.substr(0, text.find(row.cut_before)) + row.ending;
        auto const result = import_output(text, row.file);
        auto const& termination = result.value.program.termination;
        EXPECT_EQ(result.status, model::ParseStatus::complete);
        EXPECT_EQ(termination.kind, TerminationKind::error);
        EXPECT_EQ(termination.reason, row.reason);
        EXPECT_EQ(spanned(text, *termination.source), row.reason);
        ASSERT_FALSE(result.diagnostics.empty());
        EXPECT_EQ(result.diagnostics.back().code, row.code);
    }
}

}  // namespace
}  // namespace morv::qc
