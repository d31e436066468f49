// Each section's reader, through both backends, and its writer: which
// faults drop a record, which only cost a field, and what is written.

#include "sections/convergence.hpp"
#include "sections/energy.hpp"
#include "sections/extensions.hpp"
#include "sections/frames.hpp"
#include "sections/jobs.hpp"
#include "sections/metadata.hpp"
#include "sections/program.hpp"
#include "sections/sources.hpp"
#include "sections/steps.hpp"
#include "sections/systems.hpp"
#include "support/json_text.hpp"

#include <map>
#include <utility>

namespace morv::qc::json {
namespace {

using namespace morv::testing;
using model::SourceFile;
using model::SourceId;
using chem::AtomId;
using chem::AtomSite;
using chem::ChemicalSystem;
using chem::GeometryFrame;
using chem::Vec3;
using chem::SystemId;
using T = TaskKind;
using K = CriterionKind;
using Strings = std::vector<std::string>;
using Doubles = std::vector<double>;
using Table = std::map<std::string, MetadataValue>;
using model::ExtensionValue;
using Items = std::vector<ExtensionValue>;
using Members = std::map<std::string, ExtensionValue>;

ProgramInfo program_of(DocumentResult& result, Node const& node) {
    read_program(result, node);
    return result.value.program;
}
Normalization normalization_of(DocumentResult& result, Node const& node) {
    read_normalization(result, node);
    return result.value.normalization;
}

TEST(Program, ReadsKnownWordsExactlyAndDefaultsEverythingElse) {
    expect_reads(program_of, {
        {R"({"kind": "other", "name": 5})", {ProgramKind::unknown, "5", "", "", {}}, {}},
        {R"({"kind": "ORCA"})", {}, {}},
        {R"({"kind": ["orca"], "name": {}, "termination": null})", {}, {invalid("kind"), invalid("name")}},
        {R"({"kind": "gamess", "termination": {"kind": "error", "normal": true, "reason": "SCF failed"}})",
         {ProgramKind::gamess, "", "", "", {TerminationKind::error, "SCF failed", std::nullopt}}, {}},
        {R"({"termination": {"kind": "Normal", "source": null}})", {}, {bad_span}},
        {R"({"termination": {"kind": "truncated", "reason": [], "source": {"source_id": 2, "begin": {}, "end": {}}}})",
         {ProgramKind::unknown, "", "", "", {TerminationKind::truncated, "", model::SourceSpan{model::SourceId(2), {}, {}}}},
         {invalid("reason")}},
    });
}

TEST(Normalization, SwitchesStayRequestedUnlessTheTextSaysFalse) {
    expect_reads(normalization_of, {
        {R"({"profile": "summary", "requested_analyses": {"orbitals": false}})",
         {ResultProfile::summary, {true, true, true, false, true}}, {}},
        {R"({"profile": "full", "requested_analyses": {"gradients": false, "vibrations": "no", "dipoles": "maybe"}})",
         {ResultProfile::full, {false, false, true, true, true}}, {invalid("dipoles")}},
        {R"({"profile": null, "requested_analyses": 5})", {}, {}},
        {R"({"profile": ["full"]})", {}, {invalid("profile")}},
        {R"({"profile": "Standard"})", {}, {}},
    });
}

TEST(Program, WritesEmptyOptionalStringsOnlyForName) {
    EXPECT_EQ(compact(write_program, ProgramInfo{ProgramKind::orca, "", "", "", {}}),
              R"({"kind":"orca","name":"","termination":{"kind":"unknown","normal":false}})");
    EXPECT_EQ(compact(write_termination, Termination{TerminationKind::normal, "", std::nullopt}),
              R"({"kind":"normal","normal":true})");
    EXPECT_EQ(compact(write_termination, Termination{static_cast<TerminationKind>(9), "", std::nullopt}),
              R"({"kind":"unknown","normal":false})");
}

TEST(Normalization, WritesEverySwitch) {
    EXPECT_EQ(compact(write_normalization, Normalization{ResultProfile::standard, {false, true, false, true, false}}),
              R"({"profile":"standard","requested_analyses":{"dipoles":false,"excited_states":false,)"
              R"("gradients":false,"orbitals":true,"vibrations":true}})");
}

TEST(Sources, AnUnusableIdDropsTheFileWhileABadOptionalOnlyLosesItself) {
    expect_reads(read_source_file, {
        {R"({"id": "0x10", "path": 7, "sha256": "", "size_bytes": 18446744073709551615, "embedded_content": null})",
         SourceFile{SourceId(16), "7", "", 18446744073709551615ull, {}}, {}},
        {R"({"id": 1, "path": ["a"], "sha256": {}, "size_bytes": -1, "embedded_content": [], "extra": 1})",
         SourceFile{SourceId(1), "", {}, {}, {}},
         {invalid("path"), invalid("sha256"), invalid("size_bytes"), invalid("embedded_content")}},
        {R"({"id": 4294967296, "path": []})", std::nullopt, {out_of_range("id")}},
        {R"({"id": -1, "size_bytes": "x"})", std::nullopt, {invalid("id")}},
        {"[1]", std::nullopt, {missing("id")}},
    });
}

TEST(Sources, TheListClosesGapsOfDroppedFilesAndAScalarElementEndsTheDecode) {
    auto const read = deserialize(document_with(R"("sources": [{"id": 2, "path": "b"}, {"id": 4294967296}, null, {"id": 1}])"));
    EXPECT_EQ(read.value.sources, (std::vector<SourceFile>{{SourceId(2), "b", {}, {}, {}}, {SourceId(1), "", {}, {}, {}}}));
    EXPECT_EQ(describe(read.diagnostics), (Lines{out_of_range("id"), missing("id")}));
    EXPECT_EQ(describe(deserialize(document_with(R"("sources": [{"id": 1}, 5])")).diagnostics),
              Lines{on_scalar(1, 73, "id")});
}

TEST(Sources, SetEmptyStringsAreWritten) {
    EXPECT_EQ(compact(write_source_file, SourceFile{SourceId(3), "", {}, {}, {}}), R"({"id":3,"path":""})");
    SourceFile const file{SourceId(4294967295u), "run/a.log", "", 18446744073709551615ull, "E=\"-1\"\n"};
    EXPECT_EQ(compact(write_source_file, file),
              R"({"embedded_content":"E=\"-1\"\n","id":4294967295,"path":"run/a.log","sha256":"",)"
              R"("size_bytes":18446744073709551615})");
}

ChemicalSystem system(std::uint32_t id, std::string label = "", std::vector<AtomSite> atoms = {},
                      std::optional<chem::ElectronicState> state = {}) {
    return ChemicalSystem{chem::SystemId(id), std::move(label), {std::move(atoms)}, state, std::nullopt};
}

TEST(Systems, UnusableIdsDropTheirRecordWhileOtherFaultsOnlyEmptyTheirField) {
    expect_reads(read_system, {
        {R"({"label": [], "topology": {"atoms": [{"symbol": "C"}]}})", std::nullopt, {missing("id")}},
        {R"({"id": 4294967296})", std::nullopt, {out_of_range("id")}},
        {R"({"id": 2, "label": 5, "electronic_state": 5, "topology": {"atoms": {"id": 1}}})", system(2, "5"), {}},
        {R"({"id": 2, "label": [], "electronic_state": {"charge": "x"}, "topology": null, "source": null})", system(2),
         {invalid("label"), invalid("charge"), missing("multiplicity"), bad_span}},
        {R"({"id": 2, "electronic_state": {"charge": 0, "multiplicity": -2}, "topology": []})", system(2),
         {invalid("multiplicity")}},
        {R"({"id": 7, "label": "w", "electronic_state": {"charge": -1, "multiplicity": "2"},
             "source": {"source_id": "x"}, "topology": {"atoms": [
               {"id": 1, "symbol": "Fe"}, {"symbol": "O", "raw_label": []}, {"id": 2, "raw_label": "X"},
               {"id": 3, "symbol": "C", "raw_label": {}, "atomic_number": 70000, "isotope": 0, "formal_charge": -2},
               {"id": 4, "symbol": "H", "raw_label": "H1", "atomic_number": "1", "formal_charge": 1.5},
               {"id": 5, "symbol": "O", "raw_label": ""}, null]}})",
         system(7, "w",
                {{AtomId(1), "Fe", "Fe", {}, {}, {}}, {AtomId(2), "", "X", {}, {}, {}}, {AtomId(3), "C", "C", {}, 0, -2},
                 {AtomId(4), "H", "H1", 1, {}, {}}, {AtomId(5), "O", "", {}, {}, {}}},
                chem::ElectronicState{-1, 2}),
         {missing("id"), missing("symbol"), invalid("raw_label"), invalid("atomic_number"), invalid("formal_charge"),
          missing("id"), invalid("source_id")}},
    });
}

