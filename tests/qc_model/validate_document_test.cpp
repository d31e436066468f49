#include "support/diagnostics.hpp"

#include <morv/qc/model.hpp>

#include <gtest/gtest.h>

#include <cstdint>
#include <functional>
#include <string>
#include <variant>
#include <vector>

namespace morv::qc {
namespace {

using morv::testing::describe;
using Lines = std::vector<std::string>;

model::SourceSpan span_in(std::uint32_t source) { return {model::SourceId(source), {0, 1, 1}, {10, 1, 11}}; }

EnergyRecord energy(std::uint32_t id, double value) {
    EnergyRecord record;
    record.id = EnergyId(id);
    record.kind = EnergyKind::scf;
    record.value = value;
    record.source = span_in(1);
    return record;
}

// Every kind of record once, each reference pointing at a record that is there.
Document well_formed() {
    Document document;
    document.program.termination.source = span_in(1);
    document.sources.push_back({model::SourceId(1), "water.log", std::nullopt, std::nullopt, std::nullopt});

    chem::ChemicalSystem system;
    system.id = chem::SystemId(1);
    system.topology.atoms = {{chem::AtomId(1), "O", "O1", 8, std::nullopt, std::nullopt},
                             {chem::AtomId(2), "H", "H2", 1, std::nullopt, std::nullopt}};
    system.source = span_in(1);
    document.systems.push_back(system);

    document.frames.push_back({chem::FrameId(1), chem::SystemId(1), {{0, 0, 0}, {0, 0, 0.96}}, span_in(1)});

    CalculationJob job;
    job.id = JobId(1);
    job.system_id = chem::SystemId(1);
    job.step_ids = {StepId(1)};
    job.termination.source = span_in(1);
    job.source = span_in(1);
    document.jobs.push_back(job);

    CalculationStep step;
    step.id = StepId(1);
    step.job_id = JobId(1);
    step.system_id = chem::SystemId(1);
    step.frame_id = chem::FrameId(1);
    step.energies = {energy(1, -76.0), energy(2, -76.2)};
    step.primary_energy_id = EnergyId(2);
    step.gradient = GradientRecord{{{0, 0, 0.01}, {0, 0, -0.01}}, std::nullopt, std::nullopt, std::nullopt,
                                   span_in(1)};
    step.convergence = ConvergenceRecord{{}, ConvergenceStatus::converged, span_in(1)};
    step.source = span_in(1);
    document.steps.push_back(step);

    ExcitedStateBlock excited;
    excited.states.resize(2);
    excited.states[1].source = span_in(1);
    excited.total_energies = {energy(1, -75.8)};
    excited.preferred_total_energy_id = EnergyId(1);
    excited.absorption_peaks.resize(1);
    excited.absorption_peaks[0].source = span_in(1);
    AnalysisBlock block;
    block.id = AnalysisId(1);
    block.job_id = JobId(1);
    block.reference_step_id = StepId(1);
    block.payload = excited;
    block.source = span_in(1);
    document.analyses.push_back(block);
    return document;
}

CalculationStep& step_of(Document& document) { return document.steps.front(); }
ExcitedStateBlock& excited_of(Document& document) {
    return std::get<ExcitedStateBlock>(document.analyses.front().payload);
}

TEST(ValidateDocument, AWellFormedDocumentHasNoFindings) {
    EXPECT_EQ(describe(validate_document(well_formed())), Lines{});
    EXPECT_EQ(describe(validate_document(Document{})), Lines{});
}

TEST(ValidateDocument, ReportsEachBrokenReference) {
    struct Case {
        char const* name;
        std::function<void(Document&)> mutate;
        Lines findings;
    };
    std::string const absent = ", which the document does not contain.";
    Case const cases[] = {
        {"frame of an unknown system", [](Document& d) { d.frames[0].system_id = chem::SystemId(9); },
         {"warning qc.model.unknown_system: Frame 1 names system 9" + absent}},
        {"job of an unknown system", [](Document& d) { d.jobs[0].system_id = chem::SystemId(9); },
         {"warning qc.model.unknown_system: Job 1 names system 9" + absent}},
        {"step of an unknown system", [](Document& d) { step_of(d).system_id = chem::SystemId(9); },
         {"warning qc.model.unknown_system: Step 1 names system 9" + absent}},
        {"step of an unknown job", [](Document& d) { step_of(d).job_id = JobId(9); },
         {"warning qc.model.unknown_job: Step 1 names job 9" + absent}},
        {"analysis of an unknown job", [](Document& d) { d.analyses[0].job_id = JobId(9); },
         {"warning qc.model.unknown_job: Analysis 1 names job 9" + absent}},
        {"unknown parent job", [](Document& d) { d.jobs[0].parent_job_id = JobId(9); },
         {"warning qc.model.unknown_job: Job 1 names parent job 9" + absent}},
        {"job listing an unknown step", [](Document& d) { d.jobs[0].step_ids.push_back(StepId(9)); },
         {"warning qc.model.unknown_step: Job 1 names step 9" + absent}},
        {"unknown reference step", [](Document& d) { d.analyses[0].reference_step_id = StepId(9); },
         {"warning qc.model.unknown_step: Analysis 1 names step 9" + absent}},
        {"unknown frame", [](Document& d) { step_of(d).frame_id = chem::FrameId(9); },
         {"warning qc.model.unknown_frame: Step 1 names frame 9" + absent}},
        // Energies are looked up in their own owner, not across the document.
        {"preferred energy that only the step holds",
         [](Document& d) { excited_of(d).total_energies[0].id = EnergyId(2); },
         {"warning qc.model.unknown_energy: Analysis 1 names energy 1, which the block does not contain."}},
        {"unknown primary energy", [](Document& d) { step_of(d).primary_energy_id = EnergyId(9); },
         {"warning qc.model.unknown_energy: Step 1 names energy 9, which the step does not contain."}},
        {"primary energy of an empty step", [](Document& d) { step_of(d).energies.clear(); },
         {"warning qc.model.unknown_energy: Step 1 names energy 2, which the step does not contain."}},
        {"energy in an unknown source", [](Document& d) { step_of(d).energies[1].source = span_in(9); },
         {"warning qc.model.unknown_source: Energy 2 of step 1 names source 9" + absent}},
        {"every span without its source", [](Document& d) { d.sources.clear(); },
         {"warning qc.model.unknown_source: Program termination names source 1" + absent,
          "warning qc.model.unknown_source: System 1 names source 1" + absent,
          "warning qc.model.unknown_source: Frame 1 names source 1" + absent,
          "warning qc.model.unknown_source: Termination of job 1 names source 1" + absent,
          "warning qc.model.unknown_source: Job 1 names source 1" + absent,
          "warning qc.model.unknown_source: Energy 1 of step 1 names source 1" + absent,
          "warning qc.model.unknown_source: Energy 2 of step 1 names source 1" + absent,
          "warning qc.model.unknown_source: Gradient of step 1 names source 1" + absent,
          "warning qc.model.unknown_source: Convergence of step 1 names source 1" + absent,
          "warning qc.model.unknown_source: Step 1 names source 1" + absent,
          "warning qc.model.unknown_source: State 2 of analysis 1 names source 1" + absent,
          "warning qc.model.unknown_source: Energy 1 of analysis 1 names source 1" + absent,
          "warning qc.model.unknown_source: Peak 1 of analysis 1 names source 1" + absent,
          "warning qc.model.unknown_source: Analysis 1 names source 1" + absent}},
        {"duplicate source", [](Document& d) { d.sources.push_back(d.sources[0]); },
         {"warning qc.model.duplicate_id: Source 1 appears more than once in the document."}},
        {"duplicate frame", [](Document& d) { d.frames.push_back(d.frames[0]); },
         {"warning qc.model.duplicate_id: Frame 1 appears more than once in the document."}},
        // Only the second and later copies are reported, each once.
        {"three copies of a job",
         [](Document& d) { d.jobs.push_back(d.jobs[0]); d.jobs.push_back(d.jobs[0]); },
         {"warning qc.model.duplicate_id: Job 1 appears more than once in the document.",
          "warning qc.model.duplicate_id: Job 1 appears more than once in the document."}},
        {"duplicate atom", [](Document& d) { d.systems[0].topology.atoms[1].id = chem::AtomId(1); },
         {"warning qc.model.duplicate_id: Atom 1 appears more than once in system 1."}},
        // Atom ids only need to be unique within their own system.
        {"same atom ids in two systems",
         [](Document& d) {
             d.systems.push_back(d.systems[0]);
             d.systems[1].id = chem::SystemId(2);
         },
         {}},
        {"duplicate energy in a step", [](Document& d) { step_of(d).energies[1].id = EnergyId(1); },
         {"warning qc.model.duplicate_id: Energy 1 appears more than once in step 1.",
          "warning qc.model.unknown_energy: Step 1 names energy 2, which the step does not contain."}},
        {"duplicate energy in an analysis",
         [](Document& d) { excited_of(d).total_energies.push_back(energy(1, -75.7)); },
         {"warning qc.model.duplicate_id: Energy 1 appears more than once in analysis 1."}},
        {"frame with too few positions", [](Document& d) { d.frames[0].positions_angstrom.pop_back(); },
         {"warning qc.model.atom_count_mismatch: Frame 1 holds 1 position, but system 1 has 2 atoms."}},
        {"frame with too many positions", [](Document& d) { d.frames[0].positions_angstrom.resize(3); },
         {"warning qc.model.atom_count_mismatch: Frame 1 holds 3 positions, but system 1 has 2 atoms."}},
    };
    for (auto const& c : cases) {
        SCOPED_TRACE(c.name);
        Document document = well_formed();
        c.mutate(document);
        EXPECT_EQ(describe(validate_document(document)), c.findings);
    }
}

TEST(ValidateDocument, ReportsFindingsInDocumentOrder) {
    Document document = well_formed();
    document.analyses[0].job_id = JobId(7);
    step_of(document).frame_id = chem::FrameId(8);
    step_of(document).job_id = JobId(9);
    document.frames[0].system_id = chem::SystemId(6);
    document.program.termination.source = span_in(5);
    std::string const absent = ", which the document does not contain.";
    EXPECT_EQ(describe(validate_document(document)),
              (Lines{"warning qc.model.unknown_source: Program termination names source 5" + absent,
                     "warning qc.model.unknown_system: Frame 1 names system 6" + absent,
                     "warning qc.model.unknown_job: Step 1 names job 9" + absent,
                     "warning qc.model.unknown_frame: Step 1 names frame 8" + absent,
                     "warning qc.model.unknown_job: Analysis 1 names job 7" + absent}));
}

}  // namespace
}  // namespace morv::qc
