// Decode and encode throughput on a synthetic document, with YAML::Load of the
// same text as the reference: the codec cannot be faster than the parser it
// reads through, so the ratio of the two is the cost of the document layer.
//
//   make bench   (or build with -DMORV_BUILD_BENCHMARKS=ON and run build/bench/codec_bench)

#include <morv/qc/json/codec.hpp>

#include <benchmark/benchmark.h>
#include <yaml-cpp/yaml.h>

#include <map>
#include <string>

namespace {

using namespace morv;

// A water optimisation with `steps` steps, each with energies, a gradient and
// convergence criteria, and a vibrational block of `steps` modes.
qc::Document synthetic_document(int steps) {
    qc::Document document;
    document.program.kind = qc::ProgramKind::orca;
    document.program.name = "ORCA";
    chem::ChemicalSystem system;
    system.id = chem::SystemId(1);
    system.topology.atoms = {{chem::AtomId(1), "O", "O", 8, {}, {}},
                             {chem::AtomId(2), "H", "H", 1, {}, {}},
                             {chem::AtomId(3), "H", "H", 1, {}, {}}};
    document.systems.push_back(system);
    qc::CalculationJob job;
    job.id = qc::JobId(1);
    job.system_id = chem::SystemId(1);
    job.tasks = {qc::TaskKind::optimization};
    qc::VibrationalBlock modes;
    for (int i = 1; i <= steps; ++i) {
        auto const id = static_cast<std::uint32_t>(i);
        document.frames.push_back({chem::FrameId(id), chem::SystemId(1), {{0, 0, 0.1 * i}, {0.76, 0.58, 0}, {-0.76, 0.58, 0}}, {}});
        qc::CalculationStep step;
        step.id = qc::StepId(id);
        step.job_id = qc::JobId(1);
        step.system_id = chem::SystemId(1);
        step.frame_id = chem::FrameId(id);
        step.energies = {{qc::EnergyId(1), qc::EnergyKind::scf, "SCF", "B3LYP", -76.3 - 1e-4 * i, {}}};
        step.primary_energy_id = qc::EnergyId(1);
        step.gradient = qc::GradientRecord{{{0.01, 0.02, 0.03}, {-0.01, 0, 0}, {0, -0.02, -0.03}}, 0.05, 0.02, 0.03, {}};
        step.convergence = qc::ConvergenceRecord{
            {{qc::CriterionKind::rms_force, 1e-4, 3e-4, true, "Eh/bohr"},
             {qc::CriterionKind::max_displacement, 2e-3, 4e-3, true, "bohr"}},
            qc::ConvergenceStatus::not_converged,
            {}};
        document.steps.push_back(step);
        job.step_ids.push_back(qc::StepId(id));
        modes.modes.push_back({i, 100.0 + i, "A1", 1.08, 0.5, 12.5, {}, {{0, 0, 0.07}, {0.43, 0.55, 0}, {-0.43, 0.55, 0}}});
    }
    document.jobs.push_back(job);
    qc::AnalysisBlock block;
    block.id = qc::AnalysisId(1);
    block.job_id = qc::JobId(1);
    block.payload = modes;
    document.analyses.push_back(block);
    return document;
}

std::string const& document_text(int steps) {
    static std::map<int, std::string> texts;
    auto& text = texts[steps];
    if (text.empty()) {
        text = qc::json::serialize(synthetic_document(steps));
    }
    return text;
}

void BM_YamlLoad(benchmark::State& state) {
    std::string const& text = document_text(static_cast<int>(state.range(0)));
    for (auto _ : state) {
        benchmark::DoNotOptimize(YAML::Load(text));
    }
    state.SetBytesProcessed(static_cast<int64_t>(state.iterations() * text.size()));
}

void BM_Deserialize(benchmark::State& state) {
    std::string const& text = document_text(static_cast<int>(state.range(0)));
    for (auto _ : state) {
        benchmark::DoNotOptimize(qc::json::deserialize(text));
    }
    state.SetBytesProcessed(static_cast<int64_t>(state.iterations() * text.size()));
}

void BM_Serialize(benchmark::State& state) {
    qc::Document const document = synthetic_document(static_cast<int>(state.range(0)));
    std::size_t bytes = 0;
    for (auto _ : state) {
        std::string text = qc::json::serialize(document);
        bytes += text.size();
        benchmark::DoNotOptimize(text);
    }
    state.SetBytesProcessed(static_cast<int64_t>(bytes));
}

BENCHMARK(BM_YamlLoad)->Arg(2000);
BENCHMARK(BM_Deserialize)->Arg(2000);
BENCHMARK(BM_Serialize)->Arg(2000);

}  // namespace

BENCHMARK_MAIN();