TEST(Systems, AUsableSystemWithoutATopologyObjectOrWithAScalarAtomEndsTheDecode) {
    DocumentResult result;
    EXPECT_THROW(read_system(result, load_text(R"({"id": 1, "topology": "none"})")), YAML::BadSubscript);
    EXPECT_THROW(read_system(result, load_text(R"({"id": 1, "topology": {"atoms": [5]}})")), YAML::BadSubscript);
    EXPECT_EQ(describe(deserialize(document_with(R"("systems": [{"id": 1}])")).diagnostics),
              Lines{parse_failed("invalid node; first invalid key: \"topology\"")});
}

TEST(Systems, RawLabelsAreWrittenOnlyWhenTheyDifferFromTheSymbol) {
    std::vector<AtomSite> const atoms{{AtomId(3), "", "", {}, {}, {}}, {AtomId(4), "O", "", {}, {}, {}},
                                      {AtomId(5), "O", "O", {}, {}, {}}};
    EXPECT_EQ(compact(write_system, system(6, "", atoms)),
              R"({"id":6,"topology":{"atoms":[{"id":3,"symbol":""},{"id":4,"symbol":"O"},{"id":5,"symbol":"O"}]}})");
}

GeometryFrame frame(std::uint32_t id, std::uint32_t system_id, std::vector<Vec3> positions = {}) {
    return GeometryFrame{chem::FrameId(id), chem::SystemId(system_id), std::move(positions), std::nullopt};
}

