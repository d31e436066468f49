// Writes what the codec emits for every kind of document at hand into the
// folder given as argument, compact and pretty, for the JSON Schema check:
// the examples, the fuzzers' corpus of damaged and odd texts decoded and
// written again, the imports of the bundled program outputs, generated documents of several sizes, and documents built
// here that set every optional field, every enumerator and one value past
// the end of each enumeration, which the writer must still print as a word
// of its table.

#include "document_generator.hpp"

#include <morv/qc/import.hpp>
#include <morv/qc/json/codec.hpp>
#include <morv/qc/wire_words.hpp>

#include <algorithm>
#include <cstdint>
#include <exception>
#include <filesystem>
#include <fstream>
#include <iostream>
#include <iterator>
#include <limits>
#include <map>
#include <optional>
#include <stdexcept>
#include <string>
#include <utility>
#include <vector>

namespace {

namespace fs = std::filesystem;
using namespace morv;
using namespace morv::qc;

constexpr double inf = std::numeric_limits<double>::infinity();
constexpr double nan = std::numeric_limits<double>::quiet_NaN();
constexpr std::uint32_t max_uint32 = std::numeric_limits<std::uint32_t>::max();

// Values for every branch of the keys that the writer works out: an energy
// has a wavelength only above zero, a mode is imaginary only below, and what
// is not finite prints as null.
constexpr double awkward_values[] = {-0.5, 0.0, -0.0, 0.25, nan, inf, -inf};

double awkward(std::size_t n) { return awkward_values[n % std::size(awkward_values)]; }

// Enumerator number `n`; a number past the last one is a value that only a
// cast makes.
template <typename Enum>
Enum nth(std::uint32_t n) {
    return static_cast<Enum>(n);
}

// The value just past the last enumerator, so that a loop up to it writes
// every word and the fallback for a value that only a cast makes.
template <typename Enum>
constexpr std::uint32_t past_last = static_cast<std::uint32_t>(WireWords<Enum>::words.size());

model::SourceSpan span() { return {model::SourceId(1), {1, 2, 3}, {4, 5, 6}}; }

chem::Vec3 awkward_vector(std::size_t n) { return {awkward(n), awkward(n + 1), awkward(n + 2)}; }

Termination termination(std::uint32_t kind) { return {nth<TerminationKind>(kind), "why", span()}; }

chem::ChemicalSystem water_system() {
    chem::ChemicalSystem system;
    system.id = chem::SystemId(1);
    system.label = "water";
    system.electronic_state = chem::ElectronicState{std::numeric_limits<std::int32_t>::min(), max_uint32};
    system.topology.atoms = {{chem::AtomId(1), "O", "O1", 8, 65535, -2},
                             {chem::AtomId(2), "H", "H", std::nullopt, std::nullopt, std::nullopt}};
    system.source = span();
    return system;
}

// Job `n` takes the n-th relation, primary task and termination kind.
CalculationJob job(std::uint32_t n) {
    std::vector<TaskKind> tasks;
    for (std::uint32_t task = 0; task <= past_last<TaskKind>; ++task) {
        tasks.push_back(nth<TaskKind>(task));
    }
    return {JobId(n + 1), chem::SystemId(1), n == 0 ? max_uint32 : n,
            n == 0 ? std::nullopt : std::optional<JobId>(JobId(n)), nth<JobRelation>(n), tasks, nth<TaskKind>(n),
            "B3LYP", "def2-SVP", "Opt Freq", {StepId(1), StepId(max_uint32)}, termination(n), span()};
}

EnergyRecord energy(std::uint32_t kind) {
    return {EnergyId(kind + 1), nth<EnergyKind>(kind), "E", "MP2", awkward(kind), span()};
}

// Step `n` takes the n-th convergence status.
CalculationStep step(std::uint32_t n) {
    std::vector<EnergyRecord> energies;
    for (std::uint32_t kind = 0; kind <= past_last<EnergyKind>; ++kind) {
        energies.push_back(energy(kind));
    }
    ConvergenceRecord convergence{{}, nth<ConvergenceStatus>(n), span()};
    for (std::uint32_t kind = 0; kind <= past_last<CriterionKind>; ++kind) {
        convergence.criteria.push_back({nth<CriterionKind>(kind), awkward(kind), 3e-4, kind % 2 == 0, "Eh"});
    }
    return {StepId(n + 1), JobId(1), chem::SystemId(1), n, -1, chem::FrameId(1), energies, EnergyId(1),
            GradientRecord{{awkward_vector(0), awkward_vector(3)}, 0.1, nan, -inf, span()}, convergence, span()};
}

VibrationalBlock vibrations() {
    VibrationalBlock block;
    for (std::size_t n = 0; n < std::size(awkward_values); ++n) {
        block.modes.push_back({static_cast<int>(n), 1000.0 * awkward(n), "A1", 1.0, 2.0, 3.0, nan,
                               {awkward_vector(n)}});
    }
    return block;
}

ExcitedStateBlock excited_states() {
    ExcitationContribution const contribution{"HOMO->LUMO", 4, 5, "occ", "virt", 'a', '\xff', 0.7, 0.49, true};
    AbsorptionPeak const peak{"electric dipole", "0-1A -> 1-1A", 1, 0.2, 4.1e4, 243.0, 0.1, "fosc", 0.1,
                              chem::Vec3{0.1, 0.2, 0.3}, -1.5, span()};
    ExcitedState const state{1, "1", "TDDFT", "singlets", "Singlet", "A1", 1, -76.2, 0.25, 250.0, 54868.7, 182.2,
                             0.05, 0.0, 0.0, 0.98, 99.0, {contribution}, span()};
    return {0, "TDDFT", "singlets", "comment", {state, ExcitedState{}}, {energy(4)}, EnergyId(5), {peak}};
}

// The set and its orbitals take the n-th spin channel.
OrbitalSetBlock orbital_set(std::uint32_t n) {
    Orbital const orbital{5, nth<SpinChannel>(n), 2.0, -0.5, "A1", "occupied"};
    return {nth<SpinChannel>(n), n == 0 ? "" : "canonical", {orbital, Orbital{}}};
}

ThermochemistryBlock thermochemistry() {
    return {298.15, 1.0, 18.01, -76.4, 0.02, 0.03, 0.025, -76.3, 0.026, -0.02, -76.35, nan};
}

DipoleBlock dipoles() {
    PermanentDipole const dipole{{0.0, 0.0, 0.78}, 0.78, 1.98, "SCF", "relaxed", span()};
    return {{dipole, PermanentDipole{}}};
}

AtomicChargeBlock atomic_charges() {
    AtomicChargeRecord const record{0, "O", 8.6, -0.6, 0.0, 8.5, -0.5};
    return {"Mulliken", {record, AtomicChargeRecord{}}};
}

ScalarPropertyBlock scalar_properties() {
    ScalarProperty const property{"s2", "<S**2>", 0.75, "au", span()};
    return {{property, ScalarProperty{"", "", inf, "", std::nullopt}}};
}

std::vector<AnalysisBlock> analyses() {
    std::vector<AnalysisPayload> payloads = {vibrations(), excited_states(), thermochemistry(),
                                             dipoles(),    atomic_charges(), scalar_properties()};
    for (std::uint32_t spin = 0; spin <= past_last<SpinChannel>; ++spin) {
        payloads.push_back(orbital_set(spin));
    }
    std::vector<AnalysisBlock> blocks;
    for (auto& payload : payloads) {
        auto const id = static_cast<std::uint32_t>(blocks.size() + 1);
        blocks.push_back({AnalysisId(id), JobId(1), id, StepId(1), std::move(payload), span()});
    }
    return blocks;
}

std::map<std::string, MetadataValue> metadata() {
    return {{"flag", true},
            {"count", std::numeric_limits<long long>::min()},
            {"ratio", 0.5},
            {"not_finite", nan},
            {"text", std::string("text")},
            {"texts", std::vector<std::string>{"a", ""}},
            {"numbers", std::vector<double>{1.5, inf, nan}}};
}

std::map<std::string, model::ExtensionValue> extensions() {
    using model::ExtensionValue;
    std::vector<ExtensionValue> const list = {{nullptr}, {true}, {-3LL}, {std::string("x")}};
    std::map<std::string, ExtensionValue> const members = {{"list", {list}}, {"not_finite", {-inf}}};
    // A fixed key among the extensions is overwritten by the fixed value.
    return {{"schema", {std::string("other")}},
            {"x_null", {nullptr}},
            {"x_unsigned", {std::numeric_limits<unsigned long long>::max()}},
            {"x_double", {2.5}},
            {"x_object", {members}}};
}

std::vector<model::Diagnostic> diagnostics() {
    std::vector<model::Diagnostic> stored;
    for (std::uint32_t severity = 0; severity <= past_last<model::Severity>; ++severity) {
        stored.push_back({nth<model::Severity>(severity), "x.code", "message", span()});
    }
    stored.push_back({model::Severity::note, "", "", std::nullopt});
    return stored;
}

// Variant `n` takes the n-th parse status, profile and program kind.
model::ParseResult<Document> every_field(std::uint32_t n) {
    Document document;
    document.program = {nth<ProgramKind>(n), "prog \x01\xff", "5.0.4", "water.inp", termination(n)};
    document.normalization = {nth<ResultProfile>(n), {true, false, true, false, true}};
    document.sources = {{model::SourceId(1), "water.out", "e3b0c442", std::numeric_limits<std::uint64_t>::max(), ""},
                        {model::SourceId(2), "", std::nullopt, std::nullopt, std::nullopt}};
    document.systems = {water_system()};
    document.frames = {{chem::FrameId(1), chem::SystemId(1), {awkward_vector(0), awkward_vector(4)}, span()}};
    auto const jobs = std::max({past_last<JobRelation>, past_last<TaskKind>, past_last<TerminationKind>});
    for (std::uint32_t relation = 0; relation <= jobs; ++relation) {
        document.jobs.push_back(job(relation));
    }
    for (std::uint32_t status = 0; status <= past_last<ConvergenceStatus>; ++status) {
        document.steps.push_back(step(status));
    }
    document.analyses = analyses();
    document.metadata = metadata();
    document.extensions = extensions();
    return {document, nth<model::ParseStatus>(n), diagnostics()};
}

std::string read_file(fs::path const& path) {
    std::ifstream in(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>()};
}

void write_file(fs::path const& path, std::string const& text) {
    std::ofstream out(path, std::ios::binary);
    out << text;
    if (!out) {
        throw std::runtime_error("cannot write " + path.string());
    }
}

class SampleFolder {
public:
    explicit SampleFolder(fs::path folder) : folder_(std::move(folder)) { fs::create_directories(folder_); }