TEST(Frames, BothIdsAreReadAndEitherDropsTheFrameWhileBadPositionsOnlyLoseThemselves) {
    expect_reads(read_frame, {
        {R"({"id": 1})", std::nullopt, {missing("system_id")}},
        {R"({"system_id": 1, "positions_angstrom": [5], "source": 5})", std::nullopt, {missing("id")}},
        {"null", std::nullopt, {missing("id"), missing("system_id")}},
        {R"({"id": 4294967296, "system_id": "x"})", std::nullopt, {out_of_range("id"), invalid("system_id")}},
        {R"({"id": 1, "system_id": 4294967295, "positions_angstrom": {"x": 1, "y": 2, "z": 3}})", frame(1, 4294967295u),
         {}},
        {R"({"id": 2, "system_id": 0, "source": null, "positions_angstrom": [[0, 0, 0], {"x": 0, "y": 0}, 5,
             {"x": "-.inf", "y": ".Inf", "z": "1e2", "w": []}, {"x": null, "y": "a", "z": []}, {"x": 1, "y": 2, "z": 3}]})",
         frame(2, 0, {{-inf, inf, 100}, {1, 2, 3}}),
         {bad_vec3, missing("z"), bad_vec3, missing("x"), invalid("y"), invalid("z"), bad_span}},
    });
    DocumentResult result;
    EXPECT_THROW(read_frame(result, load_text("5")), YAML::BadSubscript);
}

TEST(Frames, NonFiniteComponentsPrintAsNullAndThatPositionIsLostOnTheWayBack) {
    std::string const text = compact(write_frame, frame(1, 2, {{nan, -inf, 0.1}, {1, 2, 3}}));
    EXPECT_EQ(text, R"({"id":1,"positions_angstrom":[{"x":null,"y":null,"z":0.10000000000000001},)"
                    R"({"x":1,"y":2,"z":3}],"system_id":2})");
    expect_reads(read_frame, {{text, frame(1, 2, {{1, 2, 3}}), {missing("x"), missing("y")}}});
}

TEST(Frames, WritesAnEmptyListOfPositions) {
    EXPECT_EQ(compact(write_frame, frame(0, 0)), R"({"id":0,"positions_angstrom":[],"system_id":0})");
}

std::string unknown_task(std::string const& text) { return "warning qc.json.unknown_task: Ignoring unknown task kind: " + text; }
std::string const bad_step = "error qc.json.invalid_step_id: Calculation job contains an invalid step ID.";

TEST(Jobs, UnusableIdsDropTheJobWhileOtherFaultsOnlyCostTheirField) {
    expect_reads(read_job, {
        {"null", std::nullopt, {missing("id"), missing("system_id")}},
        {R"({"id": "x", "system_id": 4294967296, "tasks": [{}]})", std::nullopt, {invalid("id"), out_of_range("system_id")}},
        {R"({"id": 7, "system_id": 1, "ordinal": 4294967296, "parent_job_id": 4294967296, "relation": "RESTART",
             "primary_task": "scan", "tasks": 5, "step_ids": {"a": 1}, "termination": {"kind": "normal", "reason": "done"}})",
         CalculationJob{JobId(7), SystemId(1), 7, {}, JobRelation::none, {}, T::scan, "", "", "", {},
                        {TerminationKind::normal, "done", {}}, {}},
         {invalid("ordinal"), out_of_range("parent_job_id")}},
        {R"({"source": null, "termination": 5, "step_ids": [1, "x", null, -1, "0x10", 4294967296, 1, 1.5, [2]],
             "keywords": 5, "basis_set": [], "method": "", "primary_task": "freq",
             "tasks": ["optimization", "freq", null, 5, "optimization", "neb"], "relation": ["link"],
             "ordinal": 0, "parent_job_id": 0, "system_id": 1, "id": 1})",
         CalculationJob{JobId(1), SystemId(1), 0, JobId(0), JobRelation::none, {T::optimization, T::optimization, T::neb},
                        {}, "", "", "5", {StepId(1), StepId(16), StepId(1)}, {}, {}},
         {invalid("relation"), unknown_task("freq"), unknown_task("null"), unknown_task("5"), invalid("basis_set"),
          bad_step, bad_step, bad_step, bad_step, bad_step, bad_step, bad_span}},
    });
}

TEST(Jobs, ATaskThatIsNotAScalarEndsTheWholeDecode) {
    auto const decoded = deserialize(document_with(R"("jobs": [{"id": 1, "system_id": 1,
        "tasks": ["scan", ["scan"]]}])"));
    EXPECT_EQ(describe(decoded.diagnostics), Lines{parse_failed("yaml-cpp: error at line 2, column 27: bad conversion")});
}

TEST(Jobs, WritesEmptyListsAndLeavesEmptyTextsOut) {
    CalculationJob const job{JobId(7), SystemId(1), 7, {}, JobRelation::none, {}, {}, "", "", "", {}, {}, {}};
    EXPECT_EQ(compact(write_job, job), R"({"id":7,"ordinal":7,"relation":"none","step_ids":[],"system_id":1,)"
                                       R"("tasks":[],"termination":{"kind":"unknown","normal":false}})");
}