    void write(std::string const& name, model::ParseResult<Document> const& result) {
        write_file(folder_ / (name + ".json"), json::serialize(result));
        json::SerializeOptions pretty;
        pretty.pretty = true;
        write_file(folder_ / (name + ".pretty.json"), json::serialize(result, pretty));
        written_ += 2;
    }

    void write_decoded(fs::path const& folder, std::string const& prefix) {
        for (auto const& file : files_of(folder)) {
            write(prefix + file.stem().string(), json::deserialize(read_file(file)));
        }
    }

    // Every output of `folder`, its licence and notes left out.
    void write_imported(fs::path const& folder, std::string const& prefix) {
        for (auto const& file : files_of(folder)) {
            if (file.extension() == ".log" || file.extension() == ".out") {
                auto const name = file.filename().string();
                write(prefix + file.stem().string(), import_output(read_file(file), name));
            }
        }
    }

    int written() const { return written_; }

private:
    // In name order so that the samples are the same on every run.
    static std::vector<fs::path> files_of(fs::path const& folder) {
        std::vector<fs::path> files;
        for (auto const& entry : fs::directory_iterator(folder)) {
            if (entry.is_regular_file()) {
                files.push_back(entry.path());
            }
        }
        std::sort(files.begin(), files.end());
        return files;
    }