TEST(Steps, UnusableIdsDropTheStepWhileOtherFaultsOnlyCostTheirField) {
    expect_reads(read_step, {
        {"[]", std::nullopt, {missing("id"), missing("job_id"), missing("system_id")}},
        {R"({"id": 1, "job_id": 4294967296, "system_id": "x", "ordinal": "y", "gradient": 5})", std::nullopt,
         {out_of_range("job_id"), invalid("system_id")}},
        {R"({"id": 9, "job_id": 1, "system_id": 2, "ordinal": -1, "native_cycle": -1, "frame_id": 4294967296,
             "energies": {}, "primary_energy_id": 4294967296, "gradient": null, "convergence": 5})",
         CalculationStep{StepId(9), JobId(1), SystemId(2), 9, -1, {}, {}, {}, {}, {}, {}},
         {invalid("ordinal"), out_of_range("frame_id"), out_of_range("primary_energy_id")}},
        // Keys in reverse order: the diagnostics still come in reading order.
        {R"({"source": null, "convergence": {"status": []}, "gradient": {"norm": "abc"}, "primary_energy_id": 2,
             "energies": [5, {"id": 1, "value": {"hartree": 0}}, {"id": 2}], "frame_id": "f", "native_cycle": 1.5,
             "ordinal": 0, "system_id": 0, "job_id": 0, "id": 0})",
         CalculationStep{StepId(0), JobId(0), SystemId(0), 0, {}, {}, {EnergyRecord{EnergyId(1), {}, "", "", 0.0, {}}},
                         EnergyId(2), GradientRecord{}, ConvergenceRecord{}, {}},
         {invalid("native_cycle"), invalid("frame_id"), bad_energy_record, bad_energy, invalid("norm"), invalid("status"),
          bad_span}},
    });
    DocumentResult result;
    EXPECT_THROW(read_step(result, load_text("5")), YAML::Exception);
}

TEST(Steps, WritesOnlyTheKeysThatAreSet) {
    CalculationStep step{StepId(9), JobId(1), SystemId(2), 9, {}, {}, {}, {}, {}, {}, {}};
    EXPECT_EQ(compact(write_step, step), R"({"energies":[],"id":9,"job_id":1,"ordinal":9,"system_id":2})");
}

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

TEST(Gradient, ABlockThatIsNoObjectIsUnsetInSilenceAndBadEntriesOnlyLoseThemselves) {
    expect_reads(read_gradient, {
        {"[{}]", std::nullopt, {}},
        {R"({"unit": 5, "vectors": 7})", GradientRecord{}, {}},
        {R"({"unit": "hartree_per_angstrom", "source": 5, "max": "-.inf", "rms": null, "norm": [],
             "vectors": [{"x": 0, "y": 0, "z": 1}, 3, {"x": null, "y": "a"}, {"x": 1, "y": 2, "z": 3}]})",
         GradientRecord{{{0, 0, 1}, {1, 2, 3}}, {}, {}, -inf, {}},
         {invalid("norm"), bad_vec3, missing("x"), invalid("y"), missing("z"), bad_span}},
    });
}

TEST(Convergence, UnknownWordsFallBackInSilenceAndACriterionIsNeverDropped) {
    expect_reads(read_convergence, {
        {"5", std::nullopt, {}},
        {R"({"status": "Converged", "criteria": {"kind": "max_force", "value": 1}})", ConvergenceRecord{}, {}},
        {R"({"source": null, "criteria": [{"kind": "force", "value": 1}, {"kind": "gradient_norm", "value": "x"},
             {"kind": "max_force"}, null, {"unit": "au", "satisfied": false, "threshold": 0, "value": -2,
             "kind": "constraint_violation"}, {"kind": [], "value": 1, "threshold": "t", "satisfied": "maybe", "unit": {}}],
             "status": []})",
         ConvergenceRecord{{{K::gradient_norm, 1, {}, {}, ""}, {K::gradient_norm, 0, {}, {}, ""}, {K::max_force, 0, {}, {}, ""},
                            {K::gradient_norm, 0, {}, {}, ""}, {K::constraint_violation, -2, 0.0, false, "au"},
                            {K::gradient_norm, 1, {}, {}, ""}},
                           ConvergenceStatus::unknown, {}},
         {invalid("status"), invalid("value"), missing("value"), missing("value"), invalid("kind"), invalid("threshold"),
          invalid("satisfied"), invalid("unit"), bad_span}},
    });
    DocumentResult result;
    EXPECT_THROW(read_convergence(result, load_text(R"({"criteria": [5]})")), YAML::Exception);
}

TEST(Convergence, OptionalKeysAreWrittenByPresenceWhateverTheirValue) {
    EXPECT_EQ(compact(write_gradient, GradientRecord{{}, nan, {}, 0.0, {}}),
              R"({"max":0,"norm":null,"unit":"hartree_per_bohr"})");
    EXPECT_EQ(compact(write_convergence, ConvergenceRecord{}), R"({"criteria":[],"status":"unknown"})");
    EXPECT_EQ(compact(write_convergence, {{{K::max_force, nan, 0.0, false, ""}}, ConvergenceStatus::converged, {}}),
              R"({"criteria":[{"kind":"max_force","satisfied":false,"threshold":0,"value":null}],"status":"converged"})");
}

std::string unsupported(std::string const& key) {
    return "warning qc.json.unsupported_metadata: Ignoring non-scalar metadata field: " + key;
}

Table metadata_of(DocumentResult& result, Node const& node) {
    read_metadata(result, node);
    return result.value.metadata;
}

TEST(Metadata, ValuesAreTypedByTheirText) {
    auto const read = [](DocumentResult& result, Node const& node) { return read_metadata_value(result, "a", node); };
    expect_reads(read, {
        // Quoting decides first, then the exact words true and false.
        {R"("true")", std::string("true"), {}}, {R"("12")", std::string("12"), {}}, {R"("")", std::string(""), {}},
        {"true", true, {}}, {"false", false, {}}, {"True", std::string("True"), {}}, {"yes", std::string("yes"), {}},
        // Whole base-10 integers, then whatever strtod takes whole.
        {"-12", -12ll, {}}, {"017", 17ll, {}}, {"9223372036854775807", std::numeric_limits<long long>::max(), {}},
        {"9223372036854775808", 9223372036854775808.0, {}}, {"-9223372036854775809", -9223372036854775809.0, {}},
        {"12.0", 12.0, {}}, {"0x10", 16.0, {}}, {"-inf", -inf, {}},
        {"1e999", std::string("1e999"), {}}, {".inf", std::string(".inf"), {}}, {"12abc", std::string("12abc"), {}},
        // Arrays are doubles when every element converts, else texts.
        {"[]", Doubles{}, {}}, {R"([1, "2.5", .inf])", Doubles{1, 2.5, inf}, {}},
        {R"([1, "x"])", Strings{"1", "x"}, {}}, {R"(["x", 1])", Strings{"x", "1"}, {}}, {"[1, null]", Strings{"1", ""}, {}},
        {"[1, [2]]", Strings{"1", ""}, {}}, {R"([1, {"b": 2}])", Strings{"1", ""}, {}},
        {"[1, inf, 1e999, true]", Strings{"1", "inf", "1e999", "true"}, {}},
        // No entry.
        {"~", std::nullopt, {}},
    });
}

TEST(Metadata, FirstValueOfADuplicateKeyStaysAndAnythingButAnObjectIsDroppedInSilence) {
    expect_reads(metadata_of, {
        {R"({"a": 1, "a": 2, "b": null, "b": "kept", "c": {}, "c": true, "d": 1.5, "d": {"x": 1}})",
         Table{{"a", 1ll}, {"b", std::string("kept")}, {"c", true}, {"d", 1.5}}, {unsupported("c"), unsupported("d")}},
    });
    for (char const* value : {"7", R"("text")", R"([1, "a"])", "null"}) {
        auto const result = deserialize(document_with(R"("metadata": )" + std::string(value)));
        EXPECT_EQ(result.value, Document{}) << value;
        EXPECT_EQ(describe(result.diagnostics), Lines{}) << value;
    }
}