    fs::path folder_;
    int written_ = 0;
};

}  // namespace

int main(int argc, char** argv) {
    if (argc != 2) {
        std::cerr << "usage: write_schema_samples OUTPUT_FOLDER\n";
        return 2;
    }
    try {
        SampleFolder samples(argv[1]);
        samples.write_decoded(MORV_EXAMPLES_DIR, "example_");
        samples.write_decoded(MORV_FUZZ_CORPUS_DIR, "corpus_");
        samples.write_imported(MORV_GAUSSIAN_DATA_DIR, "gaussian_");
        samples.write_imported(MORV_ORCA_DATA_DIR, "orca_");
        samples.write_imported(MORV_GAMESS_DATA_DIR, "gamess_");
        std::size_t const sizes[] = {0, 20'000, 100'000};
        for (std::uint64_t seed = 1; seed <= 6; ++seed) {
            for (std::size_t const size : sizes) {
                std::string const name = "generated_" + std::to_string(seed) + "_" + std::to_string(size);
                samples.write(name, bench::generate_result(seed, size));
            }
        }
        auto const variants =
            std::max({past_last<model::ParseStatus>, past_last<ResultProfile>, past_last<ProgramKind>});
        for (std::uint32_t variant = 0; variant <= variants; ++variant) {
            samples.write("every_field_" + std::to_string(variant), every_field(variant));
        }
        std::cout << "wrote " << samples.written() << " samples to " << argv[1] << "\n";
    } catch (std::exception const& e) {
        std::cerr << "write_schema_samples: " << e.what() << "\n";
        return 1;
    }
    return 0;
}