TEST(Metadata, EachAlternativeIsWrittenAndReadBackAsItsTextSays) {
    Table const written{
        {"bool", false},        {"integer", -3ll},
        {"whole", 12.0},        {"tenth", 0.1},
        {"infinite", inf},      {"overflow", std::string("1e999")},
        {"texts", Strings{"1", "2"}}, {"doubles", Doubles{1, 2.5, inf}},
        {"empty", Strings{}},
    };
    std::string const text = compact(write_metadata, written);
    EXPECT_EQ(text, R"({"bool":false,"doubles":[1,2.5,null],"empty":[],"infinite":null,"integer":-3,)"
                    R"("overflow":"1e999","tenth":0.10000000000000001,"texts":["1","2"],"whole":12})");
    expect_reads(metadata_of, {{text,
                                Table{{"bool", false}, {"integer", -3ll}, {"whole", 12ll}, {"tenth", 0.1},
                                      {"overflow", std::string("1e999")}, {"texts", Doubles{1, 2}},
                                      {"doubles", Strings{"1", "2.5", ""}}, {"empty", Doubles{}}},
                                {}}});
}

TEST(Extensions, ScalarsAreTypedByTheirText) {
    std::pair<char const*, ExtensionValue> const cases[] = {
        {"null", {nullptr}}, {"~", {nullptr}}, {R"("null")", {std::string("null")}},
        {"true", {true}}, {R"("false")", {std::string("false")}}, {"True", {std::string("True")}},
        {"+5", {5ull}}, {"017", {17ull}}, {"-5", {-5ll}}, {"18446744073709551615", {18446744073709551615ull}},
        {"18446744073709551616", {18446744073709551616.0}}, {"-9223372036854775809", {-9223372036854775809.0}},
        {"-1.5e3", {-1500.0}}, {"0x10", {16.0}}, {"1e999", {std::string("1e999")}}, {"inf", {std::string("inf")}},
        {"nan", {std::string("nan")}}, {".inf", {std::string(".inf")}}, {R"("12")", {std::string("12")}},
        {"12abc", {std::string("12abc")}},
    };
    for (auto const& [json, value] : cases) {
        EXPECT_EQ(read_extension_value(load_text(json)), value) << json;
    }
}

TEST(Extensions, ContainersNestAndKeepTheFirstOfDuplicateKeys) {
    ExtensionValue const value = read_extension_value(load_text(R"([1, "a", null, {"y": true, "y": false, "z": []}])"));
    EXPECT_EQ(value, (ExtensionValue{Items{{1ull}, {std::string("a")}, {nullptr}, {Members{{"y", {true}}, {"z", {Items{}}}}}}}));
    EXPECT_EQ(compact(write_extension_value, value), R"([1,"a",null,{"y":true,"z":[]}])");
}

TEST(Extensions, UnknownRootKeysSurviveAReadAndAWrite) {
    auto const result = deserialize(document_with(R"("x": [1, {"y": true}], "x": "second", "big": 18446744073709551616,
        "nothing": null, "metadata": 7, "parse_status": "complete")"));
    EXPECT_EQ(result.value.extensions, (Members{{"big", {18446744073709551616.0}}, {"nothing", {nullptr}},
                                                {"x", {Items{{1ull}, {Members{{"y", {true}}}}}}}}));
    std::string const text = serialize(result);
    EXPECT_NE(text.find(R"("big":1.8446744073709552e+19,)"), std::string::npos);
    EXPECT_NE(text.find(R"("nothing":null,)"), std::string::npos);
    EXPECT_NE(text.find(R"("x":[1,{"y":true}])"), std::string::npos);
    EXPECT_EQ(deserialize(text).value.extensions, result.value.extensions);
}

TEST(Extensions, SignedAndWholeDoubleValuesComeBackUnsigned) {
    Document document;
    document.extensions = {{"signed", {5ll}}, {"whole", {2.0}}, {"negative", {-2ll}}, {"infinite", {inf}}};
    EXPECT_EQ(deserialize(serialize(document)).value.extensions,
              (Members{{"signed", {5ull}}, {"whole", {2ull}}, {"negative", {-2ll}}, {"infinite", {nullptr}}}));
}

}  // namespace
}  // namespace morv::qc::json
